#pragma once
#include <QPoint>
#include <QSet>
#include <QString>

// Saving a text from the edit box (Map.Text2) at window position x, y. False if nothing was saved (too long: message, and
// the edit box stays as it is). Afterwards Map.Text2.Tag is "Old" and the row is the current one.
bool Save_Text_Entry(int x, int y, QString text);
// A new text row at a map position, in the font of the edit box and the colours of the next entry; it is the current row
// then. False if it is too long for the column, which is told. Raises what the table raises; nothing is changed then.
bool Append_Text_Entry(QPoint map, const QString& typed);
inline constexpr int longestText = 253;  // characters the edit box takes
// Deletes the current entry after a question (unless it was asked already), with its vertex table. False if it stayed.
// With Map.RemoveReferenceOnly only its reference line goes.
bool Delete_Entry(bool asked = false);
struct DeletedEntries {
  int count = 0;
  bool planSquare = false;  // was one among them?
};
// Deletes the rows with the vertex tables that no other row draws from, in one transaction; the header row stays. With
// the scale bar goes the scale of the map; the one marked before it follows the one marked last. The cursor is on any row afterwards.
DeletedEntries Delete_Entries(const QSet<qint64>& keys);
// Foot point of the current text or picture row at window position x, y.
void Set_Foot_Point(int x, int y);
// Brings the twelve columns of the current row to sound values. True if something was changed.
bool Repair_Row();
// The typed text without leading and trailing blanks if the option says so.
QString Trimmed_Input(const QString& text);
