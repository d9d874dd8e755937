#include "view/view.h"

#include <QImage>
#include <algorithm>
#include <cmath>

#include "platform/for_now.h"
#include "platform/text.h"
#include "state/dialog_hooks.h"
#include "state/events.h"
#include "state/global_state.h"
#include "state/map_state.h"
#include "state/mdi_state.h"
#include "state/on_reset.h"
#include "state/table_state.h"
#include "store/entry.h"
#include "view/map_copies.h"
#include "view/redraw.h"

namespace {

constexpr int barThickness = 20;  // window pixels
constexpr int overhangAllowed = 3;
constexpr int leastMapHeight = 100;
constexpr float zoomMin = 0.125F, zoomMax = 20.0F;
bool layingOut = false;  // the windows are taking their places

MapClipState& Current_Clip() { return Map.MapClip[static_cast<size_t>(Map.ClipLevel)]; }

// Map pixels per pixel of the current clip.
double Clip_Unit() { return Map.Zoom > 1.0F ? static_cast<double>(Map.Zoom) : 1.0; }

void Hide_Floating() {
  Map.Text2.Visible = false;
  Map.imgRfLine.Visible = false;
  Map.imgBild.Visible = false;
  Map.lblShape.Visible = false;
}

struct MapPoint {
  double x = 0, y = 0;
};

// Map position under a window position, uncut.
MapPoint Map_Position(double windowX, double windowY) {
  const auto zoom = static_cast<double>(Map.Zoom);
  return {windowX * zoom + Map.ViewLeft, windowY * zoom + Map.ViewTop};
}

MapPoint View_Centre() { return Map_Position(Map.ViewWidth / 2.0, Map.ViewHeight / 2.0); }

void Follow_Bar(ScrollState& bar, int clipStart, float unit) {
  bar.Value =
      !bar.Visible || unit <= 0
          ? 0
          : std::clamp(static_cast<int>(std::lround(clipStart * Clip_Unit() / static_cast<double>(unit))), 0, bar.Max);
}

// Puts the clip so that the map position stands at its upper left corner, as far as the scan reaches.
void Place_Clip(double mapLeft, double mapTop) {
  MapClipState& clip = Current_Clip();
  const double unit = Clip_Unit();
  const auto fit = [unit](double position, int extent, int size) {
    return std::clamp(static_cast<int>(std::lround(position / unit)), 0, std::max(0, size - extent));
  };
  clip.ClipX = fit(mapLeft, clip.ClipWidth, clip.image.width());
  clip.ClipY = fit(mapTop, clip.ClipHeight, clip.image.height());
  Map.ViewLeft = static_cast<int>(std::lround(clip.ClipX * unit));
  Map.ViewTop = static_cast<int>(std::lround(clip.ClipY * unit));
  Follow_Bar(Map.HScroller, clip.ClipX, Map.ScrollUnitX);
  Follow_Bar(Map.VScroller, clip.ClipY, Map.ScrollUnitY);
}

// Which bars are needed. Each takes room from the other direction, so the second look counts the first one's bar in.
// The overhang is counted at the zoom itself below 100 % too: otherwise an enlarged map could not be scrolled to its
// end.
void Choose_Bars(double& overX, double& overY) {
  const auto zoom = static_cast<double>(Map.Zoom);
  Map.ScrollBarW = Map.ScrollBarH = 0;
  for (int pass = 0; pass < 2; ++pass) {
    overX = MapWidthPx - (Map.ScaleWidth - Map.ScrollBarW) * zoom;
    overY = MapHeightPx - (Map.ScaleHeight - Map.ScrollBarH) * zoom;
    Map.ScrollBarH = overX > overhangAllowed ? barThickness : 0;
    Map.ScrollBarW = overY > overhangAllowed ? barThickness : 0;
  }
  overX = MapWidthPx - (Map.ScaleWidth - Map.ScrollBarW) * zoom;
  overY = MapHeightPx - (Map.ScaleHeight - Map.ScrollBarH) * zoom;
}

void Size_Clip() {
  MapClipState& clip = Current_Clip();
  const double scale = Map.Zoom < 1.0F ? static_cast<double>(Map.Zoom) : 1.0;  // clip pixels per window pixel
  const auto extent = [scale](int room, int size) {
    return std::clamp(static_cast<int>(std::ceil(room * scale)), 1, std::max(1, size));
  };
  clip.ClipWidth = extent(Map.ScaleWidth - Map.ScrollBarW, clip.image.width());
  clip.ClipHeight = extent(Map.ScaleHeight - Map.ScrollBarH, clip.image.height());
  Map.ViewWidth = static_cast<int>(std::lround(clip.ClipWidth / scale));
  Map.ViewHeight = static_cast<int>(std::lround(clip.ClipHeight / scale));
}

void Set_Bars(MapPoint centre) {
  double overX = 0, overY = 0;
  Choose_Bars(overX, overY);
  Map.HScroller.Visible = Map.ScrollBarH > 0;
  Map.VScroller.Visible = Map.ScrollBarW > 0;
  Map.HScroller.Max = Map.VScroller.Max = 100;
  Map.ScrollUnitX = static_cast<float>(std::max(0.0, overX) / 100);
  Map.ScrollUnitY = static_cast<float>(std::max(0.0, overY) / 100);
  Size_Clip();
  const auto zoom = static_cast<double>(Map.Zoom);
  Place_Clip(centre.x - Map.ViewWidth * zoom / 2, centre.y - Map.ViewHeight * zoom / 2);
}

bool Table_Below() { return frmMDI.TblVisible && !Tbl.Minimized && !Map.Maximized; }

// What the table leaves when it is as low as it can be.
int Most_Above_Table() {
  return Table_Below() ? std::max(leastMapHeight, frmMDI.InnerHeight - Tbl.LeastHeight) : frmMDI.InnerHeight;
}

// Room for the map window above the table: where the table is shown a high map leaves it a quarter.
int Room_Above_Table() {
  if (!Table_Below()) return frmMDI.InnerHeight;
  return std::min(frmMDI.InnerHeight * 75 / 100, Most_Above_Table());
}

// Size of the map window in the normal state: as large as the scan, within the main window, with room for the table.
void Choose_Window_Size() {
  if (Map.Maximized) {
    Map.WantWidth = Map.WantHeight = 0;
    return;
  }
  const auto zoom = static_cast<double>(Map.Zoom);
  const int width = static_cast<int>(std::ceil(MapWidthPx / zoom)),
            height = static_cast<int>(std::ceil(MapHeightPx / zoom));
  Map.Left = Map.Top = 0;
  Map.WantWidth = std::min(width, frmMDI.InnerWidth);
  Map.WantHeight = std::min(height, frmMDI.InnerHeight);
  if (Map.WantHeight > std::min(frmMDI.InnerHeight * 8 / 10, Most_Above_Table()))
    Map.WantHeight = std::min(Map.WantHeight, Room_Above_Table());
  if (width > Map.WantWidth && height <= Map.WantHeight)
    Map.WantHeight = std::min(height + barThickness, Most_Above_Table());
  if (height > Map.WantHeight && width <= Map.WantWidth)
    Map.WantWidth = std::min(width + barThickness, frmMDI.InnerWidth);
  Map.ScaleWidth = std::max(1, Map.WantWidth);
  Map.ScaleHeight = std::max(1, Map.WantHeight);
}

// False without a window that can be seen: nothing is laid out then.
bool Lay_Out_Around(MapPoint centre) {
  if (!Map.Visible || Map.Minimized || Map.MapClip[0].image.isNull()) return false;
  const BusyPointer busy;
  Map.imgRfLine.Visible = false;
  Map.Text2.Visible = false;
  if (Map.Zoom == 0.0F) Map.Zoom = 1.0F;
  if (Current_Clip().image.isNull()) Choose_Clip();
  Choose_Window_Size();
  Set_Bars(centre);
  {
    // The window takes the place it is given, or what there is room for: it is painted for that, once.
    const ForNow settling(layingOut, true);
    events.StateChanged.Emit();
  }
  Set_Bars(centre);
  Map_Redraw();
  return true;
}

void Apply_Zoom(float factor, MapPoint centre) {
  Map.Zoom = std::clamp(factor, zoomMin, zoomMax);
  frmMDI.Caption = QStringLiteral("FLURAX - %1%").arg(Zoom_Percent());
  if (Zoom_Percent() >= 100) {
    Map.ClipLevel = 0;
    FensterSize();
  }
  ReduceMap();
  InfoBar.Zoom = QStringLiteral("%1 %").arg(Zoom_Percent());
  if (!Lay_Out_Around(centre)) events.StateChanged.Emit();
}

}  // namespace

