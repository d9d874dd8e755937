#pragma once
#include <QAbstractTableModel>
#include <limits>
#include <memory>

#include "platform/database.h"

// The key of no row: rows may have keys below 0.
inline constexpr qint64 noKey = std::numeric_limits<qint64>::min();

// The rows of the open table for the grid, fetched as they come into view by a recordset of its own, whose cursor is
// nobody's current row. The first row is the header row: shown, but not to be changed.
class TblModel : public QAbstractTableModel {
  Q_OBJECT

 public:
  explicit TblModel(QObject* parent = nullptr);
  ~TblModel() override;

  // Takes over what has become of the table: as a whole where it was closed, loaded or got other columns, else the rows
  // that came, went or changed.
  void Refresh();
  qint64 Key_Of(int row) const;  // noKey where there is no row
  int Row_Of(qint64 key) const;  // -1 where there is none
  QString Name_Of(int column) const;
  QString Text_Of(const QModelIndex& index) const;  // with its line breaks
  bool Refused() const { return refused; }          // what was typed last into a cell

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;
  bool setData(const QModelIndex& index, const QVariant& value, int role) override;

 private:
  bool Same_Table() const;
  void Load();
  const Value* Field(const QModelIndex& index) const;  // nullptr where nothing can be read

  std::unique_ptr<Recordset> rows;
  const Database* database = nullptr;  // that `rows` belongs to
  std::vector<FieldInfo> fields;
  qint64 changes = -1;  // state of the database that is shown
  int count = 0;
  qint64 lastKey = noKey;
  bool refused = false;
};
