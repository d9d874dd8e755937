#include "view/map_paint.h"

#include <QHash>
#include <algorithm>
#include <array>
#include <utility>

#include "platform/surface.h"
#include "state/global_state.h"
#include "state/map_state.h"
#include "state/mdi_state.h"
#include "state/on_reset.h"
#include "view/draw_rows.h"
#include "view/entry_index.h"
#include "view/map_copies.h"

namespace {

constexpr int windowGrey = 7;  // colour numbers of the window's ground and pen
constexpr int windowBlue = 9;

// What the entries look like besides what their rows say, and which part of the map is seen.
struct Looks {
  float zoom = 0;
  QPoint corner;  // of the view, map pixels
  QSize window, view;
  qint64 scan = 0;
  std::array<bool, 6> switches{};
  std::array<double, 3> references{};
  std::array<QRgb, 16> palette{};
  bool operator==(const Looks&) const = default;
};

// The picture as it was painted last, without overlays, and with which looks. Kept for large tables alone.
struct Painted {
  QImage picture, aside;  // the second one is drawn into while a part is painted anew
  Looks looks;
  DrawCounts counts;  // those of the raster serve on
};
Painted painted;
EntryIndex entryIndex;
const OnReset fresh(painted, entryIndex);
constexpr qsizetype mostChanges = 32;    // written rows; beyond it all is painted
constexpr double mostOfTheWindow = 0.6;  // painted anew; beyond it all is

Looks Looks_Now() {
  Looks looks;
  looks.zoom = Map.Zoom;
  looks.corner = {Map.ViewLeft, Map.ViewTop};
  looks.window = {Map.ScaleWidth, Map.ScaleHeight};
  looks.view = {Map.ViewWidth, Map.ViewHeight};
  looks.scan = Map.MapClip[static_cast<size_t>(Map.ClipLevel)].image.cacheKey();
  looks.switches = {frmMDI.Light,        frmMDI.showHidden, frmMDI.showTexts,
                    frmMDI.showPictures, frmMDI.overview,   Map.Perspex};
  looks.references = {static_cast<double>(Map.ReferenceWidth), Map.ReferenceCircle, Map.ReferenceArrow};
  looks.palette = Palette;
  return looks;
}

// The scan half mixed with white, so that the entries stand out.
void Lighten(QImage& picture, const QRect& part) {
  const QRect area = part & picture.rect();
  for (int y = area.top(); y <= area.bottom(); ++y) {
    QRgb* line = reinterpret_cast<QRgb*>(picture.scanLine(y));
    for (int x = area.left(); x <= area.right(); ++x) line[x] = 0xff808080U + ((line[x] >> 1) & 0x7f7f7fU);
  }
}

// The clip of the zoom onto that part of the window: at 100 % and below it has the window's scale already.
void Paint_Clip(QImage& canvas, const QRect& part) {
  const auto surface = Make_Surface(canvas);
  surface->SetClip(QRectF(part));
  surface->FilledBox(QRectF(part), QBColor(windowGrey));
  const MapClipState& clip = Map.MapClip[static_cast<size_t>(Map.ClipLevel)];
  Prepare_Clip(QRect(clip.ClipX, clip.ClipY, clip.ClipWidth, clip.ClipHeight));
  const QRectF source(clip.ClipX, clip.ClipY, clip.ClipWidth, clip.ClipHeight);
  const QRectF target =
      Map.Zoom < 1.0F ? QRectF(0, 0, Map.ViewWidth, Map.ViewHeight) : QRectF(0, 0, clip.ClipWidth, clip.ClipHeight);
  surface->PaintPicture(target, clip.image, source);
}

void Paint_Ground(QImage& canvas, const QRect& part) {
  Paint_Clip(canvas, part);
  if (frmMDI.Light) Lighten(canvas, part & QRect(0, 0, Map.ViewWidth, Map.ViewHeight));
}

// Calls the work with a context on the view.
template <typename Work>
void On_View(QImage& canvas, RegionSet* regions, Work&& work) {
  const auto surface = Make_Surface(canvas);
  surface->pen.ForeColor = QBColor(windowBlue);
  const QRectF window(0, 0, Map.ViewWidth, Map.ViewHeight);
  surface->SetClip(window);
  DrawContext context{
      *surface,
      {static_cast<double>(Map.ViewLeft), static_cast<double>(Map.ViewTop), static_cast<double>(Map.Zoom)},
      window,
      regions};
  work(context);
}

QRect View_Rect() { return {0, 0, Map.ViewWidth, Map.ViewHeight}; }

// The part of the map that a part of the window shows.
QRectF Map_Part(const QRect& part) {
  const auto zoom = static_cast<double>(Map.Zoom);
  return {part.left() * zoom + Map.ViewLeft, part.top() * zoom + Map.ViewTop, part.width() * zoom,
          part.height() * zoom};
}

// What the index knows of all rows, in place of what was met.
void Take_Counts(DrawCounts& counts) {
  counts.hidden = entryIndex.Counts().hidden;
  counts.inactive = entryIndex.Counts().inactive;
  counts.marked = entryIndex.Counts().marked;
}

// The entries of the window: all rows of a small table, of a large one those that may be seen.
DrawCounts Draw_Seen_Entries(DrawContext& context) {
  if (!entryIndex.Follow()) return Draw_Entries(context);
  DrawCounts counts = Draw_Rows(context, entryIndex.Rows_In(Map_Part(View_Rect()), static_cast<double>(Map.Zoom)));
  Take_Counts(counts);
  return counts;
}

// What of the window the changed entries touched and touch; nothing where that is too much, or not known.
std::optional<std::vector<QRect>> Changed_Parts(const std::vector<EntryChange>& changes) {
  const auto zoom = static_cast<double>(Map.Zoom);
  std::vector<QRect> parts;
  for (const EntryChange& change : changes)
    for (const auto& reach : {change.before, change.after}) {
      if (!reach) continue;
      if (reach->Everywhere()) return std::nullopt;
      const QRectF area = reach->At(zoom);
      QRect part = QRectF(QPointF((area.left() - Map.ViewLeft) / zoom, (area.top() - Map.ViewTop) / zoom),
                          QPointF((area.right() - Map.ViewLeft) / zoom, (area.bottom() - Map.ViewTop) / zoom))
                       .toAlignedRect() &
                   View_Rect();
      if (part.isEmpty()) continue;
      // Each pixel is painted once: parts that meet are one.
      for (auto other = parts.begin(); other != parts.end();) {
        if (!other->intersects(part)) {
          ++other;
          continue;
        }
        part |= *other;
        parts.erase(other);
        other = parts.begin();
      }
      parts.push_back(part);
    }
  double area = 0;
  for (const QRect& part : parts) area += static_cast<double>(part.width()) * part.height();
  if (area > mostOfTheWindow * Map.ViewWidth * Map.ViewHeight) return std::nullopt;
  return parts;
}

void Copy_Part(const QImage& from, QImage& to, const QRect& part) {
  for (int y = part.top(); y <= part.bottom(); ++y)
    std::copy_n(reinterpret_cast<const QRgb*>(from.constScanLine(y)) + part.left(), part.width(),
                reinterpret_cast<QRgb*>(to.scanLine(y)) + part.left());
}

// Paints that part anew, into the picture without overlays. Takes the hit regions of the changed entries out of it.
// False if an entry was deleted on the way. The rows are drawn as a whole, aside: cut at the part's edge, a wide line
// would lose pixels there.
bool Paint_Part(QImage& picture, QImage& aside, const QRect& part, QHash<qint64, std::vector<EntryRegion>>& changed) {
  RegionSet regions;
  DrawCounts counts;
  Paint_Ground(aside, part);
  On_View(aside, &regions, [&](DrawContext& context) {
    counts = Draw_Rows(context, entryIndex.Rows_In(Map_Part(part), static_cast<double>(Map.Zoom)));
  });
  Copy_Part(aside, picture, part);
  QHash<qint64, std::vector<EntryRegion>> met;
  for (int i = 1; i <= regions.Count(); ++i)
    if (changed.contains(regions.Row(i).key)) met[regions.Row(i).key].push_back(regions.Row(i));
  for (auto it = met.begin(); it != met.end(); ++it) changed[it.key()] = std::move(*it);
  return counts.deleted == 0;
}

}  // namespace

