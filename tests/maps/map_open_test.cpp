#include "maps/map_open.h"
#include "maps/map_choose.h"

#include <sys/stat.h>

#include "maps/map_check.h"
#include "maps/map_close.h"
#include "maps/program_start.h"
#include "maps/safe_mode.h"
#include "support/looks.h"

using MapOpen = TableTest;

TEST_F(MapOpen, OpensClosesAndOpensAgainWithItsEntries) {
  const QString map = Make_Map("Größe mit Blank.bmp", 640, 480);
  Open_User_Map(map);
  ASSERT_TRUE(frmMDI.MapOpen);
  EXPECT_TRUE(Map.Caption.endsWith("/GRÖßE MIT BLANK.BMP")) << Map.Caption;
  EXPECT_EQ(std::tuple(MapFile, QFileInfo(TableFile).fileName()), std::tuple(map, "GRÖßE MIT BLANK.MDB"));
  EXPECT_EQ(Tbl.Tag, TableTag::Clean);
  EXPECT_FALSE(File_Exists(Path("Größe mit Blank.map")));
  EXPECT_EQ(Menu("mnuMapFile", 1).Tag, map);
  Add(Text("Amsel"));
  Program_End();
  EXPECT_FALSE(frmMDI.MapOpen);
  EXPECT_TRUE(Find_Files(folder.path(), "*.ldb").isEmpty());
  Open_Map(map);
  ASSERT_TRUE(frmMDI.MapOpen);
  EXPECT_EQ(Entry_Count(), 1);
}

TEST_F(MapOpen, WhatCannotBeOpenedIsToldAndLeavesNothing) {
  const QString map = Make_Map(), cut = Make_Map("cut.bmp", 300, 300);
  QFile(cut).resize(5000);
  Replace_File(Path("text.bmp"), "Das ist kein Bild.");
  Replace_File(Path("leer.bmp"), "");
  const std::pair<QString, QString> cases[] = {{Path("fehlt.bmp"), {}},
                                               {cut, {}},
                                               {Path("text.bmp"), "Keine Bitmap!"},
                                               {Path("leer.bmp"), "Keine Bitmap!"},
                                               {map, "FLURAX kann auf dieses Laufwerk keine Einträge schreiben."}};
  for (const auto& [path, told] : cases) {
    MessageScript script;
    if (!told.isEmpty()) script.Expect(told);
    if (path == map)
      File_Write_Fault = [](const QString& file, qint64) { return file.contains(".map") ? 70 : 0; };
    else
      script.Expect("Die Karte kann nicht geladen werden.");
    Open_Map(path);
    EXPECT_FALSE(frmMDI.MapOpen) << path;
    EXPECT_EQ(MapHeightMm, -1.0F) << path;
    EXPECT_EQ(InfoBar.Panel[0], "Bitte eine Karte laden");
  }
  EXPECT_TRUE((Find_Files(folder.path(), "*.map") + Find_Files(folder.path(), "*.mdb")).isEmpty());
}

TEST_F(MapOpen, ARelativePathIsMadeWhole) {
  const QString map = Make_Map(), before = QDir::currentPath();
  QDir::setCurrent(folder.path());
  Open_Map("./Karte.bmp");
  QDir::setCurrent(before);
  EXPECT_EQ(QFileInfo(MapFile).canonicalFilePath(), QFileInfo(map).canonicalFilePath());
  EXPECT_TRUE(QFileInfo(TableFile).isAbsolute() && File_Exists(TableFile)) << TableFile;
}

TEST_F(MapOpen, WhatIsNoFileIsRefusedBeforeItIsTouched) {
  ASSERT_EQ(::mkfifo(Path("Leitung.bmp").toUtf8().constData(), 0600), 0);
  ASSERT_TRUE(QFile::link("/dev/zero", Path("Geraet.bmp")));
  QDir(folder.path()).mkdir("Ordner.bmp");
  for (const auto& [name, told] : {std::pair("Leitung.bmp", "eine Leitung"), std::pair("Geraet.bmp", "ein Gerät"),
                                   std::pair("Ordner.bmp", "ein Ordner")}) {
    With_Box(told, [path = Path(name)] { Open_Map(path); });
    EXPECT_FALSE(frmMDI.MapOpen) << name;
  }
  EXPECT_TRUE(Find_Files(folder.path(), "*.map").isEmpty());
}

