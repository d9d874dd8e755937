#pragma once
#include <QColor>
#include <QPoint>
#include <QString>
#include <QStringList>
#include <array>
#include <functional>
#include <vector>

#include "analysis/measures.h"
#include "store/entry.h"

// All that the statistics know of a map, as values: they look at no table, picture or window themselves.
struct MapInput {
  QString mapName, tableName;  // as shown in headings
  std::vector<EntryRow> rows;  // in table order, without the header row
  MapMeasure measure;
  std::array<QRgb, 16> palette{};
  // Vertices of a line, area or free figure by its row, up to the stop mark; none for a missing table.
  std::function<std::vector<QPoint>(const EntryRow&)> vertices = [](const EntryRow&) { return std::vector<QPoint>(); };
};

// Of the open map: rows by one pass over the table (the current row stays), measures, palette. Without a scale bar the
// unit is " mm".
MapInput Read_Map_Input();
struct SortedMapInput {
  MapInput map;
  QStringList columns;              // titles
  std::vector<QStringList> values;  // of each row in turn, one for each of these columns
};
// The same with the rows in the order of their texts, and the user's columns: the listing's input.
SortedMapInput Read_Sorted_Map_Input();
// Names, measures, palette and vertices, for work on a single row.
MapInput Map_Input_Without_Rows();
// The measures alone.
MapMeasure Read_Map_Measure();
