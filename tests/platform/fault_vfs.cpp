#include "platform/fault_vfs.h"

#include <sqlite3.h>

namespace {

FaultVfs* active = nullptr;
sqlite3_vfs* real = nullptr;
QString watchedFolder;

struct Change {
  qint64 at = 0;
  QByteArray bytes;
  bool isTruncation = false;
};
struct Image {
  QByteArray flushed;
  std::vector<Change> waiting;
};
std::map<QString, Image> images;

// A file of a database, and how it would be worked on without us: all but four ways are the same.
struct OpenFile {
  QString path;
  const sqlite3_io_methods* plain;
  bool IsWatched() const { return !watchedFolder.isEmpty() && path.startsWith(watchedFolder); }
};
std::map<sqlite3_file*, OpenFile> open;
std::map<const sqlite3_io_methods*, sqlite3_io_methods> faulty;  // by the plain ones

void Apply(QByteArray& content, const Change& change) {
  if (change.isTruncation) {
    content.resize(static_cast<qsizetype>(change.at));
    return;
  }
  const qsizetype end = static_cast<qsizetype>(change.at) + change.bytes.size();
  if (content.size() < end) content.append(end - content.size(), '\0');
  std::copy(change.bytes.begin(), change.bytes.end(), content.begin() + change.at);
}

int Close(sqlite3_file* file) { return open.extract(file).mapped().plain->xClose(file); }
int Write(sqlite3_file* file, const void* from, int count, sqlite3_int64 at) {
  if (active) {
    if (active->writeError) return active->writeError;
    if (active->room >= 0) {
      if (active->room < count) return SQLITE_FULL;
      active->room -= count;
    }
    if (open[file].IsWatched())
      images[open[file].path].waiting.push_back({at, QByteArray(static_cast<const char*>(from), count)});
  }
  return open[file].plain->xWrite(file, from, count, at);
}
int Truncate(sqlite3_file* file, sqlite3_int64 size) {
  if (open[file].IsWatched()) images[open[file].path].waiting.push_back({size, {}, true});
  return open[file].plain->xTruncate(file, size);
}
int Sync(sqlite3_file* file, int flags) {
  if (active) {
    ++active->syncs;
    if (active->writeError) return SQLITE_IOERR_FSYNC;
    if (open[file].IsWatched()) {
      Image& image = images[open[file].path];
      for (const Change& change : image.waiting) Apply(image.flushed, change);
      image.waiting.clear();
    }
  }
  return open[file].plain->xSync(file, flags);
}

int Open(sqlite3_vfs*, const char* name, sqlite3_file* file, int flags, int* outFlags) {
  if (active && active->readOnly && (flags & SQLITE_OPEN_READWRITE))
    flags = (flags & ~(SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE)) | SQLITE_OPEN_READONLY;
  const int rc = real->xOpen(real, name, file, flags, outFlags);
  if (rc != SQLITE_OK || !name) return rc;
  open[file] = {QString::fromUtf8(name), file->pMethods};
  sqlite3_io_methods& ours = faulty[file->pMethods] = *file->pMethods;
  ours.iVersion = 1;  // neither shared memory nor files mapped into it: they would pass by
  ours.xClose = Close, ours.xWrite = Write, ours.xTruncate = Truncate, ours.xSync = Sync;
  file->pMethods = &ours;
  return rc;
}
int Delete(sqlite3_vfs*, const char* name, int syncFolder) {
  images.erase(QString::fromUtf8(name));
  return real->xDelete(real, name, syncFolder);
}

sqlite3_vfs shim;

}  // namespace

FaultVfs::FaultVfs(const QString& watched) {
  watchedFolder = watched.isEmpty() ? QString() : watched + QLatin1Char('/');
  real = sqlite3_vfs_find("unix");
  shim = *real;
  shim.zName = "fault";
  shim.pNext = nullptr;
  shim.xOpen = Open;
  shim.xDelete = Delete;
  active = this;
  sqlite3_vfs_register(&shim, 1);
}

FaultVfs::~FaultVfs() {
  active = nullptr;
  watchedFolder.clear();
  images.clear();
  sqlite3_vfs_unregister(&shim);
  sqlite3_vfs_register(real, 1);
}

void FaultVfs::Cut_Power(const QString& folder, quint32 seed) const {
  const auto random = [&seed] { return (seed = seed * 1664525u + 1013904223u) >> 16; };
  for (const auto& [path, image] : images) {
    QByteArray content = image.flushed;
    for (const Change& change : image.waiting) {
      const quint32 fate = random() % 4;
      if (fate == 0) continue;
      Change part = change;
      if (fate == 1) part.bytes.truncate(part.bytes.size() / 2 / 512 * 512);
      if (part.isTruncation || !part.bytes.isEmpty()) Apply(content, part);
    }
    QFile file(folder + '/' + QFileInfo(path).fileName());
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size()) qFatal("no room for the test");
  }
}
