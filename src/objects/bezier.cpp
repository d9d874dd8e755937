#include "objects/bezier.h"

#include <algorithm>
#include <cmath>

namespace {

QPointF Middle(QPointF a, QPointF b) { return (a + b) / 2; }

void Add_Piece(std::vector<QPointF>& out, QPointF vertex, QPointF end) {
  out.push_back(vertex);
  out.push_back(vertex);
  out.push_back(end);
}

}  // namespace

void Bezier_Points(std::span<const QPointF> vertices, std::vector<QPointF>& out) {
  out.clear();
  const size_t count = vertices.size();
  if (count < 2) return;
  out.reserve(3 * count + 1);
  out.push_back(Middle(vertices[count - 1], vertices[0]));
  for (size_t i = 0; i + 1 < count; ++i) Add_Piece(out, vertices[i], Middle(vertices[i], vertices[i + 1]));
  Add_Piece(out, vertices[count - 1], out.front());
}

void Bezier_Points_Open(std::span<const QPointF> vertices, std::vector<QPointF>& out) {
  out.clear();
  const size_t count = vertices.size();
  if (count < 2) return;
  out.reserve(3 * count);
  out.push_back(vertices[0]);
  if (count == 2) return Add_Piece(out, vertices[0], vertices[1]);
  for (size_t i = 1; i + 2 < count; ++i) Add_Piece(out, vertices[i], Middle(vertices[i], vertices[i + 1]));
  Add_Piece(out, vertices[count - 2], vertices[count - 1]);
}

void Flatten_Bezier(std::span<const QPointF> curve, std::vector<QPointF>& out, double step) {
  out.clear();
  if (curve.empty()) return;
  out.push_back(curve[0]);
  for (size_t i = 0; i + 3 < curve.size(); i += 3) {
    const QPointF a = curve[i], b = curve[i + 1], c = curve[i + 2], d = curve[i + 3];
    const double length = std::hypot(b.x() - a.x(), b.y() - a.y()) + std::hypot(c.x() - b.x(), c.y() - b.y()) +
                          std::hypot(d.x() - c.x(), d.y() - c.y());
    const int chords = static_cast<int>(std::clamp(std::ceil(length / step), 1.0, 64.0));
    for (int k = 1; k < chords; ++k) {
      const double t = static_cast<double>(k) / chords, s = 1 - t;
      out.push_back(s * s * s * a + 3 * s * s * t * b + 3 * s * t * t * c + t * t * t * d);
    }
    out.push_back(d);
  }
}
