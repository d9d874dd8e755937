#include <sqlite3.h>
#include <sys/stat.h>

#include "platform/child.h"
#include "platform/fault_vfs.h"
#include "platform/page_log.h"
#include "support/records.h"

// What the disk, the power and other programs can do to a table.

namespace {

TableDef Numbers() { return {"MapData", {{"ID", FieldType::Text, 79}, {"Xmap", FieldType::Integer, 0}}}; }

void Append(Recordset& rows, int number) { Append(rows, {u"Zeile %1"_s.arg(number), qint64{number}}); }

void Append_Many(Database& database, Recordset& rows, int from, int end) {
  database.BeginTrans();
  for (int number = from; number < end; ++number) Append(rows, number);
  database.CommitTrans();
}

QString Integrity(Database& database) {
  return database.OpenRecordset("SELECT * FROM pragma_integrity_check")->Text(0);
}

class CrashTest : public ::testing::Test {
 protected:
  static void Make(const QString& file) { Workspace::CreateDatabase(file)->CreateTable(Numbers()); }
  void Open() {
    database = Workspace::OpenDatabase(path);
    rows = database->OpenRecordset("MapData");
  }
  QTemporaryDir folder;
  const QString path = folder.filePath("KARTE.MDB"), target = folder.filePath("Kopie.MDB");
  std::unique_ptr<Database> database;
  std::unique_ptr<Recordset> rows;
};

TEST_F(CrashTest, PowerCutKeepsEveryAcknowledgedRow) {
  FaultVfs disk(folder.path());
  Make(path);
  Open();
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
  Make(path);
  Open();
  for (int i = 0; i < 2; ++i) Append(*rows, i);  // switches the log on
  rows->MoveFirst();
  const auto read_all = [&] {
    for (rows->MoveFirst(); !rows->Eof(); rows->MoveNext()) rows->Text(0);
    rows->MoveFirst();
    rows->Edit();
    rows->Update();
  };
  const std::pair<std::function<void()>, int> works[] = {{[&] { Append(*rows, 3); }, 1},
                                                         {[&] { Set_Field(*rows, 1, qint64{8}); }, 1},
                                                         {[&] { rows->Delete(); }, 1},
                                                         {[&] { Append_Many(*database, *rows, 0, 500); }, 1},
                                                         {read_all, 0}};
  for (const auto& [work, flushes] : works) {
    const int before = disk.syncs;
    work();
    EXPECT_EQ(disk.syncs - before, flushes);
  }
}

TEST_F(CrashTest, FullDiskLeavesTheOldRow) {
  FaultVfs disk;
  Make(path);
  Open();
  disk.room = 10;  // not even the log can be begun
  EXPECT_EQ(Error_Of([&] { Append(*rows, 1); }), 61);
  disk.room = -1;
  Append(*rows, 1);
  rows->MoveFirst();
  const TableDef line{"Linie0", Numbers().fields};
  for (const int error : {61, 57}) {
    disk.room = error == 61 ? 100 : -1;
    disk.writeError = error == 61 ? 0 : SQLITE_IOERR_WRITE;
    const std::function<void()> works[] = {[&] { Set_Field(*rows, 1, qint64{5}); }, [&] { Append(*rows, 2); },
                                           [&] { rows->Delete(); }, [&] { database->CreateTable(line); },
                                           [&] { Append_Many(*database, *rows, 0, 20000); }};
    for (const auto& work : works) {
      EXPECT_THAT(Raised(work), Tells(error, {error == 61 ? "Schaffen Sie dort Platz" : "Datenträger"}));
      EXPECT_FALSE(rows->Editing());
      database->Rollback();  // of the bulk operation, which is gone as a whole
      EXPECT_FALSE(database->InTrans());
      EXPECT_EQ(rows->RecordCount(), 1);
      EXPECT_EQ(rows->Text(0), "Zeile 1");
      EXPECT_EQ(rows->Integer(1), 1);
      EXPECT_FALSE(database->HasTable("Linie0"));
    }
    EXPECT_EQ(Error_Of([&] { Append_Many(*database, *rows, 0, 2); }), error);
    EXPECT_FALSE(database->InTrans());  // what could not be committed is taken back
    EXPECT_EQ(rows->RecordCount(), 1);
    disk.room = -1;
    disk.writeError = 0;
  }
  Set_Field(*rows, 1, qint64{9});
  // The log does not fit back into the file: that is told, and nothing is lost.
  disk.room = 100;
  EXPECT_EQ(Error_Of([&] { database->Close(); }), 61);
  disk.room = -1;
  Open();
  EXPECT_EQ(rows->Integer(1), 9);
  database->Close();
  disk.room = 1000;
  EXPECT_EQ(Error_Of([&] { CompactDatabase(path, target); }), 61);
  EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files), QStringList{"KARTE.MDB"});
}

