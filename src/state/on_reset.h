#pragma once
#include <functional>

// What a room keeps in variables of its own belongs to the shared state as well. A constant beside them names them,
//   const OnReset fresh(preview, shownKey);
// and Reset_Global_State brings them back to the value their type begins with. What is not here or in global_state.cpp
// outlives a fresh start: what a room is bound to, and numbers that must not be given twice.
class OnReset {
 public:
  template <typename... T>
  explicit OnReset(T&... variables) : work([&variables...] { ((variables = T()), ...); }) {
    Hang_In();
  }
  ~OnReset();
  OnReset(const OnReset&) = delete;
  OnReset& operator=(const OnReset&) = delete;

 private:
  friend void Reset_Rooms();
  void Hang_In();
  std::function<void()> work;
};

// All of them, in no order that could be relied on. Called by Reset_Global_State.
void Reset_Rooms();
