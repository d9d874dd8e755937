#pragma once
#include <QPoint>
#include <QSet>
#include <QString>

#include "store/font_spec.h"

// A text as it was typed, with the look it is to have.
struct TypedText {
  QPoint at;  // map pixels
  QString text;
  FontSpec font;  // a row that has a family keeps it, and its angle
  double size = 10;
  int VG = 0, HG = 14, RA = 0;
};
enum class TextRow { New, Current };
// Stores it as a new row or in the current one, which is the current row afterwards. Nothing that the row's kind keeps
// elsewhere is written: a scale bar keeps all of it. False if it is too long for the column, which is told, and on the
// header and hidden rows. Raises what the table raises; nothing is changed then.
bool Save_Text_Entry(const TypedText& typed, TextRow row);
inline constexpr int longestText = 253;  // characters the edit box takes
// Deletes the current entry after a question (unless it was asked already), with its vertex table. False if it stayed.
bool Delete_Entry(bool asked = false);
// Deletes the rows with the vertex tables that no other row draws from, in one transaction; the header row stays. With
// the scale bar goes the scale of the map; the one marked before it follows the one marked last. The cursor is on any
// row afterwards. How many it were.
int Delete_Entries(const QSet<qint64>& keys);
// Foot point of the current row, if it is a text or a picture, in map pixels.
void Set_Foot_Point(QPoint map);
// Brings the twelve columns of the current row to sound values. True if something was changed.
bool Repair_Row();
// The typed text without leading and trailing blanks if the option says so.
QString Trimmed_Input(const QString& text);
