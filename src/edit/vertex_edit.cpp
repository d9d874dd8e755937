#include "edit/vertex_edit.h"

#include <algorithm>
#include <cmath>

#include "edit/bulk_change.h"
#include "edit/figure_extras.h"
#include "hand/activation.h"
#include "hand/hand_controls.h"
#include "hand/turned_shape.h"
#include "state/events.h"
#include "state/global_state.h"
#include "state/map_state.h"
#include "state/step.h"
#include "state/table_state.h"
#include "store/step_name.h"
#include "store/vertex_table.h"

namespace {

constexpr int vertexReach = 4;   // window pixels round a vertex
constexpr int vertexApart = 8;   // closer neighbours cannot be told apart
constexpr double edgeReach = 4;  // beside an edge
const QString title = QStringLiteral("Eckpunkte");

QString Display_Name(const EntryId& id) {
  const QString word = id.IsLine()   ? QStringLiteral("Linie")
                       : id.IsArea() ? QStringLiteral("Fläche")
                                     : QStringLiteral("Figur");
  return id.Number() < 0 ? word : word + QString::number(id.Number());
}

// The outline of the entry in hand where it is seen, window pixels; empty while it cannot be seen.
std::vector<QPoint> Outline_In_Hand(bool& closed) {
  std::vector<QPoint> outline;
  const auto row = Row_In_Hand();
  if (!row) return outline;
  const EntryType type = EntryType::Parse(row->Typ);
  if (type.hidden || !type.HasVertices()) return outline;
  const EntryId id = EntryId::Parse(row->ID);
  closed = !id.IsLine();
  const Turn turn = Turn_Of(*row);
  for (const QPoint& vertex : Load_Vertices(id.TableName())) {
    const QPointF at = turn.Seen(vertex);
    outline.emplace_back(Window_X(at.x()), Window_Y(at.y()));
  }
  return outline;
}

int Apart(QPoint a, QPoint b) { return std::max(std::abs(a.x() - b.x()), std::abs(a.y() - b.y())); }

// Number of the neighbour `step` away; -1 beyond the end of a line.
int Neighbour(int number, int step, int count, bool closed) {
  const int next = number + step;
  if (next >= 0 && next < count) return next;
  return closed ? (next + count) % count : -1;
}

double Distance_To_Edge(QPointF point, QPointF from, QPointF to) {
  const QPointF along = to - from, off = point - from;
  const double length = QPointF::dotProduct(along, along);
  const double part = length > 0 ? std::clamp(QPointF::dotProduct(off, along) / length, 0.0, 1.0) : 0;
  const QPointF rest = off - part * along;
  return std::hypot(rest.x(), rest.y());
}

QPoint Kept_In_Range(QPointF map) {
  return {std::clamp(qRound(map.x()), leastVertex, mostVertex), std::clamp(qRound(map.y()), leastVertex, mostVertex)};
}

// The middle about which a figure turns has moved with its box: the vertices go along, so that all but the changed one
// stay where they are seen.
void Keep_In_Place(VertexList& list, const Turn& turn) {
  if (turn.angle == 0) return;
  const EntryBox box = Vertex_Box(list.points);
  const QPointF centre(box.x + box.width / 2.0, box.y + box.height / 2.0);
  const QPointF by = Kept_In_Place(turn.centre, centre, turn.angle);
  for (QPoint& vertex : list.points) vertex = Kept_In_Range(vertex + by);
}

std::optional<VertexList> Vertices_In_Hand() {
  if (Map.InHand.isEmpty() || !rsEntries || !rsEntries->HasRow(Map.InHand)) return std::nullopt;
  rsEntries->SetBookmark(Map.InHand);
  Map.CurBookmark = Map.InHand;
  return Vertices_Of_Current();
}

}  // namespace

std::optional<VertexList> Vertices_Of_Current() {
  if (!On_Current_Entry()) return std::nullopt;
  return Vertices_Of(rsEntries->Key());
}

std::optional<VertexList> Vertices_Of(qint64 key) {
  const QString bookmark = QString::number(key);
  if (!rsEntries || !rsEntries->IsOpen() || !rsEntries->HasRow(bookmark)) return std::nullopt;
  const KeepCurrentRow keep;
  rsEntries->SetBookmark(bookmark);
  const EntryRow row = Read_Entry(*rsEntries);
  if (!EntryType::Parse(row.Typ).HasVertices()) return std::nullopt;
  const EntryId id = EntryId::Parse(row.ID);
  VertexList list;
  list.key = rsEntries->Key();
  list.table = id.TableName();
  list.name = Display_Name(id);
  list.closed = !id.IsLine();
  list.points = Load_Vertices(list.table);
  if (list.points.empty()) return std::nullopt;
  const std::vector<Database::PointRow>* all = dbEntries->Points(list.table);
  for (size_t i = list.points.size(); all != nullptr && i < all->size(); ++i)
    list.rest.emplace_back((*all)[i].x, (*all)[i].y);
  return list;
}

