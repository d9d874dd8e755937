#include "windows/import/frmGPS.h"
#include "windows/import/frmImport.h"

class ImportWindowTest : public WindowTest {
 protected:
  ImportWindowTest() { mapSize = {400, 300}; }
  QString Source() const {
    const auto database = Make_Table_File(Path("Quelle.MDB"), "Andere.bmp");
    for (const char* text : {"Biber 1", "O'Hara", "Biber 2"})
      Append_Row(*database, {"Text", QLatin1String(text), "Arial", 10, 4, 0, 0, 40, 50, 0, 0, 0});
    Append_Row(*database, {"Linie1", "ohne Punkte", "Arial", 10, 4, 0, 0, 40, 50, 1, 1, 4});
    return Path("Quelle.MDB");
  }
};

TEST_F(ImportWindowTest, FiltersMarksChangesAndAdds) {
  auto& dialog = Chosen<FrmImport>("mnuImportMDB");
  FileDialogScript files{Put("Text.MDB", "keine Tabelle")};
  With_Box("Datenbank öffnen", [&] { Press(dialog, "btnFile"); });
  Walk(dialog, "frFilter off; btnAdd off");
  files.Answer(Source());
  Press(dialog, "btnFile");
  EXPECT_EQ(Text_In(dialog, "lblInfo"), "Quelle: " + Path("Quelle.MDB"));
  Walk(dialog, "lblMarkDs = 4 Datensätze ausgewählt; optFilter off");  // nothing is filtered yet
  auto* filter = Part<QComboBox>(dialog, "cmbFilter");
  EXPECT_EQ(filter->itemText(1), "Eintrag= *");
  filter->setCurrentIndex(1);
  filter->setEditText("eintrag=o'hara");
  Walk(dialog, "btnTakeFilter!; lblMarkDs = 1 Datensatz ausgewählt");
  EXPECT_EQ(filter->itemText(1), "Eintrag= o'hara");
  Walk(dialog, "optFilterExcl : true; btnTakeFilter!; lblMarkDs = 3 Datensätze ausgewählt");
  filter->setEditText("VG= rot");
  With_Box("'rot' ist keine", [&] { Press(dialog, "btnTakeFilter"); });
  Walk(dialog, "btnReset!; lblMarkDs = 4 Datensätze ausgewählt");
  EXPECT_EQ(filter->itemText(1), "Eintrag= *");
  Walk(dialog, "optSelect : true; btnAdd off");
  Part<QTableView>(dialog, "Dt")->selectRow(2);
  Walk(dialog, "lblMarkDs = 1 Datensatz ausgewählt; chkChange = Einträge un&verändert importieren");
  Walk(dialog, "chkChange : true; chkChange = importierte Einträge &verändern:; cmbChange : VG= 9");
  Q_EMIT Part<QComboBox>(dialog, "cmbChange")->lineEdit()->editingFinished();
  EXPECT_EQ(Text_In(dialog, "lblFilter"), "keine Bedingung\nimportierten Eintrag verändern: VG= 9");
  With_Box("1  Einträge wurden importiert.", [&] { Press(dialog, "btnAdd"); });
  EXPECT_EQ(Texts(), QStringList("Biber 2"));
  EXPECT_EQ(Rows_Of(*dbEntries).back().VG, 9);
  Walk(dialog, "optAll : true; chkExisting : true");
  With_Box("1 wurden abgelehnt", MsgAnswer::Yes, [&] { Press(dialog, "btnAdd"); });
  EXPECT_EQ(Texts(), QStringList({"Biber 2", "Biber 1", "O'Hara"}));
  EXPECT_GE(NotePad_Of(Path("Karte_Import.txt")), 0);
  EXPECT_TRUE(Read_Lines(Path("Karte_Import.txt")).contains("1 Einträge waren schon vorhanden."));
  dialog.close();
  Settle();
  EXPECT_FALSE(File_Exists(Path("Import.MDB")));
}

TEST_F(ImportWindowTest, OverlaysAreShownBeforeTheyCome) {
  MessageScript script;
  script.Expect("nicht georeferenziert");
  Choose("mnuOVL_Import");
  Coord = Utm_Net({400, 300}, {200, 150}, 500);
  Coord.GridR = 647673, Coord.GridH = 5512852;  // 49.75 N 11.05 E
  FileDialogScript files{Put("a.ovl",
                             "[Symbol 1]\nTyp=2\nText=hier\nXKoord=11.05\nYKoord=49.75\n[Symbol 2]\nTyp=2\n"
                             "Text=fern\nXKoord=11.06\nYKoord=49.75\n[Symbol 3]\nTyp=7\n")};
  script.Expect("WGS-84 -> UTM 32", MsgAnswer::Other);
  Choose("mnuOVL_Import");
  EXPECT_EQ(files.Seen().at(0).title, "OVL-Datei importieren");
  auto& dialog = Shown<FrmGPS>();
  Walk(dialog, "lblInfo = Top50-Overlay-Objekte importieren.; lblObjOk = 1; lblzurechts = 1");
  EXPECT_TRUE(Text_In(dialog, "lblInfo3").contains("Limit: Kartenbreite = 400 X_Pix;      Kartenhöhe = 300 Y_Pix"));
  script.Expect("1 Angaben wurden nicht übernommen", MsgAnswer::No);
  Press(dialog, "cmdWeiter");
  EXPECT_EQ(Texts(), QStringList("hier"));
  EXPECT_TRUE(Text_In(dialog, "lblInfo3").contains("Menü Einträge-Rückgängig"));
  Walk(dialog, "lblInfo3 = 1 Einträge wurden importiert*; cmdWeiter = &Schließen");
  files.Answer(Put("b.ovl", "DOMGVCRD Ovlfile V2.0:"));
  script.Expect("binäres Overlay");
  Choose("mnuOVL_Import");
}
