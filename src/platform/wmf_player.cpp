#include "platform/wmf_player.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "platform/files.h"

namespace wmf {

namespace {

// Costs, measured in nanoseconds of a machine of today.
constexpr double budgetUnits = 4e9;
constexpr double recordCost = 100, edgeCost = 500;
constexpr double fillCost = 0.5, slowFillCost = 2.5;  // a pixel; slow are patterns and modes that combine
constexpr double fillRowCost = 220;                   // an edge of a filled shape in one row of pixels
constexpr double thinStepCost = 64;                   // a pixel of a thin line
constexpr double wideRowCost = 260, dashCost = 100;
constexpr size_t deepestSave = 4096, mostObjects = 65536;
constexpr int farthestUnit = 1 << 24;      // window origin and extent
constexpr double farthestPixel = 1 << 16;  // many times the largest picture

int Held(qint64 unit) { return static_cast<int>(std::clamp<qint64>(unit, -farthestUnit, farthestUnit)); }

QPointF Held(double x, double y) {
  return {std::clamp(x, -farthestPixel, farthestPixel), std::clamp(y, -farthestPixel, farthestPixel)};
}

}  // namespace

Player::Player(QImage& image, const Layout& layout, int milliseconds)
    : painter(&image), size(image.size()), budget(budgetUnits, milliseconds) {
  state.origin = layout.box.topLeft();
  state.extent = layout.box.size();
}

void Player::Play(quint16 number, const Words& words) {
  budget.Spend(recordCost + static_cast<double>(words.Count()));
  if (Play_State(number, words) || Play_Window(number, words) || Play_Object(number, words) ||
      Play_Shape(number, words))
    return;
  if (number == recTextOut || number == recExtTextOut) return Play_Text(number, words);
  if (number == recStretchDib || number == recDibStretchBlt || number == recDibBitBlt) Play_Bitmap(number, words);
}

// Places ------------------------------------------------------------------------------------------------------------

double Player::ScaleX() const {
  return static_cast<double>(size.width()) / (state.extent.width() ? state.extent.width() : 1);
}

double Player::ScaleY() const {
  return static_cast<double>(size.height()) / (state.extent.height() ? state.extent.height() : 1);
}

QPointF Player::Place(int x, int y) const {
  return Held((x - state.origin.x()) * ScaleX(), (y - state.origin.y()) * ScaleY());
}

QRectF Player::Box(const Words& words, qint64 first) const {
  return QRectF(Place(words.Signed(first + 3), words.Signed(first + 2)),
                Place(words.Signed(first + 1), words.Signed(first)))
      .normalized();
}

QRectF Player::Sized_Box(const Words& words, qint64 first) const {
  const QPointF corner = Place(words.Signed(first + 3), words.Signed(first + 2));
  const QPointF other =
      Held(corner.x() + words.Signed(first + 1) * ScaleX(), corner.y() + words.Signed(first) * ScaleY());
  return QRectF(corner, other).normalized();
}

QList<QPointF> Player::Points(const Words& words, qint64 first, qint64 count) const {
  QList<QPointF> points;
  for (qint64 i = 0; i < count && words.Has(first + 2 * i + 1); ++i)
    points << Place(words.Signed(first + 2 * i), words.Signed(first + 2 * i + 1));
  return points;
}

// Costs -------------------------------------------------------------------------------------------------------------

double Player::Area_Seen(const QRectF& box) const {
  const QRectF seen = box.adjusted(-1, -1, 1, 1) & QRectF(QPointF(0, 0), QSizeF(size));
  return seen.isEmpty() ? 0 : seen.width() * seen.height();
}

void Player::Pay_For_Fill(const QRectF& box) {
  const bool plain = state.rop == 13 && painter.brush().style() <= Qt::SolidPattern;
  budget.Spend(Area_Seen(box) * (plain ? fillCost : slowFillCost));
}

// Edges cost by the rows they cross, seen or not.
void Player::Pay_For_Edges(std::span<const QPointF> points) {
  double rows = 0;
  for (size_t i = 1; i < points.size(); ++i)
    rows += std::min<double>(std::abs(points[i].y() - points[i - 1].y()), size.height());
  budget.Spend(rows * fillRowCost + static_cast<double>(points.size()) * edgeCost);
}

// A wide pen has two edges and fills what lies between; gaps are cut along the whole way.
void Player::Pay_For_Outline(std::span<const QPointF> points) {
  const QPen pen = painter.pen();
  if (pen.style() == Qt::NoPen) return;
  const double width = pen.widthF(), pixels = static_cast<double>(size.width()) * size.height();
  for (size_t i = 1; i < points.size(); ++i) {
    const double across = std::abs(points[i].x() - points[i - 1].x()),
                 down = std::abs(points[i].y() - points[i - 1].y());
    const double length = std::hypot(across, down);
    double cost = edgeCost;
    if (width > 1)
      cost += 4 * edgeCost + wideRowCost * std::min<double>(down + width, size.height()) +
              std::min(pixels, (length + width) * width) * slowFillCost;
    else
      cost += thinStepCost * std::min(std::max(across, down), size.width() + static_cast<double>(size.height()));
    if (pen.style() != Qt::SolidLine) cost += length / (2 * width) * dashCost;
    budget.Spend(cost);
  }
}

void Player::Pay_For_Box(const QRectF& box) {
  Pay_For_Fill(box);
  const QPointF corners[] = {box.topLeft(), box.topRight(), box.bottomRight(), box.bottomLeft(), box.topLeft()};
  Pay_For_Edges(corners);
  Pay_For_Outline(corners);
}

// State -------------------------------------------------------------------------------------------------------------

void Player::Save_State() {
  // What is not kept could not be restored either, and all after it would be drawn wrongly.
  if (saved.size() >= deepestSave)
    Raise(errors::badPicture, QStringLiteral("die Zeichnung ist zu tief verschachtelt."));
  saved.push_back(state);
}

// Below 0: so many steps back; above 0: that saved state, counted from the first. Later ones are dropped with it.
void Player::Restore_State(int which) {
  const auto depth = static_cast<int>(saved.size());
  const int index = which < 0 ? depth + which : which - 1;
  if (index < 0 || index >= depth) return;
  state = saved[static_cast<size_t>(index)];
  saved.erase(saved.begin() + index, saved.end());
}

bool Player::Play_State(quint16 number, const Words& words) {
  switch (number) {
    case recSaveState:
      Save_State();
      return true;
    case recRestoreState:
      Restore_State(words.Has(0) ? words.Signed(0) : -1);
      return true;
    case recSetBkMode:
      state.opaqueBack = words.Unsigned(0) == 2;
      return true;
    case recSetRop2:
      state.rop = std::clamp(words.Unsigned(0), 1, 16);
      return true;
    case recSetPolyFillMode:
      state.winding = words.Unsigned(0) == 2;
      return true;
    case recSetTextAlign:
      state.align = words.Unsigned(0);
      return true;
    case recSetTextColor:
      state.textColor = words.Color(0);
      return true;
    case recSetBkColor:
      state.backColor = words.Color(0);
      return true;
    default:
      return false;
  }
}

bool Player::Play_Window(quint16 number, const Words& words) {
  switch (number) {
    case recSetWindowOrg:
      state.origin = {words.Signed(1), words.Signed(0)};
      return true;
    case recSetWindowExt:
      state.extent = {words.Signed(1), words.Signed(0)};
      return true;
    case recOffsetWindowOrg:
      state.origin = {Held(qint64{state.origin.x()} + words.Signed(1)),
                      Held(qint64{state.origin.y()} + words.Signed(0))};
      return true;
    case recScaleWindowExt:
      if (words.Signed(0) != 0 && words.Signed(2) != 0)
        state.extent = {Held(qint64{state.extent.width()} * words.Signed(3) / words.Signed(2)),
                        Held(qint64{state.extent.height()} * words.Signed(1) / words.Signed(0))};
      return true;
    default:
      return false;
  }
}

// Objects -----------------------------------------------------------------------------------------------------------

void Player::Add_Object(Object object) {
  if (!freePlaces.empty()) {
    objects[*freePlaces.begin()] = std::move(object);
    freePlaces.erase(freePlaces.begin());
  } else if (objects.size() < mostObjects) {
    objects.emplace_back(std::move(object));
  }
}

Object Player::Font_Of(const Words& words) const {
  FontObject font;
  const int height = words.Signed(0);
  font.height = height == 0 ? 12 : height;
  font.escapement = words.Signed(2);
  font.bold = words.Signed(4) >= 600;
  font.italic = words.Unsigned(5) & 0xFF;
  font.underline = words.Unsigned(5) >> 8;
  QByteArray name = words.Bytes(9, 32);
  if (const qsizetype end = name.indexOf('\0'); end >= 0) name.truncate(end);
  font.family = From_1252(name);
  return font;
}

bool Player::Play_Object(quint16 number, const Words& words) {
  switch (number) {
    case recCreatePen:
      Add_Object(PenObject{words.Unsigned(0) & 0xFF, words.Signed(1), words.Color(3)});
      return true;
    case recCreateBrush:
      Add_Object(BrushObject{words.Unsigned(0), words.Color(1), words.Unsigned(3)});
      return true;
    case recCreateFont:
      Add_Object(Font_Of(words));
      return true;
    case recCreatePatternBrush:
    case recCreateDibBrush:
      Add_Object(BrushObject{0, qRgb(192, 192, 192), 0});
      return true;
    case recCreatePalette:
    case recCreateRegion:
      Add_Object(OtherObject{});
      return true;
    case recDeleteObject:
      if (const auto i = static_cast<size_t>(words.Unsigned(0)); i < objects.size()) {
        objects[i].reset();
        freePlaces.insert(i);
      }
      return true;
    case recSelectObject: {
      const auto i = static_cast<size_t>(words.Unsigned(0));
      if (i >= objects.size() || !objects[i]) return true;
      if (const auto* pen = std::get_if<PenObject>(&*objects[i])) state.pen = *pen;
      if (const auto* brush = std::get_if<BrushObject>(&*objects[i])) state.brush = *brush;
      if (const auto* font = std::get_if<FontObject>(&*objects[i])) state.font = *font;
      return true;
    }
    default:
      return false;
  }
}

void Player::Take_Pen_And_Brush(bool withBrush) {
  static constexpr Qt::PenStyle styles[] = {Qt::SolidLine,      Qt::DashLine, Qt::DotLine,  Qt::DashDotLine,
                                            Qt::DashDotDotLine, Qt::NoPen,    Qt::SolidLine};
  static constexpr Qt::BrushStyle hatches[] = {Qt::HorPattern,   Qt::VerPattern,   Qt::FDiagPattern,
                                               Qt::BDiagPattern, Qt::CrossPattern, Qt::DiagCrossPattern};
  static constexpr QPainter::CompositionMode modes[] = {
      QPainter::RasterOp_ClearDestination,        QPainter::RasterOp_NotSourceAndNotDestination,
      QPainter::RasterOp_NotSourceAndDestination, QPainter::RasterOp_NotSource,
      QPainter::RasterOp_SourceAndNotDestination, QPainter::RasterOp_NotDestination,
      QPainter::RasterOp_SourceXorDestination,    QPainter::RasterOp_NotSourceOrNotDestination,
      QPainter::RasterOp_SourceAndDestination,    QPainter::RasterOp_NotSourceXorDestination,
      QPainter::CompositionMode_Destination,      QPainter::RasterOp_NotSourceOrDestination,
      QPainter::CompositionMode_SourceOver,       QPainter::RasterOp_SourceOrNotDestination,
      QPainter::RasterOp_SourceOrDestination,     QPainter::RasterOp_SetDestination,
  };
  painter.setCompositionMode(modes[static_cast<size_t>(state.rop - 1)]);
  const double width = std::clamp(std::abs(state.pen.width * ScaleX()), 1.0, 2.0 * largestSide);
  painter.setPen(QPen(QColor::fromRgb(state.pen.color), std::round(width), styles[std::min(state.pen.style, 6)],
                      Qt::FlatCap, Qt::RoundJoin));
  if (!withBrush || state.brush.style == 1)
    painter.setBrush(Qt::NoBrush);
  else if (state.brush.style == 2)
    painter.setBrush(
        QBrush(QColor::fromRgb(state.brush.color), hatches[static_cast<size_t>(std::min(state.brush.hatch, 5))]));
  else
    painter.setBrush(QColor::fromRgb(state.brush.color));
}

}  // namespace wmf
