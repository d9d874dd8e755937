#include "exchange/exchange_table.h"

using ::testing::ElementsAre;

namespace {

class ExchangeTest : public OpenTableTest {
 protected:
  static EntryRow Point(const QString& text, const QString& font, double size, int typ, QPoint foot = {}) {
    EntryRow row = Text(text, 100, 200);
    row.Schrift = font;
    row.Groesse = size;
    row.Typ = typ;
    row.Xline = foot.x();
    row.Yline = foot.y();
    return row;
  }
  static EntryRow Shape(const QString& id, int typ, const QString& text, const QString& font, int x2, int y2) {
    EntryRow row = Point(text, font, 10, typ, {x2, y2});
    row.ID = id;
    return row;
  }
  // One row of every kind, with what is peculiar to it.
  void Add_All_Kinds() {
    Write_Vertices(u"Linie3"_s, {{10, 20}, {30, 40}, {50, -5}});
    Write_Vertices(u"Flaeche7"_s, {{1, 2}, {300, 4}, {5, 250}});
    Add(Point(u"Amsel"_s, u"Arial-B<45"_s, 8, 1, {110, 210}));
    Add(Point(u"a\r\nb; c"_s, u"Arial-T-C2"_s, 10, 0));
    Add(Point(u"Pfeil"_s, u"Arial-T<10"_s, 9.5, 2, {1, 2}));
    Add(Point(u"Kreis"_s, u"Arial"_s, 10, 103, {1, 2}));
    EntryRow line = Shape(u"Linie3 - C1011L5.0B12."_s, 4, u"Bach"_s, u"Arial"_s, 3, -2);
    line.VG = 9;
    line.RA = 305;
    Add(line);
    Add(Shape(u"Flaeche7>Linie3"_s, 40, u"Moor"_s, u"Arial"_s, 6, 4));
    EntryRow figure = Shape(u"Figur2"_s, 20, u"Haus"_s, u"F-3"_s, 40, 30);
    figure.RA = 412;
    Add(figure);
    Add(Shape(u"Bild"_s, 5, u"C:\\x\\uhu.png"_s, u""_s, 0, 0));
    Add(Shape(u"Bild"_s, 5, u"C:\\x\\symbol.ICO"_s, u""_s, 0, 0));
    Add(Shape(u"Maßstab"_s, 11, u" m"_s, u"100"_s, 300, 200));
    Add(Shape(u"Np"_s, -12, u"Nordpfeil"_s, u"Arial"_s, 0, 0));
    Add(Shape(u"Text"_s, -1, u"verborgen"_s, u"Arial"_s, 0, 0));
    Add(Shape(u"Netz"_s, 15, u"x"_s, u"Arial"_s, 0, 0));
    Add(Point(u""_s, u"Arial"_s, 10, 1));
  }
  static QStringList Lines() { return Exchange_Lines(Read_Exchange_Table(u"/x/k.tkr"_s))->lines; }
};

TEST_F(ExchangeTest, EveryKindIsWrittenByteForByte) {
  Add_All_Kinds();
  MapFile = u"/m/K.bmp"_s;
  const FileDialogScript dialog{Path(u"k.tkr"_s)};
  With_Box(u"Die Trakkor Exportdatei\r"_s + Path(u"k.tkr"_s) + u"\rwurde geschrieben."_s, Export_Trakkor);
  EXPECT_EQ(
      Read_Bytes(Path(u"k.tkr"_s)),
      ("Map = /m/K.bmp,  Overlay = " + Path(u"k.tkr"_s) + ",  Import = " + TableFile).toLatin1() +
          "\r\n\r\n"
          "T-1;Amsel;Arial-B<-045;16;1;16;1;1.0;100;200;110;210;11;\r\n"
          "T-2;<HTML>a<BR>b, c</HTML>;Arial-C2;20;1;16;1;0.5;100;200;0;0;11;\r\n"
          "T-3;Pfeil;Arial<-010;19;1;16;1;0.5;100;200;1;2;13;\r\n"
          "T-4;Kreis;Arial;20;1;16;1;1.0;100;200;1;2;12;\r\n"
          "L-5;Bach;Arial;20;3;16;305;0.5;100;200;3;-2;4;\r\n"
          "10,20/30,40/50,-5/\r\n"
          "L-5#L#5#3#2#0#OTEs>L050B060#\r\n"
          "F-6;Moor;Arial;10;1;16;1;1.0;100;200;6;4;40;\r\n"
          "1,2/300,4/5,250/\r\n"
          "F-6#F#6#6#4#1##\r\n"
          "G-7;Figur-7;Arial;10;1;16;412;1.0;100;200;0;0;21;\r\n"
          "100.0,200.0/140.0,200.0/140.0,230.0/100.0,230.0/\r\n"
          "G-7#G#7#4#3#0#0#\r\n"
          "B-8;uhu.png;;12;1;16;1;1.0;100;200;0;0;50;\r\n"
          "B-9;<HTML>symbol.ICO<BR>Bitte wandeln Sie diese ICO-Bilddatei<BR>in ein anderes Bildformat um,<BR>z.B. "
          "in gif- oder png-Format.;Arial;12;1;16;1;1.0;100;200;0;0;10;\r\n"
          "Skala;100 -  m - 5;Arial;12;1;16;1;1.0;100;200;300;200;60;\r\n"
          "Np;Nordpfeil;Arial;10;1;16;1;1.0;100;200;0;0;-12;\r\n");
}

TEST_F(ExchangeTest, ColoursAndLineEndsGoThereAndBack) {
  QStringList numbers;
  for (int index = 0; index < 16; ++index) {
    numbers << trakkorColor(index);
    EXPECT_EQ(fluraxColor(trakkorColor(index).toInt()), QString::number(index));
  }
  EXPECT_EQ(numbers.join(u' '), u"1 2 7 4 5 6 11 13 9 3 8 14 10 12 15 16"_s);
  EXPECT_EQ(trakkorColor(-305), u"-305"_s);
  EXPECT_EQ(trakkorColor({}) + fluraxColor({}), u"11"_s);
  EXPECT_EQ(Line_Style_Of(u"-Linie4"_s), u"-"_s);
  for (const auto& [fill, stroke] : {std::pair{-1, "0.5"}, {0, "1.0"}})
    EXPECT_EQ(Export_Record_Of(Shape(u"Flaeche1"_s, 4, u"x"_s, u"Arial"_s, 1, fill)).stroke, stroke) << fill;
  EXPECT_EQ(Line_Ends_Of(u"-"_s), std::nullopt);
  for (const auto shape : {LineEnds::Shape::Arrow, LineEnds::Shape::Circle, LineEnds::Shape::Rectangle})
    for (int flags = 0; flags < 16; ++flags) {
      const LineEnds ends{shape, (flags & 1) != 0, (flags & 2) != 0, (flags & 4) != 0, (flags & 8) != 0, 2.5, 31};
      EntryId id;
      id.name = u"Linie1"_s;
      id.ends = ends;
      EXPECT_EQ(Line_Ends_Of(Line_Style_Of(id.ToText())), ends) << Line_Style_Of(id.ToText());
    }
}

// Points alone: what the mobile program sends. It ends at the first line of another kind, and says how many came in.
TEST_F(ExchangeTest, EntryLinesBecomePoints) {
  Write_Lines(
      Path(u"in.tkr"_s),
      {u"Map = x,  Overlay = y"_s, u""_s, u"abc"_s, u"T-1;Uhu;Arial-B<-045;16;1;16;0;0.5;100;200;110;210;11;"_s,
       u"1Text;Kauz;Arial;9;5;0;-100;1.0;1;2;0;0;10;"_s, u"B-2;uhu.png;;12;1;16;1;1.0;7;8;0;0;50;"_s,
       u"Skala;100 - m - 5;Arial;12;1;16;1;1.0;5;6;300;200;60;"_s, u"F-3;Moor;Arial;20;1;16;1;1.0;100;200;6;4;4;"_s,
       u"1,2/300,4/"_s, u"T-4;Star;Arial;9;1;16;1;1.0;1;2;0;0;10;"_s});
  const FileDialogScript dialog{Path(u"fehlt.tkr"_s), Path(u"in.tkr"_s)};
  MessageScript boxes{{u"Diese Datei existiert nicht.\rBitte wählen Sie eine andere Datei"_s, MsgAnswer::No},
                      {u"CSV-Fehler in Module 15."_s},
                      {u"5 Einträge wurden eingelesen."_s}};
  Import_Trakkor();
  rsEntries->MoveFirst();
  std::vector<EntryRow> rows;
  For_Each_Entry([&] { rows.push_back(Read_Entry(*rsEntries)); });
  ASSERT_EQ(rows.size(), 5U);
  EXPECT_EQ(rows[0], (EntryRow{u"T-1"_s, u"Uhu"_s, u"Arial-B-T<-045"_s, 10, 0, 15, 0, 100, 200, 110, 210, 1}));
  EXPECT_EQ(rows[1], (EntryRow{u"Text"_s, u"Kauz"_s, u"Arial"_s, 10, 4, 0, -100, 1, 2, 0, 0, 0}));
  EXPECT_EQ(rows[2].Typ, 5);
  EXPECT_EQ(rows[3], (EntryRow{u"Maßstab"_s, u"m"_s, u"Arial"_s, 100, 0, 15, 0, 5, 6, 300, 200, 11}));
  EXPECT_EQ(rows[4].Typ, -6);
}

// What was written comes back with shapes, colours, angles, sizes and kinds; names are given anew.
TEST_F(ExchangeTest, TheWholeFileComesBack) {
  Add_All_Kinds();
  std::vector<EntryRow> before = Read_Exchange_Table({}).rows;
  const QStringList lines = Lines();
  const ExchangeContent content = Read_Exchange_All(lines);
  EXPECT_TRUE(content.refused.empty()) << content.refused.at(0).reason;
  const ExchangeTaken taken = Append_Exchange_Entries(content.entries);
  EXPECT_EQ(taken.entries, 11);
  std::vector<EntryRow> after = Read_Exchange_Table({}).rows;
  after.erase(after.begin(), after.begin() + static_cast<std::ptrdiff_t>(before.size()));
  before.resize(11);
  // What the file cannot hold.
  before[1].Eintrag = u"a\r\nb, c"_s;
  before[1].Schrift = u"Arial-C2-T"_s;
  before[3].Typ = 3;
  before[4].ID = u"Linie0 - C1011L5.0B12."_s;
  before[5].ID = u"Flaeche0"_s;
  before[6].ID = u"Figur1"_s;
  before[6].Eintrag = u"Figur-7"_s;
  before[6].Schrift = u"F 3"_s;
  before[7].Eintrag = u"uhu.png"_s;
  before[7].Groesse = after[7].Groesse = before[8].Groesse = after[8].Groesse = 0;
  before[8] = after[8];  // a text with a hint
  EXPECT_TRUE(after[8].Eintrag.startsWith(u"symbol.ICO\r\nBitte wandeln"_s));
  EXPECT_EQ(taken.shortened.size(), 1U) << "it is longer than its column";
  before[9].Eintrag = u"m"_s;
  before[9].Groesse = 12;
  for (size_t i = 0; i < 11; ++i) EXPECT_EQ(after[i], before[i]) << i << ' ' << after[i].ID << ' ' << after[i].Schrift;
  EXPECT_THAT(Load_Vertices(u"Linie0"_s), ElementsAre(QPoint(10, 20), QPoint(30, 40), QPoint(50, -5)));
  EXPECT_THAT(Load_Vertices(u"Flaeche0"_s), ElementsAre(QPoint(1, 2), QPoint(300, 4), QPoint(5, 250)));
}

TEST_F(ExchangeTest, WhatCannotBeReadIsNamedByItsLine) {
  const ExchangeContent content = Read_Exchange_All(
      {u"1,2/3,4/"_s, u"F-1;ohne Punkte;Arial;20;1;16;1;1.0;1;2;6;4;4;"_s, u"F-1#F#1#6#4#1##"_s,
       u"T-2;weit;Arial;20;1;16;1;1.0;99999;2;6;4;10;"_s, u"L-3;krumm;Arial;20;1;16;1;1.0;1;2;6;4;4;"_s, u"1;2/3/"_s,
       u"G-4;Figur-4;Arial;20;1;16;1;1.0;1;2;0;0;20;"_s, u"1.0,2.0/41.0,2.0/41.0,32.0/1.0,32.0/"_s, u"GPX;"_s,
       u"T-5;gut;Arial;20;1;16;1;1.0;3;2;6;4;10;"_s});
  QStringList told;
  for (const ExchangeRefusal& one : content.refused) told << QString::number(one.line) + u' ' + one.reason;
  EXPECT_THAT(
      told, ElementsAre(u"1 Die Zeile gehört zu keinem Eintrag."_s, u"2 Zu diesem Objekt fehlen die Punkte."_s,
                        u"4 Überlauf"_s, u"6 Punkte: Typen unverträglich"_s, u"5 Zu diesem Objekt fehlen die Punkte."_s,
                        u"9 Punkte: Typen unverträglich"_s, u"7 Zu diesem Objekt fehlen die Punkte."_s));
  ASSERT_EQ(content.entries.size(), 1U);
  EXPECT_EQ(content.entries[0].row.Eintrag, u"gut"_s);
  EXPECT_TRUE(Read_Exchange_All({u""_s, u"Map = x"_s}).empty);
}

TEST_F(ExchangeTest, FaultsLeaveFileAndTableAsTheyAre) {
  const FileDialogScript dialogs{Path(u"k.tkr"_s), Path(u"k.tkr"_s), std::nullopt, Path(u"leer.tkr"_s),
                                 Path(u"voll.tkr"_s)};
  {
    const MessageScript script(u"\rDiese Datei ist leer.\rDer Export dieser Datei wird abgebrochen."_s);
    Export_Trakkor();
    EXPECT_EQ(script.Seen()[0].title, u"Karteneinträge in eine Trakkor-Datei exportieren"_s);
  }
  EXPECT_FALSE(File_Exists(Path(u"k.tkr"_s)));
  Add(Point(u"Amsel"_s, u"Arial"_s, 8, 1));
  Write_Lines(Path(u"k.tkr"_s), {u"alt"_s});
  With_Box(u"\r\rDiese Datei existiert bereits.\rSoll sie überschrieben werden?"_s, MsgAnswer::No, Export_Trakkor);
  EXPECT_EQ(Read_Lines(Path(u"k.tkr"_s)).value(0), u"alt"_s);
  Write_Lines(Path(u"leer.tkr"_s), {u"Map = x"_s, u""_s});
  With_Box(u"leer.tkr\rDiese Datei ist leer."_s, Import_Trakkor);
  Write_Lines(Path(u"voll.tkr"_s), QStringList(50, u"T-1;Uhu;Arial;16;1;16;0;1.0;100;200;110;210;11;"_s));
  const StopWorkAt stop(70);  // among the rows
  Import_All_Trakkor();
  EXPECT_EQ(Texts(), QStringList{u"Amsel"_s});
}

// A table has a thousand names for areas: what finds none is told, the rest comes in.
TEST_F(ExchangeTest, NamesEndAtAThousand) {
  std::vector<ExchangeEntry> entries(1003, {Shape(u"Flaeche"_s, 4, u"x"_s, u"Arial"_s, 0, 0), {{1, 2}, {3, 4}}, 7});
  entries.front().row.ID = u"Linie"_s;
  Add(Shape(u"Flaeche999"_s, 4, u"x"_s, u"Arial"_s, 0, 0));
  const ExchangeTaken taken = Append_Exchange_Entries(entries);
  EXPECT_EQ(std::tuple(taken.entries, taken.refused.size()), std::tuple(1000, 3U));
}

}  // namespace
