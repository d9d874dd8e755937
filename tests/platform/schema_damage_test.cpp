#include "platform/damage_fixture.h"
#include "platform/foreign_sql.h"

// One damaged byte in what a table file tells about its own tables. All rows are whole: none may be lost, and none may
// turn up in another table.

namespace {

constexpr int entryCount = 60, lineCount = 6;

class SchemaDamageTest : public DamageTest {
 protected:
  void SetUp() override {
    auto database = Workspace::CreateDatabase(path);
    database->BeginTrans();
    std::vector<FieldInfo> columns = MapData_Def().fields;
    columns.push_back({"Höhe", FieldType::Integer, 0});
    columns.push_back({"Fundort", FieldType::Text, 30});
    database->CreateTable({"MapData", columns});
    database->CreateTable(Qdata_Def());
    auto rows = database->OpenRecordset("MapData");
    for (int i = 0; i < entryCount; ++i) {
      std::vector<Value> values;
      for (int column = 0; column < 14; ++column)
        values.push_back(columns[static_cast<size_t>(column)].type == FieldType::Text
                             ? Value(u"Wert %1 in %2"_s.arg(i).arg(column))
                             : Value(qint64{i * 100 + column}));
      Append(*rows, values);
    }
    for (int line = 0; line < lineCount; ++line) {
      const QString name = QStringLiteral("Linie%1").arg(line);
      database->CreateTable(Vertex_Def(name));
      for (int i = 0; i < 4 + line; ++i)
        database->Execute(QStringLiteral("INSERT INTO %1 VALUES(%2,%3)").arg(name).arg(line * 1000).arg(i));
    }
    database->CommitTrans();
    database->Close();
    original = Read_All(*Workspace::OpenDatabase(path));
    sound = Read_Bytes(path);
  }
  // "" if the repaired file holds all entries under their columns and no wrong row; counts what kept its name.
  QString Fault_After(const QByteArray& content) {
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size()) return "not written";
    file.close();
    ++runs;
    unnamed = 0;
    try {
      const RepairReport report = RepairDatabase(path);
      if (!report.damagedCopy.isEmpty()) QFile::remove(report.damagedCopy);
      auto database = Workspace::OpenDatabase(path);
      if (report.Rows_In("mapdata") != entryCount) return "entries are told wrong";
      const TableTexts tables = Read_All(*database);
      if (const QString fault = Fault_Of_Entries(*database, tables); !fault.isEmpty()) return "entries: " + fault;
      for (const auto& [name, found] : tables) {
        if (name.startsWith("Gerettet")) unnamed += static_cast<int>(found.size());
        const auto expected = original.find(name);
        if (expected == original.end()) continue;
        for (const auto& [key, texts] : found)
          if (expected->second.count(key) == 0 || expected->second.at(key) != texts) return "a wrong row in " + name;
        linesKept += name.startsWith("Linie") && found == expected->second;
      }
      return {};
    } catch (const Error& error) {
      return "error: " + error.text;
    }
  }
  QString Fault_Of_Entries(Database& database, const TableTexts& tables) {
    if (!database.HasTable("MapData")) return "no table";
    if (tables.at("MapData") != original["MapData"]) return "other values";
    const auto rows = database.OpenRecordset("MapData");
    int number = 0;
    for (const FieldInfo& column : MapData_Def().fields)
      if (!rows->HasField(column.name) || rows->FieldIndex(column.name) != number++) return "column " + column.name;
    columnsKept += rows->HasField(u"Höhe") && rows->HasField(u"Fundort");
    return {};
  }
  // Each byte in turn in one of four ways.
  void Damage_Each(qsizetype from, qsizetype end) {
    ASSERT_GE(from, 0);
    for (qsizetype at = from; at < std::min(end, sound.size()); ++at) {
      QByteArray content = sound;
      content[at] = static_cast<char>(content[at] ^ "\x01\x20\x80\x55"[at % 4]);
      ASSERT_EQ(Fault_After(content), "") << at << ' ' << sound.mid(at - 8, 16).toPercentEncoding().constData();
    }
  }

  QByteArray sound;
  TableTexts original;
  int runs = 0, linesKept = 0, columnsKept = 0, unnamed = 0;
};

TEST_F(SchemaDamageTest, OneByteCostsNothing) {
  Damage_Each(sound.indexOf("tableMapDataMapData") - 12, sound.indexOf("Fundort") + 30);
  EXPECT_GT(columnsKept * 10, runs * 8) << "names of columns that the user added";
  Damage_Each(sound.indexOf("tableLinie2Linie2") - 12, sound.indexOf("tableLinie1Linie1") - 12);
  Damage_Each(0, 160);  // the head of the file and of its first page
  // Where a number has become that of another table, both lose their names.
  EXPECT_GE(linesKept, runs * lineCount - 2);
}

TEST_F(SchemaDamageTest, LostDescriptions) {
  // Nothing is left of what tells about the entries; one of two lines has the number of the other.
  QByteArray content = sound;
  const qsizetype at = content.indexOf("tableMapDataMapData");
  content.replace(at - 8, 350, QByteArray(350, '\0'));
  EXPECT_EQ(Fault_After(content), "");
  EXPECT_EQ(Workspace::OpenDatabase(path)->OpenRecordset("MapData")->Fields()[12].name, "Spalte13");
  content = sound;
  const qsizetype one = content.indexOf("tableLinie1Linie1") + 17, other = content.indexOf("tableLinie4Linie4") + 17;
  ASSERT_EQ(content[one + 1], 'C');
  content[one] = content[other];
  EXPECT_EQ(Fault_After(content), "");
  EXPECT_EQ(unnamed, 5 + 8) << "nobody knows which is which: both are kept under other names";
}

// Rules of a table may not cost a row, and its own numbers stay.
TEST_F(SchemaDamageTest, TablesOfOtherPrograms) {
  Run_Elsewhere(path,
                "PRAGMA ignore_check_constraints=ON; CREATE TABLE fremd(nr INTEGER PRIMARY KEY, art TEXT "
                "CHECK (art <> 'x')); INSERT INTO fremd VALUES(17, 'a'), (23, 'x'), (40, 'b');"
                "CREATE TABLE eigen(nr INTEGER PRIMARY KEY, art TEXT NOT NULL); INSERT INTO eigen VALUES(9, 'y')");
  QByteArray content = Read_Bytes(path);
  content[18] = '\x7f';
  EXPECT_EQ(Fault_After(content), "");
  TableTexts tables = Read_All(*Workspace::OpenDatabase(path));
  EXPECT_EQ(tables["fremd"], (RowTexts{{17, {"", "a"}}, {23, {"", "x"}}, {40, {"", "b"}}}));
  EXPECT_EQ(tables["eigen"], (RowTexts{{9, {"9", "y"}}}));
}

}  // namespace
