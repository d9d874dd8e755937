#pragma once
#include <QAbstractTableModel>

#include "edit/vertex_edit.h"

// The vertices of one entry as a table of xf and yf. A changed cell is written at once.
class VertexModel : public QAbstractTableModel {
  Q_OBJECT

 public:
  using QAbstractTableModel::QAbstractTableModel;

  const VertexList& List() const { return list; }
  void Set_List(VertexList vertices);  // another row, or the same read anew; the table shows it
  int Count() const { return static_cast<int>(list.points.size()); }
  bool Writing() const { return writing; }

  // A vertex behind this one, half way to the next.
  bool Insert_After(int row);
  // False if too few would stay.
  bool Delete_Rows(QList<int> rows);
  bool Put_Back(const VertexList& former);  // the vertices as they were before; False if they cannot be written

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;
  bool setData(const QModelIndex& index, const QVariant& value, int role) override;

 private:
  bool Write(const VertexList& changed);

  VertexList list;
  bool writing = false;
};
