#pragma once
#include <QPoint>
#include <QRect>
#include <QSize>
#include <QString>
#include <optional>
#include <vector>

#include "store/entry.h"

// An ID of that name without further marks.
EntryId Named(const QString& name);

// A table of entries under construction. It is bound as the program's open table, so that rows and vertex tables are
// written by the same procedures as in the program. One at a time.

// How a text, symbol or label looks. Colours are palette numbers.
struct EntryLook {
  FontSpec font = {};
  double size = 14;  // points
  int ink = 0, paper = 15;
  FrameWord frame = {};
};
EntryLook Plain(int ink = 0, double size = 14);                // white box, no frame
EntryLook Framed(int color, int width = 1, double size = 14);  // white box, coloured frame
EntryLook Clear(int ink = 0, double size = 14);                // no box
EntryLook Turned(double degrees, int ink = 0, double size = 14);
EntryLook Symbol(int ink, double size = 28);
EntryLook Bold(EntryLook look);
EntryLook Italic(EntryLook look);
EntryLook On(int paper, EntryLook look);
// White on that colour. A reference line has the colour of its text's ground: a dark one shows on the map.
EntryLook White_On(int paper);

struct ShapeLook {
  int ink = 0, paper = 15;  // foreground and background
  FrameWord frame = {};
  FillCode fill = {};  // areas and figures
  int width = 1;       // lines and outlines of areas, map pixels
  bool rounded = false;
  bool dashed = false;  // lines
  std::optional<LineEnds> ends = {};
};
ShapeLook Stroke(int color, int width, bool rounded = false);
ShapeLook Dashed(ShapeLook look);
ShapeLook Filled(int fillCode, int ink, int paper, bool rounded = false);

class DemoTable {
 public:
  // `mapName` and `map` go into the header row.
  DemoTable(const QString& path, const QString& mapName, QSize map);
  ~DemoTable();
  DemoTable(const DemoTable&) = delete;
  DemoTable& operator=(const DemoTable&) = delete;
  void Finish();  // writes all of it; raises what goes wrong

  void Text(QPoint at, const QString& text, const EntryLook& look);
  void Text(const EntryId& id, EntryType type, QPoint at, const QString& text, const EntryLook& look);
  // A text with reference line, arrow or circle to its foot point.
  void Reference(EntryKind kind, QPoint at, QPoint foot, const QString& text, const EntryLook& look);
  // The label stands at its position; an empty one is hidden. Both give the ID of the new row.
  QString Line(const std::vector<QPoint>& points, const ShapeLook& look, QPoint labelAt, const QString& label = {});
  QString Area(const std::vector<QPoint>& points, const ShapeLook& look, QPoint labelAt, const QString& label = {});
  void Figure(EntryKind kind, const QRect& box, const ShapeLook& look, double degrees = 0);
  void FreeFigure(const std::vector<QPoint>& points, const ShapeLook& look);
  void Picture(QPoint at, const QString& file, const FrameWord& frame, QPoint foot = {});
  // `columns` x `rows` squares from the upper left corner, named "A-1" and so on, and the row of the raster's design.
  void PlanSquares(QPoint corner, int columns, int rows, int side, const QString& sizeText);
  void ScaleBar(QPoint at, int length, int value, const QString& unit);
  void NorthArrow(QPoint at);

 private:
  QString Polygon(const QString& kind, const std::vector<QPoint>& points, const ShapeLook& look, QPoint labelAt,
                  const QString& label);
};
