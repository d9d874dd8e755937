#include "edit/text_font.h"

#include "edit/symbols.h"
#include "support/hand_fixture.h"
#include "support/pixels.h"
#include "tools/symbol_tool.h"

namespace {

class TextFont : public HandTest {
 protected:
  static FontChoice Serif(double size = 20) {
    return {{.family = QStringLiteral("Times New Roman"), .bold = true, .charset = 238, .angle = -45}, size};
  }
};

}  // namespace

TEST_F(TextFont, AChosenFontGoesToTheRowTheTypedTextOrTheNextOne) {
  // Nothing in hand: the next text, and the one that is typed then. Angles count modulo 360.
  EXPECT_EQ(Load_Font_Spec(), FontChoice()) << "Arial 10";
  EXPECT_EQ(Sample_Text(), "TTT");
  ASSERT_TRUE(Take_Font(Serif()));
  New_Text(100, 100);
  EXPECT_EQ(Map.Text2.FontName, "Times New Roman");
  EXPECT_EQ(Font_Target(), FontTarget::Typed);
  Text_Typed(QStringLiteral("Rohrsänger\nzweite Zeile"));
  EXPECT_EQ(Sample_Text(), "Rohrsänger");
  FontChoice typed = Load_Font_Spec();
  EXPECT_EQ(typed.font.angle, 315);
  typed.font.underline = true;
  typed.size = 14;
  ASSERT_TRUE(Take_Font(typed));
  EXPECT_EQ(Map.Text2.Text, "Rohrsänger\r\nzweite Zeile") << "the text goes on being typed";
  ASSERT_TRUE(End_Entry());
  const QString first = Map.CurBookmark;
  EXPECT_EQ(Row(first).Schrift, "Times New Roman-B-U-C238<315");
  EXPECT_EQ(Row(first).Groesse, 14);
  // The row in hand; what was typed into it is not lost.
  ASSERT_TRUE(Take_Entry(first));
  Text_Typed(QStringLiteral("Rohrammer"));
  ASSERT_TRUE(Take_Font({{.family = QStringLiteral("Arial"), .italic = true, .angle = 720}, 9}));
  EXPECT_EQ(Row(first).Schrift, "Arial-I");
  EXPECT_EQ(Row(first).Eintrag, "Rohrammer");
  EXPECT_EQ(Map.InHand, first);
  // The next text looks like the current row; an area's font is no text's.
  EXPECT_EQ(Font_Of_New_Text(), FontChoice({.family = QStringLiteral("Arial"), .italic = true}, 9));
  EntryRow area = Poly_Row(QStringLiteral("Flaeche1"), 300, 300, {{300, 300}, {400, 300}, {400, 400}});
  area.Groesse = -12;
  const QString label = Take(area);
  EXPECT_EQ(Font_Of_New_Text(), FontChoice());
  EXPECT_EQ(Load_Font_Spec().size, 12);
  ASSERT_TRUE(Take_Font(Serif(16)));
  EXPECT_EQ(Row(label).Groesse, -16) << "the label stays switched off";
}

TEST_F(TextFont, WhatTheColumnCannotHoldIsRefused) {
  const QString row = Take(Text_Row("Amsel", 100, 100));
  for (const QString& family :
       {QStringLiteral("Sans-Serif"), QStringLiteral("a<b"), QStringLiteral(" "), QString(76, QChar(u'x'))}) {
    MessageScript script("kann nicht gespeichert werden", MsgAnswer::Ok);
    EXPECT_FALSE(Take_Font({{.family = family, .bold = true, .angle = 45}, 10}));
  }
  EXPECT_EQ(Row(row).Schrift, "Arial");
  ASSERT_TRUE(Take_Font({{.family = QStringLiteral("Arial")}, 500}));
  EXPECT_EQ(Row(row).Groesse, 80);
}

TEST_F(TextFont, ASymbolIsPlacedByItsMiddleAndItsCharacterChanged) {
  CurVG = 12;
  Toggle_Symbol_Tool();
  EXPECT_EQ(InfoBar.Panel[0].left(7), "Symbol:");
  Click({200, 150});
  const QString first = Map.InHand;
  ASSERT_TRUE(Symbol_In_Hand());
  EXPECT_TRUE(Map.Tool.isEmpty());
  EXPECT_EQ(Toolbar1.Tag, ToolMode::Symbol);
  EXPECT_EQ(std::tuple(Row(first).Schrift, Row(first).VG), std::tuple(QStringLiteral("Wingdings-T"), 12));
  ASSERT_TRUE(End_Entry());
  const QRect dot = Extent_Of(Map.canvas.copy(0, 0, 820, 620), [](QRgb at) { return at == (Palette[12] | black); });
  EXPECT_LE((dot.center() - QPoint(200, 150)).manhattanLength(), 8) << dot.center().x() << ',' << dot.center().y();
  // Another character and size, in hand; the next one is like it.
  ASSERT_TRUE(Take_Entry(first));
  FontChoice larger = Symbol_Font();
  larger.size = 30;
  ASSERT_TRUE(Take_Symbol(larger, QStringLiteral("J")));
  Put_Character(QChar(0xFC));
  EXPECT_EQ(Row(first).Eintrag, "ü");
  ASSERT_TRUE(End_Entry());
  ASSERT_TRUE(Place_Symbol({300, 300}));
  EXPECT_EQ(std::tuple(Row(Map.InHand).Eintrag, Row(Map.InHand).Groesse), std::tuple(QStringLiteral("ü"), 30));
  // A text after a symbol is a text again, and characters come behind what was typed.
  New_Text(400, 400);
  EXPECT_EQ(EntFont, "Arial");
  Text_Typed(QStringLiteral("Ma"));
  Put_Character(u'x');
  EXPECT_EQ(Map.Text2.Text, "Max");
}

TEST_F(TextFont, PerspexLetsTheMapThroughTheBox) {
  EntryRow row = Text_Row(" ", 100, 100);
  row.HG = 4;  // dark red
  Add(row);
  Map_Redraw();
  for (const bool perspex : {false, true}) {
    Set_Perspex(perspex);
    const int solid = qRed(Palette[4]);
    EXPECT_NEAR(qRed(Map.canvas.pixel(102, 104)), perspex ? (255 + solid) / 2 : solid, 1);
  }
  EXPECT_EQ(Map.canvas.pixel(99, 104) | black, white);
}
