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
#include "view/map_paint.h"
#include "view/overlay.h"
#include "view/picture_cache.h"

namespace {

constexpr int windowGrey = 7;  // colour numbers of the window's ground and pen

bool running = false, wantedAgain = false;

const Overlay net(OverlayLayer::Net, Draw_Grid);

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

enum class Wanted { All, Changes };

void Redraw_Once(Wanted wanted) {
  events.BeforeRedraw.Emit();
  Map.Minimized = false;
  if (!Map.CurBookmark.isEmpty() && rsEntries->HasRow(Map.CurBookmark)) rsEntries->SetBookmark(Map.CurBookmark);
  const auto counts = wanted == Wanted::Changes ? Paint_Changes() : std::nullopt;
  Show_Counts(counts ? *counts : Paint_Map());
  if (!rsEntries->Eof() && !rsEntries->Bof()) Map.CurBookmark = rsEntries->Bookmark();
  events.AfterRedraw.Emit();
  Paint_Over(Draw_Overlays);
  Fill_Corner(*Make_Surface(Map.canvas));
}

void Redraw(Wanted wanted) {
  if (!Can_Redraw()) return;
  if (running) {
    wantedAgain = true;
    return;
  }
  wantedAgain = false;
  {
    const ForNow isRunning(running, true);
    Redraw_Once(wanted);
    // A question on the way has let the user go on: another size, another font. Once, whatever the second one asks.
    if (wantedAgain && Can_Redraw()) Redraw_Once(Wanted::All);
  }
  events.StateChanged.Emit();
  events.MapPainted.Emit();
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

void Draw_Grid(DrawContext& context) {
  if (GridVisible && (Coord.Geographic() || Coord.Metric())) Draw_Net(context, Coord);
}

void Map_Redraw() { Redraw(Wanted::All); }

void Redraw_Changed_Entries() { Redraw(Wanted::Changes); }

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
  static int changesListener = 0;
  Reconnect(events.ChangedEntriesWanted, changesListener, [] { Redraw_Changed_Entries(); });
  static int closed = 0;
  Reconnect(events.MapClosed, closed, [] {
    Forget_Entry_Pictures();
    Forget_Painted();
    Map.LeftFaulty.clear();
  });
}
