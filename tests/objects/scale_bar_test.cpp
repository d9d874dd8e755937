#include "objects/scale_bar.h"

#include "objects/drawing.h"
#include "start/global_state.h"

namespace {

EntryRow Row(int x, int y, int length, int hg = 0) {
  EntryRow row;
  row.ID = QStringLiteral("Maßstab");
  row.Eintrag = QStringLiteral(" km");
  row.Schrift = QStringLiteral("5");
  row.Groesse = 5;
  row.VG = 9, row.HG = hg;
  row.Xmap = x, row.Ymap = y, row.Xline = x + length, row.Yline = y + 8;
  row.Typ = 11;
  return row;
}

TEST(ScaleBar, RowIsRead) {
  struct Case {
    const char *eintrag, *schrift;
    double groesse;
    const char *unit, *text;
    double number;
  };
  const Case cases[] = {{" km", "5", 5, " km", "5 km", 5},
                        {"Meter", "250", 250, " m", "250 m", 250},
                        {"Zentimeter", "x", 2.5, " cm", "2,5 cm", 2.5},
                        {"kilometer", "", 3, " km", "3 km", 3},
                        {" m", "0,5", 0, " m", "0,5 m", 0.5},
                        {"Fuß", "10", 10, " Fuß", "10 Fuß", 10}};
  for (const Case& c : cases) {
    EntryRow row = Row(10, 10, 200);
    row.Eintrag = QString::fromUtf8(c.eintrag);
    row.Schrift = QString::fromUtf8(c.schrift);
    row.Groesse = c.groesse;
    const ScaleValue scale = Scale_Of(row);
    EXPECT_TRUE(scale.valid);
    EXPECT_EQ(scale.unit.toStdString(), c.unit);
    EXPECT_EQ(scale.text.toStdString(), c.text);
    EXPECT_DOUBLE_EQ(scale.number, c.number);
    EXPECT_DOUBLE_EQ(scale.unitPerPixel, c.number / 200);
  }
  EXPECT_TRUE(Scale_Of(Row(0, 0, 100, 1)).vertical);
  EXPECT_FALSE(Scale_Of(Row(0, 0, 100, 9)).vertical);
  EXPECT_FALSE(Scale_Of(Row(0, 0, 100, 9)).hgIsSound);
}

TEST(ScaleBar, SetsTheMapsScale) {
  MapHasScale = false;
  EXPECT_TRUE(Read_Scale(Row(300, 10, -200)));  // drawn backward: the same length
  EXPECT_TRUE(MapHasScale);
  EXPECT_EQ(MapUnit, QStringLiteral(" km"));
  EXPECT_DOUBLE_EQ(MapUnitPerPixel, 0.025);
  EXPECT_FALSE(Read_Scale(Row(300, 10, 0)));
  EXPECT_FALSE(MapHasScale);
  EXPECT_EQ(MapUnitPerPixel, 0);
}

TEST(ScaleBar, HasFiveStepsBlackAndYellow) {
  Drawing drawing(160, 100);
  const QRectF box = Draw_Scale_Bar(drawing.context, Row(20, 30, 100));
  const QRgb fields[] = {black, yellow, black, yellow, black};
  for (int i = 0; i < 5; ++i) EXPECT_EQ(drawing.At(30 + 20 * i, 34), fields[i]) << i;
  EXPECT_EQ(drawing.Extent(yellow), QRect(41, 31, 59, 7));  // within the blue rim
  EXPECT_EQ(drawing.At(50, 30), blue);
  EXPECT_EQ(drawing.At(50, 38), blue);
  EXPECT_EQ(drawing.At(50, 39), white);
  // Ticks from 10 above to 20 below, at both ends; not-xor, so that they show against the rim too.
  EXPECT_EQ(drawing.At(20, 34), white);
  for (const int x : {20, 120}) {
    EXPECT_EQ(drawing.At(x, 21), blue) << x;
    EXPECT_EQ(drawing.At(x, 56), blue) << x;
    EXPECT_EQ(drawing.At(x, 19), white) << x;
  }
  // The text stands in the middle under the bar.
  int text = 0;
  for (int y = 43; y < 60; ++y)
    for (int x = 50; x < 90; ++x) text += drawing.At(x, y) != white;
  EXPECT_GT(text, 20);
  EXPECT_TRUE(box.contains(QRectF(20, 20, 101, 30)));
}

TEST(ScaleBar, StandsWhenVertical) {
  Drawing drawing(100, 160);
  Draw_Scale_Bar(drawing.context, Row(20, 30, 100, 1));
  const QRgb fields[] = {black, yellow, black, yellow, black};
  for (int i = 0; i < 5; ++i) EXPECT_EQ(drawing.At(24, 40 + 20 * i), fields[i]) << i;
  const auto Ink = [](const Drawing& d, QRect area) { return area.width() * area.height() - d.Count(white, area); };
  EXPECT_GT(Ink(drawing, QRect(38, 50, 20, 60)), 20);  // turned text to the right
  // Near the right edge the text goes to the left side.
  Drawing edge(100, 160);
  const QRectF box = Draw_Scale_Bar(edge.context, Row(70, 30, 100, 1));
  EXPECT_GT(Ink(edge, QRect(50, 50, 18, 60)), 20);
  EXPECT_EQ(Ink(edge, QRect(80, 50, 19, 60)), 0);
  EXPECT_LT(box.left(), 56);
}

TEST(ScaleBar, WithoutLengthOrThicknessThereIsNone) {
  Drawing drawing;
  EntryRow flat = Row(20, 30, 50);
  flat.Yline = flat.Ymap;
  EXPECT_TRUE(Draw_Scale_Bar(drawing.context, flat).isEmpty());
  EXPECT_TRUE(Draw_Scale_Bar(drawing.context, Row(20, 30, 0)).isEmpty());
  EXPECT_EQ(drawing.Count(white), 10000);
}

}  // namespace
