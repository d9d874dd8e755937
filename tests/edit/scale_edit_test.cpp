#include "edit/scale_edit.h"

#include "objects/north_arrow.h"
#include "support/hand_fixture.h"
#include "tools/scale_tool.h"

namespace {

class ScaleEditTest : public HandTest {
 protected:
  static ScaleInput Kilometre() { return {2.5, ScaleUnit::Kilometer, 200, false, {100, 150}}; }
};

TEST_F(ScaleEditTest, RowIsReadBackInEveryUnitAndFaultsChangeNothing) {
  const char* units[] = {" mm", " cm", " m", " km"};
  for (int unit = 0; unit < 4; ++unit) {
    for (const bool vertical : {false, true}) {
      const ScaleInput input{2.5, static_cast<ScaleUnit>(unit), 200, vertical, {100, 150}};
      ASSERT_TRUE(Add_Scale_Row(input));
      const EntryRow row = Last_Row();
      EXPECT_EQ(row.ID, "Maßstab");
      EXPECT_EQ(row.Eintrag + row.Schrift, QString(units[unit]) + QStringLiteral("2,5"));
      EXPECT_EQ(QRect(row.Xmap, row.Ymap, row.Xline, row.Yline), QRect(100, 150, 300, 158));
      EXPECT_EQ(std::pair(row.HG, row.VG), std::pair(vertical ? 1 : 0, 9));
      EXPECT_EQ(std::pair(MapHasScale, MapUnit), std::pair(true, QString(units[unit])));
      EXPECT_DOUBLE_EQ(MapUnitPerPixel, 0.0125);
      const auto back = Scale_Of_Map();
      ASSERT_TRUE(back);
      EXPECT_EQ(std::tuple(back->ScaleValue, back->unit, back->ScaleLenPx, back->vertical, back->at),
                std::tuple(2.5, input.unit, 200, vertical, QPoint(100, 150)));
    }
  }
  EXPECT_EQ(Entry_Count(), 1);
  ASSERT_TRUE(Add_Scale_Row(Kilometre()));
  const EntryRow before = Last_Row();
  const double nan = std::numeric_limits<double>::quiet_NaN();
  for (const auto& [number, length, x] :
       {std::tuple(0.0, 200, 0), {-5.0, 200, 0}, {nan, 200, 0}, {5.0, 0, 0}, {5.0, 200, 32700}, {1e300, 200, 0}}) {
    MessageScript messages("Maßstab - Fehler");
    EXPECT_FALSE(Add_Scale_Row({number, ScaleUnit::Meter, length, false, {x, 0}})) << number << ' ' << length;
  }
  EXPECT_EQ(Last_Row(), before);
}

TEST_F(ScaleEditTest, TextNamesThePrintFactor) {
  EXPECT_EQ(Show_Scale_Text(), "Maßstab = 1 : ?");
  MapWidthMm = 1600;  // 1 mm a pixel
  ASSERT_TRUE(Add_Scale_Row({5, ScaleUnit::Kilometer, 200, false, {}}));
  EXPECT_EQ(Show_Scale_Text(), "Maßstab = 1 : 25000");
  const std::pair<ScaleUnit, const char*> texts[] = {
      {ScaleUnit::Millimeter, "0,03"}, {ScaleUnit::Zentimeter, "0,25"}, {ScaleUnit::Meter, "25"}};
  for (const auto& [unit, text] : texts)
    EXPECT_EQ(Show_Scale_Text({5, unit, 200, true, {}}), QStringLiteral("Maßstab = 1 : ") + QLatin1String(text));
  PrintFactor = 2;
  EXPECT_EQ(Show_Scale_Text(), "Maßstab = 1 : 12500\nincl. Druckfaktor = 2,00 (Menü: Karte - Druckvorschau)");
}

TEST_F(ScaleEditTest, ReplacesOnlyAnEarlierScaleBar) {
  const QString text = Add(Text_Row("Text", 10, 10));
  Add_North_Arrow(QPoint(500, 100));
  ASSERT_TRUE(Add_Scale_Row(Kilometre()));
  rsEntries->MoveLast();
  Set_Field(column::Typ, qint64{211});  // a marked one is one as well
  ASSERT_TRUE(Take_Entry(text));
  ASSERT_TRUE(Add_Scale_Row(Kilometre()));
  EXPECT_EQ(rsEntries->Bookmark(), text);
  Add_North_Arrow(QPoint(600, 100));
  EXPECT_EQ(Texts(), QStringList({"Text", " km", "Nordpfeil"}));
}

TEST_F(ScaleEditTest, ANorthArrowIsDraggedAsAWholeAndTheScaleGoesWithItsBar) {
  ASSERT_TRUE(Add_Scale_Row(Kilometre()));
  rsEntries->MoveLast();
  const QString bar = rsEntries->Bookmark();
  Add_North_Arrow(QPoint(500, 200));
  Drag({500, 180}, {480, 190});
  const EntryRow north = Last_Row();
  EXPECT_EQ(QRect(north.Xmap, north.Ymap, north.Xline, north.Yline), QRect(480, 210, 480, 150));
  ASSERT_TRUE(Take_Entry(bar));
  MessageScript messages(MsgAnswer::Yes);
  Map_Key(Qt::Key_Delete, {});
  EXPECT_FALSE(Scale_Of_Map());
  EXPECT_FALSE(MapHasScale);
}

TEST_F(ScaleEditTest, MeasuringLineLiesOrStandsByItsLongerDirection) {
  MeasuringLine line;
  int dropped = 0;
  const auto measure = [&] { Measure_Scale([&](const MeasuringLine& drawn) { line = drawn; }, [&] { ++dropped; }); };
  measure();
  EXPECT_TRUE(Scale_Tool_In_Use());
  Drag({300, 100}, {120, 130});  // backward
  EXPECT_EQ(std::tuple(line.lies, line.Length(), line.Upper_Left()),
            std::tuple(MeasuringLine::Lies::Across, 180, QPoint(120, 100)));
  Map_Mouse_Move({400, 400}, false);  // done: the line stays
  EXPECT_EQ(line.Length(), 180);
  EXPECT_EQ(Painted_Over().boundingRect(), QRectF(120, 92, 180, 16));
  Click({50, 60});  // the next line, by two clicks
  Map_Mouse_Move({70, 200}, false);
  Click({70, 260});
  EXPECT_EQ(std::tuple(line.lies, line.Length(), line.Upper_Left()),
            std::tuple(MeasuringLine::Lies::Upright, 200, QPoint(50, 60)));
  Map_Key(Qt::Key_Escape, {});
  EXPECT_EQ(dropped, 1);
  Zoom_At(0.5, 0, 0);
  measure();
  Drag({100, 100}, {300, 100});
  EXPECT_EQ(line.Length(), 100) << "map pixels";
  Map_Key(Qt::Key_Escape, {});
  EXPECT_EQ(dropped, 2);
}

}  // namespace
