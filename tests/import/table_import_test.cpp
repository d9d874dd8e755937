#include "coordinates/conversions.h"
#include "import/table_choice.h"
#include "import/table_entry.h"
#include "support/nets.h"

namespace {

// A source of a text, an arrow, an area with an assigned text, and a line with ends.
class TableImportTest : public TableTest {
 protected:
  void SetUp() override {
    TableTest::SetUp();
    Open_Table();
  }
  static void Put_Vertices(Database& database, const QString& name, const std::vector<QPoint>& points) {
    database.CreateTable(Vertex_Def(name));
    const auto rows = database.OpenRecordset(name);
    for (const QPoint point : points) Append(*rows, {qint64{point.x()}, qint64{point.y()}});
  }
  std::unique_ptr<Database> New_Source(const QString& map = u"Andere.bmp"_s) const {
    return Make_Table_File(Path(u"Quelle.MDB"_s), map);
  }
  QString Usual_Source() const {
    const auto database = New_Source();
    Append_Row(*database, Text(u"O'Hara"_s, 100, 80));
    EntryRow arrow = Text(u"Biber"_s, 120, 90);
    arrow.Typ = 202, arrow.VG = 4;
    arrow.Xline = 140, arrow.Yline = 110;
    Append_Row(*database, arrow);
    Append_Row(*database, Entry(u"-Flaeche3"_s, 40, u"Moor"_s));
    Put_Vertices(*database, u"Flaeche3"_s, {{10, 10}, {60, 10}, {60, 60}});
    Append_Row(*database, Entry(u"Text>Flaeche3<7"_s, 0, u"Wollgras"_s));
    Append_Row(*database, Entry(u"Linie0 - P1010L5.0B2.0"_s, 4, u"Bach"_s));
    Put_Vertices(*database, u"Linie0"_s, {{0, 0}, {30, 40}});
    return Path(u"Quelle.MDB"_s);
  }
  static TableImportResult Import(TableSource& source, TableImportOrder order = {}) {
    if (order.rows.empty()) order.rows = source.Entries();
    return Import_Entries(source, order);
  }
  // A line of the table each: "ID|Eintrag|Xmap,Ymap|Xline,Yline".
  static QStringList Rows() {
    QStringList all;
    for (const EntryRow& row : Rows_Of(*dbEntries))
      all << u"%1|%2|%3,%4|%5,%6"_s.arg(row.ID, row.Eintrag).arg(row.Xmap).arg(row.Ymap).arg(row.Xline).arg(row.Yline);
    return all.mid(1);
  }
  static QStringList Found(TableSource& source, const QStringList& lines, FilterMode mode = FilterMode::Matching) {
    std::vector<ColumnValue> conditions;
    for (const QString& line : lines) conditions.push_back(ColumnValue::Parse(line));
    QStringList texts;
    for (const qint64 key : Filtered_Rows(source.Data(), conditions, mode))
      if (source.Go_To(key)) texts << source.Text_Of();
    return texts;
  }
};

}  // namespace

TEST_F(TableImportTest, BringsRowsWithTheirTablesUnderNewNames) {
  const QString file = Usual_Source();
  const QByteArray before = Read_Bytes(file);
  Write_Vertices(u"Flaeche3i00001"_s, {{1, 1}, {2, 1}, {2, 2}});
  Add(Entry(u"Text<4"_s, 0, u"Gruppe"_s));
  {
    TableSource source(file);
    EXPECT_TRUE(File_Exists(Path(u"Import.MDB"_s)));
    EXPECT_EQ(source.Count(), 5);
    const TableImportResult first = Import(source);
    EXPECT_EQ(std::tuple(first.imported, first.refused.size()), std::tuple(5, 0U));
    EXPECT_EQ(Import(source).imported, 5) << "a second time, under other names";
    TableImportOrder order;
    order.skipExisting = true;
    const TableImportResult third = Import(source, order);
    EXPECT_EQ(std::tuple(third.imported, third.existed), std::tuple(0, 5));
  }
  EXPECT_EQ(
      Rows().mid(1, 5),
      QStringList({u"Text|O'Hara|100,80|0,0"_s, u"Text|Biber|120,90|140,110"_s, u"-Flaeche3i00002|Moor|10,20|0,0"_s,
                   u"Text>Flaeche3i00002<5|Wollgras|10,20|0,0"_s, u"Linie0i00001 - P1010L5.0B2.0|Bach|10,20|0,0"_s}));
  EXPECT_EQ(Rows()[9], u"Text>Flaeche3i00003<6|Wollgras|10,20|0,0"_s);
  EXPECT_EQ(Load_Vertices(u"Flaeche3i00003"_s), (std::vector<QPoint>{{10, 10}, {60, 10}, {60, 60}}));
  EXPECT_EQ(Load_Vertices(u"Linie0i00002"_s).size(), 2U);
  EXPECT_EQ(Rows_Of(*dbEntries)[3].Typ, 2) << "marks stay behind";
  EXPECT_EQ(Read_Bytes(file), before);
  EXPECT_FALSE(File_Exists(Path(u"Import.MDB"_s)));
  With_Box(u"wieder hergestellt"_s, Undo_Last);
  EXPECT_EQ(Rows().size(), 6) << "the second import is taken back as a whole";
}

