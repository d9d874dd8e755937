#include "analysis/map_input.h"

#include <QFileInfo>

#include "state/global_state.h"
#include "store/vertex_table.h"

MapMeasure Read_Map_Measure() {
  MapMeasure measure;
  measure.pixelMm = MapPixelMm;
  measure.hasScale = MapHasScale;
  measure.perPixel = MapHasScale ? MapUnitPerPixel : MapPixelMm;
  if (MapHasScale && !MapUnit.isEmpty()) measure.unit = MapUnit;
  return measure;
}

MapInput Map_Input_Without_Rows() {
  MapInput input;
  input.mapName = QFileInfo(MapFile).fileName();
  input.tableName = QFileInfo(TableFile).fileName();
  input.measure = Read_Map_Measure();
  input.palette = Palette;
  input.vertices = [](const EntryRow& row) { return Load_Vertices(EntryId::Parse(row.ID).TableName()); };
  return input;
}

MapInput Read_Map_Input() {
  MapInput input = Map_Input_Without_Rows();
  if (!rsEntries || !rsEntries->IsOpen()) return input;
  const KeepCurrentRow keep;
  input.rows.reserve(static_cast<size_t>(Entry_Count()));
  rsEntries->MoveFirst();
  if (!rsEntries->Eof()) rsEntries->MoveNext();  // the header row
  for (; !rsEntries->Eof(); rsEntries->MoveNext()) input.rows.push_back(Read_Entry(*rsEntries));
  return input;
}

SortedMapInput Read_Sorted_Map_Input() {
  SortedMapInput input{Map_Input_Without_Rows(), {}, {}};
  if (!dbEntries) return input;
  const auto rows = dbEntries->OpenSnapshot(QStringLiteral("SELECT * FROM MapData ORDER BY Eintrag, rowid"));
  const auto columns = static_cast<int>(rows->Fields().size());
  for (int i = column::fixedCount; i < columns; ++i) input.columns += rows->Fields()[static_cast<size_t>(i)].name;
  for (rows->MoveFirst(); !rows->Eof(); rows->MoveNext()) {
    EntryRow row = Read_Entry(*rows);
    if (EntryId::Parse(row.ID).IsHeader()) continue;
    QStringList values;
    for (int i = column::fixedCount; i < columns; ++i) values += rows->Text(i);
    input.map.rows.push_back(std::move(row));
    input.values.push_back(std::move(values));
  }
  return input;
}
