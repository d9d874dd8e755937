#include "tools/drag.h"

#include "edit/vertex_edit.h"
#include "hand/hand_controls.h"
#include "support/hand_fixture.h"

class DragTest : public HandTest {
 protected:
  static QPoint Foot(const QString& key) { return {Row(key).Xline, Row(key).Yline}; }
};

TEST_F(DragTest, ATextGoesWithItsLeadAndLeavesItsFootPoint) {
  const QString amsel = Add({"Text", "Amsel", "Arial", 12, 0, 14, -100, 100, 100, 300, 300, 1});
  Map_Redraw();
  Drag({110, 108}, {160, 138});  // taken and dragged in one move
  EXPECT_EQ(At(amsel), QPoint(150, 130));
  EXPECT_EQ(Foot(amsel), QPoint(300, 300));
  EXPECT_EQ(std::tuple(Map.InHand, Map.Text2.Left), std::tuple(amsel, 150));
  ASSERT_TRUE(End_Entry());
  Drag({300, 300}, {420, 380});  // the foot point is gripped at once
  EXPECT_EQ(Map.InHand, amsel);
  EXPECT_EQ(Foot(amsel), QPoint(420, 380));
  EXPECT_EQ(At(amsel), QPoint(150, 130));
  Drag({420, 380}, {-50, 900});  // the foot point stays within the view, and is never 0
  EXPECT_EQ(Foot(amsel), QPoint(1, Map.ViewHeight - 1));
  Map_Key(Qt::Key_Right, {.shift = true});
  Map_Key(Qt::Key_Up, {});
  EXPECT_EQ(At(amsel), QPoint(160, 129));
}

TEST_F(DragTest, NothingIsWrittenOrPaintedAnewUntilTheEnd) {
  const QString box = Take(Figure_Row(20, {100, 100, 80, 60}));
  int rows = 0, painted = 0;
  events.TableChanged.Connect([&] { ++rows; });
  events.MapPainted.Connect([&] { ++painted; });
  const EntryRow before = Row(box);
  Map_Mouse_Down({140, 130}, MouseButton::Left, {});
  Map_Mouse_Move({142, 131}, true);  // still a click
  EXPECT_TRUE(dragState.outline.isEmpty());
  Map_Mouse_Move({240, 180}, true);
  EXPECT_EQ(dragState.outline.boundingRect().toRect().topLeft(), QPoint(200, 150));
  EXPECT_EQ(Box(Map.lblShape).topLeft(), QPoint(200, 150));
  EXPECT_EQ(Row(box), before);
  EXPECT_LE(painted, 1) << "the map is painted anew while something is dragged";
  Map_Key(Qt::Key_Escape, {});
  EXPECT_EQ(Box(Map.lblShape).topLeft(), QPoint(100, 100));
  Map_Mouse_Up({240, 180}, MouseButton::Left);
  EXPECT_EQ(Row(box), before);
  Click({141, 131});
  EXPECT_EQ(Row(box), before);
  EXPECT_EQ(rows, 0);
  Drag({140, 130}, {240, 180});
  EXPECT_EQ(rows, 1);
  EXPECT_EQ(std::tuple(Row(box).Xmap, Row(box).Xline), std::tuple(200, 80));
}

// The outline would stay where it is while the map moves away under it.
TEST_F(DragTest, ScrollingOrZoomingPutsWhatIsDraggedBack) {
  const QString box = Take(Figure_Row(20, {300, 300, 80, 60})), text = Add(Text_Row("Amsel", 600, 400));
  const std::function<void()> moves[] = {[] { Scroll_By(60, 0); }, [] { Scroll_Changed(false, 20); },
                                         [] { Zoom_At(2, 100, 100); }, [] { Set_Zoom(1); }};
  for (const auto& move : moves) {
    const QPoint from(Window_X(340), Window_Y(330)), to = from + QPoint(40, 25);
    Map_Mouse_Down(from, MouseButton::Left, {});
    Map_Mouse_Move(to, true);
    ASSERT_FALSE(Map_Paint_Over().empty());
    int painted = 0;
    const int listener = events.MapPainted.Connect([&painted] { ++painted; });
    move();
    events.MapPainted.Disconnect(listener);
    EXPECT_EQ(painted, 1);
    EXPECT_TRUE(Map_Paint_Over().empty());
    EXPECT_EQ(Box(Map.lblShape).topLeft(), QPoint(Window_X(300), Window_Y(300)));
    Map_Mouse_Move(to + QPoint(10, 10), true);
    Map_Mouse_Up(to + QPoint(10, 10), MouseButton::Left);
    EXPECT_EQ(At(box), QPoint(300, 300));
    EXPECT_EQ(Map.InHand, box);
  }
  Scroll_By(-9999, -9999);
  Map_Mouse_Down({340, 330}, MouseButton::Left, {});
  Map_Mouse_Move({380, 360}, true);
  Map_Redraw();  // the view is the same: the drag goes on
  Map_Mouse_Up({380, 360}, MouseButton::Left);
  EXPECT_EQ(At(box), QPoint(340, 330));
  EXPECT_EQ(At(text), QPoint(600, 400));
}

