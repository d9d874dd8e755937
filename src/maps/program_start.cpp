#include "maps/program_start.h"

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>

#include "maps/map_choose.h"
#include "maps/map_open.h"
#include "maps/menu_state.h"
#include "maps/sheet_bridge.h"
#include "objects/palette.h"
#include "platform/surface.h"
#include "state/events.h"
#include "state/global_state.h"
#include "state/mdi_state.h"
#include "store/file_names.h"
#include "store/history.h"
#include "store/map_log.h"
#include "store/settings.h"
#include "store/table_file.h"
#include "store/versions.h"
#include "tools/canvas.h"

QString Command_Line_Map(const QString& commandLine) {
  static const QRegularExpression blanks(QStringLiteral("[ \\t]+"));
  const QStringList words = commandLine.split(blanks, Qt::SkipEmptyParts);
  return !words.isEmpty() && words.first().contains(QLatin1String(".bmp"), Qt::CaseInsensitive) ? words.first()
                                                                                                : QString();
}

QString Map_Of_Arguments(const QStringList& arguments) {
  const QString line = arguments.join(QLatin1Char(' '));
  for (const QString& path : {line, arguments.value(0)}) {
    const QFileInfo file(Clean_Path(path));
    if (!path.isEmpty() && file.exists()) return file.absoluteFilePath();  // what is no file is told with its reason
  }
  const QString map = Command_Line_Map(line);
  const bool bare = !map.contains(QLatin1Char('/')) && !map.contains(QLatin1Char('\\'));
  return bare && !map.isEmpty() ? Program_File(map) : map;
}

void Program_Start(const QStringList& arguments) {
  const QString map = Map_Of_Arguments(arguments);
  frmMDI.SafeMode = false;
  Read_Ini();
  Clear_Work_Files();
  Clear_Histories();
  QDir::setCurrent(ProgramFolder);
  NotePads.clear();
  NotePadState.clear();
  Load_Palette();
  CurVG = 0;
  CurHG = 14;
  HighlightColor = QBColor(14);
  Connect_Canvas();
  events.MapOpened.Connect(Keep_Version);
  events.MapOpened.Connect(Offer_Left_Exchange);
  Read_Log(1);
  Read_Log(3);
  Reset_InfoBar();
  Set_Buttons();
  if (!map.isEmpty()) Open_User_Map(map);  // else the start window stands there
}

bool Program_End() {
  if (!Leave_Map()) return false;
  Release_Work_Files();
  return true;
}

QString Program_Version() { return QStringLiteral(FLURAX_VERSION); }
