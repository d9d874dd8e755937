#include "maps/map_coordinates.h"

#include "maps/map_close.h"
#include "maps/map_open.h"
#include "support/looks.h"
#include "support/nets.h"

namespace {

class MapCoordinates : public TableTest {
 protected:
  void SetUp() override {
    TableTest::SetUp();
    map = Make_Map();
  }
  void Calibrate() { Write_Lines(Path("Karte.cal"), Utm_Calibration({100, 150}, 80)); }
  static void Expect_Menus(bool on, const char* shown = nullptr) {
    for (const char* key : {"mnuGridDel", "mnuGridonoff", "mnuGridXYInput"}) EXPECT_EQ(Usable(key), on) << key;
    EXPECT_EQ(Text_Now("mnuGridmake"), on ? "bearbeiten" : "erstellen");
    EXPECT_TRUE(Usable("mnuGridmake"));
    EXPECT_TRUE(!shown || Text_Now("mnuGridonoff") == QLatin1String(shown)) << Text_Now("mnuGridonoff");
  }
  QString map;
};

TEST_F(MapCoordinates, ComeWithTheMapAndGoWithIt) {
  Open_Map(map);
  EXPECT_EQ(Coord.Grid, gridNone);
  Expect_Menus(false);
  Calibrate();
  frmMDI.mouseUnit = MouseUnit::Metric;
  int redraws = 0;
  events.RedrawWanted.Connect([&redraws] { ++redraws; });
  Reload_Map();
  EXPECT_EQ(Coord.GridR, 646000);
  EXPECT_EQ(QPoint(Coord.MapWidthPx, Coord.MapHeightPx), QPoint(400, 300));
  EXPECT_EQ(std::pair(frmMDI.mouseUnit, redraws), std::pair(MouseUnit::Coordinates, 1));
  EXPECT_FALSE(Usable("mnuChooseGrid"));
  Expect_Menus(true, "ausblenden");
  Close_Map();
  EXPECT_EQ(Coord.Grid, gridNone);
  File_Copy(Path("Karte.cal"), Path("Karte neu.cal"));
  Open_Map(map);
  EXPECT_TRUE(Usable("mnuChooseGrid"));
}

TEST_F(MapCoordinates, AHiddenNetStaysHidden) {
  Calibrate();
  Open_Map(map);
  ASSERT_TRUE(GridVisible);
  Toggle_Grid();
  EXPECT_FALSE(GridVisible);
  EXPECT_FALSE(Read_Header().netVisible);
  Reload_Map();
  EXPECT_FALSE(GridVisible);
  Expect_Menus(true, "einblenden");
  Toggle_Grid();
  EXPECT_TRUE(Read_Header().netVisible);
  Expect_Menus(true, "ausblenden");
}

TEST_F(MapCoordinates, AFileThatIsGivenUpLeavesNoNet) {
  Replace_File(Path("Karte.cal"), "Grid UTM Zone: 32U D: WGS-84 R: 1 H: 2\r\n");
  MessageScript script("Metrisches Koordinatennetz fehlerhaft", MsgAnswer::Cancel);
  Open_Map(map);
  EXPECT_TRUE(frmMDI.MapOpen);
  EXPECT_EQ(Coord.Grid, gridNone);
  EXPECT_EQ(frmMDI.mouseUnit, MouseUnit::Pixel);
  Expect_Menus(false);
}

TEST_F(MapCoordinates, DeletingTakesTheRowOfTheNetAndItsMargins) {
  Calibrate();
  Open_Map(map);
  Append_Row(*dbEntries, Entry("Text", 15, "Netz"));
  Append_Row(*dbEntries, Text("Fund"));
  rsEntries->Requery();
  HeaderRow header = Read_Header();
  header.left = header.right = header.top = header.bottom = 5;
  Write_Header(header);
  Delete_Grid();
  const auto rows = Rows_Of(*dbEntries);
  ASSERT_EQ(rows.size(), 2U);
  EXPECT_EQ(rows[1].Eintrag, "Fund");
  EXPECT_EQ(Read_Header().right, 0);
  EXPECT_EQ(rsEntries->Text(column::Eintrag), "Fund");
  EXPECT_EQ(Coord.Grid, gridNone);
  Expect_Menus(false);
}

}  // namespace
