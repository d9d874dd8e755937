#include "maps/map_choose.h"

#include <QFileInfo>

#include "maps/map_open.h"
#include "maps/recent_lists.h"
#include "platform/file_dialog.h"
#include "platform/files.h"
#include "platform/picture.h"
#include "state/events.h"
#include "state/global_state.h"
#include "state/mdi_state.h"
#include "store/file_names.h"
#include "store/map_log.h"

bool Open_User_Map(const QString& path) {
  if (!Open_Map(path)) return false;
  Write_Log(MapFile, 1);
  Read_Log(1);
  Read_Log(2);
  events.StateChanged.Emit();
  return true;
}

void Choose_Map() {
  FileRequest request;
  request.title = QStringLiteral("Karte laden ");
  request.helpPage = QStringLiteral("Karte.htm");
  request.defaultExtension = QStringLiteral("BMP");
  request.filter = QStringLiteral("Bitmap (*.bmp;  *.gif;   *.jpg;   *.wmf)|") + Picture_Patterns();
  QString start = Menu(QStringLiteral("mnuMapFile"), 1).Tag;
  if (start.isEmpty()) start = Program_File(QStringLiteral("Karte.bmp"));
  if (!start.contains(QLatin1Char('/'))) start = Program_File(start);
  request.folder = QFileInfo(start).path();
  request.name = QFileInfo(start).fileName();
  if (const auto path = File_Dialog(request)) Open_User_Map(*path);
}

void Open_Recent_Map(int index) {
  const QString path = Menu(QStringLiteral("mnuMapFile"), index).Tag;
  if (!path.isEmpty() && Recent_Is_There(path, 1)) Open_User_Map(path);
}
