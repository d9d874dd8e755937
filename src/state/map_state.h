#pragma once
#include <QImage>
#include <QPoint>
#include <QRect>
#include <QSet>
#include <QString>
#include <QStringList>
#include <array>
#include <optional>
#include <vector>

#include "platform/region.h"

// State of the map window as plain data: view values, clips, the live controls, hit regions. Positions named "map" are
// pixels of the scan at 100 %, all others window pixels.

struct LiveControl {
  bool Visible = false;
  int Left = 0, Top = 0, Width = 0, Height = 0;
  double Angle = 0;  // lblShape: degrees counter-clockwise about its middle
  QString Text;
};

// What the edit box holds: what its row says, a change of it, a text without a row.
enum class EditTag { Old, Change, New };

struct EditBox : LiveControl {
  EditTag Tag = EditTag::Old;
  QString FontName = QStringLiteral("Arial");
  double FontSize = 10;   // points at 100 %, as stored
  double ShownSize = 10;  // points on the window: FontSize by the zoom
  bool FontBold = false, FontItalic = false, FontUnderline = false, FontTransparent = false;
};

struct MapClipState {
  QImage image;
  float factor = 0;                                         // by which it is reduced against its source; 0 = not built
  int ClipX = 0, ClipY = 0, ClipWidth = 0, ClipHeight = 0;  // pixels of this clip
};

struct ScrollState {
  bool Visible = false;
  int Value = 0, Max = 100;
};

struct PlanLabel {
  qint64 key = 0;
  int kind = 16;
  QString name;
  QString text;  // what lblPLQ says of it; empty while the square is hidden
  int offsetX = 0, offsetY = 0;
};

// Is a font that is missing asked for? Later: in the next pass. Never: not again in this one.
enum class FontQuestion { Ask, Later, Never };

struct MapState {
  QString Caption;  // "Map: " + the map's path in capitals
  bool Visible = false, Minimized = false;
  bool Maximized = true;  // fills the main window; in the normal state the layout step sizes it
  int Left = 0, Top = 0, ScaleWidth = 800, ScaleHeight = 600;  // inside of the window, bars included
  int WantWidth = 0, WantHeight = 0;  // inside size the layout step asks for in the normal state; 0 = none

  float Zoom = 1.0F;                  // map pixels per window pixel
  QString ZoomMenu;                   // menu entry the zoom was chosen by; empty = by other means
  int ClipLevel = 0;                  // 0..3: the clip in use
  int ViewLeft = 0, ViewTop = 0;      // map position of the upper left window pixel
  int ViewWidth = 0, ViewHeight = 0;  // painted size, window pixels
  float ScrollUnitX = 1, ScrollUnitY = 1;
  int ScrollBarW = 0, ScrollBarH = 0;
  std::array<MapClipState, 4> MapClip;
  ScrollState HScroller, VScroller;

  int MapXPpM = 3780, MapYPpM = 3780;  // resolution in the picture file, points per metre

  QString CurBookmark;  // row key of the current entry
  FontQuestion FontMissing = FontQuestion::Ask;
  QSet<QString> FontsAsked;     // entries whose missing font was asked for: once is enough
  QSet<QByteArray> LeftFaulty;  // rows that cannot be drawn and that the user has left, by their fingerprints
  QString PicText;              // what is written on the window while a map is being loaded

  RegionSet EntryRegions;  // hit list and union of the last redraw
  int MarkCount = 0;       // marked entries drawn in the last redraw
  int HiddenCount = 0, InactiveCount = 0;
  std::vector<PlanLabel> PlanLabels;
  bool Perspex = false;        // the boxes behind texts are half transparent; for the session
  int ReferenceWidth = 1;      // pen width of reference lines, pixels
  double ReferenceCircle = 4;  // radius of the foot point circle, pixels
  double ReferenceArrow = 6;   // width of the arrow head, pixels
  int ReferenceEnd = 1;        // end mark of the next foot point: 1 plain, 2 arrow, 3 circle

  EditBox Text2;
  LiveControl imgBild, imgRfLine, lblShape, lblPLQ;
  std::array<LiveControl, 8> lblHandle;  // size handles of the frame: upper left, clockwise
  LiveControl imgHandle;                 // handle of a picture, lower right
  std::vector<qint64> MarkOrder;  // keys of the marked rows in the order they were marked; a hint, the rows decide
  // The entry in hand.
  QString InHand;           // its row key, "" = none. The current row may be another one only while nothing is in hand.
  QStringList GroupInHand;  // rows that move with it, itself included; empty without a group
  QPoint TextAt;            // map position of the text in the edit box
  QString Tool, ToolOver;   // names of the tool in use and of one laid over it, "" = none; kept by tools/map_tool
  QString ToolRow;          // key of the row the tool in use works on, "" = none; it follows when rows change places
  QImage HandUnder;         // what frame and vertices of the entry in hand cover of the canvas
  QPoint HandUnderAt;
  std::optional<QPoint> Circled;       // map position of the vertex that is being corrected: circled on the window
  std::optional<QPoint> PositionMark;  // a place found by its coordinates, map pixels
  QPoint PopupAt;                      // window position of the last right click
  QImage canvas;                       // the painted window: background and entries
};
extern MapState Map;

// The one pair of conversions. Window to map cuts; map to window rounds halves to even.
int Map_X(double windowX);
int Map_Y(double windowY);
int Window_X(double mapX);
int Window_Y(double mapY);
