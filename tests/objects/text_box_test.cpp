#include "objects/text_box.h"

#include "objects/drawing.h"
#include "objects/rotated_text.h"

namespace {

TextLook Look(const Drawing& drawing, int frameWidth) {
  TextLook look;
  look.colors = drawing.colors;
  look.frame.framed = frameWidth > 0;
  look.frame.width = frameWidth;
  return look;
}

// A box of 40 x 16 pixels for a text without ink.
void Draw(Drawing& drawing, const TextLook& look) {
  Draw_Text_Box(drawing.context, {20, 30}, QStringLiteral(" "), QSizeF(40, 16), look);
}

TEST(TextBox, BoxFrameAndTextPosition) {
  for (const int width : {0, 1, 3}) {
    Drawing drawing;
    const TextLook look = Look(drawing, width);
    Draw(drawing, look);
    const int space = width > 0 ? width + 1 : 1;
    const QRect box(20, 30, 40 + 2 * space, 16 + 2 * space);
    EXPECT_EQ(Text_Box({20, 30}, QSizeF(40, 16), look.frame).toRect(), box);
    EXPECT_EQ(drawing.Extent(width > 0 ? red : yellow), box);
    EXPECT_EQ(drawing.Count(red), 2 * width * (box.width() + box.height()) - 4 * width * width);
    EXPECT_EQ(drawing.Extent(yellow), box.adjusted(width, width, -width, -width));
    EXPECT_EQ(drawing.Count(yellow), (box.width() - 2 * width) * (box.height() - 2 * width));
  }
}

TEST(TextBox, TransparentKeepsOnlyTheFrameAndANotXorOneCanBeTakenBack) {
  for (const bool framed : {true, false}) {
    Drawing drawing;
    TextLook look = Look(drawing, framed ? 1 : 0);
    look.transparent = true;
    Draw(drawing, look);
    EXPECT_EQ(drawing.Extent(red), framed ? QRect(20, 30, 44, 20) : QRect());
    EXPECT_EQ(drawing.Count(red) + drawing.Count(white), 10000);
  }
  Drawing drawing(100, 100, qRgb(120, 200, 40));
  const QImage before = drawing.image.copy();
  TextLook look = Look(drawing, 2);
  look.frame.notXor = true;
  for (const bool again : {false, true}) {
    Draw(drawing, look);
    EXPECT_EQ(drawing.image == before, again);
  }
}

TEST(TextBox, PerspexMixesTheFillAndKeepsTheFrame) {
  for (const int width : {0, 2}) {
    Drawing plain, turned;
    TextLook look = Look(plain, width);
    look.perspex = true;
    Draw(plain, look);
    Draw_Rotated_Text(turned.context, QStringLiteral(" "), 90, {50, 50}, std::nullopt, look);
    for (const Drawing* drawing : {&plain, &turned}) {
      EXPECT_EQ(drawing->Count(yellow), 0);
      const QRgb inside = drawing == &plain ? drawing->At(40, 40) : drawing->At(50, 50);
      EXPECT_NEAR(qBlue(inside), 127, 1) << "half yellow, half white";
      EXPECT_EQ(qRed(inside), 255);
      EXPECT_EQ(drawing->Count(red) > 0, width > 0);
    }
  }
}

TEST(RotatedText, TheSampleStartsAtTheRimAndTheBoxLiesFivePixelsOut) {
  const std::tuple<double, double, double> cases[] = {{0, 0, 0},     {30, 0, 40},       {89.999, 0, 80},  {90, 0, 80},
                                                      {120, 50, 80}, {180, 100, 0},     {210, 100, 40},   {270, 0, 0},
                                                      {300, 50, 0},  {359.999, 100, 0}, {-45, 70.7107, 0}};
  for (const auto& [angle, x, y] : cases)
    EXPECT_LT((Sample_Origin(angle, 100, 80) - QPointF(x, y)).manhattanLength(), 0.01) << angle;
  // Upright: the text runs upward from (50, 50), its lower side to the right.
  const auto corners = Rotated_Box({50, 50}, QSizeF(30, 10), 90), half = Rotated_Box({50, 50}, QSizeF(30, 10), 180);
  const QPointF wanted[] = {{45, 55}, {45, 15}, {65, 15}, {65, 55}};
  for (size_t i = 0; i < 4; ++i) EXPECT_LT((corners[i] - wanted[i]).manhattanLength(), 1e-9) << i;
  EXPECT_LT((half[2] - QPointF(15, 35)).manhattanLength(), 1e-9);
  EXPECT_EQ(Nearest_Corner({QPointF(0, 0), {10, 0}, {10, 10}, {0, 10}}, {30, 4}), QPointF(10, 0));
}

TEST(RotatedText, DrawsBoxTextReferenceAndRegion) {
  Drawing drawing(120, 120);
  const QString text = QStringLiteral("Moor");
  const int width = drawing.surface->TextWidth(text);
  const QRectF bounds =
      Draw_Rotated_Text(drawing.context, text, 90, {50, 80}, QPointF(110, 110), Look(drawing, 1), {.color = green});
  EXPECT_NEAR(bounds.height(), width + 10, 1);
  drawing.Expect({{45, 60, red}, {47, 80, yellow}});  // the frame's left edge and within
  EXPECT_GT(drawing.Count(blue), 5);
  EXPECT_GT(drawing.Count(green), 20);
  EXPECT_GT(drawing.Extent(green).left(), 50);  // from the lower right corner
  ASSERT_EQ(drawing.regions.Count(), 2);
  EXPECT_EQ(drawing.regions.Row(1).kind, footRegion);
  EXPECT_TRUE(drawing.regions.AnyAt({50, 78}));
  EXPECT_FALSE(drawing.regions.AnyAt({80, 60}));
}

TEST(RotatedText, NegativeAnglesTransparencyAndTheWindow) {
  Drawing drawing, same, clear, inside;
  Draw_Rotated_Text(drawing.context, QStringLiteral("Au"), -45, {50, 40}, {}, Look(drawing, 1));
  Draw_Rotated_Text(same.context, QStringLiteral("Au"), 315, {50, 40}, {}, Look(same, 1));
  EXPECT_EQ(drawing.image, same.image);
  TextLook look = Look(clear, 0);
  look.transparent = true;
  Draw_Rotated_Text(clear.context, QStringLiteral("Au"), 30, {40, 50}, {}, look);
  EXPECT_EQ(clear.Count(yellow), 0);
  EXPECT_GT(clear.Count(blue), 3);
  EXPECT_TRUE(Draw_Rotated_Text(clear.context, QStringLiteral("Au"), 30, {400, 50}, {}, look).isEmpty());
  EXPECT_EQ(clear.regions.Count(), 1);
  // A foot point inside the box has no line.
  Draw_Rotated_Text(inside.context, QStringLiteral("Auen"), 30, {40, 50}, QPointF(48, 54), look, {.color = green});
  EXPECT_EQ(inside.Count(green), 0);
}

}  // namespace
