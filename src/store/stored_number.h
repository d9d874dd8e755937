#pragma once
#include <QString>
#include <QtGlobal>
#include <algorithm>

// What a column's number or text may hold where another program has written it.

// The columns' numbers have 16 bits: what lies beyond them is read as the nearest that does not.
inline int Stored_Number(qint64 value) { return static_cast<int>(std::clamp<qint64>(value, -32768, 32767)); }
// The angle behind "<" in the column Schrift, degrees counter-clockwise, 0 <= angle < 360; 0 without one.
double Stored_Angle(const QString& schrift);
// The size of a font as it is drawn, points with their sign: what is no size counts as the next one that is.
double Stored_Size(double points);
inline constexpr double largestStoredSize = 720;
// What of a text is shown: a text beyond all columns of the program's own making is shown in its beginning alone.
QString Shown_Text(const QString& stored);
// A typed text as it is stored: its lines ended by CR LF, whatever ended them.
QString Stored_Lines(QString text);
inline constexpr qsizetype longestShown = 1000;
// Characters of the column Schrift that are looked at.
inline constexpr qsizetype longestSchrift = 255;