TEST_F(CrashTest, WhatCannotBeOpened) {
  const auto opening = [this](const char* name) {
    return Error_Of([&] { Workspace::OpenDatabase(folder.filePath(name)); });
  };
  Make(path);
  const QByteArray sound = Read_Bytes(path);
  const QByteArray damaged[] = {"", QByteArray("Dies ist keine Tabelle.").repeated(200),
                                QByteArray(1024, '\0') + sound.mid(1024),
                                QByteArray(sound).replace("CREATE TABLE", "CRXATE TABLE")};
  for (const QByteArray& content : damaged) {
    Replace_File(folder.filePath("Schaden.MDB"), content);
    EXPECT_EQ(opening("Schaden.MDB"), 3343) << content.left(20).data();
  }
  EXPECT_EQ(opening("Fehlt.MDB"), 3024);
  EXPECT_EQ(Error_Of([&] { CompactDatabase(folder.filePath("Fehlt.MDB"), target); }), 3024);
  {
    FaultVfs disk;
    disk.readOnly = true;
    EXPECT_EQ(opening("KARTE.MDB"), 3051);
    const auto readable = Workspace::OpenDatabase(path, {.readOnly = true});
    const auto empty = readable->OpenRecordset("MapData");
    EXPECT_TRUE(empty->Eof());
    EXPECT_EQ(Error_Of([&] { empty->AddNew(); }), 70);
  }
  EXPECT_EQ(Error_Of([&] { Workspace::CreateDatabase(folder.filePath("karte.mdb")); }), 3204);
  EXPECT_EQ(Error_Of([&] { CompactDatabase(path, folder.filePath("Schaden.MDB")); }), 3204);
  EXPECT_EQ(opening("karte.mdb"), 0);  // in any case
}

// Permissions do not hold for root, so that another user has to try.
TEST_F(CrashTest, PlacesWithoutPermission) {
  Make(path);
  const QString readOnlyFile = folder.filePath("Fest.MDB"), closed = folder.filePath("zu");
  QDir(folder.path()).mkdir("zu");
  QDir(folder.path()).mkdir("offen");
  ASSERT_TRUE(QFile::copy(path, readOnlyFile) && QFile::copy(path, closed + "/A.MDB"));
  const std::pair<QString, mode_t> modes[] = {{readOnlyFile, 0444u},
                                              {closed + "/A.MDB", 0666u},
                                              {folder.filePath("offen"), 0777u},
                                              {closed, 0555u},
                                              {folder.path(), 0777u}};
  for (const auto& [name, mode] : modes) ASSERT_EQ(chmod(qPrintable(name), mode), 0);
  const QString openFolder = folder.filePath("offen"), readable = closed + "/A.MDB";
  const std::pair<std::function<void()>, int> works[] = {
      {[&] { Workspace::OpenDatabase(readOnlyFile); }, 3051},
      {[&] { Workspace::OpenDatabase(readable); }, 3051},
      {[&] { Workspace::CreateDatabase(closed + "/B.MDB"); }, 3051},
      {[&] { CompactDatabase(readable, closed + "/B.MDB"); }, 3051},
      {[&] { RepairDatabase(readable); }, 3051},
      {[&] { Workspace::CreateDatabase(closed + "/fehlt/B.MDB"); }, 76},
      {[&] { Workspace::OpenDatabase(readable, {.readOnly = true})->OpenRecordset("MapData"); }, 0},
      {[&] { CompactDatabase(readable, openFolder + "/B.MDB"); }, 0},
      {[&] { CompactDatabase(readOnlyFile, openFolder + "/C.MDB"); }, 0},
  };
  Child other([&](int out) {
    if (getuid() == 0 && setresuid(65534, 65534, 65534) != 0) _exit(4);
    for (const auto& [work, expected] : works) Child::Tell(out, Error_Of(work));
  });
  for (const auto& [work, expected] : works) EXPECT_EQ(other.Next_Number(10000), expected);
  chmod(qPrintable(closed), 0755);
}

