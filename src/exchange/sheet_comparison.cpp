#include "exchange/sheet_comparison.h"

#include <QHash>
#include <QSet>
#include <algorithm>

#include "edit/cell_rules.h"
#include "exchange/sheet_rows.h"
#include "store/csv_cell.h"
#include "store/entry.h"
#include "store/transaction.h"
#include "workbook/workbook_errors.h"

namespace {

constexpr int paletteSize = 16;

// Rows of both sides with the same key, in their order.
struct Group {
  std::vector<int> sheetRows;
  std::vector<int> positions;  // in the table
};

// A problem as one line of a list.
QString In_One_Line(QString problem) {
  problem.remove(QStringLiteral("\nBitte ändern!"));
  return problem.replace(u'\n', u' ');
}

class Comparer {
 public:
  Comparer(Recordset& table, const Sheet& from, const SheetOrder& wanted)
      : rows(table), sheet(from), cells(from), order(wanted), numbers(table) {}

  SheetComparison Run() {
    if (order.keyColumn < 1)
      Raise(workbook_errors::bounds,
            QStringLiteral("Im Blatt \"%1\" fehlt die Spalte \"%2\", nach der die Zeilen zugeordnet werden.")
                .arg(sheet.name, Key_Title(rows, order.key)));
    Collect_Table();
    Collect_Sheet();
    for (const QString& key : std::as_const(keys)) Match(groups[key]);
    const auto byPlace = [](const SheetDifference& a, const SheetDifference& b) {
      return a.key != b.key ? a.key < b.key : a.column < b.column;
    };
    const auto bySheet = [](const auto& a, const auto& b) { return a.sheetRow < b.sheetRow; };
    std::stable_sort(result.differences.begin(), result.differences.end(), byPlace);
    std::stable_sort(result.refused.begin(), result.refused.end(), bySheet);
    std::stable_sort(result.newRows.begin(), result.newRows.end(), bySheet);
    return std::move(result);
  }

 private:
  bool By_Number() const { return order.key == ownNumber; }
  const FieldInfo& Field(int column) const { return rows.Fields()[static_cast<size_t>(column)]; }

  Group& Group_Of(const QString& key) {
    const auto found = groups.find(key);
    if (found != groups.end()) return *found;
    keys << key;
    return groups[key];
  }

  void Collect_Table() {
    groups.reserve(rows.RecordCount());
    for (int position = 1; position < rows.RecordCount(); ++position) {
      rows.MoveTo(position);
      Group_Of(By_Number() ? QString::number(numbers.Number(rows.Key())) : Sheet_Mark(rows.Raw(order.key)))
          .positions.push_back(position);
    }
  }

  void Collect_Sheet() {
    for (int row = Titles_Of(sheet).row + 1; row <= sheet.RowCount(); ++row) {
      if (cells.Is_Empty_Row(row)) continue;
      const QString flaw = cells.Flaw(row, order.keyColumn);
      const QString key = Key_In(row);
      if (!flaw.isEmpty())
        Refuse(row, Key_Title(rows, order.key), cells.Shown(row, order.keyColumn), flaw);
      else if (By_Number() && key.isEmpty())
        Add_New(row);
      else if (key.isEmpty() && !groups.contains(key))
        Refuse(row, Key_Title(rows, order.key), {}, QStringLiteral("Der Schlüssel fehlt."));
      else
        Group_Of(key).sheetRows.push_back(row);
    }
  }

  // "7" for a number however it is written; a text as the table's would be.
  QString Key_In(int row) const {
    if (!By_Number()) {
      const CellTaken taken = cells.Take(row, order.keyColumn, {{}, FieldType::Text, 0}, true);
      return Sheet_Mark(taken.value);
    }
    const CellTaken taken = cells.Take(row, order.keyColumn, {{}, FieldType::Long, 0}, true);
    return taken.problem.isEmpty() ? Sheet_Mark(taken.value) : cells.Shown(row, order.keyColumn);
  }

