#pragma once
#include <QString>
#include <vector>

#include "platform/database.h"

// The table window without its widgets: shown or hidden, the row the grid stands on, changing cells, deleting rows.
// Rows are named by their key (Recordset::Key). Whatever the user types is refused with a message where the table
// cannot take it as it is; nothing is cut or rounded.

// Shows ("On") or hides ("Off") the table, and arranges the windows.
void Table_On_Off(const QString& state);
void Toggle_Table();  // F4, button "Tbl"
// Map above, table below. A maximised map would cover the table: it goes back to the normal state while the table is
// shown, and is maximised again when the table is hidden.
void Arrange_Windows();
// The same without the layout step, for a map that is being opened.
void Choose_Arrangement();
// The user has dragged the table window over the edge of the main window: it is hidden, with a message.
void Table_Moved_Off();
// The user has maximised the map window over the shown table, or took it back: the table counts as hidden then.
void Map_Was_Maximized(bool maximized);

// The grid stands on another row: it becomes the current row and the map shows its entry. Offers the repair of a row
// that cannot be read.
void Row_Changed(qint64 key);

bool Is_Header_Row(qint64 key);  // by its row key
// Warns once a session that changes in the table can do harm.
void Warn_Before_Edit();
enum class CellEdit { Written, Unchanged, Refused };
// Writes what was typed into a cell as its column takes it; refused with a message.
CellEdit Edit_Cell(qint64 key, int column, const QString& text);
// Asks once for all; the header row always stays. Vertex tables go with their rows. Several rows are one transaction
// with an undo point. False if nothing was deleted.
bool Delete_Rows(const std::vector<qint64>& keys);

// Does the current row of the recordset hold something that is no number, or one beyond its column, where a number must
// be?
bool Is_Damaged(const Recordset& rows);
// The twelve values of the current row with their labels.
QString Row_Values(const Recordset& rows);
// Value of a field as the grid shows it: decimal comma.
QString Cell_Text(const Value& value);
