#include "calibration/control_point.h"

#include <cmath>
#include <numbers>

#include "coordinates/degree_text.h"
#include "platform/text.h"

QString Place_Text(NetKind kind, QPointF place) {
  if (kind == NetKind::DegreesDec)
    return Format(place.x(), QStringLiteral("##0.000000")) + QStringLiteral("°  ") +
           Format(place.y(), QStringLiteral("##0.000000")) + u'°';
  if (kind == NetKind::DegreesGms) {
    const auto text = [](char16_t letter, double degrees) {
      const QString number = Format(std::fabs(degrees), QStringLiteral("##0.0######"));
      return (degrees < 0 ? QStringLiteral("-") : QString()) + Dec_To_GMS(letter + number).trimmed();
    };
    return text(u'x', place.x()) + QStringLiteral("  ") + text(u'y', place.y());
  }
  const QString pattern = QStringLiteral("# ### ##0");
  return QStringLiteral("R ") + Format(place.x(), pattern).trimmed() + QStringLiteral("  H ") +
         Format(place.y(), pattern).trimmed();
}

double Metres_Between(NetKind kind, QPointF a, QPointF b) {
  QPointF difference = b - a;
  if (Is_Geographic(kind)) {
    constexpr double metresPerDegree = 111'320;
    const double across = std::cos((a.y() + b.y()) / 2 * std::numbers::pi / 180);
    difference = {difference.x() * metresPerDegree * across, difference.y() * metresPerDegree};
  }
  return std::hypot(difference.x(), difference.y());
}
