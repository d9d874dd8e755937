#include "edit/figure_edit.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "edit/bulk_change.h"
#include "edit/figure_extras.h"
#include "hand/activation.h"
#include "hand/hand_controls.h"
#include "hand/next_shape.h"
#include "objects/bezier.h"
#include "objects/draw_context.h"
#include "platform/message_box.h"
#include "state/events.h"
#include "state/map_state.h"
#include "store/table_file.h"
#include "store/vertex_table.h"

namespace {

const QString title = QStringLiteral("Figur");
const QString errorTitle = QStringLiteral("Fehler");
const QString undoCaption = QStringLiteral("Rückgängig: Figur ändern");

constexpr int farthest = std::numeric_limits<int16_t>::max();

bool Tell(const QString& problem) {
  Message_Box(problem, MsgButtons::Ok, MsgIcon::Warning, title);
  return false;
}

// A white figure without a rim would lie on the map unseen.
int Visible_Frame() {
  FrameWord frame = FrameWord::Parse(CurRA);
  if (NextShape.width > 1) frame.width = std::min(NextShape.width, 8);
  if (NextShape.fill == 0 || Color_Of(CurHG) == qRgb(255, 255, 255)) frame.framed = true;
  return frame.ToNumber();
}

EntryRow New_Row(EntryKind kind) {
  if (EntFont.isEmpty()) EntFont = Map.Text2.FontName;
  if (EntFontSize <= 0) EntFontSize = 10;
  EntryRow row;
  row.Eintrag = Figure_Word(kind);
  row.Schrift = FillCode{NextShape.fill}.ToSchrift();
  row.Groesse = EntFontSize;
  row.VG = CurVG;
  row.HG = CurHG;
  row.RA = Visible_Frame();
  row.Typ = static_cast<int>(kind);
  return row;
}

// The position keeps its place within the box when the box gets another place and size.
int Scaled(int position, int from, int size, int newFrom, int newSize) {
  if (size <= 0) return newFrom;
  return static_cast<int>(std::lround(newFrom + static_cast<double>(position - from) * newSize / size));
}

std::vector<QPoint> Scaled_Into(std::vector<QPoint> vertices, const EntryBox& old, const EntryBox& now) {
  for (QPoint& vertex : vertices)
    vertex = {Scaled(vertex.x(), old.x, old.width, now.x, now.width),
              Scaled(vertex.y(), old.y, old.height, now.y, now.height)};
  return vertices;
}

// Appends the row under a number of its own, with the extras of the figure it is a copy of; it is in hand then.
bool Append_Figure(EntryRow row, const EntryBox& box, const std::vector<QPoint>& vertices,
                   const std::optional<EntryRow>& copied = {}) {
  if (!rsEntries || !dbEntries) return false;
  const QString problem = Figure_Problem(box);
  if (!problem.isEmpty()) return Tell(problem);
  set_entry_box(row, box);
  const bool done = Append_In_Transaction(errorTitle, [&] {
    row.ID = Next_Figure_ID();
    if (!vertices.empty()) Write_Vertices(row.ID, vertices);
    Append_Entry(row);
    if (copied) Copy_Extras(*copied, row);
  });
  if (!done) return false;
  Show_Changed_Entries();
  return Take_Entry(Map.CurBookmark);
}

// Undo point and writing of the current figure; nothing to write counts as done.
bool Write_Figure(const EntryRow& row, const std::vector<QPoint>& vertices = {}) {
  const EntryRow before = Read_Entry(*rsEntries);
  if (before == row && (vertices.empty() || vertices == Free_Figure_Vertices())) return true;
  const UndoPoint point(undoCaption);
  if (!On_Current_Entry()) return false;
  const bool done = In_Told_Transaction(title, [&] {
    if (!vertices.empty()) Write_Vertices(EntryId::Parse(row.ID).TableName(), vertices);
    Update_Entry(row);
    Extras_Follow(before, row);
  });
  if (done) Show_Changed_Entries();
  return done;
}

bool Ready_For_Figure() { return Store_Pending_Text() && Current_Is_Figure(); }

QString Vertices_Problem(const std::vector<QPoint>& vertices) {
  if (vertices.size() < fewestVertices)
    return QStringLiteral("Eine freie Figur braucht mindestens %1 Eckpunkte.").arg(fewestVertices);
  for (const QPoint& vertex : vertices)
    if (std::min(vertex.x(), vertex.y()) < stopLimit || std::max(vertex.x(), vertex.y()) > farthest)
      return QStringLiteral("Eckpunkte können nur zwischen %1 und %2 liegen.").arg(stopLimit).arg(farthest);
  return Figure_Problem(Vertex_Box(vertices));
}

EntryKind Free_Kind(bool rounded) { return rounded ? EntryKind::FreeFigureRound : EntryKind::FreeFigure; }

}  // namespace

QString Figure_Word(EntryKind kind) {
  switch (kind) {
    case EntryKind::Square:
      return QStringLiteral("Quadrat");
    case EntryKind::Ellipse:
      return QStringLiteral("Ellipse");
    case EntryKind::Circle:
      return QStringLiteral("Kreis");
    case EntryKind::FreeFigure:
    case EntryKind::FreeFigureRound:
      return QStringLiteral("Freie Figur");
    default:
      return QStringLiteral("Rechteck");
  }
}

bool Keeps_Square(EntryKind kind) { return kind == EntryKind::Square || kind == EntryKind::Circle; }

