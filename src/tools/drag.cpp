#include "tools/drag.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <limits>
#include <optional>
#include <vector>

#include "edit/copy.h"
#include "edit/figure_extras.h"
#include "edit/move.h"
#include "edit/vertex_edit.h"
#include "hand/activation.h"
#include "hand/hand_controls.h"
#include "hand/hand_frame.h"
#include "hand/hand_texts.h"
#include "hand/turned_shape.h"
#include "platform/message_box.h"
#include "state/events.h"
#include "state/global_state.h"
#include "state/table_state.h"
#include "store/entry_edit.h"
#include "store/transaction.h"
#include "store/vertex_table.h"
#include "view/redraw.h"

namespace {

constexpr int clickReach = 3;         // less than that is a click
constexpr int gripBorder = 10;        // of the active text, beside its frame's width
constexpr int handleReach = 2;        // round a handle
constexpr int lineReach = 6;          // beside a line
constexpr size_t outlineMost = 2000;  // vertices of an outline; a longer one shows every n-th

// Moves the cursor to the entry in hand. False if its row is not there any more.
bool To_Hand() {
  if (!rsEntries || Map.InHand.isEmpty() || !rsEntries->HasRow(Map.InHand)) return false;
  rsEntries->SetBookmark(Map.InHand);
  Map.CurBookmark = Map.InHand;
  return true;
}

QPolygonF Window_Outline(const std::vector<QPoint>& vertices, const Turn& turn) {
  QPolygonF outline;
  const size_t step = std::max<size_t>(1, vertices.size() / outlineMost);
  const auto seen = [&turn](QPoint vertex) {
    const QPointF at = turn.Seen(vertex);
    return QPointF(Window_X(at.x()), Window_Y(at.y()));
  };
  for (size_t i = 0; i < vertices.size(); i += step) outline << seen(vertices[i]);
  if (step > 1) outline << seen(vertices.back());
  return outline;
}

bool Near_Text(QPoint window) {
  if (!Map.Text2.Visible) return false;
  const int width = rsEntries && !Map.InHand.isEmpty() ? FrameWord::Parse(EntRA).width : 1;
  return Text_Outline(width + gripBorder).containsPoint(window, Qt::OddEvenFill);
}

bool On_Region(QPoint window) {
  const qint64 key = Map.InHand.toLongLong();
  int hit = Map.EntryRegions.TopAt(window);
  while (hit > 0) {
    const EntryRegion& region = Map.EntryRegions.Row(hit);
    if (region.key == key && region.kind == 0) return true;
    hit = Map.EntryRegions.NextBelow(window, hit);
  }
  return false;
}

bool On_Shape(QPoint window) {
  if (!Map.lblShape.Visible) return false;
  const std::optional<EntryRow> row = Row_In_Hand();
  return row && Shape_Contains(Shape_In_Hand(EntryType::Parse(row->Typ).Kind()), window);
}

int Handle_At(QPoint window) {
  const auto hit = [window](const LiveControl& control) {
    return control.Visible &&
           Control_Box(control).adjusted(-handleReach, -handleReach, handleReach, handleReach).contains(window);
  };
  // Corners first: on a small figure they lie over the handles of the sides.
  for (const int i : {4, 0, 2, 6, 5, 3, 1, 7})
    if (hit(Map.lblHandle[static_cast<size_t>(i)])) return i;
  return hit(Map.imgHandle) ? pictureHandle : -1;
}

// The box a size is read from, window pixels.
QRect Sized_Box() { return Control_Box(dragState.handle == pictureHandle ? Map.imgBild : Map.lblShape); }

QPolygonF Sized_Outline(const QRect& box) {
  return Turned_Rect(box, dragState.handle == pictureHandle ? 0 : Map.lblShape.Angle);
}

// New edges of a box whose handle was moved. Squares and circles keep width = height.
QRect Resized(QRect box, int handle, int dx, int dy, bool square) {
  int left = box.left(), top = box.top(), right = left + box.width(), bottom = top + box.height();
  const bool west = handle == 0 || handle == 6 || handle == 7, east = handle >= 2 && handle <= 4;
  const bool north = handle >= 0 && handle <= 2, south = handle >= 4 && handle <= 6;
  if (west) left = std::min(left + dx, right - 1);
  if (east) right = std::max(right + dx, left + 1);
  if (north) top = std::min(top + dy, bottom - 1);
  if (south) bottom = std::max(bottom + dy, top + 1);
  if (square) {
    int size = std::max(right - left, bottom - top);
    if (!west && !east) size = bottom - top;
    if (!north && !south) size = right - left;
    if (west) {
      left = right - size;
    } else {
      right = left + size;
    }
    if (north) {
      top = bottom - size;
    } else {
      bottom = top + size;
    }
  }
  return {QPoint(left, top), QSize(right - left, bottom - top)};
}

// The same of a box turned like lblShape: the edges or the corner across stay where they are seen.
QRect Resized_Turned(const QRect& box, int handle, QPointF by, bool square) {
  const double angle = Map.lblShape.Angle;
  if (angle != 0) by = Turned(by, {0, 0}, -angle);
  const QRect now = Resized(box, handle, qRound(by.x()), qRound(by.y()), square);
  if (angle == 0) return now;
  return now.translated(Kept_In_Place(QRectF(box).center(), QRectF(now).center(), angle).toPoint());
}

bool Is_Square(const EntryType& type) { return type.Kind() == EntryKind::Square || type.Kind() == EntryKind::Circle; }

QRect Resized_Window_Box() {
  const QPoint by = dragState.now - dragState.start;
  if (dragState.handle == pictureHandle) {
    const QRect box = Sized_Box();
    const double factor = std::max({0.02, (box.width() + by.x()) / static_cast<double>(std::max(1, box.width())),
                                    (box.height() + by.y()) / static_cast<double>(std::max(1, box.height()))});
    return {box.topLeft(),
            QSize(std::max(1, qRound(box.width() * factor)), std::max(1, qRound(box.height() * factor)))};
  }
  const bool square = To_Hand() && Is_Square(Type_Here());
  return Resized_Turned(Sized_Box(), dragState.handle, by, square);
}

void Take_Entry_Outline() {
  const EntryRow row = Read_Entry(*rsEntries);
  const EntryType type = EntryType::Parse(row.Typ);
  if (!Map.GroupInHand.isEmpty()) {
    dragState.base = Turned_Rect(Group_Bounds(), 0);
  } else if (type.HasVertices() && !dragState.labelOnly) {
    dragState.base = Window_Outline(Load_Vertices(EntryId::Parse(row.ID).TableName()), Turn_Of(row));
    dragState.closed = !EntryId::Parse(row.ID).IsLine();
  } else {
    if (Map.Text2.Visible) dragState.base = Text_Outline(0);
    for (const LiveControl* control : {&Map.imgBild, &Map.lblShape})
      if (control->Visible) dragState.base = Turned_Rect(Control_Box(*control), control->Angle);
  }
}

// The foot point's marker stays where it is unless all of a group goes.
void Move_Controls(QPoint by) {
  const auto controls = Dragged_Controls();
  const bool group = !Map.GroupInHand.isEmpty();
  for (size_t i = 0; i < controls.size(); ++i) {
    const bool foot = i == footControl;
    if (dragState.grip == Grip::Entry ? foot && !group : !foot) continue;
    controls[i]->Left = dragState.controls[i].Left + by.x();
    controls[i]->Top = dragState.controls[i].Top + by.y();
  }
}

// Writing ------------------------------------------------------------------------------------------------------------

bool Tell_Too_Far() {
  Message_Box(hand_texts::tooFar, MsgButtons::Ok, MsgIcon::Warning, hand_texts::title);
  return false;
}

// All or nothing: an error takes everything back and passes on, positions beyond the range are told. Then one redraw.
bool Write_In_One(const std::function<void()>& work) {
  bool done = true;
  try {
    In_Transaction(work);
  } catch (const Error& error) {
    To_Hand();
    if (error.number != errors::overflow) {
      Map_Redraw();
      throw;
    }
    done = Tell_Too_Far();
  }
  To_Hand();
  if (done) events.TableChanged.Emit();
  Redraw_Changed_Entries();
  events.HandChanged.Emit();
  return done;
}

int Whole(qint64 position) {
  if (position < std::numeric_limits<int16_t>::min() || position > std::numeric_limits<int16_t>::max())
    Raise(errors::overflow);
  return static_cast<int>(position);
}

// A single text, picture or label goes without its second position.
bool Moves_Alone(const EntryType& type, bool labelOnly) {
  return labelOnly || type.IsText() || type.Kind() == EntryKind::Picture;
}

void Shift_Current(int dx, int dy, bool alone) {
  const EntryRow before = Read_Entry(*rsEntries);
  EntryRow row = before;
  if (alone) {
    row.Xmap = Whole(qint64{row.Xmap} + dx);
    row.Ymap = Whole(qint64{row.Ymap} + dy);
    return Update_Entry(row);
  }
  Shift_Row(row, dx, dy);
  Update_Entry(row);
  Extras_Follow(before, row);
  if (EntryType::Parse(row.Typ).HasVertices()) Shift_Vertices(before, dx, dy);
}

bool Shift_Hand(int dx, int dy, bool labelOnly) {
  if ((dx == 0 && dy == 0) || !To_Hand()) {
    Redraw_Changed_Entries();
    events.HandChanged.Emit();
    return false;
  }
  const QStringList group = Map.GroupInHand;
  const EntryType type = Type_Here();
  return Write_In_One([&] {
    if (group.isEmpty()) return Shift_Current(dx, dy, Moves_Alone(type, labelOnly));
    for (const QString& bookmark : group) {
      if (!rsEntries->HasRow(bookmark)) continue;
      rsEntries->SetBookmark(bookmark);
      Shift_Current(dx, dy, false);
    }
  });
}

// The position keeps its place within the box when the box gets another place and size.
int Scaled(int position, int from, int size, int newFrom, int newSize) {
  if (size <= 0) return newFrom;
  return Whole(std::llround(newFrom + static_cast<double>(position - from) * newSize / size));
}

void Resize_Current(const EntryBox& old, const EntryBox& now) {
  const EntryRow before = Read_Entry(*rsEntries);
  EntryRow row = before;
  if (!EntryType::Parse(row.Typ).IsFreeFigure()) {
    set_entry_box(row, now);
    Whole(qint64{now.x} + now.width);
    Whole(qint64{now.y} + now.height);
    Update_Entry(row);
    return Extras_Follow(before, row);
  }
  const QString table = EntryId::Parse(row.ID).TableName();
  std::vector<QPoint> points = Load_Vertices(table);
  for (QPoint& point : points) {
    point = {Scaled(point.x(), old.x, old.width, now.x, now.width),
             Scaled(point.y(), old.y, old.height, now.y, now.height)};
    if (point.x() < stopLimit) Raise(errors::overflow);
  }
  if (!points.empty()) Write_Vertices(table, points);
  set_entry_box(row, points.empty() ? now : Vertex_Box(points));
  Update_Entry(row);
  Extras_Follow(before, row);
}

void Resize_Hand(const DragState& drag) {
  if (!To_Hand()) return;
  const QPoint by = drag.now - drag.start;
  const EntryRow row = Read_Entry(*rsEntries);
  const EntryBox old = Figure_Box(row);
  const QRect now = Resized_Turned({QPoint(old.x, old.y), QSize(old.width, old.height)}, drag.handle,
                                   QPointF(by) * static_cast<double>(Map.Zoom), Is_Square(EntryType::Parse(row.Typ)));
  Write_In_One([&] { Resize_Current(old, {now.left(), now.top(), now.width(), now.height()}); });
}

void Resize_Picture() {
  const QSize size = Resized_Window_Box().size();
  dragState = {};
  const auto zoom = static_cast<double>(Map.Zoom);
  if (To_Hand())
    Size_Picture(PictureSizing::Free, std::max(1, qRound(size.width() * zoom)),
                 std::max(1, qRound(size.height() * zoom)));
  Map_Redraw();
  events.HandChanged.Emit();
}

QPoint In_View(QPoint window) {
  return {std::clamp(window.x(), 0, std::max(0, Map.ViewWidth - 1)),
          std::clamp(window.y(), 0, std::max(0, Map.ViewHeight - 1))};
}

// Within the view, and never at 0: that would mean no reference line.
void Move_Foot(QPoint to) {
  if (!To_Hand()) return;
  const QPoint at = In_View(to);
  Write_In_One([at] { Set_Foot_Point({std::max(1, Map_X(at.x())), Map_Y(at.y())}); });
}

bool Outside(QPoint window) {
  return window.x() < 0 || window.y() < 0 || window.x() >= Map.ScaleWidth - Map.ScrollBarW ||
         window.y() >= Map.ScaleHeight - Map.ScrollBarH;
}

void Ask_To_Delete_Outside() {
  const MsgAnswer answer =
      Message_Box(hand_texts::outside, MsgButtons::YesNo, MsgIcon::Question, hand_texts::title, MsgDefault::Second);
  if (answer == MsgAnswer::Yes && To_Hand() && Delete_With_Extras(true)) return;
  Map_Redraw();
  events.HandChanged.Emit();
}

}  // namespace

