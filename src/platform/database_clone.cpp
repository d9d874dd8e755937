#include "platform/database_clone.h"

#include <sqlite3.h>

#include <QFile>
#include <QFileInfo>
#include <cstdio>
#include <utility>

#include "platform/database_inner.h"

void Clone_Database(const Database& source, const QString& target) {
  if (!source.IsOpen()) Raise(errors::databaseNotFound);
  if (!QFileInfo(QFileInfo(target).absolutePath()).isDir()) Raise(errors::pathNotFound);
  const database_inner::AsideDatabase aside(target);
  sqlite3* copy = nullptr;
  struct Closer {
    sqlite3*& it;
    ~Closer() { sqlite3_close(it); }
  } const closer{copy};
  const auto check = [&copy](int rc) {
    if (rc != SQLITE_OK && rc != SQLITE_DONE) throw database_inner::Error_Of_Result(copy, rc);
  };
  check(sqlite3_open(aside.path.toUtf8().constData(), &copy));
  check(sqlite3_exec(copy, "PRAGMA synchronous=OFF; PRAGMA journal_mode=OFF", nullptr, nullptr, nullptr));
  sqlite3_backup* backup = sqlite3_backup_init(copy, "main", source.Handle(), "main");
  if (!backup) check(sqlite3_errcode(copy));
  const int rc = sqlite3_backup_step(backup, -1);
  const int finished = sqlite3_backup_finish(backup);
  check(rc);
  check(finished);
  // A log of its own it has none.
  check(sqlite3_exec(copy, "PRAGMA journal_mode=DELETE", nullptr, nullptr, nullptr));
  sqlite3_close(std::exchange(copy, nullptr));
  database_inner::Remove_Sidecars(target);
  if (::rename(QFile::encodeName(aside.path).constData(), QFile::encodeName(target).constData()) != 0)
    Raise(errors::noPermission);
}
