#include "analysis/color_sheet.h"
#include "analysis/kataster_sheet.h"
#include "analysis/lines.h"
#include "analysis/matrix_sheet.h"
#include "analysis/population_sheet.h"
#include "analysis/result_book.h"
#include "analysis_rows.h"

namespace {
// Expects the cells of a row from column 1 on, as text; "*" is anything.
void Expect_Row(const Sheet& sheet, int row, const QStringList& cells) {
  for (int i = 0; i < cells.size(); ++i) {
    if (cells[i] == "*") continue;
    EXPECT_EQ(sheet.Text(row, i + 1), cells[i]) << Cell_Name(row, i + 1);
  }
}
// The first row whose column A holds the text; 0 if there is none.
int Row_With(const Sheet& sheet, const QString& text) {
  for (int row = 1; row <= sheet.RowCount(); ++row)
    if (sheet.Text(row, 1).contains(text)) return row;
  return 0;
}
Sheet Population_Of_All(const TestMap& map, bool diversity = true) {
  return *Population_Sheet(map, *Calc_Population_Values(map, First_Area_Row(map.rows)), {.diversity = diversity});
}
}  // namespace

TEST(PopulationSheetTest, BlockOfAnArea) {
  TestMap map;
  map.Add_Square("Flaeche1", 10, 4, "Wiese");
  map.rows[0].VG = 1;
  map.rows[0].HG = 14;
  map.rows[0].RA = 103;
  map.Assign("Flaeche1", {"13P.mont.", "=x", "2P.mont.", "=x", "*18N"});
  const Sheet sheet = Population_Of_All(map);
  Expect_Row(sheet, 4, {"Maßeinheit", "", "mm^2", " m^2", "mm", " m"});
  Expect_Row(sheet, 6, {"Flaeche1", "Wiese", "6.25", "400", "10", "80"});
  Expect_Row(sheet, 7, {"zugeordnete Einträge:", "5"});
  Expect_Row(sheet, 10, {"Einträge pro 100 m^2  ", "1.25"});
  Expect_Row(sheet, 11, {" m^2   pro Eintrag", "80"});
  Expect_Row(sheet, 15, {"Art:", "P.mont.", "15", "*"});
  Expect_Row(sheet, 16, {"Art:", "=x", "2", "*"});
  Expect_Row(sheet, 17, {"Art:", "*18N", "1", "*"});
  Expect_Row(sheet, 18, {"Insgesamt:", "3", "18", "*"});
  EXPECT_NEAR(sheet.Number(15, 4), 1500.0 / 18, 1e-5);
  Expect_Row(sheet, 20, {"Summe Individuen:", "", "18"});
  const double p[] = {15.0 / 18, 2.0 / 18, 1.0 / 18};
  double h = 0;
  for (int i = 0; i < 3; ++i) {
    EXPECT_DOUBLE_EQ(sheet.Number(24 + i, 2), p[i]);
    h -= p[i] * std::log(p[i]);
  }
  EXPECT_NEAR(sheet.Number(27, 3), h, 1e-12);
  EXPECT_NEAR(sheet.Number(28, 3), std::log(3.0), 1e-12);
  Expect_Row(sheet, 29, {"Artenverteilung:", "Eveness:", "*", "HS/Hmax"});
  EXPECT_NEAR(sheet.Number(29, 3), h / std::log(3.0), 1e-6);
  EXPECT_EQ(sheet.RowCount(), 33);
  const CellStyle& look = sheet.Style(6, 1);
  EXPECT_EQ(std::tuple(look.color, look.fill), std::tuple(map.palette[1], map.palette[14]));
  EXPECT_EQ(look.border, map.palette[14]);  // 103 is beyond the palette
  EXPECT_TRUE(look.bold);
  EXPECT_GT(*sheet.RowHeight(31), 25);  // several lines
}