Grip Grip_At(QPoint window, int* handle) {
  if (handle) *handle = -1;
  if (Map.InHand.isEmpty()) return Entry_In_Hand() && Near_Text(window) ? Grip::Entry : Grip::None;
  const int found = Handle_At(window);
  if (found >= 0) {
    if (handle) *handle = found;
    return Grip::Handle;
  }
  if (const int vertex = Vertex_At(window); vertex >= 0) {
    if (handle) *handle = vertex;
    return Grip::Vertex;
  }
  if (Map.imgRfLine.Visible && Control_Box(Map.imgRfLine).contains(window)) return Grip::FootPoint;
  if (Near_Text(window) || On_Region(window)) return Grip::Entry;
  if (Map.imgBild.Visible && Control_Box(Map.imgBild).adjusted(-1, -1, 1, 1).contains(window)) return Grip::Entry;
  return On_Shape(window) ? Grip::Entry : Grip::None;
}

void Begin_Drag(Grip grip, int handle, QPoint window) {
  Cancel_Drag();
  const bool pending = Text_Pending();
  if (grip == Grip::None || !Store_Pending_Text() || !To_Hand()) return;
  if (pending) Redraw_Changed_Entries();
  if (Hand_Is_Hidden()) Activate_Entry();
  DragState drag;
  drag.grip = grip;
  drag.handle = handle;
  drag.start = drag.now = window;
  drag.view = View_Now();
  const auto controls = Dragged_Controls();
  for (size_t i = 0; i < controls.size(); ++i) drag.controls[i] = *controls[i];
  dragState = drag;
  const EntryType type = Type_Here();
  if (grip == Grip::Entry) {
    dragState.labelOnly = type.IsPolygon() && Map.GroupInHand.isEmpty() && Near_Text(window);
    Take_Entry_Outline();
  } else if (grip == Grip::Handle) {
    dragState.base = Sized_Outline(Sized_Box());
  } else if (grip == Grip::Vertex) {
    dragState.base = Vertex_Neighbours(handle, dragState.moving);
    dragState.closed = false;
  } else {
    const QPointF foot = Control_Box(Map.imgRfLine).center();
    dragState.base = QPolygonF({QPointF(Window_X(static_cast<double>(rsEntries->Integer(column::Xmap))),
                                        Window_Y(static_cast<double>(rsEntries->Integer(column::Ymap)))),
                                foot});
    dragState.closed = false;
  }
}

