#include "view/cursor_coordinates.h"

#include "coordinates/conversions.h"
#include "platform/text.h"
#include "state/coordinate_state.h"
#include "state/global_state.h"
#include "state/mdi_state.h"

namespace {

bool Shows_Coordinates() {
  return frmMDI.mouseUnit == MouseUnit::Coordinates && (Coord.Metric() || (Coord.Geographic() && Coord.NetReady));
}

PanelTexts Metric_Texts(QPointF place) {
  PanelTexts texts;
  texts.kind =
      Coord.Grid == gridUtm ? QStringLiteral(" UTM-Koordinaten ") : QStringLiteral(" Gauß-Krüger-Koordinaten ");
  texts.position = QStringLiteral("Ost:") + Format(place.x(), QStringLiteral("### ##0")) + QStringLiteral("   Nord:") +
                   Format(place.y(), QStringLiteral("#### ##0")) + QStringLiteral(" m");
  texts.beside = QStringLiteral(" Datum: ") + Coord.GridDatum + QStringLiteral("  Zone: ") + Coord.ZoneText;
  return texts;
}

PanelTexts Geographic_Texts(double longitude, double latitude) {
  const CoordinateTexts read = Grad_Texts(Coord, longitude, latitude);
  PanelTexts texts;
  texts.kind = Coord.NetPKG ? QStringLiteral("Gauss-Krüger Koordinaten Zone: ") + Coord.PkgZone
                            : QStringLiteral("Geografische Koordinaten");
  if (!Coord.GridDatum.isEmpty()) texts.kind += QStringLiteral("   Datum: ") + Coord.GridDatum;
  texts.position = read.first;
  texts.beside = read.second;
  return texts;
}

PanelTexts Texts_At(QPoint map) {
  if (Coord.Metric()) return Metric_Texts(Pixel_To_Koord(Coord, map.x(), map.y()));
  double longitude = 0, latitude = 0;
  if (Pixel_To_Grad(Coord, map.x(), map.y(), longitude, latitude) != 1) return {};
  return Geographic_Texts(longitude, latitude);
}

}  // namespace

QString Cursor_Tag() {
  if (!Shows_Coordinates()) return QStringLiteral("MK");
  return Coord.Metric() ? QStringLiteral("G") : QStringLiteral("Ggr");
}

PanelTexts Cursor_Texts(QPoint map) {
  PanelTexts texts;
  if (Shows_Coordinates()) texts = Texts_At(map);
  if (texts.position.isEmpty()) texts = {{}, Pixel_Text(map), {}};
  return texts;
}

PanelTexts Coordinate_Texts(double right, double high) {
  if (Coord.Metric()) return Metric_Texts({Rechtswert_Of_Net(Coord, right), high});
  if (!Coord.NetPKG) return Geographic_Texts(right, high);
  return Geographic_Texts((Rechtswert_Of_Net(Coord, right) - Coord.PkgR) / 1000, (high - Coord.PkgH) / 1000);
}

QString Pixel_Text(QPoint map) {
  QString text = QStringLiteral("|_ ");
  if (frmMDI.mouseUnit == MouseUnit::Metric && MapPixelMm > 0) {
    const QString pattern = QStringLiteral("#####0.0");
    const double ymm = MapPixelMmY > 0 ? MapPixelMmY : MapPixelMm;
    text += Format(map.x() * MapPixelMm, pattern) + QStringLiteral(" : ") + Format(map.y() * ymm, pattern) +
            QStringLiteral(" mm");
  } else {
    const QString pattern = QStringLiteral("#####0");
    text += Format(map.x(), pattern) + QStringLiteral(" : ") + Format(map.y(), pattern) + QStringLiteral(" Pixel");
  }
  return text;
}
