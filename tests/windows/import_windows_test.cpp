#include "maps/note_pads.h"
#include "support/nets.h"
#include "support/table_fixture.h"
#include "windows/import/frmGPS.h"
#include "windows/import/frmImport.h"
#include "windows/window_fixture.h"

namespace {

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

}  // namespace

TEST_F(ImportWindowTest, FiltersMarksChangesAndAdds) {
  Choose("mnuImportMDB");
  auto& dialog = Shown<FrmImport>();
  EXPECT_FALSE(Is_Enabled(dialog, "btnAdd"));
  FileDialogScript files{Put("Text.MDB", "keine Tabelle")};
  With_Box("Datenbank öffnen", [&] { Press(dialog, "btnFile"); });
  EXPECT_FALSE(Is_Enabled(dialog, "frFilter"));
  files.Answer(Source());
  Press(dialog, "btnFile");
  EXPECT_EQ(Text_In(dialog, "lblInfo"), "Quelle: " + Path("Quelle.MDB"));
  EXPECT_EQ(Text_In(dialog, "lblMarkDs"), "4 Datensätze ausgewählt");
  EXPECT_FALSE(Is_Enabled(dialog, "optFilter")) << "nothing is filtered yet";
  auto* filter = Part<QComboBox>(dialog, "cmbFilter");
  EXPECT_EQ(filter->itemText(1), "Eintrag= *");
  filter->setCurrentIndex(1);
  filter->setEditText("eintrag=o'hara");
  Press(dialog, "btnTakeFilter");
  EXPECT_EQ(filter->itemText(1), "Eintrag= o'hara");
  EXPECT_EQ(Text_In(dialog, "lblMarkDs"), "1 Datensatz ausgewählt");
  Fill(dialog, "optFilterExcl", true);
  Press(dialog, "btnTakeFilter");
  EXPECT_EQ(Text_In(dialog, "lblMarkDs"), "3 Datensätze ausgewählt");
  filter->setEditText("VG= rot");
  With_Box("'rot' ist keine", [&] { Press(dialog, "btnTakeFilter"); });
  Press(dialog, "btnReset");
  EXPECT_EQ(Text_In(dialog, "lblMarkDs"), "4 Datensätze ausgewählt");
  EXPECT_EQ(filter->itemText(1), "Eintrag= *");
  Fill(dialog, "optSelect", true);
  EXPECT_FALSE(Is_Enabled(dialog, "btnAdd"));
  Part<QTableView>(dialog, "Dt")->selectRow(2);
  EXPECT_EQ(Text_In(dialog, "lblMarkDs"), "1 Datensatz ausgewählt");
  EXPECT_EQ(Text_In(dialog, "chkChange"), "Einträge un&verändert importieren");
  Fill(dialog, "chkChange", true);
  EXPECT_EQ(Text_In(dialog, "chkChange"), "importierte Einträge &verändern:");
  Part<QComboBox>(dialog, "cmbChange")->setEditText("VG= 9");
  Q_EMIT Part<QComboBox>(dialog, "cmbChange")->lineEdit()->editingFinished();
  EXPECT_EQ(Text_In(dialog, "lblFilter"), "keine Bedingung\nimportierten Eintrag verändern: VG= 9");
  With_Box("1  Einträge wurden importiert.", [&] { Press(dialog, "btnAdd"); });
  EXPECT_EQ(Texts(), QStringList("Biber 2"));
  EXPECT_EQ(Rows_Of(*dbEntries).back().VG, 9);
  Fill(dialog, "optAll", true);
  Fill(dialog, "chkExisting", true);
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
  EXPECT_EQ(Text_In(dialog, "lblInfo"), "Top50-Overlay-Objekte importieren.");
  EXPECT_EQ(Text_In(dialog, "lblObjOk"), "1");
  EXPECT_EQ(Text_In(dialog, "lblzurechts"), "1");
  EXPECT_TRUE(Text_In(dialog, "lblInfo3").contains("Limit: Kartenbreite = 400 X_Pix;      Kartenhöhe = 300 Y_Pix"));
  script.Expect("1 Angaben wurden nicht übernommen", MsgAnswer::No);
  Press(dialog, "cmdWeiter");
  EXPECT_EQ(Texts(), QStringList("hier"));
  EXPECT_TRUE(Text_In(dialog, "lblInfo3").startsWith("1 Einträge wurden importiert"));
  EXPECT_TRUE(Text_In(dialog, "lblInfo3").contains("Menü Einträge-Rückgängig"));
  EXPECT_EQ(Text_In(dialog, "cmdWeiter"), "&Schließen");
  files.Answer(Put("b.ovl", "DOMGVCRD Ovlfile V2.0:"));
  script.Expect("binäres Overlay");
  Choose("mnuOVL_Import");
}
