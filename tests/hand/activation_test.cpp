#include "hand/activation.h"

#include "edit/order.h"
#include "edit/row_switches.h"
#include "edit/visibility.h"
#include "maps/map_close.h"
#include "support/hand_fixture.h"
#include "support/looks.h"
#include "support/pixels.h"
#include "tools/text_tool.h"

using Activation = HandTest;

TEST_F(Activation, ClickTypeLeaveWritesTheRow) {
  const QString amsel = Add(Text_Row("Amsel", 100, 100)), fink = Add(Text_Row("Fink", 300, 300));
  Map_Redraw();
  int rowChanges = 0;
  events.CurrentRowChanged.Connect([&] { ++rowChanges; });
  Click({110, 108});
  EXPECT_EQ(std::tuple(Map.InHand, Map.CurBookmark, rsEntries->Bookmark()), std::tuple(amsel, amsel, amsel));
  EXPECT_EQ(std::tuple(rowChanges, Toolbar1.Tag, Map.Text2.Visible), std::tuple(1, ToolMode::Text, true));
  EXPECT_EQ(std::tuple(Map.Text2.Text, Map.Text2.Tag), std::tuple(QStringLiteral("Amsel"), EditTag::Old));
  EXPECT_TRUE(Box(Map.Text2).contains(Map.EntryRegions.Row(1).bounds.toRect().adjusted(0, 0, -1, -1)));
  EXPECT_EQ(InfoBar.Panel[0], "Karteneintrag verschieben: Linke Maustaste drücken und bewegen.");
  const int width = Map.Text2.Width;
  Text_Typed(QStringLiteral("Amselmännchen"));
  EXPECT_EQ(Map.Text2.Tag, EditTag::Change);
  EXPECT_GT(Map.Text2.Width, width);
  EXPECT_EQ(Row(amsel).Eintrag, "Amsel");
  Click({305, 308});  // another entry stores it
  EXPECT_EQ(Row(amsel).Eintrag, "Amselmännchen");
  EXPECT_EQ(Map.InHand, fink);
  Text_Typed(QStringLiteral("Finken"));
  Click({700, 500});  // the empty map as well
  EXPECT_EQ(Row(fink).Eintrag, "Finken");
  EXPECT_FALSE(Entry_In_Hand() || Map.Text2.Visible);
  EXPECT_EQ(Toolbar1.Tag, ToolMode::Norm);
}

// At 50 % a window pixel is two map pixels: typing must not shift the entry.
TEST_F(Activation, TypingKeepsPositionFontAndColoursAtEveryZoom) {
  EntryRow row{"Text", "Amsel", "Times New Roman-B-I<30", 17, 3, 14, 204, 333, 255, 0, 0, 0};
  const QString amsel = Add(row);
  for (const double zoom : {2.0, 0.7, 1.0}) {
    Set_Zoom(zoom);
    ASSERT_TRUE(Take_Entry(amsel));
    Text_Typed(QStringLiteral("Amsel %1").arg(zoom));
    ASSERT_TRUE(End_Entry());
    row.Eintrag = QStringLiteral("Amsel %1").arg(zoom);
    EXPECT_EQ(Row(amsel), row);
  }
}

TEST_F(Activation, ScrollingAndZoomingStoreATextAndTakeTheControlsAlong) {
  const QString amsel = Add(Text_Row("Amsel", 401, 301));
  Map_Redraw();
  Click({410, 308});
  Text_Typed(QStringLiteral("Star"));
  Scroll_By(100, 50);
  EXPECT_EQ(Row(amsel).Eintrag, "Star");
  EXPECT_EQ(Map.Text2.Tag, EditTag::Old);
  EXPECT_EQ(QPoint(Map.Text2.Left, Map.Text2.Top), QPoint(Window_X(401), Window_Y(301)));
  Text_Typed(QString(80, u'x'));
  Set_Zoom(2.0);  // too long to be stored: it stays open and unspoken
  EXPECT_EQ(Map.Text2.Tag, EditTag::Change);
  EXPECT_TRUE(Map.Text2.Visible);
  EXPECT_EQ(Map.Text2.Left, Window_X(401));
  Text_Typed(QStringLiteral("Meise"));
  Set_Zoom(1.0);
  EXPECT_EQ(Row(amsel).Eintrag, "Meise");
  EXPECT_EQ(At(amsel), QPoint(401, 301));
}

