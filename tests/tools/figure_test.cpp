#include "edit/bulk_change.h"
#include "edit/copy.h"
#include "edit/figure_edit.h"
#include "edit/figure_extras.h"
#include "edit/marks.h"
#include "edit/vertex_edit.h"
#include "hand/next_shape.h"
#include "support/hand_fixture.h"
#include "support/looks.h"
#include "tools/figure_tool.h"
#include "tools/free_figure_tool.h"

class FigureTest : public HandTest {
 protected:
  static EntryRow InHand() {
    const auto row = Figure_In_Hand();
    return row ? *row : EntryRow{};
  }
  static QRect Place(const EntryRow& row) { return {row.Xmap, row.Ymap, row.Xline, row.Yline}; }
  // "ID|Eintrag|Typ" of all entries, as they stand in the table.
  static QStringList Rows() {
    QStringList rows;
    For_Each_Entry([&rows] {
      const EntryRow row = Read_Entry(*rsEntries);
      rows << u"%1|%2|%3"_s.arg(row.ID, row.Eintrag).arg(row.Typ);
    });
    return rows;
  }
  static EntryRow Named(EntryRow row, const char* id) {
    row.ID = QLatin1String(id);
    return row;
  }
};

const FigureExtras allExtras{true, true, true, true, true};

TEST_F(FigureTest, DraggedAndClickedFiguresComeIntoTheHand) {
  CurHG = 3;
  NextShape.fill = -4;
  ASSERT_TRUE(Choose_Figure(EntryKind::Ellipse));
  EXPECT_TRUE(Button_Now("Fig").Value);
  Map_Mouse_Down({100, 90}, MouseButton::Left, {});
  Map_Mouse_Move({60, 40}, true);
  EXPECT_EQ(Painted_Over().boundingRect(), QRectF(60, 40, 40, 50));
  EXPECT_FALSE(Painted_Over().contains(QPointF(62, 42))) << "the outline is no ellipse";
  Map_Mouse_Up({60, 40}, MouseButton::Left);
  EXPECT_EQ(Map_Tool_In_Use(), nullptr);
  EXPECT_EQ(Place(InHand()), QRect(60, 40, 40, 50));
  EXPECT_EQ(std::tuple(InHand().Schrift, InHand().HG), std::tuple("F-4", 3));
  EXPECT_EQ(Toolbar1.Tag, ToolMode::Figure);
  // A click: the chosen size, to the pixel at any zoom.
  End_Entry();
  Set_Zoom(7);
  Zoom_Map();
  NextShape.figureWidth = 123;
  NextShape.figureHeight = 45;
  ASSERT_TRUE(Choose_Figure(EntryKind::Rectangle));
  Click({20, 30});
  EXPECT_EQ(Place(InHand()), QRect(140, 210, 123, 45));
  EXPECT_EQ(Rows(), QStringList({"Figur1|Ellipse|22", "Figur2|Rechteck|20"}));
  // Left by Esc: nothing is made.
  End_Entry();
  Choose_Figure(EntryKind::Circle);
  Map_Mouse_Down({10, 10}, MouseButton::Left, {});
  Map_Key(Qt::Key_Escape, {});
  Map_Mouse_Up({50, 50}, MouseButton::Left);
  EXPECT_EQ(Rows().size(), 2);
}

TEST_F(FigureTest, SquaresAndCirclesStaySquareAndOnTheMap) {
  const std::tuple<EntryKind, QPoint, QPoint, QRect> cases[] = {
      {EntryKind::Square, {100, 100}, {180, 120}, {100, 100, 80, 80}},
      {EntryKind::Circle, {100, 100}, {90, 30}, {30, 30, 70, 70}},
      {EntryKind::Circle, {40, 100}, {-300, 90}, {0, 60, 40, 40}}};
  for (const auto& [kind, from, to, box] : cases) {
    Choose_Figure(kind);
    Drag(from, to);
    EXPECT_EQ(Place(InHand()), box);
    // By a side handle and by a corner.
    const QRect right = Box(Map.lblHandle[3]), corner = Box(Map.lblHandle[4]);
    Drag(right.center(), right.center() + QPoint(15, 4));
    EXPECT_EQ(std::tuple(InHand().Xline, InHand().Xline), std::tuple(box.width() + 15, InHand().Yline));
    Drag(corner.center() + QPoint(15, 15), corner.center() + QPoint(20, 45));
    EXPECT_EQ(InHand().Xline, InHand().Yline);
    End_Entry();
  }
}

