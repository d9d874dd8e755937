#pragma once
#include <QPainterPath>
#include <QPoint>
#include <QString>
#include <functional>
#include <optional>
#include <vector>

#include "store/entry.h"

// Making and changing figures. What the next one looks like stands in canvas/next_shape.h. Changes of a figure have the
// undo point "Rückgängig: Figur ändern".

// Puts lblShape and the handles round the current figure. Tells "Keine aktive Figur" where it is none; false then.
bool Show_Figure();
enum class FigureOf {
  Next,       // a new figure of the next kind
  Duplicate,  // one like the current figure, with a vertex table of its own
  Current     // the current figure gets the place and size
};
// Writes a figure with that box (map pixels); squares and circles take the width for both. A new one is in hand
// afterwards. False if nothing was written; why is told.
bool Store_Figure(FigureOf what, EntryBox box);
// A new figure of the next kind and size with its upper left corner there.
bool Place_Figure(QPoint map);

// Kind, width and height (map pixels) of the current figure. Squares and circles take the width for both. The vertices
// of a free figure, whose kind stays, go along. False if nothing was written; a size that cannot be is told.
bool Change_Figure(EntryKind kind, int width, int height);
bool Keeps_Square(EntryKind kind);
// "" or why a figure cannot have this box.
QString Figure_Problem(const EntryBox& box);

// A new free figure. False, and a message, with too few vertices or if it could not be stored.
bool Add_Free_Figure(const std::vector<QPoint>& vertices, bool rounded);
// Writes vertices and edges of the current free figure; its box becomes theirs.
bool Change_Free_Figure(const std::vector<QPoint>& vertices, bool rounded);
std::vector<QPoint> Free_Figure_Vertices();  // of the current figure; empty if it is no free one
inline constexpr int fewestVertices = 3;

// The figure's form about a box, as outlines show it; free figures by their vertices.
QPainterPath Figure_Outline(EntryKind kind, const QRectF& box, double angle = 0,
                            const std::vector<QPointF>& vertices = {});
// "Rechteck", "Quadrat", "Ellipse", "Kreis", "Freie Figur".
QString Figure_Word(EntryKind kind);
