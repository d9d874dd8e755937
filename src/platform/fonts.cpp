#include "platform/fonts.h"

#include <QFontDatabase>
#include <QPainter>
#include <QRawFont>
#include <QSet>
#include <algorithm>
#include <cmath>
#include <unordered_map>

namespace {

constexpr double largestPixels = 2880;  // 2160 points; beyond it glyphs cost more than any sheet can show
constexpr int widest = 1 << 26;         // what a text can measure: coordinates are added to it
constexpr qint64 mostKeptBytes = qint64{96} << 20;

struct Substitute {
  const char* wanted;
  const char* drawn;
};
// Families of the tables' home, and what is drawn with the same widths.
constexpr Substitute substitutes[] = {
    {"arial", "Liberation Sans"},       {"helvetica", "Liberation Sans"}, {"ms sans serif", "Liberation Sans"},
    {"courier new", "Liberation Mono"}, {"courier", "Liberation Mono"},   {"times new roman", "Liberation Serif"},
    {"wingdings", "Symbola"},           {"symbol", "Liberation Serif"},
};

const QSet<QString>& Installed_Families() {
  static const QSet<QString> names = [] {
    QSet<QString> found;
    for (const QString& family : QFontDatabase::families()) found.insert(family.toLower());
    return found;
  }();
  return names;
}

QString Drawn_Family(const QString& family, bool& found) {
  const QString lower = family.trimmed().toLower();
  found = true;
  for (const Substitute& s : substitutes)
    if (lower == QLatin1String(s.wanted)) return QLatin1String(s.drawn);
  if (Installed_Families().contains(lower)) return family.trimmed();
  found = false;
  return QLatin1String(substitutes[0].drawn);
}

QFont Make_Font(const FontKey& key, bool smooth) {
  bool found = false;
  QStringList families{Drawn_Family(key.family, found)};
  if (Is_Symbol_Font(key.family))
    families << QStringLiteral("Symbola") << QStringLiteral("DejaVu Sans") << QStringLiteral("OpenSymbol");
  QFont font(families);
  font.setPixelSize(static_cast<int>(std::clamp(std::round(key.points * 96 / 72), 1.0, largestPixels)));
  font.setBold(key.bold);
  font.setItalic(key.italic);
  font.setUnderline(key.underline);
  font.setKerning(false);
  font.setHintingPreference(QFont::PreferFullHinting);
  font.setStyleStrategy(smooth ? QFont::StyleStrategy(QFont::PreferAntialias | QFont::NoSubpixelAntialias)
                               : QFont::NoAntialias);
  return font;
}

struct KeyHash {
  size_t operator()(const FontKey& key) const {
    return qHashMulti(0, key.family, key.points, key.bold, key.italic, key.underline, key.charset);
  }
};
// Never destroyed: fonts must not outlive the application object at the end of the program.
using Faces = std::unordered_map<FontKey, std::unique_ptr<FontFace>, KeyHash>;
Faces& All_Faces() {
  static Faces* faces = new Faces;
  return *faces;
}

}  // namespace

FontFace::FontFace(const FontKey& wanted)
    : key(wanted),
      found(Font_Installed(wanted.family)),
      symbol(Is_Symbol_Font(wanted.family)),
      font(Make_Font(wanted, true)),
      hard(Make_Font(wanted, false)),
      metrics(font),
      lineHeight(metrics.height()),
      ascent(metrics.ascent()) {
  for (size_t i = 0; i < advance.size(); ++i)
    advance[i] = static_cast<short>(metrics.horizontalAdvance(QChar(static_cast<char16_t>(i))));
}

int FontFace::ShownWidth(QStringView shown) const {
  qint64 width = 0;
  for (const QChar c : shown) {
    if (c.unicode() >= advance.size()) return std::clamp(metrics.horizontalAdvance(shown.toString()), 0, widest);
    width += advance[c.unicode()];
  }
  return static_cast<int>(std::min<qint64>(width, widest));
}

int FontFace::LineWidth(QStringView line) const {
  return symbol ? ShownWidth(Shown(line.toString())) : ShownWidth(line);
}

int FontFace::TextWidth(const QString& text) const {
  int width = 0;
  For_Each_Line(text, [&](QStringView line, int) { width = std::max(width, LineWidth(line)); });
  return width;
}

int FontFace::TextHeight(const QString& text) const {
  int count = 0;
  For_Each_Line(text, [&](QStringView, int) { ++count; });
  return LineTop(count);
}

int FontFace::LineTop(int number) const {
  return static_cast<int>(std::min<qint64>(qint64{number} * lineHeight, widest));
}

// All prepared lines of all faces.
struct KeptLines {
  quint64 clock = 0;
  qint64 bytes = 0;
  int count = 0;

