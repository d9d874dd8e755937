#include "platform/database.h"

#include "platform/foreign_sql.h"
#include "support/records.h"

namespace {

TableDef Entries() {
  return {"MapData",
          {{"ID", FieldType::Text, 79},
           {"Eintrag", FieldType::Text, 79},
           {"Größe", FieldType::Double, 0},
           {"VG", FieldType::Integer, 0},
           {"Xmap", FieldType::Integer, 0},
           {"Summe", FieldType::Long, 0}}};
}

class DatabaseTest : public ::testing::Test {
 protected:
  void SetUp() override {
    path = folder.filePath("KARTE.MDB");
    database = Workspace::CreateDatabase(path);
    database->CreateTable(Entries());
    rows = database->OpenRecordset("MapData");
  }
  void Add(const QString& id, int x = 0) {
    rows->AddNew();
    rows->Set(u"ID", id);
    rows->Set(u"Xmap", qint64{x});
    rows->Update();
  }
  // Meanwhile another program may write into the closed file.
  void Reopen(const char* foreignSql = "") {
    rows.reset();
    database->Close();
    Run_Elsewhere(path, foreignSql);
    database = Workspace::OpenDatabase(path);
    rows = database->OpenRecordset("MapData");
  }
  static QStringList Ids(Recordset& set) {
    QStringList ids;
    for (set.MoveFirst(); !set.Eof(); set.MoveNext()) ids << set.Text(u"ID");
    return ids;
  }
  QTemporaryDir folder;
  QString path;
  std::unique_ptr<Database> database;
  std::unique_ptr<Recordset> rows;
};

TEST_F(DatabaseTest, ValuesComeBackAfterReopening) {
  const QString text = "Größe 5 µm \u00A0 \U0001F331";
  // 2.5 as a whole number goes to the even neighbour.
  Append(*rows, {u"Linie3"_s, text, 2.5, qint64{-32768}, 2.5, qint64{2147483647}});
  rows->AddNew();
  rows->Set(u"eintrag", Value());
  rows->Update();
  for (const bool again : {false, true}) {
    if (again) Reopen();
    rows->MoveFirst();
    const QString texts[] = {"Linie3", text, "2.5", "-32768", "2", "2147483647"};
    for (int i = 0; i < 6; ++i) EXPECT_EQ(rows->Text(i), texts[i]);
    EXPECT_EQ(std::tuple(rows->Number(u"Größe"), rows->Integer(u"größe")), std::tuple(2.5, 2));
    EXPECT_EQ(rows->Integer(u"Summe"), 2147483647);
    rows->MoveNext();
    const Value raw[] = {QString(), Value(), 0.0, qint64{0}};  // the first is empty, not Null
    for (int i = 0; i < 4; ++i) EXPECT_EQ(rows->Raw(i), raw[i]) << i;
    EXPECT_EQ(rows->Text(1), "");
    EXPECT_EQ(rows->Fields(), Entries().fields);
  }
}

TEST_F(DatabaseTest, RefusedValuesLeaveTheRow) {
  Add("a", 7);
  rows->MoveFirst();
  rows->Edit();
  const std::tuple<const char*, Value, int> cases[] = {{"Xmap", qint64{32768}, 6},
                                                       {"Xmap", 32767.5, 6},
                                                       {"Summe", 3e9, 6},
                                                       {"Xmap", QStringLiteral("zwölf"), 13},
                                                       {"ID", QString(80, u'ä'), 3163},
                                                       {"Nichts", qint64{1}, 3265}};
  for (const auto& [field, value, error] : cases)
    EXPECT_EQ(Error_Of([&] { rows->Set(QString(field), value); }), error) << field;
  rows->Set(u"ID", QString(79, u'ä'));
  rows->Set(u"Größe", QStringLiteral("1,5"));
  rows->Update();
  EXPECT_EQ(rows->Text(u"ID"), QString(79, u'ä'));
  EXPECT_EQ(rows->Number(u"Größe"), 1.5);
  EXPECT_EQ(rows->Integer(u"Xmap"), 7);
  EXPECT_EQ(Error_Of([&] { rows->Set(u"ID", "x"); }), 3020);
  EXPECT_EQ(Error_Of([&] { rows->Update(); }), 3020);
}

TEST_F(DatabaseTest, CursorAtTheEnds) {
  EXPECT_TRUE(rows->Eof() && rows->Bof());
  rows->MoveLast();
  rows->MoveFirst();
  EXPECT_TRUE(rows->Eof() && rows->Bof());
  EXPECT_EQ(rows->Position(), -1);
  for (const auto& work : std::vector<std::function<void()>>{
           [&] { rows->MoveNext(); }, [&] { rows->MovePrevious(); }, [&] { rows->Text(0); }, [&] { rows->Edit(); },
           [&] { rows->Delete(); }, [&] { rows->Bookmark(); }, [&] { rows->MoveTo(0); }})
    EXPECT_EQ(Error_Of(work), 3021);
  for (const char* id : {"a", "b", "c"}) Add(id);
  EXPECT_EQ(rows->RecordCount(), 3);
  rows->MoveLast();
  EXPECT_EQ(rows->Text(0), "c");
  rows->MoveNext();
  EXPECT_TRUE(rows->Eof() && !rows->Bof());
  rows->MovePrevious();
  EXPECT_EQ(rows->Text(0), "c");
  rows->MoveFirst();
  rows->MovePrevious();
  EXPECT_TRUE(rows->Bof());
  EXPECT_EQ(Error_Of([&] { rows->MovePrevious(); }), 3021);
  rows->MoveNext();
  EXPECT_EQ(rows->Text(0), "a");
  // Adding leaves the cursor; a move drops what is being edited.
  Add("d");
  EXPECT_EQ(rows->Text(0), "a");
  rows->Edit();
  rows->Set(0, QStringLiteral("weg"));
  EXPECT_EQ(rows->Text(0), "weg");
  rows->MoveNext();
  rows->MovePrevious();
  EXPECT_EQ(rows->Text(0), "a");
  EXPECT_FALSE(rows->Editing());
}

TEST_F(DatabaseTest, DeletingMovesToTheFollowingRow) {
  for (const char* id : {"a", "b", "c"}) Add(id);
  Reopen();  // nobody knows the next key by heart
  rows->MoveTo(1);
  const QString bookmark = rows->Bookmark();
  rows->Delete();
  EXPECT_EQ(rows->Text(0), "c");
  EXPECT_FALSE(rows->HasRow(bookmark));
  EXPECT_EQ(Error_Of([&] { rows->SetBookmark(bookmark); }), 3167);
  EXPECT_EQ(Error_Of([&] { rows->SetBookmark(QStringLiteral("x")); }), 3167);
  rows->MoveLast();
  const QString last = rows->Bookmark();
  rows->Delete();
  EXPECT_TRUE(rows->Eof());
  EXPECT_EQ(rows->RecordCount(), 1);
  // No key of a row that has gone is given to the next one.
  Add("neu");
  for (const QString& gone : {bookmark, last}) EXPECT_EQ(Error_Of([&] { rows->SetBookmark(gone); }), 3167);
  EXPECT_EQ(Ids(*rows), QStringList({"a", "neu"}));
}

TEST_F(DatabaseTest, TwoRecordsetsOnOneTable) {
  for (int i = 0; i < 20; ++i) Add(QString::number(i));
  auto other = database->OpenRecordset("mapdata");
  for (Recordset* set : {rows.get(), other.get()}) set->MoveTo(5);
  EXPECT_EQ(rows->Text(0), "5");
  Set_Field(*other, u"ID", QStringLiteral("fünf"));
  EXPECT_EQ(rows->Text(0), "fünf");
  // Each writes only what was set.
  rows->Edit();
  rows->Set(u"VG", qint64{3});
  Set_Field(*other, u"Xmap", qint64{9});
  rows->Update();
  EXPECT_EQ(std::pair(rows->Integer(u"Xmap"), other->Integer(u"VG")), std::pair(qint64{9}, qint64{3}));
  other->Delete();
  for (const auto& work : std::vector<std::function<void()>>{[&] { rows->Text(0); }, [&] { rows->Edit(); }})
    EXPECT_EQ(Error_Of(work), 3167);
  rows->MoveNext();
  EXPECT_EQ(rows->Text(0), "6");
  EXPECT_EQ(rows->RecordCount(), 20);
  rows->Requery();
  EXPECT_EQ(rows->RecordCount(), 19);
  database->Execute("UPDATE MapData SET ID='alle'");
  EXPECT_EQ(rows->Text(0), "alle");
}

TEST_F(DatabaseTest, RandomWorkAgreesWithAList) {
  struct Row {
    qint64 key;
    QString id;
    int x;
  };
  std::vector<Row> model;
  std::mt19937 numbers(12345);
  const auto random = [&](int below) { return std::uniform_int_distribution(0, below - 1)(numbers); };
  const auto expect_here = [&](const Row& row) {
    ASSERT_EQ(std::tuple(rows->Key(), rows->Text(u"ID")), std::tuple(row.key, row.id));
    ASSERT_EQ(rows->Integer(u"Xmap"), row.x);
  };
  database->BeginTrans();
  for (int step = 0; step < 6000 && !HasFatalFailure(); ++step) {
    const int what = model.empty() ? 0 : random(10);
    if (what < 4) {
      const QString id = QStringLiteral("Zeile %1 ä").arg(step);
      Add(id, step);
      const int here = rows->Position();
      rows->MoveLast();
      model.push_back({rows->Key(), id, step});
      if (here >= 0) rows->MoveTo(here);
      continue;
    }
    const int at = random(static_cast<int>(model.size()));
    Row& row = model[static_cast<size_t>(at)];
    rows->MoveTo(at);
    if (what % 2 == 0) expect_here(row);
    if (what < 6) {
      rows->Delete();
      model.erase(model.begin() + at);
      ASSERT_TRUE(rows->Eof() || rows->Text(u"ID") == model[static_cast<size_t>(at)].id);
    } else if (what < 8) {
      Set_Field(*rows, u"ID", row.id += 'x');
      Set_Field(*rows, u"Xmap", qint64{row.x = random(30000)});
      expect_here(row);
    }
  }
  database->CommitTrans();
  Reopen();
  ASSERT_EQ(rows->RecordCount(), static_cast<int>(model.size()));
  for (auto row = model.begin(); row != model.end(); ++row, rows->MoveNext()) expect_here(*row);
}

TEST_F(DatabaseTest, TransactionsNestAndTakeBackEverything) {
  Add("a");
  rows->MoveFirst();
  database->BeginTrans();
  Set_Field(*rows, u"ID", QStringLiteral("b"));
  database->BeginTrans();
  Add("c");
  database->CreateTable(Vertex_Def("Linie0"));
  database->CommitTrans();
  EXPECT_TRUE(database->InTrans());
  rows->MoveLast();
  database->Rollback();
  EXPECT_FALSE(database->InTrans());
  EXPECT_FALSE(database->HasTable("Linie0"));
  EXPECT_EQ(Ids(*rows), QStringList{"a"});
  database->BeginTrans();
  database->BeginTrans();
  Add("d");
  rows->MoveFirst();
  rows->Delete();
  database->CommitTrans();
  database->CommitTrans();
  EXPECT_EQ(Error_Of([&] { database->CommitTrans(); }), 3034);
  Reopen();
  EXPECT_EQ(Ids(*rows), QStringList{"d"});
}

TEST_F(DatabaseTest, TablesAndColumns) {
  EXPECT_EQ(Error_Of([&] { database->OpenRecordset("Linie0"); }), 3078);
  EXPECT_EQ(Error_Of([&] { database->DropTable("Linie0"); }), 3078);
  for (const char* name : {"Linie0", "Flaeche \"12\"", "Größe"}) database->CreateTable(Vertex_Def(name));
  EXPECT_EQ(Error_Of([&] { database->CreateTable(Vertex_Def("LINIE0")); }), 3010);
  EXPECT_TRUE(database->HasTable("GRÖSSE") || database->HasTable("GRÖßE"));
  database->DropTable("linie0");
  database->CreateTable(Vertex_Def("Linie1"));
  QStringList names;
  for (const TableDef& table : database->TableDefs()) names << table.name;
  EXPECT_EQ(names, QStringList({"MapData", "Flaeche \"12\"", "Größe", "Linie1"}));
  Add("a");
  database->AddColumn("MapData", {"Höhe", FieldType::Integer, 0});
  EXPECT_EQ(Error_Of([&] { database->AddColumn("MapData", {"höhe", FieldType::Text, 5}); }), 3191);
  Reopen();
  EXPECT_EQ(rows->Fields().back(), (FieldInfo{"Höhe", FieldType::Integer, 0}));
  EXPECT_EQ(rows->Raw(6), Value());
  database->DropColumn("MapData", "HÖHE");
  EXPECT_EQ(Error_Of([&] { database->DropColumn("MapData", "Höhe"); }), 3265);
  rows->Requery();
  EXPECT_EQ(rows->Fields(), Entries().fields);
  EXPECT_EQ(database->RowCount("MapData"), 1);
}

TEST_F(DatabaseTest, PointsFollowEveryWrite) {
  EXPECT_EQ(database->Points("Linie0"), nullptr);
  database->CreateTable(Vertex_Def("Linie0"));
  ASSERT_NE(database->Points("Linie0"), nullptr);
  EXPECT_TRUE(database->Points("Linie0")->empty());
  auto points = database->OpenRecordset("Linie0");
  const auto shown = [&] {
    QStringList text;
    for (const auto& point : *database->Points("LINIE0")) text << QString("%1,%2").arg(point.x).arg(point.y);
    return text.join(' ');
  };
  Append(*points, {qint64{-32000}, qint64{2}});
  Append(*points, {Value(), qint64{3}});
  EXPECT_EQ(shown(), "-32000,2");
  const auto* kept = database->Points("LINIE0");
  Add("fremd");
  EXPECT_EQ(database->Points("LINIE0"), kept);
  database->Execute("UPDATE Linie0 SET xf=5 WHERE xf IS NULL");
  EXPECT_EQ(shown(), "-32000,2 5,3");
  database->BeginTrans();
  points->MoveFirst();
  points->Delete();
  EXPECT_EQ(shown(), "5,3");
  Append(*points, {qint64{7}, qint64{7}});
  database->Rollback();
  EXPECT_EQ(shown(), "-32000,2 5,3");
  database->DropTable("Linie0");
  EXPECT_EQ(database->Points("LINIE0"), nullptr);
}

TEST_F(DatabaseTest, Selects) {
  for (const char* id : {"Zebra", "ärmel", "Arm", "Bar", "bär", "STRASSE", "straße", "arn"}) Add(id);
  auto sorted = database->OpenRecordset("SELECT * FROM MapData ORDER BY ID");
  EXPECT_EQ(Ids(*sorted), QStringList({"Arm", "ärmel", "arn", "Bar", "bär", "STRASSE", "straße", "Zebra"}));
  auto found = database->OpenRecordset("select ID, Xmap from [MapData] where ID='BÄR' or ID='Strasse' order by 1");
  EXPECT_EQ(Ids(*found), QStringList({"bär", "STRASSE", "straße"}));
  found->MoveFirst();
  Set_Field(*found, u"Xmap", qint64{77});
  rows->SetBookmark(found->Bookmark());
  EXPECT_EQ(rows->Text(0), "bär");
  EXPECT_EQ(rows->Integer(u"Xmap"), 77);
  found->Delete();
  EXPECT_EQ(found->Text(0), "STRASSE");
  auto counted = database->OpenRecordset("SELECT VG, count(*) AS Zahl FROM MapData GROUP BY VG");
  EXPECT_EQ(counted->Integer(u"Zahl"), 7);
  EXPECT_EQ(counted->Bookmark(), "0");
  EXPECT_EQ(Error_Of([&] { counted->Edit(); }), 70);
  for (const auto& [sql, error] : {std::pair("SELECT FROM WHERE", 3075), {"SELECT * FROM Nirgends", 3078}})
    EXPECT_EQ(Error_Of([&] { database->OpenRecordset(sql); }), error) << sql;
  EXPECT_EQ(Error_Of([&] { database->Execute("COMMIT"); }), 3075);
  EXPECT_EQ(database->Execute("DELETE FROM MapData WHERE ID < 'B'"), 3);
}

TEST_F(DatabaseTest, FaultsAreToldInGerman) {
  Add("a");
  Reopen(
      "CREATE TABLE streng (nr INTEGER NOT NULL UNIQUE, art TEXT CHECK (art <> 'x'), menge REAL) STRICT;"
      "CREATE VIEW alle AS SELECT * FROM MapData; INSERT INTO streng VALUES(1, 'a', 1.5);");
  QString deep = "1";
  for (int i = 0; i < 1200; ++i) deep = '(' + deep + "+1)";
  const struct {
    QString sql;
    int number;
    const char* text;
  } cases[] = {
      {"INSERT INTO streng VALUES(1, 'b', 2)", 3075, "Der Wert in streng.nr kommt schon vor"},
      {"INSERT INTO streng VALUES(NULL, 'b', 2)", 3075, "streng.nr darf nicht leer bleiben"},
      {"INSERT INTO streng VALUES(2, 'x', 2)", 3075, "verletzt eine Regel dieser Tabelle (art <> 'x')"},
      {"INSERT INTO streng VALUES(2, 'b', 'viel')", 3075, "Der Wert hat nicht die Art, die streng.menge aufnimmt"},
      {"INSERT INTO MapData(rowid) VALUES('x')", 3075, "Der Wert hat nicht die Art"},
      {"INSERT INTO streng VALUES(2)", 3075, "Die Zahl der Werte passt nicht"},
      {"UPDATE alle SET Xmap=1", 3075, "alle gehört einem anderen Programm"},
      {"UPDATE MapData SET Xmap=fx_short(40000)", 3075, "Überlauf"},
      {"UPDATE MapData SET ID=hex(zeroblob(60000000))", 3075, "Ein Text ist zu lang"},
      {"UPDATE MapData SET Xmap=abs(-9223372036854775807-1)", 3075, "Ein Zahlenwert ist zu groß"},
      {"UPDATE MapData SET Xmap=" + deep, 3075, "zu tief verschachtelt"},
      {"UPDATE MapData SET Xmap=count(*)", 3075, "Summen und Zählungen"},
      {"UPDATE MapData SET Xmap=(SELECT nr, art FROM streng)", 3075, "nur eine Spalte"},
      {"UPDATE MapData SET Xmap=fx_mid(1)", 3075, "zu viele oder zu wenige Werte: mid()"},
      {"UPDATE MapData SET Xmap=nichts(1)", 3075, "Die Funktion nichts gibt es nicht"},
      {"UPDATE Nirgends SET Xmap=1", 3078, "namens Nirgends gibt es nicht"},
      {"UPDATE MapData SET Farbe=1", 3075, "Die Spalte Farbe ist"},
      {"UPDATE MapData SET", 3075, "nicht vollständig"},
      {"UPDATE MapData SET = 3", 3075, "wird bei \"=\" nicht verstanden"},
      {"UPDATE MapData SET ID='offen", 3075, "wird bei \"'offen\" nicht verstanden"},
      {"CREATE TABLE MapData(a)", 3075, "Die Tabelle MapData gibt es schon"},
      {"", 0, ""},
  };
  for (const auto& it : cases) {
    EXPECT_THAT(Raised([&] { database->Execute(it.sql); }), Tells(it.number, {it.text})) << it.sql.left(80);
  }
  EXPECT_EQ(Raised([&] { database->OpenSnapshot("-- nichts"); }).number, 3075);
}

TEST_F(DatabaseTest, StatementsThatGrowAreStopped) {
  database->BeginTrans();
  for (int i = 0; i < 92; ++i) Add(QStringLiteral("Eintrag mit etwas Text %1").arg(i), i);
  database->CommitTrans();
  const qint64 bytes = 20 << 20;
  const char* const statements[] = {
      "SELECT a.*, b.* FROM MapData a, MapData b, MapData c, MapData d",
      "SELECT a.ID, b.ID FROM MapData a, MapData b, MapData c, MapData d ORDER BY a.ID || b.ID",
      "SELECT count(*) FROM (SELECT DISTINCT a.ID || b.ID || c.ID || d.ID FROM MapData a, MapData b, MapData c, "
      "MapData d)",
      "INSERT INTO MapData(ID) SELECT a.ID || b.ID FROM MapData a, MapData b, MapData c, MapData d",
      "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i+1 FROM n) "
      "INSERT INTO MapData(ID) SELECT hex(zeroblob(5000)) FROM n"};
  for (const char* sql : statements) {
    const TimeLimit limit(*database, 60'000, {.bytes = bytes, .stopped = {}});
    const qint64 before = sqlite3_memory_highwater(1);
    const auto run = [&] { *sql != 'S' ? void(database->Execute(sql)) : void(database->OpenSnapshot(sql)); };
    EXPECT_THAT(Raised(run), Tells(7, {"Die Anweisung braucht mehr Speicher, als ihr zusteht (20 MB)"})) << sql;
    EXPECT_LT(sqlite3_memory_highwater(1) - before, 2 * bytes) << sql;
  }
  EXPECT_LT(QFileInfo(path + "-wal").size(), 3 * bytes);
  EXPECT_EQ(database->RowCount("MapData"), 92);
  EXPECT_EQ(rows->RecordCount(), 92);
}

TEST_F(DatabaseTest, RunningStatementIsStoppedByTheUser) {
  for (int i = 0; i < 30; ++i) Add(QString::number(i), i);
  auto other = database->OpenRecordset("MapData");
  const QString forever =
      "SELECT count(*) FROM MapData a, MapData b, MapData c, MapData d, MapData e, MapData f, MapData g";
  int asked = 0;
  const auto stopped = [&](int milliseconds) {
    EXPECT_GT(milliseconds, 0);
    // Events that are served here may reach for the rows: the statement must not be disturbed.
    EXPECT_EQ(Error_Of([&] { other->Text(0); }), 3218);
    EXPECT_EQ(Error_Of([&] { other->AddNew(); }), 3218);
    EXPECT_EQ(Error_Of([&] { database->Execute("DELETE FROM MapData"); }), 3218);
    for (const auto& work : {&Database::Checkpoint, &Database::BeginTrans, &Database::Rollback, &Database::Close})
      EXPECT_EQ(Error_Of([&] { (*database.*work)(); }), 3218);
    return ++asked >= 3;
  };
  {
    const TimeLimit outer(*database, 60'000);
    {
      const TimeLimit limit(*database, 60'000, {.stopped = stopped});
      EXPECT_EQ(Error_Of([&] { database->OpenSnapshot(forever); }), 3059);
      EXPECT_EQ(Error_Of([&] { database->Execute("UPDATE MapData SET Xmap=1 WHERE (" + forever + ") > 0"); }), 3059);
    }
    EXPECT_EQ(asked, 4);
  }
  const TimeLimit limit(*database, 100);
  database->BeginTrans();
  EXPECT_EQ(Raised([&] { database->Execute("DELETE FROM MapData WHERE (" + forever + ") > 0"); }).text,
            "Die Anweisung dauerte zu lange und wurde abgebrochen.");
  EXPECT_FALSE(database->InTrans());
  EXPECT_EQ(other->Text(0), "0");
  EXPECT_EQ(database->OpenSnapshot("SELECT sum(Xmap) FROM MapData")->Integer(0), 435);
}

// Values that we would never write.
TEST_F(DatabaseTest, ForeignValuesAreRead) {
  database->CreateTable(Vertex_Def("Linie0"));
  Reopen(
      "INSERT INTO MapData(ID, Größe, VG, Xmap, Summe) VALUES"
      "('a', 9e999, -9e999, -9223372036854775807 - 1, 9223372036854775807), ('b', -1e300, 1e300, '1e999', '-1e999'),"
      "(replace(hex(zeroblob(5000000)), '00', 'ä-'), x'80ff', 'viel', 2.5, 1e19);"
      "INSERT INTO Linie0 VALUES(5000000000, -9e999), (1e300, '7 m')");
  const double largest = std::numeric_limits<double>::max();
  const qint64 least = std::numeric_limits<qint64>::min(), most = std::numeric_limits<qint64>::max();
  EXPECT_EQ(rows->Raw(2), Value());
  EXPECT_EQ(rows->Number(u"Größe"), 0);
  EXPECT_EQ(rows->Integer(u"VG"), 0);
  EXPECT_EQ(rows->Text(u"VG"), "");
  EXPECT_EQ(rows->Integer(u"Xmap"), least);
  EXPECT_EQ(rows->Number(u"Summe"), 9223372036854775808.0);
  rows->MoveNext();
  EXPECT_EQ(rows->Integer(u"Größe"), least);
  EXPECT_EQ(rows->Integer(u"VG"), most);
  for (const char16_t* field : {u"Xmap", u"Summe"})
    EXPECT_LE(std::fabs(rows->Number(QStringView(field))), largest) << rows->Text(QStringView(field));
  rows->MoveNext();
  EXPECT_EQ(rows->Text(0).size(), 10'000'000);
  EXPECT_EQ(rows->Text(0).right(2), "ä-");
  EXPECT_EQ(rows->Number(u"VG"), 0);
  EXPECT_EQ(rows->Integer(u"Xmap"), 2);
  const int intMost = std::numeric_limits<int>::max(), intLeast = std::numeric_limits<int>::min();
  const auto& points = *database->Points("Linie0");
  EXPECT_EQ(std::tuple(points[0].x, points[0].y), std::tuple(intMost, intLeast));
  EXPECT_EQ(std::tuple(points[1].x, points[1].y), std::tuple(intMost, 7));
  rows->MoveFirst();
  rows->Edit();
  for (const double value : {std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::quiet_NaN()})
    EXPECT_EQ(Error_Of([&] { rows->Set(u"Größe", value); }), 6);
  database->AddColumn("MapData", {"Lang", FieldType::Text, 0});
  rows->Requery();
  rows->Edit();
  rows->Set(u"Lang", QString(50'000'001, u'ä'));
  EXPECT_EQ(Error_Of([&] { rows->Update(); }), 3075) << "more than a row can hold";
  EXPECT_EQ(rows->Raw(6), Value());
  EXPECT_EQ(database->OpenSnapshot("SELECT fx_round(1.5e308, 15), fx_round(2.345, 2)")->Number(0), 1.5e308);
}

TEST_F(DatabaseTest, KeysAtTheirEnd) {
  Add("a");
  database->Execute("UPDATE MapData SET rowid=9223372036854775806");
  rows->Requery();
  Add("b");
  EXPECT_EQ(Error_Of([&] { Add("c"); }), 6);
  EXPECT_EQ(Ids(*rows), QStringList({"a", "b"}));
}

TEST_F(DatabaseTest, TextsInUtf16AreRead) {
  const QString other = folder.filePath("Fremd.MDB");
  Run_Elsewhere(other, "PRAGMA encoding='UTF-16'; CREATE TABLE t(ID TEXT); INSERT INTO t VALUES('Bär')");
  const auto open = Workspace::OpenDatabase(other);
  EXPECT_EQ(open->OpenRecordset("t")->Text(0), "Bär");
  EXPECT_EQ(open->OpenSnapshot("SELECT ID || 'en' FROM t WHERE ID = 'BÄR' COLLATE NOCASE")->Text(0), "Bären");
}

// What another program put into the file: it is neither run nor in the way.
TEST_F(DatabaseTest, ForeignPartsOfTheFileAreLeftAlone) {
  for (const char* id : {"a", "b", "c"}) Add(id);
  Reopen(
      "CREATE VIRTUAL TABLE wort USING fts5(text); INSERT INTO wort VALUES('Eiche am Bach');"
      "CREATE VIRTUAL TABLE ort USING rtree(nr, x0, x1); INSERT INTO ort VALUES(1, 2.0, 3.0);"
      "CREATE TRIGGER raeumt AFTER INSERT ON MapData BEGIN DELETE FROM MapData; END;"
      "CREATE TRIGGER ewig AFTER UPDATE ON MapData BEGIN INSERT INTO MapData(ID) "
      "  WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i+1 FROM n) SELECT i FROM n LIMIT 100000; END;"
      "CREATE VIEW endlos AS WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i+1 FROM n) SELECT i FROM n;"
      "CREATE VIEW alle AS SELECT * FROM MapData;");
  Add("d");
  rows->MoveLast();
  Set_Field(*rows, u"Xmap", qint64{5});
  rows->Delete();
  EXPECT_EQ(Ids(*rows), QStringList({"a", "b", "c"}));
  EXPECT_FALSE(database->HasTable("wort") || database->HasTable("endlos"));
  EXPECT_NE(Error_Of([&] { database->OpenSnapshot("SELECT * FROM endlos"); }), 0);
  EXPECT_EQ(Error_Of([&] { database->OpenSnapshot("SELECT * FROM alle"); }), 3075);
  EXPECT_EQ(Error_Of([&] { database->Execute("DELETE FROM wort_data"); }), 3075) << "its index would break";
  EXPECT_EQ(Error_Of([&] { database->Execute("PRAGMA writable_schema=ON; DELETE FROM sqlite_master"); }), 3075);
  database->AddColumn("MapData", {"Höhe", FieldType::Integer, 0});
  database->DropColumn("MapData", "Höhe");
  // Statements of its own that such a table keeps are its own to end.
  const auto found = database->OpenSnapshot("SELECT x0 FROM ort, wort WHERE wort MATCH 'eiche' AND x1 > 2");
  EXPECT_EQ(found->RecordCount(), 1);
  rows->MoveFirst();
  EXPECT_EQ(rows->Text(0), "a");
  Reopen();
  database->Close();
  CompactDatabase(path, folder.filePath("Kopie.MDB"));
  database = Workspace::OpenDatabase(folder.filePath("Kopie.MDB"));
  EXPECT_EQ(database->OpenSnapshot("SELECT * FROM wort")->Text(0), "Eiche am Bach");
}

TEST_F(DatabaseTest, NoTwoDatabasesHaveTheSameCountOfChanges) {
  rows.reset();
  QSet<qint64> counts;
  for (int i = 0; i < 4; ++i) {
    database.reset();  // the next one may well lie at the same address
    database = Workspace::OpenDatabase(path);
    EXPECT_FALSE(counts.contains(database->ChangeCount()));
    counts << database->ChangeCount();
  }
}

TEST_F(DatabaseTest, CheckpointAndClosingLeaveOneWholeFile) {
  Add("a");
  database->Checkpoint();
  const QString copy = folder.filePath("Kopie.MDB");
  ASSERT_TRUE(QFile::copy(path, copy));
  for (const bool readOnly : {false, true})
    EXPECT_EQ(Workspace::OpenDatabase(copy, {.readOnly = readOnly})->RowCount("MapData"), 1);
  Kill(copy);
  Add("b");
  EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files), QStringList({"KARTE.ldb", "KARTE.MDB", "KARTE.MDB-wal"}));
  database->Close();
  EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files), QStringList{"KARTE.MDB"});
  EXPECT_FALSE(rows->IsOpen());
  EXPECT_EQ(Error_Of([&] { rows->MoveNext(); }), 3420);
  EXPECT_EQ(Error_Of([&] { database->RowCount("MapData"); }), 3420);
  database->Close();
}

}  // namespace