// A map window in the normal state must not be blown up over the table.
TEST_F(Activation, TheZoomThatIsSetAlreadyOnlyHidesWhatFloats) {
  const QString box = Add(Figure_Row(20, {300, 300, 80, 60}));
  Map.Maximized = false;
  Map_Redraw();
  const QImage bare = Map.canvas;
  Map.WantWidth = Map.WantHeight = 0;
  ASSERT_TRUE(Take_Entry(box));
  Map_Mouse_Down({340, 330}, MouseButton::Left, {});
  Map_Mouse_Move({380, 360}, true);
  Set_Zoom(1.0);
  Map_Mouse_Up({380, 360}, MouseButton::Left);
  EXPECT_EQ(At(box), QPoint(300, 300)) << "what is dragged goes back";
  EXPECT_EQ(QPoint(Map.WantWidth, Map.WantHeight), QPoint(0, 0));
  EXPECT_FALSE(Map.lblShape.Visible || Map.lblHandle[0].Visible || Map.lblHandle[4].Visible);
  EXPECT_EQ(std::tuple(Map.canvas, Map.InHand), std::tuple(bare, box));
  Click({340, 330});
  EXPECT_TRUE(Map.lblShape.Visible && Map.lblHandle[4].Visible);
  const int rows = Entry_Count();
  New_Text(100, 100);
  Text_Typed(QStringLiteral("Horst"));
  Set_Zoom(1.0);
  EXPECT_EQ(Entry_Count(), rows + 1);
  EXPECT_EQ(Last_Row().Eintrag, "Horst");
  EXPECT_EQ(std::pair(Map.Text2.Visible, Map.Text2.Tag), std::pair(false, EditTag::Old));
}

// The box of a row is not where a turned text is seen.
TEST_F(Activation, TheFrameOfATurnedTextLiesRoundIt) {
  EntryRow row = Text_Row("Rohrdommel", 300, 300);
  row.Schrift = QStringLiteral("Arial<90");
  const QString key = Add(row);
  Map_Redraw();
  const QImage bare = Map.canvas;
  ASSERT_TRUE(Take_Entry(key));
  const auto differs = [&](const QRect& area) { return Count_Different(bare.copy(area), Map.canvas.copy(area)); };
  EXPECT_GT(differs({280, 240, 10, 40}), 100) << "left of the standing text";
  EXPECT_EQ(differs({340, 290, 60, 40}), 0) << "where it would lie unturned";
  Drag({284, 260}, {324, 270});  // by its border
  EXPECT_EQ(At(key), QPoint(340, 310));
  Text_Typed(QStringLiteral("Rohrweihe\nEier"));  // it is typed upright
  EXPECT_GT(differs({330, 296, 80, 10}), 100);
  ASSERT_TRUE(End_Entry());
  EXPECT_EQ(Row(key).Eintrag, "Rohrweihe\r\nEier");
}

TEST_F(Activation, LongTextsAreRefusedWhereTheyDoNotFit) {
  const QString amsel = Add(Text_Row("Amsel", 100, 100));
  Add(Text_Row("Fink", 300, 300));
  Map_Redraw();
  Click({110, 108});
  const QString text80(80, u'm'), text253(253, u'm'), text254(254, u'm');
  Text_Typed(text253);
  With_Box("253 Zeichen", [&] { Text_Typed(text254); });
  EXPECT_EQ(Map.Text2.Text, text253);
  for (const auto& leave : {+[] { Click({305, 308}); }, +[] { Click({700, 500}); }}) {
    Text_Typed(text80);
    MessageScript script("80 Zeichen");
    leave();
    EXPECT_EQ(std::tuple(Map.InHand, Map.Text2.Text), std::tuple(amsel, text80));
    EXPECT_TRUE(Map.Text2.Visible);
    EXPECT_EQ(Row(amsel).Eintrag, "Amsel");
    Text_Typed(text80.left(78));
  }
  Text_Typed(text80.left(79));
  EXPECT_TRUE(End_Entry());
  EXPECT_EQ(Row(amsel).Eintrag, text80.left(79));
}

