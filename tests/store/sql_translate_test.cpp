#include "store/sql_translate.h"

namespace {

// A table with its header, and the statements run on it.
class SqlTranslate : public FluraxTest {
 protected:
  void SetUp() override {
    FluraxTest::SetUp();
    database = Make_Table_File(Path("SQL.MDB"), "Karte.bmp");
    Row("Text", "Ahorn", 100, 0);
    Row("Text", "Äsche", 400, 100);
    Row("Linie1", "Bach", 200, 4);
    Row("Figur1", "Kasten", 1500, 20);
    Row("Text", "3 Buchen", 300, 1);
    Row("Flaeche0", "O'Neill", 50, 4);
    Row("TextX", "100% *echt*", 350, 0);
    database->CreateTable({"Linie1", {{"xf", FieldType::Integer, 0}, {"yf", FieldType::Integer, 0}}});
    database->Execute("INSERT INTO Linie1 VALUES (200, 7)");
  }
  void Row(const char* id, const char* text, int x, int typ) {
    Append_Row(*database, {id, text, typ == 1 ? "Wingdings 2" : "Arial", 12, 0, 0, 0, x, 0, 0, 0, typ});
  }
  // The first column of what a Select gives, or the whole column Eintrag after a change; "Fehler: " with the reason.
  QString Run(const QString& statement) {
    const SqlTranslation it = Translate_Sql(statement, database->TableDefs());
    if (!it.Good()) return "Fehler: " + it.error;
    try {
      QString source = it.sql;
      if (it.kind != SqlKind::Select) {
        database->Execute(it.sql);
        source = "SELECT \"Eintrag\" FROM \"MapData\" WHERE substr(\"ID\",1,1)<>'!'";
      }
      const auto rows = it.ownRows ? database->OpenRecordset(source) : database->OpenSnapshot(source);
      QStringList values;
      for (rows->MoveFirst(); !rows->Eof(); rows->MoveNext())
        values << rows->Text(rows->HasField(u"Eintrag") ? rows->FieldIndex(u"Eintrag") : 0);
      return values.join(u'|');
    } catch (const Error& error) {
      return "Fehler: " + error.text;
    }
  }
  std::unique_ptr<Database> database;
};

struct Case {
  const char *statement, *result;
};

}  // namespace

TEST_F(SqlTranslate, Selects) {
  const QString header = Rows_Of(*database)[0].Eintrag;
  const Case cases[] = {
      // As delivered.
      {"Select * from [MapData] where ID like 'Text*' order by Eintrag", "100% *echt*|3 Buchen|Ahorn|Äsche"},
      {"Select * from [MapData] where (Eintrag like '*A*' or Typ = 4 or Typ between 20 and 23 or "
       "Schrift like 'Wingdings*') and not ID like '!*'",
       "Ahorn|Bach|Kasten|3 Buchen|O'Neill"},
      {"Select * from [MapData] where Xmap < 320", "Ahorn|Bach|3 Buchen|O'Neill"},
      {"Select * from [MapData] where Xmap > 1490", "Kasten"},
      // Names and texts.
      {"select EINTRAG from mapdata where GRÖSSE > 11.5 and xmap=100;", "Ahorn"},
      {"SELECT [MapData].[Eintrag] FROM MapData WHERE MapData!Typ = 4", "Bach|O'Neill"},
      {"select m.Eintrag from MapData as m where m.id = \"linie1\"", "Bach"},
      {"select * from MapData where Eintrag = 'äSCHE'", "Äsche"},
      {"select * from MapData where Eintrag = 'O''Neill'", "O'Neill"},
      {"select * from MapData where Eintrag = \"O'Neill\"", "O'Neill"},
      {"select * from MapData where Eintrag = 'drop table'", ""},
      {"select Eintrag as Ort from MapData where Typ = 4 order by Ort desc", "O'Neill|Bach"},
      // Patterns.
      {"select * from MapData where Eintrag like 'ä*'", "Äsche"},
      {"select * from MapData where Eintrag like '[a-c]*'", "Ahorn|Bach"},
      {"select * from MapData where Eintrag like '#*' and Eintrag like '*[!n]'", "100% *echt*"},
      {"select * from MapData where Eintrag like '*[*]*'", "100% *echt*"},
      {"select * from MapData where Eintrag like '?ach'", "Bach"},
      {"select * from MapData where Eintrag like '%ach'", ""},
      {"select * from MapData where Typ like '2*'", "Kasten"},
      {"select * from MapData where Eintrag not like '*h*' and Xmap < 1600 and not ID like '!*'", "Kasten|O'Neill"},
      // Signs and functions.
      {"select Eintrag & '/' & Xmap from MapData where Typ = 20", "Kasten/1500"},
      {"select 'a' + Eintrag from MapData where Typ = 20", "aKasten"},
      {"select 7 / 2 from MapData where Typ = 20", "3.5"},
      {"select 7 mod 4 from MapData where Typ = 20", "3"},
      {"select * from MapData where Left(Eintrag, 2) = 'AH' or Right(Eintrag,4)='BACH'", "Ahorn|Bach"},
      {"select * from MapData where Mid([Eintrag], 2, 2) = 'SC'", "Äsche"},
      {"select * from MapData where InStr(Eintrag, 'N') = 2 and Len(Eintrag) > 3", ""},
      {"select * from MapData where InStr(Eintrag, 'NEI') > 0", "O'Neill"},
      {"select UCase(Eintrag) from MapData where LCase(Eintrag) = 'äsche'", "ÄSCHE"},
      {"select * from MapData where Val(Eintrag) = 3", "3 Buchen"},
      {"select IIf(Typ = 4, 'Linie', Format(Xmap, '000')) from MapData where Xmap in (50, 1500) order by Xmap",
       "Linie|1500"},
      {"select * from MapData where IsNull(Eintrag) = True or Round(2.5) = 3", ""},
      {"select Count(*) from MapData where Typ = 4", "2"},
      {"select Top 2 * from MapData where Typ <= 4 and Xmap > 150 and ID <> 'x' order by Xmap", "Bach|3 Buchen"},
      {"select distinct Typ from MapData where Typ > 0 order by Typ", "1|4|20|100"},
      {"select Typ from MapData where Typ > 0 group by Typ having Count(*) > 1", "4"},
      {"select Eintrag from MapData where Typ = 20 union select Eintrag from MapData where Typ = 1", "3 Buchen|Kasten"},
      {"select * from MapData where Xmap in (select xf from Linie1)", "Bach"},
      {"select Eintrag from (MapData inner join Linie1 on MapData.Xmap = Linie1.xf)", "Bach"},
      {"select Eintrag from MapData left join Linie1 on Xmap = xf where yf is not null", "Bach"},
  };
  for (const Case& it : cases) EXPECT_EQ(Run(it.statement), QString(it.result)) << it.statement;
}

