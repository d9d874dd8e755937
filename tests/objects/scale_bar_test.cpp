#include "objects/scale_bar.h"

#include "objects/drawing.h"

namespace {

const QRgb fields[] = {black, yellow, black, yellow, black};

EntryRow Row(int x, int y, int length, int hg = 0) {
  EntryRow row;
  row.Eintrag = QStringLiteral(" km");
  row.Schrift = QStringLiteral("5");
  row.Groesse = 5;
  row.VG = 9, row.HG = hg;
  row.Xmap = x, row.Ymap = y, row.Xline = x + length, row.Yline = y + 8;
  row.Typ = 11;
  return row;
}

TEST(ScaleBar, RowIsRead) {
  const std::tuple<const char*, const char*, double, const char*, const char*, double> cases[] = {
      {" km", "5", 5, " km", "5 km", 5},
      {"Meter", "250", 250, " m", "250 m", 250},
      {"Zentimeter", "x", 2.5, " cm", "2,5 cm", 2.5},
      {"kilometer", "", 3, " km", "3 km", 3},
      {" m", "0,5", 0, " m", "0,5 m", 0.5},
      {"Fuß", "10", 10, " Fuß", "10 Fuß", 10}};
  for (const auto& [eintrag, schrift, groesse, unit, text, number] : cases) {
    EntryRow row = Row(10, 10, 200);
    row.Eintrag = eintrag;
    row.Schrift = schrift;
    row.Groesse = groesse;
    const ScaleValue scale = Scale_Of(row);
    EXPECT_TRUE(scale.valid);
    EXPECT_EQ(std::pair(scale.unit, scale.text), std::pair(QString(unit), QString(text)));
    EXPECT_DOUBLE_EQ(scale.number, number);
    EXPECT_DOUBLE_EQ(scale.unitPerPixel, number / 200);
  }
  EXPECT_TRUE(Scale_Of(Row(0, 0, 100, 1)).vertical);
  EXPECT_FALSE(Scale_Of(Row(0, 0, 100, 9)).vertical);
}

TEST(ScaleBar, SetsTheMapsScale) {
  MapHasScale = false;
  EXPECT_TRUE(Read_Scale(Row(300, 10, -200)));  // drawn backward: the same length
  EXPECT_TRUE(MapHasScale);
  EXPECT_EQ(MapUnit, " km");
  EXPECT_DOUBLE_EQ(MapUnitPerPixel, 0.025);
  EXPECT_FALSE(Read_Scale(Row(300, 10, 0)));
  EXPECT_FALSE(MapHasScale);
  EXPECT_EQ(MapUnitPerPixel, 0);
  Drawing drawing;
  EntryRow flat = Row(20, 30, 50);
  flat.Yline = flat.Ymap;
  for (const EntryRow& none : {flat, Row(20, 30, 0)}) EXPECT_TRUE(Draw_Scale_Bar(drawing.context, none).isEmpty());
  EXPECT_EQ(drawing.Count(white), 10000);
}

TEST(ScaleBar, HasFiveStepsBlackAndYellow) {
  Drawing drawing(160, 100);
  const QRectF box = Draw_Scale_Bar(drawing.context, Row(20, 30, 100));
  for (int i = 0; i < 5; ++i) EXPECT_EQ(drawing.At(30 + 20 * i, 34), fields[i]) << i;
  EXPECT_EQ(drawing.Extent(yellow), QRect(41, 31, 59, 7));  // within the blue rim
  drawing.Expect({{50, 30, blue}, {50, 38, blue}, {50, 39, white}});
  // Ticks from 10 above to 20 below, at both ends; not-xor, so that they show against the rim too.
  drawing.Expect({{20, 34, white}, {20, 21, blue}, {20, 56, blue}, {20, 19, white}});
  drawing.Expect({{120, 21, blue}, {120, 56, blue}, {120, 19, white}});
  EXPECT_GT(Count_Pixels(drawing.image, QRect(50, 43, 40, 17), Is_Ink), 20);  // the text, in the middle under the bar
  EXPECT_TRUE(box.contains(QRectF(20, 20, 101, 30)));
}

TEST(ScaleBar, StandsWhenVertical) {
  Drawing drawing(100, 160);
  Draw_Scale_Bar(drawing.context, Row(20, 30, 100, 1));
  for (int i = 0; i < 5; ++i) EXPECT_EQ(drawing.At(24, 40 + 20 * i), fields[i]) << i;
  EXPECT_GT(Count_Pixels(drawing.image, QRect(38, 50, 20, 60), Is_Ink), 20);  // turned text to the right
  // Near the right edge the text goes to the left side.
  Drawing edge(100, 160);
  const QRectF box = Draw_Scale_Bar(edge.context, Row(70, 30, 100, 1));
  EXPECT_GT(Count_Pixels(edge.image, QRect(50, 50, 18, 60), Is_Ink), 20);
  EXPECT_EQ(Count_Pixels(edge.image, QRect(80, 50, 19, 60), Is_Ink), 0);
  EXPECT_EQ(box.left(), 55) << "15 pixels beside the bar";
}

}  // namespace