TEST_F(Activation, EveryKindHasItsControls) {
  ASSERT_TRUE(Make_Canvas(40, 30, qRgb(200, 0, 0)).save(Path("Vogel.png")));
  const EntryRow picture{"Bild", "Vogel.png", "Arial", 12, 0, 14, -100, 500, 100, 0, 0, 5},
      foot{"Text", "Fuß", "Arial", 12, 0, 14, -100, 300, 100, 400, 200, 1},
      free{"Figur7", "Figur", "F 1", 12, 0, 14, -100, 600, 400, 1, 1, 24};
  EntryRow hiddenLabel = Poly_Row("Linie3", 100, 400, {{100, 450}, {200, 450}});
  hiddenLabel.Groesse = -8;
  Create_Vertex_Table(free.ID);
  Write_Vertices(free.ID, {{610, 410}, {660, 410}, {630, 440}});
  struct Case {
    QString bookmark, state;
    QRect shape, bild, foot;
    bool text;
    int handles;
  };
  const std::vector<Case> cases = {
      {Add(Figure_Row(20, {100, 100, 80, 60})), "Fig", {100, 100, 80, 60}, {}, {}, false, 8},
      {Add(free), "Fig", {610, 410, 50, 30}, {}, {}, false, 8},
      {Add(picture), "Bild", {}, {500, 100, 40, 30}, {}, false, 0},
      {Add(foot), "Text", {}, {}, {392, 192, 16, 16}, true, 0},
      {Add(Poly_Row("Flaeche1", 250, 420, {{200, 400}, {350, 400}, {300, 500}})), "Ply", {}, {}, {}, true, 0},
      {Add(Poly_Row("Linie9", 400, 500, {})), "Ln", {}, {}, {}, true, 0},  // its vertex table is missing
      {Add(hiddenLabel), "Ln", {}, {}, {}, false, 0},
      {Add(Text_Row("versteckt", 20, 20, -1)), "Text", {}, {}, {}, false, 0},
  };
  Map_Redraw();
  for (const Case& c : cases) {
    ASSERT_TRUE(Take_Entry(c.bookmark)) << c.state;
    EXPECT_EQ(Tool_Word(Toolbar1.Tag), c.state);
    EXPECT_EQ(Map.Text2.Visible, c.text) << c.state;
    const auto place = [](const LiveControl& control) { return control.Visible ? Box(control) : QRect(); };
    EXPECT_EQ(place(Map.imgRfLine), c.foot) << c.state;
    EXPECT_EQ(place(Map.lblShape), c.shape) << c.state;
    EXPECT_EQ(place(Map.imgBild), c.bild) << c.state;
    EXPECT_EQ(Map.imgHandle.Visible, !c.bild.isNull());
    EXPECT_EQ(std::count_if(Map.lblHandle.begin(), Map.lblHandle.end(), [](auto& h) { return h.Visible; }), c.handles);
  }
}

TEST_F(Activation, WhatIsPaintedRoundTheEntryInHandGoesWithoutATrace) {
  const QString amsel = Add(Text_Row("Amsel", 100, 100));
  const QString area = Add(Poly_Row("Flaeche1", 250, 420, {{200, 400}, {350, 400}, {300, 500}}));
  Map_Redraw();
  const QImage plain = Map.canvas.copy();
  int redraws = 0;
  events.TableChanged.Connect([&] { ++redraws; });
  ASSERT_TRUE(Take_Entry(amsel));
  EXPECT_EQ(Map.canvas.pixel(100 - 8, 100 - 8) | 0xff000000, HighlightColor);
  ASSERT_TRUE(Take_Entry(area));
  EXPECT_EQ(Map.canvas.pixel(92, 92), plain.pixel(92, 92));
  EXPECT_EQ(Map.canvas.pixel(200, 400) | 0xff000000, HighlightColor);
  ASSERT_TRUE(End_Entry());
  EXPECT_EQ(Map.canvas, plain);
  EXPECT_EQ(redraws, 0);
}

TEST_F(Activation, OverlappingInactiveUnknownAssignedAndFarEntries) {
  Add(Figure_Row(20, {100, 100, 80, 60}));
  const QString upper = Add(Figure_Row(20, {140, 120, 80, 60}));
  EntryRow inactive = Figure_Row(20, {400, 100, 80, 60});
  inactive.ID = QStringLiteral("-Figur3");
  const QString still = Add(inactive);
  const QString strange = Add(Text_Row("?", 600, 100, 63));
  Map_Redraw();
  Click({160, 140});
  EXPECT_EQ(Map.InHand, upper);
  Click({430, 120});
  EXPECT_FALSE(Entry_In_Hand());
  EXPECT_TRUE(Take_Entry(still));  // by the table window
  EXPECT_EQ(Button_Now("Akt").ToolTipText, "-Figur3 aktivieren");
  With_Box("Karteneintrag: Unbekannter Typ = 63", [&] { EXPECT_FALSE(Take_Entry(strange)); });
  EXPECT_FALSE(Entry_In_Hand());
  EXPECT_EQ(Toolbar1.Tag, ToolMode::Norm);
  for (const QString& none : {Header_Key(), QStringLiteral("999999")}) EXPECT_FALSE(Take_Entry(none)) << none;
  // Assigned rows tell it first, far ones scroll the map.
  Take({"Text>Flaeche3", "Amsel", "Arial", 12, 0, 14, -100, 1500, 1100, 0, 0, 0});
  EXPECT_TRUE(InfoBar.Panel[0].startsWith("Zugeordnet: Flaeche3"));
  EXPECT_GT(Map.ViewLeft, 0);
  EXPECT_EQ(Map.Text2.Left, Window_X(1500));
  EXPECT_LT(Map.Text2.Left, Map.ViewWidth);
}

