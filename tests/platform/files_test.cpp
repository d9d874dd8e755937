#include "platform/files.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <ctime>

#include "platform/child.h"
#include "platform/file_limit.h"

namespace {
class Files : public FolderTest {
 protected:
  void TearDown() override { File_Write_Fault = nullptr; }
  static QByteArray Content(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<missing>");
  }
};
}  // namespace

// What a kill leaves behind, beside what others still write and what is none of ours.
TEST_F(Files, AsidesOfProgramsThatEndedAreCleared) {
  Child child([](int) {});
  const pid_t ended = child.process, running = ::getppid();
  child.Wait();
  const auto put_all = [&](const QStringList& patterns, pid_t writer) {
    for (const QString& pattern : patterns) Put(pattern.arg(writer), "halb");
  };
  const QStringList ours = {".flurax-%1-1.neu", ".flurax-%1-12.neu-wal", "TEMP.MDB.neu.%1~", "Karte ä.mdb.%1~-journal"};
  put_all(ours, ended);
  put_all(ours, running);
  const QStringList foreign = {"flurax-%1-1.neu", ".flurax-%1.neu", "Brief.txt.%1~", "Karte.mdb.%1", "Karte.mdb~%1~"};
  put_all(foreign, ended);
  Put(".flurax-x-1.neu", "");
  Put("Unter/.flurax-1-1.neu", "");
  QStringList kept{".flurax-x-1.neu", "Unter"};
  for (const QString& pattern : ours) kept << pattern.arg(running);
  for (const QString& pattern : foreign) kept << pattern.arg(ended);
  Clear_Stale_Asides(folder.path());
  EXPECT_THAT(Names(), ::testing::UnorderedElementsAreArray(kept));
  EXPECT_EQ(QFileInfo(Aside_Name(Path("Karte.MDB"))).path(), folder.path());
  Put(QFileInfo(Aside_Name(Path("Karte.MDB"))).fileName(), "eigen");
  Clear_Stale_Asides(folder.path());
  Clear_Stale_Asides(Path("fehlt"));
  EXPECT_THAT(Names(), ::testing::UnorderedElementsAreArray(kept)) << "of an earlier program with our number";
}

TEST_F(Files, EveryByteOfTheCodePageComesBack) {
  QByteArray all;
  for (int i = 1; i < 256; ++i) all.append(static_cast<char>(i));
  const QString text = From_1252(all);
  EXPECT_EQ(To_1252(text), all);
  EXPECT_EQ(text[0x80 - 1], QChar(0x20AC));
  EXPECT_EQ(text[0x9F - 1], QChar(0x0178));
  EXPECT_EQ(text[0xA8 - 1], QChar(0xA8));
  EXPECT_EQ(To_1252(QString::fromUtf8("Жук € 🦋 a\u0308")), QByteArray("??? \x80 ? \xE4"));
}

TEST_F(Files, LinesOfEveryKindAreRead) {
  const std::pair<QByteArray, QStringList> cases[] = {
      {"", {}},
      {"a", {"a"}},
      {"a\r\nb\r\n", {"a", "b"}},
      {"a\rb\nc\r\n\r\nd", {"a", "b", "c", "", "d"}},
      {"\n", {""}},
      {"\xEF\xBB\xBFGr\xC3\xB6\xC3\x9F\n", {"Größ"}},
      {"Gr\xC3\xB6\xC3\x9F", {"Größ"}},
      {"Gr\xF6\xDF", {"Größ"}},
      {"Gr\xC3\xB6 \xF6", {"GrÃ¶ ö"}},  // one wrong byte: no UTF-8 at all
      {"Stra\xC3", {"StraÃ"}},          // ends within a character
      {"12\xA8", {"12¨"}},
  };
  for (const auto& [bytes, lines] : cases)
    EXPECT_EQ(Read_Lines(Put("text", bytes)), lines) << bytes.toPercentEncoding().data();
  Write_Lines(Path("neu.txt"), {"Größ", "", "Жук"});
  EXPECT_EQ(Content(Path("neu.txt")), QByteArray("Gr\xF6\xDF\r\n\r\n???\r\n"));
  EXPECT_EQ(Error_Of([&] { Read_Lines(Path("fehlt")); }), errors::fileNotFound);
  EXPECT_EQ(Error_Of([&] { Read_Lines(folder.path()); }), errors::noPermission);
  EXPECT_TRUE(Raised([] { Read_Lines("/dev/null"); }).text.contains("Gerät"));
}

