#include "windows/import/frmImport_model.h"

#include "edit/table_edit.h"

void ImportGridModel::Show_Rows(TableSource* table, std::vector<qint64> rows) {
  beginResetModel();
  source = table;
  keys = std::move(rows);
  endResetModel();
}

int ImportGridModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() || !source ? 0 : static_cast<int>(keys.size());
}

int ImportGridModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() || !source ? 0 : static_cast<int>(source->Fields().size());
}

bool ImportGridModel::Is_Text(int column) const {
  return source && source->Fields()[static_cast<size_t>(column)].type == FieldType::Text;
}

QVariant ImportGridModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid() || !source) return {};
  if (role == Qt::TextAlignmentRole)
    return QVariant::fromValue((Is_Text(index.column()) ? Qt::AlignLeft : Qt::AlignRight) | Qt::AlignVCenter);
  if (role != Qt::DisplayRole) return {};
  try {
    if (!source->Go_To(keys[static_cast<size_t>(index.row())])) return {};
    QString text = Cell_Text(source->Raw(index.column()));
    return text.replace(QLatin1String("\r\n"), QLatin1String(" ")).replace(u'\n', u' ');
  } catch (const Error&) {
    return {};  // the copy was damaged meanwhile
  }
}

QVariant ImportGridModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (role != Qt::DisplayRole || !source) return {};
  if (orientation == Qt::Vertical) return section + 1;
  return section < columnCount() ? source->Fields()[static_cast<size_t>(section)].name : QVariant();
}
