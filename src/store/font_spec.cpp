#include "store/font_spec.h"

#include <algorithm>

#include "platform/text.h"
#include "store/stored_number.h"

FontSpec FontSpec::Parse(const QString& stored) {
  FontSpec font;
  font.angle = Stored_Angle(stored);
  QStringView text = QStringView(stored).left(longestSchrift);
  if (const qsizetype mark = text.indexOf(u'<'); mark >= 0) text = text.left(mark);
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
        if (font.charset == 0) font.charset = static_cast<int>(std::clamp(Val(styles.mid(i + 2, 3)), 0.0, 255.0));
        break;
      default:
        break;
    }
  }
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
