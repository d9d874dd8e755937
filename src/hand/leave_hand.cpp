#include "hand/leave_hand.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "hand/activation.h"
#include "state/step.h"

namespace {

std::vector<std::pair<int, std::function<bool()>>> watched;
int lastNumber = 0;

}  // namespace

int Watch_Typing(std::function<bool()> store) {
  watched.emplace_back(++lastNumber, std::move(store));
  return lastNumber;
}

void Forget_Typing(int number) {
  std::erase_if(watched, [number](const auto& window) { return window.first == number; });
}

bool Store_Typed() {
  const UndoStep typing({}, UndoStep::Joins::Nothing);  // whatever asks for it comes after it
  const auto windows = watched;                         // what is told meanwhile may close one
  const bool stored = std::all_of(windows.begin(), windows.end(), [](const auto& window) { return window.second(); });
  return stored && Store_Pending_Text();
}

bool Leave_Hand() { return Store_Typed() && (!Entry_In_Hand() || End_Entry()); }
