#pragma once
#include <QPoint>
#include <QString>

#include "edit/text_font.h"

// Symbol entries: texts of one character in a symbol font.

// Is the entry in hand a symbol? Texts being typed are none.
bool Symbol_In_Hand();
// Font and character of the symbol in hand, else of the next one.
FontChoice Symbol_Font();
QString Symbol_Sign();  // of the symbol in hand, else of the next one
// Gives them to the symbol in hand, with a redraw, and to those placed after it.
bool Take_Symbol(const FontChoice& choice, const QString& sign);
// Puts the next symbol on the map, with its middle at the window position, and takes it in hand. False if it could not
// be stored.
bool Place_Symbol(QPoint window);
// A character chosen from a table goes into the text of the target of the font: it takes the place of a single symbol,
// else it comes behind the text.
void Put_Character(QChar character);
