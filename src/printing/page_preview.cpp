#include "printing/page_preview.h"

#include <QPainter>
#include <algorithm>
#include <cmath>

#include "platform/error.h"
#include "printing/print_map.h"
#include "printing/sheet_painter.h"
#include "state/global_state.h"
#include "state/map_state.h"
#include "state/on_reset.h"
#include "store/entry.h"
#include "view/reduce.h"

namespace {

constexpr int reducedPixels = 1200;  // of the longer side
constexpr double gap = 12;           // mm between the cells
constexpr double rulerMm = 10, closest = 3;
const QRgb around = qRgb(128, 128, 128), edge = qRgb(64, 64, 64), room = qRgb(90, 120, 200),
           ruler = qRgb(120, 120, 120);

// A reduced copy the view has made already, else a new one.
QImage Reduced_Scan() {
  const QImage& scan = Map.MapClip[0].image;
  if (scan.isNull()) Raise(errors::badPicture);
  const int longest = std::max(scan.width(), scan.height());
  if (longest <= reducedPixels) return scan;
  const QImage* source = &scan;
  for (const MapClipState& clip : Map.MapClip) {
    const int size = std::max(clip.image.width(), clip.image.height());
    if (clip.factor > 0 && size >= reducedPixels && size < std::max(source->width(), source->height()))
      source = &clip.image;
  }
  return Reduced_Picture(*source, static_cast<double>(std::max(source->width(), source->height())) / reducedPixels);
}

std::vector<PreviewMap::Dot> Entry_Dots() {
  std::vector<PreviewMap::Dot> dots;
  if (!rsEntries) return dots;
  For_Each_Entry([&dots] {
    if (Type_Here().hidden || EntryId::StoredIsHeader(rsEntries->Text(column::ID))) return;
    dots.push_back(
        {QPoint(Stored_Number(rsEntries->Integer(column::Xmap)), Stored_Number(rsEntries->Integer(column::Ymap))),
         Color_Of(rsEntries->Integer(column::VG))});
  });
  return dots;
}

struct Cells {
  const PrintGeometry& geometry;
  const Paper& paper;
  QPointF Corner(int column, int row) const {
    return {gap + column * (paper.widthMm + gap), gap + row * (paper.heightMm + gap)};
  }
  QRectF Target(const PrintSheet& sheet) const {
    return Sheet_Target(geometry, sheet)
        .translated(Corner(sheet.column, sheet.row) + QPointF(paper.unprintableX, paper.unprintableY));
  }
};

// Ticks along the upper and left edge of a sheet, every 10 mm of paper, or wider apart where these would run together.
void Linieren(QPainter& painter, const QRectF& sheet, double scale) {
  double step = rulerMm;
  while (step * scale < closest) step *= 5;
  const double length = 4 / scale;
  painter.setPen(QPen(QColor::fromRgb(ruler), 0));
  for (double x = step; x < sheet.width(); x += step)
    painter.drawLine(sheet.topLeft() + QPointF(x, 0), sheet.topLeft() + QPointF(x, length));
  for (double y = step; y < sheet.height(); y += step)
    painter.drawLine(sheet.topLeft() + QPointF(0, y), sheet.topLeft() + QPointF(length, y));
}

void Draw_Cell(QPainter& painter, const Cells& cells, const PrintSheet& sheet, const PreviewMap& map, QSize pixels,
               double scale) {
  const QRectF paper(cells.Corner(sheet.column, sheet.row), QSizeF(cells.paper.widthMm, cells.paper.heightMm));
  painter.fillRect(paper, Qt::white);
  const QRectF source = Sheet_Source(cells.geometry, sheet);
  const double x = static_cast<double>(map.picture.width()) / pixels.width(),
               y = static_cast<double>(map.picture.height()) / pixels.height();
  painter.drawImage(cells.Target(sheet), map.picture,
                    QRectF(source.x() * x, source.y() * y, source.width() * x, source.height() * y));
  painter.setBrush(Qt::NoBrush);
  painter.setPen(QPen(QColor::fromRgb(room), 0, Qt::DashLine));
  const QPointF corner(cells.paper.unprintableX + cells.geometry.marginLeft,
                       cells.paper.unprintableY + cells.geometry.marginTop);
  painter.drawRect(QRectF(paper.topLeft() + corner, QSizeF(cells.geometry.PageWidthMm, cells.geometry.PageHeightMm)));
  painter.setPen(QPen(QColor::fromRgb(edge), 0));
  painter.drawRect(paper);
  Linieren(painter, paper, scale);
}

void Draw_Dots(QPainter& painter, const Cells& cells, const std::vector<PrintSheet>& sheets, const PreviewMap& map,
               double scale) {
  const PrintGeometry& g = cells.geometry;
  const double size = 3 / scale;
  for (const PreviewMap::Dot& dot : map.dots) {
    const QPointF mm(dot.at.x() * g.MapPixelMm, dot.at.y() * g.MapPixelMmY);
    const int column = static_cast<int>(std::clamp(mm.x() / g.PageWidthMm, 0.0, g.across - 1.0));
    const int row = static_cast<int>(std::clamp(mm.y() / g.PageHeightMm, 0.0, g.down - 1.0));
    const PrintSheet& sheet = sheets[static_cast<size_t>(row * g.across + column)];
    const QPointF at = cells.Target(sheet).topLeft() + mm - QPointF(sheet.PageDrawX, sheet.PageDrawY);
    painter.fillRect(QRectF(at.x() - size / 2, at.y() - size / 2, size, size), QColor::fromRgb(dot.color));
  }
}

}  // namespace

