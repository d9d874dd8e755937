#include "windows/objects/frm_symbol_table.h"

#include <QComboBox>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QToolTip>

#include "platform/fonts.h"
#include "platform/symbol_fonts.h"
#include "platform/text.h"

namespace {

constexpr int columns = 16, rows = 14, firstCode = 0x20;
constexpr int cell = 27, signPoints = 14;
constexpr int asciiCount = 96;  // the lower part of every script

// Where the 128 characters of a script's own begin; 0: those of Windows-1252.
char16_t First_Of_Script(int charset) {
  switch (charset) {
    case 238:
    case 162:
    case 186:
      return 0x0100;
    case 161:
      return 0x0380;
    case 204:
      return 0x0400;
    case 177:
      return 0x0580;
    case 178:
      return 0x0600;
    case 163:
      return 0x1E80;
    default:
      return 0;
  }
}

std::vector<QChar> Characters_Of(const QString& family, int charset) {
  const char16_t own = Is_Symbol_Font(family) ? u'\0' : First_Of_Script(charset);
  std::vector<QChar> all;
  for (int i = 0; i < columns * rows; ++i)
    all.push_back(own != 0 && i >= asciiCount ? QChar(static_cast<char16_t>(own + i - asciiCount))
                                              : symbol_fonts::Character_Of(firstCode + i));
  return all;
}

// What stands for a character; empty where the font has no sign for it.
QString Sign_Of(const QString& family, QChar character) {
  const auto table = symbol_fonts::Table_Of(family);
  if (table == symbol_fonts::Table::None) return character.isPrint() ? QString(character) : QString();
  const char32_t unicode = symbol_fonts::Unicode_Of(table, symbol_fonts::Code_Of(character));
  return unicode == 0 ? QString() : QString::fromUcs4(&unicode, 1);
}

}  // namespace

SymbolTable::SymbolTable(QWidget* parent) : QWidget(parent) {
  setFocusPolicy(Qt::StrongFocus);
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
  setCursor(Qt::PointingHandCursor);
}

QSize SymbolTable::sizeHint() const { return {columns * cell + 1, rows * cell + 1}; }

void SymbolTable::Set_Font(const QString& newFamily, int newCharset) {
  if (newFamily == family && newCharset == charset && !characters.empty()) return;
  const QChar former = Selected();
  family = newFamily;
  charset = newCharset;
  characters = Characters_Of(family, charset);
  rgcard = {};
  Select(former);
  update();
}

void SymbolTable::Select(QChar character) {
  const auto found = std::find(characters.begin(), characters.end(), character);
  int index = found == characters.end() ? -1 : static_cast<int>(found - characters.begin());
  // Symbols may be stored by the codes of the private zone as well.
  if (const int code = symbol_fonts::Code_Of(character); index < 0 && Is_Symbol_Font(family) && code > 0)
    index = code - firstCode;
  Move_To(index);
}

QChar SymbolTable::Selected() const { return selected < 0 ? QChar() : characters[static_cast<size_t>(selected)]; }

QRect SymbolTable::Cell(int index) const {
  return {index % columns * cell, index / columns * cell, cell + 1, cell + 1};
}

int SymbolTable::Index_At(QPoint place) const {
  const int column = place.x() / cell, row = place.y() / cell;
  const bool inside = place.x() >= 0 && place.y() >= 0 && column < columns && row < rows;
  return inside && !characters.empty() ? row * columns + column : -1;
}

void SymbolTable::Move_To(int index) {
  if (index == selected) return;
  if (selected >= 0) update(Cell(selected));
  selected = index;
  if (selected >= 0) update(Cell(selected));
}

void SymbolTable::Font_Show() {
  const double ratio = devicePixelRatioF();
  rgcard = QPixmap((QSizeF(sizeHint()) * ratio).toSize());
  rgcard.setDevicePixelRatio(ratio);
  rgcard.fill(Qt::white);
  QPainter painter(&rgcard);
  painter.setPen(QColor(208, 208, 208));
  for (int x = 0; x <= columns; ++x) painter.drawLine(x * cell, 0, x * cell, rows * cell);
  for (int y = 0; y <= rows; ++y) painter.drawLine(0, y * cell, columns * cell, y * cell);
  const FontFace& face = Font_Face({family, signPoints});
  QFont small = font();
  small.setPixelSize(9);
  painter.setPen(Qt::black);
  painter.setFont(face.font);
  for (size_t i = 0; i < characters.size(); ++i) {
    const QString sign = Sign_Of(family, characters[i]);
    const QRect box = Cell(static_cast<int>(i));
    painter.setClipRect(box);
    if (!sign.isEmpty()) {
      painter.drawText(box, Qt::AlignCenter, sign);
      continue;
    }
    painter.setFont(small);
    painter.drawRect(box.adjusted(4, 6, -5, -7));
    painter.drawText(box, Qt::AlignCenter, QString::number(firstCode + static_cast<int>(i)));
    painter.setFont(face.font);
  }
}

