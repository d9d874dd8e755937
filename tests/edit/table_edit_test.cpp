#include "edit/table_edit.h"

#include <sqlite3.h>

#include "support/looks.h"

namespace {

class TableEditTest : public OpenTableTest {
 protected:
  void SetUp() override {
    OpenTableTest::SetUp();
    Tbl.EditWarned = true;
  }
  static qint64 Add_Row(const EntryRow& row) {
    Add(row);
    return rsEntries->Key();
  }
  static qint64 Add_Area(const QString& name, int type = 4) {
    Create_Vertex_Table(name);
    Write_Vertices(name, {{1, 1}, {50, 1}, {50, 50}});
    return Add_Row(Entry(name, type, "Wiese"));
  }
  static qint64 Header() {
    rsEntries->MoveFirst();
    return rsEntries->Key();
  }
  static EntryRow Row(qint64 key) {
    rsEntries->SetBookmark(QString::number(key));
    return Read_Entry(*rsEntries);
  }
  static QStringList Dump() {
    const KeepCurrentRow keep;
    QStringList all;
    for (rsEntries->MoveFirst(); !rsEntries->Eof(); rsEntries->MoveNext())
      all << QString::number(rsEntries->Key()) + Row_Values(*rsEntries);
    return all;
  }
  // What another program may have left in a cell.
  static void Store_Foreign(qint64 key, const char* column, const char* value) {
    const QByteArray sql =
        "UPDATE MapData SET \"" + QByteArray(column) + "\"=" + value + " WHERE rowid=" + QByteArray::number(key);
    ASSERT_EQ(sqlite3_exec(dbEntries->Handle(), sql.constData(), nullptr, nullptr, nullptr), SQLITE_OK);
  }
};

}  // namespace

// Every cell takes what fits, and refuses all else with a message and without a change.
TEST_F(TableEditTest, CellsTakeWhatFitsAndRefuseTheRest) {
  const qint64 key = Add_Row(Text("Amsel"));
  // The message, none where it is taken, and what is stored then.
  const std::tuple<int, QString, const char*, QString> cases[] = {
      {column::Eintrag, "Ährenfeld", "", "Ährenfeld"},
      {column::Eintrag, "zwei\r\nZeilen", "", "zwei\r\nZeilen"},
      {column::Eintrag, QString(79, 'x'), "", QString(79, 'x')},
      {column::Eintrag, QString(80, 'x'), "80 Zeichen", {}},
      {column::Eintrag, QString(254, 'x'), "254 Zeichen", {}},
      {column::Groesse, "8,5", "", "8,5"},
      {column::Groesse, "9.25", "", "9,25"},
      {column::Groesse, "groß", "Falscher Datentyp in der Tabelle.\nBitte ändern!", {}},
      {column::Xmap, "-7", "", "-7"},
      {column::Xmap, "32767", "", "32767"},
      {column::Xmap, "32768", "-32768 bis 32767", {}},
      {column::Xmap, "1e300", "-32768 bis 32767", {}},
      {column::Xmap, "1,5", "Falscher Datentyp", {}},
      {column::Xmap, "", "Falscher Datentyp", {}},
      {column::RA, "315", "", "315"},
      {column::RA, "316", "Die Rahmenfarbe RA  kann nur Werte zwischen 0-15", {}},
      {column::Typ, "-3", "", "-3"},
      {column::Typ, "6", "Unbekannter Typ = 6", {}},
      {column::Typ, "4", "Eckpunkte", {}},
      {column::ID, "!Text", "Kopfzeile", {}},
      {column::ID, "-Text>Flaeche0", "", "-Text>Flaeche0"},
  };
  for (const auto& [column, text, message, stored] : cases) {
    const QStringList before = Dump();
    Tbl.Tag = TableTag::Clean;
    MessageScript messages;
    const bool refused = *message != '\0';
    if (refused) messages.Expect(QString::fromUtf8(message));
    EXPECT_EQ(Edit_Cell(key, column, text), refused ? CellEdit::Refused : CellEdit::Written) << column << ' ' << text;
    EXPECT_EQ(Table_Is_Changed(), !refused) << text;
    if (refused) {
      EXPECT_EQ(Dump(), before) << text;
      EXPECT_TRUE(messages.Seen().empty() || messages.Seen()[0].title == "Fehler in der Tabelle");
    } else {
      rsEntries->SetBookmark(QString::number(key));
      EXPECT_EQ(Cell_Text(rsEntries->Raw(column)), stored);
      EXPECT_EQ(Edit_Cell(key, column, stored), CellEdit::Unchanged);
    }
  }
  MessageScript messages("Kopfzeile");
  EXPECT_EQ(Edit_Cell(Header(), column::Xline, "2"), CellEdit::Refused);
}

TEST_F(TableEditTest, NamesThatLeadToVerticesStay) {
  const qint64 area = Add_Area("Flaeche3");
  const qint64 figure = Add_Row(Entry("Figur1", 20, "Rechteck"));
  MessageScript messages;
  for (const char* taken : {"-Flaeche3", "Flaeche3>Linie0", "Flaeche3<1"})
    EXPECT_EQ(Edit_Cell(area, column::ID, taken), CellEdit::Written) << taken;
  messages.Expect("'Flaeche3' sind die Eckpunkte");
  EXPECT_EQ(Edit_Cell(area, column::ID, "Flaeche4"), CellEdit::Refused);
  EXPECT_EQ(Edit_Cell(area, column::Typ, "40"), CellEdit::Written);
  messages.Expect("4 und 40, 24 und 25");
  EXPECT_EQ(Edit_Cell(area, column::Typ, "24"), CellEdit::Refused);
  EXPECT_EQ(Load_Vertices("Flaeche3").size(), 3U);
  // Without vertices the keyword is only warned of.
  messages.Expect("Schlüsselwort 'Fig'", MsgAnswer::No);
  EXPECT_EQ(Edit_Cell(figure, column::ID, "Kasten"), CellEdit::Refused);
  messages.Expect("Schlüsselwort 'Fig'", MsgAnswer::Yes);
  EXPECT_EQ(Edit_Cell(figure, column::ID, "Kasten"), CellEdit::Written);
}

