#include "view/redraw.h"

#include <algorithm>
#include <cmath>

#include "objects/net_draw.h"
#include "platform/for_now.h"
#include "state/coordinate_state.h"
#include "state/events.h"
#include "state/global_state.h"
#include "state/map_state.h"
#include "state/mdi_state.h"
#include "state/table_state.h"
#include "store/entry.h"
#include "view/entry_painter.h"
#include "view/faulty_rows.h"
#include "view/overlay.h"
#include "view/picture_cache.h"

namespace {

constexpr int windowGrey = 7;  // colour numbers of the window's ground and pen
constexpr int windowBlue = 9;

bool running = false, wantedAgain = false;

const Overlay net(OverlayLayer::Net, Draw_Grid);

// The scan half mixed with white, so that the entries stand out.
void Lighten(QImage& picture, int width, int height) {
  for (int y = 0; y < std::min(height, picture.height()); ++y) {
    QRgb* line = reinterpret_cast<QRgb*>(picture.scanLine(y));
    for (int x = 0; x < std::min(width, picture.width()); ++x) line[x] = 0xff808080U + ((line[x] >> 1) & 0x7f7f7fU);
  }
}

// The clip of the zoom onto the window: at 100 % and below it has the window's scale already.
void Paint_Clip(QImage& canvas) {
  const auto surface = Make_Surface(canvas);
  surface->Cls(QBColor(windowGrey));
  const MapClipState& clip = Map.MapClip[static_cast<size_t>(Map.ClipLevel)];
  const QRectF source(clip.ClipX, clip.ClipY, clip.ClipWidth, clip.ClipHeight);
  const QRectF target =
      Map.Zoom < 1.0F ? QRectF(0, 0, Map.ViewWidth, Map.ViewHeight) : QRectF(0, 0, clip.ClipWidth, clip.ClipHeight);
  surface->PaintPicture(target, clip.image, source);
}

void Fill_Corner(Surface& surface) {
  if (!Map.HScroller.Visible || !Map.VScroller.Visible) return;
  surface.FilledBox(
      QRectF(Map.ScaleWidth - Map.ScrollBarW, Map.ScaleHeight - Map.ScrollBarH, Map.ScrollBarW, Map.ScrollBarH),
      QBColor(windowGrey));
}

void Show_Counts(const DrawCounts& counts) {
  Map.MarkCount = counts.marked;
  Map.HiddenCount = counts.hidden;
  Map.InactiveCount = counts.inactive;
  frmMDI.HasHidden = counts.hidden > 0;
  frmMDI.HasPlanSquares = counts.planRows > 0;
  frmMDI.RasterShown = counts.planShown > 0 || counts.planUnmarked == 0;
  if (!frmMDI.HasPlanSquares) frmMDI.RasterActive = Map.lblPLQ.Visible = false;
  const QString text = Count_Text(counts.hidden, counts.inactive);
  InfoBar.Panel[2] = text.isEmpty() ? Tbl.DBGrid1.Caption : text;
}

bool Can_Redraw() { return frmMDI.MapOpen && rsEntries && !Map.MapClip[0].image.isNull(); }

void Paint_Ground() {
  const int width = std::max(1, Map.ScaleWidth), height = std::max(1, Map.ScaleHeight);
  if (Map.canvas.size() != QSize(width, height)) Map.canvas = Make_Canvas(width, height);
  Paint_Clip(Map.canvas);
  if (frmMDI.Light) Lighten(Map.canvas, Map.ViewWidth, Map.ViewHeight);
}

// Calls the work with a context on the painted part of the canvas.
template <typename Work>
void On_Canvas(RegionSet* regions, Work&& work) {
  const auto surface = Make_Surface(Map.canvas);
  surface->pen.ForeColor = QBColor(windowBlue);
  const QRectF window(0, 0, Map.ViewWidth, Map.ViewHeight);
  surface->SetClip(window);
  DrawContext context{
      *surface,
      {static_cast<double>(Map.ViewLeft), static_cast<double>(Map.ViewTop), static_cast<double>(Map.Zoom)},
      window,
      regions};
  work(context);
  surface->SetClip({});
  Fill_Corner(*surface);
}

// Ground and entries. What was deleted on the way may have left something behind: then all of it once more.
void Paint_Map() {
  DrawCounts counts;
  do {
    Map.FontMissing = FontQuestion::Ask;
    Delete_Regions();
    Paint_Ground();
    On_Canvas(&Map.EntryRegions, [&counts](DrawContext& context) { counts = Draw_Entries(context); });
  } while (counts.deleted > 0);
  Show_Counts(counts);
}

void Redraw_Once() {
  events.BeforeRedraw.Emit();
  Map.Minimized = false;
  if (!Map.CurBookmark.isEmpty() && rsEntries->HasRow(Map.CurBookmark)) rsEntries->SetBookmark(Map.CurBookmark);
  Paint_Map();
  if (!rsEntries->Eof() && !rsEntries->Bof()) Map.CurBookmark = rsEntries->Bookmark();
  events.AfterRedraw.Emit();
  On_Canvas(nullptr, Draw_Overlays);
}

}  // namespace

