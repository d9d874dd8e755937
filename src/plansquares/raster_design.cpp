#include "plansquares/raster_design.h"

#include <cmath>

#include "coordinates/conversions.h"
#include "coordinates/degree_text.h"
#include "plansquares/raster_texts.h"
#include "platform/error.h"
#include "platform/message_box.h"
#include "platform/text.h"
#include "state/global_state.h"

namespace {

constexpr int white = 15, grey = 8, tooManySquares = 5000;
constexpr double farthest = 32767;
constexpr double nearlyWhole = 0.001;  // of a square: what rounding of sides and corners may take away
const QString pixelUnit = QStringLiteral("Pixel");

// Millimetres of a unit of length; 0 for all others.
double Unit_Mm(const QString& unit) {
  static const std::pair<QString, double> units[] = {
      {QStringLiteral("mm"), 1}, {QStringLiteral("cm"), 10}, {QStringLiteral("m"), 1e3}, {QStringLiteral("km"), 1e6}};
  for (const auto& [name, mm] : units)
    if (unit == name) return mm;
  return 0;
}

QString Unit_Word(const QString& unit) {
  static const std::pair<QString, QString> words[] = {{QStringLiteral("mm"), QStringLiteral("Millimeter ")},
                                                      {QStringLiteral("cm"), QStringLiteral("Zentimeter ")},
                                                      {QStringLiteral("m"), QStringLiteral("Meter ")},
                                                      {QStringLiteral("km"), QStringLiteral("Kilometer ")}};
  for (const auto& [name, word] : words)
    if (unit == name) return word;
  return unit;
}

QString Unit_Of(const QString& typed) {
  const QString unit = typed.toLower();
  if (unit == QLatin1String("px") || unit.startsWith(QLatin1String("pixel"))) return pixelUnit;
  if (Unit_Mm(unit) > 0) return unit;
  for (const char* name : {"mm", "cm", "m", "km"})
    if (unit == Unit_Word(QLatin1String(name)).trimmed().toLower()) return QLatin1String(name);
  return typed;
}

bool Has_Scale() { return MapHasScale && MapUnitPerPixel > 0; }
double Paper_Mm() { return MapWidthPx > 0 ? static_cast<double>(MapWidthMm) / MapWidthPx : 0; }

bool Corners_In(const RasterDesign& design, CornerUnit unit) {
  return design.field == RasterField::Part && design.unit == unit;
}
// A metric net measures by itself.
bool By_Net(const RasterDesign& design) {
  return Corners_In(design, CornerUnit::Coordinates) && Coord.Metric() && Coord.MeterPerPix > 0;
}

// What the number counts in where no unit stands behind it.
QString Natural_Unit(const RasterDesign& design) {
  if (Corners_In(design, CornerUnit::Pixel)) return pixelUnit;
  if (By_Net(design)) return QStringLiteral("m");
  return Has_Scale() ? MapUnit.trimmed() : QStringLiteral("mm");
}

void Tell_Unit(const QString& unit) {
  Message_Box(raster_texts::wrongUnit.trimmed() + u'\n' + Unit_Word(unit), MsgButtons::Ok, MsgIcon::Information,
              QStringLiteral("Planquadrate"));
}

// A number and nothing behind it but its unit.
double Corner_Number(const QString& text) {
  QString number = text.trimmed();
  while (!number.isEmpty() && (number.back().isLetter() || number.back().isSpace())) number.chop(1);
  const auto value = Number_Typed(number);
  if (!value) throw RasterFault{raster_texts::badCorner, {}, RasterTab::Corners};
  return *value;
}

struct Corner {
  double x = 0, y = 0;
};

[[noreturn]] void Bad_Corner() {
  throw RasterFault{raster_texts::badCorner, raster_texts::badCornerTitle, RasterTab::Corners};
}

double Degrees(const QString& text) {
  return text.contains(QChar(u'°')) ? GMS_To_Dec(text.trimmed()) : Corner_Number(text);
}

Corner Read_Coordinates(const QString& textX, const QString& textY) {
  if (!Unit_Possible(CornerUnit::Coordinates)) Bad_Corner();
  Corner corner;
  const bool curves = Coord.Geographic();  // they can be followed beyond the map's edge
  const int code = curves && !Coord.NetPKG
                       ? Grad_To_Pixel(Coord, Degrees(textX), Degrees(textY), corner.x, corner.y)
                       : Plane_To_Pixel(Coord, Corner_Number(textX), Corner_Number(textY), corner.x, corner.y);
  if (curves ? code == conversionCancelled : code != onMap) Bad_Corner();
  return corner;
}

Corner Read_Corner(const RasterDesign& design, const QString& textX, const QString& textY) {
  if (design.unit == CornerUnit::Coordinates) return Read_Coordinates(textX, textY);
  Corner corner{Corner_Number(textX), Corner_Number(textY)};
  if (design.unit == CornerUnit::Measure) {
    const double perPixel = Has_Scale() ? MapUnitPerPixel : Paper_Mm();
    if (perPixel <= 0) Bad_Corner();
    corner = {corner.x / perPixel, corner.y / perPixel};
  }
  if (std::abs(corner.x) > farthest || std::abs(corner.y) > farthest) Bad_Corner();
  return corner;
}

std::vector<int> Edges(double start, float side, int count) {
  std::vector<int> edges;
  for (int k = 0; k <= count; ++k)
    edges.push_back(To_Int32(static_cast<double>(static_cast<float>(start) + static_cast<float>(k) * side)));
  return edges;
}

void Tell_Fault(const RasterSteps& steps, const QString& text, const QString& title) {
  Message_Box(steps.Mode + QStringLiteral("\n\n") + text, MsgButtons::OkCancel, MsgIcon::Warning,
              title.isEmpty() ? raster_texts::faultTitle : title);
}

RasterPlan Run_Steps(const RasterDesign& design, const std::optional<QRectF>& existing, QPoint middle,
                     RasterSteps& steps, const RasterOnMap& map) {
  const auto step = [&steps, &map](int number) {
    steps.Mode = QStringLiteral("Step: %1").arg(number);
    if (number == 6 && map.clear) map.clear();
  };
  step(2);
  const double side = Side_Pixels(design);
  if (design.field == RasterField::Free)
    return Plan({middle.x() - side / 2, middle.y() - side / 2, side, side, 0}, static_cast<float>(side), step);
  step(3);
  const PlanField field = Read_Field(design, existing);
  step(4);
  RasterPlan plan = Plan(field, static_cast<float>(side), step);
  if (plan.adjusted) steps.info = raster_texts::adjusted;
  return plan;
}

}  // namespace

