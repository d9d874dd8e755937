#include "store/map_log.h"

#include "store/log_record.h"

namespace {
class MapLog : public FluraxTest {
 protected:
  static QString Log() { return Program_File("Map.log"); }
  static QStringList Lines(const QString& list) {
    QStringList lines;
    for (int i = 1; i <= 10; ++i)
      if (Menu(list, i).Visible) lines += Menu(list, i).Caption;
    return lines;
  }
  static QStringList Listed(int kind) {
    Read_Log(kind);
    return Lines(kind == 1 ? "mnuMapFile" : kind == 2 ? "mnuOverlay" : "mnuRecentFile");
  }
  static QStringList Tables_Of(const QString& map) {
    MapFile = map;
    return Listed(2);
  }
  // Maps and texts of a list are numbered 1..n, and every table has its map.
  static void Expect_In_Order() {
    std::vector<int> maps, texts, tableMaps;
    for (const LogRecord& record : Read_Log_Records()) {
      if (record.Kind == 1) maps.push_back(record.Order);
      if (record.Kind == 2) tableMaps.push_back(record.MapNo);
      if (record.Kind == 3) texts.push_back(record.Order);
    }
    for (auto* list : {&maps, &texts}) {
      std::sort(list->begin(), list->end());
      for (size_t i = 0; i < list->size(); ++i) EXPECT_EQ((*list)[i], static_cast<int>(i) + 1);
    }
    for (const int map : tableMaps) EXPECT_TRUE(map >= 1 && map <= static_cast<int>(maps.size())) << map;
  }
};
}  // namespace

TEST_F(MapLog, RecordsHaveTheirBytes) {
  const std::vector<LogRecord> records = {{1, 1, 0, "/k/Größe €.bmp"},
                                          {2, 300, 1, "/k/Жук.MDB"},
                                          {-2, 0, 0, QString()},
                                          {3, 2, 0, "/k/Ã¤.txt"},        // reads like UTF-8
                                          {3, 3, 0, "/k/a\u0308.txt"}};  // an umlaut of two characters
  const QByteArray bytes = Encode_Log(records);
  ASSERT_EQ(bytes.size(), 5 * 206);
  EXPECT_EQ(bytes.left(22), QByteArray("\1\0\1\0\0\0/k/Gr\xF6\xDF"
                                       "e \x80.bmp  ",
                                       22));
  EXPECT_EQ(bytes.mid(206, 6), QByteArray("\2\0\x2C\1\1\0", 6));
  EXPECT_EQ(bytes.mid(412, 2), QByteArray("\xFE\xFF", 2));
  std::vector<LogRecord> back;
  ASSERT_TRUE(Decode_Log(bytes, back));
  EXPECT_EQ(back, records);
  QByteArray zeros = bytes.left(206);
  zeros.replace("bmp ", QByteArray("bmp\0", 4));
  for (int i = 24; i < 206; ++i) zeros[i] = '\0';  // filled by another writer
  ASSERT_TRUE(Decode_Log(zeros, back));
  EXPECT_EQ(back[0].Path, records[0].Path);
}

TEST_F(MapLog, TheFirstStartListsTheDemo) {
  const QStringList demo = {"Demo_1_Test.MDB", "Demo_2_Übersicht.MDB", "Demo_3_Eintrag_bearbeiten.MDB",
                            "Demo_4_Text_Symbol.MDB", "Demo_5_Text_justieren.MDB"};
  const QString map = ProgramFolder + "/Beispiele/Karte.bmp";
  EXPECT_EQ(Listed(1), QStringList(map));
  EXPECT_TRUE(Menu("mnuMapFile", 1).Enabled);
  EXPECT_EQ(Menu("mnuMapFile", 2).Caption, "MapFile");
  EXPECT_TRUE(Tables_Of({}).isEmpty());
  QStringList tables = Tables_Of(map);
  for (QString& table : tables) table = QFileInfo(table).fileName();
  EXPECT_EQ(tables, demo);
  TableFile = ProgramFolder + "/Beispiele/KARTE.MDB";
  EXPECT_EQ(Tables_Of(map).last(), "Workfile: " + TableFile);
  EXPECT_EQ(Menu("mnuOverlay", 6).Tag, TableFile);
  EXPECT_EQ(QFileInfo(Log()).size(), 6 * 206);
  Read_Log(3);
  EXPECT_EQ(QFileInfo(Log()).size(), 6 * 206);  // once
}

