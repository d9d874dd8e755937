#include "import/csv_import.h"
#include "coordinates/calibration_file.h"
#include "exchange/csv_export.h"
#include "import/csv_place.h"
#include "support/nets.h"
#include "support/refused_writes.h"

namespace {

const QString sampleFolder = FLURAX_TEST_DATA "/csv/";

class CsvTest : public TableTest {
 protected:
  void SetUp() override {
    TableTest::SetUp();
    Open_Table();
    MapWidthPx = 3000, MapHeightPx = 2200;
    Coord = Utm_Net({3000, 2200}, {701, 1486}, 472.5472F, 0.02120933);  // fits the sample tables
  }
  QString Csv(const QByteArray& bytes) { return Put("Funde.csv", bytes); }
  static CsvTable Analyse(const QString& path) {
    CsvTable table;
    EXPECT_TRUE(Csv_Analyse(path, table));
    return table;
  }
  CsvResult Import(const QByteArray& bytes, QPoint step = {1, 1}) { return Csv_Import(Analyse(Csv(bytes)), step); }
  // A line of the table each, "text x,y".
  static QStringList Rows() {
    QStringList all;
    for (const EntryRow& row : Rows_Of(*dbEntries)) all << u"%1 %2,%3"_s.arg(row.Eintrag).arg(row.Xmap).arg(row.Ymap);
    return all.mid(1);
  }
};

const QByteArray head = "#Eintrag;#X;#Y;#UTM\r\n";

}  // namespace

TEST_F(CsvTest, ReadsEveryCodingAndLineEnd) {
  const auto texts = [](const QString& name) {
    QStringList all;
    for (const auto& line : Analyse(sampleFolder + name).CsvLines) all << line.text;
    return all;
  };
  const QStringList ansi = texts("utm_umlaute_cp1252.csv");
  EXPECT_EQ(ansi, texts("utm_umlaute_utf8_bom.csv"));
  EXPECT_EQ(std::tuple(ansi.size(), ansi.value(6)), std::tuple(10, "Große Höckerschrecke;647674;5512853"));
  for (const QByteArray end : {"\r\n", "\n", "\r"}) {
    const CsvTable table = Analyse(Csv("Titel" + end + end + "#Eintrag;#X;#Y;#UTM" + end + "a;1;2" + end + "b;3;4"));
    ASSERT_EQ(table.CsvLines.size(), 2U);
    EXPECT_EQ(std::tuple(table.CsvLines[1].text, table.CsvLines[1].number), std::tuple(QStringLiteral("b;3;4"), 5));
  }
}

TEST_F(CsvTest, PutsTheTextTogetherByPlaces) {
  const CsvTable table = Analyse(sampleFolder + QStringLiteral("utm_plaetze.csv"));
  EXPECT_EQ(std::tuple(table.CsvTyp, table.XCol), std::tuple("UTM", 0)) << "a column like any other";
  EXPECT_EQ(std::tuple(table.EintragCol, table.skipped), std::tuple((std::vector<int>{3, 4, 7, 2, 8, 1}), 1));
  CsvReader reader(table);
  EXPECT_EQ(reader.Read(table.CsvLines[0]).text, QStringLiteral("null eins zwei drei neun zehn"));
  EXPECT_EQ(reader.Read(table.CsvLines[1]).text, QStringLiteral("null zwei neun zehn"));
  const CsvTable quoted =
      Analyse(Csv(head + "\"Hecke; \"\"alt\"\"\" ;646183;\"5513245,5\"\r\n5\" Rohr;1;2\r\n\"x;1;2"));
  CsvReader quotes(quoted);
  QStringList cells;  // a quote that is never closed stands as it is
  for (const auto& line : quoted.CsvLines) cells << quotes.Read(line).text + u'|' + quotes.Read(line).y.toString();
  EXPECT_EQ(cells, QStringList({"Hecke; \"alt\"|5513245,5", "5\" Rohr|2", "\"x|2"}));
}