TEST_F(FigureTest, WhiteFiguresAndEmptyOnesGetARim) {
  for (const auto& [fill, ground, rim] : {std::tuple(1, 14, false), {0, 14, true}, {1, 15, true}}) {
    CurRA = -100;
    NextShape.fill = fill;
    CurHG = ground;
    Place_Figure({5, 5});
    EXPECT_EQ(FrameWord::Parse(InHand().RA).framed, rim) << fill;
    End_Entry();
  }
}

TEST_F(FigureTest, KindAndSizeOfTheFigureInHandCanBeTakenBack) {
  EntryRow row = Figure_Row(120, {100, 80, 60, 40});
  row.Eintrag = "Rechteck";
  const QString key = Take(row);
  ASSERT_TRUE(Change_Figure(EntryKind::Circle, 70, 999));
  EXPECT_EQ(Place(Row(key)), QRect(100, 80, 70, 70));
  EXPECT_EQ(Row(key).Typ, 123) << "the mark is lost";
  EXPECT_EQ(Row(key).Eintrag, "Kreis");
  EXPECT_EQ(Map.InHand, key);
  EXPECT_EQ(Menu("mnuReset").Caption, "Rückgängig: Figur ändern");
  for (const QSize bad : {QSize(0, 5), QSize(5, -1), QSize(32768, 5), QSize(32700, 32700)}) {
    MessageScript messages("Figur");
    EXPECT_FALSE(Change_Figure(EntryKind::Rectangle, bad.width(), bad.height())) << bad.width();
    EXPECT_EQ(Place(Row(key)), QRect(100, 80, 70, 70));
  }
  End_Entry();
  MessageScript messages(MsgAnswer::Ok);
  Undo_Last();
  EXPECT_EQ(Place(Row(key)), QRect(100, 80, 60, 40));
}

TEST_F(FigureTest, FreeFiguresAreDrawnPointByPoint) {
  ASSERT_TRUE(Draw_Free_Figure());
  for (const QPoint at : {QPoint(10, 10), {90, 20}, {95, 80}, {300, 300}}) Click(at);
  EXPECT_TRUE(Map_Key(Qt::Key_Backspace, {}));
  Click({20, 70});
  Map_Double_Click({20, 70});
  Map_Mouse_Up({20, 70}, MouseButton::Left);
  const std::vector<QPoint> drawn = {{10, 10}, {90, 20}, {95, 80}, {20, 70}};
  EXPECT_EQ(Load_Vertices("Figur1"), drawn);
  EXPECT_EQ(Place(InHand()), QRect(10, 10, 85, 70));
  EXPECT_EQ(InHand().Typ, 24);
  // Sized by the window the vertices go along; a duplicate has its own.
  EXPECT_TRUE(Change_Figure(EntryKind::Rectangle, 170, 140));
  EXPECT_EQ(InHand().Typ, 24);
  const std::vector<QPoint> twice = {{10, 10}, {170, 30}, {180, 150}, {30, 130}};
  EXPECT_EQ(Load_Vertices("Figur1"), twice);
  ASSERT_TRUE(Store_Figure(FigureOf::Duplicate, {110, 10, 170, 140}));
  EXPECT_EQ(InHand().ID, "Figur2");
  EXPECT_TRUE(Change_Free_Figure({{0, 0}, {50, 0}, {0, 50}}, true));
  EXPECT_EQ(InHand().Typ, 25);
  EXPECT_EQ(Place(InHand()), QRect(0, 0, 50, 50));
  EXPECT_EQ(Load_Vertices("Figur1"), twice);
  MessageScript messages{{"mindestens 3"}, {"-15000"}, {"32767"}};
  EXPECT_FALSE(Change_Free_Figure({{0, 0}, {50, 0}}, true));
  EXPECT_FALSE(Change_Free_Figure({{0, 0}, {50, 0}, {-16000, 5}}, true));
  EXPECT_FALSE(Change_Free_Figure({{0, 0}, {50, 0}, {40000, 5}}, true));
  End_Entry();
  // Too few points for a figure: the tool waits for more; Esc drops it.
  messages.Expect("mindestens 3");
  Draw_Free_Figure();
  Click({10, 10});
  Click({40, 10});
  Map_Mouse_Down({40, 10}, MouseButton::Right, {});
  EXPECT_NE(Map_Tool_In_Use(), nullptr);
  Map_Key(Qt::Key_Escape, {});
  EXPECT_EQ(Rows().size(), 2);
}

