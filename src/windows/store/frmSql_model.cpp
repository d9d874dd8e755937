#include "windows/store/frmSql_model.h"

#include "edit/table_edit.h"
#include "state/global_state.h"

void SqlGridModel::Show_Rows(std::shared_ptr<Recordset> selection) {
  if (!selection && dbEntries) selection = dbEntries->OpenRecordset(QStringLiteral("MapData"));
  const int records = selection ? selection->RecordCount() : 0;
  beginResetModel();
  rows = std::move(selection);
  count = records;
  endResetModel();
}

int SqlGridModel::rowCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : count; }

int SqlGridModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() || !rows ? 0 : static_cast<int>(rows->Fields().size());
}

bool SqlGridModel::Is_Text(int column) const {
  return rows && rows->Fields()[static_cast<size_t>(column)].type == FieldType::Text;
}

QVariant SqlGridModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid() || !rows || !rows->IsOpen()) return {};
  if (role == Qt::TextAlignmentRole) {
    return QVariant::fromValue((Is_Text(index.column()) ? Qt::AlignLeft : Qt::AlignRight) | Qt::AlignVCenter);
  }
  if (role != Qt::DisplayRole) return {};
  try {
    if (index.row() >= rows->RecordCount()) return {};
    if (rows->Position() != index.row()) rows->MoveTo(index.row());
    QString text = Cell_Text(rows->Raw(index.column()));
    return text.replace(QLatin1String("\r\n"), QLatin1String(" ")).replace(u'\n', u' ');
  } catch (const Error&) {
    return {};  // the row has gone
  }
}

QVariant SqlGridModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (role != Qt::DisplayRole || !rows) return {};
  if (orientation == Qt::Vertical) return section + 1;
  return section < columnCount() ? rows->Fields()[static_cast<size_t>(section)].name : QVariant();
}