TEST_F(TableImportTest, FiltersByTheLinesThatAreSet) {
  Workspace::OpenDatabase(Usual_Source())->AddColumn(u"MapData"_s, {u"Finder neu"_s, FieldType::Text, 20});
  TableSource source(Path(u"Quelle.MDB"_s));
  using Lines = QStringList;
  const std::tuple<Lines, FilterMode, Lines> cases[] = {
      {{u"VG= *"_s, u"Eintrag= "_s},
       FilterMode::Matching,
       {u"O'Hara"_s, u"Biber"_s, u"Moor"_s, u"Wollgras"_s, u"Bach"_s}},
      {{u"Eintrag=  o'hara "_s}, FilterMode::Matching, {u"O'Hara"_s}},
      {{u"Eintrag= *o*"_s, u"VG= 0"_s}, FilterMode::Matching, {u"O'Hara"_s, u"Moor"_s, u"Wollgras"_s}},
      {{u"Größe= 10,0"_s, u"VG= 4"_s}, FilterMode::Matching, {u"Biber"_s}},
      {{u"Eintrag= Luchs"_s}, FilterMode::Matching, {}},
      // A column that nobody filled in does not keep a row from being one of the others.
      {{u"Finder neu= Erna"_s}, FilterMode::Others, {u"O'Hara"_s, u"Biber"_s, u"Moor"_s, u"Wollgras"_s, u"Bach"_s}},
      {{u"Eintrag= Moor"_s}, FilterMode::Others, {u"O'Hara"_s, u"Biber"_s, u"Wollgras"_s, u"Bach"_s}}};
  for (const auto& [lines, mode, found] : cases) EXPECT_EQ(Found(source, lines, mode), found) << lines.join(u'|');
  EXPECT_EQ(Error_Of([&] { Found(source, {u"VG= rot"_s}); }), errors::typeMismatch);
  EXPECT_EQ(Error_Of([&] { Found(source, {u"Finderin= x"_s}); }), errors::fieldNotFound);
}

