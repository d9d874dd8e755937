#include "platform/damage_fixture.h"

// Damages a table file in many ways. What a repair brings back must be what stood there.

namespace {

constexpr int pageSize = 1024;

int Count(const TableTexts& all) {
  int count = 0;
  for (const auto& [table, rows] : all) count += static_cast<int>(rows.size());
  return count;
}

class RepairTest : public DamageTest {
 protected:
  // 1500 entries, some with long texts, a list, 30 small tables and a large one of points.
  static void SetUpTestSuite() {
    DamageTest::SetUpTestSuite();
    QTemporaryDir folder;
    const QString path = folder.filePath("A.MDB");
    auto database = Workspace::CreateDatabase(path);
    database->CreateTable(MapData_Def());
    database->CreateTable(Qdata_Def());
    database->BeginTrans();
    auto list = database->OpenRecordset("Qdata");
    Append(*list, {QStringLiteral("FSZ"), QStringLiteral("1,2")});
    auto rows = database->OpenRecordset("MapData");
    for (int i = 0; i < 1500; ++i) {
      std::vector<Value> values{QStringLiteral("Text"),
                                QStringLiteral("Enzian Nr. %1 für Fundort ä%2").arg(i).arg(i * 7),
                                QStringLiteral("Arial-B"), i + 0.5};
      for (int column = 4; column < 12; ++column) values.emplace_back(qint64{(i * column) % 32000 - 500});
      Append(*rows, values);
    }
    for (int table = 0; table <= 30; ++table) {
      const QString name = QStringLiteral("Linie%1").arg(table);
      database->CreateTable(Vertex_Def(name));
      auto points = database->OpenRecordset(name);
      for (int i = 0; i < (table == 30 ? 2000 : 5 + table); ++i)
        Append(*points, {qint64{table * 1000 + i % 1000}, qint64{i}});
    }
    database->CommitTrans();
    database->Execute("UPDATE MapData SET Eintrag=replace(printf('%.4000c','x'),'x','lang ') WHERE rowid%500=7");
    *original = Read_All(*database);
    const auto roots = database->OpenRecordset(
        "SELECT rootpage FROM sqlite_master WHERE name IN ('MapData', 'Linie30') ORDER BY name DESC");
    mapRoot = static_cast<int>(roots->Integer(0));
    roots->MoveNext();
    pointRoot = static_cast<int>(roots->Integer(0));
    database->Close();
    *sound = Read_Bytes(path);
    ASSERT_GT(sound->size(), 200 * pageSize);
  }

  void Put(const QByteArray& content) { Replace_File(path, content); }
  static void Spoil(QByteArray& content, int page, char with = '\0') {
    content.replace((page - 1) * pageSize, pageSize, QByteArray(pageSize, with));
  }
  // Repairs and reads; every row must be one of the original.
  TableTexts Repaired(int leastRows) {
    const QByteArray damaged = Read_Bytes(path);
    report = RepairDatabase(path);
    EXPECT_FALSE(report.wasSound);
    EXPECT_EQ(Read_Bytes(report.damagedCopy), damaged);
    auto database = Workspace::OpenDatabase(path);
    TableTexts found = Read_All(*database);
    EXPECT_EQ(report.rows, Count(found));
    EXPECT_GE(report.rows, leastRows);
    QString wrong;
    for (const auto& [table, rows] : found) {
      const RowTexts expected = original->count(table) ? original->at(table) : RowTexts();
      for (const auto& [key, texts] : rows)
        if (!table.startsWith("Gerettet") && (!expected.count(key) || !Same(texts, expected.at(key))))
          wrong += table + ' ' + QString::number(key) + ": " + texts.join('|').left(200) + '\n';
    }
    EXPECT_EQ(wrong, "");
    return found;
  }

  // What went on on lost pages is missing from there to the end of the row, nothing else.
  static bool Same(const QStringList& texts, const QStringList& expected) {
    if (expected.value(1).size() > 900 && texts.mid(1).join(QString()).isEmpty()) return texts[0] == expected[0];
    return texts == expected;
  }

