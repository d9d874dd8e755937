#pragma once
#include <QString>
#include <optional>

#include "state/on_reset.h"
#include "store/font_spec.h"

// What texts and symbols look like that are made next.

struct FontChoice {
  FontSpec font{.family = QStringLiteral("Arial")};
  double size = 10;  // points at 100 %
  bool operator==(const FontChoice&) const = default;
};

// What the next text and the next symbol will look like; the colours are CurVG, CurHG, CurRA. For the session.
struct NextTextState {
  std::optional<FontChoice> font;  // as chosen; else that of the current row, if it is a text
  FontChoice symbol{{.family = QStringLiteral("Wingdings"), .transparent = true}, 24};
  QString sign = QStringLiteral("l");
  bool operator==(const NextTextState&) const = default;
};
inline NextTextState NextText;
inline const OnReset freshText(NextText);  // goes with the state

// The font of a row as a choice: its columns Schrift and Größe, without the sign of a label that is switched off.
FontChoice Font_Choice_Of(const QString& schrift, double size);
// Is it a font of signs, so that its texts are symbols?
bool Is_Sign_Font(const FontSpec& font);
// Chosen, else of the current row if that is a text, else Arial 10.
FontChoice Font_Of_New_Text();
// A text or symbol came into the hand: what is made next looks like it.
void Remember_Text_Look(int typ, const QString& schrift, double size, const QString& text);
// The font of the edit box.
FontChoice Font_Of_Box();
// Gives it to the box and the Ent... variables; a family that is not installed is shown in Arial.
void Load_Font_Into_Box(const FontChoice& choice);
