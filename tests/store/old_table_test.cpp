#include "store/old_table.h"
#include "old_table_file.h"

namespace {

// A table of the old engine: 1603 rows, one of them grown and moved, 400 deleted, columns of every usual kind.
class OldTableTest : public TableTest {
 protected:
  void SetUp() override {
    TableTest::SetUp();
    ASSERT_TRUE(
        QFile::link(QStringLiteral(FLURAX_BINARY_DIR "/flurax-alttabelle"), ProgramFolder + u"/flurax-alttabelle"_s));
    bytes = qUncompress(Read_Bytes(QStringLiteral(FLURAX_TEST_DATA "/alt/Karte.mdb.z")));
    ASSERT_FALSE(bytes.isEmpty());
  }
  OldTableReport Convert(const QByteArray& content) {
    Kill_Quietly(Path(u"neu.MDB"_s));
    return Convert_Old_Table(Put(u"alt.MDB"_s, content), Path(u"neu.MDB"_s));
  }
  // The German sentence, or "" where it was read without a remark.
  QString Said(const QByteArray& content) {
    try {
      return Convert(content).notes.join(u' ');
    } catch (const Error& error) {
      EXPECT_EQ(error.number, errors::databaseDamaged);
      return error.text;
    }
  }
  QByteArray bytes;
};

}  // namespace

TEST_F(OldTableTest, ValuesComeOutAsTheyWereTyped) {
  using namespace old_table;
  EXPECT_EQ(Unicode_Text(QByteArray("\xFF\xFE"
                                    "M\xFChle",
                                    7)),
            u"Mühle"_s);
  EXPECT_EQ(Unicode_Text(QByteArray("A\0\xAC\x20", 4)), u"A€"_s);
  EXPECT_EQ(Unicode_Text(QByteArray("\xFF\xFE"
                                    "a\0\xAC\x20\0b",
                                    8)),
            u"a€b"_s)
      << "packed, not packed, packed";
  EXPECT_EQ(Date_Text(35932.572916666664), u"17.05.1998 13:45:00"_s);
  EXPECT_EQ(Date_Text(35932), u"17.05.1998"_s);
  EXPECT_EQ(Date_Text(0.5), u"12:00:00"_s);
  EXPECT_EQ(Date_Text(-1.25), u"29.12.1899 06:00:00"_s);
  EXPECT_EQ(Date_Text(1e300), QString());
}

TEST_F(OldTableTest, BringsTablesRowsAndTheirOrder) {
  const OldTableReport report = Convert(bytes);
  EXPECT_EQ(std::tuple(report.tables, report.entries), std::tuple(4, 1603));
  EXPECT_TRUE(report.Text().contains(u"2 Zahlen keinen Platz"_s)) << report.Text();
  const auto database = Workspace::OpenDatabase(Path(u"neu.MDB"_s));
  const std::vector<EntryRow> rows = Rows_Of(*database);
  ASSERT_EQ(rows.size(), 1604U) << "and a header, which the file had not";
  EXPECT_EQ(rows[0].ID, u"!Unbekannt"_s);
  EXPECT_EQ(std::tuple(rows[1].Eintrag, rows[1].Groesse), std::tuple(u"Fundort Äußere Mühle\r\n2. Zeile"_s, 8.25));
  EXPECT_EQ(rows[1].VG, 255);
  EXPECT_EQ(rows[1].HG, 32767) << "16777215 is beyond the column";
  EXPECT_EQ(std::tuple(rows[2].Eintrag, rows[2].Xmap), std::tuple(u"Straße ü ö ä €"_s, 1491));
  EXPECT_EQ(rows[2].Ymap, -4) << "-3.5: halves to even";
  EXPECT_EQ(rows[4].ID, u"P1"_s) << "it grew and lies on another page, yet is drawn where it was";
  EXPECT_EQ(rows[4].Eintrag.size(), 220);
  const auto more = database->OpenRecordset(u"MapData"_s);
  more->MoveTo(1);
  EXPECT_EQ(more->Text(u"Datum"), u"17.05.1998 13:45:00"_s);
  EXPECT_EQ(more->Integer(u"Belegt"), -1);
  more->MoveTo(2);
  EXPECT_TRUE(std::holds_alternative<std::monostate>(more->Raw(more->FieldIndex(u"Bemerkung"))));
  more->MoveTo(3);
  const QString memo = more->Text(u"Bemerkung");
  EXPECT_TRUE(memo.startsWith(u"Zeile 0 äöüß\r\nZeile 1 "_s));
  EXPECT_GT(memo.size(), 8000) << "over several pages";
  EXPECT_EQ(database->RowCount(u"Linie1"_s), 25);
  EXPECT_EQ(database->RowCount(u"Fläche 2"_s), 25);
  EXPECT_EQ(Read_Bytes(Path(u"alt.MDB"_s)), bytes);
}

