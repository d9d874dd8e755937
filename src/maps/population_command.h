#pragma once
#include "analysis/map_input.h"

// The population parameters and the matrix of species by area, for the open map.

// Whose species are counted: the choices of frmPopOptions.
enum class SpeciesFrom { AllTexts, Areas, Marked, Figures, Lines, Groups };
struct PopOptions {
  SpeciesFrom from = SpeciesFrom::Areas;
  bool diversity = true;
};

// What "Berechnen" of frmPopOptions does. All texts go to the assignment to colours; areas give the sheet "Flächen",
// after the questions for a map without areas or without entries assigned to them; the others give the sheet "Matrix"
// as well. Everything is told, errors too.
void Calc_Chosen_Population(const PopOptions& options);

// The sheet "Flächen", from the first area on; and, where the options ask for it, the sheet "Matrix". "Abbrechen"
// leaves the workbook as it is. Tells numbers that are too large, areas of one species, and that there is nothing.
// Errors as the statistics and the workbook have them.
void Calc_Population(const MapInput& input, const PopOptions& options);

void Write_Matrix_Sheet();  // mnuMatrixXL: the sheet "Matrix"
void Write_Matrix_Csv();    // mnuMatrixCSV: asks for a file and writes the matrix into it
void Tell_No_Area();        // the box: there is no area, figure or line
