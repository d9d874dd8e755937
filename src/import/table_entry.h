#pragma once
#include <QHash>
#include <QPoint>
#include <QSet>
#include <QSize>
#include <QString>
#include <functional>
#include <optional>
#include <vector>

#include "store/entry.h"

// One entry on its way from another table into the open one. Only values: no table, no window.
struct CarriedEntry {
  EntryRow row;
  std::vector<QPoint> vertices;  // of lines, areas and free figures

  EntryType Type() const { return EntryType::Parse(row.Typ); }
  QString TableName() const { return EntryId::Parse(row.ID).TableName(); }
};

// Gives every position of the entry (its own, foot point, opposite corner, vertices) a new place; widths of lines and
// the like stay. False if one of them has none, or lies where no entry can be stored.
using PlaceOf = std::function<std::optional<QPoint>(QPoint)>;
bool Move_Entry(CarriedEntry& entry, const PlaceOf& placeOf);

// Is any part of it on a map of that size?
bool Lies_On_Map(const CarriedEntry& entry, QSize map);

// New names for the tables of lines, areas and figures, and what follows from them.
class CarriedNames {
 public:
  // Names of tables and rows that are taken, in small letters, and the highest number of a group.
  CarriedNames(QSet<QString> takenNames, int highestGroup) : taken(std::move(takenNames)), lastGroup(highestGroup) {}
  // Gives the entry a table name of its own: "Linie3" becomes "Linie3i00001", or with the first counter that is free;
  // figures without a table only if theirs is taken. Line ends stay. False if the column cannot hold it.
  bool Rename(CarriedEntry& entry);
  // After all are renamed: assignments follow the new names, those to entries that did not come are dropped; groups get
  // numbers that are free.
  void Adjust(CarriedEntry& entry);

 private:
  QSet<QString> taken;
  QHash<QString, QString> renamed;  // by the old name in small letters
  QHash<QString, QString> groups;
  int lastGroup = 0;
};

// Entries that are there: by text, kind and position, shapes by text, kind and vertices.
class KnownEntries {
 public:
  void Add(const CarriedEntry& entry);        // one that is there
  bool Has(const CarriedEntry& entry) const;  // is the same there already?

 private:
  static QString Key(const CarriedEntry& entry);
  QMultiHash<QString, std::vector<QPoint>> entries;
};
