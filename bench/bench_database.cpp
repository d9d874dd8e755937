#include <benchmark/benchmark.h>
#include <sqlite3.h>

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>
#include <algorithm>
#include <chrono>
#include <ctime>

#include "platform/database.h"

// Pairs: the same work by a recordset and by bare SQLite with the same settings, on the same file system.

namespace {

constexpr int rowCount = 10000;
constexpr int width = 12;
const char* const names[width] = {"ID", "Eintrag", "Schrift", "Größe", "VG",    "HG",
                                  "RA", "Xmap",    "Ymap",    "Xline", "Yline", "Typ"};

TableDef Entries() {
  TableDef table{"MapData", {}};
  for (int i = 0; i < width; ++i)
    table.fields.push_back({QString::fromUtf8(names[i]),
                            i < 3    ? FieldType::Text
                            : i == 3 ? FieldType::Double
                                     : FieldType::Integer,
                            i < 3 ? 79 : 0});
  return table;
}

struct Sample {
  QString id = QStringLiteral("Text"), entry = QStringLiteral("Gentiana verna, Frühlings-Enzian"),
          font = QStringLiteral("Arial-B-T");
};

void Append(Recordset& rows, int number) {
  static const Sample sample;
  rows.AddNew();
  rows.Set(0, sample.id);
  rows.Set(1, sample.entry);
  rows.Set(2, sample.font);
  rows.Set(3, 8.5);
  for (int i = 4; i < width; ++i) rows.Set(i, qint64{(number * i) % 30000});
  rows.Update();
}

void Append_Bare(sqlite3_stmt* insert, int number) {
  static const Sample sample;
  const QByteArray texts[3] = {sample.id.toUtf8(), sample.entry.toUtf8(), sample.font.toUtf8()};
  for (int i = 0; i < 3; ++i)
    sqlite3_bind_text(insert, i + 1, texts[i].constData(), static_cast<int>(texts[i].size()), SQLITE_STATIC);
  sqlite3_bind_double(insert, 4, 8.5);
  for (int i = 4; i < width; ++i) sqlite3_bind_int64(insert, i + 1, (number * i) % 30000);
  sqlite3_step(insert);
  sqlite3_reset(insert);
}

class File {
 public:
  explicit File(int rows) : path(folder.filePath("BENCH.MDB")) {
    database = Workspace::CreateDatabase(path);
    database->CreateTable(Entries());
    auto set = database->OpenRecordset("MapData");
    database->BeginTrans();
    for (int i = 0; i < rows; ++i) Append(*set, i);
    database->CommitTrans();
    database->Checkpoint();
  }
  sqlite3_stmt* Prepare(const QByteArray& sql) {
    sqlite3_stmt* statement = nullptr;
    if (sqlite3_prepare_v2(database->Handle(), sql.constData(), -1, &statement, nullptr) != SQLITE_OK)
      qFatal("prepare");
    return statement;
  }
  void Run(const char* sql) { sqlite3_exec(database->Handle(), sql, nullptr, nullptr, nullptr); }

