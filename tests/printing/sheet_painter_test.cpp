#include "printing/sheet_painter.h"

#include <QPainter>

#include "maps/map_open.h"
#include "plansquares/raster_rows.h"
#include "printing/print_map.h"
#include "support/nets.h"
#include "view/redraw.h"

constexpr double mmPerPixel = 25.4 / 96;  // of a map at factor 1

// A map of 1600 x 1200 pixels (423 x 317 mm) printed on A4 with a factor of 0.8: two sheets across, one down.
class SheetPainter : public FluraxTest {
 protected:
  void SetUp() override {
    FluraxTest::SetUp();
    Open_Map(Make_Map(u"Karte.bmp"_s, 1600, 1200));
    ASSERT_TRUE(frmMDI.MapOpen);
    paper = Paper_Of(u"A4"_s, landscape);
    settings = {.factor = 0.8, .fontFactor = 1.5, .left = 10, .right = 3, .top = 7, .orientation = landscape};
    Plan();
  }
  void Plan() {
    geometry = Print_Geometry(settings, paper, Map_To_Print());
    ASSERT_TRUE(geometry.valid);
    sheets = Sheet_Walk(geometry);
  }
  static void Figure(QRect box, int color, const QString& fill = u"F 1"_s, int typ = 20) {
    Append_Entry({"Figur1", {}, fill, 0, 0, color, -100, box.x(), box.y(), box.width(), box.height(), typ});
  }
  static void Text(const QString& text, int x, int y, int typ = 0) {
    Append_Entry({"Text", text, "Arial", 12, 0, 15, -100, x, y, 0, 0, typ});
  }
  QImage Page(int dpi) const {
    QImage page(qRound(paper.PrintableWidth() * dpi / 25.4), qRound(paper.PrintableHeight() * dpi / 25.4),
                QImage::Format_RGB32);
    page.fill(Qt::white);
    return page;
  }
  QImage Drawn(size_t sheet, int dpi) const {
    QImage page = Page(dpi);
    QPainter painter(&page);
    Draw_Sheet(painter, dpi, geometry, sheets[sheet], {.fontFactor = settings.fontFactor});
    return page;
  }
  PrintOrder Order(PrintRange range, PrintPath path = PrintPath::Direct) const {
    return {.settings = settings, .paper = paper, .map = Map_To_Print(), .range = range, .path = path};
  }
  // Prints into "Blatt.pdf".
  PrintEnd Print(const PrintOrder& order, std::function<bool(int, const QString&)> step = {}) const {
    return Print_Map(order,
                     {[this] { return Make_Pdf_Job(Path(u"Blatt.pdf"_s), paper, u"Karte"_s); }, std::move(step)});
  }
  // Colour of the page at a place of the map (pixels), shifted by paper mm.
  QRgb At(const QImage& page, size_t sheet, int dpi, QPointF map, QPointF mm = {}) const {
    const double x = map.x() * geometry.MapPixelMm - sheets[sheet].PageDrawX + geometry.marginLeft + mm.x();
    const double y = map.y() * geometry.MapPixelMmY - sheets[sheet].PageDrawY + geometry.marginTop + mm.y();
    return page.pixel(static_cast<int>(x * dpi / 25.4), static_cast<int>(y * dpi / 25.4)) | 0xff000000;
  }

  Paper paper;
  PrintSettings settings;
  PrintGeometry geometry;
  std::vector<PrintSheet> sheets;
};

TEST_F(SheetPainter, LabelsOfPlanSquaresStandAtTheEdgeOfTheSheet) {
  const auto ink = [this](LabelPlace labels) {
    RasterDesign design;
    design.labels = labels;
    const RasterPlan squares = ::Plan({100, 100, 400, 400}, 100);
    dbEntries->BeginTrans();
    for (const PlanSquare& square : squares.squares) Append_Entry(Square_Row(design, square));
    Append_Entry(Design_Row(design, squares));
    dbEntries->CommitTrans();
    const QImage page = Drawn(0, 150);
    EXPECT_EQ(Delete_Raster(), 17);
    // The first 5 mm of the map above the first column of squares.
    int dark = 0;
    for (double mm = 0.2; mm < 5; mm += 0.15)
      for (int x = 110; x < 190; ++x) dark += qGray(At(page, 0, 150, {x + 0.5, 0}, {0, mm})) < 128;
    return dark;
  };
  EXPECT_EQ(ink(LabelPlace::None), 0);
  EXPECT_GT(ink(LabelPlace::MapEdge), 5);
}

