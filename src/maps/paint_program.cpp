#include "maps/paint_program.h"

#include <QDateTime>
#include <QFileInfo>

#include "maps/map_open.h"
#include "platform/files.h"
#include "platform/shell.h"
#include "state/global_state.h"
#include "state/mdi_state.h"
#include "state/on_reset.h"
#include "store/settings.h"

namespace {

struct FileStamp {
  QDateTime changed;
  qint64 size = 0;
  bool operator==(const FileStamp&) const = default;
};

FileStamp Stamp_Of(const QString& path) {
  const QFileInfo info(path);  // a new object: nothing remembered
  return info.exists() ? FileStamp{info.lastModified(), info.size()} : FileStamp{};
}

// The picture that was given to a paint program, and how it was then. Kept after the program's end: many programs hand
// the picture to a window that is already open and end at once.
struct Watched {
  QString map;
  FileStamp stamp;
};
Watched watched;
const OnReset fresh(watched);

}  // namespace

void Keep_Paint_Programs(const QStringList& programs, const QString& chosen) {
  QStringList kept;
  for (const QString& entry : QStringList(chosen) + programs) {
    const QString program = entry.trimmed();
    if (!program.isEmpty() && !kept.contains(program)) kept.append(program);
  }
  Set_Paint_Programs(kept);
}

QString Chosen_Paint_Program() {
  const QStringList programs = Paint_Programs();
  return programs.isEmpty() ? QString() : programs.first();
}

PaintStart Start_Paint_Program(const QString& program, std::function<void()> returned) {
  if (!frmMDI.MapOpen || MapFile.isEmpty()) return PaintStart::NoMap;
  const QString path = Clean_Path(program.trimmed());
  const QString found = path.contains(QLatin1Char('/')) ? Find_File(path) : Find_Program(path, ProgramFolder);
  if (found.isEmpty()) return PaintStart::NoProgram;
  const FileStamp before = Stamp_Of(MapFile);
  if (!Start_Program(found, {MapFile}, std::move(returned))) return PaintStart::Failed;
  // A second program on the same picture must not hide a change the first one made.
  if (watched.map != MapFile) watched = {MapFile, before};
  return PaintStart::Started;
}

bool Reload_Changed_Map() {
  if (watched.map.isEmpty()) return false;
  if (!frmMDI.MapOpen || watched.map != MapFile) {
    watched = {};
    return false;
  }
  const FileStamp now = Stamp_Of(MapFile);
  if (now.size == 0 || now == watched.stamp) return false;
  if (!Reload_Map()) return false;
  watched.stamp = now;
  return true;
}