TEST_F(CsvTest, TellsWhatAFileLacks) {
  const std::pair<QByteArray, const char*> cases[] = {
      {"#Eintrag;#X;#Y\r\na;1;2\r\n", "keine Angaben über den Koordinatentyp"},
      {"", "keine Angaben über den Koordinatentyp"},
      {QByteArray("BM\0\1\2\xff\0\n\0;;", 11), "keine Angaben über den Koordinatentyp"},
      {head, "keine Daten eingelesen"},
      {head + ";646183;5513245\r\n", "keine Daten eingelesen"},
      {"#Eintrag,#X,#Y,#UTM\r\na,1,2\r\n", "Semikolon (;) getrennt"},
      {"#Eintrag;#X;#UTM\r\na;1\r\n", "Spalte #Y"},
      {"#Eintrag11;#X;#Y;#UTM\r\na;1;2\r\n", "Die Daten können nicht importiert werden."},
  };
  CsvTable table;
  for (const auto& [content, told] : cases) {
    MessageScript messages(told);
    EXPECT_FALSE(Csv_Analyse(Csv(content), table)) << content.toStdString();
  }
  MessageScript messages{{QStringLiteral("Datei nicht gefunden")}, {QStringLiteral("Es ist ein Fehler aufgetreten.")}};
  EXPECT_FALSE(Csv_Analyse(Path(QStringLiteral("fehlt.csv")), table));
  Coord = {};
  EXPECT_FALSE(Csv_Analyse(Csv(head + "a;1;2"), table));
}

TEST_F(CsvTest, JudgesZonesAndEdgesOfTheMap) {
  const CsvTable table = Analyse(Csv(head + "a;1;2"));
  const auto place = [&table](const char* x, const char* y) {
    const QString xText = QString::fromUtf8(x), yText = QString::fromUtf8(y);
    return Csv_Place_Of(table, Coord, {QStringLiteral("Igel"), xText, yText});
  };
  using Texts = std::pair<const char*, const char*>;
  // Decimals are no digits of a zone.
  for (const auto& [x, y] : {Texts{"646000", "5512000"},
                             {"32646000", "5512000"},
                             {"646000,9", "5512000.9"},
                             {"32 646\u00A0000", " 5 512 000"}})
    EXPECT_EQ(place(x, y).at, QPoint(701, 1486)) << x;
  const std::tuple<const char*, const char*, const char*> beside[] = {
      {"33646000", "5512000", "Falsche Zone: 33"},
      {"4646000", "5512000", "Falsche Zone: 4"},
      {"600000", "5512000", "Igel Rechtswert 600000 liegt zu weit links im Westen"},
      {"700000", "5512000", "Igel Rechtswert 700000 liegt zu weit rechts im Osten"},
      {"646000", "5612000", "Igel Hochwert 5612000 liegt zu weit oben im Norden"},
      {"646000", "5412000", "Igel Hochwert 5412000 + liegt zu weit unten im Süden"}};
  for (const auto& [x, y, reason] : beside) EXPECT_EQ(place(x, y).reason, reason);
  for (const auto& [x, y] : {Texts{"", "5512000"},
                             {"646000", "o.A."},
                             {"646.000.1", "5512000"},
                             {"1e5", "5512000"},
                             {"646000", "99999999999"},
                             {",5", "5512000"}}) {
    const CsvPlace unread = place(x, y);
    EXPECT_TRUE(unread.reason.contains(QStringLiteral("keine lesbare Koordinate"))) << x << ' ' << unread.reason;
    EXPECT_FALSE(unread.outside);
  }
  Coord.ZoneNumber = 4;
  EXPECT_EQ(place("4646000", "5512000").at, QPoint(701, 1486));
  Coord.GridR = 4646000;
  EXPECT_EQ(place("4646000", "5512000").at, QPoint(701, 1486)) << "a net that counts with the zone in front";
}

