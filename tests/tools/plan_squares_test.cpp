#include "tools/plan_squares.h"

#include "edit/entry_look.h"
#include "plansquares/plan_labels.h"
#include "plansquares/plan_map.h"
#include "plansquares/raster_rows.h"
#include "support/bulk_fixture.h"
#include "support/looks.h"
#include "support/pixels.h"
#include "support/recording_surface.h"

class PlanSquaresTest : public BulkTest {
 protected:
  static RasterPreview Raster(int side, LabelPlace labels, int width = 400, int height = 300) {
    RasterPreview raster;
    raster.design = Raster_Ini();
    raster.design.size = QString::number(side);
    raster.design.labels = labels;
    raster.plan = Plan({100, 100, static_cast<double>(width), static_cast<double>(height)}, static_cast<float>(side));
    return raster;
  }
  static QString Key_Of(const QString& name) {
    const KeepCurrentRow keep;
    for (rsEntries->MoveFirst(); !rsEntries->Eof(); rsEntries->MoveNext())
      if (rsEntries->Text(column::ID).endsWith(Plan_Id(name))) return rsEntries->Bookmark();
    return {};
  }
  static int Ink(const QRect& area) { return Count_Pixels(Map.canvas, area, Is_Ink); }
};

TEST_F(PlanSquaresTest, TakenOverAsRowsAndTakenBackByUndo) {
  Add_Text("Wald", 10, 20);
  const QStringList before = Whole_Table();
  CurVG = 15;
  ASSERT_TRUE(Take_Raster_On_Map(Raster(100, LabelPlace::Centre)));
  EXPECT_EQ(Entry_Count(), 1 + 12 + 1);
  const EntryRow square = Row(Key_Of(QStringLiteral("B-3")));
  EXPECT_EQ(square.Eintrag, "B-3");
  EXPECT_EQ(entry_box(square), (EntryBox{200, 300, 100, 100}));
  EXPECT_EQ(std::tuple(square.Xline, square.VG), std::tuple(300, 8));
  const EntryRow design = Row(Key_Of(QStringLiteral("Raster")));
  EXPECT_EQ(std::tuple(design.Typ, design.Xmap, design.Ymap), std::tuple(17, 102, 4));
  EXPECT_TRUE(design.Schrift.endsWith("0 -"));
  EXPECT_EQ(Raster_bearbeiten()->labels, LabelPlace::Centre);
  EXPECT_EQ(Raster_bearbeiten()->font, "Arial");
  EXPECT_TRUE(frmMDI.HasPlanSquares);
  EXPECT_EQ(Text_Now("mnuRasterAktiv"), "de-aktivieren");
  EXPECT_EQ(Menu(QStringLiteral("mnuReset")).Caption, "Rückgängig: Raster übernehmen");
  MessageScript messages(MsgAnswer::Ok);
  Undo_Last();
  QStringList after = Whole_Table();
  EXPECT_EQ(after, before);
  EXPECT_FALSE(frmMDI.HasPlanSquares);
}

TEST_F(PlanSquaresTest, ASecondRasterAsksAndReplacesTheFirst) {
  ASSERT_TRUE(Take_Raster_On_Map(Raster(100, LabelPlace::None)));
  const QStringList first = Whole_Table();
  With_Box("Planquadrate sind bereits", MsgAnswer::Cancel,
           [&] { EXPECT_FALSE(Take_Raster_On_Map(Raster(50, LabelPlace::None))); });
  EXPECT_EQ(Whole_Table(), first);
  MessageScript messages("Planquadrate sind bereits", MsgAnswer::Ok);
  {
    const StopWorkAt thirtieth(30);
    EXPECT_FALSE(Take_Raster_On_Map(Raster(10, LabelPlace::None, 400, 400)));
  }
  EXPECT_EQ(Whole_Table(), first);
  messages.Expect("Planquadrate sind bereits", MsgAnswer::Ok);
  EXPECT_TRUE(Take_Raster_On_Map(Raster(50, LabelPlace::None)));
  EXPECT_EQ(Entry_Count(), 48 + 1);
  const QRectF field = *Raster_Field();
  EXPECT_EQ(field, QRectF(100, 100, 400, 300));
  mnuRasterDelete_Click();
  EXPECT_EQ(Entry_Count(), 0);
  // One that does not fit into the columns leaves no row.
  RasterPreview far = Raster(100, LabelPlace::None);
  far.plan = Plan({32700, 0, 200, 100}, 50);
  Tbl.Tag = TableTag::Clean;
  messages.Expect("Es wurde nichts verändert.");
  EXPECT_FALSE(Take_Raster_On_Map(far));
  EXPECT_EQ(std::tuple(Entry_Count(), rsEntries->Editing(), Tbl.Tag), std::tuple(0, false, TableTag::Clean));
}

