#include <algorithm>

#include "coordinates/calibration_reader.h"
#include "coordinates/degree_text.h"
#include "coordinates/net_build.h"
#include "platform/error.h"
#include "platform/text.h"

// Geographic nets in calibration files: nine measured points, three parallels and three meridians as curves.

namespace calibration {

namespace {

constexpr int captionLength = 50, textLength = 15, datumLength = 13;

struct CurveFamily {
  char16_t letter;  // of labels
  QString name;
  std::array<NetLine, 4>& lines;
  std::array<std::vector<std::int16_t>, 4>& pixels;
  CurveParameters& parameters;
};
CurveFamily Parallels(CalibrationReader& reader) {
  return {u'B', QStringLiteral("Breitenkreis"), reader.state.NetB, reader.state.NetBPix, reader.parallels};
}
CurveFamily Meridians(CalibrationReader& reader) {
  return {u'L', QStringLiteral("Längenkreis"), reader.state.NetL, reader.state.NetLPix, reader.meridians};
}

void Set_Format(CoordinateState& state, DegreeFormat format) {
  state.format = format;
  state.NetDec = format == DegreeFormat::Dec;
}

// Neither in the line of the net nor told before: the first reference point shows it.
void Settle_Format(CalibrationReader& reader, const QString& line) {
  if (reader.state.format != DegreeFormat::Unknown || reader.formatMissed) return;
  if (line.contains(u'\''))
    Set_Format(reader.state, DegreeFormat::Gms);
  else if (line.contains(u','))
    Set_Format(reader.state, DegreeFormat::Dec);
  else {
    reader.formatMissed = true;  // told once, not for every point
    Raise(noFormat);
  }
}

// A field of a reference point, "B" or "L"; nothing is stored while the format is not known.
void Read_Degrees(const CoordinateState& state, const QString& field, char16_t letter, double& degrees, QString& text) {
  if (state.format == DegreeFormat::Unknown) return;
  const bool decimal = state.format == DegreeFormat::Dec;
  const QString layout = QString(letter) + (decimal ? QStringLiteral("_DEC") : QStringLiteral("_GMS"));
  if (Check_Koord_Format(field, layout) < 0) Raise(wrongLayout);
  degrees = decimal ? Coordinate_Number(Comma_To_Point(field)) : GMS_To_Dec(field);
  text = field.left(textLength);
}

// Columns are counted from 1, as in the description of the file.
QString Columns(const QString& line, int from, int to) { return line.mid(from - 1, to - from + 1).trimmed(); }

void Read_Point(CalibrationReader& reader, const QString& line) {
  CoordinateState& state = reader.state;
  int number = -1;
  reader.Try([&] { number = Digit(line.size() > 1 ? line[1] : QChar(u' '), 9); });
  if (number < 0) return;
  RefPoint& point = state.RefPoints[static_cast<size_t>(number)];
  reader.Try([&] {
    Settle_Format(reader, line);
    Read_Degrees(state, Columns(line, 5, 18), u'L', point.Laenge, point.LaengeText);
  });
  reader.Try([&] { Read_Degrees(state, Columns(line, 20, 33), u'B', point.Breite, point.BreiteText); });
  reader.Try([&] { point.X = Strict_Whole(Columns(line, 35, 41)); });
  reader.Try([&] { point.Y = Strict_Whole(Columns(line, 43, 49)); });
  point.Used = point.X > 1 && point.Y > 1;
  if (!point.Used) return;
  reader.Try([&] { point.LabelX = Strict_Whole(Columns(line, 52, 58)); });
  reader.Try([&] { point.LabelY = Strict_Whole(Columns(line, 60, 66)); });
  if (point.LabelX < 1) point.LabelX = point.X + 10;
  if (point.LabelY < 1) point.LabelY = point.Y - 10;
  point.Caption = (u'P' + QString::number(number) + QStringLiteral("\n\nLänge :") + point.LaengeText +
                   QStringLiteral("\n\nBreite :") + point.BreiteText)
                      .left(captionLength);
}

// "T1S5N1203": kind, step, number of samples.
void Read_Parameters(CalibrationReader& reader, CurveFamily family, const QString& value) {
  CurveParameters& parameters = family.parameters;
  reader.Try([&] { parameters.Kind = Short(Behind(value, QStringLiteral("T")).left(1)); });
  reader.Try([&] { parameters.Step = Single(Between(value, QStringLiteral("S"), QStringLiteral("N"))); });
  reader.Try([&] {
    const std::int16_t count = Short(Behind(value, QStringLiteral("N")));
    if (count < 0) Raise_Bad_Index();
    parameters.Count = count;
  });
  for (auto& pixels : family.pixels) pixels.assign(static_cast<size_t>(parameters.Count) + 1, 0);
}

QString Ref_Label(const QString& text, char16_t letter, DegreeFormat format) {
  if (format == DegreeFormat::Dec) {
    QString shown = text;
    while (shown.size() > 2 && (shown.endsWith(u'0') || shown.endsWith(u' '))) shown.chop(1);
    if (shown.endsWith(u',')) shown.chop(1);
    return shown + letter + u'°';
  }
  QString shown = text;
  const bool marked = text.contains(u'°') && text.contains(u'\'') &&
                      (text.contains(secondsMark) || text.contains(u'"') || text.contains(u'\u2033'));
  if (format == DegreeFormat::Gms && !marked) shown = Dec_To_GMS((letter == u'B' ? u'y' : u'x') + text);
  return GMS_Short(shown) + letter;
}

void Read_Start(NetLine& line, std::int16_t kind, const QString& text) {
  if (kind == 1)
    line.StartF = Single(Between(text, QStringLiteral("x"), QStringLiteral("y")));
  else if (kind == 2)
    line.StartF = 1;
  else
    Raise(wrongLine);
  line.Start = To_Int16(static_cast<double>(line.StartF));
}

// "/"-separated samples, as many as the parameters tell or the line has; returns how many these were.
int Read_Samples(CalibrationReader& reader, std::vector<std::int16_t>& pixels, int count, const QString& text) {
  const QStringList fields = text.split(u'/');
  const qsizetype last = fields.back().trimmed().isEmpty() ? fields.size() - 1 : fields.size();
  if (pixels.size() <= static_cast<size_t>(count)) pixels.resize(static_cast<size_t>(count) + 1);
  for (qsizetype k = 1; k < last && k <= count; ++k)
    reader.Try([&] { pixels[static_cast<size_t>(k)] = Short(fields[k]); });
  return std::min(count, static_cast<int>(last) - 1);
}

void Read_Curve(CalibrationReader& reader, CurveFamily family, const QString& text) {
  CoordinateState& state = reader.state;
  int n = -1;
  reader.Try([&] { n = Digit(text.size() > 1 ? text[1] : QChar(u' '), 3); });
  if (n < 0) return;
  const auto index = static_cast<size_t>(n);
  NetLine& line = family.lines[index];
  line.Kind = family.parameters.Kind;
  line.Step = family.parameters.Step;
  line.Count = family.parameters.Count;
  reader.Try([&] { Read_Start(line, line.Kind, text); });
  reader.Try([&] { line.Mid = Single(Between(text, QStringLiteral("y"), QStringLiteral("S"))); });
  reader.Try([&] { line.Reserve = Short(Between(text, QStringLiteral("S"), QStringLiteral("R"))); });
  reader.Try([&] { line.Deg = Single(Between(text, QStringLiteral("R"), QStringLiteral("/"))); });
  family.parameters.samples[index] = Read_Samples(reader, family.pixels[index], line.Count, text);
  const bool parallel = family.letter == u'B';
  RefPoint& point = state.RefPoints[parallel ? 3 * index : index];
  line.Deg64 = parallel ? point.Breite : point.Laenge;
  if (parallel) point.BreiteText = point.BreiteText.trimmed();
  line.Label = Ref_Label(parallel ? point.BreiteText : point.LaengeText, family.letter, state.format).left(textLength);
}

// "PKG Z: 4 R: 4400000 H: 5500000": a plane net in kilometres.
void Read_Plane_Net(CalibrationReader& reader, const QString& line) {
  CoordinateState& state = reader.state;
  state.NetPKG = true;
  const QString right = QStringLiteral("R:"), up = QStringLiteral("H:");
  reader.Try([&] { state.PkgZone = Between(line, QStringLiteral("Z:"), right).trimmed(); });
  reader.Try([&] { state.PkgR = Coordinate_Number(Between(line, right, up)); });
  reader.Try([&] { state.PkgH = Coordinate_Number(Behind(line, up)); });
}

void Reset_Net(CoordinateState& state) {
  state.Grid = gridGeographic;
  state.RefPoints = {};
  for (auto& pixels : state.NetBPix) pixels.assign(static_cast<size_t>(state.MapWidthPx) + 3, 0);
  for (auto& pixels : state.NetLPix) pixels.assign(static_cast<size_t>(state.MapHeightPx) + 3, 0);
  state.NetBLabels.clear();
  state.NetLLabels.clear();
  state.NetDiv = 0;
  state.NetDivText.clear();
  for (NetLine* line : {&state.NetB[1], &state.NetL[1]}) {
    line->Step = 0;
    line->Count = 0;
  }
}

// What is not there counts as 0 in every conversion and is seen nowhere: a file that was cut is told.
void Check_Complete(CalibrationReader& reader) {
  QStringList lacks;
  for (size_t n = 1; n < reader.state.RefPoints.size() && !reader.formatMissed; ++n)
    if (const RefPoint& point = reader.state.RefPoints[n]; point.LaengeText.isEmpty() && point.BreiteText.isEmpty())
      lacks << QStringLiteral("Bezugspunkt %1 fehlt.").arg(n);
  for (const CurveFamily& family : {Parallels(reader), Meridians(reader)})
    for (size_t n = 1; n < family.lines.size(); ++n) {
      const int there = family.parameters.samples[n], wanted = family.parameters.Count;
      const QString line = family.name + QStringLiteral(" %1").arg(n);
      if (there < 0)
        lacks << line + QStringLiteral(" fehlt.");
      else if (there < wanted)
        lacks << line + QStringLiteral(": %1 statt %2 Werte.").arg(there).arg(wanted);
    }
  if (lacks.isEmpty()) return;
  Raise(incompleteNet, QStringLiteral("Das geographische Koordinatennetz ist unvollständig:\n") + lacks.join(u'\n') +
                           QStringLiteral("\nNetz und Koordinaten stimmen dort nicht. Die Datei bleibt, wie sie ist; "
                                          "Kalibrix schreibt sie neu."));
}

}  // namespace

void Read_Geographic_Grid(CalibrationReader& reader, const QString& line) {
  CoordinateState& state = reader.state;
  Reset_Net(state);
  state.NetPKG = false;
  if (line.contains(QLatin1String("GMS"))) {
    Set_Format(state, DegreeFormat::Gms);
  } else if (line.contains(QLatin1String("DEC"))) {
    Set_Format(state, DegreeFormat::Dec);
  } else if (line.contains(QLatin1String("PKG"))) {
    Set_Format(state, DegreeFormat::Dec);
    Read_Plane_Net(reader, line);
  }
  QString rest = line;
  reader.Try([&] {
    const qsizetype end = line.indexOf(QLatin1String("F:"));
    if (end < 0) Raise_Bad_Call();
    rest = line.left(end).trimmed();
  });
  const qsizetype datum = rest.indexOf(QLatin1String("D:"));
  if (datum >= 0) state.GridDatum = rest.mid(datum + 2, datumLength).trimmed();
}

void Read_Geographic_Line(CalibrationReader& reader, const QString& line) {
  if (line.contains(QLatin1String("BParm")))
    Read_Parameters(reader, Parallels(reader), Value_Text(line));
  else if (line.contains(QLatin1String("LParm")))
    Read_Parameters(reader, Meridians(reader), Value_Text(line));
  else if (line.startsWith(u'R'))
    Read_Point(reader, line);
  else if (line.startsWith(u'b'))
    Read_Curve(reader, Parallels(reader), line);
  else if (line.startsWith(u'l'))
    Read_Curve(reader, Meridians(reader), line);
}

void Close_Geographic(CalibrationReader& reader) {
  CoordinateState& state = reader.state;
  reader.Try([&] { Check_Complete(reader); });
  reader.Try([&] { Net_Divide(state); });
  state.NetReady = true;
  if (state.NetDiv == 0) state.NetDiv = 1;
}

}  // namespace calibration