// The library crashes or never ends on most of these; whatever it does, there is a sentence.
TEST_F(OldTableTest, DamagedFilesAreTold) {
  for (int i = 1; i <= 50; ++i) {
    const qsizetype cut = bytes.size() * i / 51;
    const QString said = Said(bytes.left(i % 2 == 0 ? cut : cut / 4096 * 4096));
    EXPECT_TRUE(said.contains(u"kann nicht gelesen werden"_s)) << "cut at " << cut << ": " << said;
  }
  std::mt19937 random(4);
  for (int i = 0; i < 10; ++i) {
    QByteArray spoiled = bytes;
    for (int k = 0; k < 400; ++k)
      spoiled[static_cast<qsizetype>(4096 + random() % static_cast<unsigned>(bytes.size() - 4096))] =
          static_cast<char>(random());
    EXPECT_NE(Said(spoiled), QString()) << i;
  }
  QByteArray locked = bytes;
  locked[0x44] = static_cast<char>(locked[0x44] ^ 0x55);
  EXPECT_TRUE(Said(locked).contains(u"Kennwort"_s)) << Said(locked);
  EXPECT_TRUE(Said(QByteArray("\0\1\0\0Standard Jet DB\0", 20)).contains(u"kann nicht gelesen werden"_s));
  EXPECT_FALSE(Is_Old_Table(Put(u"leer.MDB"_s, {})));
  ASSERT_TRUE(QFile::remove(ProgramFolder + u"/flurax-alttabelle"_s));
  qputenv("PATH", "/nirgends");
  EXPECT_TRUE(Said(bytes).contains(u"Hilfsprogramm"_s));
  qputenv("PATH", "/usr/local/bin:/usr/bin:/bin");
}

TEST_F(OldTableTest, AMapOpensWithItsOldTableAndKeepsTheFile) {
  Replace_File(Path(u"KARTE.MDB"_s), bytes);
  Put(u"KARTE_alt.MDB"_s, "eine von früher");
  With_Box(u"umgewandelt"_s, [this] { Open_Table(); });
  EXPECT_EQ(rsEntries->RecordCount(), 1604);
  EXPECT_EQ(Load_Vertices(u"Linie1"_s).size(), 25U);
  EXPECT_EQ(Tbl.EintragSize, 255);
  EXPECT_TRUE(Tbl.HasUserColumns);
  EXPECT_EQ(Read_Bytes(Path(u"KARTE_alt.MDB"_s)), bytes);
  EXPECT_EQ(Read_Bytes(Path(u"KARTE_alt_1.MDB"_s)), "eine von früher");
  EXPECT_EQ(Read_Font_Factor(), 1.0F) << "of a table Qdata of another kind";
  // Another one, by loading entries; the second time it is one of ours.
  Replace_File(Path(u"Andere.MDB"_s), bytes);
  With_Box(u"umgewandelt"_s, [this] { EXPECT_TRUE(Load_Other_Table(Path(u"Andere.MDB"_s))); });
  EXPECT_EQ(Read_Bytes(Path(u"Andere_alt.MDB"_s)), bytes);
  EXPECT_EQ(rsEntries->RecordCount(), 1604);
}

TEST_F(OldTableTest, ADamagedTableOfAMapStaysWhereItIs) {
  const QByteArray cut = bytes.left(bytes.size() / 2);
  Replace_File(Path(u"KARTE.MDB"_s), cut);
  Name_Map();
  With_Box(u"kann nicht gelesen werden"_s, MsgAnswer::No, [] { EXPECT_FALSE(Load_Table(LoadMode::First)); });
  EXPECT_EQ(Read_Bytes(Path(u"KARTE.MDB"_s)), cut);
  EXPECT_EQ(Names().filter(u".MDB"_s), QStringList{u"KARTE.MDB"_s});
  With_Box(u"kann nicht gelesen werden"_s, MsgAnswer::Yes, [] { EXPECT_TRUE(Load_Table(LoadMode::First)); });
  EXPECT_EQ(Read_Bytes(Path(u"KARTE_err.mdb"_s)), cut);
  Replace_File(Path(u"Andere.MDB"_s), cut);
  With_Box(u"kann nicht gelesen werden"_s, [this] { EXPECT_FALSE(Load_Other_Table(Path(u"Andere.MDB"_s))); });
  EXPECT_EQ(Read_Bytes(Path(u"Andere.MDB"_s)), cut);
}