  // Those rows of the sheet that are as they were belong to their rows; what is left is a pair or cannot be told.
  void Match(const Group& group) {
    if (group.sheetRows.size() == 1 && !group.positions.empty()) {
      for (const int position : group.positions) Compare(position, group.sheetRows.front());
      return;
    }
    std::vector<int> sheetRows = group.sheetRows, positions = group.positions;
    if (!sheetRows.empty() && !positions.empty() && Drop_Equal(sheetRows, positions)) {
      for (const int position : positions) Compare(position, group.sheetRows.front());
      return;
    }
    if (sheetRows.size() == 1 && positions.size() == 1) return Compare(positions.front(), sheetRows.front());
    if (sheetRows.empty())
      for (const int position : positions) Add_Missing(position);
    else if (positions.empty())
      for (const int row : sheetRows) Add_New(row);
    else
      for (const int row : sheetRows)
        Refuse(row, Key_Title(rows, order.key), cells.Shown(row, order.keyColumn),
               QStringLiteral("Der Schlüssel steht in mehreren Zeilen; welche gemeint ist, ist nicht zu erkennen."));
  }

  // Takes the pairs without a difference away. True if all rows of the sheet say the same: then each speaks for all.
  bool Drop_Equal(std::vector<int>& sheetRows, std::vector<int>& positions) {
    QHash<QString, std::vector<int>> byMark;
    for (const int position : positions) byMark[Mark_Of_Row(position)].push_back(position);
    std::vector<int> rest;
    QSet<QString> marks;
    for (const int row : sheetRows) {
      const QString mark = Mark_In_Sheet(row);
      marks << mark;
      const auto found = byMark.find(mark);
      if (found == byMark.end() || found->empty()) {
        rest.push_back(row);
        continue;
      }
      ++result.compared;
      found->pop_back();
    }
    positions.clear();
    for (const auto& left : std::as_const(byMark)) positions.insert(positions.end(), left.begin(), left.end());
    std::sort(positions.begin(), positions.end());
    sheetRows = std::move(rest);
    return marks.size() == 1 && !positions.empty();
  }

  static constexpr QChar between = QChar(1);
  QString Mark_Of_Row(int position) {
    rows.MoveTo(position);
    QString mark;
    for (const SheetPair& pair : order.pairs) mark += Sheet_Mark(rows.Raw(pair.column)) + between;
    return mark;
  }
  QString Mark_In_Sheet(int row) const {
    QString mark;
    for (const SheetPair& pair : order.pairs) {
      const CellTaken taken = cells.Take(row, pair.sheetColumn, Field(pair.column), true);
      mark += (taken.problem.isEmpty() ? Sheet_Mark(taken.value) : between + taken.problem) + between;
    }
    return mark;
  }

  void Compare(int position, int row) {
    rows.MoveTo(position);
    ++result.compared;
    if (Is_Other_Entry(row)) return;
    const QString id = rows.Text(column::ID);
    const EntryType type = EntryType::Parse(rows.Integer(column::Typ));
    for (const SheetPair& pair : order.pairs) {
      const Value& stored = rows.Raw(pair.column);
      CellTaken taken = cells.Take(row, pair.sheetColumn, Field(pair.column), pair.column >= column::fixedCount);
      if (taken.problem.isEmpty() && Same_In_Sheet(stored, taken.value)) continue;
      if (taken.problem.isEmpty()) taken.problem = Meaning_Of(pair.column, type, id, taken.value);
      if (taken.problem.isEmpty())
        result.differences.push_back(
            {rows.Key(), numbers.Number(rows.Key()), row, pair.column, stored, std::move(taken.value)});
      else
        Refuse(row, Field(pair.column).name, cells.Shown(row, pair.sheetColumn), taken.problem,
               numbers.Number(rows.Key()));
    }
  }

