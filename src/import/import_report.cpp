#include "import/import_report.h"

#include <QFileInfo>

#include "platform/files.h"
#include "state/global_state.h"

QString Write_Import_Report(const QStringList& lines) {
  const QFileInfo map(MapFile);
  const QString path = map.path() + u'/' + map.completeBaseName() + QStringLiteral("_Import.txt");
  if (lines.isEmpty()) {
    Kill_Quietly(path);
    return {};
  }
  Write_Lines(path, lines);
  return path;
}
