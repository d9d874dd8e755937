#include "platform/printer.h"

#include <QFile>
#include <QPageLayout>
#include <QPainter>
#include <QPdfWriter>

#include "platform/error.h"
#include "platform/files.h"
#include "platform/pdf_images.h"

namespace {

// The writer of a PDF tells nobody what it could not write, and leaves out the rest.
class WatchedFile final : public QFile {
 public:
  using QFile::QFile;
  bool failed = false;

 protected:
  qint64 writeData(const char* bytes, qint64 count) override {
    const qint64 written = QFile::writeData(bytes, count);
    failed = failed || written != count;
    return written;
  }
};

class PdfJob final : public PrintJob {
 public:
  PdfJob(const QString& target, const Paper& paper, const QString& title)
      : path(target), aside(target + ".neu"), file(aside) {
    if (!file.open(QIODevice::WriteOnly))
      Raise(errors::noPermission, Error_Text(errors::noPermission) + QLatin1Char('\n') + path);
    writer = std::make_unique<QPdfWriter>(&file);
    writer->setTitle(title);
    writer->setCreator(QStringLiteral("Flurax"));
    writer->setResolution(paper.dpi);
    const QPageSize size(QSizeF(paper.widthMm, paper.heightMm), QPageSize::Millimeter, {}, QPageSize::ExactMatch);
    const QMarginsF border(paper.unprintableX, paper.unprintableY, paper.unprintableX, paper.unprintableY);
    writer->setPageLayout(QPageLayout(size, QPageLayout::Portrait, border, QPageLayout::Millimeter));
    if (!painter.begin(writer.get())) Raise(errors::noPermission);
    images.emplace(*writer);
  }
  ~PdfJob() override {
    if (writer) PdfJob::KillDoc();
  }
  QPainter& Painter() override { return painter; }
  void NewPage() override {
    if (!writer->newPage()) Raise(errors::printer);
  }
  void EndDoc() override {
    Close();
    if (file.failed) Raise(errors::diskFull);
    images->Put_Into(aside);
    if (File_Exists(path)) Kill(path);
    File_Rename(aside, path);
  }
  void KillDoc() override {
    Close();
    Kill_Quietly(aside);
  }
  QString Target() const override { return path; }

 private:
  void Close() {
    if (painter.isActive()) painter.end();
    writer.reset();
    if (file.isOpen() && !file.flush()) file.failed = true;
    file.close();
  }

  QString path, aside;
  WatchedFile file;
  std::unique_ptr<QPdfWriter> writer;
  QPainter painter;
  std::optional<PdfImages> images;
};

PrinterFace Without_Printer() {
  PrinterFace face;
  face.paper = [](int orientation) { return Paper_Of({}, orientation); };
  face.setup = [](int orientation) { return std::optional(orientation); };
  face.ask = [](const QString&, int pages, int) { return std::optional(PrintRange{1, pages}); };
  face.begin = [](const QString& title, int orientation) {
    return Make_Pdf_Job(ProgramFolder + QStringLiteral("/Karte.pdf"), Paper_Of({}, orientation), title);
  };
  return face;
}

PrinterFace& Face() {
  static PrinterFace face = Without_Printer();
  return face;
}

}  // namespace

Paper Paper_Of(const QString& format, int orientation) {
  Paper paper;
  if (format.compare(QLatin1String("A3"), Qt::CaseInsensitive) == 0) {
    paper.widthMm = 297;
    paper.heightMm = 420;
  }
  if (orientation == landscape) std::swap(paper.widthMm, paper.heightMm);
  return paper;
}

PrinterFace Set_Printer(PrinterFace face) {
  PrinterFace complete = Without_Printer();
  if (face.paper) complete.paper = std::move(face.paper);
  if (face.setup) complete.setup = std::move(face.setup);
  if (face.ask) complete.ask = std::move(face.ask);
  if (face.begin) complete.begin = std::move(face.begin);
  return std::exchange(Face(), std::move(complete));
}

const PrinterFace& The_Printer() { return Face(); }

std::unique_ptr<PrintJob> Make_Pdf_Job(const QString& path, const Paper& paper, const QString& title) {
  return std::make_unique<PdfJob>(path, paper, title);
}
