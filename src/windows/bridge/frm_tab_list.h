#pragma once
#include <QAbstractTableModel>
#include <QStringList>

#include "exchange/sheet_comparison.h"

// What a sheet would change in the table, one line each: differences, then what is refused, new rows, missing rows.
class TabListModel : public QAbstractTableModel {
  Q_OBJECT

 public:
  using QAbstractTableModel::QAbstractTableModel;
  // `columns`: names of the table's columns.
  void Show_Comparison(SheetComparison comparison, QStringList columns);
  const SheetComparison& Comparison() const { return shown; }

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

 private:
  QStringList Line(int row) const;  // its cells
  SheetComparison shown;
  QStringList names;
};
