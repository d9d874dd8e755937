#include <benchmark/benchmark.h>

#include <sqlite3.h>

#include "bench_map.h"
#include "edit/search_replace.h"
#include "edit/sql_query.h"
#include "store/sql_translate.h"

// Statements and search on a table of 100,000 rows, each beside the bare calls of the database for the same work.

namespace {

constexpr int rowCount = 100'000;

// An own file of the table alone: no map, no drawing.
class QueryTable {
 public:
  QueryTable() {
    dbEntries = Workspace::CreateDatabase(folder.path() + QStringLiteral("/QUERY.MDB"));
    Make_Template(*dbEntries);
    dbEntries->BeginTrans();
    rsEntries = dbEntries->OpenRecordset(QStringLiteral("MapData"));
    EntryRow row;
    row.Schrift = QStringLiteral("Arial");
    row.Groesse = 12;
    for (int i = 0; i <= rowCount; ++i) {
      row.ID = i == 0 ? QStringLiteral("!Karte") : QStringLiteral("Text");
      row.Eintrag = i == rowCount ? QStringLiteral("Die eine") : QStringLiteral("Fundort %1 am Ühlbach").arg(i);
      row.Xmap = i % 1600;
      rsEntries->AddNew();
      Write_Entry(*rsEntries, row);
      rsEntries->Update();
    }
    dbEntries->CommitTrans();
    rsEntries->Requery();
  }
  ~QueryTable() {
    rsEntries.reset();
    dbEntries.reset();
  }

 private:
  QTemporaryDir folder;
};

int Rows_Of_Bare(const char* sql) {
  sqlite3_stmt* statement = nullptr;
  sqlite3_prepare_v2(dbEntries->Handle(), sql, -1, &statement, nullptr);
  int rows = 0;
  while (sqlite3_step(statement) == SQLITE_ROW) ++rows;
  sqlite3_finalize(statement);
  return rows;
}

void Select(benchmark::State& state, const char* statement) {
  const QueryTable table;
  for (auto _ : state) {
    const SqlTranslation it = Translate_Sql(QString::fromUtf8(statement), dbEntries->TableDefs());
    benchmark::DoNotOptimize(dbEntries->OpenRecordset(it.sql)->RecordCount());
  }
}
void BM_Select_Like(benchmark::State& state) { Select(state, "Select * from [MapData] where Eintrag like '*77 am*'"); }
BENCHMARK(BM_Select_Like)->Unit(benchmark::kMillisecond);
void BM_Select_Like_Umlaut(benchmark::State& state) {
  Select(state, "Select * from [MapData] where Eintrag like '*7 am ü*'");
}
BENCHMARK(BM_Select_Like_Umlaut)->Unit(benchmark::kMillisecond);

// What the database does without a pattern of ours.
void BM_Select_Bare(benchmark::State& state) {
  const QueryTable table;
  for (auto _ : state)
    benchmark::DoNotOptimize(Rows_Of_Bare("SELECT rowid FROM MapData WHERE instr(Eintrag, '77 am') > 0"));
}
BENCHMARK(BM_Select_Bare)->Unit(benchmark::kMillisecond);

void BM_Update(benchmark::State& state) {
  const QueryTable table;
  const QString statement = QStringLiteral("Update [MapData] Set Größe = Größe-1 where ID like 'Text*'");
  for (auto _ : state) {
    const SqlTranslation it = Translate_Sql(statement, dbEntries->TableDefs());
    dbEntries->BeginTrans();
    if (dbEntries->Execute(it.sql) != rowCount) state.SkipWithError("wrong count");
    dbEntries->CommitTrans();
  }
}
BENCHMARK(BM_Update)->Unit(benchmark::kMillisecond);

void BM_Update_Bare(benchmark::State& state) {
  const QueryTable table;
  for (auto _ : state) dbEntries->Execute(QStringLiteral("UPDATE MapData SET \"Größe\"=\"Größe\"-1 WHERE ID='Text'"));
}
BENCHMARK(BM_Update_Bare)->Unit(benchmark::kMillisecond);

// Through all rows to the last one.
void Search(benchmark::State& state, const char* line) {
  const QueryTable table;
  const auto criteria = Parse_Criteria({QString::fromUtf8(line)});
  for (auto _ : state)
    if (Find_Row(1, rowCount + 1, criteria, {}) != rowCount) state.SkipWithError("wrong row");
}
void BM_Search(benchmark::State& state) { Search(state, "Eintrag = *eine*"); }
BENCHMARK(BM_Search)->Unit(benchmark::kMillisecond);

void BM_Search_Bare(benchmark::State& state) {
  const QueryTable table;
  for (auto _ : state) benchmark::DoNotOptimize(Rows_Of_Bare("SELECT rowid FROM MapData WHERE Eintrag LIKE '*eine*'"));
}
BENCHMARK(BM_Search_Bare)->Unit(benchmark::kMillisecond);

}  // namespace
