#pragma once
#include <QAbstractTableModel>
#include <memory>

#include "platform/database.h"

// Rows of a selection, or of the open table, for a grid that only shows them. They are read as they come into view.
class SqlGridModel : public QAbstractTableModel {
  Q_OBJECT

 public:
  using QAbstractTableModel::QAbstractTableModel;
  // Null shows the open table.
  void Show_Rows(std::shared_ptr<Recordset> selection);

  bool Is_Text(int column) const;  // else a number

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

 private:
  std::shared_ptr<Recordset> rows;
  int count = 0;
};
