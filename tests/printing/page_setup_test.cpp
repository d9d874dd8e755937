#include "printing/page_setup.h"

#include <QPainter>

#include "maps/map_close.h"
#include "maps/map_open.h"
#include "printing/map_export.h"
#include "printing/page_preview.h"
#include "printing/table_print.h"
#include "view/redraw.h"

// A map of 1600 x 1200 pixels: 423.3 x 317.5 mm; paper that prints on 200 x 280 mm.
class PageSetupTest : public FluraxTest {
 protected:
  void SetUp() override {
    FluraxTest::SetUp();
    map = Make_Map(u"Karte.bmp"_s, 1600, 1200);
    Open_Map(map);
    ASSERT_TRUE(frmMDI.MapOpen);
    former =
        Set_Printer({.paper =
                         [](int orientation) {
                           Paper paper{.widthMm = 210, .heightMm = 290, .unprintableX = 5, .unprintableY = 5};
                           if (orientation == landscape) std::swap(paper.widthMm, paper.heightMm);
                           return paper;
                         },
                     .setup = {},
                     .ask = [this](const QString&, int pages,
                                   int) { return asked = pages, answer ? std::optional(answer(pages)) : std::nullopt; },
                     .begin =
                         [this](const QString& title, int orientation) {
                           return Make_Pdf_Job(Path(u"aus.pdf"_s), The_Printer().paper(orientation), title);
                         }});
  }
  void TearDown() override {
    Set_Printer(former);
    FluraxTest::TearDown();
  }
  QString Page_Text(int page) const {
    const QString number = QString::number(page);
    return Run_Tool(u"pdftotext"_s, {u"-layout"_s, u"-f"_s, number, u"-l"_s, number, Path(u"aus.pdf"_s), u"-"_s});
  }
  static void Text(const QString& text, int x, int y) {
    Append_Entry({"Text", text, "Arial", 12, 12, 15, 0, x, y, 0, 0, 0});
  }

  QString map;
  PrinterFace former;
  std::function<PrintRange(int)> answer;
  int asked = 0;
};

TEST_F(PageSetupTest, WhatIsTypedWaitsAndWorksBackward) {
  PageSetup setup = Load_Page_Setup();
  EXPECT_EQ(std::tuple(setup.txtFaktor, setup.txtBreite), std::tuple(u"1,000"_s, u"42,3"_s));
  EXPECT_EQ(setup.Eingabe, PageInput::Ok);
  Type_Width(setup, u"84,7"_s);
  EXPECT_EQ(std::tuple(setup.txtHoehe, setup.Eingabe), std::tuple(u"63,5"_s, PageInput::None));
  EXPECT_EQ(setup.settings.factor, 1.0) << "not taken yet";
  Take_Typed(setup);
  EXPECT_NEAR(setup.settings.factor, 2.0, 0.001);
  Type_Height(setup, u"31.75"_s);
  EXPECT_EQ(setup.txtBreite, u"42,3"_s);
  const std::pair<const char*, double> factors[] = {{"0", 1.0},    {"-1", 1.0},      {"100", 20.0}, {"0,01", 0.05},
                                                    {"viel", 1.0}, {"0,333", 0.333}, {"1.5", 1.5}};
  for (const auto& [typed, factor] : factors) {
    Type_Factor(setup, typed);
    EXPECT_EQ(setup.Eingabe, PageInput::Factor);
    Take_Typed(setup);
    EXPECT_DOUBLE_EQ(setup.settings.factor, factor) << typed;
  }
  Step_Factor(setup, 1);
  EXPECT_EQ(setup.txtFaktor, u"1,550"_s);
  Type_Factor(setup, u"0"_s);
  for (int i = 0; i < 2; ++i) {
    Step_Factor(setup, -1);
    EXPECT_EQ(setup.txtFaktor, u"0,050"_s);
  }
  ASSERT_GE(setup.PageChoices.size(), 3U);
  Choose_Pages(setup, 1);
  EXPECT_EQ(setup.Eingabe, PageInput::Pages);
  EXPECT_EQ(setup.Geometry().Pages(), setup.PageChoices[1].pages);
  EXPECT_DOUBLE_EQ(Get_FontFactor(u"0.3"_s), 0.3);
  EXPECT_DOUBLE_EQ(Get_FontFactor(u"3,0"_s), 3.0);
  for (const QString& bad : {u"0.29"_s, u"3.01"_s, u""_s, u"groß"_s})
    EXPECT_THAT(Raised([&] { Get_FontFactor(bad); }), Tells(5000, {u"Wertebereich:  0.3 - 3.0"_s})) << bad;
}

