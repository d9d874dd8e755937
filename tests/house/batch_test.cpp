#include "support/table_fixture.h"
#include "workbook/workbook.h"

namespace {

struct Outcome {
  int status = -1;
  QString out, err;
};

Outcome Batch(const QStringList& words) {
  QProcess program;
  program.start(QStringLiteral(FLURAX_BINARY_DIR "/flurax-batch"), words);
  if (!program.waitForFinished(60000) || program.exitStatus() != QProcess::NormalExit) {
    ADD_FAILURE() << "flurax-batch " << words.join(u' ') << " did not end";
    return {};
  }
  return {program.exitCode(), QString::fromUtf8(program.readAllStandardOutput()),
          QString::fromUtf8(program.readAllStandardError())};
}

// Names and contents of all files of a folder.
std::map<QString, QByteArray> Snapshot(const QString& folder) {
  std::map<QString, QByteArray> files;
  QDirIterator walk(folder, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
  while (walk.hasNext()) {
    const QString path = walk.next();
    files[path] = Read_Bytes(path);
  }
  return files;
}

int Differing_Pixels(const QImage& left, const QImage& right) {
  int count = 0;
  for (int y = 0; y < left.height(); ++y)
    for (int x = 0; x < left.width(); ++x) count += left.pixel(x, y) != right.pixel(x, y);
  return count;
}

class BatchTest : public FluraxTest {
 protected:
  void SetUp() override {
    FluraxTest::SetUp();
    home = Path(u"Größe 2.5 ä"_s);
    ASSERT_TRUE(QDir().mkpath(home));
    map = Make_Map(u"Größe 2.5 ä/Karte.bmp"_s);
    target = Path(u"aus.png"_s);
    qputenv("FLURAX_HOME", ProgramFolder.toLocal8Bit());
  }
  void TearDown() override {
    qunsetenv("FLURAX_HOME");
    FluraxTest::TearDown();
  }
  std::unique_ptr<Database> New_Table_File() const { return Make_Table_File(home + u"/KARTE.MDB"_s, u"Karte.bmp"_s); }
  QString home, map, target;
  const EntryRow redBox{"Figur1", "Rechteck", "F 1", 0, 0, 12, -100, 100, 80, 60, 40, 20};
};

}  // namespace

TEST_F(BatchTest, DrawsTheDemoMapAndLeavesItsFolderAlone) {
  home = Path(u"Demo"_s);
  ASSERT_TRUE(QDir().mkpath(home));
  map = home + u"/Karte.bmp"_s;
  for (const QString& name : {u"Karte.bmp"_s, u"Karte.cal"_s, u"KARTE.MDB"_s, u"Eisvogel.bmp"_s})
    ASSERT_TRUE(QFile::copy(QStringLiteral(FLURAX_BINARY_DIR "/data/Beispiele/") + name, home + u'/' + name));
  const auto before = Snapshot(home);
  const Outcome outcome = Batch({u"bild"_s, map, target});
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_EQ(outcome.err, QString());
  EXPECT_TRUE(Snapshot(home) == before);
  const QImage drawn = Load_Picture(target), bare = Load_Picture(map);
  ASSERT_EQ(drawn.size(), bare.size());
  // Some eighty entries cover a few percent of the map, not most of it.
  const int differing = Differing_Pixels(drawn, bare), all = bare.width() * bare.height();
  EXPECT_GT(differing, all / 100);
  EXPECT_LT(differing, all / 3);
  // The sky of the picture entry: its file was found beside the map.
  const auto rows = Rows_Of(*Workspace::OpenDatabase(home + u"/KARTE.MDB"_s));
  const auto picture = std::find_if(rows.begin(), rows.end(), [](const EntryRow& row) {
    return EntryType::Parse(row.Typ).Kind() == EntryKind::Picture;
  });
  ASSERT_NE(picture, rows.end());
  EXPECT_EQ(drawn.pixelColor(picture->Xmap + 8, picture->Ymap + 8), QColor(226, 240, 246));
}

TEST_F(BatchTest, DrawsEntriesAtTheirPlaceInEveryFactorAndInTheColoursOfTheUser) {
  Append_Row(*New_Table_File(), redBox);
  const std::tuple<QString, QSize, QPoint, QPoint> cases[] = {{u"1"_s, {400, 300}, {130, 100}, {90, 100}},
                                                              {u"0,5"_s, {200, 150}, {65, 50}, {40, 50}},
                                                              {u"2"_s, {800, 600}, {300, 230}, {150, 230}}};
  for (const auto& [factor, size, inside, outside] : cases) {
    SCOPED_TRACE(factor.toStdString());
    ASSERT_EQ(Batch({u"bild"_s, map, target, u"--zoom"_s, factor}).status, 0);
    const QImage drawn = Load_Picture(target);
    ASSERT_EQ(drawn.size(), size);
    EXPECT_EQ(drawn.pixel(inside), qRgb(255, 0, 0));
    EXPECT_EQ(drawn.pixel(outside), qRgb(255, 255, 255));
  }
  QStringList colours(16, u"0"_s);
  colours[redBox.HG] = QString::number(20 + 256 * 130 + 65536 * 240);
  Write_Lines(ProgramFolder + u"/MAP-Farb"_s, colours);
  const auto before = Snapshot(ProgramFolder);
  ASSERT_EQ(Batch({u"bild"_s, map, target}).status, 0);
  EXPECT_EQ(Load_Picture(target).pixel(130, 100), qRgb(20, 130, 240));
  EXPECT_TRUE(Snapshot(ProgramFolder) == before);
}

TEST_F(BatchTest, MapWithoutTableStaysWithoutOne) {
  const auto before = Snapshot(home);
  EXPECT_EQ(Batch({u"bild"_s, map, target}).status, 0);
  EXPECT_EQ(Differing_Pixels(Load_Picture(target), Load_Picture(map)), 0);
  EXPECT_TRUE(Snapshot(home) == before);
}

// Another program works on the table: its newest rows wait in the log beside the file.
TEST_F(BatchTest, TableInUseIsDrawnAsItStands) {
  New_Table_File()->Close();
  const auto open = Workspace::OpenDatabase(home + u"/KARTE.MDB"_s);
  Append_Row(*open, redBox);
  ASSERT_EQ(Batch({u"bild"_s, map, target}).status, 0);
  EXPECT_EQ(Load_Picture(target).pixel(130, 100), qRgb(255, 0, 0));
  Append_Row(*open, redBox);  // and goes on undisturbed
  EXPECT_EQ(open->RowCount(u"MapData"_s), 3);
}

// A picture without the entries would be worse than none.
TEST_F(BatchTest, DamagedTableIsToldAndStaysAsItIs) {
  for (const QByteArray& content : {QByteArray("keine Tabelle"), QByteArray()}) {
    Replace_File(home + u"/KARTE.MDB"_s, content);
    const auto before = Snapshot(home);
    const Outcome outcome = Batch({u"bild"_s, map, target});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_TRUE(outcome.err.contains(u"KARTE.MDB"_s)) << outcome.err;
    EXPECT_FALSE(QFile::exists(target));
    EXPECT_TRUE(Snapshot(home) == before);
  }
  ASSERT_TRUE(QFile::resize(home + u"/KARTE.MDB"_s, qint64{100} << 30));
  EXPECT_TRUE(Batch({u"bild"_s, map, target}).err.contains(u"zu groß"_s));
  Kill(home + u"/KARTE.MDB"_s);
  QDir(home).mkdir(u"KARTE.MDB"_s);
  EXPECT_TRUE(Batch({u"bild"_s, map, target}).err.contains(u"sondern ein Ordner"_s));
}

TEST_F(BatchTest, FaultsHaveAStatusAndGermanWords) {
  const QString noPicture = home + u"/Text.bmp"_s, pdf = Path(u"aus.pdf"_s), xls = Path(u"aus.xls"_s);
  Replace_File(noPicture, "kein Bild");
  const auto before = Snapshot(home);
  const std::tuple<QStringList, int, QString> cases[] = {
      {{}, 2, u"Befehl"_s},
      {{u"male"_s, map, target}, 2, u"Unbekannter Befehl"_s},
      {{u"bild"_s, map}, 2, u"genau eine Karte"_s},
      {{u"bild"_s, map, target, u"--zoom"_s}, 2, u"fehlt der Faktor"_s},
      {{u"bild"_s, map, target, u"--zoom"_s, u"groß"_s}, 2, u"zwischen 0,05 und 8"_s},
      {{u"bild"_s, map, target, u"--zoom"_s, u"0"_s}, 2, u"zwischen 0,05 und 8"_s},
      {{u"bild"_s, map, target, u"--farbe"_s}, 2, u"Unbekannte Angabe"_s},
      {{u"bild"_s, map, home + u"/aus.doc"_s}, 2, u".png"_s},
      {{u"bild"_s, map, home + u"/../"_s + QDir(home).dirName() + u"/Karte.bmp"_s}, 2, u"nicht überschrieben"_s},
      {{u"druck"_s, map, target}, 2, u".pdf"_s},
      {{u"druck"_s, map, pdf, u"--faktor"_s, u"-1"_s}, 2, u"zwischen 0,05 und 20"_s},
      {{u"druck"_s, map, pdf, u"--faktor"_s, u"100"_s}, 2, u"zwischen 0,05 und 20"_s},
      {{u"druck"_s, map, pdf, u"--format"_s, u"B5"_s}, 2, u"A4 oder A3"_s},
      {{u"druck"_s, map, pdf, u"--seiten"_s, u"3-2"_s}, 2, u"VON-BIS"_s},
      {{u"druck"_s, map, pdf, u"--zoom"_s, u"1"_s}, 2, u"Unbekannte Angabe"_s},
      {{u"druck"_s, map, pdf, u"--seiten"_s, u"9"_s}, 1, u"braucht 1"_s},
      {{u"druck"_s, map, home + u"/gibt/es/nicht/aus.pdf"_s}, 1, u"aus.pdf"_s},
      {{u"csv"_s, map, target}, 2, u"genau eine Karte"_s},
      {{u"statistik"_s, map, target}, 2, u".xls"_s},
      {{u"statistik"_s, map, xls, u"--matrix"_s, xls}, 2, u".csv"_s},
      {{u"statistik"_s, map, xls, u"--nachbarn"_s, u"2,5"_s}, 2, u"ganze Zahl"_s},
      {{u"statistik"_s, map, xls, u"--nachbarn"_s, u"0"_s}, 2, u"ganze Zahl"_s},
      {{u"statistik"_s, map, home + u"/gibt/es/nicht/aus.xls"_s}, 1, u"aus.xls"_s},
      {{u"tkr"_s, map, target}, 2, u".tkr"_s},
      {{u"tkr-ein"_s, map}, 2, u"genau eine Karte und eine Datei"_s},
      {{u"tabelle-aus"_s, map, target}, 2, u".xls"_s},
      {{u"tabelle-ein"_s, map, xls, u"--spalten"_s}, 2, u"fehlen die Spalten"_s},
      {{u"tabelle-ein"_s, map, xls, u"--nur-zeigen"_s}, 1, u"nicht gefunden"_s},
      {{u"tabelle-ein"_s, map, map, u"--nur-zeigen"_s}, 1, u"keine Arbeitsmappe"_s},
      {{u"tabelle"_s, map}, 2, u"genau eine Karte und eine Tabelle"_s},
      {{u"tabelle"_s, map, xls, u"--filter"_s, u"Eintrag"_s}, 2, u"Spalte= Wert"_s},
      {{u"gps"_s, map}, 2, u"genau eine Karte und eine Datei"_s},
      {{u"flaeche"_s, map, u"10"_s}, 2, u"eine Stelle"_s},
      {{u"flaeche"_s, map, u"10"_s, u"oben"_s}, 2, u"ganze Zahlen"_s},
      {{u"flaeche"_s, map, u"10"_s, u"10"_s, u"--toleranz"_s, u"101"_s}, 2, u"zwischen 0 und 100"_s},
      {{u"flaeche"_s, map, u"10"_s, u"10"_s}, 1, u"Fensterrand"_s},
      {{u"flaeche"_s, map, u"10"_s, u"-10"_s, u"--fuellen"_s}, 1, u"neben die Karte"_s},
      {{u"kalibriere"_s, map}, 1, u"weder eine Weltdatei noch"_s},
      {{u"kalibriere"_s, map, u"--zone"_s, u"61"_s}, 2, u"von 1 bis 60"_s},
      {{u"tabelle-ein"_s, map, home + u"/ein.xls"_s}, 1, u"gibt es keine Tabelle"_s},
      {{u"tkr"_s, map, home + u"/aus.tkr"_s}, 1, u"leer"_s},
      {{u"bild"_s, home + u"/fehlt.bmp"_s, target}, 1, u"fehlt.bmp"_s},
      {{u"bild"_s, noPicture, target}, 1, u"Text.bmp"_s},
      {{u"bild"_s, home, target}, 1, u"sondern ein Ordner"_s},
      {{u"bild"_s, map, home + u"/gibt/es/nicht/aus.png"_s}, 1, u"Fehler"_s},
  };
  for (const auto& [words, status, told] : cases) {
    const Outcome outcome = Batch(words);
    EXPECT_EQ(outcome.status, status) << words.join(u' ');
    EXPECT_TRUE(outcome.err.contains(told)) << outcome.err;
    EXPECT_EQ(outcome.out, QString());
    EXPECT_FALSE(outcome.err.contains(u"flurax-batch-"_s)) << "names a temporary folder: " << outcome.err;
  }
  EXPECT_TRUE(Snapshot(home) == before);
  EXPECT_FALSE(QFile::exists(target));
  EXPECT_FALSE(QFile::exists(pdf));
  EXPECT_FALSE(QFile::exists(xls));
  const Outcome help = Batch({u"--hilfe"_s});
  EXPECT_EQ(help.status, 0);
  EXPECT_TRUE(help.out.contains(u"bild KARTE.bmp AUS.png"_s));
  EXPECT_TRUE(help.out.contains(u"druck KARTE.bmp AUS.pdf"_s));
}

// The table keeps factor 3 and landscape: 400 x 300 pixels are 317 x 238 mm then.
TEST_F(BatchTest, PrintsAsManySheetsAsTheMapNeeds) {
  {
    const auto database = New_Table_File();
    Append_Row(*database, redBox);
    const auto rows = database->OpenRecordset(u"MapData"_s);
    rows->Edit();
    rows->Set(u"Xline", qint64{2});
    rows->Set(u"Yline", qint64{3000});
    rows->Update();
  }
  const auto before = Snapshot(home);
  const QString pdf = Path(u"aus.pdf"_s);
  const auto info = [&](const QStringList& words) {
    const Outcome outcome = Batch(QStringList{u"druck"_s, map, pdf} + words);
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    return Run_Tool(u"pdfinfo"_s, {pdf}).simplified();
  };
  EXPECT_TRUE(info({}).contains(u"Pages: 4"_s));
  const QString upright = info({u"--format"_s, u"A4"_s, u"hoch"_s, u"--faktor"_s, u"1,5"_s});
  EXPECT_TRUE(upright.contains(u"Pages: 1"_s)) << upright;
  EXPECT_TRUE(upright.contains(u"(A4)"_s)) << upright;
  const QString large = info({u"--format"_s, u"A3"_s, u"--seiten"_s, u"1"_s});
  EXPECT_TRUE(large.contains(u"Pages: 1"_s) && large.contains(u"(A3)"_s)) << large;
  EXPECT_TRUE(info({u"--seiten"_s, u"2-3"_s}).contains(u"Pages: 2"_s));
  EXPECT_TRUE(Snapshot(home) == before);
}

// Metres of a UTM net of 1 m a pixel whose reference point lies at (100, 200).
TEST_F(BatchTest, ListsEntriesWithTheirCoordinates) {
  {
    const auto database = New_Table_File();
    Append_Row(*database, redBox);
    for (const auto& [id, typ] : {std::pair("Text", 1), {"Flaeche0", 4}})
      Append_Row(*database, {id, u"Höckerschrecke; 2 Ex.\r\nWiese"_s, {}, 0, 0, 0, 0, 10, 10, 110, 190, typ});
  }
  const QStringList head{u"Export der Datei: KARTE.MDB in eine CSV-Datei."_s, {}};
  // A folder that stands where the file shall come.
  ASSERT_TRUE(QDir().mkpath(home + u"/KARTE.csv/x"_s));
  const Outcome failing = Batch({u"csv"_s, map});
  EXPECT_EQ(failing.status, 1) << failing.err;
  EXPECT_TRUE(failing.err.contains(u"KARTE.csv")) << failing.err;
  ASSERT_TRUE(QDir(home + u"/KARTE.csv"_s).removeRecursively());
  ASSERT_EQ(Batch({u"csv"_s, map}).status, 0);
  EXPECT_EQ(Read_Lines(home + u"/KARTE.csv"_s),
            head + QStringList({u"Geografische Koordinaten, Kartendatum: "_s,
                                {},
                                u"Nr ; Eintrag ; x ; y ; Länge ; Breite"_s,
                                u";  ; Pixel ; Pixel ; Grad ; Grad"_s,
                                u"1 ; Rechteck ; 100 ; 80 ; Koordinaten nicht gefunden"_s,
                                u"2 ; Höckerschrecke, 2 Ex. Wiese ; 110 ; 190 ; Koordinaten nicht gefunden"_s,
                                u"Ende"_s}));
  Write_Lines(home + u"/Karte.cal"_s,
              {u"ID = Kalibrix"_s, u"Grid UTM Zone: 32U D: WGS-84 R: 654000 H: 5511000"_s, u"Gwidth = 100"_s,
               u"Inclin = 0.0000001"_s, u"Xmap = 100"_s, u"Ymap = 200"_s, u"Xline = 100"_s, u"Yline = 100"_s});
  ASSERT_EQ(Batch({u"csv"_s, map}).status, 0);
  EXPECT_EQ(Read_Lines(home + u"/KARTE.csv"_s),
            head + QStringList({u"UTM, Zone:32U,  Kartendatum: WGS-84 "_s,
                                {},
                                u"Nr ; Eintrag ; x ; y ; Rechtswert ; Hochwert"_s,
                                u"1 ; Rechteck ; 100 ; 80 ; 654000 ; 5511120"_s,
                                u"2 ; Höckerschrecke, 2 Ex. Wiese ; 110 ; 190 ; 654010 ; 5511010"_s,
                                u"Ende"_s}));
}

// Waypoints and a track in degrees onto a map with a net in metres.
TEST_F(BatchTest, TakesGpsFilesOntoTheMap) {
  New_Table_File()->Close();
  const QString file = Path(u"Gang.gpx"_s);
  // 654 000 / 5 511 000 and 654 050 / 5 511 050 in degrees, by cs2cs.
  Write_Lines(file, {u"<gpx><wpt lat='49.7317680' lon='11.1370401'><name>Igel</name></wpt>"_s,
                     u"<wpt lat='49.8' lon='11'><name>fern</name></wpt><wpt lat='95' lon='11'/>"_s,
                     u"<trk><name>Weg</name><trkseg><trkpt lat='49.7317680' lon='11.1370401'/>"_s,
                     u"<trkpt lat='49.7322046' lon='11.1377532'/></trkseg></trk></gpx>"_s});
  const QStringList words{u"gps"_s, map, file};
  EXPECT_TRUE(Batch(words).err.contains(u"Die Karte hat kein Koordinatennetz"));
  const Outcome missing = Batch({u"gps"_s, map, home + u"/fehlt.gpx"_s});
  EXPECT_EQ(missing.status, 1);
  EXPECT_TRUE(missing.err.contains(u"Datei nicht gefunden")) << missing.err;
  Write_Lines(home + u"/Karte.cal"_s,
              {u"ID = Kalibrix"_s, u"Grid UTM Zone: 32U D: WGS-84 R: 654000 H: 5511000"_s, u"Gwidth = 100"_s,
               u"Inclin = 0.0000001"_s, u"Xmap = 100"_s, u"Ymap = 200"_s, u"Xline = 100"_s, u"Yline = 100"_s});
  const Outcome first = Batch(words);
  EXPECT_EQ(first.status, 0) << first.err;
  EXPECT_EQ(first.out.split(u'\n').mid(0, 7).join(u'|'),
            u"umgerechnet: WGS-84 -> UTM 32 WGS-84|Wegpunkte gelesen: 2|Wegpunkte importiert: 1|außerhalb der Karte: 1|"
            "schon vorhanden: 0|abgelehnt: 0|Trackpunkte gelesen: 2"_s);
  EXPECT_THAT(Read_Lines(home + u"/Karte_Import.txt"_s),
              testing::ElementsAre(u"Zeile 2: Breite 95 gibt es nicht"_s, u"Zeile 2: fern: zu weit oben im Norden"_s));
  const auto rows = [this] { return Rows_Of(*Workspace::OpenDatabase(home + u"/KARTE.MDB"_s)); };
  ASSERT_EQ(rows().size(), 3U);
  EXPECT_EQ(QPoint(rows()[1].Xmap, rows()[1].Ymap), QPoint(100, 200));
  EXPECT_EQ(rows()[2].ID, u"Linie0"_s);
  EXPECT_TRUE(Batch(words).out.contains(u"schon vorhanden: 2"_s)) << "both points of the track";
  EXPECT_EQ(rows().size(), 3U);
  EXPECT_EQ(Batch(words + QStringList{u"--auch-vorhandene"_s}).status, 0);
  EXPECT_EQ(rows().size(), 5U);
}

// Only what is to change the table does.
TEST_F(BatchTest, FindsAreasAndCarriesEntriesToAnotherMap) {
  New_Table_File()->Close();
  QImage picture(map);
  for (int y = 50; y < 130; ++y)
    for (int x = 60; x < 180; ++x) picture.setPixelColor(x, y, QColor(120, 180, 90));
  ASSERT_TRUE(picture.save(map));
  const auto before = Snapshot(home);
  const QStringList find{u"flaeche"_s, map, u"120"_s, u"90"_s, u"--fuellen"_s};
  const QStringList corners = Batch(find).out.split(u'\n', Qt::SkipEmptyParts);
  EXPECT_THAT(corners, testing::UnorderedElementsAre(u"60 50"_s, u"180 50"_s, u"180 130"_s, u"60 130"_s));
  EXPECT_GT(Batch(find.mid(0, 4)).out.count(u'\n'), 3);
  EXPECT_TRUE(Snapshot(home) == before);
  EXPECT_EQ(Batch(find + QStringList{u"--uebernehmen"_s}).status, 0);
  const QString file = Path(u"aus.tkr"_s), other = Make_Map(u"Andere.bmp"_s);
  ASSERT_EQ(Batch({u"tkr"_s, map, file}).status, 0);
  EXPECT_EQ(Read_Lines(file).first(),
            u"Map = %1,  Overlay = %2,  Import = %3"_s.arg(map, file, QFileInfo(map).path() + u"/KARTE.MDB"_s));
  EXPECT_THAT(Read_Lines(file).join(u'\n').toStdString(), testing::HasSubstr("60,50/"));
  EXPECT_EQ(Batch({u"tkr-ein"_s, other, file, u"--alles"_s}).out, u"1\n"_s);
  const auto database = Workspace::OpenDatabase(Path(u"ANDERE.MDB"_s));
  EXPECT_EQ(Rows_Of(*database).back().ID, u"Flaeche0"_s);
  EXPECT_EQ(database->RowCount(u"Flaeche0"_s), 4);
  EXPECT_TRUE(Find_Files(home, u"*.map"_s).isEmpty() && Find_Files(home, u"*.ldb"_s).isEmpty());
}

TEST_F(BatchTest, CarriesTheTableToASheetAndBack) {
  Append_Row(*New_Table_File(), redBox);
  const auto before = Snapshot(home);
  const QString xls = Path(u"Tabelle 1.xls"_s);
  const QStringList show{u"tabelle-ein"_s, map, xls, u"--nur-zeigen"_s};
  ASSERT_EQ(Batch({u"tabelle-aus"_s, map, xls}).status, 0);
  EXPECT_EQ(Batch(show).out, u"Keine Änderung.\n"_s);
  Workbook book(xls);
  Sheet sheet = book.Read(u"MapData"_s);
  sheet.name = u"Neu"_s;
  sheet.Put(1, 9, u"Ost"_s);
  sheet.Put(2, 9, 150.0);
  sheet.Put(2, 6, 99.0);
  book.Put(sheet);
  book.Save();
  const QStringList fromNew = show + QStringList{u"--blatt"_s, u"Neu"_s};
  const QStringList renamed = fromNew + QStringList{u"--spalten"_s, u"VG,Xmap=Ost"_s};
  EXPECT_TRUE(Batch(fromNew + QStringList{u"--spalten"_s, u"Xmap"_s}).err.contains(u"fehlt die Spalte \"Xmap\""_s));
  EXPECT_EQ(Batch(fromNew + QStringList{u"--schluessel"_s, u"Finder"_s}).status, 2);
  Outcome outcome = Batch(renamed);
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.out, u"Nr. 1, Zeile 2, Xmap: \"100\" -> \"150\"\n1 Änderung in 1 Zeile, 1 abgelehnt.\n"_s);
  EXPECT_EQ(outcome.err, u"Zeile 2, VG: \"99\": Die Farbe kann nur Werte zwischen 0-15 annehmen.\n"_s);
  EXPECT_TRUE(Snapshot(home) == before);
  QStringList take = renamed;
  take.removeAll(u"--nur-zeigen"_s);
  EXPECT_TRUE(Batch(take).out.contains(u"Übernommen: 1 Werte in 1 Zeilen"_s));
  EntryRow moved = redBox;
  moved.Xmap = 150;
  EXPECT_EQ(Rows_Of(*Workspace::OpenDatabase(home + u"/KARTE.MDB"_s)).back(), moved);
}

