#pragma once
#include <QString>
#include <functional>

#include "analysis/distances.h"

// Measures between entries that the user clicks on the map, one after the other. The lines are drawn over the map; it
// goes on until it is ended or dropped.

namespace distance_texts {
inline const QString first = QStringLiteral("Mauscursor auf einen Eintrag setzen, und linke Maustaste drücken.");
inline const QString next = QStringLiteral("Cursor auf nächsten Eintrag\nsetzen.");
}  // namespace distance_texts

struct DistanceWatch {
  // After each entry and each change of the mode: how many points there are, and their distances.
  std::function<void(int points, const std::optional<Distances>& distances)> changed;
  std::function<void()> dropped;  // another tool, Esc, or the map is closed
};
// Takes the mouse. A text, symbol or picture stands at its foot point, else at its position; a figure at its middle;
// lines, areas and all else are measured where they are clicked. The entry that was clicked last is passed over. False
// if what is being typed could not be stored.
bool Start_Measuring(DistanceMode mode, DistanceWatch watch);
// Both do nothing while nothing is measured.
void Set_Measuring_Mode(DistanceMode mode);  // with the points there are; Simple keeps the last two
void End_Measuring();                        // without `dropped`
