#include "exchange/exchange_reader.h"
#include "exchange/exchange_table.h"
#include "fuzz/calibrated.h"
#include "fuzz/driver.h"
#include "store/table_file.h"

// Exchange files of the mobile program: both ways of reading, and now and then into a table and out again.

namespace {

constexpr int betweenTables = 40;

// What the program writes itself of a row of each kind.
QByteArrayList Seeds() {
  ExchangeTable table{u"Karte.bmp"_s, u"Karte.tkr"_s, u"KARTE.MDB"_s, {}, {}};
  table.vertices = [](const QString&) { return std::vector<QPoint>{{10, 10}, {60, 20}, {30, 90}}; };
  int x = 10;
  for (const auto& [id, text, font, typ] :
       {std::tuple(u"Text"_s, u"Igel\r\nam Bach"_s, u"Arial,F<45"_s, 0),
        std::tuple(u"Linie0 - PATs>L050B025"_s, u"Weg"_s, u"-"_s, 4),
        std::tuple(u"Flaeche0"_s, u"Wald"_s, u"F 3"_s, 40), std::tuple(u"Figur1"_s, u"Kreis"_s, u"F-1<30"_s, 22),
        std::tuple(u"2Text"_s, u"\"a;b\""_s, u"Wingdings"_s, 1)}) {
    EntryRow row;
    row.ID = id, row.Eintrag = text, row.Schrift = font, row.Typ = typ;
    row.Groesse = 9.5, row.VG = 3, row.HG = 14, row.RA = 12;
    row.Xmap = x += 10, row.Ymap = 20, row.Xline = 40, row.Yline = 50;
    table.rows.push_back(row);
  }
  const QByteArray whole = Exchange_Lines(table)->lines.join(u"\r\n"_s).toLatin1();
  return {whole, whole.left(whole.size() / 2), whole.mid(whole.indexOf('\n') + 1)};
}

void Into_A_Table(const ExchangeContent& content) {
  Open_Empty_Table();
  const ExchangeTaken taken = Append_Exchange_Entries(content.entries);
  if (taken.entries > static_cast<int>(content.entries.size())) throw std::runtime_error("more came than was read");
  if (taken.entries > 0) Exchange_Lines(Read_Exchange_Table(Work_Folder() + u"/Neu.tkr"_s));
  Close_Table(CloseMode::CloseOnly);
}

bool Run(const QByteArray& input) {
  static int number = 0;
  const QStringList lines = Read_Lines(Put_File(u"Datei.tkr"_s, input));
  const ExchangeContent all = Read_Exchange_All(lines), entries = Read_Exchange_Entries(lines);
  for (const ExchangeContent* content : {&all, &entries})
    for (const ExchangeEntry& entry : content->entries)
      if (entry.line < 1 || entry.line > lines.size()) throw std::runtime_error("an entry of no line");
  if (++number % betweenTables == 0) Into_A_Table(number % 2 == 0 ? all : entries);
  return !all.entries.empty();
}

}  // namespace

FuzzTarget Make_Target() {
  return {"exchange",
          Seeds(),
          {";", ";;", "#", "<HTML>", "<BR>", "</HTML>", "PATs>L050B025", "\r\n", "-32768", "65536", "1.0", "\"", "|"},
          Run,
          {}};
}
