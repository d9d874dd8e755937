#include "demo_sets.h"
#include "demo_table.h"

using namespace Qt::StringLiterals;

namespace {

// Outlines of habitats: straight and rounded, every hatch, both solid fills, transparent and none.
void Add_Areas(DemoTable& table) {
  table.Area({{230, 1040}, {420, 990}, {560, 1040}, {585, 1180}, {500, 1290}, {330, 1300}, {215, 1190}},
             Filled(-4, 2, 15, true), {300, 1120}, u"Kiebitz, 3 Brutpaare"_s);
  table.Area({{190, 1430}, {310, 1400}, {430, 1450}, {450, 1550}, {340, 1610}, {205, 1570}}, Filled(-1, 2, 14),
             {235, 1500}, u"Märzenbecher"_s);
  table.Area({{1650, 450}, {1780, 400}, {1900, 480}, {2040, 540}, {1960, 660}, {1770, 690}, {1645, 610}},
             Filled(-5, 4, 15, true), {1690, 700}, u"Mittelspecht, Revier 2"_s);
  table.Area({{2400, 610}, {2560, 530}, {2690, 640}, {2760, 790}, {2640, 860}, {2480, 780}}, Filled(0, 12, 15),
             {2500, 560});
  table.Area({{335, 690}, {420, 665}, {500, 705}, {520, 770}, {440, 830}, {340, 825}, {310, 760}},
             Filled(-6, 1, 11, true), {340, 850}, u"Haubentaucher, 1 Paar"_s);
  table.Area({{2000, 1280}, {2150, 1180}, {2350, 1190}, {2420, 1320}, {2300, 1490}, {2080, 1470}}, Filled(-3, 4, 15),
             {2110, 1250}, u"Schwarzspecht"_s);
  table.Area({{1230, 1650}, {1350, 1620}, {1470, 1670}, {1490, 1780}, {1390, 1850}, {1255, 1800}},
             Filled(-7, 5, 15, true), {1300, 1870}, u"Seidelbast"_s);
  table.Area({{2560, 1530}, {2740, 1500}, {2800, 1590}, {2640, 1650}}, Filled(1, 6, 14), {2590, 1660},
             u"Blühfläche Flur 214"_s);
  table.Area({{800, 1050}, {880, 1000}, {930, 1090}, {850, 1210}, {775, 1180}}, Filled(-2, 2, 15), {950, 1050},
             u"Feuchtwiese"_s);
}

void Add_Lines(DemoTable& table) {
  ShapeLook river = Stroke(1, 4, true);
  river.ends = LineEnds{.filled = true, .atEnd = true, .lengthMm = 6, .widthMm = 5};
  table.Line({{700, 1200}, {655, 1330}, {655, 1500}, {690, 1640}, {715, 1800}}, river, {450, 1700},
             u"Eisvogel-Transekt 1,3 km"_s);

  ShapeLook route = Stroke(12, 3);
  route.ends = LineEnds{
      .shape = LineEnds::Shape::Circle, .filled = true, .atStart = true, .atEnd = true, .lengthMm = 3, .widthMm = 3};
  table.Line({{1780, 165}, {2060, 300}, {2240, 372}, {2460, 385}}, route, {2000, 230}, u"Zählroute A, Feldlerche"_s);

  ShapeLook fence = Stroke(4, 6);
  fence.ends =
      LineEnds{.shape = LineEnds::Shape::Rectangle, .atStart = true, .atEnd = true, .lengthMm = 4, .widthMm = 4};
  table.Line({{1690, 330}, {1670, 400}, {1635, 470}}, fence, {1705, 350}, u"Amphibienzaun"_s);

  ShapeLook path = Stroke(6, 2, true);
  path.ends = LineEnds{.atStart = true, .atEnd = true, .partial = true, .lengthMm = 4, .widthMm = 4};
  table.Line({{2215, 380}, {2110, 560}, {2020, 760}, {1975, 920}, {1930, 1120}}, path, {2150, 420},
             u"Begehung 14.05."_s);

  table.Line({{60, 330}, {420, 400}, {800, 470}, {1180, 520}}, Dashed(Stroke(5, 1)), {150, 310},
             u"Freileitung (Abstand 50 m)"_s);
  // A ditch without a label.
  table.Line({{60, 1230}, {190, 1330}, {330, 1350}, {560, 1330}}, Stroke(9, 5, true), {60, 1230});
}

void Add_Figures(DemoTable& table) {
  table.Figure(EntryKind::Rectangle, {2450, 1000, 190, 110}, Filled(-4, 4, 15));
  table.Figure(EntryKind::Square, {2700, 1010, 110, 110}, Filled(1, 0, 14));
  table.Figure(EntryKind::Ellipse, {1140, 745, 230, 150}, Filled(0, 1, 15));
  table.Figure(EntryKind::Circle, {1520, 920, 170, 170}, Filled(-5, 2, 14));
  table.Figure(EntryKind::Rectangle, {840, 1180, 190, 90}, Filled(3, 1, 11), 30);
  table.Figure(EntryKind::Ellipse, {1070, 1130, 180, 90}, Filled(8, 3, 11), 60);
  table.FreeFigure({{480, 90}, {580, 60}, {640, 130}, {590, 210}, {490, 200}, {450, 140}}, Filled(6, 5, 15));
  table.FreeFigure({{110, 130}, {250, 90}, {330, 170}, {260, 260}, {130, 240}}, Filled(1, 6, 14, true));
}

}  // namespace

void Add_Overview_Shapes(DemoTable& table) {
  Add_Areas(table);
  Add_Lines(table);
  Add_Figures(table);
  table.PlanSquares({1640, 1550}, 4, 3, 189, u"400 * 400 m"_s);
  table.ScaleBar({1500, 2140}, 709, 1500, u" m"_s);  // 472.5 pixels a kilometre
  table.NorthArrow({2880, 120});
}
