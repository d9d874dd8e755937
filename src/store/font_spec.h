#pragma once
#include <QString>

// The column Schrift of text-like rows: font name, style suffixes, angle. Nobody else takes the text apart.
// Written in the order -B -I -U -T -C<number> "<"<angle>; read in any order.
struct FontSpec {
  QString family;  // "" = none told
  bool bold = false, italic = false, underline = false;
  bool transparent = false;  // no box behind the text
  int charset = 0;           // written only when above 0
  double angle = 0;          // degrees counter-clockwise; 0 <= angle < 360 after reading

  static FontSpec Parse(const QString& stored);  // any text; unknown marks are passed over
  QString ToText() const;                        // as it is stored
  bool operator==(const FontSpec&) const = default;
  bool IsSymbol() const;  // family contains "Wing"
};
