#pragma once
#include <QAbstractTableModel>
#include <memory>

#include "platform/database.h"

// Rows of a selection, or of the open table, for a grid that only shows them. They are read as they come into view.
class SqlGridModel : public QAbstractTableModel {
  Q_OBJECT

 public:
  using QAbstractTableModel::QAbstractTableModel;
  // The selection stays its owner's and has to outlive the model or the next call; null shows the open table.
  void Show_Rows(Recordset* selection);

  bool Is_Text(int column) const;  // else a number

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

 private:
  std::unique_ptr<Recordset> own;
  Recordset* rows = nullptr;
  int count = 0;
};
