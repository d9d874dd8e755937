#include "printing/sheet_painter.h"

#include <QHash>
#include <QImage>
#include <algorithm>
#include <cmath>
#include <optional>
#include <vector>

#include "objects/net_print.h"
#include "state/global_state.h"
#include "store/entry.h"
#include "view/entry_painter.h"
#include "view/redraw.h"

namespace {

constexpr double unitsPerInch = 96;
constexpr double unitsPerMm = pixelsPerMm;
constexpr int bandPixels = 16'000'000;
constexpr qint64 patchBytes = 128LL << 20;
constexpr double resolutions[] = {300, 150, 96};  // of the pictures of transparent fills

// A sheet's surface is as high as its map pixels are wide; the page stretches it where the two differ.
double Stretch(const PrintGeometry& geometry) { return geometry.MapPixelMmY / geometry.MapPixelMm; }

PageView View_Of(const PrintGeometry& geometry, double dpi, PageModes modes) {
  return {dpi / unitsPerInch, dpi / unitsPerInch * Stretch(geometry), {}, modes};
}

// Walks the entries in table order. `visit` draws the current row; false ends the walk.
void Draw_Each(const SheetLook& look, const std::function<bool(qint64 key)>& visit, bool asking) {
  if (!rsEntries) return;
  For_Each_Entry([&] {
    if (EntryId::StoredIsHeader(rsEntries->Text(column::ID))) return Walk::On;
    if (look.goOn && !look.goOn()) throw PrintStopped{};
    try {
      return visit(rsEntries->Key()) ? Walk::On : Walk::Stop;
    } catch (const Error&) {
      if (!asking || !look.failed) return Walk::On;
      const FailedEntry entry{rsEntries->Key(), rsEntries->Text(column::Eintrag), Type_Here().IsFigure()};
      if (!look.failed(entry)) throw PrintStopped{};
      return Walk::On;
    }
  });
}

// What of the sheet (surface units) each transparent entry touches.
using Touched = QHash<qint64, QRectF>;

Touched Find_Combining(const PrintGeometry& geometry, const PrintSheet& sheet, const SheetLook& look) {
  Touched touched;
  const auto probe = Make_Probe_Surface({0, 0, 1e6, 1e6});
  DrawContext context = Sheet_Context(*probe, geometry, sheet, look.fontFactor);
  probe->SetClip(context.window);
  EntryPainter painter(context);
  Draw_Each(
      look,
      [&](qint64 key) {
        painter.Draw_Row(*rsEntries);
        const QRectF area = probe->Take_Combined();
        if (!area.isEmpty()) touched.insert(key, area);
        return true;
      },
      false);
  return touched;
}

struct Patch {
  QRectF target;  // surface units
  QImage picture;
};
using Patches = QHash<qint64, std::vector<Patch>>;

// The pixels that differ, all others clear; a null image if there are none. `at` becomes its place in the image.
QImage Changed_Pixels(const QImage& before, const QImage& after, QPoint& at) {
  QRect changed;
  for (int y = 0; y < after.height(); ++y) {
    const auto* a = reinterpret_cast<const QRgb*>(before.constScanLine(y));
    const auto* b = reinterpret_cast<const QRgb*>(after.constScanLine(y));
    int first = 0, last = after.width() - 1;
    while (first <= last && (a[first] & RGB_MASK) == (b[first] & RGB_MASK)) ++first;
    while (last > first && (a[last] & RGB_MASK) == (b[last] & RGB_MASK)) --last;
    if (first <= last) changed |= QRect(QPoint(first, y), QPoint(last, y));
  }
  if (changed.isEmpty()) return {};
  QImage patch(changed.size(), QImage::Format_ARGB32);
  for (int y = 0; y < changed.height(); ++y) {
    const auto* a = reinterpret_cast<const QRgb*>(before.constScanLine(changed.y() + y)) + changed.x();
    const auto* b = reinterpret_cast<const QRgb*>(after.constScanLine(changed.y() + y)) + changed.x();
    auto* p = reinterpret_cast<QRgb*>(patch.scanLine(y));
    for (int x = 0; x < changed.width(); ++x) p[x] = (a[x] & RGB_MASK) == (b[x] & RGB_MASK) ? 0U : (b[x] | 0xff000000U);
  }
  at = changed.topLeft();
  return patch;
}

// A strip of the sheet as an image, on which the entries are drawn one after the other and the pixels each transparent
// one changes are taken.
class Band {
 public:
  Band(const PrintGeometry& g, const PrintSheet& s, const SheetLook& l, double dpi, const QRectF& stripArea)
      : geometry(g), sheet(s), look(l), view(View_Of(g, dpi, PageModes::Combining)), strip(stripArea) {
    pixels = QRectF(strip.x() * view.scaleX, strip.y() * view.scaleY, strip.width() * view.scaleX,
                    strip.height() * view.scaleY)
                 .toAlignedRect();
    image = QImage(pixels.size(), QImage::Format_RGB32);
    if (image.isNull()) Raise(errors::outOfMemory);
    image.fill(Qt::white);
    view.origin = -QPointF(pixels.topLeft());
  }

