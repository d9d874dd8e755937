#pragma once
#include <QPoint>
#include <QString>
#include <QStringList>
#include <optional>

#include "printing/page_geometry.h"

// What flurax-batch is told to do, from the words of its call.

enum class BatchWork {
  Picture,
  Print,
  Csv,
  Results,
  WriteExchange,
  TakeExchange,
  Area,
  Calibrate,
  Gps,
  WriteSheet,
  TakeSheet,
  TakeTable,
  TakeOverlay,
};

struct BatchOrder {
  BatchWork work = BatchWork::Picture;
  QString map, target;  // full paths
  bool changesTable = false;
  bool wholeFile = false;    // tkr-ein
  bool alsoPresent = false;  // imports: what exists already comes again
  QStringList filter;        // tabelle: "Spalte= Wert"
  bool exclude = false, pixels = false;
  QPoint at;           // flaeche, map pixels
  int tolerance = 10;  // percent
  bool fill = false;
  QString matrix;
  QString sheet, key;     // tabelle-ein; "" = the usual ones
  QStringList columns;    // "Karte" or "Karte=Blatt"; none = all that have a title in the sheet
  bool showOnly = false;  // the differences are listed, the table stays
  bool newRows = false;   // rows that only the sheet has are appended
  int neighbours = 0;
  int zone = 0;   // kalibriere; 0 where none is named
  QString datum;  // the same, empty
  double zoom = 1;
  std::optional<double> factor;
  QString format = QStringLiteral("A4");
  std::optional<int> orientation;
  std::optional<PrintRange> range;
};

// Why a call is wrong, in German.
struct WrongCall {
  QString text;
};

// Raises WrongCall.
BatchOrder Parse_Order(QStringList words);
// What "--hilfe" says.
const QString& Batch_Help();