QString RasterState(const RasterDesign& design, bool taken) {
  const auto digit = [](auto choice) { return QString::number(static_cast<int>(choice)); };
  return (taken ? QStringLiteral("3") : QStringLiteral("1")) + digit(design.field) + digit(design.unit) +
         digit(design.labels);
}

RasterDesign Raster_Ini() {
  RasterDesign design;
  design.VG = CurVG;
  design.HG = CurHG;
  Sound_Colors(design.VG, design.HG);
  return design;
}

void Sound_Colors(int& VG, int& HG) {
  if (VG < 0 || VG > white) VG = 0;
  if (VG == white) VG = grey;
  if (HG < 0 || HG > white || HG == VG) HG = white;
}

QString Column_Letters(int column) {
  constexpr int alphabet = 26, round = 2 * alphabet;
  const auto letter = [](int n) { return QChar(static_cast<char16_t>(n < alphabet ? u'A' + n : u'a' + n - alphabet)); };
  const int before = (column - 1) / round;
  const QString last = letter((column - 1) % round);
  return before == 0 ? last : letter((before - 1) % round) + last;
}

QString Square_Name(int column, int row) { return Column_Letters(column) + u'-' + QString::number(row); }

RasterPlan Plan(const PlanField& field, float side, const std::function<void(int)>& step) {
  const auto length = static_cast<double>(side);
  if (!(length > 0)) throw RasterFault{raster_texts::noSize, raster_texts::faultTitle, RasterTab::Size};
  const auto fit = [&](double room) { return std::floor((room + field.slack) / length + nearlyWhole); };
  const double across = fit(field.width), down = fit(field.height);
  if (across < 1) throw RasterFault{raster_texts::tooNarrow + raster_texts::larger, {}, RasterTab::Size};
  if (down < 1) throw RasterFault{raster_texts::tooLow + raster_texts::larger, {}, RasterTab::Size};
  step(5);  // as many squares as fit
  step(6);  // the map without the former preview
  step(7);  // their lines and names
  if (across * down > mostSquares)
    Raise(tooManySquares, raster_texts::tooMany + u' ' + QString::number(across * down, 'f', 0));
  RasterPlan plan;
  plan.side = side;
  plan.Cols = static_cast<int>(across);
  plan.Rows = static_cast<int>(down);
  const auto rest = [&](double room, double count) { return std::abs(room - count * length) > field.slack + 0.5; };
  plan.adjusted = rest(field.width, across) || rest(field.height, down);
  plan.edgeX = Edges(field.x, side, plan.Cols);
  plan.edgeY = Edges(field.y, side, plan.Rows);
  plan.squares.reserve(static_cast<size_t>(plan.Cols) * static_cast<size_t>(plan.Rows));
  for (size_t row = 0; row + 1 < plan.edgeY.size(); ++row)
    for (size_t col = 0; col + 1 < plan.edgeX.size(); ++col)
      plan.squares.push_back({Square_Name(static_cast<int>(col) + 1, static_cast<int>(row) + 1),
                              QRect(plan.edgeX[col], plan.edgeY[row], plan.edgeX[col + 1] - plan.edgeX[col],
                                    plan.edgeY[row + 1] - plan.edgeY[row])});
  return plan;
}

