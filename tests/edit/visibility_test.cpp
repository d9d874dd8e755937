#include "edit/visibility.h"

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

TEST_F(Visibility, InactiveKeepsTheRestOfTheName) {
  const QString name = QStringLiteral("Linie7 - C1011L2.5B5.0>Flaeche3<2");
  const QString full = Add(Make(100, QString(79, 'x'), "", 1, 1)), line = Add(Make(4, name, "", 1, 1));
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
