#include <benchmark/benchmark.h>

#include <QTemporaryDir>
#include <random>

#include "platform/files.h"
#include "workbook/workbook.h"

// Sheets into workbooks on the disk: flushing included in the wall time, not in the processor's.

namespace {

constexpr int columns = 15;

// Every third column a text, the others numbers; twelve looks.
Sheet Make_Sheet(const QString& name, int rows) {
  Sheet sheet(name);
  std::vector<int> looks;
  for (int i = 0; i < 12; ++i) {
    CellStyle style;
    style.bold = i % 2 == 0;
    style.color = qRgb(20 * i, 0, 0);
    if (i % 3 == 0) style.fill = qRgb(255, 255, 20 * i);
    if (i % 4 == 0) style.border = qRgb(0, 20 * i, 0);
    style.format = i % 2 == 0 ? QStringLiteral("### ### ##0.00") : QStringLiteral("0");
    looks.push_back(sheet.Style_Number(style));
  }
  std::mt19937 random(7);
  for (int row = 1; row <= rows; ++row) {
    for (int column = 1; column <= columns; ++column) {
      const int look = looks[static_cast<size_t>((row + column) % 12)];
      if (column % 3 == 0)
        sheet.Put(row, column, QStringLiteral("Große Höckerschrecke %1").arg(random() % 500), look);
      else
        sheet.Put(row, column, static_cast<double>(random() % 1000000) / 100, look);
    }
  }
  return sheet;
}

void Write(const QString& path, const Sheet& sheet) {
  Workbook book(path);
  book.Put(sheet);
  book.Save();
}

// From the values to the file: the sheet is built anew each time.
void New_Sheet_10000x15(benchmark::State& state) {
  const QTemporaryDir folder;
  const QString path = folder.path() + QStringLiteral("/K.XLS");
  for (auto _ : state) {
    Kill_Quietly(path);
    Write(path, Make_Sheet(QStringLiteral("Linien"), 10000));
  }
}
BENCHMARK(New_Sheet_10000x15)->Unit(benchmark::kMillisecond);

// A sheet of 1000 rows into a workbook with 50,000 rows in five others.
void Add_To_50000_Rows(benchmark::State& state) {
  const QTemporaryDir folder;
  const QString path = folder.path() + QStringLiteral("/K.XLS");
  for (int i = 0; i < 5; ++i) Write(path, Make_Sheet(QStringLiteral("Blatt %1").arg(i), 10000));
  const QByteArray full = Read_Bytes(path);
  const Sheet sheet = Make_Sheet(QStringLiteral("Linien"), 1000);
  for (auto _ : state) {
    state.PauseTiming();
    Replace_File(path, full);
    state.ResumeTiming();
    Write(path, sheet);
  }
  state.counters["file_kB"] = static_cast<double>(full.size()) / 1000;
}
BENCHMARK(Add_To_50000_Rows)->Unit(benchmark::kMillisecond);

void Read_Sheet_10000x15(benchmark::State& state) {
  const QTemporaryDir folder;
  const QString path = folder.path() + QStringLiteral("/K.XLS");
  Write(path, Make_Sheet(QStringLiteral("Linien"), 10000));
  for (auto _ : state) benchmark::DoNotOptimize(Workbook(path).Read(QStringLiteral("Linien")).RowCount());
}
BENCHMARK(Read_Sheet_10000x15)->Unit(benchmark::kMillisecond);

}  // namespace
