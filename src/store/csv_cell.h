#pragma once
#include <QString>
#include <QStringView>

// Texts in CSV files. Spreadsheet programs take one that begins with = + - @ for a formula and compute it: such a text,
// unless it is a number, gets an apostrophe in front. One that has apostrophes before such a sign gets one more, so
// that every text comes back as it was.
QString Csv_Guarded(const QString& text);
// The same text again.
QStringView Csv_Unguarded(QStringView cell);
// On one line, as wide as it is: line breaks become blanks.
QString Csv_One_Line(QString text);
