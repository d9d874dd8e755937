#pragma once
#include <QPolygonF>
#include <QRect>
#include <QRectF>
#include <vector>

#include "platform/region.h"
#include "state/map_state.h"
#include "store/entry.h"

// The live controls over the entry in hand. All positions are window pixels.

void Hide_Live_Controls();  // all of them; the frame on the canvas stays
// Colours and frame word of the current row into the Ent... variables and those of the next entry.
void Load_Entry_Colors();
// Font, styles and text of the row into the edit box and the Ent... variables.
void Load_Text_Box(const EntryRow& row);
// Size and place of the edit box for the text in it.
void Place_Text_Box(const EntryRow& row);
// All controls the kind of the row has. The text in the edit box stays as it is.
void Place_Controls(const EntryRow& row);
QRect Control_Box(const LiveControl& control);  // whether it can be seen or not
// Round the text in hand, `out` pixels beyond its box: turned as it is drawn, upright while it is being typed.
QPolygonF Text_Outline(double out);
// What can be gripped of lblShape: its box as it is turned, of an ellipse or circle the ellipse itself.
RegionShape Shape_In_Hand(EntryKind kind);
// Union of the hit regions of a row; empty if it has none.
QRectF Region_Bounds(qint64 key);
// The same of all rows of the group in hand.
QRectF Group_Bounds();
// The smallest box round the vertices, of which there is one at least.
EntryBox Vertex_Box(const std::vector<QPoint>& points);
// Box of a figure: of its vertices if it is a free one, else as stored.
EntryBox Figure_Box(const EntryRow& row);
inline constexpr int handleSize = 8;
