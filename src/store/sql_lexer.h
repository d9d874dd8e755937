#pragma once
#include <QString>
#include <vector>

// The words and signs of a statement.

struct SqlToken {
  enum class Kind { Word, Name, Text, Number, Sign, End };  // Name: in brackets
  Kind kind = Kind::End;
  QString text;    // without brackets or quotes
  QString folded;  // of a word or name

  bool IsSign(const char* sign) const { return kind == Kind::Sign && text == QLatin1String(sign); }
  bool IsWord(const char* word) const { return kind == Kind::Word && folded == QLatin1String(word); }
  bool IsIdentifier() const { return kind == Kind::Word || kind == Kind::Name; }
};

// For comparing names: ignoring case, ß is ss.
QString Sql_Folded(const QString& name);
// Ended by an End. Raises errors::sqlSyntax with a German text.
std::vector<SqlToken> Sql_Tokens(const QString& statement);
