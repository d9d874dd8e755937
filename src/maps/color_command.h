#pragma once
#include <functional>

#include "analysis/color_assignment.h"

// The assignment of the texts of the open map to the colours of its picture.

// Who watches the work. Without it a progress window does.
struct ColorWatch {
  std::function<void(const QString& text)> say;        // what is being done now
  std::function<bool(int done, int total)> step = {};  // rows; false ends the work
};
enum class ColorEnd { Written, Stopped, Failed };
// The sheet "Zuordnung". An error is told; where the user goes on by "OK" the sheet says that it is not complete. The
// former sheet stays if the work is stopped.
ColorEnd Assign_Colors(const ColorOptions& options, const ColorWatch& watch = {});
