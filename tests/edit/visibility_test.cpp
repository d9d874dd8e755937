#include "edit/visibility.h"

#include "edit/blanks.h"
#include "edit/marks.h"
#include "support/bulk_fixture.h"
#include "support/looks.h"

namespace {

using Visibility = BulkTest;

TEST_F(Visibility, CurrentRowTogglesAndMenusFollow) {
  const QString text = Add_Text("a"), arrow = Add(Make(3, "Text", "b", 1, 1, 5, 5));
  Hide_Current();
  EXPECT_EQ(Typ(arrow), -3);
  EXPECT_EQ(Text_Now("mnuObjVisNo"), QString("aktuelles Objekt sichtbar machen"));
  EXPECT_TRUE(Command_Checked("mnuObjVisJa"));
  Hide_Current();
  EXPECT_EQ(Typ(arrow), 3);
  Go(text);
  Hide_Current();
  Hide_Current();
  EXPECT_EQ(Typ(text), 1) << "a hidden kind 0 comes back as a text without foot point";
  Go(Header_Key());
  Hide_Current();
  Deactivate_Current();
  EXPECT_EQ(Row(Header_Key()).Typ, -1);
  EXPECT_TRUE(Row(Header_Key()).ID.startsWith('!'));
}

TEST_F(Visibility, MarkedAndAllLeaveHeaderAndNorthArrow) {
  const QString plain = Add_Text("a"), marked = Add_Text("b"), arrow = Add(Make(-12, "Np", "Nordpfeil", 9, 90));
  Mark_Rows({arrow, marked});
  Hide_Marked();
  EXPECT_EQ(Typ(plain), 0);
  EXPECT_EQ(Typ(marked), -201);
  EXPECT_EQ(Typ(arrow), -112);
  EXPECT_EQ(Map.HiddenCount, 1);
  Show_All_Hidden();
  EXPECT_EQ(Typ(marked), 201);
  EXPECT_EQ(Typ(arrow), -112);
  EXPECT_EQ(Row(Header_Key()).Typ, -1);
}

TEST_F(Visibility, BlanksLeaveTextsButNoSymbols) {
  const QString name = Add_Text("  Roter \t Milan \r\nHorst "), nothing = Add_Text("   "), plain = Add_Text("Reh");
  EntryRow sign = Make(0, "Text", " ", 1, 1);
  sign.Schrift = QStringLiteral("Wingdings");
  Write_Vertices("Linie1", {{1, 1}, {9, 9}});
  const QString symbol = Add(sign), line = Add(Make(4, "Linie1", " Bach ", 1, 1));
  With_Box("Leerzeichen", MsgAnswer::Cancel, Remove_Blanks);
  EXPECT_EQ(Row(name).Eintrag, "  Roter \t Milan \r\nHorst ");
  With_Box("Leerzeichen", MsgAnswer::No, Remove_Blanks);
  EXPECT_EQ(Row(name).Eintrag, "Roter \t Milan \r\nHorst");
  EXPECT_EQ(Row(nothing).Eintrag, QString(QChar::Nbsp));
  EXPECT_EQ(Row(plain).Eintrag, "Reh");
  EXPECT_EQ(InfoBar.Panel[0], "Leerzeichen entfernt: 2 Einträge");
  EXPECT_EQ(Menu("mnuReset").Caption, "Rückgängig: Leerzeichen entfernen");
  With_Box("Leerzeichen", MsgAnswer::Yes, Remove_Blanks);
  EXPECT_EQ(Row(name).Eintrag, "RoterMilan\r\nHorst");
  EXPECT_EQ(Row(symbol).Eintrag, " ");
  EXPECT_EQ(Row(line).Eintrag, " Bach ");
}

TEST_F(Visibility, InactiveKeepsTheRestOfTheName) {
  const QString name = QStringLiteral("Linie7 - C1011L2.5B5.0>Flaeche3<2");
  const QString full = Add(Make(100, QString(79, 'x'), "", 1, 1)), line = Add(Make(4, name, "", 1, 1));
  Write_Vertices("Linie7", {{1, 1}, {9, 9}});
  Deactivate_Current();
  EXPECT_EQ(Row(line).ID, '-' + name);
  EXPECT_TRUE(Command_Checked("mnuObjActivJa"));
  EXPECT_EQ(Map.InactiveCount, 1);
  MessageScript script("80 Zeichen");
  Deactivate_Marked();
  EXPECT_EQ(Row(full).ID, QString(79, 'x'));
  Activate_All_Inactive();
  EXPECT_EQ(Row(line).ID, name);
}

}  // namespace
