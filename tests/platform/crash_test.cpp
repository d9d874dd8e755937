#include <gtest/gtest.h>
#include <poll.h>
#include <signal.h>
#include <sqlite3.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <functional>

#include "platform/database.h"
#include "platform/fault_vfs.h"
#include "support/fixture.h"

// What the disk, the power and other programs can do to a table.

namespace {

TableDef Numbers() { return {"MapData", {{"ID", FieldType::Text, 79}, {"Xmap", FieldType::Integer, 0}}}; }

int Error_Of(const std::function<void()>& work) {
  try {
    work();
  } catch (const Error& error) {
    return error.number;
  }
  return 0;
}

void Append(Recordset& rows, int number) {
  rows.AddNew();
  rows.Set(0, QStringLiteral("Zeile %1").arg(number));
  rows.Set(1, qint64{number});
  rows.Update();
}

QString Integrity(Database& database) {
  sqlite3_stmt* statement = nullptr;
  sqlite3_prepare_v2(database.Handle(), "PRAGMA integrity_check", -1, &statement, nullptr);
  sqlite3_step(statement);
  const QString text = QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(statement, 0)));
  sqlite3_finalize(statement);
  return text;
}

// A second process that runs `work` with a pipe to tell by.
class Child {
 public:
  explicit Child(const std::function<void(int out)>& work) {
    int ends[2];
    if (pipe(ends) != 0) qFatal("pipe");
    process = fork();
    if (process == 0) {
      close(ends[0]);
      try {
        work(ends[1]);
      } catch (const Error&) {
        _exit(2);
      }
      _exit(0);
    }
    close(ends[1]);
    in = ends[0];
  }
  ~Child() {
    Kill();
    close(in);
  }
  void Kill() {
    if (process <= 0) return;
    kill(process, SIGKILL);
    waitpid(process, nullptr, 0);
    process = 0;
  }
  // The number told next, -1 if none comes.
  int Next_Number(int milliseconds) {
    int number = -1;
    pollfd waiting{in, POLLIN, 0};
    if (poll(&waiting, 1, milliseconds) != 1 || read(in, &number, sizeof number) != sizeof number) return -1;
    return number;
  }
  int Last_Number(int last) {
    for (int number = last; number >= 0; number = Next_Number(0)) last = number;
    return last;
  }
  pid_t process = 0;
  int in = -1;
};

class CrashTest : public ::testing::Test {
 protected:
  void Make() {
    auto database = Workspace::CreateDatabase(path);
    database->CreateTable(Numbers());
    database->Close();
  }
  QTemporaryDir folder;
  QString path = folder.filePath("KARTE.MDB");
};

TEST_F(CrashTest, KilledWhileAppending) {
  Make();
  int acknowledged = 0, before = 0;
  quint32 seed = 20;
  for (int round = 0; round < 20; ++round) {
    Child writer([&](int out) {
      auto database = Workspace::OpenDatabase(path);
      auto rows = database->OpenRecordset("MapData");
      for (int number = rows->RecordCount() + 1;; ++number) {
        Append(*rows, number % 30000);
        if (write(out, &number, sizeof number) != sizeof number) _exit(3);
        if (number % 7 == 0) database->Checkpoint();
      }
    });
    // Every other one is let write at first; the rest may be hit while opening.
    if (round % 2 == 1) acknowledged = writer.Next_Number(10000);
    ASSERT_GE(acknowledged, 0);
    seed = seed * 1664525u + 1013904223u;
    usleep((seed >> 8) % 50000);
    writer.Kill();
    acknowledged = std::max(acknowledged, writer.Last_Number(acknowledged));
    auto database = Workspace::OpenDatabase(path);
    ASSERT_EQ(Integrity(*database), "ok");
    auto rows = database->OpenRecordset("MapData");
    ASSERT_GE(rows->RecordCount(), acknowledged);
    ASSERT_LE(rows->RecordCount(), std::max(acknowledged, before) + 1);
    before = rows->RecordCount();
    for (int number = 1; !rows->Eof(); rows->MoveNext(), ++number) ASSERT_EQ(rows->Integer(1), number);
  }
  EXPECT_GE(acknowledged, 10);
}

