#include "edit/entry_look.h"

#include "hand/next_shape.h"
#include "support/hand_fixture.h"
#include "support/refused_writes.h"

namespace {

class EntryLookTest : public HandTest {
 protected:
  static EntryRow Area_Row() {
    return Poly_Row(QStringLiteral("Flaeche0"), 100, 100, {{120, 120}, {320, 120}, {320, 260}});
  }
};

}  // namespace

TEST_F(EntryLookTest, FrameColourKeepsTheRestOfTheWord) {
  // Width, pattern, mode and sign stay; 0 cannot be negated; colours above 15 are overwritten whole.
  const std::tuple<int, int, int> cases[] = {{0, 5, 5},           {-1, 12, -12},    {-5, 0, -100},   {216, 7, 207},
                                             {-11315, 2, -11302}, {399, 15, 315},   {-100, 0, -100}, {7, 16, 7},
                                             {7, -1, 7},          {32767, 9, 32709}};
  for (const auto& [before, color, after] : cases) {
    EntryRow row = Text_Row("Reiher", 50, 50);
    row.RA = before;
    const QString bookmark = Take(row);
    EXPECT_TRUE(Change_Rahmen(color));
    EXPECT_EQ(Row(bookmark).RA, after) << before << " " << color;
  }
}

TEST_F(EntryLookTest, FrameIsSwitchedAndStyled) {
  for (const auto& [on, off] : {std::pair{0, -100}, {5, -5}, {12304, -12304}}) {
    EntryRow row = Text_Row("Reiher", 50, 50);
    row.RA = on;
    const QString bookmark = Take(row);
    Switch_Frame(false);
    EXPECT_EQ(Row(bookmark).RA, off);
    Switch_Frame(true);
    EXPECT_EQ(Row(bookmark).RA, std::abs(off));
    Change_Frame({.framed = false, .pattern = 3, .width = 4, .color = 9});
    EXPECT_EQ(Row(bookmark).RA, -(on / 10000 * 10000 + 3400 + on % 100));
    Change_Frame({.width = 9});
    EXPECT_EQ(Look_In_Hand().frame.width, 4);
  }
}

TEST_F(EntryLookTest, EveryKindTakesWhatItHas) {
  const QString area = Take(Area_Row());
  Change_Fill({-4});
  Change_Width(3.5);
  Change_Color(ColorOf::HG, 11);
  EXPECT_EQ(std::tuple(Row(area).Yline, Row(area).Xline, Row(area).HG), std::tuple(-4, 4, 11));
  EntryRow figure = Figure_Row(20, {200, 300, 60, 40});
  figure.Schrift = QStringLiteral("F 1<30");
  const QString turned = Take(figure);
  Change_Fill({-8});
  Change_Width(5);  // its outline is its frame
  EXPECT_EQ(std::tuple(Row(turned).Schrift, Row(turned).Xline), std::tuple("F-8<30", 60));
  // A bare outline is drawn in VG; its frame takes over in that colour.
  figure.Schrift = QStringLiteral("Futura");
  figure.VG = 3;
  const QString bare = Take(figure);
  Change_Fill({6});
  EXPECT_EQ(std::tuple(Row(bare).Schrift, Row(bare).RA), std::tuple("F 6", 203));
  EntryRow line = Area_Row();
  line.ID = QStringLiteral("Linie7");
  const QString thin = Take(line);
  Change_Fill({5});
  Change_Width(0);
  EXPECT_EQ(std::tuple(Row(thin).Yline, Row(thin).Xline), std::tuple(1, 1));
  const QString picture = Take(Text_Row("fehlt.png", 400, 400, 5));
  Change_Color(ColorOf::VG, 4);
  Change_Color(ColorOf::RA, 4);
  EXPECT_EQ(std::tuple(Row(picture).VG, Row(picture).RA), std::tuple(0, -104));
  EntryRow scale = Text_Row(" km", 500, 500, 11);
  scale.HG = 1;
  const QString bar = Take(scale);
  Change_Color(ColorOf::HG, 7);  // its direction
  Change_Color(ColorOf::RA, 7);
  EXPECT_EQ(Row(bar), scale);
}