TEST_F(TableImportTest, CarriesUserColumnsAndWritesOverWhatIsToChange) {
  dbEntries->AddColumn(u"MapData"_s, {u"Finder"_s, FieldType::Text, 4});
  dbEntries->AddColumn(u"MapData"_s, {u"Anzahl"_s, FieldType::Integer, 0});
  Close_Table(CloseMode::CloseOnly);
  ASSERT_TRUE(Load_Table(LoadMode::Reload));
  const QString file = Usual_Source();
  {
    const auto database = Workspace::OpenDatabase(file);
    for (const char* name : {"finder", "Anzahl", "Wetter"})
      database->AddColumn(u"MapData"_s, {QLatin1String(name), FieldType::Text, 30});
    const auto rows = database->OpenRecordset(u"SELECT * FROM MapData"_s);
    rows->MoveTo(1);
    Set_Field(*rows, u"finder", u"Hannelore"_s);
    Set_Field(*rows, u"Anzahl", u"viele"_s);
  }
  TableSource source(file);
  TableImportOrder order;
  order.rows = {source.Entries()[0], source.Entries()[1]};
  order.change = {{u"VG"_s, u"12"_s}, {u"Größe"_s, u"8,5"_s}, {u"Schrift"_s, u"*"_s}};
  const TableImportResult result = Import(source, order);
  EXPECT_EQ(std::tuple(result.imported, result.missingColumns), std::tuple(2, QStringList{u"Wetter"_s}));
  rsEntries->MoveTo(1);
  EXPECT_EQ(rsEntries->Text(u"Finder"), u"Hann"_s);
  EXPECT_EQ(rsEntries->Integer(u"Anzahl"), 0) << "no number";
  for (const EntryRow& row : {Rows_Of(*dbEntries)[1], Rows_Of(*dbEntries)[2]})
    EXPECT_EQ(std::tuple(row.VG, row.Groesse, row.Schrift), std::tuple(12, 8.5, u"Arial"_s));
  order.change = {{u"VG"_s, u"rot"_s}};
  EXPECT_EQ(Error_Of([&] { Import(source, order); }), errors::typeMismatch);
  EXPECT_EQ(Rows().size(), 2);
  EXPECT_FALSE(Changeable_Columns().contains(u"ID"_s));
}

// The same place on the ground: the open map has half the scale, and its net is turned.
TEST_F(TableImportTest, PlacesGoThroughTheCoordinates) {
  CoordinateState old = Utm_Net({400, 300}, {100, 200}, 1000, 0.01);
  Coord = Utm_Net({400, 300}, {50, 100}, 500, -0.02);
  const TablePlacing placing(PlaceWay::Coordinates, old, Coord);
  EXPECT_EQ(placing({100, 200}), QPoint(50, 100));
  // 60 m east and 40 m north of the reference point: computed by hand from both slopes.
  const QPointF metres = Pixel_To_Koord(old, 160, 160);
  const auto there = placing({160, 160});
  ASSERT_TRUE(there);
  const QPointF again = Pixel_To_Koord(Coord, there->x(), there->y());
  EXPECT_LE(std::fabs(again.x() - metres.x()), Coord.MeterPerPix * 0.51);
  EXPECT_LE(std::fabs(again.y() - metres.y()), Coord.MeterPerPix * 0.51);
  Coord.Inclin = 0;
  old.Inclin = 0;
  const PlaceOf place = [placing = TablePlacing(PlaceWay::Coordinates, old, Coord)](QPoint at) { return placing(at); };
  const auto moved = [&place](EntryRow row, std::vector<QPoint> vertices = {}) {
    CarriedEntry entry{row, std::move(vertices)};
    EXPECT_TRUE(Move_Entry(entry, place));
    return entry;
  };
  const auto numbers = [](const EntryRow& row) { return QRect(row.Xmap, row.Ymap, row.Xline, row.Yline); };
  const EntryRow base{"x", "x", "Arial", 10, 0, 0, 0, 120, 220, 140, 240, 0};
  const auto kind = [&base](int typ) {
    EntryRow row = base;
    row.Typ = typ;
    return row;
  };
  EXPECT_EQ(numbers(moved(kind(0)).row), QRect(60, 110, 140, 240)) << "kind 0 has no foot point";
  // Foot point and scale; a square holds its corner, figure and picture their size: 140 x 240 is 70 x 120.
  for (const int typ : {3, 11, 16, 20, -5}) EXPECT_EQ(numbers(moved(kind(typ)).row), QRect(60, 110, 70, 120)) << typ;
  const CarriedEntry line = moved(kind(4), {{100, 200}, {104, 190}});
  EXPECT_EQ(numbers(line.row), QRect(60, 110, 140, 240)) << "width and pattern of a line are no place";
  EXPECT_EQ(line.vertices, (std::vector<QPoint>{{50, 100}, {52, 95}}));
  CarriedEntry far{kind(0), {}};
  far.row.Xmap = 32700;
  EXPECT_FALSE(Move_Entry(far, [](QPoint) { return QPoint(40000, 0); }));
}