TEST_F(BatchTest, TakesObjectsOfAnOverlay) {
  const QString file = Path(u"a.ovl"_s);
  Replace_File(file,
               "[Symbol 1]\nTyp=2\nText=hier\nXKoord=11.05\nYKoord=49.75\n[Symbol 2]\nTyp=2\nText=fern\n"
               "XKoord=12\nYKoord=49.75\n[Symbol 3]\nTyp=7\n");
  EXPECT_EQ(Batch({u"overlay"_s, map, file}).status, 1) << "a map without a net";
  Write_Lines(home + u"/Karte.cal"_s,
              {u"Grid GK Zone: 4 D: Potsdam R: 4431643 H: 5513031"_s, u"Gwidth = 1000"_s, u"Inclin = 0.0000001"_s,
               u"Xmap = 100"_s, u"Ymap = 200"_s, u"Xline = 100"_s, u"Yline = 100"_s});
  const Outcome outcome = Batch({u"overlay"_s, map, file});
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_EQ(outcome.out,
            u"1 Einträge wurden importiert\n1 Objekte liegen außerhalb der Karte.\n"
            "1 Bilder und Dreiecke wurden übergangen.\n"_s);
  EXPECT_TRUE(Read_Lines(home + u"/Karte_Import.txt"_s).contains(u"Zeile 6: fern: zu weit rechts im Osten"_s));
  const EntryRow row = Rows_Of(*Workspace::OpenDatabase(home + u"/KARTE.MDB"_s)).back();
  EXPECT_EQ(QPoint(row.Xmap, row.Ymap), QPoint(100, 200)) << "converted from WGS-84";
  EXPECT_TRUE(Batch({u"overlay"_s, map, file}).out.contains(u"1 Objekte waren schon vorhanden."_s));
  EXPECT_EQ(Batch({u"overlay"_s, map, map}).status, 1);
}

