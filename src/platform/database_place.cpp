#include <sqlite3.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <algorithm>
#include <climits>

#include "platform/database_inner.h"

// Where an open file lies, and copies of its tables that need no path to it.

namespace database_inner {
namespace {

QByteArray Link_Of(int descriptor) { return "/proc/self/fd/" + QByteArray::number(descriptor); }

QByteArray Target_Of_Link(const QByteArray& link) {
  char target[PATH_MAX];
  const ssize_t length = ::readlink(link.constData(), target, sizeof target);
  return length > 0 ? QByteArray(target, length) : QByteArray();
}

bool Same_File(const struct stat& a, const struct stat& b) { return a.st_dev == b.st_dev && a.st_ino == b.st_ino; }

}  // namespace

OpenedAs::OpenedAs(const QString& path) {
  struct stat file {
  }, held{};
  if (::stat(QFile::encodeName(path).constData(), &file) != 0) return;
  for (const QString& name : QDir(QStringLiteral("/proc/self/fd")).entryList(QDir::AllEntries | QDir::System)) {
    const int number = name.toInt();
    if (number > descriptor && ::fstat(number, &held) == 0 && Same_File(file, held)) descriptor = number;
  }
  target = Target_Of_Link(Link_Of(descriptor));
}

QString OpenedAs::Place_Now(const QString& path) const {
  if (target.isEmpty()) return QFileInfo::exists(path) ? path : QString();
  const QByteArray now = Target_Of_Link(Link_Of(descriptor));
  if (now == target) return path;
  return now.endsWith(" (deleted)") ? QString() : QFile::decodeName(now);
}

QString Engine::Place_Now() const {
  Need_Open();
  return openedAs.Place_Now(path);
}

void Engine::Write_Whole_To(const QString& file) {
  const Statement statement = Prepare("VACUUM INTO ?1");
  const QByteArray name = file.toUtf8();
  sqlite3_bind_text(statement.get(), 1, name.constData(), static_cast<int>(name.size()), SQLITE_STATIC);
  const int rc = sqlite3_step(statement.get());
  if (rc != SQLITE_DONE) Fail(rc);
}

}  // namespace database_inner

QString Database::Place_Now() const { return inner->engine->Place_Now(); }

void Database::Copy_To(const QString& target) {
  if (!QFileInfo(QFileInfo(target).absolutePath()).isDir()) Raise(errors::pathNotFound);
  const database_inner::AsideDatabase aside(target);
  inner->engine->Write_Whole_To(aside.path);
  database_inner::Put_In_Place(aside.path, target);
}