TEST_F(SqlTranslate, RefusesWhatIsNoStatementOfTheUser) {
  const Case cases[] = {
      {"select * from MapData; delete from MapData", "nur eine einzige"},
      {"select * from MapData; ; drop table MapData", "nur eine einzige"},
      {"delete from MapData where ID = 'x'; --", "nur eine einzige"},
      {"attach 'x.mdb' as y", "beginnt mit"},
      {"PRAGMA journal_mode = off", "beginnt mit"},
      {"drop table MapData", "beginnt mit"},
      {"with x as (select 1) select * from x", "beginnt mit"},
      {"", "beginnt mit"},
      {"select * into Neu from MapData", "Neu"},
      {"select * from sqlite_master", "gibt es nicht"},
      {"select * from MapData, Fehlt", "\"Fehlt\" gibt es nicht"},
      {"select * from MapData inner join Fehlt on ID = ID", "\"Fehlt\" gibt es nicht"},
      {"select load_extension('x') from MapData", "Funktion \"load_extension\""},
      {"select Farbe from MapData", "Name \"Farbe\" ist unbekannt"},
      {"select rowid from MapData", "unbekannt"},
      {"select * from MapData where x.Typ = 1", "\"x\" kommt in der Anweisung nicht vor"},
      {"select * from MapData where Eintrag = 'abc", "nicht durch ' beendet"},
      {"select * from [MapData where Typ = 1", "nicht durch ] beendet"},
      {"select * from MapData where Typ = 1)", "zu viel"},
      {"select * from MapData where (Typ = 1", "fehlt"},
      {"select * from MapData where Typ = 1a", "Zahl"},
      {"select * from MapData where Typ /* 1 */ = 1", "verstanden"},
      {"select * from MapData where Typ = #1/1/2000#", "Zeichen"},
      {"select * from MapData wher Typ = 1", "bei \"Typ\" nicht verstanden"},
      {"select * from MapData where Typ =", "nicht vollständig"},
      {"select * from MapData where", "nicht vollständig"},
      {"select Left(Eintrag) from MapData", "zu viele oder zu wenige"},
      {"update MapData set Farbe = 1", "Spalte \"Farbe\" gibt es nicht"},
      {"update MapData set Typ", "fehlt ="},
      {"update MapData set Typ = 40000", "Überlauf"},
      {"update MapData set VG = 'rot'", "Typen"},
      {"update Linie1 set xf = (select Xmap from MapData) , yf = where", "nicht vollständig"},
      {"delete MapData", "from"},
      {"insert into MapData (ID, Typ) values ('x')", "Zahl der Werte"},
  };
  for (const Case& it : cases) {
    const QString result = Run(it.statement);
    EXPECT_TRUE(result.startsWith("Fehler: ") && result.contains(it.result)) << it.statement << ": " << result;
  }
  EXPECT_TRUE(Run("select * from MapData where ID = '" + QString(9000, u'x') + "'").contains("zu lang"));
  EXPECT_TRUE(Run("select " + QString(100, u'(') + "1" + QString(100, u')') + " from MapData").contains("tief"));
  EXPECT_EQ(Rows_Of(*database).size(), 8U) << "nothing of it was done";
}

TEST_F(SqlTranslate, Changes) {
  Run("Update [MapData] Set Größe = Größe-1 where ID like 'Text*'");
  EXPECT_EQ(Rows_Of(*database)[1].Groesse, 11);
  EXPECT_EQ(Rows_Of(*database)[3].Groesse, 12);
  // Halves go to the even neighbour, as everywhere in the table.
  Run("update MapData set [MapData].VG = 5/2, Eintrag = UCase(Left(Eintrag,1)) & Mid(Eintrag,2), HG = '7' "
      "where Typ = 20");
  EXPECT_EQ(Rows_Of(*database)[4].VG, 2);
  EXPECT_EQ(Rows_Of(*database)[4].HG, 7);
  EXPECT_TRUE(Run("update MapData set Eintrag = '" + QString(300, u'x') + "' where Typ = 20").startsWith("Fehler"));
  EXPECT_EQ(Run("Delete MapData.* from [MapData] where Xmap > 1490 or Typ = 4"), "Ahorn|Äsche|3 Buchen|100% *echt*");
  EXPECT_EQ(Run("insert into MapData (ID, Eintrag, Typ) values ('Text', 'neu', 0)"),
            "Ahorn|Äsche|3 Buchen|100% *echt*|neu");
}
