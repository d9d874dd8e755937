#include "coordinates/calibration_file.h"
#include "coordinates/conversions.h"
#include "fuzz/calibrated.h"
#include "fuzz/driver.h"
#include "objects/net_draw.h"
#include "platform/surface.h"

// Calibration files, and what is done with the net that was read: conversions both ways, drawing.

namespace {

void Convert(const CoordinateState& state) {
  constexpr std::array places{-2147483647, -40000, -1, 0, 1, 700, 1500, 2999, 3000, 32767, 2147483647};
  for (const int a : places)
    for (const int b : places) {
      try {
        int x = 0, y = 0;
        double longitude = 0, latitude = 0, px = 0, py = 0;
        if (state.Metric()) {
          Koord_To_Pixel(state, a, b, x, y);
          Koord_To_Pixel(state, state.GridR / 2 + a / 2, state.GridH / 2 + b / 2, x, y);
          Pixel_To_Koord(state, a, b);
        }
        if (state.Geographic()) {
          if (Pixel_To_Grad(state, a, b, longitude, latitude) == 1) Grad_To_Pixel(state, longitude, latitude, px, py);
          Grad_To_Pixel(state, a / 100.0, b / 100.0, px, py);
          Grad_Texts(state, longitude, latitude);
        }
        if (state.Metric() || state.NetPKG) Plane_To_Pixel(state, Rechtswert_Of_Net(state, a), b, px, py);
        Net_Zone(state);
      } catch (const Error&) {
        // A conversion that overflows tells so.
      }
    }
}

void Draw(const CoordinateState& state) {
  QImage canvas = Make_Canvas(300, 220);
  const auto surface = Make_Surface(canvas);
  for (const double zoom : {0.125, 1.0, 10.0}) {
    DrawContext context{*surface, {100, 200, zoom}, QRectF(0, 0, 300, 220)};
    Draw_Net(context, state);
  }
}

bool Run(const QByteArray& input) {
  const QString path = Put_File(QStringLiteral("Karte.cal"), input);
  CoordinateState state;
  if (Read_Cal(path, {netMapWidth, netMapHeight}, state) != -1 || state.Grid == gridNone) return false;
  Convert(state);
  Draw(state);
  return true;
}

}  // namespace

FuzzTarget Make_Target() {
  return {"calibration",
          Calibration_Seeds(),
          QByteArray("Grid GEO|Grid UTM Zone: |Grid GK Zone: |DEC|GMS|PKG Z: | R: | H: |BParm = T1S5N614|Gwidth = |"
                     "LParm = T2S1N30000|Div = |Inclin = |Xline = |Yline = |Font = Arial Sz = |LnBreite = |nLabel = |"
                     "Transp|\r\n|/|b1x-5y0S0R49/|R1  ")
              .split('|'),
          Run,
          {}};
}
