#pragma once
#include <QPoint>
#include <QString>
#include <QStringList>
#include <functional>
#include <vector>

#include "store/entry.h"

// Exchange files back into entries (their lines: exchange_record.h). Only values: no table, no file.

struct ExchangeEntry {
  EntryRow row;                  // of lines and areas the name without its number: "Linie", "Flaeche - P0100L1.0B1.0"
  std::vector<QPoint> vertices;  // of lines and areas, map pixels
  int line = 0;                  // in the file, from 1
};

struct ExchangeRefusal {
  int line = 0;
  QString text, reason;
};

struct ExchangeContent {
  std::vector<ExchangeEntry> entries;
  std::vector<ExchangeRefusal> refused;  // nothing came of these lines
  bool ended = false;                    // the reading ended at a line that is none of an entry; it stands in `refused`
  bool empty = false;                    // no line of the file holds anything
};

// The entry lines alone, up to the first line of another kind, as points on the map: size 10, font and colours as the
// mobile program wrote them.
ExchangeContent Read_Exchange_Entries(const QStringList& lines);

// The whole file with lines, areas and figures, their angles, sizes, colours and kinds turned back, so that what was
// written comes back as far as the file holds it. Texts of several lines, fonts, transparency as in the table. `goOn`
// is asked once a line; false ends it with what there is.
ExchangeContent Read_Exchange_All(const QStringList& lines, const std::function<bool()>& goOn = {});
