#include "store/font_spec.h"

#include <cmath>

#include "platform/text.h"

FontSpec FontSpec::Parse(const QString& stored) {
  FontSpec font;
  QStringView text(stored);
  const qsizetype mark = text.indexOf(u'<');
  if (mark >= 0) {
    font.angle = std::fmod(Val_Comma(stored.mid(mark + 1)), 360.0);
    if (font.angle < 0) font.angle += 360;
    text = text.left(mark);
  }
  const qsizetype dash = text.indexOf(u'-');
  if (dash < 0) {
    font.family = text.trimmed().toString();
    return font;
  }
  font.family = text.left(dash).trimmed().toString();
  const QStringView styles = text.mid(dash);
  for (qsizetype i = 0; i + 1 < styles.size(); ++i) {
    if (styles[i] != u'-') continue;
    switch (styles[i + 1].unicode()) {
      case u'B':
        font.bold = true;
        break;
      case u'I':
        font.italic = true;
        break;
      case u'U':
        font.underline = true;
        break;
      case u'T':
        font.transparent = true;
        break;
      case u'C':
        if (font.charset == 0) font.charset = static_cast<int>(Val(styles.mid(i + 2, 3)));
        break;
      default:
        break;
    }
  }
  if (font.charset < 0) font.charset = 0;
  return font;
}

QString FontSpec::ToText() const {
  QString text = family;
  if (bold) text += QLatin1String("-B");
  if (italic) text += QLatin1String("-I");
  if (underline) text += QLatin1String("-U");
  if (transparent) text += QLatin1String("-T");
  if (charset > 0) text += QLatin1String("-C") + QString::number(charset);
  if (angle != 0) text += u'<' + Number_Text(angle);
  return text;
}

bool FontSpec::IsSymbol() const { return family.contains(QLatin1String("Wing")); }
