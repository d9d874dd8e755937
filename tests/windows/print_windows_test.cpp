#include "platform/for_now.h"
#include "windows/main/mdi_window_pads.h"
#include "windows/printing/frmDruckpfad.h"
#include "windows/printing/frmPRN.h"
#include "windows/printing/frmRand.h"
#include "windows/printing/frmSeiten.h"
#include "windows/printing/frm_preview_picture.h"

// A printer of A4 with 4.2 mm that answers with the range, or cancels.
class PrintWindowsTest : public WindowTest {
 protected:
  void SetUp() override {
    WindowTest::SetUp();
    former = Set_Printer(
        {.paper =
             [](int orientation) {
               Paper paper = Paper_Of({}, orientation);
               paper.dpi = 150;
               return paper;
             },
         .setup = [](int orientation) { return std::optional(orientation == portrait ? landscape : portrait); },
         .ask =
             [this](const QString& asked, int pages, int) {
               title = asked;
               return cancel ? std::nullopt : std::optional(PrintRange{1, pages});
             },
         .begin =
             [this](const QString&, int orientation) {
               QFile::remove(Path("aus.pdf"));
               printedOrientation = orientation;
               return Make_Pdf_Job(Path("aus.pdf"), The_Printer().paper(orientation), {});
             }});
    Open(1600, 1200);  // 42.3 x 31.8 cm: 3 x 2 sheets
  }
  void TearDown() override {
    WindowTest::TearDown();
    Set_Printer(former);
  }
  FrmSeiten* Preview() const { return window->findChild<FrmSeiten*>(); }
  // Of what was printed last; 0: nothing.
  int Pages() const { return Run_Tool("pdfinfo", {Path("aus.pdf")}).section("Pages:", 1).section(u'\n', 0, 0).toInt(); }

  PrinterFace former;
  QString title;
  int printedOrientation = -1;
  bool cancel = false;
};

TEST_F(PrintWindowsTest, ThePreviewFitsTheMapAndKeepsIt) {
  QTimer::singleShot(0, window.get(), [this] {
    if (Preview()) Press(*Preview(), "btnShow");  // while it is being made: stopped
  });
  auto& form = Chosen<FrmSeiten>("mnuBlattschnitt");
  auto* picture = Part<PreviewPicture>(form, "Picture1");
  EXPECT_EQ(picture->Text(), "Vorschau abgebrochen");
  Walk(form, "btnShow = &Vorschau; btnShow!; btnShow off");
  EXPECT_EQ(picture->Text(), QString());
  Walk(form, "txtFaktor = 1,000; Label2 = 6 Druckseiten*; btnShow off");
  Walk(form, "txtBreite < 84,7; txtHoehe = 63,5; btnShow on; Label2 = 6 *");  // waits for the preview
  Walk(form, "btnShow!; txtFaktor = 2,001; Label2 = 15 *; btnSpinDown!; txtFaktor = 2,000");
  QTest::keyClick(Part<QComboBox>(form, "cmbPages"), Qt::Key_Down);
  Walk(form, "Label2 = 1 Druckseite*; btnDF!");
  EXPECT_EQ(form.Setup().settings.orientation, landscape);
  MessageScript box("Wertebereich");
  Walk(form, "txtFtSize < 3,01; Ok_Butt!; txtFtSize < 1,5");
  box.Expect("übernommen und gespeichert");
  Press(form, "Ok_Butt");
  EXPECT_EQ(Read_Print_Settings().orientation, landscape);
  EXPECT_FLOAT_EQ(Read_Font_Factor(), 1.5F);
  // A change that was not taken is asked for at the end, and lost with "No".
  Press(form, "btnSpin");
  const double kept = Read_Print_Settings().factor;
  box.Expect("Sollen diese neuen", MsgAnswer::No);
  Press(form, "btnClose");
  Settle();
  EXPECT_EQ(Preview(), nullptr);
  EXPECT_EQ(Read_Print_Settings().factor, kept);
}

TEST_F(PrintWindowsTest, PrintingClosesThePreviewAndCanBeStopped) {
  Choose("mnuBlattschnitt");
  Choose("mnuPrintMap");
  EXPECT_EQ(Preview(), nullptr);
  EXPECT_EQ(std::tuple(title, Pages()), std::tuple("Karte drucken", 6));
  QFile::remove(Path("aus.pdf"));
  cancel = true;
  Choose("mnuPrintMap");
  EXPECT_EQ(Pages(), 0);
  cancel = false;
  QTimer::singleShot(0, window.get(), [] {
    for (QWidget* top : QApplication::topLevelWidgets())
      if (auto* progress = qobject_cast<FrmPRN*>(top)) Press(*progress, "cmdCancel");
  });
  With_Box("wird abgebrochen", [this] { Choose("mnuPrintMap"); });
  EXPECT_EQ(Pages(), 0);
}

TEST_F(PrintWindowsTest, MarginsKnowTheBorderOfThePrinter) {
  const auto margins = [] {
    const PrintSettings s = Read_Print_Settings();
    return std::tuple(s.left, s.right, s.top, s.bottom);
  };
  MessageScript box;
  Choose_And("mnuRand", [&](QWidget& form) {
    const auto* side = Part<QScrollBar>(form, "scrLR");
    EXPECT_EQ(side->value(), 100);
    Walk(form, "txtLR = 4; scrLR : 85; txtLR = 19; txtOR < 24; txtUR < 1");
    EXPECT_EQ(Part<QScrollBar>(form, "scrOR")->value(), 80);
    Press(form, "btnTake");
  });
  EXPECT_EQ(margins(), std::tuple(15, 0, 20, 0));
  // Closing asks; what leaves no room is refused and the window stays.
  Choose_And("mnuRand", [&](QWidget& form) {
    Type(form, "txtRR", "300");
    box.Expect("neuen Ränder", MsgAnswer::Yes).Expect("keinen Platz");
    Press(form, "btnClose");
    EXPECT_TRUE(form.isVisible());
    box.Expect("neuen Ränder", MsgAnswer::No);
    Press(form, "btnClose");
  });
  EXPECT_EQ(margins(), std::tuple(15, 0, 20, 0));
}

TEST_F(PrintWindowsTest, PathTableTextWindowAndTheFrameOfTheSheets) {
  const int seam = qRound(201.6 / 25.4 * 96);  // the first sheet's room in map pixels
  const auto frame = [&] {
    return Count_Pixels(Canvas()->grab().toImage(), QRect(seam - 2, 0, 5, Canvas()->height()),
                        [](QRgb color) { return color == blue; });
  };
  ASSERT_GT(Canvas()->width(), seam + 2);
  EXPECT_EQ(frame(), 0);
  {
    const ForNow shown(frmMDI.sheetFrame, true);
    EXPECT_GT(frame(), Canvas()->height() / 4);
  }
  Choose_And("mnuDruckpfad", "optDruckdirekt checked; optDruckFlurax : true; cmdOK!");
  EXPECT_TRUE(frmMDI.printAsBitmap);
  Choose("mnuPrintMap");
  EXPECT_EQ(Pages(), 6);
  Choose("mnuTblPrint");
  EXPECT_EQ(std::tuple(title, Pages()), std::tuple("Tabelle drucken", 1));
  Choose("mnuPrintScreen");
  EXPECT_EQ(printedOrientation, window->width() > window->height() ? landscape : portrait);
  EXPECT_FALSE(window->Action("mnuPrintTxt")->isEnabled()) << "without a note pad";
  Choose("mnuTextNew");
  Choose("mnuPrintTxt");
  EXPECT_EQ(std::tuple(title, Pages()), std::tuple("Notiz 1", 1));
}
