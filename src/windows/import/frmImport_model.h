#pragma once
#include <QAbstractTableModel>
#include <vector>

#include "import/table_source.h"

// The rows of a source table in a grid that only shows them; they are read as they come into view.
class ImportGridModel : public QAbstractTableModel {
  Q_OBJECT

 public:
  using QAbstractTableModel::QAbstractTableModel;
  // These rows of the table, by their keys; null shows nothing. The table must outlive what is shown.
  void Show_Rows(TableSource* table, std::vector<qint64> rows);
  const std::vector<qint64>& Keys() const { return keys; }
  bool Is_Text(int column) const;  // else a number

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

 private:
  TableSource* source = nullptr;
  std::vector<qint64> keys;
};
