#pragma once
#include <QString>
#include <QStringView>
#include <deque>
#include <vector>

#include "platform/error.h"

// A table in CSV: the header tells which columns make the text of the entry, which hold the coordinates, and of what
// kind these are. Lines may end by CR LF, LF or CR, texts be in Windows-1252 or UTF-8.

inline constexpr int errNoNet = 5000, errCsvColumns = 5010, errCsvPlace = 5020;
inline constexpr int lastCsvPlace = 10;

struct CsvLine {
  int number = 0;  // in the file, from 1
  QString text;
};

struct CsvTable {
  QString CsvFile;
  std::vector<int> EintragCol;  // columns of the text in the order of their places
  int XCol = -1, YCol = -1;
  QString CsvTyp;  // "GEO", "UTM" or "GAUSS"
  std::vector<CsvLine> CsvLines;
  int skipped = 0;  // lines without a text for an entry
};

// The last file chosen; empty at first.
extern QString CsvFile;

// One line taken apart. The views last until the reader is used again.
struct CsvRecord {
  QString text;
  QStringView x, y;  // trimmed; empty where the line is too short
};

class CsvReader {
 public:
  explicit CsvReader(const CsvTable& columns);
  CsvRecord Read(const CsvLine& line);  // fields that are not there are empty
  bool Has_Text(QStringView line);      // is there any text in the columns of the entry?

 private:
  void Split(QStringView line);
  QStringView Field(int column) const;

  const CsvTable& table;
  int wanted = 0;  // columns up to the last one of use
  std::vector<QStringView> fields;
  std::deque<QString> unquoted;
};

// Reads header and lines. False, with a message, where nothing can be imported.
bool Csv_Analyse(const QString& path, CsvTable& table);
// "Fehler beim Import der CSV-Tabelle" with OK (go on) and Cancel.
bool Csv_Go_On_After(const Error& error);
