#include "printing/table_print.h"

#include <QFileInfo>
#include <QPainter>
#include <algorithm>
#include <cmath>

#include "objects/draw_context.h"
#include "platform/fonts.h"
#include "platform/message_box.h"
#include "printing/print_texts.h"
#include "state/global_state.h"
#include "state/table_state.h"
#include "store/entry.h"

namespace {

constexpr double margin = 10 * pixelsPerMm, headHeight = 7 * pixelsPerMm, pad = 3;
constexpr double widest = 60 * pixelsPerMm;  // of a column
constexpr double fontPoints = 8, smallestScale = 0.75;
constexpr int textFlags = Qt::AlignLeft | Qt::AlignTop | Qt::TextWordWrap | Qt::TextWrapAnywhere;

struct TableColumn {
  QString name;
  int field = -1;  // -1: the number of the row
  bool number = false;
  double width = 0;
};

const QFont& Font(bool bold) { return Font_Face({.points = fontPoints, .bold = bold}).font; }

QString Row_Text(const Recordset& rows, const TableColumn& column, int row) {
  if (column.field < 0) return QString::number(row);
  return std::holds_alternative<std::monostate>(rows.Raw(column.field)) ? QString() : rows.Text(column.field);
}

// The columns shown, as wide as their texts.
std::vector<TableColumn> Columns_Of(Recordset& rows) {
  std::vector<TableColumn> columns{{QStringLiteral("Nr."), -1, true}};
  for (int i = 0; i < static_cast<int>(rows.Fields().size()); ++i) {
    const FieldInfo& field = rows.Fields()[static_cast<size_t>(i)];
    if (!Tbl.HiddenColumns.contains(field.name)) columns.push_back({field.name, i, field.type != FieldType::Text});
  }
  const QFontMetricsF plain(Font(false)), bold(Font(true));
  for (TableColumn& column : columns) column.width = bold.horizontalAdvance(column.name);
  int row = 0;
  for (rows.MoveFirst(), rows.MoveNext(); !rows.Eof(); rows.MoveNext(), ++row)
    for (TableColumn& column : columns)
      if (column.width < widest)
        For_Each_Line(Row_Text(rows, column, row + 1), [&](QStringView line, int) {
          column.width = std::max(column.width, plain.horizontalAdvance(line.toString()));
        });
  // A little more: the page lays out its letters unhinted.
  for (TableColumn& column : columns) column.width = std::min(widest, column.width * 1.03 + 1) + 2 * pad;
  return columns;
}

class TablePages final : public PageSource {
 public:
  TablePages() : rows(dbEntries->OpenRecordset(QStringLiteral("MapData"))), columns(Columns_Of(*rows)) {}

  double Width() const {
    double width = 0;
    for (const TableColumn& column : columns) width += column.width;
    return width;
  }
  int Plan(const Paper& paper) override {
    QRectF page = QRectF(0, 0, paper.PrintableWidth() * pixelsPerMm, paper.PrintableHeight() * pixelsPerMm)
                      .adjusted(margin, margin, -margin, -margin);
    scale = std::clamp(page.width() / Width(), smallestScale, 1.0);
    room = QRectF(page.topLeft() / scale, page.size() / scale);
    Split_Columns();
    Split_Rows();
    return Pages();
  }
  void Draw(QPainter& painter, int page) override {
    const auto band = static_cast<size_t>(page - 1) % bands.size(), part = static_cast<size_t>(page - 1) / bands.size();
    painter.scale(scale, scale);
    painter.setPen(Qt::black);
    painter.setFont(Font(true));
    const QRectF head(room.left(), room.top(), room.width(), headHeight);
    painter.drawText(head, Qt::AlignLeft | Qt::AlignTop, QFileInfo(Tbl.DBGrid1.Caption).fileName());
    painter.drawText(head, Qt::AlignRight | Qt::AlignTop, QStringLiteral("Seite %1 von %2").arg(page).arg(Pages()));
    double y = room.top() + headHeight;
    y = Draw_Row(painter, band, y, lineHeight, [](const TableColumn& column) { return column.name; });
    painter.setFont(Font(false));
    const int end = part + 1 < firstRows.size() ? firstRows[part + 1] : static_cast<int>(heights.size());
    for (int row = firstRows[part]; row < end; ++row) {
      rows->MoveTo(row + 1);
      y = Draw_Row(painter, band, y, heights[static_cast<size_t>(row)],
                   [&](const TableColumn& column) { return Row_Text(*rows, column, row + 1); });
    }
  }

 private:
  int Pages() const { return static_cast<int>(bands.size() * firstRows.size()); }

  // Each band begins with the number of the row.
  void Split_Columns() {
    bands.clear();
    std::vector<size_t> band{0};
    double width = columns[0].width;
    for (size_t i = 1; i < columns.size(); ++i) {
      if (band.size() > 1 && width + columns[i].width > room.width() + 0.01) {
        bands.push_back(band);
        band = {0};
        width = columns[0].width;
      }
      band.push_back(i);
      width += columns[i].width;
    }
    bands.push_back(band);
  }
  void Split_Rows() {
    const QFontMetricsF metrics(Font(false));
    lineHeight = metrics.lineSpacing() + 2;
    const double bodyHeight = room.height() - headHeight - lineHeight;
    heights.clear();
    firstRows = {0};
    double y = 0;
    for (rows->MoveFirst(), rows->MoveNext(); !rows->Eof(); rows->MoveNext()) {
      const double height = std::min(bodyHeight, Row_Height(metrics));
      if (y + height > bodyHeight && y > 0) {
        firstRows.push_back(static_cast<int>(heights.size()));
        y = 0;
      }
      y += height;
      heights.push_back(height);
    }
  }
  double Row_Height(const QFontMetricsF& metrics) const {
    double height = lineHeight;
    for (const TableColumn& column : columns) {
      if (column.field < 0 || column.number) continue;
      const QString text = rows->Text(column.field);
      const double width = column.width - 2 * pad;
      if (!text.contains(QLatin1Char('\n')) && metrics.horizontalAdvance(text) <= width) continue;
      height = std::max(height, metrics.boundingRect(QRectF(0, 0, width, 1e5), textFlags, text).height() + 2);
    }
    return height;
  }
  template <class TextOf>
  double Draw_Row(QPainter& painter, size_t band, double y, double height, TextOf textOf) const {
    double x = room.left();
    for (const size_t index : bands[band]) {
      const TableColumn& column = columns[index];
      const QRectF cell(x + pad, y + 1, column.width - 2 * pad, height - 1);
      painter.drawText(cell, column.number ? static_cast<int>(Qt::AlignRight | Qt::AlignTop) : textFlags,
                       textOf(column));
      x += column.width;
    }
    painter.fillRect(QRectF(room.left(), y + height - 0.4, x - room.left(), 0.4), Qt::gray);
    return y + height;
  }

  std::unique_ptr<Recordset> rows;
  std::vector<TableColumn> columns;
  QRectF room;
  double scale = 1, lineHeight = 12;
  std::vector<std::vector<size_t>> bands;  // columns of a page
  std::vector<int> firstRows;              // of the pages below each other
  std::vector<double> heights;
};

}  // namespace

std::unique_ptr<PageSource> Make_Table_Pages() { return std::make_unique<TablePages>(); }

void Print_Table() {
  if (!dbEntries) return;
  TablePages pages;
  const Paper upright = The_Printer().paper(portrait);
  const bool wide = pages.Width() * smallestScale > upright.PrintableWidth() * pixelsPerMm - 2 * margin;
  Print_Pages(print_texts::tableTitle, wide ? landscape : portrait, pages);
}
