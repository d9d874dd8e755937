#pragma once
#include <QPoint>
#include <QString>
#include <QStringList>
#include <functional>
#include <optional>
#include <vector>

#include "store/entry.h"

// The exchange file of the mobile program "Trakkor": an entry is a line of 13 fields, shapes have a line of points and
// a line of "#" fields behind it. Here rows become such lines; exchange_reader.h has the way back. Positions are map
// pixels. Only values: no table, no file.

// An entry as the file holds it, all fields as text.
struct ExportRecord {
  QString id, eintrag, schrift, groesse, vg, hg, ra;
  QString stroke;  // "1.0"; "0.5" = transparent
  QString x, y, x2, y2;
  QString typ;         // the file's own kinds; empty: the row is not written
  QString nummer;      // running number
  QString linienstil;  // ends of a line
};

// Colour numbers of the file (1..16) and indexes of the palette (0..15). Others stay as they are; none is "1".
QString trakkorColor(std::optional<int> index);
QString fluraxColor(std::optional<int> trakkorFarbe);

// Lines of a text as "<HTML>a<BR>b</HTML>"; a text of one line as it is.
QString Eintrag_To_Text(const QString& eintrag);
// The same back; line breaks are CR LF.
QString Text_To_Eintrag(const QString& text);

// The ends of a line in the file's code ("PATs>L050B025"), from the ID as it is stored; "-" without ends. The code of
// an ID that holds another program's text is made of what stands there.
QString Line_Style_Of(const QString& storedId);
// The same back; nothing for "-".
std::optional<LineEnds> Line_Ends_Of(const QString& linienstil);

// The fields that follow from the row alone.
ExportRecord Export_Record_Of(const EntryRow& row);

struct ExchangeTable {
  QString map, file, table;    // paths for the first line: map, exchange file, table
  std::vector<EntryRow> rows;  // without the header row
  // Vertices of a line or area by the name of their table; none if it is missing.
  std::function<std::vector<QPoint>(const QString& name)> vertices;
};

struct ExchangeText {
  QStringList lines;
  int written = 0;
  int withoutText = 0;  // entries that the file cannot hold: it has no entry without a text
};

// The whole file. Squares of a net and hidden rows of kind 1 are not in it. `goOn` is asked once a row; false ends it,
// and nothing comes back.
std::optional<ExchangeText> Exchange_Lines(const ExchangeTable& table, const std::function<bool()>& goOn = {});
