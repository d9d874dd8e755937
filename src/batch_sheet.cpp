#include "batch_sheet.h"

#include <cstdio>

#include "analysis/result_book.h"
#include "exchange/sheet_comparison.h"
#include "exchange/sheet_rows.h"
#include "exchange/sheet_source.h"
#include "platform/error.h"
#include "state/global_state.h"
#include "store/transaction.h"

using namespace Qt::StringLiterals;

namespace {

int Column_Of_Table(const QString& name) {
  if (!rsEntries->HasField(name)) throw WrongCall{u"Die Tabelle der Karte hat keine Spalte "_s + name + u'.'};
  return rsEntries->FieldIndex(name);
}

int Key_Of(const QString& name) {
  const QString number = sheet_rows::numberTitle;
  if (name.isEmpty() || name.compare(number, Qt::CaseInsensitive) == 0 ||
      name.compare(number.chopped(1), Qt::CaseInsensitive) == 0)
    return ownNumber;
  return Column_Of_Table(name);
}

QString Titles_Text(const SheetTitles& titles) {
  QStringList names;
  for (const SheetTitle& title : titles.columns) names << title.text;
  return u" Vorhanden: "_s + names.join(u", "_s);
}

SheetOrder Order_Of(const BatchOrder& batch, const SheetTitles& titles) {
  SheetOrder order = Proposed_Order(*rsEntries, titles, Key_Of(batch.key));
  if (order.keyColumn == 0)
    Raise(5000, u"Im Blatt fehlt die Spalte \"%1\", nach der die Zeilen zugeordnet werden."_s.arg(
                    Key_Title(*rsEntries, order.key)) +
                    Titles_Text(titles));
  if (batch.columns.isEmpty()) return order;
  order.pairs.clear();
  for (const QString& words : batch.columns) {
    const QString name = words.section(u'=', 0, 0).trimmed(), there = words.section(u'=', -1).trimmed();
    const int column = Column_Of_Table(name), sheetColumn = titles.Column_Of(there);
    if (sheetColumn == 0) Raise(5000, u"Im Blatt fehlt die Spalte \"%1\"."_s.arg(there) + Titles_Text(titles));
    order.pairs.push_back({column, sheetColumn});
  }
  return order;
}

void Say(const QString& text) { std::printf("%s\n", qUtf8Printable(text)); }

void List(const SheetComparison& comparison) {
  for (const SheetDifference& one : comparison.differences)
    Say(u"Nr. %1, Zeile %2, %3: \"%4\" -> \"%5\""_s.arg(one.number)
            .arg(one.sheetRow)
            .arg(rsEntries->Fields()[static_cast<size_t>(one.column)].name, Shown_Value(one.was),
                 Shown_Value(one.becomes)));
  for (const SheetNewRow& one : comparison.newRows)
    Say(u"Zeile %1 steht nur im Blatt: "_s.arg(one.sheetRow) + one.text +
        (one.problem.isEmpty() ? QString() : u" ("_s + one.problem + u')'));
  for (const SheetMissingRow& one : comparison.missing)
    Say(u"Nr. %1 steht nur in der Karte: "_s.arg(one.number) + one.text);
  for (const SheetRefusal& one : comparison.refused)
    Tell(u"Zeile %1%2: \"%3\": "_s.arg(one.sheetRow)
             .arg(one.column.isEmpty() ? QString() : u", "_s + one.column, one.text) +
         one.reason);
  Say(Comparison_Text(comparison));
}

}  // namespace

ExitStatus Write_Table_Sheet(const BatchOrder& order) {
  const auto book = Write_Sheets_Into(order.target, {Sheet_Of_Rows(*rsEntries)});
  if (!book->aside.isEmpty())
    Tell(u"Die vorhandene Arbeitsmappe hat ein altes Format. Sie heißt jetzt: "_s + book->aside);
  return done;
}

ExitStatus Take_Table_Sheet(const BatchOrder& order) {
  const auto book = Open_Workbook_To_Read(order.target);
  if (const auto lock = Workbook_Lock(order.target))
    Tell(Lock_Text(order.target, *lock) + u"\nGelesen wird, was zuletzt gespeichert wurde."_s);
  const Sheet sheet = book->Read(order.sheet.isEmpty() ? Proposed_Sheet(book->SheetNames()) : order.sheet);
  const SheetOrder wanted = Order_Of(order, Titles_Of(sheet));
  const SheetComparison comparison = Compare_With_Sheet(*rsEntries, sheet, wanted);
  List(comparison);
  if (!order.showOnly && (!comparison.differences.empty() || (order.newRows && comparison.Appendable() > 0))) {
    SheetTaken taken;
    In_Transaction([&] { taken = Take_From_Sheet(*dbEntries, *rsEntries, comparison, order.newRows); });
    Say(u"Übernommen: %1 Werte in %2 Zeilen, %3 neue Zeilen."_s.arg(taken.cells).arg(taken.rows).arg(taken.added));
  }
  return comparison.refused.empty() ? done : failed;
}
