#include "edit/order.h"

#include "support/bulk_fixture.h"

namespace {

class Order : public BulkTest {
 protected:
  void SetUp() override {
    BulkTest::SetUp();
    ASSERT_TRUE(Add_Column({QStringLiteral("Fundort"), FieldType::Text, 30}, {}));
    for (const char* text : {"a", "b", "c", "d", "e"}) {
      Add_Text(QString::fromLatin1(text));
      Set_Field(QStringLiteral("Fundort"), QStringLiteral("Ort ") + QString::fromLatin1(text));
    }
  }
  static void Go_To(const QString& text) {
    rsEntries->MoveFirst();
    while (rsEntries->Text(column::Eintrag) != text) rsEntries->MoveNext();
    Map.CurBookmark = rsEntries->Bookmark();
  }
  static QString Order_Of(const QString& text, int step) {
    Go_To(text);
    Order_Entry(step);
    EXPECT_EQ(rsEntries->Text(column::Eintrag), text) << "the moved row stays current";
    EXPECT_EQ(Map.CurBookmark, rsEntries->Bookmark());
    const KeepCurrentRow keep;
    for (rsEntries->MoveFirst(), rsEntries->MoveNext(); !rsEntries->Eof(); rsEntries->MoveNext())
      EXPECT_EQ(rsEntries->Text(QStringLiteral("Fundort")), QStringLiteral("Ort ") + rsEntries->Text(column::Eintrag));
    return Texts().join(QString());
  }
};

TEST_F(Order, OthersKeepTheirOrder) {
  EXPECT_EQ(Order_Of("c", 1), QString("abdce"));
  EXPECT_EQ(Order_Of("c", -1), QString("abcde"));
  EXPECT_EQ(Order_Of("b", 10), QString("acdeb"));
  EXPECT_EQ(Order_Of("e", -10), QString("eacdb"));
  EXPECT_EQ(Order_Of("b", -10), QString("beacd"));
  Go_To("a");  // a gap among the keys
  rsEntries->Delete();
  EXPECT_EQ(Order_Of("d", -10), QString("dbec"));
  EXPECT_EQ(Order_Of("c", -1), QString("dbce"));
  EXPECT_EQ(Order_Of("d", 10), QString("bced"));
  rsEntries->MoveFirst();
  EXPECT_TRUE(rsEntries->Text(column::ID).startsWith('!'));
  Add_Text("neu");
  EXPECT_EQ(Texts().join(QString()), QString("bcedneu"));
}

// To the very back again and again: the keys go below 0, and no other row is written.
TEST_F(Order, RowsGoBehindAllOthersForNothing) {
  Go_To("c");
  const QString stays = rsEntries->Bookmark();
  QString wanted = u"abcde"_s;
  for (const char* text : {"e", "d", "e", "a", "b", "e", "d"}) {
    const QString letter = QString::fromLatin1(text);
    wanted = letter + wanted.remove(letter);
    EXPECT_EQ(Order_Of(letter, -10), wanted);
  }
  EXPECT_TRUE(rsEntries->HasRow(stays));
  rsEntries->MoveTo(1);
  EXPECT_LT(rsEntries->Key(), 0);
  EXPECT_EQ(Order_Of("d", 1), u"edbac"_s);
  EXPECT_EQ(Order_Of("b", -1), u"ebdac"_s);
  Undo_Last();
  rsEntries->MoveFirst();
  EXPECT_TRUE(rsEntries->Text(column::ID).startsWith('!'));
}

TEST_F(Order, TheEndsAreToldAndNothingChanges) {
  Menu("mnuReset").Enabled = false;
  const QStringList before = Whole_Table();
  for (const int step : {1, 10}) {
    MessageScript script{{"bereits ganz vorne"}, {"bereits ganz hinten"}};
    Order_Of("e", step);
    Order_Of("a", -step);
  }
  EXPECT_EQ(Whole_Table(), before);
  EXPECT_FALSE(Menu("mnuReset").Enabled);
}

}  // namespace
