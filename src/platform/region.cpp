#include "platform/region.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <utility>

namespace {

constexpr int mostCells = 64;  // a shape over more of them is asked one by one
constexpr double farthest = 1e9, nowhere = 2 * farthest;

bool In_Box(const QRectF& box, QPointF p) {
  return p.x() >= box.left() && p.x() < box.right() && p.y() >= box.top() && p.y() < box.bottom();
}

// A shape of damaged numbers has no place; it is kept as a row but never hit.
bool Placed(const QRectF& b) {
  return std::abs(b.left()) < farthest && std::abs(b.top()) < farthest && std::abs(b.right()) < farthest &&
         std::abs(b.bottom()) < farthest;
}

bool In_Ellipse(const QRectF& box, QPointF p) {
  if (!In_Box(box, p)) return false;
  const double dx = (p.x() - box.center().x()) / (box.width() / 2);
  const double dy = (p.y() - box.center().y()) / (box.height() / 2);
  return dx * dx + dy * dy <= 1;
}

}  // namespace

bool Shape_Contains(const RegionShape& shape, QPointF point) {
  if (const auto* box = std::get_if<QRectF>(&shape)) return In_Box(box->normalized(), point);
  if (const auto* ellipse = std::get_if<EllipseShape>(&shape)) return In_Ellipse(ellipse->box.normalized(), point);
  return std::get<QPolygonF>(shape).containsPoint(point, Qt::OddEvenFill);
}

QRectF Shape_Bounds(const RegionShape& shape) {
  if (const auto* box = std::get_if<QRectF>(&shape)) return box->normalized();
  if (const auto* ellipse = std::get_if<EllipseShape>(&shape)) return ellipse->box.normalized();
  const auto& polygon = std::get<QPolygonF>(shape);
  // The bounds would pass over a corner that is no number, and the rest would be another shape.
  for (const QPointF& corner : polygon)
    if (!std::isfinite(corner.x()) || !std::isfinite(corner.y())) return {corner, corner};
  return polygon.boundingRect();
}

void RegionSet::Narrow(qint64 key, RegionShape shape) {
  Widen();
  for (int number = Count(); number > 0 && narrowed == 0; --number)
    if (Row(number).key == key && Row(number).kind == 0) narrowed = number;
  if (narrowed > 0) wide = std::exchange(rows[static_cast<size_t>(narrowed - 1)].shape, std::move(shape));
}

void RegionSet::Widen() {
  if (narrowed > 0) rows[static_cast<size_t>(narrowed - 1)].shape = std::move(wide);
  narrowed = 0;
}

void RegionSet::Clear() {
  narrowed = 0;
  rows.clear();
  cells.clear();
  large.clear();
  built = false;
}

int RegionSet::Add(RegionShape shape, qint64 key, int kind) {
  const QRectF bounds = Shape_Bounds(shape);
  rows.push_back({std::move(shape), key, kind, bounds});
  built = false;
  return Count();
}

void RegionSet::Build() const {
  if (built) return;
  built = true;
  cells.clear();
  large.clear();
  columns = lines = 0;
  // Cells of the same size over all bounds, about one for every four rows.
  double left = farthest, top = farthest, right = -farthest, bottom = -farthest;
  for (const EntryRegion& row : rows) {
    if (!Placed(row.bounds)) continue;
    left = std::min(left, row.bounds.left());
    top = std::min(top, row.bounds.top());
    right = std::max(right, row.bounds.right());
    bottom = std::max(bottom, row.bounds.bottom());
  }
  if (left > right) {  // nothing that has a place
    extent = {};
    return;
  }
  extent = QRectF(QPointF(left, top), QPointF(std::max(right, left + 1), std::max(bottom, top + 1)));
  const double side = std::clamp(std::sqrt(static_cast<double>(rows.size()) / 4), 1.0, 256.0);
  columns = lines = static_cast<int>(std::ceil(side));
  cells.resize(static_cast<size_t>(columns) * static_cast<size_t>(lines));
  for (int number = 1; number <= Count(); ++number) Put_In_Grid(number);
}

