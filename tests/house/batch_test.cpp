#include "support/pixels.h"
#include "workbook/workbook.h"

namespace {

struct Outcome {
  int status = -1;
  QString out, err;
};

// A folder whose files stay as they are while it lives.
class Untouched {
 public:
  explicit Untouched(const QString& path) : folder(path), before(Files()) {}
  ~Untouched() { EXPECT_TRUE(Files() == before) << folder; }

 private:
  std::map<QString, QByteArray> Files() const {
    std::map<QString, QByteArray> files;
    QDirIterator walk(folder, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (walk.hasNext()) {
      const QString path = walk.next();
      files[path] = Read_Bytes(path);
    }
    return files;
  }
  QString folder;
  std::map<QString, QByteArray> before;
};

class BatchTest : public FluraxTest {
 protected:
  void SetUp() override {
    FluraxTest::SetUp();
    ASSERT_TRUE(QDir().mkpath(home));
    Make_Map(u"Größe 2.5 ä/Karte.bmp"_s);
    qputenv("FLURAX_HOME", ProgramFolder.toLocal8Bit());
  }
  void TearDown() override {
    qunsetenv("FLURAX_HOME");
    FluraxTest::TearDown();
  }
  // "~/x" lies in the folder of the map, "./x" in that of the test.
  QString Full(QString word) const {
    if (word.startsWith(u"~/")) return home + word.mid(1);
    return word.startsWith(u"./") ? Path(word.mid(2)) : word;
  }
  Outcome Batch(const QString& line, const QStringList& more = {}) const {
    QStringList words = line.split(u' ', Qt::SkipEmptyParts) + more;
    for (QString& word : words) word = Full(word);
    QProcess program;
    program.start(QStringLiteral(FLURAX_BINARY_DIR "/flurax-batch"), words);
    if (!program.waitForFinished(60000) || program.exitStatus() != QProcess::NormalExit) {
      ADD_FAILURE() << line << " did not end";
      return {};
    }
    return {program.exitCode(), QString::fromUtf8(program.readAllStandardOutput()),
            QString::fromUtf8(program.readAllStandardError())};
  }
  // What it writes; it must succeed.
  QString Done(const QString& line, const QStringList& more = {}) const {
    const Outcome outcome = Batch(line, more);
    EXPECT_EQ(outcome.status, 0) << line << ": " << outcome.err;
    return outcome.out;
  }
  // The fault it tells of.
  QString Fault(const QString& line, const QStringList& more = {}) const {
    const Outcome outcome = Batch(line, more);
    EXPECT_EQ(outcome.status, 1) << line;
    return outcome.err;
  }
  std::unique_ptr<Database> New_Table_File(const std::vector<EntryRow>& rows = {}) const {
    auto database = Make_Table_File(Full(u"~/KARTE.MDB"_s), u"Karte.bmp"_s);
    for (const EntryRow& row : rows) Append_Row(*database, row);
    return database;
  }
  std::unique_ptr<Database> Table() const { return Workspace::OpenDatabase(Full(u"~/KARTE.MDB"_s)); }
  std::vector<EntryRow> Rows() const { return Rows_Of(*Table()); }
  // Of 1 m a pixel where `width` is 100; the reference point lies at (100, 200).
  void Put_Net(const QString& grid = u"UTM Zone: 32U D: WGS-84 R: 654000 H: 5511000"_s, int width = 100) const {
    Write_Lines(Full(u"~/Karte.cal"_s),
                {u"ID = Kalibrix"_s, u"Grid "_s + grid, u"Gwidth = %1"_s.arg(width), u"Inclin = 0.0000001"_s,
                 u"Xmap = 100"_s, u"Ymap = 200"_s, u"Xline = 100"_s, u"Yline = 100"_s});
  }
  QStringList Lines(const QString& name) const { return Read_Lines(Full(name)); }
  QImage Drawn() const { return Load_Picture(Path(u"aus.png"_s)); }