void Draw_Background(DrawContext& context) {
  const QImage& scan = Map.MapClip[0].image;
  if (scan.isNull()) return;
  const ViewTransform& view = context.view;
  const QRectF whole(0, 0, scan.width(), scan.height());
  const QRectF seen(view.Left + (context.window.left() - view.originX) * view.Zoom,
                    view.Top + (context.window.top() - view.originY) * view.Zoom, context.window.width() * view.Zoom,
                    context.window.height() * view.Zoom);
  const QRectF source = whole & seen;
  if (source.isEmpty()) return;
  const QRectF target(QPointF(view.X(source.left()), view.Y(source.top())),
                      QPointF(view.X(source.right()), view.Y(source.bottom())));
  context.surface.PaintPicture(target, scan, source);
}

DrawCounts Draw_Entries(DrawContext& context) {
  if (!rsEntries) return {};
  EntryPainter painter(context);
  FaultyRows faulty;
  For_Each_Entry([&] {
    try {
      painter.Draw_Row(*rsEntries);
    } catch (const Error& error) {
      faulty.Meet(error);
    }
  });
  painter.Finish();
  DrawCounts counts = painter.Counts();
  counts.deleted = faulty.Delete();
  return counts;
}

void Draw_Grid(DrawContext& context) {
  if (GridVisible && (Coord.Geographic() || Coord.Metric())) Draw_Net(context, Coord);
}

void Map_Redraw() {
  if (!Can_Redraw()) return;
  if (running) {
    wantedAgain = true;
    return;
  }
  wantedAgain = false;
  {
    const ForNow isRunning(running, true);
    Redraw_Once();
    // A question on the way has let the user go on: another size, another font. Once, whatever the second one asks.
    if (wantedAgain && Can_Redraw()) Redraw_Once();
  }
  events.StateChanged.Emit();
  events.MapPainted.Emit();
}

bool Redraw_Running() { return running; }

void Delete_Regions() { Map.EntryRegions.Clear(); }

QImage Map_Picture_With_Entries() {
  QImage picture = Make_Canvas(MapWidthPx, MapHeightPx);
  if (picture.isNull()) Raise(errors::outOfMemory);
  const auto surface = Make_Surface(picture);
  const QRectF whole(0, 0, MapWidthPx, MapHeightPx);
  DrawContext context{*surface, {}, whole};
  Draw_Background(context);
  Draw_Entries(context);
  Draw_Grid(context);
  return picture;
}

QString Count_Text(int hidden, int inactive) {
  const auto half = [](int count, const QString& what) {
    return count == 0
               ? QString()
               : QString::number(count) + (count == 1 ? QStringLiteral(" Objekt") : QStringLiteral(" Objekte")) + what;
  };
  const QString first = half(hidden, QStringLiteral(" unsichtbar")),
                second = half(inactive, QStringLiteral(" inaktiv"));
  return first + (first.isEmpty() || second.isEmpty() ? QString() : QStringLiteral("  ")) + second;
}

void Connect_Redraw() {
  static int listener = 0;
  Reconnect(events.RedrawWanted, listener, [] { Map_Redraw(); });
  static int closed = 0;
  Reconnect(events.MapClosed, closed, [] {
    Forget_Entry_Pictures();
    Map.LeftFaulty.clear();
  });
}