TEST_F(PageSetupTest, SettingsStayWithTheMap) {
  PageSetup setup = Load_Page_Setup();
  EXPECT_FALSE(Settings_Changed(setup));
  setup.settings.orientation = landscape;
  setup.txtFtSize = u"1,5"_s;
  Type_Factor(setup, u"1,234"_s);
  Take_Typed(setup);
  EXPECT_TRUE(Settings_Changed(setup));
  MessageScript box(u"übernommen und gespeichert"_s);
  ASSERT_TRUE(Ok_Butt_Click(setup));
  const QString& report = box.Seen().back().text;
  for (const QString& part : {u"1,234fach"_s, u"quer"_s, u"* 1,50"_s, u"52,2 cm"_s, u"0,5 cm"_s})
    EXPECT_TRUE(report.contains(part)) << part << "\n" << report;
  EXPECT_FALSE(Settings_Changed(setup));
  ASSERT_TRUE(Take_Sheet_Margins({15, 5, 25, 3}));
  box.AllowAny(MsgAnswer::No);
  Close_Map();
  Open_Map(map);
  const PageSetup again = Load_Page_Setup();
  // 15 and 25 less the border of 5; what lies within the border is none.
  PrintSettings kept{.factor = 1.234, .fontFactor = 1.5, .left = 10, .right = 0, .top = 20, .orientation = landscape};
  EXPECT_EQ(again.settings, kept);
  PrintFactor = 1;
  MapPixelMm = 0;
  Take_Print_Settings(kept, again.paper);
  EXPECT_FLOAT_EQ(PrintFactor, 1.234F);
  EXPECT_NEAR(MapPixelMm, 1.234 * 25.4 / 96, 1e-6);
  EXPECT_EQ(again.paper.widthMm, 290);
  EXPECT_EQ(Margins_To_Show(again.settings, again.paper), (SheetMargins{15, 5, 25, 5}));
}

TEST_F(PageSetupTest, MarginsMustLeaveRoom) {
  MessageScript box(u"keinen Platz"_s);
  EXPECT_FALSE(Take_Sheet_Margins({150, 150, 5, 5}));
  EXPECT_EQ(Read_Print_Settings().left, 0);
  PrintSettings wide = Read_Print_Settings();
  wide.left = wide.right = 150;
  ASSERT_TRUE(Save_Print_Settings(wide));
  box.Expect(u"keinen Platz"_s);
  EXPECT_FALSE(Ask_Print_Order());
  EXPECT_EQ(asked, 0) << "no dialog for nothing";
  ASSERT_TRUE(Save_Print_Settings({}));
  EXPECT_FALSE(Ask_Print_Order()) << "cancelled";
  EXPECT_EQ(asked, 6);
  answer = [](int) { return PrintRange{2, 2}; };
  const auto order = Ask_Print_Order();
  ASSERT_TRUE(order);
  EXPECT_EQ(std::tuple(order->range.from, order->range.to, order->path), std::tuple(2, 2, PrintPath::Direct));
}

