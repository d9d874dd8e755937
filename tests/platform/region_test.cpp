#include "platform/region.h"

namespace {

TEST(Shapes, EdgesBelongToTheLeftAndTopOnly) {
  const QRectF box(10, 20, 30, 40);
  const QPolygonF ring{{{0, 0}, {40, 0}, {40, 40}, {0, 40}, {0, 0}, {10, 10}, {30, 10}, {30, 30}, {10, 30}, {10, 10}}};
  const std::tuple<RegionShape, std::vector<QPointF>, std::vector<QPointF>> cases[] = {
      {box, {{10, 20}, {39.9, 59.9}}, {{40, 30}, {20, 60}}},
      {QRectF(40, 60, -30, -40), {{10, 20}}, {}},
      {QRectF(5, 5, 0, 0), {}, {{5, 5}}},
      {EllipseShape{box}, {{25, 40}, {25, 21}}, {{12, 22}, {37, 57}}},
      {ring, {{5, 5}, {35, 20}}, {{20, 20}}}};
  for (const auto& [shape, inside, outside] : cases) {
    for (const QPointF& point : inside) EXPECT_TRUE(Shape_Contains(shape, point)) << point.x() << "," << point.y();
    for (const QPointF& point : outside) EXPECT_FALSE(Shape_Contains(shape, point)) << point.x() << "," << point.y();
  }
}

// What lies at the point, from the top, as a walk over all rows finds it.
using Found = std::vector<std::pair<qint64, int>>;
Found Plain_Walk(const std::map<qint64, std::vector<EntryRegion>>& rows, QPointF point) {
  Found found;
  for (auto row = rows.rbegin(); row != rows.rend(); ++row)
    for (auto region = row->second.rbegin(); region != row->second.rend(); ++region)
      if (Shape_Contains(region->shape, point)) found.emplace_back(row->first, region->kind);
  return found;
}
Found By_Index(const RegionSet& set, QPointF point) {
  Found found;
  for (int row = set.TopAt(point); row > 0; row = set.NextBelow(point, row))
    found.emplace_back(set.Row(row).key, set.Row(row).kind);
  EXPECT_EQ(set.AnyAt(point), !found.empty());
  return found;
}

// The index must answer so wherever the shapes lie, however large they are, and while rows are exchanged one key at a
// time.
TEST(RegionSet, IndexAnswersAsAPlainWalkWould) {
  std::mt19937 random(4711);
  std::uniform_real_distribution<double> place(-1500, 1500), size(0, 60);
  std::map<qint64, std::vector<EntryRegion>> rows;
  RegionSet set;
  EXPECT_EQ(set.TopAt({0, 0}), 0);
  const auto any = [&](qint64 key) {
    std::vector<EntryRegion> regions;
    for (size_t kind = random() % 4; kind > 0; --kind) {
      const double factor = random() % 100 == 0 ? 50 : 1;
      const QRectF box(place(random), place(random), size(random) * factor, size(random) * factor);
      const QPolygonF arrow({box.topLeft(), box.topRight(), box.center(), box.bottomLeft()});
      const RegionShape shapes[] = {box, EllipseShape{box}, arrow};
      regions.push_back({shapes[kind - 1], key, static_cast<int>(kind), box});
    }
    return regions;
  };
  for (qint64 key = 0; key < 900; ++key)
    for (const EntryRegion& region : rows[key] = any(key)) set.Add(region.shape, key, region.kind);
  size_t hits = 0;
  for (int step = 0; step < 400; ++step) {
    for (int i = 0; i < 40; ++i) {
      const QPointF at(place(random), place(random));
      const Found wanted = Plain_Walk(rows, at);
      ASSERT_EQ(By_Index(set, at), wanted) << "step " << step;
      hits += wanted.size();
    }
    const qint64 key = static_cast<qint64>(random() % 930) - 10;
    set.Narrow(key, QRectF());
    rows[key] = any(key);
    set.Exchange(key, rows[key]);
  }
  EXPECT_GT(hits, 500U);
}

TEST(RegionSet, LaterRowsAreFoundClearedOnesAndThoseWithoutPlaceAreNot) {
  RegionSet set;
  set.Add(QRectF(0, 0, 10, 10), 1, 0);
  EXPECT_EQ(set.TopAt({5, 5}), 1);
  set.Add(QRectF(0, 0, 10, 10), 7, 500);
  set.Add(QRectF(1000, 1000, 3, 3), 8, 0);
  EXPECT_EQ(set.TopAt({5, 5}), 2);
  EXPECT_EQ(set.Row(2).Bookmark(), "7");
  EXPECT_EQ(set.TopAt({1001, 1001}), 3);
  set.Clear();
  EXPECT_FALSE(set.AnyAt({5, 5}));
  set.Add(QRectF(qQNaN(), 0, 10, 10), 1, 0);
  for (const double far : {qInf(), 1e300}) set.Add(QRectF(0, 0, far, far), 2, 0);
  set.Add(QPolygonF({{0, 0}, {0, 40}, {40, 40}, {qQNaN(), 0}}), 3, 0);
  const int good = set.Add(QRectF(0, 0, 10, 10), 4, 0);
  EXPECT_EQ(set.TopAt({5, 5}), good);
  EXPECT_FALSE(set.AnyAt({qQNaN(), 5}) || set.AnyAt({50, 50}) || set.AnyAt({30, 30}));
}

}  // namespace
