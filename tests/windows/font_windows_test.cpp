#include "edit/symbols.h"
#include "windows/objects/frmSchrift.h"
#include "windows/objects/frmSymbol.h"
#include "windows/objects/frmTblSymb.h"
#include "windows/objects/frm_font_sample.h"
#include "windows/objects/frm_symbol_table.h"

class FontWindows : public WindowTest {
 protected:
  FontWindows() { mapSize = {600, 400}; }
  static EntryRow Text(const QString& text, const QString& schrift, double size) {
    return {"Text", text, schrift, size, 0, 15, 0, 50, 50, 0, 0, 0};
  }
};

TEST_F(FontWindows, TheWindowShowsTheRowAndWritesItBack) {
  const QString stored = QStringLiteral("Courier New-B-I-U-T-C204<22.5");
  const QString bookmark = Take(Text("Wald", stored, 13));
  auto& dialog = Chosen<FrmSchrift>("mnuSchrift");
  EXPECT_EQ(dialog.windowTitle(), "Schrift ändern: Text");
  Walk(dialog, "cmbScript = Kyrillisch; cmbWinkel = 22,5; cmbFontsize = 13; cmdTake off");
  // The preview changes first, the map when it is taken.
  const QImage before = Part<FontSample>(dialog, "txtMuster")->grab().toImage();
  Walk(dialog, "chkTransp : false; cmdRotate!");
  EXPECT_NE(Part<FontSample>(dialog, "txtMuster")->grab().toImage(), before);
  EXPECT_EQ(Row(bookmark).Schrift, stored);
  Press(dialog, "cmdTake");
  EXPECT_EQ(Row(bookmark).Schrift, "Courier New-B-I-U-C204<112.5");
  EXPECT_EQ(Row(bookmark).Groesse, 13);
  // All of it once more by Enter; nonsense is told and nothing written.
  Walk(dialog, "optNorm : true; chkFett : false; cmbScript : Western; cmbFontsize : riesig");
  With_Box("zwischen 1 und 80", MsgAnswer::Ok, [&] { Press(dialog, "cmdTake"); });
  Walk(dialog, "cmbFontsize : 18; cmbWinkel : -45");
  QTest::keyClick(&dialog, Qt::Key_Return);
  EXPECT_EQ(Row(bookmark).Schrift, "Courier New-U<315");
  EXPECT_EQ(Row(bookmark).Groesse, 18);
  // It follows the hand; with nothing in it the next text is meant.
  ASSERT_TRUE(End_Entry());
  EXPECT_TRUE(Text_In(dialog, "lblHinweis").startsWith("Hinweis: Kein Eintrag aktiviert!"));
  EXPECT_EQ(dialog.windowTitle(), "Schrift");
  Key_On(&dialog, Qt::Key_Escape);
  EXPECT_FALSE(Is_Open<FrmSchrift>());
}

TEST_F(FontWindows, AMissingFontIsReplacedOnTheWayTheQuestionOpens) {
  const QString bookmark = Add(Text("Alt", "Gibt Es Nicht-B", 12));
  With_Box("Gibt Es Nicht", MsgAnswer::Yes, [&] {
    Map_Redraw();
    Settle();
  });
  auto& dialog = Shown<FrmSchrift>();
  EXPECT_EQ(Map.InHand, bookmark);
  EXPECT_EQ(dialog.windowTitle(), "Schrift ändern: Gibt Es Nicht");
  Walk(dialog, "lblHinweis = *nicht vorhanden*; cmbFont : Times New Roman; cmdTake!");
  EXPECT_EQ(Row(bookmark).Schrift, "Times New Roman-B");
}

TEST_F(FontWindows, SymbolsArePickedByMouseAndKeys) {
  auto& dialog = Chosen<FrmSymbol>("mnuInsSymbol");
  EXPECT_EQ(dialog.windowTitle(), "Schriftart: Wingdings");
  auto* table = Part<SymbolTable>(dialog, "rgcard");
  EXPECT_EQ(table->Selected(), QChar(u'l'));
  QTest::mouseClick(table, Qt::LeftButton, {}, QPoint(27 * 10 + 13, 27 * 2 + 13));  // row 4, column 10: code 0x4A
  EXPECT_EQ(NextText.sign, "J");
  QTest::mouseClick(Canvas(), Qt::LeftButton, {}, QPoint(200, 100));
  ASSERT_TRUE(Symbol_In_Hand());
  QTest::keyClick(table, Qt::Key_Down);
  QTest::keyClick(table, Qt::Key_Right);
  EXPECT_EQ(Symbol_Sign(), "J") << "only Enter takes it";
  QTest::keyClick(table, Qt::Key_Return);
  EXPECT_EQ(Symbol_Sign(), "[");
  Fill(dialog, "cmbFont", "Symbol");
  EXPECT_EQ(dialog.windowTitle(), "Schriftart: Symbol");
  QTest::keyClick(table, Qt::Key_Return);
  EXPECT_EQ(Row(Map.InHand).Schrift, "Symbol-T");
}

TEST_F(FontWindows, TheTableShowsSignsScriptsAndBoxesWithCodes) {
  const auto inkOf = [](SymbolTable& table, int code) {
    const QRect cell((code - 32) % 16 * 27 + 3, (code - 32) / 16 * 27 + 3, 22, 22);
    return Count_Pixels(table.grab().toImage(), cell, [](QRgb color) { return qGray(color) < 128; });
  };
  SymbolTable table;
  table.Set_Font(QStringLiteral("Wingdings"), 0);
  int shown = 0;
  for (int code = 0x21; code <= 0xFF; ++code) shown += inkOf(table, code) > 0;
  EXPECT_EQ(shown, 223) << "signs, and the box of the one without";
  // A script of letters; its characters go into a text.
  const QString bookmark = Take(Text("Ma", "Arial", 12));
  auto& dialog = Chosen<FrmSchrift>("mnuSchrift");
  Walk(dialog, "cmbScript : Griechisch; cmdZeichen!");
  auto* signs = Part<SymbolTable>(*dialog.findChild<FrmTblSymb*>(), "rgcard");
  signs->Select(QChar(0x03B1));
  QTest::keyClick(signs, Qt::Key_Return);
  EXPECT_EQ(Map.Text2.Text, "Maα");
  ASSERT_TRUE(End_Entry());
  EXPECT_EQ(Row(bookmark).Eintrag, "Maα");
  EXPECT_EQ(Row(bookmark).Schrift, "Arial-C161");
}
