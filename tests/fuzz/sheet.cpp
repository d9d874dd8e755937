#include "exchange/sheet_comparison.h"
#include "exchange/sheet_rows.h"
#include "exchange/sheet_source.h"
#include "fuzz/calibrated.h"
#include "fuzz/driver.h"
#include "support/table_fixture.h"
#include "workbook/workbook_package.h"

// Workbooks as a spreadsheet program or a damaged disk may have left them: read, and compared with a table.

namespace {

const QStringList& Parts() {
  static const QStringList parts = {
      u"xl/worksheets/sheet1.xml"_s, u"xl/worksheets/sheet2.xml"_s,   u"xl/sharedStrings.xml"_s, u"xl/styles.xml"_s,
      u"xl/workbook.xml"_s,          u"xl/_rels/workbook.xml.rels"_s, u"[Content_Types].xml"_s};
  return parts;
}

// The table it is compared with; it stays to the end.
Database& Table() {
  static Database* const table = [] {
    Database* const made = Workspace::CreateDatabase(Work_Folder() + u"/Zeilen.MDB"_s).release();
    Make_Template(*made);
    EntryRow row;
    row.ID = u"Text"_s;
    for (const char* text : {"Kopf", "Uhu", "Rotmilan", "=1+1", "Uhu"}) {
      row.Eintrag = QString::fromLatin1(text);
      Append_Row(*made, row);
    }
    return made;
  }();
  return *table;
}
Recordset& Rows() {
  static Recordset* const rows = Open_Entries(Table()).release();
  return *rows;
}

// Of a spreadsheet program, and one of the program itself with some cells changed.
const QByteArrayList& Books() {
  static const QByteArrayList books = [] {
    const QString path = Work_Folder() + u"/Eigene.XLS"_s;
    Workbook book(path);
    Sheet sheet = Sheet_Of_Rows(Rows());
    sheet.Put(2, 3, u"Rotkehlchen"_s), sheet.Put(3, 5, 12.0), sheet.Put(4, 1, 99.0), sheet.Put(6, 3, u"neu"_s);
    book.Put(sheet);
    book.Save();
    return Files_Of(QStringLiteral(FLURAX_TEST_DATA "/workbook")) << Read_Bytes(path);
  }();
  return books;
}

// An attribute or a text takes parts of another one, numbers, words: the part stays XML.
void Change_A_Value(QByteArray& xml, Mutator& dice) {
  const auto value = [&] {
    const bool text = dice.Number(2) == 0;
    const QByteArray open = text ? ">" : "=\"", close = text ? "<" : "\"";
    const qsizetype from = xml.lastIndexOf(open, dice.Place(xml.size())) + open.size();
    return std::pair(from, std::max(xml.indexOf(close, from) - from, qsizetype{0}));
  };
  const auto [from, size] = value();
  const auto [other, otherSize] = value();
  QByteArray changed = dice.Next({xml.mid(from, size), xml.mid(other, otherSize)});
  for (const char mark : {'<', '&', '"'}) changed.replace(mark, ' ');
  xml.replace(from, size, changed);
}

// Damaged inside: a part of a sound book is changed, mostly in its values, and packed again.
void Shape(QByteArray& bytes, Mutator& dice) {
  workbook_inner::Package book(Books()[dice.Place(Books().size())]);
  // Cells and their texts more often than what leads to them.
  const QString& part = Parts()[std::min(dice.Place(Parts().size()), dice.Place(Parts().size()))];
  if (!book.Has(part)) return;
  QByteArray xml = book.Read(part);
  if (dice.Number(8) == 0)
    xml = dice.Next({xml});
  else
    for (quint64 i = dice.Number(6) + 1; i > 0; --i) Change_A_Value(xml, dice);
  book.Put(part, xml);
  bytes = book.Bytes();
}

// Compared by each key; now and then it is taken over, and taken back.
void Compare(const Sheet& sheet) {
  static int number = 0;
  const int key = std::array{ownNumber, +column::ID, +column::Eintrag}[static_cast<size_t>(++number) % 3];
  const SheetOrder order = Proposed_Order(Rows(), Titles_Of(sheet), key);
  if (order.keyColumn < 1) return;
  const SheetComparison found = Compare_With_Sheet(Rows(), sheet, order);
  Comparison_Text(found);
  if (number % 8 != 0) return;
  Table().BeginTrans();
  try {
    Take_From_Sheet(Table(), Rows(), found, number % 16 == 0);
  } catch (const Error& error) {
    if (error.text.isEmpty()) throw std::runtime_error("a refusal without a text");
  }
  if (Table().InTrans()) Table().Rollback();
}

bool Run(const QByteArray& input) {
  const QString path = Put_File(u"Mappe.XLS"_s, input);
  try {
    const auto book = Open_Workbook_To_Read(path);
    if (book->SheetNames().isEmpty()) return false;
    for (const QString& name : book->SheetNames()) {
      book->IsEmpty(name);
      Compare(book->Read(name));
    }
    return true;
  } catch (const Error& error) {
    if (error.text.isEmpty() && error.number != errors::fileNotFound)
      throw std::runtime_error("a refusal without a text");
    return false;
  }
}

}  // namespace

FuzzTarget Make_Target() {
  return {"sheet",
          Books(),
          {"<c r=\"A1\" t=\"s\"><v>99999</v></c>", "<row r=\"1048577\">", "r=\"ZZZZ1\"",
           "<mergeCell ref=\"A1:XFD1048576\"/>", "<f>1/0</f>", "t=\"inlineStr\"", "<is><t>x</t></is>", "<v>1e308</v>",
           "s=\"4294967295\"", "PK\3\4", "PK\1\2"},
          Run,
          Shape};
}