  QTemporaryDir folder{QStringLiteral(FLURAX_BINARY_DIR "/bench-XXXXXX")};
  QString path;
  std::unique_ptr<Database> database;
};

// Both ways take turns, so that a busy machine slows both; the shortest run of each counts.
template <typename Ours, typename Bare>
void Compare(benchmark::State& state, Ours ours, Bare bare) {
  double best[2] = {1e9, 1e9};
  const auto run = [&best](int which, auto& work) {
    const double used = work();
    best[which] = std::min(best[which], used);
  };
  for (auto _ : state) {
    run(0, ours);
    run(1, bare);
  }
  state.counters["ours_ms"] = best[0];
  state.counters["bare_ms"] = best[1];
  state.counters["ratio"] = best[0] / best[1];
}

template <typename Work>
double Milliseconds(Work work) {
  const auto start = std::chrono::steady_clock::now();
  work();
  return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

// For work that never waits: what the processor spent, so that other programs do not count.
template <typename Work>
double Processor_Milliseconds(Work work) {
  const auto now = [] {
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return 1e3 * static_cast<double>(time.tv_sec) + 1e-6 * static_cast<double>(time.tv_nsec);
  };
  const double start = now();
  work();
  return now() - start;
}

const std::vector<std::vector<int>> columnSets = {{0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11}, {7, 8, 11}, {0, 1}};

qint64 Pass_Recordset(File& file, const std::vector<QString>& wanted, const std::vector<int>& columns) {
  auto rows = file.database->OpenRecordset("MapData");
  qint64 sum = 0;
  for (rows->MoveFirst(); !rows->Eof(); rows->MoveNext())
    for (size_t i = 0; i < columns.size(); ++i) {
      const int column = wanted.empty() ? columns[i] : rows->FieldIndex(wanted[i]);
      sum += column < 3 ? rows->Text(column).size() : column == 3 ? qint64(rows->Number(3)) : rows->Integer(column);
    }
  return sum;
}

// `asText`: the texts are made QString, as everybody who uses them does.
qint64 Pass_Cursor(File& file, const std::vector<int>& columns, bool asText) {
  QByteArray list;
  for (const int column : columns) list += (list.isEmpty() ? "\"" : ",\"") + QByteArray(names[column]) + '"';
  sqlite3_stmt* statement = file.Prepare("SELECT " + list + " FROM MapData ORDER BY rowid");
  qint64 sum = 0;
  while (sqlite3_step(statement) == SQLITE_ROW)
    for (int i = 0; i < static_cast<int>(columns.size()); ++i) {
      const int column = columns[static_cast<size_t>(i)];
      if (column < 3) {
        const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(statement, i));
        const int bytes = sqlite3_column_bytes(statement, i);
        sum += asText ? QString::fromUtf8(text, bytes).size() : bytes;
      } else {
        sum += column == 3 ? qint64(sqlite3_column_double(statement, i)) : sqlite3_column_int64(statement, i);
      }
    }
  sqlite3_finalize(statement);
  return sum;
}

// Opening included. Columns: all, three numbers, two texts.
void Pass(benchmark::State& state, bool byName, bool asText) {
  File file(rowCount);
  const std::vector<int>& columns = columnSets[static_cast<size_t>(state.range(0))];
  std::vector<QString> wanted;
  if (byName)
    for (const int column : columns) wanted.push_back(QString::fromUtf8(names[column]));
  Compare(
      state,
      [&] { return Processor_Milliseconds([&] { benchmark::DoNotOptimize(Pass_Recordset(file, wanted, columns)); }); },
      [&] { return Processor_Milliseconds([&] { benchmark::DoNotOptimize(Pass_Cursor(file, columns, asText)); }); });
}
BENCHMARK_CAPTURE(Pass, index_against_texts, false, true)->DenseRange(0, 2)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Pass, index_against_bytes, false, false)->DenseRange(0, 2)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Pass, name_against_texts, true, true)->DenseRange(0, 2)->Unit(benchmark::kMillisecond);

void Append_In_A_Transaction(benchmark::State& state) {
  Compare(
      state,
      [] {
        File file(0);
        auto rows = file.database->OpenRecordset("MapData");
        return Processor_Milliseconds([&] {
          file.database->BeginTrans();
          for (int i = 0; i < rowCount; ++i) Append(*rows, i);
          file.database->CommitTrans();
        });
      },
      [] {
        File file(0);
        sqlite3_stmt* insert = file.Prepare("INSERT INTO MapData VALUES (?,?,?,?,?,?,?,?,?,?,?,?)");
        const double used = Processor_Milliseconds([&] {
          file.Run("BEGIN IMMEDIATE");
          for (int i = 0; i < rowCount; ++i) Append_Bare(insert, i);
          file.Run("COMMIT");
        });
        sqlite3_finalize(insert);
        return used;
      });
}
BENCHMARK(Append_In_A_Transaction)->Iterations(40)->Unit(benchmark::kMillisecond);

// A hundred single writes, each on the disk before the next.
void Single_Updates(benchmark::State& state) {
  File file(rowCount);
  auto rows = file.database->OpenRecordset("MapData");
  sqlite3_stmt* update = file.Prepare("UPDATE MapData SET Xmap=? WHERE rowid=?");
  int number = 0;
  Compare(
      state,
      [&] {
        return Milliseconds([&] {
          for (int i = 0; i < 100; ++i) {
            rows->MoveTo(number % rowCount);
            rows->Edit();
            rows->Set(7, qint64{number++ % 30000});
            rows->Update();
          }
        });
      },
      [&] {
        return Milliseconds([&] {
          for (int i = 0; i < 100; ++i) {
            sqlite3_bind_int(update, 1, number % 30000);
            sqlite3_bind_int(update, 2, number++ % rowCount + 1);
            sqlite3_step(update);
            sqlite3_reset(update);
          }
        });
      });
  sqlite3_finalize(update);
}
BENCHMARK(Single_Updates)->Unit(benchmark::kMillisecond);

// A redraw asks for the points of every line and area.
void Points_Of_1000_Tables(benchmark::State& state) {
  File file(0);
  file.database->BeginTrans();
  QStringList tables;
  for (int i = 0; i < 1000; ++i) {
    tables << QStringLiteral("Linie%1").arg(i);
    file.database->CreateTable({tables.back(), {{"xf", FieldType::Integer, 0}, {"yf", FieldType::Integer, 0}}});
    auto points = file.database->OpenRecordset(tables.back());
    for (int k = 0; k < 60; ++k) {
      points->AddNew();
      points->Set(0, qint64{k});
      points->Update();
    }
  }
  file.database->CommitTrans();
  for (auto _ : state) {
    size_t sum = 0;
    for (const QString& table : tables) sum += file.database->Points(table)->size();
    benchmark::DoNotOptimize(sum);
  }
}
BENCHMARK(Points_Of_1000_Tables)->Unit(benchmark::kMillisecond);

}  // namespace
