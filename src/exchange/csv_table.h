#pragma once
#include <QByteArray>
#include <QString>
#include <QStringList>

// The point-like entries of the open table as a CSV table to the user's order, by RFC 4180: cells with separators,
// quotes or line breaks stand in quotes, lines end with CR LF. Texts that spreadsheet programs would compute are
// guarded (store/csv_cell.h).

namespace csv_column {
// Columns that no table has; the coordinates make two.
inline const QString number = QStringLiteral("Nr"), pixels = QStringLiteral("Pixel"),
                     coordinates = QStringLiteral("Koordinaten");
}  // namespace csv_column

struct CsvOrder {
  QStringList columns;  // of csv_column and of the table, in the order wanted
  QChar separator = u';';
  QChar decimalSign = u',';
  bool utf8 = true;    // with mark; else Windows-1252
  bool wgs84 = false;  // coordinates as degrees in WGS-84, whatever the map's net
};

// Columns of the open table that can be chosen, fixed ones first, after those of csv_column.
QStringList Csv_Columns();
// Can the places of the open map be told in WGS-84?
bool Csv_Knows_Wgs84();
// The file as it is written. Places without coordinates have empty cells. Raises what table and transformation raise.
QByteArray Csv_Table(const CsvOrder& order);