TEST_F(DragTest, HandlesSizeFigures) {
  const QRect start(200, 200, 100, 60), square(200, 200, 100, 100);
  const std::tuple<int, int, QPoint, QRect> cases[] = {
      {20, 4, {30, 20}, {200, 200, 130, 80}},  {20, 0, {-30, 20}, {170, 220, 130, 40}},
      {22, 1, {50, -10}, {200, 190, 100, 70}}, {22, 7, {10, 99}, {210, 200, 90, 60}},
      {20, 3, {-500, 0}, {200, 200, 1, 60}},   {21, 4, {30, 5}, {200, 200, 130, 130}},
      {23, 0, {-20, 5}, {180, 180, 120, 120}}, {21, 5, {0, -40}, {200, 200, 60, 60}}};
  for (const auto& [kind, handle, by, expected] : cases) {
    const QString figure = Take(Figure_Row(kind, kind == 21 || kind == 23 ? square : start));
    const QPoint from = Box(Map.lblHandle[static_cast<size_t>(handle)]).center();
    Drag(from, from + by);
    EXPECT_EQ(entry_box(Row(figure)), (EntryBox{expected.x(), expected.y(), expected.width(), expected.height()}))
        << kind << ' ' << handle;
    EXPECT_EQ(Box(Map.lblShape), expected);
    rsEntries->Delete();
  }
}

// Turned by 90 degrees the upper right corner is seen where the upper left one of the standing box is.
TEST_F(DragTest, TurnedFiguresAreGrippedWhereTheyAreSeen) {
  EntryRow row = Figure_Row(20, {200, 200, 100, 60});
  row.Schrift = QStringLiteral("F 1<90");
  const QString figure = Add(row);
  Map_Redraw();
  ASSERT_TRUE(Take_Entry(figure));
  const auto handle = [](size_t i) { return Box(Map.lblHandle[i]).center(); };
  const auto near = [](QPoint a, QPoint b) { return (a - b).manhattanLength() <= 2; };
  EXPECT_TRUE(near(handle(2), {220, 180}) && near(handle(6), {280, 280}));
  EXPECT_EQ(Grip_At({205, 230}), Grip::None) << "in the box, beside the figure";
  EXPECT_EQ(Grip_At({240, 205}), Grip::Entry);
  // The right edge is seen above: up is longer, and the lower end stays where it is.
  Drag(handle(3), handle(3) + QPoint(0, -40));
  EXPECT_EQ(std::tuple(Row(figure).Xline, Row(figure).Yline), std::tuple(140, 60));
  EXPECT_TRUE(near(handle(6), {280, 280}) && near(handle(2), {220, 140}));
  Drag({250, 200}, {300, 250});
  EXPECT_TRUE(near(handle(6), {330, 330}));
}

