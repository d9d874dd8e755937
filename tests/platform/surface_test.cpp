#include "platform/surface.h"

#include <QFontMetrics>
#include <QPainter>

#include "platform/fonts.h"
#include "support/pixels.h"

namespace {

// The image as rows of letters, so that a failing test shows the picture.
std::vector<std::string> Rows(const QImage& image) {
  std::vector<std::string> rows;
  for (int y = 0; y < image.height(); ++y) {
    std::string row;
    for (int x = 0; x < image.width(); ++x) {
      const QRgb c = image.pixel(x, y);
      row += c == white ? '.' : c == black ? '#' : c == red ? 'r' : c == green ? 'g' : c == blue ? 'b' : '?';
    }
    rows.push_back(row);
  }
  return rows;
}

using Picture = std::vector<std::string>;
using Drawing = std::function<void(Surface&)>;
QImage Painted(QImage image, const Drawing& draw, const PenState& pen = {}) {
  const auto surface = Make_Surface(image);
  surface->pen = pen;
  draw(*surface);
  return image;
}
Picture Drawn(int width, int height, const Drawing& draw, const PenState& pen = {}) {
  return Rows(Painted(Make_Canvas(width, height), draw, pen));
}

TEST(SurfaceLines, LeaveOutTheLastPixelAndPensMakeGapsAtWidthOneOnly) {
  EXPECT_EQ(Drawn(6, 3, [](Surface& s) { s.Line({1, 1}, {4, 1}); }), (Picture{"......", ".###..", "......"}));
  EXPECT_EQ(Drawn(6, 3, [](Surface& s) { s.Line({4, 1}, {1, 1}); }), (Picture{"......", "..###.", "......"}));
  EXPECT_EQ(Drawn(3, 4, [](Surface& s) { s.Line({1, 0}, {1, 3}); }), (Picture{".#.", ".#.", ".#.", "..."}));
  EXPECT_EQ(Drawn(4, 4, [](Surface& s) { s.Line({0, 0}, {3, 3}); }), (Picture{"#...", ".#..", "..#.", "...."}));
  EXPECT_EQ(Drawn(3, 1, [](Surface& s) { s.Line({1, 0}, {1, 0}); }), (Picture{"..."}));
  const QPointF corner[] = {{0, 0}, {3, 0}, {3, 3}};
  EXPECT_EQ(Drawn(5, 4, [&](Surface& s) { s.Polyline(corner); }), (Picture{"####.", "...#.", "...#.", "....."}));
  const Picture wide{"........", ".#####..", ".#####..", ".#####..", "........"};
  EXPECT_EQ(Drawn(8, 5, [](Surface& s) { s.Line({1, 2}, {6, 2}); }, {.DrawWidth = 3}), wide);
  EXPECT_EQ(Drawn(8, 5, [](Surface& s) { s.Line({5, 2}, {0, 2}); }, {.DrawWidth = 3}), wide);
  const auto line = [](PenStyle pen, double width) {
    return Drawn(24, 3, [](Surface& s) { s.Line({0, 1}, {24, 1}); }, {.DrawWidth = width, .pen = pen});
  };
  // The gaps run on from vertex to vertex.
  const QPointF parts[] = {{0, 1}, {4, 1}, {24, 1}};
  EXPECT_EQ(Drawn(24, 3, [&](Surface& s) { s.Polyline(parts); }, {.pen = PenStyle::Dot}), line(PenStyle::Dot, 1));
  EXPECT_EQ(line(PenStyle::Dot, 1)[1], "###...###...###...###...");
  EXPECT_EQ(line(PenStyle::Dash, 1)[1], "############....########");
  EXPECT_EQ(line(PenStyle::None, 1)[1], std::string(24, '.'));
  EXPECT_EQ(line(PenStyle::Dot, 3)[0], std::string(24, '#'));
}

TEST(SurfaceLines, FarAwayEndsKeepTheirDirection) {
  QImage image = Make_Canvas(101, 101);
  const auto surface = Make_Surface(image);
  surface->Line({-100000, -100000}, {100000, 100000});
  surface->pen.ForeColor = red;
  surface->Line({-90000, 20}, {90000, 20});
  const QPointF huge[] = {{-200000, 60}, {200000, 60}, {200000, 200000}, {-200000, 200000}};
  surface->pen.FillColor = green;
  surface->pen.fill = FillStyle::Solid;
  surface->Polygon(huge);
  Expect_Pixels(image, {{5, 5, black}, {50, 50, black}, {0, 20, red}, {100, 20, red}, {50, 60, red}});
  Expect_Pixels(image, {{100, 61, green}, {0, 100, green}});
}

TEST(SurfaceBoxes, RimLiesInside) {
  const auto box = [](double width, FillStyle fill, PenStyle pen, const QRectF& where) {
    return Drawn(7, 6, [&](Surface& s) { s.Box(where); }, {black, red, DrawMode::Copy, width, pen, fill});
  };
  const QRectF where(1, 1, 5, 4);
  EXPECT_EQ(box(1, FillStyle::None, PenStyle::Solid, where),
            (Picture{".......", ".#####.", ".#...#.", ".#...#.", ".#####.", "......."}));
  EXPECT_EQ(box(1, FillStyle::Solid, PenStyle::Solid, where),
            (Picture{".......", ".#####.", ".#rrr#.", ".#rrr#.", ".#####.", "......."}));
  EXPECT_EQ(box(1, FillStyle::Solid, PenStyle::None, where),
            (Picture{".......", ".rrrrr.", ".rrrrr.", ".rrrrr.", ".rrrrr.", "......."}));
  EXPECT_EQ(box(3, FillStyle::Solid, PenStyle::Solid, QRectF(0, 0, 7, 6)),
            (Picture{"#######", "#######", "#######", "#######", "#######", "#######"}));
  EXPECT_EQ(box(2, FillStyle::Solid, PenStyle::Solid, QRectF(0, 0, 7, 6)),
            (Picture{"#######", "#######", "##rrr##", "##rrr##", "#######", "#######"}));
  EXPECT_EQ(box(1, FillStyle::Solid, PenStyle::Solid, QRectF(6, 5, -5, -4)),
            box(1, FillStyle::Solid, PenStyle::Solid, where));
  EXPECT_EQ(box(1, FillStyle::Solid, PenStyle::Solid, QRectF(1, 1, 1, 1))[1], ".#.....");
  EXPECT_EQ(box(1, FillStyle::Solid, PenStyle::Solid, QRectF(1, 1, 0, 3))[1], ".......");
  EXPECT_EQ(box(1, FillStyle::None, PenStyle::Dot, QRectF(0, 0, 7, 6))[0], "###...#");
  EXPECT_EQ(Drawn(3, 2, [](Surface& s) { s.FilledBox({1, 0, 1, 2}, blue); }), (Picture{".b.", ".b."}));
}

TEST(SurfaceShapes, EllipsesFillTheirBoxPolygonsOddEvenCurvesWhenClosed) {
  for (const double width : {1.0, 3.0}) {
    for (const QSize size : {QSize(21, 15), QSize(20, 14), QSize(9, 30), QSize(3, 3)}) {
      const PenState pen{.FillColor = red, .DrawWidth = width, .fill = FillStyle::Solid};
      const QImage image = Painted(
          Make_Canvas(40, 40), [&](Surface& s) { s.Ellipse(QRectF(QPointF(4, 5), size)); }, pen);
      EXPECT_EQ(Extent_Of(image, Is_Ink), QRect(QPoint(4, 5), size)) << size.width() << " pen " << width;
      if (size.width() > 6) {
        EXPECT_EQ(image.pixel(4 + size.width() / 2, 5 + size.height() / 2), red);
      }
    }
  }
  const PenState pen{.FillColor = green, .fill = FillStyle::Solid};
  QImage image = Make_Canvas(41, 41);
  const auto s = Make_Surface(image);
  s->pen = pen;
  const QPointF ring[] = {{0, 0}, {40, 0}, {40, 40}, {0, 40}, {0, 0}, {10, 10}, {30, 10}, {30, 30}, {10, 30}, {10, 10}};
  s->Polygon(ring);
  // At (5, 5) the seam from ring to ring.
  Expect_Pixels(image, {{5, 5, black}, {20, 5, green}, {20, 20, white}, {40, 40, black}, {10, 20, black}});
  const QPointF curve[] = {{5, 30}, {5, 0}, {35, 0}, {35, 30}};
  for (const bool closed : {false, true}) {
    s->Cls(white);
    s->Bezier(curve, closed);
    Expect_Pixels(image, {{5, 29, black}, {20, 20, closed ? green : white}, {20, 30, closed ? black : white}});
  }
}

TEST(SurfaceHatch, LinesAreEightApartAndGapsShowWhatIsBelow) {
  struct Case {
    FillStyle style;
    int perRow, perColumn;  // lines met on a walk of 64 pixels, besides a line along the walk
    QPoint on[2], off;
  };
  const Case cases[] = {{FillStyle::Horizontal, 0, 8, {{3, 4}, {9, 12}}, {3, 5}},
                        {FillStyle::Vertical, 8, 0, {{4, 3}, {12, 9}}, {5, 3}},
                        {FillStyle::Upward, 8, 8, {{3, 13}, {4, 12}}, {4, 14}},  // rises to the right
                        {FillStyle::Downward, 8, 8, {{3, 11}, {4, 12}}, {4, 10}},
                        {FillStyle::Cross, 8, 8, {{3, 4}, {4, 3}}, {3, 3}}};
  const QPointF corners[] = {{0, 0}, {70, 0}, {70, 70}, {0, 70}};
  const QImage before = Motley(70, 70);
  for (const auto& [style, perRow, perColumn, on, off] : cases)
    for (const bool asPolygon : {false, true}) {
      const QImage image = Painted(before,
                                   [&](Surface& s) {
                                     asPolygon ? s.Polygon(corners) : s.Box({0, 0, 70, 70});
                                   },
                                   {.FillColor = red, .pen = PenStyle::None, .fill = style});
      const auto isRed = [](QRgb color) { return color == red; };
      EXPECT_EQ(Count_Pixels(image, QRect(0, 1, 64, 1), isRed), perRow) << static_cast<int>(style) << asPolygon;
      EXPECT_EQ(Count_Pixels(image, QRect(1, 0, 1, 64), isRed), perColumn) << static_cast<int>(style) << asPolygon;
      for (const QPoint& point : on) EXPECT_EQ(image.pixel(point), red) << static_cast<int>(style) << asPolygon;
      EXPECT_NE(image.pixel(off), red) << static_cast<int>(style) << asPolygon;
      int others = 0;
      for (int y = 0; y < 70; ++y)
        for (int x = 0; x < 70; ++x) others += image.pixel(x, y) != red && image.pixel(x, y) != before.pixel(x, y);
      EXPECT_EQ(others, 0);
    }
}

// Shapes on which pixels meet more than once: crossings, returning lines, rims under fills, texts over themselves.
std::vector<std::pair<std::string, Drawing>> Knotty_Shapes() {
  static const QPointF star[] = {{10, 90}, {50, 5}, {90, 90}, {5, 35}, {95, 35}};
  static const QPointF back[] = {{10, 10}, {80, 60}, {10, 10}, {80, 60}, {20, 80}, {20, 10}, {20, 80}};
  static const QPointF loop[] = {{10, 50}, {120, 0}, {-20, 0}, {90, 50}, {60, 90}, {30, 90}, {10, 50}};
  return {{"star", [](Surface& s) { s.Polygon(star); }},
          {"returning line", [](Surface& s) { s.Polyline(back); }},
          {"box", [](Surface& s) { s.Box(QRectF(5, 5, 60, 40)); }},
          {"box beyond the rim", [](Surface& s) { s.Box(QRectF(-20, 60, 300, 80)); }},
          {"filled box", [](Surface& s) { s.FilledBox(QRectF(10, 20, 30, 40), green); }},
          {"ellipse", [](Surface& s) { s.Ellipse(QRectF(5, 15, 80, 60)); }},
          {"loop", [](Surface& s) { s.Bezier(loop, true); }},
          {"line", [](Surface& s) { s.Line(QPointF(-5, 3), QPointF(120, 80)); }},
          {"text", [](Surface& s) { s.Print(QPointF(5, 5), "Äpfel\r\nund Birnen"); }},
          {"turned text", [](Surface& s) { s.PrintRotated(QPointF(40, 60), "Kräuter", 33); }}};
}

TEST(SurfaceModes, EachTouchedPixelIsCombinedOnce) {
  constexpr QRgb rim = qRgb(200, 10, 30), inside = qRgb(20, 240, 100);
  const QImage before = Motley(100, 100);
  for (const DrawMode mode : {DrawMode::Invert, DrawMode::NotXor, DrawMode::And})
    for (const double width : {1.0, 4.0})
      for (const FillStyle fill : {FillStyle::Solid, FillStyle::None, FillStyle::DiagonalCross})
        for (const PenStyle penStyle : {PenStyle::Solid, PenStyle::Dot}) {
          QImage image = before.copy(), copied = Make_Canvas(100, 100);
          const auto s = Make_Surface(image), plain = Make_Surface(copied);
          s->pen = {rim, inside, mode, width, penStyle, fill};
          plain->pen = {rim, inside, DrawMode::Copy, width, penStyle, fill};
          for (const auto& [name, draw] : Knotty_Shapes()) {
            SCOPED_TRACE(name + " mode " + std::to_string(static_cast<int>(mode)) + " width " + std::to_string(width));
            const QImage found = image.copy();
            draw(*s);
            plain->Cls(white);
            draw(*plain);
            const bool isText = name.ends_with("text");  // smooth as a copy, hard in the other modes
            int wrong = 0, touched = 0;
            for (int y = 0; y < 100; ++y)
              for (int x = 0; x < 100; ++x) {
                const QRgb was = found.pixel(x, y), is = image.pixel(x, y), copy = copied.pixel(x, y);
                touched += is != was;
                const QRgb color = isText && is != was ? rim : copy;
                const bool drawn = isText ? is != was : copy != white;
                const QRgb wanted = !drawn                     ? was
                                    : mode == DrawMode::Invert ? ~was
                                    : mode == DrawMode::NotXor ? ~(was ^ color)
                                                               : was & color;
                wrong += (wanted | black) != is;
              }
            EXPECT_EQ(wrong, 0);
            EXPECT_GT(touched, 20);
            mode == DrawMode::And ? s->PaintPicture(QRectF(found.rect()), found) : draw(*s);
            EXPECT_EQ(image, found);
          }
        }
}

TEST(SurfaceModes, NopDrawsNothingAndLargeShapesAreCombinedInBands) {
  const QImage before = Motley(100, 100);
  for (const auto& [name, draw] : Knotty_Shapes()) EXPECT_EQ(Painted(before, draw, {.mode = DrawMode::Nop}), before);
  const QPointF corners[] = {{0, 0}, {70000, 0}, {70000, 200}, {0, 200}};
  const QImage wide = Painted(Make_Canvas(70000, 200, black), [&](Surface& s) { s.Polygon(corners); },
                              {red, green, DrawMode::Invert, 1, PenStyle::None, FillStyle::Solid});
  for (const int y : {0, 63, 64, 127, 128, 199})
    for (const int x : {0, 35000, 69999}) EXPECT_EQ(wide.pixel(x, y), white) << x << "," << y;
}

TEST(SurfaceClip, HoldsForEveryDrawing) {
  QImage pic(50, 50, QImage::Format_RGB32);
  pic.fill(blue);
  auto shapes = Knotty_Shapes();
  shapes.emplace_back("picture", [&](Surface& s) { s.PaintPicture({0, 0, 100, 100}, pic); });
  shapes.emplace_back("blit", [&](Surface& s) { s.PaintPicture({20, 20, 50, 50}, pic); });
  for (const DrawMode mode : {DrawMode::Copy, DrawMode::NotXor})
    for (const auto& [name, draw] : shapes) {
      const QImage before = Motley(100, 100);
      QImage image = before.copy();
      const auto s = Make_Surface(image);
      s->pen.mode = mode;
      s->pen.fill = FillStyle::Solid;
      s->SetClip({30, 30, 20, 40});
      draw(*s);
      ASSERT_TRUE(QRect(30, 30, 20, 40).contains(Difference_Of(image, before))) << name;
      s->SetClip({});
      s->FilledBox({0, 0, 1, 1}, red);
      EXPECT_NE(image.pixel(0, 0), before.pixel(0, 0)) << name;
    }
}

TEST(SurfacePicture, BlitsAndEnlargesByNearestPixel) {
  QImage pic(2, 2, QImage::Format_RGB32);
  pic.setPixel(0, 0, red);
  pic.setPixel(1, 0, green);
  pic.setPixel(0, 1, blue);
  pic.setPixel(1, 1, black);
  const QImage indexed = pic.convertToFormat(QImage::Format_Indexed8);
  const QRectF whole(0, 0, 2, 2);
  const std::tuple<QRectF, QRectF, Picture> cases[] = {{{1, 1, 2, 2}, whole, {"....", ".rg.", ".b#.", "...."}},
                                                       {{-1, -1, 2, 2}, whole, {"#...", "....", "....", "...."}},
                                                       {{0, 0, 4, 4}, whole, {"rrgg", "rrgg", "bb##", "bb##"}},
                                                       {{-3, -3, 6, 6}, whole, {"###.", "###.", "###.", "...."}},
                                                       {{0, 0, 2, 2}, {1, 0, 1, 1}, {"gg..", "gg..", "....", "...."}},
                                                       {{0, 0, 1, 1}, whole, {"#...", "....", "....", "...."}}};
  for (const QImage& picture : {pic, indexed})
    for (const auto& [target, source, wanted] : cases)
      EXPECT_EQ(Drawn(4, 4, [&](Surface& s) { s.PaintPicture(target, picture, source); }), wanted);
  QImage clear(2, 2, QImage::Format_ARGB32);
  clear.fill(0);
  clear.setPixel(1, 1, red);
  EXPECT_EQ(Drawn(2, 2, [&](Surface& s) { s.PaintPicture({0, 0, 2, 2}, clear); }), (Picture{"..", ".r"}));
}

TEST(SurfaceText, WidthsAddUpAndAreThoseDrawn) {
  QImage image = Make_Canvas(10, 10);
  const auto s = Make_Surface(image);
  for (const char* family : {"Arial", "Times New Roman", "Courier New", "MS Sans Serif"})
    for (const double points : {6.0, 8.25, 12.0, 13.5, 40.0})
      for (const bool bold : {false, true}) {
        ASSERT_TRUE(s->SetFont({family, points, bold, !bold, false, 0}));
        const QString text = QStringLiteral("AVATo Täfel fi ffl 12,5 Wöß");
        int sum = 0;
        for (const QChar c : text) sum += s->TextWidth(QString(c));
        EXPECT_EQ(s->TextWidth(text), sum) << family << points;
        // Draw it between marks: its ink must end within its width and a little overhang.
        QImage ink = Make_Canvas(sum + 80, s->TextHeight(text) + 20);
        const auto on = Make_Surface(ink);
        on->SetFont(s->Font());
        on->Print({20, 10}, text + QLatin1Char('|'));
        const int bar = s->TextWidth("|");
        const int last = Extent_Of(ink, [](QRgb color) { return qGray(color) < 200; }).right();
        EXPECT_GE(last, 20 + sum) << family << points;
        EXPECT_LE(last, 20 + sum + bar + s->TextHeight("A") / 3) << family << points;
      }
}

TEST(SurfaceText, LinesEndWithAnyMark) {
  QImage image = Make_Canvas(10, 10);
  const auto s = Make_Surface(image);
  const double high = s->TextHeight("A");
  EXPECT_EQ(s->TextHeight("a\rb\nc\r\nd"), 4 * high);
  EXPECT_EQ(s->TextHeight("a\r\n"), 2 * high);
  EXPECT_EQ(s->TextWidth("iii\r\nWWW\ri"), s->TextWidth("WWW"));
  const auto together = Drawn(80, 80, [](Surface& t) { t.Print({3, 4}, "eins\r\nzwei\rdrei"); });
  const auto single = Drawn(80, 80, [&](Surface& t) {
    t.Print({3, 4}, "eins");
    t.Print({3, 4 + high}, "zwei");
    t.Print({3, 4 + 2 * high}, "drei");
  });
  EXPECT_EQ(together, single);
}

TEST(SurfaceText, KeptTextsHaveThePixelsOfPlainOnes) {
  QFont font(QStringLiteral("Liberation Sans"));
  font.setPixelSize(16);
  font.setKerning(false);
  font.setUnderline(true);
  font.setHintingPreference(QFont::PreferFullHinting);
  font.setStyleStrategy(QFont::StyleStrategy(QFont::PreferAntialias | QFont::NoSubpixelAntialias));
  QImage plain = Make_Canvas(300, 60), kept = plain.copy();
  {
    QPainter painter(&plain);
    painter.setFont(font);
    painter.setPen(QColor::fromRgb(red));
    painter.drawText(QPoint(7, 11 + QFontMetrics(font).ascent()), QStringLiteral("Wiesen-Glockenblume ÄÖÜß AVA fi"));
  }
  const auto s = Make_Surface(kept);
  s->SetFont({"Arial", 12, false, false, true, 0});
  s->pen.ForeColor = red;
  for (const int others : {0, 0, 21000}) {  // more than are kept
    for (int i = 0; i < others; ++i) s->Print({2, 2}, QString::number(i));
    s->Cls(white);
    s->Print({7, 11}, QStringLiteral("Wiesen-Glockenblume ÄÖÜß AVA fi"));
    EXPECT_EQ(kept, plain);
  }
}

TEST(SurfaceText, RotatedTextRunsCounterClockwiseAboutItsCorner) {
  const auto ink = [](double degrees) {
    const QImage image = Painted(Make_Canvas(300, 300), [&](Surface& s) {
      s.SetFont({"Arial", 18, true, false, false, 0});
      s.PrintRotated({150, 150}, "Heidekraut", degrees);
    });
    return Extent_Of(image, Is_Ink).translated(-150, -150);
  };
  const QRect flat = ink(0), up = ink(90), over = ink(180), down = ink(270);
  EXPECT_TRUE(flat.left() >= -1 && flat.top() >= -1);
  // Quarter turns carry the ink with them, give or take a pixel.
  const std::pair<QRect, QRect> turns[] = {
      {up, QRect(QPoint(flat.top(), -flat.right()), QPoint(flat.bottom(), -flat.left()))},
      {over, QRect(-flat.bottomRight(), -flat.topLeft())},
      {down, QRect(QPoint(-flat.bottom(), flat.left()), QPoint(-flat.top(), flat.right()))}};
  for (const auto& [found, wanted] : turns) {
    EXPECT_TRUE(wanted.adjusted(-2, -2, 2, 2).contains(found) && found.adjusted(-2, -2, 2, 2).contains(wanted));
  }
}

TEST(SurfaceText, FontsAreFoundOrReplaced) {
  QImage image = Make_Canvas(10, 10);
  const auto s = Make_Surface(image);
  for (const char* family : {"Arial", "arial", "Helvetica", "MS Sans Serif", "Courier New", "Times New Roman",
                             "Wingdings", "Symbol", "Liberation Sans"}) {
    EXPECT_TRUE(s->SetFont({family, 12, false, false, false, 0})) << family;
    EXPECT_TRUE(Font_Installed(family));
  }
  s->SetFont({"Arial", 12, false, false, false, 0});
  const int wide = s->TextWidth("Blaumeise");
  EXPECT_FALSE(s->SetFont({"Gibtesnicht", 12, false, false, false, 0}));
  EXPECT_FALSE(Font_Installed("Gibtesnicht"));
  EXPECT_EQ(s->TextWidth("Blaumeise"), wide);
  s->SetFont({"Courier New", 12, false, false, false, 0});
  EXPECT_EQ(s->TextWidth("iii"), s->TextWidth("WWW"));
  s->SetFont({"Arial", 0, false, false, false, 0});
  EXPECT_GE(s->TextHeight("A"), 1);
  QImage square = Make_Canvas(60, 60);
  const auto on = Make_Surface(square);
  on->SetFont({"Wingdings", 24, false, false, false, 2});
  on->Print({10, 10}, "n");
  const auto dark = [](QRgb color) { return qGray(color) <= 128; };
  const QSize ink = Extent_Of(square, dark).size();
  EXPECT_GT(10 * Count_Pixels(square, square.rect(), dark), 9 * ink.width() * ink.height()) << "a filled square";
}

// A page of four device pixels to a surface pixel, as an image, so that its pixels can be asked.
TEST(PageSurface, DrawsTheSameLayoutFiner) {
  QImage page = Make_Canvas(800, 800), screen = Make_Canvas(200, 200);
  const auto fine = Make_Page_Surface(page, 4);
  const auto coarse = Make_Surface(screen);
  EXPECT_TRUE(fine->IsPaper() && fine->Extent() == QRectF(0, 0, 200, 200));
  const QPointF triangle[] = {{110, 10}, {190, 10}, {150, 90}};
  for (Surface* s : {fine.get(), coarse.get()}) {
    s->pen = {black, red, DrawMode::Copy, 3, PenStyle::Solid, FillStyle::Solid};
    s->Box({10, 10, 60, 40});
    s->FilledBox({10, 60, 20, 20}, green);
    s->pen.DrawWidth = 1;
    s->pen.mode = DrawMode::And;  // does not exist on paper: drawn as a copy
    s->Polygon(triangle);
    s->pen.mode = DrawMode::Nop;
    s->Ellipse({0, 100, 100, 100});
  }
  for (const QPoint at : {QPoint(10, 10), QPoint(12, 30), QPoint(69, 49), QPoint(67, 30), QPoint(14, 14),
                          QPoint(40, 30), QPoint(9, 30), QPoint(70, 30), QPoint(10, 60), QPoint(29, 79), QPoint(30, 70),
                          QPoint(150, 50), QPoint(105, 50), QPoint(50, 150)})
    EXPECT_EQ(page.pixel(at * 4 + QPoint(2, 2)), screen.pixel(at)) << at.x() << "," << at.y();
  for (const char* family : {"Arial", "Times New Roman", "Wingdings"}) {
    fine->SetFont({family, 9.75, false, false, false, 0});
    coarse->SetFont({family, 9.75, false, false, false, 0});
    EXPECT_EQ(fine->TextWidth("Rotkehlchen"), coarse->TextWidth("Rotkehlchen"));
    EXPECT_EQ(fine->TextHeight("a\rb"), coarse->TextHeight("a\rb"));
  }
}

TEST(PageSurface, TextsTakeTheRoomTheyHaveOnTheScreen) {
  const auto dark = [](QRgb color) { return qGray(color) < 128; };
  QImage page = Make_Canvas(1600, 600), screen = Make_Canvas(400, 150);
  const auto fine = Make_Page_Surface(page, 4);
  const auto coarse = Make_Surface(screen);
  for (const double points : {7.0, 9.0, 13.0}) {
    for (Surface* s : {fine.get(), coarse.get()}) {
      s->Cls(white);
      s->SetFont({"Arial", points, false, false, false, 0});
      s->Print({10, 20}, "Mittlerer Wegerich am Mühlenweg\r\nH");
    }
    const QRect onPage = Extent_Of(page, dark), onScreen = Extent_Of(screen, dark);
    EXPECT_NEAR(onPage.right() / 4.0, onScreen.right(), 2) << points;
    EXPECT_NEAR(onPage.bottom() / 4.0, onScreen.bottom(), 2) << points;
    EXPECT_NEAR(onPage.top() / 4.0, onScreen.top(), 2) << points;
  }
}

TEST(PageSurface, HatchesAreLinesWithinTheShape) {
  QImage page = Make_Canvas(400, 400);
  const auto s = Make_Page_Surface(page, 4);
  for (const FillStyle style : {FillStyle::Horizontal, FillStyle::Vertical, FillStyle::Upward, FillStyle::Downward,
                                FillStyle::Cross, FillStyle::DiagonalCross}) {
    s->Cls(white);
    s->pen = {black, red, DrawMode::Copy, 1, PenStyle::None, style};
    s->Ellipse({20, 20, 60, 60});
    int inside = 0, outside = 0;
    for (int y = 0; y < 400; ++y)
      for (int x = 0; x < 400; ++x) {
        if (page.pixel(x, y) == white) continue;
        ++(std::hypot(x - 199.5, y - 199.5) < 122 ? inside : outside);
      }
    EXPECT_EQ(outside, 0) << static_cast<int>(style);
    // One pixel in eight, two in eight where two hatches cross; diagonals are as wide but closer together.
    const double share = inside / (M_PI * 120 * 120);
    const bool crossed = style == FillStyle::Cross || style == FillStyle::DiagonalCross;
    EXPECT_GT(share, crossed ? 0.2 : 0.1) << static_cast<int>(style);
    EXPECT_LT(share, crossed ? 0.36 : 0.2) << static_cast<int>(style);
  }
}

}  // namespace

