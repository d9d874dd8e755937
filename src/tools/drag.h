#pragma once
#include <QPoint>
#include <QPolygonF>
#include <QStringList>
#include <array>

#include "state/map_state.h"

// Moving the entry in hand, by mouse or keys. During a drag only an outline or a live control moves; the row is written
// once at the end.
enum class Grip { None, Entry, FootPoint, Handle, Vertex };

inline constexpr int pictureHandle = 8;  // number of imgHandle among the handles

struct DragState {
  Grip grip = Grip::None;
  int handle = -1;     // 0..7 while a handle is dragged, pictureHandle for that of a picture; the number of a vertex
  QPoint start, now;   // window pixels
  QPolygonF outline;   // window pixels, at `now`; empty until the mouse has moved far enough
  bool closed = true;  // outline is a polygon, else a polyline
  bool moved = false;  // the mouse was 3 pixels away from the start: it is no click
  int moving = 0;      // the point of the outline that goes with the mouse while a vertex is dragged
  bool labelOnly = false;  // the label of a line or area goes without its vertices
  QPolygonF base;          // outline at the start
  // Live controls at the start: Text2, imgBild, lblShape, imgHandle, imgRfLine, lblHandle.
  std::array<LiveControl, 13> controls;
  bool Active() const { return grip != Grip::None; }
};
extern DragState dragState;

// What would be gripped there: a handle or the foot point of the entry in hand, the entry itself, or nothing.
Grip Grip_At(QPoint window, int* handle = nullptr);
// A pending text is stored first; if that fails nothing begins.
void Begin_Drag(Grip grip, int handle, QPoint window);
void Drag_To(QPoint window);  // moves outline and controls; no redraw
// Writes Xmap, Ymap (both corners of a plan square, the vertices of a line or area, all rows of a group), size or foot
// point, in one transaction; redraw. The foot point of a single text or picture stays where it is. A drag that ends
// outside the window asks whether to delete the entry; if not, it goes back. A position beyond 16 bits refuses the
// whole with a message. Less than 3 pixels are a click: nothing is written.
void End_Drag(QPoint window);
void Cancel_Drag();                 // everything is where it was; nothing is written
void Move_In_Hand(int dx, int dy);  // arrow keys: map pixels
