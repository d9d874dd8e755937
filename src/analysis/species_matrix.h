#pragma once
#include <QStringList>
#include <functional>
#include <optional>
#include <vector>

#include "analysis/diversity.h"
#include "analysis/map_input.h"

// Species by area: how many individuals of each species are assigned to each area, figure, line or group.

enum class MatrixKind { Area, Figure, Line, Group, Marked };

struct MatrixRow {
  MatrixKind kind = MatrixKind::Area;
  QString id, name;         // ID and text; of a group its name twice
  int row = -1;             // number of its row in the table; -1 for a group and for the marked entries
  std::vector<int> counts;  // individuals, one for each species
  DiversityIndices indices;
};

struct SpeciesMatrix {
  std::vector<QString> species;  // in the order of a German word list; "" first: texts of digits only
  std::vector<MatrixRow> rows;   // areas, figures, lines in table order, then groups
  std::vector<qint64> totals;    // of each species over all rows
  DiversityIndices all;          // of the totals
  QStringList tooLarge;          // texts whose number is beyond 32767; not counted
};

struct MatrixRows {
  bool marked = false;  // a last row of the marked texts and symbols, whatever they are assigned to
};

// What has entries assigned to it, and every area; hidden and marked ones too. Counts as in the population parameters.
// An entry that belongs to an area and to a group counts in both rows, and so twice in the totals. A total of one cell
// beyond 32 bits is error 6. `step` is called once per row of the matrix; false ends the work with nothing.
std::optional<SpeciesMatrix> Calc_Species_Matrix(const MapInput& input, const std::function<bool()>& step = {},
                                                 MatrixRows rows = {});

// "Fläche", "Figur", "Linie", "Gruppe", "Markierte".
QString Matrix_Kind_Word(MatrixKind kind);
// As shown: "(ohne Namen)" for a species without a name.
QString Species_Shown(const QString& name);
