#pragma once
#include <QString>

// How many individuals an entry stands for: the number in front of its text. "13P.mont." is 13 of "P.mont.".

struct CountedName {
  QString name;           // trimmed, without the number; "" for a text of digits only
  int count = 1;          // 1 where no number stands in front
  bool digits = false;    // the text begins with a digit
  bool tooLarge = false;  // the number is beyond the bound: the entry is told and not counted
};

// For the areas and the matrix: "/" and ":" go on the digits, so that a date or time in front counts by its first
// number and is cut whole. Counts up to 32767.
CountedName Population_Count(const QString& text);
// For the assignment to colours: digits only. Counts of 32 bits.
CountedName Leading_Count(const QString& text);
