#include "store/versions.h"

#include "edit/marks.h"
#include "edit/order.h"
#include "maps/step_walk.h"
#include "maps/version_look.h"
#include "store/history.h"
#include "support/bulk_fixture.h"

// Earlier states of a table: which are kept, what they tell, and the way back to them.

namespace {

TEST(VersionRule, KeepsTheLastTenThenOneADayThenOneAMonth) {
  const QDateTime now(QDate(2026, 11, 22), QTime(12, 0));
  QList<QDateTime> times;
  for (int hour = 0; hour < 15; ++hour) times += now.addSecs(-600 * hour);  // today
  for (int day = 1; day < 50; ++day) times += {now.addDays(-day), now.addDays(-day).addSecs(-60)};
  for (int month = 2; month < 20; ++month) times += now.addMonths(-month).addDays(-20);
  std::sort(times.begin(), times.end(), std::greater<>());
  const QList<int> drop = Versions_To_Drop(times, now);
  QMap<QString, int> days, months;
  for (int i = 0; i < times.size(); ++i) {
    EXPECT_FALSE(i < 10 && drop.contains(i)) << i;
    if (drop.contains(i)) continue;
    EXPECT_GE(times[i], now.addYears(-1));
    if (i >= 10 && times[i] >= now.addMonths(-1)) ++days[times[i].toString("yyyy-MM-dd")];
    if (times[i] < now.addMonths(-1)) ++months[times[i].toString("yyyy-MM")];
  }
  EXPECT_EQ(days.size(), 32) << "each day of the month has its last one";
  EXPECT_EQ(months.size(), 11);
  for (const int count : days.values() + months.values()) EXPECT_EQ(count, 1);
}

class Versions : public BulkTest {
 protected:
  void Make() {
    Write_Vertices("Flaeche1", {{100, 100}, {200, 100}, {150, 200}});
    area = Add(BulkTest::Make(4, "Flaeche1", "Moor", 150, 130, 1, 1));
    deer = Add_Text("Reh", 100, 300);
    otter = Add_Text("Otter", 200, 300);
    Keep_Version();
    before = Whole_Table();
  }
  static QString Told(const VersionDifferences& all) {
    QStringList told = {QStringLiteral("%1 neu").arg(all.added)};
    for (const VersionDifference& entry : all.entries)
      told << (entry.how == VersionEntry::Gone ? "weg " : "anders ") + entry.name;
    return told.join(", ");
  }
  QString area, deer, otter;
  QStringList before;
};

TEST_F(Versions, AreKeptWhereSomethingHasChanged) {
  Make();
  ASSERT_EQ(Table_Versions().size(), 1);
  EXPECT_EQ(Table_Versions().front().entries, 3);
  Keep_Version();
  EXPECT_EQ(Table_Versions().size(), 1) << "nothing has changed";
  const TableVersion first = Table_Versions().front();
  QFile::rename(first.file, QFileInfo(first.file).path() + "/2026-01-02_030405.MDB");  // not of the same second
  for (const bool never : {true, false}) {
    // Of a table that was never changed here, and where something was taken back and a step of another number made.
    const QString file = Table_Versions().front().file;
    Workspace::OpenDatabase(file)->Execute(u"PRAGMA application_id=%1"_s.arg(never ? 0 : 4711));
    Keep_Version();
    EXPECT_EQ(Table_Versions().size(), 1) << "the same rows";
  }
  Add_Text("Biber");
  Keep_Version();
  ASSERT_EQ(Table_Versions().size(), 2);
  EXPECT_EQ(Table_Versions()[0].entries, 4);
  EXPECT_EQ(Table_Versions()[1].when, QDateTime(QDate(2026, 1, 2), QTime(3, 4, 5)));
  EXPECT_EQ(Version_Room(), defaultVersionRoom);
  Set_Version_Room(0);
  Add_Text("Dachs");
  Keep_Version();
  EXPECT_EQ(Table_Versions().size(), 2) << "there is no room for more";
}

TEST_F(Versions, TellWhatHasChangedAndGiveItBack) {
  Make();
  Go(area);
  Delete_Entry(true);
  Write_Vertices("Flaeche1", {{1, 1}, {2, 1}, {1, 2}});  // its number is another area's by now
  Add(BulkTest::Make(4, "Flaeche1", "Teich", 10, 10, 1, 1));
  Go(deer);
  Set_Field(column::Eintrag, QStringLiteral("Hirsch"));
  const QStringList now = Whole_Table();
  const TableVersion version = Table_Versions().front();
  const VersionDifferences all = Differences_To(version);
  EXPECT_EQ(Told(all), "1 neu, weg Fläche: Moor, anders Text: Reh");
  Map_Redraw();
  const QImage drawn = Map.canvas.copy();
  ASSERT_TRUE(Show_Version(version));
  EXPECT_NE(Map.canvas, drawn) << "the earlier entries are to be seen";
  EXPECT_EQ(Whole_Table(), now);
  Map_Redraw();
  EXPECT_EQ(Map.canvas, drawn);
  const int steps = Step_Position();
  EXPECT_TRUE(Take_Back_Entries(version, all.entries));
  EXPECT_EQ(Step_Position(), steps + 1);
  EXPECT_EQ(Row(deer).Eintrag, "Reh");
  EXPECT_EQ(Texts(), (QStringList{"Reh", "Otter", "Teich", "Moor"}));
  rsEntries->MoveLast();
  const QString table = EntryId::Parse(rsEntries->Text(column::ID)).TableName();
  EXPECT_NE(table, "Flaeche1");
  EXPECT_EQ(Load_Vertices(table), (std::vector<QPoint>{{100, 100}, {200, 100}, {150, 200}}));
  EXPECT_EQ(Load_Vertices("Flaeche1").front(), QPoint(1, 1));
  Step_Back();
  EXPECT_EQ(Whole_Table(), now);
  EXPECT_TRUE(Take_Back_Version(version));
  EXPECT_EQ(Whole_Table(), before);
  EXPECT_EQ(Step_Position(), steps + 1);
  Step_Back();
  EXPECT_EQ(Whole_Table(), now);
}

// Marks and the order of the rows are no differences; one that got the key of an entry that is gone is not that entry.
TEST_F(Versions, CompareEntriesNotRows) {
  dbEntries->AddColumn("MapData", {"Zahl", FieldType::Text, 9});
  rsEntries = dbEntries->OpenRecordset("MapData");
  Make();
  const QString badger = Add_Text("Dachs", 300, 300), last = Add_Text("Luchs", 400, 300);
  QFile::remove(Table_Versions().front().file);
  Keep_Version();
  const TableVersion version = Table_Versions().front();
  Go(deer);
  Mark_Obj();
  Go(last);
  Delete_Entry(true);
  // Its key is another entry's by now.
  dbEntries->Execute(
      QStringLiteral("Update MapData Set rowid = %1 Where rowid = %2").arg(last, Add_Text("Wolf", 20, 30)));
  rsEntries->Requery();
  Go(otter);
  Order_Entry(-10);  // to the place before the first
  Go(badger);
  Set_Field(QStringLiteral("Zahl"), QStringLiteral("7"));

  VersionComparison pieces;
  pieces.Begin(version);
  int calls = 1;
  while (!pieces.Go_On(0)) ++calls;
  EXPECT_GT(calls, 2) << "never longer than asked for";
  const VersionDifferences all = pieces.Take();
  EXPECT_EQ(Told(all), "1 neu, anders Text: Dachs, weg Text: Luchs");
  EXPECT_EQ(Take_Entries(version, all.entries), 2);
  EXPECT_EQ(Texts(), (QStringList{"Otter", "Moor", "Reh", "Dachs", "Wolf", "Luchs"}));
  rsEntries->SetBookmark(badger);
  EXPECT_EQ(rsEntries->Text(u"Zahl"), "");
  EXPECT_EQ(EntryType::Parse(Typ(deer)).mark, Mark::Last) << "marks stay";
  EXPECT_EQ(Told(Differences_To(version)), "1 neu");
}

}  // namespace
