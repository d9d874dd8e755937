#include "analysis/lines.h"

#include "analysis/result_cells.h"
#include "platform/text.h"

namespace {
const QString lineEnd = QStringLiteral("\r\n");

void Add_Length(LineLength& sum, const LineLength& length) {
  sum.px += length.px;
  sum.nat += length.nat;
}

// The columns of the report: what it is, pixels, natural length, angle.
constexpr int wordWidth = 22, pixelWidth = 14, naturalWidth = 18, angleWidth = 12;

QString Report_Line(const QString& word, const LineLength& length) {
  return word.leftJustified(wordWidth) + Pad_Left(Format(length.px, QStringLiteral("### ### ##0")), pixelWidth) +
         Pad_Left(Format(length.nat, QStringLiteral("### ### ##0.000")), naturalWidth);
}

CellChange Number_Look(const char* format) { return {.align = CellAlign::Right, .format = format}; }

void Put_Length(Sheet& sheet, int row, const QString& word, const LineLength& length) {
  Put_Cell(sheet, row, 1, word);
  Put_Cell(sheet, row, 2, length.px, Number_Look(cell_formats::whole));
  Put_Cell(sheet, row, 3, length.nat, Number_Look(cell_formats::thousandths));
}
}  // namespace

std::vector<LineValues> Calc_Lines(const MapInput& input) {
  std::vector<LineValues> lines;
  for (size_t i = 0; i < input.rows.size(); ++i) {
    const EntryRow& row = input.rows[i];
    if (!row.ID.contains(QLatin1String("Linie"))) continue;
    const EntryId id = EntryId::Parse(row.ID);
    if (!id.name.contains(QLatin1String("Linie")) || !id.assignment.isEmpty()) continue;
    LineValues line;
    line.row = static_cast<int>(i);
    line.segments = Line_Segments(input.vertices(row), input.measure.perPixel);
    line.length = Total_Length(line.segments);
    lines.push_back(std::move(line));
  }
  return lines;
}

Sheet Line_Sheet(const MapInput& input, const std::vector<LineValues>& lines) {
  Sheet sheet(QStringLiteral("Linien"));
  sheet.SetColumnWidth(1, 30);
  for (int column = 2; column <= 4; ++column) sheet.SetColumnWidth(column, 22);
  Put_Cell(sheet, 1, 1, QStringLiteral("Berechnete Längen aller Linien"), {.bold = true});
  const QString heads[] = {QStringLiteral("Teilstrecken"), QStringLiteral("Pixel"), input.measure.unit,
                           QStringLiteral("Winkel° zur Vertikalen")};
  for (int i = 0; i < 4; ++i)
    Put_Cell(sheet, 3, i + 1, heads[i], {.align = i == 0 ? CellAlign::Left : CellAlign::Right, .bold = true});
  int row = 4;
  LineLength sum;
  for (const LineValues& line : lines) {
    const EntryRow& entry = input.rows[static_cast<size_t>(line.row)];
    CellStyle look = Own_Look(entry, input.palette);
    look.font.clear();  // a line keeps its style where texts have their font
    row += 1;
    sheet.Put(row, 1, EntryId::Parse(entry.ID).name, look);
    sheet.Put(row, 2, entry.Eintrag.simplified(), look);
    for (size_t i = 0; i < line.segments.size(); ++i) {
      const LineSegment& segment = line.segments[i];
      Put_Length(sheet, ++row, QStringLiteral("Teilstrecke: %1").arg(i + 1), {segment.px, segment.nat});
      Put_Cell(sheet, row, 4, segment.angle, Number_Look(cell_formats::angle));
    }
    Add_Length(sum, line.length);
    Put_Length(sheet, ++row, QStringLiteral("Gesamtlänge:"), line.length);
    sheet.Change({row, 1, row, 3}, [](CellStyle& style) { style.bold = true; });
    Put_Length(sheet, ++row, QStringLiteral("Summe:"), sum);
    row += 1;
  }
  Put_Length(sheet, ++row, QStringLiteral("Gesamtsumme aller Längen:"), sum);
  sheet.Change({row, 1, row, 3}, [](CellStyle& style) { style.bold = true; });
  sheet.Put(row + 2, 1, QStringLiteral("Ende"));
  return sheet;
}

QString Unit_Word(const QString& unit) {
  const QString word = unit.trimmed();
  if (word == QLatin1String("mm")) return QStringLiteral("Millimeter");
  if (word == QLatin1String("cm")) return QStringLiteral("Zentimeter");
  if (word == QLatin1String("m")) return QStringLiteral("Meter");
  if (word == QLatin1String("km")) return QStringLiteral("Kilometer");
  return QStringLiteral("?");
}

QString Line_Text(const MapInput& input, const std::vector<LineValues>& lines) {
  QString text = QStringLiteral("Berechnete Längen aller Linien") + lineEnd + u'\t' + input.mapName + lineEnd + lineEnd;
  text += QStringLiteral("Teilstrecken").leftJustified(wordWidth) + Pad_Left(QStringLiteral("Pixel"), pixelWidth) +
          Pad_Left(input.measure.unit, naturalWidth) + Pad_Left(QStringLiteral("Winkel"), angleWidth) + lineEnd;
  LineLength sum;
  for (const LineValues& line : lines) {
    const EntryRow& entry = input.rows[static_cast<size_t>(line.row)];
    text += lineEnd + QStringLiteral("Linie: ") +
            (EntryId::Parse(entry.ID).name + QStringLiteral("  ") + entry.Eintrag.simplified()).trimmed() + lineEnd;
    for (size_t i = 0; i < line.segments.size(); ++i) {
      const LineSegment& segment = line.segments[i];
      text += Report_Line(QString::number(i + 1), {segment.px, segment.nat}) +
              Pad_Left(Format(segment.angle, QStringLiteral("##0.000")), angleWidth) + lineEnd;
    }
    Add_Length(sum, line.length);
    text += Report_Line(QStringLiteral("Aktuell:"), line.length) + lineEnd;
    text += Report_Line(QStringLiteral("Insgesamt  :"), sum) + lineEnd;
  }
  text += QStringLiteral("\n\nLegende:\nPixel = Anzahl der Bildpunkte (Raster der Kartengrundlage)\n") +
          input.measure.unit + QStringLiteral(" = ") + Unit_Word(input.measure.unit) +
          QStringLiteral("\nWinkel =  Winkelgrad °  zur vertikalen Blattkante\n");
  return text.replace(lineEnd, QLatin1String("\n")).replace(u'\n', lineEnd);
}
