#pragma once
#include <functional>
#include <optional>

#include "analysis/population.h"

// The report "Flaechen.stk": sizes, density and species of every area and figure as a text, lines ended by CR LF.
// Hidden and marked ones are in it. Nothing if there is neither area nor figure. `step` is called once per shape; false
// ends the work with nothing.
std::optional<QString> Area_Text(const MapInput& input, const std::function<bool()>& step = {});
