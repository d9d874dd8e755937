#include "coordinates/calibration_file.h"

#include <QFileInfo>
#include <algorithm>
#include <cmath>
#include <limits>
#include <new>

#include "coordinates/calibration_reader.h"
#include "coordinates/degree_text.h"
#include "platform/error.h"
#include "platform/files.h"
#include "platform/message_box.h"
#include "platform/text.h"

namespace calibration {

void Raise_Bad_Call() { Raise(5, QStringLiteral("Ungültiger Prozeduraufruf oder ungültiges Argument")); }
void Raise_Bad_Index() { Raise(9, QStringLiteral("Index außerhalb des gültigen Bereichs")); }

QString Value_Text(const QString& line) {
  const qsizetype at = line.indexOf(u'=');
  return at < 0 ? QString() : line.mid(at + 1).trimmed();
}

int Whole(const QString& text) { return To_Int32(Coordinate_Number(text)); }
std::int16_t Short(const QString& text) { return To_Int16(Coordinate_Number(text)); }

float Single(const QString& text) {
  const double value = Coordinate_Number(text);
  if (std::fabs(value) > static_cast<double>(std::numeric_limits<float>::max())) Raise(errors::overflow);
  return static_cast<float>(value);
}

int Strict_Whole(const QString& text) {
  bool number = false;
  const double value = text.trimmed().toDouble(&number);
  if (!number) Raise(errors::typeMismatch);
  return To_Int32(value);
}

QString Behind(const QString& text, const QString& mark) {
  const qsizetype at = text.indexOf(mark);
  if (at < 0) Raise_Bad_Call();
  return text.mid(at + mark.size());
}

QString Between(const QString& text, const QString& from, const QString& to) {
  const QString rest = Behind(text, from);
  const qsizetype end = rest.indexOf(to);
  if (end < 0) Raise_Bad_Call();
  return rest.left(end);
}

int Digit(QChar c, int largest) {
  const int digit = c.unicode() - u'0';
  if (digit < 0 || digit > 9) Raise(errors::typeMismatch);
  if (digit > largest) Raise_Bad_Index();
  return digit;
}

}  // namespace calibration

namespace {

using namespace calibration;

constexpr int noLineFound[] = {6010, 6020};  // of the net; they tell the same as badMetricNet

QString Added_Text(int number, const CoordinateState& state) {
  switch (number) {
    case noFormat:
      return QStringLiteral("Keine Formatangabe für die Koordinaten: Dezimal oder GG°MM'SS ?");
    case wrongLine:
      return QStringLiteral("Kalibrierungsdatei fehlerhaft: Koordinatenlinie gebogen oder gerade?");
    case badMetricNet:
    case noLineFound[0]:
    case noLineFound[1]:
      return Metric_Fault_Text(state);
    default:
      return {};
  }
}

// Colours of the sibling product.
int Mapped_Color(int color) {
  switch (color) {
    case 1:
      return 0;
    case 2:
      return 1;
    case 3:
      return 9;
    case 4:
      return 3;
    case 5:
      return 4;
    case 6:
      return 5;
    case 7:
      return 2;
    case 8:
      return 10;
    case 9:
      return 8;
    case 10:
      return 12;
    case 11:
      return 6;
    case 12:
      return 13;
    case 13:
      return 7;
    case 14:
      return 11;
    case 15:
      return 14;
    case 16:
      return 15;
    default:
      return color;
  }
}

// From column 5 on, whatever stands before.
int Color_In_Line(const QString& line, const CoordinateState& state, int otherwise) {
  int color = Whole(line.mid(4));
  if (state.CalFromTrakkor) color = Mapped_Color(color);
  return color >= 0 && color <= 15 ? color : otherwise;
}

void Read_Font(CoordinateState& state, const QString& value) {
  const qsizetype at = value.indexOf(QLatin1String("Sz ="));
  if (at < 0) Raise_Bad_Call();
  state.NetFont = value.left(at).trimmed();
  state.NetFontSize = Single(value.mid(at + 5));
  if (state.NetFontSize == 0) state.NetFontSize = 8;
}

void Read_Division(CoordinateState& state, const QString& value) {
  if (state.Geographic()) {
    state.NetDiv = Single(value);
    state.NetDivText = value;
  } else if (state.Metric()) {
    state.Gwidth = Whole(value);
  }
}

bool Holds(const QString& line, const char* key) { return line.contains(QLatin1String(key)); }

// The line that begins a net. False if it names none.
bool Read_Grid(CalibrationReader& reader, const QString& line) {
  if (Holds(line, "GEO"))
    Read_Geographic_Grid(reader, line);
  else if (Holds(line, "UTM"))
    Read_Metric_Grid(reader, line, true);
  else if (Holds(line, "GK"))
    Read_Metric_Grid(reader, line, false);
  else
    return false;
  return true;
}

// Lines of every kind of net. False if the line is none of them.
bool Read_Common_Line(CalibrationReader& reader, const QString& line) {
  CoordinateState& state = reader.state;
  const QString value = Value_Text(line);
  if (Holds(line, "ID =")) {
    state.CalFromTrakkor = Holds(line, "Trakkor");
  } else if (Holds(line, "Grid") && Read_Grid(reader, line)) {
    return true;
  } else if (Holds(line, "Gwidth")) {
    reader.Try([&] { state.Gwidth = Whole(value); });
  } else if (Holds(line, "Div")) {
    reader.Try([&] { Read_Division(state, value); });
  } else if (Holds(line, "Font")) {
    reader.Try([&] { Read_Font(state, value); });
  } else if (line.startsWith(QLatin1String("VG"))) {
    reader.Try([&] { state.GridVG = Color_In_Line(line, state, 0); });
  } else if (line.startsWith(QLatin1String("HG"))) {
    reader.Try([&] { state.GridHG = Color_In_Line(line, state, 7); });
  } else if (line.startsWith(QLatin1String("RA"))) {
    reader.Try([&] { state.NetLnBreite = Whole(line.mid(4)); });
    state.GridLnBreite = std::clamp(state.GridLnBreite, 1, 10);  // not the width just read
  } else if (Holds(line, "LnStil")) {
    reader.Try([&] { state.NetLnStil = state.GridLnStil = Whole(value); });
  } else if (Holds(line, "LnBreite")) {
    reader.Try([&] { state.NetLnBreite = state.GridLnBreite = Whole(value); });
  } else if (Holds(line, "nLabel")) {
    reader.Try([&] { state.NetLabelEvery = Whole(value); });
  } else if (Holds(line, "Transp")) {
    state.NetTransp = !state.CalFromTrakkor && !Holds(line, "Falsch");
  } else {
    return false;
  }
  return true;
}

void Read_Line(CalibrationReader& reader, const QString& line) {
  if (Read_Common_Line(reader, line)) return;
  if (reader.state.Metric()) Read_Metric_Line(reader, line);
  if (reader.state.Geographic()) Read_Geographic_Line(reader, line);
}

}  // namespace

