#include <benchmark/benchmark.h>

#include <QTemporaryDir>

#include "exchange/sheet_comparison.h"
#include "exchange/sheet_rows.h"
#include "exchange/sheet_source.h"
#include "platform/files.h"
#include "store/entry.h"
#include "store/transaction.h"

// The table of 50,000 entries into a workbook, and a workbook against it: with some texts changed, by the
// number of the rows and by their text.

namespace {

constexpr int rowCount = 50'000, changedEvery = 97;

struct BigTable {
  BigTable() : database(Workspace::CreateDatabase(folder.filePath(QStringLiteral("K.MDB")))) {
    Make_Template(*database);
    database->AddColumn(QStringLiteral("MapData"), {QStringLiteral("Status"), FieldType::Text, 40});
    database->AddColumn(QStringLiteral("MapData"), {QStringLiteral("Wert"), FieldType::Double, 0});
    rows = Open_Entries(*database);
    In_Transaction(*database, [this] {
      for (int i = 0; i <= rowCount; ++i) {
        rows->AddNew();
        EntryRow row;
        row.ID = QStringLiteral("Text");
        row.Eintrag = QStringLiteral("Höckerschrecke %1").arg(i % 20'000);
        row.Schrift = QStringLiteral("Arial-B<45");
        row.Groesse = 8.5;
        row.HG = 15;
        row.Xmap = i % 3000;
        row.Ymap = i % 2200;
        Write_Entry(*rows, row);
        rows->Set(QStringLiteral("Status"), QStringLiteral("gefährdet"));
        rows->Set(QStringLiteral("Wert"), i / 7.0);
        rows->Update();
      }
    });
    rows->Requery();
  }
  QString Book() const { return folder.filePath(QStringLiteral("K.XLS")); }
  QTemporaryDir folder;
  std::unique_ptr<Database> database;
  std::unique_ptr<Recordset> rows;
};

BigTable& Table() {
  static BigTable table;
  return table;
}

void Write_Book(const Sheet& sheet) {
  Workbook book(Table().Book());
  book.Put(sheet);
  book.Save();
}

void Rows_Out_50000(benchmark::State& state) {
  for (auto _ : state) {
    Kill_Quietly(Table().Book());
    Write_Book(Sheet_Of_Rows(*Table().rows));
  }
}
BENCHMARK(Rows_Out_50000)->Unit(benchmark::kMillisecond);

// Reading the workbook is part of it.
void Differences_50000(benchmark::State& state) {
  Sheet changed = Sheet_Of_Rows(*Table().rows);
  for (int row = 2; row <= changed.RowCount(); row += changedEvery) changed.Put(row, 15, QStringLiteral("neu"));
  Write_Book(changed);
  const int key = static_cast<int>(state.range(0));
  for (auto _ : state) {
    const Sheet sheet = Open_Workbook_To_Read(Table().Book())->Read(sheet_rows::sheetName);
    const auto found = Compare_With_Sheet(*Table().rows, sheet, Proposed_Order(*Table().rows, Titles_Of(sheet), key));
    state.counters["differences"] = static_cast<double>(found.differences.size());
    state.counters["refused"] = static_cast<double>(found.refused.size());
  }
}
BENCHMARK(Differences_50000)->Arg(ownNumber)->Arg(column::ID)->Arg(column::Eintrag)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
