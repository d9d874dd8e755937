#pragma once
#include <QSet>
#include <QString>

#include "platform/error.h"

// The rows that cannot be drawn in one pass. The user decides about each of them, or about all at once; a row that was
// left is not asked about again until the map is opened anew.
class FaultyRows {
 public:
  // The current row could not be drawn.
  void Meet(const Error& error);
  // After the pass: deletes the rows that shall go, with their vertex tables. Several can be had back by undo. How many
  // have gone; what cannot be deleted is told and stays.
  int Delete();

 private:
  enum class Wanted { Ask, LeaveAll, DeleteAll };
  Wanted wanted = Wanted::Ask;
  QSet<qint64> going;
};
