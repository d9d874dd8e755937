#include "import/gps_import.h"
#include "import/import_report.h"
#include "import/placing_question.h"
#include "import/present_entries.h"
#include "store/history.h"
#include "support/nets.h"
#include "support/refused_writes.h"

namespace {

using Kind = ReferenceSystem::Kind;

// A map of 400 x 300 pixels, a metre each; its lower left corner lies at 640 000 / 5 500 000.
class GpsImportTest : public TableTest {
 protected:
  void SetUp() override {
    TableTest::SetUp();
    Open_Table();
    Coord = Utm_Net({400, 300}, {0, 300}, 1000);
    Coord.GridR = 640000, Coord.GridH = 5500000;
  }
  static GpsWaypoint Waypoint(const QString& name, double right, double high, int zone = 32,
                              const QString& comment = {}) {
    return {1, name, comment, {640000 + right, 5500000 + high, zone}};
  }
  static GpsFile File(std::vector<GpsWaypoint> waypoints) {
    GpsFile file;
    file.system = {Kind::Utm, u"WGS-84"_s};
    file.waypoints = std::move(waypoints);
    for (size_t i = 0; i < file.waypoints.size(); ++i) file.waypoints[i].line = static_cast<int>(i) + 1;
    return file;
  }
  static GpsFile Track_File(std::initializer_list<std::pair<QString, std::vector<QPoint>>> tracks) {
    GpsFile file;
    file.system = {Kind::Utm, u"WGS-84"_s};
    int line = 0;
    for (const auto& [name, points] : tracks) {
      file.tracks.push_back({name, {}});
      for (const QPoint at : points)
        file.tracks.back().points.push_back({++line, {640000.0 + at.x(), 5500300.0 - at.y(), 32}});
    }
    return file;
  }
  static GpsResult Import(const GpsFile& file, GpsContent content, GpsLook look = {},
                          const std::optional<std::vector<int>>& chosen = {}, Existing existing = Existing::Skipped) {
    const GpsPlan plan = Plan_Gps(file, content, PlacingWay::AsWritten, existing);
    return Import_Gps(Gps_Units(file, plan, look, chosen), content, look);
  }
  static QList<int> Marks(const GpsPlan& plan) {
    QList<int> codes;
    for (const GpsRecord& record : plan.records) codes += Import_Symbol(record.mark.status).unicode();
    return codes;
  }
  static std::vector<EntryRow> Rows() {
    std::vector<EntryRow> all = Rows_Of(*dbEntries);
    all.erase(all.begin());
    return all;
  }
};

}  // namespace

TEST_F(GpsImportTest, JudgesEveryWaypoint) {
  Append_Entry(Text(u"Otter"_s, 100, 100));
  const GpsFile file =
      File({Waypoint(u"hier"_s, 50, 50), Waypoint(u"links"_s, -1, 50), Waypoint(u"rechts"_s, 401, 50),
            Waypoint(u"oben"_s, 50, 301), Waypoint(u"unten"_s, 50, -1), Waypoint(u"Ecke"_s, -9, 999),
            Waypoint(u"31"_s, 50, 50, 31), Waypoint(u"33"_s, 50, 50, 33), Waypoint(u"Otter"_s, 104, 196),
            Waypoint(u"Otter"_s, 105, 200), Waypoint(u"Fisch"_s, 104, 204), Waypoint(u"Fisch"_s, 100, 205),
            Waypoint(u"hier"_s, 50, 50), Waypoint(u"hier"_s, 60, 50)});
  const GpsPlan plan = Plan_Gps(file, GpsContent::Waypoints, PlacingWay::AsWritten);
  EXPECT_EQ(Marks(plan), QList<int>({252, 219, 220, 221, 222, 221, 239, 240, 76, 252, 252, 252, 76, 252}))
      << "four pixels away is the same position, five is not; what the file repeats comes once";
  EXPECT_EQ(std::tuple(plan.counts.sameName, plan.counts.samePosition, plan.counts.sameNameAndPosition),
            std::tuple(2, 2, 1));
  EXPECT_EQ(
      Import_Summary(plan.counts),
      u"14 Einträge wurden eingelesen, davon liegen außerhalb der Karte:\n1 zu weit links im Westen, 1 zu weit rechts "
      "im Osten, 2 zu weit oben im Norden, 1 zu weit unten im Süden\n2 liegen in einer anderen Zone, 2 sind in der "
      "Karte schon vorhanden, 5 Einträge geeignet für den Import in die Karte"_s);
  EXPECT_EQ(Marks(Plan_Gps(file, GpsContent::Waypoints, PlacingWay::AsWritten, Existing::Taken))[8], 252);
  // The same file once more, however its texts were written.
  for (const bool comment : {false, true}) {
    const GpsFile more = File({Waypoint(QString(90, u'n') + (comment ? u'1' : u'2'), 200, 50, 32, u"selten"_s),
                               Waypoint(comment ? u"Kauz"_s : u"Uhu"_s, 250, 50, 32, u"selten"_s)});
    GpsLook look;
    look.withComment = comment;
    EXPECT_EQ(Import(more, GpsContent::Waypoints, look).imported, comment ? 1 : 2);
    EXPECT_EQ(Import(more, GpsContent::Waypoints, look).imported, 0);
    look.withComment = !comment;
    EXPECT_EQ(Import(more, GpsContent::Waypoints, look).imported, 0);
  }
}