DrawCounts Paint_Map() {
  DrawCounts counts;
  QImage aside = std::move(painted.aside);
  painted = {};
  // What was deleted on the way may have left something behind: then all of it once more.
  do {
    Map.FontMissing = FontQuestion::Ask;
    Map.EntryRegions.Clear();
    const int width = std::max(1, Map.ScaleWidth), height = std::max(1, Map.ScaleHeight);
    if (Map.canvas.size() != QSize(width, height)) Map.canvas = Make_Canvas(width, height);
    Paint_Ground(Map.canvas, Map.canvas.rect());
    On_View(Map.canvas, &Map.EntryRegions, [&counts](DrawContext& context) { counts = Draw_Seen_Entries(context); });
  } while (counts.deleted > 0);
  if (entryIndex.Is_There()) painted = {Map.canvas, std::move(aside), Looks_Now(), counts};
  return counts;
}

std::optional<DrawCounts> Paint_Changes() {
  if (painted.picture.isNull() || !(painted.looks == Looks_Now()) || !entryIndex.Follow() || !entryIndex.Changes())
    return std::nullopt;
  const std::vector<EntryChange> changes = *entryIndex.Changes();
  if (std::ssize(changes) > mostChanges) return std::nullopt;
  const auto parts = Changed_Parts(changes);
  if (!parts) return std::nullopt;
  const Looks looks = painted.looks;
  DrawCounts counts = painted.counts;
  Map.FontMissing = FontQuestion::Ask;
  QImage picture = std::exchange(painted.picture, {}), aside = std::exchange(painted.aside, {});
  if (aside.size() != picture.size()) aside = Make_Canvas(picture.width(), picture.height());
  QHash<qint64, std::vector<EntryRegion>> changed;
  for (const EntryChange& change : changes) changed[change.key];
  for (const QRect& part : *parts)
    if (!Paint_Part(picture, aside, part, changed)) return std::nullopt;
  Map.EntryRegions.Widen();
  for (auto it = changed.begin(); it != changed.end(); ++it) Map.EntryRegions.Exchange(it.key(), std::move(*it));
  Map.canvas = picture;
  Take_Counts(counts);
  painted = {std::move(picture), std::move(aside), looks, counts};
  return counts;
}

void Paint_Over(const std::function<void(DrawContext&)>& draw) { On_View(Map.canvas, nullptr, draw); }

void Forget_Painted() {
  painted = {};
  entryIndex = {};
}