  static inline TableTexts* const original = new TableTexts;
  static inline QByteArray* const sound = new QByteArray;
  static inline int mapRoot = 0, pointRoot = 0;
  RepairReport report;
};

TEST_F(RepairTest, SoundFilesAndWhatIsNoneStay) {
  Put(*sound);
  report = RepairDatabase(path);
  EXPECT_TRUE(report.wasSound);
  EXPECT_EQ(std::tuple(report.rows, report.damagedCopy), std::tuple(Count(*original), ""));
  EXPECT_EQ(Read_Bytes(path), *sound);
  quint32 seed = 1;
  QByteArray noise(50000, '\0');
  for (char& byte : noise) byte = static_cast<char>((seed = seed * 1664525u + 1013904223u) >> 24);
  for (const QByteArray& content : {noise, QByteArray("x"), QByteArray(5000, '\0'), QByteArray()}) {
    Put(content);
    EXPECT_EQ(Error_Of([&] { RepairDatabase(path); }), 3343);
    EXPECT_EQ(Read_Bytes(path), content);
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files), QStringList{"KARTE.MDB"});
  }
  EXPECT_EQ(Error_Of([&] { RepairDatabase(folder.filePath("Fehlt.MDB")); }), 3024);
}

// The description of the later tables stands on other pages than the first; entries and list are known by their
// columns.
TEST_F(RepairTest, FirstPageOrRootIsGone) {
  for (const int page : {1, mapRoot, pointRoot})
    for (const char with : {'\0', '\x5a'}) {
      QByteArray content = *sound;
      Spoil(content, page, with);
      Put(content);
      TableTexts found = Repaired(Count(*original));
      EXPECT_TRUE(page == 1 || found == *original) << page;
      for (const char* table : {"MapData", "Qdata"}) EXPECT_EQ(found[table], original->at(table)) << page;
    }
  EXPECT_EQ(QDir(folder.path()).entryList({"KARTE_defekt_*.MDB"}).size(), 6);
}

TEST_F(RepairTest, BrokenTextsAreDroppedAndCounted) {
  QByteArray content = *sound;
  const qsizetype at = content.indexOf("Enzian Nr. 700 ");
  ASSERT_GT(at, 0);
  content[at + 2] = '\xff';
  Spoil(content, pointRoot);
  Put(content);
  report = RepairDatabase(path);
  EXPECT_EQ(std::tuple(report.droppedTexts, report.rows), std::tuple(1, Count(*original)));
  auto database = Workspace::OpenDatabase(path);
  auto rows = database->OpenRecordset("MapData");
  rows->MoveTo(700);
  EXPECT_EQ(QStringList({rows->Text(0), rows->Text(1), rows->Text(3)}), QStringList({"Text", "", "700.5"}));
}

TEST_F(RepairTest, AnyDamageGivesASoundFileOrAnError) {
  quint32 seed = 4711;
  const auto random = [&seed](qsizetype below) {
    seed = seed * 1664525u + 1013904223u;
    return static_cast<qsizetype>((static_cast<quint64>(seed >> 4) * static_cast<quint64>(below)) >> 28);
  };
  qint64 rescued = 0;
  int refused = 0, repaired = 0;
  for (int round = 0; round < 300; ++round) {
    QByteArray content = *sound;
    const qsizetype damages = 1 + random(6);
    for (qsizetype i = 0; i < damages; ++i) {
      // The first pages and the heads of pages are where damage hurts most.
      qsizetype at = random(content.size() - 2);
      if (random(3) == 0) at = random(3 * pageSize);
      if (random(3) == 0) at = at / pageSize * pageSize + random(16);
      const qsizetype length = std::min<qsizetype>(1 + random(round % 3 == 0 ? 3000 : 8), content.size() - at);
      for (qsizetype k = 0; k < length; ++k) content[at + k] = static_cast<char>(random(256));
    }
    if (round % 10 == 0) content.truncate(random(content.size()));
    Put(content);
    try {
      report = RepairDatabase(path);
    } catch (const Error& error) {
      ASSERT_EQ(error.number, 3343) << round;
      ++refused;
      continue;
    }
    rescued += report.rows;
    repaired += report.wasSound ? 0 : 1;
    if (!report.damagedCopy.isEmpty()) QFile::remove(report.damagedCopy);
    ASSERT_TRUE(RepairDatabase(path).wasSound) << round;
    auto database = Workspace::OpenDatabase(path);
    ASSERT_EQ(Count(Read_All(*database)), report.rows) << round;
  }
  EXPECT_LT(refused, 10);
  EXPECT_GT(repaired, 150);
  EXPECT_GT(rescued, qint64{270} * Count(*original));  // nine tenths of all rows
}

}  // namespace
