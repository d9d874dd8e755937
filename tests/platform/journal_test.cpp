#include "platform/journal.h"

#include <sqlite3.h>

#include "platform/fault_vfs.h"
#include "support/records.h"

// Every change of a database can be taken back and brought again, exactly.

namespace {

class JournalTest : public FolderTest {
 protected:
  void SetUp() override {
    database = Workspace::CreateDatabase(Path("T.MDB"));
    database->CreateTable(
        {"MapData", {{"ID", FieldType::Text, 79}, {"Größe", FieldType::Double, 0}, {"X", FieldType::Integer, 0}}});
    for (int i = 1; i <= 5; ++i) Add(i);
    Follow();
  }
  void Follow() {
    journal = std::make_unique<Journal>(Path("T.journal"), "MapData");
    journal->Read();
    if (!journal->Follow(*database)) journal->Begin_Anew();
  }
  // As after a kill or an end: nothing is told to the journal.
  void Open_Again() {
    journal.reset();
    database.reset();
    database = Workspace::OpenDatabase(Path("T.MDB"));
    Follow();
  }
  void Add(int number) {
    Append(*database->OpenRecordset("MapData"), {u"Ort %1"_s.arg(number), number / 4.0, qint64{number}});
  }
  void Set(int position, const QString& text) {
    const auto rows = database->OpenRecordset("MapData");
    rows->MoveTo(position);
    Set_Field(*rows, 0, text);
  }
  void Make_Points(const QString& name, int count) {
    database->BeginTrans();
    if (database->HasTable(name)) database->DropTable(name);
    database->CreateTable(Vertex_Def(name));
    const auto rows = database->OpenRecordset(name);
    for (int i = 0; i < count; ++i) Append(*rows, {qint64{i}});
    database->CommitTrans();
  }
  void Add_Column(const QString& name, FieldType type, int size) { database->AddColumn("MapData", {name, type, size}); }
  QStringList Now() { return Content_Of(*database, true); }