SizeText Read_Size(const QString& text) {
  SizeText size;
  QString digits, letters;
  const QString first = text.section(u'*', 0, 0);
  for (qsizetype i = 0; i < first.size(); ++i) {
    const QChar sign = first[i];
    if (sign >= u'0' && sign <= u'9') digits += sign;
    if (sign == u',') digits += u'.';
    if (sign != u'.') continue;
    // "1.000" is a thousand, "2.5" is not.
    qsizetype after = i + 1;
    while (after < first.size() && first[after].isDigit()) ++after;
    if (after - i - 1 != 3) digits += sign;
  }
  for (const QChar sign : text) {
    if (sign.isLetter())
      letters += sign;
    else if (!letters.isEmpty())
      break;
  }
  size.number = Val(digits);
  size.unit = letters.isEmpty() ? QString() : Unit_Of(letters);
  return size;
}

QString Size_Unit(const RasterDesign& design) {
  const QString natural = Natural_Unit(design);
  return !Has_Scale() && natural == QLatin1String("mm") ? QStringLiteral("mm (Papier)") : natural;
}

double Side_Pixels(const RasterDesign& design) {
  const QString text = design.size.trimmed();
  SizeText size = Read_Size(text);
  if (text.isEmpty() || text == QLatin1String("Größe") || size.number <= 0)
    throw RasterFault{raster_texts::noSize + raster_texts::noPreview, raster_texts::faultTitle, RasterTab::Size};
  if (size.unit == pixelUnit) return size.number;
  const QString natural = Natural_Unit(design);
  const bool measured = Has_Scale() || By_Net(design);
  const bool known = Unit_Mm(size.unit) > 0;
  if (!measured && known && size.unit != QLatin1String("mm"))
    throw RasterFault{raster_texts::noScale, raster_texts::faultTitle, RasterTab::Size};
  const bool strict = Corners_In(design, CornerUnit::Measure);
  const bool wrong = (strict && size.unit != natural) || (!size.unit.isEmpty() && !known);
  const bool convertible = Unit_Mm(natural) > 0;
  if (wrong || (!size.unit.isEmpty() && !convertible && natural != pixelUnit && size.unit != natural)) {
    if (size.unit != natural) Tell_Unit(natural);
    size.unit = natural;
  }
  if (size.unit.isEmpty()) size.unit = natural;
  if (size.unit == pixelUnit) return size.number;
  if (By_Net(design)) return size.number * Unit_Mm(size.unit) / 1e3 / Coord.MeterPerPix;
  if (!Has_Scale()) {
    if (Paper_Mm() <= 0) throw RasterFault{raster_texts::noScale, raster_texts::faultTitle, RasterTab::Size};
    return size.number / Paper_Mm();
  }
  const QString scale = MapUnit.trimmed();
  const double factor = size.unit == scale ? 1 : Unit_Mm(size.unit) / Unit_Mm(scale);
  return size.number * factor / MapUnitPerPixel;
}

PlanField Read_Field(const RasterDesign& design, const std::optional<QRectF>& existing) {
  if (design.field == RasterField::Whole)
    return {0, 0, static_cast<double>(MapWidthPx), static_cast<double>(MapHeightPx), 0};
  const bool noEnd = design.P2x.trimmed().isEmpty() && design.P2y.trimmed().isEmpty();
  if (noEnd && existing) return {existing->x(), existing->y(), existing->width(), existing->height(), 0};
  const Corner P1 = Read_Corner(design, design.P1x, design.P1y), P2 = Read_Corner(design, design.P2x, design.P2y);
  PlanField field{std::min(P1.x, P2.x), std::min(P1.y, P2.y), std::abs(P1.x - P2.x), std::abs(P1.y - P2.y), 0};
  if (design.unit == CornerUnit::Coordinates) field.slack = 1;
  return field;
}

std::optional<RasterPlan> Design_Raster(const RasterDesign& design, const std::optional<QRectF>& existing,
                                        QPoint middle, RasterSteps& steps, const RasterOnMap& map) {
  steps = {};
  steps.Mode = QStringLiteral("Step: 1");
  try {
    RasterPlan plan = Run_Steps(design, existing, middle, steps, map);
    if (map.draw) map.draw(plan);
    steps.Mode = raster_texts::designed;
    steps.info += raster_texts::takeHint;
    return plan;
  } catch (const RasterFault& fault) {
    steps.tab = fault.tab;
    Tell_Fault(steps, fault.text, fault.title);
  } catch (const Error& error) {
    Tell_Fault(steps, error.text, {});
  }
  return std::nullopt;
}

bool Corners_Filled(const RasterDesign& design) {
  for (const QString* text : {&design.P1x, &design.P1y, &design.P2x, &design.P2y}) {
    if (!text->trimmed().isEmpty()) continue;
    Message_Box(raster_texts::fillCorners, MsgButtons::Ok, MsgIcon::Warning, raster_texts::fillCornersTitle);
    return false;
  }
  return true;
}

bool Unit_Possible(CornerUnit unit) {
  if (unit != CornerUnit::Coordinates || Coord.Grid >= 1) return true;
  Message_Box(raster_texts::noNet, MsgButtons::Ok, MsgIcon::Information, raster_texts::noNetTitle);
  return false;
}
