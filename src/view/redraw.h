#pragma once
#include <QImage>

#include "objects/draw_context.h"
#include "view/draw_counts.h"

// Repaints the map window: background, every row of MapData in table order, hit regions, counts, overlays. Paints
// Map.canvas and tells BeforeRedraw, AfterRedraw and MapPainted. Wanted once more while it runs, it is made once more
// at its end. Nothing happens without an open map.
void Map_Redraw();
// A redraw is under way: what is changed now comes with it.
bool Redraw_Running();
void Delete_Regions();  // nothing can be hit until the next redraw

// The one drawing path: every row of rsEntries onto a surface by a transform. Fills the hit list of the context if it
// has one. An entry that cannot be drawn is asked for: deleted, or left out.
DrawCounts Draw_Entries(DrawContext& context);
// The scan as far as it lies in the context's window.
void Draw_Background(DrawContext& context);
// The coordinate net, if the map has one that is shown. It lies above the entries.
void Draw_Grid(DrawContext& context);
// The whole map with its entries at 100 % as a picture. Error 7 if there is no memory for it.
QImage Map_Picture_With_Entries();
// " Objekt(e) unsichtbar", " Objekt(e) inaktiv"; empty when both are 0.
QString Count_Text(int hidden, int inactive);
void Connect_Redraw();  // answers RedrawWanted; the pictures of entries go with their map
