#include "coordinates/conversions.h"

#include <algorithm>
#include <cmath>

#include "coordinates/degree_text.h"
#include "platform/error.h"
#include "platform/text.h"

// Rechtswert and Hochwert, and the texts of a place. The geographic nets are in conversions_geographic.cpp.

namespace {

// A value that is kept as 32-bit float on its way.
double Single(double value) {
  const auto single = static_cast<float>(value);
  if (!std::isfinite(single)) Raise(errors::overflow);
  return static_cast<double>(single);
}

double Sign(double value) { return (value > 0 ? 1.0 : 0.0) - (value < 0 ? 1.0 : 0.0); }

int Difference(int a, int b) { return To_Int32(static_cast<double>(a) - static_cast<double>(b)); }

}  // namespace

int Koord_To_Pixel(const CoordinateState& state, int rechtswert, int hochwert, int& x, int& y) {
  const double dR = Difference(rechtswert, state.GridR), dH = Difference(hochwert, state.GridH);
  if (state.MeterPerPix == 0) Raise(errors::divisionByZero);
  const double a = Single(dR / state.MeterPerPix), b = Single(dH / state.MeterPerPix);
  const double t = state.Inclin;
  const double q = (t * t + 1) * (t * t + 1);
  const double up = Single(std::sqrt(b * b / q) * Sign(dH));
  const double across = Single(std::sqrt(a * a / q) * Sign(dR));
  const int foundY = To_Int32(state.Ymap - (up - across * t));
  const int foundX = To_Int32(state.Xmap + across + up * t);
  int result = onMap;
  if (foundX < 0)
    result = tooFarLeft;
  else if (foundX > state.MapWidthPx)
    result = tooFarRight;
  else
    x = foundX;
  if (foundY < 0)
    result = tooFarUp;
  else if (foundY > state.MapHeightPx)
    result = tooFarDown;
  else
    y = foundY;
  return result;
}

QPointF Pixel_To_Koord(const CoordinateState& state, int x, int y) {
  const double right = static_cast<double>(x) - state.Xmap, down = static_cast<double>(y) - state.Ymap;
  return {(down * state.Inclin + right) * state.MeterPerPix + state.GridR,
          (right * state.Inclin - down) * state.MeterPerPix + state.GridH};
}

namespace {

constexpr double zoneMetres = 1'000'000;  // what stands in front of the last six digits is the zone

// The zone in front of the Rechtswerte of the net; 0 if they have none.
double Zone_In_Front(const CoordinateState& state) {
  return std::floor((state.NetPKG ? state.PkgR : state.GridR) / zoneMetres);
}

}  // namespace

int Net_Zone(const CoordinateState& state) {
  if (!state.NetPKG) return state.ZoneNumber;
  QString digits;
  for (const QChar sign : state.PkgZone.left(3))
    if (sign >= u'0' && sign <= u'9') digits += sign;
  return digits.isEmpty() ? To_Int32(Zone_In_Front(state)) : digits.toInt();
}

double Rechtswert_Of_Net(const CoordinateState& state, double rechtswert) {
  const double zone = Zone_In_Front(state);
  if (rechtswert >= 0 && rechtswert < zoneMetres) return rechtswert + std::max(0.0, zone) * zoneMetres;
  const bool itsOwn = std::floor(rechtswert / zoneMetres) == Net_Zone(state);
  return zone < 1 && itsOwn ? std::fmod(rechtswert, zoneMetres) : rechtswert;
}

int Plane_To_Pixel(const CoordinateState& state, double rechtswert, double hochwert, double& x, double& y) {
  const double right = Rechtswert_Of_Net(state, rechtswert);
  if (state.NetPKG) return Grad_To_Pixel(state, (right - state.PkgR) / 1000, (hochwert - state.PkgH) / 1000, x, y);
  int mapX = 0, mapY = 0;
  const int code = Koord_To_Pixel(state, To_Int32(right), To_Int32(hochwert), mapX, mapY);
  x = mapX;
  y = mapY;
  return code;
}

namespace {

CoordinateTexts Plane_Texts(const CoordinateState& state, double longitude, double latitude) {
  const auto metres = [](double kilometres, double added) {
    return Format(kilometres * 1000 + added, QStringLiteral("##0 000")) + u'm';
  };
  return {QStringLiteral(" Rechtswert:  ") + metres(longitude, state.PkgR),
          QStringLiteral(" Hochwert:  ") + metres(latitude, state.PkgH)};
}

}  // namespace

CoordinateTexts Grad_Texts(const CoordinateState& state, double longitude, double latitude) {
  if (state.NetPKG) return Plane_Texts(state, longitude, latitude);
  // Nets that were drawn wrong reach beyond the pole: no text, and no message at every move of the mouse.
  if (!(std::fabs(longitude) <= 180 && std::fabs(latitude) <= 90)) return {};
  const QString east = longitude < 0 ? QStringLiteral(" Länge West:  -") : QStringLiteral(" Länge Ost: ");
  const QString north = latitude < 0 ? QStringLiteral(" Breite Süd:  -") : QStringLiteral(" Breite Nord: ");
  const double x = std::fabs(longitude), y = std::fabs(latitude);
  if (state.NetDec)
    return {east + Format(x, QStringLiteral("##0.000000")) + u'°',
            north + Format(y, QStringLiteral("#0.000000")) + u'°'};
  return {east + Dec_To_GMS(u'x' + Format(x, QStringLiteral("##0.0######"))),
          north + Dec_To_GMS(u'y' + Format(y, QStringLiteral("#0.0######")))};
}
