#pragma once
#include <QRect>
#include <QString>
#include <functional>
#include <optional>
#include <vector>

// The design of a raster of plan squares as a value, and what follows from it. Positions are map pixels.

// Digits 2 to 4 of the raster's state.
enum class RasterField { Whole = 1, Part = 2, Free = 3 };
enum class CornerUnit { Coordinates = 1, Pixel = 2, Measure = 3, OnMap = 4 };
enum class LabelPlace { None = 1, MapEdge = 2, SquareEdge = 3, Centre = 4 };

inline constexpr int mostSquares = 2000;

struct RasterDesign {
  QString size = QStringLiteral("Größe");  // as it stands in the list or was typed: "100 * 100", "2,5 km"
  RasterField field = RasterField::Whole;
  CornerUnit unit = CornerUnit::Pixel;
  LabelPlace labels = LabelPlace::None;
  QString P1x, P1y, P2x, P2y;  // as typed
  QString font = QStringLiteral("Arial");
  double fontSize = 8;
  int VG = 0, HG = 15;
  bool operator==(const RasterDesign&) const = default;
};
// "1121": new or taken over, field, unit, labels.
QString RasterState(const RasterDesign& design, bool taken);
// The design of a new raster, in the colours of the next entry.
RasterDesign Raster_Ini();
// White lines would not be seen on paper: they become grey; a background of the same colour gives way.
void Sound_Colors(int& VG, int& HG);

// Letters of a column from 1: "A".."Z", "a".."z", "AA"...
QString Column_Letters(int column);
QString Square_Name(int column, int row);

struct PlanField {
  double x = 0, y = 0, width = 0, height = 0;
  double slack = 0;  // pixels by which whole positions may have shortened it
};
struct PlanSquare {
  QString name;
  QRect box;
};
struct RasterPlan {
  float side = 0;
  int Cols = 0, Rows = 0;
  bool adjusted = false;            // the field was shrunk to whole squares
  std::vector<int> edgeX, edgeY;    // lines of the raster, Cols + 1 and Rows + 1
  std::vector<PlanSquare> squares;  // row by row
};

// The part of the window where the value that is at fault stands.
enum class RasterTab { Size, Corners };
struct RasterFault {
  QString text, title;
  RasterTab tab = RasterTab::Size;
};

// Cols x Rows squares from the upper left corner of the field. Squares of a row have no gaps: each edge is rounded from
// its own single-precision position. RasterFault if the field is smaller than a square, error 5000 above mostSquares.
// `step` hears the number of each step before it is taken.
RasterPlan Plan(
    const PlanField& field, float side, const std::function<void(int)>& step = [](int) {});

struct SizeText {
  double number = 0;
  QString unit;  // "mm", "cm", "m", "km", "Pixel", as typed, or empty
};
// Of "100 * 100 m" the first number and the unit. "1.000" is a thousand, "2.5" is not.
SizeText Read_Size(const QString& text);
// What a side without a unit counts in, for the window: "Pixel", "m", "mm (Papier)", ...
QString Size_Unit(const RasterDesign& design);
// Side in map pixels by scale, net or paper. Tells where the unit had to be set; RasterFault if it cannot be.
double Side_Pixels(const RasterDesign& design);
// The field of the design. `existing`: that of the raster on the map, taken where P2 is missing. RasterFault.
PlanField Read_Field(const RasterDesign& design, const std::optional<QRectF>& existing);

// One press of the preview button.
struct RasterSteps {
  QString Mode;  // last step reached
  QString info;
  RasterTab tab = RasterTab::Size;  // where a fault lies
};
// What of the steps is the map's own.
struct RasterOnMap {
  std::function<void()> clear;                       // step 6: without the former preview
  std::function<void(const RasterPlan& plan)> draw;  // step 7: lines and names
};
// The whole way to the plan; faults are told with the step they happened in, then nothing comes back. `middle`: where a
// free square is put.
std::optional<RasterPlan> Design_Raster(const RasterDesign& design, const std::optional<QRectF>& existing,
                                        QPoint middle, RasterSteps& steps, const RasterOnMap& map = {});
// All four corner values are there; told if not.
bool Corners_Filled(const RasterDesign& design);
// Can corners be given in this unit? Told if there is no net.
bool Unit_Possible(CornerUnit unit);
