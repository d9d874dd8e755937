#pragma once
#include <QRectF>
#include <QString>
#include <functional>
#include <memory>

#include "platform/printer.h"
#include "printing/page_geometry.h"
#include "printing/sheet_painter.h"

// Printing the open map over its sheets. The view of the map window is not touched.

enum class PrintPath {
  Direct,  // vectors and letters, the scan as a picture: "direkt zum Drucker"
  Bitmap,  // every sheet as a picture: "Abbild des Monitors"
};

struct PrintOrder {
  PrintSettings settings;
  Paper paper;
  PrintedMap map;
  PrintRange range;  // sheets, from 1
  PrintPath path = PrintPath::Direct;
};

// Settings of the open map: margins, factor and orientation of its header row, enlargement of fonts; margins of at
// least 5 mm where a net is shown, whose labels stand in them. The size of the map at factor 1.
PrintSettings Read_Print_Settings();
PrintedMap Map_To_Print();
// The global print values (PrintFactor, MapPixelMm, MapPixelMmY) by these settings.
void Take_Print_Settings(const PrintSettings& settings, const Paper& paper);
// Writes them to the header row and to Qdata, marks the table dirty. A failure is told: "Druckfaktor nicht gesichert".
bool Save_Print_Settings(const PrintSettings& settings);

struct PrintHooks {
  std::function<std::unique_ptr<PrintJob>()> begin;
  // Called before every sheet and between the steps of one; `note` is "" or "Druckschärfe ...". False: stop.
  std::function<bool(int sheet, const QString& note)> step;
};
enum class PrintEnd { Done, Cancelled, Failed };
// For the status bar: "Gedruckt: 4 Blätter, /karten/Karte.pdf".
QString Printed_Text(int sheets, const QString& target);
// Prints the sheets of the range. Error 482 lowers the sharpness of the bitmap path by 0.5 from 3.0 down to 1.0 and
// starts the job over; then, and on the direct path, it ends the job with a message. An entry that cannot be drawn asks
// whether to go on. 396 ends silently, other errors with a box "Fehler".
PrintEnd Print_Map(const PrintOrder& order, const PrintHooks& hooks);