void Drag_To(QPoint window) {
  if (!dragState.Active()) return;
  dragState.now = window;
  const QPoint by = window - dragState.start;
  if (!dragState.moved) {
    if (std::abs(by.x()) < clickReach && std::abs(by.y()) < clickReach) return;
    dragState.moved = true;
    Unpaint_Hand();
    events.MapPainted.Emit();
  }
  if (dragState.grip == Grip::Handle) {
    // From the controls as they were: only the outline and the handle in the hand move.
    dragState.outline = Sized_Outline(Resized_Window_Box());
  } else {
    dragState.outline = dragState.base;
    if (dragState.grip == Grip::Vertex) {
      if (dragState.moving < dragState.outline.size()) dragState.outline[dragState.moving] += by;
    } else if (dragState.grip == Grip::FootPoint) {
      dragState.outline.back() += by;
    } else {
      dragState.outline.translate(by);
    }
    if (dragState.grip != Grip::Vertex) Move_Controls(by);
  }
  events.HandChanged.Emit();
}

void End_Drag(QPoint window) {
  if (!dragState.Active()) return;
  Drag_To(window);
  if (!dragState.moved) return Cancel_Drag();
  const DragState drag = dragState;
  if (drag.grip == Grip::Entry && Outside(window)) {
    Cancel_Drag();
    return Ask_To_Delete_Outside();
  }
  if (drag.grip != Grip::Handle) Put_Dragged_Back();
  const int dx = Map_X(window.x()) - Map_X(drag.start.x()), dy = Map_Y(window.y()) - Map_Y(drag.start.y());
  if (drag.handle == pictureHandle) return Resize_Picture();
  dragState = {};
  switch (drag.grip) {
    case Grip::Entry:
      Shift_Hand(dx, dy, drag.labelOnly);
      break;
    case Grip::FootPoint:
      Move_Foot(window);
      break;
    case Grip::Handle:
      Resize_Hand(drag);
      break;
    case Grip::Vertex: {
      const QPoint to = In_View(window);
      Move_Vertex(drag.handle,
                  QPoint(Map_X(to.x()), Map_Y(to.y())) - QPoint(Map_X(drag.start.x()), Map_Y(drag.start.y())));
      break;
    }
    case Grip::None:
      break;
  }
}

void Move_In_Hand(int dx, int dy) {
  if (dragState.Active() || !Store_Pending_Text() || !To_Hand()) return;
  Shift_Hand(dx, dy, false);
}
