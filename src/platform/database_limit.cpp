#include <sqlite3.h>

#include <QFileInfo>

#include "platform/database_inner.h"

// Bounds of the user's statements: a join of a small table with itself gives millions of rows.

namespace database_inner {
namespace {

constexpr int betweenLooks = 50;          // milliseconds
constexpr int stepsBetween = 1000;        // of SQLite, less than a millisecond
constexpr qint64 most = qint64{2} << 30;  // bytes of a result that nobody has bounded

QString Too_Large(qint64 bytes) {
  return QStringLiteral(
             "Die Anweisung braucht mehr Speicher, als ihr zusteht (%1 MB), und wurde abgebrochen. Schränken Sie sie "
             "ein, zum Beispiel durch 'where'; bei mehreren Tabellen muss dort stehen, was sie verbindet.")
      .arg(bytes >> 20);
}

}  // namespace

Limit::Limit(const QString& file, int milliseconds, WorkBounds all)
    : path(file),
      longest(milliseconds),
      bounds(std::move(all)),
      memoryBefore(sqlite3_memory_used()),
      fileBefore(File_Bytes()) {
  clock.start();
}

qint64 Limit::File_Bytes() const {
  qint64 bytes = 0;
  for (const char* ending : {"", "-wal", "-journal"}) bytes += QFileInfo(path + QLatin1String(ending)).size();
  return bytes;
}

void Limit::Set_Too_Large() { fault = {errors::outOfMemory, Too_Large(bounds.bytes)}; }

bool Limit::Is_Stopped(int milliseconds) {
  if (!bounds.stopped) return false;
  struct Asking {
    bool& it;
    ~Asking() { it = false; }
  } const scope{asking};
  asking = true;
  try {
    return bounds.stopped(milliseconds);
  } catch (...) {
    return true;  // nothing may be thrown through SQLite
  }
}

bool Limit::Is_Reached() {
  if (asking) return false;
  const qint64 now = clock.elapsed();
  if (now > longest)
    fault = {errors::sqlSyntax, QStringLiteral("Die Anweisung dauerte zu lange und wurde abgebrochen.")};
  else if (taken + sqlite3_memory_used() - memoryBefore > bounds.bytes)
    Set_Too_Large();
  else if (now - lastLook >= betweenLooks) {
    lastLook = now;
    if (File_Bytes() - fileBefore > bounds.bytes)
      Set_Too_Large();
    else if (Is_Stopped(static_cast<int>(now)))
      fault = {errors::workStopped, Error_Text(errors::workStopped)};
  }
  return fault.number != 0;
}

void Limit::Charge(qint64 bytes) {
  taken = bytes;
  if (bytes > bounds.bytes) Raise(errors::outOfMemory, Too_Large(bounds.bytes));
}

void Engine::Charge(qint64 bytes) {
  if (limit)
    limit->Charge(bytes);
  else if (bytes > most)
    Raise(errors::outOfMemory, Too_Large(most));
}

}  // namespace database_inner

struct TimeLimit::Inner {
  std::shared_ptr<database_inner::Engine> engine;
  database_inner::Limit limit;
  database_inner::Limit* former;

  // Of the innermost limit, or none.
  static void Bind(database_inner::Engine& engine, database_inner::Limit* limit) {
    engine.limit = limit;
    if (!engine.db) return;
    const auto ask = [](void* it) { return static_cast<database_inner::Limit*>(it)->Is_Reached() ? 1 : 0; };
    sqlite3_progress_handler(engine.db, database_inner::stepsBetween, limit ? +ask : nullptr, limit);
  }
};

TimeLimit::TimeLimit(Database& database, int milliseconds, WorkBounds bounds) {
  const std::shared_ptr<database_inner::Engine>& engine = database.inner->engine;
  engine->Need_Open();
  inner.reset(new Inner{engine, {engine->path, milliseconds, std::move(bounds)}, engine->limit});
  Inner::Bind(*engine, &inner->limit);
}

TimeLimit::~TimeLimit() { Inner::Bind(*inner->engine, inner->former); }
