#pragma once
#include <QPoint>
#include <QPolygonF>
#include <array>

#include "state/map_state.h"
#include "view/view.h"

// What of the entry in hand is being dragged. Only an outline or a live control moves; tools/drag begins and ends it.

enum class Grip { None, Entry, FootPoint, Handle, Vertex };

inline constexpr int pictureHandle = 8;  // number of imgHandle among the handles

struct DragState {
  Grip grip = Grip::None;
  int handle = -1;     // 0..7 while a handle is dragged, pictureHandle for that of a picture; the number of a vertex
  QPoint start, now;   // window pixels
  ViewPlace view;      // at the start
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

inline constexpr size_t draggedControls = 13, footControl = 4;  // footControl: the place of imgRfLine among them
std::array<LiveControl*, draggedControls> Dragged_Controls();   // in the order of DragState::controls
// The controls are where they were when the drag began.
void Put_Dragged_Back();
// Nothing is dragged any more, and everything is where it was; nothing is written.
void Cancel_Drag();
// The same while the map is drawn anew, where the view is not that of the start: outline and entry would part.
void Drop_Drag_Of_Other_View();
