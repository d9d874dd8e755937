#include "store/stored_number.h"

#include <cmath>

#include "platform/text.h"

double Stored_Angle(const QString& schrift) {
  const qsizetype mark = schrift.indexOf(u'<');
  if (mark < 0 || mark > longestSchrift) return 0;
  const double angle = std::fmod(Val_Comma(schrift.mid(mark + 1, longestSchrift)), 360.0);
  const double turned = angle < 0 ? angle + 360 : angle;
  return turned < 360 ? turned : 0;  // a trifle below 0 is rounded up to a whole turn
}

double Stored_Size(double points) {
  return std::isnan(points) ? 0 : std::clamp(points, -largestStoredSize, largestStoredSize);
}

QString Stored_Lines(QString text) {
  text.replace(QLatin1String("\r\n"), QLatin1String("\n")).replace(u'\r', u'\n');
  return text.replace(QLatin1String("\n"), QLatin1String("\r\n"));
}

QString Shown_Text(const QString& stored) { return stored.size() > longestShown ? stored.left(longestShown) : stored; }
