#include "maps/recent_lists.h"

#include "platform/files.h"
#include "platform/message_box.h"
#include "store/map_log.h"

bool Recent_Is_There(const QString& path, int list) {
  if (File_Exists(Clean_Path(path))) return true;
  Message_Box(QStringLiteral("Diese Datei wurde nicht gefunden:\n") + path +
                  QStringLiteral("\n\nSie wird aus der Liste der zuletzt geöffneten genommen."),
              MsgButtons::Ok, MsgIcon::Information, QStringLiteral("Zuletzt geöffnet"));
  Delete_From_Log(path);
  Read_Log(list);
  return false;
}
