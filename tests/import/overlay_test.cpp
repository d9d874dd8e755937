#include "import/overlay_import.h"
#include "support/nets.h"

namespace {

const QByteArray rectangle = "Width=40\nHeight=20\nXKoord=11.05\nYKoord=49.75\n";

QByteArray Symbol(const QByteArray& lines) { return "[Symbol 1]\n" + lines; }
QByteArray Placed_Text(const QByteArray& text) {
  return Symbol("Typ=2\nText=" + text + "\nXKoord=11.05\nYKoord=49.75\n");
}

// A kilometre net of zone 32 round 49.75 N 11.05 E, one pixel four metres; in that zone it lies at 647673 / 5512852.
class OverlayTest : public TableTest {
 protected:
  void SetUp() override {
    TableTest::SetUp();
    Open_Table();
    MapWidthPx = 3000, MapHeightPx = 2200;
    Coord = Utm_Net({MapWidthPx, MapHeightPx}, {1500, 1100}, 250);
    Coord.GridR = 647673, Coord.GridH = 5512852;
  }
  OverlayResult Import(const QByteArray& bytes, bool existingToo = true) {
    file = Read_Overlay(bytes);
    plan = Plan_Overlay(file, PlacingWay::Transformed, existingToo);
    return Import_Overlay(file, plan);
  }
  EntryRow Imported(const QByteArray& bytes) {
    EXPECT_EQ(Import(bytes).imported, 1) << bytes.toStdString() << Overlay_Refusals(file, plan, {}).join(u'\n');
    return Rows_Of(*dbEntries).back();
  }
  OverlayFile file;
  OverlayPlan plan;
};

}  // namespace

TEST(Overlay, TheKeyIsWhatStandsBeforeTheSignWithoutDigits) {
  for (const char* text : {"Typha latifolia", "Colchicum", "XKoord = 12", "Font=2", "Areal", "a=b"}) {
    const OverlayFile file = Read_Overlay(Placed_Text(text));
    ASSERT_EQ(file.records.size(), 1U) << text;
    EXPECT_EQ(std::tuple(file.records[0].text, file.records[0].points.size()), std::tuple(QLatin1String(text), 1U));
    EXPECT_EQ(file.records[0].color + file.records[0].fill, 0);
  }
  const OverlayFile line =
      Read_Overlay(Symbol("Typ=3\nPunkte=2\nXKoord0=11\nYKoord0=49\nXKoord17=12,5\nYKoord17=50\n"));
  ASSERT_EQ(line.records.size(), 1U);
  EXPECT_EQ(line.records[0].points, (std::vector<QPointF>{{11, 49}, {12.5, 50}}));
}

TEST(Overlay, SectionsAndKindsEndAnObjectInAnyOrder) {
  const QByteArray text = Placed_Text("a"), rim = "[Overlay]\nSymbols=3\nText=kein Text\n",
                   place = "[MapLage]\nTyp=2\n";
  for (const QByteArray& bytes : {rim + text + place, text + rim + place, text + place, text.trimmed(), rim + text}) {
    const OverlayFile file = Read_Overlay(bytes);
    ASSERT_EQ(file.records.size(), 1U) << bytes.toStdString();
    EXPECT_EQ(file.records[0].text, u"a"_s);
    EXPECT_TRUE(file.faults.empty());
  }
  // Circles have their place before their size, rectangles after it; Size counts from 100.
  const OverlayFile file = Read_Overlay(Symbol("Typ=6\nSize=105\nXKoord=11\nYKoord=49\nWidth=20\nHeight=0.5\n") +
                                        Symbol("Typ=5\r\n" + rectangle) + Symbol("Typ=1\n") + Symbol("Typ=7\n") +
                                        Symbol("Typ=99\n") + "Typ=2\nText=ohne Abschnitt\nXKoord=11\nYKoord=49\n");
  ASSERT_EQ(file.records.size(), 3U);
  EXPECT_EQ(std::tuple(file.records[0].size, file.records[0].height), std::tuple(5, 0.5));
  EXPECT_EQ(file.records[1].points.size(), 1U);
  EXPECT_EQ(file.records[2].text, u"ohne Abschnitt"_s) << "a new kind begins an object, too";
  EXPECT_EQ(std::tuple(file.passedOver, file.unknown), std::tuple(2, 1));
}

