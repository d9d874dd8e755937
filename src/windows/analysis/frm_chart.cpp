#include "windows/analysis/frm_chart.h"

#include <QBarCategoryAxis>
#include <QBarSeries>
#include <QBarSet>
#include <QBuffer>
#include <QChart>
#include <QGraphicsScene>
#include <QLegend>
#include <QLineSeries>
#include <QPainter>
#include <QSvgGenerator>
#include <QValueAxis>
#include <cmath>

#include "analysis/analysis_texts.h"
#include "platform/text.h"
#include "printing/page_job.h"

namespace {

const QColor barColor(46, 110, 60), lineColor(170, 60, 20);
constexpr size_t mostBars = 200, mostNames = 45;
constexpr int mostUpright = 6;

// Titles and labels are rich text, and no picture can hold control characters.
QString Shown(QString text) {
  for (QChar& c : text)
    if (c.category() == QChar::Other_Control) c = u' ';
  return text.simplified().toHtmlEscaped();
}

QString Decimal(double value, const char* pattern) {
  return (value < 0 ? QStringLiteral("−") : QString()) + Format(std::abs(value), QLatin1String(pattern)).trimmed();
}

// What does not fit into a line of the title would be cut: `figures` are lines.
QChart* New_Chart(const QString& heading, const QStringList& figures) {
  auto* chart = new QChart;
  QString title = QStringLiteral("<b>%1</b>").arg(Shown(heading));
  for (const QString& line : figures) title += QStringLiteral("<br>") + Shown(line);
  chart->setTitle(title);
  chart->legend()->hide();
  chart->setBackgroundRoundness(0);
  return chart;
}

// Whole numbers at 1, 2, 5, 10, ..., not more than ten of them.
QValueAxis* Count_Axis(const QString& title, double largest) {
  auto* axis = new QValueAxis;
  axis->setTitleText(title);
  axis->setLabelFormat(QStringLiteral("%d"));
  double step = 1;
  constexpr double growth[] = {2, 2.5, 2};
  for (size_t i = 0; largest / step > 10; ++i) step *= growth[i % 3];
  axis->setTickType(QValueAxis::TicksDynamic);
  axis->setTickInterval(step);
  axis->setRange(0, std::max(1.0, std::ceil(largest / step) * step));
  return axis;
}

void Add_Bars(QChart& chart, const std::vector<double>& values, const QStringList& labels, const QString& below,
              const QString& beside) {
  auto* bars = new QBarSet(QString());
  double largest = 0;
  for (const double value : values) {
    *bars << value;
    largest = std::max(largest, value);
  }
  bars->setColor(barColor);
  bars->setBorderColor(Qt::white);
  auto* series = new QBarSeries;
  series->append(bars);
  series->setBarWidth(0.9);
  chart.addSeries(series);
  auto* names = new QBarCategoryAxis;
  names->append(labels);
  names->setTitleText(below);
  names->setGridLineVisible(false);
  if (labels.size() > mostUpright) names->setLabelsAngle(-90);
  chart.addAxis(names, Qt::AlignBottom);
  series->attachAxis(names);
  auto* counts = Count_Axis(beside, largest);
  chart.addAxis(counts, Qt::AlignLeft);
  series->attachAxis(counts);
}

// Two lines of about the same length.
QStringList Index_Texts(const DiversityIndices& indices) {
  QStringList first{QStringLiteral("N = %1 Individuen").arg(indices.individuals),
                    QStringLiteral("S = %1 Arten").arg(indices.species)},
      second;
  const auto add = [](QStringList& line, const char* name, const std::optional<double>& value) {
    if (value) line += QStringLiteral("%1 = %2").arg(QString::fromUtf8(name), Decimal(*value, "0.000"));
  };
  add(first, "H'", indices.shannon);
  add(first, "Evenness", indices.evenness);
  add(second, "Simpson 1-D", indices.simpson);
  add(second, "Chao1", indices.chao1);
  add(second, "Berger-Parker", indices.bergerParker);
  return {first.join(QStringLiteral(", ")), second.join(QStringLiteral(", "))};
}

QStringList Pattern_Texts(const NearestDistances& nearest, const QString& unit) {
  double mean = 0;
  for (const double distance : nearest.distances) mean += distance;
  const auto count = static_cast<double>(nearest.distances.size());
  const char* length = "### ##0.00";
  const QString first = QStringLiteral("M = %1 Einträge, mittlere Distanz = %2%3")
                            .arg(QString::number(nearest.distances.size()), Decimal(mean / count, length), unit);
  if (!nearest.pattern) return {first, QStringLiteral("ohne Fläche kein Index")};
  return {first, QStringLiteral("erwartet = %1%2, R = %3, z = %4: %5")
                     .arg(Decimal(nearest.pattern->expected, length), unit, Decimal(nearest.pattern->index, "0.000"),
                          Decimal(nearest.pattern->z, "0.00"), Pattern_Word(*nearest.pattern))};
}

class ChartPage final : public PageSource {
 public:
  explicit ChartPage(QGraphicsScene& shown) : scene(shown) {}
  int Plan(const Paper& paper) override {
    constexpr double unitsPerMm = 96 / 25.4;
    room = QSizeF(paper.PrintableWidth(), paper.PrintableHeight()) * unitsPerMm;
    return 1;
  }
  void Draw(QPainter& painter, int) override {
    scene.render(&painter, QRectF(QPointF(), scene.sceneRect().size().scaled(room, Qt::KeepAspectRatio)),
                 scene.sceneRect());
  }

