#include "windows/canvas/frmFlKord_model.h"

#include <algorithm>

#include "platform/for_now.h"
#include "state/run_guarded.h"

void VertexModel::Set_List(VertexList vertices) {
  beginResetModel();
  list = std::move(vertices);
  endResetModel();
}

bool VertexModel::Write(const VertexList& changed) {
  bool written = false;
  const ForNow isWriting(writing, true);
  Run_Guarded([&] { written = Write_Vertex_List(changed); });
  return written;
}

bool VertexModel::Insert_After(int row) {
  if (row < 0 || row >= Count()) return false;
  VertexList changed = list;
  const auto at = [&](int i) { return list.points[static_cast<size_t>(i)]; };
  const bool last = row == Count() - 1;
  const QPoint next = !last ? at(row + 1) : list.closed ? at(0) : at(row) + QPoint(20, 0);
  const QPoint middle = (at(row) + next) / 2;
  changed.points.insert(changed.points.begin() + row + 1, QPoint(std::min(middle.x(), mostVertex), middle.y()));
  if (!Write(changed)) return false;
  beginInsertRows({}, row + 1, row + 1);
  list = std::move(changed);
  endInsertRows();
  return true;
}

bool VertexModel::Delete_Rows(QList<int> rows) {
  std::sort(rows.begin(), rows.end());
  if (rows.isEmpty() || list.points.size() < list.Least() + static_cast<size_t>(rows.size())) return false;
  VertexList changed = list;
  changed.points.clear();
  for (int i = 0; i < Count(); ++i)
    if (!std::binary_search(rows.begin(), rows.end(), i)) changed.points.push_back(list.points[static_cast<size_t>(i)]);
  if (!Write(changed)) return false;
  Set_List(std::move(changed));
  return true;
}

bool VertexModel::Put_Back(const VertexList& former) {
  if (list.points == former.points) return true;
  VertexList changed = list;
  changed.points = former.points;
  if (!Write(changed)) return false;
  Set_List(std::move(changed));
  return true;
}

int VertexModel::rowCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : Count(); }
int VertexModel::columnCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : 2; }

QVariant VertexModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid() || index.row() >= Count()) return {};
  if (role == Qt::TextAlignmentRole) return QVariant(Qt::AlignRight | Qt::AlignVCenter);
  if (role != Qt::DisplayRole && role != Qt::EditRole) return {};
  const QPoint point = list.points[static_cast<size_t>(index.row())];
  const int value = index.column() == 0 ? point.x() : point.y();
  return role == Qt::EditRole ? QVariant(value) : QVariant(QString::number(value));
}

QVariant VertexModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (role != Qt::DisplayRole) return {};
  if (orientation == Qt::Vertical) return section + 1;
  return section == 0 ? QStringLiteral("xf") : QStringLiteral("yf");
}

Qt::ItemFlags VertexModel::flags(const QModelIndex& index) const {
  return QAbstractTableModel::flags(index) | Qt::ItemIsEditable;
}

bool VertexModel::setData(const QModelIndex& index, const QVariant& value, int role) {
  bool number = false;
  const int typed = value.toInt(&number);
  if (role != Qt::EditRole || !index.isValid() || index.row() >= Count()) return false;
  if (!number || typed < leastVertex || typed > mostVertex) return false;
  VertexList changed = list;
  QPoint& point = changed.points[static_cast<size_t>(index.row())];
  (index.column() == 0 ? point.rx() : point.ry()) = typed;
  if (changed.points == list.points) return true;
  if (!Write(changed)) return false;
  list = std::move(changed);
  Q_EMIT dataChanged(index, index);
  return true;
}
