#pragma once
#include <QPoint>
#include <functional>

#include "tools/area_trace.h"

// The tool "Fd": each click into a coloured patch of the scan looks for its outline, which is shown over the map until
// it is taken as an area or another click is made. Tolerance and way stand in frmMDI. The scan is looked at as it is at
// 100 %, without entries.

struct TraceListener {
  std::function<void(const TraceResult& result)> traced;
  std::function<void()> dropped;  // the tool went unasked
};
// Takes the mouse of the map. False if what is being typed could not be stored.
bool Start_Tracing(TraceListener listener);
// Gives the mouse back; nothing is taken, and the listener does not hear of it.
void End_Tracing();
// The last click once more; nothing without one.
void Trace_Again();
// Whoever clicks into a patch hardly means that much of the map (0 to 1): the colour has run out of its patch.
inline constexpr double runOutPart = 0.3;
// The last click once more with the largest of some lower tolerances at which less than that is found; it stands in
// frmMDI then. False if there is none: all is as before.
bool Trace_Less();
// Back to waiting for a click.
void Forget_Trace();
// The outline becomes an area that looks like the next one. False if there is none, or it could not be written, which
// was told. The tool waits for the next click then.
bool Take_Traced_Area();