// Nets differ in whether their Rechtswerte have the zone in front; tables do too, row by row.
TEST_F(CsvTest, SixAndSevenDigitsMeanTheSameOnEveryPlaneNet) {
  const auto places = [](std::initializer_list<QStringView> rights, QStringView high) {
    CsvTable table;
    table.CsvTyp = QStringLiteral("GAUSS");
    EXPECT_TRUE(Csv_Fits_Net(table, Coord));
    QList<QPoint> found;
    for (const QStringView right : rights) {
      const CsvPlace place = Csv_Place_Of(table, Coord, {{}, right, high});
      EXPECT_TRUE(place.onMap) << qPrintable(place.reason);
      found << place.at;
    }
    return found;
  };
  Coord.Grid = gridGaussKrueger;
  Coord.ZoneNumber = 4;
  Coord.GridH = 5511000;
  Coord.Inclin = 0;
  for (const int right : {432000, 4432000}) {
    Coord.GridR = right;
    const QPoint there(701 + 473, 1486);  // a kilometre east
    EXPECT_EQ(places({u"433000", u"4433000"}, u"5511000"), QList<QPoint>({there, there})) << right;
  }
  // The same numbers in a net of curves that counts in kilometres.
  ASSERT_EQ(Read_Cal(QStringLiteral(FLURAX_TEST_DATA "/kalibrierung/c_gms.cal"), {3000, 2200}, Coord), -1);
  Coord.NetPKG = true;
  Coord.PkgZone = QStringLiteral("4");
  Coord.PkgH = 5500000;
  double x = 0, y = 0;
  ASSERT_EQ(Grad_To_Pixel(Coord, 11.08, 49.76, x, y), onMap);
  const QPoint there(qRound(x), qRound(y));
  for (const double right : {400000.0, 4400000.0}) {
    Coord.PkgR = right;
    EXPECT_EQ(places({u"411080", u"4411080"}, u"5549760"), QList<QPoint>({there, there})) << right;
  }
}

TEST_F(CsvTest, ReadsDegreesInBothWays) {
  const std::pair<QStringView, double> cases[] = {
      {u"11,5", 11.5}, {u"- 11.25 °", -11.25}, {u"+ 49°45'30,00\u00A8", 49.7583333}, {u"49° 45' 30\"", 49.7583333}};
  for (const auto& [text, degrees] : cases)
    EXPECT_NEAR(Read_Degrees(text).value_or(0), degrees, 1e-7) << text.toString();
  for (const QStringView bad : {u"", u"11x", u"°", u"a°30'", u"11°3o'", u"nan"})
    EXPECT_FALSE(Read_Degrees(bad)) << bad.toString();
}

// Measured points of the sample map, in both ways of writing degrees; one lies west of the map.
TEST_F(CsvTest, GeographicTablesComeToTheirPlaces) {
  ASSERT_EQ(Read_Cal(QStringLiteral(FLURAX_TEST_DATA "/kalibrierung/c_gms.cal"), {3000, 2200}, Coord), -1);
  MessageScript script(QStringLiteral("liegt zu weit links im Westen"), MsgAnswer::Yes);
  const CsvResult result = Import(
      "#Eintrag;#X;#Y;#GEO\r\nMitte;11,05;49.75\r\nEcke;+011\xB0"
      "01'00,00\xA8;+ 49\xB0"
      "46'00,00\xA8\r\n"
      "Fern;10.5;49.75\r\n");
  EXPECT_EQ(std::tuple(result.imported, result.refused.size()), std::tuple(2, 1U));
  const auto rows = Rows_Of(*dbEntries);
  EXPECT_LE((QPoint(rows[1].Xmap, rows[1].Ymap) - QPoint(1500, 1100)).manhattanLength(), 1);
  EXPECT_LE((QPoint(rows[2].Xmap, rows[2].Ymap) - QPoint(373, 215)).manhattanLength(), 1);
}

TEST_F(CsvTest, MakesTheRowsAsToldAndTakesThemBackAtOnce) {
  Add(Text(QStringLiteral("alt")));
  const CsvResult result = Csv_Import(Analyse(sampleFolder + QStringLiteral("utm_umlaute_cp1252.csv")), {1, 1});
  EXPECT_EQ(result.imported, 10);
  rsEntries->MoveLast();
  const CsvPlace place = Csv_Place_Of({{}, {}, 0, 0, QStringLiteral("UTM"), {}, 0}, Coord, {{}, u"648923", u"5513832"});
  const int x = place.at.x(), y = place.at.y();
  EXPECT_EQ(Read_Entry(*rsEntries), (EntryRow{"Text", "Fähnchen-Moos", "Arial", 12, 15, 0, 0, x, y, x, y, 1}));
  EXPECT_EQ(Menu(QStringLiteral("mnuReset")).Caption, QStringLiteral("Rückgängig: CSV - Import"));
  MessageScript messages(MsgAnswer::Ok);
  Undo_Last();
  EXPECT_EQ(Texts(), QStringList(QStringLiteral("alt")));
}