TEST_F(SheetPainter, EntriesLieWhereTheMillimetresSayAtEveryResolution) {
  Figure({100, 100, 200, 150}, 12);
  Figure({1400, 950, 50, 50}, 9);
  ASSERT_EQ(sheets.size(), 4U);
  for (const int dpi : {150, 300, 600, 1200}) {
    const QImage first = Drawn(0, dpi);
    const double near = 0.3;  // mm: a pixel of 150 dpi and the rim
    for (const auto& [corner, inward] : {std::pair<QPointF, QPointF>{{100, 100}, {near, near}},
                                         {{300, 100}, {-near, near}},
                                         {{100, 250}, {near, -near}},
                                         {{300, 250}, {-near, -near}}}) {
      EXPECT_EQ(At(first, 0, dpi, corner, inward), QBColor(12)) << dpi << " at " << corner.x() << "," << corner.y();
      EXPECT_EQ(At(first, 0, dpi, corner, -inward), QBColor(15)) << dpi << " at " << corner.x() << "," << corner.y();
    }
    const QImage last = Drawn(3, dpi);
    EXPECT_EQ(At(last, 3, dpi, {1401.5, 951.5}), QBColor(9));
    EXPECT_EQ(At(last, 3, dpi, {1398, 975}), QBColor(15));
  }
}

// A pixel of the screen would be a quarter of a millimetre on every sheet, however small the map is printed.
TEST_F(SheetPainter, RectanglesAreAsLargeOnPaperAsOnTheMap) {
  settings.factor = 0.2;
  Plan();
  const int dpi = 1200;
  for (const bool turned : {false, true}) {
    const QRect box(100 + 400 * turned, 100, 300, 200);
    Figure(box, 12, turned ? u"F 1<180"_s : u"F 1"_s);
    const QImage page = Drawn(0, dpi);
    const QPointF in(0.06, 0.06);
    EXPECT_EQ(At(page, 0, dpi, box.topLeft(), in), QBColor(12));
    EXPECT_EQ(At(page, 0, dpi, box.topLeft(), -in), QBColor(15));
    const QPointF corner(box.x() + box.width(), box.y() + box.height());
    EXPECT_EQ(At(page, 0, dpi, corner, -in), QBColor(12));
    EXPECT_EQ(At(page, 0, dpi, corner, {0.06, -0.06}), QBColor(15)) << turned;
    EXPECT_EQ(At(page, 0, dpi, corner, {-0.06, 0.06}), QBColor(15)) << turned;
  }
}

TEST_F(SheetPainter, TicksStandOutRoundPlanSquares) {
  RasterDesign design;
  const RasterPlan squares = ::Plan({100, 100, 200, 200}, 100);
  for (const PlanSquare& square : squares.squares) Append_Entry(Square_Row(design, square));
  const int dpi = 600;
  const QImage page = Drawn(0, dpi);
  const auto ink = [&](QPointF map, QPointF mm) {
    int dark = 0;  // across the line, which is as wide as a pen
    for (double off = -0.3; off <= 0.3; off += 0.02)
      dark += qGray(At(page, 0, dpi, map, mm + (mm.x() != 0 ? QPointF(0, off) : QPointF(off, 0)))) < 200;
    return dark > 0;
  };
  for (const double at : {100.0, 200.0, 300.0}) {
    for (const auto& [mm, wanted] : {std::pair(-0.8, true), {-1.2, false}}) {
      EXPECT_EQ(ink({100, at}, {mm, 0}), wanted) << "left of row " << at << ", " << mm;
      EXPECT_EQ(ink({at, 100}, {0, mm}), wanted) << "above column " << at << ", " << mm;
    }
    for (const auto& [mm, wanted] : {std::pair(2.8, true), {3.6, false}}) {
      EXPECT_EQ(ink({300, at}, {mm, 0}), wanted) << "right of row " << at << ", " << mm;
      EXPECT_EQ(ink({at, 300}, {0, mm}), wanted) << "below column " << at << ", " << mm;
    }
  }
}