TEST(PopulationSheetTest, WhatIsMissingIsTold) {
  TestMap map;
  map.measure = {.pixelMm = 0.25, .perPixel = 0.25};
  map.Add_Square("Flaeche1", 10);
  map.Add_Square("Flaeche2", 10);
  map.Add("Flaeche3", 40, "ohne Punkte");
  map.Add_Square("Flaeche4", 10, 104);
  map.Add_Square("Flaeche5", 10, -4);
  map.Assign("Flaeche2", {"a", "40000 Mücken"});
  map.Assign("Flaeche3", {"0 Ex."});
  const Sheet sheet = Population_Of_All(map);
  // Nothing assigned: its sizes and the count, then the next.
  Expect_Row(sheet, 7, {"zugeordnete Einträge:", "0"});
  Expect_Row(sheet, 11, {"Flaeche2", "", "Größe"});
  EXPECT_EQ(sheet.Text(12, 4), " mm^2");
  Expect_Row(sheet, 23, {"Art:", "a", "1", "100"});
  Expect_Row(sheet, 33, {"Artenverteilung:", "Eveness:", "", "HS/Hmax"});  // one species: empty
  EXPECT_TRUE(sheet.Text(34, 1).startsWith(" \nHinweis: \nFür die Karte ist kein Maßstab angegeben. "));
  // Without a size there is no density, without individuals no species and no diversity.
  const int third = Row_With(sheet, "Flaeche3");
  Expect_Row(sheet, third + 3, {"Flaeche3", "ohne Punkte", "0", "0", "0", "0"});
  Expect_Row(sheet, third + 7, {"", ""});
  Expect_Row(sheet, third + 8, {"", ""});
  Expect_Row(sheet, third + 12, {"Insgesamt:", "0", "0", "0"});
  EXPECT_EQ(Row_With(sheet, "2 markierte oder ausgeblendete Flächen sind nicht enthalten."), sheet.RowCount() - 4);
  EXPECT_EQ(sheet.Text(sheet.RowCount() - 2, 1), "Nicht gezählt, die Zahl ist größer als 32767: 40000 Mücken");
  EXPECT_EQ(Row_With(Population_Of_All(map, false), "Diversität:"), 0);
  const Population values = *Calc_Population_Values(map, 0);
  int asked = 0;
  const auto answer = [&asked](bool on) {
    return [&asked, on](const AreaPopulation& area) { return ++asked, area.row == 1 && on; };
  };
  EXPECT_TRUE(Population_Sheet(map, values, {.diversity = true, .oneSpecies = answer(true)}));
  EXPECT_FALSE(Population_Sheet(map, values, {.diversity = true, .oneSpecies = answer(false)}));
  EXPECT_EQ(asked, 2);
}

TEST(LineSheetTest, StretchesSumsAndLegend) {
  TestMap map;
  map.Add("Linie1 - P0110L5.0B3.0", 4, "Bach");
  map.shapes["Linie1"] = {{0, 0}, {3, 4}, {3, 10}};
  map.Add("-Linie2", -40);
  map.shapes["Linie2"] = {{0, 5}, {10, 5}};
  map.Add("Text>Linie1", 0);
  map.Add("Linie3", 4, "ohne Tabelle");
  map.rows[0].VG = 4;
  const auto lines = Calc_Lines(map);
  ASSERT_EQ(lines.size(), 3U);
  const Sheet sheet = Line_Sheet(map, lines);
  const int first = Row_With(sheet, "Linie1");
  Expect_Row(sheet, first, {"Linie1", "Bach"});
  EXPECT_EQ(sheet.Style(first, 1).color, map.palette[4]);
  Expect_Row(sheet, first + 1, {"Teilstrecke: 1", "5", "10", "*"});
  Expect_Row(sheet, first + 2, {"Teilstrecke: 2", "6", "12", "180"});
  Expect_Row(sheet, first + 3, {"Gesamtlänge:", "11", "22"});
  Expect_Row(sheet, first + 4, {"Summe:", "11", "22"});
  const int second = Row_With(sheet, "Linie2");
  Expect_Row(sheet, second + 3, {"Summe:", "21", "42"});
  Expect_Row(sheet, sheet.RowCount() - 2, {"Gesamtsumme aller Längen:", "21", "42"});
  const QString text = Line_Text(map, lines);
  EXPECT_TRUE(text.contains("Linie: Linie1  Bach\r\n"));
  EXPECT_TRUE(text.contains("1                                  5            10,000     143,130\r\n"));
  EXPECT_TRUE(text.contains("Aktuell:                          11            22,000\r\nInsgesamt  :"));
  EXPECT_EQ(text.count('\n'), text.count("\r\n"));
  EXPECT_EQ(Unit_Word(" Zoll"), "?");
}