  QString home = Path(u"Größe 2.5 ä"_s);
  const EntryRow redBox{"Figur1", "Rechteck", "F 1", 0, 0, 12, -100, 100, 80, 60, 40, 20};
};

EntryRow Row_Of(const QString& id, const QString& text, int typ, QPoint at) {
  return {id, text, {}, 0, 0, 0, 0, at.x(), at.y(), 110, 190, typ};
}

}  // namespace

TEST_F(BatchTest, DrawsTheDemoMapAndLeavesItsFolderAlone) {
  home = Path(u"Demo"_s);
  ASSERT_TRUE(QDir().mkpath(home));
  for (const QString& name : {u"Karte.bmp"_s, u"Karte.cal"_s, u"KARTE.MDB"_s, u"Eisvogel.bmp"_s})
    ASSERT_TRUE(QFile::copy(QStringLiteral(FLURAX_BINARY_DIR "/data/Beispiele/") + name, home + u'/' + name));
  {
    const Untouched maps(home);
    EXPECT_EQ(Batch(u"bild ~/Karte.bmp ./aus.png"_s).err, QString());
  }
  // The sky of the picture entries: their file was found beside the map.
  int pictures = 0;
  for (const EntryRow& row : Rows()) {
    if (EntryType::Parse(row.Typ).Kind() != EntryKind::Picture) continue;
    ++pictures;
    EXPECT_EQ(Drawn().pixelColor(row.Xmap + 8, row.Ymap + 8), QColor(226, 240, 246));
  }
  EXPECT_GT(pictures, 0);
}

TEST_F(BatchTest, DrawsEntriesAtTheirPlaceInEveryFactorAndInTheColoursOfTheUser) {
  Done(u"bild ~/Karte.bmp ./aus.png"_s);
  EXPECT_FALSE(File_Exists(Full(u"~/KARTE.MDB"_s))) << "a map without table stays without one";
  EXPECT_EQ(Extent_Of(Drawn(), Is_Ink), QRect());
  New_Table_File({redBox});
  const std::tuple<QString, QSize, QPoint, QPoint> cases[] = {{u"1"_s, {400, 300}, {130, 100}, {90, 100}},
                                                              {u"0,5"_s, {200, 150}, {65, 50}, {40, 50}},
                                                              {u"2"_s, {800, 600}, {300, 230}, {150, 230}}};
  for (const auto& [factor, size, inside, outside] : cases) {
    Done(u"bild ~/Karte.bmp ./aus.png --zoom "_s + factor);
    ASSERT_EQ(Drawn().size(), size);
    EXPECT_EQ(std::pair(Drawn().pixel(inside), Drawn().pixel(outside)), std::pair(red, white)) << factor;
  }
  QStringList colours(16, u"0"_s);
  colours[redBox.HG] = QString::number(20 + 256 * 130 + 65536 * 240);
  Write_Lines(ProgramFolder + u"/MAP-Farb"_s, colours);
  const Untouched program(ProgramFolder);
  Done(u"bild ~/Karte.bmp ./aus.png"_s);
  EXPECT_EQ(Drawn().pixel(130, 100), qRgb(20, 130, 240));
}

// Another program works on the table: its newest rows wait in the log beside the file.
TEST_F(BatchTest, TableInUseIsDrawnAsItStands) {
  New_Table_File()->Close();
  const auto open = Table();
  Append_Row(*open, redBox);
  Done(u"bild ~/Karte.bmp ./aus.png"_s);
  EXPECT_EQ(Drawn().pixel(130, 100), red);
  Append_Row(*open, redBox);  // and goes on undisturbed
  EXPECT_EQ(open->RowCount(u"MapData"_s), 3);
}

// A picture without the entries would be worse than none.
TEST_F(BatchTest, DamagedTableIsToldAndStaysAsItIs) {
  for (const QByteArray& content : {QByteArray("keine Tabelle"), QByteArray()}) {
    Replace_File(Full(u"~/KARTE.MDB"_s), content);
    const Untouched maps(home);
    EXPECT_TRUE(Fault(u"bild ~/Karte.bmp ./aus.png"_s).contains(u"KARTE.MDB"_s));
    EXPECT_FALSE(QFile::exists(Path(u"aus.png"_s)));
  }
  ASSERT_TRUE(QFile::resize(Full(u"~/KARTE.MDB"_s), qint64{100} << 30));
  EXPECT_TRUE(Fault(u"bild ~/Karte.bmp ./aus.png"_s).contains(u"zu groß"_s));
  Kill(Full(u"~/KARTE.MDB"_s));
  QDir().mkdir(Full(u"~/KARTE.MDB"_s));
  EXPECT_TRUE(Fault(u"bild ~/Karte.bmp ./aus.png"_s).contains(u"sondern ein Ordner"_s));
}

TEST_F(BatchTest, FaultsHaveAStatusAndGermanWords) {
  Replace_File(Full(u"~/Text.bmp"_s), "kein Bild");
  const std::tuple<const char*, int, const char*> cases[] = {
      {"", 2, "Befehl"},
      {"male ~/Karte.bmp ./aus.png", 2, "Unbekannter Befehl"},
      {"bild ~/Karte.bmp", 2, "genau eine Karte"},
      {"bild ~/Karte.bmp ./aus.png --zoom", 2, "fehlt der Faktor"},
      {"bild ~/Karte.bmp ./aus.png --zoom groß", 2, "zwischen 0,05 und 8"},
      {"bild ~/Karte.bmp ./aus.png --zoom 0", 2, "zwischen 0,05 und 8"},
      {"bild ~/Karte.bmp ./aus.png --farbe", 2, "Unbekannte Angabe"},
      {"bild ~/Karte.bmp ~/aus.doc", 2, ".png"},
      {"bild ~/Karte.bmp ~/../Größe\t2.5\tä/Karte.bmp", 2, "nicht überschrieben"},
      {"druck ~/Karte.bmp ./aus.png", 2, ".pdf"},
      {"druck ~/Karte.bmp ./aus.pdf --faktor -1", 2, "zwischen 0,05 und 20"},
      {"druck ~/Karte.bmp ./aus.pdf --faktor 100", 2, "zwischen 0,05 und 20"},
      {"druck ~/Karte.bmp ./aus.pdf --format B5", 2, "A4 oder A3"},
      {"druck ~/Karte.bmp ./aus.pdf --seiten 3-2", 2, "VON-BIS"},
      {"druck ~/Karte.bmp ./aus.pdf --zoom 1", 2, "Unbekannte Angabe"},
      {"druck ~/Karte.bmp ./aus.pdf --seiten 9", 1, "braucht 1"},
      {"druck ~/Karte.bmp ~/gibt/es/nicht/aus.pdf", 1, "aus.pdf"},
      {"csv ~/Karte.bmp ./aus.png", 2, "genau eine Karte"},
      {"statistik ~/Karte.bmp ./aus.png", 2, ".xls"},
      {"statistik ~/Karte.bmp ./aus.xls --matrix ./aus.xls", 2, ".csv"},
      {"statistik ~/Karte.bmp ./aus.xls --nachbarn 2,5", 2, "ganze Zahl"},
      {"statistik ~/Karte.bmp ./aus.xls --nachbarn 0", 2, "ganze Zahl"},
      {"statistik ~/Karte.bmp ~/gibt/es/nicht/aus.xls", 1, "aus.xls"},
      {"tkr ~/Karte.bmp ./aus.png", 2, ".tkr"},
      {"tkr-ein ~/Karte.bmp", 2, "genau eine Karte und eine Datei"},
      {"tabelle-aus ~/Karte.bmp ./aus.png", 2, ".xls"},
      {"tabelle-ein ~/Karte.bmp ./aus.xls --spalten", 2, "fehlen die Spalten"},
      {"tabelle-ein ~/Karte.bmp ./aus.xls --nur-zeigen", 1, "nicht gefunden"},
      {"tabelle-ein ~/Karte.bmp ~/Karte.bmp --nur-zeigen", 1, "keine Arbeitsmappe"},
      {"tabelle-ein ~/Karte.bmp ~/ein.xls", 1, "gibt es keine Tabelle"},
      {"tabelle ~/Karte.bmp", 2, "genau eine Karte und eine Tabelle"},
      {"tabelle ~/Karte.bmp ./aus.xls --filter Eintrag", 2, "Spalte= Wert"},
      {"gps ~/Karte.bmp", 2, "genau eine Karte und eine Datei"},
      {"flaeche ~/Karte.bmp 10", 2, "eine Stelle"},
      {"flaeche ~/Karte.bmp 10 oben", 2, "ganze Zahlen"},
      {"flaeche ~/Karte.bmp 10 10 --toleranz 101", 2, "zwischen 0 und 100"},
      {"flaeche ~/Karte.bmp 10 10", 1, "Fensterrand"},
      {"flaeche ~/Karte.bmp 10 -10 --fuellen", 1, "neben die Karte"},
      {"kalibriere ~/Karte.bmp", 1, "weder eine Weltdatei noch"},
      {"kalibriere ~/Karte.bmp --zone 61", 2, "von 1 bis 60"},
      {"tkr ~/Karte.bmp ~/aus.tkr", 1, "leer"},
      {"bild ~/fehlt.bmp ./aus.png", 1, "fehlt.bmp"},
      {"bild ~/Text.bmp ./aus.png", 1, "Text.bmp"},
      {"bild ~/. ./aus.png", 1, "sondern ein Ordner"},
      {"bild ~/Karte.bmp ~/gibt/es/nicht/aus.png", 1, "Fehler"},
  };
  const Untouched maps(home);
  const QStringList before = Names();
  for (const auto& [line, status, told] : cases) {
    QStringList words = QString::fromUtf8(line).split(u' ');
    const Outcome outcome = Batch({}, words.replaceInStrings(u"\t"_s, u" "_s));
    EXPECT_EQ(outcome.status, status) << line;
    EXPECT_TRUE(outcome.err.contains(told)) << line << ": " << outcome.err;
    EXPECT_EQ(outcome.out, QString());
    EXPECT_FALSE(outcome.err.contains(u"flurax-batch-"_s)) << "names a temporary folder: " << outcome.err;
  }
  EXPECT_EQ(Names(), before);
  const QString help = Done(u"--hilfe"_s);
  EXPECT_TRUE(help.contains(u"bild KARTE.bmp AUS.png"_s) && help.contains(u"druck KARTE.bmp AUS.pdf"_s));
}

// The table keeps factor 3 and landscape: 400 x 300 pixels are 317 x 238 mm then.
TEST_F(BatchTest, PrintsAsManySheetsAsTheMapNeeds) {
  {
    const auto database = New_Table_File({redBox});
    const auto rows = database->OpenRecordset(u"MapData"_s);
    Set_Field(*rows, u"Xline", qint64{2});
    Set_Field(*rows, u"Yline", qint64{3000});
  }
  const Untouched maps(home);
  const std::tuple<QString, QString, QString> cases[] = {{QString(), u"Pages: 4"_s, QString()},
                                                         {u"--format A4 hoch --faktor 1,5"_s, u"Pages: 1"_s, u"(A4)"_s},
                                                         {u"--format A3 --seiten 1"_s, u"Pages: 1"_s, u"(A3)"_s},
                                                         {u"--seiten 2-3"_s, u"Pages: 2"_s, QString()}};
  for (const auto& [words, pages, paper] : cases) {
    Done(u"druck ~/Karte.bmp ./aus.pdf "_s + words);
    const QString info = Run_Tool(u"pdfinfo"_s, {Path(u"aus.pdf"_s)}).simplified();
    EXPECT_TRUE(info.contains(pages) && info.contains(paper)) << words << ": " << info;
  }
}

TEST_F(BatchTest, ListsEntriesWithTheirCoordinates) {
  const QString text = u"Höckerschrecke; 2 Ex.\r\nWiese"_s;
  New_Table_File({redBox, Row_Of(u"Text"_s, text, 1, {10, 10}), Row_Of(u"Flaeche0"_s, text, 4, {10, 10})});
  // A folder that stands where the file shall come.
  ASSERT_TRUE(QDir().mkpath(Full(u"~/KARTE.csv/x"_s)));
  EXPECT_TRUE(Fault(u"csv ~/Karte.bmp"_s).contains(u"KARTE.csv"));
  ASSERT_TRUE(QDir(Full(u"~/KARTE.csv"_s)).removeRecursively());
  Done(u"csv ~/Karte.bmp"_s);
  EXPECT_EQ(
      Lines(u"~/KARTE.csv"_s).mid(2).join(u'|'),
      u"Geografische Koordinaten, Kartendatum: ||Nr ; Eintrag ; x ; y ; Länge ; Breite|;  ; Pixel ; Pixel ; Grad ; Grad"
      "|1 ; Rechteck ; 100 ; 80 ; Koordinaten nicht gefunden"
      "|2 ; Höckerschrecke, 2 Ex. Wiese ; 110 ; 190 ; Koordinaten nicht gefunden|Ende"_s);
  Put_Net();
  Done(u"csv ~/Karte.bmp"_s);
  EXPECT_EQ(Lines(u"~/KARTE.csv"_s).join(u'|'),
            u"Export der Datei: KARTE.MDB in eine CSV-Datei.||UTM, Zone:32U,  Kartendatum: WGS-84 |"
            "|Nr ; Eintrag ; x ; y ; Rechtswert ; Hochwert|1 ; Rechteck ; 100 ; 80 ; 654000 ; 5511120"
            "|2 ; Höckerschrecke, 2 Ex. Wiese ; 110 ; 190 ; 654010 ; 5511010|Ende"_s);
}

// Waypoints and a track in degrees onto a map with a net in metres.
TEST_F(BatchTest, TakesGpsFilesOntoTheMap) {
  New_Table_File()->Close();
  // 654 000 / 5 511 000 and 654 050 / 5 511 050 in degrees, by cs2cs.
  Write_Lines(Path(u"Gang.gpx"_s), {u"<gpx><wpt lat='49.7317680' lon='11.1370401'><name>Igel</name></wpt>"_s,
                                    u"<wpt lat='49.8' lon='11'><name>fern</name></wpt><wpt lat='95' lon='11'/>"_s,
                                    u"<trk><name>Weg</name><trkseg><trkpt lat='49.7317680' lon='11.1370401'/>"_s,
                                    u"<trkpt lat='49.7322046' lon='11.1377532'/></trkseg></trk></gpx>"_s});
  const QString line = u"gps ~/Karte.bmp ./Gang.gpx"_s;
  EXPECT_TRUE(Batch(line).err.contains(u"Die Karte hat kein Koordinatennetz"));
  EXPECT_TRUE(Fault(u"gps ~/Karte.bmp ~/fehlt.gpx"_s).contains(u"Datei nicht gefunden"));
  Put_Net();
  EXPECT_EQ(Done(line).split(u'\n').mid(0, 7).join(u'|'),
            u"umgerechnet: WGS-84 -> UTM 32 WGS-84|Wegpunkte gelesen: 2|Wegpunkte importiert: 1|außerhalb der Karte: 1|"
            "schon vorhanden: 0|abgelehnt: 0|Trackpunkte gelesen: 2"_s);
  EXPECT_EQ(Lines(u"~/Karte_Import.txt"_s).value(1), u"Zeile 2: fern: zu weit oben im Norden"_s);
  const std::vector<EntryRow> rows = Rows();
  ASSERT_EQ(rows.size(), 3U);
  EXPECT_EQ(std::tuple(rows[1].Xmap, rows[1].Ymap, rows[2].ID), std::tuple(100, 200, u"Linie0"_s));
  EXPECT_TRUE(Done(line).contains(u"schon vorhanden: 2"_s)) << "both points of the track";
  Done(line + u" --auch-vorhandene"_s);
  EXPECT_EQ(Rows().size(), 5U);
}

// Only what is to change the table does.
TEST_F(BatchTest, FindsAreasAndCarriesEntriesToAnotherMap) {
  New_Table_File()->Close();
  const QString map = Full(u"~/Karte.bmp"_s), file = Path(u"aus.tkr"_s), find = u"flaeche ~/Karte.bmp 120 90"_s;
  QImage picture(map);
  for (int y = 50; y < 130; ++y)
    for (int x = 60; x < 180; ++x) picture.setPixelColor(x, y, QColor(120, 180, 90));
  ASSERT_TRUE(picture.save(map));
  {
    const Untouched maps(home);
    EXPECT_THAT(Done(find + u" --fuellen"_s).split(u'\n', Qt::SkipEmptyParts),
                testing::UnorderedElementsAre(u"60 50"_s, u"180 50"_s, u"180 130"_s, u"60 130"_s));
    EXPECT_GT(Done(find).count(u'\n'), 3);
  }
  Done(find + u" --fuellen --uebernehmen"_s);
  Make_Map(u"Andere.bmp"_s);
  Done(u"tkr ~/Karte.bmp ./aus.tkr"_s);
  EXPECT_EQ(Read_Lines(file).first(),
            u"Map = %1,  Overlay = %2,  Import = %3"_s.arg(map, file, QFileInfo(map).path() + u"/KARTE.MDB"_s));
  EXPECT_TRUE(Read_Lines(file).join(u'\n').contains(u"60,50/"));
  EXPECT_EQ(Done(u"tkr-ein ./Andere.bmp ./aus.tkr --alles"_s), u"1\n"_s);
  const auto database = Workspace::OpenDatabase(Path(u"ANDERE.MDB"_s));
  EXPECT_EQ(Rows_Of(*database).back().ID, u"Flaeche0"_s);
  EXPECT_EQ(database->RowCount(u"Flaeche0"_s), 4);
  EXPECT_TRUE(Find_Files(home, u"*.map"_s).isEmpty() && Find_Files(home, u"*.ldb"_s).isEmpty());
}

TEST_F(BatchTest, CarriesTheTableToASheetAndBack) {
  New_Table_File({redBox});
  const QString xls = Path(u"Tabelle 1.xls"_s), in = u"tabelle-ein ~/Karte.bmp"_s;
  const QStringList fromNew{xls, u"--blatt"_s, u"Neu"_s, u"--spalten"_s, u"VG,Xmap=Ost"_s};
  {
    const Untouched maps(home);
    Done(u"tabelle-aus ~/Karte.bmp"_s, {xls});
    EXPECT_EQ(Done(in, {xls, u"--nur-zeigen"_s}), u"Keine Änderung.\n"_s);
    Workbook book(xls);
    Sheet sheet = book.Read(u"MapData"_s);
    sheet.name = u"Neu"_s;
    sheet.Put(1, 9, u"Ost"_s);
    sheet.Put(2, 9, 150.0);
    sheet.Put(2, 6, 99.0);
    book.Put(sheet);
    book.Save();
    const QStringList show = fromNew.mid(0, 3) + QStringList{u"--nur-zeigen"_s};
    EXPECT_TRUE(Batch(in, show + QStringList{u"--spalten"_s, u"Xmap"_s}).err.contains(u"fehlt die Spalte \"Xmap\""_s));
    EXPECT_EQ(Batch(in, show + QStringList{u"--schluessel"_s, u"Finder"_s}).status, 2);
    const Outcome outcome = Batch(in, fromNew + QStringList{u"--nur-zeigen"_s});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.out, u"Nr. 1, Zeile 2, Xmap: \"100\" -> \"150\"\n1 Änderung in 1 Zeile, 1 abgelehnt.\n"_s);
    EXPECT_EQ(outcome.err, u"Zeile 2, VG: \"99\": Die Farbe kann nur Werte zwischen 0-15 annehmen.\n"_s);
  }
  EXPECT_TRUE(Batch(in, fromNew).out.contains(u"Übernommen: 1 Werte in 1 Zeilen"_s));
  EntryRow moved = redBox;
  moved.Xmap = 150;
  EXPECT_EQ(Rows().back(), moved);
}

