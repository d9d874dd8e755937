#pragma once
#include <optional>

#include "platform/database.h"
#include "platform/page_reader.h"

// A file's own description of its tables, read with the care that a damaged one needs: it is written several times
// over, and what is known of a table beforehand counts more than what stands in the file.
namespace page_scanner {

struct Described {
  QString name;
  int root = 0;  // page of the topmost node; 0 where it cannot be told
  QByteArray sql;
};

// The table that a row of the description stands for; none for other rows. One damaged byte in it does no harm.
std::optional<Described> Read_Description(const Fields& row);
// Tables in the bytes of a page of the description, whatever became of its rows.
std::vector<Described> Find_Descriptions(const QByteArray& page);

// Are these the known columns but for a few that damage has made unreadable? All else is a table of another program.
bool Is_Akin(const std::vector<FieldInfo>& fields, const std::vector<FieldInfo>& known);

struct Columns {
  std::vector<FieldInfo> fields;
  bool asDescribed = false;  // the statement can be taken as it stands
};
// The columns of a table whose widest row has `width` fields. `def`: what is known of the table by its name; `alike`:
// what is known of tables without a name.
Columns Columns_Of(const Described& table, size_t width, const TableDef* def, const std::vector<TableDef>& alike);

}  // namespace page_scanner
