#include <benchmark/benchmark.h>

#include <QCoreApplication>
#include <QTemporaryDir>

#include "platform/database.h"
#include "platform/journal.h"
#include "state/step.h"
#include "store/step_name.h"

// What the journal costs. Pairs: the same change without and with it, on the same file system. And the way back, with
// the rows read again that the change has touched.

namespace {

TableDef Entries() {
  TableDef table{"MapData", {}};
  for (const char* name : {"ID", "Eintrag", "Schrift"}) table.fields.push_back({name, FieldType::Text, 79});
  table.fields.push_back({QStringLiteral("Größe"), FieldType::Double, 0});
  for (const char* name : {"VG", "HG", "RA", "Xmap", "Ymap", "Xline", "Yline", "Typ"})
    table.fields.push_back({name, FieldType::Integer, 0});
  return table;
}

void Append(Recordset& rows, int number) {
  rows.AddNew();
  rows.Set(0, QStringLiteral("Text"));
  rows.Set(1, QStringLiteral("Gentiana verna %1").arg(number));
  rows.Set(2, QStringLiteral("Arial-B-T"));
  rows.Set(3, 8.5);
  for (int i = 4; i < 12; ++i) rows.Set(i, qint64{(number * i) % 30000});
  rows.Update();
}

struct File {
  File(int rows, bool followed) {
    database = Workspace::CreateDatabase(folder.filePath("BENCH.MDB"));
    database->CreateTable(Entries());
    set = database->OpenRecordset("MapData");
    database->BeginTrans();
    for (int i = 0; i < rows; ++i) Append(*set, i);
    database->CommitTrans();
    database->Checkpoint();
    if (!followed) return;
    journal = std::make_unique<Journal>(folder.filePath("BENCH.verlauf"), "MapData");
    journal->Set_Namer(Step_Name);
    journal->Set_Running(Step_Now);
    if (!journal->Follow(*database)) journal->Begin_Anew();
  }
  // As an entry is written: all its columns, two of them changed.
  void Move(int position, int by) {
    set->MoveTo(position);
    set->Edit();
    for (int i = 0; i < 12; ++i) {
      const Value value = set->Raw(i);
      set->Set(i, i == 7 || i == 8 ? Value(set->Integer(i) + by) : value);
    }
    set->Update();
  }
  QTemporaryDir folder{QStringLiteral(FLURAX_BINARY_DIR "/bench-XXXXXX")};
  std::unique_ptr<Database> database;
  std::unique_ptr<Recordset> set;
  std::unique_ptr<Journal> journal;
};

void Update_One(benchmark::State& state, bool followed) {
  File file(10'000, followed);
  int number = 0;
  for (auto _ : state) {
    ++number;
    file.Move(number * 7 % 10'000, number % 2 ? 1 : -1);
  }
}
void BM_Update_Bare(benchmark::State& state) { Update_One(state, false); }
void BM_Update_Step(benchmark::State& state) { Update_One(state, true); }
BENCHMARK(BM_Update_Bare)->Unit(benchmark::kMicrosecond)->UseRealTime();
BENCHMARK(BM_Update_Step)->Unit(benchmark::kMicrosecond)->UseRealTime();

void Append_Many(benchmark::State& state, bool followed) {
  for (auto _ : state) {
    state.PauseTiming();
    auto file = std::make_unique<File>(1000, followed);
    state.ResumeTiming();
    file->database->BeginTrans();
    for (int i = 0; i < 100'000; ++i) Append(*file->set, i);
    file->database->CommitTrans();
    state.PauseTiming();
    file.reset();
    state.ResumeTiming();
  }
}
void BM_Import_100000_Bare(benchmark::State& state) { Append_Many(state, false); }
void BM_Import_100000_Step(benchmark::State& state) { Append_Many(state, true); }
BENCHMARK(BM_Import_100000_Bare)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(BM_Import_100000_Step)->Unit(benchmark::kMillisecond)->UseRealTime();

// Back and forth in turn.
void BM_Walk_One_Of_100000(benchmark::State& state) {
  File file(100'000, true);
  file.Move(50'000, 3);
  for (int i = 0; i < file.set->RecordCount(); ++i) {  // as after a redraw: all rows were read
    file.set->MoveTo(i);
    benchmark::DoNotOptimize(file.set->Integer(7));
  }
  for (auto _ : state) {
    file.journal->Walk_To(file.journal->Position() > 0 ? 0 : 1);
    file.set->MoveTo(50'000);
    benchmark::DoNotOptimize(file.set->Integer(7));
  }
}
BENCHMARK(BM_Walk_One_Of_100000)->Unit(benchmark::kMillisecond)->UseRealTime();

void BM_Undo_Import_100000(benchmark::State& state) {
  File file(1000, true);
  file.database->BeginTrans();
  for (int i = 0; i < 100'000; ++i) Append(*file.set, i);
  file.database->CommitTrans();
  for (auto _ : state) {
    file.journal->Walk_To(0);
    state.PauseTiming();
    file.journal->Walk_To(1);
    state.ResumeTiming();
  }
}
BENCHMARK(BM_Undo_Import_100000)->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace
