#pragma once
#include <QStringList>
#include <functional>
#include <memory>
#include <vector>

#include "workbook/workbook_sheet.h"

class Progress;

// How the evaluations reach the user: workbook, note pad, boxes.

// Runs an evaluation. An error is told with its number under the title; false if there was one.
bool Tell_Result_Error(const QString& title, const std::function<void()>& work);

// Puts the sheets into the workbook beside the table, all in one write. While the spreadsheet program has it open the
// user is asked to try again; what cannot be written leaves the former workbook as it is. Then tells where it lies and
// offers to open it. `steps` names the steps meanwhile and is gone when the user is asked. False if nothing was
// written. Errors as Write_Result_Sheets.
bool Write_Result(const std::vector<Sheet>& sheets, std::unique_ptr<Progress> steps = nullptr);

// Writes a report, lines ended by CR LF, and shows it in a note pad. One that is being changed in its note pad is left
// alone, and that is told: false. Errors as writing files.
bool Show_Report(const QString& path, const QString& text);

// What the statistics have left out because its number is too large is told. False: the user does not want the rest.
bool Tell_Too_Large(const QStringList& texts, const QString& title);
