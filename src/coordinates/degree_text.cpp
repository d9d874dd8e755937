#include "coordinates/degree_text.h"

#include <cmath>

#include "platform/message_box.h"
#include "platform/text.h"

namespace {

constexpr int wrongLetter = 5020, latitudeTooLarge = 5010, longitudeTooLarge = 5000;

bool Is_Seconds_Mark(QChar c) { return c == secondsMark || c == u'\u2033' || c == u'"'; }

// Place of the first seconds mark from `from` on; -1 = none.
qsizetype Seconds_Mark_Place(const QString& text, qsizetype from) {
  for (qsizetype i = from; i < text.size(); ++i)
    if (Is_Seconds_Mark(text[i])) return i;
  return -1;
}

QString Fault_Text(int number) {
  switch (number) {
    case longitudeTooLarge:
      return QStringLiteral("Dezimalwert ist zu groß \nHöchstwert Länge = 180°");
    case latitudeTooLarge:
      return QStringLiteral("Dezimalwert ist zu groß \nHöchstwert Breite = 90°");
    case wrongLetter:
      return QStringLiteral("Längen- oder Breitengrad?");
    default:
      return QStringLiteral("Falscher Dezimalwert, ohne Komma");
  }
}

// True: go on.
bool Report_Fault(int number) {
  return Message_Box(Fault_Text(number), MsgButtons::OkCancel, MsgIcon::Information,
                     QStringLiteral("Fehler: Dezimale geografische Koordinaten in das GMS-Format umwandeln")) ==
         MsgAnswer::Ok;
}

// What stands behind the letter: sign as text and the number without it.
struct SignedText {
  QString sign, number;
};
SignedText Split_Sign(const QString& text) {
  for (const QChar sign : {QChar(u'+'), QChar(u'-')}) {
    const qsizetype at = text.indexOf(sign);
    if (at >= 0) return {QString(sign), text.mid(at + 1)};
  }
  return {QString(), text.mid(1)};
}

// Degrees, minutes and hundredths of seconds; what rounds up to 60 is carried, so that no "60" is ever written.
struct Sexagesimal {
  int degrees = 0, minutes = 0, hundredths = 0;
};
Sexagesimal Split_Degrees(double value, int mode) {
  Sexagesimal parts;
  parts.degrees = static_cast<int>(Fix(value));
  const double seconds = (value - parts.degrees) * 3600;
  if (mode == 2) {
    parts.minutes = static_cast<int>(std::nearbyint(seconds / 60));
  } else {
    const auto all = static_cast<int>(std::floor(seconds * 100 + 0.5));
    parts.minutes = all / 6000;
    parts.hundredths = all % 6000;
  }
  parts.degrees += parts.minutes / 60;
  parts.minutes %= 60;
  return parts;
}

QString Two_Digits(int number) { return QStringLiteral("%1").arg(number, 2, 10, QLatin1Char('0')); }

}  // namespace

double GMS_To_Dec(const QString& text) {
  QString rest = text;
  double sign = 1;
  if (rest.startsWith(u'-')) sign = -1;
  if (rest.startsWith(u'-') || rest.startsWith(u'+')) rest.remove(0, 1);
  rest = Comma_To_Point(rest);
  const qsizetype degree = rest.indexOf(u'°');
  if (degree < 0) return 0;
  if (degree >= 4) return Coordinate_Number(rest) * sign;
  double value = Coordinate_Number(rest.left(degree));
  const qsizetype minute = rest.indexOf(u'\'', degree);
  if (minute >= 0) {
    value += Coordinate_Number(rest.mid(degree + 1, minute - degree - 1)) / 60;
    const qsizetype second = Seconds_Mark_Place(rest, minute + 1);
    if (second >= 0) value += Coordinate_Number(rest.mid(minute + 1, second - minute - 1)) / 3600;
  }
  return std::nearbyint(value * sign * 1e7) / 1e7;
}