TEST_F(MapLog, TheNewestStandsOnTopAndTablesFollowTheirMap) {
  Read_Log(1);
  const QString demo = ProgramFolder + "/Beispiele/Karte.bmp";
  const QString a = Put("a/A.bmp"), b = Put("b/B.bmp");
  Write_Log(a, 1);
  MapFile = a;
  Write_Log(Path("a/A_1.MDB"), 2);
  Write_Log(Path("a/A_2.MDB"), 2);
  MapFile = b;  // not yet listed: its table brings it in
  Write_Log(Path("b/B_1.MDB"), 2);
  Write_Log(Path("a/A_1.MDB"), 2);  // the same file under another map is another record
  EXPECT_EQ(Listed(1), QStringList({b, a, demo}));
  Write_Log(demo, 1);
  Write_Log(a, 1);
  EXPECT_EQ(Listed(1), QStringList({a, demo, b}));
  MapFile = a;
  Write_Log(Path("a/A_1.MDB"), 2);
  EXPECT_EQ(Tables_Of(a), QStringList({Path("a/A_1.MDB"), Path("a/A_2.MDB")}));
  EXPECT_EQ(Tables_Of(b), QStringList({Path("a/A_1.MDB"), Path("b/B_1.MDB")}));
  EXPECT_EQ(Tables_Of(demo).size(), 5);
  for (const char* text : {"x.txt", "y.txt", "x.txt"}) Write_Log(Path(text), 3);
  EXPECT_EQ(Listed(3), QStringList({Path("x.txt"), Path("y.txt")}));
  Expect_In_Order();
}

TEST_F(MapLog, TablesWithoutAMapAreAdoptedByNone) {
  const QString a = Put("A.bmp"), b = Put("B.bmp");
  Replace_File(Log(), Encode_Log({{1, 7, 0, a}, {2, 1, 3, Path("verwaist.MDB")}, {2, 2, 7, Path("A_1.MDB")}}));
  Write_Log(b, 1);
  Write_Log(a, 1);
  Write_Log(Put("C.bmp"), 1);
  EXPECT_EQ(Tables_Of(a), QStringList(Path("A_1.MDB")));
  EXPECT_TRUE(Tables_Of(b).isEmpty());
  EXPECT_TRUE(Tables_Of(Path("C.bmp")).isEmpty());
}

TEST_F(MapLog, ALongLogIsRewritten) {
  Read_Log(1);
  QStringList maps;
  for (int i = 0; i < 12; ++i) {
    maps.prepend(Put(QStringLiteral("Karte%1.bmp").arg(QChar('A' + i))));
    Write_Log(maps.first(), 1);
  }
  MapFile = maps.first();
  const QString table = Put("L1.MDB");
  Write_Log(table, 2);
  Write_Log(Path("weg.MDB"), 2);
  EXPECT_EQ(Read_Log_Records().size(), 20U);
  EXPECT_EQ(Tables_Of(maps.first()).size(), 2);  // a deleted table stays until the rewriting
  const QString text = Put("n.txt");
  const QByteArray before = Read_Bytes(Log());
  Kill(maps[1]);
  Write_Log(text, 3);  // the twenty-first
  QStringList kept = maps;
  kept.removeAt(1);
  EXPECT_EQ(Listed(1), kept.mid(0, 10));
  EXPECT_EQ(Tables_Of(maps.first()), QStringList(table));
  EXPECT_EQ(Listed(3), QStringList(text));
  Expect_In_Order();
  EXPECT_EQ(Read_Bytes(Program_File("Map_old.log")), before);
  EXPECT_FALSE(QFile::exists(Program_File("Map.bak")));
  Kill(text);
  Write_Log("MapBak", 0);
  EXPECT_TRUE(Listed(3).isEmpty());
}

TEST_F(MapLog, ADamagedLogIsKeptAsideAndARewritingCutOffIsFinished) {
  const QByteArray sound = Encode_Log({{1, 1, 0, "/a.bmp"}, {2, 1, 1, "/a.MDB"}});
  QByteArray strange = sound;
  strange[206] = 9;
  const std::pair<QByteArray, QString> cases[] = {
      {sound.left(300), "Map_alt.log"}, {strange, "Map_alt_1.log"}, {"TLB: vbAlignTop\r\n", "Map_alt_2.log"}};
  for (const auto& [damaged, aside] : cases) {
    Replace_File(Log(), damaged);
    MessageScript script("Bitte benennen Sie die Datei um z.B. in Map_alt.log");
    EXPECT_EQ(Listed(1), QStringList(ProgramFolder + "/Beispiele/Karte.bmp"));
    EXPECT_EQ(Read_Bytes(Program_File(aside)), damaged);
    EXPECT_TRUE(script.Seen()[0].text.startsWith("Diese Datei ist wahrscheinlich beschädigt\n"));
    EXPECT_TRUE(script.Seen()[0].text.contains(aside));
  }
  Kill(Log());
  const QString map = Put("A.bmp");
  Replace_File(Program_File("Map.bak"), Encode_Log({{1, 1, 0, map}, {2, 1, 1, Path("A.MDB")}}));
  EXPECT_EQ(Listed(1), QStringList(map));
  EXPECT_TRUE(QFile::exists(Log()));
}

