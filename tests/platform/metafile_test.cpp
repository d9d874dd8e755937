#include "picture_bytes.h"
#include "platform/wmf_reader.h"
#include "support/pixels.h"

namespace {

TEST(Metafiles, RecordsArePlayedInPlace) {
  for (const bool placeable : {true, false}) {
    const QByteArray bytes = Sample().Bytes(200, 100, placeable);
    ASSERT_TRUE(Is_Wmf(bytes.left(64)));
    EXPECT_EQ(Wmf_Size(bytes), QSize(200, 100));
    const QImage image = Read_Wmf(bytes);
    ASSERT_EQ(image.size(), QSize(200, 100));
    const std::vector<Pixel> pixels = {{20, 10, black},      {39, 29, black}, {40, 30, white}, {30, 15, red},
                                       {30, 20, 0xff00ffff}, {70, 70, green}, {52, 52, white}, {102, 70, green},
                                       {120, 70, white},     {30, 95, black}, {60, 95, white}, {62, 8, green},
                                       {78, 8, blue},        {2, 2, white}};
    Expect_Pixels(image, pixels, placeable ? "placeable" : "without placeable head");
    EXPECT_GT(Count_Pixels(image, QRect(130, 5, 70, 35), [](QRgb color) { return color == blue; }), 50);  // the text
  }
  // Half the size in the same units: everything comes nearer.
  EXPECT_EQ(Read_Wmf(Sample().Bytes(100, 50)).pixel(15, 8), red);
}

// Three saved states with brushes of their own; what is taken back decides the colour of the box drawn then.
TEST(Metafiles, SavedStatesNestAndAreWhole) {
  const auto colorAfter = [](const std::vector<int>& restores) {
    Metafile file;
    file.Add(setOrg, {0, 0}).Add(setExt, {100, 200}).Add(createPen, {5, 0, 0, 0, 0}).Add(selectObject, {0});
    const int brushes[][2] = {{0x00FF, 0}, {-256, 0}, {0, 0xFF}, {-1, 0}};  // red, green, blue, yellow
    for (int i = 0; i < 4; ++i) {
      file.Add(createBrush, {0, brushes[i][0], brushes[i][1], 0}).Add(selectObject, {i + 1});
      if (i < 3) file.Add(saveState, {});
    }
    for (const int restore : restores) file.Add(restoreState, {restore});
    file.Add(rectangle, {30, 40, 10, 20});
    return Read_Wmf(file.Bytes(200, 100)).pixel(30, 20);
  };
  const std::pair<std::vector<int>, QRgb> cases[] = {
      {{}, yellow},     {{-1}, blue},    {{-2}, green},   {{-3}, red},   {{-1, -1}, green}, {{-1, -1, -1}, red},
      {{-2, -1}, red},  {{-1, -2}, red}, {{1}, red},      {{2}, green},  {{3}, blue},       {{2, -1}, red},
      {{3, 2, 1}, red}, {{1, -1}, red},  {{0}, yellow},   {{4}, yellow}, {{-4}, yellow},    {{-4, -1}, blue},
      {{-3, 2}, red},   {{-1, 3}, blue}, {{2, 3}, green},
  };
  for (const auto& [restores, color] : cases) {
    std::string name;
    for (const int restore : restores) name += ' ' + std::to_string(restore);
    EXPECT_EQ(colorAfter(restores), color) << "restored" << name;
  }
  // Saved states hold everything that can be set, and what is set later does not reach into them.
  Metafile file;
  file.Add(setOrg, {0, 0}).Add(setExt, {100, 200}).Add(createPen, {0, 1, 0, 0, 0}).Add(selectObject, {0});
  file.Add(createBrush, {0, 0x00FF, 0, 0}).Add(selectObject, {1}).Add(moveTo, {50, 10});
  file.Add(saveState, {}).Add(saveState, {});
  file.Add(setOrg, {50, 50}).Add(setExt, {10, 10}).Add(setRop, {1}).Add(moveTo, {3, 3});
  file.Add(createBrush, {1, 0, 0, 0}).Add(selectObject, {2}).Add(createPen, {5, 0, 0, 0, 0}).Add(selectObject, {3});
  file.Add(restoreState, {-1}).Add(saveState, {}).Add(setOrg, {7, 7}).Add(restoreState, {-2});
  file.Add(lineTo, {50, 60}).Add(rectangle, {30, 40, 10, 20});
  const QImage image = Read_Wmf(file.Bytes(200, 100));
  Expect_Pixels(image, {{10, 50, black}, {59, 50, black}, {61, 50, white}, {20, 10, black}, {30, 20, red}});
}

// What a polygon or polyline is drawn from.
QByteArray Points(int count, const std::function<QPoint(int)>& place) {
  QByteArray points(4 * count, '\0');
  for (int i = 0; i < count; ++i) {
    Put_Number(points, 4 * i, static_cast<qint16>(place(i).x()));
    Put_Number(points, 4 * i + 2, static_cast<qint16>(place(i).y()));
  }
  return points;
}

// Each of these would draw for minutes or hours.
std::vector<std::pair<const char*, Metafile>> Costly_Drawings() {
  Metafile begun;
  begun.Add(setOrg, {0, 0}).Add(setExt, {4096, 4096}).Add(createBrush, {2, 0, 0, 5}).Add(selectObject, {0});
  Metafile boxes = begun, edges = begun, line = begun, letters = begun, fonts = begun, bitmaps = begun;
  for (int i = 0; i < 20000; ++i) boxes.Add(rectangle, {4096, 4096, 0, 0});
  const QByteArray zigzag = Points(32000, [](int i) { return QPoint(i * 37 % 4096, i % 2 * 4096); });
  edges.Add(createPen, {5, 0, 0, 0, 0}).Add(selectObject, {1}).Add(polygon, {32000}, zigzag);
  line.Add(createPen, {1, 60, 0, 0, 0}).Add(selectObject, {1}).Add(polyline, {32000}, zigzag);
  QByteArray font(18, '\0');
  Put_Number(font, 0, qint16{-1000});
  letters.Add(createFont, {}, font + QByteArray("Arial\0", 6)).Add(selectObject, {1});
  for (int i = 0; i < 2; ++i) letters.Add(textOut, {20000}, QByteArray(20000, 'W') + QByteArray(4, '\0'));
  for (int i = 0; i < 3000; ++i) {
    Put_Number(font, 0, static_cast<qint16>(-1 - i % 1000));
    font[10] = static_cast<char>(i / 1000 % 2);
    font[11] = static_cast<char>(i / 2000);
    fonts.Add(createFont, {}, font + QByteArray("Arial\0", 6)).Add(selectObject, {1});
    fonts.Add(textOut, {1, 'x', 5, 5}).Add(deleteObject, {1});
  }
  const QByteArray packed = Bmp(5000, 4000, 8, 1, {black, white}, QByteArray("\0\1", 2)).mid(14);
  for (int i = 0; i < 5000; ++i) bitmaps.Add(stretchDib, {0x20, 0xCC, 0, 1, 2, 0, 0, 10, 20, 5, 60}, packed);
  return {{"20,000 hatched boxes over all", boxes},
          {"polygon of 32,000 crossing edges", edges},
          {"wide line of 32,000 pieces with gaps", line},
          {"40,000 letters of 1000 pixels", letters},
          {"3,000 fonts", fonts},
          {"5,000 bitmaps of 20 megapixels in few bytes", bitmaps}};
}

TEST(Metafiles, WhatWouldDrawForeverIsRefused) {
  for (const auto& [name, file] : Costly_Drawings()) {
    const QByteArray bytes = file.Bytes(0, 0, false);
    EXPECT_THAT(Raised([&] { Read_Wmf(bytes, 3'600'000); }), Tells(errors::badPicture, {"zu aufwendig"})) << name;
  }
  Metafile nested, boxes;
  for (int i = 0; i < 100000; ++i) nested.Add(saveState, {});
  EXPECT_EQ(Error_Of([&] { Read_Wmf(nested.Bytes(20, 10)); }), errors::badPicture);
  // The clock ends a drawing, too.
  boxes.Add(setExt, {100, 200});
  for (int i = 0; i < 500; ++i) boxes.Add(rectangle, {90, 190, 10, 10});
  EXPECT_EQ(Read_Wmf(boxes.Bytes(200, 100)).pixel(10, 10), black);
  EXPECT_THAT(Raised([&] { Read_Wmf(boxes.Bytes(200, 100), 0); }), Tells(errors::badPicture, {"zu lange"}));
}

// A drawing as an office makes it, only larger: its cost is far from the limit.
TEST(Metafiles, RichDrawingsAreNotRefused) {
  Metafile file;
  file.Add(setOrg, {0, 0}).Add(setExt, {4096, 4096}).Add(createBrush, {0, 0x00FF, 0, 0}).Add(selectObject, {0});
  for (int i = 0; i < 30; ++i) file.Add(rectangle, {4096, 4096, 0, 0});
  // A shore: short pieces in turn.
  file.Add(polygon, {20000}, Points(20000, [](int i) { return QPoint(i * 4096 / 20000, 2000 + i % 7 * 3); }));
  for (int i = 0; i < 20000; ++i) file.Add(lineTo, {i * 13 % 4096, i * 29 % 4096 / 40});
  for (int i = 0; i < 300; ++i) file.Add(textOut, {8, 0x6261, 0x6463, 0x6665, 0x6867, i * 13, 100 + i % 9 * 300});
  EXPECT_EQ(Read_Wmf(file.Bytes(0, 0, false)).pixel(4000, 100), red);
}

}  // namespace
