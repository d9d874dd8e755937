#pragma once
#include <QString>

// The tool TabBridge seen from the program: it carries the table into a workbook and brings corrections back. It is a
// program of its own, so that map and sheet can be looked at side by side.

namespace sheet_bridge {
inline const QString program = QStringLiteral("TabBridge.exe"), exchangeWord = QStringLiteral("ColExchange");
}
// The copy of the open table that the tool works on, in the program folder.
QString Exchange_File();

// mnuExportxls: brings the user's table up to date, makes room on the screen and starts the tool, which writes the
// table of the last map into its workbook. An undo that is armed stays what it is. A failure is told.
void Export_Table();
// mnuExChangeXL: gives the tool a copy of the table and returns. When the tool ends, what it has changed there takes
// the place of the table, with an undo point "Rückgängig: Einträge austauschen". Rows that were changed here meanwhile
// are not lost without a question.
void Exchange_With_Sheet();
// When a map was opened: what the tool has changed for it after the program had ended, or still changes, is offered.
void Offer_Left_Exchange();
