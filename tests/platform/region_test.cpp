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

// The index must answer as a walk over all rows from the top would, wherever the shapes lie and however large they are.
TEST(RegionSet, IndexAnswersAsAPlainWalkWould) {
  std::mt19937 random(4711);
  std::uniform_real_distribution<double> place(-3000, 3000), size(0, 60);
  RegionSet set;
  EXPECT_EQ(set.TopAt({0, 0}), 0);
  for (int i = 0; i < 3000; ++i) {
    const double factor = i % 100 == 0 ? 50 : 1;
    const QRectF box(place(random), place(random), size(random) * factor, size(random) * factor);
    if (i % 3 == 0)
      set.Add(box, i, 0);
    else if (i % 3 == 1)
      set.Add(EllipseShape{box}, i, 500);
    else
      set.Add(QPolygonF({box.topLeft(), box.topRight(), box.center(), box.bottomLeft()}), i, 0);
  }
  int hits = 0;
  for (int i = 0; i < 2000; ++i) {
    const QPointF point(place(random), place(random));
    int below = set.Count() + 1;
    for (int number = set.Count(); number >= 1; --number) {
      if (!Shape_Contains(set.Row(number).shape, point)) continue;
      ++hits;
      ASSERT_EQ(set.NextBelow(point, below), number);
      if (below > set.Count()) {
        ASSERT_EQ(set.TopAt(point), number);
      }
      below = number;
    }
    ASSERT_EQ(set.NextBelow(point, below), 0);
    ASSERT_EQ(set.AnyAt(point), below <= set.Count());
  }
  EXPECT_GT(hits, 500);
}

// Rows that are exchanged one key at a time, between questions, answer as a list made anew.
TEST(RegionSet, ExchangedRowsAnswerAsAFreshList) {
  std::mt19937 random(99);
  std::uniform_real_distribution<double> place(-500, 500), size(1, 60);
  std::map<qint64, std::vector<EntryRegion>> rows;
  const auto any = [&](qint64 key) {
    std::vector<EntryRegion> regions;
    for (int i = static_cast<int>(random() % 3); i > 0; --i) {
      const double far = random() % 9 == 0 ? 4 : 1;
      const QRectF box(place(random) * far, place(random) * far, size(random), size(random));
      regions.push_back({box, key, i, box});
    }
    return regions;
  };
  RegionSet set;
  for (qint64 key = 0; key < 300; ++key)
    for (const EntryRegion& region : rows[key] = any(key)) set.Add(region.shape, key, region.kind);
  for (int step = 0; step < 400; ++step) {
    const qint64 key = static_cast<qint64>(random() % 330) - 10;
    set.Narrow(key, QRectF());
    rows[key] = any(key);
    set.Exchange(key, rows[key]);
    RegionSet fresh;
    for (const auto& [each, regions] : rows)
      for (const EntryRegion& region : regions) fresh.Add(region.shape, each, region.kind);
    for (int i = 0; i < 40; ++i) {
      const QPointF at(place(random), place(random));
      int mended = set.TopAt(at), other = fresh.TopAt(at);
      for (; mended > 0 && other > 0; mended = set.NextBelow(at, mended), other = fresh.NextBelow(at, other))
        ASSERT_EQ(std::pair(set.Row(mended).key, set.Row(mended).kind),
                  std::pair(fresh.Row(other).key, fresh.Row(other).kind));
      ASSERT_EQ(mended, other);
    }
  }
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
  set.Add(QRectF(0, 0, qInf(), 10), 2, 0);
  set.Add(QPolygonF(), 3, 0);
  const int good = set.Add(QRectF(0, 0, 10, 10), 4, 0);
  EXPECT_EQ(set.TopAt({5, 5}), good);
  EXPECT_FALSE(set.AnyAt({qQNaN(), 5}) || set.AnyAt({50, 50}));
}

}  // namespace