PreviewMap Make_Preview_Map(const std::function<bool()>& goOn) {
  const auto ask = [&goOn] {
    if (goOn && !goOn()) throw PrintStopped{};
  };
  ask();
  PreviewMap map{Reduced_Scan(), {}};
  ask();
  map.dots = Entry_Dots();
  return map;
}

QSizeF Preview_Size(const PrintGeometry& g, const Paper& paper) {
  return {gap + g.across * (paper.widthMm + gap), gap + g.down * (paper.heightMm + gap)};
}

QImage Draw_Preview(const PreviewMap& map, const PrintGeometry& geometry, const Paper& paper, QSize size,
                    const QRectF& part, QRectF* shown) {
  QImage image(size.expandedTo({1, 1}), QImage::Format_RGB32);
  if (image.isNull()) Raise(errors::outOfMemory);
  image.fill(around);
  if (!geometry.valid || map.picture.isNull()) return image;
  const QRectF whole(QPointF(0, 0), Preview_Size(geometry, paper));
  const QRectF seen = part.isEmpty() ? whole : part & whole;
  if (seen.isEmpty()) return image;
  const double scale = std::min(image.width() / seen.width(), image.height() / seen.height());
  const QPointF corner(seen.center().x() - image.width() / scale / 2, seen.center().y() - image.height() / scale / 2);
  const QRectF window(corner, QSizeF(image.width() / scale, image.height() / scale));
  if (shown) *shown = window;
  QPainter painter(&image);
  painter.scale(scale, scale);
  painter.translate(-corner);
  painter.setRenderHint(QPainter::SmoothPixmapTransform);
  const std::vector<PrintSheet> sheets = Sheet_Walk(geometry);
  const Cells cells{geometry, paper};
  const QSize pixels(MapWidthPx, MapHeightPx);
  for (const PrintSheet& sheet : sheets)
    if (QRectF(cells.Corner(sheet.column, sheet.row), QSizeF(paper.widthMm, paper.heightMm)).intersects(window))
      Draw_Cell(painter, cells, sheet, map, pixels, scale);
  Draw_Dots(painter, cells, sheets, map, scale);
  return image;
}

namespace {

// Settings as they were read last: the frame is asked for with every redraw.
struct SettingsRead {
  PrintSettings settings;
  qint64 changes = -1;  // of the database then
  bool net = false;
};
SettingsRead lastRead;
const OnReset fresh(lastRead);

}  // namespace

SheetFrame Sheet_Frame_Of_Map() {
  if (!dbEntries || !rsEntries || rsEntries->Editing()) return {};
  if (lastRead.changes != dbEntries->ChangeCount() || lastRead.net != GridVisible)
    lastRead = {Read_Print_Settings(), dbEntries->ChangeCount(), GridVisible};
  const PrintSettings& settings = lastRead.settings;
  const PrintGeometry g = Print_Geometry(settings, The_Printer().paper(settings.orientation), Map_To_Print());
  SheetFrame frame;
  if (!g.valid) return frame;
  for (int i = 0; i <= g.across; ++i) frame.x.push_back(std::min<double>(MapWidthPx, i * g.PageWidthMm / g.MapPixelMm));
  for (int i = 0; i <= g.down; ++i)
    frame.y.push_back(std::min<double>(MapHeightPx, i * g.PageHeightMm / g.MapPixelMmY));
  return frame;
}
