#include "tools/coordinate_input.h"

#include "coordinates/net_build.h"
#include "maps/map_coordinates.h"
#include "support/hand_fixture.h"
#include "support/nets.h"
#include "support/pixels.h"
#include "tools/position_mark.h"

// A map of 1600 x 1200 pixels with kilometre lines every 200 pixels.
class CoordinateTest : public HandTest {
 protected:
  void SetUp() override {
    HandTest::SetUp();
    Coord = Utm_Net({1600, 1200}, {100, 1100}, 200);
    Coord.GridVG = 12;
    Build_Metric_Net(Coord);
    frmMDI.mouseUnit = MouseUnit::Coordinates;
  }
  TypedCoordinate Typed(const char* right, const char* high) {
    return {QStringLiteral("R"), QString::fromUtf8(right), QStringLiteral("H"), QString::fromUtf8(high)};
  }
  CoordinateForm form() { return Koord_Eingabe_Init(); }
};

TEST_F(CoordinateTest, TheStatusBarTellsWhereTheMouseIs) {
  const auto told = [](int y) {
    Map_Mouse_Move({300, y}, false);
    return QString(InfoBar.Panel[0] + u'|' + InfoBar.Panel[1] + u'|' + InfoBar.Panel[2]).simplified();
  };
  EXPECT_EQ(told(100), "UTM-Koordinaten |Ost:647 000 Nord:5517 000 m| Datum: WGS-84 Zone: 32U");
  frmMDI.mouseUnit = MouseUnit::Pixel;
  EXPECT_TRUE(told(101).startsWith("||_ 300 : 101 Pixel|"));
  frmMDI.mouseUnit = MouseUnit::Coordinates;
  Coord = {};
  EXPECT_TRUE(told(102).startsWith("||_ 300 : 102 Pixel|"));
}

TEST_F(CoordinateTest, TypedNumbersComeToTheirPlaceOrAreRefused) {
  for (const char* right : {"647000", "647 000", "R 647000", "647000,4", "646999.9"})
    EXPECT_EQ(GridPix(form(), Typed(right, "5517000")).value().map, QPoint(300, 100)) << right;
  const auto clicked = Show_Cursor_Coords({300, 100});
  ASSERT_TRUE(clicked);
  EXPECT_EQ(clicked->valueR + clicked->valueH, "6470005517000");
  for (const auto& [typed, text] : {std::pair(" 47000,6", "047001"), {" ", "600000"}, {"abc", "abc"}})
    EXPECT_EQ(Box_Text(form(), true, typed), text);
  // Places off the map are told.
  const std::pair<TypedCoordinate, const char*> cases[] = {
      {Typed("640000", "5512000"), "Eingegebener Rechtswert liegt zu weit links im Westen außerhalb der Karte!"},
      {Typed("660000", "5512000"), "Eingegebener Rechtswert liegt zu weit rechts im Osten außerhalb der Karte!"},
      {Typed("640000", "5519000"), "Eingegebener Hochwert liegt zu weit oben im Norden außerhalb der Karte!"},
      {Typed("646000", "5511000"), "Eingegebener Hochwert liegt zu weit unten im Süden außerhalb der Karte!"},
      {Typed("6470x", "5512000"), "keine Koordinate"},
      {Typed("646000", "9e12"), "zu groß"}};
  for (const auto& [typed, text] : cases) {
    const MessageScript script(QString::fromUtf8(text));
    EXPECT_FALSE(GridPix(form(), typed)) << text;
    EXPECT_EQ(script.Seen()[0].title, "UTM - Koordinateneingabe");
  }
}

TEST_F(CoordinateTest, AnEntryGoesToItsPlaceThenItsFootPoint) {
  const QString key = Add({"Text", "Fund", "Arial", 12, 0, 14, -100, 50, 60, 90, 120, 1});
  const auto places = [&key] { return std::pair(At(key), QPoint(Row(key).Xline, Row(key).Yline)); };
  TakenPosition taken;
  With_Box("Karteneintrag aus", [&] {
    EXPECT_FALSE(Take_Position(taken, {{300, 100}, 647001, 5517002}, QStringLiteral("Titel")));
  });
  ASSERT_TRUE(Take_Entry(key));
  ASSERT_TRUE(Take_Position(taken, {{300, 100}, 647001, 5517002}, QStringLiteral("Titel")));
  EXPECT_TRUE(Foot_Is_Next(taken));
  EXPECT_EQ(InfoBar.Panel[1], "Ost:647 001   Nord:5517 002 m") << "as entered";
  ASSERT_TRUE(Take_Position(taken, {{320, 150}, 647100, 5516750}, QStringLiteral("Titel")));
  EXPECT_EQ(places(), std::pair(QPoint(300, 100), QPoint(320, 150)));
  Take_Position_Back(taken, QStringLiteral("Titel"));
  EXPECT_EQ(places(), std::pair(QPoint(50, 60), QPoint(90, 120)));
}

TEST_F(CoordinateTest, TheNetLiesOverTheEntriesWhileItIsShown) {
  Append_Entry(Text_Row("breiter Text auf der Linie", 250, 100));
  const QPoint onLine(300, 105);
  const auto color = [&] { return Map.canvas.pixel(onLine) | black; };
  GridVisible = false;
  Map_Redraw();
  EXPECT_NE(color(), red);
  Toggle_Grid();
  EXPECT_EQ(color(), red);
  EXPECT_EQ(Map_Picture_With_Entries().pixel(onLine) | black, red);
  Toggle_Grid();
  EXPECT_NE(color(), red);
  // A marker shows a place.
  const auto marked = [] { return Map.canvas.pixel(Window_X(1500), Window_Y(1100)) | black; };
  Show_Place({1500, 1100});
  EXPECT_GT(Map.ViewLeft, 0);
  EXPECT_EQ(marked(), red);
  Hide_Place();
  EXPECT_EQ(marked(), white);
}
