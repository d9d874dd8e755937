#include "platform/picture.h"

#include <QDir>
#include <QFile>
#include <QImageReader>
#include <QTemporaryDir>
#include <QtEndian>

#include "platform/files.h"
#include "platform/wmf_reader.h"
#include "support/errors.h"
#include "support/pixels.h"

namespace {

class PictureFile : public ::testing::Test {
 protected:
  QTemporaryDir folder;
  QString Path(const QString& name) const { return folder.filePath(name); }
  QString Put(const QString& name, const QByteArray& bytes) const {
    QFile file(Path(name));  // without the flushes of the program's own writing
    EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
    return Path(name);
  }
  int Loading_Error(const QString& name, const QByteArray& bytes) const {
    const Error error = Raised([&] { Load_Picture(Put(name, bytes)); });
    EXPECT_TRUE(error.number == 0 || error.text.contains(name)) << qPrintable(error.text);
    return error.number;
  }
};

template <class Number>
void Put_Number(QByteArray& bytes, qsizetype at, Number value) {
  qToLittleEndian(value, bytes.data() + at);
}

// A bitmap from its parts: head of 40 bytes, colour table, pixel bytes.
QByteArray Bmp(int width, int height, int bits, int compression, const std::vector<QRgb>& table,
               const QByteArray& pixels) {
  const auto offset = static_cast<int>(54 + table.size() * 4);
  QByteArray bytes(offset, '\0');
  bytes[0] = 'B';
  bytes[1] = 'M';
  Put_Number(bytes, 2, static_cast<qint32>(offset + pixels.size()));
  Put_Number(bytes, 10, static_cast<qint32>(offset));
  Put_Number(bytes, 14, qint32{40});
  Put_Number(bytes, 18, qint32{width});
  Put_Number(bytes, 22, qint32{height});
  Put_Number(bytes, 26, qint16{1});
  Put_Number(bytes, 28, static_cast<qint16>(bits));
  Put_Number(bytes, 30, qint32{compression});
  Put_Number(bytes, 34, static_cast<qint32>(pixels.size()));
  Put_Number(bytes, 46, static_cast<qint32>(table.size()));
  for (size_t i = 0; i < table.size(); ++i)
    Put_Number(bytes, 54 + static_cast<qsizetype>(i) * 4, static_cast<quint32>(table[i] & 0xffffff));
  return bytes + pixels;
}

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
      QImage image;
      ASSERT_EQ(Raised([&] { image = Load_Picture(path); }).number, 0) << kind;
      ASSERT_EQ(image.size(), QSize(3, 2)) << kind;
      EXPECT_EQ(Picture_Size(path), QSize(3, 2)) << kind;
      Expect_Pixels(image, {{0, 0, red}, {1, 0, green}, {2, 0, blue}}, kind);
      Expect_Pixels(image, {{0, 1, white}, {1, 1, white}, {2, 1, red}}, kind);
      const bool indexed = bytes[28] <= 8;  // bits a pixel
      EXPECT_EQ(image.format(), indexed ? QImage::Format_Indexed8 : QImage::Format_RGB32) << kind;
    }
  }
}

TEST_F(PictureFile, EveryCutThroughABitmapIsTold) {
  for (const auto& [kind, bytes] : Same_Bitmaps()) {
    // Up to here the file may be cut without losing a pixel: the filling behind the last row, the end mark.
    for (qsizetype size = 0; size < bytes.size() - 3; ++size)
      ASSERT_EQ(Loading_Error("cut.bmp", bytes.left(size)), errors::badPicture) << kind << " cut at " << size;
  }
}

TEST_F(PictureFile, CutPicturesOfOtherKindsAreTold) {
  for (const char* name : {"a.png", "a.jpg"}) {
    Save_Picture(Motley(60, 50), Path(name));
    EXPECT_EQ(Load_Picture(Path(name)).size(), QSize(60, 50));
    const QByteArray bytes = Read_Bytes(Path(name));
    for (const int percent : {10, 50, 90, 99})
      EXPECT_EQ(Loading_Error(name, bytes.left(bytes.size() * percent / 100)), errors::badPicture) << name << percent;
  }
}