 private:
  QGraphicsScene& scene;
  QSizeF room;
};

}  // namespace

QChart* Make_Rank_Chart(const std::vector<RankedSpecies>& ranked, const DiversityIndices& indices, const QString& of) {
  const QString heading = QStringLiteral("Rang-Abundanz: ") + of;
  if (ranked.empty()) return New_Chart(heading, {QStringLiteral("Es sind keine Einträge zugeordnet.")});
  QStringList figures = Index_Texts(indices);
  const size_t bars = std::min(ranked.size(), mostBars);
  if (bars < ranked.size()) figures += QStringLiteral("Gezeigt sind die %1 häufigsten.").arg(bars);
  QChart* chart = New_Chart(heading, figures);
  std::vector<double> values;
  QStringList labels;
  const bool named = bars <= mostNames;
  for (size_t i = 0; i < bars; ++i) {
    values.push_back(static_cast<double>(ranked[i].count));
    const QString rank = QString::number(i + 1);
    // Labels name the bars: two that are alike would be one.
    labels += named ? rank + QStringLiteral(". ") + Shown(ranked[i].name) : rank;
  }
  Add_Bars(*chart, values, labels, named ? QStringLiteral("Art") : QStringLiteral("Rang der Art"),
           QStringLiteral("Individuen"));
  return chart;
}

QChart* Make_Accumulation_Chart(const AreaAccumulation& accumulation) {
  const QString heading = QStringLiteral("Artenzahl über den Flächen");
  const auto& collected = accumulation.species.collected;
  if (collected.empty())
    return New_Chart(heading, {QStringLiteral("Keiner Fläche oder Figur sind Einträge zugeordnet.")});
  QChart* chart = New_Chart(
      heading, {QStringLiteral("%1 %2 auf %3 mit zugeordneten Einträgen")
                    .arg(QString::number(collected.back()),
                         collected.back() == 1 ? QStringLiteral("Art") : QStringLiteral("Arten"),
                         collected.size() == 1 ? QStringLiteral("einer Fläche oder Figur")
                                               : QStringLiteral("%1 Flächen und Figuren").arg(collected.size()))});
  auto* table = new QLineSeries;
  table->setName(QStringLiteral("in der Reihenfolge der Tabelle"));
  auto* expected = new QLineSeries;
  expected->setName(QStringLiteral("erwartet: Mittel über alle Reihenfolgen"));
  for (size_t k = 0; k < collected.size(); ++k) {
    const auto areas = static_cast<double>(k + 1);
    table->append(areas, collected[k]);
    expected->append(areas, accumulation.species.expected[k]);
  }
  table->setPen(QPen(barColor, 2, Qt::DashLine));
  expected->setPen(QPen(lineColor, 2));
  auto* across = Count_Axis(QStringLiteral("Flächen"), static_cast<double>(collected.size()));
  auto* up = Count_Axis(QStringLiteral("Arten"), collected.back());
  chart->addAxis(across, Qt::AlignBottom);
  chart->addAxis(up, Qt::AlignLeft);
  for (QLineSeries* series : {table, expected}) {
    series->setPointsVisible(true);
    chart->addSeries(series);
    series->attachAxis(across);
    series->attachAxis(up);
  }
  chart->legend()->show();
  chart->legend()->setAlignment(Qt::AlignBottom);
  return chart;
}

QChart* Make_Nearest_Chart(const NearestDistances& nearest, const QString& unit, const QString& of) {
  const QString heading = QStringLiteral("Abstand zum nächsten Nachbarn: ") + of;
  if (nearest.distances.empty())
    return New_Chart(heading, {QStringLiteral("Nachbarn gibt es erst von zwei Einträgen an.")});
  QChart* chart = New_Chart(heading, Pattern_Texts(nearest, unit));
  const auto& [width, counts] = nearest.histogram;
  const char* pattern = width < 1 ? "0.00" : width < 10 ? "0.0" : "0";
  std::vector<double> values;
  QStringList labels;
  for (const int count : counts) {
    const auto from = width * static_cast<double>(values.size());
    labels += Decimal(from, pattern) + QStringLiteral(" – ") + Decimal(from + width, pattern);
    values.push_back(count);
  }
  Add_Bars(*chart, values, labels, QStringLiteral("Abstand,") + unit, QStringLiteral("Einträge"));
  return chart;
}

QImage Chart_Image(QGraphicsScene& scene, double scale) {
  QImage image((scene.sceneRect().size() * scale).toSize(), QImage::Format_RGB32);
  image.fill(Qt::white);
  QPainter painter(&image);
  painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
  scene.render(&painter, QRectF(QPointF(), QSizeF(image.size())), scene.sceneRect());
  return image;
}

QByteArray Chart_Svg(QGraphicsScene& scene, const QString& title) {
  QBuffer buffer;
  buffer.open(QIODevice::WriteOnly);
  QSvgGenerator generator;
  generator.setOutputDevice(&buffer);
  generator.setTitle(title);
  generator.setResolution(96);
  const QSize size = scene.sceneRect().size().toSize();
  generator.setSize(size);
  generator.setViewBox(QRect(QPoint(), size));
  QPainter painter(&generator);
  scene.render(&painter, QRectF(QPointF(), QSizeF(size)), scene.sceneRect());
  painter.end();
  return buffer.data();
}

std::unique_ptr<PageSource> Make_Chart_Page(QGraphicsScene& scene) { return std::make_unique<ChartPage>(scene); }