TEST_F(Activation, ANewTextByTheMouse) {
  const int before = Entry_Count();
  Toggle_Text_Tool();
  EXPECT_EQ(Map_Pointer(), MapPointer::Cross);
  Click({200, 150});
  EXPECT_EQ(std::pair(Map.Text2.Tag, Toolbar1.Tag), std::pair(EditTag::New, ToolMode::Text));
  Text_Typed(QStringLiteral("Zaunkönig"));
  EXPECT_TRUE(Map_Key(Qt::Key_Escape, {}));  // forgotten
  EXPECT_EQ(Entry_Count(), before);
  EXPECT_FALSE(Entry_In_Hand());
  Toggle_Text_Tool();
  Click({200, 150});
  Text_Typed(QStringLiteral("Zaunkönig"));
  Click({600, 500});
  ASSERT_EQ(Entry_Count(), before + 1);
  EXPECT_EQ(std::tuple(Last_Row().Eintrag, Last_Row().Xmap, Last_Row().Ymap), std::tuple("Zaunkönig", 200, 150));
  EXPECT_EQ(Map.EntryRegions.Count(), 1);  // and it is drawn
}

// Deleted or replaced under the hand: nothing is left in the air.
TEST_F(Activation, TheHandLetsGoOfRowsThatVanish) {
  const QString amsel = Add(Text_Row("Amsel", 100, 100));
  const QString fink = Add(Text_Row("Fink", 300, 300));
  Map_Redraw();
  ASSERT_TRUE(Take_Entry(amsel));
  With_Box("Soll dieser Eintrag gelöscht werden?", MsgAnswer::Yes, [&] { EXPECT_TRUE(Map_Key(Qt::Key_Delete, {})); });
  EXPECT_FALSE(rsEntries->HasRow(amsel) || Entry_In_Hand() || Map.Text2.Visible);
  EXPECT_EQ(Toolbar1.Tag, ToolMode::Norm);
  ASSERT_TRUE(Take_Entry(fink));
  Text_Typed(QStringLiteral("Finken"));
  rsEntries->Delete();
  Map_Redraw();
  EXPECT_FALSE(Entry_In_Hand());
  EXPECT_EQ(Map.Text2.Tag, EditTag::Old);
  Close_Map();
  EXPECT_FALSE(Map_Key(Qt::Key_Delete, {}));
  Click({100, 100});
}

// Rows change their place and their values under the hand: it stays on the entry.
TEST_F(Activation, TheHandFollowsTheRow) {
  Add(Text_Row("Amsel", 100, 100));
  Add(Text_Row("Fink", 300, 300));
  Map_Redraw();
  Click({110, 108});
  Order_Entry(1);
  EXPECT_EQ(std::tuple(Row(Map.InHand).Eintrag, Map.Text2.Text), std::tuple("Amsel", "Amsel"));
  Text_Typed(QStringLiteral("Star"));
  ASSERT_TRUE(Store_Pending_Text());
  EXPECT_EQ(Row(Map.InHand).Eintrag, "Star");
  Hide_Current();
  EXPECT_TRUE(!Map.Text2.Visible && Button_Now("Vis").Value);
  Hide_Current();
  EXPECT_TRUE(Map.Text2.Visible);
  const QString line = Take(Poly_Row("Linie1", 400, 100, {{400, 150}, {500, 150}, {450, 200}}));
  Text_Typed(QStringLiteral("Bach"));
  EXPECT_TRUE(Run_Command("Label"));
  EXPECT_FALSE(Map.Text2.Visible || Button_Now("LnBez").Value);
  Round_Corners();
  EXPECT_EQ(Text_Now("mnuKanten"), "Kanten eckig");
  EXPECT_EQ(std::tuple(Row(line).Eintrag, Row(line).Typ, Row(line).Groesse), std::tuple("Bach", 40, -12.0));
  Toggle_Label();
  Round_Corners();
  EXPECT_EQ(Row(line).Typ, 4);
  EXPECT_TRUE(Map.Text2.Visible);
}
