#include "analysis/color_sheet.h"

#include "analysis/analysis_texts.h"
#include "analysis/result_cells.h"
#include "platform/surface.h"

namespace {

constexpr QRgb black = qRgb(0, 0, 0);
constexpr int firstColorColumn = 3;

class ColorWriter {
 public:
  ColorWriter(const MapInput& map, const ColorAssignment& values, const ColorOptions& chosen, Sheet& target)
      : input(map), assignment(values), options(chosen), sheet(target), white(QBColor(15) & 0xFFFFFFU) {}

  void Write() {
    Write_Head();
    for (const ColorEntry& entry : assignment.entries) Write_Entry_Row(entry);
    if (assignment.entries.empty()) sheet.Put(++row, 1, QStringLiteral("nicht vorhanden."));
    Write_Count();
    Write_Summary();
    Write_Options();
    sheet.Put(row += 2, 1, QStringLiteral("Ende der Auswertung"));
  }

 private:
  void Write_Head() {
    sheet.SetColumnWidth(1, 44);
    for (const int column : {2, 3, 4}) sheet.SetColumnWidth(column, 22);
    Put_Cell(sheet, 1, 1, QStringLiteral("Zuordnung der Texteinträge zur Hintergrundfarbe der Karte."), {.bold = true});
    sheet.Put(2, 1, input.mapName);
    sheet.Put(3, 1, input.tableName);
    const QString upper[] = {QStringLiteral("einfache"), QStringLiteral("auf dieser"), QStringLiteral("gewertet als")};
    const QString lower[] = {QStringLiteral("Texteinträge"), QStringLiteral("Kartenfarbe:"), QStringLiteral("  Anzahl"),
                             QStringLiteral("Art")};
    for (int i = 0; i < 3; ++i) sheet.Put(6, i + 1, upper[i]);
    for (int i = 0; i < 4; ++i) sheet.Put(7, i + 1, lower[i]);
    row = 7;
  }

  // The entry's own look; its frame without width and pattern.
  int Look_Number(int number) {
    EntryRow entry = input.rows[static_cast<size_t>(number)];
    if (entry.RA >= 0) entry.RA %= 100;
    return sheet.Style_Number(Own_Look(entry, input.palette));
  }

  void Put_Color(int column, QRgb color, bool framed) {
    CellStyle style;
    style.fill = color;
    style.align = CellAlign::Center;
    style.color = black;
    if (framed) style.border = black;
    CellValue word;
    if ((color & 0xFFFFFFU) == white) word = QStringLiteral("weiss");
    sheet.Put(row, column, std::move(word), style);
  }

  void Write_Entry_Row(const ColorEntry& entry) {
    ++row;
    const int look = Look_Number(entry.row);
    sheet.Put(row, 1, entry.text, look);
    Put_Color(2, entry.color, false);
    if (!entry.counted) {
      for (const int column : {3, 4}) Put_Cell(sheet, row, column, QStringLiteral("no"), {.align = CellAlign::Center});
      return;
    }
    sheet.Put(row, 3, double(entry.count));
    CellStyle centred = sheet.Styles()[static_cast<size_t>(look)];
    centred.align = CellAlign::Center;
    sheet.Put(row, 4, entry.name, centred);
  }

  void Write_Count() {
    row += 2;
    QString text;
    if (options.marked) text += QStringLiteral(" markierte");
    if (options.inactive) text += QStringLiteral(" nicht aktivierbare");
    if (options.hidden) text += QStringLiteral(" ausgeblendete (=unsichtbare)");
    sheet.Put(row, 1, text + QStringLiteral(" Texteinträge") + u':');
    sheet.Put(row, 3, double(assignment.total));
  }

  void Write_Color_Row() {
    ++row;
    for (size_t i = 0; i < assignment.colors.size(); ++i)
      Put_Color(firstColorColumn + static_cast<int>(i), assignment.colors[i], true);
  }

  void Write_Summary() {
    row += 2;
    Put_Cell(sheet, row, 1, QStringLiteral("Zusammenstellung:"), {.bold = true});
    sheet.Put(row, 2, QStringLiteral("Anzahl"));
    sheet.Put(row, 3, QStringLiteral("Anzahl"));
    ++row;
    sheet.Put(row, 1, QStringLiteral("Eintrag"));
    sheet.Put(row, 2, QStringLiteral("insgesamt"));
    sheet.Put(row, 3, QStringLiteral("auf folgender Farbe der Karte:"));
    Write_Color_Row();
    for (const ColorSpecies& species : assignment.species) {
      ++row;
      sheet.Put(row, 1, species.name, Look_Number(species.row));
      sheet.Put(row, 2, double(species.total));
      Put_Counts(species.perColor);
    }
    ++row;
    sheet.Put(row, 1, QStringLiteral("Summe:"));
    sheet.Put(row, 2, double(assignment.total));
    Put_Counts(assignment.perColor);
    Write_Color_Row();
  }

  // A colour on which the species does not stand stays empty.
  void Put_Counts(const std::vector<qint64>& counts) {
    for (size_t i = 0; i < counts.size(); ++i)
      if (counts[i] != 0) sheet.Put(row, firstColorColumn + static_cast<int>(i), double(counts[i]));
  }

  void Write_Options() {
    row += 2;
    sheet.Put(row, 1, QStringLiteral("Optionen:"));
    sheet.Put(++row, 1, QStringLiteral("In der Zusammenfassung sind folgende Texteinträge enthalten"));
    const std::pair<QString, bool> kinds[] = {{QStringLiteral("normal sichtbare:"), options.plain},
                                              {QStringLiteral("markierte:"), options.marked},
                                              {QStringLiteral("inaktive:"), options.inactive},
                                              {QStringLiteral("ausgeblendete:"), options.hidden}};
    for (const auto& [word, on] : kinds) {
      sheet.Put(++row, 1, word);
      sheet.Put(row, 2, on ? QStringLiteral("ja") : QStringLiteral("nein"));
    }
    if (options.leadingNumbers) {
      sheet.Put(++row, 1, QStringLiteral("vorangestellte Ziffern im Text werden als Zahlen interpretiert."));
      CellStyle example;
      example.fill = QBColor(14);
      sheet.Put(++row, 1, QStringLiteral("z.B."));
      sheet.Put(row, 2, QStringLiteral("13P.mont."), example);
      sheet.Put(row, 3, QStringLiteral("="));
      sheet.Put(row, 4, 13.0);
      sheet.Put(row, 5, QStringLiteral("P.mont."), example);
    } else {
      sheet.Put(++row, 1,
                QStringLiteral("vorangestellte Ziffern im Text werden nicht abgetrennt und als Zahlen "
                               "interpretiert."));
    }
    if (assignment.leftOut)
      sheet.Put(++row, 1,
                QStringLiteral("Hinweis: Die mit 'no' gekennzeichneten Einträge sind in der "
                               "Zusammenfassung nicht enthalten."));
  }

  const MapInput& input;
  const ColorAssignment& assignment;
  const ColorOptions& options;
  Sheet& sheet;
  QRgb white;
  int row = 0;
};

}  // namespace

Sheet Color_Sheet(const MapInput& input, const ColorAssignment& assignment, const ColorOptions& options) {
  Sheet sheet(QStringLiteral("Zuordnung"));
  ColorWriter(input, assignment, options, sheet).Write();
  return sheet;
}
