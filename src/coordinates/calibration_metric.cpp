#include "coordinates/calibration_reader.h"
#include "coordinates/degree_text.h"
#include "coordinates/net_build.h"
#include "platform/error.h"
#include "platform/text.h"

// Metric nets in calibration files: one reference point, one scale, one slope.

namespace calibration {

namespace {

// "Zone: 32U", in short form "Z: 32U".
QString Zone_Of(const QString& line) {
  const QString key = line.contains(QLatin1String("Zone:")) ? QStringLiteral("Zone:") : QStringLiteral("Z:");
  return Between(line, key, QStringLiteral("D:")).trimmed();
}

void Read_Point(CoordinateState& state, const QString& line) {
  RefPoint& point = state.RefPoints[static_cast<size_t>(Digit(line.trimmed().front(), 3))];
  QStringList values;
  if (line.contains(u';')) {
    values = line.split(u';').mid(1);
    if (values.size() < 4) Raise(wrongLine);
  } else {
    for (const int column : {12, 24, 36, 48}) values << line.mid(column - 1, 12);
  }
  point.BreiteText = values[0].trimmed().left(15);
  point.LaengeText = values[1].trimmed().left(15);
  point.LabelX = Whole(values[2]);
  point.LabelY = Whole(values[3]);
}

}  // namespace

void Read_Metric_Grid(CalibrationReader& reader, const QString& line, bool utm) {
  CoordinateState& state = reader.state;
  state.Grid = utm ? gridUtm : gridGaussKrueger;
  state.RefPoints = {};
  reader.Try([&] { state.ZoneText = Zone_Of(line); });
  reader.Try([&] { state.ZoneNumber = getZoneNumber(state.ZoneText); });
  QString rest;
  reader.Try([&] { rest = Behind(line, QStringLiteral("D:")); });
  const qsizetype right = rest.indexOf(QLatin1String("R: "));
  reader.Try([&] {
    if (right < 0) Raise_Bad_Call();
    state.GridDatum = rest.left(right).trimmed();
  });
  reader.Try([&] { state.GridR = Whole(Between(rest, QStringLiteral("R: "), QStringLiteral("H: "))); });
  reader.Try([&] { state.GridH = Whole(Behind(rest, QStringLiteral("H: "))); });
}

void Read_Metric_Line(CalibrationReader& reader, const QString& line) {
  CoordinateState& state = reader.state;
  const QString value = Value_Text(line), trimmed = line.trimmed();
  const auto holds = [&line](const char* key) { return line.contains(QLatin1String(key)); };
  reader.Try([&] {
    if (holds("Inclin"))
      state.Inclin = Coordinate_Number(value);
    else if (holds("Xmap"))
      state.Xmap = Whole(value);
    else if (holds("Ymap"))
      state.Ymap = Whole(value);
    else if (holds("Xline"))
      state.Xline = Single(value);
    else if (holds("Yline"))
      state.Yline = Single(value);
    else if (holds("PixPerMeter"))
      state.PixPerMeter = Coordinate_Number(value);
    else if (!trimmed.isEmpty() && trimmed.front() >= u'0' && trimmed.front() <= u'3')
      Read_Point(state, line);
  });
}

QString Metric_Fault_Text(const CoordinateState& state) {
  const QString kind = state.Grid == gridUtm ? QStringLiteral("UTM-Gitter") : QStringLiteral("Gauß-Krüger-Gitter");
  return QStringLiteral("Metrisches Koordinatennetz fehlerhaft:\n") + kind +
         QStringLiteral("\nReferenzpunkt Rechtswert = ") + QString::number(state.GridR) +
         QStringLiteral("\nReferenzpunkt   Hochwert = ") + QString::number(state.GridH) +
         QStringLiteral("\nRichtungswinkel d. Grids = ") + Number_Text(state.Inclin) +
         QStringLiteral("\nAbstand der Gitterlinien = ") + QString::number(state.Gwidth) + QStringLiteral(" Grad") +
         QStringLiteral("\nAbstand der Gitterlinien = ") + Number_Text(static_cast<double>(state.Xline)) +
         QStringLiteral(" Pixel");
}

void Close_Metric(CalibrationReader& reader) {
  CoordinateState& state = reader.state;
  // One fault, one message: who reads them one after the other knows what is missing.
  for (const bool missing :
       {state.GridR == 0, state.GridH == 0, state.Inclin == 0, state.Gwidth == 0, state.Xline == 0})
    reader.Try([&] {
      if (missing) Raise(badMetricNet);
    });
  // The user may go on with a slope of 0; without a distance of lines there is no net to go on with.
  if (state.Gwidth == 0 || state.Xline == 0) return;
  const double xline = static_cast<double>(state.Xline);
  state.MeterPerPix = state.Gwidth / xline;
  if (state.PixPerMeter == 0) state.PixPerMeter = xline / state.Gwidth;
  reader.Try([&] { Build_Metric_Net(state); });
  state.NetReady = true;
}

}  // namespace calibration
