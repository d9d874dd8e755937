#include "analysis/kataster_sheet.h"

#include "analysis/assigned_entries.h"
#include "analysis/result_cells.h"

namespace {

constexpr int idColumn = 1, textColumn = 2, areaColumn = 3, perimeterColumn = 4, firstUserColumn = 5;
constexpr CellChange centred{.align = CellAlign::Center};

struct Block {
  QLatin1String key;
  QString heading;
};

class Listing {
 public:
  Listing(const SortedMapInput& values, Sheet& target) : input(values), assigned(values.map.rows), sheet(target) {}

  void Write() {
    sheet.SetColumnWidth(idColumn, 24);
    sheet.SetColumnWidth(textColumn, 36);
    for (int i = areaColumn; i < firstUserColumn + input.columns.size(); ++i) sheet.SetColumnWidth(i, 18);
    sheet.Put(1, 1, QStringLiteral("Einträge in der Karte:"));
    sheet.Put(2, 1, input.map.mapName);
    const Block blocks[] = {{QLatin1String("Flaeche"), QStringLiteral("Flächen:")},
                            {QLatin1String("Linie"), QStringLiteral("Linien:")},
                            {QLatin1String("Text"), QStringLiteral("Texteinträge:")},
                            {QLatin1String("Bild"), QStringLiteral("Bildeinträge:")}};
    for (const Block& block : blocks) Write_Block(block);
  }

 private:
  const EntryRow& Row_At(int number) const { return input.map.rows[static_cast<size_t>(number)]; }

  void Write_Block(const Block& block) {
    bool first = true;
    for (int number = 0; number < static_cast<int>(input.map.rows.size()); ++number) {
      const EntryRow& entry = Row_At(number);
      if (!entry.ID.contains(block.key)) continue;
      const EntryId id = EntryId::Parse(entry.ID);
      if (!id.name.contains(block.key) || !id.assignment.isEmpty()) continue;
      if (first) Write_Titles(block);
      first = false;
      Write_Row(number, id);
      if (id.IsArea() || id.IsLine()) Write_Assigned(id);
    }
  }

  void Write_Titles(const Block& block) {
    row += 2;
    Put_Cell(sheet, row, 1, block.heading, {.bold = true});
    ++row;
    Put_Cell(sheet, row, idColumn, QStringLiteral("ID"), centred);
    Put_Cell(sheet, row, textColumn, QStringLiteral("Eintrag"), centred);
    for (int i = 0; i < input.columns.size(); ++i) Put_Cell(sheet, row, firstUserColumn + i, input.columns[i], centred);
    const QString& unit = input.map.measure.unit;
    if (block.key == QLatin1String("Flaeche")) {
      Put_Cell(sheet, row, areaColumn, QStringLiteral("Flächengröße"), centred);
      Put_Cell(sheet, row, perimeterColumn, QStringLiteral("Umfang"), centred);
      ++row;
      Put_Cell(sheet, row, areaColumn, unit + QStringLiteral("^2"), centred);
      Put_Cell(sheet, row, perimeterColumn, unit, centred);
    } else if (block.key == QLatin1String("Linie")) {
      Put_Cell(sheet, row, areaColumn, QStringLiteral("Länge"), centred);
      ++row;
      Put_Cell(sheet, row, areaColumn, unit, centred);
    }
  }

  void Write_Row(int number, const EntryId& id) {
    const EntryRow& entry = Row_At(number);
    ++row;
    Put_Cell(sheet, row, idColumn, id.TableName(), centred);
    CellStyle look = Own_Look(entry, colors);
    look.align = CellAlign::Center;
    sheet.Put(row, textColumn, entry.Eintrag.trimmed(), look);
    if (EntryType::Parse(entry.Typ).IsPolygon()) Write_Size(entry, id);
    const QStringList& values = input.values[static_cast<size_t>(number)];
    for (int i = 0; i < values.size(); ++i)
      if (!values[i].isEmpty()) Put_Cell(sheet, row, firstUserColumn + i, values[i], centred);
  }

  void Write_Size(const EntryRow& entry, const EntryId& id) {
    const std::vector<QPoint> vertices = input.map.vertices(entry);
    const double perPixel = input.map.measure.perPixel;
    const CellChange number{.align = CellAlign::Right, .format = cell_formats::tenths};
    if (id.IsLine()) {
      Put_Cell(sheet, row, areaColumn, Total_Length(Line_Segments(vertices, perPixel)).nat, number);
      return;
    }
    const ShapeSize size = Polygon_Size(vertices, perPixel);
    Put_Cell(sheet, row, areaColumn, size.areaNat, number);
    Put_Cell(sheet, row, perimeterColumn, size.perimeterNat, number);
  }

  // Texts first, then pictures.
  void Write_Assigned(const EntryId& target) {
    for (const QLatin1String key : {QLatin1String("Text"), QLatin1String("Bild")}) {
      for (const int number : assigned.To(target)) {
        const EntryId id = EntryId::Parse(Row_At(number).ID);
        if (id.name.contains(key)) Write_Row(number, id);
      }
    }
  }

  const SortedMapInput& input;
  const AssignedEntries assigned;
  const PaletteColors colors = QB_Colors();
  Sheet& sheet;
  int row = 3;
};

}  // namespace

Sheet Kataster_Sheet_Of(const SortedMapInput& input) {
  Sheet sheet(QStringLiteral("Kataster"));
  Listing(input, sheet).Write();
  return sheet;
}