TEST(Overlay, BadFilesAreToldWithTheirLine) {
  const auto fault = [](const QByteArray& bytes) { return Raised([&] { Read_Overlay(bytes); }).text; };
  EXPECT_TRUE(fault("DOMGVCRD Ovlfile V2.0:\0\1\2"_ba).contains(u"binäres Overlay"_s));
  for (const QByteArray& bytes :
       {QByteArray(), QByteArray("BM\0\1\2\xff\n[\0;;", 11), QByteArray("[Overlay]\nSymbols=0")})
    EXPECT_TRUE(fault(bytes).contains(u"keine Overlay-Objekte"_s));
  const OverlayFile file =
      Read_Overlay(Symbol("Typ=3\nXKoord0=11\nYKoord0=Nord\nXKoord1=11\nYKoord1=49\n") + Symbol("Typ=2\nText=x\n") +
                   Symbol("Typ=2\nXKoord=11\nYKoord=49\n") + Symbol("Typ=5\nXKoord=11\nYKoord=49\n") +
                   Symbol("Typ=4\nXKoord=11\nYKoord=49\nXKoord=11\nYKoord=49\n") + "YKoord=12\n" +
                   Symbol("Typ=2\nText=a\0b\nXKoord=1\nYKoord=95\n"_ba));
  EXPECT_EQ(file.records.size(), 1U) << "a place that is none is found when it is placed";
  QStringList told;
  for (const OverlayFault& one : file.faults) told << u"%1 %2"_s.arg(one.line).arg(one.text);
  EXPECT_EQ(told, QStringList({u"4 keine Breite: Nord"_s, u"1 Linie oder Fläche mit einem einzigen Punkt"_s,
                               u"7 Objekt ohne Koordinaten"_s, u"10 Text ohne Inhalt"_s,
                               u"14 Figur ohne Breite oder Höhe"_s, u"18 Fläche mit weniger als drei Punkten"_s}));
}

TEST_F(OverlayTest, ObjectsBecomeEntriesWithTheirLooks) {
  const std::pair<QByteArray, int> cases[] = {{"1", 12}, {"2", 10}, {"3", 9}, {"4", 14},
                                              {"5", 0},  {"6", 15}, {"9", 0}, {"x", 0}};
  for (const auto& [color, index] : cases) {
    const EntryRow row =
        Imported(Symbol("Typ=2\nCol=" + color + "\nFont=3\nSize=112\nText=Ä\nXKoord=11.05\nYKoord=49.75\n"));
    EXPECT_EQ(row.VG, index);
    EXPECT_EQ(FrameWord::Parse(row.RA).framed, false);
    EXPECT_EQ(std::tuple(row.Schrift, row.Groesse, row.Typ), std::tuple(u"Courier-T"_s, 12, 0));
    EXPECT_NEAR(row.Xmap, 1500, 1) << "the reference point of the net";
    EXPECT_NEAR(row.Ymap, 1100, 1);
  }
  EXPECT_EQ(Imported(Placed_Text("x")).Groesse, 10);
  const QByteArray corners =
      "XKoord0=11.05\nYKoord0=49.75\nXKoord1=11.06\nYKoord1=49.75\nXKoord2=11.06\nYKoord2=49.76\n";
  const EntryRow line = Imported(Symbol("Typ=3\nCol=3\nSize=105\n" + corners));
  EXPECT_EQ(std::tuple(line.ID, line.Eintrag, line.Xline, line.Typ), std::tuple(u"Linie0"_s, line.ID, 5, 4));
  EXPECT_EQ(line.VG, 9);
  ASSERT_EQ(Load_Vertices(u"Linie0"_s).size(), 3U);
  // 0.01 degrees are 720 m to the east and 1112 m to the north here.
  EXPECT_NEAR(Load_Vertices(u"Linie0"_s)[1].x(), 1500 + 180, 2);
  EXPECT_NEAR(Load_Vertices(u"Linie0"_s)[2].y() - Load_Vertices(u"Linie0"_s)[1].y(), -278, 2);
  const EntryRow area = Imported(Symbol("Typ=4\nCol=2\nArea=1\nSize=103\n" + corners));
  EXPECT_EQ(std::tuple(area.ID, area.Schrift, area.Yline, area.RA), std::tuple(u"Flaeche0"_s, u"F-1"_s, -1, 310));
  EXPECT_EQ(Font_Text(EntryType::Parse(area.Typ), area.Schrift), u"Arial"_s);
  EXPECT_EQ(Imported(Symbol("Typ=4\n" + corners)).Yline, 1) << "the usual fill is F 1";
  EXPECT_EQ(Imported(Symbol("Typ=4\nArea=8\n" + corners)).Yline, -2);
  const EntryRow pixels = Imported(Symbol("Typ=5\nArea=2\n" + rectangle));
  EXPECT_EQ(std::tuple(pixels.Typ, pixels.Eintrag, pixels.ID), std::tuple(20, u"Ellipse"_s, u"Figur1"_s));
  EXPECT_EQ(pixels.Schrift, u"F 8"_s);
  EXPECT_EQ(entry_box(pixels), (EntryBox{1480, 1090, 40, 20}));
  const EntryRow degrees = Imported(Symbol("Typ=6\nXKoord=11.05\nYKoord=49.75\nWidth=0.02\nHeight=0.01\n"));
  EXPECT_EQ(std::tuple(degrees.Typ, degrees.ID), std::tuple(22, u"Figur2"_s));
  EXPECT_NEAR(entry_box(degrees).width, 360, 12) << "the meridians are not those of the net";
  EXPECT_NEAR(entry_box(degrees).x, 1500 - 180, 8);
}