// Calls the work for the cells the bounds touch, or once for the list of the large shapes.
template <class Work>
void RegionSet::For_Each_Cell(const QRectF& b, Work&& work) const {
  const auto column = [&](double x) {
    return std::clamp(static_cast<int>((x - extent.left()) / extent.width() * columns), 0, columns - 1);
  };
  const auto line = [&](double y) {
    return std::clamp(static_cast<int>((y - extent.top()) / extent.height() * lines), 0, lines - 1);
  };
  const int c0 = column(b.left()), c1 = column(b.right()), l0 = line(b.top()), l1 = line(b.bottom());
  if ((c1 - c0 + 1) * (l1 - l0 + 1) > mostCells) return work(large);
  for (int l = l0; l <= l1; ++l)
    for (int c = c0; c <= c1; ++c)
      work(cells[static_cast<size_t>(l) * static_cast<size_t>(columns) + static_cast<size_t>(c)]);
}

// False if it reaches beyond the grid.
bool RegionSet::Put_In_Grid(int number) const {
  const QRectF& b = Row(number).bounds;
  if (!Placed(b)) return true;
  if (cells.empty() || b.left() < extent.left() || b.top() < extent.top() || b.right() > extent.right() ||
      b.bottom() > extent.bottom())
    return false;
  For_Each_Cell(b, [number](std::vector<int>& cell) {
    if (cell.empty() || cell.back() < number)
      cell.push_back(number);
    else
      cell.insert(std::lower_bound(cell.begin(), cell.end(), number), number);
  });
  return true;
}

void RegionSet::Take_From_Grid(int number) const {
  const QRectF& b = Row(number).bounds;
  if (!Placed(b)) return;
  For_Each_Cell(b, [number](std::vector<int>& cell) {
    const auto found = std::lower_bound(cell.begin(), cell.end(), number);
    if (found != cell.end() && *found == number) cell.erase(found);
  });
}

// Rows that are no more keep their numbers, without a place: the numbers of all others, and the grid, stay good.
void RegionSet::Exchange(qint64 key, std::vector<EntryRegion> fresh) {
  Widen();
  const auto lower = [](const EntryRegion& row, qint64 wanted) { return row.key < wanted; };
  auto place = std::lower_bound(rows.begin(), rows.end(), key, lower);
  for (; place != rows.end() && place->key == key; ++place) {
    const int number = static_cast<int>(place - rows.begin()) + 1;
    if (built) Take_From_Grid(number);
    if (fresh.empty()) {
      place->shape = QRectF(nowhere, nowhere, 0, 0);
      place->bounds = QRectF(nowhere, nowhere, 0, 0);
      continue;
    }
    *place = std::move(fresh.front());
    fresh.erase(fresh.begin());
    if (built) built = Put_In_Grid(number);
  }
  if (fresh.empty()) return;
  const bool onTop = place == rows.end();
  const int first = static_cast<int>(place - rows.begin()) + 1, last = first + static_cast<int>(fresh.size()) - 1;
  rows.insert(place, std::make_move_iterator(fresh.begin()), std::make_move_iterator(fresh.end()));
  for (int number = first; number <= last && built; ++number) built = onTop && Put_In_Grid(number);
}

bool RegionSet::AnyAt(QPointF point) const { return TopAt(point) != 0; }

int RegionSet::TopAt(QPointF point) const { return NextBelow(point, Count() + 1); }

int RegionSet::NextBelow(QPointF point, int above) const {
  Build();
  if (cells.empty() || !std::isfinite(point.x()) || !std::isfinite(point.y())) return 0;
  if (point.x() < extent.left() || point.x() > extent.right() || point.y() < extent.top() ||
      point.y() > extent.bottom())
    return 0;
  const auto highest = [&](const std::vector<int>& numbers) {
    auto it = std::lower_bound(numbers.begin(), numbers.end(), above);
    while (it != numbers.begin()) {
      const EntryRegion& row = Row(*--it);
      const QRectF& b = row.bounds;
      if (point.x() < b.left() || point.x() > b.right() || point.y() < b.top() || point.y() > b.bottom()) continue;
      if (Shape_Contains(row.shape, point)) return *it;
    }
    return 0;
  };
  const int c = std::clamp(static_cast<int>((point.x() - extent.left()) / extent.width() * columns), 0, columns - 1);
  const int l = std::clamp(static_cast<int>((point.y() - extent.top()) / extent.height() * lines), 0, lines - 1);
  const int small = highest(cells[static_cast<size_t>(l) * static_cast<size_t>(columns) + static_cast<size_t>(c)]);
  return std::max(small, highest(large));
}