TEST_F(MapLog, AFullDiskKeepsTheLog) {
  Read_Log(1);
  const QByteArray before = Read_Bytes(Log());
  File_Write_Fault = [](const QString&, qint64) { return errors::diskFull; };
  MessageScript script{{"Datenträger voll"}, {"Datenträger voll"}};
  Write_Log(Path("A.bmp"), 1);
  Compress_Log();
  EXPECT_EQ(Listed(1).size(), 1);
  File_Write_Fault = nullptr;
  EXPECT_EQ(Read_Bytes(Log()), before);
}

TEST_F(MapLog, PathsBeyondTheRecord) {
  Read_Log(1);
  const QString folderName = QString(120, u'o') + '/' + QString(200 - 122 - Path({}).size(), u'p') + '/';
  const QString exact = Put(folderName.chopped(6) + "/K.bmp");
  ASSERT_EQ(exact.size(), 200);
  Write_Log(exact, 1);
  EXPECT_EQ(Listed(1).first(), exact);
  const QString longer = Put(folderName + "Unterordner/Karte.bmp");
  Write_Log(longer, 1);
  EXPECT_EQ(Read_Log_Records().back().Path, longer.left(200));  // cut by the record, and in no menu
  EXPECT_EQ(Listed(1).first(), exact);
  MapFile = longer;
  Write_Log(Path("kurz.MDB"), 2);
  Write_Log(longer, 1);
  EXPECT_EQ(Tables_Of(longer), QStringList(Path("kurz.MDB")));
  const QString greek = "/k/" + QString(150, QChar(0x3B1)) + ".bmp";
  const QString cut = Stored_Path(greek);
  EXPECT_TRUE(greek.startsWith(cut));
  EXPECT_EQ(cut.toUtf8().size(), 199);  // between two characters
}

TEST_F(MapLog, DeletingTakesTableAndMarkerButNeverTheMap) {
  Read_Log(1);
  const QString map = Put("A.bmp"), table = Put("A_1.MDB"), text = Put("n.txt");
  Put("A_1.ldb");
  Write_Log(map, 1);
  MapFile = map;
  Write_Log(table, 2);
  Write_Log(Put("A_2.MDB"), 2);
  Write_Log(text, 3);
  const size_t count = Read_Log_Records().size();
  Delete_From_Log(text);
  Write_Log(Put("m.txt"), 3);
  EXPECT_EQ(Read_Log_Records().size(), count);  // the slot was used again
  EXPECT_EQ(Listed(3), QStringList(Path("m.txt")));
  Delete_From_Log(map);
  EXPECT_TRUE(QFile::exists(map));
  EXPECT_TRUE(QFile::exists(Path("A_2.MDB")));
  EXPECT_EQ(Listed(1), QStringList(ProgramFolder + "/Beispiele/Karte.bmp"));
  EXPECT_TRUE(Tables_Of(map).isEmpty());
  EXPECT_EQ(Tables_Of(ProgramFolder + "/Beispiele/Karte.bmp").size(), 5);
  Write_Log(table, -2);
  EXPECT_FALSE(QFile::exists(table));
  EXPECT_FALSE(QFile::exists(Path("A_1.ldb")));
  EXPECT_FALSE(QFile::exists(text));
}

TEST_F(MapLog, TheListOfAnEarlierVersionIsTakenUpOnce) {
  const QString a = Put("Alt.bmp"), b = Put("Bach.bmp");
  const QString a1 = Put("ALT_Vögel.MDB"), a2 = Put("Alt2.mdb");
  Put("Fremd.MDB");
  Write_Lines(Program_File("Tables.ini"),
              {a1, "Map: " + a, a1, Path("Fremd.MDB"), Path("Alt_fehlt.MDB"), a2, "Map: \\\\server\\Karte.bmp",
               "Map: " + Path("fehlt.bmp"), Path("Bach.MDB"), "Map:" + Path("BACH.BMP"), "Map: " + a});
  EXPECT_EQ(Listed(1), QStringList({ProgramFolder + "/Beispiele/Karte.bmp", a, b}));
  EXPECT_EQ(Tables_Of(a), QStringList({a2, a1}));
  EXPECT_TRUE(Tables_Of(b).isEmpty());
  const auto records = Read_Log_Records();
  Read_Log(1);
  EXPECT_EQ(Read_Log_Records(), records);
}
