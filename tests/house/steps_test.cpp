#include "edit/copy.h"
#include "edit/entry_look.h"
#include "edit/figure_edit.h"
#include "edit/marks.h"
#include "edit/move.h"
#include "edit/order.h"
#include "edit/scale_edit.h"
#include "edit/search_replace.h"
#include "edit/sql_query.h"
#include "edit/text_font.h"
#include "edit/vertex_edit.h"
#include "exchange/exchange_table.h"
#include "exchange/sheet_comparison.h"
#include "import/csv_import.h"
#include "import/gps_import.h"
#include "import/overlay_import.h"
#include "import/table_import.h"
#include "maps/commands.h"
#include "maps/step_walk.h"
#include "plansquares/raster_rows.h"
#include "state/step.h"
#include "store/history.h"
#include "support/bulk_fixture.h"
#include "tools/plan_squares.h"
#include "tools/poly_editor.h"

// Whatever is done with the demo map can be taken back to the start and brought again to the end, step by step.

namespace {

constexpr int kinds = 34;  // of operations
const QString delivered = QStringLiteral(FLURAX_BINARY_DIR "/data/Beispiele/");

class Steps : public BulkTest {
 protected:
  struct State {
    QStringList table;
    QImage picture;
  };
  void SetUp() override {
    FluraxTest::SetUp();
    for (const char* file : {"Karte.bmp", "KARTE.MDB", "Karte.cal", "Eisvogel.bmp"})
      QFile::copy(delivered + QLatin1String(file), Path(QString::fromLatin1(file)));
    QFile::copy(delivered + QStringLiteral("Demo_1_Test.MDB"), Path("Andere.MDB"));
    for (const char* file : {"KARTE.MDB", "Andere.MDB"})
      QFile::setPermissions(Path(QString::fromLatin1(file)), QFile::ReadOwner | QFile::WriteOwner);
    Map.ScaleWidth = frmMDI.InnerWidth = 520;
    Map.ScaleHeight = frmMDI.InnerHeight = 420;
    const MessageScript any(MsgAnswer::Yes);
    Open_Map(Path("Karte.bmp"));
    ASSERT_TRUE(frmMDI.MapOpen);
    Give_Map_Room(520, 420);
    view = View_Now();
  }
  int Below(int limit) { return static_cast<int>(random() % static_cast<unsigned>(std::max(1, limit))); }
  bool Chance(int oneOf) { return Below(oneOf) == 0; }
  QPoint Anywhere() { return {20 + Below(460), 20 + Below(360)}; }