TEST_F(CsvTest, PushesEqualCoordinatesApartAndKeepsThemOnTheMap) {
  const CsvResult result = Csv_Import(Analyse(sampleFolder + QStringLiteral("utm_versatz.csv")), {0, 0});
  const QPoint first(1500, 1100), corner(2999, 2199);  // as the conversion gives them
  QStringList wanted;
  const auto at = [](const char* text, QPoint place, int steps) {
    return QStringLiteral("%1 %2,%3").arg(QString::fromUtf8(text)).arg(place.x() + steps).arg(place.y() + steps);
  };
  for (int i = 0; i < 5; ++i) wanted << at(qPrintable(QStringLiteral("Fund %1").arg(i + 1)), first, i);
  wanted << at("Nachbar auf Versatzplatz", first, 5) << at("Ecke 1", corner, 0) << at("Ecke 2", corner, 1)
         << at("Ecke 3", corner, -1) << at("Ecke 4", corner, -2);
  EXPECT_EQ(Rows(), wanted);
  EXPECT_EQ(result.shifted, 8);
  TakenPositions taken({2, -1}, {10, 10});
  const std::pair<QPoint, QPoint> takes[] = {{{5, 1}, {5, 1}},
                                             {{5, 1}, {7, 0}},
                                             {{3, 2}, {3, 2}},
                                             {{5, 1}, {1, 3}},   // past those that are taken, the other way
                                             {{5, 1}, {5, 1}}};  // no room on either side: on the place of the first
  for (const auto& [wish, place] : takes) EXPECT_EQ(taken.Take(wish), place);
}

TEST_F(CsvTest, RefusedLinesAreToldAsLongAsTheUserWants) {
  MessageScript messages{
      {QStringLiteral("Falsche Zone: 33 außerhalb der Karte oder Zone!\n Soll diese Meldung"), MsgAnswer::Yes},
      {QStringLiteral("Eintrag: falsche Zone 31 1\n kann nicht importiert werden. \nFalsche Zone: 31"), MsgAnswer::No}};
  const CsvTable zones = Analyse(sampleFolder + QStringLiteral("utm_zonen.csv"));
  CsvResult result = Csv_Import(zones, {1, 1});
  EXPECT_EQ(result.imported, 10);
  ASSERT_EQ(result.refused.size(), 3U);
  EXPECT_EQ(Texts()[1], QStringLiteral("Weißstorch 2 Ex."));
  EXPECT_TRUE(Csv_Report(zones, result).contains(QStringLiteral("Zeile 14: Zone einstellig 4 1: Falsche Zone: 4")))
      << Csv_Report(zones, result).join(u'|');
  messages.Expect(QStringLiteral("liegt zu weit links"), MsgAnswer::Cancel);
  result = Import(head + "eins;646000;5512000\r\nzwei;640000;5512000\r\ndrei;646100;5512000\r\n");
  EXPECT_TRUE(result.stopped);
  EXPECT_EQ(Texts().size(), 11) << "what was made so far stays";
}

TEST_F(CsvTest, KindsThatDoNotFitAreAsked) {
  const CsvTable degrees = Analyse(Csv("#Eintrag;#X;#Y;#GEO\r\na;11,05;49,75\r\n"));
  MessageScript messages;
  const QString question = QStringLiteral("Koordinatentyp der Datei und der Karte stimmen nicht überein.");
  messages.Expect(question, MsgAnswer::No);
  EXPECT_TRUE(Csv_Import(degrees, {1, 1}).stopped);
  messages.Expect(question, MsgAnswer::Yes).Expect(QStringLiteral("unten im Süden"), MsgAnswer::Yes);
  EXPECT_EQ(Csv_Import(degrees, {1, 1}).refused.size(), 1U);
  EXPECT_FALSE(Menu(QStringLiteral("mnuReset")).Enabled) << "nothing to take back";
  // Or they are transformed: 11.0251 E 49.7426 N is 645 901 / 5 511 981, by cs2cs.
  const CsvTable near = Analyse(Csv("#Eintrag;#X;#Y;#GEO\r\na;11,0251;49,7426\r\nfern;12;49,7426\r\n"));
  messages.Expect(QStringLiteral("(WGS-84 -> UTM 32 WGS-84)"), MsgAnswer::Other)
      .Expect(QStringLiteral("fern Länge 12 liegt zu weit rechts im Osten"), MsgAnswer::No);
  EXPECT_EQ(Csv_Import(near, {1, 1}).imported, 1);
  const QPoint at = Csv_Place_Of(Analyse(Csv(head + "a;645901;5511981")), Coord, {{}, u"645901", u"5511981"}).at;
  EXPECT_EQ(Rows(), QStringList(u"a %1,%2"_s.arg(at.x()).arg(at.y())));
}

