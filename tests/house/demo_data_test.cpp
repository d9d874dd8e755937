#include <QPolygon>

#include "analysis/assigned_entries.h"
#include "analysis/species_matrix.h"
#include "maps/map_close.h"
#include "maps/map_open.h"
#include "support/table_fixture.h"

using ::testing::IsSupersetOf;

namespace {

const QString built = QStringLiteral(FLURAX_BINARY_DIR "/data");

// One delivered table, opened as a copy.
struct Table {
  explicit Table(const QString& name) {
    const QString copy = folder.filePath(u"Tabelle.MDB"_s);
    EXPECT_TRUE(QFile::copy(built + u"/Beispiele/"_s + name, copy)) << name;
    database = Workspace::OpenDatabase(copy);
    rows = Rows_Of(*database);
    header = rows.front();
    rows.erase(rows.begin());
  }
  QTemporaryDir folder;
  std::unique_ptr<Database> database;
  EntryRow header;
  std::vector<EntryRow> rows;  // without the header
};

QStringList Table_Names() {
  return QDir(built + u"/Beispiele"_s).entryList({u"*.MDB"_s}, QDir::Files, QDir::Name | QDir::LocaleAware);
}

bool Has_Vertices(const EntryRow& row) {
  const EntryType type = EntryType::Parse(row.Typ);
  return type.IsPolygon() || type.IsFreeFigure();
}

// What is wrong with a row, in words.
QStringList Row_Faults(Database& database, const EntryRow& row, QSize map) {
  QStringList faults;
  const auto check = [&](bool good, const QString& fault) {
    if (!good) faults << row.ID + u" \""_s + row.Eintrag + u"\": "_s + fault;
  };
  const QRect sheet(QPoint(), map);
  check(row.ID.size() <= 79 && row.Eintrag.size() <= 79 && row.Schrift.size() <= 79, u"text too long"_s);
  check(!row.ID.isEmpty() && !row.Eintrag.isEmpty() && !row.Schrift.isEmpty(), u"empty text"_s);
  check(row.VG >= 0 && row.VG <= 15 && row.HG >= 0 && row.HG <= 15, u"colour out of range"_s);
  check(std::abs(row.RA) % 100 <= 15, u"frame colour out of range"_s);
  const EntryType type = EntryType::Parse(row.Typ);
  if (type.Kind() == EntryKind::PlanDesign) return faults;
  check(sheet.contains(row.Xmap, row.Ymap), u"beside the map"_s);
  if (type.IsText() && row.Xline > 0) check(sheet.contains(row.Xline, row.Yline), u"foot point beside the map"_s);
  if (type.IsFigure() || type.Kind() == EntryKind::PlanSquare) {
    const EntryBox box = entry_box(row);
    check(box.width > 5 && box.height > 5, u"no size"_s);
    check(sheet.contains(QRect(box.x, box.y, box.width, box.height)), u"reaches beyond the map"_s);
  }
  if (Has_Vertices(row)) {
    const EntryId id = EntryId::Parse(row.ID);
    const auto* points = database.Points(id.TableName());
    if (!points) return faults << row.ID + u": no vertex table"_s;
    check(points->size() >= (id.IsLine() ? 2U : 3U), u"too few vertices"_s);
    for (const auto& point : *points) check(sheet.contains(point.x, point.y), u"vertex beside the map"_s);
  }
  return faults;
}

}  // namespace

TEST(DemoData, MapAndItsCompanionsAreThere) {
  const QString map = built + u"/Beispiele/Karte.bmp"_s;
  const QImage picture = Load_Picture(map);
  EXPECT_EQ(std::tuple(picture.size(), picture.depth()), std::tuple(QSize(3000, 2200), 8));
  EXPECT_EQ(std::tuple(picture.dotsPerMeterX(), picture.dotsPerMeterY()), std::tuple(11811, 11811));
  EXPECT_TRUE(Read_Bytes(built + u"/Beispiele/Karte.cal"_s).contains("Karte: Karte.bmp"));
  EXPECT_EQ(Table_Names().join(u' '),
            u"Demo_1_Test.MDB Demo_2_Übersicht.MDB Demo_3_Eintrag_bearbeiten.MDB Demo_4_Text_Symbol.MDB "
            "Demo_5_Text_justieren.MDB KARTE.MDB"_s);
}