TEST(ColorSheetTest, EntriesSummaryAndOptions) {
  TestMap map;
  map.rows = {Row("Text", 0, "2 Öl", 1), Row("Text", 100, "zebra", 0), Row("Text", 1, "Öl", 0),
              Row("Text", 0, "-ab", 0)};
  map.rows[0].VG = 3;
  map.rows[0].RA = 512;
  const ColorOptions options{.leadingNumbers = true};
  const auto colorAt = [](QPoint at) { return at.x() == 0 ? 0xFFFFFFFFU : qRgb(9, 9, 9); };
  const Sheet sheet = Color_Sheet(map, *Assign_To_Colors(map.rows, options, colorAt), options);
  Expect_Row(sheet, 8, {"2 Öl", "", "2", "Öl"});
  Expect_Row(sheet, 9, {"zebra", "weiss", "no", "no"});
  Expect_Row(sheet, 11, {"-ab", "weiss", "1", "-ab"});
  Expect_Row(sheet, 13, {" nicht aktivierbare Texteinträge:", "", "4"});
  Expect_Row(sheet, 17, {"", "", "weiss", ""});
  Expect_Row(sheet, 18, {"-ab", "1", "1", ""});
  Expect_Row(sheet, 19, {"Öl", "3", "1", "2"});
  Expect_Row(sheet, 20, {"Summe:", "4", "2", "2"});
  Expect_Row(sheet, 21, {"", "", "weiss", ""});
  Expect_Row(sheet, 25, {"normal sichtbare:", "ja"});
  Expect_Row(sheet, 26, {"markierte:", "nein"});
  EXPECT_EQ(sheet.Style(8, 2).fill, qRgb(9, 9, 9));
  EXPECT_EQ(sheet.Style(17, 4).fill, qRgb(9, 9, 9));
  EXPECT_EQ(sheet.Style(19, 1).color, map.palette[3]);
  EXPECT_EQ(sheet.Style(19, 1).border, map.palette[12]);  // 512 without its width
  map.rows.clear();
  const Sheet empty = Color_Sheet(map, *Assign_To_Colors(map.rows, {}, colorAt), {});
  Expect_Row(empty, 8, {"nicht vorhanden."});
  EXPECT_GT(Row_With(empty, "vorangestellte Ziffern im Text werden nicht abgetrennt"), 0);
}

TEST(KatasterSheetTest, BlocksWithWhatIsAssigned) {
  TestMap map;
  map.Add("Text", 0, "Amsel");
  map.Add_Square("Flaeche1", 10, 4, "Au");
  map.Add("Bild>Flaeche1", 5, "bild.jpg");
  map.Add("Text>Flaeche1<2", 1, "Buche");
  map.Add("-Linie3 - P0110L5.0B3.0", 40, "Bach");
  map.shapes["Linie3"] = {{0, 0}, {3, 4}};
  map.Add("Text>Flaeche10", 0, "woanders");
  map.Add("Figur1", 23, "Kreis");
  map.rows[1].VG = 4;
  map.rows[1].HG = 14;
  map.rows[1].RA = 1;
  SortedMapInput input{map, {"Datum", "Wer"}, std::vector<QStringList>(map.rows.size(), QStringList{"", ""})};
  input.values[3] = QStringList{"14.5.", "=Huber"};
  const Sheet sheet = Kataster_Sheet_Of(input);
  Expect_Row(sheet, 6, {"ID", "Eintrag", "Flächengröße", "Umfang", "Datum", "Wer"});
  Expect_Row(sheet, 7, {"", "", " m^2", " m", ""});
  Expect_Row(sheet, 8, {"Flaeche1", "Au", "400", "80"});
  Expect_Row(sheet, 9, {"Text", "Buche", "", "", "14.5.", "=Huber"});
  Expect_Row(sheet, 10, {"Bild", "bild.jpg"});
  Expect_Row(sheet, 13, {"ID", "Eintrag", "Länge", "", "Datum"});
  Expect_Row(sheet, 14, {"", "", " m"});
  Expect_Row(sheet, 15, {"Linie3", "Bach", "10", ""});
  Expect_Row(sheet, 19, {"Text", "Amsel"});
  EXPECT_EQ(sheet.RowCount(), 19);  // no pictures of their own
  EXPECT_EQ(sheet.Style(8, 2).color, QBColor(4));
  EXPECT_EQ(sheet.Style(8, 2).fill, QBColor(14));
  EXPECT_EQ(sheet.Style(8, 2).border, QBColor(1));
}

