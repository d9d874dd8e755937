#pragma once
#include <QHash>
#include <QString>

#include "objects/text_box.h"
#include "platform/database.h"
#include "store/font_spec.h"
#include "view/draw_pass.h"

// Draws texts and symbols, and the labels of lines and areas, in one pass.
class TextPainter {
 public:
  explicit TextPainter(DrawPass& drawPass) : pass(drawPass) {}
  // The current row of the recordset. A font that is missing on the map window is asked for, once for each entry.
  void Draw(const Recordset& rows, const PaintedRow& row);

 private:
  void Draw_Upright(const QString& text, const PaintedRow& row, const TextLook& look);
  void Draw_Rotated(const FontSpec& font, const QString& text, const PaintedRow& row, const TextLook& look);
  bool Set_Row_Font(const FontSpec& font, double size);
  void Ask_Missing_Font(const QString& text, const FontSpec& font, const PaintedRow& row);
  const FontSpec& Font_Of(const QString& schrift);

  DrawPass& pass;
  QHash<QString, FontSpec> fonts;
  FontKey key;
};
