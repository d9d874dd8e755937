#pragma once
#include <QString>
#include <optional>

#include "store/font_spec.h"

// The font of texts, symbols and labels: of the entry in hand, of the text that is being typed, of the next one.

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

inline constexpr double smallestFontSize = 1, largestFontSize = 80;

// What a choice of font goes to.
enum class FontTarget { Entry, Typed, Next };
FontTarget Font_Target();
// The font of that target.
FontChoice Load_Font_Spec();
// Gives the target the font: a row is written and drawn anew, the text being typed is shown in it. Angles count modulo
// 360. False, and a message, if a family cannot be stored; false if the typed text cannot be stored.
bool Take_Font(FontChoice choice);
// Can the column hold the name? A "-" or "<" would end it.
bool Family_Fits(const QString& family);
// The text of the target, up to its first line end; "TTT" where there is none.
QString Sample_Text();

// The font of the edit box, and what is given it: the box and the Ent... variables.
FontChoice Font_Of_Box();
void Load_Font_Into_Box(const FontChoice& choice);

// Chosen, else of the current row if that is a text, else Arial 10.
FontChoice Font_Of_New_Text();
// A text or symbol came into the hand: what is made next looks like it.
void Remember_Text_Look(int typ, const QString& schrift, double size, const QString& text);

// Boxes behind texts half transparent (Map.Perspex), with a redraw.
void Set_Perspex(bool on);
