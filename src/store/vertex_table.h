#pragma once
#include <QPoint>
#include <QSet>
#include <QString>
#include <QStringList>
#include <vector>

// Vertex tables: one small table per line, area and free figure with the columns xf, yf in map pixels.

// Next free table name of the kind "Linie" or "Flaeche". Tables with fewer than 2 rows are dropped and their numbers
// are free (never that of the row in hand). Shows "Falscher Id-Tabellen-Name" or "maximale Zahl der Polygone = 1000!"
// and returns "" where it cannot.
QString New_Poly_Table(const QString& kind);
// Up to so many free names at once, in the same way; nothing is shown.
QStringList Free_Poly_Tables(const QString& kind, size_t count);
// "Figur" + (highest number + 1), first "Figur1". Raises 5000 "Keine Nummer ", with the number below it, if an ID has
// none.
QString Next_Figure_ID();
// Makes the table anew, empty.
void Create_Vertex_Table(const QString& name);
void Write_Vertices(const QString& name, const std::vector<QPoint>& points);  // in one transaction
// Drops the vertex table of that name; anything that is no vertex table stays. False if nothing was dropped.
bool Drop_Vertex_Table(const QString& name);
// The same for many, by their names in small letters.
void Drop_Vertex_Tables(const QSet<QString>& lowerNames);
// All vertices up to the stop mark (xf below -15000). A missing or damaged table has none.
std::vector<QPoint> Load_Vertices(const QString& name);
inline constexpr int stopMark = -16000, stopLimit = -15000;
