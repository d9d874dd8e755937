#include "analysis/color_assignment.h"

#include "analysis_rows.h"

namespace {
constexpr QRgb white = 0xFFFFFFFF, red = 0xFFFF0000, blue = 0xFF0000FF, grey = 0xFF555555;
// The colour under an entry is its x.
QRgb By_Column(QPoint at) {
  constexpr QRgb colors[] = {white, red, blue, grey};
  return colors[at.x()];
}
EntryRow At(int x, const QString& id, int typ, const QString& text) { return Row(id, typ, text, x, 0); }
}  // namespace

TEST(ColorAssignmentTest, SpeciesByColour) {
  std::vector<EntryRow> rows = {
      At(1, "Text", 0, "zebra"),    At(0, "Text", 1, "3 Öl"),    At(2, "Text", 2, "Ofen"),
      At(2, "Text", 100, "marked"), At(2, "-Text", 0, "asleep"), At(2, "Text", -101, "hidden"),
      At(3, "Bild", 5, "picture"),  At(3, "Flaeche1", 4, "x"),   At(2, "Text", 0, "Öl"),
      At(1, "Text", 0, "3 Öl"),     At(3, "-Text", -1, "gone")};
  rows[9].Xline = 3;  // its foot stands elsewhere
  const auto result = Assign_To_Colors(rows, {.inactive = true, .leadingNumbers = true}, By_Column);
  ASSERT_TRUE(result);
  EXPECT_EQ(result->entries.size(), 9U);
  EXPECT_TRUE(result->leftOut);
  // Red, blue and grey are equally bright: in the order of the sorted species.
  EXPECT_EQ(result->colors, (std::vector<QRgb>{white, blue, grey, red}));
  QStringList shown;
  for (const ColorSpecies& species : result->species) {
    QStringList counts;
    for (const qint64 count : species.perColor) counts += QString::number(count);
    shown += QStringLiteral("%1 %2 = %3").arg(species.name).arg(species.total).arg(counts.join(u'+'));
  }
  EXPECT_EQ(shown, (QStringList{"asleep 1 = 0+1+0+0", "Ofen 1 = 0+1+0+0", "Öl 7 = 3+1+3+0", "zebra 1 = 0+0+0+1"}));
  EXPECT_EQ(std::tuple(result->total, result->perColor), std::tuple(10, (std::vector<qint64>{3, 3, 3, 1})));
  EXPECT_EQ(result->species[2].row, 1);
  const auto whole =
      Assign_To_Colors(rows, {.plain = true, .marked = true, .inactive = true, .hidden = true}, By_Column);
  EXPECT_FALSE(whole->leftOut);
  EXPECT_EQ(whole->species.front().name, "3 Öl");
  EXPECT_EQ(whole->total, 9);
}

TEST(ColorAssignmentTest, ManyNamesButNotManyColours) {
  std::vector<EntryRow> rows;
  for (int i = 0; i < 5000; ++i) rows.push_back(At(i % 500, "Text", 0, QString::number(100000 - i) + "x"));
  const auto colorAt = [](QPoint at) { return qRgb(at.x() % 250, at.x() / 250, 0); };
  const auto result = Assign_To_Colors(rows, {}, colorAt);
  EXPECT_EQ(std::tuple(result->species.size(), result->colors.size()), std::tuple(5000U, 500U));
  EXPECT_EQ(result->species.front().name, "100000x");
  EXPECT_TRUE(Assign_To_Colors({}, {}, colorAt)->species.empty());
  QImage picture(2, 2, QImage::Format_Indexed8);
  picture.setColorTable({red, blue});
  picture.fill(1);
  EXPECT_EQ(Scan_Color(picture, {1, 1}), blue);
  EXPECT_EQ(Scan_Color(picture, {2, 1}), white);
  EXPECT_EQ(Scan_Color(picture, {-1, 0}), white);
  EXPECT_EQ(Scan_Color(QImage(), {0, 0}), white);
}
