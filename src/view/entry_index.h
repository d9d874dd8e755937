#pragma once
#include <QMultiHash>
#include <QRectF>
#include <cmath>
#include <optional>
#include <vector>

#include "platform/database.h"
#include "store/entry_type.h"

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
  // False where the reach cannot be known.
  bool Take_Text(const Recordset& row, const QString& schrift);
  bool Take_Outline(const Recordset& row);
  bool Take_Figure(const Recordset& row, const EntryType& type);
  void Take_Shape(const QRectF& box, double room);

  bool everywhere = true, hasText = false, hasShape = false;
  qint16 x = 0, y = 0, footX = 0, footY = 0;  // map pixels; footX 0: none
  qint16 pad = 0;                             // surface pixels round it
  bool allRound = false;                      // turned: as far to the left and above as to the right and below
  // Width and height are first + second * zoom map pixels.
  float width[2] = {0, 0}, height[2] = {0, 0};
  float left = 0, top = 0, right = 0, bottom = 0;  // of a line, an area, a figure: map pixels, with its pen
};

// A square round the reach, small enough that a million of them are looked through in no time.
class NearReach {
 public:
  NearReach() = default;
  explicit NearReach(const EntryReach& reach);
  struct Area {
    float x, y, wide, high;  // its middle, and half its size
    float zoom, foot;        // foot: what foot points take round them, map pixels
  };
  // Can the reach touch the area at that zoom?
  bool May_Touch(const Area& area) const {
    const float far = first + second * area.zoom + area.foot;
    return (std::abs(x - area.x) <= area.wide + far && std::abs(y - area.y) <= area.high + far) || everywhere;
  }

 private:
  bool everywhere = false;
  qint16 x = 0, y = 0;          // its middle
  float first = 0, second = 0;  // half its side is first + second * zoom map pixels
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
  bool Follow_Writes(const WritesSince& writes);
  bool Follow_Row(qint64 key);
  std::vector<qint64> Written_Rows(const WritesSince& writes) const;
  void Count(const EntryReach& reach, int by);
  void Note_Table(qint64 key);  // of the current row

  struct Row {
    qint64 key = 0;
    EntryReach reach;
  };
  std::vector<Row> index;                  // by position
  std::vector<NearReach> nearby;           // the same rows
  QMultiHash<QString, qint64> vertexRows;  // keys by vertex table, in small letters
  EntryCounts counts;
  WriteMoment moment;
  std::optional<std::vector<EntryChange>> changes;
};
