#include "platform/text.h"

#include <QByteArray>
#include <QLocale>
#include <charconv>
#include <cmath>
#include <limits>

#include "platform/error.h"

namespace {
bool Is_Blank(QChar c) { return c == u' ' || c == u'\t' || c == u'\r' || c == u'\n' || c == QChar(0xA0); }
bool Is_Digit(char c) { return c >= '0' && c <= '9'; }

// The characters of the number at the start of the text, blanks left out.
QByteArray Number_Characters(QStringView text) {
  QByteArray plain;
  for (const QChar c : text) {
    if (Is_Blank(c)) continue;
    const char16_t code = c.unicode();
    const bool fits =
        (code >= u'0' && code <= u'9') || code == u'.' || code == u'+' || code == u'-' || code == u'e' || code == u'E';
    if (!fits) break;
    plain.append(static_cast<char>(code));
  }
  return plain;
}

// The decimal digits of a number, rounded to 15 places first: 1.005 is meant as 1.005, not as 1.00499999999999989.
struct Decimal {
  bool negative = false;
  QByteArray digits;  // 0.d1d2d3... times ten to the power of point
  int point = 0;
};

Decimal Decimal_Of(double value) {
  Decimal result;
  result.negative = std::signbit(value);
  const QByteArray text = QByteArray::number(std::fabs(value), 'e', 14);
  const qsizetype e = text.indexOf('e');
  result.digits = text.left(1) + text.mid(2, e - 2);
  result.point = text.mid(e + 1).toInt() + 1;
  return result;
}

// Rounds to that many decimals, halves away from zero, and splits at the point. No leading zeros.
void Round_Split(const Decimal& number, int decimals, QByteArray& whole, QByteArray& fraction) {
  QByteArray digits = number.digits;
  int point = number.point;
  if (point < 0) {
    digits.prepend(QByteArray(-point, '0'));
    point = 0;
  }
  const qsizetype wanted = point + decimals;
  bool up = false;
  if (digits.size() > wanted) {
    up = digits[wanted] >= '5';
    digits.truncate(wanted);
  } else {
    digits.append(QByteArray(wanted - digits.size(), '0'));
  }
  for (qsizetype i = digits.size() - 1; up && i >= 0; --i) {
    up = digits[i] == '9';
    digits[i] = up ? '0' : static_cast<char>(digits[i] + 1);
  }
  if (up) {
    digits.prepend('1');
    ++point;
  }
  whole = digits.left(point);
  fraction = digits.mid(point);
  while (whole.startsWith('0')) whole.remove(0, 1);
}

bool Is_Place(QChar c) { return c == u'#' || c == u'0'; }
qsizetype Count_Places(QStringView pattern) {
  qsizetype count = 0;
  for (const QChar c : pattern) count += Is_Place(c) ? 1 : 0;
  return count;
}

// Digits fill from the right. A "#" behind a "0" counts as "0": a number has no gaps.
QString Whole_Part(QStringView pattern, const QByteArray& digits, bool negative) {
  const qsizetype places = Count_Places(pattern);
  QString text;
  qsizetype place = 0;
  bool started = false;
  for (const QChar c : pattern) {
    if (!Is_Place(c)) {
      text.append(c);
      continue;
    }
    const qsizetype index = digits.size() - places + place;
    const bool shown = index >= 0 || c == u'0' || started;
    if (shown && !started) {
      if (negative) text.append(u'-');
      if (index > 0) text.append(QLatin1String(digits.left(index)));
    }
    if (shown) text.append(index >= 0 ? QLatin1Char(digits[index]) : QLatin1Char('0'));
    started = started || shown;
    ++place;
  }
  if (!started && negative) text.append(u'-');
  return text;
}

// Trailing zeros vanish at "#" places behind the last "0".
QString Fraction_Part(QStringView pattern, const QByteArray& digits) {
  qsizetype needed = 0, place = 0;
  for (const QChar c : pattern) {
    if (!Is_Place(c)) continue;
    if (c == u'0' || digits[place] != '0') needed = place + 1;
    ++place;
  }
  QString text;
  place = 0;
  for (const QChar c : pattern) {
    if (!Is_Place(c)) {
      text.append(c);
      continue;
    }
    if (place < needed) text.append(QLatin1Char(digits[place]));
    ++place;
  }
  return text;
}

// Of a number beyond the range: is it too near to 0, not too large?
bool Below_One(QByteArrayView number) {
  qsizetype e = number.indexOf('e');
  if (e < 0) e = number.indexOf('E');
  const QByteArrayView digits = e < 0 ? number : number.first(e);
  const QByteArrayView power = e < 0 ? QByteArrayView() : number.sliced(e + 1);
  qsizetype point = digits.indexOf('.'), first = 0;
  if (point < 0) point = digits.size();
  while (first < digits.size() && (digits[first] == '0' || digits[first] == '.')) ++first;
  bool readable = true;
  const qint64 exponent = power.isEmpty() ? 0 : power.toLongLong(&readable);
  if (!readable) return power.startsWith('-');  // beyond all digits that could make up for it
  return (first < point ? point - first - 1 : point - first) + exponent < 0;
}

template <typename Whole>
Whole To_Whole(double value) {
  const double rounded = std::nearbyint(value);  // the default mode takes halves to the even neighbour
  if (!(rounded >= std::numeric_limits<Whole>::min() && rounded <= std::numeric_limits<Whole>::max()))
    Raise(errors::overflow);
  return static_cast<Whole>(rounded);
}
}  // namespace

