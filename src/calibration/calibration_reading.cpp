#include "calibration/calibration_reading.h"

#include <cmath>

#include "coordinates/calibration_file.h"
#include "coordinates/conversions.h"
#include "platform/error.h"
#include "platform/files.h"
#include "platform/text.h"

namespace {

ControlPoints Kept_Points(const QString& calFile) {
  ControlPoints points;
  for (const QString& line : Read_Lines(calFile)) {
    const QStringList fields = line.split(u';');
    if (fields.size() != 6 || fields[0] != QLatin1String("# Punkt")) continue;
    ControlPoint point;
    point.pixel = {Val(fields[1]), Val(fields[2])};
    point.place = {Val(fields[3]), Val(fields[4])};
    point.used = Val(fields[5]) != 0;
    points.push_back(point);
  }
  return points;
}

// Nine places of the map, as the net counts them.
ControlPoints Places_Of_Net(const CoordinateState& state) {
  ControlPoints points;
  for (const double down : {0.1, 0.5, 0.9})
    for (const double right : {0.1, 0.5, 0.9}) {
      const int x = static_cast<int>(state.MapWidthPx * right), y = static_cast<int>(state.MapHeightPx * down);
      ControlPoint point;
      point.pixel = QPointF(x, y);
      if (state.Metric()) {
        point.place = Pixel_To_Koord(state, x, y);
      } else {
        double east = 0, north = 0;
        if (Pixel_To_Grad(state, x, y, east, north) != 1) continue;
        point.place =
            state.NetPKG ? QPointF(east * 1000 + state.PkgR, north * 1000 + state.PkgH) : QPointF(east, north);
      }
      points.push_back(point);
    }
  return points;
}

NetKind Kind_Of(const CoordinateState& state) {
  if (state.Metric()) return state.Grid == gridUtm ? NetKind::Utm : NetKind::GaussKrueger;
  if (state.NetPKG) return NetKind::Kilometres;
  return state.NetDec ? NetKind::DegreesDec : NetKind::DegreesGms;
}

// "0.0166667" stands for a minute.
double Whole_Seconds(double degrees) {
  const double seconds = std::nearbyint(degrees * 3600);
  return seconds >= 1 && std::fabs(seconds - degrees * 3600) < 0.01 ? seconds / 3600 : degrees;
}

}  // namespace

CalibrationDraft Read_Draft(const QString& calFile, QSize map) {
  CoordinateState state;
  if (Read_Cal(calFile, map, state) == 0 || state.Grid == gridNone)
    Raise(badPoints, QStringLiteral("Die Kalibrierungsdatei enthält kein Netz: ") + calFile);
  CalibrationDraft draft;
  draft.net.kind = Kind_Of(state);
  draft.net.zone = state.NetPKG ? state.PkgZone : state.ZoneText;
  draft.net.datum = state.GridDatum;
  const double division = Val(state.NetDivText);
  draft.net.spacing = state.Metric() ? state.Gwidth
                      : state.NetPKG ? division * 1000
                      : state.NetDec ? division
                                     : Whole_Seconds(division);
  draft.style = Style_Of(state);
  draft.points = Kept_Points(calFile);
  if (draft.points.empty()) draft.points = Places_Of_Net(state);
  return draft;
}