TEST_F(PageSetupTest, ThePreviewShowsTheMapOnItsSheets) {
  Text(u"A"_s, 1500, 1100);
  PageSetup setup = Load_Page_Setup();
  const PreviewMap preview = Make_Preview_Map();
  ASSERT_EQ(preview.dots.size(), 1U);
  const PrintGeometry g = setup.Geometry();
  const QSizeF mm = Preview_Size(g, setup.paper);
  const QImage picture = Draw_Preview(preview, g, setup.paper, mm.toSize());  // a pixel a millimetre
  // On the second sheet of the second row.
  const QPointF at(1500 * g.MapPixelMm - 200 + 5 + 2 * 12 + 210, 1100 * g.MapPixelMmY - 280 + 5 + 2 * 12 + 290);
  EXPECT_EQ(picture.pixel(at.toPoint()), QBColor(12));
  EXPECT_EQ(picture.pixel(at.toPoint() + QPoint(-20, 5)), qRgb(255, 255, 255));
  EXPECT_EQ(picture.pixel(6, 6), qRgb(128, 128, 128)) << "between the sheets";
  const SheetFrame frame = Sheet_Frame_Of_Map();
  ASSERT_EQ(frame.x.size(), 4U);
  EXPECT_NEAR(frame.x[1], 200 / g.MapPixelMm, 1e-6);
  EXPECT_EQ(frame.x.back(), 1600);
  setup.settings.factor = 0.1;
  ASSERT_TRUE(Save_Print_Settings(setup.settings));
  EXPECT_EQ(Sheet_Frame_Of_Map().x.size(), 2U) << "follows the settings";
}

TEST_F(PageSetupTest, TableAndTextRunOverPages) {
  for (int i = 1; i <= 150; ++i) Text(u"Fundort %1"_s.arg(i), i, i);
  Text(u"Ein sehr langer Text, "_s.repeated(3) + u"umbricht"_s, 5, 5);
  Text(u"zwei\r\nZeilen"_s, 5, 5);
  answer = [](int pages) { return PrintRange{1, pages}; };
  Print_Table();
  ASSERT_GT(asked, 2);
  EXPECT_TRUE(Run_Tool(u"pdfinfo"_s, {Path(u"aus.pdf"_s)}).simplified().contains(u"Pages: %1"_s.arg(asked)));
  QString all;
  for (int page = 1; page <= asked; ++page) {
    const QString text = Page_Text(page);
    EXPECT_TRUE(text.contains(u"Seite %1 von %2"_s.arg(page).arg(asked))) << page;
    EXPECT_TRUE(text.contains(u"Nr."_s)) << "headings on every page";
    all += text;
  }
  for (const QString& part :
       {u"Fundort 1 "_s, u"Fundort 75 "_s, u"Fundort 150 "_s, u"umbricht"_s, u"Zeilen"_s, u"Ymap"_s})
    EXPECT_TRUE(all.contains(part)) << part;
  QString lines;
  for (int i = 1; i <= 130; ++i) lines += u"Zeile %1\n"_s.arg(i);
  Print_Text(u"Notiz"_s, lines);
  ASSERT_EQ(asked, 3);
  EXPECT_TRUE(Page_Text(1).contains(u"Notiz"_s));
  int found = 0;
  for (int page = 1; page <= 3; ++page) found += static_cast<int>(Page_Text(page).count(u"Zeile "_s));
  EXPECT_EQ(found, 130) << "no line is lost or doubled at the end of a page";
  answer = nullptr;
  QFile::remove(Path(u"aus.pdf"_s));
  Print_Table();
  EXPECT_FALSE(QFile::exists(Path(u"aus.pdf"_s))) << "cancelled";
}

TEST_F(PageSetupTest, TheMapIsExportedWithItsEntries) {
  Text(u"Sumpf"_s, 100, 100);
  FileDialogScript files{std::nullopt, map, Path(u"neu.bmp"_s), Path(u"gibt/es/nicht.bmp"_s)};
  EXPECT_FALSE(Export_Map_Picture());
  MessageScript box(u"nicht überschrieben"_s);
  EXPECT_FALSE(Export_Map_Picture());
  EXPECT_TRUE(Export_Map_Picture());
  EXPECT_EQ(Load_Picture(Path(u"neu.bmp"_s)).convertToFormat(QImage::Format_RGB32), Map_Picture_With_Entries());
  box.Expect(u"nicht.bmp"_s);
  EXPECT_FALSE(Export_Map_Picture());
  EXPECT_EQ(files.Seen().front().title, u"Karte mit Einträgen als BITMAP exportieren"_s);
}
