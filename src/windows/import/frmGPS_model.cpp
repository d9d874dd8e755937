#include "windows/import/frmGPS_model.h"

#include <QApplication>
#include <QColor>
#include <QFont>
#include <QPalette>

#include "platform/symbol_fonts.h"

QString Import_Symbol_Text(QChar symbol) {
  const char32_t shown = symbol_fonts::Unicode_Of(symbol_fonts::Table::Wingdings, symbol_fonts::Code_Of(symbol));
  return shown == 0 ? QString() : QString::fromUcs4(&shown, 1);
}

QFont Import_Symbol_Font() {
  QFont font = QApplication::font();
  font.setFamily(QStringLiteral("Symbola"));
  font.setPointSizeF(font.pointSizeF() * 1.3);
  return font;
}

namespace {

// The fields are told apart by their colours.
QColor Field_Color(int field) {
  constexpr QRgb colors[] = {0x000000, 0x808080, 0x0000A0, 0x006000, 0x804000};
  return QColor::fromRgb(colors[static_cast<size_t>(field) % std::size(colors)]);
}

QString Marks(const ImportMark& mark) {
  QString text;
  if (mark.samePosition) text += u'E';
  if (mark.sameName) text += u'G';
  return text;
}

QString Marks_Tip(const ImportMark& mark) {
  QStringList lines = {Import_Status_Text(mark.status)};
  if (mark.samePosition) lines << QStringLiteral("E: ein Eintrag der Karte liegt an dieser Stelle");
  if (mark.sameName) lines << QStringLiteral("G: die Karte hat einen Eintrag dieses Namens");
  return lines.join(u'\n');
}

}  // namespace

void ImportModel::Show_List(ImportList shown) {
  beginResetModel();
  list = std::move(shown);
  endResetModel();
}

int ImportModel::rowCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : list.rows; }

int ImportModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : firstField + static_cast<int>(list.columns.size());
}

QVariant ImportModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid() || !list.mark) return {};
  const int field = index.column() - firstField;
  const bool symbol = index.column() == symbolColumn;
  switch (role) {
    case Qt::DisplayRole:
      if (symbol) return Import_Symbol_Text(Import_Symbol(list.mark(index.row()).status));
      return field < 0 ? Marks(list.mark(index.row())) : list.text(index.row(), field);
    case Qt::ToolTipRole:
      return field < 0 ? Marks_Tip(list.mark(index.row())) : list.text(index.row(), field);
    case Qt::FontRole:
      if (symbol) return Import_Symbol_Font();
      return QFont(QStringLiteral("Liberation Mono"), QApplication::font().pointSize());
    case Qt::ForegroundRole:
      return field < 0 ? QColor(Qt::red) : Field_Color(field);
    case Qt::TextAlignmentRole:
      return QVariant(field < 0 ? Qt::AlignCenter : Qt::AlignLeft | Qt::AlignVCenter);
    default:
      return {};
  }
}

QVariant ImportModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (role != Qt::DisplayRole) return {};
  if (orientation == Qt::Vertical) return section + 1;
  return section < firstField ? QString() : list.columns.value(section - firstField);
}
