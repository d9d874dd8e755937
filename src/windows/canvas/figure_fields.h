#pragma once
#include <QString>
#include <optional>

class QDialog;

// What the windows of figures share.

// A window that stays open comes to lie at the right edge of the main window: the middle of the map stays free.
void Place_Beside_Map(QDialog& window);
// A whole number of map pixels and nothing else.
std::optional<int> Pixels_Of(const QString& text);
// Length in the map's unit, else in millimetres on paper: "Pixel  (1,2 km)".
QString Pixels_Text(double pixels, bool vertical);
