#pragma once
#include <QString>
#include <QStringList>
#include <optional>
#include <vector>

#include "platform/database.h"

// Search of entries by criteria, hit after hit, and replacing of values. State of the window as plain data; the
// procedures ask and tell by message boxes.

// A line "column = value". A "*" before or behind the value stands for whatever is there.
struct Criterion {
  enum class Kind { All, Left, Right, Middle, Whole };
  QString column, value;  // the value without its stars
  Kind kind = Kind::Whole;
  bool openEnd = false;                         // the value ended in "*"
  static Criterion Parse(const QString& line);  // without "=" there is no column
  bool operator==(const Criterion&) const = default;
};
// Those with a column and a value.
std::vector<Criterion> Parse_Criteria(const QStringList& lines);

struct SearchOptions {
  bool matchCase = false;   // chkGrossKlein
  bool wholeWords = false;  // chkWort: between blanks or the ends of the value
};
// Where the value stands in the text; nothing if it does not match.
struct Hit {
  qsizetype at = 0, length = 0;
};
// The first one.
std::optional<Hit> Find_In(const QString& text, const Criterion& criterion, const SearchOptions& options);
// Do all criteria hold for the current row? Error 3265 for a column that is not there.
bool Match_Row(const Recordset& rows, const std::vector<Criterion>& criteria, const SearchOptions& options);

// Position of the first row of rsEntries from `from` and before `end` that fits, -1 without one. The cursor stays.
int Find_Row(int from, int end, const std::vector<Criterion>& criteria, const SearchOptions& options);

struct SearchState {
  QStringList search{QStringLiteral("Eintrag =")};  // lines of cmbSearch
  QStringList replace;                              // lines of cmbReplace
  SearchOptions options;
  int found = 0, changed = 0;
  bool goesOn = false;  // there was a hit: "Weitersuchen"
  bool undoTaken = false;
  bool restored = false;  // btnBack was pressed since the last replacement
  QString lastSearch;     // a change of the criteria begins a new search
  QString Caption() const { return goesOn ? QStringLiteral("Weitersuchen") : QStringLiteral("Suchen"); }
  QString Found_Text() const;     // "Anzahl der gefundenen Einträge: "
  QString Replaced_Text() const;  // "Anzahl der Einträge insgesamt:", "geändert:"
};

// The next hit after the current row becomes the current entry and is shown in the map. A new search begins again at
// the top where nothing is found below. False, with a message, if there is none.
bool Search_Next(SearchState& state);
// Replaces in the current entry if it fits the criteria, else looks for the next one that does. True if it was changed.
bool Replace_Current(SearchState& state);
// All entries that fit, in one transaction with one undo point. The number changed.
int Replace_All(SearchState& state);
// btnBack: the table as it was before the first replacement.
void Take_Replacements_Back(SearchState& state);
