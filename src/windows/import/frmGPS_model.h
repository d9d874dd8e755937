#pragma once
#include <QAbstractTableModel>

#include "import/import_list.h"

// The records of an import, one a row: symbol of what becomes of it, marks of what is there already, its fields.
class ImportModel : public QAbstractTableModel {
  Q_OBJECT

 public:
  static constexpr int symbolColumn = 0, markColumn = 1, firstField = 2;

  using QAbstractTableModel::QAbstractTableModel;
  void Show_List(ImportList shown);  // in place of the former one
  const ImportList& List() const { return list; }

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

 private:
  ImportList list;
};

// A symbol of Wingdings as this machine can show it, and its font.
QString Import_Symbol_Text(QChar symbol);
QFont Import_Symbol_Font();
