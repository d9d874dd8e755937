#include "windows/bridge/frm_tab_list.h"

namespace {

const QStringList& Titles() {
  static const QStringList titles = {QStringLiteral("Nr."),    QStringLiteral("Zeile im Blatt"),
                                     QStringLiteral("Spalte"), QStringLiteral("bisher"),
                                     QStringLiteral("neu"),    QStringLiteral("Bemerkung")};
  return titles;
}
constexpr int lastNumber = 1;  // columns up to here are numbers

int Size(const auto& list) { return static_cast<int>(list.size()); }

}  // namespace

void TabListModel::Show_Comparison(SheetComparison comparison, QStringList columns) {
  beginResetModel();
  shown = std::move(comparison);
  names = std::move(columns);
  endResetModel();
}

int TabListModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0
                          : Size(shown.differences) + Size(shown.refused) + Size(shown.newRows) + Size(shown.missing);
}

int TabListModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(Titles().size());
}

QStringList TabListModel::Line(int row) const {
  if (row < Size(shown.differences)) {
    const SheetDifference& one = shown.differences[static_cast<size_t>(row)];
    return {QString::number(one.number), QString::number(one.sheetRow), names.value(one.column),
            Shown_Value(one.was),        Shown_Value(one.becomes),      {}};
  }
  row -= Size(shown.differences);
  if (row < Size(shown.refused)) {
    const SheetRefusal& one = shown.refused[static_cast<size_t>(row)];
    return {one.number > 0 ? QString::number(one.number) : QString(),
            QString::number(one.sheetRow),
            one.column,
            {},
            one.text,
            QStringLiteral("abgelehnt: ") + one.reason};
  }
  row -= Size(shown.refused);
  if (row < Size(shown.newRows)) {
    const SheetNewRow& one = shown.newRows[static_cast<size_t>(row)];
    const QString remark = QStringLiteral("steht nur im Blatt");
    return {{},       QString::number(one.sheetRow),
            {},       {},
            one.text, one.problem.isEmpty() ? remark : remark + QStringLiteral(": ") + one.problem};
  }
  row -= Size(shown.newRows);
  const SheetMissingRow& one = shown.missing[static_cast<size_t>(row)];
  return {QString::number(one.number), {}, {}, one.text, {}, QStringLiteral("steht nur in der Karte und bleibt")};
}

QVariant TabListModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid()) return {};
  if (role == Qt::TextAlignmentRole)
    return QVariant::fromValue((index.column() <= lastNumber ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
  if (role != Qt::DisplayRole && role != Qt::ToolTipRole) return {};
  const QString text = Line(index.row()).value(index.column());
  return role == Qt::DisplayRole || text.size() > 12 ? QVariant(text) : QVariant();
}

QVariant TabListModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (role != Qt::DisplayRole) return {};
  return orientation == Qt::Horizontal ? QVariant(Titles().value(section)) : QVariant(section + 1);
}
