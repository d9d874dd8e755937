#pragma once
#include <QByteArray>
#include <QString>
#include <map>
#include <vector>

#include "platform/database.h"
#include "platform/page_reader.h"

// Reads the rows out of a damaged database file, page by page, without SQLite. Any content is taken: nothing in the
// file is trusted.
namespace page_scanner {

struct Table {
  QString name;  // empty if only the rows are left
  QByteArray sql;
  std::vector<FieldInfo> fields;
  std::map<qint64, Fields> rows;  // by key, which is their order
};

// Tables in order of creation, then those of unknown name. A row is assigned through the file's own description of its
// tables as far as it is left, else to the table of `known` whose columns it fits; one without a name stands for any
// table with such columns.
std::vector<Table> Scan(const QByteArray& file, const std::vector<TableDef>& known);

}  // namespace page_scanner
