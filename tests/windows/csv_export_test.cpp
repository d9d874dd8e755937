#include "windows/import/frmCSVExport.h"

TEST_F(WindowTest, ATextFileGetsTheChosenColumnsInTheirOrder) {
  Open(400, 300);
  Add({"Text", "Uhu", "Arial", 10, 0, 15, 0, 40, 50, 0, 0, 0});
  FileDialogScript files{std::nullopt, Path("aus.csv")};
  Choose_And("mnuExportCSVTable", [](QWidget& dialog) {
    Walk(dialog, "optWgs84 off; cmdHoch off");  // a map without a net; no column is chosen
    auto* columns = Part<QListWidget>(dialog, "lstSpalten");
    columns->item(3)->setCheckState(Qt::Unchecked);  // Koordinaten
    Walk(dialog, "lstSpalten : #1; cmdHoch!; cmbTrenner : Komma; cmbZeichen : Windows-1252; cmdExport!");
    EXPECT_TRUE(dialog.isVisible()) << "the name was not given";
    Press(dialog, "cmdExport");
  });
  EXPECT_EQ(Read_Bytes(Path("aus.csv")), "Eintrag,Nr,x,y\r\nUhu,1,40,50\r\n");
  files.Answer(Path("fehlt/aus.csv"));
  const MessageScript boxes{{"mindestens eine Spalte"}, {"fehlt/aus.csv"}};
  Choose_And("mnuExportCSVTable", [](QWidget& dialog) {
    auto* columns = Part<QListWidget>(dialog, "lstSpalten");
    for (int i = 0; i < columns->count(); ++i) columns->item(i)->setCheckState(Qt::Unchecked);
    Press(dialog, "cmdExport");
    columns->item(0)->setCheckState(Qt::Checked);
    Walk(dialog, "cmdExport!; cmdCancel!");
  });
}
