#pragma once
#include <QString>
#include <optional>

// What the windows of figures share.

// A whole number of map pixels and nothing else.
std::optional<int> Pixels_Of(const QString& text);
// Length in the map's unit, else in millimetres on paper: "Pixel  (1,2 km)".
QString Pixels_Text(double pixels, bool vertical);