TEST_F(Files, AreFoundIgnoringCase) {
  Put("Wald/a.txt", "");
  const QString deep = Put("WALD/Käfer.MDB", "2");
  // In the second of two folders that differ in case; an umlaut of one character or of two.
  for (const char* name : {"wald/KÄFER.mdb", "Wald\\KÄFER.mdb", "WALD/Ka\u0308fer.MDB"})
    EXPECT_EQ(Find_File(Path(name)), deep) << name;
  EXPECT_EQ(Find_File(Path("Wald/b.txt")), QString());
  EXPECT_EQ(Find_File(QString()), QString());
  const QString exact = Put("wald/käfer.mdb", "3");
  EXPECT_EQ(Find_File(Path("wald/käfer.mdb")), exact);
  EXPECT_TRUE(File_Exists(Path("WALD/käfer.mdb")));
  EXPECT_FALSE(File_Exists(Path("Wald")));  // a folder is no file
}

// Lists of folders are remembered: whatever comes, goes or changes its name is noticed all the same, in a folder that
// was left alone for long and in one that is being written.
TEST_F(Files, AreFoundAndMissedAtOnce) {
  const auto rest = [this] {
    const timespec times[] = {{::time(nullptr) - 60, 0}, {::time(nullptr) - 60, 0}};
    ASSERT_EQ(::utimensat(AT_FDCWD, QFile::encodeName(folder.path()).constData(), times, 0), 0);
  };
  for (const bool rested : {true, false}) {
    if (rested) rest();
    for (int i = 0; i < 3; ++i) EXPECT_EQ(Find_File(Path("BILD.png")), QString());
    const QString there = Put("Bild.png", "1");
    EXPECT_EQ(Find_File(Path("BILD.png")), there);
    if (rested) rest();
    EXPECT_EQ(Find_File(Path("BILD.png")), there);
    ASSERT_TRUE(QFile::rename(there, Path("bilD.png")));
    EXPECT_EQ(Find_File(Path("BILD.png")), Path("bilD.png"));
    if (rested) rest();
    EXPECT_EQ(Find_File(Path("BILD.png")), Path("bilD.png"));
    ASSERT_TRUE(QFile::remove(Path("bilD.png")));
    EXPECT_EQ(Find_File(Path("BILD.png")), QString());
  }
}

TEST_F(Files, PatternsAndSplitting) {
  for (const char* name : {"b.CAL", "a.cal", "Ä.cal", "a.cal.bak", "cal", "x[1].cal"}) Put(QString::fromUtf8(name), "");
  const std::pair<const char*, QStringList> cases[] = {
      {"?.CAL", {"a.cal", "b.CAL", "Ä.cal"}},
      {"*.cal", {"a.cal", "b.CAL", "x[1].cal", "Ä.cal"}},
      {"x[1]*", {"x[1].cal"}},
      {"*cal*bak", {"a.cal.bak"}},
      {"*.*", {"a.cal", "a.cal.bak", "b.CAL", "cal", "x[1].cal", "Ä.cal"}}};
  for (const auto& [pattern, names] : cases) {
    QStringList found = Find_Files(folder.path(), pattern);
    EXPECT_EQ(found.replaceInStrings(folder.path() + '/', QString()), names) << pattern;
  }
  EXPECT_TRUE(Find_Files(Path("fehlt"), "*").isEmpty());
  ProgramFolder = QStringLiteral("/prog");
  QString path = QStringLiteral("/k\\Wald/Karte.bmp"), part;
  for (const char* wanted : {"/k/Wald/", "/prog/"}) {
    Split_Path(path, part);
    EXPECT_EQ(part, wanted);
    EXPECT_EQ(path, "Karte.bmp");
  }
  ProgramFolder.clear();
}