// Its position decides whether the row is looked at: a stale one takes the figure from sight.
TEST_F(FigureTest, TheRowOfAFreeFigureFollowsItsVertices) {
  Write_Vertices("Figur1", {{600, 300}, {700, 300}, {700, 400}});
  EntryRow row = Figure_Row(24, {600, 300, 100, 100});
  const QString key = Take(row);
  ASSERT_TRUE(Set_Figure_Properties(0, {true}));
  std::optional<VertexList> list = Vertices_Of_Current();
  list->points[0] = {20, 10};
  ASSERT_TRUE(Write_Vertex_List(*list));
  EXPECT_EQ(Place(Row(key)), QRect(20, 10, 680, 390));
  EXPECT_EQ(QPoint(Last_Row().Xmap, Last_Row().Ymap), QPoint(360, 205)) << "its middle goes along";
  Move_Vertex(1, {300, -40});
  EXPECT_EQ(Place(Row(key)), QRect(20, 10, 980, 390));
  ASSERT_TRUE(Insert_Vertex_At({360, 205}));
  Move_Vertex(3, {-350, 100});
  EXPECT_EQ(Place(Row(key)).left(), 10);
  ASSERT_TRUE(End_Entry());
  Mark_Rows({key, Add(Figure_Row(20, {100, 100, 200, 50}))});
  Justify(JustifyMode::Equal);
  EXPECT_EQ(Place(Row(key)).size(), QSize(200, 50));
  Justify(JustifyMode::Left);
  EXPECT_EQ(Place(Row(key)).topLeft(), QPoint(100, 10));
  const QPoint middle = QRect(QPoint(100, 10), QSize(200, 50)).center() + QPoint(1, 1);
  EXPECT_EQ(QPoint(Last_Row().Xmap, Last_Row().Ymap), middle);
}

// Axes and foci ------------------------------------------------------------------------------------------------------

TEST(FigureMeasuresTest, AxesAndFociByHand) {
  // Half axes 50 and 30: c = 40. Turned by 90 the right end goes to the top; 36.87 degrees: cos 0.8, sin 0.6.
  const std::tuple<QRect, double, QPointF, QPointF, QPointF> cases[] = {
      {{100, 200, 100, 60}, 0, {190, 230}, {200, 230}, {150, 260}},
      {{100, 200, 60, 100}, 0, {130, 290}, {130, 300}, {160, 250}},
      {{100, 200, 100, 60}, 90, {150, 190}, {150, 180}, {180, 230}},
      {{100, 200, 100, 60}, 36.8698976, {182, 206}, {190, 200}, {168, 254}},
      {{0, 0, 80, 80}, 0, {40, 40}, {80, 40}, {40, 80}},
  };
  for (const auto& [box, angle, focus, alongEnd, acrossEnd] : cases) {
    EntryRow row;
    row.Schrift = FillCode{1}.ToSchrift(angle);
    row.Typ = 22;
    set_entry_box(row, {box.x(), box.y(), box.width(), box.height()});
    const FigureAxes axes = Axes_Of(GetAbmessungen(row));
    for (const auto& [is, want] :
         {std::pair(axes.foci[1], focus), std::pair(axes.along[1], alongEnd), std::pair(axes.across[1], acrossEnd)})
      EXPECT_LT(QLineF(is, want).length(), 0.01) << angle << ": " << is.x() << ' ' << is.y();
  }
}

