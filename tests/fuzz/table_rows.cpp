#include <sqlite3.h>

#include <QPdfWriter>

#include "fuzz/driver.h"
#include "hand/activation.h"
#include "maps/map_open.h"
#include "platform/surface.h"
#include "state/map_state.h"
#include "state/mdi_state.h"
#include "state/table_state.h"
#include "store/entry.h"
#include "store/header_row.h"
#include "store/table_file.h"
#include "store/transaction.h"
#include "store/vertex_table.h"
#include "view/hit_test.h"
#include "view/redraw.h"
#include "view/view.h"

// Rows of a table as another program may have left them: any number or text in any column. They are loaded as the
// program does it, decoded and drawn. An input is a text: a row a line, its columns parted by "|"; "~" is Null, a text
// stands behind "'", a line with "@" at its head is a vertex of the table named behind it.

namespace {

constexpr int mapWidth = 400, mapHeight = 300, mostRows = 60, betweenSheets = 20;

QByteArrayList Seeds() {
  const QByteArray header = "'!Kopf|'/k/KARTE.MDB|'Karte|10|10|10|10|400|300|1|1000|-1\n";
  return {
      header +
          "'Text|'Amsel|'Arial|12|0|15|12|50|60|120|140|0\n"
          "'2Text<3|'Dros\rsel|'Arial,F,K,T<45|9.5|1|14|-12|90|60|20|30|2\n"
          "'-Text|'\x41|'Wingdings|24|3|7|0|200|100|0|0|103\n",
      header +
          "'Linie1|''|'-|-3|4|4|3|0|0|2|0|4\n@Linie1|10|10\n@Linie1|300|200\n@Linie1|20|250\n@Linie1|-16000|0\n"
          "'Flaeche0(P211)|'Wald|'F 3|4|2|10|12|0|0|1|-4|40\n@Flaeche0|50|50\n@Flaeche0|350|60\n@Flaeche0|200|280\n",
      header +
          "'Figur1|'|'F 1<30|1|0|9|2|20|20|80|60|20\n'Figur2|'|'F-8|1|0|9|-2|120|20|80|60|22\n"
          "'Figur3|'|'F 5|1|0|9|2|20|120|80|60|24\n@Figur3|0|0\n@Figur3|1000|0\n@Figur3|500|1000\n"
          "'Np|'N|'Arial|1|0|15|3|300|40|40|60|-12\n'Scale|'1000 m|'Arial|8|0|15|1|50|280|250|280|11\n",
      header +
          "'Planquadrat|'A1|'Arial|8|0|10|1|0|0|100|100|16\n'Planquadrat|'A2|'Arial|8|0|10|1|100|0|200|100|16\n"
          "'Raster|'x|'Arial|8|0|10|1|0|0|50|50|17\n'Bild|'Bild.bmp|'-|0|0|0|1|30|30|90|90|5\n"
          "'Bild|'fehlt.wmf|'-|0|0|0|1|30|30|90|90|205\n'3Text|'|'Arial|8|0|10|1|10|20|90|80|7\n",
      "~|~|~|~|~|~|~|~|~|~|~|~\n'|'|'|'|'|'|'|'|'|'|'|'\n" + header};
}

void Bind(sqlite3_stmt* insert, int at, const QByteArray& field) {
  bool isNumber = false, isWhole = false;
  const double value = field.toDouble(&isNumber);
  const qint64 whole = field.trimmed().toLongLong(&isWhole);
  const QByteArray rest = field.mid(field.startsWith('\'') || field.startsWith('#'));
  if (isWhole)
    sqlite3_bind_int64(insert, at, whole);
  else if (isNumber)
    sqlite3_bind_double(insert, at, value);  // what is no number becomes Null
  else if (field == "~")
    sqlite3_bind_null(insert, at);
  else if (field.startsWith('#'))
    sqlite3_bind_blob(insert, at, rest.constData(), static_cast<int>(rest.size()), SQLITE_TRANSIENT);
  else
    sqlite3_bind_text(insert, at, rest.constData(), static_cast<int>(rest.size()), SQLITE_TRANSIENT);
}

// Writes the lines of an input into a table file; a statement is prepared once a table.
class Filler {
 public:
  explicit Filler(const QString& path) {
    if (sqlite3_open(path.toUtf8().constData(), &db) != SQLITE_OK) std::abort();
    sqlite3_exec(db, "PRAGMA journal_mode=OFF; PRAGMA synchronous=OFF; BEGIN", nullptr, nullptr, nullptr);
  }
  Filler(const Filler&) = delete;
  Filler& operator=(const Filler&) = delete;
  ~Filler() {
    for (sqlite3_stmt* each : std::as_const(inserts)) sqlite3_finalize(each);
    sqlite3_exec(db, "COMMIT", nullptr, nullptr, nullptr);
    sqlite3_close(db);
  }

