#include "analysis/population_sheet.h"

#include <cmath>

#include "analysis/analysis_texts.h"
#include "analysis/result_cells.h"
#include "platform/text.h"

namespace {

constexpr QRgb sizeColor = qRgb(0, 0, 255), densityColor = qRgb(155, 0, 0), speciesColor = qRgb(0, 150, 0);
constexpr int columns = 6;
constexpr CellChange centred{.align = CellAlign::Center};

// Writes the blocks of the areas one below the other.
class AreaBlocks {
 public:
  AreaBlocks(const MapInput& map, Sheet& target) : input(map), measure(map.measure), sheet(target) {
    sheet.SetColumnWidth(1, 34);
    sheet.SetColumnWidth(2, 24);
    for (int column = 3; column <= columns; ++column) sheet.SetColumnWidth(column, 21);
    Put_Cell(sheet, row, 1, QStringLiteral("Flächenstatistik"), {.bold = true});
  }

  // False if the work is ended.
  bool Write(const AreaPopulation& area, const PopulationSheetOptions& options) {
    Write_Sizes(area);
    if (area.assigned < 1) return true;
    Write_Density(area);
    const int first = Write_Species(area.species);
    const int last = first + static_cast<int>(area.species.species.size()) - 1;
    if (options.diversity && last >= first) {
      if (area.species.species.size() == 1 && options.oneSpecies && !options.oneSpecies(area)) return false;
      Write_Diversity(Shannon_Diversity(area.species.species), last);
    }
    if (!measure.hasScale) Put_Note(sheet, ++row, columns, analysis_texts::Scale_Hint());
    return true;
  }

  void Next_Area() { row += 2; }

  void Finish(const Population& population) {
    if (population.digitsSeen) Put_Note(sheet, row += 2, columns, analysis_texts::Digits_Hint());
    for (const QString& note :
         {analysis_texts::Left_Out(population.leftOut), analysis_texts::Too_Large(population.tooLarge)})
      if (!note.isEmpty()) Put_Note(sheet, row += 2, columns, note);
    row += 2;
    Put_Cell(sheet, row, 1, QStringLiteral("Ende der Auswertung"), {.color = qRgb(0, 0, 0)});
  }

 private:
  void Write_Sizes(const AreaPopulation& area) {
    const EntryRow& entry = input.rows[static_cast<size_t>(area.row)];
    const QString id = EntryId::Parse(entry.ID).name;
    row += 2;
    Color_Cells(sheet, {row, 1, row + 3, columns}, sizeColor);
    Put_Cell(sheet, row, 1, id, {.align = CellAlign::Left, .bold = true});
    const QString paper = QStringLiteral("Karte:"), nature = QStringLiteral("Natur:");
    for (int i = 0; i < 4; ++i) {
      Put_Cell(sheet, row - 1, 3 + i, i % 2 == 0 ? paper : nature, centred);
      Put_Cell(sheet, row, 3 + i, i < 2 ? QStringLiteral("Größe") : QStringLiteral("Umfang"), centred);
    }
    ++row;
    Put_Cell(sheet, row, 1, QStringLiteral("Maßeinheit"));
    Put_Cell(sheet, row, 3, QStringLiteral("mm^2"), centred);
    Put_Cell(sheet, row, 4, measure.unit + QStringLiteral("^2"), centred);
    Put_Cell(sheet, row, 5, QStringLiteral("mm"), centred);
    Put_Cell(sheet, row, 6, measure.unit, centred);
    row += 2;
    CellStyle look = Own_Look(entry, input.palette);
    look.bold = true;
    sheet.Put(row, 1, id, look);
    const CellChange right{.align = CellAlign::Right};
    Put_Cell(sheet, row, 2, entry.Eintrag.trimmed(), right);
    const auto put = [&](int column, double value, const char* format, CellAlign align) {
      Put_Cell(sheet, row, column, value, {.align = align, .format = format});
    };
    put(3, area.size.areaPx * measure.pixelMm * measure.pixelMm, cell_formats::longWhole, CellAlign::Right);
    put(4, area.size.areaNat, cell_formats::tenths, CellAlign::Right);
    put(5, area.size.perimeterPx * measure.pixelMm, cell_formats::longWhole, CellAlign::Right);
    put(6, area.size.perimeterNat, cell_formats::tenths, CellAlign::General);
    ++row;
    Put_Cell(sheet, row, 1, QStringLiteral("zugeordnete Einträge:"));
    Put_Cell(sheet, row, 2, double(area.assigned), centred);
  }

