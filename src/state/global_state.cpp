#include "state/global_state.h"

#include "platform/surface.h"
#include "state/coordinate_state.h"
#include "state/map_state.h"
#include "state/mdi_state.h"
#include "state/on_reset.h"
#include "state/table_state.h"

QString TableFile, MapFile;

std::unique_ptr<Database> dbEntries;
std::unique_ptr<Recordset> rsEntries;

int MapWidthPx, MapHeightPx;
float MapWidthMm, MapHeightMm;

float PrintFactor;
double MapPixelMm, MapPixelMmY;
QString MapUnit;
double MapUnitPerPixel;
bool MapHasScale;

std::array<QRgb, 16> Palette;
int CurVG, CurHG, CurRA;
QRgb HighlightColor;

int EntVG, EntHG, EntRA;
QRgb EntVGColor, EntHGColor;
QString EntFont;
double EntFontSize;
int EntCharset;
double EntAngle;

QStringList NotePads;
std::vector<PadState> NotePadState;
int ActiveNotePad;

bool GridVisible;

namespace {
void Reset_Files_And_Table() {
  rsEntries.reset();
  dbEntries.reset();
  TableFile.clear();
  MapFile.clear();
}

void Reset_Measures() {
  MapWidthPx = MapHeightPx = 0;
  MapWidthMm = MapHeightMm = 0;
  PrintFactor = 1;
  MapPixelMm = MapPixelMmY = 25.4 / 96;
  Forget_Scale();
  GridVisible = false;
}

void Reset_Colors() {
  for (int i = 0; i < 16; ++i) Palette[static_cast<size_t>(i)] = QBColor(i);
  CurVG = 0;
  CurHG = 14;
  CurRA = 0;
  HighlightColor = QBColor(14);
}

void Reset_Entry() {
  EntVG = EntHG = EntRA = 0;
  EntVGColor = EntHGColor = QBColor(0);
  EntFont = QStringLiteral("Arial");
  EntFontSize = 14;
  EntCharset = 0;
  EntAngle = 0;
}

void Reset_Windows() {
  Map = MapState();
  Tbl = TableState();
  frmMDI = MdiState();
  Toolbar1 = ToolbarState();
  InfoBar = InfoBarState();
  Coord = CoordinateState();
  All_Menus().clear();
}
}  // namespace

QRgb Color_Of(qint64 number) { return Palette[number >= 0 && number < 16 ? static_cast<size_t>(number) : 0]; }

void Forget_Scale() {
  MapHasScale = false;
  MapUnit.clear();
  MapUnitPerPixel = 0;
}

void Reset_Global_State() {
  Reset_Rooms();  // tools and snapshots let go before what they work on
  Reset_Files_And_Table();
  Reset_Measures();
  Reset_Colors();
  Reset_Entry();
  Reset_Windows();
  MsgResult = MsgAnswer::Ok;
  NotePads.clear();
  NotePadState.clear();
  ActiveNotePad = -1;
}
