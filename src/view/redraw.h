#pragma once
#include <QImage>

#include "objects/draw_context.h"
#include "view/draw_rows.h"

// Repaints the map window: background, every row of MapData in table order, hit regions, counts, overlays. Paints
// Map.canvas and tells BeforeRedraw, AfterRedraw and MapPainted. Wanted once more while it runs, it is made once more
// at its end. Nothing happens without an open map.
void Map_Redraw();
// The same after some rows of MapData were written and nothing else has changed since the last redraw: in a large table
// only what they touched and touch is painted.
void Redraw_Changed_Entries();
// A redraw is under way: what is changed now comes with it.
bool Redraw_Running();
void Delete_Regions();  // nothing can be hit until the next redraw

// The scan as far as it lies in the context's window.
void Draw_Background(DrawContext& context);
// The coordinate net, if the map has one that is shown. It lies above the entries.
void Draw_Grid(DrawContext& context);
// The whole map with its entries at 100 % as a picture. Error 7 if there is no memory for it.
QImage Map_Picture_With_Entries();
// " Objekt(e) unsichtbar", " Objekt(e) inaktiv"; empty when both are 0.
QString Count_Text(int hidden, int inactive);
void Connect_Redraw();  // answers RedrawWanted; the pictures of entries go with their map
