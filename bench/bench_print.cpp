#include <benchmark/benchmark.h>
#include <sys/resource.h>

#include <QFileInfo>
#include <QPainter>

#include "bench_map.h"
#include "printing/page_preview.h"
#include "printing/page_setup.h"
#include "printing/print_map.h"

// A sheet with many entries into a PDF against the same primitives drawn with the toolkit's painter onto the same
// device; the preview of a large map; size and memory of printing it.

namespace {

constexpr BenchSize sheetSize{1750, 200, 50};  // 2,000 entries
constexpr double factor = 0.95;                // 1600 x 1000 pixels on one A3 sheet

void Straightforward(QPainter& painter, int dpi, const QImage& scan, const BenchShapes& shapes) {
  const double scale = dpi / 96.0;
  painter.save();
  painter.setRenderHint(QPainter::LosslessImageRendering);
  painter.scale(scale, scale);
  painter.drawImage(QRectF(0, 0, scan.width() * factor, scan.height() * factor), scan);
  const auto placed = [](const std::vector<QPoint>& points) {
    QPolygonF shape;
    for (const QPoint& point : points) shape << QPointF(point) * factor;
    return shape;
  };
  for (const auto& area : shapes.areas) {
    painter.setPen(QPen(QBColor(9)));
    painter.setBrush(QColor(QBColor(10)));
    painter.drawPolygon(placed(area));
  }
  for (const auto& line : shapes.lines) {
    painter.setPen(QPen(QBColor(12)));
    painter.drawPolyline(placed(line));
  }
  QFont font(QStringLiteral("Liberation Sans"));
  font.setPixelSize(11);
  font.setKerning(false);
  painter.setFont(font);
  const QFontMetricsF metrics(font);
  for (const auto& text : shapes.texts) {
    const QPointF at = QPointF(text.x, text.y) * factor;
    painter.fillRect(QRectF(at, QSizeF(metrics.horizontalAdvance(text.text) + 2, metrics.height() + 2)),
                     QColor(QBColor(text.hg)));
    painter.setPen(QPen(QBColor(text.vg)));
    painter.drawText(at + QPointF(1, 1 + metrics.ascent()), text.text);
  }
  painter.restore();
}

PrintOrder Order_Of(const QString& format, int orientation, double printFactor) {
  PrintOrder order;
  order.settings.factor = printFactor;
  order.settings.orientation = orientation;
  order.paper = Paper_Of(format, orientation);
  order.map = Map_To_Print();
  order.range = {1, Print_Geometry(order.settings, order.paper, order.map).Pages()};
  return order;
}

void BM_Sheet_Bare(benchmark::State& state) {
  const BenchMap map(sheetSize);
  const Paper paper = Paper_Of(QStringLiteral("A3"), landscape);
  for (auto _ : state) {
    const auto job = Make_Pdf_Job(map.folder.filePath(QStringLiteral("bare.pdf")), paper, {});
    Straightforward(job->Painter(), paper.dpi, ::Map.MapClip[0].image, map.shapes);
    job->EndDoc();
  }
}
BENCHMARK(BM_Sheet_Bare)->Unit(benchmark::kMillisecond);

void BM_Sheet(benchmark::State& state) {
  const BenchMap map(sheetSize);
  const PrintOrder order = Order_Of(QStringLiteral("A3"), landscape, factor);
  if (order.range.to != 1) state.SkipWithError("more than one sheet");
  const QString path = map.folder.filePath(QStringLiteral("sheet.pdf"));
  for (auto _ : state) Print_Map(order, {[&] { return Make_Pdf_Job(path, order.paper, {}); }, {}});
}
BENCHMARK(BM_Sheet)->Unit(benchmark::kMillisecond);

// The demo map and its mirror images, which are no help to each other when packed, on 6000 x 4000 pixels of 8 bits.
void Take_Large_Scan() {
  const QImage demo = Load_Picture(QStringLiteral(FLURAX_BINARY_DIR "/data/Beispiele/Karte.bmp"));
  QImage large(6000, 4000, QImage::Format_RGB32);
  QPainter painter(&large);
  for (int y = 0; y < large.height(); y += demo.height())
    for (int x = 0; x < large.width(); x += demo.width()) painter.drawImage(x, y, demo.mirrored(x > 0, y > 0));
  painter.end();
  Set_Map_Picture(demo.format() == QImage::Format_Indexed8
                      ? large.convertToFormat(QImage::Format_Indexed8, demo.colorTable(), Qt::ThresholdDither)
                      : large.convertToFormat(QImage::Format_Indexed8));
}

void BM_Preview(benchmark::State& state) {
  const BenchMap map({1800, 150, 50, 6000, 4000}, 6000, 4000);
  Take_Large_Scan();
  const PageSetup setup = Load_Page_Setup();
  for (auto _ : state) {
    const PreviewMap preview = Make_Preview_Map();
    benchmark::DoNotOptimize(Draw_Preview(preview, setup.Geometry(), setup.paper, {560, 520}));
  }
}
BENCHMARK(BM_Preview)->Unit(benchmark::kMillisecond);

// Over six sheets; `ratio` is the size of the PDF to that of the map as PNG.
void BM_Size_Of_Pdf(benchmark::State& state) {
  const BenchMap map({0, 0, 0, 6000, 4000}, 6000, 4000);
  Take_Large_Scan();
  const QString png = map.folder.filePath(QStringLiteral("Karte.png")),
                pdf = map.folder.filePath(QStringLiteral("Karte.pdf"));
  Save_Picture(::Map.MapClip[0].image, png);
  PrintOrder order = Order_Of(QStringLiteral("A4"), portrait, 0.3);
  for (const PageChoice& choice : Calc_Pages(order.settings, order.paper, order.map))
    if (choice.pages == 6) order = Order_Of(QStringLiteral("A4"), portrait, choice.factor);
  for (auto _ : state) Print_Map(order, {[&] { return Make_Pdf_Job(pdf, order.paper, {}); }, {}});
  state.counters["sheets"] = order.range.to;
  state.counters["pdf"] = static_cast<double>(QFileInfo(pdf).size());
  state.counters["ratio"] = static_cast<double>(QFileInfo(pdf).size()) / static_cast<double>(QFileInfo(png).size());
}
BENCHMARK(BM_Size_Of_Pdf)->Iterations(1)->Unit(benchmark::kMillisecond);

// To be run alone (--benchmark_filter=Memory): the peak of the whole process counts.
void BM_Memory(benchmark::State& state) {
  const BenchMap map({1800, 150, 50, 6000, 4000}, 6000, 4000);
  const PrintOrder order = Order_Of(QStringLiteral("A4"), portrait, 4);
  const QString pdf = map.folder.filePath(QStringLiteral("Karte.pdf"));
  for (auto _ : state) Print_Map(order, {[&] { return Make_Pdf_Job(pdf, order.paper, {}); }, {}});
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  state.counters["sheets"] = order.range.to;
  state.counters["peakMB"] = static_cast<double>(usage.ru_maxrss) / 1024;
}
BENCHMARK(BM_Memory)->Iterations(1)->Unit(benchmark::kMillisecond);

}  // namespace
