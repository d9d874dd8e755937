#include <QPolygon>

#include "analysis/assigned_entries.h"
#include "analysis/species_matrix.h"
#include "maps/map_close.h"
#include "maps/map_open.h"

using ::testing::IsSupersetOf;

namespace {

const QString built = QStringLiteral(FLURAX_BINARY_DIR "/data");

// One delivered table, opened as a copy.
struct Table {
  explicit Table(const QString& name) {
    const QString copy = folder.filePath(u"Tabelle.MDB"_s);
    EXPECT_TRUE(QFile::copy(built + name, copy)) << name;
    database = Workspace::OpenDatabase(copy);
    rows = Rows_Of(*database);
    if (!rows.empty()) rows.erase(rows.begin());
  }
  QTemporaryDir folder;
  std::unique_ptr<Database> database;
  std::vector<EntryRow> rows;  // without the header
};

// What is wrong with the current row, in words.
QString Fault_Here(QSet<QString>& tables) {
  const QRect sheet(0, 0, MapWidthPx, MapHeightPx);
  const EntryRow row = Read_Entry(*rsEntries);
  const EntryType type = Type_Here();
  if (row.ID.isEmpty() || row.Eintrag.isEmpty() || row.Schrift.isEmpty()) return u"empty text"_s;
  if (std::max(row.VG, row.HG) > 15 || std::min(row.VG, row.HG) < 0) return u"no colour"_s;
  if (type.Kind() == EntryKind::PlanDesign) return {};
  const bool hasFoot = type.IsText() && row.Xline > 0;
  if (!sheet.contains(row.Xmap, row.Ymap) || (hasFoot && !sheet.contains(row.Xline, row.Yline))) return u"beside"_s;
  const EntryBox box = entry_box(row);
  if (type.IsFigure() || type.Kind() == EntryKind::PlanSquare)
    if (box.width <= 5 || box.height <= 5 || !sheet.contains(QRect(box.x, box.y, box.width, box.height)))
      return u"no size, or beyond the map"_s;
  if (!type.HasVertices()) return {};
  const EntryId id = EntryId::Parse(row.ID);
  if (tables.contains(id.TableName())) return u"vertices twice"_s;
  tables << id.TableName();
  const auto points = Load_Vertices(id.TableName());
  const bool inside = std::all_of(points.begin(), points.end(), [&](QPoint point) { return sheet.contains(point); });
  return inside && points.size() >= (id.IsLine() ? 2U : 3U) ? QString() : u"vertices"_s;
}

}  // namespace

TEST(DemoData, OverviewShowsEveryKindAndLook) {
  const Table table(u"/Beispiele/Demo_2_Übersicht.MDB"_s);
  EXPECT_GE(table.rows.size(), 100U);
  std::set<int> kinds, hatches;
  std::set<LineEnds::Shape> ends;
  std::array<int, 6> looks{};
  for (const EntryRow& row : table.rows) {
    const EntryType type = EntryType::Parse(row.Typ);
    const EntryId id = EntryId::Parse(row.ID);
    const FontSpec font = FontSpec::Parse(row.Schrift);
    const bool isText = type.IsText();
    kinds.insert(type.base);
    if (id.ends) ends.insert(id.ends->shape);
    if (id.IsArea()) hatches.insert(row.Yline);
    const bool has[] = {type.IsFigure() && FillCode::AngleOf(row.Schrift) > 0,
                        isText && FrameWord::Parse(row.RA).framed,
                        isText && font.transparent,
                        isText && font.angle > 0,
                        isText && font.IsSymbol(),
                        isText && row.Eintrag.contains(u'\n')};
    for (size_t i = 0; i < looks.size(); ++i) looks[i] += has[i];
  }
  EXPECT_THAT(kinds, IsSupersetOf({0, 1, 2, 3, 4, 40, 5, 11, 12, 16, 17, 20, 21, 22, 23, 24, 25}));
  EXPECT_THAT(hatches, IsSupersetOf({-1, 0, 1, -2, -3, -4, -5, -6, -7}));
  EXPECT_EQ(ends.size(), 3U);
  EXPECT_THAT(looks, testing::Each(testing::Ge(2)));
  EXPECT_EQ(Table(u"/Beispiele/KARTE.MDB"_s).rows, table.rows) << "the demo map opens with this very table";
}