TEST(MatrixSheetTest, SheetAndTextForOtherPrograms) {
  TestMap map;
  map.Add_Square("Flaeche1", 10, 4, "Wiese; \"naß\"");
  map.Add_Square("Flaeche2", 10, 4, "@Moor");
  map.Assign("Flaeche1", {"3 =Art", "b", "5"});
  map.Assign("Flaeche2", {"40000 x"});
  const auto matrix = Calc_Species_Matrix(map);
  const Sheet sheet = Matrix_Sheet(*matrix);
  Expect_Row(sheet, 3,
             {"Art", "ID", "Eintrag", "Individuen N", "Arten S", "Shannon-Wiener H'", "Evenness", "Simpson 1-D",
              "Simpson 1/D", "Chao1", "Berger-Parker", "(ohne Namen)", "=Art", "b"});
  Expect_Row(sheet, 4, {"Fläche", "Flaeche1", "Wiese; \"naß\"", "9", "3", "*", "*", "*", "*", "3", "*", "5", "3", "1"});
  Expect_Row(sheet, 5, {"Fläche", "Flaeche2", "@Moor", "0", "0", "", "", "", "", "", "", "0", "0", "0"});
  Expect_Row(sheet, 6, {"Insgesamt", "", "", "9", "3"});
  EXPECT_NEAR(sheet.Number(4, 8), 1 - (25.0 + 9 + 1) / 81, 1e-12);
  EXPECT_TRUE(sheet.Text(8, 1).contains("40000 x"));
  const QByteArray csv = Matrix_Csv(*matrix);
  EXPECT_TRUE(
      csv.startsWith("\xEF\xBB\xBF"
                     "Art;ID;Eintrag;Individuen N;"));
  const QStringList lines = QString::fromUtf8(csv.mid(3)).split("\r\n");
  ASSERT_EQ(lines.size(), 5);
  EXPECT_TRUE(lines[0].endsWith(";(ohne Namen);'=Art;b"));
  EXPECT_TRUE(lines[1].startsWith("Fläche;Flaeche1;\"Wiese; \"\"naß\"\"\";9;3;0,"));
  EXPECT_TRUE(lines[1].endsWith(";5;3;1"));
  EXPECT_EQ(lines[2], "Fläche;Flaeche2;'@Moor;0;0;;;;;;;0;0;0");
  EXPECT_TRUE(lines[3].startsWith("Insgesamt;;;9;3;"));
}

TEST(ResultBookTest, WaitsForTheUserAndKeepsHisSheets) {
  const QTemporaryDir folder;
  const QString table = folder.path() + "/KARTE.MDB", lock = folder.path() + "/.~lock.KARTE.XLS#";
  Sheet own("Tabelle1");
  own.Put(1, 1, 1.0);
  Write_Result_Sheets(table, {own, Sheet("Tabelle2")});
  Replace_File(lock, ",mueller,rechner,heute,;");
  int asked = 0;
  const auto written = Write_Result_Sheets(table, {Sheet("Linien"), Sheet("Matrix")}, [&](const QString& text) {
    EXPECT_TRUE(text.contains("mueller"));
    if (++asked == 2) Kill(lock);
    return true;
  });
  EXPECT_EQ(std::pair(asked, written->isNew), std::pair(2, false));
  EXPECT_EQ(Workbook(written->path).SheetNames(), (QStringList{"Tabelle1", "Linien", "Matrix"}));
}