TEST_F(MapOpen, PathsAreTakenAsLongAsTheTableFits) {
  const auto mapAt = [&](qsizetype length) {
    QString path = folder.path();
    while (path.size() + 60 < length) path += u'/' + QString(40, u'o');
    path += u'/' + QString(length - path.size() - 5, u'k') + ".bmp";
    QDir().mkpath(QFileInfo(path).path());
    EXPECT_TRUE(Make_Canvas(30, 20).save(path));
    return path;
  };
  const QString longest = mapAt(480);
  Open_Map(longest);
  ASSERT_TRUE(frmMDI.MapOpen);
  Add(Text("Amsel"));
  Undo_Point("Test");
  Close_Map();
  Open_Map(longest);
  EXPECT_EQ(Entry_Count(), 1);
  Close_Map();
  for (const QString& path : {mapAt(481), mapAt(600), Path(QString(600, u'n') + ".bmp")}) {
    MessageScript script("ist zu lang");
    Open_Map(path);
    EXPECT_FALSE(frmMDI.MapOpen) << path.size();
    EXPECT_TRUE(script.Seen().at(0).text.contains("Die Karte kann nicht geladen werden."));
  }
}

TEST_F(MapOpen, AStaleMarkerIsToldAfterTheMapStands) {
  const QString map = Make_Map();
  Write_Lines(Path("Karte.map"), {map});
  int told = 0;
  Set_Message_Handler([&](const MsgRequest& request) {
    ++told;
    EXPECT_TRUE(frmMDI.MapOpen);
    EXPECT_EQ(request.title, "Datenbank");
    for (const char* part : {"Bitte laden Sie zur Karte folgende Einträge:", "KARTE_bak.mdb"})
      EXPECT_TRUE(request.text.contains(part)) << request.text;
    return MsgAnswer::Ok;
  });
  Open_Map(map);
  EXPECT_EQ(told, 1);
  EXPECT_FALSE(File_Exists(Path("Karte.map")));
}

TEST_F(MapOpen, WithoutAPrinterTheMapIsShownAllTheSame) {
  const QString map = Make_Map();
  {
    const MessageScript script("Es gibt ein Problem mit dem Drucker.\nEntweder ist der Drucker nicht angeschlossen");
    bool failing = true;
    const int once = events.BackgroundText.Connect([&failing](const QString& text) {
      if (text.isEmpty() && std::exchange(failing, false)) Raise(errors::printer);
    });
    Open_Map(map);
    events.BackgroundText.Disconnect(once);
  }
  EXPECT_TRUE(frmMDI.MapOpen && Map.Visible);
  EXPECT_FALSE(File_Exists(Path("Karte.map")));
}

TEST_F(MapOpen, ResolutionIsReadAndADistortedScanIsTold) {
  const QString map = Make_Map();
  const std::tuple<int, int, double, bool> cases[] = {{11811, 11811, 400 * 1000.0 / 11811, false},
                                                      {3937, 3938, 101.6, false},
                                                      {3937, 7874, 101.6, true},
                                                      {0, 0, 400 * 25.4 / 96, false}};
  for (const auto& [x, y, width, told] : cases) {
    QByteArray bytes(8, '\0');
    qToLittleEndian(x, bytes.data());
    qToLittleEndian(y, bytes.data() + 4);
    Write_At(map, 38, bytes);
    MessageScript script;
    if (told) script.Expect("Horizontale Auflösung der Karte: 3937 Bildpunkte pro Meter = 100 dpi");
    Check_Bitmap(map);
    EXPECT_EQ(Map.MapXPpM, x == 0 ? 3780 : x);
    EXPECT_EQ(MapWidthPx, 400);
    EXPECT_NEAR(MapWidthMm, width, 0.01) << x;
  }
}

TEST_F(MapOpen, BigMapsGiveAHintAboveSevenMillionPixels) {
  int hints = 0;
  dialogHooks.BigMapHint = [&](QSize) { ++hints; };
  Open_Map(Make_Map("genau.bmp", 3500, 2000));
  EXPECT_EQ(hints, 0);
  Open_Map(Make_Map("gross.bmp", 3000, 2334));
  EXPECT_EQ(hints, 1);
  frmMDI.Tips = false;
  Reload_Map();
  EXPECT_EQ(hints, 1);
  EXPECT_TRUE(frmMDI.MapOpen);
}

