#include "platform/wmf_reader.h"

#include <QPainter>
#include <QPainterPath>
#include <QtEndian>
#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <optional>
#include <variant>
#include <vector>

#include "platform/error.h"
#include "platform/files.h"
#include "platform/fonts.h"

namespace {

constexpr quint32 placeableKey = 0x9AC6CDD7;
constexpr int largestSide = 4096;  // a larger picture is reduced: lines have no pixels of their own
constexpr qint64 placeableBytes = 22, headBytes = 18;

// Record numbers.
enum : quint16 {
  recSaveState = 0x001E,
  recRestoreState = 0x0127,
  recSetBkMode = 0x0102,
  recSetRop2 = 0x0104,
  recSetPolyFillMode = 0x0106,
  recSetTextAlign = 0x012E,
  recSetTextColor = 0x0209,
  recSetBkColor = 0x0201,
  recSetWindowOrg = 0x020B,
  recSetWindowExt = 0x020C,
  recOffsetWindowOrg = 0x020F,
  recScaleWindowExt = 0x0410,
  recMoveTo = 0x0214,
  recLineTo = 0x0213,
  recRectangle = 0x041B,
  recRoundRect = 0x061C,
  recEllipse = 0x0418,
  recArc = 0x0817,
  recPie = 0x081A,
  recChord = 0x0830,
  recPolygon = 0x0324,
  recPolyline = 0x0325,
  recPolyPolygon = 0x0538,
  recSetPixel = 0x041F,
  recPatBlt = 0x061D,
  recTextOut = 0x0521,
  recExtTextOut = 0x0A32,
  recSelectObject = 0x012D,
  recDeleteObject = 0x01F0,
  recCreatePen = 0x02FA,
  recCreateBrush = 0x02FC,
  recCreateFont = 0x02FB,
  recCreatePatternBrush = 0x01F9,
  recCreateDibBrush = 0x0142,
  recCreatePalette = 0x00F7,
  recCreateRegion = 0x06FF,
  recStretchDib = 0x0F43,
  recDibStretchBlt = 0x0B41,
  recDibBitBlt = 0x0940,
};

struct PenObject {
  int style = 0, width = 0;
  QRgb color = 0xff000000;
};
struct BrushObject {
  int style = 0;
  QRgb color = 0xffffffff;
  int hatch = 0;
};
struct FontObject {
  int height = 12, escapement = 0;
  bool bold = false, italic = false, underline = false;
  QString family;
};
struct OtherObject {};
using Object = std::variant<OtherObject, PenObject, BrushObject, FontObject>;

struct DrawingState {
  QPoint origin;
  QSize extent;
  PenObject pen;
  BrushObject brush;
  FontObject font;
  QRgb textColor = 0xff000000, backColor = 0xffffffff;
  bool opaqueBack = true, winding = false;
  int align = 0, rop = 13;
  QPoint position;
};

// Parameters of a record: words counted from 0; what lies beyond the end reads as 0.
class Words {
 public:
  Words(const char* start, qint64 bytes) : at(start), size(bytes) {}
  int Signed(qint64 word) const { return static_cast<qint16>(Unsigned(word)); }
  int Unsigned(qint64 word) const { return Has(word) ? qFromLittleEndian<quint16>(at + word * 2) : 0; }
  QRgb Color(qint64 word) const { return qRgb(Unsigned(word) & 0xFF, Unsigned(word) >> 8, Unsigned(word + 1) & 0xFF); }
  bool Has(qint64 word) const { return word >= 0 && word * 2 + 2 <= size; }
  qint64 Count() const { return size / 2; }
  QByteArray Bytes(qint64 word, qint64 count) const {
    const qint64 from = std::clamp<qint64>(word * 2, 0, size);
    return {at + from, static_cast<qsizetype>(std::clamp<qint64>(count, 0, size - from))};
  }

