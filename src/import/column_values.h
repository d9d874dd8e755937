#pragma once
#include <QString>
#include <vector>

#include "platform/database.h"

// Lines "Spalte= Wert": conditions of a filter, and values that are written into columns.

struct ColumnValue {
  QString column, value;
  bool operator==(const ColumnValue&) const = default;
  bool Is_Set() const;     // "" and "*" mean that nothing was typed yet
  QString ToText() const;  // "VG= 4"; "VG= *" while it is not set
  // Blanks round both are dropped. The column is empty where the line holds no "=".
  static ColumnValue Parse(const QString& line);
};

// What Select finds the rows that fulfil every condition that is set; texts are compared ignoring case, "*" stands for
// any characters. Raises 3265 for a column that is not there, 13 for a text where the column holds numbers.
QString Filter_Statement(const std::vector<ColumnValue>& conditions, const std::vector<FieldInfo>& fields);

// Keys of the rows of MapData that fulfil the conditions, or of all others, in their order; header rows are none of
// them. Raises what Filter_Statement raises.
enum class FilterMode { Matching, Others };
std::vector<qint64> Filtered_Rows(Database& source, const std::vector<ColumnValue>& conditions,
                                  FilterMode mode = FilterMode::Matching);

// The value as its column takes it. Raises 13 for a text where it holds numbers, 6 beyond 16 bits.
Value Value_For(const FieldInfo& field, const QString& typed);