  // Where table and map lie is no step: two texts of the header row.
  static QStringList Rows_And_Tables() {
    QStringList all = Whole_Table();
    const auto head =
        std::find_if(all.begin(), all.end(), [](const QString& line) { return line.startsWith("MapData:"); });
    QStringList cells = (head + 1)->split(u'|');
    cells[column::Eintrag] = cells[column::Schrift] = QString();
    *(head + 1) = cells.join(u'|');
    return all;
  }
  // What is to be seen with nothing in hand, from one point of view.
  State Now() {
    Drop_Map_Tool();
    End_Entry();
    Set_Zoom(static_cast<double>(view.zoom));
    ScrollMap(400, 300);
    Map_Redraw();
    return {Rows_And_Tables(), Map.canvas.copy()};
  }
  static void Expect_Same(const State& is, const State& was, const std::string& where) {
    const auto [here, there] = std::mismatch(is.table.begin(), is.table.end(), was.table.begin(), was.table.end());
    ASSERT_TRUE(here == is.table.end() && there == was.table.end())
        << where << ":\n"
        << (here == is.table.end() ? "" : here->toStdString()) << "\nformerly\n"
        << (there == was.table.end() ? "" : there->toStdString());
    ASSERT_EQ(is.picture, was.picture) << where;
  }
  void Go_Anywhere() {
    if (Entry_Count() > 0) Go(Key_At(1 + Below(Entry_Count())));
  }
  static QString Key_At(int position) {
    rsEntries->MoveTo(position);
    return rsEntries->Bookmark();
  }
  // A row of that sort, if chance meets one.
  bool Go_To(const std::function<bool(const EntryType&)>& wanted) {
    for (int attempt = 0; attempt < 30 && Entry_Count() > 0; ++attempt) {
      Go_Anywhere();
      if (wanted(Type_Here())) return true;
    }
    return false;
  }
  void Mark_Some() {
    for (int i = Below(5); i >= 0; --i) {
      Go_Anywhere();
      if (!Type_Here().hidden) Mark_Obj();
    }
  }
  void Take_Any() {
    Go_Anywhere();
    if (rsEntries->Position() > 0) Take_Entry(rsEntries->Bookmark());
  }
  void Command(const QString& key) {
    Take_Any();
    Run_Command(key);
  }
  void Type_Text() {
    Take_Entry(Key_At(1 + Below(Entry_Count())));
    Text_Typed(QStringLiteral("Getippt %1 äöü").arg(Below(1000)));
    Chance(2) ? (void)Store_Pending_Text() : (void)End_Entry();
  }
  void Change_Vertices() {
    if (!Go_To([](const EntryType& type) { return type.HasVertices() && !type.hidden; })) return;
    std::optional<VertexList> list = Vertices_Of_Current();
    if (!list || list->points.empty()) return;
    list->points[static_cast<size_t>(Below(static_cast<int>(list->points.size())))] += QPoint(3, 5);
    if (list->points.size() > list->Least() + 1 && Chance(2)) list->points.pop_back();
    Write_Vertex_List(*list);
  }
  void Statement() {
    SqlState sql;
    Open_Sql(sql);
    const QStringList statements = {"Update MapData Set VG = 4 Where Xmap > 300 And Typ > -1",
                                    "Update MapData Set Eintrag = Eintrag & 'x' Where Typ = 0",
                                    "Delete * From MapData Where Xmap > 700 And Typ = 0"};
    Apply_Sql(sql, statements[Below(3)]);
    Close_Sql(sql);
  }
  void Import_Of_Overlay() {
    const OverlayFile file = Read_Overlay(
        "[Symbol 1]\nTyp=3\nPunkte=2\nXKoord0=11.02\nYKoord0=49.76\nXKoord1=11.03\n"
        "YKoord1=49.765\n[Symbol 2]\nTyp=2\nText=Overlay\nXKoord=11.025\nYKoord=49.76\n");
    Import_Overlay(file, Plan_Overlay(file, PlacingWay::Transformed, true));
  }
  void Import_Of_Table() {
    TableSource source(Path("Andere.MDB"));
    std::vector<qint64> rows = source.Entries();
    rows.resize(std::min<size_t>(rows.size(), 9));
    Import_Entries(source, {rows, {}, {}, false, false});
  }
  static void Import_Of_Exchange() {
    Append_Exchange_Entries(
        Read_Exchange_All({u"T-1;Uhu;Arial-B<-045;16;1;16;0;0.5;100;200;110;210;11;"_s,
                           u"F-3;Moor;Arial;20;1;16;1;1.0;100;200;6;4;4;"_s, u"100,200/300,240/210,300/"_s, u"#;#;#"_s})
            .entries);
  }
  void Import_Of_Csv() {
    CsvTable table;
    QString lines = u"#Eintrag;#X;#Y;#UTM\r\n"_s;
    for (int i = 0; i < 5; ++i)
      lines += u"Fund %1;%2;%3;32U\r\n"_s.arg(i).arg(645000 + Below(2400)).arg(5513000 + Below(2400));
    Replace_File(Path("Funde.csv"), lines.toLatin1());
    if (Csv_Analyse(Path("Funde.csv"), table)) Csv_Import(table, {7, 7});
  }
  void Import_Of_Gps() {
    GpsFile file;
    file.system = {ReferenceSystem::Kind::Utm, u"WGS-84"_s};
    for (int i = 1; i < 4; ++i)
      file.waypoints.push_back({i, u"W%1"_s.arg(Below(99)), {}, {645000.0 + Below(2000), 5513000.0 + Below(1500), 32}});
    const GpsPlan plan = Plan_Gps(file, GpsContent::Waypoints, PlacingWay::AsWritten, Existing::Taken);
    Import_Gps(Gps_Units(file, plan, {}), GpsContent::Waypoints, {});
  }
  void Squares() {
    RasterPreview raster;
    raster.design = Raster_Ini();
    raster.plan = Plan({50, 50, 300, 200}, 60.0F + static_cast<float>(Below(60)));
    const int which = Below(4);
    which == 0 ? (void)Delete_Raster() : which == 1 ? (void)Show_Raster(Chance(2)) : (void)Take_Raster_On_Map(raster);
  }
  void From_Sheet() {
    Go_Anywhere();
    SheetComparison all;
    const QString text = u"aus dem Blatt %1"_s.arg(Below(99));
    all.differences.push_back({rsEntries->Key(), 1, 2, column::Eintrag, rsEntries->Raw(column::Eintrag), text});
    Take_From_Sheet(*dbEntries, *rsEntries, all, false);
  }
  static void Replace_Texts() {
    SearchState state;
    state.search = {u"Eintrag = *e*"_s};
    state.replace = {u"VG = 7"_s};
    Replace_All(state);
  }
  // Of those that ask for nothing.
  void Any_Command() {
    static const QStringList keys =
        u"mnuGridonoff mnuFlTemplateSave mnuFlTemplateGet mnuFootDel mnuMarkObj AdMark AdMarkLin AdNo mnuObjDel "
        "mnuUnmark mnuObjVisX mnuObjActX mnuObjVisJa mnuObjActivJa FrameOnOff Label ObjForeAll ObjBackAll mnuObjVisNo "
        "mnuObjActNo mnuObjVisAll mnuObjActAll mnuEintrCopy mnuKanten mnuInsNord mnuSpaceDel mnuRasterAktiv "
        "mnuEintrPaste mnuPicSize mnuTableNeu"_s.split(u' ');
    if (Chance(2)) Mark_Some();
    // A new table once in a while.
    Command(keys[Below(static_cast<int>(keys.size()) - (Chance(8) ? 0 : 1))]);
  }
  void Operate(int which);

