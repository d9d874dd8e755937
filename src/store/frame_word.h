#pragma once
#include <QtGlobal>

// The column RA of a row: frame colour + 100 x width + 1000 x pattern step + 10000 for the not-xor mode; negative = no
// frame. Nobody else takes the number apart.
struct FrameWord {
  bool framed = true;
  bool notXor = false;
  int pattern = 1;
  int width = 1;  // 1..8 pixels
  int color = 0;  // 0..15

  static FrameWord Parse(qint64 stored);  // any number; the width is cut at 8
  // The colour as it is stored, sound (0..15) or not (to 99).
  static int StoredColor(qint64 stored);
  // RA = 0 cannot be negated: a frame switched off there is stored as -100.
  int ToNumber() const;
  bool operator==(const FrameWord&) const = default;
};

// Changes of a stored number that leave the rest of it as it stands.
int Frame_With_Color(int stored, int color);  // 0..15; shown or not stays
int Frame_Switched(int stored, bool on);