  static QString Meaning_Of(int number, const EntryType& type, const QString& id, const Value& value) {
    if (number == column::VG || number == column::HG) {
      const qint64 color = std::get<qint64>(value);
      return color >= 0 && color < paletteSize ? QString()
                                               : QStringLiteral("Die Farbe kann nur Werte zwischen 0-15 annehmen.");
    }
    if (QString problem = Meaning_Problem(type, id, number, value); !problem.isEmpty()) return problem;
    if (number != column::ID) return {};
    const auto& name = std::get<QString>(value);
    const QString word = Lost_Keyword(id, name);
    if (!word.isEmpty())
      return QStringLiteral("Am Wort '%1' erkennt das Programm die Art des Eintrags; es muss bleiben.").arg(word);
    // Signs that no cell holds would be lost.
    return Sheet_Text(id) == id ? QString() : QStringLiteral("Dieser Name kann im Blatt nicht geändert werden.");
  }

  // The numbers of the entries have moved since the sheet was written.
  bool Is_Other_Entry(int row) {
    const bool brought = std::any_of(order.pairs.begin(), order.pairs.end(),
                                     [](const SheetPair& pair) { return pair.column == column::ID; });
    if (!By_Number() || order.idColumn < 1 || brought) return false;
    const QString there = cells.Shown(row, order.idColumn), here = Csv_One_Line(Sheet_Text(rows.Text(column::ID)));
    if (there.isEmpty() || there == here) return false;
    Refuse(row, {}, there,
           QStringLiteral("Unter der Nummer %1 steht in der Karte ein anderer Eintrag: %2")
               .arg(numbers.Number(rows.Key()))
               .arg(here));
    return true;
  }

  void Refuse(int row, const QString& title, const QString& text, const QString& reason, qint64 number = 0) {
    result.refused.push_back({number, row, title, text, In_One_Line(reason)});
  }

  void Add_Missing(int position) {
    rows.MoveTo(position);
    result.missing.push_back({numbers.Number(rows.Key()), Csv_One_Line(rows.Text(column::Eintrag))});
  }

  void Add_New(int row) {
    SheetNewRow added;
    added.sheetRow = row;
    bool hasX = false, hasY = false;
    for (const SheetPair& pair : order.pairs) {
      CellTaken taken = cells.Take(row, pair.sheetColumn, Field(pair.column), true);
      if (pair.column == column::Eintrag) added.text = cells.Shown(row, pair.sheetColumn);
      const bool empty = std::holds_alternative<std::monostate>(taken.value);
      if (taken.problem.isEmpty() && !empty) taken.problem = New_Problem(pair.column, taken.value);
      if (!taken.problem.isEmpty() && added.problem.isEmpty())
        added.problem = Field(pair.column).name + QStringLiteral(": ") + In_One_Line(taken.problem);
      if (empty) continue;
      hasX = hasX || pair.column == column::Xmap;
      hasY = hasY || pair.column == column::Ymap;
      added.values.emplace_back(pair.column, std::move(taken.value));
    }
    if (added.problem.isEmpty() && added.text.isEmpty())
      added.problem = QStringLiteral("Die Zeile hat keinen Text in der Spalte Eintrag.");
    if (added.problem.isEmpty() && (!hasX || !hasY))
      added.problem = QStringLiteral("Ohne Xmap und Ymap hat der Eintrag keinen Ort in der Karte.");
    result.newRows.push_back(std::move(added));
  }

  // New rows are texts: everything else needs more than a row.
  static QString New_Problem(int number, const Value& value) {
    const EntryType text = EntryType::Parse(0);
    if (number == column::Typ && !EntryType::Parse(std::get<qint64>(value)).IsText())
      return QStringLiteral("Nur Texteinträge (Typ 0 bis 3) können angefügt werden.");
    if (number == column::ID)
      return EntryId::Parse(std::get<QString>(value)).name.contains(QLatin1String("Text"))
                 ? QString()
                 : QStringLiteral("Nur Texteinträge (ID \"Text\") können angefügt werden.");
    return number == column::Typ ? QString() : Meaning_Of(number, text, QStringLiteral("Text"), value);
  }