TEST_F(DragTest, AVertexOfATurnedFigureGoesWithTheMouseAndTheOthersStay) {
  Write_Vertices("Figur7", {{200, 200}, {300, 200}, {300, 250}, {200, 250}});
  const QString figure = Add({"Figur7", "Figur", "F 1<90", 12, 0, 14, -100, 200, 200, 100, 50, 24});
  Map_Redraw();
  ASSERT_TRUE(Take_Entry(figure));
  const auto seen = [&figure] {
    std::vector<QPoint> points;
    const auto list = *Vertices_Of(figure.toLongLong());
    for (int i = 0; i < static_cast<int>(list.points.size()); ++i) points.push_back(Seen_Vertex(list, i));
    return points;
  };
  const std::vector<QPoint> before = seen();
  ASSERT_EQ(before[1], QPoint(225, 175));
  EXPECT_EQ(Vertex_At(before[1]), 1);
  int number = -1;
  // The handles of the box lie on the corners; a vertex between them is free.
  ASSERT_TRUE(Insert_Vertex_At({250, 175}));
  ASSERT_EQ(Grip_At({240, 175}, &number), Grip::Entry);
  Move_Vertex(2, {-5, -60});
  std::vector<QPoint> wanted = before;
  wanted.insert(wanted.begin() + 2, QPoint(245, 115));
  const std::vector<QPoint> after = seen();
  ASSERT_EQ(after.size(), wanted.size());
  for (size_t i = 0; i < wanted.size(); ++i)
    EXPECT_LE((after[i] - wanted[i]).manhattanLength(), 2) << i << ": " << after[i].x() << ' ' << after[i].y();
  const QRect region = Region_Bounds(figure.toLongLong()).toRect();
  EXPECT_LE(std::abs(region.top() - 115), 2) << "and so it is drawn";
}

TEST_F(DragTest, AnEllipseInHandIsHitInItself) {
  for (const auto& [schrift, corner] : {std::pair("F 1", QPoint(310, 308)), std::pair("F 1<90", QPoint(326, 290))}) {
    EntryRow row = Figure_Row(22, {300, 300, 120, 80});
    row.Schrift = QLatin1String(schrift);
    const QString below = Add(Figure_Row(20, {290, 280, 140, 140})), ellipse = Add(row);
    Map_Redraw();
    Click(corner);
    ASSERT_EQ(Map.InHand, ellipse) << "until it is in hand its box counts";
    EXPECT_EQ(Grip_At({360, 340}), Grip::Entry);
    Click(corner);
    EXPECT_EQ(Map.InHand, below) << schrift;
    Click(corner);
    EXPECT_EQ(Map.InHand, ellipse) << "let go it counts with its box again";
    End_Entry();
    Delete_Entries({below.toLongLong(), ellipse.toLongLong()});
  }
}

TEST_F(DragTest, LinesGoWithTheirVerticesAndLabelsAlone) {
  const QString area = Add(Poly_Row("Flaeche1", 250, 420, {{200, 400}, {350, 400}, {300, 500}}));
  const QString line = Add(Poly_Row("Linie9", 500, 100, {}));
  Map_Redraw();
  Drag({300, 480}, {320, 490});  // an area is taken first, and does not move by accident
  EXPECT_EQ(At(area), QPoint(250, 420));
  Drag({300, 480}, {320, 490});
  EXPECT_EQ(At(area), QPoint(270, 430));
  EXPECT_EQ(Load_Vertices("Flaeche1"), (std::vector<QPoint>{{220, 410}, {370, 410}, {320, 510}}));
  Drag({275, 436}, {305, 446});  // the label
  EXPECT_EQ(At(area), QPoint(300, 440));
  EXPECT_EQ(Load_Vertices("Flaeche1").front(), QPoint(220, 410));
  Click({505, 106});
  Drag({505, 106}, {525, 126});
  EXPECT_EQ(At(line), QPoint(520, 120));
  Move_In_Hand(5, 5);
  EXPECT_EQ(At(line), QPoint(525, 125));
  // A vertex beyond the stop mark would end the outline.
  const QString far = Take(Poly_Row("Linie1", 100, 100, {{-14990, 100}, {200, 200}}));
  With_Box("zu weit", [] { Move_In_Hand(-20, 0); });
  EXPECT_EQ(At(far), QPoint(100, 100));
  EXPECT_EQ(Load_Vertices("Linie1").front(), QPoint(-14990, 100));
}