TEST(DemoData, EveryRowOfEveryTableIsSound) {
  const QSize map = Picture_Size(built + u"/Beispiele/Karte.bmp"_s);
  for (const QString& name : Table_Names()) {
    SCOPED_TRACE(name.toStdString());
    Table table(name);
    bool repaired = false;
    const HeaderRow header = HeaderRow::FromEntry(table.header, &repaired);
    EXPECT_FALSE(repaired);
    EXPECT_EQ(QSize(header.width, header.height), map);
    EXPECT_EQ(header.mapName, u"Karte.bmp"_s);
    EXPECT_GE(table.rows.size(), 8U);
    std::set<QString> named;
    for (const EntryRow& row : table.rows) {
      EXPECT_EQ(Row_Faults(*table.database, row, map).join(u'\n'), QString());
      if (!Has_Vertices(row)) continue;
      EXPECT_TRUE(named.insert(EntryId::Parse(row.ID).TableName()).second) << row.ID << " twice";
    }
    // No vertex table without its row.
    for (const TableDef& def : table.database->TableDefs()) {
      if (def.name == "MapData"_L1 || def.name == "Qdata"_L1) continue;
      EXPECT_TRUE(named.contains(def.name)) << def.name;
    }
  }
}

TEST(DemoData, OverviewShowsEveryKindAndLook) {
  const Table table(u"Demo_2_Übersicht.MDB"_s);
  EXPECT_GE(table.rows.size(), 100U);
  EXPECT_LE(table.rows.size(), 140U);
  std::set<int> kinds, hatches;
  std::set<LineEnds::Shape> ends;
  std::map<QString, int> looks;
  for (const EntryRow& row : table.rows) {
    const EntryType type = EntryType::Parse(row.Typ);
    const EntryId id = EntryId::Parse(row.ID);
    kinds.insert(type.base);
    if (id.ends) ends.insert(id.ends->shape);
    if (id.IsArea()) hatches.insert(row.Yline);
    looks[u"turned figure"_s] += type.IsFigure() && FillCode::AngleOf(row.Schrift) > 0;
    if (!type.IsText()) continue;
    const FontSpec font = FontSpec::Parse(row.Schrift);
    looks[u"framed"_s] += FrameWord::Parse(row.RA).framed;
    looks[u"clear"_s] += font.transparent;
    looks[u"turned"_s] += font.angle > 0;
    looks[u"symbol"_s] += font.IsSymbol();
    looks[u"several lines"_s] += row.Eintrag.contains(u'\n');
  }
  EXPECT_THAT(kinds, IsSupersetOf({0, 1, 2, 3, 4, 40, 5, 11, 12, 16, 17, 20, 21, 22, 23, 24, 25}));
  EXPECT_THAT(hatches, IsSupersetOf({-1, 0, 1, -2, -3, -4, -5, -6, -7}));
  EXPECT_EQ(ends.size(), 3U);
  for (const auto& [look, count] : looks) EXPECT_GE(count, look == u"turned figure"_s ? 2 : 5) << look;
  // The demo map opens with this very table; the files of its pictures are delivered.
  EXPECT_EQ(Table(u"KARTE.MDB"_s).rows, table.rows);
  for (const EntryRow& row : table.rows) {
    if (EntryType::Parse(row.Typ).Kind() != EntryKind::Picture) continue;
    EXPECT_FALSE(Load_Picture(built + u"/Beispiele/"_s + row.Eintrag).isNull()) << row.Eintrag;
  }
}