TEST_F(BatchTest, TakesEntriesOfAnotherTable) {
  New_Table_File()->Close();
  const QString file = Path(u"Quelle.MDB"_s);
  {
    const auto source = Make_Table_File(file, u"Fremd.bmp"_s);
    for (const char* name : {"Biber 1", "Biber 2", "Igel"})
      Append_Row(*source, {"Text", QLatin1String(name), "Arial", 10, 4, 0, 0, 40, 50, 0, 0, 0});
    Append_Row(*source, {"Linie7", u"Biberbach"_s, "Arial", 10, 4, 0, 0, 40, 50, 1, 1, 4});
  }
  const auto before = Read_Bytes(file);
  const QStringList words{u"tabelle"_s, map, file, u"--filter"_s, u"Eintrag= Biber*"_s, u"--filter"_s, u"VG= 4"_s};
  const Outcome first = Batch(words);
  EXPECT_EQ(first.status, 0) << first.err;
  EXPECT_TRUE(first.out.contains(u"2 Einträge wurden importiert."_s)) << first.out;
  EXPECT_TRUE(first.out.contains(u"1 Einträge wurden abgelehnt"_s)) << first.out;
  EXPECT_TRUE(Read_Lines(home + u"/Karte_Import.txt"_s).join(u' ').contains(u"Zeile 4: Biberbach"_s));
  EXPECT_TRUE(Batch(words).out.contains(u"2 Einträge waren schon vorhanden."_s));
  EXPECT_TRUE(Batch(words + QStringList{u"--ohne"_s}).out.contains(u"1 Einträge wurden importiert."_s));
  EXPECT_TRUE(Batch(words + QStringList{u"--auch-vorhandene"_s}).out.contains(u"2 Einträge wurden importiert."_s));
  EXPECT_EQ(Workspace::OpenDatabase(home + u"/KARTE.MDB"_s)->RowCount(u"MapData"_s), 6);
  EXPECT_EQ(Read_Bytes(file), before);
  // A map with a net, and nothing known of the other's.
  Write_Lines(home + u"/Karte.cal"_s,
              {u"Grid UTM Zone: 32U D: WGS-84 R: 654000 H: 5511000"_s, u"Gwidth = 100"_s, u"Inclin = 0.0000001"_s,
               u"Xmap = 100"_s, u"Ymap = 200"_s, u"Xline = 100"_s, u"Yline = 100"_s});
  const Outcome unknown = Batch(words);
  EXPECT_EQ(unknown.status, 1);
  EXPECT_TRUE(unknown.err.contains(u"--pixel"_s)) << unknown.err;
  EXPECT_EQ(Batch(words + QStringList{u"--pixel"_s}).status, 0);
  const Outcome none = Batch({u"tabelle"_s, map, map});
  EXPECT_EQ(none.status, 1);
  EXPECT_TRUE(none.err.contains(u"Karte.bmp"_s)) << none.err;
  EXPECT_TRUE(Find_Files(home, u"Import*"_s).isEmpty());
}