TEST_F(CrashTest, PowerCutKeepsEveryAcknowledgedRow) {
  FaultVfs disk;
  disk.Watch(folder.path());
  Make();
  auto database = Workspace::OpenDatabase(path);
  auto rows = database->OpenRecordset("MapData");
  for (int number = 1; number <= 120; ++number) {
    Append(*rows, number);
    if (number % 13 == 0) database->Checkpoint();
    if (number == 60) {  // one that is not finished when the power goes
      database->BeginTrans();
      for (int i = 0; i < 50; ++i) Append(*rows, 1000 + i);
      database->Rollback();
    }
    QTemporaryDir after;
    disk.Cut_Power(after.path(), static_cast<quint32>(number));
    std::unique_ptr<Database> survived;
    ASSERT_EQ(Error_Of([&] { survived = Workspace::OpenDatabase(after.filePath("KARTE.MDB")); }), 0) << number;
    ASSERT_EQ(Integrity(*survived), "ok") << number;
    auto found = survived->OpenRecordset("MapData");
    ASSERT_EQ(found->RecordCount(), number);
    found->MoveLast();
    ASSERT_EQ(found->Integer(1), number);
  }
}

TEST_F(CrashTest, OneFlushForOneUpdate) {
  FaultVfs disk;
  Make();
  auto database = Workspace::OpenDatabase(path);
  auto rows = database->OpenRecordset("MapData");
  for (int i = 0; i < 2; ++i) Append(*rows, i);  // switches the log on
  rows->MoveFirst();
  const auto flushes = [&disk](const std::function<void()>& work) {
    const int before = disk.syncs;
    work();
    return disk.syncs - before;
  };
  EXPECT_EQ(flushes([&] { Append(*rows, 3); }), 1);
  EXPECT_EQ(flushes([&] {
              rows->Edit();
              rows->Set(1, qint64{8});
              rows->Update();
            }),
            1);
  EXPECT_EQ(flushes([&] { rows->Delete(); }), 1);
  EXPECT_EQ(flushes([&] {
              database->BeginTrans();
              for (int i = 0; i < 500; ++i) Append(*rows, i);
              database->CommitTrans();
            }),
            1);
  EXPECT_EQ(flushes([&] {
              for (rows->MoveFirst(); !rows->Eof(); rows->MoveNext()) rows->Text(0);
              rows->MoveFirst();
              rows->Edit();
              rows->Update();
            }),
            0);
}

TEST_F(CrashTest, FullDiskLeavesTheOldRow) {
  FaultVfs disk;
  Make();
  auto database = Workspace::OpenDatabase(path);
  auto rows = database->OpenRecordset("MapData");
  disk.room = 10;  // not even the log can be begun
  EXPECT_EQ(Error_Of([&] { Append(*rows, 1); }), 61);
  disk.room = -1;
  Append(*rows, 1);
  rows->MoveFirst();
  for (const int error : {61, 57}) {
    if (error == 61)
      disk.room = 100;
    else
      disk.writeError = SQLITE_IOERR_WRITE;
    rows->Edit();
    rows->Set(1, qint64{5});
    EXPECT_EQ(Error_Of([&] { rows->Update(); }), error);
    EXPECT_FALSE(rows->Editing());
    EXPECT_EQ(rows->Integer(1), 1);
    EXPECT_EQ(Error_Of([&] { Append(*rows, 2); }), error);
    EXPECT_EQ(rows->RecordCount(), 1);
    EXPECT_EQ(Error_Of([&] { rows->Delete(); }), error);
    EXPECT_EQ(rows->Text(0), "Zeile 1");
    EXPECT_EQ(Error_Of([&] { database->CreateTable({"Linie0", Numbers().fields}); }), error);
    EXPECT_FALSE(database->HasTable("Linie0"));
    // A bulk operation that does not fit is gone as a whole.
    EXPECT_EQ(Error_Of([&] {
                database->BeginTrans();
                for (int i = 0; i < 20000; ++i) Append(*rows, i % 30000);
                database->CommitTrans();
              }),
              error);
    database->Rollback();
    EXPECT_FALSE(database->InTrans());
    EXPECT_EQ(rows->RecordCount(), 1);
    disk.room = -1;
    disk.writeError = 0;
  }
  rows->Edit();
  rows->Set(1, qint64{9});
  rows->Update();
  // The log does not fit back into the file: that is told, and nothing is lost.
  disk.room = 100;
  EXPECT_EQ(Error_Of([&] { database->Close(); }), 61);
  disk.room = -1;
  database = Workspace::OpenDatabase(path);
  rows = database->OpenRecordset("MapData");
  EXPECT_EQ(rows->Integer(1), 9);
  EXPECT_EQ(Error_Of([&] { CompactDatabase(folder.filePath("Fehlt.MDB"), folder.filePath("Kopie.MDB")); }), 3024);
  database->Close();
  disk.room = 1000;
  EXPECT_EQ(Error_Of([&] { CompactDatabase(path, folder.filePath("Kopie.MDB")); }), 61);
  EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files), QStringList{"KARTE.MDB"});
}

