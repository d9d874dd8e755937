#pragma once
#include <QPoint>
#include <optional>

// Button "Text": the next click on the map opens the edit box for a new text there. Pressed again it gives up. True if
// it waits now.
bool Toggle_Text_Tool();
// A new text at the window position, at the next click without one.
void Insert_Text(std::optional<QPoint> window);
