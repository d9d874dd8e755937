#include "tools/map_tool.h"

#include "edit/order.h"
#include "support/bulk_fixture.h"
#include "support/looks.h"
#include "tools/duplicate_tool.h"
#include "tools/figure_tool.h"
#include "tools/foot_point.h"
#include "tools/magnifier.h"
#include "tools/pick_tool.h"
#include "tools/picture_tool.h"
#include "tools/poly_editor.h"
#include "tools/scale_tool.h"
#include "tools/symbol_tool.h"
#include "tools/text_tool.h"

using MapTools = BulkTest;

TEST_F(MapTools, EachHasTheMouseUntilItIsDroppedAndItsButtonIsPressedMeanwhile) {
  const QString text = Add_Text("Amsel", 300, 300);
  Map_Redraw();
  const struct {
    QString key;
    std::function<void()> use;
    bool ofEntry = false;
  } tools[] = {{"Text", [] { Toggle_Text_Tool(); }},
               {"Symb", [] { Toggle_Symbol_Tool(); }},
               {"Bild", [] { Toggle_Picture_Tool(); }},
               {"Linie", [] { Poly_Editor(PolyEditor::Kind::Line); }},
               {"Fl", [] { Poly_Editor(PolyEditor::Kind::Area); }},
               {"Fig", [] { Choose_Figure(EntryKind::Rectangle); }},
               {"Scale", [] { Measure_Scale({}, {}); }},
               {"Rfline", Move_Foot_Point, true},
               {"Dupl", Duplicate_Entry, true},
               {"Lupe", Toggle_Lupe, true}};
  const QStringList before = Whole_Table();
  const auto pressed = [](const QString& key) { return Button_Now(qPrintable(key)).Value; };
  for (const auto& [key, use, ofEntry] : tools) {
    ASSERT_TRUE(!ofEntry || Take_Entry(text));
    Go(text);
    InfoBar.Panel[0].clear();
    use();
    EXPECT_EQ(Map_Pointer(), MapPointer::Cross) << key;
    EXPECT_FALSE(InfoBar.Panel[0].isEmpty()) << key;
    EXPECT_TRUE(pressed(key)) << key;
    Map_Mouse_Move({310, 305}, false);
    EXPECT_FALSE(InfoBar.Panel[0].contains("Amsel")) << "the status panel is the tool's: " << key;
    EXPECT_TRUE(Map_Key(Qt::Key_Escape, {})) << key;
    EXPECT_FALSE(pressed(key)) << key;
    EXPECT_EQ(Map_Pointer(), MapPointer::Move) << key;
    EXPECT_EQ(Entry_In_Hand(), ofEntry) << "what is in hand stays there: " << key;
    if (key != "Scale") use(), use();
    EXPECT_EQ(Map_Tool_In_Use(), nullptr) << "its button once more: " << key;
    if (ofEntry) End_Entry();
  }
  EXPECT_EQ(Whole_Table(), before) << "dropped tools write nothing";
}

TEST_F(MapTools, OneAtATime) {
  int dropped = 0;
  QPoint picked;
  const auto pick = [&](const QString& name) {
    return Pick_Point({name, "Klicken Sie.", [&](QPoint map) { picked = map; }, [&] { ++dropped; }});
  };
  ASSERT_TRUE(pick("A"));
  Give_Up_Picking("B");
  EXPECT_EQ(dropped, 0);
  ASSERT_TRUE(pick("B"));
  EXPECT_EQ(dropped, 1);
  Set_Zoom(2);
  Click({100, 50});
  EXPECT_EQ(picked, QPoint(Map_X(100), Map_Y(50)));
  EXPECT_EQ(dropped, 1);
  EXPECT_TRUE(Map.Tool.isEmpty());
  // A typed text that does not fit is not left for a tool.
  const QString text = Add_Text("Amsel");
  ASSERT_TRUE(Take_Entry(text));
  Text_Typed(QString(100, 'x'));
  MessageScript script("zu lang");
  EXPECT_FALSE(pick("A"));
  EXPECT_EQ(Map.InHand, text);
}

TEST_F(MapTools, TheMagnifierLiesOverAToolThatGoesOn) {
  Poly_Editor(PolyEditor::Kind::Line);
  Click({100, 100});
  Click({200, 100});
  Toggle_Lupe();
  const QPoint place(Map_X(600), Map_Y(450));
  Click({600, 450});  // closer
  EXPECT_FLOAT_EQ(Map.Zoom, 0.5F);
  const QPoint middle(Map_X(Map.ViewWidth / 2.0), Map_Y(Map.ViewHeight / 2.0));
  EXPECT_LE((middle - place).manhattanLength(), 3);
  EXPECT_EQ(Painted_Over().elementAt(0).x, Window_X(100)) << "the line is still to be seen";
  int asked = 0;
  dialogHooks.ZoomWindow = [&] { ++asked; };
  Map_Mouse_Down({10, 10}, MouseButton::Right, {});
  EXPECT_EQ(asked, 1);
  EXPECT_TRUE(Map_Key(Qt::Key_Escape, {}));
  EXPECT_EQ(Map.Tool, "Linie");
  Set_Zoom(1);
  const QPoint end(300, 200), map(Map_X(300), Map_Y(200));
  Click(end);
  Map_Key(Qt::Key_Return, {});
  EXPECT_EQ(Load_Vertices("Linie0"), (std::vector<QPoint>{{100, 100}, {200, 100}, map}));
  // A duplicate is placed by the next click.
  const QString first = Add_Text("Amsel", 100, 100);
  Add_Text("Fink", 300, 300);
  Map_Redraw();
  ASSERT_TRUE(Take_Entry(first));
  Duplicate_Entry();
  Order_Entry(1);  // the row goes to another place of the table meanwhile
  Click({500, 400});
  EXPECT_EQ(Row(Map.InHand).Eintrag, QString("Amsel"));
  EXPECT_EQ(At(Map.InHand), QPoint(500, 400));
}