TEST_F(GpsImportTest, WritesTextsInOneStepThatCanBeTakenBack) {
  const QString longName(300, u'x');
  const GpsFile file =
      File({Waypoint(u"Igel"_s, 50, 50, 32, u"am Bach"_s), Waypoint(u"Dachs"_s, 60, 250), Waypoint(longName, 70, 50)});
  GpsLook look;
  look.VG = 12, look.HG = 14, look.RA = 209;
  look.font = {{.family = u"Times New Roman"_s, .bold = true}, 14};
  look.withComment = true;
  const GpsResult result = Import(file, GpsContent::Waypoints, look);
  EXPECT_EQ(std::tuple(result.imported, result.refused.size()), std::tuple(3, 0U));
  ASSERT_EQ(result.notes.size(), 1U);
  EXPECT_EQ(result.notes[0].text, longName) << "cut, and told whole";
  ASSERT_EQ(Rows().size(), 3U);
  const EntryRow wanted{"Text", "Igel am Bach", look.font.font.ToText(), 14, 12, 14, 209, 50, 250, 50, 250, 1};
  EXPECT_EQ(Rows()[0], wanted);
  EXPECT_EQ(Menu(u"mnuReset"_s).Caption, u"Rückgängig: Import"_s);
}

TEST_F(GpsImportTest, StopsAndFailuresLeaveWhatWasTold) {
  std::vector<GpsWaypoint> many;
  for (int i = 0; i < 40; ++i) many.push_back(Waypoint(u"P%1"_s.arg(i), i, 50));
  const GpsFile file = File(many);
  {
    const StopWorkAt tenth(10);
    const GpsResult result = Import(file, GpsContent::Waypoints);
    EXPECT_TRUE(result.stopped);
    EXPECT_EQ(std::tuple(result.imported, result.imported), std::tuple(static_cast<int>(Rows().size()), 10));
  }
  {
    Refuse_Rows(*dbEntries, u"Eintrag = 'P25'"_s);
    const MessageScript messages(MsgAnswer::Ok);
    const GpsResult result = Import(file, GpsContent::Waypoints);
    EXPECT_EQ(std::tuple(result.failed, result.imported), std::tuple(true, 0));
  }
  EXPECT_EQ(Rows().size(), 10U);
  EXPECT_EQ(Menu(u"mnuReset"_s).Caption, u"Rückgängig: Import"_s) << "of the ten that came";
  Undo_Point(u"Rückgängig: Vorher"_s);
  Append_Entry(Text(u"nachher"_s));
  Import(Track_File({{u"Punkt"_s, {{7, 7}}}}), GpsContent::Tracks);
  EXPECT_EQ(Menu(u"mnuReset"_s).Caption, u"Rückgängig: Vorher"_s) << "a single point is no line";
  {
    const GpsResult taken = Import(File({Waypoint(u"Neu"_s, 300, 200)}), GpsContent::Waypoints);
    EXPECT_EQ(taken.imported, 1);
    Go_To_Step(Step_Position() - 1);
  }
  EXPECT_EQ(Menu(u"mnuReset"_s).Caption, u"Rückgängig: Vorher"_s) << "taken back at once";
  With_Box(u"wieder hergestellt"_s, Undo_Last);
  EXPECT_EQ(Rows().size(), 10U);
  const GpsPlan plan = Plan_Gps(file, GpsContent::Waypoints, PlacingWay::AsWritten);
  MessageScript messages{
      {u"P10"_s, MsgAnswer::Yes}, {u"P11"_s, MsgAnswer::No}, {u"P12"_s, MsgAnswer::Yes}, {u"P13"_s, MsgAnswer::Cancel}};
  EXPECT_EQ(Ask_One_By_One(Gps_Units(file, plan, {}), GpsContent::Waypoints).size(), 2U);
}