// Every evaluation has something to say of the demo map: areas, a figure, a line and a group with several species, in
// numbers; and what is assigned stands where it belongs.
TEST(DemoData, SpeciesAreCountedOnAreasFigureLineAndGroup) {
  const Table table(u"KARTE.MDB"_s);
  MapInput input;
  input.rows = table.rows;
  std::map<MatrixKind, int> several;
  const auto matrix = Calc_Species_Matrix(input);
  for (const MatrixRow& row : matrix->rows) {
    if (row.indices.species == 0) continue;
    EXPECT_GT(row.indices.species, 1) << row.id;
    EXPECT_GT(row.indices.individuals, row.indices.species) << row.id;
    ++several[row.kind];
  }
  EXPECT_GE(several[MatrixKind::Area], 4);
  for (const MatrixKind kind : {MatrixKind::Figure, MatrixKind::Line, MatrixKind::Group}) EXPECT_GE(several[kind], 1);
  const AssignedEntries assigned(input.rows);
  size_t found = 0, wanted = 0;
  for (const EntryRow& row : input.rows) {
    const EntryId id = EntryId::Parse(row.ID);
    wanted += !id.assignment.isEmpty();
    const auto& entries = assigned.To(id);
    found += entries.size();
    if (!id.IsArea()) continue;
    QPolygon outline;
    for (const auto& point : *table.database->Points(id.TableName())) outline << QPoint(point.x, point.y);
    for (const int number : entries) {
      const EntryRow& entry = input.rows[static_cast<size_t>(number)];
      EXPECT_TRUE(outline.containsPoint({entry.Xmap, entry.Ymap}, Qt::OddEvenFill)) << entry.Eintrag;
    }
  }
  EXPECT_EQ(found, wanted) << "all of them are assigned to something that is there";
}

// The whole road: the map opens, and every demo table loads into it, without a single question.
class DemoSession : public FluraxTest {};

TEST_F(DemoSession, EveryTableLoadsIntoTheDemoMap) {
  const QString examples = ProgramFolder + u"/Beispiele"_s;
  for (const QString& name : QDir(built + u"/Beispiele"_s).entryList(QDir::Files)) {
    File_Copy(built + u"/Beispiele/"_s + name, examples + u'/' + name);
  }
  MessageScript noBoxes;
  Open_Map(examples + u"/Karte.bmp"_s);
  ASSERT_GT(MapHeightMm, 0);
  EXPECT_EQ(Table_Is_Changed(), false);
  EXPECT_TRUE(MapHasScale);
  for (const QString& name : Table_Names().filter(u"Demo"_s)) {
    SCOPED_TRACE(name.toStdString());
    const Table delivered(name);
    ASSERT_TRUE(Load_Other_Table(examples + u'/' + name));
    EXPECT_EQ(Entry_Count(), static_cast<int>(delivered.rows.size()));
    EXPECT_EQ(Tbl.DBGrid1.Caption, examples + u'/' + name);
    QImage picture = Make_Canvas(MapWidthPx, MapHeightPx);
    const auto surface = Make_Surface(picture);
    DrawContext context{*surface, {}, QRectF(picture.rect())};
    const bool isOverview = name.contains(u"Übersicht"_s);
    const DrawCounts counts = Draw_Entries(context);
    EXPECT_EQ(std::tuple(counts.hidden, counts.inactive), std::tuple(isOverview ? 1 : 0, isOverview ? 1 : 0));
    EXPECT_EQ(counts.marked, 0);
  }
  Close_Map();
}

TEST(DemoData, TemplateIsEmpty) {
  const QTemporaryDir folder;
  const QString copy = folder.filePath(u"Muster.mdb"_s);
  File_Copy(built + u"/MUSTER.MDB"_s, copy);
  const auto database = Workspace::OpenDatabase(copy);
  EXPECT_EQ(database->RowCount(u"MapData"_s), 0);
  EXPECT_EQ(database->OpenRecordset(u"MapData"_s)->Fields().size(), size_t{column::fixedCount});
  EXPECT_EQ(database->RowCount(u"Qdata"_s), 1);
}

TEST(DemoData, SecondRunMakesTheSameBytes) {
  const QTemporaryDir folder;
  const QString again = folder.filePath(u"noch einmal"_s);
  QProcess tool;
  tool.start(QStringLiteral(FLURAX_BINARY_DIR "/tools/make_data"), {QStringLiteral(FLURAX_SOURCE_DIR "/data"), again});
  ASSERT_TRUE(tool.waitForFinished(60000));
  ASSERT_EQ(tool.exitCode(), 0) << tool.readAllStandardError().toStdString();
  int files = 0;
  QDirIterator walk(built, QDir::Files, QDirIterator::Subdirectories);
  for (; walk.hasNext(); ++files) {
    const QString first = walk.next();
    EXPECT_TRUE(Read_Bytes(first) == Read_Bytes(again + u'/' + QDir(built).relativeFilePath(first))) << first;
  }
  EXPECT_GE(files, 10);
}