  Recordset& rows;
  const Sheet& sheet;
  SheetCells cells;
  const SheetOrder& order;
  RowNumbers numbers;
  QHash<QString, Group> groups;
  QStringList keys;  // of the groups, in the order they came
  SheetComparison result;
};

void Append_Row(Recordset& rows, const SheetNewRow& added) {
  EntryRow text;
  text.ID = QStringLiteral("Text");
  text.Schrift = QStringLiteral("Arial");
  text.Groesse = 10;
  text.HG = 15;
  rows.AddNew();
  Write_Entry(rows, text);
  for (const auto& [column, value] : added.values) rows.Set(column, value);
  rows.Update();
}

QString Counted(qsizetype count, const QString& one, const QString& more) {
  return count == 1 ? QStringLiteral("1 ") + one : QString::number(count) + u' ' + more;
}

}  // namespace

QString Key_Title(const Recordset& rows, int key) {
  return key == ownNumber ? sheet_rows::numberTitle : rows.Fields()[static_cast<size_t>(key)].name;
}

SheetOrder Proposed_Order(const Recordset& rows, const SheetTitles& titles, int key) {
  SheetOrder order;
  order.key = key;
  order.keyColumn = titles.Column_Of(Key_Title(rows, key));
  order.idColumn = titles.Column_Of(rows.Fields()[column::ID].name);
  for (int column = 0; column < static_cast<int>(rows.Fields().size()); ++column) {
    const int there = titles.Column_Of(rows.Fields()[static_cast<size_t>(column)].name);
    if (column != key && there > 0) order.pairs.push_back({column, there});
  }
  return order;
}

int SheetComparison::Appendable() const {
  return static_cast<int>(
      std::count_if(newRows.begin(), newRows.end(), [](const SheetNewRow& row) { return row.problem.isEmpty(); }));
}

SheetComparison Compare_With_Sheet(Recordset& rows, const Sheet& sheet, const SheetOrder& order) {
  return Comparer(rows, sheet, order).Run();
}

SheetTaken Take_From_Sheet(Database& database, Recordset& rows, const SheetComparison& comparison, bool withNewRows) {
  SheetTaken taken;
  In_Transaction(database, [&] {
    const auto& all = comparison.differences;
    for (size_t i = 0; i < all.size();) {
      const qint64 key = all[i].key;
      rows.SetBookmark(QString::number(key));
      rows.Edit();
      for (; i < all.size() && all[i].key == key; ++i, ++taken.cells) rows.Set(all[i].column, all[i].becomes);
      rows.Update();
      ++taken.rows;
    }
    for (const SheetNewRow& added : comparison.newRows) {
      if (!withNewRows || !added.problem.isEmpty()) continue;
      Append_Row(rows, added);
      ++taken.added;
    }
  });
  return taken;
}

QString Comparison_Text(const SheetComparison& comparison) {
  QSet<qint64> changed;
  for (const SheetDifference& one : comparison.differences) changed << one.key;
  QStringList parts{Counted(static_cast<qsizetype>(comparison.differences.size()), QStringLiteral("Änderung"),
                            QStringLiteral("Änderungen")) +
                    QStringLiteral(" in ") +
                    Counted(changed.size(), QStringLiteral("Zeile"), QStringLiteral("Zeilen"))};
  const auto add = [&parts](size_t count, const QString& one, const QString& more) {
    if (count > 0) parts << Counted(static_cast<qsizetype>(count), one, more);
  };
  if (comparison.differences.empty()) parts = {QStringLiteral("Keine Änderung")};
  add(comparison.refused.size(), QStringLiteral("abgelehnt"), QStringLiteral("abgelehnt"));
  add(comparison.newRows.size(), QStringLiteral("neue Zeile im Blatt"), QStringLiteral("neue Zeilen im Blatt"));
  add(comparison.missing.size(), QStringLiteral("Zeile fehlt im Blatt"), QStringLiteral("Zeilen fehlen im Blatt"));
  return parts.join(QStringLiteral(", ")) + u'.';
}