TEST_F(DragTest, FreeFiguresAndPlanSquaresAndScales) {
  Write_Vertices("Figur7", {{200, 200}, {300, 200}, {300, 250}});
  const QString figure = Take({"Figur7", "Figur", "F 1", 12, 0, 14, -100, 200, 200, 100, 50, 24}),
                plan = Add(Figure_Row(16, {400, 100, 450, 150})),
                bar = Add({"Maßstab", " m", "Arial", 100, 0, 14, -100, 100, 500, 300, 500, 11});
  Drag({300, 250}, {400, 300});  // its lower right handle: twice the size
  EXPECT_EQ(Load_Vertices("Figur7"), (std::vector<QPoint>{{200, 200}, {400, 200}, {400, 300}}));
  Drag({380, 220}, {370, 230});
  EXPECT_EQ(Load_Vertices("Figur7").front(), QPoint(190, 210));
  EXPECT_EQ(entry_box(Row(figure)), (EntryBox{190, 210, 200, 100}));
  ASSERT_TRUE(Take_Entry(plan));
  Move_In_Hand(10, 20);
  EXPECT_EQ(entry_box(Row(plan)), (EntryBox{410, 120, 50, 50}));
  ASSERT_TRUE(Take_Entry(bar));
  Move_In_Hand(10, 20);
  EXPECT_EQ(QPoint(Row(bar).Xline, Row(bar).Yline), QPoint(310, 520));
}

TEST_F(DragTest, GroupsGoTogetherOrNotAtAll) {
  EntryRow first = Text_Row("A", 100, 100), second = Text_Row("B", 200, 150), far = Text_Row("C", 32000, 100);
  first.ID = second.ID = QStringLiteral("Text<1");
  const QString a = Add(first), b = Add(second), alone = Add(Text_Row("D", 300, 300));
  Map_Redraw();
  Drag({104, 108}, {144, 128});
  const QList<QPoint> moved = {{140, 120}, {240, 170}, {300, 300}};
  EXPECT_EQ((QList<QPoint>{At(a), At(b), At(alone)}), moved);
  far.ID = first.ID;
  const QString c = Add(far);
  Map_Redraw();
  MessageScript script("32767");
  Move_In_Hand(1000, 0);
  EXPECT_EQ((QList<QPoint>{At(a), At(b), At(alone), At(c)}), (moved + QList<QPoint>{{32000, 100}}));
  EXPECT_FALSE(dbEntries->InTrans());
  EXPECT_EQ(Map.InHand, a);
}

TEST_F(DragTest, PicturesKeepTheirShapeWhenSized) {
  ASSERT_TRUE(Make_Canvas(40, 30, qRgb(200, 0, 0)).save(Path("Vogel.png")));
  const QString picture = Add({"Bild", "Vogel.png", "Arial", 12, 0, 14, -100, 100, 100, 0, 0, 5});
  Map_Redraw();
  Drag({120, 115}, {170, 145});
  EXPECT_EQ(At(picture), QPoint(150, 130));
  const QPoint corner = Box(Map.imgHandle).center();
  Drag(corner, corner + QPoint(40, 5));
  EXPECT_EQ(Box(Map.imgBild), QRect(150, 130, 80, 60));
  EXPECT_EQ(Map.canvas.pixel(225, 185), qRgb(200, 0, 0));
}

TEST_F(DragTest, OutOfTheWindowAsksWhetherToDelete) {
  const QString amsel = Add(Text_Row("Amsel", 100, 100));
  Map_Redraw();
  for (const MsgAnswer answer : {MsgAnswer::No, MsgAnswer::Yes}) {
    MessageScript script("über den Rand der Anwendung hinausbewegt", answer);
    Drag({110, 108}, {900, 300});
    EXPECT_EQ(rsEntries->HasRow(amsel), answer == MsgAnswer::No);
    EXPECT_TRUE(answer == MsgAnswer::Yes || At(amsel) == QPoint(100, 100));
  }
  EXPECT_FALSE(Entry_In_Hand());
}

TEST_F(DragTest, AChangedTextIsStoredBeforeItMoves) {
  const QString amsel = Add(Text_Row("Amsel", 101, 101));
  Map_Redraw();
  Set_Zoom(2.0);
  ASSERT_TRUE(Take_Entry(amsel));
  Text_Typed(QStringLiteral("Star"));
  const QPoint border(Map.Text2.Left - 5, Map.Text2.Top - 5);
  Drag(border, border + QPoint(10, 20));
  EXPECT_EQ(Row(amsel).Eintrag, "Star");
  EXPECT_EQ(At(amsel), QPoint(121, 141));
  Text_Typed(QString(80, u'x'));
  MessageScript script("80 Zeichen");
  const QPoint again(Map.Text2.Left - 5, Map.Text2.Top - 5);
  Drag(again, again + QPoint(10, 20));
  EXPECT_EQ(At(amsel), QPoint(121, 141));
  EXPECT_EQ(Map.Text2.Tag, EditTag::Change);
}
