#pragma once
#include <functional>
#include <optional>

#include "analysis/population.h"
#include "workbook/workbook_sheet.h"

struct PopulationSheetOptions {
  bool diversity = false;
  // Asked at an area with a single species, which has no evenness: true goes on and leaves it empty, false ends the
  // work.
  std::function<bool(const AreaPopulation&)> oneSpecies = {};
};
// The sheet "Flächen". Nothing if the work was ended.
std::optional<Sheet> Population_Sheet(const MapInput& input, const Population& population,
                                      const PopulationSheetOptions& options);
