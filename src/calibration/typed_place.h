#pragma once
#include <QString>
#include <optional>

#include "calibration/control_point.h"

// Coordinates as somebody types them.

// Metres ("646000", "646 000"), decimal degrees ("11,05"), degrees with minutes and seconds ("11°01'30,5", "11 1 30.5",
// with N, O, S, W behind it or a sign before). Nothing for every other text, and beyond 180 degrees.
std::optional<double> Typed_Coordinate(NetKind kind, const QString& text);
// The same back, as it is shown in a box: "646000", "11,016667", "11°01'30,50\"".
QString Coordinate_Typed(NetKind kind, double value);
// The distance of net lines: metres, degrees, or minutes and seconds ("1'", "30\"", "1° 30'").
std::optional<double> Typed_Spacing(NetKind kind, const QString& text);
// The same back: "1000", "0,01", "1'", "30\"".
QString Spacing_Typed(NetKind kind, double value);
