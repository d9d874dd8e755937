#include "printing/map_export.h"

#include <QFileInfo>

#include "platform/error.h"
#include "platform/file_dialog.h"
#include "platform/files.h"
#include "platform/message_box.h"
#include "platform/picture.h"
#include "printing/print_texts.h"
#include "state/events.h"
#include "state/global_state.h"
#include "state/map_state.h"
#include "state/task_line.h"
#include "view/redraw.h"

bool Export_Map_Picture() {
  const QFileInfo map(MapFile);
  const auto chosen = File_Dialog({.save = true,
                                   .title = print_texts::exportTitle,
                                   .folder = map.path(),
                                   .name = map.completeBaseName() + QStringLiteral("_Einträge.bmp"),
                                   .defaultExtension = QStringLiteral("bmp"),
                                   .filter = QStringLiteral("Bitmap|*.bmp"),
                                   .helpPage = QStringLiteral("Drucken.htm")});
  if (!chosen) return false;
  QString path = Clean_Path(*chosen);
  if (QFileInfo(path).suffix().compare(QLatin1String("bmp"), Qt::CaseInsensitive) != 0) path += QStringLiteral(".bmp");
  const QString there = QFileInfo(path).canonicalFilePath();
  if (!there.isEmpty() && there == map.canonicalFilePath()) {
    Message_Box(print_texts::notOverMap, MsgButtons::Ok, MsgIcon::Warning, print_texts::exportTitle);
    return false;
  }
  try {
    const BusyPointer busy;
    Save_Picture(Map_Picture_With_Entries(), path, Map.MapXPpM);
    Tell_Done(QStringLiteral("Exportiert: ") + path);
    return true;
  } catch (const Error& error) {
    Message_Box(QStringLiteral("Fehler: %1 %2\n%3").arg(error.number).arg(error.text, path), MsgButtons::Ok,
                MsgIcon::Warning, print_texts::exportTitle);
    return false;
  }
}
