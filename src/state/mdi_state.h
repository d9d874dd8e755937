#pragma once
#include <QMap>
#include <QString>
#include <array>

// State of the main window, its toolbar, its status bar and its menus, as plain data. The windows show it.

enum class ToolbarPlace { Top, Bottom, Left, Right };
enum class MouseUnit { Pixel, Metric, Coordinates };

struct MdiState {
  bool MapOpen = false;
  bool Tips = true;       // tips at the start of a task
  bool SafeMode = false;  // mnuNoTable is checked
  bool Light = false;     // the map is painted light
  double Dgs = 0;         // display setting of "Flurax.ini", kept and written back when above 0
  QString Caption = QStringLiteral("FLURAX - 100%");
  ToolbarPlace toolbarPlace = ToolbarPlace::Top;
  // What the options window sets, for the session.
  bool raisedButtons = false, showHidden = false, showTexts = true, showPictures = true, overview = false,
       sheetFrame = false, trimInput = false, tableColors = true;
  bool printAsBitmap = false;  // path of printing: every sheet as a picture, for the session
  MouseUnit mouseUnit = MouseUnit::Pixel;
  // Inside of the main window in pixels, kept by the window.
  int InnerWidth = 1000, InnerHeight = 700;
  bool TblVisible = false;  // the table window is shown
  bool HasPlanSquares = false, HasHidden = false, HasTemplate = false;
  bool RasterShown = true;      // told by the redraw: plan squares are drawn, or there are none
  bool RasterActive = false;    // plan squares take clicks
  bool HasCalibration = false;  // a calibration file was found, or there are several to choose from
  int DigiTolerance = 10;       // percent of colour tolerance when areas are digitised
  bool DigiFill = false;        // they are filled, not followed along their edge
};
extern MdiState frmMDI;

// The tool state: which buttons the toolbar has, by what the user has in hand.
enum class ToolMode { Norm, Text, Area, Line, Figure, Picture, Symbol };
QString Tool_Word(ToolMode mode);  // "Norm", "Text", "Ply", "Ln", "Fig", "Bild", "Symbol"

struct ToolbarState {
  ToolMode Tag = ToolMode::Norm;
  bool Visible = false;
};
extern ToolbarState Toolbar1;

struct InfoBarState {
  std::array<QString, 3> Panel;  // 0: task, 1: help or mouse position, 2: counts or table name
  QString Zoom;                  // panel "Zm"
};
extern InfoBarState InfoBar;

// What the state of a menu entry is that cannot be told from anything else: the lines of the recent lists, and mnuReset
// (Caption names what it takes back, Enabled tells whether it can).
struct MenuState {
  QString Caption;
  bool Enabled = false, Visible = true;
  QString Tag;
};
// By its name; made on first use.
MenuState& Menu(const QString& name);
QMap<QString, MenuState>& All_Menus();  // by name
// Entry i (from 1) of a list such as "mnuMapFile".
MenuState& Menu(const QString& list, int i);