TEST_F(SheetPainter, WhatCannotBeDrawnIsToldOnceAJob) {
  Append_Entry({"Linie3", "Bach", "Arial", 12, 0, 15, -100, 100, 100, 1, 1, 4});
  Append_Entry({"Figur2", "Becken", "F 1", 12, 0, 15, -100, 100, 100, 50, 50, 24});
  for (const PrintPath way : {PrintPath::Direct, PrintPath::Bitmap}) {
    MessageScript boxes{{u"Bach"_s, MsgAnswer::Yes}, {u"Becken"_s, MsgAnswer::Yes}};
    EXPECT_EQ(Print(Order({1, 4}, way)), PrintEnd::Done);
    ASSERT_EQ(boxes.Seen().size(), 2U);
    EXPECT_EQ(boxes.Seen()[0].title, u"Problem - Karte drucken"_s);
    EXPECT_EQ(boxes.Seen()[1].title, u"Module4 - Fig_Print"_s);
  }
  MessageScript boxes{{u"Bach"_s, MsgAnswer::No}, {u"wird abgebrochen"_s}};
  EXPECT_EQ(Print(Order({1, 4})), PrintEnd::Cancelled);
}

TEST_F(SheetPainter, AnEntryAcrossTwoSheetsIsCutWhereTheyMeet) {
  const int seam = qRound(sheets[1].PageOffX / mmPerPixel);
  Figure({seam - 100, 100, 200, 100}, 12);
  const int dpi = 300;
  const QImage left = Drawn(0, dpi), right = Drawn(1, dpi);
  EXPECT_EQ(At(left, 0, dpi, {seam - 1.5, 150}), QBColor(12));
  EXPECT_EQ(At(left, 0, dpi, {seam + 3.0, 150}), QBColor(15)) << "beyond the room for the map";
  EXPECT_EQ(At(right, 1, dpi, {seam + 1.5, 150}), QBColor(12));
  EXPECT_EQ(At(right, 1, dpi, {seam - 3.0, 150}), QBColor(15));
  // Hidden rows and marks stay off the paper.
  Figure({100, 300, 100, 100}, 12, u"F 1"_s, -20);
  Figure({400, 300, 100, 100}, 12, u"F 1"_s, 120);
  frmMDI.showHidden = true;
  const QImage page = Drawn(0, 150);
  EXPECT_EQ(At(page, 0, 150, {150, 350}), QBColor(15));
  EXPECT_EQ(At(page, 0, 150, {450, 350}), QBColor(12));
  EXPECT_EQ(At(page, 0, 150, {398.5, 350}, {-0.1, 0}), QBColor(15)) << "a mark";
}

TEST_F(SheetPainter, TransparentFillsLookAsOnTheScreen) {
  Figure({100, 100, 300, 200}, 14);            // yellow
  Text(u"Unter der Fläche"_s, 150, 150);       // below the transparent ones
  Figure({200, 150, 300, 200}, 11, u"F-1"_s);  // not-xor with cyan
  Write_Vertices(u"Flaeche1"_s, {{50, 50}, {350, 50}, {350, 260}, {50, 260}});
  Append_Entry({"Flaeche1", {}, {}, -8, 0, 13, -100, 0, 0, 1, -1, 4});  // and with magenta
  Figure({310, 160, 30, 20}, 10);                                       // green above all
  const QImage screen = Map_Picture_With_Entries();
  const int dpi = 300;
  const QImage page = Drawn(0, dpi);
  for (const QPoint at : {QPoint(70, 70), QPoint(120, 120), QPoint(320, 240), QPoint(380, 280), QPoint(450, 300),
                          QPoint(320, 170), QPoint(380, 120), QPoint(600, 500)})
    EXPECT_EQ(At(page, 0, dpi, QPointF(at) + QPointF(0.5, 0.5)), screen.pixel(at) | 0xff000000)
        << at.x() << "," << at.y();
  // The same through the picture of the sheet.
  QImage image = Page(dpi);
  Draw_Sheet_Image(image, dpi, QRectF(0, 0, paper.PrintableWidth(), paper.PrintableHeight()), geometry, sheets[0], {});
  for (const QPoint at : {QPoint(70, 70), QPoint(320, 240), QPoint(450, 300)})
    EXPECT_EQ(At(image, 0, dpi, QPointF(at) + QPointF(0.5, 0.5)), screen.pixel(at) | 0xff000000);
}

