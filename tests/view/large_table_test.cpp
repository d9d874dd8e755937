#include "edit/order.h"
#include "support/hand_fixture.h"
#include "support/pixels.h"
#include "view/entry_index.h"
#include "view/hit_test.h"
#include "view/map_paint.h"

// A table so large that not all of its rows are looked at in a redraw, and that changes of single rows repaint what
// they touch alone. Whatever is left out, picture, hits and counts are those of all rows.

namespace {

constexpr int many = 2100;

class LargeTable : public HandTest {
 protected:
  void SetUp() override {
    HandTest::SetUp();
    dbEntries->BeginTrans();
    Append_Entry(Poly_Row("Flaeche0", 400, 400, {{300, 300}, {900, 350}, {500, 900}}));
    for (int i = 0; i < many; ++i) Append_Entry(Any_Row());
    Append_Entry(Poly_Row("Linie1", -1, -1, {{0, 0}, {1500, 1100}, {200, 900}}));
    Append_Entry(Figure_Row(22, {350, 300, 200, 150}));
    for (int i = 0; i < 90; ++i) {
      Append_Entry(Any_Shape(i));
      rsEntries->MoveLast();
      shapes.push_back(rsEntries->Key());
    }
    dbEntries->CommitTrans();
  }

  int Below(int limit) { return static_cast<int>(dice() % static_cast<unsigned>(limit)); }
  // A text of any kind, mostly small ones.
  EntryRow Any_Row() {
    const QStringList texts = {u"Ort"_s, u"Möwe\r\nSee"_s, u"i"_s, u"WWWWWWWWWWWW"_s, u"♀ 12"_s, u"日本"_s, {}};
    EntryRow row = Text_Row(texts[Below(static_cast<int>(texts.size()))], Below(1700) - 50, Below(1300) - 50, Below(4));
    if (Below(30) == 0) row.Typ = 7;
    row.Groesse = Below(12) == 0 ? Below(60) - 10 : 6 + Below(5);
    row.HG = Below(15);
    row.RA = Below(3) == 0 ? 100 * Below(9) + Below(16) + 10000 * Below(2) + 1000 * Below(5) : -100;
    if (Below(6) == 0) row.Schrift = u"Arial-T<%1"_s.arg(Below(360));
    if (Below(5) == 0) {
      row.Xline = Below(1600);
      row.Yline = Below(1200);
    }
    if (Below(8) == 0) row.Typ = -std::max(row.Typ, 1);
    if (Below(9) == 0) row.ID = u"-Text"_s;
    if (Below(15) == 0) row.Typ += row.Typ < 0 ? -100 : 100;
    return row;
  }
  std::vector<QPoint> Any_Points() {
    const QPoint middle(Below(1600), Below(1200));
    std::vector<QPoint> points;
    for (int i = 2 + Below(5); i >= 0; --i) points.push_back(middle + QPoint(Below(160) - 80, Below(160) - 80));
    return points;
  }
  // A line, an area or a figure, with and without label, frame, ends, hatch, angle.
  EntryRow Any_Shape(int number) {
    const int width = Below(4) == 0 ? 1 + Below(12) : 1;
    if (number % 3 != 0) {
      EntryId id = EntryId::Parse((number % 3 == 1 ? u"Linie1%1"_s : u"Flaeche1%1"_s).arg(number));
      EntryRow row = Poly_Row(id.TableName(), Below(1600), Below(1200), Any_Points());
      if (number % 3 == 1 && Below(2) == 0)
        id.ends =
            LineEnds{static_cast<LineEnds::Shape>(Below(3)), Below(2) == 0, true, true, false, 3.0 + Below(20), 4};
      row.ID = id.ToText();
      row.Xline = width;
      row.Yline = number % 3 == 1 ? Below(8) - 2 : Below(20);
      row.VG = Below(15);
      if (Below(2) == 0) row.Groesse = -12;
      row.Typ = Below(2) == 0 ? 4 : 40;
      return row;
    }
    EntryRow row = Figure_Row(20 + Below(6), {Below(1600), Below(1200), Below(200), Below(150)});
    row.ID = u"Figur1%1"_s.arg(number);
    if (row.Typ >= 24) Write_Vertices(row.ID, Any_Points());
    row.Schrift = Below(3) == 0 ? u"Arial"_s : u"F %1<%2"_s.arg(Below(20)).arg(Below(2) == 0 ? 0 : Below(360));
    row.RA = Below(3) == 0 ? -100 : 100 * width + Below(16);
    return row;
  }
  void Go_To_Any_Shape() {
    do {
      rsEntries->SetBookmark(QString::number(shapes[static_cast<size_t>(Below(static_cast<int>(shapes.size())))]));
    } while (EntryReach::Of(*rsEntries).Everywhere());
  }
  // One whose reach is known.
  void Go_To_Any_Text() {
    do {
      rsEntries->MoveTo(1 + Below(many));
    } while (EntryReach::Of(*rsEntries).Everywhere());
  }