void Set_Map_Picture(const QImage& picture) {
  Clear_Map_Picture();
  Map.MapClip[0].image = picture;
  Map.MapClip[0].factor = 1;
}

void Clear_Map_Picture() {
  Map.FontsAsked.clear();
  Forget_Copies();
  for (MapClipState& clip : Map.MapClip) clip = {};
  Map.ClipLevel = 0;
  Map.ViewLeft = Map.ViewTop = 0;
  Map.HScroller = Map.VScroller = {};
}

void Set_Zoom(double factor) {
  const float wanted = std::clamp(static_cast<float>(factor), zoomMin, zoomMax);
  // Nothing is laid out: a window that took all the room now would keep it, and cover the table.
  if (wanted == Map.Zoom) return events.HandHidden.Emit();
  Fit_Map_Window();
  Hide_Floating();
  Apply_Zoom(wanted, View_Centre());
}

void Clear_Zoom_Checks() { Map.ZoomMenu.clear(); }

void Set_Zoom_By_Menu(const QString& menuName) {
  static const std::map<QString, double> fixed = {
      {QStringLiteral("mnuZoom200"), 0.5},       {QStringLiteral("mnuZoom100"), 1.0},
      {QStringLiteral("mnuZoom75"), 100.0 / 75}, {QStringLiteral("mnuZoom50"), 2.0},
      {QStringLiteral("mnuZoom25"), 4.0},        {QStringLiteral("mnuZoom10"), 10.0}};
  if (!frmMDI.MapOpen || MapWidthPx < 1 || MapHeightPx < 1) return;
  Clear_Zoom_Checks();
  const auto found = fixed.find(menuName);
  if (found != fixed.end()) {
    Set_Zoom(found->second);
  } else {
    // The map's full width or height: where the other direction needs a bar, its room is taken off.
    const bool width = menuName == QLatin1String("mnuZoomBreite");
    const double size = width ? MapWidthPx : MapHeightPx, other = width ? MapHeightPx : MapWidthPx;
    const int room = width ? frmMDI.InnerWidth : Room_Above_Table(),
              otherRoom = width ? Room_Above_Table() : frmMDI.InnerWidth;
    const double full = size / std::max(1, room);
    const bool bar = other / full > otherRoom + overhangAllowed / full;
    Set_Zoom(bar ? size / std::max(1, room - barThickness) : full);
  }
  Map.ZoomMenu = menuName;
  events.StateChanged.Emit();
}

