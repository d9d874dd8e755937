#include <QCoreApplication>

#include "platform/file_lock.h"
#include "support/second_program.h"
#include "support/table_fixture.h"

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
  static void Undo() {
    MessageScript script("Karteneinträge wieder hergestellt.");
    Undo_Last();
  }
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

}  // namespace
