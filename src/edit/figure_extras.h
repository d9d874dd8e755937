#pragma once
#include <QPointF>
#include <QRectF>
#include <QSet>
#include <QString>
#include <array>
#include <optional>
#include <vector>

#include "platform/surface.h"
#include "store/entry.h"

// Axes, foci and angle of a figure (frmEigenschaften), and the rows of MapData that show them. Those rows have the
// figure's ID behind a "-", so that they cannot be hit: "-Figur1", axes "-Achse>Figur1".

// Is the current entry a figure?
bool Current_Is_Figure();
// The row of the figure in hand; the cursor stays where it is.
std::optional<EntryRow> Figure_In_Hand();

// Measures of the figure in map pixels, before it is turned.
struct FigureMeasures {
  float x = 0, y = 0, w = 0, h = 0;
  double Radius = 0, HalfW = 0, HalfH = 0;  // Radius: the greater half
  double CenterX = 0, CenterY = 0;
  double angle = 0;                               // counter-clockwise, 0..360
  bool Upright() const { return HalfH > HalfW; }  // the long axis runs from top to bottom
};
FigureMeasures GetAbmessungen(const EntryRow& row);  // map pixels; angle 0 where none is stored

struct FigureAxes {
  std::array<QPointF, 2> along, across, foci;  // map pixels, turned
};
FigureAxes Axes_Of(const FigureMeasures& measures);  // ends of the axes and foci
// Degrees counter-clockwise from the right at which `to` lies from the centre; y runs downward.
double GetWinkel(QPointF centre, QPointF to);
double Normal_Angle(double degrees);  // 0 up to below 360, three decimals

struct FigureExtras {
  bool Mittelpunkt = false, Fokus = false, Laengsachse = false, Querachse = false, AchsenText = false;
  bool operator==(const FigureExtras&) const = default;
};
// The rows that show the extras, as they are written.
std::vector<EntryRow> Extra_Rows(const EntryRow& figure, const FigureExtras& extras);
// Which of them the table has.
FigureExtras Extras_Of(const EntryRow& figure);
// Row keys of the extras of those among the rows that are figures.
QSet<qint64> Extras_Of_All(const QSet<qint64>& keys);
// Removes the extras of the figure with this name ("Figur1"), nothing else.
void AddRowsX(const QString& id);
// Writes the extras anew. In the caller's transaction; the current row stays.
void DrawFigNeu(const EntryRow& figure, const FigureExtras& extras);
// Gives the copy of a figure the extras that the figure has. In the caller's transaction; the current row stays.
void Copy_Extras(const EntryRow& figure, const EntryRow& copy);
// A figure was changed: the extras it had come to their new places. In the caller's transaction; the current row stays.
void Extras_Follow(const EntryRow& before, const EntryRow& after);
// Deletes the entry in hand as Delete_Entry does, and with a figure its extras.
bool Delete_With_Extras(bool asked = false);

// The angle behind "<" of Schrift. A figure without a fill keeps its look.
void Turn_Row(EntryRow& row, double angle);
// Angle and extras of the current figure: one undo point "Rückgängig: Figur ändern", one transaction. False without a
// figure or if it could not be written.
bool Set_Figure_Properties(double angle, const FigureExtras& extras);

// The figure with the chosen extras, fitted into the area (surface pixels).
void Draw_Figure_Preview(Surface& surface, const QRectF& area, const EntryRow& figure, const FigureExtras& extras);