TEST_F(BatchTest, TakesObjectsOfAnOverlay) {
  Replace_File(Path(u"a.ovl"_s),
               "[Symbol 1]\nTyp=2\nText=hier\nXKoord=11.05\nYKoord=49.75\n[Symbol 2]\nTyp=2\nText=fern\n"
               "XKoord=12\nYKoord=49.75\n[Symbol 3]\nTyp=7\n");
  Fault(u"overlay ~/Karte.bmp ./a.ovl"_s);  // a map without a net
  Put_Net(u"GK Zone: 4 D: Potsdam R: 4431643 H: 5513031"_s, 1000);
  EXPECT_EQ(Done(u"overlay ~/Karte.bmp ./a.ovl"_s),
            u"1 Einträge wurden importiert\n1 Objekte liegen außerhalb der Karte.\n"
            "1 Bilder und Dreiecke wurden übergangen.\n"_s);
  EXPECT_TRUE(Lines(u"~/Karte_Import.txt"_s).contains(u"Zeile 6: fern: zu weit rechts im Osten"_s));
  EXPECT_EQ(QPoint(Rows().back().Xmap, Rows().back().Ymap), QPoint(100, 200)) << "converted from WGS-84";
  EXPECT_TRUE(Done(u"overlay ~/Karte.bmp ./a.ovl"_s).contains(u"1 Objekte waren schon vorhanden."_s));
  Fault(u"overlay ~/Karte.bmp ~/Karte.bmp"_s);
}