namespace {

// The row of a free figure and its extras follow its vertices.
void Figure_Follows(qint64 key) {
  if (rsEntries->PositionOf(key) < 1) return;
  const KeepCurrentRow keep;
  rsEntries->MoveTo(rsEntries->PositionOf(key));
  const EntryRow before = Read_Entry(*rsEntries);
  if (!EntryType::Parse(before.Typ).IsFreeFigure()) return;
  EntryRow row = before;
  set_entry_box(row, Figure_Box(row));
  if (row == before) return;
  Update_Entry(row);
  Extras_Follow(before, row);
}

}  // namespace

QPoint Seen_Vertex(const VertexList& list, int number) {
  const QPoint vertex = list.points[static_cast<size_t>(number)];
  const std::optional<EntryRow> row = Sound_Entry_At(QString::number(list.key));
  return row ? Turn_Of(*row).Seen(vertex).toPoint() : vertex;
}

namespace {

// The row of a line or an area keeps its values: it would not tell whose vertices they are. That of a figure tells it
// itself, but takes their box, as if it had been resized.
QString Name_Of_Change(const VertexList& list) {
  const size_t before = Load_Vertices(list.table).size(), after = list.points.size();
  const size_t more = std::max(before, after) - std::min(before, after);
  const QString what = more > 1 ? QStringLiteral("%1 Eckpunkte ").arg(more) : QStringLiteral("Eckpunkt ");
  const QString done = after > before   ? QStringLiteral("eingefügt")
                       : after < before ? QStringLiteral("gelöscht")
                                        : QStringLiteral("verschoben");
  const std::optional<EntryRow> row = Sound_Entry_At(QString::number(list.key));
  return what + done + (row && EntryType::Parse(row->Typ).IsPolygon() ? In_Brackets(*row) : QString());
}

}  // namespace

bool Write_Vertex_List(const VertexList& list) {
  const UndoStep step(Name_Of_Change(list));
  std::vector<QPoint> all = list.points;
  all.insert(all.end(), list.rest.begin(), list.rest.end());
  const auto work = [&] {
    Write_Vertices(list.table, all);
    Figure_Follows(list.key);
  };
  if (!In_Told_Transaction(title, work)) return false;
  Show_Changed_Entries();
  return true;
}

int Vertex_At(QPoint window) {
  bool closed = false;
  const std::vector<QPoint> points = Outline_In_Hand(closed);
  const int count = static_cast<int>(points.size());
  for (int i = 0; i < count; ++i) {
    const QPoint at = points[static_cast<size_t>(i)];
    if (Apart(at, window) > vertexReach) continue;
    const auto clear = [&](int step) {
      const int other = Neighbour(i, step, count, closed);
      return other < 0 || Apart(at, points[static_cast<size_t>(other)]) >= vertexApart;
    };
    if (clear(-1) || clear(1)) return i;
  }
  return -1;
}

int Edge_At(QPoint window) {
  bool closed = false;
  const std::vector<QPoint> points = Outline_In_Hand(closed);
  const int count = static_cast<int>(points.size());
  int best = -1;
  double nearest = edgeReach;
  for (int i = 0; i < count; ++i) {
    const int next = Neighbour(i, 1, count, closed);
    if (next < 0) break;
    const double distance = Distance_To_Edge(window, points[static_cast<size_t>(i)], points[static_cast<size_t>(next)]);
    if (distance > nearest) continue;
    nearest = distance;
    best = i;
  }
  return best;
}

QPolygonF Vertex_Neighbours(int number, int& middle) {
  bool closed = false;
  const std::vector<QPoint> points = Outline_In_Hand(closed);
  const int count = static_cast<int>(points.size());
  QPolygonF line;
  middle = 0;
  for (const int step : {-1, 0, 1}) {
    if (step == 0) middle = static_cast<int>(line.size());
    const int at = step == 0 ? number : Neighbour(number, step, count, closed);
    if (at >= 0 && at < count) line << points[static_cast<size_t>(at)];
  }
  return line;
}

void Move_Vertex(int number, QPoint by) {
  std::optional<VertexList> list = Vertices_In_Hand();
  if (!list || number < 0 || number >= static_cast<int>(list->points.size())) return;
  const Turn turn = Turn_Of(Read_Entry(*rsEntries));
  QPoint& vertex = list->points[static_cast<size_t>(number)];
  vertex = Kept_In_Range(turn.Stored(turn.Seen(vertex) + by));
  Keep_In_Place(*list, turn);
  Write_Vertex_List(*list);
}

bool Insert_Vertex_At(QPoint window) {
  const int edge = Edge_At(window);
  if (edge < 0 || !Store_Pending_Text()) return false;
  std::optional<VertexList> list = Vertices_In_Hand();
  if (!list) return false;
  const Turn turn = Turn_Of(Read_Entry(*rsEntries));
  const QPointF at = turn.Stored(QPointF(Map_X(window.x()), Map_Y(window.y())));
  list->points.insert(list->points.begin() + edge + 1, Kept_In_Range(at));
  Keep_In_Place(*list, turn);
  return Write_Vertex_List(*list);
}
