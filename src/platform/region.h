#pragma once
#include <QPointF>
#include <QPolygonF>
#include <QRectF>
#include <QString>
#include <cstdint>
#include <variant>
#include <vector>

// A shape that can be hit: rectangle (right and lower edge excluded), ellipse in a box, polygon (odd-even).
struct EllipseShape {
  QRectF box;
};
using RegionShape = std::variant<QRectF, EllipseShape, QPolygonF>;
bool Shape_Contains(const RegionShape& shape, QPointF point);  // is the point in the shape?
QRectF Shape_Bounds(const RegionShape& shape);                 // box round the shape

// One row of the hit list. kind 500 marks the foot point of a reference, 0 everything else.
struct EntryRegion {
  RegionShape shape;
  qint64 key = 0;  // row key of the entry; Bookmark() is the same as text
  int kind = 0;
  QRectF bounds;
  QString Bookmark() const { return QString::number(key); }
};

// The hit list with its union. Rows are numbered from 1; the row added last lies on top.
class RegionSet {
 public:
  void Clear();                                      // no row is left
  int Add(RegionShape shape, qint64 key, int kind);  // on top; number of the new row
  // The rows of this key are these from now on, in the place of those it had: where no row of a higher key lies below
  // one of a lower key. Nobody's shape is narrowed afterwards. Rows of other keys may get other numbers.
  void Exchange(qint64 key, std::vector<EntryRegion> fresh);
  // The shape of the topmost row of this key counts as a narrower one, within its bounds, until Widen or Clear. One row
  // at a time.
  void Narrow(qint64 key, RegionShape shape);
  void Widen();  // it counts as it was added again
  int Count() const { return static_cast<int>(rows.size()); }
  const EntryRegion& Row(int number) const { return rows[static_cast<size_t>(number - 1)]; }
  // Is there any shape under the point (the union)? Both use a grid over the bounds, built at the first question.
  bool AnyAt(QPointF point) const;
  // Highest row number under the point, 0 if there is none.
  int TopAt(QPointF point) const;
  // The next one below `above` under the point, 0 if there is none.
  int NextBelow(QPointF point, int above) const;

 private:
  void Build() const;
  bool Put_In_Grid(int number) const;
  void Take_From_Grid(int number) const;
  template <class Work>
  void For_Each_Cell(const QRectF& bounds, Work&& work) const;
  std::vector<EntryRegion> rows;
  int narrowed = 0;  // number of that row, 0 = none
  RegionShape wide;  // what it was
  mutable std::vector<std::vector<int>> cells;
  mutable std::vector<int> large;  // shapes over many cells
  mutable QRectF extent;
  mutable int columns = 0, lines = 0;
  mutable bool built = false;
};
