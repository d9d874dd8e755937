#include "printing/page_job.h"

#include <QAbstractTextDocumentLayout>
#include <QPainter>
#include <QTextDocument>
#include <QTextOption>
#include <algorithm>
#include <cmath>

#include "objects/draw_context.h"
#include "platform/fonts.h"
#include "platform/message_box.h"
#include "platform/progress.h"
#include "printing/print_texts.h"
#include "state/task_line.h"

namespace {

constexpr double unitsPerInch = 96;
constexpr double margin = 10 * pixelsPerMm, headHeight = 8 * pixelsPerMm;

QRectF Room_Of(const Paper& paper) {
  return QRectF(0, 0, paper.PrintableWidth() * pixelsPerMm, paper.PrintableHeight() * pixelsPerMm)
      .adjusted(margin, margin, -margin, -margin);
}

class TextPages final : public PageSource {
 public:
  TextPages(const QString& name, const QString& text) : title(name) {
    QFont fixed = Font_Face({.family = QStringLiteral("Courier New"), .points = 10}).font;
    document.setDefaultFont(fixed);
    document.setDocumentMargin(0);
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    option.setTabStopDistance(8 * QFontMetricsF(fixed).horizontalAdvance(u' '));
    document.setDefaultTextOption(option);
    document.setPlainText(text);
  }
  int Plan(const Paper& paper) override {
    room = Room_Of(paper).adjusted(0, headHeight, 0, 0);
    // Whole lines on a page.
    const double line = QFontMetricsF(document.defaultFont()).lineSpacing();
    room.setHeight(std::max(1.0, std::floor(room.height() / line)) * line);
    document.setPageSize(room.size());
    return pages = std::max(1, document.pageCount());
  }
  void Draw(QPainter& painter, int page) override {
    painter.setPen(Qt::black);
    painter.setFont(Font_Face({.points = 9, .bold = true}).font);
    const QRectF head(room.left(), room.top() - headHeight, room.width(), headHeight);
    painter.drawText(head, Qt::AlignLeft | Qt::AlignTop, title);
    painter.drawText(head, Qt::AlignRight | Qt::AlignTop, QStringLiteral("Seite %1 von %2").arg(page).arg(pages));
    painter.translate(room.left(), room.top() - (page - 1) * room.height());
    const QRectF part(0, (page - 1) * room.height(), room.width(), room.height());
    painter.setClipRect(part);
    QAbstractTextDocumentLayout::PaintContext context;
    context.clip = part.adjusted(0, 1, 0, -1);  // lines that only touch it belong to the neighbours
    context.palette.setColor(QPalette::Text, Qt::black);
    document.documentLayout()->draw(&painter, context);
  }

 private:
  QString title;
  QTextDocument document;
  QRectF room;
  int pages = 1;
};

class PicturePage final : public PageSource {
 public:
  explicit PicturePage(const QImage& shown) : picture(shown) {}
  int Plan(const Paper& paper) override {
    room = Room_Of(paper);
    return 1;
  }
  void Draw(QPainter& painter, int) override {
    if (picture.isNull()) return;
    const QSizeF size = QSizeF(picture.size()).scaled(room.size(), Qt::KeepAspectRatio);
    painter.setRenderHint(QPainter::LosslessImageRendering);
    painter.drawImage(QRectF(room.topLeft(), size), picture);
  }

 private:
  QImage picture;
  QRectF room;
};

PrintEnd Print_Range(const QString& title, PageSource& source, PrintRange range, int dpi, PrintJob& job) {
  const double scale = dpi / unitsPerInch;
  Progress progress(title, range.to - range.from + 1);
  for (int page = range.from; page <= range.to; ++page) {
    if (page > range.from) job.NewPage();
    QPainter& painter = job.Painter();
    painter.save();
    painter.resetTransform();
    painter.scale(scale, scale);
    source.Draw(painter, page);
    painter.restore();
    if (!progress.Advance()) {
      job.KillDoc();
      Message_Box(print_texts::stopped, MsgButtons::Ok, MsgIcon::Information, title);
      return PrintEnd::Cancelled;
    }
  }
  job.EndDoc();
  Tell_Done(Printed_Text(range.to - range.from + 1, job.Target()));
  return PrintEnd::Done;
}

}  // namespace

PrintEnd Print_Pages(const QString& title, int orientation, PageSource& source) {
  std::unique_ptr<PrintJob> job;
  try {
    const int planned = source.Plan(The_Printer().paper(orientation));
    const auto asked = The_Printer().ask(title, planned, orientation);
    if (!asked) return PrintEnd::Cancelled;
    // Another paper may have been chosen in the dialog.
    const Paper paper = The_Printer().paper(orientation);
    const int pages = source.Plan(paper);
    PrintRange range{std::max(1, asked->from), asked->to >= planned ? pages : std::min(asked->to, pages)};
    if (range.from > range.to) return PrintEnd::Cancelled;
    job = The_Printer().begin(title, orientation);
    return Print_Range(title, source, range, paper.dpi, *job);
  } catch (const Error& error) {
    job.reset();
    Message_Box(error.text, MsgButtons::OkCancel, MsgIcon::Warning, QStringLiteral("Fehler"));
    return PrintEnd::Failed;
  }
}

std::unique_ptr<PageSource> Make_Text_Pages(const QString& title, const QString& text) {
  return std::make_unique<TextPages>(title, text);
}

std::unique_ptr<PageSource> Make_Picture_Page(const QImage& picture) { return std::make_unique<PicturePage>(picture); }

void Print_Text(const QString& title, const QString& text) {
  Print_Pages(title, portrait, *Make_Text_Pages(title, text));
}

void Print_Picture(const QString& title, const QImage& picture) {
  Print_Pages(title, picture.width() > picture.height() ? landscape : portrait, *Make_Picture_Page(picture));
}
