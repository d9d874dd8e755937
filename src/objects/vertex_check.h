#pragma once
#include <QPoint>
#include <span>

// Vertices that disturb the shape of a line or area.

// Does vertex `number` disturb: equal to its predecessor, within 2 pixels of it, or does the edge that leads to it
// cross another one that is no neighbour? Of a closed outline the last vertex comes before the first.
bool Vertex_Disturbs(std::span<const QPoint> points, bool closed, int number);
