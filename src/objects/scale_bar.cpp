#include "objects/scale_bar.h"

#include <cmath>
#include <cstdlib>

#include "platform/text.h"
#include "state/global_state.h"
#include "store/stored_number.h"

namespace {

// Unit words of older rows; the abbreviations carry their blank.
QString Unit_Of(const QString& stored) {
  static const std::pair<QString, QString> words[] = {
      {QStringLiteral("Millimeter"), QStringLiteral("mm")},
      {QStringLiteral("Zentimeter"), QStringLiteral("cm")},
      {QStringLiteral("Kilometer"), QStringLiteral("km")},
      {QStringLiteral("Meter"), QStringLiteral("m")},
  };
  const QString unit = stored.trimmed();
  if (unit.isEmpty()) return {};
  for (const auto& [word, abbreviation] : words)
    if (unit.compare(word, Qt::CaseInsensitive) == 0) return QLatin1Char(' ') + abbreviation;
  return QLatin1Char(' ') + unit;
}

bool Is_Number(const QString& text) {
  const QString number = text.trimmed();
  return !number.isEmpty() && (number[0].isDigit() || (number.size() > 1 && number[1].isDigit()));
}

void Draw_Bar(Surface& surface, const QRectF& bar, bool vertical) {
  surface.pen = {.ForeColor = QBColor(9), .FillColor = QBColor(14), .fill = FillStyle::Solid};
  surface.Box(bar);
  surface.pen.FillColor = QBColor(0);
  const double step = ((vertical ? bar.height() : bar.width()) - 1) / 5;
  for (int i = 0; i <= 4; i += 2) {
    const double from = std::nearbyint(i * step), size = std::nearbyint((i + 1) * step) - from + 1;
    surface.Box(vertical ? QRectF(bar.left(), bar.top() + from, bar.width(), size)
                         : QRectF(bar.left() + from, bar.top(), size, bar.height()));
  }
}

// From 10 pixels before the bar to 20 past it, at both ends.
void Draw_Ticks(Surface& surface, const QRectF& bar, bool vertical) {
  surface.pen.mode = DrawMode::NotXor;
  const double lastX = bar.right() - 1, lastY = bar.bottom() - 1;
  if (vertical) {
    for (const double y : {bar.top(), lastY}) surface.Line(QPointF(bar.left() - 10, y), QPointF(lastX + 20, y));
  } else {
    for (const double x : {bar.left(), lastX}) surface.Line(QPointF(x, bar.top() - 10), QPointF(x, lastY + 20));
  }
  surface.pen.mode = DrawMode::Copy;
}

// Under the bar, or turned to its right; to its left where less than 30 pixels remain. Returns the text's box.
QRectF Draw_Text(DrawContext& context, const QRectF& bar, const ScaleValue& scale) {
  Surface& surface = context.surface;
  FontKey font;
  font.points = std::max(5.0, 10 / context.view.Zoom);
  surface.SetFont(font);
  const double width = surface.TextWidth(scale.text), height = surface.TextHeight(scale.text);
  surface.pen.ForeColor = QBColor(9);
  if (!scale.vertical) {
    const QPointF at(context.view.Round(bar.center().x() - width / 2),
                     context.view.Round(bar.bottom() - 1 + 5 / context.view.Zoom));
    surface.Print(at, scale.text);
    return {at, QSizeF(width, height)};
  }
  const bool toTheLeft = context.window.right() - bar.right() < 30;
  // An enlarged text needs more than the 15 pixels not to lie on the bar.
  const double x = toTheLeft ? bar.left() - std::max(15.0, height - 1) : bar.right() - 1 + 10;
  const QPointF at(x, context.view.Round(bar.center().y() + width / 2));
  surface.PrintRotated(at, scale.text, 90);
  return {at.x(), at.y() - width, height, width};
}

}  // namespace

ScaleValue Scale_Of(const EntryRow& row) {
  ScaleValue scale;
  scale.vertical = row.HG == 1;
  scale.unit = Unit_Of(Shown_Text(row.Eintrag));
  scale.number = row.Groesse;
  const QString schrift = row.Schrift.left(longestSchrift);
  const bool typed = Is_Number(schrift);
  if (scale.number <= 0 && typed) scale.number = Val_Comma(schrift);
  scale.text = (typed ? schrift.trimmed() : Number_Text(row.Groesse).replace(u'.', u',')) + u' ' + scale.unit.trimmed();
  const int length = std::abs(row.Xline - row.Xmap);
  scale.valid = length > 0 && scale.number > 0 && std::isfinite(scale.number);
  if (scale.valid) scale.unitPerPixel = scale.number / length;
  return scale;
}

bool Read_Scale(const EntryRow& row) {
  const ScaleValue scale = Scale_Of(row);
  MapHasScale = scale.valid;
  MapUnit = scale.valid ? scale.unit : QString();
  MapUnitPerPixel = scale.unitPerPixel;
  return scale.valid;
}

QRectF Draw_Scale_Bar(DrawContext& context, const EntryRow& row) {
  const ScaleValue scale = Scale_Of(row);
  const double x = context.view.X(row.Xmap), y = context.view.Y(row.Ymap);
  const double dx = std::abs(context.view.X(row.Xline) - x), dy = std::abs(context.view.Y(row.Yline) - y);
  if (dx == 0 || dy == 0) return {};
  // The row is stored lying; a standing bar swaps the axes. Both ends are pixels of the bar.
  const QRectF bar(x, y, (scale.vertical ? dy : dx) + 1, (scale.vertical ? dx : dy) + 1);
  const KeepPen keep(context.surface);
  Draw_Bar(context.surface, bar, scale.vertical);
  Draw_Ticks(context.surface, bar, scale.vertical);
  const QRectF text = Draw_Text(context, bar, scale);
  const QRectF ticks = scale.vertical ? bar.adjusted(-10, 0, 0, 0) : bar.adjusted(0, -10, 0, 0);
  return ticks.united(text);
}