// Every evaluation has something to say of the demo map: areas, a figure, a line and a group with several species, in
// numbers; and what is assigned stands where it belongs.
TEST(DemoData, SpeciesAreCountedOnAreasFigureLineAndGroup) {
  const Table table(u"/Beispiele/KARTE.MDB"_s);
  MapInput input;
  input.rows = table.rows;
  std::map<MatrixKind, int> several;
  const auto matrix = Calc_Species_Matrix(input);
  ASSERT_TRUE(matrix);
  for (const MatrixRow& row : matrix->rows) {
    if (row.indices.species == 0) continue;
    EXPECT_TRUE(row.indices.species > 1 && row.indices.individuals > row.indices.species) << row.id;
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

// The whole road: the map opens, and every demo table loads into it, without a single question or a faulty row.
class DemoSession : public FluraxTest {};

TEST_F(DemoSession, EveryTableLoadsIntoTheDemoMap) {
  const QString examples = ProgramFolder + u"/Beispiele/"_s;
  for (const QString& name : QDir(built + u"/Beispiele"_s).entryList(QDir::Files))
    File_Copy(built + u"/Beispiele/"_s + name, examples + name);
  MessageScript noBoxes;
  Open_Map(examples + u"Karte.bmp"_s);
  EXPECT_EQ(std::tuple(MapWidthPx, MapHeightPx, MapHasScale), std::tuple(3000, 2200, true));
  EXPECT_FALSE(Table_Is_Changed()) << "its header is sound";
  EXPECT_NE(Coord.Grid, gridNone);
  for (const char* name : {"Demo_1_Test.MDB", "Demo_2_Übersicht.MDB", "Demo_3_Eintrag_bearbeiten.MDB",
                           "Demo_4_Text_Symbol.MDB", "Demo_5_Text_justieren.MDB"}) {
    SCOPED_TRACE(name);
    ASSERT_TRUE(Load_Other_Table(examples + QString::fromUtf8(name)));
    EXPECT_FALSE(Table_Is_Changed());
    EXPECT_GE(Entry_Count(), 8);
    QSet<QString> tables;
    For_Each_Entry([&] {
      EXPECT_EQ(Fault_Here(tables), QString()) << rsEntries->Text(column::ID) << rsEntries->Text(column::Eintrag);
    });
    EXPECT_EQ(dbEntries->TableDefs().size(), static_cast<size_t>(tables.size()) + 2) << "vertices without a row";
    QImage picture = Make_Canvas(MapWidthPx, MapHeightPx);
    const auto surface = Make_Surface(picture);
    DrawContext context{*surface, {}, QRectF(picture.rect())};
    const int hidden = QString::fromUtf8(name).contains(u"Übersicht"_s);
    const DrawCounts counts = Draw_Entries(context);
    EXPECT_EQ(std::tuple(counts.hidden, counts.inactive, counts.marked), std::tuple(hidden, hidden, 0));
  }
  Close_Map();
  EXPECT_EQ(Table(u"/MUSTER.MDB"_s).database->RowCount(u"MapData"_s), 0);
}

TEST(DemoData, SecondRunMakesTheSameBytes) {
  const QTemporaryDir folder;
  const QString again = folder.filePath(u"noch einmal"_s);
  Run_Tool(QStringLiteral(FLURAX_BINARY_DIR "/tools/make_data"), {QStringLiteral(FLURAX_SOURCE_DIR "/data"), again});
  int files = 0;
  QDirIterator walk(built, QDir::Files, QDirIterator::Subdirectories);
  for (; walk.hasNext(); ++files) {
    const QString first = walk.next();
    EXPECT_TRUE(Read_Bytes(first) == Read_Bytes(again + u'/' + QDir(built).relativeFilePath(first))) << first;
  }
  EXPECT_GE(files, 10);
}