  std::unique_ptr<Database> database;
  std::unique_ptr<Journal> journal;
};

TEST_F(JournalTest, EveryKindOfChangeGoesBackAndForth) {
  std::vector<QStringList> states{Now()};
  const std::vector<std::function<void()>> changes = {
      [&] { Set(1, "äöü"); },
      [&] { Add(7); },
      [&] {
        const auto rows = database->OpenRecordset("MapData");
        rows->MoveTo(2);
        rows->Delete();
      },
      [&] { Make_Points("Linie1", 30); },
      [&] { Make_Points("Linie1", 3); },
      [&] { Add_Column("Finder", FieldType::Text, 30); },
      [&] { database->Execute("UPDATE MapData SET Finder = 'F' || X, Größe = NULL WHERE X > 2"); },
      [&] { Add_Column("Höhe", FieldType::Long, 0); },
      [&] { database->DropColumn("MapData", "Finder"); },  // not the last one
      [&] { database->Execute("UPDATE MapData SET rowid = -rowid WHERE rowid < 4"); },
      [&] { database->Execute("DELETE FROM MapData"); },
      [&] { database->DropTables({"Linie1"}); },
      [&] {  // what is taken back leaves no step
        database->BeginTrans();
        Add(99);
        Make_Points("Linie9", 4);
        database->Rollback();
        Add(8);
      },
  };
  for (const auto& change : changes) {
    change();
    states.push_back(Now());
    ASSERT_NE(states.back(), states[states.size() - 2]);
    ASSERT_EQ(journal->Count(), static_cast<int>(states.size()) - 1);
  }
  EXPECT_EQ(journal->Fault(), QString());
  std::mt19937 random(3);
  for (int round = 0; round < 60; ++round) {
    const auto target = static_cast<size_t>(random() % states.size());
    if (round % 9 == 5) Open_Again();
    journal->Walk_To(static_cast<int>(target));
    ASSERT_EQ(Now(), states[target]) << "state " << target << " in round " << round;
    ASSERT_EQ(journal->Position(), static_cast<int>(target));
  }
  // A step back to anywhere is a step itself.
  journal->Walk_To(journal->Count());
  journal->Step_Back_To(3, "Rückgängig: alles");
  EXPECT_EQ(Now(), states[3]);
  EXPECT_EQ(journal->Count(), static_cast<int>(states.size()));
  EXPECT_EQ(journal->Step(journal->Count() - 1).name, "Rückgängig: alles");
  Open_Again();
  journal->Walk_To(journal->Count() - 1);
  EXPECT_EQ(Now(), states.back());
  journal->Walk_To(journal->Count());
  EXPECT_EQ(Now(), states[3]);
  // What begins in the middle drops what lay ahead.
  journal->Walk_To(2);
  Set(0, "neu");
  EXPECT_EQ(journal->Count(), 3);
  journal->Walk_To(2);
  EXPECT_EQ(Now(), states[2]);
}

TEST_F(JournalTest, StepsJoinWhatBelongsTogether) {
  const QStringList before = Now();
  RunningStep running{7, "außen"};
  journal->Set_Running([&] { return running; });
  Set(1, "a");
  Set(1, "b");
  Set(1, "b");  // changes nothing
  running = {};
  Set(1, "b");
  Add(6);
  ASSERT_EQ(journal->Count(), 2);
  EXPECT_EQ(journal->Step(0).rows, 2);
  const WalkResult result = journal->Walk_To(0);
  EXPECT_EQ(Now(), before);
  ASSERT_EQ(result.rows.size(), 1u) << "those of the step the walk ended with";
  EXPECT_EQ(result.rows[0].key, 2);
}

// What a cursor has read is what is there after a walk.
TEST_F(JournalTest, OpenCursorsFollowAWalk) {
  const auto rows = database->OpenRecordset("MapData");
  const auto text = [&](int position) {
    rows->MoveTo(position);
    return rows->Text(0);
  };
  for (int i = 0; i < 600; ++i) Add(100 + i);
  rows->Requery();
  for (int i = 0; i < rows->RecordCount(); ++i) text(i);
  const QString former = text(300);
  Set(300, "geändert");
  EXPECT_EQ(text(300), "geändert");
  journal->Walk_To(journal->Count() - 1);
  EXPECT_EQ(text(300), former);
  EXPECT_EQ(text(299), "Ort 394");
  journal->Walk_To(journal->Count() - 2);
  EXPECT_EQ(rows->RecordCount(), 604);
  Make_Points("Linie1", 3);
  ASSERT_EQ(database->Points("Linie1")->size(), 3u);
  database->Execute("UPDATE Linie1 SET xf = 70, yf = 80 WHERE rowid = 1");
  ASSERT_EQ(database->Points("Linie1")->at(0).x, 70);
  journal->Walk_To(journal->Count() - 1);
  EXPECT_EQ(database->Points("Linie1")->at(0).x, 0);
  // So many writes later that not all rows of the step are remembered.
  const QStringList ends{text(0), text(599)};
  database->Execute("UPDATE MapData SET ID = 'alle'");
  EXPECT_EQ(QStringList({text(0), text(599)}), QStringList({"alle", "alle"}));
  journal->Walk_To(journal->Count() - 1);
  const auto others = database->OpenRecordset("MapData");
  database->BeginTrans();
  for (int i = 0; i < 1000; ++i) {
    others->MoveTo(600);
    Set_Field(*others, 0, QString::number(i));
  }
  database->CommitTrans();
  EXPECT_EQ(QStringList({text(0), text(599), text(600)}), ends + QStringList("999"));
}

TEST_F(JournalTest, AFullDiskTakesNoRows) {
  Set(0, "vorher");
  File_Write_Fault = [this](const QString& path, qint64) { return path == Path("T.journal") ? 61 : 0; };
  Set(0, "trotzdem");
  File_Write_Fault = {};
  EXPECT_TRUE(Now().join(u' ').contains("trotzdem"));
  EXPECT_EQ(journal->Count(), 0) << "steps that no longer lead to the rows must not be offered";
  EXPECT_NE(journal->Fault(), QString());
  Set(0, "weiter");
  ASSERT_EQ(journal->Count(), 1);
  Open_Again();
  journal->Walk_To(0);
  EXPECT_TRUE(Now().join(u' ').contains("trotzdem"));
}

// Power cut or full disk in the middle of a walk: whole before or whole after.
TEST_F(JournalTest, AWalkThatCannotBeWrittenIsNoWalk) {
  journal.reset();
  database.reset();
  FaultVfs disk;
  database = Workspace::OpenDatabase(Path("T.MDB"));
  Follow();
  const QStringList start = Now();
  for (int i = 0; i < 5; ++i) Make_Points(QStringLiteral("Linie%1").arg(i), 300);
  database->Execute("UPDATE MapData SET ID = ID || 'x'");
  const QStringList here = Now();
  int refused = 0;
  for (qint64 room = 0; room < 200000; room = room * 2 + 500) {
    disk.room = room;
    const int error = Error_Of([&] { journal->Walk_To(0); });
    disk.room = -1;
    ASSERT_TRUE(error == 0 || error == 61) << error;
    ASSERT_EQ(Now(), error == 0 ? start : here) << "room for " << room;
    ASSERT_EQ(journal->Position(), error == 0 ? 0 : 6);
    refused += error != 0;
    journal->Walk_To(6);
    ASSERT_EQ(Now(), here);
  }
  EXPECT_GT(refused, 2);
}

TEST_F(JournalTest, DamageIsRefusedAndChangesNothing) {
  for (int i = 0; i < 4; ++i) Set(0, QStringLiteral("Schritt %1").arg(i));
  const QStringList here = Now();
  journal.reset();
  const QByteArray whole = Read_Bytes(Path("T.journal"));
  const auto with = [&](const QByteArray& bytes) {
    Put("T.journal", bytes);
    Follow();
  };
  // Cut anywhere: what is there in whole is a journal of its own or none.
  for (qsizetype size = 0; size < whole.size(); size += 7) {
    with(whole.left(size));
    ASSERT_EQ(Now(), here);
    ASSERT_LT(journal->Count(), 4);
    journal->Walk_To(0);
    ASSERT_EQ(Now(), here) << "cut to " << size;
  }
  // A changed byte: refused, or it was none that counts.
  std::mt19937 random(5);
  for (int round = 0; round < 200; ++round) {
    QByteArray bytes = whole;
    bytes[static_cast<qsizetype>(random() % static_cast<unsigned>(bytes.size()))] ^=
        static_cast<char>(1 + random() % 255);
    with(bytes);
    const int error = Error_Of([&] { journal->Walk_To(0), journal->Walk_To(journal->Count()); });
    ASSERT_TRUE(error == 0 || error == 3343 || error == errors::dataChanged) << error;
    if (journal->Position() != 4) {
      if (journal->Count() == 0) continue;
      journal.reset();
      with(whole);
      journal->Walk_To(4);
    }
    ASSERT_EQ(Now(), here);
  }
}

// A table that was edited elsewhere is not written over.
TEST_F(JournalTest, ForeignChangesStopAWalk) {
  Set(0, "eins");
  Set(1, "zwei");
  journal.reset();
  sqlite3_exec(database->Handle(), "UPDATE MapData SET ID = 'fremd' WHERE rowid = 2", nullptr, nullptr, nullptr);
  Follow();
  const QStringList here = Now();
  ASSERT_EQ(journal->Count(), 2);
  EXPECT_EQ(Error_Of([&] { journal->Walk_To(0); }), errors::dataChanged);
  EXPECT_EQ(Now(), here);
  EXPECT_EQ(journal->Position(), 2);
}

TEST_F(JournalTest, OldStepsGoWhenTheFileGrows) {
  std::vector<QStringList> states{Now()};
  for (int i = 0; i < 60; ++i) {
    Set(i % 5, QString(70, u'x') + QString::number(i));
    states.push_back(Now());
  }
  const qint64 before = journal->Bytes();
  journal->Walk_To(58);
  journal->Shrink(before / 2, 10);
  EXPECT_LT(journal->Bytes(), before / 2 + 1);
  EXPECT_GE(journal->Count(), 10);
  const int dropped = 60 - journal->Count();
  EXPECT_EQ(journal->Position(), 58 - dropped);
  Open_Again();
  EXPECT_EQ(journal->Position(), 58 - dropped);
  journal->Walk_To(journal->Count());
  EXPECT_EQ(Now(), states[60]);
  journal->Walk_To(0);
  EXPECT_EQ(Now(), states[static_cast<size_t>(dropped)]);
}

// A large step is stored in parts, each of them packed.
TEST_F(JournalTest, LargeStepsAreStoredCompactly) {
  const QStringList before = Now();
  const auto rows = database->OpenRecordset("MapData");
  database->BeginTrans();
  for (int i = 0; i < 150000; ++i) {
    const QString text = u"Gentiana verna, Frühlings-Enzian am Hang %1 oberhalb der Alm"_s.arg(i);
    Append(*rows, {text, Value(), qint64{i % 30000}});
  }
  database->CommitTrans();
  EXPECT_EQ(journal->Count(), 1);
  EXPECT_LT(journal->Bytes(), 150000 * 20);
  Open_Again();
  journal->Walk_To(0);
  EXPECT_EQ(Now(), before);
  journal->Walk_To(1);
  EXPECT_EQ(database->RowCount("MapData"), 150005);
}

}  // namespace
