#pragma once

// What one pass over the entries has met.
struct DrawCounts {
  int drawn = 0, hidden = 0, inactive = 0, marked = 0;
  int planRows = 0;                     // of the raster: squares and design
  int planUnmarked = 0, planShown = 0;  // of them without marks; of those, shown: the menu switches no others
  int deleted = 0;                      // entries that could not be drawn and were deleted by the user
};
