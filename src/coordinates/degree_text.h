#pragma once
#include <QString>

// Degrees as text: "48°30'15,50¨" with the seconds mark U+00A8 (byte 168 of Windows-1252; U+2033 and the double quote
// are read as well), or as decimals.

inline constexpr char16_t secondsMark = u'\u00A8';

// Text to degrees, rounded to 7 decimals. A text without "°" gives 0; one whose "°" stands at place 5 or later is a
// plain decimal number.
double GMS_To_Dec(const QString& text);
// "x" (longitude) or "y" (latitude) followed by a decimal number, to text. Mode 0: full, 2: whole minutes. Too large
// values (box "Fehler: Dezimale geografische Koordinaten in das GMS-Format umwandeln") stop at 90 or 180.
QString Dec_To_GMS(const QString& text, int mode = 0);
// For labels: without zero seconds, minutes and leading zero degrees.
QString GMS_Short(const QString& text);
// 1 if the text has the layout of the template "B_DEC", "B_GMS", "L_DEC" or "L_GMS"; else -1, -2, -3.
int Check_Koord_Format(const QString& text, const QString& templateName);
QString Point_To_Comma(QString text);  // the first one only
QString Comma_To_Point(QString text);  // the first one only
// The number at the start by "skip blanks, read as far as a number goes, point as decimal sign"; blanks may stand
// between sign and digits. 0 without one.
double Coordinate_Number(const QString& text);
// Digits among the first three characters of a zone text ("32U", "U32"); without one the message "Keine Zonennummer
// gefunden." and -1.
int getZoneNumber(const QString& zone);