TEST_F(GpsImportTest, PointsOffTheMapBreakATrack) {
  const std::vector<QPoint> far = {{10, 10}, {20, 10}, {20, 10}, {20, 20}, {-5, 20},
                                   {30, 30}, {-5, 20}, {40, 40}, {50, 40}};
  const GpsFile file =
      Track_File({{u"Weg"_s, far}, {u"Weg"_s, {{100, 100}, {110, 100}}}, {u"Punkt"_s, {{7, 7}, {7, 7}}}});
  const GpsResult result = Import(file, GpsContent::Tracks);
  EXPECT_EQ(result.imported, 3);
  ASSERT_EQ(result.refused.size(), 2U);
  EXPECT_EQ(result.refused[0].line, 6) << "a single point between two gaps";
  const auto rows = Rows();
  ASSERT_EQ(rows.size(), 3U);
  for (const EntryRow& row : rows) EXPECT_EQ(row.Eintrag, u"Weg"_s);
  EXPECT_EQ(std::tuple(rows[0].Typ, rows[0].Xline), std::tuple(4, 2));
  EXPECT_EQ(QPoint(rows[1].Xmap, rows[1].Ymap), QPoint(40, 40));
  EXPECT_EQ(Load_Vertices(rows[0].ID), (std::vector<QPoint>{{10, 10}, {20, 10}, {20, 20}}));
  EXPECT_EQ(Load_Vertices(rows[2].ID), (std::vector<QPoint>{{100, 100}, {110, 100}}));
  EXPECT_EQ(Import(file, GpsContent::Tracks).imported, 0) << "name and vertices are there";
  const std::vector<QPoint> corner = {{1, 1}, {9, 1}};
  EXPECT_EQ(
      Import(Track_File({{u"Zwei"_s, corner}, {u"Zwei"_s, corner}, {u"Zwei"_s, {{1, 1}, {9, 2}}}}), GpsContent::Tracks)
          .imported,
      2)
      << "a file that repeats a track";
  EXPECT_EQ(Import(file, GpsContent::Tracks, {}, {}, Existing::Taken).imported, 3);
  const GpsFile other = Track_File({{u"Weg"_s, {{12, 12}, {20, 10}, {20, 30}, {20, 40}, {20, 50}}}});
  const GpsPlan plan = Plan_Gps(other, GpsContent::Tracks, PlacingWay::AsWritten);
  EXPECT_EQ(std::pair(plan.counts.ok, plan.counts.sameNameAndPosition), std::pair(5, 5))
      << "told, and taken: the vertices differ";
  EXPECT_EQ(Gps_Units(other, plan, {}, std::vector<int>{1, 2, 4}).size(), 2U) << "only what is marked, in pieces";
}