  // An area without a size has the lines and no numbers.
  void Write_Density(const AreaPopulation& area) {
    row += 2;
    Color_Cells(sheet, {row, 1, row + 2, columns}, densityColor);
    Put_Cell(sheet, row, 1, QStringLiteral("Populationsdichte:"), {.bold = true});
    ++row;
    if (area.density) {
      const QString decade = Format(static_cast<double>(area.density->decade), QStringLiteral("### ### ##0")).trimmed();
      Put_Cell(sheet, row, 1, QStringLiteral("Einträge pro ") + decade + measure.unit + QStringLiteral("^2  "));
      Put_Cell(sheet, row, 2, double(area.density->value), {.format = cell_formats::longThousandths});
    }
    ++row;
    if (!area.inverse) return;
    QString text = measure.unit + QStringLiteral("^2 ");
    if (area.inverse->decade == 1)
      text += QStringLiteral("  pro Eintrag");
    else
      text += QStringLiteral(" für %1 Einträge pro ").arg(area.inverse->decade);
    Put_Cell(sheet, row, 1, text);
    Put_Cell(sheet, row, 2, double(area.inverse->value),
             {.align = CellAlign::Right, .format = cell_formats::longThousandths});
  }

  // Gives the first row of the species.
  int Write_Species(const SpeciesList& list) {
    row += 2;
    Color_Cells(sheet, {row, 1, row + 8, columns}, speciesColor);
    Put_Cell(sheet, row, 1, QStringLiteral("Populationsparameter:"), {.bold = true});
    Put_Cell(sheet, row, 2, QStringLiteral("Arten"), centred);
    Put_Cell(sheet, row, 3, QStringLiteral("Abundanz"), centred);
    Put_Cell(sheet, row, 4, QStringLiteral("Dominanz"), centred);
    ++row;
    Put_Cell(sheet, row, 3, QStringLiteral("Anzahl n"));
    Put_Cell(sheet, row, 4, QStringLiteral("Prozent %"));
    const int first = row + 1;
    const CellChange number{.align = CellAlign::Right, .format = cell_formats::whole},
        percent{.align = CellAlign::Right, .format = cell_formats::percent};
    for (const SpeciesCount& species : list.species) {
      ++row;
      Put_Cell(sheet, row, 1, QStringLiteral("Art:"));
      Put_Cell(sheet, row, 2, species.name, centred);
      Put_Cell(sheet, row, 3, double(species.total), number);
      Put_Cell(sheet, row, 4, double(species.dominance), percent);
    }
    ++row;
    Put_Cell(sheet, row, 1, QStringLiteral("Insgesamt:"));
    Put_Cell(sheet, row, 2, double(list.species.size()), centred);
    Put_Cell(sheet, row, 3, double(list.individuals), number);
    Put_Cell(sheet, row, 4, double(list.percentSum), percent);
    sheet.Change({row, 1, row, 4}, [](CellStyle& style) { style.italic = true; });
    return first;
  }

  void Write_Diversity(const Diversity& diversity, int lastSpecies) {
    const CellChange share{.format = cell_formats::share};
    row = lastSpecies + 3;
    Put_Cell(sheet, row, 1, QStringLiteral("Summe Individuen:"), {.italic = true});
    Put_Cell(sheet, row, 3, double(diversity.individuals), {.italic = true});
    row += 2;
    Put_Cell(sheet, row, 1, QStringLiteral("Diversität:"), {.bold = true});
    Put_Cell(sheet, row, 3, QStringLiteral("Shannon-Wiener-Index"));
    ++row;
    const CellChange head{.align = CellAlign::Center, .italic = true};
    Put_Cell(sheet, row, 1, QStringLiteral("Art"), head);
    Put_Cell(sheet, row, 2, QStringLiteral("pi"), head);
    Put_Cell(sheet, row, 3, QStringLiteral("pi*log pi"), head);
    for (const Diversity::Share& one : diversity.shares) {
      ++row;
      Put_Cell(sheet, row, 1, one.name);
      Put_Cell(sheet, row, 2, one.p, share);
      Put_Cell(sheet, row, 3, one.pLogP, share);
    }
    ++row;
    Put_Cell(sheet, row, 2, QStringLiteral("HS ="), {.bold = true});
    Put_Cell(sheet, row, 3, diversity.HS, {.bold = true, .format = cell_formats::share});
    ++row;
    Put_Cell(sheet, row, 2, QStringLiteral("Hmax ="));
    Put_Cell(sheet, row, 3, diversity.Hmax, share);
    ++row;
    Put_Cell(sheet, row, 1, QStringLiteral("Artenverteilung:"));
    Put_Cell(sheet, row, 2, QStringLiteral("Eveness:"));
    if (diversity.evenness) Put_Cell(sheet, row, 3, double(*diversity.evenness), share);
    Put_Cell(sheet, row, 4, QStringLiteral("HS/Hmax"), share);
  }

  const MapInput& input;
  const MapMeasure& measure;
  Sheet& sheet;
  int row = 1;
};

}  // namespace

std::optional<Sheet> Population_Sheet(const MapInput& input, const Population& population,
                                      const PopulationSheetOptions& options) {
  Sheet sheet(QStringLiteral("Flächen"));
  AreaBlocks blocks(input, sheet);
  for (size_t i = 0; i < population.areas.size(); ++i) {
    if (i > 0) blocks.Next_Area();
    if (!blocks.Write(population.areas[i], options)) return {};
  }
  blocks.Finish(population);
  return sheet;
}