TEST_F(PlanSquaresTest, AFilledSquareKeepsItsLabelAndLine) {
  ASSERT_TRUE(Take_Raster_On_Map(Raster(100, LabelPlace::Centre)));
  const int label = Ink(QRect(130, 130, 40, 40));
  Click({110, 110});
  ASSERT_TRUE(Change_Color(ColorOf::HG, 14));
  ASSERT_TRUE(Change_Fill(FillCode::Parse(1)));
  End_Entry();
  EXPECT_EQ(Map.canvas.pixel(110, 110), QBColor(14));
  EXPECT_EQ(Map.canvas.pixel(210, 110), QBColor(15));
  EXPECT_EQ(Map.canvas.pixel(200, 150), QBColor(0));
  EXPECT_GT(Count_Pixels(Map.canvas, {130, 130, 40, 40}, [](QRgb color) { return qGray(color) < 100; }), label / 4);
}

TEST_F(PlanSquaresTest, HidingTakesAllButMarkedRows) {
  ASSERT_TRUE(Take_Raster_On_Map(Raster(100, LabelPlace::None)));
  const QString own = Key_Of(QStringLiteral("A-1")), marked = Key_Of(QStringLiteral("B-1"));
  const auto set = [](const QString& key, int typ) {
    Go(key);
    EntryRow row = Read_Entry(*rsEntries);
    row.Typ = typ;
    Update_Entry(row);
  };
  set(own, -16);
  set(marked, 116);
  Map_Redraw();
  Map_Mouse_Move({150, 150}, false);
  EXPECT_EQ(Map.lblPLQ.Text, "unsichtbares Planquadrat!");
  Map_Mouse_Down({150, 150}, MouseButton::Right, {});
  EXPECT_EQ(Map.InHand, own);
  EXPECT_EQ(Text_Now("mnuObjVisNo"), "aktuelles Objekt sichtbar machen");
  End_Entry();
  const int drawn = Ink({195, 95, 110, 110});
  EXPECT_EQ(Text_Now("mnuRasterEinblenden"), "ausblenden");
  Toggle_Raster_Visible();
  EXPECT_EQ(Text_Now("mnuRasterEinblenden"), "einblenden") << "the marked one does not count";
  EXPECT_GT(drawn, 300);
  EXPECT_EQ(Ink({195, 95, 110, 110}), 0) << "the marked one goes from sight with the others";
  EXPECT_EQ(Typ(Key_Of(QStringLiteral("C-3"))), -16);
  EXPECT_EQ(Typ(Key_Of(QStringLiteral("Raster"))), -17);
  EXPECT_EQ(Typ(marked), 116);
  Toggle_Raster_Visible();
  EXPECT_GE(Ink({195, 95, 110, 110}), drawn);
  EXPECT_EQ(Typ(own), 16);
  EXPECT_EQ(Typ(Key_Of(QStringLiteral("Raster"))), 17);
  EXPECT_EQ(Text_Now("mnuRasterEinblenden"), "ausblenden");
}

TEST_F(PlanSquaresTest, LabelsStandWhereTheDesignSays) {
  const QRect middle(130, 130, 40, 40), topEdge(100, 1, 400, 14), leftEdge(1, 100, 14, 300), above(100, 84, 400, 14);
  const std::tuple<LabelPlace, bool, bool, bool> cases[] = {{LabelPlace::None, false, false, false},
                                                            {LabelPlace::MapEdge, false, true, false},
                                                            {LabelPlace::SquareEdge, false, false, true},
                                                            {LabelPlace::Centre, true, false, false}};
  for (const auto& [place, inMiddle, atMap, atSquares] : cases) {
    Show_Raster_Preview(Raster(100, place));
    for (const bool table : {false, true}) {
      if (table) {
        MessageScript messages(MsgAnswer::Ok);
        ASSERT_TRUE(Take_Raster_On_Map(Raster(100, place)));
      }
      EXPECT_EQ(Ink(middle) > 0, inMiddle) << static_cast<int>(place) << table;
      EXPECT_EQ(Ink(topEdge) > 0, atMap) << static_cast<int>(place) << table;
      EXPECT_EQ(Ink(leftEdge) > 0, atMap) << static_cast<int>(place) << table;
      EXPECT_EQ(Ink(above) > 0, atSquares) << static_cast<int>(place) << table;
      EXPECT_GT(Ink(QRect(200, 120, 2, 60)), 100) << "the line between two squares";
      EXPECT_EQ(Ink(QRect(202, 110, 20, 20)), 0);
    }
    Delete_Raster();
  }
  PlanLabels labels;
  for (int column = 1; column <= 60; ++column) labels.Plan_Edge_Collect(Square_Name(column, 7), column, 5);
  EXPECT_EQ(labels.Columns().at(59).Text, "AH");
  ASSERT_EQ(labels.Rows().size(), 1U);
  EXPECT_EQ(labels.Rows()[0].Text, "  7");
}