TEST_F(OverlayTest, CountsWhatLiesOutsideExistsOrIsOfNoUse) {
  const QByteArray bytes = Placed_Text("hier") + Symbol("Typ=2\nText=fern\nXKoord=12.5\nYKoord=49.75\n") +
                           Symbol("Typ=2\nText=nirgends\nXKoord=11\nYKoord=95\n") +
                           Symbol("Typ=3\nXKoord0=11.05\nYKoord0=49.75\nXKoord1=12.5\nYKoord1=49.75\n") +
                           Symbol("Typ=3\nXKoord0=11.05\nYKoord0=49.75\nXKoord1=11.06\nYKoord1=49.75\n") +
                           Symbol("Typ=7\n") + Symbol("Typ=12\n");
  EXPECT_EQ(Import(bytes).imported, 2);
  const QString summary = Overlay_Summary(file, plan, {}).join(u'\n');
  for (const char* part :
       {"2 Objekte liegen außerhalb der Karte.", "1 Objekte sind von unbekannter Art.", "1 Bilder und Dreiecke"})
    EXPECT_TRUE(summary.contains(part)) << summary;
  EXPECT_THAT(Overlay_Refusals(file, plan, {}),
              testing::IsSupersetOf({u"Zeile 11: nirgends: keine brauchbare Koordinate"_s,
                                     u"Zeile 16: Linie: zu weit rechts im Osten"_s}));
  EXPECT_EQ(Import(bytes, false).imported, 0);
  EXPECT_EQ(plan.counts.exists, 2);
  EXPECT_EQ(Import(bytes, true).imported, 2);
  EXPECT_EQ(Menu(u"mnuReset"_s).Caption, u"Rückgängig: Import Top50*.ovl-Datei"_s);
}

TEST_F(OverlayTest, AMapOfAnotherDatumIsWarnedOf) {
  Coord.GridDatum = u"Potsdam"_s;
  file = Read_Overlay(Placed_Text("x"));
  const QString warning = u"Kartendatum der Karte und der Importdatei stimmmen nicht überein!"_s;
  EXPECT_TRUE(Overlay_List(file, plan, u"x.ovl"_s, {}).info3.contains(warning));
  EXPECT_FALSE(Overlay_List(file, plan, u"x.ovl"_s, u"WGS-84 -> Potsdam, 3 m"_s).info3.contains(warning));
}
