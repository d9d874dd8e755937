#pragma once
#include <QPoint>
#include <QString>
#include <QStringList>
#include <functional>
#include <optional>

#include "store/entry.h"

// Making and changing the scale bar of the map.

enum class ScaleUnit { Millimeter, Zentimeter, Meter, Kilometer };
const QStringList& Scale_Units();  // the words, in this order

struct ScaleInput {
  double ScaleValue = 0;  // what the measured length is in nature, in the unit
  ScaleUnit unit = ScaleUnit::Kilometer;
  int ScaleLenPx = 0;  // map pixels
  bool vertical = false;
  QPoint at;  // upper left end of the bar, map pixels
};

// What is wrong with number or length, for a message; empty if nothing is.
QString Scale_Fault(const ScaleInput& input);
// Of a sound input; not yet in the table.
EntryRow Make_Scale_Row(const ScaleInput& input);
// The scale bar of the open table.
std::optional<ScaleInput> Scale_Of_Map();
// Replaces an earlier scale bar, and takes the scale as that of the map. A fault is told, and nothing is changed.
bool Add_Scale_Row(const ScaleInput& input);
// Millimetres of the scan in map pixels and back; 0 where the map's size is not known.
int Scale_Pixels(double mm, bool vertical);
double Scale_Mm(int pixels, bool vertical);  // its inverse
// "Maßstab = 1 : " with the number, or "?" while there is none; in a second line the print factor if it is not 1.
QString Show_Scale_Text(const ScaleInput& input);
QString Show_Scale_Text();  // of the map's own scale
