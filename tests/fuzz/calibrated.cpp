#include "fuzz/calibrated.h"

#include "coordinates/calibration_file.h"
#include "fuzz/driver.h"
#include "state/map_state.h"
#include "store/table_file.h"

namespace {

const QByteArray metricLines =
    "Grid GK Zone: 4 D: Potsdam R: 4432000 H: 5511000\r\nGwidth = 1000\r\nFont = Arial Sz = 8\r\nVG = 12\r\nHG = 15\r\n"
    "Inclin = -0.01\r\nXmap = 500\r\nYmap = 600\r\nXline = 400\r\nYline = 401.5\r\nPixPerMeter = 0.4\r\n"
    "0;5511000;4432000;500;600\r\n";

// Nine points on straight lines and six curves of few samples.
QByteArray Curves(const QByteArray& grid, double west, double east, double north, double south) {
  QByteArray text = grid + "\r\nDiv = 0.5\r\nnLabel = 1\r\nBParm = T1S500N7\r\nLParm = T1S500N6\r\n";
  const auto number = [](double value) {
    return (value < 0 ? '-' : '+') + QByteArray::number(std::abs(value), 'f', 6).rightJustified(10, '0');
  };
  for (int row = 0; row < 3; ++row)
    for (int column = 0; column < 3; ++column) {
      const QByteArray lon = number(west + (east - west) * column / 2).replace('.', ',');
      const QByteArray lat = number(north + (south - north) * row / 2).replace('.', ',');
      text += 'R' + QByteArray::number(row * 3 + column + 1) + "  " + lon.leftJustified(14) + ' ' +
              lat.leftJustified(14) + ' ' + QByteArray::number(300 + column * 1100).rightJustified(7) + ' ' +
              QByteArray::number(200 + row * 800).rightJustified(7) + "       0       0\r\n";
    }
  for (const char kind : {'b', 'l'})
    for (int i = 1; i <= 3; ++i) {
      const double degree = kind == 'b' ? north + (south - north) * (i - 1) / 2 : west + (east - west) * (i - 1) / 2;
      text += kind + QByteArray::number(i) + "x-5y0S0R" + QByteArray::number(degree, 'g', 7);
      const int first = kind == 'b' ? 200 + (i - 1) * 800 : 300 + (i - 1) * 1100;
      for (int k = 0; k < (kind == 'b' ? 7 : 6); ++k) text += '/' + QByteArray::number(first + k * (3 - i) * 4);
      text += "\r\n";
    }
  return text;
}

}  // namespace

QByteArrayList Files_Of(const QString& folder) {
  QByteArrayList all;
  for (const QString& name : QDir(folder).entryList(QDir::Files, QDir::Name)) {
    QFile file(folder + u'/' + name);
    if (file.open(QIODevice::ReadOnly)) all += file.readAll();
  }
  return all;
}

QByteArrayList Calibration_Seeds() {
  QByteArrayList seeds = Files_Of(QStringLiteral(FLURAX_TEST_DATA "/kalibrierung"));
  seeds += metricLines;
  seeds += Curves("Grid GEO DEC D: WGS-84       F: 1", 11.0, 12.0, 50.0, 49.0);
  seeds += Curves("Grid GEO PKG Z: 4 R: 4400000 H: 5500000 D: Potsdam F: 1", 30.0, 34.0, 12.0, 8.0);
  seeds += Curves("Grid GEO DEC D: WGS-84       F: 1", -179.5, 179.5, 80.0, -80.0);
  return seeds;
}

const std::vector<CoordinateState>& Some_Nets() {
  static const std::vector<CoordinateState> nets = [] {
    const MsgHandler former = Set_Message_Handler([](const MsgRequest&) { return MsgAnswer::Ok; });
    std::vector<CoordinateState> all;
    for (const QByteArray& seed : Calibration_Seeds()) {
      CoordinateState state;
      if (Read_Cal(Put_File(QStringLiteral("Karte.cal"), seed), {netMapWidth, netMapHeight}, state) == -1 &&
          state.Grid != gridNone)
        all.push_back(state);
    }
    Set_Message_Handler(former);
    return all;
  }();
  return nets;
}

void Open_Empty_Table() {
  Close_Table(CloseMode::CloseOnly);
  for (const QString& path : Find_Files(Work_Folder(), QStringLiteral("KARTE*.*"))) QFile::remove(path);
  MapFile = Work_Folder() + QStringLiteral("/Karte.bmp");
  MapWidthPx = netMapWidth;
  MapHeightPx = netMapHeight;
  Map.Caption = QStringLiteral("Map: ") + MapFile.toUpper();
  Load_Table(LoadMode::First);
}