TEST(FigureMeasuresTest, AnglesAreNormalised) {
  const std::pair<double, double> cases[] = {{720, 0}, {-45, 315},        {359.9999, 0},
                                             {360, 0}, {45.1234, 45.123}, {-720, 0}};
  for (const auto& [given, want] : cases) EXPECT_DOUBLE_EQ(Normal_Angle(given), want) << given;
  const std::pair<QPointF, double> mouse[] = {{{9, 0}, 0}, {{0, -9}, 90}, {{-9, 0}, 180}, {{0, 9}, 270}, {{9, 9}, 315}};
  for (const auto& [way, want] : mouse) EXPECT_DOUBLE_EQ(GetWinkel({5, 5}, QPointF(5, 5) + way), want);
}

TEST_F(FigureTest, ExtrasBelongToTheirFigureAlone) {
  // Neighbours whose names hold the figure's.
  Add(Named(Figure_Row(22, {300, 300, 50, 50}), "Figur10"));
  Add(Named(Text_Row("M", 1, 1), "-Figur10"));
  Add(Named(Text_Row("Rand", 1, 1, 7), "-Achse>Figur10"));
  Add(Named(Text_Row("Notiz", 1, 1), "Figur1"));
  const QStringList others = Rows();
  Take(Figure_Row(22, {100, 200, 100, 60}));
  ASSERT_TRUE(Set_Figure_Properties(0, allExtras));
  const QStringList extras = {"-Figur1|M|0",      "-Figur1|F1|0",         "-Figur1|F2|0",       "-Achse>Figur1||7",
                              "-Achse>Figur1||7", "-Figur1|Längsachse|0", "-Figur1|Querachse|0"};
  const QString figure = "Figur1|Figur|22";
  EXPECT_EQ(Rows(), others + QStringList(figure) + extras);
  EXPECT_EQ(Extras_Of(InHand()), allExtras);
  // Nothing of them can be hit.
  EXPECT_FALSE(Map.EntryRegions.AnyAt({205, 230}) && Map.EntryRegions.TopAt({205, 230}) > 0);
  // The same once more: no second set. Fewer: the others go. A deactivated figure stays what it is.
  ASSERT_TRUE(Set_Figure_Properties(720, allExtras));
  EXPECT_EQ(Rows(), others + QStringList(figure) + extras);
  for (const FigureExtras& one : {FigureExtras{true}, FigureExtras{false, false, true},
                                  FigureExtras{false, false, false, true}, FigureExtras{false, true}, FigureExtras{}}) {
    ASSERT_TRUE(Set_Figure_Properties(0, one));
    EXPECT_EQ(Extras_Of(InHand()), one);
  }
  EXPECT_EQ(Rows(), others + QStringList(figure));
  EntryRow off = InHand();
  off.ID = "-Figur1";
  Update_Entry(off);
  ASSERT_TRUE(Set_Figure_Properties(10, {true}));
  AddRowsX("Figur1");
  EXPECT_EQ(Rows(), others + QStringList("-Figur1|Figur|22"));
}