// Letters that are drawn one by one stand where, and look as, the font would set them as a text.
TEST(SurfaceText, PlainLettersLookAsSetByTheFont) {
  QString letters;
  for (int code = 0x20; code <= 0xff; ++code) letters += QChar(code);
  const QStringList lines = {letters.left(90), letters.mid(143), "Wiese am Hügel 12,5 m", "AVA Tor. fffi 1/2",
                             "Straße"};
  int plain = 0;
  for (const char* family : {"Arial", "Courier New", "Times New Roman", "Symbol", "DejaVu Sans"})
    for (const double points : {5.0, 8.0, 11.3, 30.0, 90.0})
      for (const int style : {0, 1, 2, 3}) {
        const FontFace& face = Font_Face({family, points, (style & 1) != 0, (style & 2) != 0});
        for (const QString& line : lines) {
          QImage set(1200, 150, QImage::Format_RGB32);
          set.fill(qRgb(240, 230, 200));
          QImage drawn = set.copy();
          QPainter one(&set), other(&drawn);
          one.setFont(face.font), other.setFont(face.font);
          one.drawStaticText(QPoint(3, 2), face.Prepared(line, FontFace::Edge::Smooth));
          if (!face.Draw_Plain(other, QPoint(3, 2 + face.ascent), line)) continue;
          ++plain;
          ASSERT_EQ(set, drawn) << family << ' ' << points << ' ' << style << ' ' << line.toStdString();
        }
      }
  EXPECT_GT(plain, 150);
}
