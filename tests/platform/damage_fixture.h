#pragma once
#include "support/records.h"

using RowTexts = std::map<qint64, QStringList>;  // by key
using TableTexts = std::map<QString, RowTexts>;  // by table

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
  static void SetUpTestSuite() { Tell_Known_Tables(); }
  QTemporaryDir folder{QDir("/dev/shm").exists() ? "/dev/shm/flurax-XXXXXX" : QDir::tempPath() + "/flurax-XXXXXX"};
  const QString path = folder.filePath("KARTE.MDB");
};