// A PDF of the two upper sheets, asked by the tools of a reader.
TEST_F(SheetPainter, ThePdfHoldsTheTextAndTrueMillimetres) {
  Figure({100, 100, 200, 150}, 12);
  Figure({200, 150, 300, 200}, 11, u"F-1"_s);
  Text(u"Sumpfdotterblume"_s, 400, 400);
  Text(u"Wollgras"_s, 1300, 100);
  const QString path = Path(u"Blatt.pdf"_s);
  int steps = 0;
  ASSERT_EQ(Print(Order({1, 2}), [&](int, const QString&) { return ++steps > 0; }), PrintEnd::Done);
  EXPECT_GE(steps, 2);
  EXPECT_EQ(InfoBar.Panel[0], u"Gedruckt: 2 Blätter, "_s + path);
  const QString first = Run_Tool(u"pdftotext"_s, {u"-l"_s, u"1"_s, path, u"-"_s});
  EXPECT_TRUE(first.contains(u"Sumpfdotterblume")) << first;
  EXPECT_FALSE(first.contains(u"Wollgras")) << "text of another sheet";
  EXPECT_TRUE(Run_Tool(u"pdftotext"_s, {u"-f"_s, u"2"_s, path, u"-"_s}).contains(u"Wollgras"));
  EXPECT_TRUE(Run_Tool(u"pdfinfo"_s, {path}).contains(u"Pages:           2"));
  Run_Tool(u"pdftoppm"_s, {u"-r"_s, u"150"_s, u"-png"_s, u"-l"_s, u"1"_s, path, Path(u"Seite"_s)});
  QImage page(Path(u"Seite-1.png"_s));
  ASSERT_FALSE(page.isNull());
  // Now from the corner of the sheet, border included.
  const auto at = [&](QPointF map, QPointF mm) {
    const double x = map.x() * geometry.MapPixelMm + geometry.marginLeft + paper.unprintableX + mm.x();
    const double y = map.y() * geometry.MapPixelMmY + geometry.marginTop + paper.unprintableY + mm.y();
    return page.pixel(qRound(x * 150 / 25.4), qRound(y * 150 / 25.4)) | 0xff000000;
  };
  EXPECT_EQ(at({100, 100}, {0.4, 0.4}), QBColor(12));
  EXPECT_EQ(at({100, 100}, {-0.4, -0.4}), QBColor(15));
  EXPECT_EQ(at({250, 200}, {}), Map_Picture_With_Entries().pixel(250, 200) | 0xff000000) << "the transparent fill";
}

TEST_F(SheetPainter, TheNetIsLabelledOnBothPaths) {
  Write_Lines(Path(u"Karte.cal"_s), Utm_Calibration({100, 150}, 80));
  Reload_Map();
  settings = Read_Print_Settings();
  EXPECT_EQ(settings.left, 5) << "room for the labels";
  settings.left = settings.right = settings.top = settings.bottom = 10;
  for (const PrintPath way : {PrintPath::Direct, PrintPath::Bitmap}) {
    ASSERT_EQ(Print(Order({1, 1}, way)), PrintEnd::Done);
    const QString text = Run_Tool(u"pdftotext"_s, {Path(u"Blatt.pdf"_s), u"-"_s});
    EXPECT_TRUE(text.contains(u"UTM"_s) && text.contains(u"647 000"_s)) << text;
  }
}

TEST_F(SheetPainter, AStoppedOrFailingJobLeavesNothing) {
  Figure({100, 100, 200, 150}, 12);
  PrintOrder order = Order({1, 4}, PrintPath::Bitmap);
  MessageScript box(u"wird abgebrochen"_s);
  EXPECT_EQ(Print(Order({1, 4}), [](int sheet, const QString&) { return sheet < 2; }), PrintEnd::Cancelled);
  EXPECT_TRUE(Find_Files(folder.path(), u"*.pdf*"_s).isEmpty());
  // A printer that fails at every sharpness: five tries, then the box.
  class Failing : public PrintJob {
   public:
    QPainter& Painter() override { Raise(errors::printer); }
    void NewPage() override {}
    void EndDoc() override {}
    void KillDoc() override {}
  };
  int tries = 0;
  QStringList notes;
  const PrintHooks failing{[&] { return ++tries, std::make_unique<Failing>(); },
                           [&](int, const QString& note) { return notes << note, true; }};
  box.Expect(u"Karte zu groß"_s);
  EXPECT_EQ(Print_Map(order, failing), PrintEnd::Failed);
  EXPECT_EQ(tries, 5);
  EXPECT_TRUE(notes.last().endsWith(u"1,0")) << notes.last();
  order.settings.left = order.settings.right = 200;
  box.Expect(u"keinen Platz"_s);
  EXPECT_EQ(Print_Map(order, failing), PrintEnd::Failed);
}
