#include "exchange/sheet_comparison.h"
#include "exchange/sheet_source.h"
#include "fuzz/calibrated.h"
#include "fuzz/driver.h"
#include "support/table_fixture.h"
#include "workbook/workbook_package.h"

// Workbooks as a spreadsheet program or a damaged disk may have left them: read, and compared with a table.

namespace {

const QStringList& Parts() {
  static const QStringList parts = {
      u"xl/worksheets/sheet1.xml"_s, u"xl/sharedStrings.xml"_s,       u"xl/styles.xml"_s,
      u"xl/workbook.xml"_s,          u"xl/_rels/workbook.xml.rels"_s, u"[Content_Types].xml"_s};
  return parts;
}

const QByteArrayList& Books() {
  static const QByteArrayList books = Files_Of(QStringLiteral(FLURAX_TEST_DATA "/workbook"));
  return books;
}

// Damaged inside: a part of a sound book is changed and packed again.
void Shape(QByteArray& bytes, Mutator& dice) {
  workbook_inner::Package book(Books()[dice.Place(Books().size())]);
  const QString& part = Parts()[dice.Place(Parts().size())];
  if (!book.Has(part)) return;
  book.Put(part, dice.Next({book.Read(part)}));
  bytes = book.Bytes();
}

// The table it is compared with; it stays to the end.
Recordset& Rows() {
  static Recordset* const rows = [] {
    static Database* const database = Workspace::CreateDatabase(Work_Folder() + u"/Zeilen.MDB"_s).release();
    Make_Template(*database);
    EntryRow row;
    row.ID = u"Text"_s;
    for (const char* text : {"Kopf", "Uhu", "Rotmilan"}) {
      row.Eintrag = QString::fromLatin1(text);
      Append_Row(*database, row);
    }
    return Open_Entries(*database).release();
  }();
  return *rows;
}

bool Run(const QByteArray& input) {
  const QString path = Put_File(u"Mappe.XLS"_s, input);
  try {
    const auto book = Open_Workbook_To_Read(path);
    if (book->SheetNames().isEmpty()) return false;
    for (const QString& name : book->SheetNames()) {
      const Sheet sheet = book->Read(name);
      book->IsEmpty(name);
      Comparison_Text(Compare_With_Sheet(Rows(), sheet, Proposed_Order(Rows(), Titles_Of(sheet))));
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
