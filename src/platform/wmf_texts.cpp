#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "platform/files.h"
#include "platform/fonts.h"
#include "platform/wmf_player.h"

// Texts and bitmaps of metafiles.

namespace wmf {

namespace {
constexpr double newFontCost =
    4e6;  // a font is measured and kept for good: so many that memory suffers stand in no picture
constexpr double smallestGlyph = 400;
constexpr qint64 mostBitmapPixels = 25'000'000;
constexpr double decodeCost = 2, drawCost = 5;  // a pixel
}  // namespace

void Player::Draw_Text(QPoint at, const QByteArray& bytes, std::optional<QRectF> backBox) {
  FontKey key;
  key.family = Font_Installed(state.font.family) ? state.font.family.trimmed().toLower() : QStringLiteral("Arial");
  // A height above 0 holds the room over and under the letters as well.
  const double pixels =
      std::clamp(std::round(std::abs(state.font.height * ScaleY()) * (state.font.height > 0 ? 0.87 : 1)), 1.0, 1000.0);
  key.points = pixels * 72 / 96;
  key.bold = state.font.bold;
  key.italic = state.font.italic;
  key.underline = state.font.underline;
  const QString name =
      QStringLiteral("%1 %2 %3").arg(key.family).arg(pixels).arg(key.bold + 2 * key.italic + 4 * key.underline);
  if (!fontsUsed.contains(name)) {
    budget.Spend(newFontCost);
    fontsUsed.insert(name);
  }
  budget.Spend(static_cast<double>(bytes.size()) * std::max(smallestGlyph, pixels * pixels));
  const FontFace& face = Font_Face(key);
  const QString text = face.Shown(From_1252(bytes));
  const double width = face.metrics.horizontalAdvance(text);
  const bool atPosition = state.align & 1;
  const QPointF start = atPosition ? Place(state.position.x(), state.position.y()) : Place(at.x(), at.y());
  painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
  if (backBox) {
    budget.Spend(Area_Seen(*backBox));
    painter.fillRect(*backBox, QColor::fromRgb(state.backColor));
  }
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
  const qint64 imageWidth = qFromLittleEndian<qint32>(at + 4),
               imageHeight = std::abs(static_cast<qint64>(qFromLittleEndian<qint32>(at + 8)));
  if (headSize < 40 || imageWidth <= 0 || imageHeight <= 0 || imageWidth > mostBitmapPixels ||
      imageHeight > mostBitmapPixels / imageWidth)
    return;
  const qint64 colors = bits <= 8 ? (used > 0 && used <= 256 ? used : 1 << bits) : 0;
  const qint64 masks = qFromLittleEndian<quint32>(at + 16) == 3 && headSize == 40 ? 12 : 0;
  const QRectF box = Sized_Box(words, target);
  budget.Spend(decodeCost * static_cast<double>(imageWidth * imageHeight + dib.size()) + drawCost * Area_Seen(box));
  QByteArray file("BM", 2);
  file.resize(14);
  std::fill(file.begin() + 2, file.end(), '\0');
  qToLittleEndian(static_cast<quint32>(14 + dib.size()), file.data() + 2);
  qToLittleEndian(static_cast<quint32>(14 + headSize + masks + colors * 4), file.data() + 10);
  const QImage image = QImage::fromData(file + dib, "BMP");
  if (image.isNull()) return;
  painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
  painter.drawImage(box, image);
}

}  // namespace wmf
