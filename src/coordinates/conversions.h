#pragma once
#include <QPoint>
#include <QPointF>
#include <QString>
#include <cstdint>

#include "state/coordinate_state.h"

// Map pixels to coordinates and back. Pure functions of the coordinate state; callers look at state.Grid first.

// Result codes. A y code wins over an x code.
inline constexpr int onMap = 1, tooFarLeft = 800, tooFarRight = 802, tooFarUp = 804, tooFarDown = 806,
                     conversionCancelled = -1;

// Rechtswert and Hochwert (metres) to map pixels: a similarity by Xmap, Ymap, MeterPerPix, Inclin. An output whose
// coordinate is off the map is left untouched. Error 6 on overflow, 11 without a scale.
int Koord_To_Pixel(const CoordinateState& state, int rechtswert, int hochwert, int& x, int& y);
// The exact inverse; not rounded.
QPointF Pixel_To_Koord(const CoordinateState& state, int x, int y);

// Longitude and latitude to map pixels: the interpolated parallel and meridian are intersected. In and out are double;
// a position outside the outer lines is extrapolated. Faults are shown ("Fehler: Grad->Pixel"): conversionCancelled on
// Cancel.
int Grad_To_Pixel(const CoordinateState& state, double longitude, double latitude, double& x, double& y);
// Map pixels to longitude and latitude. 1 on success, 0 without curves, -1 when cancelled ("Fehler: Pix->Grad").
int Pixel_To_Grad(const CoordinateState& state, int x, int y, double& longitude, double& latitude);

// Plane nets are the metric ones, and those of curves that count in kilometres (NetPKG).

// The zone by which a Rechtswert is judged; 0 where the net names none.
int Net_Zone(const CoordinateState& state);
// A Rechtswert (metres) as the net counts it. Nets that have the zone in front of theirs (seven digits and more) are
// given it where only the last six digits were written; nets that have not lose their own zone.
double Rechtswert_Of_Net(const CoordinateState& state, double rechtswert);
// Rechtswert, as Rechtswert_Of_Net takes it, and Hochwert (metres) to map pixels in either kind of plane net. Codes and
// errors of Koord_To_Pixel and Grad_To_Pixel.
int Plane_To_Pixel(const CoordinateState& state, double rechtswert, double hochwert, double& x, double& y);

// Texts of the status panels for a place, without leading "Panel" matter: what stands in panel 2 and 3.
struct CoordinateTexts {
  QString first, second;
};
// Degrees, or kilometres of a plane net. Both are empty beyond 180 degrees of longitude and 90 of latitude.
CoordinateTexts Grad_Texts(const CoordinateState& state, double longitude, double latitude);
