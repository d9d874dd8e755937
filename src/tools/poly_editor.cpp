#include "tools/poly_editor.h"

#include <qnamespace.h>
#include <QPainterPath>
#include <algorithm>
#include <memory>

#include "edit/bulk_change.h"
#include "hand/activation.h"
#include "hand/hand_texts.h"
#include "hand/next_shape.h"
#include "state/events.h"
#include "state/global_state.h"
#include "state/map_state.h"
#include "state/mdi_state.h"
#include "store/vertex_table.h"
#include "view/view.h"

namespace {

constexpr double labelSize = 8;  // points
constexpr int farthest = 32767;  // of a position
constexpr int edgeReach = 24;    // window pixels: a vertex set nearer to the edge scrolls the map on
constexpr int slipReach = 2;     // window pixels between the clicks of a double click

size_t Least(PolyEditor::Kind kind) { return kind == PolyEditor::Kind::Area ? 3 : 2; }

QString Table_Kind(PolyEditor::Kind kind) {
  return kind == PolyEditor::Kind::Area ? QStringLiteral("Flaeche") : QStringLiteral("Linie");
}

EntryRow New_Row(PolyEditor::Kind kind, const QString& table, QPoint first) {
  const bool area = kind == PolyEditor::Kind::Area;
  EntryId id;
  id.name = table;
  if (!area) id.ends = NextShape.ends;
  EntryRow row;
  row.ID = id.ToText();
  row.Eintrag = id.TableName();
  row.Schrift = QStringLiteral("Arial");
  row.Groesse = labelSize;
  row.VG = CurVG;
  row.HG = CurHG;
  row.RA = CurRA;
  row.Xmap = first.x();
  row.Ymap = first.y();
  row.Xline = std::max(1, NextShape.width);
  row.Yline = area ? NextShape.fill : NextShape.lineStyle;
  row.Typ = static_cast<int>(NextShape.rounded ? EntryKind::PolygonRound : EntryKind::Polygon);
  return row;
}

// The vertex stays in view, and there is room for the next one.
void Scroll_From_Edge(QPoint window) {
  const auto step = [](int at, int size) {
    if (at < edgeReach) return -size / 4;
    return at >= size - edgeReach ? size / 4 : 0;
  };
  const int dx = step(window.x(), Map.ViewWidth), dy = step(window.y(), Map.ViewHeight);
  if (dx != 0 || dy != 0) Scroll_By(dx, dy);
}

}  // namespace

QString PolyEditor::Name() const { return kind == Kind::Area ? QStringLiteral("Fl") : QStringLiteral("Linie"); }

QString PolyEditor::Status() const { return kind == Kind::Area ? hand_texts::drawArea : hand_texts::drawLine; }

void PolyEditor::Press(QPoint window, [[maybe_unused]] MouseKeys keys) {
  mouse = window;
  const QPoint at(std::clamp(Map_X(window.x()), stopLimit, farthest),
                  std::clamp(Map_Y(window.y()), stopLimit, farthest));
  if (!points.All().empty() && points.All().back() == at) return;
  points.Add(at);
  Scroll_From_Edge(window);
}

void PolyEditor::Move(QPoint window, [[maybe_unused]] bool leftDown) {
  mouse = window;
  if (points.Can_Take_Back()) events.HandChanged.Emit();
}

void PolyEditor::Double_Click([[maybe_unused]] QPoint window) { Finish(); }

bool PolyEditor::Right_Click([[maybe_unused]] QPoint window) {
  Finish();
  return true;
}

bool PolyEditor::Key(int key, [[maybe_unused]] MouseKeys keys) {
  switch (key) {
    case Qt::Key_Backspace:
      points.Take_Back();
      return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
      Finish();
      return true;
    default:
      return false;
  }
}

OverPaint PolyEditor::Paint_Over() const {
  QPainterPath path;
  const std::vector<QPoint>& drawn = points.All();
  if (drawn.empty()) return {};
  const auto at = [](QPoint map) { return QPointF(Window_X(map.x()), Window_Y(map.y())); };
  path.moveTo(at(drawn.front()));
  for (size_t i = 1; i < drawn.size(); ++i) path.lineTo(at(drawn[i]));
  path.lineTo(mouse);
  if (kind == Kind::Area) path.closeSubpath();
  return Dashed(path);
}

// Too few vertices make nothing. What cannot be written stays in the hand, to be tried again or dropped.
void PolyEditor::Finish() {
  const int slip = qRound(slipReach * static_cast<double>(Map.Zoom));
  std::vector<QPoint> drawn = points.All();
  if (drawn.size() > 1 && (drawn.back() - drawn[drawn.size() - 2]).manhattanLength() <= slip) drawn.pop_back();
  const bool enough = drawn.size() >= Least(kind);
  if (enough && !Append_Poly(kind, drawn, Status().section(u':', 0, 0))) return;
  End_Map_Tool();
  if (!enough) return;
  Show_Changed_Entries();
  Take_Entry(Map.CurBookmark);
}

bool Append_Poly(PolyEditor::Kind kind, const std::vector<QPoint>& points, const QString& title) {
  const QString table = New_Poly_Table(Table_Kind(kind));
  if (table.isEmpty()) return false;
  return Append_In_Transaction(title, [&] {
    Write_Vertices(table, points);
    Append_Entry(New_Row(kind, table, points.front()));
  });
}

void Poly_Editor(PolyEditor::Kind kind) {
  if (!frmMDI.MapOpen || !rsEntries) return;
  auto tool = std::make_unique<PolyEditor>(kind);
  if (Map.Tool == tool->Name()) return Drop_Map_Tool();
  // Better told now than after the last vertex.
  if (New_Poly_Table(Table_Kind(kind)).isEmpty()) return;
  Use_Map_Tool(std::move(tool));
}
