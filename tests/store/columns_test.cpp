#include "store/columns.h"

namespace {

class Columns : public OpenTableTest {
 protected:
  void SetUp() override {
    OpenTableTest::SetUp();
    Add(Text("erster"));
    Add(Text("zweiter"));
  }
  static FieldInfo Last_Field() { return rsEntries->Fields().back(); }
};

TEST_F(Columns, AddedColumnsHaveTheirKindAndKeepRows) {
  rsEntries->MovePrevious();
  Map.CurBookmark = rsEntries->Bookmark();
  ASSERT_TRUE(Add_Column({" Comment ", FieldType::Text, 0}, "Neu"));
  EXPECT_EQ(Last_Field(), (FieldInfo{"Komment", FieldType::Text, 1}));
  EXPECT_EQ(rsEntries->Text(column::Eintrag), QString("erster")) << "the current row stays";
  ASSERT_TRUE(Add_Column({"", FieldType::Integer, 0}, "Anzahl"));
  ASSERT_TRUE(Add_Column({"Höhe über NN", FieldType::Double, 0}, {}));
  EXPECT_EQ(Last_Field().type, FieldType::Double);
  EXPECT_TRUE(Tbl.HasUserColumns);
  Set_Field(QStringLiteral("Höhe über NN"), QStringLiteral("12,5"));
  Close_Table(CloseMode::WithCopy);
  ASSERT_TRUE(Load_Table(LoadMode::Reload));
  EXPECT_EQ(Texts(), QStringList({"erster", "zweiter"}));
  rsEntries->MovePrevious();
  EXPECT_EQ(rsEntries->Number(QStringLiteral("Höhe über NN")), 12.5);
}

TEST_F(Columns, NamesThatCannotBeUsed) {
  for (const char* name : {"typ", "RowId", "a.b", "x]", "Größe"}) {
    MessageScript script("Spalte");
    EXPECT_FALSE(Add_Column({QString::fromUtf8(name), FieldType::Text, 5}, {})) << name;
  }
  EXPECT_FALSE(Tbl.HasUserColumns);
}

TEST_F(Columns, OnlyColumnsOfTheUserAreRemoved) {
  ASSERT_TRUE(Add_Column({"Fundort", FieldType::Text, 20}, {}));
  rsEntries->MoveLast();
  Set_Field(QStringLiteral("Fundort"), QStringLiteral("Aue"));
  MessageScript script("wird vom Programm benötigt");
  EXPECT_FALSE(Remove_Column("größe"));
  script.Expect("rechts von der Spalte 'Typ' aus");
  EXPECT_FALSE(Remove_Column("fehlt"));
  script.Expect("Folgende Spalte wurde entfernt:Fundort");
  ASSERT_TRUE(Remove_Column("Fundort"));
  EXPECT_FALSE(rsEntries->HasField(u"Fundort"));
  EXPECT_FALSE(Tbl.HasUserColumns);
  script.Expect("wieder hergestellt");
  Undo_Last();
  rsEntries->MoveLast();
  EXPECT_EQ(rsEntries->Text(QStringLiteral("Fundort")), QString("Aue"));
  ASSERT_TRUE(Add_Column({"Finder", FieldType::Text, 9}, {}));
  script.Expect("wieder hergestellt");
  Undo_Last();
  EXPECT_FALSE(rsEntries->HasField(u"Finder"));
}

}  // namespace
