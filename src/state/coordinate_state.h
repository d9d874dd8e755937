#pragma once
#include <QString>
#include <array>
#include <cstdint>
#include <vector>

// What a calibration file says of a map, and the net made from it: one value, replaced whole by the next file.
// Positions are map pixels, Rechtswert and Hochwert metres, angles degrees (east and north positive).

inline constexpr int gridNone = 0, gridGeographic = 18, gridUtm = 20, gridGaussKrueger = 22;

// One measured parallel (NetB, from north to south) or meridian (NetL, from west to east). Sample k (from 1) lies at
// run position Start + (k - 1) * Step: x for a parallel, y for a meridian.
struct NetLine {
  float StartF = 0, Mid = 0, Deg = 0;  // Deg as written in the line: for the bracket search only
  std::int16_t Kind = 0;
  double Deg64 = 0;  // the exact value, of the reference point that lies on the line
  QString Label;     // at most 15 characters
  float Step = 0;
  std::int16_t Reserve = 0, Count = 0, Start = 0;
};

// Measured points 1..9 by rows (geographic), or 0..3 (metric; kept, no conversion reads them).
struct RefPoint {
  int X = 0, Y = 0, LabelX = 0, LabelY = 0;
  double Laenge = 0, Breite = 0;
  QString Caption, LaengeText, BreiteText;
  bool Used = false;
};

struct NetPt {
  std::int16_t X = 0, Y = 0;
  bool operator==(const NetPt&) const = default;
};
inline constexpr std::int16_t netGap = -10000;  // in both fields: not drawn

struct NetLabel {
  float X = 0, Y = 0;  // where the line meets the map's edge
  float Rel = 0;       // place between the outer measured lines: 0 at line 1, 1 at line 3
  float Deg = 0;
  QString Text;  // at most 15 characters
};

enum class DegreeFormat { Unknown, Gms, Dec };

struct CoordinateState {
  int Grid = gridNone;
  int MapWidthPx = 0, MapHeightPx = 0;  // the map it was read for
  QString CalFile;
  bool CalFromTrakkor = false;

  // Metric net.
  int Xmap = 0, Ymap = 0;      // reference point
  int GridR = 0, GridH = 0;    // its metres
  double Inclin = 0;           // tangent of the small angle by which the net is turned against the map
  float Xline = 0, Yline = 0;  // distance of grid lines in pixels
  int Gwidth = 0;              // the same in metres
  double MeterPerPix = 0, PixPerMeter = 0;
  QString ZoneText, GridDatum;
  int ZoneNumber = 0;

  // Geographic net; index 0 is unused.
  std::array<NetLine, 4> NetB, NetL;
  std::array<std::vector<std::int16_t>, 4> NetBPix, NetLPix;  // [n][k], k from 1 to Count
  std::array<RefPoint, 10> RefPoints;
  DegreeFormat format = DegreeFormat::Unknown;
  bool NetDec = false;  // degrees are shown as decimals
  bool NetPKG = false;  // degree values are kilometres of a plane net
  QString PkgZone;
  double PkgR = 0, PkgH = 0;
  float NetDiv = 0;    // degrees between net lines; 0 = the measured lines alone
  QString NetDivText;  // as written: its decimals are those of the labels
  bool NetReady = false;

  // How the net is drawn.
  QString NetFont;  // of the note printed on the map
  float NetFontSize = 8;
  int GridVG = 0, GridHG = 7;
  int NetLnBreite = 1, GridLnBreite = 1, NetLnStil = 0, GridLnStil = 0;
  int NetLabelEvery = 1;
  bool NetTransp = true;

  // The net, line by line: parallels or Hochwert lines; meridians or Rechtswert lines. Labels have the same index.
  std::vector<std::vector<NetPt>> NetBLines, NetLLines;
  std::vector<NetLabel> NetBLabels, NetLLabels;

  bool Metric() const { return Grid == gridUtm || Grid == gridGaussKrueger; }
  bool Geographic() const { return Grid == gridGeographic; }
};

// The coordinates of the open map; `Grid` is 0 while it has none.
extern CoordinateState Coord;

// Shown names: " Geografisch ", " UTM ", " Gauss-Krüger ".
QString Grid_Type_Text(const CoordinateState& state);