QString Figure_Problem(const EntryBox& box) {
  if (box.width < 1 || box.height < 1 || box.width > farthest || box.height > farthest)
    return QStringLiteral("Länge und Breite einer Figur können nur zwischen 1 und %1 Bildpunkten liegen.")
        .arg(farthest);
  if (box.x < -farthest || box.y < -farthest || box.x + box.width > farthest || box.y + box.height > farthest)
    return QStringLiteral(
        "Die Figur würde zu weit über den Rand der Karte hinausreichen.\n\nEs wurde nichts verändert.");
  return {};
}

bool Show_Figure() {
  if (!Current_Is_Figure()) {
    Message_Box(QStringLiteral("Keine aktive Figur"), MsgButtons::Ok, MsgIcon::Warning, QStringLiteral("Error"));
    return false;
  }
  Activate_Entry();
  return true;
}

bool Store_Figure(FigureOf what, EntryBox box) {
  if (what == FigureOf::Next) {
    const auto kind = static_cast<EntryKind>(NextShape.figure);
    if (Keeps_Square(kind)) box.height = box.width;
    return Append_Figure(New_Row(kind), box, {});
  }
  if (!Ready_For_Figure()) return false;
  EntryRow row = Read_Entry(*rsEntries);
  const EntryType type = EntryType::Parse(row.Typ);
  if (Keeps_Square(type.Kind())) box.height = box.width;
  const std::vector<QPoint> vertices = Scaled_Into(Free_Figure_Vertices(), Figure_Box(row), box);
  if (what == FigureOf::Duplicate) {
    const EntryRow copied = row;
    row.Typ = type.Shown().Marked(Mark::None).ToNumber();
    return Append_Figure(row, box, vertices, copied);
  }
  const QString problem = Figure_Problem(box);
  if (!problem.isEmpty()) return Tell(problem);
  set_entry_box(row, box);
  return Write_Figure(row, vertices);
}

bool Place_Figure(QPoint map) {
  const auto kind = static_cast<EntryKind>(NextShape.figure);
  const int height = Keeps_Square(kind) ? NextShape.figureWidth : NextShape.figureHeight;
  return Append_Figure(New_Row(kind), {map.x(), map.y(), NextShape.figureWidth, height}, {});
}

bool Change_Figure(EntryKind kind, int width, int height) {
  if (!Ready_For_Figure()) return false;
  EntryRow row = Read_Entry(*rsEntries);
  EntryType type = EntryType::Parse(row.Typ);
  const bool free = type.IsFreeFigure();
  const EntryBox old = Figure_Box(row);
  EntryBox box{old.x, old.y, width, !free && Keeps_Square(kind) ? width : height};
  const QString problem = Figure_Problem(box);
  if (!problem.isEmpty()) return Tell(problem);
  if (free) {
    if (box == old) return true;
    set_entry_box(row, box);
    return Write_Figure(row, Scaled_Into(Free_Figure_Vertices(), old, box));
  }
  if (row.Eintrag == Figure_Word(type.Kind())) row.Eintrag = Figure_Word(kind);
  type.base = static_cast<int>(kind);
  row.Typ = type.ToNumber();
  set_entry_box(row, box);
  return Write_Figure(row);
}

bool Add_Free_Figure(const std::vector<QPoint>& vertices, bool rounded) {
  const QString problem = Vertices_Problem(vertices);
  if (!problem.isEmpty()) return Tell(problem);
  return Append_Figure(New_Row(Free_Kind(rounded)), Vertex_Box(vertices), vertices);
}

bool Change_Free_Figure(const std::vector<QPoint>& vertices, bool rounded) {
  if (!Ready_For_Figure() || !Type_Here().IsFreeFigure()) return false;
  const QString problem = Vertices_Problem(vertices);
  if (!problem.isEmpty()) return Tell(problem);
  EntryRow row = Read_Entry(*rsEntries);
  EntryType type = EntryType::Parse(row.Typ);
  type.base = static_cast<int>(Free_Kind(rounded));
  row.Typ = type.ToNumber();
  set_entry_box(row, Vertex_Box(vertices));
  return Write_Figure(row, vertices);
}

std::vector<QPoint> Free_Figure_Vertices() {
  if (!Current_Is_Figure() || !Type_Here().IsFreeFigure()) return {};
  return Load_Vertices(EntryId::Parse(rsEntries->Text(column::ID)).TableName());
}

QPainterPath Figure_Outline(EntryKind kind, const QRectF& box, double angle, const std::vector<QPointF>& vertices) {
  QPainterPath path;
  if (kind == EntryKind::FreeFigureRound && vertices.size() > 2) {
    std::vector<QPointF> curve;
    Bezier_Points(vertices, curve);
    path.moveTo(curve[0]);
    for (size_t i = 1; i + 2 < curve.size(); i += 3) path.cubicTo(curve[i], curve[i + 1], curve[i + 2]);
  } else if (kind == EntryKind::FreeFigure || kind == EntryKind::FreeFigureRound) {
    path.addPolygon(QPolygonF(QList<QPointF>(vertices.begin(), vertices.end())));
    path.closeSubpath();
  } else if (kind == EntryKind::Ellipse || kind == EntryKind::Circle) {
    path.addEllipse(box);
  } else {
    path.addRect(box);
  }
  if (angle == 0) return path;
  const QPointF centre = box.center();
  for (int i = 0; i < path.elementCount(); ++i) {
    const QPointF at = Turned(QPointF(path.elementAt(i)), centre, angle);
    path.setElementPositionAt(i, at.x(), at.y());
  }
  return path;
}
