#pragma once
#include <QFont>
#include <QFontMetrics>
#include <QGlyphRun>
#include <QHash>
#include <QStaticText>
#include <QString>
#include <array>
#include <memory>

#include "platform/surface.h"

class QPainter;

// One font as it is drawn: the installed family that stands for the wanted one, in whole pixels, without kerning, so
// that widths are whole numbers, add up character by character and are the same on every machine.
class FontFace {
 public:
  explicit FontFace(const FontKey& wanted);
  const FontKey key;
  const bool found;   // the family or what stands for it is installed
  const bool symbol;  // characters are codes of a symbol table
  const QFont font;
  const QFont hard;  // without smoothing, for the modes in which every pixel counts whole
  const QFontMetrics metrics;
  const int lineHeight, ascent;

  // Text as it is drawn: that of a symbol font becomes Unicode.
  QString Shown(const QString& line) const { return symbol ? Symbol_Text(key.family, line) : line; }
  // Width of one line, from the table of the first 256 characters or, beyond them, from the font itself.
  int LineWidth(QStringView line) const;
  // Widest of all lines; the text ends a line with CR, LF or CR LF.
  int TextWidth(const QString& text) const;
  int TextHeight(const QString& text) const;  // lines * lineHeight
  int LineTop(int number) const;              // of a line below the first, which has number 0
  // The line ready to be drawn in `font` or `hard`, kept for the next time. All faces together keep what fits into 96
  // megabytes; beyond that the half that was asked for longest ago goes.
  enum class Edge { Smooth, Hard };
  const QStaticText& Prepared(const QString& line, Edge edge) const;  // valid until the next call
  // Draws a line of plain letters in `font`, glyph by glyph, with nothing prepared or kept. False, and nothing is
  // drawn, where its look takes more than that.
  bool Draw_Plain(QPainter& painter, QPoint baseline, QStringView line) const;

 private:
  friend struct KeptLines;
  struct Kept {
    QStaticText text;
    quint64 asked = 0;  // when it was asked for last
  };
  // Of the first 256 characters; 0 where a character is no plain letter of the font.
  struct Glyphs {
    QGlyphRun run;
    std::array<quint32, 256> numbers{};
  };
  int ShownWidth(QStringView shown) const;
  Glyphs& Plain_Glyphs() const;
  std::array<short, 256> advance{};
  mutable std::array<QHash<QString, Kept>, 2> lines;  // by edge
  mutable std::unique_ptr<Glyphs> plainGlyphs;        // made when they are needed
};

// The face of a key; made once and kept. Valid for good.
const FontFace& Font_Face(const FontKey& key);

int Kept_Lines();  // how many prepared lines all faces keep now

// Calls `draw(line, number)` for each line of a text.
template <class Draw>
void For_Each_Line(const QString& text, Draw draw) {
  int number = 0;
  qsizetype start = 0;
  for (qsizetype i = 0; i < text.size(); ++i) {
    const QChar c = text[i];
    if (c != QLatin1Char('\r') && c != QLatin1Char('\n')) continue;
    draw(QStringView(text).mid(start, i - start), number++);
    if (c == QLatin1Char('\r') && i + 1 < text.size() && text[i + 1] == QLatin1Char('\n')) ++i;
    start = i + 1;
  }
  draw(QStringView(text).mid(start), number);
}