TEST_F(BatchTest, TakesEntriesOfAnotherTable) {
  New_Table_File()->Close();
  {
    const auto source = Make_Table_File(Path(u"Quelle.MDB"_s), u"Fremd.bmp"_s);
    for (const char* name : {"Biber 1", "Biber 2", "Igel"})
      Append_Row(*source, {"Text", QLatin1String(name), "Arial", 10, 4, 0, 0, 40, 50, 0, 0, 0});
    Append_Row(*source, {"Linie7", u"Biberbach"_s, "Arial", 10, 4, 0, 0, 40, 50, 1, 1, 4});
  }
  const QStringList filter{u"--filter"_s, u"Eintrag= Biber*"_s, u"--filter"_s, u"VG= 4"_s};
  const auto taken = [&](const QString& how) { return Done(u"tabelle ~/Karte.bmp ./Quelle.MDB "_s + how, filter); };
  const QString first = taken({});
  EXPECT_TRUE(first.contains(u"2 Einträge wurden importiert."_s) && first.contains(u"1 Einträge wurden abgelehnt"_s));
  EXPECT_TRUE(Lines(u"~/Karte_Import.txt"_s).join(u' ').contains(u"Zeile 4: Biberbach"_s));
  EXPECT_TRUE(taken({}).contains(u"2 Einträge waren schon vorhanden."_s));
  EXPECT_TRUE(taken(u"--ohne"_s).contains(u"1 Einträge wurden importiert."_s));
  EXPECT_TRUE(taken(u"--auch-vorhandene"_s).contains(u"2 Einträge wurden importiert."_s));
  EXPECT_EQ(Rows().size(), 6U);
  // A map with a net, and nothing known of the other's.
  Put_Net();
  EXPECT_TRUE(Fault(u"tabelle ~/Karte.bmp ./Quelle.MDB"_s, filter).contains(u"--pixel"_s));
  taken(u"--pixel"_s);
  EXPECT_TRUE(Find_Files(home, u"Import*"_s).isEmpty());
}

