#pragma once
#include "platform/fonts.h"
#include "platform/surface.h"

// What all surfaces share: the current font, measured in 96-dpi pixels wherever it is drawn.
template <class Base>
class Fonted : public Base {
 public:
  bool SetFont(const FontKey& font) override {
    if (!(font == face->key)) face = &Font_Face(font);
    return face->found;
  }
  const FontKey& Font() const override { return face->key; }
  int TextWidth(const QString& text) override { return face->TextWidth(text); }
  int TextHeight(const QString& text) override { return face->TextHeight(text); }

 protected:
  Fonted() : face(&Font_Face({})) {}
  const FontFace* face;
};
using FontedSurface = Fonted<Surface>;
