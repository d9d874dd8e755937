#include "state/on_reset.h"

#include <vector>

namespace {

// Made by the first of them, so that it is there before and goes after all of them.
std::vector<const OnReset*>& Hung() {
  static std::vector<const OnReset*> rooms;
  return rooms;
}

}  // namespace

void OnReset::Hang_In() { Hung().push_back(this); }

OnReset::~OnReset() { std::erase(Hung(), this); }

void Reset_Rooms() {
  for (const OnReset* room : Hung()) room->work();
}
