#pragma once
#include <QPoint>
#include <QString>
#include <QStringList>
#include <vector>

#include "import/csv_file.h"

// Entries from a CSV table: every line becomes a text at its coordinate.

struct CsvRefusal {
  int line = 0;  // in the file
  QString text, reason;
};

struct CsvResult {
  int imported = 0;
  int shifted = 0;       // of these, pushed aside because an entry of this run was there
  int shortened = 0;     // of these, with a text longer than the column; the whole text stands in `notes`
  bool stopped = false;  // the user ended it; what was made so far stays
  bool failed = false;   // an error of the table took everything back; it was told
  std::vector<CsvRefusal> refused, notes;
};

// Makes the entries: one undo point, one transaction, one redraw. `step` is the shift (Versatz) of an entry whose place
// is taken, in pixels. Asks when kind of coordinates and net differ, and at each refused line as long as the user
// wants.
CsvResult Csv_Import(const CsvTable& table, QPoint step);

// What came of it, as lines: refused lines and notes with line number, text and reason.
QStringList Csv_Report(const CsvTable& table, const CsvResult& result);
// Writes the report beside the map under a free name and returns it. Raises what the file raises.
QString Write_Csv_Report(const CsvTable& table, const CsvResult& result);

// A file of outlines of postal code districts (its name holds "Postleitzahlen") becomes "<name>-out.csv" with pixel
// pairs; the points are drawn on the map. False if it could not be done; that was told.
bool Csv_Plz(const QString& path);
bool Is_Plz_File(const QString& path);

// File dialog; the path or "". Starts with the last file.
QString Choose_Csv();
// mnuImportXL: tells how a sheet becomes a CSV table.
void Tell_Excel_Import();
