#pragma once
#include "support/records.h"

using RowTexts = std::map<qint64, QStringList>;  // by key
using TableTexts = std::map<QString, RowTexts>;  // by table

inline std::vector<FieldInfo> Entry_Columns() {
  std::vector<FieldInfo> fields;
  for (const char* name : {"ID", "Eintrag", "Schrift"}) fields.push_back({name, FieldType::Text, 79});
  fields.push_back({"Größe", FieldType::Double, 0});
  for (const char* name : {"VG", "HG", "RA", "Xmap", "Ymap", "Xline", "Yline", "Typ"})
    fields.push_back({name, FieldType::Integer, 0});
  return fields;
}
inline const std::vector<FieldInfo> pointColumns = {{"xf", FieldType::Integer, 0}, {"yf", FieldType::Integer, 0}};
inline const std::vector<FieldInfo> listColumns = {
    {"Nr", FieldType::Text, 20}, {"Ort", FieldType::Text, 79}, {"Spzf", FieldType::Text, 20}};

inline TableTexts Read_All(Database& database) {
  TableTexts all;
  for (const TableDef& table : std::vector<TableDef>(database.TableDefs())) {
    auto rows = database.OpenRecordset(table.name);
    for (auto& texts = all[table.name]; !rows->Eof(); rows->MoveNext())
      for (int i = 0; i < static_cast<int>(table.fields.size()); ++i) texts[rows->Key()] << rows->Text(i);
  }
  return all;
}

// A table file to be damaged; in memory where that can be had: hundreds of flushes are of no interest here.
class DamageTest : public ::testing::Test {
 protected:
  static void SetUpTestSuite() {
    Set_Known_Tables({{"MapData", Entry_Columns()}, {"Qdata", listColumns}, {"", pointColumns}});
  }
  QTemporaryDir folder{QDir("/dev/shm").exists() ? "/dev/shm/flurax-XXXXXX" : QDir::tempPath() + "/flurax-XXXXXX"};
  const QString path = folder.filePath("KARTE.MDB");
};