QString Dec_To_GMS(const QString& text, int mode) {
  const bool latitude = text.startsWith(u'y');
  if (!latitude && !text.startsWith(u'x') && !Report_Fault(wrongLetter)) return {};
  const SignedText parts = Split_Sign(text);
  const QString number = Comma_To_Point(parts.number.trimmed());
  if (number.isEmpty()) return parts.sign;
  bool readable = false;
  double value = std::fabs(number.toDouble(&readable));
  if (!readable || !std::isfinite(value)) {
    if (!Report_Fault(0)) return {};
    value = 0;
  }
  if (value == 0 && !number.contains(u'.')) return parts.sign;
  const double limit = latitude ? 90 : 180;
  if (value > limit) {
    if (!Report_Fault(latitude ? latitudeTooLarge : longitudeTooLarge)) return {};
    value = limit;
  }
  const Sexagesimal split = Split_Degrees(value, mode);
  const QString degrees = QStringLiteral("%1").arg(split.degrees, latitude ? 2 : 3, 10, QLatin1Char('0'));
  const QString shown = degrees + u'°' + Two_Digits(split.minutes) + u'\'' + Two_Digits(split.hundredths / 100) + u',' +
                        Two_Digits(split.hundredths % 100) + secondsMark;
  // Behind a sign the two digits of a latitude keep the blank of the missing third.
  return latitude && !parts.sign.isEmpty() ? parts.sign + u' ' + shown : parts.sign + shown;
}

QString GMS_Short(const QString& text) {
  QString result = text.trimmed();
  const auto cut = [&result](const QString& end, const QString& kept) {
    if (!result.endsWith(end)) return;
    result.chop(end.size());
    result += kept;
  };
  const QString mark(secondsMark);
  if (!result.isEmpty() && Is_Seconds_Mark(result.back())) result.back() = secondsMark;
  cut(QStringLiteral(",00") + mark, mark);
  cut(QStringLiteral("'00") + mark, QStringLiteral("'"));
  cut(QStringLiteral("°00'"), QStringLiteral("°"));
  result = result.trimmed();
  bool shortened = false;
  while (result.size() >= 4 && (result.startsWith(QStringLiteral("00°")) || result.startsWith(QStringLiteral("00'")))) {
    result.remove(0, 3);
    shortened = true;
  }
  if (shortened && result.startsWith(u'0')) result.remove(0, 1);
  return result;
}

int Check_Koord_Format(const QString& text, const QString& templateName) {
  QString layout;
  if (templateName == QLatin1String("B_DEC")) layout = QStringLiteral("+ 00,000000");
  if (templateName == QLatin1String("B_GMS")) layout = QStringLiteral("+ 00°00'00,00") + secondsMark;
  if (templateName == QLatin1String("L_DEC")) layout = QStringLiteral("+000,000000");
  if (templateName == QLatin1String("L_GMS")) layout = QStringLiteral("+000°00'00,00") + secondsMark;
  if (layout.isEmpty()) return -3;
  const QString shown = text.trimmed().leftJustified(layout.size(), QLatin1Char(' '));
  for (qsizetype i = 0; i < layout.size(); ++i) {
    const QChar wanted = layout[i], found = shown[i];
    if (wanted == u'0') continue;
    if (wanted == u'+') {
      if (found != u'+' && found != u'-') return -1;
    } else if (wanted == secondsMark ? !Is_Seconds_Mark(found) : wanted != found) {
      return -2;
    }
  }
  return 1;
}

QString Point_To_Comma(QString text) {
  const qsizetype at = text.indexOf(u'.');
  if (at >= 0) text[at] = u',';
  return text;
}

QString Comma_To_Point(QString text) {
  const qsizetype at = text.indexOf(u',');
  if (at >= 0) text[at] = u'.';
  return text;
}

double Coordinate_Number(const QString& text) {
  const auto skipBlanks = [&text](qsizetype at) {
    while (at < text.size() && text[at].isSpace()) ++at;
    return at;
  };
  qsizetype at = skipBlanks(0);
  const bool negative = at < text.size() && text[at] == u'-';
  if (negative || (at < text.size() && text[at] == u'+')) at = skipBlanks(at + 1);
  qsizetype end = at;  // blanks end the number, which Val() would pass over
  while (end < text.size() && !text[end].isSpace()) ++end;
  const QString number = text.mid(at, end - at);
  if (number.startsWith(u'-') || number.startsWith(u'+')) return 0;
  return negative ? -Val(number) : Val(number);
}

int getZoneNumber(const QString& zone) {
  QString digits;
  for (const QChar c : zone.left(3))
    if (c >= u'0' && c <= u'9') digits += c;
  if (!digits.isEmpty()) return digits.toInt();
  Message_Box(QStringLiteral("Keine Zonennummer gefunden."), MsgButtons::Ok, MsgIcon::None,
              QStringLiteral("getZoneNumber"));
  return -1;
}
