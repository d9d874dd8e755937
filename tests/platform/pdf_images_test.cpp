#include <QPainter>

#include "platform/file_limit.h"
#include "platform/printer.h"

namespace {

QImage Scan(int colors, int width, int height) {
  QImage scan(width, height, QImage::Format_Indexed8);
  QList<QRgb> table;
  for (int i = 0; i < colors; ++i) table << qRgb(255 - i, (i * 37) % 256, (i * 91) % 256);
  scan.setColorTable(table);
  for (int y = 0; y < height; ++y)
    for (int x = 0; x < width; ++x) scan.scanLine(y)[x] = static_cast<uchar>((x / 20 + y / 20 * 7) % colors);
  return scan;
}

}  // namespace

// As a reader of the file sees them: the scan whole, a part of it, a second one on another page, a picture in full
// colour.
TEST(PdfImagesTest, ScansStandInTheFileAsTheyAre) {
  const QTemporaryDir folder;
  const QString path = folder.filePath("aus.pdf");
  const Paper paper{.widthMm = 127, .heightMm = 127, .unprintableX = 0, .unprintableY = 0, .dpi = 600};  // 5 inches
  const QImage first = Scan(256, 300, 201), second = Scan(3, 200, 100);
  QImage full = Scan(9, 120, 120).convertToFormat(QImage::Format_RGB32);
  {
    const auto job = Make_Pdf_Job(path, paper, {});
    const auto paint = [&](const auto& work) {
      const auto surface = Make_Page_Surface(job->Painter(), PageView{600 / 96.0, 600 / 96.0, {}, PageModes::AsCopy});
      work(*surface);
    };
    paint([&](Surface& surface) {
      surface.PaintPicture({0, 0, 300, 201}, first);
      surface.PaintPicture({300, 0, 100, 100}, first, {40, 60, 100, 100});
      surface.PaintPicture({0, 240, 120, 120}, full);
    });
    job->NewPage();
    paint([&](Surface& surface) { surface.PaintPicture({0, 0, 200, 100}, second); });
    job->EndDoc();
  }
  QProcess reader;
  reader.start("pdftoppm", {"-r", "96", "-png", path, folder.filePath("p")});
  ASSERT_TRUE(reader.waitForFinished());
  EXPECT_EQ(reader.readAllStandardError(), QByteArray());
  const QImage one(folder.filePath("p-1.png")), two(folder.filePath("p-2.png"));
  ASSERT_FALSE(one.isNull() || two.isNull());
  const auto same = [](const QImage& page, QPoint on, const QImage& picture, QPoint in) {
    EXPECT_EQ(page.pixel(on) & RGB_MASK, picture.pixel(in) & RGB_MASK) << on.x() << "," << on.y();
  };
  for (int y = 10; y < 200; y += 20)
    for (int x = 10; x < 300; x += 20) same(one, {x, y}, first, {x, y});
  for (int x = 10; x < 100; x += 20) same(one, {300 + x, x}, first, {40 + x, 60 + x});
  for (int x = 10; x < 120; x += 20) same(one, {x, 240 + x}, full, {x, x});
  for (int x = 10; x < 200; x += 20) same(two, {x, 50}, second, {x, 50});
  EXPECT_EQ(Read_Bytes(path).count("/Indexed"), 3);
}

TEST(PdfImagesTest, AFullDiskIsNoFaultOfThePrinter) {
  const QTemporaryDir folder;
  const auto job = Make_Pdf_Job(folder.filePath("aus.pdf"), {}, {});
  job->Painter().drawImage(0, 0, Scan(200, 900, 900).convertToFormat(QImage::Format_RGB32));
  const FileLimit limit(1000);
  EXPECT_EQ(Error_Of([&] { job->EndDoc(); }), errors::diskFull);
}
