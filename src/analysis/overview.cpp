#include "analysis/overview.h"

#include <array>

#include "analysis/analysis_texts.h"

namespace {
enum Kind { Text, Picture, Line, Area, Figure, PlanSquare, Scale, NorthArrow, None };
const std::array<QString, None> words = {QStringLiteral("Texteinträge"), QStringLiteral("Bildeinträge"),
                                         QStringLiteral("Linien"),       QStringLiteral("Flächen"),
                                         QStringLiteral("Figuren"),      QStringLiteral("Planquadrate"),
                                         QStringLiteral("Maßstab"),      QStringLiteral("Nordpfeil")};

Kind Kind_Of(const EntryRow& row) {
  const EntryType type = EntryType::Parse(row.Typ);
  if (type.base >= 0 && type.base <= 3) return Text;
  if (type.IsFigure()) return Figure;
  switch (type.Kind()) {
    case EntryKind::Picture:
      return Picture;
    case EntryKind::Polygon:
    case EntryKind::PolygonRound:
      return EntryId::Parse(row.ID).IsLine() ? Line : Area;
    case EntryKind::PlanSquare:
      return PlanSquare;
    case EntryKind::Scale:
      return Scale;
    case EntryKind::NorthArrow:
      return NorthArrow;
    default:
      return None;
  }
}

const QString lineEnd = QStringLiteral("\r\n");
}  // namespace

std::vector<KindCount> Count_Kinds(std::span<const EntryRow> rows) {
  std::vector<KindCount> counts;
  for (const QString& word : words) counts.push_back({word});
  KindCount total{QStringLiteral("Insgesamt")};
  for (const EntryRow& row : rows) {
    const Kind kind = Kind_Of(row);
    if (kind == None) continue;
    const EntryType type = EntryType::Parse(row.Typ);
    // The sign of a north arrow says nothing about its visibility.
    const bool hidden = type.hidden && kind != NorthArrow;
    for (KindCount* count : {&counts[kind], &total}) {
      ++(hidden ? count->hidden : count->visible);
      count->marked += type.mark != Mark::None;
    }
  }
  counts.push_back(total);
  return counts;
}

QString Overview_Text(const MapInput& input, QSize pixels, QSizeF mm) {
  const MapMeasure& measure = input.measure;
  const QString unit = measure.hasScale ? measure.unit.trimmed() : QStringLiteral("Pixel");
  const double perPixel = measure.hasScale ? measure.perPixel : 1;
  const auto columns = [](double px, double millimetres, double natural) {
    return Format_Number(px) + u'\t' + Format_Number(millimetres) + u'\t' + Format_Number(natural);
  };
  QString text = QStringLiteral("Übersicht") + lineEnd + input.mapName + lineEnd + QString(60, u'-');
  text += QStringLiteral("\r\n\r\nGröße der Karte: \t  Pixel\t   mm  \t") + unit;
  text += QStringLiteral("\r\nBreite scanned:   \t") + columns(pixels.width(), mm.width(), pixels.width() * perPixel);
  text +=
      QStringLiteral("\r\nHöhe   scanned:   \t") + columns(pixels.height(), mm.height(), pixels.height() * perPixel);
  const double mmPerPixel = measure.pixelMm;
  text += QStringLiteral("\r\n100 Pixel =       \t") + columns(100, 100 * mmPerPixel, 100 * perPixel);
  if (mmPerPixel > 0)
    text += QStringLiteral("\r\n100 mm    =       \t") + columns(100 / mmPerPixel, 100, 100 / mmPerPixel * perPixel);
  if (perPixel > 0)
    text += QStringLiteral("\r\n100 ") + unit + QStringLiteral("    =\t") +
            columns(100 / perPixel, 100 / perPixel * mmPerPixel, 100);
  if (!measure.hasScale) text += lineEnd + analysis_texts::Scale_Hint();
  text += lineEnd + QStringLiteral("\r\nAnzahl der\t\t\tsichtbar ausgeblendet markiert");
  for (const KindCount& count : Count_Kinds(input.rows))
    text += lineEnd + count.word +
            QStringLiteral(" \t\t\t%1\t%2\t%3").arg(count.visible).arg(count.hidden).arg(count.marked);
  return text + lineEnd;
}