TEST_F(Files, AFailedWriteLeavesTheFormerFileAndNothingElse) {
  const QString path = Put("Liste.log", "alt"), source = Put("q", "neu");
  const QStringList before = Names();
  for (const int fault : {errors::diskFull, errors::noPermission}) {
    File_Write_Fault = [&](const QString& target, qint64 bytes) {
      EXPECT_EQ(target, path);
      EXPECT_GT(bytes, 0);
      return fault;
    };
    EXPECT_EQ(Error_Of([&] { Replace_File(path, "neu"); }), fault);
    EXPECT_EQ(Error_Of([&] { Write_Lines(path, {"neu"}); }), fault);
    EXPECT_EQ(Error_Of([&] { File_Copy(source, path); }), fault);
    EXPECT_EQ(Error_Of([&] { Write_At(path, 0, "neu"); }), fault);
    EXPECT_EQ(Content(path), "alt");
    EXPECT_EQ(Names(), before);
  }
  File_Write_Fault = nullptr;
  EXPECT_EQ(Error_Of([&] { Replace_File(Path("fehlt/x"), "neu"); }), errors::pathNotFound);
  EXPECT_EQ(Error_Of([&] { Replace_File(folder.path(), "neu"); }), errors::noPermission);
}

TEST_F(Files, TheSystemsOwnLimitIsAFullDisk) {
  const QString path = Put("gross", "alt");
  {
    const FileLimit limit(100000);
    EXPECT_EQ(Error_Of([&] { Replace_File(path, QByteArray(300000, 'x')); }), errors::diskFull);
  }
  EXPECT_EQ(Content(path), "alt");
  EXPECT_EQ(Names(), QStringList("gross"));
}

TEST_F(Files, ReplacingKeepsModeLinksAndTheNameThatIsThere) {
  const QString path = Put("Karte.ini", "alt");
  ASSERT_EQ(chmod(path.toUtf8().constData(), 0640), 0);
  ASSERT_TRUE(QFile::link(path, Path("Verweis.ini")));
  Replace_File(Path("VERWEIS.INI"), "neu");
  EXPECT_EQ(Content(path), "neu");
  EXPECT_TRUE(QFileInfo(Path("Verweis.ini")).isSymLink());
  struct stat info {};
  ASSERT_EQ(stat(path.toUtf8().constData(), &info), 0);
  EXPECT_EQ(info.st_mode & 0777U, 0640U);
  EXPECT_EQ(Names(), QStringList({"Karte.ini", "Verweis.ini"}));
}

TEST_F(Files, WriteAtCopyRenameAndKill) {
  const QString map = Put("Karte.bmp", "0123456789");
  Write_At(map, 3, "abc");
  EXPECT_EQ(Content(map), "012abc6789");
  EXPECT_EQ(Error_Of([&] { Write_At(Path("fehlt"), 0, "x"); }), errors::fileNotFound);
  Kill(map);
  const QString source = Put("Quelle.mdb", QByteArray(700000, 'q'));
  ASSERT_EQ(chmod(source.toUtf8().constData(), 0444), 0);
  const QString target = Put("ZIEL.MDB", "alt");
  File_Copy(Path("QUELLE.MDB"), Path("ziel.mdb"));
  EXPECT_EQ(Content(target).size(), 700000);
  File_Copy(source, Path("Neu.mdb"));
  EXPECT_TRUE(QFileInfo(Path("Neu.mdb")).permission(QFile::WriteOwner));
  File_Copy(source, Path("quelle.MDB"));  // onto itself
  EXPECT_EQ(Names(), QStringList({"Neu.mdb", "Quelle.mdb", "ZIEL.MDB"}));
  File_Rename(Path("neu.mdb"), Path("NEU.MDB"));
  EXPECT_EQ(Names(), QStringList({"NEU.MDB", "Quelle.mdb", "ZIEL.MDB"}));
  EXPECT_EQ(Error_Of([&] { File_Rename(source, Path("neu.MDB")); }), errors::fileExists);
  EXPECT_EQ(Error_Of([&] { File_Rename(Path("fehlt"), Path("x")); }), errors::fileNotFound);
  EXPECT_EQ(Error_Of([&] { File_Rename(source, Path("fehlt/x")); }), errors::pathNotFound);
  EXPECT_EQ(Error_Of([&] { File_Copy(Path("fehlt"), Path("x")); }), errors::fileNotFound);
  EXPECT_EQ(Error_Of([&] { Kill(Path("fehlt")); }), errors::fileNotFound);
  EXPECT_TRUE(Kill_Quietly(Path("fehlt")));
  Kill(Path("quelle.mdb"));
  EXPECT_TRUE(Kill_Quietly(Path("neu.mdb")));
  EXPECT_EQ(Names(), QStringList("ZIEL.MDB"));
}