TEST_F(BatchTest, WritesTheEvaluationsBesideTheUsersOwnSheets) {
  New_Table_File({Row_Of(u"Flaeche0"_s, u"Wiese"_s, 4, {10, 10}),
                  Row_Of(u"Text>Flaeche0"_s, u"3Höckerschrecke"_s, 0, {10, 10}),
                  Row_Of(u"Text>Flaeche0"_s, u"=Falter"_s, 0, {40, 50})});
  const QString xls = Path(u"Auswertung 1.xls"_s), line = u"statistik ~/Karte.bmp"_s;
  Workbook own(xls);
  Sheet notes(u"Notizen"_s);
  notes.Put(1, 1, u"bleibt"_s);
  own.Put(notes);
  own.Save();
  const Untouched maps(home);
  for (int time = 0; time < 2; ++time) Done(line, {xls, u"--nachbarn"_s, u"5"_s, u"--matrix"_s, u"./matrix.csv"_s});
  const Workbook book(xls);
  EXPECT_EQ(book.SheetNames(), QStringList({u"Notizen"_s, u"Flächen"_s, u"Zuordnung"_s, u"Kataster"_s, u"Matrix"_s}));
  EXPECT_EQ(book.Read(u"Notizen"_s).Text(1, 1), u"bleibt"_s);
  EXPECT_TRUE(Lines(u"./matrix.csv"_s).join(u'|').contains(u"Flaeche0;Wiese;4;2;"_s));
  EXPECT_EQ(Lines(u"./Distanz.erg"_s).value(0), u"Distanz zu den 1 naechstgelegenen Eintraegen."_s);  // of two entries
  // While the spreadsheet program has it open.
  Replace_File(Path(u".~lock.Auswertung 1.xls#"_s), ",Erna,rechner,14.05.2026 10:00,file:///x;");
  const QByteArray bytes = Read_Bytes(xls);
  EXPECT_TRUE(Fault(line, {xls}).contains(u"Erna"_s));
  EXPECT_EQ(Read_Bytes(xls), bytes);
}

TEST_F(BatchTest, CalibratesByAWorldFile) {
  // 2.5 m a pixel from R 650000, H 5512000 downward.
  Put(u"Größe 2.5 ä/Karte.bpw"_s, "2.5\n0\n0\n-2.5\n650000\n5512000\n");
  EXPECT_TRUE(Batch(u"kalibriere ~/Karte.bmp"_s).err.contains(u"Es fehlt das Datum"_s));
  EXPECT_FALSE(QFile::exists(Full(u"~/Karte.cal"_s)));
  EXPECT_EQ(Done(u"kalibriere ~/Karte.bmp --zone 32U --datum ETRS89"_s).trimmed(), Full(u"~/Karte.cal"_s));
  // The other commands know the coordinates now.
  New_Table_File({redBox});
  Done(u"csv ~/Karte.bmp"_s);
  EXPECT_TRUE(Lines(u"~/KARTE.csv"_s).join(u' ').contains(u"650"_s));
}
