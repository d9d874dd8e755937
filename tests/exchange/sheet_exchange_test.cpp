#include "exchange/sheet_comparison.h"
#include "exchange/sheet_rows.h"
#include "exchange/sheet_source.h"
#include "workbook/workbook_package.h"

namespace {

const QString nasty = QString::fromUtf8("  =1+1 \"a\";<b>&\r\n zweite\tZeile ");

class SheetExchangeTest : public OpenTableTest {
 protected:
  void SetUp() override {
    OpenTableTest::SetUp();
    dbEntries->AddColumn("MapData", {"Status", FieldType::Text, 20});
    dbEntries->AddColumn("MapData", {"Wert", FieldType::Double, 0});
    rsEntries = Open_Entries(*dbEntries);
  }
  // Five texts as the workbook of the office program expects them.
  void Add_Texts() {
    for (const char* text : {"Uhu", "Rotmilan", "16", "=1+1", "-5 Ex."}) Add(Text(QString::fromUtf8(text), 10, 10));
    Put_Field(1, "Wert", 1.0 / 3);
    Put_Field(4, "Wert", 4.0);
    Put_Field(5, "Wert", 5.0);
    Put_Field(5, "Status", u"alt"_s);
  }
  static void Put_Field(int position, const QString& column, const Value& value) {
    rsEntries->MoveTo(position);
    Set_Field(column, value);
  }
  // Written into a workbook and read again.
  Sheet Round_Trip() {
    Workbook book(Path("KARTE.XLS"));
    book.Put(Sheet_Of_Rows(*rsEntries));
    book.Save();
    return Open_Workbook_To_Read(Path("KARTE.XLS"))->Read("MapData");
  }
  static void Put_Row(Sheet& sheet, int row, const QStringList& cells) {
    for (int i = 0; i < cells.size(); ++i)
      if (!cells[i].isNull()) sheet.Put(row, i + 1, cells[i]);
  }
  static SheetComparison Compare(const Sheet& sheet, int key = ownNumber, const QStringList& columns = {}) {
    SheetOrder order = Proposed_Order(*rsEntries, Titles_Of(sheet), key);
    std::erase_if(order.pairs, [&](const SheetPair& pair) {
      return !columns.isEmpty() && !columns.contains(rsEntries->Fields()[static_cast<size_t>(pair.column)].name);
    });
    return Compare_With_Sheet(*rsEntries, sheet, order);
  }
  static SheetTaken Take(const SheetComparison& comparison, bool withNewRows = false) {
    return Take_From_Sheet(*dbEntries, *rsEntries, comparison, withNewRows);
  }
  static QString Field_Text(int position, const QString& column) {
    rsEntries->MoveTo(position);
    return rsEntries->Text(column);
  }
  // What is different, refused, new and missing, as texts.
  static QStringList Told(const SheetComparison& comparison) {
    QStringList told;
    for (const auto& one : comparison.differences)
      told << u"%1 %2: %3 > %4"_s.arg(one.number)
                  .arg(rsEntries->Fields()[static_cast<size_t>(one.column)].name, Shown_Value(one.was),
                       Shown_Value(one.becomes));
    for (const auto& one : comparison.refused)
      told << u"Zeile %1 %2: %3"_s.arg(one.sheetRow).arg(one.column, one.reason.section(u' ', 0, 3));
    for (const auto& one : comparison.newRows) told << u"neu %1 %2"_s.arg(one.sheetRow).arg(one.text);
    for (const auto& one : comparison.missing) told << u"fehlt %1"_s.arg(one.number);
    return told;
  }
};

TEST_F(SheetExchangeTest, NothingIsDifferentAfterARoundTrip) {
  Add(Text(nasty));
  Add(Text(QString(QChar(160))));
  Add(Text(QString(79, u'ä')));
  Add(Text("007"));
  Add(Text("-12,5"));
  Add(Entry("Plan\u001FA1", 16));
  Add(Entry("Linie3 - P0100L1.0B1.0", 140));
  Add(Entry("Text>Flaeche2", -103, ""));
  Add({"Text", "Wert", "Arial", -0.1, 0, 15, -32768, 32767, 20});
  for (const double value : {1.0 / 3, 1e300, -0.0, 123456789.123456789}) {
    Add(Text("gleich"));
    Put_Field(rsEntries->RecordCount() - 1, "Wert", value);
  }
  const auto before = Rows_Of(*dbEntries);
  const Sheet sheet = Round_Trip();
  for (const int key : {ownNumber, column::ID, column::Eintrag}) EXPECT_EQ(Told(Compare(sheet, key)), QStringList());
  Take(Compare(sheet));
  EXPECT_EQ(Rows_Of(*dbEntries), before);
  EXPECT_EQ(sheet.Text(7, 14), "Planquadrat");
  EXPECT_EQ(sheet.Text(8, 14), "Linie, abgerundet, markiert");
  EXPECT_EQ(sheet.Text(9, 14), "Text mit Kreis, ausgeblendet, markiert");
  // A formula that the user types into a text column stays a text; the titles stay in sight.
  EXPECT_EQ(sheet.Style(2, 15).format, "@");
  const QByteArray part = workbook_inner::Package(Read_Bytes(Path("KARTE.XLS"))).Read("xl/worksheets/sheet1.xml");
  EXPECT_TRUE(part.contains("<pane ySplit=\"1\""));
}

// Saved by an office program: shared strings, parts with other numbers, dates, formulas, merged cells.
TEST_F(SheetExchangeTest, AWorkbookOfAnOfficeProgramIsUnderstood) {
  Add_Texts();
  const auto book = Open_Workbook_To_Read(u"" FLURAX_TEST_DATA "/workbook/austausch.xlsx"_s);
  EXPECT_EQ(Proposed_Sheet(book->SheetNames()), "MapData");
  const SheetComparison found = Compare(book->Read("MapData"));
  EXPECT_EQ(Told(found).join(u'\n'),
            "1 Status:  > 03.04.2024\n"
            "2 Eintrag: Rotmilan > Rot- milan\n2 Größe: 10 > 9,5\n2 Xmap: 10 > 15\n2 Status:  > RL 2\n2 Wert: 0 > \n"
            "3 Eintrag: 16 > 17\n3 Wert: 0 > 2,5\n"
            "4 Status:  > verbunden\n"
            "Zeile 4 Größe: In der Zelle steht\n"
            "Zeile 4 Xmap: Die Spalte 'Xmap' kann\n"
            "Zeile 4 Status: Die Formel ergibt einen\n"
            "Zeile 6 Status: Die Zelle ist mit\n"
            "neu 10 Neuer Fund");
  EXPECT_EQ(found.newRows[0].problem, "Ohne Xmap und Ymap hat der Eintrag keinen Ort in der Karte.");
  const SheetTaken taken = Take(found, true);
  EXPECT_EQ(std::tuple(taken.cells, taken.rows, taken.added), std::tuple(9, 4, 0));
  EXPECT_EQ(Field_Text(2, "Eintrag"), "Rot-\r\nmilan");
  EXPECT_EQ(Field_Text(5, "Status"), "alt");
  EXPECT_EQ(Compare(book->Read("MapData")).differences.size(), 0U);
}

TEST_F(SheetExchangeTest, WhatCannotBeStoredIsRefused) {
  Add(Text("Uhu"));
  Add(Entry("Linie3", 4));
  Sheet sheet = Round_Trip();
  const auto refused = [&](int row, int column, const CellValue& value) {
    Sheet changed = sheet;
    changed.Put(row, column, value);
    const SheetComparison found = Compare(changed);
    EXPECT_EQ(found.differences.size(), 0U) << Cell_Name(row, column);
    return found.refused.size() == 1 ? found.refused[0].column + u": "_s + found.refused[0].reason : u"?"_s;
  };
  EXPECT_EQ(refused(2, 3, QString(80, u'x')),
            "Eintrag: Der Text ist zu lang: 80 Zeichen. Die Spalte 'Eintrag' kann höchstens 79 Zeichen aufnehmen.");
  EXPECT_EQ(refused(2, 9, QString("rechts")), "Xmap: In der Zelle steht keine Zahl.");
  EXPECT_EQ(refused(2, 9, 1.5), "Xmap: Die Spalte kann nur ganze Zahlen aufnehmen.");
  EXPECT_EQ(refused(2, 9, QString()), "Xmap: Die Zelle ist leer.");
  EXPECT_EQ(refused(2, 6, 16.0), "VG: Die Farbe kann nur Werte zwischen 0-15 annehmen.");
  EXPECT_EQ(refused(3, 2, QString("Linie4")).left(35), "ID: Unter dem Namen 'Linie3' sind d");
  // A text that is a number is one.
  sheet.Put(2, 9, QString(" 17 "));
  sheet.Put(2, 16, QString("1,5"));
  EXPECT_EQ(Told(Compare(sheet)), QStringList({"1 Xmap: 10 > 17", "1 Wert: 0 > 1,5"}));
}

// A formula that nobody has computed holds nothing, which is not the same as an empty cell. A sheet that a user has
// bound together as a whole is not emptied row by row, and takes no time.
TEST_F(SheetExchangeTest, FormulasWithoutAResultAndMergedCellsAreRefused) {
  for (int i = 0; i < 3; ++i) Add(Text("Uhu"));
  Put_Field(1, "Status", u"alt"_s);
  Sheet sheet = Round_Trip();
  workbook_inner::Package package(Read_Bytes(Path("KARTE.XLS")));
  const QString part = "xl/worksheets/sheet1.xml";
  QByteArray xml = package.Read(part);
  const QByteArray cell = "alt</t></is></c>";
  const qsizetype end = xml.indexOf(cell) + cell.size(), start = xml.lastIndexOf("<c ", end);
  xml.replace(start, end - start, "<c r=\"O2\"><f>A1</f></c>");
  package.Put(part, xml);
  Replace_File(Path("Formel.xlsx"), package.Bytes());
  EXPECT_EQ(Told(Compare(Open_Workbook_To_Read(Path("Formel.xlsx"))->Read("MapData"))),
            QStringList("Zeile 2 Status: Die Formel hat kein"));
  sheet.Put(Sheet::maxRow, 1, QString("Ende"));
  sheet.Merge({2, 3, Sheet::maxRow, Sheet::maxColumn});
  EXPECT_EQ(Told(Compare(sheet, ownNumber, {"Eintrag"})),
            QStringList({"Zeile 3 Eintrag: Die Zelle ist mit", "Zeile 4 Eintrag: Die Zelle ist mit",
                         u"neu %1 "_s.arg(Sheet::maxRow)}));
}

TEST_F(SheetExchangeTest, TitlesMayBeElsewhereAndTheKeyMustBeThere) {
  Add_Texts();
  // A heading above, columns in another order and case, titles that the table does not have.
  Sheet sheet("Funde");
  Put_Row(sheet, 3, {{}, " status ", "NR.", "Finder"});
  Put_Row(sheet, 4, {{}, "RL 3", "2"});
  Put_Row(sheet, 6, {{}, "RL 1"});
  sheet.Put(6, 3, 77.0);
  Put_Row(sheet, 7, {{}, "ohne"});
  Put_Row(sheet, 8, {{}, "falsch", "zwei"});
  EXPECT_EQ(Told(Compare(sheet)), QStringList({"2 Status:  > RL 3", "neu 6 ", "neu 7 ", "neu 8 ", "fehlt 1", "fehlt 3",
                                               "fehlt 4", "fehlt 5"}));
  const SheetOrder byText = Proposed_Order(*rsEntries, Titles_Of(sheet), column::Eintrag);
  EXPECT_EQ(byText.keyColumn, 0);
  EXPECT_EQ(Error_Of([&] { Compare_With_Sheet(*rsEntries, sheet, byText); }), workbook_errors::bounds);
  EXPECT_EQ(Titles_Of(Sheet("leer")).row, 0);
}

// One row of a list of species speaks for all entries of that name.
TEST_F(SheetExchangeTest, RowsWithTheSameKeyAreToldApart) {
  for (const char* text : {"Uhu", "Uhu", "Uhu", "Star", "Star"}) Add(Text(text));
  Sheet list("Arten");
  Put_Row(list, 1, {"Eintrag", "Status"});
  Put_Row(list, 2, {"Uhu", "3"});
  EXPECT_EQ(Told(Compare(list, column::Eintrag)),
            QStringList({"1 Status:  > 3", "2 Status:  > 3", "3 Status:  > 3", "fehlt 4", "fehlt 5"}));
  // Said twice it is still the same.
  Put_Row(list, 3, {"Uhu", "3"});
  EXPECT_EQ(Compare(list, column::Eintrag).differences.size(), 3U);
  list.Put(3, 2, QString("4"));
  EXPECT_EQ(Told(Compare(list, column::Eintrag)).mid(0, 2),
            QStringList({"Zeile 2 Eintrag: Der Schlüssel steht in", "Zeile 3 Eintrag: Der Schlüssel steht in"}));
  // Of rows that have changed places one change can be told, two cannot.
  const Sheet whole = Round_Trip();
  Sheet turned("MapData");
  for (int row = 1; row <= 6; ++row)
    for (int column = 1; column <= 16; ++column) turned.Put(row == 1 ? 1 : 8 - row, column, whole.Value(row, column));
  EXPECT_EQ(Told(Compare(turned, column::Eintrag)), QStringList());
  turned.Put(5, 15, QString("neu"));
  const SheetComparison one = Compare(turned, column::Eintrag, {"Status"});
  EXPECT_EQ(one.differences.size(), 1U);
  turned.Put(6, 15, QString("auch"));
  EXPECT_EQ(Compare(turned, column::Eintrag, {"Status"}).refused.size(), 2U);
}

TEST_F(SheetExchangeTest, NewRowsJoinAndANumberOfAnotherEntryIsNoticed) {
  Add(Text("Uhu"));
  Add(Entry("Flaeche1", 4));
  const Sheet before = Round_Trip();
  Sheet sheet = before;
  // A row that was copied in the sheet: the number is there twice.
  for (int column = 1; column <= 16; ++column) sheet.Put(4, column, sheet.Value(2, column));
  sheet.Put(4, 3, QString("Uhu 2"));
  for (int column = 2; column <= 16; ++column) sheet.Put(5, column, sheet.Value(3, column));
  const SheetComparison found = Compare(sheet);
  EXPECT_EQ(Told(found), QStringList({"neu 4 Uhu 2", "neu 5 x"}));
  EXPECT_EQ(found.Appendable(), 1);
  EXPECT_EQ(found.newRows[1].problem.left(11), "ID: Nur Tex");
  EXPECT_EQ(Take(found).added, 0);
  EXPECT_EQ(Take(found, true).added, 1);
  EXPECT_EQ(Texts(), QStringList({"Uhu", "x", "Uhu 2"}));
  // The entries have changed places since, and the header row has gone down for it.
  dbEntries->Execute("UPDATE MapData SET rowid = -1000 WHERE rowid = 1");
  dbEntries->Execute("UPDATE MapData SET rowid = -1 WHERE rowid = 2");
  dbEntries->Execute("UPDATE MapData SET rowid = 2 WHERE rowid = 3");
  dbEntries->Execute("UPDATE MapData SET rowid = 3 WHERE rowid = -1");
  rsEntries->Requery();
  const SheetComparison moved = Compare(before, ownNumber, {"Eintrag", "Wert"});
  EXPECT_EQ(moved.differences.size(), 0U);
  ASSERT_EQ(moved.refused.size(), 2U);
  EXPECT_EQ(moved.refused[0].reason, "Unter der Nummer 1 steht in der Karte ein anderer Eintrag: Flaeche1");
}

TEST_F(SheetExchangeTest, AFailureTakesEverythingBack) {
  Add_Texts();
  Sheet sheet = Round_Trip();
  for (int row = 2; row <= 6; ++row) sheet.Put(row, 15, QString("neu"));
  const SheetComparison found = Compare(sheet);
  ASSERT_EQ(found.differences.size(), 5U);
  rsEntries->MoveLast();
  rsEntries->Delete();  // the last one of them has gone meanwhile
  EXPECT_NE(Error_Of([&] { Take(found); }), 0);
  EXPECT_EQ(Field_Text(1, "Status"), "");
}

TEST_F(SheetExchangeTest, SourcesThatAreNoneAreNamed) {
  EXPECT_EQ(Error_Of([&] { Open_Workbook_To_Read(Path("fehlt.xls")); }), errors::fileNotFound);
  Put("alt.xls", "\xD0\xCF\x11\xE0 alt");
  EXPECT_TRUE(Raised([&] { Open_Workbook_To_Read(Path("alt.xls")); }).text.contains(u"alte Format"_s));
  EXPECT_EQ(Error_Of([&] { Open_Workbook_To_Read(folder.path()); }), workbook_errors::damaged);
  // The open table is read all the same, with what still waits in its log.
  Add(Text("eben erst"));
  TableCopy copy(TableFile);
  EXPECT_EQ(Texts_Of(copy.Rows()), QStringList("eben erst"));
  EXPECT_EQ(Error_Of([&] { TableCopy(Path("fehlt.mdb")); }), errors::fileNotFound);
}

}  // namespace