 private:
  const char* at;
  qint64 size;
};

struct Layout {
  qint64 recordStart = 0;
  QRect box;   // in the picture's units
  QSize size;  // pixels
  bool placeable = false;
};

// 32 bits at a place; 0 beyond the end.
quint32 Long_At(const QByteArray& bytes, qint64 at) {
  const QByteArray four = bytes.mid(at, 4);
  return four.size() == 4 ? qFromLittleEndian<quint32>(four.constData()) : 0;
}

bool Head_At(const QByteArray& bytes, qint64 at) {
  if (bytes.size() < at + headBytes) return false;
  const char* head = bytes.constData() + at;
  const int type = qFromLittleEndian<quint16>(head), words = qFromLittleEndian<quint16>(head + 2);
  const int version = qFromLittleEndian<quint16>(head + 4);
  return (type == 1 || type == 2) && words == 9 && (version == 0x100 || version == 0x300);
}

// Calls `take(number, parameters)` for each record until it returns false or the end is met.
template <class Take>
void For_Each_Record(const QByteArray& bytes, qint64 at, Take take) {
  while (at + 6 <= bytes.size()) {
    const qint64 length = static_cast<qint64>(Long_At(bytes, at)) * 2;
    const quint16 number = qFromLittleEndian<quint16>(bytes.constData() + at + 4);
    if (length < 6 || number == 0) return;
    const qint64 end = std::min<qint64>(at + length, bytes.size());
    if (!take(number, Words(bytes.constData() + at + 6, end - at - 6))) return;
    at = end;
  }
}

std::optional<Layout> Layout_Of(const QByteArray& bytes) {
  Layout layout;
  double unitsPerInch = 96;
  if (bytes.size() >= placeableBytes && Long_At(bytes, 0) == placeableKey) {
    const Words words(bytes.constData(), placeableBytes);
    layout.placeable = true;
    layout.box = QRect(QPoint(std::min(words.Signed(3), words.Signed(5)), std::min(words.Signed(4), words.Signed(6))),
                       QSize(std::abs(words.Signed(5) - words.Signed(3)), std::abs(words.Signed(6) - words.Signed(4))));
    if (words.Unsigned(7) > 0) unitsPerInch = words.Unsigned(7);
    layout.recordStart = placeableBytes;
  }
  if (!Head_At(bytes, layout.recordStart)) return {};
  layout.recordStart += headBytes;
  if (layout.box.isEmpty()) {
    QPoint origin;
    For_Each_Record(bytes, layout.recordStart, [&](quint16 number, const Words& words) {
      if (number == recSetWindowOrg) origin = {words.Signed(1), words.Signed(0)};
      if (number != recSetWindowExt) return true;
      layout.box = QRect(origin, QSize(std::abs(words.Signed(1)), std::abs(words.Signed(0))));
      return false;
    });
    unitsPerInch = 96;
  }
  if (layout.box.isEmpty()) layout.box = QRect(0, 0, 320, 240);
  double width = layout.box.width() * 96 / unitsPerInch, height = layout.box.height() * 96 / unitsPerInch;
  const double reduce = std::min(1.0, largestSide / std::max(width, height));
  layout.size = QSize(std::max(1, qRound(width * reduce)), std::max(1, qRound(height * reduce)));
  return layout;
}

class Player {
 public:
  Player(QImage& image, const Layout& layout) : painter(&image), size(image.size()) {
    state.origin = layout.box.topLeft();
    state.extent = layout.box.size();
  }
  void Play(quint16 number, const Words& words);

 private:
  bool Play_State(quint16 number, const Words& words);
  bool Play_Object(quint16 number, const Words& words);
  bool Play_Shape(quint16 number, const Words& words);
  void Play_Text(quint16 number, const Words& words);
  void Play_Bitmap(quint16 number, const Words& words);
  void Add_Object(Object object);
  Object Font_Of(const Words& words) const;
  void Poly_Polygon(const Words& words);
  void Arc(quint16 number, const Words& words);
  void Draw_Text(QPoint at, const QByteArray& bytes, std::optional<QRectF> backBox);