TEST_F(FigureTest, ExtrasFollowTurningMovingAndSizing) {
  Take(Figure_Row(22, {100, 200, 100, 60}));
  ASSERT_TRUE(Set_Figure_Properties(-270, {false, true, true}));
  EXPECT_EQ(InHand().Schrift, "F 1<90");
  EXPECT_EQ(Menu("mnuReset").Caption, "Rückgängig: Figur ändern");
  const auto extra = [](int number) {
    const KeepCurrentRow keep;
    rsEntries->MoveTo(rsEntries->Position() + number);
    return Read_Entry(*rsEntries);
  };
  const auto point = [](const EntryRow& row) { return QPoint(row.Xmap, row.Ymap); };
  EXPECT_EQ(point(extra(1)), QPoint(150, 270));
  EXPECT_EQ(point(extra(2)), QPoint(150, 190));
  EXPECT_EQ(QLine(extra(3).Xmap, extra(3).Ymap, extra(3).Xline, extra(3).Yline), QLine(150, 280, 150, 180));
  EXPECT_FALSE(FrameWord::Parse(extra(3).RA).framed) << "an axis has no text to frame";
  Drag({150, 230}, {170, 240});
  EXPECT_EQ(Place(InHand()), QRect(120, 210, 100, 60));
  EXPECT_EQ(point(extra(2)), QPoint(170, 200));
  ASSERT_TRUE(Change_Figure(EntryKind::Ellipse, 60, 60));
  EXPECT_EQ(point(extra(1)), QPoint(150, 240));
  // The drawn ellipse is turned, too.
  ASSERT_TRUE(Change_Figure(EntryKind::Ellipse, 100, 20));
  EXPECT_NE(Map.canvas.pixel(170, 260), qRgb(255, 255, 255));
  EXPECT_EQ(Map.canvas.pixel(130, 220), qRgb(255, 255, 255));
}

TEST_F(FigureTest, ExtrasAreCopiedAndDeletedWithTheirFigures) {
  const QString first = Take(Figure_Row(22, {100, 200, 100, 60}));
  ASSERT_TRUE(Set_Figure_Properties(0, allExtras));
  const int each = Entry_Count();
  Copy_Entry();
  EXPECT_EQ(Entry_Count(), 2 * each);
  EXPECT_EQ(InHand().ID, "Figur2");
  EXPECT_EQ(Extras_Of(InHand()), allExtras);
  EXPECT_EQ(QPoint(Last_Row().Xmap, Last_Row().Ymap), QPoint(180, 300)) << "30 pixels on, like the copy";
  ASSERT_TRUE(Store_Figure(FigureOf::Duplicate, entry_box(InHand())));
  EXPECT_EQ(Entry_Count(), 3 * each);
  EXPECT_EQ(Extras_Of(InHand()), allExtras);
  // Each way to delete a figure takes its extras along.
  MessageScript messages(MsgAnswer::Yes);
  Map_Key(Qt::Key_Delete, {});
  EXPECT_EQ(Entry_Count(), 2 * each);
  Mark_Rows({first});
  Delete_Marked();
  EXPECT_EQ(Entry_Count(), each);
  rsEntries->MoveFirst();
  while (!Type_Here().IsFigure()) rsEntries->MoveNext();
  ASSERT_TRUE(Delete_Rows({rsEntries->Key()}));
  EXPECT_EQ(Entry_Count(), 0);
}

TEST_F(FigureTest, TellsWhereNoFigureIsInHandOrOneHasNoNumber) {
  Take(Text_Row("Eiche", 50, 50));
  MessageScript messages("Keine aktive Figur");
  EXPECT_FALSE(Show_Figure());
  EXPECT_EQ(messages.Seen()[0].title, "Error");
  EXPECT_FALSE(Set_Figure_Properties(10, allExtras));
  // A bare outline keeps its look when it is turned.
  EntryRow outline = Figure_Row(20, {10, 10, 40, 20});
  outline.Schrift = "Arial";
  outline.VG = 12;
  Turn_Row(outline, 30);
  EXPECT_EQ(std::tuple(outline.Schrift, outline.RA), std::tuple("F 0<30", 212));
  // A figure without a number: nothing is made.
  Add(Named(Figure_Row(20, {1, 1, 9, 9}), "Figur"));
  const QStringList before = Rows();
  messages.Expect(QStringLiteral("Keine Nummer ")).Expect(QStringLiteral("Error: 5000"));
  EXPECT_FALSE(Place_Figure({5, 5}));
  EXPECT_FALSE(Add_Free_Figure({{0, 0}, {9, 0}, {0, 9}}, false));
  EXPECT_EQ(messages.Seen()[1].title, "Fehler");
  EXPECT_EQ(std::tuple(Rows(), dbEntries->InTrans()), std::tuple(before, false));
}
