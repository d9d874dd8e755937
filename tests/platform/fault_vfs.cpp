#include "platform/fault_vfs.h"

#include <sqlite3.h>

#include <QFile>
#include <QFileInfo>
#include <algorithm>
#include <cstring>
#include <map>
#include <vector>

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

struct ShimFile {
  sqlite3_file base;
  QString* path;
  bool watched;
};
ShimFile* Shim(sqlite3_file* file) { return reinterpret_cast<ShimFile*>(file); }
sqlite3_file* Inner(sqlite3_file* file) { return reinterpret_cast<sqlite3_file*>(Shim(file) + 1); }

void Apply(QByteArray& content, const Change& change) {
  if (change.isTruncation) {
    content.resize(static_cast<qsizetype>(change.at));
    return;
  }
  const qsizetype end = static_cast<qsizetype>(change.at) + change.bytes.size();
  if (content.size() < end) content.append(end - content.size(), '\0');
  std::copy(change.bytes.begin(), change.bytes.end(), content.begin() + change.at);
}

int Close(sqlite3_file* file) {
  const int rc = Inner(file)->pMethods ? Inner(file)->pMethods->xClose(Inner(file)) : SQLITE_OK;
  delete Shim(file)->path;
  return rc;
}
int Read(sqlite3_file* file, void* to, int count, sqlite3_int64 at) {
  return Inner(file)->pMethods->xRead(Inner(file), to, count, at);
}
int Write(sqlite3_file* file, const void* from, int count, sqlite3_int64 at) {
  if (active && Shim(file)->path) {
    if (active->writeError) return active->writeError;
    if (active->room >= 0) {
      if (active->room < count) return SQLITE_FULL;
      active->room -= count;
    }
    if (Shim(file)->watched)
      images[*Shim(file)->path].waiting.push_back({at, QByteArray(static_cast<const char*>(from), count)});
  }
  return Inner(file)->pMethods->xWrite(Inner(file), from, count, at);
}
int Truncate(sqlite3_file* file, sqlite3_int64 size) {
  if (Shim(file)->watched) images[*Shim(file)->path].waiting.push_back({size, {}, true});
  return Inner(file)->pMethods->xTruncate(Inner(file), size);
}
int Sync(sqlite3_file* file, int flags) {
  if (active && Shim(file)->path) {
    ++active->syncs;
    if (active->writeError) return SQLITE_IOERR_FSYNC;
    if (Shim(file)->watched) {
      Image& image = images[*Shim(file)->path];
      for (const Change& change : image.waiting) Apply(image.flushed, change);
      image.waiting.clear();
    }
  }
  return Inner(file)->pMethods->xSync(Inner(file), flags);
}
int File_Size(sqlite3_file* file, sqlite3_int64* size) { return Inner(file)->pMethods->xFileSize(Inner(file), size); }
int Lock(sqlite3_file* file, int kind) { return Inner(file)->pMethods->xLock(Inner(file), kind); }
int Unlock(sqlite3_file* file, int kind) { return Inner(file)->pMethods->xUnlock(Inner(file), kind); }
int Check_Lock(sqlite3_file* file, int* held) { return Inner(file)->pMethods->xCheckReservedLock(Inner(file), held); }
int Control(sqlite3_file* file, int what, void* argument) {
  return Inner(file)->pMethods->xFileControl(Inner(file), what, argument);
}
int Sector(sqlite3_file*) { return 512; }
int Characteristics(sqlite3_file*) { return 0; }

const sqlite3_io_methods methods = {1,       Close,      Read,    Write,  Truncate,        Sync,    File_Size, Lock,
                                    Unlock,  Check_Lock, Control, Sector, Characteristics, nullptr, nullptr,   nullptr,
                                    nullptr, nullptr,    nullptr};

int Open(sqlite3_vfs*, const char* name, sqlite3_file* file, int flags, int* outFlags) {
  Shim(file)->path = nullptr;
  Inner(file)->pMethods = nullptr;
  if (active && active->readOnly && (flags & SQLITE_OPEN_READWRITE))
    flags = (flags & ~(SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE)) | SQLITE_OPEN_READONLY;
  const int rc = real->xOpen(real, name, Inner(file), flags, outFlags);
  file->pMethods = rc == SQLITE_OK ? &methods : nullptr;
  if (rc == SQLITE_OK && name) Shim(file)->path = new QString(QString::fromUtf8(name));
  Shim(file)->watched = Shim(file)->path && !watchedFolder.isEmpty() && Shim(file)->path->startsWith(watchedFolder);
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
  shim.szOsFile = static_cast<int>(sizeof(ShimFile)) + real->szOsFile;
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
