#include "calibration/typed_place.h"

#include <QRegularExpression>
#include <cmath>

#include "platform/text.h"

namespace {

// Degrees, minutes and seconds, each of them with or without its mark.
std::optional<double> Sexagesimal(const QString& text) {
  static const QRegularExpression pattern(
      QStringLiteral("^([+-]?)\\s*(\\d{1,3})\\s*[°\\s]\\s*(?:(\\d{1,2}(?:[.,]\\d+)?)\\s*(?:['′\\s]\\s*|$)"
                     "(?:(\\d{1,2}(?:[.,]\\d+)?)\\s*(?:\"|″|¨|'')?)?)?$"));
  const auto match = pattern.match(text);
  if (!match.hasMatch()) return std::nullopt;
  const double minutes = Val_Comma(match.captured(3)), seconds = Val_Comma(match.captured(4));
  if (minutes >= 60 || seconds >= 60) return std::nullopt;
  const double value = match.captured(2).toDouble() + minutes / 60 + seconds / 3600;
  return match.captured(1) == QLatin1String("-") ? -value : value;
}

// "N", "O", "E" behind the number do not change it, "S" and "W" do.
double Take_Direction(QString& text) {
  if (text.isEmpty()) return 1;
  const QChar last = text.back().toUpper();
  if (!QStringView(u"NOESW").contains(last)) return 1;
  text.chop(1);
  text = text.trimmed();
  return last == u'S' || last == u'W' ? -1 : 1;
}

QString Trimmed_Number(double value, int decimals) {
  QString text = QString::number(value, 'f', decimals);
  while (text.contains(u'.') && text.endsWith(u'0')) text.chop(1);
  if (text.endsWith(u'.')) text.chop(1);
  return text.replace(u'.', u',');
}

}  // namespace

std::optional<double> Typed_Coordinate(NetKind kind, const QString& text) {
  QString typed = text.trimmed();
  if (!Is_Geographic(kind)) {
    static const QRegularExpression blanks(QStringLiteral("\\s"));
    return Number_Typed(typed.remove(blanks));
  }
  const double sign = Take_Direction(typed);
  auto value = Number_Typed(QString(typed).remove(u'°'));
  if (!value) value = Sexagesimal(typed);
  if (!value || std::fabs(*value) > 180) return std::nullopt;
  return *value * sign;
}

QString Coordinate_Typed(NetKind kind, double value) {
  if (kind == NetKind::DegreesDec) return Trimmed_Number(value, 6);
  if (kind != NetKind::DegreesGms) return Trimmed_Number(value, 2);
  const auto hundredths = std::llround(std::fabs(value) * 360'000);
  return QStringLiteral("%1%2°%3'%4,%5\"")
      .arg(value < 0 ? QStringLiteral("-") : QString())
      .arg(hundredths / 360'000)
      .arg(hundredths / 6000 % 60, 2, 10, QLatin1Char('0'))
      .arg(hundredths / 100 % 60, 2, 10, QLatin1Char('0'))
      .arg(hundredths % 100, 2, 10, QLatin1Char('0'));
}

std::optional<double> Typed_Spacing(NetKind kind, const QString& text) {
  QString typed = text.trimmed();
  std::optional<double> value;
  if (Is_Geographic(kind) && !typed.contains(u'°')) {
    const bool minutes = typed.contains(u'\'') && !typed.contains(QLatin1String("''"));
    value = minutes || typed.endsWith(u'"') || typed.endsWith(QLatin1String("''"))
                ? Typed_Coordinate(kind, (minutes ? QStringLiteral("0° ") : QStringLiteral("0° 0' ")) + typed)
                : Typed_Coordinate(kind, typed);
  } else {
    value = Typed_Coordinate(kind, typed);
  }
  return value && *value > 0 ? value : std::nullopt;
}

QString Spacing_Typed(NetKind kind, double value) {
  if (kind != NetKind::DegreesGms) return Trimmed_Number(value, 7);
  const double seconds = std::nearbyint(value * 36000) / 10;
  if (std::fmod(seconds, 3600) == 0) return Trimmed_Number(seconds / 3600, 0) + u'°';
  if (std::fmod(seconds, 60) == 0) return Trimmed_Number(seconds / 60, 0) + u'\'';
  return Trimmed_Number(seconds, 1) + u'"';
}
