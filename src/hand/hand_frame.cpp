#include "hand/hand_frame.h"

#include <span>
#include <utility>
#include <vector>

#include "hand/hand_controls.h"
#include "hand/in_hand.h"
#include "hand/turned_shape.h"
#include "platform/surface.h"
#include "state/events.h"
#include "state/global_state.h"
#include "state/map_state.h"
#include "state/on_reset.h"
#include "store/vertex_table.h"
#include "view/overlay.h"
#include "view/redraw.h"
#include "view/view.h"

namespace {

constexpr int gripFrom = 6, gripTo = 9;  // distance of the grip border from the frame's width
constexpr int vertexBox = 4;

ViewPlace shownView;  // of the last time the hand was shown
bool hidden = false;
const OnReset fresh(shownView, hidden);

// The row in hand, or the look of the new text.
EntryRow Row_To_Paint() {
  if (!Map.InHand.isEmpty()) return Row_In_Hand().value_or(EntryRow());
  EntryRow row;
  row.RA = CurRA;
  row.HG = CurHG;
  return row;
}

QRect Frame_Area(const EntryRow& row) {
  if (!Map.Text2.Visible) return {};
  const int out = FrameWord::Parse(row.RA).width + gripTo + 1;
  return Text_Outline(out).boundingRect().toAlignedRect();
}

// Vertices of the line, area or free figure in hand that can be seen.
std::vector<QPoint> Shown_Vertices(const EntryRow& row) {
  const EntryType type = EntryType::Parse(row.Typ);
  std::vector<QPoint> shown;
  if (type.hidden || (!type.IsPolygon() && !type.IsFreeFigure())) return shown;
  const QRect view(0, 0, Map.ViewWidth, Map.ViewHeight);
  const Turn turn = Turn_Of(row);
  for (const QPoint& vertex : Load_Vertices(EntryId::Parse(row.ID).TableName())) {
    const QPointF seen = turn.Seen(vertex);
    const QPoint at(Window_X(seen.x()), Window_Y(seen.y()));
    if (view.contains(at)) shown.push_back(at);
  }
  return shown;
}

QRect Group_Frame() {
  const QRectF bounds = Group_Bounds();
  return Map.GroupInHand.size() < 2 || bounds.isEmpty() ? QRect() : bounds.toAlignedRect().adjusted(-4, -4, 4, 4);
}

void Akt_Frame(Surface& surface, const EntryRow& row) {
  const FrameWord frame = FrameWord::Parse(row.RA);
  const QRectF box = Control_Box(Map.Text2);
  // Where the map or a turned text is to be seen below, the box would hide it until the text is being written.
  const bool seenBelow = Map.Text2.FontTransparent || Map.Perspex || EntAngle != 0;
  if (frame.framed && (!seenBelow || Text_Pending())) {
    const double out = frame.width / 2.0 + 1;
    const QRectF around = box.adjusted(-out, -out, out, out);
    surface.FilledBox(around, Color_Of(row.HG));
    surface.pen = {.ForeColor = Color_Of(frame.color), .DrawWidth = static_cast<double>(frame.width)};
    surface.Box(around);
  }
  surface.pen = {.ForeColor = HighlightColor};
  for (int g = frame.width + gripFrom; g <= frame.width + gripTo; ++g) {
    const QPolygonF outline = Text_Outline(g);
    if (EntAngle == 0 || Text_Pending())
      surface.Box(outline.boundingRect());
    else
      surface.Polygon(std::span(outline.constData(), static_cast<size_t>(outline.size())));
  }
}

void Draw_Vertices(Surface& surface, const std::vector<QPoint>& vertices) {
  for (const QPoint& vertex : vertices) {
    const QRectF box(vertex.x() - vertexBox / 2, vertex.y() - vertexBox / 2, vertexBox, vertexBox);
    surface.FilledBox(box, HighlightColor);
    surface.pen = {};
    surface.Box(box);
  }
}

// Keeps what lies below and paints over it.
void Paint_Over(Surface& surface) {
  if (hidden || !Entry_In_Hand()) return;
  const EntryRow row = Row_To_Paint();
  const std::vector<QPoint> vertices = Shown_Vertices(row);
  const QRect group = Group_Frame();
  QRect area = Frame_Area(row) | group;
  for (const QPoint& vertex : vertices)
    area |= QRect(vertex.x() - vertexBox / 2, vertex.y() - vertexBox / 2, vertexBox, vertexBox);
  area &= Map.canvas.rect();
  if (area.isEmpty()) return;
  Map.HandUnder = Map.canvas.copy(area);
  Map.HandUnderAt = area.topLeft();
  if (Map.Text2.Visible && EntryType::Parse(row.Typ).Kind() != EntryKind::Picture) Akt_Frame(surface, row);
  Draw_Vertices(surface, vertices);
  if (group.isEmpty()) return;
  surface.pen = {.mode = DrawMode::Invert, .pen = PenStyle::Dash};
  surface.Box(group);
}

const Overlay frame(OverlayLayer::Hand, [](DrawContext& context) { Paint_Over(context.surface); });

}  // namespace

void Paint_Hand() {
  if (Redraw_Running()) return;  // it comes with the other overlays
  Unpaint_Hand();
  if (Map.canvas.isNull()) return;
  const auto surface = Make_Surface(Map.canvas);
  surface->SetClip(QRectF(0, 0, Map.ViewWidth, Map.ViewHeight));
  Paint_Over(*surface);
}

void Unpaint_Hand() {
  if (Map.HandUnder.isNull()) return;
  const QImage under = std::move(Map.HandUnder);
  Map.HandUnder = {};
  const QRect area(Map.HandUnderAt, under.size());
  if (Map.canvas.isNull() || !Map.canvas.rect().contains(area)) return;
  Make_Surface(Map.canvas)->PaintPicture(area, under);
}

void Show_Hand() {
  Hand_Is_Shown();
  Paint_Hand();
  events.MapPainted.Emit();
  events.HandChanged.Emit();
}

void Hand_Is_Shown() {
  shownView = View_Now();
  hidden = false;
}

void Hide_Hand() {
  Unpaint_Hand();
  Hide_Live_Controls();
  hidden = true;
  events.MapPainted.Emit();
  events.HandChanged.Emit();
}

bool Hand_Is_Hidden() { return hidden; }

bool View_Has_Moved() { return shownView != View_Now(); }
