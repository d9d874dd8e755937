#pragma once
#include <QString>

#include "platform/surface.h"

// Fill of areas (Yline) and figures (Schrift "F" + two characters): 0 none, 1 solid in HG, 8 solid in VG, 2..7 hatches;
// negative = transparent. Nobody else takes the number apart.
struct FillCode {
  int code = 0;

  static FillCode Parse(qint64 stored);  // any number
  // Schrift of a figure: "F", blank or "-" or digit, digit. Nothing else is a fill ("Futura" is a font).
  static bool IsFill(const QString& schrift);
  static FillCode FromSchrift(const QString& schrift);  // 0 where it is no fill
  // The angle behind "<" of a figure's Schrift, degrees 0..360.
  static double AngleOf(const QString& schrift);
  QString ToSchrift(double angle = 0) const;  // "F 1", "F-8", "F 3<45"
  int ToNumber() const { return code; }
  bool operator==(const FillCode&) const = default;

  bool None() const { return code == 0; }
  bool Transparent() const { return code < 0; }
  bool Solid() const { return code == 1 || code == 8 || code == -1 || code == -8; }
  bool InForeground() const { return code == 8 || code == -8; }
  bool Hatched() const { return !None() && !Solid(); }
  FillStyle Hatch() const;  // of a hatched code
};