TEST_F(CrashTest, WhatCannotBeOpened) {
  const auto opening = [this](const char* name) {
    return Error_Of([&] { Workspace::OpenDatabase(folder.filePath(name)); });
  };
  const auto put = [this](const char* name, const QByteArray& content) {
    QFile file(folder.filePath(name));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write(content) == content.size());
  };
  EXPECT_EQ(opening("Fehlt.MDB"), 3024);
  put("Leer.MDB", "");
  EXPECT_EQ(opening("Leer.MDB"), 3343);
  put("Text.MDB", QByteArray("Dies ist keine Tabelle.").repeated(200));
  EXPECT_EQ(opening("Text.MDB"), 3343);
  Make();
  QFile file(path);
  ASSERT_TRUE(file.open(QIODevice::ReadOnly));
  QByteArray content = file.readAll();
  put("Kopf.MDB", QByteArray(1024, '\0') + content.mid(1024));
  EXPECT_EQ(opening("Kopf.MDB"), 3343);
  content.replace("CREATE TABLE", "CRXATE TABLE");
  put("Schema.MDB", content);
  EXPECT_EQ(opening("Schema.MDB"), 3343);
  {
    FaultVfs disk;
    disk.readOnly = true;
    EXPECT_EQ(opening("KARTE.MDB"), 3051);
    EXPECT_EQ(Error_Of([&] {
                auto database = Workspace::OpenDatabase(path, {.readOnly = true});
                auto rows = database->OpenRecordset("MapData");
                EXPECT_TRUE(rows->Eof());
                rows->AddNew();
              }),
              70);
  }
  EXPECT_EQ(Error_Of([&] { Workspace::CreateDatabase(folder.filePath("karte.mdb")); }), 3204);
  EXPECT_EQ(Error_Of([&] { CompactDatabase(path, folder.filePath("Text.MDB")); }), 3204);
  EXPECT_EQ(opening("karte.mdb"), 0);  // in any case
}

// Permissions do not hold for root, so that another user has to try.
TEST_F(CrashTest, PlacesWithoutPermission) {
  Make();
  const QString readOnlyFile = folder.filePath("Fest.MDB"), closed = folder.filePath("zu");
  QDir(folder.path()).mkdir("zu");
  QDir(folder.path()).mkdir("offen");
  ASSERT_TRUE(QFile::copy(path, readOnlyFile) && QFile::copy(path, closed + "/A.MDB"));
  ASSERT_EQ(chmod(qPrintable(readOnlyFile), 0444), 0);
  ASSERT_EQ(chmod(qPrintable(closed + "/A.MDB"), 0666), 0);
  ASSERT_EQ(chmod(qPrintable(folder.filePath("offen")), 0777), 0);
  ASSERT_EQ(chmod(qPrintable(closed), 0555), 0);
  ASSERT_EQ(chmod(qPrintable(folder.path()), 0777), 0);
  Child other([&](int out) {
    if (getuid() == 0 && setresuid(65534, 65534, 65534) != 0) _exit(4);
    const std::vector<std::function<void()>> works = {
        [&] { Workspace::OpenDatabase(readOnlyFile); },
        [&] { Workspace::OpenDatabase(closed + "/A.MDB"); },
        [&] { Workspace::CreateDatabase(closed + "/B.MDB"); },
        [&] { CompactDatabase(closed + "/A.MDB", closed + "/B.MDB"); },
        [&] { RepairDatabase(closed + "/A.MDB"); },
        [&] { Workspace::CreateDatabase(closed + "/fehlt/B.MDB"); },
        [&] { Workspace::OpenDatabase(closed + "/A.MDB", {.readOnly = true})->OpenRecordset("MapData"); },
        [&] { CompactDatabase(closed + "/A.MDB", folder.filePath("offen/B.MDB")); },
        [&] { CompactDatabase(readOnlyFile, folder.filePath("offen/C.MDB")); },
    };
    for (const auto& work : works) {
      const int error = Error_Of(work);
      if (write(out, &error, sizeof error) != sizeof error) _exit(3);
    }
  });
  for (const int expected : {3051, 3051, 3051, 3051, 3051, 76, 0, 0, 0}) {
    int error = -1;
    ASSERT_EQ(read(other.in, &error, sizeof error), static_cast<ssize_t>(sizeof error));
    EXPECT_EQ(error, expected);
  }
  chmod(qPrintable(closed), 0755);
}

