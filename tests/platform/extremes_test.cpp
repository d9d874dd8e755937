#include <QPdfWriter>

#include "platform/fonts.h"
#include "support/pixels.h"

// Numbers of damaged tables reach the drawing as they are.

namespace {

constexpr double extremes[] = {0,
                               1e6,
                               -2147483648.0,
                               1e300,
                               -1e300,
                               std::numeric_limits<double>::infinity(),
                               std::numeric_limits<double>::quiet_NaN()};
constexpr PenStyle pens[] = {PenStyle::Solid, PenStyle::Dash, PenStyle::None};
constexpr FillStyle fills[] = {FillStyle::Solid, FillStyle::None, FillStyle::DiagonalCross};

void Draw_Everything(Surface& s, double a, double b) {
  const QImage picture = Motley(4, 4);
  const QPointF points[] = {{a, b}, {5, a}, {b, 7}, {a, a}};
  s.Line({a, 3}, {4, b});
  s.Box({a, b, 20, b});
  s.Box({3, 3, a, b});
  s.FilledBox({b, a, a, a}, red);
  s.Ellipse({a, a, b, 9});
  s.Polyline(points);
  s.Polygon(points);
  s.Veil(points, green);
  s.Bezier(points, true);
  s.Print({a, b}, QStringLiteral("Käfer\r\nund Falter"));
  s.PrintRotated({b, a}, QStringLiteral("Käfer"), a);
  s.PaintPicture({a, b, b, a}, picture, {0, 0, 4, 4});
  s.PaintPicture({1, 1, 8, 8}, picture, {a, b, 3, b});
  s.SetClip({a, b, 10, a});
  s.SetClip({});
}

void Draw_All_Extremes(Surface& s) {
  for (const double a : extremes)
    for (const double b : extremes)
      for (const PenStyle pen : pens)
        for (const FillStyle fill : fills)
          for (const DrawMode mode : {DrawMode::Copy, DrawMode::NotXor}) {
            s.pen = {black, red, mode, b, pen, fill};
            Draw_Everything(s, a, b);
          }
}

TEST(Extremes, EverySurfaceDrawsOnAfterThem) {
  QImage image = Make_Canvas(60, 40), page = Make_Canvas(60, 40);
  const auto onImage = Make_Surface(image), onPage = Make_Page_Surface(page, {1, 1, {}, PageModes::Combining});
  for (Surface* s : {onImage.get(), onPage.get()}) {
    Draw_All_Extremes(*s);
    s->Cls(white);
    s->pen = {black, red, DrawMode::Copy, 1, PenStyle::Solid, FillStyle::Solid};
    s->Box({10, 10, 20, 20});
  }
  for (const QImage* drawn : {&image, &page})
    Expect_Pixels(*drawn, {{10, 10, black}, {15, 15, red}, {35, 15, white}, {5, 5, white}});
  const auto probe = Make_Probe_Surface(QRectF(0, 0, 60, 40));
  Draw_All_Extremes(*probe);
  EXPECT_TRUE(QRectF(0, 0, 60, 40).contains(probe->Take_Combined()));
  const QTemporaryDir folder;
  QPdfWriter writer(folder.filePath("Blatt.pdf"));
  const auto sheet = Make_Page_Surface(writer, 4);
  sheet->pen = {black, red, DrawMode::Copy, 1, PenStyle::Dash, FillStyle::Cross};
  for (const double a : extremes) Draw_Everything(*sheet, a, -a);
}

TEST(Extremes, FontsAndTextsHaveASize) {
  for (const double points : extremes) {
    const FontKey key{"Arial", points, false, false, false, 0};
    const FontFace& face = Font_Face(key);
    EXPECT_EQ(&face, &Font_Face(key)) << points;  // kept, not made anew
    EXPECT_GE(face.lineHeight, 1) << points;
  }
  const FontFace& large = Font_Face({"Arial", 2160, false, false, false, 0});
  EXPECT_GT(large.TextHeight(QString(1'000'000, u'\n')), 1'000'000);
  EXPECT_GT(large.TextWidth(QString(2'000'000, u'W')), 1'000'000);
  EXPECT_GE(large.TextWidth(QString(20'000, QChar(0x2190))), 0);
}

}  // namespace