TEST_F(MapOpen, SafeModeOffersItsFourRoads) {
  const QString map = Make_Map();
  Open_Map(map);
  Add(Text("Amsel"));
  const QString table = TableFile;
  Close_Map();
  MessageScript script("auf eine beschädigte Datenbank hindeuten");
  Toggle_Safe_Mode();
  EXPECT_EQ(InfoBar.Panel[0], "Bitte eine Karte öffnen (abgesicherter Modus)");
  const std::tuple<int, const char*, int> roads[] = {{4, "Die Prozedur wird abgebrochen", -1},  // the map stays closed
                                                     {1, "Diese Tabelle wurde repariert", 1},
                                                     {2, "Diese Tabelle wurde umbenannt in:", 0},
                                                     {3, "unverändert im normalen Modus", 0}};
  for (const auto& [choice, told, entries] : roads) {
    dialogHooks.Abgesichert = [&table, choice = choice](const SafeModeQuestion& question) {
      EXPECT_EQ(question.table, table);
      return choice;
    };
    script.Expect(told);
    Open_Map(map);
    ASSERT_EQ(frmMDI.MapOpen, entries >= 0) << choice;
    if (!frmMDI.MapOpen) continue;
    EXPECT_EQ(Entry_Count(), entries) << choice;
    EXPECT_TRUE(File_Exists(Path("KARTE_BAK.MDB")));
    Close_Map();
  }
  EXPECT_FALSE(frmMDI.SafeMode);
  EXPECT_TRUE(File_Exists(Path("KARTE_BAK_1.MDB")));
}

TEST_F(MapOpen, AnEmptyMapIsNotWrittenOverTheOpenOne) {
  EXPECT_EQ(Pixels_Of_Mm(210, 297), QSize(794, 1123));
  Open_Map(Make_Map());
  const QByteArray before = Read_Bytes(MapFile);
  FileDialogScript dialog{MapFile};
  MessageScript script("gerade geöffnet");
  EXPECT_FALSE(New_Map(100, 100));
  EXPECT_EQ(std::tuple(dialog.Seen()[0].title, dialog.Seen()[0].name),
            std::tuple("Karte mit Einträgen als BITMAP exportieren", "Leere_Karte"));
  EXPECT_EQ(Read_Bytes(MapFile), before);
}

TEST_F(MapOpen, TheScaleFollowsAnotherTable) {
  Open_Map(Make_Map());
  Add({"Maßstab", " m", "500", 500, 0, 15, 0, 100, 20, 300, 8, static_cast<int>(EntryKind::Scale)});
  Table_Replaced();
  EXPECT_EQ(std::pair(MapHasScale, MapUnitPerPixel), std::pair(true, 2.5));
  With_Box("veränderten Einträge sichern", MsgAnswer::No, New_Table);
  Table_Replaced();
  EXPECT_FALSE(MapHasScale);
}

TEST_F(MapOpen, StartOpensTheMapOfTheCommandLineOrWaits) {
  for (const auto& [line, map] : {std::pair{"  Karte.BMP weiter", "Karte.BMP"}, std::pair{"\t/a/b.bmp", "/a/b.bmp"},
                                  std::pair{"karte.jpg x.bmp", ""}, std::pair{"\"meine karte.bmp\"", ""}})
    EXPECT_EQ(Command_Line_Map(line), map);
  // Seen from the folder of the start, which the program leaves.
  const QString kept = Path("Meine Karten/Moor Nord.bmp");
  QDir().mkpath(QFileInfo(kept).path());
  File_Copy(Make_Map(), kept);
  QDir::setCurrent(folder.path());
  for (const auto& [arguments, map] :
       {std::pair{QStringList{"Meine Karten/Moor Nord.bmp"}, kept},
        std::pair{QStringList{"Meine", "Karten/Moor", "Nord.bmp"}, kept}, std::pair{QStringList{kept, "-x"}, kept},
        std::pair{QStringList{"Meine Karten"}, Path("Meine Karten")},  // no file: its reason is told of the right path
        std::pair{QStringList{"fehlt.bmp"}, Program_File("fehlt.bmp")},
        std::pair{QStringList{"wo/fehlt.bmp"}, QString("wo/fehlt.bmp")}, std::pair{QStringList{}, QString()}})
    EXPECT_EQ(Map_Of_Arguments(arguments), map);
  Program_Start({});
  EXPECT_FALSE(frmMDI.MapOpen);
  EXPECT_FALSE(Usable("mnuTableSave"));
  EXPECT_TRUE(Usable("mnuFOpen"));
  File_Copy(Make_Map(), ProgramFolder + "/start.bmp");
  Program_Start({"start.bmp"});
  EXPECT_TRUE(frmMDI.MapOpen);
  EXPECT_TRUE(Usable("mnuTableSave"));
  EXPECT_EQ(Toolbar1.Tag, ToolMode::Norm);
}
