#pragma once
#include <QSize>
#include <QString>

// Opening, closing, making and sizing maps.

void Open_Map(const QString& path);       // MapHeightMm = -1 tells that it failed
void Open_User_Map(const QString& path);  // the same, and on success the recent lists follow
void Choose_Map();                   // asks for the map
void Open_Recent_Map(int index);     // mnuMapFile(index)
void Reload_Map();                   // mnuMapLoad: the same map once more
void Close_Map();                    // the map window closes
// Reads the header of a bitmap: size and resolution, warns of a distorted scan. Not a bitmap: a hint, nothing else.
void Check_Bitmap(const QString& path);
// Scale bar, plan squares, lines, hidden rows: sets frmMDI's flags. False on a database error in any row.
bool Scan_Table();
void Table_Replaced();  // other entries stand in the table: flags, menus and buttons follow them
void Toggle_Safe_Mode();  // mnuNoTable
void Map_Geometry();      // millimetres on paper per map pixel at PrintFactor

// A white map of the size in millimetres at 96 dpi, written and opened. The path was asked by a dialog.
bool New_Map(double widthMm, double heightMm);
QSize Pixels_Of_Mm(double widthMm, double heightMm);

struct MapSize {
  double widthMm = 0, heightMm = 0;
  int xPpM = 0, yPpM = 0;
};
void Take_Map_Size(const MapSize& size);  // btnTake: for the session
void Save_Map_Size(const MapSize& size);  // btnSave: asks, then writes the two values into the picture's header