TEST_F(PictureFile, GifsAreReadAndTellTheirCuts) {
  // The bitmap of the other cases: 3 x 2, four colours, ten codes of 3 bits.
  QByteArray bytes("GIF89a\x03\x00\x02\x00\x81\x00\x00", 13);
  for (const QRgb color : colors)
    for (const int part : {qRed(color), qGreen(color), qBlue(color)}) bytes += static_cast<char>(part);
  bytes += QByteArray("\x2C\0\0\0\0\x03\0\x02\0\0\x02\x04", 12);
  for (const int code : {0x8C, 0x38, 0x10, 0x29}) bytes += static_cast<char>(code);
  bytes += QByteArray("\0;", 2);
  const QImage image = Load_Picture(Put("a.gif", bytes));
  ASSERT_EQ(image.size(), QSize(3, 2));
  Expect_Pixels(image, {{2, 0, blue}, {2, 1, red}});
  for (qsizetype size = 1; size < bytes.size() - 2; ++size)
    ASSERT_EQ(Loading_Error("a.gif", bytes.left(size)), errors::badPicture) << size;
}

TEST_F(PictureFile, WhatIsNoPictureIsToldByName) {
  const std::pair<const char*, QByteArray> cases[] = {{"leer.bmp", {}},
                                                      {"text.bmp", "Dies ist kein Bild, nur ein Text."},
                                                      {"halb.jpg", "\xFF\xD8\xFF\xE0"},
                                                      {"BM.bmp", "BM"}};
  for (const auto& [name, bytes] : cases) {
    EXPECT_EQ(Loading_Error(name, bytes), errors::badPicture) << name;
    EXPECT_TRUE(Picture_Size(Path(name)).isEmpty()) << name;
  }
  EXPECT_EQ(Error_Of([&] { Load_Picture(Path("fehlt.bmp")); }), errors::fileNotFound);
  QDir(folder.path()).mkdir("ordner.bmp");
  EXPECT_EQ(Error_Of([&] { Load_Picture(Path("ordner.bmp")); }), errors::badPicture);
}

TEST_F(PictureFile, TooLargeForTheMemoryTellsTheNeed) {
  // A file of the full length without its bytes: a million by half a million is 1.5 TB here, 2 TB in memory.
  QByteArray head = Bmp(1000000, 500000, 24, 0, {}, {});
  const QString path = Put("Riese.bmp", head);
  ASSERT_TRUE(QFile::resize(path, 54 + 3000000LL * 500000));
  const Error error = Raised([&] { Load_Picture(path); });
  EXPECT_EQ(error.number, errors::outOfMemory);
  EXPECT_TRUE(error.text.contains("Riese.bmp") && error.text.contains("1907349 MB")) << qPrintable(error.text);
  EXPECT_EQ(Picture_Size(path), QSize(1000000, 500000));
}

// Whatever stands in a file: a picture, or an error of the two kinds that name it.
TEST_F(PictureFile, DamagedPicturesNeverEndTheProgram) {
  std::mt19937 random(77);
  QImage plain(40, 30, QImage::Format_RGB32);
  plain.fill(red);
  std::vector<QByteArray> sounds;
  for (const char* name : {"a.png", "a.jpg"}) {
    Save_Picture(plain, Path(name));
    sounds.push_back(Read_Bytes(Path(name)));
  }
  for (const auto& [kind, bytes] : Same_Bitmaps()) sounds.push_back(bytes);
  int loaded = 0, refused = 0;
  for (const QByteArray& sound : sounds)
    for (int round = 0; round < 150; ++round) {
      QByteArray bytes = sound;
      for (int i = 0; i < 3; ++i)
        bytes[static_cast<qsizetype>(random() % static_cast<unsigned>(std::min<qsizetype>(bytes.size(), 120)))] =
            static_cast<char>(random());
      const int error = Loading_Error("schaden.bmp", bytes);
      Picture_Size(Path("schaden.bmp"));
      ASSERT_TRUE(error == 0 || error == errors::badPicture || error == errors::outOfMemory) << error;
      ++(error == 0 ? loaded : refused);
    }
  EXPECT_GT(loaded, 100);
  EXPECT_GT(refused, 100);
}

