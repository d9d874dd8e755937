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

MapInput Read_Map_Input() {
  MapInput input;
  input.mapName = QFileInfo(MapFile).fileName();
  input.tableName = QFileInfo(TableFile).fileName();
  input.measure = Read_Map_Measure();
  input.palette = Palette;
  input.vertices = [](const EntryRow& row) {
    const std::vector<QPoint>& vertices = Load_Vertices(EntryId::Parse(row.ID).TableName());
    return vertices;
  };
  if (!rsEntries || !rsEntries->IsOpen()) return input;
  const KeepCurrentRow keep;
  input.rows.reserve(static_cast<size_t>(Entry_Count()));
  rsEntries->MoveFirst();
  if (!rsEntries->Eof()) rsEntries->MoveNext();  // the header row
  for (; !rsEntries->Eof(); rsEntries->MoveNext()) input.rows.push_back(Read_Entry(*rsEntries));
  return input;
}
