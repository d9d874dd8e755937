#include "store/transaction.h"

namespace {

class TransactionTest : public OpenTableTest {
 protected:
  void SetUp() override {
    OpenTableTest::SetUp();
    Add(Text("eins"));
    Add(Text("zwei"));
    Tbl.Tag = TableTag::Clean;
  }
};

// An inner transaction that fails ends all of them: nobody above may take the rest for stored.
TEST_F(TransactionTest, AnErrorOrAStopInsideOrOutsideLeavesNothingBehind) {
  const bool outer = In_Transaction([] {
    Append_Entry(Text("außen"));
    EXPECT_EQ(Error_Of([] { Write_Vertices("Linie0", {{1, 1}, {40000, 0}}); }), errors::overflow);
  });
  EXPECT_FALSE(outer);
  EXPECT_EQ(Texts(), (QStringList{"eins", "zwei"}));
  EXPECT_EQ(Tbl.Tag, TableTag::Clean);
  // An error that passes through both is raised once more, not replaced by one about the transaction.
  EXPECT_EQ(Error_Of([] { In_Transaction([] { Write_Vertices("Linie0", {{40000, 0}}); }); }), errors::overflow);
  const auto fails = [] {
    Append_Entry(Text("drei"));
    Write_Vertices("Linie0", {{1, 1}, {2, 2}});
    rsEntries->MoveLast();
    rsEntries->Edit();
    rsEntries->Set(column::Eintrag, QString("halb"));
    Raise(errors::diskFull);
  };
  EXPECT_EQ(Error_Of([&] { In_Transaction(fails); }), errors::diskFull);
  EXPECT_FALSE(In_Transaction([] {
    Append_Entry(Text("drei"));
    return false;
  }));
  EXPECT_FALSE(dbEntries->InTrans());
  EXPECT_FALSE(rsEntries->Editing());
  EXPECT_FALSE(dbEntries->HasTable("Linie0"));
  EXPECT_EQ(Texts(), (QStringList{"eins", "zwei"}));
  EXPECT_EQ(Tbl.Tag, TableTag::Clean);
  EXPECT_TRUE(In_Transaction([] { Append_Entry(Text("drei")); }));
  EXPECT_EQ(Texts().size(), 3);
  EXPECT_EQ(Tbl.Tag, TableTag::Dirty);
}

TEST_F(TransactionTest, AToldTransactionKeepsTheRowAndTellsTheFault) {
  rsEntries->MoveFirst();
  rsEntries->MoveNext();
  MessageScript script("Es wurde nichts verändert.");
  const bool written = In_Told_Transaction("Titel", [] {
    rsEntries->MoveLast();
    rsEntries->Delete();
    Raise(errors::diskFull);
  });
  EXPECT_FALSE(written);
  EXPECT_EQ(script.Seen().at(0).title, "Titel");
  EXPECT_EQ(rsEntries->Text(column::Eintrag), "eins");
  EXPECT_TRUE(In_Told_Transaction("Titel", [] { rsEntries->MoveLast(); }));
  EXPECT_EQ(rsEntries->Text(column::Eintrag), "eins");
  Close_Table(CloseMode::CloseOnly);
  EXPECT_FALSE(In_Told_Transaction("Titel", [] { ADD_FAILURE(); }));
}

TEST_F(TransactionTest, AWalkGoesOnStopsAndSurvivesDeletedRows) {
  Add(Text("drei"));
  const QString last = rsEntries->Bookmark();
  QStringList seen;
  For_Each_Entry([&seen] { seen << rsEntries->Text(column::Eintrag); });
  EXPECT_EQ(seen, (QStringList{"eins", "zwei", "drei"}));
  EXPECT_EQ(rsEntries->Bookmark(), last);
  seen.clear();
  For_Each_Entry([&seen] {
    seen << rsEntries->Text(column::Eintrag);
    if (seen.size() == 2) return Walk::Stop;
    rsEntries->Delete();
    return Walk::RowGone;
  });
  EXPECT_EQ(seen, (QStringList{"eins", "zwei"}));
  EXPECT_EQ(Texts(), (QStringList{"zwei", "drei"}));
}

// Table names do not mind their letters' case; a row may name its table in another one.
TEST_F(TransactionTest, RowsGoWithTheTablesNobodyElseDrawsFrom) {
  for (const char* name : {"Linie0", "Flaeche1", "Figur2"}) Write_Vertices(name, {{1, 1}, {2, 2}});
  QSet<qint64> going;
  for (const auto& [id, typ] : {std::pair{"Linie0", 4}, {"-Flaeche1>Linie0", 140}, {"Figur2", -24}}) {
    Add(Entry(id, typ));
    going << rsEntries->Key();
  }
  Add(Entry("linie0 - P1101L5.0B2.5", 40));
  rsEntries->MoveFirst();
  going << rsEntries->Key() << 4711;
  EXPECT_EQ(Delete_Entries(going), 3);  // the header row stays, a row that is not there does no harm
  EXPECT_TRUE(dbEntries->HasTable("Linie0"));
  EXPECT_FALSE(dbEntries->HasTable("Flaeche1"));
  EXPECT_FALSE(dbEntries->HasTable("Figur2"));
}

}  // namespace