  double ScaleX() const {
    return static_cast<double>(size.width()) / (state.extent.width() ? state.extent.width() : 1);
  }
  double ScaleY() const {
    return static_cast<double>(size.height()) / (state.extent.height() ? state.extent.height() : 1);
  }
  QPointF Place(int x, int y) const { return {(x - state.origin.x()) * ScaleX(), (y - state.origin.y()) * ScaleY()}; }
  // Box of a record that gives bottom, right, top, left.
  QRectF Box(const Words& words, qint64 first) const {
    return QRectF(Place(words.Signed(first + 3), words.Signed(first + 2)),
                  Place(words.Signed(first + 1), words.Signed(first)))
        .normalized();
  }
  QList<QPointF> Points(const Words& words, qint64 first, qint64 count) const;
  void Take_Pen_And_Brush(bool withBrush);

  QPainter painter;
  QSize size;
  DrawingState state;
  std::vector<DrawingState> saved;
  std::vector<std::optional<Object>> objects;
};

void Player::Play(quint16 number, const Words& words) {
  if (Play_State(number, words) || Play_Object(number, words) || Play_Shape(number, words)) return;
  if (number == recTextOut || number == recExtTextOut) return Play_Text(number, words);
  if (number == recStretchDib || number == recDibStretchBlt || number == recDibBitBlt) Play_Bitmap(number, words);
}

bool Player::Play_State(quint16 number, const Words& words) {
  switch (number) {
    case recSaveState:
      if (saved.size() < 256) saved.push_back(state);
      return true;
    case recRestoreState:
      if (!saved.empty()) {
        state = saved.back();
        saved.pop_back();
      }
      return true;
    case recSetBkMode:
      state.opaqueBack = words.Unsigned(0) == 2;
      return true;
    case recSetRop2:
      state.rop = words.Unsigned(0);
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
    case recSetWindowOrg:
      state.origin = {words.Signed(1), words.Signed(0)};
      return true;
    case recSetWindowExt:
      state.extent = {words.Signed(1), words.Signed(0)};
      return true;
    case recOffsetWindowOrg:
      state.origin += QPoint(words.Signed(1), words.Signed(0));
      return true;
    case recScaleWindowExt:
      if (words.Signed(0) != 0 && words.Signed(2) != 0)
        state.extent = {state.extent.width() * words.Signed(3) / words.Signed(2),
                        state.extent.height() * words.Signed(1) / words.Signed(0)};
      return true;
    default:
      return false;
  }
}

void Player::Add_Object(Object object) {
  for (auto& place : objects)
    if (!place) {
      place = std::move(object);
      return;
    }
  if (objects.size() < 65536) objects.emplace_back(std::move(object));
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
      if (const auto i = static_cast<size_t>(words.Unsigned(0)); i < objects.size()) objects[i].reset();
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
  painter.setCompositionMode(modes[static_cast<size_t>(std::clamp(state.rop, 1, 16) - 1)]);
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

QList<QPointF> Player::Points(const Words& words, qint64 first, qint64 count) const {
  QList<QPointF> points;
  for (qint64 i = 0; i < count && words.Has(first + 2 * i + 1); ++i)
    points << Place(words.Signed(first + 2 * i), words.Signed(first + 2 * i + 1));
  return points;
}

void Player::Poly_Polygon(const Words& words) {
  const int rings = words.Unsigned(0);
  qint64 at = 1 + rings;
  QPainterPath path;
  path.setFillRule(state.winding ? Qt::WindingFill : Qt::OddEvenFill);
  for (int ring = 0; ring < rings && words.Has(at); ++ring) {
    const int count = words.Unsigned(1 + ring);
    path.addPolygon(QPolygonF(Points(words, at, count)));
    path.closeSubpath();
    at += 2 * static_cast<qint64>(count);
  }
  painter.drawPath(path);
}

// Start and end are directions from the middle of the box, walked counter-clockwise.
void Player::Arc(quint16 number, const Words& words) {
  const QRectF box = Box(words, 4);
  const auto angle = [&](qint64 first) {
    const QPointF d = Place(words.Signed(first + 1), words.Signed(first)) - box.center();
    return std::atan2(-d.y(), d.x()) * 180 / M_PI;
  };
  const double start = angle(2), end = angle(0);
  const double span = end > start ? end - start : end - start + 360;
  const int start16 = qRound(start * 16), span16 = qRound(span * 16);
  if (number == recPie)
    painter.drawPie(box, start16, span16);
  else if (number == recChord)
    painter.drawChord(box, start16, span16);
  else
    painter.drawArc(box, start16, span16);
}

bool Player::Play_Shape(quint16 number, const Words& words) {
  switch (number) {
    case recMoveTo:
      state.position = {words.Signed(1), words.Signed(0)};
      return true;
    case recLineTo: {
      Take_Pen_And_Brush(false);
      const QPoint to(words.Signed(1), words.Signed(0));
      painter.drawLine(Place(state.position.x(), state.position.y()), Place(to.x(), to.y()));
      state.position = to;
      return true;
    }
    case recRectangle:
      Take_Pen_And_Brush(true);
      painter.drawRect(Box(words, 0).adjusted(0, 0, -1, -1));
      return true;
    case recRoundRect: {
      Take_Pen_And_Brush(true);
      const double rx = std::abs(words.Signed(1) * ScaleX() / 2), ry = std::abs(words.Signed(0) * ScaleY() / 2);
      painter.drawRoundedRect(Box(words, 2).adjusted(0, 0, -1, -1), rx, ry);
      return true;
    }
    case recEllipse:
      Take_Pen_And_Brush(true);
      painter.drawEllipse(Box(words, 0).adjusted(0, 0, -1, -1));
      return true;
    case recArc:
    case recPie:
    case recChord:
      Take_Pen_And_Brush(number != recArc);
      Arc(number, words);
      return true;
    case recPolyline: {
      Take_Pen_And_Brush(false);
      painter.drawPolyline(QPolygonF(Points(words, 1, words.Unsigned(0))));
      return true;
    }
    case recPolygon: {
      Take_Pen_And_Brush(true);
      painter.drawPolygon(QPolygonF(Points(words, 1, words.Unsigned(0))),
                          state.winding ? Qt::WindingFill : Qt::OddEvenFill);
      return true;
    }
    case recPolyPolygon:
      Take_Pen_And_Brush(true);
      Poly_Polygon(words);
      return true;
    case recSetPixel: {
      Take_Pen_And_Brush(false);
      painter.fillRect(QRectF(Place(words.Signed(3), words.Signed(2)), QSizeF(1, 1)), QColor::fromRgb(words.Color(0)));
      return true;
    }
    case recPatBlt: {
      Take_Pen_And_Brush(true);
      const QPointF at = Place(words.Signed(5), words.Signed(4));
      const QRectF box = QRectF(at, QSizeF(words.Signed(3) * ScaleX(), words.Signed(2) * ScaleY())).normalized();
      const int operation = words.Unsigned(1);  // 0x42 blackness, 0x62 whiteness, else the brush
      if (operation == 0x42 || operation == 0x62)
        painter.fillRect(box, operation == 0x42 ? Qt::black : Qt::white);
      else
        painter.fillRect(box, painter.brush());
      return true;
    }
    default:
      return false;
  }
}

void Player::Draw_Text(QPoint at, const QByteArray& bytes, std::optional<QRectF> backBox) {
  FontKey key;
  key.family = state.font.family.isEmpty() ? QStringLiteral("Arial") : state.font.family;
  // A height above 0 holds the room over and under the letters as well.
  const double pixels = std::abs(state.font.height * ScaleY()) * (state.font.height > 0 ? 0.87 : 1);
  key.points = std::clamp(std::round(pixels), 1.0, 1000.0) * 72 / 96;
  key.bold = state.font.bold;
  key.italic = state.font.italic;
  key.underline = state.font.underline;
  const FontFace& face = Font_Face(key);
  const QString text = face.Shown(From_1252(bytes));
  const double width = face.metrics.horizontalAdvance(text);
  const bool atPosition = state.align & 1;
  const QPointF start = atPosition ? Place(state.position.x(), state.position.y()) : Place(at.x(), at.y());
  painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
  if (backBox) painter.fillRect(*backBox, QColor::fromRgb(state.backColor));
  const int across = state.align & 6, along = state.align & 24;
  const double left = across == 6 ? -width / 2 : across == 2 ? -width : 0;
  const double base = along == 24 ? 0 : along == 8 ? -face.metrics.descent() : face.ascent;
  painter.save();
  painter.translate(start);
  painter.rotate(-state.font.escapement / 10.0);
  if (state.opaqueBack && !backBox)
    painter.fillRect(QRectF(left, base - face.ascent, width, face.lineHeight), QColor::fromRgb(state.backColor));
  painter.setPen(QColor::fromRgb(state.textColor));
  painter.setFont(face.font);
  painter.drawText(QPointF(left, base), text);
  painter.restore();
}

void Player::Play_Text(quint16 number, const Words& words) {
  if (number == recTextOut) {
    const int length = words.Unsigned(0);
    const qint64 after = 1 + (length + 1) / 2;
    Draw_Text({words.Signed(after + 1), words.Signed(after)}, words.Bytes(1, length), {});
    return;
  }
  const QPoint at(words.Signed(1), words.Signed(0));
  const int options = words.Unsigned(3);
  const bool opaqueBox = options & 2, hasBox = options & 6;
  std::optional<QRectF> box;
  if (opaqueBox)
    box = QRectF(Place(words.Signed(4), words.Signed(5)), Place(words.Signed(6), words.Signed(7))).normalized();
  Draw_Text(at, words.Bytes(hasBox ? 8 : 4, words.Unsigned(2)), box);
}

// A bitmap without its file head stands in the record; the image library reads it with one put before it.
void Player::Play_Bitmap(quint16 number, const Words& words) {
  const bool stretchDib = number == recStretchDib, blit = number == recDibBitBlt;
  const qint64 first = stretchDib ? 3 : 2;  // behind the operation (and the use of colours)
  const qint64 bitmapAt = stretchDib ? 11 : blit ? 8 : 10;
  // Source height, width, y, x, then target height, width, y, x; a blit has one size only.
  const qint64 target = blit ? first + 2 : first + 4;
  const QByteArray dib = words.Bytes(bitmapAt, words.Count() * 2);
  if (dib.size() < 40) return;
  const char* at = dib.constData();
  const quint32 headSize = qFromLittleEndian<quint32>(at), used = qFromLittleEndian<quint32>(at + 32);
  const int bits = qFromLittleEndian<quint16>(at + 14);
  const qint64 imageWidth = qFromLittleEndian<qint32>(at + 4), imageHeight = qFromLittleEndian<qint32>(at + 8);
  if (headSize < 40 || imageWidth <= 0 || imageWidth > 20000 || std::abs(imageHeight) > 20000) return;
  const qint64 colors = bits <= 8 ? (used > 0 && used <= 256 ? used : 1 << bits) : 0;
  const qint64 masks = qFromLittleEndian<quint32>(at + 16) == 3 && headSize == 40 ? 12 : 0;
  QByteArray file("BM", 2);
  file.resize(14);
  std::fill(file.begin() + 2, file.end(), '\0');
  qToLittleEndian(static_cast<quint32>(14 + dib.size()), file.data() + 2);
  qToLittleEndian(static_cast<quint32>(14 + headSize + masks + colors * 4), file.data() + 10);
  const QImage image = QImage::fromData(file + dib, "BMP");
  if (image.isNull()) return;
  const QPointF place = Place(words.Signed(target + 3), words.Signed(target + 2));
  const QRectF box =
      QRectF(place, QSizeF(words.Signed(target + 1) * ScaleX(), words.Signed(target) * ScaleY())).normalized();
  painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
  painter.drawImage(box, image);
}

}  // namespace

bool Is_Wmf(const QByteArray& head) {
  return (head.size() >= 4 && qFromLittleEndian<quint32>(head.constData()) == placeableKey) || Head_At(head, 0);
}

QSize Wmf_Size(const QByteArray& bytes) {
  const auto layout = Layout_Of(bytes);
  return layout ? layout->size : QSize();
}

QImage Read_Wmf(const QByteArray& bytes) {
  const auto layout = Layout_Of(bytes);
  if (!layout) Raise(errors::fileNotFound);
  QImage image = Make_Canvas(layout->size.width(), layout->size.height());
  Player player(image, *layout);
  For_Each_Record(bytes, layout->recordStart, [&](quint16 number, const Words& words) {
    player.Play(number, words);
    return true;
  });
  return image;
}
