#include "exchange/csv_table.h"

#include "edit/table_edit.h"
#include "exchange/csv_export.h"
#include "support/nets.h"

namespace {

class CsvTableTest : public OpenTableTest {
 protected:
  void SetUp() override {
    OpenTableTest::SetUp();
    EntryRow row = Text(u"Uhu \"groß\"; 2\r\nEx."_s, 110, 190);
    row.Groesse = 9.5;
    row.Typ = 1;
    Add(row);
    for (const int typ : {4, 104, -204, 140, 105, 211}) Add(Entry(u"Flaeche0"_s, typ));  // no place of their own
    Add(Text(u"=1+1"_s, 100, 200));
    // 1 m a pixel; reference point at (100, 200).
    Coord = Utm_Net({400, 300}, {100, 200}, 1000);
    Coord.GridR = 644811;
    Coord.GridH = 5484963;
  }
};

TEST_F(CsvTableTest, EveryChoiceIsKeptAndWithoutANetTheCellsAreEmpty) {
  CsvOrder order{
      {u"Nr"_s, u"Eintrag"_s, u"Pixel"_s, u"Koordinaten"_s, u"Größe"_s, u"fehlt"_s}, u';', u',', true, false};
  EXPECT_EQ(Csv_Table(order),
            "\xEF\xBB\xBF"
            "Nr;Eintrag;x;y;Rechtswert;Hochwert;Größe;fehlt\r\n"
            "1;\"Uhu \"\"groß\"\"; 2\r\nEx.\";110;190;644821,0;5484973,0;9,5;\r\n"
            "2;'=1+1;100;200;644811,0;5484963,0;10;\r\n");
  order = {{u"Koordinaten"_s, u"Eintrag"_s}, u'\t', u'.', false, true};
  const QList<QByteArray> lines = Csv_Table(order).split('\n');
  EXPECT_EQ(lines[0], "L\xE4nge\tBreite\tEintrag\r");
  EXPECT_TRUE(lines.last().isEmpty());
  const QList<QByteArray> cells = lines[lines.size() - 2].split('\t');
  EXPECT_NEAR(cells[0].toDouble(), 11.0000056, 2e-7);
  EXPECT_NEAR(cells[1].toDouble(), 49.4999994, 2e-7);
  Coord = {};
  EXPECT_FALSE(Csv_Knows_Wgs84());
  EXPECT_EQ(Csv_Table({{u"Koordinaten"_s, u"Nr"_s}, u',', u'.', false, true}),
            "Rechtswert,Hochwert,Nr\r\n,,1\r\n,,2\r\n");
}

// A file of that name that is not ours may be somebody's field data.
TEST_F(CsvTableTest, TheShortWayKeepsAForeignFile) {
  const QString path = Path(u"KARTE.csv"_s);
  for (const char* foreign : {"Funde", "mehr"}) {
    Write_Lines(path, {QString::fromLatin1(foreign)});
    for (int times = 0; times < 2; ++times) With_Box(u"Diese Datei kann mit Excel"_s, Export_Csv);
    EXPECT_TRUE(Read_Lines(path).first().startsWith(u"Export der Datei: KARTE.MDB"_s));
  }
  EXPECT_EQ(Read_Lines(Path(u"KARTE_alt.csv"_s)).first(), u"Funde"_s);
  EXPECT_EQ(Read_Lines(Path(u"KARTE_alt2.csv"_s)).first(), u"mehr"_s);
  EXPECT_EQ(Find_Files(folder.path(), u"*.csv"_s).size(), 3);
}

}  // namespace
