#pragma once
#include <QPoint>
#include <QString>
#include <optional>

#include "store/entry.h"

// Typing a coordinate, seeing its place, moving an entry there. What frmGPSData does, without the window.

// What the window shows for the kind of net of the map.
struct CoordinateForm {
  QString title, letterR, letterH;
  QString startR, startH;  // stand in the boxes until something is entered
  QString tipR, tipH;
  bool degrees = false;  // the letters are signs
};
CoordinateForm Koord_Eingabe_Init();  // of the open map
// "Rechtswert (nach Osten)", "westl. Länge" by the letter beside the box.
QString Coordinate_Label(const CoordinateForm& form, bool easting, const QString& letter);

struct TypedCoordinate {
  QString letterR, valueR, letterH, valueH;
};
// The coordinate of a map pixel as it stands in the boxes. Nothing where there is none.
std::optional<TypedCoordinate> Show_Cursor_Coords(QPoint map);
// The value as a box shows it after it was left: "000000", "000.000000"; a text that is no number stays.
QString Box_Text(const CoordinateForm& form, bool easting, const QString& value);
// A typed coordinate (metres or degrees) and the map pixel where it lies.
struct TypedPlace {
  QPoint map;
  double right = 0, high = 0;
};
// The place of the coordinate. Numbers with comma or point, degrees as "49°46'30" as well. What cannot be read and
// a place off the map are told under the form's title; nothing then.
std::optional<TypedPlace> GridPix(const CoordinateForm& form, const TypedCoordinate& typed);

// An entry that is moved to a typed place.
struct TakenPosition {
  qint64 key = 0;
  EntryRow before;  // as it was at first
  int step = 0;     // 1: its place was taken, 2: its foot point too
};
// Moves the entry in hand: its place, at the second press the foot point if it has one; the status bar shows what was
// entered. False if nothing was moved; the reason was told.
bool Take_Position(TakenPosition& taken, const TypedPlace& place, const QString& title);
// Will the next press move the foot point?
bool Foot_Is_Next(const TakenPosition& taken);
// Puts the entry back where it was.
void Take_Position_Back(TakenPosition& taken, const QString& title);
