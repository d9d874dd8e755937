#pragma once
#include <QSize>
#include <QString>

// Opening, closing, making and sizing maps.

// Every way to another map and out of one passes Leave_Hand: what is being typed is stored first, and where that cannot
// be done the map stays open.

// True if it is open now. MapHeightMm = -1 tells that it failed; a fault was told.
bool Open_Map(const QString& path);
bool Reload_Map();      // mnuMapLoad: the same map once more
bool Leave_Map();       // the user closes the map. True: none is open now
void Table_Replaced();  // other entries stand in the table: flags, menus and buttons follow them

// A white map of the size in millimetres at 96 dpi, written and opened. The path was asked by a dialog.
bool New_Map(double widthMm, double heightMm);
QSize Pixels_Of_Mm(double widthMm, double heightMm);

struct MapSize {
  double widthMm = 0, heightMm = 0;
  int xPpM = 0, yPpM = 0;
};
// The size for this session, with a redraw; the picture stays as it is.
void Take_Map_Size(const MapSize& size);
// Asks, then writes the two values into the picture's header; what fails is told. False if the user does not want it.
bool Save_Map_Size(const MapSize& size);
