#include "windows/store/tbl_window_model.h"

#include <QColor>
#include <QFont>
#include <QGuiApplication>
#include <QPalette>

#include "edit/table_edit.h"
#include "state/global_state.h"
#include "store/entry.h"

TblModel::TblModel(QObject* parent) : QAbstractTableModel(parent) {}
TblModel::~TblModel() = default;

bool TblModel::Same_Table() const {
  return rows && rows->IsOpen() && dbEntries && database == dbEntries.get() && rsEntries &&
         rsEntries->Fields() == fields;
}

void TblModel::Load() {
  rows.reset();
  fields.clear();
  count = 0;
  changes = -1;
  lastKey = noKey;
  database = dbEntries.get();
  if (!dbEntries || !rsEntries) return;
  rows = dbEntries->OpenRecordset(QStringLiteral("MapData"));
  fields = rows->Fields();
  changes = dbEntries->ChangeCount();
  count = rows->RecordCount();
  lastKey = Key_Of(count - 1);
}

void TblModel::Refresh() {
  if (!Same_Table()) {
    beginResetModel();
    Load();
    endResetModel();
    return;
  }
  if (changes == dbEntries->ChangeCount()) return;
  changes = dbEntries->ChangeCount();
  auto fresh = dbEntries->OpenRecordset(QStringLiteral("MapData"));
  const int now = fresh->RecordCount();
  const int oldAt = lastKey == noKey ? -1 : fresh->PositionOf(lastKey);
  // Rows only join at the end: where the last one of before still stands at its place, none of them has gone.
  if (oldAt == count - 1) {
    if (now > count) beginInsertRows({}, count, now - 1);
    const bool more = now > count;
    rows = std::move(fresh);
    count = now;
    lastKey = Key_Of(count - 1);
    if (more) endInsertRows();
    if (count > 0) Q_EMIT dataChanged(index(0, 0), index(count - 1, columnCount() - 1));
    return;
  }
  beginResetModel();
  rows = std::move(fresh);
  count = now;
  lastKey = Key_Of(count - 1);
  endResetModel();
}

qint64 TblModel::Key_Of(int row) const {
  if (!rows || !rows->IsOpen() || row < 0 || row >= rows->RecordCount()) return noKey;
  rows->MoveTo(row);
  return rows->Key();
}

int TblModel::Row_Of(qint64 key) const { return rows && rows->IsOpen() ? rows->PositionOf(key) : -1; }

QString TblModel::Name_Of(int column) const {
  return column >= 0 && column < columnCount() ? fields[static_cast<size_t>(column)].name : QString();
}

int TblModel::rowCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : count; }
int TblModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(fields.size());
}

const Value* TblModel::Field(const QModelIndex& index) const {
  if (!index.isValid() || !rows || !rows->IsOpen()) return nullptr;
  try {
    if (index.row() >= rows->RecordCount() || index.column() >= columnCount()) return nullptr;
    if (rows->Position() != index.row()) rows->MoveTo(index.row());
    return &rows->Raw(index.column());
  } catch (const Error&) {
    return nullptr;  // the row has gone, or its page is damaged: the next Refresh tells
  }
}

QString TblModel::Text_Of(const QModelIndex& index) const {
  const Value* value = Field(index);
  return value ? Cell_Text(*value) : QString();
}

QVariant TblModel::data(const QModelIndex& index, int role) const {
  const auto number = static_cast<size_t>(std::max(0, index.column()));
  switch (role) {
    case Qt::DisplayRole:
      return Text_Of(index).replace(QLatin1String("\r\n"), QLatin1String(" ")).replace(u'\n', u' ');
    case Qt::EditRole:
    case Qt::ToolTipRole: {
      const QString text = Text_Of(index);
      // A tip only where a column may be too narrow.
      return role == Qt::EditRole || text.size() > 12 ? QVariant(text) : QVariant();
    }
    case Qt::TextAlignmentRole:
      if (number < fields.size() && fields[number].type != FieldType::Text)
        return QVariant::fromValue(Qt::AlignRight | Qt::AlignVCenter);
      return QVariant::fromValue(Qt::AlignLeft | Qt::AlignVCenter);
    case Qt::ForegroundRole:
      if (index.row() == 0) return QGuiApplication::palette().brush(QPalette::Disabled, QPalette::Text);
      return {};
    case Qt::BackgroundRole:
      if (index.row() == 0) return QGuiApplication::palette().brush(QPalette::Window);
      return {};
    default:
      return {};
  }
}

QVariant TblModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation == Qt::Horizontal) {
    if (role == Qt::DisplayRole) return Name_Of(section);
    if (role == Qt::ToolTipRole) return Name_Of(section);
    return {};
  }
  if (role == Qt::DisplayRole) return section == 0 ? QStringLiteral("Karte") : QString::number(section);
  if (role == Qt::TextAlignmentRole) return QVariant::fromValue(Qt::AlignRight | Qt::AlignVCenter);
  return {};
}

Qt::ItemFlags TblModel::flags(const QModelIndex& index) const {
  if (!index.isValid()) return Qt::NoItemFlags;
  const Qt::ItemFlags shown = Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemNeverHasChildren;
  return index.row() == 0 ? shown : shown | Qt::ItemIsEditable;
}

bool TblModel::setData(const QModelIndex& index, const QVariant& value, int role) {
  const qint64 key = index.isValid() ? Key_Of(index.row()) : noKey;
  if (role != Qt::EditRole || key == noKey) return false;
  const CellEdit edit = Edit_Cell(key, index.column(), value.toString());
  refused = edit == CellEdit::Refused;
  return edit == CellEdit::Written;
}
