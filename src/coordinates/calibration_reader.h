#pragma once
#include <QString>
#include <array>
#include <functional>

#include "state/coordinate_state.h"

// Inside of the reader of calibration files: one line after the other goes through the tests of
// calibration_file.cpp; lines that belong to one kind of net are taken apart in calibration_metric.cpp and
// calibration_geographic.cpp.

// The user stopped after a fault.
struct ReadingStopped {};

// What BParm and LParm say of all curves of a family.
struct CurveParameters {
  std::int16_t Kind = 0, Count = 0;
  float Step = 0;
  std::array<int, 4> samples = {-1, -1, -1, -1};  // read of each curve; -1: it has no line
};

class CalibrationReader {
 public:
  explicit CalibrationReader(CoordinateState& target) : state(target) {}

  // Reads a field or carries out a check. A fault is shown: OK goes on behind it, Cancel throws ReadingStopped.
  void Try(const std::function<void()>& field) const;

  CoordinateState& state;
  CurveParameters parallels, meridians;
  bool formatMissed = false;  // the first "R" line did not tell the format of degrees
};

namespace calibration {

inline constexpr int noFormat = 5010, wrongLayout = 5020, wrongLine = 5030, incompleteNet = 5040, badMetricNet = 6000;

[[noreturn]] void Raise_Bad_Call();   // a mark that a field needs is missing
[[noreturn]] void Raise_Bad_Index();  // no such line or point

QString Value_Text(const QString& line);  // behind the first "=", trimmed
// Numbers: what cannot be a number is 0; beyond the range error 6.
int Whole(const QString& text);
std::int16_t Short(const QString& text);  // beyond 16 bits error 6
float Single(const QString& text);        // beyond its range error 6
// Numbers of reference points: what is no number is error 13.
int Strict_Whole(const QString& text);
// Between two marks, the second one behind the first. Error 5 without them.
QString Between(const QString& text, const QString& from, const QString& to);
// Behind a mark. Error 5 without it.
QString Behind(const QString& text, const QString& mark);
int Digit(QChar c, int largest);  // 0..largest; errors 13, 9

// The line that begins a metric net, and each one after it. A field that is missing or no number is a fault that is
// shown; what was read before it stays.
void Read_Metric_Grid(CalibrationReader& reader, const QString& line, bool utm);
void Read_Metric_Line(CalibrationReader& reader, const QString& line);
// The lines have ended: checks the whole (error 6000 is shown) and builds the net, unless distances are missing.
void Close_Metric(CalibrationReader& reader);
// What was read, for the message of error 6000.
QString Metric_Fault_Text(const CoordinateState& state);

// The same for a geographic net: its first line, each one after it, the end.
void Read_Geographic_Grid(CalibrationReader& reader, const QString& line);
void Read_Geographic_Line(CalibrationReader& reader, const QString& line);
void Close_Geographic(CalibrationReader& reader);

}  // namespace calibration
