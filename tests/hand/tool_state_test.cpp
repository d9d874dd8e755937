#include "hand/tool_state.h"

#include "maps/menu_table.h"
#include "support/hand_fixture.h"
#include "support/looks.h"

using ToolState = HandTest;

const QStringList closing = {"Del", "vor", "back", "Dupl", "Cpy", "Lupe", "Vis", "Akt"};

TEST_F(ToolState, TheToolbarFollowsTheKindOfTheRow) {
  const EntryRow text = Text_Row("Amsel", 0, 0), line = Poly_Row("Linie3", 0, 0, {}),
                 area = Poly_Row("Flaeche3", 0, 0, {});
  EntryRow symbol = text, odd = line;
  symbol.Schrift = QStringLiteral("Wingdings-B");
  odd.ID = QStringLiteral("Weg");
  struct Case {
    EntryRow row;
    int typ;
    ToolMode mode;
    QString state;
    QStringList own;
  };
  for (const Case& c : {Case{text, 0, ToolMode::Text, "Text", {"Ok", "Panel", "Mark"}},
                        Case{text, 203, ToolMode::Text, "Text", {"Ok", "Panel", "Mark"}},
                        Case{text, 7, ToolMode::Text, "Text", {"Ok", "Panel", "Mark"}},
                        Case{symbol, 102, ToolMode::Symbol, "Symbol", {"Ok", "Panel", "Mark"}},
                        Case{text, 105, ToolMode::Picture, "Bild", {"Ok", "Panel", "Mark"}},
                        Case{area, 140, ToolMode::Area, "Ply", {"Ok", "Panel", "FlBez"}},
                        Case{line, 240, ToolMode::Line, "Ln", {"Ok", "Panel", "LnBez"}},
                        Case{text, 123, ToolMode::Figure, "Fig", {"Ok", "Panel", "Curve", "Ein"}},
                        Case{text, -24, ToolMode::Figure, "Fig", {"Ok", "Panel", "Curve", "Ein"}}}) {
    EntryRow row = c.row;
    row.Typ = c.typ;
    EXPECT_EQ(Tool_Mode_Of(row), c.mode) << c.typ;
    Set_Toolbar(c.mode);
    EXPECT_EQ(Tool_Word(Toolbar1.Tag), c.state);
    QStringList expected = c.own + closing;
    EXPECT_TRUE(std::all_of(expected.begin(), expected.end(), [](auto& key) { return Buttons().contains(key); }))
        << Buttons().join(u' ');
    EXPECT_EQ(Buttons().indexOf("Del") + 1, Buttons().indexOf("vor"));
  }
  for (const int typ : {11, -12, 16, 17, 4}) {
    odd.Typ = typ;
    EXPECT_EQ(Tool_Mode_Of(odd), ToolMode::Norm) << typ;
  }
  // Tips and switches tell of the row.
  Take(Figure_Row(-20, {100, 100, 50, 50}));
  EXPECT_EQ(Button_Now("Ein").ToolTipText, "Figur wieder sichtbar machen");
  Take(Figure_Row(22, {200, 100, 50, 50}));
  EXPECT_EQ(Button_Now("Ein").ToolTipText, "Figur unsichtbar machen (ausblenden)");
  EXPECT_EQ(Button_Now("Panel").Caption, "Figur Figur");
  EXPECT_EQ(Button_Now("Akt").ToolTipText, "Figur1 de-aktivieren");
  EXPECT_FALSE(Button_Now("Curve").Enabled);
}

TEST_F(ToolState, InNormOnlyTheMenusChange) {
  const QString arrow = Add(Text_Row("Nordpfeil", 100, 100, -12));
  const QStringList plain = Buttons();
  ASSERT_TRUE(Take_Entry(arrow));
  EXPECT_EQ(Buttons(), plain);
  EXPECT_TRUE(Usable("mnuObjFore"));
  EXPECT_FALSE(Needs_Met(Find_Menu("mnuObjInsert")->needs));
  ASSERT_TRUE(End_Entry());
  EXPECT_FALSE(Usable("mnuObjFore"));
  EXPECT_TRUE(Needs_Met(Find_Menu("mnuObjInsert")->needs));
  // Of a text that is being typed the row below says nothing.
  EntryRow picture = Text_Row("Bild.bmp", 100, 100, 5);
  picture.Xline = 7;
  Add(picture);
  rsEntries->MoveLast();
  New_Text(300, 300);
  for (const char* key : {"mnuPicSize", "mnuFootDel", "mnuFigFill", "mnuKanten"}) EXPECT_FALSE(Usable(key)) << key;
}

TEST_F(ToolState, ButtonsOfMarksAndHiddenRowsComeWithTheirNumber) {
  const QStringList plain = Buttons();
  for (const char* key : {"rechts", "gleich", "Gruppe", "unmark", "Ein", "Akt", "Del"})
    EXPECT_FALSE(plain.contains(key));
  const QString first = Add(Text_Row("A", 100, 100)), second = Add(Text_Row("B", 300, 300));
  Map_Redraw();
  const MouseKeys control{.control = true};
  Click({104, 106}, control);
  EXPECT_EQ(Row(first).Typ, 200);
  EXPECT_TRUE(Buttons().contains("rechts") && !Buttons().contains("gleich"));
  EXPECT_FALSE(Entry_In_Hand());
  Click({304, 306}, {.shift = true});
  EXPECT_EQ(std::pair(Row(first).Typ, Row(second).Typ), std::pair(100, 200));
  EXPECT_TRUE(Buttons().contains("gleich"));
  Click({104, 106}, control);
  Click({304, 306}, control);
  EXPECT_EQ(Buttons(), plain);
  Add(Text_Row("C", 500, 300, -1));
  Add(Text_Row("D", 500, 350, -101));
  EntryRow inactive = Text_Row("E", 600, 300);
  inactive.ID = QStringLiteral("-Text");
  Add(inactive);
  Map_Redraw();
  EXPECT_EQ(Button_Now("Ein").ToolTipText, "2 unsichtbare Karteneinträge");
  EXPECT_TRUE(Button_Now("Ein").Visible && Button_Now("Akt").Visible);
}
