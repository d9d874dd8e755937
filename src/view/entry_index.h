#pragma once
#include <QRectF>
#include <optional>
#include <vector>

#include "platform/database.h"

// Which rows of a large table a part of the map can concern, and what all rows add to the counts, without looking at
// them: the reach of each, kept with the writes of the table. Rows whose reach is not known count as everywhere.

// What a row can touch at most, at any zoom.
class EntryReach {
 public:
  // Of the current row. Raises what reading it raises.
  static EntryReach Of(const Recordset& row);
  bool Everywhere() const { return everywhere; }
  // Map pixels, at that zoom (map pixels a surface pixel).
  QRectF At(double zoom) const;

  bool hidden = false, inactive = false, marked = false;  // as it counts
  bool planRow = false;                                   // of the raster

 private:
  void Take_Text(const Recordset& row, bool turned);

  bool everywhere = true;
  qint16 x = 0, y = 0, footX = 0, footY = 0;  // map pixels; footX 0: none
  qint16 pad = 0;                             // surface pixels round it
  bool allRound = false;                      // turned: as far to the left and above as to the right and below
  // Width and height are first + second * zoom map pixels.
  float width[2] = {0, 0}, height[2] = {0, 0};
};

struct EntryCounts {
  int hidden = 0, inactive = 0, marked = 0, planRows = 0;
};

// One entry that was written, by its reach before and after; nothing where there was none or is none.
struct EntryChange {
  qint64 key = 0;
  std::optional<EntryReach> before, after;
};

class EntryIndex {
 public:
  // Brings it up to the rows as they are now. False where there is none: a small table, or rows that cannot be read.
  // Who wants to know what was changed asks Changes before the next call.
  bool Follow();
  // What the last Follow found changed; nothing where everything may be.
  const std::optional<std::vector<EntryChange>>& Changes() const { return changes; }
  // Positions of the rows that can touch that part of the map, in table order; without the header row.
  std::vector<int> Rows_In(const QRectF& area, double zoom) const;
  bool Is_There() const { return !index.empty(); }
  const EntryCounts& Counts() const { return counts; }

 private:
  bool Build();
  bool Follow_Writes(const std::vector<RowWrite>& writes);
  void Count(const EntryReach& reach, int by);

  struct Row {
    qint64 key = 0;
    EntryReach reach;
  };
  std::vector<Row> index;  // by position
  EntryCounts counts;
  WriteMoment moment;
  std::optional<std::vector<EntryChange>> changes;
};
