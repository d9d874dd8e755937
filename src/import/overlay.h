#pragma once
#include <QByteArray>
#include <QPointF>
#include <QString>
#include <QStringList>
#include <optional>
#include <vector>

// Overlay files: sections of "key=value", each "[Symbol" an object with geographic coordinates in WGS-84.

enum class OverlayKind { Text = 2, Line = 3, Area = 4, Rectangle = 5, Ellipse = 6 };

struct OverlayRecord {
  int line = 0;  // where it begins in the file, from 1
  OverlayKind kind = OverlayKind::Text;
  int color = 0, fill = 0;  // numbers of the file
  std::optional<int> size;  // width of a line in pixels, of a text in points
  int font = 1;             // 1 "Arial", 2 "Symbol", 3 "Courier"
  QString text;
  std::vector<QPointF> points;   // longitude, latitude in degrees
  double width = 0, height = 0;  // of figures: below 1 degrees, else map pixels
};

struct OverlayFault {
  int line = 0;
  QString text;
};

struct OverlayFile {
  std::vector<OverlayRecord> records;
  std::vector<OverlayFault> faults;  // objects and lines that cannot be used
  int passedOver = 0;                // objects of the kinds 1 and 7: pictures and triangles
  int unknown = 0;                   // objects of kinds that nobody knows
};

// Raises 5000 with a German text for a binary file and for one without an object.
OverlayFile Read_Overlay(const QByteArray& bytes);