void Zoom_Map() { Apply_Zoom(Map.Zoom == 0.0F ? 1.0F : Map.Zoom, View_Centre()); }

// Around a place far outside: the centre of the window would move down by what the table takes from it meanwhile.
void Zoom_Map_From_Corner() {
  constexpr double outside = -1e6;
  Apply_Zoom(Map.Zoom == 0.0F ? 1.0F : Map.Zoom, {outside, outside});
}

void Zoom_At(double factor, int windowX, int windowY) {
  if (!frmMDI.MapOpen) return;
  const float wanted = std::clamp(static_cast<float>(factor), zoomMin, zoomMax);
  if (wanted == Map.Zoom) return;
  const MapPoint under = Map_Position(windowX, windowY);
  const MapPoint centre = View_Centre();
  const double ratio = static_cast<double>(wanted) / static_cast<double>(Map.Zoom);
  Hide_Floating();
  Clear_Zoom_Checks();
  Apply_Zoom(wanted, {under.x + (centre.x - under.x) * ratio, under.y + (centre.y - under.y) * ratio});
}

void ReduceMap() {
  const BusyPointer busy;
  const Step step = Guarded(QStringLiteral("Karte zoomen: Reduce_Map"), [] { Choose_Clip(); });
  if (step == Step::Done) return;
  // No room for the copy: the scan at full size is there, so the map stays visible.
  Map.Zoom = 1.0F;
  Map.ClipLevel = 0;
  frmMDI.Caption = QStringLiteral("FLURAX - 100%");
}