void SymbolTable::paintEvent(QPaintEvent*) {
  if (rgcard.isNull() && !characters.empty()) Font_Show();
  QPainter painter(this);
  painter.drawPixmap(0, 0, rgcard);
  if (selected < 0) return;
  const QRect box = Cell(selected);
  painter.setPen(QPen(palette().color(QPalette::Highlight), 2));
  painter.drawRect(box.adjusted(1, 1, -1, -1));
  if (!hasFocus()) return;
  QColor veil = palette().color(QPalette::Highlight);
  veil.setAlpha(60);
  painter.fillRect(box, veil);
}

void SymbolTable::mousePressEvent(QMouseEvent* event) {
  const int index = Index_At(event->position().toPoint());
  if (event->button() != Qt::LeftButton || index < 0) return;
  Move_To(index);
  Q_EMIT Picked(Selected());
}

void SymbolTable::keyPressEvent(QKeyEvent* event) {
  const int last = static_cast<int>(characters.size()) - 1;
  const int at = std::max(selected, 0);
  const auto go = [&](int index) {
    if (index >= 0 && index <= last) Move_To(index);
  };
  switch (event->key()) {
    case Qt::Key_Left:
      return go(at - 1);
    case Qt::Key_Right:
      return go(at + 1);
    case Qt::Key_Up:
      return go(at - columns);
    case Qt::Key_Down:
      return go(at + columns);
    case Qt::Key_Home:
      return go(0);
    case Qt::Key_End:
      return go(last);
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Space:
      if (selected >= 0) Q_EMIT Picked(Selected());
      return;
    default:
      QWidget::keyPressEvent(event);
  }
}

bool SymbolTable::event(QEvent* event) {
  if (event->type() != QEvent::ToolTip) return QWidget::event(event);
  const auto* help = static_cast<QHelpEvent*>(event);
  const int index = Index_At(help->pos());
  if (index < 0) {
    QToolTip::hideText();
  } else {
    const QChar character = characters[static_cast<size_t>(index)];
    const bool symbol = Is_Symbol_Font(family);
    QToolTip::showText(help->globalPos(),
                       QStringLiteral("Maustaste: Zeichen auswählen\nZeichen %1")
                           .arg(symbol ? symbol_fonts::Code_Of(character) : static_cast<int>(character.unicode())),
                       this, Cell(index));
  }
  return true;
}

// Lists --------------------------------------------------------------------------------------------------------------

const std::vector<Script>& Scripts() {
  static const std::vector<Script> all = {
      {"Western", 0},    {"Baltic", 186},           {"Hebräisch", 177},  {"Arabisch", 178},      {"Griechisch", 161},
      {"Türkisch", 162}, {"Mitteleuropäisch", 238}, {"Kyrillisch", 204}, {"Vietnamesisch", 163}, {"Symbol", 2}};
  return all;
}

void Fill_Scripts(QComboBox& list, int charset) {
  if (list.count() == 0)
    for (const Script& script : Scripts()) list.addItem(QString::fromUtf8(script.name), script.charset);
  if (list.findData(charset) < 0) list.addItem(QStringLiteral("Zeichensatz %1").arg(charset), charset);
  list.setCurrentIndex(list.findData(charset));
}

int Chosen_Script(const QComboBox& list) { return list.currentData().toInt(); }

void Fill_Font_Sizes(QComboBox& list, double size) {
  if (list.count() == 0) {
    for (int points = 8; points <= 12; ++points) list.addItem(QString::number(points));
    for (int points = 14; points <= 72; points += 2) list.addItem(QString::number(points));
  }
  list.setCurrentText(Number_Text(size).replace(u'.', u','));
}
