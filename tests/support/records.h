#pragma once
// A new row of these values, in the order of the columns.
inline void Append(Recordset& rows, const std::vector<Value>& values) {
  rows.AddNew();
  for (size_t i = 0; i < values.size(); ++i) rows.Set(static_cast<int>(i), values[i]);
  rows.Update();
}

// One value of the current row.
template <class Field>
void Set_Field(Recordset& rows, Field field, const Value& value) {
  rows.Edit();
  rows.Set(field, value);
  rows.Update();
}

// Everything a table file holds, a line each: tables by name, their columns, their rows in order.
inline QStringList Content_Of(Database& database, bool withKeys = false) {
  QStringList names, lines;
  for (const TableDef& table : database.TableDefs()) names << table.name;
  names.sort();
  for (const QString& name : names) {
    const auto rows = database.OpenRecordset(name);
    QString head = name + u':';
    for (const FieldInfo& field : rows->Fields())
      head += u" %1/%2/%3"_s.arg(field.name).arg(static_cast<int>(field.type)).arg(field.size);
    for (lines << head; !rows->Eof(); rows->MoveNext()) {
      QString line = withKeys ? rows->Bookmark() + u'|' : QString();
      for (int i = 0; i < static_cast<int>(rows->Fields().size()); ++i)
        line += u"%1:%2|"_s.arg(rows->Raw(i).index()).arg(rows->Text(i));
      lines << line;
    }
  }
  return lines;
}