TEST_F(TableImportTest, FindsTheNetOfTheSource) {
  Coord = Utm_Net({400, 300}, {50, 100}, 500, -0.02);
  HeaderRow header;
  header.width = 400, header.height = 300;
  const auto net = [&](const QString& text) {
    header.mapName = text;
    return Net_Of_Source(header, Path(u"Quelle.MDB"_s), Coord);
  };
  EXPECT_EQ(net(u"UTM R 654000 H 5511000"_s).GridR, 654000);
  EXPECT_EQ(net(u"UTM R654000H5511000"_s).GridH, 5511000);
  EXPECT_EQ(Match_Nets(net(u"UTM R654000 H5511000"_s), Coord), NetMatch::Same);
  EXPECT_EQ(Match_Nets(net(u"GK R4431643 H5513030"_s), Coord), NetMatch::Differ);
  EXPECT_TRUE(Can_Convert(net(u"GK R4431643 H5513030"_s), Coord));
  for (const QString& text : {u"UTM 654000"_s, u"GK R H"_s, u"UTM H5511000 R"_s, u"RUTM H5"_s})
    EXPECT_EQ(Error_Of([&] { net(text); }), 5) << text;
  EXPECT_EQ(net(u"UTM-Regensburg.bmp"_s).Grid, gridNone) << "the name of a map is no hint";
  // A calibration file beside the source: of the map that the header names, or the table itself.
  Write_Lines(Path(u"Andere.cal"_s), Utm_Calibration({10, 20}, 250));
  Put(u"Andere.bmp"_s);
  EXPECT_EQ(net(u"Andere.bmp"_s).Xmap, 10);
  EXPECT_EQ(net(u"C:\\...e/Karten/Andere.bmp"_s).Xmap, 10);
  EXPECT_EQ(Match_Nets(net(u"Fremd.bmp"_s), Coord), NetMatch::NoSource);
  Write_Lines(Path(u"Quelle.cal"_s), Utm_Calibration({33, 20}, 250));
  EXPECT_EQ(net(QString()).Xmap, 33);
  EXPECT_EQ(Match_Nets(net(QString()), {}), NetMatch::NoTarget);
  EXPECT_EQ(Match_Nets({}, {}), NetMatch::None);
}

TEST_F(TableImportTest, AsksOnceOffTheMapAndKeepsWhatReachesOntoIt) {
  Coord = Utm_Net({400, 300}, {50, 100}, 500);
  {
    const auto database = New_Source();
    for (const int x : {100, 5000, 6000}) Append_Row(*database, Text(u"bei %1"_s.arg(x), x, 100));
    Append_Row(*database, Entry(u"Linie0"_s, 4, u"halb draußen"_s));
    Put_Vertices(*database, u"Linie0"_s, {{50, 100}, {5000, 100}});
    Append_Row(*database, Entry(u"Linie1"_s, 4, u"draußen"_s));
    Put_Vertices(*database, u"Linie1"_s, {{4000, 100}, {5000, 100}});
    Append_Row(*database, Entry(u"Linie2"_s, 4, u"ohne Tabelle"_s));
    Append_Row(*database, HeaderRow{}.ToEntry());
  }
  TableSource source(Path(u"Quelle.MDB"_s));
  TableImportOrder order;
  order.placing = TablePlacing(PlaceWay::Coordinates, Coord, Coord);
  const TableImportResult result =
      With_Box(u"bei 5000\nliegt außerhalb"_s, MsgAnswer::No, [&] { return Import(source, order); });
  EXPECT_EQ(std::tuple(result.imported, result.outside), std::tuple(2, 3));
  ASSERT_EQ(result.refused.size(), 4U);
  EXPECT_EQ(result.refused[3].text, u"ohne Tabelle"_s);
  const QStringList report = Table_Import_Report(source, result);
  EXPECT_TRUE(report.contains(u"4 Einträge wurden abgelehnt, 3 davon außerhalb der Karte."_s));
  EXPECT_TRUE(report.contains(u"Zeile 2: bei 5000: liegt außerhalb der Karte"_s)) << report.join(u'\n');
  EXPECT_EQ(Load_Vertices(u"Linie0i00001"_s), (std::vector<QPoint>{{50, 100}, {5000, 100}}));
  const TableImportResult cancelled =
      With_Box(u"keine weiteren Einträge"_s, MsgAnswer::Cancel, [&] { return Import(source, order); });
  EXPECT_EQ(cancelled.imported, 1) << "what was read before stays";
  EXPECT_TRUE(cancelled.stopped);
}