void CalibrationReader::Try(const std::function<void()>& field) const {
  Error error;
  try {
    field();
    return;
  } catch (const Error& raised) {
    error = raised;
  } catch (const std::bad_alloc&) {
    error = Error{errors::outOfMemory, Error_Text(errors::outOfMemory)};
  }
  const QString text = error.text + QStringLiteral("\nEinlesen der Referenzkoordinaten aus der Kalibrierungsdatei:\n") +
                       state.CalFile + u'\n' + Added_Text(error.number, state);
  const MsgAnswer answer = Message_Box(text, MsgButtons::OkCancel, MsgIcon::Information, QStringLiteral("Fehler:    "));
  if (answer != MsgAnswer::Ok) throw ReadingStopped{};
}

int Read_Cal(const QString& calFile, QSize map, CoordinateState& state) {
  state = CoordinateState{};
  state.MapWidthPx = map.width();
  state.MapHeightPx = map.height();
  state.CalFile = calFile;
  CalibrationReader reader(state);
  try {
    QStringList lines;
    reader.Try([&] { lines = Read_Lines(calFile); });
    for (const QString& line : lines) Read_Line(reader, line);
    if (state.Geographic()) Close_Geographic(reader);
    if (state.Metric()) Close_Metric(reader);
    return -1;
  } catch (const ReadingStopped&) {
    state = CoordinateState{};
    return 0;
  }
}

QStringList Cal_Files_Of(const QString& mapFile) {
  constexpr qsizetype most = 10;
  QString name = mapFile, folder;
  Split_Path(name, folder);
  const QString stem = name.section(u'.', 0, 0);
  QStringList found;
  for (const QString& path : Find_Files(folder, QStringLiteral("*cal"))) {
    if (!QFileInfo(path).fileName().contains(stem)) continue;
    if (found.size() == most) {
      Message_Box(QStringLiteral("Zu viele CAL-Dateien im Ordner im Ordner ") + folder +
                      QStringLiteral("\nMaximale Anzahl = 10.  Überflüssige Cal-Dateien bitte entfernen."),
                  MsgButtons::Ok, MsgIcon::Information, QStringLiteral("Module12.getCalFileName"));
      break;
    }
    found << path;
  }
  return found;
}
