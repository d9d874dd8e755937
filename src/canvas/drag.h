#pragma once
#include <QPoint>
#include <QPolygonF>

// Moving the entry in hand, by mouse or keys. During a drag only an outline or a live control moves; the row is written
// once at the end.
enum class Grip { None, Entry, FootPoint, Handle };

struct DragState {
  Grip grip = Grip::None;
  int handle = -1;     // 0..7 while a handle is dragged
  QPoint start, now;   // window pixels
  QPolygonF outline;   // window pixels, at `now`
  bool closed = true;  // outline is a polygon, else a polyline
  bool Active() const { return grip != Grip::None; }
};
extern DragState dragState;

// What would be gripped there: a handle or the foot point of the entry in hand, the entry itself, or nothing.
Grip Grip_At(QPoint window, int* handle = nullptr);
void Begin_Drag(Grip grip, int handle, QPoint window);
void Drag_To(QPoint window);   // moves outline and controls; no redraw
void End_Drag(QPoint window);  // writes Xmap, Ymap (both corners of a plan square, the vertices of a line or area, all
                               // rows of a group), size or foot point; redraw. A drag that ends outside the window asks
                               // whether to delete the entry. Positions stay within 16 bits.
void Cancel_Drag();
void Move_In_Hand(int dx, int dy);  // arrow keys: map pixels
