#include "edit/blanks.h"

#include "support/bulk_fixture.h"

using Blanks = BulkTest;

TEST_F(Blanks, LeaveTextsButNoSymbols) {
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
