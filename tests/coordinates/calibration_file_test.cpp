#include "coordinates/calibration_file.h"

#include "coordinates/conversions.h"
#include "support/nets.h"

namespace {

class CalibrationFile : public FluraxTest {
 protected:
  static QString Sample(const char* name) { return QStringLiteral(FLURAX_TEST_DATA "/kalibrierung/") + name; }
  int Read(const QString& path) { return Read_Cal(path, {3000, 2200}, state); }
  int Read_Text(const QStringList& lines) {
    Write_Lines(Path("Probe.cal"), lines);
    return Read(Path("Probe.cal"));
  }
  CoordinateState state;
};

TEST_F(CalibrationFile, ReadsAMetricNet) {
  const MessageScript none;
  ASSERT_EQ(Read(Sample("a_utm.cal")), -1);
  EXPECT_EQ(std::tuple(state.Grid, state.ZoneText, state.ZoneNumber), std::tuple(gridUtm, "32U", 32));
  EXPECT_EQ(state.GridDatum, "WGS-84");
  EXPECT_EQ(QPoint(state.GridR, state.GridH), QPoint(646000, 5512000));
  EXPECT_EQ(QPoint(state.Xmap, state.Ymap), QPoint(701, 1486));
  EXPECT_DOUBLE_EQ(state.Inclin, 0.02120933);
  EXPECT_FLOAT_EQ(state.Yline, 472.8572F);
  EXPECT_DOUBLE_EQ(state.MeterPerPix, 1000 / static_cast<double>(472.5472F));
  EXPECT_DOUBLE_EQ(state.PixPerMeter, static_cast<double>(472.5472F) / 1000);
  EXPECT_EQ(std::tuple(state.NetFont, state.GridVG, state.GridHG, state.NetTransp), std::tuple("Arial", 12, 15, true));
  EXPECT_EQ(std::tuple(state.RefPoints[2].BreiteText, state.RefPoints[3].LaengeText), std::tuple("5513000", "647000"));
  EXPECT_EQ(state.RefPoints[3].LabelY, 1486);
  EXPECT_FALSE(state.NetLLines.empty());
}

// The net's width is negated for the lines downward: the least of all numbers has no negative.
TEST_F(CalibrationFile, TakesExtremeNumbersOfANetWithoutFault) {
  for (const char* number : {"-2147483648", "2147483647", "1"})
    for (const char* key : {"Gwidth", "Xmap", "Ymap", "Xline", "Yline", "Inclin"}) {
      MessageScript any;
      any.AllowAny(MsgAnswer::Ok);
      QStringList lines = Utm_Calibration({100, 200}, 100);
      for (QString& line : lines)
        if (line.startsWith(QLatin1String(key))) line = QString("%1 = %2").arg(key, number);
      EXPECT_EQ(Read_Text(lines), -1) << key << number;
      Pixel_To_Koord(state, 10, 10);
    }
}

TEST_F(CalibrationFile, ReadsAGeographicNet) {
  const MessageScript none;
  ASSERT_EQ(Read(Sample("c_gms.cal")), -1);
  EXPECT_EQ(std::tuple(state.Grid, state.format), std::tuple(gridGeographic, DegreeFormat::Gms));
  EXPECT_EQ(std::tuple(state.GridDatum, state.NetDivText, state.NetL[2].Count), std::tuple("WGS-84", "0.0166667", 454));
  EXPECT_EQ(std::tuple(state.NetB[1].Start, state.NetBPix[1][1], state.NetLPix[3][454]), std::tuple(-5, 212, 2626));
  EXPECT_DOUBLE_EQ(state.NetB[3].Deg64, 49.7333333);
  EXPECT_EQ(std::tuple(state.NetB[2].Label, state.NetL[1].Label), std::tuple("+ 49°45'B", "+011°01'L"));
  EXPECT_EQ(std::tuple(state.RefPoints[9].Used, state.RefPoints[9].LabelX), std::tuple(true, 2638));
  EXPECT_EQ(state.RefPoints[1].Caption, "P1\n\nLänge :+011°01'00,00¨\n\nBreite :+ 49°46'00,00¨");
  EXPECT_FALSE(state.NetBLines.empty());
}

TEST_F(CalibrationFile, KeysCountWhereverTheyStandAndColoursOfASiblingAreRead) {
  const MessageScript none;
  ASSERT_EQ(Read(Sample("k_fallen.cal")), -1);
  EXPECT_EQ(state.Gwidth, 500);  // "Div" behind "Gwidth"
  EXPECT_DOUBLE_EQ(state.PixPerMeter, 0.47);
  EXPECT_EQ(std::tuple(state.GridLnBreite, state.GridHG), std::tuple(12, 5));
  EXPECT_EQ(state.GridVG, 2);  // "VG=12" from column 5
  ASSERT_EQ(Read(Sample("e_trakkor.cal")), -1);
  EXPECT_EQ(std::tuple(state.GridVG, state.GridHG, state.NetTransp), std::tuple(12, 15, false));
}

TEST_F(CalibrationFile, LinesAndTheirMeaning) {
  const std::pair<const char*, std::function<bool(const CoordinateState&)>> cases[] = {
      {"VG = 16", [](const auto& s) { return s.GridVG == 0; }},
      {"HG = 16", [](const auto& s) { return s.GridHG == 7; }},
      {"Font = Courier New Sz = 0", [](const auto& s) { return s.NetFont == "Courier New" && s.NetFontSize == 8; }},
      {"Font = Arial Sz = 9.5", [](const auto& s) { return s.NetFontSize == 9.5F; }},
      {"nLabel = 2.5", [](const auto& s) { return s.NetLabelEvery == 2; }},
      {"Transp = Falsch", [](const auto& s) { return !s.NetTransp; }},
      {"Grid GK Zone: 4 D: Potsdam R: 4432000 H: 5511000",
       [](const auto& s) { return s.Grid == gridGaussKrueger && s.GridR == 4432000 && s.ZoneNumber == 4; }},
      {"Grid UTM Z: U33 D: WGS-84 R: 1 H: 2", [](const auto& s) { return s.ZoneNumber == 33 && s.GridH == 2; }},
  };
  for (const auto& [line, holds] : cases) {
    const MessageScript none;
    EXPECT_EQ(Read_Text(Utm_Calibration({500, 600}, 400) << line), -1);
    EXPECT_TRUE(holds(state)) << line;
  }
}

TEST_F(CalibrationFile, AMissingSlopeOrFormatIsToldOnceAndReadingGoesOnIfWanted) {
  const QString whole =
      "Metrisches Koordinatennetz fehlerhaft:\nUTM-Gitter\nReferenzpunkt Rechtswert = 646000\n"
      "Referenzpunkt   Hochwert = 5512000\nRichtungswinkel d. Grids = 0\nAbstand der Gitterlinien = 1000 Grad\n"
      "Abstand der Gitterlinien = 472.5472";
  const QString format = "Keine Formatangabe für die Koordinaten: Dezimal oder GG°MM'SS ?";
  MessageScript script{{whole}, {whole, MsgAnswer::Cancel}, {format}, {format, MsgAnswer::Cancel}};
  EXPECT_EQ(Read(Sample("f_6000_inclin.cal")), -1);
  EXPECT_EQ(state.Grid, gridUtm);
  EXPECT_GT(state.MeterPerPix, 2);
  EXPECT_FALSE(state.NetLLines.empty());
  EXPECT_EQ(Read(Sample("f_6000_inclin.cal")), 0);
  EXPECT_EQ(state.Grid, gridNone);
  EXPECT_EQ(Read(Sample("f_5010.cal")), -1);
  EXPECT_EQ(std::tuple(state.NetB[3].Count, state.RefPoints[9].X), std::tuple(301, 2696));
  EXPECT_EQ(Read(Sample("f_5010.cal")), 0);
  // What is missing is told one by one.
  script.Expect("Referenzpunkt Rechtswert = 0").Expect("Richtungswinkel d. Grids = 0");
  EXPECT_EQ(Read_Text({"Grid UTM Zone: 32U D: WGS-84 R: 0 H: 5512000", "Gwidth = 1000", "Xline = 472.5",
                       "Yline = 472.5", "Xmap = 7", "Ymap = 7"}),
            -1);
  for (const MsgRequest& box : script.Seen()) {
    EXPECT_EQ(std::tuple(box.title, box.buttons, box.icon),
              std::tuple("Fehler:    ", MsgButtons::OkCancel, MsgIcon::Information));
    EXPECT_TRUE(box.text.contains("\nEinlesen der Referenzkoordinaten aus der Kalibrierungsdatei:\n"));
  }
}

TEST_F(CalibrationFile, EachFaultIsToldAndReadingGoesOn) {
  const QStringList lines = {
      "Grid GEO DEC D: WGS-84",  // no "F:"
      "BParm = T3S10N4",
      "LParm = T1S10N4",
      "R1  +011.020000    + 49,765000       elf     317      485     307",  // 5020, then no number
      "R3  +011,080000    + 49,760000      2687     305        0       0",
      "b1x0y0S0R49.765/10/40000/12/13",  // 5030, overflow
      "l3x0y0S0R11.08/2687/2688/2689/2690",
      "l7x0y0S0R11.08/1/2/3/4"};  // no such line
  MessageScript script("Ungültiger Prozeduraufruf");
  script.Expect("Anwendungs- oder objektdefinierter Fehler\nEinlesen").Expect("Typen unverträglich");
  script.Expect("Koordinatenlinie gebogen oder gerade?").Expect("Überlauf");
  script.Expect("Index außerhalb").Expect("Bezugspunkt 2 fehlt").AllowAny(MsgAnswer::Ok);  // then it cannot be divided
  EXPECT_EQ(Read_Text(lines), -1);
  EXPECT_EQ(state.RefPoints[1].Laenge, 0);
  EXPECT_DOUBLE_EQ(state.RefPoints[1].Breite, 49.765);
  EXPECT_EQ(QPoint(state.RefPoints[1].X, state.RefPoints[1].Y), QPoint(0, 317));
  EXPECT_EQ(QPoint(state.RefPoints[3].LabelX, state.RefPoints[3].LabelY), QPoint(2697, 295));
  EXPECT_EQ(state.NetBPix[1], (std::vector<std::int16_t>{0, 10, 0, 12, 13}));
  EXPECT_EQ(std::tuple(state.NetLPix[3][4], state.NetL[3].Label), std::tuple(2690, "+011,08L°"));
}

// A file that a disk or a copy cut: what is missing would be 0 in every conversion.
TEST_F(CalibrationFile, AGeographicNetThatWasCutIsTold) {
  const QStringList whole = Read_Lines(Sample("c_gms.cal"));
  const auto of = [&](const char* start) { return whole.indexOf(QRegularExpression(QString("^%1.*").arg(start))); };
  QStringList pointless = whole, cut = whole.mid(0, of("l3")), lineless = cut;
  pointless.removeAt(of("R9"));
  cut.last().truncate(cut.last().indexOf(u'/') + 8);  // two samples and a part of one
  lineless.removeLast();
  const struct {
    QStringList lines;
    const char* told;
  } cases[] = {{pointless, "unvollständig:\nBezugspunkt 9 fehlt.\nNetz"},
               {cut, "Längenkreis 2: 2 statt 454 Werte.\nLängenkreis 3 fehlt.\n"},
               {lineless, "Längenkreis 2 fehlt.\nLängenkreis 3 fehlt.\n"}};
  for (const auto& c : cases) {
    MessageScript script;
    script.Expect(c.told).AllowAny(MsgAnswer::Ok);
    EXPECT_EQ(Read_Text(c.lines), -1) << c.told;
    EXPECT_EQ(state.Grid, gridGeographic);
  }
}

TEST_F(CalibrationFile, FindsTheFilesOfAMap) {
  for (const char* name : {"Karte1.cal", "Karte1 neu.cal", "KARTE1.cal", "Karte2.cal", "Karte1.calx"})
    Replace_File(Path(QLatin1String(name)), "x");
  const QString map = Path("Karte1.Ausschnitt.bmp");
  EXPECT_EQ(Cal_Files_Of(map), QStringList({Path("Karte1 neu.cal"), Path("Karte1.cal")}));
  for (int i = 0; i < 9; ++i) Replace_File(Path(QString("Karte1 %1.cal").arg(i)), "x");
  MessageScript script("Maximale Anzahl = 10.  Überflüssige Cal-Dateien bitte entfernen.");
  EXPECT_EQ(Cal_Files_Of(map).size(), 10);
}

}  // namespace
