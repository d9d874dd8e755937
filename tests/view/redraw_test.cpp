#include "view/redraw.h"

#include "maps/map_close.h"
#include "maps/map_open.h"
#include "platform/files.h"
#include "platform/surface.h"
#include "state/dialog_hooks.h"
#include "state/events.h"
#include "state/map_state.h"
#include "state/mdi_state.h"
#include "state/table_state.h"
#include "store/entry.h"
#include "store/vertex_table.h"
#include "support/fixture.h"
#include "support/map_room.h"
#include "view/hit_test.h"
#include "view/picture_cache.h"
#include "view/view.h"

namespace {

constexpr int frameOff = -100;  // RA without a frame

class Redraw : public FluraxTest {
 protected:
  void SetUp() override {
    FluraxTest::SetUp();
    Map.ScaleWidth = frmMDI.InnerWidth = 820;
    Map.ScaleHeight = frmMDI.InnerHeight = 620;
    Open_Map(Make_Map(QStringLiteral("Karte.bmp"), 1600, 1200));
    ASSERT_TRUE(frmMDI.MapOpen);
    Give_Map_Room(820, 620);
  }
  static EntryRow Text_Row(int x, int y, const QString& text = QStringLiteral("Text"), int typ = 0) {
    EntryRow row;
    row.ID = QStringLiteral("Text");
    row.Eintrag = text;
    row.Schrift = QStringLiteral("Arial");
    row.Groesse = 12;
    row.VG = 0;
    row.HG = 14;
    row.RA = frameOff;
    row.Xmap = x;
    row.Ymap = y;
    row.Typ = typ;
    return row;
  }
  static EntryRow Figure_Row(int kind, QRect box, const QString& fill = QStringLiteral("F 1")) {
    EntryRow row = Text_Row(box.x(), box.y(), QStringLiteral("Figur"), kind);
    row.ID = QStringLiteral("Figur1");
    row.Schrift = fill;
    row.HG = 10;
    row.RA = 12;
    row.Xline = box.width();
    row.Yline = box.height();
    return row;
  }
  static QRgb Pixel(int x, int y) { return Map.canvas.pixel(x, y) | 0xff000000; }
  // Is there any pixel of the colour in the box?
  static bool Has(QRgb color, QRect box) {
    for (int y = box.top(); y <= box.bottom(); ++y)
      for (int x = box.left(); x <= box.right(); ++x)
        if (Pixel(x, y) == color) return true;
    return false;
  }
};

TEST_F(Redraw, BareMapHasNoCountText) {
  EXPECT_EQ(InfoBar.Panel[2], Tbl.DBGrid1.Caption);
  EXPECT_EQ(Map.EntryRegions.Count(), 0);
  EXPECT_EQ(Pixel(10, 10), qRgb(255, 255, 255));
}

TEST_F(Redraw, TableOrderIsTheOrderOfLayers) {
  EntryRow first = Figure_Row(20, {50, 50, 80, 80}), second = first;
  second.HG = 9;
  second.Xmap = 90;
  Append_Entry(first);
  Append_Entry(second);
  Map_Redraw();
  EXPECT_EQ(Pixel(60, 90), QBColor(10));
  EXPECT_EQ(Pixel(110, 90), QBColor(9));
  EXPECT_EQ(Hit_Entry({110, 90}), 2);
  EXPECT_EQ(Hit_Entry({60, 90}), 1);
  EXPECT_EQ(Hit_Entry({300, 300}), 0);
}

TEST_F(Redraw, CountsHiddenAndInactiveWhereverTheyLie) {
  struct Case {
    int hidden, inactive;
    QString text;
  };
  for (const Case& c : {Case{0, 0, ""}, Case{1, 0, "1 Objekt unsichtbar"},
                        Case{2, 1, "2 Objekte unsichtbar  1 Objekt inaktiv"}, Case{0, 3, "3 Objekte inaktiv"}})
    EXPECT_EQ(Count_Text(c.hidden, c.inactive), c.text);
  Append_Entry(Text_Row(20, 20, QStringLiteral("versteckt"), -1));
  EntryRow inactive = Text_Row(1500, 1100);
  inactive.ID = QStringLiteral("-Text");
  Append_Entry(inactive);
  inactive.Xmap = 100;
  inactive.Ymap = 100;
  Append_Entry(inactive);
  Map_Redraw();
  EXPECT_EQ(InfoBar.Panel[2], QStringLiteral("1 Objekt unsichtbar  2 Objekte inaktiv"));
  EXPECT_FALSE(Has(QBColor(14), {20, 20, 40, 15}));
  EXPECT_TRUE(Has(QBColor(14), {100, 100, 30, 15}));
  EXPECT_EQ(Map.EntryRegions.Count(), 0);  // one hidden, one inactive in view: nothing to hit
  frmMDI.showHidden = true;
  Map_Redraw();
  EXPECT_FALSE(Has(QBColor(14), {20, 20, 40, 15}));  // greyed
  EXPECT_NE(Pixel(22, 24), qRgb(255, 255, 255));
  EXPECT_EQ(Map.EntryRegions.Count(), 0);
}

TEST_F(Redraw, MarksFrameTheEntryAndVanishWithIt) {
  Append_Entry(Text_Row(200, 200, QStringLiteral("Amsel"), 0));
  Map_Redraw();
  const QImage plain = Map.canvas.copy();
  EntryRow row = Text_Row(200, 200, QStringLiteral("Amsel"), 101);
  rsEntries->MoveLast();
  Map.CurBookmark = rsEntries->Bookmark();
  Update_Entry(row);
  Map_Redraw();
  EXPECT_EQ(Map.MarkCount, 1);
  EXPECT_EQ(Pixel(200, 202), plain.pixel(200, 202));
  EXPECT_TRUE(Has(qRgb(0, 0, 0), {198, 198, 60, 1}));
  EXPECT_FALSE(Has(qRgb(0, 0, 0), {195, 195, 60, 1}));
  row.Typ = 201;
  Update_Entry(row);
  Map_Redraw();
  EXPECT_TRUE(Has(qRgb(0, 0, 0), {195, 195, 60, 1}));
  row.Typ = 0;
  Update_Entry(row);
  Map_Redraw();
  EXPECT_EQ(Map.canvas, plain);
  EXPECT_EQ(Map.MarkCount, 0);
}

TEST_F(Redraw, SmallSizesKeepTwelvePointsAtEveryZoom) {
  EntryRow row = Text_Row(100, 100, QStringLiteral("Amsel"));
  row.Groesse = 3;
  Append_Entry(row);
  Map_Redraw();
  const QRectF at100 = Map.EntryRegions.Row(1).bounds;
  Set_Zoom(2.0);
  EXPECT_EQ(Map.EntryRegions.Row(1).bounds.size(), at100.size());
  row.Groesse = 12;
  rsEntries->MoveLast();
  Update_Entry(row);
  Map_Redraw();
  EXPECT_LT(Map.EntryRegions.Row(1).bounds.width(), at100.width() * 0.7);
}

TEST_F(Redraw, NothingRightOfOrBelowTheViewButLinesComeInFromTheLeft) {
  EntryRow row = Text_Row(1000, 100, QStringLiteral("Amsel"), 1);
  row.HG = 12;
  row.Xline = 700;
  row.Yline = 100;
  Append_Entry(row);
  Map_Redraw();
  EXPECT_FALSE(Has(QBColor(12), {690, 80, 100, 50}));
  Scroll_Changed(true, 100);  // view from 800 on: the entry stands in it
  EXPECT_TRUE(Has(QBColor(12), {0, 80, 400, 50}));
  row.Xmap = 700;
  row.Xline = 1000;
  rsEntries->MoveLast();
  Update_Entry(row);
  Map_Redraw();
  EXPECT_TRUE(Has(QBColor(12), {50, 80, 100, 50}));
  EXPECT_EQ(Map.EntryRegions.Count(), 1);  // the foot point alone
  EXPECT_EQ(Map.EntryRegions.Row(1).kind, 500);
}

TEST_F(Redraw, NorthArrowIsDrawnThoughStoredNegative) {
  EntryRow row = Text_Row(300, 300, QStringLiteral("Nordpfeil"), -12);
  row.ID = QStringLiteral("Np");
  row.Groesse = -8;
  Append_Entry(row);
  Map_Redraw();
  EXPECT_EQ(Map.HiddenCount, 0);
  EXPECT_EQ(Map.EntryRegions.Count(), 1);
}

TEST_F(Redraw, PlanSquaresAreListedInsteadOfHit) {
  EntryRow row = Figure_Row(16, {100, 100, 200, 200}, QStringLiteral("Arial"));
  row.ID = QStringLiteral("Plan") + QChar(31) + QStringLiteral("A-1");
  row.Eintrag = QStringLiteral("A-1");
  row.Xline = 300;  // the lower right corner
  row.Yline = 300;
  Append_Entry(row);
  Map_Redraw();
  ASSERT_EQ(Map.PlanLabels.size(), 1U);
  EXPECT_EQ(Map.PlanLabels.front().text, QStringLiteral("A-1"));
  EXPECT_EQ(Map.lblPLQ.Text, QStringLiteral("A-1"));
  EXPECT_EQ(Map.EntryRegions.Count(), 0);
  EXPECT_NE(Pixel(200, 100), qRgb(255, 255, 255));
  EXPECT_EQ(Pixel(200, 200), qRgb(255, 255, 255));
}

TEST_F(Redraw, PicturesAreFoundBesideTheMapAndMissingOnesNamed) {
  QImage picture = Make_Canvas(40, 30, qRgb(200, 0, 0));
  ASSERT_TRUE(picture.save(Path(QStringLiteral("Vogel.png"))));
  EntryRow row = Text_Row(100, 100, QStringLiteral("vogel.PNG"), 5);
  row.ID = QStringLiteral("Bild");
  row.Schrift = QStringLiteral("-");
  Append_Entry(row);
  row.Ymap = 300;
  row.Eintrag = QStringLiteral("fehlt.png");
  Append_Entry(row);
  Map_Redraw();
  EXPECT_EQ(Pixel(120, 115), qRgb(200, 0, 0));
  EXPECT_NE(Pixel(140, 115), qRgb(200, 0, 0));
  EXPECT_TRUE(Has(QBColor(12), {100, 300, 150, 20}));
  EXPECT_EQ(Map.EntryRegions.Count(), 2);
  Set_Zoom(2.0);
  EXPECT_EQ(Pixel(60, 57), qRgb(200, 0, 0));
  frmMDI.showPictures = false;
  Map_Redraw();
  EXPECT_EQ(Pixel(60, 57), qRgb(255, 255, 255));
}

TEST_F(Redraw, LinesAndAreasComeFromTheirTables) {
  EntryRow row = Text_Row(150, 150, QStringLiteral("Wald"), 4);
  row.ID = QStringLiteral("Flaeche0");
  row.Groesse = -8;
  row.HG = 10;
  row.RA = 12;
  row.Xline = 1;
  row.Yline = 1;
  Create_Vertex_Table(row.ID);
  Write_Vertices(row.ID, {{100, 100}, {300, 100}, {300, 300}, {100, 300}});
  Append_Entry(row);
  row.ID = QStringLiteral("Flaeche7");  // its table is missing
  row.Groesse = 10;
  Append_Entry(row);
  Map_Redraw();
  EXPECT_EQ(Pixel(250, 250), QBColor(10));
  EXPECT_EQ(Pixel(100, 200), QBColor(12));
  EXPECT_EQ(Hit_Entry({250, 250}), 1);
  EXPECT_TRUE(Has(QBColor(0), {150, 150, 40, 15}));  // the label of the second
}

TEST_F(Redraw, OverviewAndSwitchesChangeWhatIsDrawn) {
  Append_Entry(Text_Row(100, 100, QStringLiteral("Amsel")));
  frmMDI.overview = true;
  Map_Redraw();
  EXPECT_EQ(Pixel(104, 104), QBColor(0));
  EXPECT_EQ(Pixel(105, 105), qRgb(255, 255, 255));
  frmMDI.overview = false;
  frmMDI.showTexts = false;
  Map_Redraw();
  EXPECT_EQ(Pixel(102, 102), qRgb(255, 255, 255));
  EXPECT_EQ(Map.EntryRegions.Count(), 0);
}

TEST_F(Redraw, AMissingFontIsAskedForOnceAnEntry) {
  EntryRow row = Text_Row(100, 100);
  row.Schrift = QStringLiteral("Gibt Es Nicht Sans-B");
  const auto add = [&row](int count) {
    for (; count > 0; --count) Append_Entry(row);
  };
  add(2);
  Map_Redraw();  // without a font window nothing is asked
  QStringList opened;
  dialogHooks.FontWindow = [&](const QString&, const QString& caption) { opened << caption; };
  const QString question = QStringLiteral("Gibt Es Nicht Sans");
  {
    MessageScript script;
    script.Expect(question, MsgAnswer::Cancel);
    Map_Redraw();
    Map_Redraw();
  }
  add(2);
  {
    MessageScript script;
    script.Expect(question, MsgAnswer::No);
    script.Expect(question, MsgAnswer::Yes);
    Map_Redraw();
  }
  EXPECT_EQ(opened, QStringList(QStringLiteral("Schrift ändern: Gibt Es Nicht Sans")));
  add(2);
  {
    // The next question waits until the font of this one was chosen.
    MessageScript script;
    script.Expect(question, MsgAnswer::Yes);
    Map_Redraw();
    script.Expect(question, MsgAnswer::Cancel);
    Map_Redraw();
    Map_Redraw();
  }
}

TEST_F(Redraw, LightMixesTheScanWithWhiteButNotTheEntries) {
  Close_Map();
  QImage dark = Make_Canvas(400, 300, qRgb(100, 50, 0));
  ASSERT_TRUE(dark.save(Path(QStringLiteral("dunkel.bmp"))));
  Open_Map(Path(QStringLiteral("dunkel.bmp")));
  Append_Entry(Figure_Row(20, {50, 50, 80, 80}));
  Set_Light(true);
  EXPECT_NEAR(qRed(Pixel(200, 200)), 178, 2);
  EXPECT_NEAR(qBlue(Pixel(200, 200)), 128, 2);
  EXPECT_EQ(Pixel(90, 90), QBColor(10));
  Set_Light(false);
  EXPECT_EQ(Pixel(200, 200), qRgb(100, 50, 0));
}

TEST_F(Redraw, TheWholePictureIsTheSameDrawing) {
  Append_Entry(Text_Row(100, 100, QStringLiteral("Amsel")));
  Append_Entry(Figure_Row(22, {1400, 1000, 120, 80}));
  Map_Redraw();
  const QImage whole = Map_Picture_With_Entries();
  EXPECT_EQ(whole.size(), QSize(1600, 1200));
  EXPECT_EQ(whole.copy(0, 0, 800, 600), Map.canvas.copy(0, 0, 800, 600));
  EXPECT_EQ(whole.pixel(1460, 1040), QBColor(10));
  EXPECT_EQ(Map.EntryRegions.Count(), 1);  // the map's hit list is untouched
}

TEST_F(Redraw, TheCurrentRowStaysTheCurrentRow) {
  Append_Entry(Text_Row(100, 100));
  Append_Entry(Text_Row(200, 200));
  rsEntries->MoveFirst();
  rsEntries->MoveNext();
  const QString bookmark = rsEntries->Bookmark();
  Map.CurBookmark = bookmark;
  Map_Redraw();
  EXPECT_EQ(rsEntries->Bookmark(), bookmark);
  EXPECT_EQ(Map.CurBookmark, bookmark);
}

}  // namespace
