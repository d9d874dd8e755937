#include "view/picture_cache.h"

#include <QDateTime>
#include <QFileInfo>
#include <QHash>
#include <exception>
#include <numeric>
#include <utility>

#include "platform/error.h"
#include "platform/files.h"
#include "platform/picture.h"
#include "state/global_state.h"
#include "state/on_reset.h"
#include "store/file_names.h"
#include "view/reduce.h"

namespace {

constexpr qsizetype mostPictures = 500;

struct Kept {
  QString path;
  QDateTime changed;
  QImage picture, reduced;
  double zoom = 0;
  QString flaw;
  quint64 asked = 0;
};

QHash<QString, Kept> pictures;
quint64 questions = 0;
qint64 mostBytes = qint64{512} << 20;
const OnReset fresh(pictures, questions);

// Runs the work; its failure becomes the flaw of the picture.
template <class Work>
void Try(Kept& kept, const QString& name, Work work) {
  const QString failed = QStringLiteral("Bild nicht lesbar: ") + name;
  try {
    work();
  } catch (const Error& error) {
    kept.flaw = failed + u'\n' + error.text;
  } catch (const std::bad_alloc&) {
    kept.flaw = failed + u'\n' + Error_Text(errors::outOfMemory);
  } catch (const std::exception&) {
    kept.flaw = failed;
  }
}

qint64 Bytes_Of(const Kept& kept) { return kept.picture.sizeInBytes() + kept.reduced.sizeInBytes(); }

void Drop_Oldest(const QString& name) {
  while (pictures.size() > 1 && (pictures.size() > mostPictures || Entry_Pictures_Kept() > mostBytes)) {
    auto oldest = pictures.end();
    for (auto it = pictures.begin(); it != pictures.end(); ++it)
      if (it.key() != name && (oldest == pictures.end() || it->asked < oldest->asked)) oldest = it;
    pictures.erase(oldest);
  }
}

// Valid until the next question.
Kept& Kept_Picture(const QString& name) {
  Kept& kept = pictures[name];
  kept.asked = ++questions;
  const QString path = kept.path.isEmpty() ? Find_Picture(name) : kept.path;
  const QDateTime changed = path.isEmpty() ? QDateTime() : QFileInfo(path).lastModified();
  if (!path.isEmpty() && kept.path == path && kept.changed == changed) return kept;
  kept = {changed.isValid() ? path : QString(), changed, {}, {}, 0, {}, questions};
  if (kept.path.isEmpty())
    kept.flaw = QStringLiteral("Bild fehlt: ") + name;
  else
    Try(kept, name, [&] { kept.picture = Load_Picture(kept.path, entryPicture); });
  Drop_Oldest(name);
  return pictures[name];
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

QImage Entry_Picture(const QString& name) { return Kept_Picture(name).picture; }

QImage Entry_Picture(const QString& name, double zoom) {
  Kept& kept = Kept_Picture(name);
  if (zoom <= 1 || kept.picture.isNull()) return kept.picture;
  if (kept.zoom != zoom) {
    kept.reduced = {};
    Try(kept, name, [&] { kept.reduced = Reduced_Picture(kept.picture, zoom); });
    kept.zoom = zoom;
    const QImage reduced = kept.reduced;
    Drop_Oldest(name);
    return reduced;
  }
  return kept.reduced;
}

QString Entry_Picture_Flaw(const QString& name) { return Kept_Picture(name).flaw; }

void Forget_Entry_Pictures() { pictures.clear(); }

qint64 Entry_Pictures_Kept() {
  return std::accumulate(pictures.begin(), pictures.end(), qint64{0},
                         [](qint64 sum, const Kept& kept) { return sum + Bytes_Of(kept); });
}

qint64 Bound_Entry_Pictures(qint64 bytes) { return std::exchange(mostBytes, bytes); }
