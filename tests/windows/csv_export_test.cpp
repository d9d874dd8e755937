#include "windows/import/frmCSVExport.h"

#include "windows/window_fixture.h"

namespace {

class CsvExportTest : public WindowTest {
 protected:
  void SetUp() override {
    WindowTest::SetUp();
    Open(400, 300);
    Add({"Text", "Uhu", "Arial", 10, 0, 15, 0, 40, 50, 0, 0, 0});
  }
};

TEST_F(CsvExportTest, WritesTheChosenColumnsInTheirOrder) {
  FileDialogScript files{std::nullopt, Path("aus.csv")};
  When_Shown([](QWidget& dialog) {
    EXPECT_FALSE(Is_Enabled(dialog, "optWgs84")) << "the map has no net";
    auto* columns = Part<QListWidget>(dialog, "lstSpalten");
    EXPECT_FALSE(Is_Enabled(dialog, "cmdHoch"));
    columns->item(3)->setCheckState(Qt::Unchecked);  // Koordinaten
    columns->setCurrentRow(1);
    Press(dialog, "cmdHoch");
    EXPECT_EQ(columns->item(0)->text(), "Eintrag");
    Fill(dialog, "cmbTrenner", "Komma");
    Fill(dialog, "cmbZeichen", "Windows-1252");
    Press(dialog, "cmdExport");  // the name is not given
    EXPECT_TRUE(dialog.isVisible());
    Press(dialog, "cmdExport");
  });
  Choose("mnuExportCSVTable");
  EXPECT_EQ(Read_Bytes(Path("aus.csv")), "Eintrag,Nr,x,y\r\nUhu,1,40,50\r\n");
}

TEST_F(CsvExportTest, AFolderThatCannotBeWrittenIsTold) {
  const FileDialogScript files{Path("fehlt/aus.csv")};
  MessageScript boxes{{"mindestens eine Spalte"}, {"fehlt/aus.csv"}};
  When_Shown([](QWidget& dialog) {
    auto* columns = Part<QListWidget>(dialog, "lstSpalten");
    for (int i = 0; i < columns->count(); ++i) columns->item(i)->setCheckState(Qt::Unchecked);
    Press(dialog, "cmdExport");
    columns->item(0)->setCheckState(Qt::Checked);
    Press(dialog, "cmdExport");
    Press(dialog, "cmdCancel");
  });
  Choose("mnuExportCSVTable");
}

}  // namespace
