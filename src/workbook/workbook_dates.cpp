#include "workbook/workbook_dates.h"

#include <QDateTime>
#include <cmath>

bool Is_Date_Format(const QString& format) {
  const QString letters = QStringLiteral("ymdhsYMDHS");
  for (qsizetype i = 0; i < format.size(); ++i) {
    const QChar letter = format[i];
    if (letter == u'"' || letter == u'[') {
      const qsizetype end = format.indexOf(letter == u'"' ? u'"' : u']', i + 1);
      if (end < 0) return false;
      // "[h]" counts hours; other brackets hold colours, currencies and conditions.
      const QString inside = format.mid(i + 1, end - i - 1);
      if (letter == u'[' && !inside.isEmpty() && QString(inside).remove(inside[0], Qt::CaseInsensitive).isEmpty() &&
          QStringLiteral("hmsHMS").contains(inside[0]))
        return true;
      i = end;
    } else if (letter == u'\\' || letter == u'_' || letter == u'*') {
      ++i;  // the sign behind it is shown as it is
    } else if (letters.contains(letter)) {
      return true;
    }
  }
  return false;
}

QString Date_Text(double days) {
  constexpr double lastDay = 2958466;  // 9999-12-31 is the day before
  constexpr qint64 secondsOfDay = 86400;
  if (!(days >= 0 && days < lastDay)) return {};
  const qint64 seconds = std::llround(days * secondsOfDay);
  const QDate date = QDate(1899, 12, 30).addDays(seconds / secondsOfDay);
  const QTime time = QTime(0, 0).addSecs(static_cast<int>(seconds % secondsOfDay));
  const QString clock = time.toString(time.second() == 0 ? QStringLiteral("HH:mm") : QStringLiteral("HH:mm:ss"));
  if (days < 1) return clock;
  const QString day = date.toString(QStringLiteral("dd.MM.yyyy"));
  return seconds % secondsOfDay == 0 ? day : day + u' ' + clock;
}
