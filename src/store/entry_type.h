#pragma once
#include <QtGlobal>
#include <cstdint>

// Base kinds of a row: the number stored in Typ without marks and sign.
enum class EntryKind : int {
  Text = 0,        // text or symbol without reference line
  TextLine = 1,    // with a plain reference line
  TextArrow = 2,   // with an arrow
  TextCircle = 3,  // with a circle at the foot point
  Polygon = 4,     // line or area, straight edges
  Picture = 5,
  Reference = 7,  // a reference line only
  Nothing = 9,
  Scale = 11,
  NorthArrow = 12,  // stored as -12, yet drawn
  Net = 15,
  PlanSquare = 16,
  PlanDesign = 17,
  Rectangle = 20,
  Square = 21,
  Ellipse = 22,
  Circle = 23,
  FreeFigure = 24,  // straight edges
  FreeFigureRound = 25,
  PolygonRound = 40,  // line or area, rounded edges
};

enum class Mark : int { None = 0, Marked = 1, Last = 2 };

// The column Typ: base kind + 100 while marked, + 200 while marked last; negative = hidden. Nobody else takes the
// number apart. (A hidden row of kind 0 cannot be told by its sign; Hidden() makes it kind 1 first.)
struct EntryType {
  int base = 0;
  Mark mark = Mark::None;
  bool hidden = false;

  static EntryType Parse(qint64 stored);  // any number
  int ToNumber() const;                   // as it is stored
  EntryKind Kind() const { return static_cast<EntryKind>(base); }
  bool operator==(const EntryType&) const = default;

  // The same entry hidden; north arrows stay as they are, kind 0 becomes 1.
  EntryType Hidden() const;
  EntryType Shown() const;
  // The same entry with that mark, Mark::None without one.
  EntryType Marked(Mark with) const;

  // Marked, and to be seen: what commands on marked entries work on.
  bool Chosen() const { return mark != Mark::None && (!hidden || Kind() == EntryKind::NorthArrow); }
  bool IsText() const;        // 0..3 (with the older 7 and 18 where they stand for them)
  bool IsPolygon() const;     // 4, 40
  bool IsFigure() const;      // 20..25
  bool IsFreeFigure() const;  // 24, 25
  bool HasVertices() const { return IsPolygon() || IsFreeFigure(); }  // in a table of its own
  bool HasColors() const;                                             // all but pictures
};