  void Collect(const Touched& touched, Patches& patches) {
    qint64 last = 0;
    int left = 0;
    for (auto it = touched.begin(); it != touched.end(); ++it)
      if (it->intersects(strip)) ++left, last = std::max(last, it.key());
    if (left == 0) return;
    if (look.background) {
      Open(PageModes::Combining);
      Draw_Background(*context);
    }
    Draw_Each(
        look,
        [&](qint64 key) {
          const auto hit = touched.constFind(key);
          if (hit == touched.constEnd() || !hit->intersects(strip)) {
            Open(PageModes::Combining);
            painter->Draw_Row(*rsEntries);
            return true;
          }
          Take_Patch(*hit, patches[key]);
          Open(PageModes::Combining);
          painter->Draw_Row(*rsEntries);
          return --left > 0;
        },
        false);
    Close();
  }

 private:
  void Close() {
    painter.reset();
    context.reset();
    surface.reset();
  }
  void Open(PageModes modes) {
    if (surface && opened == modes) return;
    Close();
    opened = modes;
    PageView mine = view;
    mine.modes = modes;
    surface = Make_Page_Surface(image, mine);
    context.emplace(Sheet_Context(*surface, geometry, sheet, look.fontFactor));
    context->window &= strip;
    surface->SetClip(context->window);
    painter.emplace(*context);
  }
  void Take_Patch(const QRectF& area, std::vector<Patch>& found) {
    Close();
    const QRect box =
        QRectF(area.x() * view.scaleX, area.y() * view.scaleY, area.width() * view.scaleX, area.height() * view.scaleY)
            .toAlignedRect()
            .translated(-pixels.topLeft()) &
        image.rect();
    const QImage before = image.copy(box);
    Open(PageModes::CombiningOnly);
    painter->Draw_Row(*rsEntries);
    Close();
    QPoint at;
    const QImage patch = Changed_Pixels(before, image.copy(box), at);
    for (int y = 0; y < box.height(); ++y)
      std::copy_n(reinterpret_cast<const QRgb*>(before.constScanLine(y)), box.width(),
                  reinterpret_cast<QRgb*>(image.scanLine(box.y() + y)) + box.x());
    if (patch.isNull()) return;
    const QPointF place = QPointF(pixels.topLeft() + box.topLeft() + at);
    found.push_back({QRectF(place.x() / view.scaleX, place.y() / view.scaleY, patch.width() / view.scaleX,
                            patch.height() / view.scaleY),
                     patch});
  }

