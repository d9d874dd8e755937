#pragma once
#include <QString>
#include <functional>
#include <memory>
#include <optional>

class QPainter;

// The printer: its paper, the dialogs, and jobs. Without a printer jobs go into a PDF file.

inline constexpr int portrait = 1, landscape = 2;

// Sizes as the sheet lies (width and height are exchanged for landscape).
struct Paper {
  double widthMm = 210, heightMm = 297;
  double unprintableX = 4.2, unprintableY = 4.2;  // border that cannot be printed, on each side
  int dpi = 600;
  double PrintableWidth() const { return widthMm - 2 * unprintableX; }
  double PrintableHeight() const { return heightMm - 2 * unprintableY; }
};
// A4 or A3 (other names are A4) without a printer.
Paper Paper_Of(const QString& format, int orientation);

// A job that is being printed. Its painter paints page by page and lives as long as the job: its origin is the upper
// left corner of the printable area, its pixels are `dpi` an inch. Error 482 where the printer fails, 70 where a file
// cannot be written.
class PrintJob {
 public:
  virtual ~PrintJob() = default;
  virtual QPainter& Painter() = 0;               // of the page in hand
  virtual void NewPage() = 0;                    // the next page; the first is there at once
  virtual void EndDoc() = 0;                     // sends the job off or writes the file
  virtual void KillDoc() = 0;                    // nothing is printed; a file is removed
  virtual QString Target() const { return {}; }  // the file or the printer, for the user
};

struct PrintRange {
  int from = 1, to = 1;
};

struct PrinterFace {
  std::function<Paper(int orientation)> paper;               // of the chosen printer
  std::function<std::optional<int>(int orientation)> setup;  // "Druckformat": printer, paper; the orientation
  std::function<std::optional<PrintRange>(const QString& title, int pages, int orientation)> ask;  // nothing: cancelled
  std::function<std::unique_ptr<PrintJob>(const QString& title, int orientation)> begin;           // after `ask`
};
// Puts another printer in place; what the face lacks is as without a printer. Returns the former one.
PrinterFace Set_Printer(PrinterFace face);
// The face in use. Without one: A4, every page, and jobs into "Karte.pdf" of the program folder.
const PrinterFace& The_Printer();

// A job into a PDF file, built aside and renamed at EndDoc. Title and creation date are those of the document.
std::unique_ptr<PrintJob> Make_Pdf_Job(const QString& path, const Paper& paper, const QString& title);
