#include "tools/poly_editor.h"

#include "edit/line_look.h"
#include "edit/vertex_edit.h"
#include "hand/next_shape.h"
#include "support/hand_fixture.h"

using Kind = PolyEditor::Kind;

class PolyEditorTest : public HandTest {
 protected:
  static void Right(QPoint at) { Map_Mouse_Down(at, MouseButton::Right, {}); }
  static void Clicks(std::initializer_list<QPoint> places) {
    for (const QPoint place : places) Click(place);
  }
  // Draws it and gives the row that is in hand then.
  static EntryRow Draw(Kind kind, std::initializer_list<QPoint> places) {
    Poly_Editor(kind);
    Clicks(places);
    Right({600, 500});
    return Map.InHand.isEmpty() ? EntryRow() : Row(Map.InHand);
  }
  static std::vector<QPoint> Vertices(const EntryRow& row) { return Load_Vertices(EntryId::Parse(row.ID).TableName()); }
  static int Tables(const QString& kind) {
    const auto tables = dbEntries->TableDefs();
    return static_cast<int>(
        std::count_if(tables.begin(), tables.end(), [&](const TableDef& def) { return def.name.startsWith(kind); }));
  }
};

TEST_F(PolyEditorTest, WritesWhatWasClicked) {
  CurVG = 9;
  CurHG = 3;
  CurRA = 204;
  NextShape = {.width = 3, .lineStyle = -2, .ends = LineEnds{.atEnd = true}, .fill = -8};
  EntryRow row = Draw(Kind::Line, {{100, 100}, {200, 150}, {300, 100}});
  EXPECT_EQ(row, (EntryRow{"Linie0 - P0010L1.0B1.0", "Linie0", "Arial", 8, 9, 3, 204, 100, 100, 3, -2, 4}));
  EXPECT_EQ(Vertices(row), (std::vector<QPoint>{{100, 100}, {200, 150}, {300, 100}}));
  EXPECT_EQ(Toolbar1.Tag, ToolMode::Line);
  EXPECT_TRUE(Map.Tool.isEmpty());
  EXPECT_EQ(Tbl.Tag, TableTag::Dirty);
  NextShape.rounded = true;
  row = Draw(Kind::Area, {{100, 300}, {200, 300}, {150, 400}});
  EXPECT_EQ(std::tie(row.ID, row.Eintrag, row.Yline, row.Typ), std::tuple("Flaeche0", "Flaeche0", -8, 40));
  EXPECT_EQ(Toolbar1.Tag, ToolMode::Area);
}

TEST_F(PolyEditorTest, EveryWayToEndAndToDrop) {
  const int rows = Entry_Count();
  // Too few vertices, two of a double click that slipped, Esc: nothing is left behind.
  EXPECT_TRUE(Draw(Kind::Line, {{100, 100}, {101, 100}}).ID.isEmpty());
  EXPECT_TRUE(Draw(Kind::Area, {{100, 100}, {200, 200}}).ID.isEmpty());
  Poly_Editor(Kind::Line);
  Clicks({{10, 100}, {100, 100}, {200, 200}});
  EXPECT_TRUE(Map_Key(Qt::Key_Escape, {}));
  EXPECT_EQ(Entry_Count(), rows);
  EXPECT_EQ(Tables("Linie") + Tables("Fl"), 0);
  // Double click, and a vertex taken back.
  Poly_Editor(Kind::Line);
  Clicks({{100, 100}, {200, 200}, {300, 300}});
  EXPECT_TRUE(Map_Key(Qt::Key_Backspace, {}));
  Click({250, 120});
  Map_Double_Click({250, 120});
  EXPECT_EQ(Vertices(Row(Map.InHand)), (std::vector<QPoint>{{100, 100}, {200, 200}, {250, 120}}));
  Poly_Editor(Kind::Line);
  EXPECT_TRUE(Map.InHand.isEmpty()) << "the entry in hand is given up";
  Clicks({{100, 400}, {200, 400}});
  EXPECT_TRUE(Map_Key(Qt::Key_Return, {}));
  EXPECT_EQ(Row(Map.InHand).ID, "Linie1");
}

