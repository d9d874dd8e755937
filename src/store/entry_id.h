#pragma once
#include <QString>
#include <optional>

// Line-end code of a line's ID: shape and flags of the ends, sizes in millimetres.
struct LineEnds {
  enum class Shape { Arrow, Circle, Rectangle };
  Shape shape = Shape::Arrow;
  bool filled = false, atStart = false, atEnd = false, partial = false;
  double lengthMm = 1.0, widthMm = 1.0;  // read as 1.0 to 99.0
  bool operator==(const LineEnds&) const = default;
};

// The column ID: ["-"] name [" - " line-end code] [">" assignment] and "<" + number of a group. Nobody else takes the
// text apart.
struct EntryId {
  bool inactive = false;
  QString name;  // "Text", "Linie12", "Flaeche0", "Figur3", "Bild", a free name, ...
  std::optional<LineEnds> ends;
  QString assignment;  // name of the area or line it is assigned to
  QString group;       // what stands behind "<"; "" = none
  bool hasGroup = false;
  // What was read, where ToText would write it in another way (a foreign ID). Written back while nothing else is
  // changed.
  QString asStored;

  static EntryId Parse(const QString& stored);  // any text: what is not understood belongs to the name
  // Two questions about a stored ID that are asked of every row that is drawn.
  static bool StoredIsHeader(const QString& stored) { return stored.startsWith(u'!'); }
  static bool StoredIsInactive(const QString& stored) { return stored.startsWith(u'-'); }
  QString ToText() const;  // as it is stored
  bool operator==(const EntryId&) const = default;

  QString TableName() const;  // name of the vertex table
  bool IsLine() const;        // the name contains "Lin"
  bool IsArea() const;        // the name contains "Fl"
  bool IsFigure() const;      // the name contains "Fig"
  bool IsNorthArrow() const;  // the name contains "Np"
  bool IsHeader() const;      // starts with "!"
  // A digit "1" to "4" before "Text".
  bool HasReferenceDigit() const;
  EntryId WithoutReferenceDigit() const;  // the same where there is none
  int Number() const;                     // number behind the kind word, -1 if there is none
};
