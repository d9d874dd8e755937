#pragma once
#include <QString>

#include "analysis/map_input.h"

// Texts that stand in several reports.
namespace analysis_texts {
QString Scale_Hint();   // there is no scale
QString Digits_Hint();  // numbers in front of texts count
QString Note_Hint();    // what can be done with a report
// What is not in the result; empty without such.
QString Left_Out(int areas);                  // marked or hidden areas
QString Too_Large(const QStringList& texts);  // texts whose number is too large
}  // namespace analysis_texts

// "### ### ##0.00", and without decimals where that is longer than 9 characters. No leading blanks.
QString Format_Number(double value);
// Two decimals, at least one digit before them.
QString Fixed_Text(double value);

// Title and text of the box that shows the size of one entry: area and perimeter, or length. Pixels, millimetres on
// paper, natural unit.
struct SizeBox {
  QString title, text;
};
// Of a line, area or figure. Error 6 for one that is too large; an empty text for any other row.
SizeBox Size_Box(const MapInput& input, const EntryRow& row);