  // All rows, drawn one after the other onto the bare ground, and compared with what stands in the window.
  static void Expect_All_Rows(const DrawCounts& counts, const std::string& what) {
    SCOPED_TRACE(what);
    QImage picture = Make_Canvas(Map.ScaleWidth, Map.ScaleHeight, qRgb(255, 255, 255));
    const auto surface = Make_Surface(picture);
    surface->pen.ForeColor = QBColor(9);
    const QRectF window(0, 0, Map.ViewWidth, Map.ViewHeight);
    surface->SetClip(window);
    RegionSet regions;
    DrawContext context{
        *surface, {1.0 * Map.ViewLeft, 1.0 * Map.ViewTop, static_cast<double>(Map.Zoom)}, window, &regions};
    const DrawCounts all = Draw_Entries(context);
    EXPECT_EQ(Difference_Of(picture.copy(window.toRect()), Map.canvas), QRect());
    EXPECT_EQ(std::tuple(counts.hidden, counts.inactive, counts.marked),
              std::tuple(all.hidden, all.inactive, all.marked));
    const auto key = [](const RegionSet& set, QPointF at) { return set.AnyAt(at) ? set.Row(set.TopAt(at)).key : 0; };
    for (int y = 1; y < Map.ViewHeight; y += 17)
      for (int x = 1; x < Map.ViewWidth; x += 13)
        ASSERT_EQ(key(Map.EntryRegions, QPointF(x, y)), key(regions, QPointF(x, y))) << x << ',' << y;
  }

  std::mt19937 dice{20};
  std::vector<qint64> shapes;  // their keys
};

}  // namespace

TEST_F(LargeTable, ShowsWhatAllRowsShow) {
  for (const double zoom : {1.0, 0.5, 2.5, 9.0}) {
    Set_Zoom(zoom);
    Scroll_By(137, 91);
    Expect_All_Rows(Paint_Map(), std::to_string(zoom));
  }
}

TEST_F(LargeTable, ChangedRowsAreMendedInPictureHitsAndCounts) {
  const auto into_view = [](int column, int at) { Set_Field(column, qint64{at}); };
  const auto left = [this] { return Map.ViewLeft + Below(static_cast<int>(300 * static_cast<double>(Map.Zoom))); };
  const auto mark = [] { Set_Field(column::Typ, qint64{Type_Here().Marked(Mark::Last).ToNumber()}); };
  const std::function<void()> changes[] = {
      [&] { Go_To_Any_Text(), into_view(column::Xmap, left()); },  // moved
      [&] { Append_Entry(Any_Row()); },
      [&] { Go_To_Any_Text(), rsEntries->Delete(); },
      // Hidden or shown.
      [&] { Go_To_Any_Text(), Set_Field(column::Typ, -std::max(qint64{1}, rsEntries->Integer(column::Typ))); },
      [&] { Go_To_Any_Text(), mark(); },
      [&] {  // another row altogether, and several at once
        const EntryRow row = Any_Row();
        Go_To_Any_Text(), Update_Entry(row);
        Go_To_Any_Text(), into_view(column::Ymap, Map.ViewTop + 30), into_view(column::Ymap, Map.ViewTop + 40);
      },
      // A line, an area, a figure: moved, coloured, another one.
      [&] { Go_To_Any_Shape(), into_view(column::Xmap, left()), into_view(column::VG, Below(15)); },
      [&] {
        const EntryRow row = Any_Shape(1000 + 3 * Below(99));
        Go_To_Any_Shape(), Update_Entry(row);
      },
      [&] {  // its vertices alone
        do Go_To_Any_Shape();
        while (!Type_Here().HasVertices());
        Write_Vertices(EntryId::Parse(rsEntries->Text(column::ID)).TableName(), Any_Points());
      },
      [&] { Go_To_Any_Shape(), Set_Field(column::Typ, qint64{Type_Here().Hidden().ToNumber()}); },
      [&] { Go_To_Any_Shape(), mark(); },
      [&] { Go_To_Any_Text(), Set_Field(column::Eintrag, u"neu"_s); },
  };
  for (const double zoom : {1.0, 0.5, 2.5}) {
    Set_Zoom(zoom);
    Scroll_By(150, 120);
    // Squares and their labels lie over all entries.
    for (int i = 0; zoom == 0.5 && i < 30; ++i)
      Append_Entry({u"Plan\x1f%1"_s.arg(i), u"A%1"_s.arg(i), u"F 1"_s, 8, 1, 14, 109, 100 + i % 6 * 60,
                    100 + i / 6 * 60, 160 + i % 6 * 60, 160 + i / 6 * 60, 16});
    Paint_Map();
    int parts = 0;
    for (size_t step = 0; step < 3 * std::size(changes); ++step) {
      const KeepCurrentRow keep;
      changes[step % std::size(changes)]();
      const auto counts = Paint_Changes();
      parts += counts.has_value();
      Expect_All_Rows(counts ? *counts : Paint_Map(), std::to_string(zoom) + ", step " + std::to_string(step));
      if (HasFatalFailure() || HasNonfatalFailure()) return;
    }
    EXPECT_GE(parts, 24) << "letters of unknown width may come, and large parts";
  }
}

