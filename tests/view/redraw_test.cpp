#include "view/redraw.h"

#include "maps/map_close.h"
#include "plansquares/plan_map.h"
#include "plansquares/raster_rows.h"
#include "support/hand_fixture.h"
#include "support/pixels.h"
#include "view/hit_test.h"
#include "view/overlay.h"
#include "view/picture_cache.h"

namespace {

class Redraw : public HandTest {
 protected:
  static EntryRow Text_Row(int x, int y, const QString& text = QStringLiteral("Text"), int typ = 0) {
    return HandTest::Text_Row(text, x, y, typ);
  }
  static EntryRow Figure_Row(int kind, QRect box, const QString& fill = QStringLiteral("F 1")) {
    return {"Figur1", "Figur", fill, 12, 0, 10, 12, box.x(), box.y(), box.width(), box.height(), kind};
  }
  // A figure whose width another program wrote: too large to be read.
  static void Append_Damaged(int kind) {
    EntryRow row = Figure_Row(kind, {50, 50, 80, 80});
    row.Eintrag = QStringLiteral("beschädigt");
    Append_Entry(row);
    dbEntries->Execute(QStringLiteral("UPDATE MapData SET Xline = 99999 WHERE Eintrag = 'beschädigt'"));
  }
  static QRgb Pixel(int x, int y) { return Map.canvas.pixel(x, y) | 0xff000000; }
  // Is there any pixel of the colour in the box?
  static bool Has(QRgb color, QRect box) {
    return Count_Pixels(Map.canvas, box, [color](QRgb at) { return at == color; }) > 0;
  }
  // Gives the last row these values, and draws.
  static void Draw_Last(const EntryRow& row) {
    rsEntries->MoveLast();
    Update_Entry(row);
    Map_Redraw();
  }
};

TEST_F(Redraw, TableOrderIsTheOrderOfLayers) {
  EntryRow first = Figure_Row(20, {50, 50, 80, 80}), second = first;
  second.HG = 9;
  second.Xmap = 90;
  const QString current = Map.CurBookmark = Add(first);
  Append_Entry(second);
  rsEntries->SetBookmark(current);
  Map_Redraw();
  EXPECT_EQ(rsEntries->Bookmark(), current);
  EXPECT_EQ(Pixel(60, 90), QBColor(10));
  EXPECT_EQ(Pixel(110, 90), QBColor(9));
  EXPECT_EQ(Hit_Entry({110, 90}), 2);
  EXPECT_EQ(Hit_Entry({60, 90}), 1);
  EXPECT_EQ(Hit_Entry({300, 300}), 0);
}

TEST_F(Redraw, CountsHiddenAndInactiveWhereverTheyLie) {
  const std::tuple<int, int, const char*> cases[] = {{0, 0, ""},
                                                     {1, 0, "1 Objekt unsichtbar"},
                                                     {2, 1, "2 Objekte unsichtbar  1 Objekt inaktiv"},
                                                     {0, 3, "3 Objekte inaktiv"}};
  for (const auto& [hidden, inactive, text] : cases) EXPECT_EQ(Count_Text(hidden, inactive), text);
  EXPECT_EQ(InfoBar.Panel[2], Tbl.DBGrid1.Caption) << "a bare map";
  Append_Entry(Text_Row(20, 20, QStringLiteral("versteckt"), -1));
  EntryRow inactive = Text_Row(1500, 1100);
  inactive.ID = QStringLiteral("-Text");
  Append_Entry(inactive);
  inactive.Xmap = inactive.Ymap = 100;
  Append_Entry(inactive);
  Append_Entry({"Np", "Nordpfeil", "Arial", -8, 0, 14, -100, 300, 300, 0, 0, -12});  // negative, but not hidden
  for (const bool shown : {false, true}) {
    frmMDI.showHidden = shown;
    Map_Redraw();
    EXPECT_EQ(InfoBar.Panel[2], u"1 Objekt unsichtbar  2 Objekte inaktiv"_s);
    EXPECT_FALSE(Has(QBColor(14), {20, 20, 40, 15}));  // greyed
    EXPECT_EQ(Pixel(22, 24) == white, !shown);
    EXPECT_TRUE(Has(QBColor(14), {100, 100, 30, 15}));
    EXPECT_EQ(Map.EntryRegions.Count(), 1) << "of hidden and inactive ones nothing can be hit";
  }
}

TEST_F(Redraw, MarksFrameTheEntryAndVanishWithIt) {
  Append_Entry(Text_Row(200, 200, QStringLiteral("Amsel"), 0));
  Map_Redraw();
  const QImage plain = Map.canvas.copy();
  EntryRow row = Text_Row(200, 200, QStringLiteral("Amsel"), 101);
  Draw_Last(row);
  EXPECT_EQ(Map.MarkCount, 1);
  EXPECT_EQ(Pixel(200, 202), plain.pixel(200, 202));
  EXPECT_TRUE(Has(black, {198, 198, 60, 1}));
  EXPECT_FALSE(Has(black, {195, 195, 60, 1}));
  row.Typ = 201;
  Draw_Last(row);
  EXPECT_TRUE(Has(black, {195, 195, 60, 1}));
  row.Typ = 0;
  Draw_Last(row);
  EXPECT_EQ(std::tuple(Map.canvas, Map.MarkCount), std::tuple(plain, 0));
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
  Draw_Last(row);
  EXPECT_LT(Map.EntryRegions.Row(1).bounds.width(), at100.width() * 0.7);
}

TEST_F(Redraw, NothingRightOfOrBelowTheViewButLinesComeInFromTheLeft) {
  EntryRow row{"Text", "Amsel", "Arial", 12, 0, 12, -100, 1000, 100, 700, 100, 1};
  Append_Entry(row);
  Map_Redraw();
  EXPECT_FALSE(Has(QBColor(12), {690, 80, 100, 50}));
  Scroll_Changed(true, 100);  // view from 800 on: the entry stands in it
  EXPECT_TRUE(Has(QBColor(12), {0, 80, 400, 50}));
  row.Xmap = 700;
  row.Xline = 1000;
  Draw_Last(row);
  EXPECT_TRUE(Has(QBColor(12), {50, 80, 100, 50}));
  EXPECT_EQ(Map.EntryRegions.Count(), 1);  // the foot point alone
  EXPECT_EQ(Map.EntryRegions.Row(1).kind, 500);
}

TEST_F(Redraw, PlanSquaresAreListedInsteadOfHit) {
  const int right = 300, low = 300;  // the lower right corner
  Append_Entry({Plan_Id("A-1"), "A-1", "Arial", 12, 0, 10, 12, 100, 100, right, low, 16});
  Map_Redraw();
  ASSERT_EQ(Map.PlanLabels.size(), 1U);
  EXPECT_EQ(Map.PlanLabels.front().text, "A-1");
  EXPECT_EQ(std::tuple(Map.lblPLQ.Text, Map.EntryRegions.Count()), std::tuple(QStringLiteral("A-1"), 0));
  EXPECT_NE(Pixel(200, 100), white);
  EXPECT_EQ(Pixel(200, 200), white);
  // An active raster is hit, but for what lies in a square and is smaller than it both ways.
  Append_Entry(Figure_Row(20, {120, 120, 40, 40}));
  Append_Entry(Figure_Row(21, {50, 220, 400, 40}));
  Append_Entry(Figure_Row(22, {240, 50, 40, 400}));
  Set_Raster_Active(true);
  Map_Redraw();
  const auto kind = [](int x, int y) { return Map.EntryRegions.Row(Hit_Entry({x, y})).kind; };
  EXPECT_EQ(std::tuple(kind(140, 140), kind(200, 240), kind(260, 150), kind(200, 150), kind(350, 240)),
            std::tuple(0, planRegion, planRegion, planRegion, 0));
}

TEST_F(Redraw, PicturesAreFoundBesideTheMapAndMissingOnesNamed) {
  QImage picture = Make_Canvas(40, 30, qRgb(200, 0, 0));
  ASSERT_TRUE(picture.save(Path("Vogel.png")));
  Append_Entry({"Bild", "vogel.PNG", "-", 12, 0, 14, -100, 100, 100, 0, 0, 5});
  Append_Entry({"Bild", "fehlt.png", "-", 12, 0, 14, -100, 100, 300, 0, 0, 5});
  Map_Redraw();
  EXPECT_EQ(Pixel(120, 115), qRgb(200, 0, 0));
  EXPECT_NE(Pixel(140, 115), qRgb(200, 0, 0));
  EXPECT_TRUE(Has(QBColor(12), {100, 300, 150, 20}));
  EXPECT_EQ(Map.EntryRegions.Count(), 2);
  Set_Zoom(2.0);
  EXPECT_EQ(Pixel(60, 57), qRgb(200, 0, 0));
  frmMDI.showPictures = false;
  Map_Redraw();
  EXPECT_EQ(Pixel(60, 57), white);
}

TEST_F(Redraw, LinesAndAreasComeFromTheirTables) {
  EntryRow row{"Flaeche0", "Wald", "Arial", -8, 0, 10, 12, 150, 150, 1, 1, 4};
  Create_Vertex_Table(row.ID);
  Write_Vertices(row.ID, {{100, 100}, {300, 100}, {300, 300}, {100, 300}});
  Append_Entry(row);
  row.ID = QStringLiteral("Flaeche7");  // its table is missing
  row.Groesse = 10;
  Append_Entry(row);
  With_Box("Die Eckpunkte fehlen: Flaeche7", MsgAnswer::No, [] { Map_Redraw(); });
  Map_Redraw();  // asked once
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
  EXPECT_EQ(Pixel(105, 105), white);
  frmMDI.overview = false;
  frmMDI.showTexts = false;
  Map_Redraw();
  EXPECT_EQ(Pixel(102, 102), white);
  EXPECT_EQ(Map.EntryRegions.Count(), 0);
}

TEST_F(Redraw, AMissingFontIsAskedForOnceAnEntry) {
  EntryRow row = Text_Row(100, 100);
  row.Schrift = QStringLiteral("Gibt Es Nicht Sans-B");
  const auto two_more = [&row] { Append_Entry(row), Append_Entry(row); };
  two_more();
  Map_Redraw();  // without a font window nothing is asked
  QStringList opened;
  dialogHooks.FontWindow = [&](const QString&, const QString& caption) { opened << caption; };
  const QString question = QStringLiteral("Gibt Es Nicht Sans");
  {
    MessageScript script(question, MsgAnswer::Cancel);
    Map_Redraw();
    Map_Redraw();
    two_more();
    script.Expect(question, MsgAnswer::No).Expect(question, MsgAnswer::Yes);
    Map_Redraw();
    EXPECT_EQ(opened, QStringList(QStringLiteral("Schrift ändern: Gibt Es Nicht Sans")));
    two_more();
    // The next question waits until the font of this one was chosen.
    script.Expect(question, MsgAnswer::Yes);
    Map_Redraw();
    script.Expect(question, MsgAnswer::Cancel);
    Map_Redraw();
    Map_Redraw();
  }
  // Lines and areas of other programs have a fill there: their labels are in Arial, and nobody is asked.
  for (const int typ : {4, 40})
    for (const char* fill : {"F 1", "F-1", "F 8", "F-8", "F 3"}) {
      row.Typ = typ;
      row.Schrift = QLatin1String(fill);
      Append_Entry(row);
    }
  Map_Redraw();
  EXPECT_EQ(opened.size(), 2);
  rsEntries->MoveLast();
  ASSERT_TRUE(Take_Entry(rsEntries->Bookmark()));
  EXPECT_EQ(EntFont, "Arial");
}

TEST_F(Redraw, LightMixesTheScanWithWhiteButNotTheEntries) {
  Map_Redraw();
  Append_Entry(Figure_Row(20, {50, 50, 80, 80}));
  Close_Map();
  ASSERT_TRUE(Make_Canvas(1600, 1200, qRgb(100, 50, 0)).save(Path("Karte.bmp")));
  Open_Map(Path("Karte.bmp"));
  for (const bool light : {true, false}) {
    Set_Light(light);
    EXPECT_NEAR(qRed(Pixel(200, 200)), light ? 178 : 100, 2);
    EXPECT_NEAR(qBlue(Pixel(200, 200)), light ? 128 : 0, 2);
    EXPECT_EQ(Pixel(90, 90), QBColor(10));
  }
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

TEST_F(Redraw, WhatCannotBeDrawnLeavesTheRestAsItIs) {
  {
    const Overlay failing(OverlayLayer::Mark, [](DrawContext&) { Raise(errors::diskFull); });
    EXPECT_THROW(Map_Redraw(), Error);
  }
  EXPECT_FALSE(Redraw_Running());
  MessageScript script;
  for (const int x : {100, 300}) {
    Append_Damaged(20);
    Append_Entry(Figure_Row(20, {x, 200, 80, 80}));
    script.Expect("Soll dieser Eintrag", MsgAnswer::Yes);
  }
  // A picture goes on behind an entry that is deleted.
  const QImage picture = Map_Picture_With_Entries();
  for (const int x : {140, 340}) EXPECT_EQ(picture.pixel(x, 240), QBColor(10));
  EXPECT_EQ(Map_Picture_With_Entries(), picture);
  // A hidden one costs the others no regions.
  Append_Damaged(-20);
  frmMDI.showHidden = true;
  script.Expect("Soll dieser Eintrag gelöscht werden?", MsgAnswer::No);
  Map_Redraw();
  EXPECT_EQ(Map.EntryRegions.Count(), 2);
  EXPECT_EQ(Hit_Entry({140, 240}), 1);
}

TEST_F(Redraw, OverlaysLieOverTheEntriesInTheirOrder) {
  Append_Entry(Figure_Row(20, {50, 50, 80, 80}));
  QStringList heard;
  events.BeforeRedraw.Connect([&] { heard << "before" + QString::number(Map.EntryRegions.Count()); });
  events.AfterRedraw.Connect([&] {
    heard << "after" + QString::number(Map.EntryRegions.Count());
    Map_Redraw();  // wanted while it runs: once more at the end
  });
  events.MapPainted.Connect([&] { heard << "painted"; });
  const auto box = [&heard](int color) {
    return [&heard, color](DrawContext& context) {
      context.surface.FilledBox(QRectF(60, 60, 10, 10), QBColor(color));
      heard << QString::number(color);
    };
  };
  {
    const Overlay above(OverlayLayer::Hand, box(4)), below(OverlayLayer::Net, box(1));
    Map_Redraw();
  }
  EXPECT_EQ(Pixel(65, 65), QBColor(4));
  EXPECT_EQ(Pixel(80, 80), QBColor(10));
  EXPECT_EQ(heard.join(u' '), "before0 after1 1 4 before1 after1 1 4 painted");
  Map_Redraw();
  EXPECT_EQ(Pixel(65, 65), QBColor(10)) << "an overlay goes with its object";
}

}  // namespace