  void Add(const QByteArray& table, const QByteArrayList& fields, int count) {
    if (!inserts.contains(table)) {
      const QByteArray text = "INSERT INTO \"" + table + "\" VALUES(?" + QByteArray(",?").repeated(count - 1) + ')';
      sqlite3_prepare_v2(db, text.constData(), -1, &inserts[table], nullptr);
    }
    sqlite3_stmt* const insert = inserts[table];
    if (!insert) return;  // there is no such table
    for (int i = 0; i < count; ++i) Bind(insert, i + 1, fields.value(i, "~"));
    sqlite3_step(insert);
    sqlite3_reset(insert);
  }

 private:
  sqlite3* db = nullptr;
  QHash<QByteArray, sqlite3_stmt*> inserts;
};

// The declarations the program itself makes, taken from a file of its own.
const QByteArray& Empty_Table() {
  static const QByteArray bytes = [] {
    const QString path = Work_Folder() + QStringLiteral("/Leer.MDB");
    auto database = Workspace::CreateDatabase(path);
    Make_Template(*database);
    for (const char* name : {"Linie1", "Flaeche0", "Figur3"})
      database->CreateTable(Vertex_Def(QString::fromLatin1(name)));
    database->Close();
    database.reset();
    return Read_Bytes(path);
  }();
  return bytes;
}

void Make_Table(const QByteArray& input) {
  Filler filler(Put_File(u"KARTE.MDB"_s, Empty_Table()));
  int rows = 0;
  for (const QByteArray& line : input.split('\n')) {
    const QByteArrayList fields = line.split('|');
    if (line.startsWith('@'))
      filler.Add(fields[0].mid(1).replace('"', ""), fields.mid(1), 2);
    else if (!line.isEmpty() && rows++ < mostRows)
      filler.Add("MapData", fields, column::fixedCount);
  }
}

template <class Type, class Stored>
void Check_Number(Stored stored) {
  const Type once = Type::Parse(stored);
  if (!(Type::Parse(once.ToNumber()) == once)) throw std::runtime_error("a number is not read as it was written");
}
template <class Type>
void Check_Text(const QString& stored) {
  const Type once = Type::Parse(stored);
  const QString written = once.ToText();
  if (Type::Parse(written).ToText() != written) throw std::runtime_error("a text changes by being written");
}

void Decode_Rows() {
  for (rsEntries->MoveFirst(); !rsEntries->Eof(); rsEntries->MoveNext()) {
    try {
      const EntryRow row = Read_Entry(*rsEntries);
      Check_Number<EntryType>(row.Typ);
      Check_Number<FrameWord>(row.RA);
      Check_Number<FillCode>(row.Yline);
      Check_Text<EntryId>(row.ID);
      Check_Text<FontSpec>(row.Schrift);
      FillCode::FromSchrift(row.Schrift);
      FillCode::AngleOf(row.Schrift);
      EntryRow moved = row;
      set_entry_box(moved, entry_box(row));
      HeaderRow::FromEntry(row).ToEntry();
      Load_Vertices(EntryId::Parse(row.ID).TableName());
      Entry_Name();
    } catch (const Error&) {
      // Beyond 16 bits.
    }
  }
}

// What reaches beyond the columns belongs to the repair.
void Take_Here() {
  try {
    Take_Entry(rsEntries->Bookmark());
  } catch (const Error& error) {
    if (error.number != errors::overflow) throw;
  }
  Drop_Hand();
}

void Draw_Everywhere(int number) {
  // Laid out and drawn once, at a zoom of its own.
  Map.Zoom = number % 3 == 0 ? 0.25F : number % 3 == 1 ? 1.0F : 7.0F;
  Zoom_Map();
  if (number % 4 == 0) Map_Redraw();
  for (const QPoint at : {QPoint(50, 60), QPoint(200, 150), QPoint(0, 0)}) Hit_Entry(at);
  if (number % 2 == 0) For_Each_Entry(Take_Here);
  if (number % betweenSheets != 0) return;
  QPdfWriter writer(Work_Folder() + QStringLiteral("/Blatt.pdf"));
  const auto page = Make_Page_Surface(writer, 4);
  DrawContext context{*page, {0, 0, 1, false}, QRectF(0, 0, mapWidth, mapHeight)};
  Draw_Entries(context);
  const auto probe = Make_Probe_Surface(QRectF(0, 0, mapWidth, mapHeight));
  DrawContext probing{*probe, {0, 0, 1, false}, QRectF(0, 0, mapWidth, mapHeight)};
  Draw_Entries(probing);
}

// Rows of every kind with a number beyond its column, or a text that means nothing.
void Shape(QByteArray& bytes, Mutator& dice) {
  constexpr int kinds[] = {0, 1, 2, 3, 4, 5, 7, 11, -12, 15, 16, 17, 18, 20, 21, 22, 23, 24, 25, 40};
  static const QByteArrayList names{"'Text", "'Linie1", "'Flaeche0", "'Figur3", "'Plan\x1f\x41-1", "'Np"};
  static const QByteArrayList values{"-9223372036854775808",
                                     "9223372036854775807",
                                     "-32768",
                                     "32767",
                                     "1e300",
                                     "-9e999",
                                     "'Arial-C9e9<-1e308",
                                     "'F9<9e999",
                                     "'<<<---",
                                     "'-!-",
                                     "'Linie1 - P1111L9e9B9e9<9e99",
                                     "'Plan\x1f\x41-99999999999"};
  for (int row = 0; row < 30; ++row) {
    QByteArrayList fields = QByteArray("|'x|'Arial|12|1|14|0|40|50|90|80|").split('|');
    fields.first() = names[dice.Place(names.size())];
    fields.last() = QByteArray::number(kinds[dice.Place(std::size(kinds))]);
    fields[dice.Place(fields.size())] = values[dice.Place(values.size())];
    bytes += '\n' + fields.join('|');
  }
}

void Open_Fresh(const QByteArray& input) {
  Fresh_Program();
  for (const QString& path : Find_Files(Work_Folder(), QStringLiteral("KARTE*.*"))) QFile::remove(path);
  Make_Table(input);
  MapFile = Work_Folder() + QStringLiteral("/Karte.bmp");
  MapWidthPx = mapWidth;
  MapHeightPx = mapHeight;
  MapWidthMm = MapHeightMm = 100;
  Map.Caption = QStringLiteral("Map: ") + MapFile.toUpper();
  Map.ScaleWidth = frmMDI.InnerWidth = mapWidth;
  Map.ScaleHeight = frmMDI.InnerHeight = mapHeight;
}

bool Run(const QByteArray& input) {
  static int number = 0;
  static const QImage scan = Make_Canvas(mapWidth, mapHeight, qRgb(250, 250, 200));
  Open_Fresh(input);
  const bool loaded = Load_Table(LoadMode::First);
  int drawn = 0;
  if (loaded) {
    frmMDI.MapOpen = Map.Visible = true;
    Set_Map_Picture(scan);
    Decode_Rows();
    Table_Replaced();
    Draw_Everywhere(++number);
    drawn = Map.EntryRegions.Count();
  }
  frmMDI.MapOpen = false;
  Close_Table(CloseMode::CloseOnly);
  return drawn > 0;
}

}  // namespace

FuzzTarget Make_Target() {
  Put_File(QStringLiteral("Bild.bmp"), {});
  Make_Canvas(30, 20, qRgb(9, 99, 199)).save(Work_Folder() + QStringLiteral("/Bild.bmp"));
  return {"table_rows",
          Seeds(),
          {"|",     "~",        "'",          "#",        "\n",    "|4\n",    "|5\n",      "|24\n",     "|40\n",
           "|16\n", "|11\n",    "|-12\n",     "|22\n",    "'Text", "'Linie1", "'Flaeche0", "'Figur3",   "'Bild",
           "'!",    "@Linie1|", "@Flaeche0|", "@Figur3|", "<45",   "(P211)",  "'F 3",      "'Wingdings"},
          Run,
          Shape};
}
