#pragma once
#include <QString>

// Symbol fonts as tables: what a stored code looks like in Unicode.
namespace symbol_fonts {

enum class Table { None, Wingdings, Symbol };
Table Table_Of(const QString& family);  // by the name of the family

// Code 0x20..0xFF of a character: its byte in Windows-1252, or the low byte of U+F020..U+F0FF; 0 if it has none.
int Code_Of(QChar character);
// The character a code is stored as, its inverse: that of Windows-1252.
QChar Character_Of(int code);
// Unicode of a code, 0 where the table has no equivalent.
char32_t Unicode_Of(Table table, int code);

}  // namespace symbol_fonts