TEST_F(TableImportTest, AsksHowPlacesComeOntoTheMap) {
  const QString file = Usual_Source();
  const TableSource source(file);
  EXPECT_EQ(Ask_Placing(source)->Way(), PlaceWay::Pixels) << "two maps without a net";
  Coord = Utm_Net({400, 300}, {50, 100}, 500, -0.02);
  With_Box(u"keine Hinweise auf ein Koordinatensystem"_s, MsgAnswer::Cancel,
           [&] { EXPECT_FALSE(Ask_Placing(source)); });
  Write_Lines(Path(u"Andere.cal"_s), Utm_Calibration({10, 20}, 250));
  EXPECT_EQ(Ask_Placing(source)->Way(), PlaceWay::Coordinates);
  // A map in Gauß-Krüger zone 4: 49.75 N 11.05 E is 647673 / 5512852 in zone 32.
  QStringList lines = Utm_Calibration({200, 150}, 500, 0.0000001, 4431643);
  lines[0] = u"Grid GK Zone: 4 D: Potsdam R: 4431643 H: 5513031"_s;
  Write_Lines(Path(u"Andere.cal"_s), lines);
  {
    const MessageScript script(u"Stelle im Gelände (Potsdam -> WGS-84, "_s, MsgAnswer::Other);
    Coord.GridR = 647673, Coord.GridH = 5512852, Coord.Xmap = 200, Coord.Ymap = 150;
    const auto placing = Ask_Placing(source);
    ASSERT_TRUE(placing);
    ASSERT_EQ(placing->Way(), PlaceWay::Converted);
    // The same place in both nets.
    EXPECT_LE(((*placing)({200, 150}).value_or(QPoint()) - QPoint(200, 150)).manhattanLength(), 2);
  }
  With_Box(u"stimmen nicht überein"_s, MsgAnswer::Ok, [&] { EXPECT_EQ(Ask_Placing(source)->Way(), PlaceWay::Pixels); });
  Coord = {};
  With_Box(u"stimmen nicht überein"_s, [&] { EXPECT_EQ(Ask_Placing(source)->Way(), PlaceWay::Pixels); });
}

TEST_F(TableImportTest, BadSourcesAreToldAndLeaveNothing) {
  const auto fault = [](const QString& path) { return Raised([&] { const TableSource source(path); }); };
  EXPECT_EQ(fault(Path(u"fehlt.MDB"_s)).number, errors::databaseNotFound);
  EXPECT_EQ(fault(Put(u"Text.MDB"_s, "keine Tabelle")).number, errors::databaseDamaged);
  EXPECT_EQ(fault(Put(u"leer.MDB"_s, {})).number, errors::databaseDamaged);
  Workspace::CreateDatabase(Path(u"ohne.MDB"_s))->CreateTable(Qdata_Def());
  EXPECT_EQ(fault(Path(u"ohne.MDB"_s)).text, u"Die Tabelle MapData fehlt."_s);
  TableDef other = MapData_Def();
  other.fields.erase(other.fields.begin() + column::RA);
  Workspace::CreateDatabase(Path(u"anders.MDB"_s))->CreateTable(other);
  EXPECT_EQ(fault(Path(u"anders.MDB"_s)).text, u"In der Tabelle MapData fehlen Spalten: RA"_s);
  EXPECT_EQ(fault(TableFile).number, errors::databaseInUse) << "the open table";
  {
    const QString file = Usual_Source();
    const auto held = Workspace::OpenDatabase(file);
    EXPECT_EQ(fault(file).number, errors::databaseInUse);
  }
  EXPECT_TRUE(Find_Files(folder.path(), u"Import*"_s).isEmpty());
  // The table of a map that is called "Import" is not the copy.
  Make_Map(u"Import.bmp"_s);
  Make_Table_File(Path(u"IMPORT.MDB"_s), u"Import.bmp"_s)->Close();
  EXPECT_TRUE(Import_Copy_Name(Path(u"Quelle.MDB"_s)).endsWith(u"Import_1.MDB"_s));
}

