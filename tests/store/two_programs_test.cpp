#include <QCoreApplication>
#include <QThread>

#include "platform/file_lock.h"
#include "store/history.h"
#include "support/second_program.h"

namespace {

class TwoPrograms : public TableTest {
 protected:
  void SetUp() override {
    TableTest::SetUp();
    // Both tell the same map by the short form of their paths.
    for (const char* name : {"Ordner A/langer Name des Ordners", "Ordner B/langer Name des Ordners"})
      ASSERT_TRUE(QDir().mkpath(Path(name)));
  }
  QString Map_In(const char* which) const {
    return Path(QString("Ordner %1/langer Name des Ordners/Karte.bmp").arg(which));
  }
  void Open_Here() {
    Open_Table("Ordner A/langer Name des Ordners/Karte.bmp");
    Add(Text("eins"));
    Add(Text("zwei"));
  }
  static void Undo() { With_Box("Karteneinträge wieder hergestellt.", Undo_Last); }
  // Files of the program folder beside those that every program finds there.
  static QStringList Work_Files() {
    QStringList names = QDir(ProgramFolder).entryList(QDir::Files | QDir::Hidden, QDir::Name);
    for (const char* own : {"MUSTER.MDB", "MAP-Farb", "Map.log"}) names.removeAll(QString(own));
    return names;
  }
};

TEST_F(TwoPrograms, EachGoesBackToItsOwnSnapshot) {
  Open_Here();
  Undo_Point("Rückgängig: Ersetzen");
  Add(Text("drei"));
  SecondProgram other(ProgramFolder);
  EXPECT_TRUE(other.Do("oeffnen", Map_In("B")).endsWith("Ordner B/langer Name des Ordners/KARTE.MDB"));
  other.Do("neu", "Moos");
  EXPECT_EQ(other.Do("stand"), "Moos");
  EXPECT_EQ(other.Do("neu", "Farn"), "Moos Farn");
  Undo();
  EXPECT_EQ(Texts(), (QStringList{"eins", "zwei"}));
  EXPECT_EQ(other.Do("zurueck"), "Moos");
  // The one that ends takes its own with it and leaves the other's.
  other.Do("stand");
  other.End();
  EXPECT_EQ(Work_Files(), (QStringList{"TEMP.MDB", "TEMP.lock", "TEMP.stamp"}));
  Tbl.Tag = TableTag::Dirty;
  Undo();
  EXPECT_EQ(Texts(), (QStringList{"eins", "zwei"}));
}

TEST_F(TwoPrograms, WhatAKilledOneLeftIsClearedAtTheNextStart) {
  Open_Here();
  Undo_Point("Rückgängig: Ersetzen");
  Table_Idle();
  SecondProgram killed(ProgramFolder);
  killed.Do("oeffnen", Map_In("B"));
  killed.Do("stand");
  SecondProgram third(ProgramFolder);
  ASSERT_TRUE(QFile::exists(ProgramFolder + "/TEMP_1.MDB"));
  third.Do("beginn");
  EXPECT_TRUE(QFile::exists(ProgramFolder + "/TEMP_1.MDB")) << "its program still runs";
  killed.Kill();
  const QString gone = QString::number(999'999'999), alive = QString::number(QCoreApplication::applicationPid());
  for (const QString& name : {"TEMP.MDB.neu." + gone + "~", ".flurax-" + gone + "-3.neu", "Vogel.neu." + gone,
                              ".flurax-" + alive + "-999999.neu", QString("TEMP_alt.MDB")})
    Replace_File(ProgramFolder + '/' + name, "x");
  third.Do("beginn");
  EXPECT_EQ(Work_Files(), (QStringList{".flurax-" + alive + "-999999.neu", "TEMP.MDB", "TEMP.lock", "TEMP.stamp",
                                       "TEMP_alt.MDB", "Vogel.neu." + gone}));
  Add(Text("drei"));
  Undo();
  EXPECT_EQ(Texts(), (QStringList{"eins", "zwei"}));
}

TEST_F(TwoPrograms, NoSnapshotOfAnotherMapIsTaken) {
  {
    SecondProgram earlier(ProgramFolder);
    earlier.Do("oeffnen", Map_In("B"));
    earlier.Do("neu", "Moos");
    earlier.Do("stand");
    earlier.End();
  }
  ASSERT_EQ(Texts_In(ProgramFolder + "/TEMP.MDB"), QStringList{"Moos"});
  const auto refused = [this] {
    MessageScript script("Die Sicherungskopie gehört zu einer anderen Tabelle.");
    EXPECT_FALSE(Save_Table(SaveStep::Restore));
    EXPECT_EQ(Texts(), (QStringList{"eins", "zwei"}));
    EXPECT_FALSE(QFile::exists(Path("Ordner A/langer Name des Ordners/KARTE_bak.mdb")));
  };
  Open_Here();
  refused();
  // Whatever was put in its place since it was taken is none either.
  Undo_Point("Rückgängig: Ersetzen");
  Table_Idle();
  const auto database = Make_Table_File(ProgramFolder + "/Moor.MDB", MapFile);
  Append_Row(*database, Text("Moos"));
  database->Close();
  File_Copy(ProgramFolder + "/Moor.MDB", ProgramFolder + "/TEMP.MDB");
  Tbl.Tag = TableTag::Dirty;
  refused();
  // That of an earlier session of the same table is.
  Undo_Point("Rückgängig: Ersetzen");
  Add(Text("drei"));
  Close_Table(CloseMode::CloseOnly);
  Release_Work_Files();
  Open_Table("Ordner A/langer Name des Ordners/Karte.bmp");
  Undo();
  EXPECT_EQ(Texts(), (QStringList{"eins", "zwei"}));
}

TEST_F(TwoPrograms, ALockEndsWithItsHolder) {
  const QString name = Path("x.lock");
  auto first = FileLock::Try(name);
  ASSERT_TRUE(first);
  EXPECT_FALSE(FileLock::Try(name));
  first.reset();
  EXPECT_FALSE(QFile::exists(name));
  Replace_File(name, "");  // a power cut left it
  EXPECT_TRUE(FileLock::Try(name));
  EXPECT_FALSE(FileLock::Try(Path("fehlt/x.lock")));
}

// Steps of one never touch the table of the other, and its start does not clear what the other still needs.
TEST_F(TwoPrograms, EachWalksItsOwnHistory) {
  Open_Here();
  SecondProgram other(ProgramFolder);
  other.Do("beginn");
  other.Do("oeffnen", Map_In("B"));
  other.Do("viele", "3");
  other.Do("weg");
  const int steps = Step_Count();
  ASSERT_EQ(steps, 2);
  Go_To_Step(1);
  EXPECT_EQ(Texts(), QStringList{"eins"});
  EXPECT_TRUE(other.Do("lage").startsWith("2 2 2:"));
  other.Do("geh", "0");
  EXPECT_EQ(Texts(), QStringList{"eins"});
  Go_To_Step(2);
  EXPECT_TRUE(other.Do("lage").startsWith("0 2 0:"));
  // The table of a program that runs is nobody else's.
  EXPECT_EQ(Error_Of([&] { Workspace::OpenDatabase(Map_In("B").chopped(9) + "KARTE.MDB"); }), errors::fileInUse);
  EXPECT_EQ(other.Do("geh", "2"), "geh");
}

// FLURAX_KILLS: so many times.
TEST_F(TwoPrograms, AKilledOneLeavesItsTableAndItsHistoryWhole) {
  const int kills = std::max(8, qEnvironmentVariableIntValue("FLURAX_KILLS"));
  std::mt19937 random(static_cast<unsigned>(qEnvironmentVariableIntValue("FLURAX_SEED")));
  const auto below = [&random](int limit) { return static_cast<int>(random() % static_cast<unsigned>(limit)); };
  QStringList states;  // what the table held at each step, as far as it was acknowledged
  int position = 0;
  QString order, argument;  // the one that no answer came to
  for (int round = 0; round < kills; ++round) {
    SecondProgram program(ProgramFolder);
    program.Do("beginn");
    ASSERT_TRUE(program.Do("oeffnen", Map_In("A")).endsWith("KARTE.MDB"));
    const auto look = [&] {
      const QStringList words = program.Do("lage").split(u' ');
      position = words[0].toInt();
      states = program.Do("alle").split(u' ');
      EXPECT_EQ(states.size(), words[1].toInt() + 1);
      EXPECT_EQ(program.Do("lage"), words.join(u' ')) << "there and back";
      return words[2];
    };
    const QStringList before = states;
    const int stood = position;
    const QString now = look();
    const QString told = u"%1: %2 %3 at %4 of %5, now %6 of %7"_s.arg(round)
                             .arg(order, argument)
                             .arg(stood)
                             .arg(before.size() - 1)
                             .arg(position)
                             .arg(states.size() - 1);
    ASSERT_EQ(states.value(position), now) << told;
    if (round > 0) {
      // Before it or after it, and every step of before is there.
      const bool walk = order == "geh";
      const bool done = walk ? position != stood : position == stood + 1;
      ASSERT_TRUE(done ? !walk || position == argument.toInt() : position == stood) << told;
      const int common = done && !walk ? stood + 1 : static_cast<int>(std::min(before.size(), states.size()));
      ASSERT_GE(common, stood + 1) << told;
      ASSERT_EQ(states.mid(0, common), before.mid(0, common)) << told;
      ASSERT_TRUE(done || states.size() <= before.size() || states.size() == stood + 2) << told << ": only recorded";
      const int was = before[stood].section(u':', 0, 0).toInt(), is = now.section(u':', 0, 0).toInt();
      const int change = !done ? 0 : order == "viele" ? argument.toInt() : was > 0 ? -1 : 0;
      ASSERT_TRUE(walk || is == was + change) << told;
    }
    const auto choose = [&] {
      const int which = below(5);
      order = which < 2 ? "geh" : which < 4 || position == 0 ? "viele" : "weg";
      // No further back than goes without a question.
      const int count = static_cast<int>(states.size());
      argument = which < 2 ? QString::number(count - 1 - below(std::min(count, 11))) : QString();
      if (order == "viele") argument = QString::number(1 + (below(3) == 0 ? below(4000) : below(9)));
    };
    for (int i = below(4); i > 0; --i) {
      choose();
      ASSERT_EQ(program.Do(order, argument), order);
      look();
    }
    choose();
    program.Send(order, argument);
    QThread::usleep(static_cast<unsigned long>(below(below(2) == 0 ? 4000 : 60000)));
    program.Kill();
  }
}

}  // namespace
