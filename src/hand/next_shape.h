#pragma once
#include <optional>

#include "state/on_reset.h"
#include "store/entry_id.h"

// What the next line, area or figure will look like; the colours are CurVG, CurHG, CurRA. For the session.
struct NextShapeState {
  int width = 1;                             // pen width, pixels (Xline of lines and areas)
  int lineStyle = 1;                         // Yline of a line: 1 solid to 5, negative = transparent
  std::optional<LineEnds> ends;              // marks at the ends of a line
  int fill = 1;                              // fill code: Yline of an area, Schrift of a figure
  bool rounded = false;                      // rounded edges of lines, areas and free figures
  int figure = 20;                           // kind of a figure, 20..23
  int figureWidth = 120, figureHeight = 80;  // of a figure placed by a click, map pixels
  bool operator==(const NextShapeState&) const = default;
};
inline NextShapeState NextShape;
inline const OnReset freshShape(NextShape);  // goes with the state
