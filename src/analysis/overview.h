#pragma once
#include <QSize>
#include <QSizeF>
#include <vector>

#include "analysis/map_input.h"

// The overview of a map: its size, its measures, how many entries of each kind it has.

struct KindCount {
  QString word;
  int visible = 0, hidden = 0, marked = 0;  // a marked one that can be seen counts as visible as well
};
// Texts, pictures, lines, areas, figures, plan squares, scale bar, north arrow; then the total. Reference lines, the
// net and designs are no entries.
std::vector<KindCount> Count_Kinds(std::span<const EntryRow> rows);

// The note "OverView.inf", lines ended by CR LF; its first line is the heading "Übersicht". `pixels`: size of the scan;
// `mm`: the same on paper.
QString Overview_Text(const MapInput& input, QSize pixels, QSizeF mm);
