#pragma once
#include <functional>
#include <optional>

// Tool "Dreh": the figure in hand turns after the mouse until a click. `moved` gets the angle while it turns, `ended`
// the angle of the click, or nothing where it was given up. The figure is in hand again then, unless another tool or
// entry was chosen. False without a figure in hand.
bool Turn_By_Mouse(std::function<void(double)> moved, std::function<void(std::optional<double>)> ended);