TEST_F(TableImportTest, ATableOfTheOldEngineIsReadAside) {
  ASSERT_TRUE(
      QFile::link(QStringLiteral(FLURAX_BINARY_DIR "/flurax-alttabelle"), ProgramFolder + u"/flurax-alttabelle"_s));
  QByteArray bytes = qUncompress(Read_Bytes(QStringLiteral(FLURAX_TEST_DATA "/alt/Karte.mdb.z")));
  constexpr qsizetype flagsOfDatum = 98707;  // in the description of its column
  bytes[flagsOfDatum] = static_cast<char>(bytes[flagsOfDatum] | 4);
  TableSource source(Put(u"alt.MDB"_s, bytes));
  QStringList counters;
  for (int i = 0; i < static_cast<int>(source.Fields().size()); ++i)
    if (source.Counts(i)) counters << source.Fields()[static_cast<size_t>(i)].name;
  EXPECT_EQ(counters, QStringList{u"Datum"_s}) << "hidden in the list";
  EXPECT_EQ(source.Count(), 1603);
  EXPECT_EQ(Found(source, {u"Eintrag= *Mühle*"_s}).size(), 1);
  With_Box(u"Die Spalte Datum der Tabelle MapData zählte die Zeilen von selbst"_s, [&] { Tell_Remarks(source); });
  TableImportOrder first;
  first.rows = {source.Entries().front()};
  EXPECT_EQ(Import(source, first).missingColumns, (QStringList{u"Bemerkung"_s, u"Belegt"_s}));
}

// Numbers in columns of text, columns in another order, a number beyond 16 bits, a name that nothing fits behind.
TEST_F(TableImportTest, OtherColumnTypesAreReadAsFarAsTheyGo) {
  TableDef def = MapData_Def();
  std::reverse(def.fields.begin(), def.fields.end());
  for (FieldInfo& field : def.fields) field = {field.name, FieldType::Text, 0};
  {
    const auto database = Workspace::CreateDatabase(Path(u"Quelle.MDB"_s));
    database->CreateTable(def);
    const auto rows = database->OpenRecordset(u"MapData"_s);
    const auto add = [&rows](const QString& id, const QString& text, const QString& x) {
      rows->AddNew();
      const std::pair<const char16_t*, QString> values[] = {{u"ID", id},
                                                            {u"Eintrag", text},
                                                            {u"Xmap", x},
                                                            {u"Größe", u"8.5"_s},
                                                            {u"Typ", id.startsWith(u'F') ? u"4"_s : u"0"_s}};
      for (const auto& [name, value] : values) rows->Set(name, value);
      rows->Update();
    };
    add(u"Text"_s, QString(200, u'ä'), u"120"_s);
    add(u"Text"_s, u"zu weit"_s, u"70000"_s);
    add(u"Fl"_s + QString(76, u'x'), u"langer Name"_s, u"1"_s);
    Put_Vertices(*database, u"Fl"_s + QString(76, u'x'), {{1, 1}, {2, 1}, {2, 2}});
  }
  TableSource source(Path(u"Quelle.MDB"_s));
  EXPECT_EQ(source.Count(), 3) << "a table without a header row";
  const TableImportResult result = Import(source);
  EXPECT_EQ(std::tuple(result.imported, result.shortened), std::tuple(1, 1));
  ASSERT_EQ(result.refused.size(), 2U);
  EXPECT_TRUE(result.refused[0].reason.contains(u"Xmap"_s)) << result.refused[0].reason;
  EXPECT_TRUE(result.refused[1].reason.contains(u"zu lang"_s));
  const EntryRow row = Rows_Of(*dbEntries).back();
  EXPECT_EQ(std::tuple(row.Eintrag, row.Xmap, row.Groesse), std::tuple(QString(79, u'ä'), 120, 8.5));
}

TEST_F(TableImportTest, AStopInTheMiddleKeepsWhatCame) {
  TableSource source(Usual_Source());
  const StopWorkAt stop(7);
  EXPECT_TRUE(Import(source).stopped);
  EXPECT_EQ(Texts(), QStringList({u"O'Hara"_s, u"Biber"_s}));
}