TEST_F(PictureFile, LargerThanTheReadersUsualLimitOpens) {
  // 49 megapixels, indexed: 49 MB, which the reader counts as 196.
  const QString path = Put("gross.bmp", Bmp(7000, 7000, 8, 0, colors, {}));
  ASSERT_TRUE(QFile::resize(path, 54 + 16 + 7000LL * 7000));
  QImageReader::setAllocationLimit(128);
  const QImage image = Load_Picture(path);
  EXPECT_EQ(image.size(), QSize(7000, 7000));
  EXPECT_EQ(image.format(), QImage::Format_Indexed8);
  EXPECT_EQ(image.pixel(6999, 6999), white);
  EXPECT_EQ(Picture_Memory(image.size(), 8), 49000000);
  // Wider than 16 bits count.
  const QString wide = Put("breit.bmp", Bmp(70000, 3, 8, 0, colors, QByteArray(70000 * 3, 2)));
  EXPECT_EQ(Load_Picture(wide).pixel(69999, 2), green);
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

TEST_F(PictureFile, SavedPicturesComeBackWithTheirResolution) {
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
}

TEST_F(PictureFile, AFullDiskLeavesTheFormerPicture) {
  for (const char* name : {"Karte.bmp", "Karte.png"}) {
    Save_Picture(Motley(4, 4), Path(name));
    const QByteArray before = Read_Bytes(Path(name));
    File_Write_Fault = [](const QString&, qint64) { return errors::diskFull; };
    EXPECT_EQ(Error_Of([&] { Save_Picture(Motley(5, 4), Path(name)); }), errors::diskFull);
    File_Write_Fault = nullptr;
    EXPECT_EQ(Read_Bytes(Path(name)), before);
  }
}

// A metafile from its records.
class Metafile {
 public:
  Metafile& Add(int number, std::initializer_list<int> words, const QByteArray& tail = {}) {
    QByteArray record(static_cast<qsizetype>(6 + words.size() * 2), '\0');
    Put_Number(record, 4, static_cast<qint16>(number));
    qsizetype at = 6;
    for (const int word : words) Put_Number(record, std::exchange(at, at + 2), static_cast<qint16>(word));
    record += tail;
    if (record.size() % 2) record += '\0';
    Put_Number(record, 0, static_cast<qint32>(record.size() / 2));
    records += record;
    return *this;
  }
  // 1440 units an inch: `width` and `height` in pixels of 96 dpi are 15 units each.
  QByteArray Bytes(int width, int height, bool placeable = true) const {
    QByteArray bytes;
    if (placeable) {
      bytes = QByteArray(22, '\0');
      Put_Number(bytes, 0, quint32{0x9AC6CDD7});
      Put_Number(bytes, 10, static_cast<qint16>(width * 15));
      Put_Number(bytes, 12, static_cast<qint16>(height * 15));
      Put_Number(bytes, 14, qint16{1440});
    }
    QByteArray head(18, '\0');
    Put_Number(head, 0, qint16{1});
    Put_Number(head, 2, qint16{9});
    Put_Number(head, 4, qint16{0x300});
    return bytes + head + records + QByteArray("\3\0\0\0\0\0", 6);
  }

 private:
  QByteArray records;
};

constexpr int setOrg = 0x20B, setExt = 0x20C, createBrush = 0x2FC, createPen = 0x2FA, createFont = 0x2FB,
              selectObject = 0x12D, deleteObject = 0x1F0, rectangle = 0x41B, ellipse = 0x418, polyPolygon = 0x538,
              moveTo = 0x214, lineTo = 0x213, textOut = 0x521, setTextColor = 0x209, setBkMode = 0x102, setRop = 0x104,
              stretchDib = 0xF43, saveState = 0x1E, restoreState = 0x127;

Metafile Sample() {
  Metafile file;
  file.Add(setOrg, {0, 0}).Add(setExt, {100, 200}).Add(setBkMode, {1});
  file.Add(createBrush, {0, 0x00FF, 0, 0})
      .Add(createPen, {0, 0, 0, 0, 0})
      .Add(selectObject, {0})
      .Add(selectObject, {1});
  file.Add(rectangle, {30, 40, 10, 20});  // red with black rim: x 20..39, y 10..29
  file.Add(0x7777, {1, 2, 3});            // nobody knows it
  file.Add(deleteObject, {0}).Add(createBrush, {0, -256, 0, 0}).Add(selectObject, {0});  // green takes the free place
  file.Add(saveState, {}).Add(createPen, {5, 0, 0, 0, 0}).Add(selectObject, {2});
  file.Add(ellipse, {90, 90, 50, 50});
  file.Add(polyPolygon, {2, 4, 4, 100, 50, 140, 50, 140, 90, 100, 90, 110, 60, 130, 60, 130, 80, 110, 80});
  file.Add(restoreState, {-1}).Add(moveTo, {95, 10}).Add(lineTo, {95, 60});
  file.Add(setRop, {6}).Add(moveTo, {20, 25}).Add(lineTo, {20, 35}).Add(setRop, {13});
  QByteArray font(18, '\0');
  Put_Number(font, 0, qint16{-20});
  file.Add(createFont, {}, font + QByteArray("Arial\0", 6)).Add(selectObject, {3}).Add(setTextColor, {0, 0xFF});
  file.Add(textOut, {3, 'M' | 'M' << 8, 'M', 5, 130});
  const QByteArray dib = Bmp(2, 1, 24, 0, {}, QByteArray("\x00\xFF\x00\xFF\x00\x00\x00\x00", 8)).mid(14);
  file.Add(stretchDib, {0x20, 0xCC, 0, 1, 2, 0, 0, 10, 20, 5, 60}, dib);
  return file;
}

TEST(Metafiles, RecordsArePlayedInPlace) {
  for (const bool placeable : {true, false}) {
    const QByteArray bytes = Sample().Bytes(200, 100, placeable);
    ASSERT_TRUE(Is_Wmf(bytes.left(64)));
    EXPECT_EQ(Wmf_Size(bytes), QSize(200, 100));
    const QImage image = Read_Wmf(bytes);
    ASSERT_EQ(image.size(), QSize(200, 100));
    Expect_Pixels(image,
                  {{20, 10, black},
                   {39, 29, black},
                   {40, 30, white},
                   {30, 15, red},
                   {30, 20, 0xff00ffff},
                   {70, 70, green},
                   {52, 52, white},
                   {102, 70, green},
                   {120, 70, white},
                   {30, 95, black},
                   {60, 95, white},
                   {62, 8, green},
                   {78, 8, blue},
                   {2, 2, white}},
                  placeable ? "placeable" : "without placeable head");
    EXPECT_GT(Count_Pixels(image, QRect(130, 5, 70, 35), [](QRgb color) { return color == blue; }), 50);  // the text
  }
  // Half the size in the same units: everything comes nearer.
  EXPECT_EQ(Read_Wmf(Sample().Bytes(100, 50)).pixel(15, 8), red);
}

TEST_F(PictureFile, MetafilesAreKnownByContentOrEnding) {
  const QString path = Put("Zeichnung.bmp", Sample().Bytes(200, 100));
  EXPECT_EQ(Load_Picture(path).pixel(30, 15), red);
  EXPECT_EQ(Picture_Size(path), QSize(200, 100));
  const Error error = Raised([&] { Load_Picture(Put("keine.wmf", "Dies ist keine Zeichnung, sondern ein Text.")); });
  EXPECT_EQ(error.number, errors::fileNotFound);
  EXPECT_EQ(error.text, Error_Text(errors::fileNotFound));
}

TEST(Metafiles, DamageNeverEndsTheProgram) {
  const QByteArray sound = Sample().Bytes(200, 100);
  std::mt19937 random(20240501);
  int played = 0;
  for (int round = 0; round < 1500; ++round) {
    QByteArray bytes = sound;
    const auto hits = 1 + random() % 6;
    for (unsigned i = 0; i < hits; ++i)
      bytes[static_cast<qsizetype>(random() % static_cast<unsigned>(bytes.size()))] = static_cast<char>(random());
    if (round % 3 == 0) bytes.truncate(static_cast<qsizetype>(random() % static_cast<unsigned>(bytes.size())));
    const Error error = Raised([&] {
      const QImage image = Read_Wmf(bytes);
      played += image.width() > 0 && image.width() <= 4096 && image.height() <= 4096;
    });
    ASSERT_TRUE(error.number == 0 || error.number == errors::fileNotFound) << round;
  }
  EXPECT_GT(played, 800);
}

}  // namespace