  const PrintGeometry& geometry;
  const PrintSheet& sheet;
  const SheetLook& look;
  PageView view;
  QRectF strip;
  QRect pixels;  // of the page at this resolution
  QImage image;
  std::unique_ptr<Surface> surface;
  std::optional<DrawContext> context;
  std::optional<EntryPainter> painter;
  PageModes opened = PageModes::Combining;
};

Patches Make_Patches(const PrintGeometry& geometry, const PrintSheet& sheet, const SheetLook& look,
                     const Touched& touched) {
  QRectF all;
  for (const QRectF& area : touched) all |= area;
  Patches patches;
  for (const double dpi : resolutions) {
    patches.clear();
    const PageView view = View_Of(geometry, dpi, PageModes::Combining);
    const double rows = std::max(64.0, bandPixels / std::max(1.0, all.width() * view.scaleX));
    const double height = rows / view.scaleY;
    for (double y = all.top(); y < all.bottom(); y += height) {
      const QRectF strip = QRectF(all.left(), y, all.width(), height) & all;
      Band(geometry, sheet, look, dpi, strip).Collect(touched, patches);
    }
    qint64 bytes = 0;
    for (const auto& row : patches)
      for (const Patch& patch : row) bytes += patch.picture.sizeInBytes();
    if (bytes <= patchBytes) break;
  }
  return patches;
}

// Lines over the entries, labels in the margins round them.
void Draw_Sheet_Net(DrawContext context, const PrintGeometry& g, const PrintSheet& sheet) {
  if (!GridVisible || Coord.Grid == gridNone) return;
  const double stretch = Stretch(g);
  context.surface.SetClip({});
  const QRectF printed = Sheet_Context(context.surface, g, sheet, context.fontScale).window;
  Print_Net(context, Coord, printed,
            {g.marginLeft * unitsPerMm, g.marginTop * unitsPerMm / stretch, g.marginRight * unitsPerMm,
             g.marginBottom * unitsPerMm / stretch});
}

}  // namespace

DrawContext Sheet_Context(Surface& surface, const PrintGeometry& g, const PrintSheet& sheet, double fontFactor) {
  const double stretch = Stretch(g);
  const QRectF target = Sheet_Target(g, sheet), source = Sheet_Source(g, sheet);
  ViewTransform view;
  view.Left = source.left();
  view.Top = source.top();
  view.Zoom = 1 / (g.MapPixelMm * unitsPerMm);
  view.whole = false;
  view.originX = target.left() * unitsPerMm;
  view.originY = target.top() * unitsPerMm / stretch;
  const QRectF window(view.originX, view.originY, target.width() * unitsPerMm, target.height() * unitsPerMm / stretch);
  DrawContext context{surface, view, window};
  context.fontScale = fontFactor;
  return context;
}

void Draw_Sheet(QPainter& page, int dpi, const PrintGeometry& geometry, const PrintSheet& sheet,
                const SheetLook& look) {
  const Touched touched = look.entries ? Find_Combining(geometry, sheet, look) : Touched();
  const Patches patches = touched.isEmpty() ? Patches() : Make_Patches(geometry, sheet, look, touched);
  const auto surface =
      Make_Page_Surface(page, View_Of(geometry, dpi, touched.isEmpty() ? PageModes::AsCopy : PageModes::CopyOnly));
  DrawContext context = Sheet_Context(*surface, geometry, sheet, look.fontFactor);
  surface->SetClip(context.window);
  if (look.background) Draw_Background(context);
  EntryPainter painter(context);
  if (look.entries)
    Draw_Each(
        look,
        [&](qint64 key) {
          if (const auto found = patches.constFind(key); found != patches.constEnd())
            for (const Patch& patch : *found) surface->PaintPicture(patch.target, patch.picture);
          painter.Draw_Row(*rsEntries);
          return true;
        },
        true);
  painter.Finish();
  if (look.net) Draw_Sheet_Net(context, geometry, sheet);
}

void Draw_Sheet_Image(QImage& image, double dpi, const QRectF& area, const PrintGeometry& geometry,
                      const PrintSheet& sheet, const SheetLook& look) {
  PageView view = View_Of(geometry, dpi, PageModes::Combining);
  view.origin = -QPointF(area.left() * dpi / 25.4, area.top() * dpi / 25.4);
  const auto surface = Make_Page_Surface(image, view);
  DrawContext context = Sheet_Context(*surface, geometry, sheet, look.fontFactor);
  context.window &= surface->Extent();
  surface->SetClip(context.window);
  if (look.background) Draw_Background(context);
  if (!look.entries) return;
  EntryPainter painter(context);
  Draw_Each(
      look, [&](qint64) { return painter.Draw_Row(*rsEntries), true; }, true);
  painter.Finish();
}
