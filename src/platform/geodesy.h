#pragma once
#include <QPointF>
#include <QString>
#include <memory>
#include <optional>
#include <vector>

// Coordinates of one reference system in another, by PROJ. Points are x = longitude or Rechtswert, y = latitude or
// Hochwert: degrees (east and north positive) in geographic systems, metres in plane ones.

enum class Datum { Wgs84, Etrs89, Dhdn };  // DHDN: "Potsdam", on Bessel's ellipsoid

struct ReferenceSystem {
  enum class Kind { Geographic, Utm, GaussKrueger };
  Kind kind = Kind::Geographic;
  Datum datum = Datum::Wgs84;
  int zone = 0;  // UTM 1 to 60 (north of the equator), Gauß-Krüger 2 to 5 with the zone in front of the Rechtswert
  bool operator==(const ReferenceSystem&) const = default;
  QString Name() const;  // "WGS-84", "UTM 32 WGS-84", "Gauß-Krüger 4"
};
// "WGS-84", "ETRS89", "Potsdam".
QString Datum_Name(Datum datum);

// "Potsdam -> WGS-84, 3 m": the systems' datums and how exact the way between them is; without a number where that is
// not known (0). Of one datum the systems themselves: "WGS-84 -> UTM 32 WGS-84".
QString Way_Name(const ReferenceSystem& from, const ReferenceSystem& to, double metres);

// To be used in the thread that made it.
class Transformation {
 public:
  // Raises 5000 with a German text for a zone that does not exist, and without PROJ's own data.
  Transformation(const ReferenceSystem& from, const ReferenceSystem& to);
  ~Transformation();
  Transformation(Transformation&&) noexcept;
  Transformation& operator=(Transformation&&) noexcept;

  // Nothing where the systems do not reach.
  std::optional<QPointF> operator()(QPointF point) const;
  // All of them in place; those that the systems do not reach become NaN.
  void Transform(std::vector<QPointF>& points) const;
  QString Name() const;  // Way_Name with the accuracy, after a point was transformed
  // Metres, after a point was transformed; 0 where the way is exact or nothing is known of it.
  double Accuracy() const;

 private:
  struct Inner;
  std::unique_ptr<Inner> inner;
};
