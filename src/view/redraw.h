#pragma once
#include <QImage>

#include "objects/draw_context.h"

struct DrawCounts {
  int drawn = 0, hidden = 0, inactive = 0, marked = 0;
  int planRows = 0, planShown = 0;  // of the raster: squares and design
};

// Repaints the map window: background, every row of MapData in table order, hit regions, counts. Paints Map.canvas.
void Map_Redraw();
void Delete_Regions();
inline void Free_Regions() { Delete_Regions(); }

// The one drawing path: every row of rsEntries onto a surface by a transform. Fills the hit list of the context if it
// has one. `background` paints the scan first.
DrawCounts Draw_Entries(DrawContext& context);
void Draw_Background(DrawContext& context);
// The coordinate net, if the map has one that is shown. It lies above the entries.
void Draw_Grid(DrawContext& context);
// The whole map with its entries at 100 % as a picture.
QImage Map_Picture_With_Entries();
// Frame word and colours of the current row into the Ent... variables.
void Load_Rahmen_Style();
void Load_Entry_Colors();  // the colours alone
// " Objekt(e) unsichtbar", " Objekt(e) inaktiv"; empty when both are 0.
QString Count_Text(int hidden, int inactive);
void Connect_Canvas();  // answers RedrawWanted
