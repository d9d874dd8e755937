#include "maps/note_pads.h"
#include "platform/files.h"
#include "support/nets.h"
#include "windows/import/frmCSVImport.h"
#include "windows/window_fixture.h"

namespace {

class CsvWindowTest : public WindowTest {
 protected:
  void SetUp() override {
    WindowTest::SetUp();
    Open(600, 400);
    Coord = Utm_Net({600, 400}, {0, 400}, 1000);  // a metre a pixel
    Coord.GridR = Coord.GridH = 0;
    Choose(QStringLiteral("mnuImportCSV"));
    dialog = &Shown<FrmCSVImport>();
  }
  void TearDown() override {
    WindowTest::TearDown();
    Coord = {};
  }
  template <typename T>
  T* In(const char* name) {
    return dialog->findChild<T*>(QLatin1String(name));
  }
  void Open_Csv(const QStringList& lines) {
    const QString path = Path(QStringLiteral("Funde.csv"));
    Write_Lines(path, lines);
    FileDialogScript files{path};
    In<QAction>("mnuOpenFile")->trigger();
    EXPECT_EQ(files.Seen().at(0).title, QStringLiteral("CSV-Tabelle Import: Datei (*.csv;*.txt)"));
  }

  FrmCSVImport* dialog = nullptr;
};

}  // namespace

TEST_F(CsvWindowTest, ShowsImportsAndOffersTheListOfTheRefused) {
  EXPECT_FALSE(In<QAction>("mnuImport")->isEnabled());
  Open_Csv({QStringLiteral("#Eintrag;#X;#Y;#UTM"), QStringLiteral("Igel;100;300"), QStringLiteral("Igel;100;300"),
            QStringLiteral("Dachs;9000;300")});
  EXPECT_EQ(dialog->windowTitle(), QStringLiteral("CSV-Tabelle Import: Funde.csv"));
  EXPECT_TRUE(In<QLabel>("lblMsg")->text().startsWith(QStringLiteral("3 Karteneinträge können importiert werden.")));
  EXPECT_EQ(In<QLabel>("lblWo")->text(), QStringLiteral("100 : 100 Pixel"));
  In<QComboBox>("cmbEintrag")->setCurrentIndex(2);
  EXPECT_TRUE(In<QLabel>("lblWo")->text().contains(QStringLiteral("zu weit rechts")));
  In<QLineEdit>("txtXPix")->setText(QStringLiteral("7"));
  MessageScript messages{{QStringLiteral("Dachs"), MsgAnswer::No},
                         {QStringLiteral("1 versetzt, 1 Zeilen"), MsgAnswer::Yes}};
  In<QAction>("mnuImport")->trigger();
  EXPECT_EQ(In<QLabel>("lblMsg")->text(), QStringLiteral("2 Karteneinträge wurden importiert."));
  EXPECT_TRUE(In<QLabel>("lblInfo")->text().contains(QStringLiteral("'Einträge - Rückgängig: CSV-Import'.")));
  rsEntries->MoveLast();
  EXPECT_EQ(rsEntries->Integer(column::Xmap), 107);
  EXPECT_TRUE(File_Exists(Path(QStringLiteral("Karte-CSV-Import.txt"))));
  EXPECT_GE(NotePad_Of(Path(QStringLiteral("Karte-CSV-Import.txt"))), 0) << "shown in a note pad";
  EXPECT_FALSE(In<QAction>("mnuImport")->isEnabled()) << "not twice";
}

TEST_F(CsvWindowTest, AFileThatIsRefusedLeavesNothingToImport) {
  Open_Csv({QStringLiteral("#Eintrag;#X;#Y;#UTM"), QStringLiteral("Igel;100;300")});
  MessageScript messages(QStringLiteral("Koordinatentyp gefunden"));
  Open_Csv({QStringLiteral("#Eintrag;#X;#Y"), QStringLiteral("Igel;100;300")});
  EXPECT_FALSE(In<QAction>("mnuImport")->isEnabled());
  EXPECT_EQ(In<QComboBox>("cmbEintrag")->count(), 0);
}
