#include "maps/paint_program.h"

#include <QDateTime>

#include "maps/map_open.h"
#include "support/recorded_shell.h"

namespace {

class PaintProgramTest : public FluraxTest {
 protected:
  void SetUp() override {
    FluraxTest::SetUp();
    shell.emplace();
    program = Path("malen");
    Replace_File(program, "#!/bin/sh\n");
    QFile(program).setPermissions(QFile::ReadOwner | QFile::ExeOwner);
  }

  void Open() {
    const MessageScript script;
    Open_Map(Make_Map());
    ASSERT_TRUE(frmMDI.MapOpen);
    events.MapOpened.Connect([this] { ++loads; });
  }

  // As a paint program saves: the time of the file is another one.
  static void Repaint(int secondsLater, const QString& path = MapFile) {
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    const QDateTime time = QFileInfo(path).lastModified().addSecs(secondsLater);
    ASSERT_TRUE(file.setFileTime(time, QFileDevice::FileModificationTime));
  }

  std::optional<RecordedShell> shell;
  QString program;
  int loads = 0;
};

}  // namespace

TEST_F(PaintProgramTest, TheChosenProgramLeadsTheListAndEachIsKeptOnce) {
  Write_Lines(Program_File("Flurax.ini"), {"TLB: vbAlignLeft", "MPG:/usr/bin/eins", "MPG:  ", "MPG: /usr/bin/zwei "});
  EXPECT_EQ(Paint_Programs(), (QStringList{"/usr/bin/eins", "/usr/bin/zwei"}));
  const QString chosen = "/opt/Größe/mal", other = "/opt/Жук/mal";  // not to be held by Windows-1252
  Keep_Paint_Programs({other, ' ' + chosen + ' ', {}, other}, chosen);
  EXPECT_EQ(Paint_Programs(), (QStringList{chosen, other}));
  EXPECT_EQ(Chosen_Paint_Program(), chosen);
  Read_Ini();
  EXPECT_EQ(frmMDI.toolbarPlace, ToolbarPlace::Left);  // the other settings stay
  Write_Ini("TLB: vbAlignBottom");                     // and the programs stay with them
  EXPECT_EQ(Paint_Programs(), (QStringList{chosen, other}));
  Keep_Paint_Programs({}, {});
  EXPECT_TRUE(Paint_Programs().isEmpty());
  EXPECT_EQ(Chosen_Paint_Program(), QString());
}

TEST_F(PaintProgramTest, TheProgramGetsTheMapAndTellsWhyItDoesNotStart) {
  EXPECT_EQ(Start_Paint_Program(program), PaintStart::NoMap);
  Open();
  EXPECT_EQ(Start_Paint_Program(Path("fehlt")), PaintStart::NoProgram);
  EXPECT_EQ(shell->program, QString());
  EXPECT_EQ(Start_Paint_Program(program), PaintStart::Started);
  EXPECT_EQ(std::tuple(shell->program, shell->given), std::tuple(program, QStringList{MapFile}));
  shell->starts = false;
  EXPECT_EQ(Start_Paint_Program(program), PaintStart::Failed);
}

TEST_F(PaintProgramTest, TheMapIsLoadedAgainOnceForEveryChange) {
  Open();
  EXPECT_FALSE(Reload_Changed_Map());
  Repaint(10);
  EXPECT_FALSE(Reload_Changed_Map());  // no paint program has it
  ASSERT_EQ(Start_Paint_Program(program, [] { Reload_Changed_Map(); }), PaintStart::Started);
  EXPECT_FALSE(Reload_Changed_Map());
  Repaint(20);
  shell->ended();
  EXPECT_EQ(loads, 1);
  EXPECT_FALSE(Reload_Changed_Map());
  Repaint(30);  // the program had handed the picture to a window of its own
  EXPECT_TRUE(Reload_Changed_Map());
  EXPECT_EQ(loads, 2);
  EXPECT_TRUE(frmMDI.MapOpen);
}

TEST_F(PaintProgramTest, AnEmptyFileIsWaitedForAndAnotherMapIsNotMeant) {
  Open();
  ASSERT_EQ(Start_Paint_Program(program), PaintStart::Started);
  const QByteArray picture = Read_Bytes(MapFile);
  QFile::resize(MapFile, 0);
  EXPECT_FALSE(Reload_Changed_Map());
  EXPECT_TRUE(frmMDI.MapOpen);
  QFile::remove(MapFile);
  EXPECT_FALSE(Reload_Changed_Map());
  Replace_File(MapFile, picture);
  Repaint(20);
  EXPECT_TRUE(Reload_Changed_Map());
  EXPECT_EQ(loads, 1);
  // Another map is not loaded for the former one.
  const QString former = MapFile;
  const MessageScript script;
  Open_Map(Make_Map("Zweite.bmp"));
  Repaint(60, former);
  EXPECT_FALSE(Reload_Changed_Map());
}
