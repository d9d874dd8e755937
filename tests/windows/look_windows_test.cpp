#include <QColorDialog>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QLabel>
#include <QRadioButton>

#include "hand/activation.h"
#include "hand/next_shape.h"
#include "state/dialog_hooks.h"
#include "store/entry.h"
#include "windows/dialog_parts.h"
#include "windows/objects/frmDrawBreite.h"
#include "windows/objects/frmFarb.h"
#include "windows/objects/frmFarb_table.h"
#include "windows/objects/frmFill.h"
#include "windows/window_fixture.h"

namespace {

class LookWindowsTest : public WindowTest {
 protected:
  void SetUp() override {
    WindowTest::SetUp();
    Open(600, 400);
    text = Add(QStringLiteral("Text"), 0, QStringLiteral("Arial"));
    figure = Add(QStringLiteral("Figur1"), 20, QStringLiteral("F 1"));
    picture = Add(QStringLiteral("Bild"), 5, {});
    Map_Redraw();
  }
  static QString Add(const QString& id, int typ, const QString& schrift) {
    EntryRow row;
    row.ID = id;
    row.Eintrag = QStringLiteral("Reiher");
    row.Schrift = schrift;
    row.Groesse = 12;
    row.HG = 14;
    row.Xmap = row.Ymap = 100 + 20 * typ;
    if (typ == 20) row.Xline = row.Yline = 30;
    row.Typ = typ;
    Append_Entry(row);
    const KeepCurrentRow keep;
    rsEntries->MoveLast();
    return rsEntries->Bookmark();
  }
  static EntryRow Row(const QString& bookmark) {
    const KeepCurrentRow keep;
    rsEntries->SetBookmark(bookmark);
    return Read_Entry(*rsEntries);
  }
  template <typename Window>
  Window& Shown() {
    Settle();
    auto* found = window->findChild<Window*>();
    EXPECT_NE(found, nullptr);
    return *found;
  }
  static void Pick(const QWidget& colors, int number) {
    auto* table = Part<ColorTable>(colors, "tabFarben");
    QTest::mouseClick(table, Qt::LeftButton, {}, table->Cell(number).center());
  }

  QString text, figure, picture;
};

}  // namespace

TEST_F(LookWindowsTest, ColoursFollowTheEntryInHandAndApplyAtOnce) {
  Choose(QStringLiteral("mnuFarbe"));
  auto& colors = Shown<FrmFarb>();
  EXPECT_EQ(colors.height(), 247);
  Pick(colors, 5);
  EXPECT_EQ(CurVG, 5);

  Take_Entry(text);
  EXPECT_EQ(colors.windowTitle(), " Farbe für: Text Reiher");
  Press(colors, "btnHG");
  EXPECT_EQ(Part<QLabel>(colors, "lblHint")->text(), "Wählen Sie hier eine Hintergrundfarbe aus");
  Pick(colors, 11);
  EXPECT_EQ(Row(text).HG, 11);
  auto* table = Part<ColorTable>(colors, "tabFarben");
  EXPECT_EQ(table->Marked(), 11);
  QTest::keyClick(table, Qt::Key_Up);
  QTest::keyClick(table, Qt::Key_Right);
  QTest::keyClick(table, Qt::Key_Return);
  EXPECT_EQ(Row(text).HG, 4);
  EXPECT_TRUE(colors.isVisible());
  Press(colors, "optOhne");
  EXPECT_EQ(Row(text).RA, -100);

  Take_Entry(figure);
  EXPECT_EQ(colors.windowTitle(), " Farbe für Figur: Figur1");
  Take_Entry(picture);
  EXPECT_EQ(colors.windowTitle(), " Rahmenfarbe für Bild: Reiher");
  EXPECT_FALSE(Part<QWidget>(colors, "btnVG")->isEnabled());
  Pick(colors, 3);
  EXPECT_EQ(Row(picture).RA, 3);

  // The row goes while the window is open.
  rsEntries->SetBookmark(picture);
  rsEntries->Delete();
  Map_Redraw();
  Pick(colors, 7);
  EXPECT_EQ(Row(figure).VG, 0);
  Choose(QStringLiteral("mnuMapClose"));
  EXPECT_EQ(window->findChild<FrmFarb*>(), nullptr);
}

