#include <fcntl.h>
#include <sqlite3.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <csignal>

#include "platform/database_inner.h"
#include "platform/files.h"

namespace database_inner {
namespace {
constexpr const char* sidecarEndings[] = {"-wal", "-journal", "-shm"};
}

bool Has_Sidecar(const QString& path) {
  for (const char* ending : {"-wal", "-journal"})
    if (QFileInfo(path + QLatin1String(ending)).size() > 0) return true;
  return false;
}

void Remove_Sidecars(const QString& path) {
  for (const char* ending : sidecarEndings) QFile::remove(path + QLatin1String(ending));
}

AsideDatabase::AsideDatabase(const QString& target) : path(Aside_Name(target)) {}

AsideDatabase::~AsideDatabase() {
  QFile::remove(path);
  Remove_Sidecars(path);
}

bool Flush_File(const QString& path) {
  const int file = ::open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC);
  if (file < 0) return false;
  const bool flushed = ::fsync(file) == 0;
  ::close(file);
  return flushed;
}

void Put_In_Place(const QString& aside, const QString& target) {
  if (!Flush_File(aside)) Raise_Device();
  Remove_Sidecars(target);
  if (::rename(QFile::encodeName(aside).constData(), QFile::encodeName(target).constData()) != 0)
    Raise(errors::noPermission);
  Flush_File(QFileInfo(target).absolutePath());
}

}  // namespace database_inner

namespace {

using namespace database_inner;

// A waiting log is read back into the file, so that the file alone is whole; a damaged file is left as it is. Nothing
// is done to a file that another program has open.
void Fold_Log(const QString& path) {
  if (Is_Open_Here(path)) Raise(errors::fileInUse);
  try {
    Engine engine;
    engine.Open(path, {.lockFile = false});
    engine.Close();
  } catch (const Error& error) {
    if (error.number == errors::fileInUse || error.number == errors::diskFull) throw;
  }
}

QString Existing(const QString& path) {
  const QString found = Find_File(path);
  if (found.isEmpty()) Raise(errors::fileNotFound);
  return found;
}

}  // namespace

void CompactDatabase(const QString& source, const QString& target) {
  const QString from = Find_File(source);
  if (from.isEmpty()) Raise(errors::databaseNotFound);
  if (File_Exists(target)) Raise(errors::databaseExists);
  if (!QFileInfo(QFileInfo(target).absolutePath()).isDir()) Raise(errors::pathNotFound);
  const AsideDatabase aside(target);
  try {
    Engine engine;
    // The source may lie where nothing can be written, the template for one.
    const bool fixed = !QFileInfo(QFileInfo(from).path()).isWritable() || !QFileInfo(from).isWritable();
    engine.Open(from, {.readOnly = fixed, .lockFile = false});
    engine.Write_Whole_To(aside.path);
    engine.Close();
  } catch (const Error& error) {
    if (error.number == errors::fileInUse) Raise(errors::databaseInUse);
    throw;
  }
  Put_In_Place(aside.path, target);
}

void Table_File_Copy(const QString& source, const QString& target) {
  const QString from = Existing(source);
  Fold_Log(from);
  const QString old = Find_File(target);
  if (!old.isEmpty()) {
    Fold_Log(old);
    Remove_Sidecars(old);
  }
  Remove_Sidecars(target);  // SQLite would play them over the new file
  File_Copy(from, target);
}

void Table_File_Rename(const QString& source, const QString& target) {
  const QString from = Existing(source);
  Fold_Log(from);
  if (Is_Open_Here(target)) Raise(errors::fileInUse);
  if (!QFileInfo::exists(target)) Remove_Sidecars(target);
  File_Rename(from, target);
  // What a damaged file could not take in goes along with it.
  for (const char* ending : {"-wal", "-journal"})
    if (QFileInfo(from + QLatin1String(ending)).size() > 0)
      QFile::rename(from + QLatin1String(ending), target + QLatin1String(ending));
  Remove_Sidecars(from);
}

void Table_File_Delete(const QString& path) {
  const QString file = Existing(path);
  Fold_Log(file);
  Remove_Sidecars(file);
  Kill(file);
}

QString Lock_Holder(const QString& path) {
  const QString found = Find_File(path);
  const QString file = Lock_File_Of(found.isEmpty() ? path : found);
  if (!QFileInfo::exists(file)) return {};
  qint64 process = 0;
  QString host, program;
  if (!QLockFile(file).getLockInfo(&process, &host, &program)) return {};
  if (process == QCoreApplication::applicationPid()) return {};
  const bool here = host == QSysInfo::machineHostName();
  if (here && ::kill(static_cast<pid_t>(process), 0) != 0 && errno == ESRCH) return {};
  return QStringLiteral("%1 auf %2 (Prozess %3)").arg(program, host).arg(process);
}