TEST_F(CrashTest, TwoProgramsOnOneTable) {
  Make();
  Child other([&](int out) {
    auto database = Workspace::OpenDatabase(path);
    auto rows = database->OpenRecordset("MapData");
    Append(*rows, 1);
    const int ready = 1;
    if (write(out, &ready, sizeof ready) != sizeof ready) _exit(3);
    pause();
  });
  ASSERT_EQ(other.Next_Number(10000), 1);
  const QString target = folder.filePath("Kopie.MDB");
  EXPECT_EQ(Error_Of([&] { Workspace::OpenDatabase(path); }), 3196);
  EXPECT_EQ(Error_Of([&] { CompactDatabase(path, target); }), 3356);
  EXPECT_EQ(Error_Of([&] { RepairDatabase(path); }), 3356);
  EXPECT_EQ(Error_Of([&] { Table_File_Copy(path, target); }), 3196);
  EXPECT_EQ(Error_Of([&] { Table_File_Delete(path); }), 3196);
  EXPECT_FALSE(QFile::exists(target));
  EXPECT_TRUE(Lock_Holder(path).contains(QString::number(other.process))) << Lock_Holder(path);
  other.Kill();
  EXPECT_EQ(Lock_Holder(path), "");
  auto database = Workspace::OpenDatabase(path);
  EXPECT_EQ(database->RowCount("MapData"), 1);
  EXPECT_EQ(Error_Of([&] { Workspace::OpenDatabase(path); }), 3196);  // nor twice by ourselves
  EXPECT_EQ(Error_Of([&] { Table_File_Copy(path, target); }), 3196);
  database->Close();
}

// Copies and renames must neither lose a waiting log nor let an old one be played over a new file.
TEST_F(CrashTest, FilesWithAWaitingLog) {
  const auto leave_log = [](const QString& file, int rows) {
    Child writer([&](int) {
      if (!QFile::exists(file)) Workspace::CreateDatabase(file)->CreateTable(Numbers());
      auto database = Workspace::OpenDatabase(file);
      auto set = database->OpenRecordset("MapData");
      for (int i = 0; i < rows; ++i) Append(*set, i);
      kill(getpid(), SIGKILL);
    });
    waitpid(writer.process, nullptr, 0);
    writer.process = 0;
  };
  const auto count = [](const QString& file) { return Workspace::OpenDatabase(file)->RowCount("MapData"); };
  const QString target = folder.filePath("Ziel.MDB"), third = folder.filePath("Dritte.MDB");
  leave_log(path, 3);
  leave_log(target, 200);
  ASSERT_TRUE(QFile::exists(path + "-wal") && QFile::exists(target + "-wal"));
  Table_File_Copy(path, target);
  EXPECT_EQ(count(target), 3);
  leave_log(path, 2);
  Table_File_Rename(path, third);
  EXPECT_EQ(count(third), 5);
  leave_log(third, 1);
  CompactDatabase(third, path);
  EXPECT_EQ(count(path), 6);
  leave_log(path, 9);
  Table_File_Delete(path);
  EXPECT_FALSE(QFile::exists(path) || QFile::exists(path + "-wal"));
  EXPECT_EQ(Error_Of([&] { Table_File_Delete(path); }), 53);
}

TEST_F(CrashTest, CompactingKeepsTablesRowsAndKeys) {
  Make();
  auto database = Workspace::OpenDatabase(path);
  database->CreateTable({"Linie0", Numbers().fields});
  auto rows = database->OpenRecordset("MapData");
  database->BeginTrans();
  for (int i = 0; i < 3000; ++i) Append(*rows, i);
  for (rows->MoveFirst(); !rows->Eof();) {
    if (rows->Integer(1) % 3 != 0)
      rows->Delete();
    else
      rows->MoveNext();
  }
  database->CommitTrans();
  rows->MoveTo(500);
  const QString bookmark = rows->Bookmark();
  database->Close();
  const QString target = folder.filePath("Kopie.MDB");
  CompactDatabase(path, target);
  EXPECT_LT(QFileInfo(target).size(), QFileInfo(path).size() / 2);
  database = Workspace::OpenDatabase(target);
  rows = database->OpenRecordset("MapData");
  EXPECT_EQ(rows->RecordCount(), 1000);
  rows->SetBookmark(bookmark);
  EXPECT_EQ(rows->Integer(1), 1500);
  EXPECT_EQ(database->TableDefs(), std::vector<TableDef>({Numbers(), {"Linie0", Numbers().fields}}));
  EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files), QStringList({"KARTE.MDB", "Kopie.ldb", "Kopie.MDB"}));
}

}  // namespace
