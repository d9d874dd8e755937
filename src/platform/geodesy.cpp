#include "platform/geodesy.h"

#include <proj.h>

#include <algorithm>
#include <cmath>
#include <limits>

#include "platform/error.h"

namespace {

constexpr int cannotTransform = 5000;

// Of the EPSG register.
int Code_Of(const ReferenceSystem& system) {
  constexpr int wgs84 = 4326, etrs89 = 4258, dhdn = 4314, utmWgs84 = 32600, utmEtrs89 = 25800, gaussKrueger = 31464;
  switch (system.kind) {
    case ReferenceSystem::Kind::Utm:
      if (system.zone < 1 || system.zone > 60 || system.datum == Datum::Dhdn) return 0;
      if (system.datum == Datum::Etrs89 && system.zone >= 28 && system.zone <= 38) return utmEtrs89 + system.zone;
      return utmWgs84 + system.zone;
    case ReferenceSystem::Kind::GaussKrueger:
      return system.zone < 2 || system.zone > 5 ? 0 : gaussKrueger + system.zone;
    case ReferenceSystem::Kind::Geographic:
      break;
  }
  return system.datum == Datum::Dhdn ? dhdn : system.datum == Datum::Etrs89 ? etrs89 : wgs84;
}

struct ContextEnd {
  void operator()(PJ_CONTEXT* context) const { proj_context_destroy(context); }
};
struct WayEnd {
  void operator()(PJ* way) const { proj_destroy(way); }
};

[[noreturn]] void Raise_No_Way(const ReferenceSystem& from, const ReferenceSystem& to) {
  Raise(cannotTransform,
        QStringLiteral("Die Koordinaten können nicht umgerechnet werden: %1 -> %2.").arg(from.Name(), to.Name()));
}

}  // namespace

QString Datum_Name(Datum datum) {
  switch (datum) {
    case Datum::Etrs89:
      return QStringLiteral("ETRS89");
    case Datum::Dhdn:
      return QStringLiteral("Potsdam");
    case Datum::Wgs84:
      break;
  }
  return QStringLiteral("WGS-84");
}

QString ReferenceSystem::Name() const {
  switch (kind) {
    case Kind::Utm:
      return QStringLiteral("UTM %1 %2").arg(zone).arg(Datum_Name(datum));
    case Kind::GaussKrueger:
      return QStringLiteral("Gauß-Krüger %1").arg(zone);
    case Kind::Geographic:
      break;
  }
  return Datum_Name(datum);
}

QString Way_Name(const ReferenceSystem& from, const ReferenceSystem& to, double metres) {
  const bool shifts = from.datum != to.datum;
  const QString name = (shifts ? Datum_Name(from.datum) : from.Name()) + QStringLiteral(" -> ") +
                       (shifts ? Datum_Name(to.datum) : to.Name());
  return metres > 0 ? name + QStringLiteral(", %1 m").arg(QString::number(metres, 'g', 2)) : name;
}

struct Transformation::Inner {
  ReferenceSystem from, to;
  std::unique_ptr<PJ_CONTEXT, ContextEnd> context;  // one a transformation: they may live in different threads
  std::unique_ptr<PJ, WayEnd> way;
};

Transformation::Transformation(const ReferenceSystem& from, const ReferenceSystem& to)
    : inner(std::make_unique<Inner>()) {
  const int fromCode = Code_Of(from), toCode = Code_Of(to);
  if (fromCode == 0 || toCode == 0) Raise_No_Way(from, to);
  inner->from = from;
  inner->to = to;
  inner->context.reset(proj_context_create());
  proj_log_level(inner->context.get(), PJ_LOG_NONE);
  const auto name = [](int code) { return QByteArrayLiteral("EPSG:") + QByteArray::number(code); };
  const std::unique_ptr<PJ, WayEnd> raw(
      proj_create_crs_to_crs(inner->context.get(), name(fromCode).constData(), name(toCode).constData(), nullptr));
  if (raw) inner->way.reset(proj_normalize_for_visualization(inner->context.get(), raw.get()));
  if (!inner->way) Raise_No_Way(from, to);
}

Transformation::~Transformation() = default;
Transformation::Transformation(Transformation&&) noexcept = default;
Transformation& Transformation::operator=(Transformation&&) noexcept = default;

std::optional<QPointF> Transformation::operator()(QPointF point) const {
  if (!std::isfinite(point.x()) || !std::isfinite(point.y())) return std::nullopt;
  const PJ_COORD result = proj_trans(inner->way.get(), PJ_FWD, proj_coord(point.x(), point.y(), 0, HUGE_VAL));
  proj_errno_reset(inner->way.get());
  if (!std::isfinite(result.xy.x) || !std::isfinite(result.xy.y)) return std::nullopt;
  return QPointF(result.xy.x, result.xy.y);
}

void Transformation::Transform(std::vector<QPointF>& points) const {
  const double nowhere = std::numeric_limits<double>::quiet_NaN();
  for (QPointF& point : points) point = (*this)(point).value_or(QPointF(nowhere, nowhere));
}

double Transformation::Accuracy() const {
  const std::unique_ptr<PJ, WayEnd> used(proj_trans_get_last_used_operation(inner->way.get()));
  const double metres = used ? proj_coordoperation_get_accuracy(inner->context.get(), used.get()) : 0;
  return std::max(0.0, metres);
}

QString Transformation::Name() const { return Way_Name(inner->from, inner->to, Accuracy()); }
