#include "windows/import/frmCSVImport.h"

TEST_F(WindowTest, ATextFileIsShownAndImportedWithAListOfTheRefused) {
  Open(600, 400);
  Coord = Utm_Net({600, 400}, {0, 400}, 1000);  // a metre a pixel
  Coord.GridR = Coord.GridH = 0;
  auto* dialog = &Chosen<FrmCSVImport>("mnuImportCSV");
  auto* import = dialog->findChild<QAction*>("mnuImport");
  const auto openCsv = [&](const QStringList& lines) {
    Write_Lines(Path("Funde.csv"), lines);
    const FileDialogScript files{Path("Funde.csv")};
    dialog->findChild<QAction*>("mnuOpenFile")->trigger();
    EXPECT_EQ(files.Seen().at(0).title, "CSV-Tabelle Import: Datei (*.csv;*.txt)");
  };
  EXPECT_FALSE(import->isEnabled());
  openCsv({"#Eintrag;#X;#Y;#UTM", "Igel;100;300"});
  With_Box("Koordinatentyp gefunden", [&] { openCsv({"#Eintrag;#X;#Y", "Igel;100;300"}); });
  EXPECT_FALSE(import->isEnabled()) << "of the one that was refused nothing is left";
  EXPECT_EQ(Part<QComboBox>(*dialog, "cmbEintrag")->count(), 0);
  openCsv({"#Eintrag;#X;#Y;#UTM", "Igel;100;300", "Igel;100;300", "Dachs;9000;300"});
  EXPECT_EQ(dialog->windowTitle(), "CSV-Tabelle Import: Funde.csv");
  Walk(*dialog, "lblMsg = 3 Karteneinträge können importiert werden.*; lblWo = 100 : 100 Pixel");
  Walk(*dialog, "cmbEintrag : #2; lblWo = *zu weit rechts*; txtXPix : 7");
  MessageScript messages{{"Dachs", MsgAnswer::No}, {"1 versetzt, 1 Zeilen", MsgAnswer::Yes}};
  import->trigger();
  Walk(*dialog, "lblMsg = 2 Karteneinträge wurden importiert.; lblInfo = *'Einträge - Rückgängig: CSV-Import'.*");
  rsEntries->MoveLast();
  EXPECT_EQ(rsEntries->Integer(column::Xmap), 107);
  EXPECT_GE(NotePad_Of(Path("Karte-CSV-Import.txt")), 0) << "shown in a note pad";
  EXPECT_FALSE(import->isEnabled()) << "not twice";
}