// What cannot be told by the rows alone is painted as a whole.
TEST_F(LargeTable, AnythingElsePaintsAllOfIt) {
  const auto text = [this] { Go_To_Any_Text(), Set_Field(column::Eintrag, u"neu"_s); };
  const std::pair<const char*, std::function<void()>> ways[] = {
      {"a statement", [] { dbEntries->Execute(u"UPDATE MapData SET HG = 3 WHERE Typ = 0"_s); }},
      {"a table that is no entry's", [] { Create_Vertex_Table(u"Flaeche999"_s); }},
      {"a large area",
       [] {
         Write_Vertices(u"Flaeche0"_s, {{0, 0}, {1600, 300}, {500, 1200}});
       }},
      {"taken back", [&] { dbEntries->BeginTrans(), text(), dbEntries->Rollback(); }},
      {"another look", [&] { text(), frmMDI.Light = !frmMDI.Light; }},
      {"the order", [&] { Go_To_Any_Text(), Map.CurBookmark = rsEntries->Bookmark(), Move_In_Order(-10); }},
      {"scrolled", [&] { text(), ++Map.ViewLeft; }}};
  Set_Zoom(1);
  for (const auto& [name, way] : ways) {
    Paint_Map();
    text();
    ASSERT_TRUE(Paint_Changes()) << name;
    const KeepCurrentRow keep;
    way();
    EXPECT_FALSE(Paint_Changes()) << name;
  }
}

// A drag, typing and marks by the user's hand, against the picture that is painted as a whole.
TEST_F(LargeTable, TheHandLeavesTheSamePicture) {
  Set_Zoom(1);
  const auto expect_same = [](const char* what) {
    const QImage mended = Map.canvas.copy();
    const int hidden = Map.HiddenCount, marked = Map.MarkCount;
    Map_Redraw();
    EXPECT_EQ(Difference_Of(mended, Map.canvas), QRect()) << what;
    EXPECT_EQ(std::pair(hidden, marked), std::pair(Map.HiddenCount, Map.MarkCount)) << what;
  };
  const QString key = Add(Text_Row(u"Zieh mich"_s, 300, 200));
  Map_Redraw();
  Drag({310, 205}, {500, 333});
  EXPECT_EQ(At(key), QPoint(490, 328));
  expect_same("dragged, still in hand");
  ASSERT_TRUE(End_Entry());
  expect_same("left");
  ASSERT_TRUE(Take_Entry(key));
  Text_Typed(u"und noch länger als zuvor"_s);
  ASSERT_TRUE(End_Entry());
  EXPECT_EQ(Row(key).Eintrag, u"und noch länger als zuvor"_s);
  expect_same("typed");
  EXPECT_EQ(Map.EntryRegions.Row(Hit_Entry({560, 335})).Bookmark(), key);
}
