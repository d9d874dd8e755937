#pragma once
#include <QString>

// Dates in cells are numbers of days, told apart from other numbers by their format alone.

// Does a pattern of a number show a date or a time of day?
bool Is_Date_Format(const QString& format);
// Days since 1899-12-30 as "03.04.2024", with a time of day as "03.04.2024 14:30", the time alone as "14:30"; seconds
// where there are some. "" for a number that is no day of the years 1900 to 9999.
QString Date_Text(double days);
