#include <benchmark/benchmark.h>
#include <sqlite3.h>

#include <QGuiApplication>
#include <ctime>

#include "bench_net_map.h"
#include "import/csv_import.h"
#include "import/csv_place.h"
#include "platform/files.h"
#include "store/table_file.h"

// The import of a CSV table against bare prepared INSERTs of the same rows in one transaction, in the same run: both
// into a table file on the same disk, with the same settings, the commit included.

namespace {

constexpr int lineCount = 100'000;

QString Make_File(const QString& folder) {
  QStringList lines = {QStringLiteral("#Eintrag1;Datum;#Eintrag2;#X;#Y;#UTM")};
  for (int i = 0; i < lineCount; ++i)
    lines << QStringLiteral("Große Höckerschrecke %1;10.05.2026;%2 Ex.;32%3;%4;")
                 .arg(i)
                 .arg(i % 30)
                 .arg(645000 + (i % 5501) * 7919 % 5500)
                 .arg(5511000 + (i % 3501) * 104729 % 3500);
  const QString path = folder + QStringLiteral("/Funde.csv");
  Write_Lines(path, lines);
  return path;
}

// What the processor spent, so that other programs on a busy machine do not count.
double Now() {
  timespec time{};
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
  return 1e3 * static_cast<double>(time.tv_sec) + 1e-6 * static_cast<double>(time.tv_nsec);
}
double Since(double start) { return Now() - start; }

// The rows the import made, out of its own table.
std::vector<EntryRow> Made_Rows() {
  std::vector<EntryRow> rows;
  rsEntries->MoveFirst();
  for (rsEntries->MoveNext(); !rsEntries->Eof(); rsEntries->MoveNext()) rows.push_back(Read_Entry(*rsEntries));
  return rows;
}

double Bare_Inserts(const std::vector<EntryRow>& rows) {
  rsEntries->Requery();
  sqlite3_stmt* insert = nullptr;
  if (sqlite3_prepare_v2(dbEntries->Handle(), "INSERT INTO MapData VALUES (?,?,?,?,?,?,?,?,?,?,?,?)", -1, &insert,
                         nullptr) != SQLITE_OK)
    qFatal("prepare");
  const double start = Now();
  sqlite3_exec(dbEntries->Handle(), "BEGIN IMMEDIATE", nullptr, nullptr, nullptr);
  for (const EntryRow& row : rows) {
    const QByteArray texts[3] = {row.ID.toUtf8(), row.Eintrag.toUtf8(), row.Schrift.toUtf8()};
    for (int i = 0; i < 3; ++i)
      sqlite3_bind_text(insert, i + 1, texts[i].constData(), static_cast<int>(texts[i].size()), SQLITE_STATIC);
    sqlite3_bind_double(insert, 4, row.Groesse);
    int place = 4;
    for (const int number : {row.VG, row.HG, row.RA, row.Xmap, row.Ymap, row.Xline, row.Yline, row.Typ})
      sqlite3_bind_int(insert, ++place, number);
    sqlite3_step(insert);
    sqlite3_reset(insert);
  }
  sqlite3_exec(dbEntries->Handle(), "COMMIT", nullptr, nullptr, nullptr);
  const double used = Since(start);
  sqlite3_finalize(insert);
  return used;
}

// Whole: from the file to the rows on the disk, undo point included. `drawn`: with the redraw of the map as well.
void Import_100000(benchmark::State& state, bool drawn) {
  const NetBenchMap map;
  const QString file = Make_File(map.folder.path());
  double best[3] = {1e9, 1e9, 1e9};  // import, of which reading the file, bare
  for (auto _ : state) {
    frmMDI.MapOpen = drawn;
    const double start = Now();
    CsvTable table;
    if (!Csv_Analyse(file, table)) qFatal("analyse");
    best[1] = std::min(best[1], Since(start));
    const CsvResult result = Csv_Import(table, {1, 1});
    best[0] = std::min(best[0], Since(start));
    if (result.imported != lineCount) qFatal("%d imported, %zu refused", result.imported, result.refused.size());
    const std::vector<EntryRow> rows = Made_Rows();
    dbEntries->Execute(QStringLiteral("DELETE FROM MapData WHERE Typ = 1"));
    dbEntries->Checkpoint();
    best[2] = std::min(best[2], Bare_Inserts(rows));
    dbEntries->Execute(QStringLiteral("DELETE FROM MapData WHERE Typ = 1"));
    dbEntries->Checkpoint();
    rsEntries->Requery();
  }
  frmMDI.MapOpen = true;
  state.counters["import_ms"] = best[0];
  state.counters["read_ms"] = best[1];
  state.counters["bare_ms"] = best[2];
  state.counters["rate_percent"] = 100 * best[2] / best[0];
}
BENCHMARK_CAPTURE(Import_100000, rows, false)->Iterations(8)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Import_100000, with_redraw, true)->Iterations(3)->Unit(benchmark::kMillisecond);

// All at one place: the search for a free position must not grow with what is there.
void Take_One_Position(benchmark::State& state) {
  for (auto _ : state) {
    TakenPositions taken({1, 1}, {32000, 32000});
    for (int i = 0; i < 30000; ++i) benchmark::DoNotOptimize(taken.Take({5, 5}));
  }
}
BENCHMARK(Take_One_Position)->Unit(benchmark::kMillisecond);

}  // namespace