double Val(QStringView text) {
  const QByteArray plain = Number_Characters(text);
  const char* begin = plain.constData();
  const char* const end = begin + plain.size();
  const bool negative = begin != end && *begin == '-';
  if (begin != end && (*begin == '-' || *begin == '+')) ++begin;
  if (begin == end || !(Is_Digit(*begin) || *begin == '.')) return 0;
  double value = 0;
  const auto [last, fault] = std::from_chars(begin, end, value);
  if (fault == std::errc::result_out_of_range) {
    value = Below_One({begin, last}) ? 0 : std::numeric_limits<double>::max();
  } else if (fault != std::errc()) {
    return 0;
  }
  return negative ? -value : value;
}

double Val_Comma(const QString& text) {
  QString point = text;
  const qsizetype comma = point.indexOf(u',');
  if (comma >= 0) point[comma] = u'.';
  return Val(point);
}

std::optional<double> Number_Typed(const QString& text) {
  bool isNumber = false;
  const double value = text.trimmed().replace(u',', u'.').toDouble(&isNumber);
  if (!isNumber || !std::isfinite(value)) return std::nullopt;
  return value;
}

QString Format(double value, const QString& pattern) {
  if (!std::isfinite(value)) return QStringLiteral("?");
  const qsizetype point = pattern.indexOf(u'.');
  const QStringView view(pattern);
  const QStringView wholePattern = point < 0 ? view : view.left(point);
  const QStringView fractionPattern = point < 0 ? QStringView() : view.mid(point + 1);
  const Decimal number = Decimal_Of(value);
  QByteArray whole, fraction;
  Round_Split(number, static_cast<int>(Count_Places(fractionPattern)), whole, fraction);
  const bool isZero = whole.isEmpty() && fraction.count('0') == fraction.size();
  QString text = Whole_Part(wholePattern, whole, number.negative && !isZero);
  if (point >= 0) text += QLatin1Char(',') + Fraction_Part(fractionPattern, fraction);
  return text;
}

int16_t To_Int16(double value) { return To_Whole<int16_t>(value); }
int32_t To_Int32(double value) { return To_Whole<int32_t>(value); }
double Fix(double value) { return std::trunc(value); }
double Int(double value) { return std::floor(value); }

QString Cut_Text(const QString& text, int characters) {
  qsizetype end = 0;
  for (; end < text.size() && characters > 0; --characters)
    end += text[end].isHighSurrogate() && end + 1 < text.size() && text[end + 1].isLowSurrogate() ? 2 : 1;
  return text.left(end);
}

QString Pad_Left(const QString& text, int width) { return text.trimmed().rightJustified(width, u' '); }
QString Pad_Right(const QString& text, int width) { return text.trimmed().leftJustified(width, u' ', true); }

QString Number_Text(double value) {
  if (!std::isfinite(value)) return QStringLiteral("0");
  QString text = QString::number(value, 'g', 15);
  if (text.contains(u'e')) {
    const Decimal number = Decimal_Of(value);
    if (number.point > 20 || number.point < -15) return text;
    text = QString::number(value, 'f', qMax(0, 15 - number.point));
    while (text.contains(u'.') && (text.endsWith(u'0') || text.endsWith(u'.'))) text.chop(1);
  }
  return text == QLatin1String("-0") ? QStringLiteral("0") : text;
}