TEST_F(GpsImportTest, AThousandLinesAreTheMost) {
  GpsFile file = Track_File({});
  for (int i = 0; i < 1003; ++i)
    file.tracks.push_back({u"T%1"_s.arg(i), {{1, {640000.0 + i % 390, 5500010, 32}}, {2, {640005.0, 5500020, 32}}}});
  const GpsResult result = Import(file, GpsContent::Tracks);
  EXPECT_EQ(std::tuple(result.imported, result.refused.size()), std::tuple(1000, 3U));
}

TEST_F(GpsImportTest, TheReportGoesWhenThereIsNothingToTell) {
  EXPECT_EQ(Write_Import_Report({u"Zeile 1: ä"_s}), Path(u"Karte_Import.txt"_s));
  EXPECT_EQ(Read_Lines(Path(u"Karte_Import.txt"_s)), QStringList{u"Zeile 1: ä"_s});
  EXPECT_EQ(Write_Import_Report({}), QString());
  EXPECT_FALSE(File_Exists(Path(u"Karte_Import.txt"_s))) << "that of the former import would be read for this one's";
}

TEST_F(GpsImportTest, AsksHowOtherCoordinatesComeOntoTheMap) {
  const GivenSystem gpx{Kind::Geographic, u"WGS-84"_s};
  EXPECT_EQ(Ask_Placing_Way({Kind::Utm, u"G WGS 84"_s}, Coord, u"t"_s), PlacingWay::AsWritten) << "no question";
  EXPECT_EQ(Usual_Placing_Way(gpx, Coord), PlacingWay::Transformed);
  EXPECT_EQ(Usual_Placing_Way({Kind::Utm, u"ED50"_s}, Coord), std::nullopt);
  MessageScript messages{
      {u"Koordinatensystem falsch:\nDatei: Geografisch (WGS-84)\nKarte: UTM (WGS-84)"_s, MsgAnswer::Other},
      {u"Koordinatensystem falsch"_s, MsgAnswer::Yes},
      {u"Koordinatensystem falsch"_s, MsgAnswer::No},
      {u"Kartendatum falsch:\nDatei: UTM (ED50)"_s, MsgAnswer::No}};
  EXPECT_EQ(Ask_Placing_Way(gpx, Coord, u"t"_s), PlacingWay::Transformed);
  EXPECT_EQ(Ask_Placing_Way(gpx, Coord, u"t"_s), PlacingWay::AsWritten);
  EXPECT_EQ(Ask_Placing_Way(gpx, Coord, u"t"_s), std::nullopt);
  EXPECT_EQ(Ask_Placing_Way({Kind::Utm, u"ED50"_s}, Coord, u"t"_s), std::nullopt);
  EXPECT_TRUE(messages.Seen()[0].text.contains(u"WGS-84 -> UTM 32 WGS-84"_s));
  EXPECT_FALSE(messages.Seen()[0].other.isEmpty());
  EXPECT_TRUE(messages.Seen()[3].other.isEmpty()) << "a datum that nobody can transform";
  // 640 100 / 5 500 200 in degrees, by cs2cs.
  GpsFile file;
  file.system = gpx;
  file.waypoints = {{1, u"Igel"_s, {}, {10.9404049, 49.6380798}}};
  const GpsPlan plan = Plan_Gps(file, GpsContent::Waypoints, PlacingWay::Transformed);
  EXPECT_EQ(plan.records[0].placed.at, QPoint(100, 100));
}

// By a grid, not by pairs: this would take minutes otherwise.
TEST(PresentEntriesTest, ManyAtOnePlace) {
  PresentEntries entries;
  for (int i = 0; i < 100'000; ++i) entries.Add(u"P%1"_s.arg(i), {100, 100});
  EXPECT_TRUE(entries.Near({96, 104}));
  EXPECT_FALSE(entries.Near({95, 100}));
  EXPECT_TRUE(entries.Near({104, 96}, u" P77777 "_s));
  EXPECT_FALSE(entries.Near({104, 96}, u"Q"_s));
  entries.Add({}, {-3, -3});
  EXPECT_TRUE(entries.Near({1, 1}));
  EXPECT_FALSE(entries.Near({2, 2}));
  EXPECT_FALSE(entries.Near({-3, -3}, {})) << "a nameless entry has nobody's name";
}
