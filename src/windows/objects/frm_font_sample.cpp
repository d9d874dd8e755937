#include "windows/objects/frm_font_sample.h"

#include <QPainter>
#include <algorithm>
#include <cmath>
#include <numbers>

#include "objects/rotated_text.h"

namespace {

constexpr QRgb groundLines = qRgb(200, 214, 200);
constexpr double largestTurned = 16;  // points: the angle counts there, not the size
constexpr int margin = 2;

FontKey Key_Of(const FontChoice& choice, double size) {
  const FontSpec& font = choice.font;
  return {font.family, size, font.bold, font.italic, font.underline, font.charset};
}

// Lines as on a map: what is transparent is seen to be.
void Draw_Ground(Surface& surface, QSize size) {
  surface.pen = {.ForeColor = groundLines};
  for (int x = -size.height(); x < size.width(); x += 9)
    surface.Line(QPointF(x, size.height()), QPointF(x + size.height(), 0));
}

}  // namespace

FontSample::FontSample(QWidget* parent) : QWidget(parent) { setMinimumSize(60, 60); }

void FontSample::Show_Sample(const FontChoice& choice, const QString& text, const TextLook& look) {
  shown = choice;
  sample = text;
  colors = look;
  colors.transparent = choice.font.transparent;
  update();
}

void FontSample::Draw_Straight(Surface& surface) {
  surface.SetFont(Key_Of(shown, shown.size > 3 ? shown.size : 12));
  const QSizeF size(surface.TextWidth(sample), surface.TextHeight(sample));
  const QRectF box = Text_Box({}, size, colors.frame);
  const QPointF at(std::max<double>(margin, std::floor((width() - box.width()) / 2)),
                   std::max<double>(margin, std::floor((height() - box.height()) / 2)));
  DrawContext context{surface, {}, QRectF(rect())};
  Draw_Text_Box(context, at, sample, size, colors);
}

void FontSample::Dreh_Text(Surface& surface) {
  surface.SetFont(Key_Of(shown, std::clamp(shown.size, 8.0, largestTurned)));
  const double angle = shown.font.angle < 0 ? shown.font.angle + 360 : shown.font.angle;
  const double line = surface.TextHeight(QStringLiteral("A")), turn = angle * std::numbers::pi / 180;
  QPointF at = Sample_Origin(angle, width() - line, height() - line);
  // Where the lower side of the line points out of the picture, the text moves in by as much.
  at += QPointF(std::max(0.0, -line * std::sin(turn)), std::max(0.0, -line * std::cos(turn)));
  surface.pen.ForeColor = colors.colors.VG;
  surface.PrintRotated(at, sample, angle);
}

void FontSample::paintEvent(QPaintEvent*) {
  QImage image = Make_Canvas(width(), height(), turned && !colors.transparent ? colors.colors.HG : qRgb(255, 255, 255));
  {
    const auto surface = Make_Surface(image);
    if (!turned || colors.transparent) Draw_Ground(*surface, size());
    surface->pen = {};
    if (turned)
      Dreh_Text(*surface);
    else
      Draw_Straight(*surface);
    surface->pen = {.ForeColor = qRgb(128, 128, 128)};
    surface->Box(QRectF(rect()));
  }
  QPainter(this).drawImage(0, 0, image);
}
