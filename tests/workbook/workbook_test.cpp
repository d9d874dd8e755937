#include "workbook/workbook.h"

#include "workbook/workbook_dates.h"
#include "workbook/workbook_package.h"

using workbook_inner::Package;

namespace {

// Parts by hand of a workbook that another program might have made: elements with a prefix, a chart sheet, a sheet with
// a pivot table and a drawing, names, a chain of formulas.
const std::vector<std::pair<const char*, const char*>> foreignParts = {
    {"[Content_Types].xml",
     R"(<Types xmlns="http://schemas.openxmlformats.org/package/2006/content-types"><Default Extension="xml" ContentType="application/xml"/><Override PartName="/xl/buch.xml" ContentType="main"/><Override PartName="/xl/calcChain.xml" ContentType="chain"/><Override PartName="/xl/worksheets/sheet1.xml" ContentType="sheet"/></Types>)"},
    {"_rels/.rels",
     R"(<Relationships xmlns="http://schemas.openxmlformats.org/package/2006/relationships"><Relationship Id="a" Type="http://purl.oclc.org/ooxml/officeDocument/relationships/officeDocument" Target="xl/buch.xml"/></Relationships>)"},
    {"xl/buch.xml",
     R"(<x:workbook xmlns:x="urn:main" xmlns:q="http://purl.oclc.org/ooxml/officeDocument/relationships"><x:bookViews><x:workbookView activeTab="2" firstSheet="1"/></x:bookViews><x:sheets><x:sheet name="Diagramm" sheetId="7" q:id="rId1"/><x:sheet name="Linien" sheetId="3" state="hidden" q:id="rId2"/><x:sheet name="Pivot" sheetId="9" q:id="rId9"/></x:sheets><x:definedNames><x:definedName name="alle">Pivot!$A$1</x:definedName><x:definedName name="Druck" localSheetId="1">Linien!$A$1</x:definedName><x:definedName name="Druck" localSheetId="2">Pivot!$A$1</x:definedName></x:definedNames><x:extLst/></x:workbook>)"},
    {"xl/_rels/buch.xml.rels",
     R"(<Relationships xmlns="http://schemas.openxmlformats.org/package/2006/relationships"><Relationship Id="rId1" Type="http://purl.oclc.org/ooxml/officeDocument/relationships/chartsheet" Target="chartsheets/sheet1.xml"/><Relationship Id="rId2" Type="http://purl.oclc.org/ooxml/officeDocument/relationships/worksheet" Target="/xl/worksheets/sheet1.xml"/><Relationship Id="rId9" Type="http://purl.oclc.org/ooxml/officeDocument/relationships/worksheet" Target="worksheets/../worksheets/mit%20Pivot.xml"/><Relationship Id="rId3" Type="http://purl.oclc.org/ooxml/officeDocument/relationships/calcChain" Target="calcChain.xml"/><Relationship Id="rId4" Type="http://purl.oclc.org/ooxml/officeDocument/relationships/styles" Target="styles.xml"/></Relationships>)"},
    {"xl/styles.xml",
     R"(<x:styleSheet xmlns:x="urn:main"><x:fonts count="2"><x:font><x:sz val="11"/><x:name val="Calibri"/></x:font><x:font><x:b/></x:font></x:fonts><x:fills count="1"><x:fill/></x:fills><x:borders count="1"><x:border/></x:borders><x:cellXfs count="2"><x:xf numFmtId="0" fontId="0"/><x:xf numFmtId="0" fontId="1"/></x:cellXfs><x:dxfs count="0"/></x:styleSheet>)"},
    {"xl/worksheets/sheet1.xml",
     R"(<x:worksheet xmlns:x="urn:main"><x:sheetData><x:row r="1"><x:c r="A1"><x:f>1+1</x:f><x:v>2</x:v></x:c></x:row></x:sheetData></x:worksheet>)"},
    {"xl/worksheets/_rels/sheet1.xml.rels", "<Relationships/>"},
    {"xl/worksheets/mit Pivot.xml",
     R"(<x:worksheet xmlns:x="urn:main"><x:sheetViews><x:sheetView tabSelected="1"/></x:sheetViews><x:sheetData/><x:drawing/></x:worksheet>)"},
    {"xl/worksheets/_rels/mit Pivot.xml.rels", "<Relationships> </Relationships>"},
    {"xl/calcChain.xml", "<calcChain/>"},
    {"xl/chartsheets/sheet1.xml", "<chartsheet>\r\n\t</chartsheet>"},
    {"xl/charts/chart1.xml", "\xEF\xBB\xBF<c:chart   x='1'></c:chart>"},
    {"xl/pivotTables/pivotTable1.xml", "<pivot/>"},
    {"xl/pivotCache/records.bin", "\x01\x02 no XML \xFF"},
};

class WorkbookTest : public FolderTest {
 protected:
  void TearDown() override { File_Write_Fault = nullptr; }
  QString Path(const QString& name = u"KARTE.XLS"_s) const { return FolderTest::Path(name); }
  QString Put_Foreign() const {
    Package package({});
    for (const auto& [name, content] : foreignParts) package.Put(QString::fromUtf8(name), content);
    Replace_File(Path(), package.Bytes());
    return Path();
  }
  static Sheet Plain(const QString& name, const QString& text = QStringLiteral("x")) {
    Sheet sheet(name);
    sheet.Put(1, 1, text);
    return sheet;
  }
  static void Write(const QString& path, const Sheet& sheet) {
    Workbook book(path);
    book.Put(sheet);
    book.Save();
  }
  static QString Part(const QString& path, const QString& part) {
    return QString::fromUtf8(Package(Read_Bytes(path)).Read(part));
  }
};

}  // namespace

TEST_F(WorkbookTest, CellsAndLooksComeBack) {
  CellStyle look{.font = "Courier New",
                 .size = 14,
                 .bold = true,
                 .italic = true,
                 .underline = true,
                 .color = qRgb(0, 0, 255),
                 .fill = qRgb(255, 255, 128),
                 .border = qRgb(200, 0, 1),
                 .align = CellAlign::Right,
                 .wrap = true,
                 .format = "### ### ##0.00\" <&>\""};
  Sheet sheet("Flächen & <Säume> 'x");
  sheet.Put(3, 2, -1234567.891, look);
  sheet.Put(1, 28, 0.1);
  sheet.Put(2, 1, QString(), CellStyle{.fill = qRgb(1, 2, 3)});
  sheet.Put(4, 1, std::numeric_limits<double>::quiet_NaN());
  sheet.SetColumnWidth(2, 33.5);
  Write(Path(), sheet);
  const Sheet back = Workbook(Path()).Read("flächen & <säume> 'X");
  EXPECT_EQ(back.name, sheet.name);
  EXPECT_EQ(back.Number(3, 2), -1234567.891);
  EXPECT_EQ(back.Style(3, 2), look);
  EXPECT_EQ(back.Number(1, 28), 0.1);
  EXPECT_EQ(back.Style(2, 1).fill, qRgb(1, 2, 3));
  EXPECT_TRUE(std::holds_alternative<std::monostate>(back.Value(4, 1)));
  EXPECT_EQ(back.Widths().at(2), 33.5);
  EXPECT_EQ(Error_Of([&] { sheet.Put(1, Sheet::maxColumn + 1, 1.0); }), workbook_errors::bounds);
  EXPECT_EQ(Error_Of([&] { sheet.Put(0, 1, 1.0); }), workbook_errors::bounds);
}

TEST_F(WorkbookTest, TextsStayTexts) {
  const QStringList texts = {
      "=1+1",    "+49 911",         "-",   "@SUM(A1)",    "  vorn und hinten  ",        "a<b>&\"c\"'",
      "_x000D_", "a_x0041__x0042_", "007", "Жук 🦋", QString(Sheet::maxText, u'ä')};
  Sheet sheet("Texte");
  for (int i = 0; i < texts.size(); ++i) sheet.Put(i + 1, 1, texts[i]);
  // Control characters, halves of characters and what XML cannot hold vanish; line ends become one kind and wrap.
  sheet.Put(1, 2, QString("a\u0001b\u001Fc\tx") + QChar(0xD800) + QChar(0xFFFE) + QChar(u'\0') + "d");
  sheet.Put(2, 2, QString("eins\r\nzwei\rdrei\nvier"));
  sheet.Put(3, 2, QString(Sheet::maxText - 1, u'x') + QString::fromUtf8("🦋"));
  Write(Path(), sheet);
  const Sheet back = Workbook(Path()).Read("Texte");
  for (int i = 0; i < texts.size(); ++i) EXPECT_EQ(std::get<QString>(back.Value(i + 1, 1)), texts[i]);
  EXPECT_EQ(back.Text(1, 2), "abc\txd");
  EXPECT_EQ(back.Text(2, 2), "eins\nzwei\ndrei\nvier");
  EXPECT_TRUE(back.Style(2, 2).wrap);
  EXPECT_EQ(back.Text(3, 2), QString(Sheet::maxText - 1, u'x'));
  const QString xml = Part(Path(), "xl/worksheets/sheet1.xml");
  EXPECT_FALSE(xml.contains("<f"));
  // Edited by the user, what looks like a formula stays a text as well.
  const QRegularExpression cell(R"x(<c r="A1" s="(\d+)")x");
  const int style = cell.match(xml).captured(1).toInt();
  const QString styles = Part(Path(), "xl/styles.xml");
  EXPECT_TRUE(styles.section("<cellXfs", 1).section("<xf ", style + 1, style + 1).contains("quotePrefix=\"1\""));
}

TEST(WorkbookDateTest, DatesAreToldByTheirFormat) {
  for (const char* date : {"dd.mm.yyyy", "[$-407]d. mmm yy", "h:mm", "[hh]:mm", "mm-dd-yy", "\\a yyyy", "AM/PM"})
    EXPECT_TRUE(Is_Date_Format(date)) << date;
  for (const char* number :
       {"", "General", "0.00", "#,##0 \"Stunden\"", "[Red]0", "0\\d", "0_d", "0.00E+00", "@", "\"d"})
    EXPECT_FALSE(Is_Date_Format(number)) << number;
  EXPECT_EQ(Date_Text(45385), "03.04.2024");
  EXPECT_EQ(Date_Text(45385.604166666664), "03.04.2024 14:30");
  EXPECT_EQ(Date_Text(45385.99999999), "04.04.2024");
  EXPECT_EQ(Date_Text(0.5000116), "12:00:01");
  EXPECT_EQ(Date_Text(2958465), "31.12.9999");
  for (const double none : {-1.0, 3e6, std::numeric_limits<double>::quiet_NaN()}) EXPECT_EQ(Date_Text(none), "");
}

// Days counted from 1904 on, an empty text as the result of a formula, several rows and cells that stay together.
TEST_F(WorkbookTest, WhatOtherProgramsPutIntoCellsIsTold) {
  Sheet sheet("Blatt");
  sheet.Put(1, 1, 43923.0, CellStyle{.format = "dd.mm.yyyy"});
  sheet.Put(1, 2, 43923.0);
  sheet.frozenRows = 2;
  sheet.Merge({3, 1, 5, 2});
  Write(Path(), sheet);
  Package package(Read_Bytes(Path()));
  QByteArray xml = package.Read("xl/worksheets/sheet1.xml"), workbook = package.Read("xl/workbook.xml");
  EXPECT_TRUE(xml.contains("<pane ySplit=\"2\" topLeftCell=\"A3\""));
  xml.replace("</sheetData>", "<row r=\"2\"><c r=\"C2\" t=\"str\"><f>\"\"</f><v></v></c></row></sheetData>");
  package.Put("xl/worksheets/sheet1.xml", xml);
  package.Put("xl/workbook.xml", workbook.replace("<bookViews>", "<workbookPr date1904=\"1\"/><bookViews>"));
  Replace_File(Path(), package.Bytes());
  const Sheet back = Workbook(Path()).Read("Blatt");
  EXPECT_EQ(std::tuple(Date_Text(back.Number(1, 1)), back.Number(1, 2)), std::tuple("03.04.2024", 43923.0));
  EXPECT_EQ(back.Flaw(2, 3), CellFlaw::None);
  ASSERT_EQ(back.Merges().size(), 1U);
  EXPECT_EQ(std::pair(back.Merges()[0].row2, back.Merges()[0].column2), std::pair(5, 2));
}

TEST_F(WorkbookTest, WrappedRowsGetTheRoomTheyNeed) {
  Sheet sheet("Höhen");
  const CellStyle wrapped{.wrap = true}, large{.size = 20, .wrap = true};
  sheet.SetColumnWidth(1, 20);
  sheet.Put(1, 1, QString("kurz"), wrapped);
  sheet.Put(2, 1, QString("Große Höckerschrecke am Hang"), wrapped);  // 28 letters in 20
  sheet.Put(3, 1, QString("Große Höckerschrecke am Hang"), large);
  sheet.Put(4, 1, QString("Große Höckerschrecke am Hang"));  // not wrapped: runs over
  sheet.Put(5, 1, QString("Große Höckerschrecke am Hang"), wrapped);
  sheet.Merge(5, 1, 3);
  sheet.Put(6, 1, QString(70, u'x'), wrapped);  // one word: broken
  sheet.Put(7, 1, QString("a\nb\nc"));
  EXPECT_FALSE(sheet.RowHeight(1));
  EXPECT_FALSE(sheet.RowHeight(4));
  EXPECT_FALSE(sheet.RowHeight(5));
  EXPECT_NEAR(*sheet.RowHeight(2), 25.6, 0.1);
  EXPECT_NEAR(*sheet.RowHeight(3), 102.4, 0.1);  // ten letters a line: "Große", "Höckerschr", "ecke am", "Hang"
  EXPECT_NEAR(*sheet.RowHeight(6), 51.2, 0.1);
  EXPECT_NEAR(*sheet.RowHeight(7), 38.4, 0.1);
  sheet.SetRowHeight(7, 99);
  Write(Path(), sheet);
  const QString xml = Part(Path(), "xl/worksheets/sheet1.xml");
  EXPECT_TRUE(xml.contains(R"(<row r="7" ht="99" customHeight="1">)"));
  EXPECT_TRUE(xml.contains(R"(<row r="1"><c)"));
  EXPECT_TRUE(xml.contains(R"(<mergeCell ref="A5:C5"/>)"));
}

TEST_F(WorkbookTest, OtherPartsStayByteForByte) {
  const QString path = Put_Foreign();
  Sheet sheet = Plain("LINIEN", "neu");  // found in any case; the file's name as well
  sheet.Put(2, 1, 1.5, CellStyle{.bold = true, .format = "0.0"});
  Write(Path("karte.xls"), sheet);
  Write(path, Plain("Matrix"));
  const Package now(Read_Bytes(path));
  const QStringList changed = {"[Content_Types].xml",      "xl/buch.xml",
                               "xl/_rels/buch.xml.rels",   "xl/styles.xml",
                               "xl/worksheets/sheet1.xml", "xl/worksheets/_rels/sheet1.xml.rels",
                               "xl/calcChain.xml"};
  for (const auto& [name, content] : foreignParts) {
    if (!changed.contains(QString(name))) {
      EXPECT_EQ(now.Read(name), QByteArray(content)) << name;
    }
  }
  EXPECT_FALSE(now.Has("xl/calcChain.xml"));
  EXPECT_FALSE(now.Has("xl/worksheets/_rels/sheet1.xml.rels"));
  const QString types = now.Read("[Content_Types].xml"), relations = now.Read("xl/_rels/buch.xml.rels");
  EXPECT_FALSE(types.contains("calcChain") || relations.contains("calcChain"));
  EXPECT_TRUE(types.contains(R"(PartName="/xl/worksheets/sheet2.xml")"));
  const QString book = now.Read("xl/buch.xml");
  // Renewed and shown, behind the others; names follow their sheets, the former's own are gone; the pivot sheet says of
  // itself that it is selected, so it stays the one that is shown.
  EXPECT_TRUE(book.contains(
      R"(<x:sheet name="Diagramm" sheetId="7" q:id="rId1"/><x:sheet name="Pivot" sheetId="9" q:id="rId9"/><x:sheet name="Linien" sheetId="3" q:id="rId2"/><x:sheet name="Matrix" sheetId="10" q:id="rId3"/></x:sheets>)"));
  EXPECT_TRUE(book.contains(R"(activeTab="1" firstSheet="2")"));
  EXPECT_EQ(book.count("localSheetId"), 1);
  EXPECT_TRUE(book.contains(R"(localSheetId="1">Pivot!$A$1)"));
  EXPECT_TRUE(book.contains(R"(</x:definedNames><x:calcPr fullCalcOnLoad="1"/><x:extLst)"));
  EXPECT_TRUE(Part(path, "xl/worksheets/sheet1.xml").contains("<worksheet xmlns=\"urn:main\">"));
  const Sheet again = Workbook(path).Read("Linien");
  EXPECT_EQ(again.Text(1, 1), "neu");
  EXPECT_EQ(std::tuple(again.Style(2, 1).bold, again.Style(2, 1).format), std::tuple(true, "0.0"));
  EXPECT_TRUE(Part(path, "xl/styles.xml").contains(R"(<x:xf numFmtId="0" fontId="1"/><x:xf )"));
}

TEST_F(WorkbookTest, RunningTwiceReplacesAndGrowsNothing) {
  Sheet sheet = Plain("Linien");
  for (int i = 0; i < 20; ++i)
    sheet.Put(i + 2, 1, 1.0 * i,
              CellStyle{.color = qRgb(i, 0, 0), .border = qRgb(0, i, 0), .format = "0." + QString(i, u'0')});
  Write(Path(), Plain("Notizen", "mein"));
  Write(Path(), sheet);
  Write(Path(), sheet);
  const QString styles = Part(Path(), "xl/styles.xml");
  const qint64 size = Read_Bytes(Path()).size();
  for (int run = 0; run < 3; ++run) Write(Path(), sheet);
  EXPECT_EQ(Part(Path(), "xl/styles.xml"), styles);
  EXPECT_EQ(Read_Bytes(Path()).size(), size);
  const Workbook book(Path());
  EXPECT_EQ(book.SheetNames(), (QStringList{"Notizen", "Linien"}));
  EXPECT_EQ(book.Read("Notizen").Text(1, 1), "mein");
  EXPECT_EQ(Names(), QStringList{"KARTE.XLS"});
}

TEST_F(WorkbookTest, ReadsAndKeepsWhatAnOfficeProgramSaved) {
  const QByteArray sample = Read_Bytes(FLURAX_TEST_DATA "/workbook/buero.xlsx");
  Replace_File(Path(), sample);
  {
    Workbook book(Path());
    EXPECT_EQ(book.SheetNames(), (QStringList{"Tabelle1", "Tabelle2", "Auswertung"}));
    const Sheet sheet = book.Read("Tabelle1");
    EXPECT_EQ(sheet.Text(1, 1), "Größe");
    EXPECT_EQ(sheet.Style(1, 1).color, qRgb(255, 0, 0));
    EXPECT_EQ(sheet.Style(1, 1).fill, qRgb(255, 255, 0));
    EXPECT_TRUE(sheet.Style(1, 1).bold);
    EXPECT_EQ(sheet.Number(1, 3), 46156);  // a day
    EXPECT_EQ(sheet.Style(1, 3).format, "dd\\.mm\\.yyyy");
    EXPECT_EQ(sheet.Number(2, 2), 25);
    EXPECT_EQ(sheet.Text(2, 3), "Größe x");
    EXPECT_EQ(sheet.Text(3, 1), "zwei\nZeilen  & Teil");
    EXPECT_EQ(sheet.Text(3, 3), "#DIV/0!");
    EXPECT_TRUE(book.IsEmpty("Tabelle2"));
    EXPECT_EQ(Error_Of([&] { book.Read("fehlt"); }), 9);
    book.Put(Plain("Flächen"));
    book.RemoveEmpty("Tab");  // the one with cells stays
    book.Save();
  }
  EXPECT_EQ(Workbook(Path()).SheetNames(), (QStringList{"Tabelle1", "Auswertung", "Flächen"}));
  const Package before(sample), after(Read_Bytes(Path()));
  for (const char* part : {"xl/worksheets/sheet1.xml", "xl/worksheets/sheet3.xml", "xl/sharedStrings.xml",
                           "docProps/app.xml", "docProps/core.xml", "_rels/.rels"})
    EXPECT_EQ(after.Read(part), before.Read(part)) << part;
  EXPECT_EQ(Workbook(Path()).Read("Tabelle1").Style(1, 1).fill, qRgb(255, 255, 0));
}

TEST_F(WorkbookTest, OnlyEmptySheetsGo) {
  // Of the sheet, with a relationship part if it begins with "!".
  const std::pair<const char*, bool> cases[] = {
      {"<sheetData/>", true},
      {"<sheetPr/><sheetViews/><sheetData><row r='1' ht='20'/></sheetData><pageMargins/>", true},
      {"<sheetData><row><c/></row></sheetData>", false},  // coloured by the user, say
      {"<sheetData/><drawing/>", false},
      {"!<sheetData/>", false},
      {"<sheetData/><conditionalFormatting/>", false}};
  for (const auto& [content, empty] : cases) {
    Write(Path(), Plain("Tab_x"));
    Package package(Read_Bytes(Path()));
    const QByteArray text(content);
    package.Put("xl/worksheets/sheet1.xml", "<worksheet>" + text.mid(text.startsWith('!')) + "</worksheet>");
    if (text.startsWith('!')) package.Put("xl/worksheets/_rels/sheet1.xml.rels", "<Relationships/>");
    Replace_File(Path(), package.Bytes());
    Workbook book(Path());
    EXPECT_EQ(book.IsEmpty("Tab_x"), empty) << content;
    book.RemoveEmpty("Tab");
    EXPECT_TRUE(book.HasSheet("Tab_x")) << "the last sheet";
    book.Put(Plain("Linien"));
    book.RemoveEmpty("Tab");
    EXPECT_EQ(book.HasSheet("Tab_x"), !empty) << content;
    Kill(Path());
  }
}

TEST_F(WorkbookTest, ADamagedFileIsToldAndLeft) {
  Write(Path(), Plain("Linien"));
  const QByteArray whole = Read_Bytes(Path());
  Package torn(whole), headless(whole), foreign(whole);
  torn.Put("xl/workbook.xml", "<workbook><sheets>");
  headless.Remove("xl/_rels/workbook.xml.rels");
  foreign.Put("xl/workbook.xml", "<html/>");
  QByteArray flipped = whole;
  const qsizetype data = flipped.indexOf("sheet1.xml") + 60;
  flipped[data] = static_cast<char>(flipped[data] ^ 0x55);
  const std::pair<const char*, QByteArray> cases[] = {{"cut", whole.left(whole.size() / 2)},
                                                      {"empty", ""},
                                                      {"text", "Art;Anzahl\n"},
                                                      {"torn XML", torn.Bytes()},
                                                      {"a page", foreign.Bytes()},
                                                      {"zip head", "PK\x03\x04"},
                                                      {"no relations", headless.Bytes()},
                                                      {"a changed bit", flipped}};
  for (const auto& [what, bytes] : cases) {
    Replace_File(Path(), bytes);
    EXPECT_THAT(Raised([&] {
                  const Workbook book(Path());
                  book.Read("Linien");
                }),
                Tells(workbook_errors::damaged, {"beschädigt"}))
        << what;
    EXPECT_EQ(Read_Bytes(Path()), bytes) << what;
  }
}

// Numbers at the ends of their range name no entry of a list; they must not be counted on from.
TEST_F(WorkbookTest, NumbersOfNothingAreReadAsNothing) {
  Write(Path(), Plain("Linien"));
  const QByteArray whole = Read_Bytes(Path());
  for (const QByteArray& number : {"-2147483648"_ba, "2147483647"_ba, "99999999999"_ba, "x"_ba}) {
    Package book(whole);
    book.Put("xl/styles.xml",
             "<styleSheet><fonts><font/></fonts><fills><fill/></fills><borders><border/></borders><cellXfs><xf "
             "numFmtId='N' fontId='N' fillId='N' borderId='N'/></cellXfs></styleSheet>"_ba.replace('N', number));
    const QByteArray sheet = book.Read("xl/worksheets/sheet1.xml");
    book.Put("xl/worksheets/sheet1.xml",
             QByteArray(sheet).replace("<sheetData", "<cols><col min=\"" + number + "\" max=\"" + number +
                                                         "\" width=\"9\"/></cols><sheetData"));
    Replace_File(Path(), book.Bytes());
    EXPECT_EQ(Workbook(Path()).Read("Linien").Text(1, 1), "x") << number.toStdString();
  }
}

TEST_F(WorkbookTest, NothingIsLostWhenItCannotBeWritten) {
  const QString path = Put_Foreign();
  const QByteArray before = Read_Bytes(path);
  const auto fails = [&] { return Error_Of([&] { Write(path, Plain("Linien")); }); };
  for (const int fault : {errors::diskFull, errors::noPermission}) {
    File_Write_Fault = [fault](const QString&, qint64) { return fault; };
    EXPECT_EQ(fails(), fault);
  }
  File_Write_Fault = nullptr;
  Write_Lines(Path(".~lock.KARTE.XLS#"), {",mueller,rechner,14.05.2026 08:00,file:///home;"});
  EXPECT_THAT(Raised([&] { Write(path, Plain("Linien")); }),
              Tells(workbook_errors::openElsewhere, {"mueller", "14.05.2026"}));
  Kill(Path(".~lock.KARTE.XLS#"));
  {
    // Saved elsewhere between reading and writing.
    Workbook book(path);
    book.Put(Plain("Linien"));
    Write(path, Plain("Notizen"));
    EXPECT_EQ(Error_Of([&] { book.Save(); }), workbook_errors::changed);
    EXPECT_TRUE(Workbook(path).HasSheet("Notizen"));
    Replace_File(path, before);
  }
  // Nobody can make files there, the administrator included.
  EXPECT_EQ(Error_Of([&] { Write("/sys/KARTE.XLS", Plain("Linien")); }), errors::noPermission);
  EXPECT_EQ(Error_Of([&] { Write(Path("weg/KARTE.XLS"), Plain("Linien")); }), errors::pathNotFound);
  EXPECT_EQ(Read_Bytes(path), before);
  EXPECT_EQ(Names(), QStringList{"KARTE.XLS"});
}

TEST_F(WorkbookTest, AnOldFileIsPutAside) {
  const QByteArray old = QByteArray("\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1", 8) + QByteArray(504, 'o');
  Replace_File(Path(), old);
  Replace_File(Path("karte_ALT.xls"), "belegt");
  {
    Workbook book(Path());
    EXPECT_TRUE(book.IsNew());
    EXPECT_EQ(book.AsidePath(), Path("KARTE_alt2.XLS"));
    book.Save();  // nothing to write: it stays where it is
    EXPECT_EQ(Read_Bytes(Path()), old);
    book.Put(Plain("Linien"));
    File_Write_Fault = [](const QString&, qint64) { return errors::diskFull; };
    EXPECT_EQ(Error_Of([&] { book.Save(); }), errors::diskFull);
    EXPECT_EQ(Read_Bytes(Path()), old);
    File_Write_Fault = nullptr;
    book.Save();
  }
  EXPECT_EQ(Read_Bytes(Path("KARTE_alt2.XLS")), old);
  EXPECT_EQ(Workbook(Path()).SheetNames(), QStringList{"Linien"});
  EXPECT_EQ(Names().size(), 3);
}

TEST_F(WorkbookTest, NamesOfFilesAndSheets) {
  EXPECT_EQ(Workbook_Name("/k/Wald.neu/KARTE.MDB"), "/k/Wald.neu/KARTE.XLS");
  const Error error = Raised([] { Workbook_Name("/k/Wald.neu/KARTE"); });
  EXPECT_TRUE(error.text.contains("Keine Tabellendatei gefunden\nName: /k/Wald.neu/KARTE")) << error.text;
  for (const QString& wrong :
       {QString(), QString("  "), QString("a:b"), QString("[x]"), QString("a/b"), QString("a\\b"), QString("a?"),
        QString("*"), QString("'x"), QString("x'"), QString("a\nb"), QString("a\u0001"), QString(32, u'x')}) {
    EXPECT_FALSE(Is_Sheet_Name(wrong)) << wrong;
    EXPECT_EQ(Error_Of([&] { Write(Path(), Plain(wrong)); }), workbook_errors::bounds);
  }
  EXPECT_FALSE(QFile::exists(Path()));
  EXPECT_TRUE(Is_Sheet_Name(QString(31, u'ä')));
  const std::pair<int, const char*> letters[] = {{1, "A"},    {26, "Z"},    {27, "AA"},
                                                 {702, "ZZ"}, {703, "AAA"}, {16384, "XFD"}};
  for (const auto& [column, name] : letters) EXPECT_EQ(Column_Name(column), name);
}