TEST_F(LookWindowsTest, PaletteIsMixedAndPutBack) {
  Take_Entry(figure);
  dialogHooks.ColorWindow();
  auto& colors = Shown<FrmFarb>();
  const QRgb former = Palette[14];
  const QPoint inside(Window_X(515), Window_Y(515));
  Press(colors, "btnPalette");
  When_Shown([](QWidget& dialog) {
    auto& mixer = dynamic_cast<QColorDialog&>(dialog);
    mixer.setCurrentColor(QColor(10, 20, 30));
    mixer.accept();
  });
  Pick(colors, 14);
  EXPECT_EQ(Palette[14], qRgb(10, 20, 30));
  EXPECT_EQ(Row(figure).HG, 14);
  EXPECT_FALSE(Part<QAbstractButton>(colors, "btnPalette")->isChecked());
  MessageScript messages;
  messages.Expect(QStringLiteral("Standardfarben"), MsgAnswer::Yes);
  Press(colors, "cmdStandart");
  EXPECT_EQ(Palette[14], former);
}

TEST_F(LookWindowsTest, FillIsTakenByTheEntryShownThen) {
  dialogHooks.FillWindow();
  auto& fill = Shown<FrmFill>();
  Press(fill, "OptBut4");
  Press(fill, "btnTake");
  EXPECT_EQ(NextShape.fill, 4);

  Take_Entry(figure);
  EXPECT_EQ(fill.windowTitle(), "Figur1 füllen");
  EXPECT_TRUE(Part<QAbstractButton>(fill, "OptBut1")->isChecked());
  Press(fill, "OptBut6");
  Press(fill, "optTransparent");
  const QImage before = Part<QLabel>(fill, "picVorschau")->pixmap().toImage();
  // A change of colour leaves the choice and is seen in the picture.
  Press(fill, "btnFarbe");
  Pick(Shown<FrmFarb>(), 12);
  EXPECT_NE(Part<QLabel>(fill, "picVorschau")->pixmap().toImage(), before);
  Press(fill, "btnTake");
  EXPECT_EQ(Row(figure).Schrift, "F-6");
  EXPECT_EQ(Row(figure).VG, 12);
  Take_Entry(text);
  EXPECT_FALSE(Part<QWidget>(fill, "btnTake")->isEnabled());
}

TEST_F(LookWindowsTest, WidthAndFrameOfWhatIsInHand) {
  dialogHooks.WidthWindow();
  auto& width = Shown<FrmDrawBreite>();
  EXPECT_EQ(width.windowTitle(), "Linienbreite");
  Part<QDoubleSpinBox>(width, "txtBreite")->setValue(6.6);
  Press(width, "btnTake");
  EXPECT_EQ(NextShape.width, 7);
  EXPECT_EQ(Part<QDoubleSpinBox>(width, "txtBreite")->text(), "7,0");
  Take_Entry(figure);
  EXPECT_EQ(width.windowTitle(), "Strichbreite");

  Take_Entry(text);
  Press_Tool("Rahmen");
  auto& colors = Shown<FrmFarb>();
  EXPECT_EQ(colors.windowTitle(), "Rahmenfarbe für Text: Reiher");
  Pick(colors, 9);
  EXPECT_EQ(width.windowTitle(), "Rahmenbreite");
  Part<QComboBox>(width, "cboMuster")->setCurrentIndex(1);
  Part<QDoubleSpinBox>(width, "txtBreite")->setValue(20);
  Press(width, "btnTake");
  EXPECT_EQ(Row(text).RA, 2809);
  Press(width, "ckRahmen");
  Press(width, "btnTake");
  EXPECT_EQ(Row(text).RA, -2809);
  Press_Tool("Rahmen", true);
  EXPECT_EQ(Row(text).RA, 2809);
  EXPECT_TRUE(Part<QAbstractButton>(width, "ckRahmen")->isChecked());
}
