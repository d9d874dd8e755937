#include "start/map_open.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QtEndian>

#include "canvas/map_state.h"
#include "canvas/redraw.h"
#include "platform/files.h"
#include "platform/picture.h"
#include "start/dialog_hooks.h"
#include "start/events.h"
#include "start/mdi_state.h"
#include "start/program_start.h"
#include "start/table_file.h"
#include "store/entry.h"
#include "store/table_state.h"
#include "support/fixture.h"

namespace {

class MapOpen : public FluraxTest {
 protected:
  static void Add_Text(const QString& text) {
    EntryRow row;
    row.ID = QStringLiteral("Text");
    row.Eintrag = text;
    row.Schrift = QStringLiteral("Arial");
    row.Groesse = 12;
    row.Xmap = row.Ymap = 20;
    Append_Entry(row);
  }
  static void Patch(const QString& path, int position, qint32 value) {
    QByteArray bytes(4, '\0');
    qToLittleEndian(value, bytes.data());
    Write_At(path, position, bytes);
  }
};

TEST_F(MapOpen, OpensClosesAndOpensAgainWithItsEntries) {
  int opened = 0, closed = 0;
  events.MapOpened.Connect([&] { ++opened; });
  events.MapClosed.Connect([&] { ++closed; });
  const QString map = Make_Map(QStringLiteral("Größe mit Blank.bmp"), 640, 480);
  Open_User_Map(map);
  ASSERT_TRUE(frmMDI.MapOpen);
  EXPECT_EQ(MapFile, map);
  EXPECT_TRUE(Map.Caption.endsWith(QStringLiteral("/GRÖßE MIT BLANK.BMP"))) << Map.Caption;
  EXPECT_EQ(QFileInfo(TableFile).fileName(), QStringLiteral("GRÖßE MIT BLANK.MDB"));
  EXPECT_EQ(MapWidthPx, 640);
  EXPECT_NEAR(MapWidthMm, 640 * 25.4 / 96, 0.01);
  EXPECT_EQ(Tbl.Tag, QStringLiteral("Clean"));
  EXPECT_FALSE(File_Exists(Path(QStringLiteral("Größe mit Blank.map"))));
  EXPECT_EQ(Menu(QStringLiteral("mnuMapFile"), 1).Tag, map);
  Add_Text(QStringLiteral("Amsel"));
  Program_End();
  EXPECT_FALSE(frmMDI.MapOpen);
  EXPECT_TRUE(Find_Files(folder.path(), QStringLiteral("*.ldb")).isEmpty());
  Open_Map(map);
  ASSERT_TRUE(frmMDI.MapOpen);
  EXPECT_EQ(Entry_Count(), 1);
  EXPECT_EQ(opened, 2);
  EXPECT_EQ(closed, 1);
}

TEST_F(MapOpen, MissingDamagedAndForeignPicturesAreToldAndLeaveNothing) {
  QFile(Make_Map(QStringLiteral("cut.bmp"), 300, 300)).resize(5000);
  Replace_File(Path(QStringLiteral("text.bmp")), "Das ist kein Bild.");
  Replace_File(Path(QStringLiteral("leer.bmp")), "");
  for (const char* name : {"fehlt.bmp", "cut.bmp", "text.bmp", "leer.bmp"}) {
    MessageScript script;
    if (qstrcmp(name, "text.bmp") == 0 || qstrcmp(name, "leer.bmp") == 0)
      script.Expect(QStringLiteral("Keine Bitmap!"));
    script.Expect(QStringLiteral("Die Karte kann nicht geladen werden."));
    Open_Map(Path(QLatin1String(name)));
    EXPECT_FALSE(frmMDI.MapOpen) << name;
    EXPECT_EQ(MapHeightMm, -1.0F) << name;
    EXPECT_EQ(InfoBar.Panel[0], QStringLiteral("Bitte eine Karte laden"));
  }
  EXPECT_TRUE(Find_Files(folder.path(), QStringLiteral("*.map")).isEmpty());
  EXPECT_TRUE(Find_Files(folder.path(), QStringLiteral("*.mdb")).isEmpty());
}

TEST_F(MapOpen, AMapOnAReadOnlyMediumIsNotOpened) {
  const QString map = Make_Map();
  File_Write_Fault = [](const QString& path, qint64) { return path.contains(QLatin1String(".map")) ? 70 : 0; };
  MessageScript script;
  script.Expect(QStringLiteral("FLURAX kann auf dieses Laufwerk keine Einträge schreiben."));
  Open_Map(map);
  EXPECT_FALSE(frmMDI.MapOpen);
  EXPECT_EQ(MapHeightMm, -1.0F);
}

TEST_F(MapOpen, AStaleMarkerIsToldAfterTheMapStands) {
  const QString map = Make_Map();
  Write_Lines(Path(QStringLiteral("Karte.map")), {map});
  MessageScript script;
  script.Expect(QStringLiteral("Bitte laden Sie zur Karte folgende Einträge:"));
  bool openAtMessage = false;
  const MsgHandler scripted = Set_Message_Handler(nullptr);
  Set_Message_Handler([&](const MsgRequest& request) {
    openAtMessage = frmMDI.MapOpen;
    EXPECT_EQ(request.title, QStringLiteral("Datenbank"));
    EXPECT_TRUE(request.text.contains(QStringLiteral("KARTE_bak.mdb")));
    return scripted(request);
  });
  Open_Map(map);
  EXPECT_TRUE(openAtMessage);
  EXPECT_FALSE(File_Exists(Path(QStringLiteral("Karte.map"))));
  Set_Message_Handler(scripted);
}

TEST_F(MapOpen, ResolutionIsReadAndADistortedScanIsTold) {
  const QString map = Make_Map();
  struct Case {
    int x, y;
    bool told;
  };
  for (const Case c : {Case{11811, 11811, false}, Case{3937, 3938, false}, Case{3937, 7874, true}, Case{0, 0, false}}) {
    Patch(map, 38, c.x);
    Patch(map, 42, c.y);
    MessageScript script;
    if (c.told) script.Expect(QStringLiteral("Horizontale Auflösung der Karte: 3937 Bildpunkte pro Meter = 100 dpi"));
    Check_Bitmap(map);
    EXPECT_EQ(Map.MapXPpM, c.x == 0 ? 3780 : c.x);
    EXPECT_EQ(MapWidthPx, 400);
    if (c.x == 11811) {
      EXPECT_NEAR(MapWidthMm, 400 * 1000.0 / 11811, 0.01);
    }
    if (c.x == 0) {
      EXPECT_NEAR(MapWidthMm, 400 * 25.4 / 96, 0.01);
    }
  }
}

TEST_F(MapOpen, BigMapsGiveAHintAboveSevenMillionPixels) {
  int hints = 0;
  dialogHooks.BigMapHint = [&](QSize, int) { ++hints; };
  Open_Map(Make_Map(QStringLiteral("genau.bmp"), 3500, 2000));
  EXPECT_EQ(hints, 0);
  Open_Map(Make_Map(QStringLiteral("gross.bmp"), 3000, 2334));
  EXPECT_EQ(hints, 1);
  frmMDI.Tips = false;
  Reload_Map();
  EXPECT_EQ(hints, 1);
  EXPECT_TRUE(frmMDI.MapOpen);
}

TEST_F(MapOpen, SafeModeOffersItsFourRoads) {
  const QString map = Make_Map();
  Open_Map(map);
  Add_Text(QStringLiteral("Amsel"));
  const QString table = TableFile;
  Close_Map();
  {
    MessageScript script;
    script.Expect(QStringLiteral("auf eine beschädigte Datenbank hindeuten"));
    Toggle_Safe_Mode();
    EXPECT_EQ(InfoBar.Panel[0], QStringLiteral("Bitte eine Karte öffnen (abgesicherter Modus)"));
  }
  struct Road {
    int choice;
    QString told;
    bool open;
    int entries;
  };
  for (const Road& road :
       {Road{4, "Die Prozedur wird abgebrochen", false, 0}, Road{1, "Diese Tabelle wurde repariert", true, 1},
        Road{2, "Diese Tabelle wurde umbenannt in:", true, 0}, Road{3, "unverändert im normalen Modus", true, 0}}) {
    dialogHooks.Abgesichert = [&](const SafeModeQuestion& question) {
      EXPECT_EQ(question.table, table);
      return road.choice;
    };
    MessageScript script;
    script.Expect(road.told);
    Open_Map(map);
    EXPECT_EQ(frmMDI.MapOpen, road.open) << road.choice;
    if (road.open) {
      EXPECT_EQ(Entry_Count(), road.entries) << road.choice;
    }
    EXPECT_TRUE(road.choice == 4 || File_Exists(Path(QStringLiteral("KARTE_BAK.MDB"))));
    if (frmMDI.MapOpen) Close_Map();
  }
  EXPECT_FALSE(frmMDI.SafeMode);
  EXPECT_TRUE(File_Exists(Path(QStringLiteral("KARTE_BAK_1.MDB"))));
}

TEST_F(MapOpen, ADamagedTableLosesNoMoreThanTheDamage) {
  const QString map = Make_Map();
  Open_Map(map);
  for (int i = 0; i < 400; ++i) Add_Text(QStringLiteral("Fund %1 mit etwas Text dahinter").arg(i));
  const QString table = TableFile;
  Close_Map();
  // Rows are overwritten with rubbish; the schema stays readable.
  const QByteArray bytes = Read_Bytes(table);
  Write_At(table, bytes.size() - 6 * 1024, QByteArray(2 * 1024, '\x5a'));
  {
    MessageScript script;
    script.AllowAny(MsgAnswer::Yes);
    Open_Map(map);
    ASSERT_FALSE(script.Seen().empty());
  }
  // However it was found out: nearly all rows stand in one of the files.
  int best = 0;
  if (frmMDI.MapOpen) {
    best = Entry_Count();
    Close_Map();
  }
  for (const QString& file : Find_Files(folder.path(), QStringLiteral("*.mdb"))) {
    try {
      auto database = Workspace::OpenDatabase(file);
      if (database->HasTable(QStringLiteral("MapData")))
        best = std::max(best, database->RowCount(QStringLiteral("MapData")) - 1);
    } catch (const Error&) {
      continue;
    }
  }
  EXPECT_GT(best, 350);
}

TEST_F(MapOpen, AnEmptyMapIsWrittenAndOpened) {
  EXPECT_EQ(Pixels_Of_Mm(210, 297), QSize(794, 1123));
  FileDialogScript dialog;
  dialog.Answer(Path(QStringLiteral("Leere_Karte.BMP")));
  ASSERT_TRUE(New_Map(210, 297));
  EXPECT_EQ(dialog.Seen().front().title, QStringLiteral("Karte mit Einträgen als BITMAP exportieren"));
  EXPECT_EQ(dialog.Seen().front().name, QStringLiteral("Leere_Karte"));
  EXPECT_TRUE(frmMDI.MapOpen);
  EXPECT_EQ(MapHeightPx, 1123);
  EXPECT_EQ(Map.MapClip[0].image.pixel(500, 900), qRgb(255, 255, 255));
  // The open map is not overwritten.
  dialog.Answer(MapFile);
  MessageScript script;
  script.Expect(QStringLiteral("gerade geöffnet"));
  EXPECT_FALSE(New_Map(100, 100));
  EXPECT_EQ(Picture_Size(MapFile), QSize(794, 1123));
}

TEST_F(MapOpen, MapSizeIsTakenForTheSessionOrWrittenIntoTheFile) {
  const QString map = Make_Map();
  Open_Map(map);
  MessageScript script;
  script.Expect(QStringLiteral("Die neuen Werte wurden von FLURAX übernommen."));
  Take_Map_Size({200, 150, 2000, 2000});
  EXPECT_FLOAT_EQ(MapWidthMm, 200);
  EXPECT_NEAR(MapPixelMm, 0.5, 1e-6);
  const QByteArray before = Read_Bytes(map);
  script.Expect(QStringLiteral("Wollen Sie die Größe der Karte wirklich verändern? "), MsgAnswer::No);
  Save_Map_Size({200, 150, 2000, 2001});
  EXPECT_EQ(Read_Bytes(map), before);
  script.Expect(QStringLiteral("Wollen Sie die Größe der Karte wirklich verändern? "), MsgAnswer::Yes);
  Save_Map_Size({200, 150, 2000, 2001});
  QByteArray after = Read_Bytes(map);
  EXPECT_EQ(qFromLittleEndian<qint32>(after.constData() + 38), 2000);
  EXPECT_EQ(qFromLittleEndian<qint32>(after.constData() + 42), 2001);
  EXPECT_EQ(after.replace(38, 8, before.mid(38, 8)), before);
}

TEST_F(MapOpen, TheScaleAndTheMenusFollowAnotherTable) {
  Open_Map(Make_Map());
  EntryRow scale;
  scale.ID = QStringLiteral("Maßstab");
  scale.Eintrag = QStringLiteral(" m");
  scale.Schrift = QStringLiteral("500");
  scale.Groesse = 500;
  scale.Xmap = 100;
  scale.Xline = 300;
  scale.Yline = 8;
  scale.Typ = static_cast<int>(EntryKind::Scale);
  Append_Entry(scale);
  Table_Replaced();
  EXPECT_TRUE(MapHasScale);
  EXPECT_DOUBLE_EQ(MapUnitPerPixel, 2.5);
  EXPECT_TRUE(Menu(QStringLiteral("mnuTabComp")).Enabled);
  MessageScript script;
  script.AllowAny(MsgAnswer::No);
  New_Table();
  Table_Replaced();
  EXPECT_FALSE(MapHasScale);
  EXPECT_FALSE(Menu(QStringLiteral("mnuTabComp")).Enabled);
}

TEST_F(MapOpen, CommandLineTakesTheFirstWordOnly) {
  EXPECT_EQ(Command_Line_Map(QStringLiteral("  Karte.BMP weiter")), QStringLiteral("Karte.BMP"));
  EXPECT_EQ(Command_Line_Map(QStringLiteral("\t/a/b.bmp")), QStringLiteral("/a/b.bmp"));
  EXPECT_EQ(Command_Line_Map(QStringLiteral("karte.jpg x.bmp")), QString());
  EXPECT_EQ(Command_Line_Map(QStringLiteral("\"meine karte.bmp\"")), QStringLiteral(""));
  EXPECT_EQ(Command_Line_Map(QString()), QString());
}

TEST_F(MapOpen, StartOpensAMapOfTheProgramFolderOrWaits) {
  Program_Start(QString());
  EXPECT_FALSE(frmMDI.MapOpen);
  EXPECT_FALSE(Menu(QStringLiteral("mnuTableSave")).Enabled);
  EXPECT_TRUE(Menu(QStringLiteral("mnuFOpen")).Enabled);
  QFile::copy(Make_Map(), ProgramFolder + QStringLiteral("/start.bmp"));
  Program_Start(QStringLiteral("start.bmp"));
  EXPECT_TRUE(frmMDI.MapOpen);
  EXPECT_TRUE(Menu(QStringLiteral("mnuTableSave")).Enabled);
  EXPECT_EQ(Toolbar1.Tag, QStringLiteral("Norm"));
}

}  // namespace
