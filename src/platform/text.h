#pragma once
#include <QString>
#include <QStringView>
#include <cstdint>
#include <optional>

// Number at the start of a text: blanks are passed over, "." is the only decimal sign, 0 if there is none.
double Val(QStringView text);
// The same with the first "," read as ".".
double Val_Comma(const QString& text);
// What somebody typed as a number: the whole text is one, "," or "." its decimal sign, blanks around it do not count.
// Nothing for every other text and for what is not finite.
std::optional<double> Number_Typed(const QString& text);

// Number by a pattern of "#", "0", "." and other characters. Digits fill from the right, "#" without a digit vanishes,
// every other character of the pattern stays, surplus digits go to the first place. The decimal sign comes out as ",".
// Halves round away from zero.
QString Format(double value, const QString& pattern);

// Assignment to a whole number: halves go to the even neighbour. Error 6 beyond the range.
int16_t To_Int16(double value);
int32_t To_Int32(double value);
// Cut toward zero / to the next lower whole number.
double Fix(double value);
double Int(double value);  // to the next lower one

// The trimmed text filled up with blanks to the width: on the left (a longer text stays whole), on the right (a longer
// text is cut to the width).
QString Pad_Left(const QString& text, int width = 10);
QString Pad_Right(const QString& text, int width = 10);

// The first characters of a text, as a column of that width counts them: a pair of surrogates is one and stays whole.
QString Cut_Text(const QString& text, int characters);

// A number as the program writes it into texts and files: no leading blank, "." as decimal sign, no superfluous zeros.
QString Number_Text(double value);
