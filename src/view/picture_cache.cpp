#include "view/picture_cache.h"

#include <QDateTime>
#include <QFileInfo>
#include <QHash>

#include "platform/error.h"
#include "platform/files.h"
#include "platform/picture.h"
#include "state/global_state.h"
#include "store/file_names.h"
#include "view/reduce.h"

namespace {

constexpr int mostPictures = 500;

struct Kept {
  QString path;
  QDateTime changed;
  QImage picture, reduced;
  double zoom = 0;
};

QHash<QString, Kept> pictures;

Kept& Kept_Picture(const QString& name) {
  if (pictures.size() > mostPictures) pictures.clear();
  Kept& kept = pictures[name];
  const QString path = kept.path.isEmpty() ? Find_Picture(name) : kept.path;
  const QDateTime changed = path.isEmpty() ? QDateTime() : QFileInfo(path).lastModified();
  if (!path.isEmpty() && kept.path == path && kept.changed == changed) return kept;
  kept = {changed.isValid() ? path : QString(), changed, {}, {}, 0};
  if (kept.path.isEmpty()) return kept;
  try {
    kept.picture = Load_Picture(kept.path);
  } catch (const Error&) {
    kept.picture = {};  // shown as missing
  }
  return kept;
}

}  // namespace

QString Find_Picture(const QString& name) {
  if (name.trimmed().isEmpty()) return {};
  const QString clean = Clean_Path(name);
  if (QFileInfo(clean).isAbsolute()) {
    const QString found = Find_File(clean);
    if (!found.isEmpty()) return found;
  }
  const QString own = QFileInfo(clean).fileName();
  for (const QString& folder : {QFileInfo(MapFile).path(), ProgramFolder}) {
    for (const QString& part : {clean, own}) {
      const QString found = Find_File(folder + QLatin1Char('/') + part);
      if (!found.isEmpty()) return found;
    }
  }
  return {};
}

const QImage& Entry_Picture(const QString& name) { return Kept_Picture(name).picture; }

const QImage& Entry_Picture(const QString& name, double zoom) {
  Kept& kept = Kept_Picture(name);
  if (zoom <= 1 || kept.picture.isNull()) return kept.picture;
  if (kept.zoom != zoom) {
    kept.reduced = Reduced_Picture(kept.picture, zoom);
    kept.zoom = zoom;
  }
  return kept.reduced;
}

void Forget_Entry_Pictures() { pictures.clear(); }