void FensterSize() {
  if (Map.Maximized) return;
  Map.WantWidth = std::min(Current_Clip().image.width(), frmMDI.InnerWidth);
  Map.WantHeight = std::min(Current_Clip().image.height(), frmMDI.InnerHeight);
}

void Layout_Map() { Lay_Out_Around(View_Centre()); }

void Map_Resized() {
  if (layingOut || !Map.Visible || Map.Minimized || Map.MapClip[0].image.isNull()) return;
  // The upper left corner stays where it is while the user drags the window's edge.
  const MapPoint corner{static_cast<double>(Map.ViewLeft), static_cast<double>(Map.ViewTop)};
  Set_Bars(corner);
  Place_Clip(corner.x, corner.y);
  Map_Redraw();
}

void Fit_Map_Window() {
  if (Map.Maximized) return;
  Map.Left = Map.Top = 0;
  Map.WantWidth = frmMDI.InnerWidth;
  Map.WantHeight = frmMDI.InnerHeight;
}

void Set_Window_Layout() {
  Map.Maximized = false;
  Layout_Map();
  if (dialogHooks.FitNotePad) dialogHooks.FitNotePad();
}

void Scroll_Changed(bool horizontal, int value) {
  ScrollState& bar = horizontal ? Map.HScroller : Map.VScroller;
  if (!bar.Visible) return;
  bar.Value = std::clamp(value, 0, bar.Max);
  Map.imgBild.Visible = Map.imgRfLine.Visible = Map.lblShape.Visible = false;
  const double position = bar.Value * static_cast<double>(horizontal ? Map.ScrollUnitX : Map.ScrollUnitY);
  const int chosen = bar.Value;
  Place_Clip(horizontal ? position : Map.ViewLeft, horizontal ? Map.ViewTop : position);
  bar.Value = chosen;
  Map_Redraw();
}

void ScrollMap(int mapX, int mapY) {
  // The unit counts map pixels at every zoom, so no factor is needed below 100 %.
  const MapClipState& clip = Current_Clip();
  const auto bar = [](const ScrollState& scroller, double position, float unit) {
    return scroller.Visible && unit > 0 ? std::clamp(static_cast<int>(position / static_cast<double>(unit)), 0, 100)
                                        : -1;
  };
  const int valueX = bar(Map.HScroller, mapX - clip.ClipWidth * Clip_Unit() / 5, Map.ScrollUnitX);
  const int valueY = bar(Map.VScroller, mapY - clip.ClipHeight * Clip_Unit() / 2, Map.ScrollUnitY);
  if (valueX < 0 && valueY < 0) return;
  Place_Clip(valueX < 0 ? Map.ViewLeft : valueX * static_cast<double>(Map.ScrollUnitX),
             valueY < 0 ? Map.ViewTop : valueY * static_cast<double>(Map.ScrollUnitY));
  Map_Redraw();
}

void Scroll_By(int dx, int dy) {
  if (Map.MapClip[0].image.isNull()) return;
  const int oldLeft = Map.ViewLeft, oldTop = Map.ViewTop;
  Place_Clip(Map.ViewLeft + dx * static_cast<double>(Map.Zoom), Map.ViewTop + dy * static_cast<double>(Map.Zoom));
  if (oldLeft == Map.ViewLeft && oldTop == Map.ViewTop) return;
  Map.imgBild.Visible = Map.imgRfLine.Visible = Map.lblShape.Visible = false;
  Map_Redraw();
}

void Set_Light(bool light) {
  frmMDI.Light = light;
  Layout_Map();
  events.StateChanged.Emit();
}

ViewPlace View_Now() { return {Map.Zoom, Map.ViewLeft, Map.ViewTop}; }

int Zoom_Percent() { return static_cast<int>(std::floor(100.0F / Map.Zoom)); }
