#include "platform/picture.h"

#include <sys/stat.h>

#include <QImageReader>

#include "picture_bytes.h"
#include "platform/bmp_strips.h"
#include "platform/picture_check.h"
#include "support/pixels.h"

namespace {

class PictureFile : public FolderTest {
 protected:
  int Loading_Error(const QString& name, const QByteArray& bytes) const {
    const Error error = Raised([&] { Load_Picture(Put(name, bytes)); });
    EXPECT_TRUE(error.number == 0 || error.text.contains(name)) << qPrintable(error.text);
    return error.number;
  }
};

const std::vector<QRgb> colors{white, red, green, blue};

// Top row red green blue, lower row white white red, in every way a bitmap can hold it.
std::vector<std::pair<const char*, QByteArray>> Same_Bitmaps() {
  const auto raw = [](std::initializer_list<int> codes) {
    QByteArray bytes;
    for (const int code : codes) bytes += static_cast<char>(code);
    return bytes;
  };
  return {
      {"8 bit", Bmp(3, 2, 8, 0, colors, raw({0, 0, 1, 0, 1, 2, 3, 0}))},
      {"8 bit, top row first", Bmp(3, -2, 8, 0, colors, raw({1, 2, 3, 0, 0, 0, 1, 0}))},
      {"4 bit", Bmp(3, 2, 4, 0, colors, raw({0x00, 0x10, 0, 0, 0x12, 0x30, 0, 0}))},
      {"RLE8", Bmp(3, 2, 8, 1, colors, raw({2, 0, 1, 1, 0, 0, 0, 3, 1, 2, 3, 0, 0, 1}))},
      {"RLE8 without end mark", Bmp(3, 2, 8, 1, colors, raw({2, 0, 1, 1, 0, 0, 1, 1, 1, 2, 1, 3}))},
      {"RLE4", Bmp(3, 2, 4, 2, colors, raw({2, 0x00, 1, 0x10, 0, 0, 0, 3, 0x12, 0x30, 0, 1}))},
      {"24 bit", Bmp(3, 2, 24, 0, {}, raw({255, 255, 255, 255, 255, 255, 0,   0, 255, 0, 0, 0,  //
                                           0,   0,   255, 0,   255, 0,   255, 0, 0,   0, 0, 0}))},
      {"32 bit", Bmp(3, 2, 32, 0, {}, raw({255, 255, 255, 0, 255, 255, 255, 0, 0,   0, 255, 0,  //
                                           0,   0,   255, 0, 0,   255, 0,   0, 255, 0, 0,   0}))},
  };
}

TEST_F(PictureFile, EveryKindOfBitmapGivesTheSamePixels) {
  for (const auto& [kind, bytes] : Same_Bitmaps()) {
    // The ending does not tell what is inside.
    for (const char* name : {"Karte.bmp", "Käfer.RLE", "x.jpg"}) {
      const QString path = Put(name, bytes);
      QFile file(path);
      ASSERT_TRUE(file.open(QIODevice::ReadOnly));
      const BmpHead head = Read_Bmp_Head(file).value();
      QImage image;
      ASSERT_EQ(Raised([&] { image = Load_Picture(path); }).number, 0) << kind;
      ASSERT_EQ(image.size(), QSize(3, 2)) << kind;
      EXPECT_EQ(Picture_Size(path), QSize(3, 2)) << kind;
      Expect_Pixels(image, {{0, 0, red}, {1, 0, green}, {2, 0, blue}}, kind);
      Expect_Pixels(image, {{0, 1, white}, {1, 1, white}, {2, 1, red}}, kind);
      const bool indexed = bytes[28] <= 8;  // bits a pixel
      EXPECT_EQ(image.format(), indexed ? QImage::Format_Indexed8 : QImage::Format_RGB32) << kind;
      if (head.compression != 0) continue;
      EXPECT_EQ(Read_Bmp_Strips(file, head, 1).convertToFormat(image.format()), image) << kind << ", row by row";
    }
  }
}

TEST_F(PictureFile, EveryCutIsTold) {
  std::vector<std::pair<const char*, QByteArray>> pictures = Same_Bitmaps();
  // The bitmap of the other cases: 3 x 2, four colours, ten codes of 3 bits.
  QByteArray gif("GIF89a\x03\x00\x02\x00\x81\x00\x00", 13);
  for (const QRgb color : colors)
    for (const int part : {qRed(color), qGreen(color), qBlue(color)}) gif += static_cast<char>(part);
  gif += QByteArray("\x2C\0\0\0\0\x03\0\x02\0\0\x02\x04\x8C\x38\x10\x29\0;", 18);
  const QImage image = Load_Picture(Put("a.gif", gif));
  ASSERT_EQ(image.size(), QSize(3, 2));
  Expect_Pixels(image, {{2, 0, blue}, {2, 1, red}});
  pictures.emplace_back("GIF", gif);
  // Up to here the file may be cut without losing a pixel: the filling behind the last row, the end mark.
  for (const auto& [kind, bytes] : pictures)
    for (qsizetype size = 0; size < bytes.size() - 3; ++size)
      ASSERT_EQ(Loading_Error("cut.bmp", bytes.left(size)), errors::badPicture) << kind << " cut at " << size;
  for (const char* name : {"a.png", "a.jpg"}) {
    Save_Picture(Motley(60, 50), Path(name));
    EXPECT_EQ(Load_Picture(Path(name)).size(), QSize(60, 50));
    const QByteArray bytes = Read_Bytes(Path(name));
    for (const int percent : {10, 50, 90, 99})
      EXPECT_EQ(Loading_Error(name, bytes.left(bytes.size() * percent / 100)), errors::badPicture) << name << percent;
  }
}

TEST_F(PictureFile, WhatIsNoPictureIsToldByName) {
  const QByteArray drawing = "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"20\" height=\"10\"><rect/></svg>";
  const std::pair<const char*, QByteArray> cases[] = {{"leer.bmp", {}},
                                                      {"text.bmp", "Dies ist kein Bild, nur ein Text."},
                                                      {"halb.jpg", "\xFF\xD8\xFF\xE0"},
                                                      {"BM.bmp", "BM"},
                                                      {"ohne Bildpunkte.svg", drawing},
                                                      {"a.png", drawing}};
  for (const auto& [name, bytes] : cases) {
    EXPECT_EQ(Loading_Error(name, bytes), errors::badPicture) << name;
    EXPECT_TRUE(Picture_Size(Path(name)).isEmpty()) << name;
  }
  EXPECT_EQ(Error_Of([&] { Load_Picture(Path("fehlt.bmp")); }), errors::fileNotFound);
}

TEST_F(PictureFile, SizesBeyondTheUsual) {
  // 49 megapixels, indexed: 49 MB, which the reader counts as 196.
  const QString path = Put("gross.bmp", Bmp(7000, 7000, 8, 0, colors, {}));
  ASSERT_TRUE(QFile::resize(path, 54 + 16 + 7000LL * 7000));
  QImageReader::setAllocationLimit(128);
  const QImage image = Load_Picture(path);
  EXPECT_EQ(std::tuple(image.size(), image.format()), std::tuple(QSize(7000, 7000), QImage::Format_Indexed8));
  EXPECT_EQ(image.pixel(6999, 6999), white);
  EXPECT_EQ(Picture_Memory(image.size(), 8), 49000000);
  // Wider than 16 bits count.
  const QString wide = Put("breit.bmp", Bmp(70000, 3, 8, 0, colors, QByteArray(70000 * 3, 2)));
  EXPECT_EQ(Load_Picture(wide).pixel(69999, 2), green);
  // A file of the full length without its bytes: a million by half a million is 1.5 TB here, 2 TB in memory.
  const QString giant = Put("Riese.bmp", Bmp(1000000, 500000, 24, 0, {}, {}));
  ASSERT_TRUE(QFile::resize(giant, 54 + 3000000LL * 500000));
  EXPECT_THAT(Raised([&] { Load_Picture(giant); }), Tells(errors::outOfMemory, {"Riese.bmp", "1907349 MB"}));
  EXPECT_EQ(Picture_Size(giant), QSize(1000000, 500000));
}

TEST_F(PictureFile, TransparencyLiesOnWhite) {
  QImage clear(4, 1, QImage::Format_ARGB32);
  const QRgb pixels[] = {red, qRgba(255, 0, 0, 0), qRgba(0, 0, 0, 128), blue};
  for (int x = 0; x < 4; ++x) clear.setPixel(x, 0, pixels[x]);
  QImage indexed(2, 1, QImage::Format_Indexed8);
  indexed.setColorTable({qRgba(0, 255, 0, 0), qRgba(0, 255, 0, 255)});
  indexed.setPixel(0, 0, 0);
  indexed.setPixel(1, 0, 1);
  ASSERT_TRUE(clear.save(Path("a.png")) && indexed.save(Path("b.png")));
  const QImage a = Load_Picture(Path("a.png")), b = Load_Picture(Path("b.png"));
  EXPECT_EQ(a.format(), QImage::Format_RGB32);
  Expect_Pixels(a, {{0, 0, red}, {1, 0, white}, {2, 0, qRgb(127, 127, 127)}, {3, 0, blue}});
  EXPECT_EQ(b.format(), QImage::Format_Indexed8);
  Expect_Pixels(b, {{0, 0, white}, {1, 0, green}});
}

TEST_F(PictureFile, SavedPicturesComeBackAndAFullDiskLeavesTheFormerOne) {
  const QImage colored = Motley(5, 3);
  for (const QImage& image :
       {colored, colored.convertToFormat(QImage::Format_Grayscale8), colored.convertToFormat(QImage::Format_Indexed8)})
    for (const char* name : {"a.bmp", "a.png"}) {
      Save_Picture(image, Path(name), 11811);
      const QImage back = Load_Picture(Path(name));
      EXPECT_EQ(back.convertToFormat(QImage::Format_RGB32), image.convertToFormat(QImage::Format_RGB32)) << name;
      EXPECT_EQ(QPoint(back.dotsPerMeterX(), back.dotsPerMeterY()), QPoint(11811, 11811)) << name;
      EXPECT_EQ(back.depth(), image.depth()) << name;
    }
  QImage plain(64, 64, QImage::Format_RGB32);
  plain.fill(qRgb(100, 150, 200));
  Save_Picture(plain, Path("a.jpg"), 3937);
  EXPECT_NEAR(qGreen(Load_Picture(Path("a.jpg")).pixel(30, 30)), 150, 3);
  EXPECT_NEAR(Load_Picture(Path("a.jpg")).dotsPerMeterX(), 3937, 20);
  for (const char* name : {"Karte.bmp", "Karte.png"}) {
    Save_Picture(Motley(4, 4), Path(name));
    const QByteArray before = Read_Bytes(Path(name));
    File_Write_Fault = [](const QString&, qint64) { return errors::diskFull; };
    EXPECT_EQ(Error_Of([&] { Save_Picture(Motley(5, 4), Path(name)); }), errors::diskFull);
    File_Write_Fault = nullptr;
    EXPECT_EQ(Read_Bytes(Path(name)), before);
  }
}

TEST_F(PictureFile, MetafilesAreKnownByContentOrEnding) {
  const QString path = Put("Zeichnung.bmp", Sample().Bytes(200, 100));
  EXPECT_EQ(Load_Picture(path).pixel(30, 15), red);
  EXPECT_EQ(Picture_Size(path), QSize(200, 100));
  const Error error = Raised([&] { Load_Picture(Put("keine.wmf", "Dies ist keine Zeichnung, sondern ein Text.")); });
  EXPECT_EQ(std::tuple(error.number, error.text), std::tuple(errors::fileNotFound, Error_Text(errors::fileNotFound)));
}

// Limits ------------------------------------------------------------------------------------------------------------

PictureLimits Limits(qint64 pixels, qint64 memory = qint64{1} << 30, qint64 fileBytes = 1 << 24) {
  return {pixels, memory, fileBytes, 60'000};
}

TEST_F(PictureFile, PixelsAndMemoryBeyondTheLimitAreToldInFigures) {
  QImage bare(1500, 1000, QImage::Format_Mono);
  bare.fill(1);
  const QString metafile = Put("a.wmf", Metafile().Add(setExt, {1000, 1500}).Bytes(1500, 1000));
  const QString bitmap = Put("a.bmp", Bmp(1500, 1000, 8, 0, colors, QByteArray(1500000, 2)));
  for (const char* name : {"a.png", "a.jpg", "a.ppm"}) ASSERT_TRUE(bare.save(Path(name))) << name;
  for (const char* name : {"a.png", "a.jpg", "a.ppm", "a.wmf", "a.bmp"}) {
    EXPECT_EQ(Load_Picture(Path(name), Limits(1'500'000)).width(), 1500) << name;
    EXPECT_THAT(Raised([&] { Load_Picture(Path(name), Limits(1'499'999)); }),
                Tells(errors::badPicture, {Path(name), "1500 x 1000 Bildpunkte", "höchstens 1 Millionen"}));
  }
  QImage deep(1000, 1000, QImage::Format_RGBX64), plain(1000, 1000, QImage::Format_RGB32);
  deep.fill(Qt::red);
  plain.fill(Qt::red);
  ASSERT_TRUE(deep.save(Path("tief.png")) && plain.save(Path("glatt.png")));
  // Four bytes a pixel; eight while it is read and four beside them.
  const QString tight = Path("glatt.png"), wide = Path("tief.png");
  EXPECT_EQ(Error_Of([&] { Load_Picture(tight, Limits(1'000'000, 4'000'000)); }), 0);
  EXPECT_EQ(Error_Of([&] { Load_Picture(wide, Limits(1'000'000, 12'000'000)); }), 0);
  EXPECT_THAT(Raised([&] { Load_Picture(wide, Limits(1'000'000, 11'999'999)); }),
              Tells(errors::outOfMemory, {"tief.png", "12 MB"}));
}

TEST_F(PictureFile, ReadingEndsWithItsTime) {
  PictureLimits none = mapPicture;
  none.milliseconds = 0;
  for (const char* name : {"a.png", "a.jpg"}) Save_Picture(Motley(60, 50), Path(name));
  Put("a.bmp", Bmp(3, 2, 8, 1, colors, QByteArray("\3\1\0\0\3\1\0\1", 8)));
  for (const char* name : {"a.png", "a.jpg", "a.bmp"}) {
    EXPECT_EQ(Error_Of([&] { Load_Picture(Path(name)); }), 0) << name;
    EXPECT_THAT(Raised([&] { Load_Picture(Path(name), none); }), Tells(errors::badPicture, {"Sekunden", name})) << name;
  }
}

// Files of a hundred gigabytes that take no room: nobody may try to read them whole.
TEST_F(PictureFile, GiantFilesAreRefusedByTheirSize) {
  const std::pair<const char*, QByteArray> cases[] = {{"a.wmf", Sample().Bytes(200, 100)},
                                                      {"a.jpg", "\xFF\xD8\xFF\xE0"},
                                                      {"a.gif", "GIF89a\1"},
                                                      {"a.png", "\x89PNG\r\n\x1A\n"},
                                                      {"rle.bmp", Bmp(3, 2, 8, 1, colors, "\3\1")},
                                                      {"leer.bmp", "\1"}};
  for (const auto& [name, bytes] : cases) {
    Put(name, bytes);
    ASSERT_TRUE(QFile::resize(Path(name), 100LL << 30));
    EXPECT_THAT(Raised([&] { Load_Picture(Path(name)); }), Tells(errors::badPicture, {name, "102400 MB"})) << name;
    EXPECT_EQ(Error_Of([&, path = Path(name)] { Read_Bytes(path); }), errors::outOfMemory) << name;
  }
  // Of a bitmap in plain rows nothing is read behind them.
  Put("lang.bmp", Same_Bitmaps()[0].second);
  ASSERT_TRUE(QFile::resize(Path("lang.bmp"), 100LL << 30));
  EXPECT_EQ(Load_Picture(Path("lang.bmp")).size(), QSize(3, 2));
}

// An icon whose list tells 16 x 16 pixels and whose picture has many more.
TEST_F(PictureFile, IconsCannotHideTheirSize) {
  QImage large(1200, 1000, QImage::Format_RGB32);
  large.fill(Qt::blue);
  ASSERT_TRUE(large.save(Path("a.png")));
  const QByteArray png = Read_Bytes(Path("a.png"));
  QByteArray icon("\0\0\1\0\1\0\x10\x10\0\0\1\0\x20\0", 14);
  icon.resize(22);
  Put_Number(icon, 14, static_cast<qint32>(png.size()));
  Put_Number(icon, 18, qint32{22});
  Put("a.ico", icon + png);
  EXPECT_EQ(Error_Of([&] { Load_Picture(Path("a.ico"), Limits(1'000'000)); }), errors::badPicture);
  QImage small(16, 16, QImage::Format_ARGB32);
  small.fill(Qt::blue);
  ASSERT_TRUE(small.save(Path("b.ico")));
  EXPECT_EQ(Load_Picture(Path("b.ico"), Limits(256)).pixel(8, 8), blue);
}

TEST_F(PictureFile, WhatIsNoOrdinaryFileIsNotOpened) {
  QDir(folder.path()).mkdir("Ordner.bmp");
  ASSERT_EQ(::mkfifo(Path("Leitung.bmp").toUtf8().constData(), 0600), 0);
  ASSERT_TRUE(QFile::link("/dev/zero", Path("Geraet.bmp")) && QFile::link("/dev/null", Path("Nichts.wmf")));
  const std::pair<const char*, const char*> cases[] = {
      {"Ordner.bmp", "Ordner"}, {"Leitung.bmp", "Leitung"}, {"Geraet.bmp", "Gerät"}, {"Nichts.wmf", "Gerät"}};
  for (const auto& [name, what] : cases) {
    for (const auto& open :
         {std::function([](const QString& path) { Load_Picture(path); }), std::function(Check_Map_File)}) {
      EXPECT_THAT(Raised([&, path = Path(name)] { open(path); }), Tells(errors::badPicture, {name, what})) << name;
    }
    EXPECT_TRUE(Picture_Size(Path(name)).isEmpty()) << name;
    EXPECT_NE(Error_Of([&, path = Path(name)] { File_Copy(path, Path("Kopie")); }), 0) << name;
  }
  // A pipe stands for the devices: a write that takes them for files replaces them.
  ASSERT_TRUE(QFile::link(Path("Leitung.bmp"), Path("Dorthin.bmp")));
  for (const char* name : {"Leitung.bmp", "Dorthin.bmp"})
    EXPECT_NE(Error_Of([&, path = Path(name)] { Replace_File(path, "x"); }), 0) << name;
}

}  // namespace