TEST_F(EntryLookTest, ASquareComesBackToItsFormerLook) {
  EntryRow row = Text_Row("A-1", 100, 100, 16);
  row.ID = QStringLiteral("Plan\u001fA-1");
  std::tie(row.Schrift, row.Xline, row.Yline) = std::tuple("F 1", 200, 200);
  const QString square = Take(row);
  Change_Color(ColorOf::HG, 7);
  EXPECT_EQ(Row(square).HG, 7);
  EXPECT_EQ(Map.InHand, square);
  EXPECT_EQ(Menu("mnuReset").Caption, "Rückgängig: Planquadrat ändern");
  With_Box("wieder hergestellt", Undo_Last);
  EXPECT_EQ(Row(square).HG, row.HG);
}

TEST_F(EntryLookTest, NothingInHandMeansTheNextEntry) {
  const QString bookmark = Take(Area_Row());
  ASSERT_TRUE(End_Entry());
  const EntryRow before = Row(bookmark);
  Change_Color(ColorOf::VG, 12);
  Change_Color(ColorOf::HG, 99);
  Change_Fill({7});
  Change_Fill({-9});
  Change_Width(400);
  EXPECT_EQ(CurVG, 12);
  EXPECT_LT(CurHG, 16);
  EXPECT_EQ(std::tuple(NextShape.fill, NextShape.width), std::tuple(7, widestPen));
  EXPECT_EQ(Row(bookmark), before);
  // A text being typed is the next entry, and stays open.
  New_Text(40, 40);
  Text_Typed(QStringLiteral("Eisvogel"));
  EXPECT_EQ(Look_In_Hand().of, LookOf::NewText);
  Change_Color(ColorOf::HG, 10);
  Switch_Frame(false);
  EXPECT_EQ(EntHGColor, Palette[10]);
  EXPECT_EQ(Map.Text2.Tag, EditTag::New);
  ASSERT_TRUE(Store_Pending_Text());
  EXPECT_EQ(Look_In_Hand().HG, 10);
  EXPECT_EQ(Row(Map.InHand).VG, 12);
  EXPECT_LT(Row(Map.InHand).RA, 0);
}

TEST_F(EntryLookTest, VanishedOrLockedRowsAreNotWritten) {
  const QString gone = Take(Text_Row("Reiher", 50, 50));
  const int color = Row(gone).VG;
  rsEntries->SetBookmark(gone);
  rsEntries->Delete();
  EXPECT_EQ(Look_In_Hand().of, LookOf::Next);
  EXPECT_TRUE(Change_Color(ColorOf::VG, color == 3 ? 4 : 3));
  const QString bookmark = Take(Text_Row("Reiher", 50, 50));
  Refuse_Rows(*dbEntries, QStringLiteral("RA = -105"));
  MessageScript messages("Error: Change_Rahmen");
  EXPECT_FALSE(Change_Rahmen(5));
  EXPECT_EQ(Row(bookmark).RA, -100);
}

TEST_F(EntryLookTest, PaletteRecoloursTheMapWithoutTouchingARow) {
  EntryRow figure = Figure_Row(20, {200, 200, 60, 40});
  figure.HG = 9;
  const QString bookmark = Add(figure);
  Map_Redraw();
  const QPoint inside(Window_X(230), Window_Y(220));
  ASSERT_EQ(Map.canvas.pixel(inside), Palette[9]);
  std::array<QRgb, 16> colors = Palette;
  colors[9] = qRgb(120, 200, 40);
  Change_Palette(colors);
  EXPECT_EQ(Map.canvas.pixel(inside), qRgb(120, 200, 40));
  EXPECT_EQ(Row(bookmark), figure);
  EXPECT_EQ(Read_Lines(Program_File("MAP-Farb"))[9], QString::number(120 + 200 * 256 + 40 * 65536));
}
