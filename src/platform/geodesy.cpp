#include "platform/geodesy.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>

#include "platform/error.h"
#include "platform/proj_context.h"

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

[[noreturn]] void Raise_No_Way(const ReferenceSystem& from, const ReferenceSystem& to) {
  Raise(cannotTransform,
        QStringLiteral("Die Koordinaten können nicht umgerechnet werden: %1 -> %2.").arg(from.Name(), to.Name()));
}

// Between two codes of the register; nothing without PROJ's data. Between datums PROJ looks through all the ways there
// are, some 30 ms: the last ones found are kept, and what is given is a copy.
ProjObject New_Way(PJ_CONTEXT* context, int from, int to) {
  constexpr size_t mostKept = 16;
  thread_local std::map<std::pair<int, int>, ProjObject> kept;
  if (kept.size() >= mostKept && !kept.contains({from, to})) kept.clear();
  ProjObject& way = kept[{from, to}];
  if (!way) {
    const auto name = [](int code) { return QByteArrayLiteral("EPSG:") + QByteArray::number(code); };
    const ProjObject raw(proj_create_crs_to_crs(context, name(from).constData(), name(to).constData(), nullptr));
    if (raw) way.reset(proj_normalize_for_visualization(context, raw.get()));
  }
  return ProjObject(way ? proj_clone(context, way.get()) : nullptr);
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
  ProjContext context;  // outlives the way
  ProjObject way;
};

Transformation::Transformation(const ReferenceSystem& from, const ReferenceSystem& to)
    : inner(std::make_unique<Inner>()) {
  const int fromCode = Code_Of(from), toCode = Code_Of(to);
  if (fromCode == 0 || toCode == 0) Raise_No_Way(from, to);
  inner->from = from;
  inner->to = to;
  inner->context = Proj_Context();
  inner->way = New_Way(inner->context.get(), fromCode, toCode);
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
  const ProjObject used(proj_trans_get_last_used_operation(inner->way.get()));
  const double metres = used ? proj_coordoperation_get_accuracy(inner->context.get(), used.get()) : 0;
  return std::max(0.0, metres);
}

QString Transformation::Name() const { return Way_Name(inner->from, inner->to, Accuracy()); }
