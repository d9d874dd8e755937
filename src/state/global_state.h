#pragma once
#include <QColor>
#include <QPoint>
#include <QString>
#include <QStringList>
#include <array>
#include <cstdint>
#include <memory>
#include <vector>

#include "platform/database.h"
#include "platform/files.h"
#include "platform/message_box.h"

// The program's shared state: plain variables, grouped by what they are for. Reset_Global_State() brings all of it, the
// state of the windows (map_state.h, table_state.h, mdi_state.h), that of the coordinates, and what the rooms keep for
// themselves (on_reset.h) to the values of a fresh start. Nothing is stored, nobody hears of it.
void Reset_Global_State();

// Folders and files -------------------------------------------------------------------------
// ProgramFolder belongs to platform/files.h.
extern QString TableFile;  // the standard table of the open map: the one database that is edited
extern QString MapFile;    // path of the open map's picture

// The open table ----------------------------------------------------------------------------
// Order matters at closing: the recordset first, then the database.
extern std::unique_ptr<Database> dbEntries;
extern std::unique_ptr<Recordset> rsEntries;  // MapData of the standard table; its current row is the current entry

// The picture -------------------------------------------------------------------------------
extern int MapWidthPx, MapHeightPx;    // pixels of the scan at 100 %
extern float MapWidthMm, MapHeightMm;  // millimetres by the screen metric; MapHeightMm -1 = the open failed

// Print and measures ------------------------------------------------------------------------
extern float PrintFactor;               // enlargement on paper, 1.0 = true to the picture's millimetres
extern double MapPixelMm, MapPixelMmY;  // millimetres on paper per map pixel at PrintFactor
extern QString MapUnit;                 // " mm", " cm", " m", " km"; empty without a scale
extern double MapUnitPerPixel;          // units per map pixel by the scale bar
extern bool MapHasScale;
void Forget_Scale();

// Colours -----------------------------------------------------------------------------------
extern std::array<QRgb, 16> Palette;
extern int CurVG, CurHG, CurRA;  // colour numbers of the next entry; CurRA is a frame word
extern QRgb HighlightColor;
QRgb Color_Of(qint64 number);  // of the palette; a number that is none of the sixteen counts as 0

// The current entry, decoded ----------------------------------------------------------------
extern int EntVG, EntHG, EntRA;
extern QRgb EntVGColor, EntHGColor;
extern QString EntFont;
extern double EntFontSize;  // points
extern int EntCharset;
extern double EntAngle;  // degrees counter-clockwise

// Note pads ---------------------------------------------------------------------------------
extern QStringList NotePads;  // files of the open note pads
enum class PadState { Free, Clean, Dirty };
extern std::vector<PadState> NotePadState;  // by the same numbers
extern int ActiveNotePad;                   // -1 = none

// Coordinates (filled by the coordinate subsystem) ------------------------------------------
extern bool GridVisible;  // the net is shown; the state itself is coordinates/coordinate_state.h
