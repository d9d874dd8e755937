#include "analysis/neighbour_text.h"

#include "platform/text.h"

namespace {

constexpr int sumWidth = 15, columnWidth = 10;

QString One_Line(const QString& name) { return name.simplified(); }

class Report {
 public:
  Report(std::span<const NeighbourEntry> all, const Neighbours& found, const MapMeasure& mapMeasure)
      : entries(all), neighbours(found), measure(mapMeasure) {}

  QStringList Write(bool detailed) {
    Write_Head();
    for (size_t i = 0; i < entries.size(); ++i) Write_Entry(static_cast<int>(i), detailed);
    Write_Foot();
    return lines;
  }

 private:
  void Write_Head() {
    const QString n = QString::number(neighbours.perEntry);
    lines << QStringLiteral("Distanz zu den ") + n + QStringLiteral(" naechstgelegenen Eintraegen.")
          << QStringLiteral("Masseinheit: ") + measure.unit << QString();
    QString heads = Pad_Left(QStringLiteral("Nachbar:"));
    for (int k = 1; k <= neighbours.perEntry; ++k) heads += Pad_Left(QString::number(k));
    lines << heads + Pad_Left(QStringLiteral("Summe"), sumWidth) + Pad_Left(QStringLiteral("Mittel"))
          << Pad_Left(QStringLiteral("S"), (neighbours.perEntry + 1) * columnWidth + sumWidth) +
                 Pad_Left(QStringLiteral("S/") + n)
          << QStringLiteral("Eintrag") << QString();
  }

  void Write_Entry(int number, bool detailed) {
    QString line = Pad_Right(One_Line(entries[static_cast<size_t>(number)].name));
    if (detailed) {
      for (const int other : neighbours.Of(number))
        line += Pad_Left(One_Line(entries[static_cast<size_t>(other)].name));
      lines << line;
      line = Pad_Right(QStringLiteral("Distanz:"));
    }
    double sum = 0;
    for (const double pixels : neighbours.Distances_Of(number)) {
      const double distance = measure.perPixel * pixels;
      sum += distance;
      line += Pad_Left(Format(distance, QStringLiteral("########0.0")));
    }
    const double mean = neighbours.perEntry > 0 ? sum / neighbours.perEntry : 0;
    means += mean;
    lines << line + Pad_Left(Format(sum, QStringLiteral("#############0.0")), sumWidth) +
                 Pad_Left(Format(mean, QStringLiteral("##########0.0")));
    if (detailed) lines << QString();
  }

  void Write_Foot() {
    const auto count = static_cast<double>(entries.size());
    lines << QString()
          << QStringLiteral("Anzahl der Einträge:") + QString(8, u' ') +
                 Pad_Left(Format(count, QStringLiteral("########0")))
          << QStringLiteral("mittlere Distanz:") + QString(13, u' ') +
                 Pad_Left(Format(entries.empty() ? 0 : means / count, QStringLiteral("########0.0")))
          << QString();
  }

  std::span<const NeighbourEntry> entries;
  const Neighbours& neighbours;
  const MapMeasure& measure;
  QStringList lines;
  double means = 0;
};

}  // namespace

QStringList Neighbour_Text(std::span<const NeighbourEntry> entries, const Neighbours& neighbours,
                           const MapMeasure& measure, NeighbourReport report) {
  return Report(entries, neighbours, measure).Write(report.detailed);
}
