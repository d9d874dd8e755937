#include "windows/desktop/desktop_printer.h"

#include <QApplication>
#include <QFileInfo>
#include <QPageSetupDialog>
#include <QPainter>
#include <QPointer>
#include <QPrintDialog>
#include <QPrinter>
#include <QPrinterInfo>

#include "platform/error.h"
#include "printing/print_texts.h"
#include "state/global_state.h"
#include "windows/desktop/desktop_dialogs.h"

namespace {

const QString helpPage = QStringLiteral("Drucken.htm");

// Lives as long as the application: a printer must not outlive it.
class PrinterHolder : public QObject {
 public:
  using QObject::QObject;
  QPrinter printer{QPrinter::HighResolution};
};

QPrinter& Printer() {
  static QPointer<PrinterHolder> holder;
  if (!holder) {
    holder = new PrinterHolder(qApp);
    if (QPrinterInfo::availablePrinterNames().isEmpty()) {
      holder->printer.setOutputFormat(QPrinter::PdfFormat);
      holder->printer.setPageSize(QPageSize(QPageSize::A4));
    }
  }
  return holder->printer;
}

bool Into_Pdf() { return Printer().outputFormat() == QPrinter::PdfFormat || !Printer().outputFileName().isEmpty(); }

QPageLayout::Orientation Layout_Of(int orientation) {
  return orientation == landscape ? QPageLayout::Landscape : QPageLayout::Portrait;
}

// The printer's own border; the margins of the map lie within it.
void Lay_Out(QPrinter& printer, int orientation) {
  printer.setFullPage(false);
  printer.setPageOrientation(Layout_Of(orientation));
  QPageLayout layout = printer.pageLayout();
  layout.setUnits(QPageLayout::Millimeter);
  layout.setMargins(layout.minimumMargins());
  printer.setPageLayout(layout);
}

Paper Paper_Of_Printer(int orientation) {
  QPrinter& printer = Printer();
  Lay_Out(printer, orientation);
  const QPageLayout layout = printer.pageLayout();
  const QSizeF sheet = layout.fullRect(QPageLayout::Millimeter).size();
  Paper paper;
  paper.widthMm = sheet.width();
  paper.heightMm = sheet.height();
  if (Into_Pdf()) return paper;  // border and resolution as everywhere without a printer
  const QSizeF inner = layout.paintRect(QPageLayout::Millimeter).size();
  paper.unprintableX = (sheet.width() - inner.width()) / 2;
  paper.unprintableY = (sheet.height() - inner.height()) / 2;
  paper.dpi = printer.resolution();
  return paper;
}

// "Karte.pdf" beside the map; "Karte_Tabelle.pdf" for what is no map.
QString Proposed_Pdf(const QString& title) {
  QString name = MapFile.isEmpty() ? QStringLiteral("Karte") : QFileInfo(MapFile).completeBaseName();
  if (title != print_texts::printTitle)
    name += QLatin1Char('_') + QFileInfo(QString(title).remove(QStringLiteral(" drucken"))).completeBaseName();
  const QString folder = MapFile.isEmpty() ? ProgramFolder : QFileInfo(MapFile).path();
  return folder + QLatin1Char('/') + name + QStringLiteral(".pdf");
}

std::optional<int> Set_Up_Page(int orientation) {
  const ArrowPointer arrow;
  QPrinter& printer = Printer();
  Lay_Out(printer, orientation);
  QPageSetupDialog dialog(&printer, Dialog_Parent());
  Give_Help(dialog, helpPage);
  dialog.setWindowTitle(QStringLiteral("Druckformat"));
  // The margins have a window of their own.
  if (auto* margin = dialog.findChild<QWidget*>(QStringLiteral("topMargin"))) margin->parentWidget()->hide();
  if (dialog.exec() != QDialog::Accepted) return std::nullopt;
  const int chosen = printer.pageLayout().orientation() == QPageLayout::Landscape ? landscape : portrait;
  Lay_Out(printer, chosen);
  return chosen;
}

std::optional<PrintRange> Ask(const QString& title, int pages, int orientation) {
  const ArrowPointer arrow;
  QPrinter& printer = Printer();
  Lay_Out(printer, orientation);
  // Where there is a printer a file is wanted for one job only.
  const bool isPrinter = !QPrinterInfo::availablePrinterNames().isEmpty();
  printer.setOutputFileName(isPrinter ? QString() : Proposed_Pdf(title));
  QPrintDialog dialog(&printer, Dialog_Parent());
  Give_Help(dialog, helpPage);
  dialog.setWindowTitle(title);
  dialog.setOptions(QAbstractPrintDialog::PrintToFile | QAbstractPrintDialog::PrintPageRange |
                    QAbstractPrintDialog::PrintShowPageSize);
  dialog.setMinMax(1, pages);
  dialog.setFromTo(1, pages);
  dialog.setPrintRange(QAbstractPrintDialog::AllPages);
  if (dialog.exec() != QDialog::Accepted) return std::nullopt;
  // The sheets are laid out for this orientation; another one is chosen in the page setup.
  Lay_Out(printer, orientation);
  if (dialog.printRange() != QAbstractPrintDialog::PageRange) return PrintRange{1, pages};
  return PrintRange{std::max(1, dialog.fromPage()), std::clamp(dialog.toPage(), 1, pages)};
}

class PrinterJob final : public PrintJob {
 public:
  PrinterJob(const QString& title, int orientation) : printer(Printer()) {
    Lay_Out(printer, orientation);
    printer.setDocName(title);
    printer.setCreator(QStringLiteral("Flurax"));
    // The range was walked already: what comes to the printer is to be printed.
    printer.setPrintRange(QPrinter::AllPages);
    if (!painter.begin(&printer)) Raise(errors::printer);
  }
  ~PrinterJob() override {
    if (painter.isActive()) PrinterJob::KillDoc();
  }
  QPainter& Painter() override { return painter; }
  void NewPage() override {
    if (!printer.newPage()) Raise(errors::printer);
  }
  void EndDoc() override {
    painter.end();
    if (printer.printerState() == QPrinter::Error) Raise(errors::printer);
  }
  void KillDoc() override {
    printer.abort();
    painter.end();
  }
  QString Target() const override { return printer.printerName(); }

 private:
  QPrinter& printer;
  QPainter painter;
};

std::unique_ptr<PrintJob> Begin(const QString& title, int orientation) {
  if (!Into_Pdf()) return std::make_unique<PrinterJob>(title, orientation);
  QString path = Printer().outputFileName();
  if (path.isEmpty()) path = Proposed_Pdf(title);
  return Make_Pdf_Job(path, Paper_Of_Printer(orientation), title);
}

}  // namespace

PrinterFace Desktop_Printer() { return {Paper_Of_Printer, Set_Up_Page, Ask, Begin}; }
