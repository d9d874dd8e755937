#include "store/file_names.h"

namespace {
class FileNames : public FluraxTest {
 protected:
  // Opens a map as far as names are concerned.
  static QString Table_Of(const QString& map, const QString& caption) {
    MapFile = map;
    Map.Caption = "Map: " + caption;
    return Table_Name_Of_Map();
  }
};
}  // namespace

TEST_F(FileNames, FaultsOfTheNameAndTheirPlaces) {
  const std::vector<std::pair<QString, std::vector<int>>> cases = {
      {"/k/Karte.bmp", {}},
      {"/1. Ordner mit Punkt/Käfer_ÄÖÜß.MDB", {}},  // folders are not judged
      {"/k/Karte.1.bmp", {6}},
      {"/k/Karte.jpeg", {6}},
      {"/k/Karte", {}},
      {"/k/2Karten.bmp", {1}},
      {"/k/Karte2.bmp", {}},
      {"/k/Meine Karte-1.bmp", {6, 12}},
      {"C:Karte.bmp", {}},
      {"/k/C:Karte.bmp", {2}},
      {"/k/a@b[c].bmp", {2, 4, 6}},
      {"C:\\k\\a;b.bmp", {2}},
      {"/k/- - - - - -.bmp", {1, 2, 3, 4, 5, 6, 7, 8}},  // eight and no more
  };
  for (const auto& [path, expected] : cases) {
    std::vector<int> positions;
    for (const NameFault& fault : File_Name_Faults(path)) positions.push_back(fault.position);
    EXPECT_EQ(positions, expected) << path;
  }
}

TEST_F(FileNames, TheCheckTellsEveryFault) {
  MessageScript script{{"Dateiname", MsgAnswer::Yes}, {"Dateiname", MsgAnswer::No}, {"Überprüfung dieses Dateinamens"}};
  EXPECT_FALSE(Check_File_Name("/k/Karte.bmp"));
  EXPECT_TRUE(Check_File_Name("/k/1 K.a.bmp"));
  EXPECT_FALSE(Check_File_Name("/k/a b.bmp"));
  EXPECT_FALSE(Check_File_Name("/k/"));
  for (const char* fault : {"ungültig.\nAn der Position 1  Das Zeichen 1\nZiffern sind",
                            "sein.\nAn der Position 2  Das Zeichen  Leerzeichen\nDieses Sonderzeichen",
                            "zulässig.\nAn der Position 4  Das Zeichen '.' Punkt\nEin Punkt", "ändern?"})
    EXPECT_TRUE(script.Seen()[0].text.contains(fault)) << script.Seen()[0].text;
  EXPECT_EQ(script.Seen()[0].buttons, MsgButtons::YesNo);
}

TEST_F(FileNames, TheTableLiesBesideTheMapInCapitals) {
  const QString map = Put("Wald/Straße.bmp");
  Put("WALD/Anderes.bmp");
  EXPECT_EQ(Table_Of(map, Capitals(map)), Path("Wald/STRAßE.MDB"));
  EXPECT_EQ(Table_Of(map, map.toUpper()), Path("Wald/STRAßE.MDB"));  // a caption with "SS" means the same map
  EXPECT_EQ(Table_Of({}, Capitals(map)), Path("Wald/STRAßE.MDB"));   // found by the name alone
  const QString table = Put("Wald/Straße.mdb");
  Put("WALD/STRAßE.MDB");  // the other folder's file is none of ours
  EXPECT_EQ(Table_Of(map, Capitals(map)), table);
  const QString exact = Put("Wald/STRAßE.MDB");
  EXPECT_EQ(Table_Of(map, Capitals(map)), exact);
  const QString dotted = Put("v1.2 [neu]/Karte.1.png");
  EXPECT_EQ(Table_Of(dotted, Capitals(dotted)), Path("v1.2 [neu]/KARTE.1.MDB"));
}

TEST_F(FileNames, AnotherEndingIsAWrongMapButHasATable) {
  MessageScript script("Falsche Map");
  const QString map = Put("Karte.tif");
  EXPECT_EQ(Table_Of(map, Capitals(map)), Path("KARTE.MDB"));
  EXPECT_TRUE(script.Seen()[0].text.contains("Map: " + Capitals(map)));
}

TEST_F(FileNames, TheProgramFolderIsFilledWithWhatIsMissing) {
  const QString delivered = Path("geliefert");
  Put("geliefert/MUSTER.MDB", "neu");
  Put("geliefert/Tipps.txt", "neu");
  Put("geliefert/Beispiele/Karte.bmp", "neu");
  ASSERT_TRUE(QFile::setPermissions(Path("geliefert/Beispiele/Karte.bmp"), QFile::ReadOwner));
  const QString home = Path("zu Hause/Flurax");
  Put("zu Hause/Flurax/tipps.TXT", "des Benutzers");
  qputenv("FLURAX_HOME", (home + '/').toUtf8());
  Prepare_Program_Folder(delivered);
  EXPECT_EQ(ProgramFolder, home);
  EXPECT_EQ(Program_File("\\Flurax.ini"), home + "/Flurax.ini");
  EXPECT_EQ(Read_Bytes(home + "/MUSTER.MDB"), "neu");
  EXPECT_EQ(Read_Bytes(home + "/Beispiele/Karte.bmp"), "neu");
  EXPECT_TRUE(QFileInfo(home + "/Beispiele/Karte.bmp").isWritable());
  EXPECT_EQ(Read_Bytes(home + "/tipps.TXT"), "des Benutzers");
  EXPECT_FALSE(QFile::exists(home + "/Tipps.txt"));
  Replace_File(home + "/MUSTER.MDB", "geändert");
  Prepare_Program_Folder(delivered);
  Prepare_Program_Folder(home);      // run from its own folder
  Prepare_Program_Folder("/fehlt");  // nothing delivered
  EXPECT_EQ(Read_Bytes(home + "/MUSTER.MDB"), "geändert");
  const auto fails = [&](const QString& wanted) {
    qputenv("FLURAX_HOME", wanted.toUtf8());
    return Error_Of([&] { Prepare_Program_Folder(delivered); });
  };
  EXPECT_EQ(fails(home + "/MUSTER.MDB/Flurax"), errors::pathNotFound);
  EXPECT_NE(fails("/proc/flurax"), 0);
  EXPECT_TRUE(Raised([&] { Prepare_Program_Folder(delivered); }).text.endsWith("\n/proc/flurax"));
  File_Write_Fault = [](const QString&, qint64) { return errors::diskFull; };
  EXPECT_EQ(fails(Path("voll")), errors::diskFull);
  qunsetenv("FLURAX_HOME");
}

TEST_F(FileNames, ShortenedPathsAndRefusedAccess) {
  EXPECT_EQ(Shortened_Path("/k/123456789012345678901234567"), "/k/123456789012345678901234567");
  EXPECT_EQ(Shortened_Path("/home/erika/Karten/Oberlausitz/KARTE.MDB"), "/ho...n/Oberlausitz/KARTE.MDB");
  MessageScript script("Windows: Kein Dateizugriff erlaubt  ");
  Show_No_Access("/k/KARTE.MDB\n/k/KARTE.ldb");
  EXPECT_TRUE(script.Seen()[0].text.startsWith("/k/KARTE.MDB\n/k/KARTE.ldb\nWindows - Dateisicherheit:\nDer Zugriff"));
}
