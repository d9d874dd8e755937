#pragma once
#include <QString>
#include <QStringList>
#include <functional>

#include "coordinates/placing.h"

// What the window of an import shows of a file before anything is written: one row a record, and counts.

enum class ImportStatus { Ok, Left, Right, Up, Down, ZoneLow, ZoneHigh, Unreadable, Exists };
// What came of placing a record.
ImportStatus Import_Status(const PlacedPoint& placed);
// Its symbol: a character of Wingdings, the code of the status.
QChar Import_Symbol(ImportStatus status);
// "zu weit links im Westen", "andere Zone", ...
QString Import_Status_Text(ImportStatus status);

struct ImportMark {
  ImportStatus status = ImportStatus::Unreadable;
  bool sameName = false, samePosition = false;  // an entry of the map has it
  bool Usable() const { return status == ImportStatus::Ok; }
};

struct ImportCounts {
  int all = 0, ok = 0, left = 0, right = 0, up = 0, down = 0, zone = 0, unreadable = 0, exists = 0;
  int sameName = 0, samePosition = 0, sameNameAndPosition = 0;
  void Count(const ImportMark& mark);  // one more record
  bool operator==(const ImportCounts&) const = default;
};

struct ImportList {
  QString header, info, info2, info3;  // over the list, over the counts outside, over those of clashes, below
  QStringList columns;                 // captions; the symbols have a column of their own in front
  int rows = 0;
  ImportCounts counts;
  std::function<ImportMark(int row)> mark;
  std::function<QString(int row, int column)> text;
};

// The counts in three lines: how many were read; how many of them lie outside in each direction; why others cannot
// come, and how many can.
QString Import_Summary(const ImportCounts& counts);