TEST_F(TableEditTest, TheFirstChangeWarnsOnceASessionAndLeavesTheCurrentRow) {
  const qint64 key = Add_Row(Text("Amsel"));
  Tbl.EditWarned = false;
  MessageScript messages("Vorsicht! - Veränderungen in der Tabelle können Fehler verursachen.");
  EXPECT_EQ(Edit_Cell(key, column::Eintrag, "Drossel"), CellEdit::Written);
  EXPECT_EQ(Edit_Cell(key, column::Eintrag, "Fink"), CellEdit::Written);
  const qint64 first = Add_Row(Text("Amsel")), second = Add_Row(Text("Fink"));
  int redraws = 0;
  const int number = events.ChangedEntriesWanted.Connect([&redraws] { ++redraws; });
  EXPECT_EQ(Edit_Cell(first, column::Xmap, "77"), CellEdit::Written);
  events.ChangedEntriesWanted.Disconnect(number);
  EXPECT_EQ(rsEntries->Key(), second);
  EXPECT_EQ(redraws, 1);
}

TEST_F(TableEditTest, DeletedRowsAreAskedOnceTakeTheirVerticesAlongAndComeBackWithUndo) {
  std::vector<qint64> keys;
  for (int i = 0; i < 40; ++i)
    keys.push_back(i % 5 == 0 ? Add_Area(QStringLiteral("Linie%1").arg(i)) : Add_Row(Text("T")));
  const qint64 header = Header();
  const QStringList before = Dump();
  MessageScript messages{{"Kopfzeile"}, {"Wiese löschen ?", MsgAnswer::No}, {"30 Einträge löschen ?", MsgAnswer::Yes}};
  EXPECT_FALSE(Delete_Rows({header}));
  EXPECT_FALSE(Delete_Rows({keys[0]}));
  EXPECT_EQ(Dump(), before);
  std::vector<qint64> chosen{keys.begin() + 5, keys.begin() + 35};
  chosen.push_back(header);
  ASSERT_TRUE(Delete_Rows(chosen));
  EXPECT_EQ(rsEntries->PositionOf(header), 0);
  EXPECT_EQ(Entry_Count(), 10);
  EXPECT_FALSE(dbEntries->HasTable("Linie10"));
  EXPECT_TRUE(dbEntries->HasTable("Linie0"));
  EXPECT_EQ(Menu("mnuReset").Caption, "Rückgängig: Zeilen löschen");
  messages.Expect("Karteneinträge wieder hergestellt.");
  Undo_Last();
  QStringList after = Dump();
  EXPECT_EQ(after.size(), before.size());
  for (qsizetype i = 0; i < after.size(); ++i)  // keys may be others
    EXPECT_EQ(after[i].mid(after[i].indexOf("ID:")), before[i].mid(before[i].indexOf("ID:")));
  EXPECT_EQ(Load_Vertices("Linie10").size(), 3U);
}

TEST_F(TableEditTest, ADamagedRowIsShownAndRepairedOrLeft) {
  const qint64 key = Add_Row(Text("Amsel"));
  Store_Foreign(key, "Xmap", "'links'");
  Store_Foreign(key, "VG", "70000");
  const QStringList damaged = Dump();
  MessageScript messages("Xmap:    \tlinks\n", MsgAnswer::No);
  Row_Changed(key);
  EXPECT_EQ(Dump(), damaged);
  Row_Changed(key);  // refused once: not asked again
  ASSERT_EQ(messages.Seen().size(), 1U);
  EXPECT_TRUE(messages.Seen()[0].text.endsWith("\n\nSoll FLURAX den fehlerhaften Datensatz reparieren?"));
  EXPECT_TRUE(messages.Seen()[0].text.contains("VG-Farbe:\t70000\n"));
  Store_Foreign(key, "Ymap", "'oben'");  // it is another damage now
  messages.Expect("reparieren?", MsgAnswer::Yes).Expect("wird reparier\nund auf Standartwerte gesetzt.");
  Row_Changed(key);
  rsEntries->SetBookmark(QString::number(key));
  EXPECT_FALSE(Is_Damaged(*rsEntries));
  EXPECT_EQ(Row(key).Eintrag, "Amsel");
}

TEST_F(TableEditTest, TheMapFillsTheWindowWithoutTheTableUnlessTheUserChoseOtherwise) {
  frmMDI.MapOpen = true;
  EXPECT_EQ(Text_Now("mnuDBGridOn"), "&Einblenden");
  Toggle_Table();
  EXPECT_EQ(Text_Now("mnuDBGridOn"), "&Ausblenden");
  Map.Maximized = true;  // by the user, over the table
  Map_Was_Maximized(true);
  EXPECT_FALSE(frmMDI.TblVisible);
  Map.Maximized = false;  // and back: the normal state is the user's
  Toggle_Table();
  Toggle_Table();
  EXPECT_FALSE(Map.Maximized);
  Toggle_Table();
  With_Box("Drücken Sie die Taste F4", Table_Moved_Off);
  EXPECT_EQ(Text_Now("mnuDBGridOn"), "&Liste einblenden");
  frmMDI.MapOpen = false;
}