TEST_F(CrashTest, TwoProgramsOnOneTable) {
  Make(path);
  Child other([&](int out) {
    Open();
    Append(*rows, 1);
    Child::Tell(out, 1);
    pause();
  });
  ASSERT_EQ(other.Next_Number(10000), 1);
  const auto all_refuse = [&] {
    EXPECT_EQ(Error_Of([&] { Workspace::OpenDatabase(path); }), 3196);
    EXPECT_EQ(Error_Of([&] { CompactDatabase(path, target); }), 3356);
    EXPECT_EQ(Error_Of([&] { RepairDatabase(path); }), 3356);
    EXPECT_EQ(Error_Of([&] { Table_File_Copy(path, target); }), 3196);
    EXPECT_EQ(Error_Of([&] { Table_File_Delete(path); }), 3196);
    EXPECT_FALSE(QFile::exists(target));
  };
  all_refuse();
  EXPECT_TRUE(Lock_Holder(path).contains(QString::number(other.process))) << Lock_Holder(path);
  other.Kill();
  EXPECT_EQ(Lock_Holder(path), "");
  Open();
  EXPECT_EQ(database->RowCount("MapData"), 1);
  all_refuse();  // nor twice by ourselves
}

// Copies and renames must neither lose a waiting log nor let an old one be played over a new file.
TEST_F(CrashTest, FilesWithAWaitingLog) {
  const auto leave_log = [](const QString& file, int count) {
    Child writer([&](int) {
      if (!QFile::exists(file)) Make(file);
      const auto open = Workspace::OpenDatabase(file);
      const auto set = open->OpenRecordset("MapData");
      for (int i = 0; i < count; ++i) Append(*set, i);
      kill(getpid(), SIGKILL);
    });
    writer.Wait();
  };
  const auto count = [](const QString& file) { return Workspace::OpenDatabase(file)->RowCount("MapData"); };
  const QString third = folder.filePath("Dritte.MDB");
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

// With a log the file may be shorter than it will be, and its head may tell more pages than are there yet.
TEST_F(CrashTest, CutFileWithALog) {
  Make(path);
  Open();
  for (int i = 0; i < 3; ++i) Append(*rows, i);
  database->CreateTable({"Linie0", Numbers().fields});
  database->Checkpoint();
  const QByteArray before = Read_Bytes(path);
  Append_Many(*database, *rows, 3, 400);
  const QByteArray log = Read_Bytes(path + "-wal");
  const PageLog pages = Read_Log(path + "-wal");
  database->Close();
  ASSERT_GT(pages.pages * 1024, before.size() + 5000);
  const QString copy = folder.filePath("Kopie.MDB");
  const auto put = [&](const QByteArray& file, const QByteArray& beside) {
    Replace_File(copy, file);
    Replace_File(copy + "-wal", beside);
  };
  const auto rows_in_copy = [&] { return Workspace::OpenDatabase(copy)->RowCount("MapData"); };
  QByteArray begun = before;  // the first page of a checkpoint that did not end
  begun.replace(0, 1024, log.mid(pages.places.value(1), 1024));
  QByteArray torn = log;
  torn[log.size() - 5] = static_cast<char>(torn[log.size() - 5] ^ 1);
  for (const QByteArray& file : {before, begun, begun + QByteArray(300, 'x')}) {
    put(file, log);
    EXPECT_EQ(rows_in_copy(), 400);
    EXPECT_FALSE(QFile::exists(copy + "-wal"));
  }
  const QString other = folder.filePath("Andere.MDB");
  Make(other);
  put(Read_Bytes(other), log);
  EXPECT_EQ(rows_in_copy(), 0) << "the log of another file that lay there before";
  EXPECT_EQ(Read_Bytes(copy + "-wal_alt"), log);
  put(before, torn);
  EXPECT_EQ(rows_in_copy(), 3) << "a transaction that was not finished";
  put(begun, torn);
  EXPECT_EQ(Error_Of(rows_in_copy), 3343);
  // The page of the second table, which the log does not hold, is there in part: nothing of file and log may be
  // touched.
  ASSERT_FALSE(pages.places.contains(static_cast<quint32>(before.size() / 1024)));
  const QByteArray cut = before.chopped(100);
  put(cut, log);
  EXPECT_EQ(Error_Of(rows_in_copy), 3343);
  EXPECT_EQ(Read_Bytes(copy), cut);
  EXPECT_EQ(Read_Bytes(copy + "-wal"), log);
  // The log's rows are rescued as well, those of a transaction that was not finished are not.
  EXPECT_EQ(RepairDatabase(copy).Rows_In("MapData"), 400);
  put(cut, torn);
  EXPECT_EQ(RepairDatabase(copy).Rows_In("MapData"), 3);
}

}  // namespace