TEST_F(PolyEditorTest, VerticesStayWhereTheyAreWhenTheMapMoves) {
  Poly_Editor(Kind::Line);
  Click({400, 300});
  const QPoint first(Map_X(400), Map_Y(300));
  Zoom_At(0.5, 400, 300);
  Scroll_By(60, 40);
  Map_Mouse_Move({500, 350}, false);
  const QPainterPath outline = Painted_Over();
  EXPECT_EQ(outline.elementAt(0).x, Window_X(first.x()));
  EXPECT_EQ(outline.elementAt(1).y, 350);
  const QPoint second(Map_X(500), Map_Y(350));
  Click({500, 350});
  // A vertex at the edge brings the map on.
  const int left = Map.ViewLeft;
  const QPoint third(Map_X(Map.ViewWidth - 5), Map_Y(300));
  Click({Map.ViewWidth - 5, 300});
  EXPECT_GT(Map.ViewLeft, left);
  Map_Key(Qt::Key_Enter, {});
  EXPECT_EQ(Vertices(Row(Map.InHand)), (std::vector<QPoint>{first, second, third}));
}

TEST_F(PolyEditorTest, TheThousandAndFirstIsRefusedUnlessATableIsGivenBack) {
  dbEntries->BeginTrans();
  for (int i = 0; i < 1000; ++i) Write_Vertices(QString("Flaeche%1").arg(i), {{1, 1}, {2, 2}, {3, 1}});
  dbEntries->CommitTrans();
  {
    MessageScript script("maximale Zahl der Polygone = 1000!", MsgAnswer::Ok);
    Poly_Editor(Kind::Area);
    EXPECT_TRUE(Map.Tool.isEmpty());
  }
  Write_Vertices("Flaeche417", {{1, 1}});
  EXPECT_EQ(Draw(Kind::Area, {{100, 300}, {200, 300}, {150, 400}}).ID, "Flaeche417");
}

class VertexDragTest : public PolyEditorTest {
 protected:
  static QString Take(const QString& name, const std::vector<QPoint>& vertices) {
    return RowsOfTable::Take(Poly_Row(name, 10, 10, vertices));
  }
};

TEST_F(VertexDragTest, TheMouseMovesOneVertex) {
  const QString row = Take("Flaeche1", {{100, 100}, {300, 100}, {200, 300}});
  Map_Mouse_Move({500, 500}, false);
  EXPECT_EQ(Map_Pointer(), MapPointer::Arrow);
  Map_Mouse_Move({301, 99}, false);
  EXPECT_EQ(Map_Pointer(), MapPointer::Size);
  Map_Mouse_Down({301, 99}, MouseButton::Left, {});
  Map_Mouse_Move({351, 149}, true);
  EXPECT_EQ(dragState.outline, QPolygonF({{100, 100}, {350, 150}, {200, 300}}));
  Map_Mouse_Up({351, 149}, MouseButton::Left);
  EXPECT_EQ(Vertices(Row(row)), (std::vector<QPoint>{{100, 100}, {350, 150}, {200, 300}}));
  EXPECT_EQ(Map.InHand, row);
  EXPECT_EQ(At(row), QPoint(10, 10)) << "the label stays";
  // Out of the window it stops at the edge; nobody is asked whether to delete.
  Drag({350, 150}, {2000, 150});
  EXPECT_EQ(Vertices(Row(row))[1], QPoint(Map_X(Map.ViewWidth - 1), 150));
  // A click and Esc write nothing; between the vertices the whole area is gripped.
  Click({100, 100});
  Map_Mouse_Down({100, 100}, MouseButton::Left, {});
  Map_Mouse_Move({150, 150}, true);
  Map_Key(Qt::Key_Escape, {});
  EXPECT_EQ(Vertices(Row(row))[0], QPoint(100, 100));
  EXPECT_EQ(Grip_At({200, 150}), Grip::Entry);
}

