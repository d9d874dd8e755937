#include "exchange/sheet_rows.h"

#include <algorithm>

#include "edit/figure_edit.h"
#include "store/kind_word.h"

namespace {

constexpr double narrowest = 6, widest = 40;
constexpr int rowsLookedAt = 500;  // for the widths
const QString textFormat = QStringLiteral("@");

// What the word for its kind leaves open.
QString Detail(const EntryType& type) {
  if (type.IsFigure()) return QStringLiteral(": ") + Figure_Word(type.Kind());
  switch (type.Kind()) {
    case EntryKind::TextLine:
      return QStringLiteral(" mit Bezugslinie");
    case EntryKind::TextArrow:
      return QStringLiteral(" mit Pfeil");
    case EntryKind::TextCircle:
      return QStringLiteral(" mit Kreis");
    case EntryKind::PolygonRound:
      return QStringLiteral(", abgerundet");
    default:
      return {};
  }
}

// Makes the sheet column by column, one look a column.
class SheetWriter {
 public:
  explicit SheetWriter(Recordset& from) : rows(from), sheet(sheet_rows::sheetName) {
    sheet.frozenRows = 1;
    text = sheet.Style_Number({.format = textFormat});
    Put_Titles();
  }

  Sheet Run() {
    rows.MoveFirst();
    if (!rows.Eof()) rows.MoveNext();
    for (; !rows.Eof(); rows.MoveNext()) Put_Row(++row);
    for (size_t i = 0; i < widths.size(); ++i)
      sheet.SetColumnWidth(static_cast<int>(i) + 1, std::clamp(widths[i] + 1, narrowest, widest));
    return std::move(sheet);
  }

 private:
  void Put_Titles() {
    QStringList titles{sheet_rows::numberTitle};
    for (const FieldInfo& field : rows.Fields()) {
      titles << field.name;
      if (titles.size() == column::Typ + 2) titles << sheet_rows::kindTitle;
    }
    CellStyle look{.bold = true, .fill = qRgb(221, 221, 221), .format = textFormat};
    for (const QString& title : titles) {
      sheet.Put(1, static_cast<int>(widths.size()) + 1, title, look);
      widths.push_back(static_cast<double>(title.size()) + 1);
    }
  }

  void Put_Row(int at) {
    int cell = 0;
    Put(at, ++cell, static_cast<double>(Row_Number(rows.Key())), 0);
    const auto& fields = rows.Fields();
    for (int i = 0; i < static_cast<int>(fields.size()); ++i) {
      const bool isText = fields[static_cast<size_t>(i)].type == FieldType::Text;
      Put(at, ++cell, Cell_Of(rows.Raw(i)), isText ? text : 0);
      if (i == column::Typ) Put(at, ++cell, Kind_Here(), text);
    }
  }

  QString Kind_Here() const {
    EntryRow entry;
    entry.ID = rows.Text(column::ID);
    entry.Schrift = rows.Text(column::Schrift);
    entry.Typ = Stored_Number(rows.Integer(column::Typ));
    return Kind_In_Words(entry);
  }

  void Put(int at, int cell, CellValue value, int style) {
    if (const auto* words = std::get_if<QString>(&value); words && at <= rowsLookedAt) {
      double& width = widths[static_cast<size_t>(cell - 1)];
      for (const QStringView line : QStringView(*words).split(u'\n'))
        width = std::max(width, static_cast<double>(line.size()));
    }
    sheet.Put(at, cell, std::move(value), style);
  }

  Recordset& rows;
  Sheet sheet;
  std::vector<double> widths;
  int text = 0, row = 1;
};

}  // namespace

QString Kind_In_Words(const EntryRow& row) {
  const EntryType type = EntryType::Parse(row.Typ);
  const EntryId id = EntryId::Parse(row.ID);
  QString words = Kind_Word(row) + Detail(type);
  // The sign of a north arrow says nothing about its visibility.
  if (type.hidden && type.Kind() != EntryKind::NorthArrow) words += QStringLiteral(", ausgeblendet");
  if (id.inactive) words += QStringLiteral(", inaktiv");
  if (type.mark != Mark::None) words += QStringLiteral(", markiert");
  return words;
}

CellValue Cell_Of(const Value& stored) {
  if (const auto* words = std::get_if<QString>(&stored)) return *words;
  if (const auto* whole = std::get_if<qint64>(&stored)) return static_cast<double>(*whole);
  if (const auto* real = std::get_if<double>(&stored)) return *real;
  return {};
}

Sheet Sheet_Of_Rows(Recordset& rows) { return SheetWriter(rows).Run(); }

QString Proposed_Sheet(const QStringList& names) {
  for (const QString& name : names)
    if (name.compare(sheet_rows::sheetName, Qt::CaseInsensitive) == 0) return name;
  return names.value(0);
}