// Seven units a letter: "A-1" is 21 wide. The design's own font and size are those of the screen.
TEST_F(PlanSquaresTest, OnPaperLabelsAreArialOfEightToFifteenPoints) {
  const struct {
    double fontFactor, side, points;
    LabelPlace place;
    int labels;
  } cases[] = {{1, 100, 10, LabelPlace::Centre, 9}, {0.5, 100, 8, LabelPlace::Centre, 9},
               {3, 100, 15, LabelPlace::Centre, 9}, {1.3, 100, 13, LabelPlace::SquareEdge, 6},
               {1, 10, 8, LabelPlace::Centre, 2},   {1, 5, 8, LabelPlace::MapEdge, 3}};
  for (const auto& it : cases) {
    RecordingSurface paper({0, 0, 900, 700}, true);
    DrawContext context{paper, {}, paper.Extent()};
    context.fontScale = it.fontFactor;
    RasterDesign design;
    design.labels = it.place;
    design.font = QStringLiteral("Times New Roman");
    design.fontSize = 30;
    PlanLabels labels;
    labels.Set_Design(design);
    for (int row = 0; row < 3; ++row)
      for (int column = 0; column < 3; ++column) {
        const QString name = Square_Name(column + 1, row + 1);
        labels.Add_Square(name, name, {100 + column * it.side, 100 + row * it.side, it.side, it.side}, true);
      }
    labels.Print(context);
    EXPECT_EQ(paper.Font().family, "Arial");
    EXPECT_EQ(paper.Font().points, it.points) << it.fontFactor << ' ' << it.side;
    const auto printed = std::count_if(paper.calls.begin(), paper.calls.end(),
                                       [](const RecordingSurface::Call& call) { return call.what == "Print"; });
    EXPECT_EQ(printed, it.labels) << it.side << ": none lies over another one";
  }
}

TEST_F(PlanSquaresTest, SquaresTakeClicksOnlyWhileActive) {
  Add(Figure_Row(20, {245, 50, 20, 400}));  // narrower than a square, yet higher: it is not what lies in one
  const QString area = Add(Figure_Row(20, {90, 90, 500, 400}));
  ASSERT_TRUE(Take_Raster_On_Map(Raster(100, LabelPlace::None)));
  const QString text = Add_Text("Ort", 310, 310);
  Map_Redraw();
  const QString square = Key_Of(QStringLiteral("B-2"));
  Map_Mouse_Move({250, 250}, false);
  EXPECT_TRUE(Map.lblPLQ.Visible);
  EXPECT_EQ(Map.lblPLQ.Text, "B-2");
  Drag({250, 250}, {280, 290});
  EXPECT_EQ(Map.InHand, square);
  EXPECT_EQ(At(square), QPoint(200, 200)) << "a raster stays in place";
  EXPECT_EQ(Text_Now("mnuObjVisNo"), "aktuelles Objekt unsichtbar machen");
  End_Entry();
  Go(square);
  Set_Field(column::Eintrag, QStringLiteral("Horst"));
  Click({250, 250}, {.control = true});
  EXPECT_EQ(Map.lblPLQ.Text, "Horst");
  Click({315, 318});
  EXPECT_EQ(Map.InHand, text) << "a small entry in a square is still meant";
  End_Entry();
  Toggle_Raster_Active();
  Map_Mouse_Move({251, 251}, false);
  EXPECT_FALSE(Map.lblPLQ.Visible);
  Click({250, 250});
  EXPECT_EQ(Map.InHand, area);
}

TEST_F(PlanSquaresTest, AFreeSquareComesIntoTheHandAndMoves) {
  RasterPreview raster = Raster(100, LabelPlace::None);
  raster.design.field = RasterField::Free;
  raster.plan = Plan({300, 200, 60, 60}, 60);
  ASSERT_TRUE(Take_Raster_On_Map(raster));
  ASSERT_TRUE(Take_Raster_On_Map(raster));
  EXPECT_EQ(Entry_Count(), 2);
  const QString key = Key_Of(QStringLiteral("frei-2"));
  EXPECT_EQ(Map.InHand, key);
  Drag({330, 230}, {350, 240});
  EXPECT_EQ(entry_box(Row(key)), (EntryBox{320, 210, 60, 60}));
}
