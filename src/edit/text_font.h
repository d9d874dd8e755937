#pragma once
#include <QString>

#include "hand/text_look.h"

// The font of texts, symbols and labels: of the entry in hand, of the text that is being typed, of the next one.

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

// Boxes behind texts half transparent (Map.Perspex), with a redraw.
void Set_Perspex(bool on);