  // What a line takes: the layout with its glyphs and their places, the text, the place in the table.
  static qint64 Bytes_Of(const QString& line) { return 560 + 24 * static_cast<qint64>(line.size()); }

  template <class Work>
  static void For_Each_Table(Work work) {
    for (auto& [key, face] : All_Faces())
      for (auto& table : face->lines) work(table);
  }

  void Forget_Older_Half() {
    std::vector<quint64> asked;
    asked.reserve(static_cast<size_t>(count));
    For_Each_Table([&](const auto& table) {
      for (const FontFace::Kept& kept : table) asked.push_back(kept.asked);
    });
    if (asked.empty()) return;
    const auto middle = asked.begin() + std::ssize(asked) / 2;
    std::nth_element(asked.begin(), middle, asked.end());
    For_Each_Table([&](auto& table) {
      for (auto it = table.begin(); it != table.end();) {
        if (it->asked > *middle) {
          ++it;
          continue;
        }
        bytes -= Bytes_Of(it.key());
        --count;
        it = table.erase(it);
      }
    });
  }
};

namespace {
KeptLines keptLines;
}

int Kept_Lines() { return keptLines.count; }

const QStaticText& FontFace::Prepared(const QString& line, Edge edge) const {
  auto& table = lines[edge == Edge::Hard ? 1 : 0];
  const quint64 now = ++keptLines.clock;
  if (const auto known = table.find(line); known != table.end()) {
    known->asked = now;
    return known->text;
  }
  const qint64 needed = KeptLines::Bytes_Of(line);
  if (keptLines.bytes + needed > mostKeptBytes) keptLines.Forget_Older_Half();
  QStaticText text;
  text.setTextFormat(Qt::PlainText);
  text.setPerformanceHint(QStaticText::AggressiveCaching);
  text.setText(Shown(line));
  text.prepare({}, edge == Edge::Hard ? hard : font);
  keptLines.bytes += needed;
  ++keptLines.count;
  return table.insert(line, {text, now})->text;
}

// Letter by letter, of families that are known to put none together but "ff", "fi" and "fl".
FontFace::Glyphs& FontFace::Plain_Glyphs() const {
  auto& made = plainGlyphs;
  if (made) return *made;
  made = std::make_unique<Glyphs>();
  const QRawFont raw = QRawFont::fromFont(font);
  constexpr int largest = 60;  // pixels; beyond it letters are outlines that are filled together
  if (symbol || key.underline || font.pixelSize() > largest || !raw.isValid() ||
      !font.family().startsWith(QLatin1String("Liberation")))
    return *made;
  made->run.setRawFont(raw);
  const auto take = [&](int from, int to) {
    for (int code = from; code <= to; ++code) {
      const QList<quint32> glyphs = raw.glyphIndexesForString(QString(QChar(code)));
      if (glyphs.size() == 1) made->numbers[static_cast<size_t>(code)] = glyphs.front();
    }
  };
  constexpr int softHyphen = 0xad;
  take(0x20, 0x7e);
  take(0xa0, softHyphen - 1);
  take(softHyphen + 1, 0xff);
  return *made;
}

bool FontFace::Draw_Plain(QPainter& painter, QPoint baseline, QStringView line) const {
  constexpr qsizetype longest = 200;
  Glyphs& glyphs = Plain_Glyphs();
  std::array<quint32, longest> numbers;
  std::array<QPointF, longest> places;
  if (line.size() > longest) return false;
  int x = 0, count = 0;
  for (qsizetype i = 0; i < line.size(); ++i) {
    const char16_t code = line[i].unicode();
    const auto index = static_cast<size_t>(count);
    numbers[index] = code < glyphs.numbers.size() ? glyphs.numbers[code] : 0;
    if (numbers[index] == 0) return false;
    if (code == u'f' && i + 1 < line.size()) {
      const char16_t next = line[i + 1].unicode();
      if (next == u'f' || next == u'i' || next == u'l') return false;
    }
    places[index] = {static_cast<double>(x), 0};
    x += advance[code];
    ++count;
  }
  glyphs.run.setRawData(numbers.data(), places.data(), count);
  painter.drawGlyphRun(baseline, glyphs.run);
  return true;
}

const FontFace& Font_Face(const FontKey& key) {
  if (!std::isfinite(key.points)) {  // such a key equals none, not even itself
    FontKey sound = key;
    sound.points = FontKey().points;
    return Font_Face(sound);
  }
  auto& face = All_Faces()[key];
  if (!face) face = std::make_unique<FontFace>(key);
  return *face;
}

bool Font_Installed(const QString& family) {
  bool found = false;
  Drawn_Family(family, found);
  return found;
}
