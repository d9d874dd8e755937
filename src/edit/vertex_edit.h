#pragma once
#include <QPoint>
#include <QPolygonF>
#include <QString>
#include <optional>
#include <vector>

// Changing the vertices of a line, an area or a free figure, by mouse or in a table. Vertices are map pixels.

struct VertexList {
  qint64 key = 0;       // the entry's row
  QString table, name;  // name: as the user calls it, "Fläche3"
  bool closed = false;
  std::vector<QPoint> points;                      // the outline
  std::vector<QPoint> rest;                        // the stop mark and what stands behind it, kept as it is
  size_t Least() const { return closed ? 3 : 2; }  // vertices that must stay
  bool operator==(const VertexList&) const = default;
};
inline constexpr int leastVertex = -15000, mostVertex = 32767;

// Of the current row, or of the row with this key. None if it has no vertices, or none that can be read.
std::optional<VertexList> Vertices_Of_Current();
std::optional<VertexList> Vertices_Of(qint64 key);
// Where a vertex of the list is seen, map pixels: that of a turned figure lies elsewhere than it is stored.
QPoint Seen_Vertex(const VertexList& list, int number);
// Writes the table anew, in one transaction; the row of a free figure takes their box. Tbl becomes dirty, the map is
// redrawn. False if nothing was written; that was told.
bool Write_Vertex_List(const VertexList& list);

// Vertex and edge of the entry in hand at a window position: the number of the vertex, of the edge's first vertex; -1
// if there is none. Vertices that lie too close to be told apart cannot be hit.
int Vertex_At(QPoint window);
int Edge_At(QPoint window);
// What a moved vertex draws behind it, in window pixels: its neighbours and the vertex itself, at `middle`.
QPolygonF Vertex_Neighbours(int number, int& middle);
void Move_Vertex(int number, QPoint by);  // map pixels, as it is seen; the vertex counted from 0
// A new vertex on the edge of the entry in hand under the position. False if there is no edge.
bool Insert_Vertex_At(QPoint window);