  ViewPlace view;
  std::mt19937 random{20};
};

void Steps::Operate(int which) {
  if (Entry_Count() < 8) which = 15 + Below(2);
  const std::function<void()> all[kinds] = {
      [&] { Type_Text(); },
      [&] { ::Add_Text(Anywhere(), u"Neu %1"_s.arg(Below(100))); },
      [&] { Drag(Anywhere(), Anywhere()); },
      [&] {
        if (!Go_To([](const EntryType& type) { return !type.hidden; })) return;
        const EntryRow row = Read_Entry(*rsEntries);
        Take_Entry(rsEntries->Bookmark());
        const QPoint at(Window_X(row.Xmap) + 3, Window_Y(row.Ymap) + 3);
        Drag(at, at + QPoint(Below(80) - 40, Below(80) - 40));
      },
      [&] {
        Go_Anywhere(), Order_Entry(std::array{1, -1, 10, -10}[static_cast<size_t>(Below(4))]);
      },
      [&] { Mark_Some(); },
      [&] { Mark_Some(), Justify(static_cast<JustifyMode>(1 + Below(5))); },
      [&] { Move_Entries({.dx = 1.0 * Below(20) - 10, .dy = 1.0 * Below(20) - 10, .markedOnly = Chance(2)}); },
      [&] {
        if (Tbl.HasUserColumns && Chance(2))
          Remove_Column(rsEntries->Fields()[static_cast<size_t>(column::fixedCount)].name);
        else
          Add_Column({u"Spalte %1"_s.arg(Below(100000)), FieldType::Text, 9}, {});
      },
      [&] { Statement(); },
      [&] {
        if (Go_To([](const EntryType& type) { return type.IsText(); })) Set_Foot_Point(Anywhere());
      },
      [&] { Change_Vertices(); },
      [&] {
        Add_Polygon("Linie77", {Anywhere(), Anywhere(), Anywhere()});
      },
      [&] { Mark_Some(), Chance(4) ? Delete_Marked() : Group_Marked(); },
      [&] {
        Store_Figure(FigureOf::Next, {Below(500), Below(400), 30 + Below(50), 40});
      },
      [&] {
        if (Chance(4)) Load_Other_Table(Path("Andere.MDB"));
      },
      [&] { ::Add_Text(Anywhere(), u"Noch %1"_s.arg(Below(100))); },
      [&] { Menu("mnuReset").Enabled&& Chance(2) ? (void)Run_Command("mnuReset") : (void)0; },
      [&] {
        const QStringList keys = {"mnuTableSave", "mnuTabComp", "mnuTabRep", "mnuZoom50", "mnuTableRe"};
        Run_Command(keys[Below(Chance(3) ? 5 : 4)]);
      },
      [&] {
        Take_Any();
        Change_Color(Chance(2) ? ColorOf::VG : ColorOf::HG, Below(16));
        Change_Width(1 + Below(4));
      },
      [&] {
        Go_Anywhere();
        Edit_Cell(rsEntries->Key(), Chance(2) ? column::Eintrag : column::Xmap, QString::number(Below(500)));
      },
      [&] {
        Take_Any();
        FontChoice choice = Load_Font_Spec();
        choice.size = 8 + Below(12);
        Take_Font(choice);
      },
      [&] {
        if (Chance(2)) Step_Back();
        if (Chance(3)) Step_Forward();
      },
      // What windows and files bring.
      [&] {
        Add_Scale_Row({.ScaleValue = 1, .ScaleLenPx = 100 + Below(300), .vertical = Chance(2), .at = Anywhere()});
      },
      [&] {
        Append_Poly(PolyEditor::Kind::Area, {Anywhere(), Anywhere(), Anywhere()}, "Digitalisieren");
      },
      [&] { Import_Of_Overlay(); },
      [&] { Import_Of_Table(); },
      [&] { Import_Of_Exchange(); },
      [&] { Import_Of_Csv(); },
      [&] { Import_Of_Gps(); },
      [&] { Squares(); },
      [&] { From_Sheet(); },
      [&] { Replace_Texts(); },
      [&] { Any_Command(), Any_Command(); },
  };
  all[which]();
}

TEST_F(Steps, LeadBackToTheStartAndForthToTheEnd) {
  MessageScript any(MsgAnswer::Yes);
  constexpr int operations = 500;
  const State start = Now();
  ASSERT_EQ(Step_Count(), 0);
  std::map<int, State> stops;
  QSet<int> left;
  for (int i = 0; i < operations; ++i) {
    const int which = i < kinds ? i : Below(kinds);
    const int before = Step_Position();
    const QStringList table = Whole_Table();
    {
      const UndoStep step;  // as every event of the user
      Operate(which);
    }
    if (Whole_Table() != table) {
      left.insert(which);
      ASSERT_NE(Step_Position(), before) << "operation " << which << " leaves no step";
    }
    std::erase_if(stops, [](const auto& stop) { return stop.first > Step_Position(); });
    if (i % 37 == 5) stops[Step_Position()] = Now();
  }
  for (int which = 23; which < kinds; ++which) EXPECT_TRUE(left.contains(which)) << which << " did nothing";
  EXPECT_GT(left.size(), 28) << "hardly anything was done";
  EXPECT_EQ(Lost_History(), QString());
  const State end = Now();
  const int count = Step_Position();
  ASSERT_GT(count, 150);
  ASSERT_GE(stops.size(), 5u);
  while (Can_Step_Back()) {
    const int before = Step_Position();
    Step_Back();
    ASSERT_EQ(Step_Position(), before - 1) << Step_Back_Text() << any.Seen().back().text;
    if (const auto stop = stops.find(Step_Position()); stop != stops.end())
      Expect_Same(Now(), stop->second, "back at " + std::to_string(stop->first));
    ASSERT_FALSE(HasFatalFailure());
  }
  Expect_Same(Now(), start, "start");
  ASSERT_FALSE(HasFatalFailure());
  while (Step_Position() < count) {
    Step_Forward();
    if (const auto stop = stops.find(Step_Position()); stop != stops.end())
      Expect_Same(Now(), stop->second, "forth at " + std::to_string(stop->first));
  }
  Expect_Same(Now(), end, "end");
  for (int jump = 0; jump < 10; ++jump) {
    auto stop = stops.begin();
    std::advance(stop, Below(static_cast<int>(stops.size())));
    Walk_To_Step(stop->first);
    Expect_Same(Now(), stop->second, "jump to " + std::to_string(stop->first));
  }
}

}  // namespace