TEST_F(VertexDragTest, ControlClickAddsAVertexAndTheStopMarkStays) {
  const QString row = Take("Linie1", {{100, 100}, {300, 100}, {stopMark, 0}, {7, 8}});
  Click({200, 102}, {.control = true});
  EXPECT_EQ(Vertices(Row(row)), (std::vector<QPoint>{{100, 100}, {200, 102}, {300, 100}}));
  const auto& all = *dbEntries->Points("Linie1");
  ASSERT_EQ(all.size(), 5U);
  EXPECT_EQ(all[3].x, stopMark);
  EXPECT_EQ(all[4].y, 8);
  Click({200, 200}, {.control = true});  // beside it
  EXPECT_EQ(dbEntries->Points("Linie1")->size(), 5U);
  // Damaged tables, and vertices close to each other.
  Take("Linie5", {{100, 100}});
  EXPECT_EQ(Vertex_At({500, 500}), -1);
  EXPECT_EQ(Edge_At({100, 100}), -1);
  Take("Linie2", {});
  EXPECT_FALSE(Vertices_Of_Current().has_value());
  Take("Linie3", {});
  TableDef words = Vertex_Def("Linie3");
  for (auto& field : words.fields) field.type = FieldType::Text;
  dbEntries->CreateTable(words);
  dbEntries->Execute("INSERT INTO Linie3 VALUES ('a', 'b')");
  Map_Redraw();
  EXPECT_LE(Vertex_At({0, 0}), 0);
  // Vertices a pixel apart cannot be told apart: there the line is gripped as a whole.
  std::vector<QPoint> dense;
  for (int x = 100; x < 400; ++x) dense.emplace_back(x, 200);
  Take("Linie4", dense);
  EXPECT_EQ(Grip_At({250, 200}), Grip::Entry);
}

TEST_F(VertexDragTest, ChangesTheLineInHandElseTheNext) {
  Set_Line_Style_Code(-3);
  Set_Line_Ends({.shape = LineEnds::Shape::Circle, .atStart = true, .lengthMm = 5, .widthMm = 2.5});
  EXPECT_EQ(NextShape.lineStyle, -3);
  EXPECT_TRUE(NextShape.ends && NextShape.ends->atStart);
  const QString row = Take("Linie1>Flaeche3", {{100, 100}, {300, 100}});
  EXPECT_EQ(Line_Style_Code(), 1);
  EXPECT_FALSE(Line_Ends_Now().atStart || Line_Ends_Now().atEnd);
  Set_Line_Style_Code(5);
  Set_Line_Ends({.shape = LineEnds::Shape::Rectangle,
                 .filled = true,
                 .atEnd = true,
                 .partial = true,
                 .lengthMm = 12,
                 .widthMm = 3});
  EXPECT_EQ(std::tuple(Row(row).Yline, Row(row).ID), std::tuple(5, QStringLiteral("Linie1 - R1011L12.B3.0>Flaeche3")));
  EXPECT_EQ(Map.InHand, row);
  LineEnds ends = Line_Ends_Now();
  EXPECT_EQ(ends.lengthMm, 12);
  ends.atEnd = false;
  Set_Line_Ends(ends);
  EXPECT_EQ(Row(row).ID, "Linie1>Flaeche3");
  EXPECT_EQ(NextShape.lineStyle, -3);
}

TEST_F(VertexDragTest, AreaTemplateGoesRound) {
  const QString source = Take("Flaeche1", {{100, 100}, {300, 100}, {200, 300}});
  EntryRow look = Row(source);
  std::tie(look.VG, look.HG, look.RA, look.Yline, look.Xline) = std::tuple(4, 6, -205, -4, 3);
  rsEntries->SetBookmark(source);
  Update_Entry(look);
  EXPECT_FALSE(frmMDI.HasTemplate);
  Save_Area_Template();
  EXPECT_TRUE(frmMDI.HasTemplate);
  End_Entry();
  Take_Area_Template();
  EXPECT_EQ(std::tuple(CurVG, CurHG, CurRA, NextShape.fill, NextShape.width), std::tuple(4, 6, -205, -4, 3));
}
