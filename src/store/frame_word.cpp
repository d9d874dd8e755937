#include "store/frame_word.h"

#include <algorithm>
#include <cstdlib>

#include "store/stored_number.h"

FrameWord FrameWord::Parse(qint64 stored) {
  FrameWord word;
  word.framed = stored >= 0;
  int rest = std::abs(Stored_Number(stored));
  if (rest >= 10000) {
    word.notXor = true;
    rest %= 10000;
  }
  if (rest >= 1000) {
    word.pattern = rest / 1000;
    rest %= 1000;
  }
  if (rest >= 100) {
    word.width = std::min(rest / 100, 8);
    rest %= 100;
  }
  word.color = rest > 15 ? 0 : rest;
  return word;
}

int FrameWord::ToNumber() const {
  int number = color;
  if (width > 1) number += 100 * width;
  if (pattern > 1) number += 1000 * pattern;
  if (notXor) number += 10000;
  if (framed) return number;
  return number == 0 ? -100 : -number;
}

int FrameWord::StoredColor(qint64 stored) { return std::abs(Stored_Number(stored)) % 100; }

namespace {
int Signed_Frame(int size, bool framed) { return framed ? size : size == 0 ? -100 : -size; }
}  // namespace

int Frame_With_Color(int stored, int color) {
  return Signed_Frame(std::abs(Stored_Number(stored)) / 100 * 100 + color, stored >= 0);
}

int Frame_Switched(int stored, bool on) { return Signed_Frame(std::abs(Stored_Number(stored)), on); }
