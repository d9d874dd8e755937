#include "platform/wmf_reader.h"

#include <algorithm>
#include <cstdlib>
#include <optional>

#include "platform/error.h"
#include "platform/surface.h"
#include "platform/wmf_player.h"

using namespace wmf;

namespace {

constexpr quint32 placeableKey = 0x9AC6CDD7;
constexpr qint64 placeableBytes = 22, headBytes = 18;

bool Head_At(const QByteArray& bytes, qint64 at) {
  if (bytes.size() < at + headBytes) return false;
  const char* head = bytes.constData() + at;
  const int type = qFromLittleEndian<quint16>(head), words = qFromLittleEndian<quint16>(head + 2);
  const int version = qFromLittleEndian<quint16>(head + 4);
  return (type == 1 || type == 2) && words == 9 && (version == 0x100 || version == 0x300);
}

std::optional<Layout> Layout_Of(const QByteArray& bytes) {
  Layout layout;
  double unitsPerInch = 96;
  if (bytes.size() >= placeableBytes && Long_At(bytes, 0) == placeableKey) {
    const Words words(bytes.constData(), placeableBytes);
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

}  // namespace

bool Is_Wmf(const QByteArray& head) {
  return (head.size() >= 4 && qFromLittleEndian<quint32>(head.constData()) == placeableKey) || Head_At(head, 0);
}

QSize Wmf_Size(const QByteArray& bytes) {
  const auto layout = Layout_Of(bytes);
  return layout ? layout->size : QSize();
}

QImage Read_Wmf(const QByteArray& bytes, int milliseconds) {
  const auto layout = Layout_Of(bytes);
  if (!layout) Raise(errors::fileNotFound);
  QImage image = Make_Canvas(layout->size.width(), layout->size.height());
  Player player(image, *layout, milliseconds);
  For_Each_Record(bytes, layout->recordStart, [&](quint16 number, const Words& words) {
    player.Play(number, words);
    return true;
  });
  return image;
}