TEST_F(BatchTest, WritesTheEvaluationsBesideTheUsersOwnSheets) {
  {
    const auto database = New_Table_File();
    Append_Row(*database, {"Flaeche0", u"Wiese"_s, {}, 0, 0, 0, 0, 10, 10, 0, 0, 4});
    Append_Row(*database, {"Text>Flaeche0", u"3Höckerschrecke"_s, {}, 0, 0, 0, 0, 10, 10, 0, 0, 0});
    Append_Row(*database, {"Text>Flaeche0", u"=Falter"_s, {}, 0, 0, 0, 0, 40, 50, 0, 0, 0});
  }
  const QString xls = Path(u"Auswertung 1.xls"_s), csv = Path(u"matrix.csv"_s);
  Workbook own(xls);
  Sheet notes(u"Notizen"_s);
  notes.Put(1, 1, u"bleibt"_s);
  own.Put(notes);
  own.Save();
  const auto before = Snapshot(home);
  for (int time = 0; time < 2; ++time) {
    const Outcome outcome = Batch({u"statistik"_s, map, xls, u"--nachbarn"_s, u"5"_s, u"--matrix"_s, csv});
    ASSERT_EQ(outcome.status, 0) << outcome.err;
  }
  EXPECT_TRUE(Snapshot(home) == before);
  const Workbook book(xls);
  EXPECT_EQ(book.SheetNames(), QStringList({u"Notizen"_s, u"Flächen"_s, u"Zuordnung"_s, u"Kataster"_s, u"Matrix"_s}));
  EXPECT_EQ(book.Read(u"Notizen"_s).Text(1, 1), u"bleibt"_s);
  const auto numberBeside = [&](const QString& sheetName, const QString& text, int away) {
    const Sheet sheet = book.Read(sheetName);
    for (int row = 1; row <= sheet.RowCount(); ++row)
      for (int column = 1; column <= sheet.ColumnCount(); ++column)
        if (sheet.Text(row, column) == text) return sheet.Number(row, column + away);
    ADD_FAILURE() << sheetName << " without " << text;
    return -1.0;
  };
  EXPECT_EQ(numberBeside(u"Flächen"_s, u"Höckerschrecke"_s, 1), 3);
  EXPECT_NEAR(numberBeside(u"Flächen"_s, u"HS ="_s, 1), 0.562335, 1e-6);  // 3 and 1: -(3/4 ln 3/4 + 1/4 ln 1/4)
  EXPECT_EQ(numberBeside(u"Matrix"_s, u"Wiese"_s, 1), 4);
  EXPECT_EQ(numberBeside(u"Zuordnung"_s, u"Höckerschrecke"_s, -1), 3);
  const QString matrix = QString::fromUtf8(Read_Bytes(csv));
  EXPECT_TRUE(matrix.contains(u"Flaeche0;Wiese;4;2;0,5623"_s)) << matrix;
  const QStringList neighbours = Read_Lines(Path(u"Distanz.erg"_s));
  EXPECT_EQ(neighbours.value(0), u"Distanz zu den 1 naechstgelegenen Eintraegen."_s);  // of two entries
  // While the spreadsheet program has it open.
  Replace_File(Path(u".~lock.Auswertung 1.xls#"_s), ",Erna,rechner,14.05.2026 10:00,file:///x;");
  const QByteArray bytes = Read_Bytes(xls);
  const Outcome locked = Batch({u"statistik"_s, map, xls});
  EXPECT_EQ(locked.status, 1);
  EXPECT_TRUE(locked.err.contains(u"Erna"_s)) << locked.err;
  EXPECT_EQ(Read_Bytes(xls), bytes);
}

TEST_F(BatchTest, CalibratesByAWorldFile) {
  // 2.5 m a pixel from R 650000, H 5512000 downward.
  Put(u"Größe 2.5 ä/Karte.bpw"_s, "2.5\n0\n0\n-2.5\n650000\n5512000\n");
  EXPECT_TRUE(Batch({u"kalibriere"_s, map}).err.contains(u"Es fehlt das Datum"_s));
  EXPECT_FALSE(QFile::exists(home + u"/Karte.cal"_s));
  const Outcome outcome = Batch({u"kalibriere"_s, map, u"--zone"_s, u"32U"_s, u"--datum"_s, u"ETRS89"_s});
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_EQ(outcome.out.trimmed(), home + u"/Karte.cal"_s);
  // The other commands know the coordinates now.
  auto table = New_Table_File();
  Append_Row(*table, redBox);
  table->Close();
  EXPECT_EQ(Batch({u"csv"_s, map}).status, 0);
  EXPECT_TRUE(Read_Lines(home + u"/KARTE.csv"_s).join(u' ').contains(u"650"_s));
}