// Between characters: half of one would be a text that no other program reads.
TEST_F(CsvTest, LongTextsAreCutWithTheWholeInTheReport) {
  const QString bird = QStringLiteral("🐦"), before = QString(78, u'x'), longText = before + bird + bird + u"Wald"_s;
  const CsvResult result =
      Import(head + longText.toUtf8() + ";646000;5512000\r\n" + bird.repeated(79).toUtf8() + ";646000;5512000\r\n");
  EXPECT_EQ(Texts(), QStringList({before + bird, bird.repeated(79)}));
  EXPECT_EQ(result.shortened, 1) << "79 characters fit, however they are stored";
  const QString report = Write_Csv_Report({}, result);
  EXPECT_NE(Write_Csv_Report({}, result), report) << "an earlier list stays";
  EXPECT_TRUE(Read_Lines(report).join(u'\n').contains(u"Wald"));
}

TEST_F(CsvTest, StoppedInTheMiddleTheRowsSoFarStay) {
  const QByteArray lines = head + "a;646000;5512000\nb;646000;5512000\nc;646000;5512000\n";
  for (const auto& [unit, rows] : {std::pair{2, 2}, {5, 4}}) {
    const StopWorkAt stop(unit);
    EXPECT_TRUE(Import(lines).stopped);
    EXPECT_EQ(Texts().size(), rows) << "stopped at unit " << unit;
  }
}

TEST_F(CsvTest, AFaultOfTheTableTakesAllBack) {
  const CsvTable table = Analyse(Csv(head + "a;646000;5512000\nb;646000;5512000\n"));
  Refuse_Rows(*dbEntries, QStringLiteral("Eintrag = 'b'"));
  MessageScript messages(QStringLiteral("Es wurde nichts verändert."));
  const CsvResult result = Csv_Import(table, {1, 1});
  EXPECT_EQ(std::tuple(result.failed, result.imported, Texts().size()), std::tuple(true, 0, 0));
}

// Texts that a spreadsheet program would compute leave guarded and come back as they were; numbers stay numbers.
TEST_F(CsvTest, NoTextLeavesAsAFormula) {
  const QStringList texts = {
      "=SUMME(A1:A9)", "+49 Brutpaare",           "-Nord", "@Feld", "'=x", "''-y", "'n Nest", "-3,5", "+12",
      "Amsel=1",       "=HYPERLINK(\"http://x\")"};
  const QStringList guarded = {
      "'=SUMME(A1:A9)", "'+49 Brutpaare",           "'-Nord", "'@Feld", "''=x", "'''-y", "'n Nest", "-3,5", "+12",
      "Amsel=1",        "'=HYPERLINK(\"http://x\")"};
  for (const QString& text : texts) Add(Text(text, 700, 1400));
  QStringList lines = Csv_Export_Lines("KARTE.MDB"), cells;
  while (!lines.isEmpty() && !lines.first().startsWith("1 ;")) lines.removeFirst();
  lines.removeLast();
  for (const QString& line : lines) {
    cells << line.section(" ; ", 1, 1);
    EXPECT_EQ(line.section(" ; ", 2, 3), "700 ; 1400");
  }
  EXPECT_EQ(cells, guarded);
  lines.prepend("Nr;#Eintrag;x;y;#X;#Y;#UTM");
  EXPECT_EQ(Import(lines.join("\r\n").toUtf8()).imported, texts.size());
  EXPECT_EQ(Texts(), texts + texts);
  // Coordinates are read as they stand.
  MessageScript script;
  script.Expect("\"'-701\" ist keine lesbare Koordinate", MsgAnswer::Yes);
  EXPECT_EQ(Import(head + "'-Rain;'-701;5514415;\r\n-Rain;645460;5514415;\r\n").imported, 1);
  EXPECT_EQ(Texts().back(), "-Rain");
}
