#include "store/sql_lexer.h"

#include "platform/error.h"

namespace {

using Kind = SqlToken::Kind;

constexpr qsizetype longestStatement = 8000;

[[noreturn]] void Fail(const QString& text) { Raise(errors::sqlSyntax, text); }

class Lexer {
 public:
  explicit Lexer(const QString& statement) : text(statement) {}
  SqlToken Next();

 private:
  QChar At(qsizetype ahead = 0) const { return at + ahead < text.size() ? text[at + ahead] : QChar(); }
  SqlToken Quoted_Text(QChar quote);
  SqlToken Name();
  SqlToken Number();
  SqlToken Word();
  SqlToken Sign();

  const QString& text;
  qsizetype at = 0;
};

// A doubled quote stands for one.
SqlToken Lexer::Quoted_Text(QChar quote) {
  QString content;
  for (++at; at < text.size(); ++at) {
    if (text[at] == quote) {
      if (At(1) != quote) {
        ++at;
        return {Kind::Text, content, {}};
      }
      ++at;
    }
    content += text[at];
  }
  Fail(QStringLiteral("Ein Text wird nicht durch %1 beendet.").arg(quote));
}

SqlToken Lexer::Name() {
  const qsizetype end = text.indexOf(u']', at);
  if (end < 0) Fail(QStringLiteral("Ein Name wird nicht durch ] beendet."));
  const QString name = text.mid(at + 1, end - at - 1).trimmed();
  if (name.isEmpty()) Fail(QStringLiteral("Zwischen [ und ] fehlt ein Name."));
  at = end + 1;
  return {Kind::Name, name, Sql_Folded(name)};
}

SqlToken Lexer::Number() {
  const qsizetype from = at;
  const auto digits = [this] {
    while (At() >= u'0' && At() <= u'9') ++at;
  };
  digits();
  if (At() == u'.') {
    ++at;
    digits();
  }
  const QChar sign = At(1);
  const bool signedPower = (sign == u'+' || sign == u'-') && At(2).isDigit();
  if ((At() == u'e' || At() == u'E') && (sign.isDigit() || signedPower)) {
    at += 2;
    digits();
  }
  if (At().isLetter() || At() == u'_')
    Fail(QStringLiteral("Die Zahl \"%1\" wird nicht verstanden.").arg(text.mid(from, at - from + 1)));
  return {Kind::Number, text.mid(from, at - from), {}};
}

SqlToken Lexer::Word() {
  const qsizetype from = at;
  while (At().isLetterOrNumber() || At() == u'_') ++at;
  const QString word = text.mid(from, at - from);
  return {Kind::Word, word, Sql_Folded(word)};
}

SqlToken Lexer::Sign() {
  const QString pair = text.mid(at, 2);
  for (const char* sign : {"<>", "<=", ">="})
    if (pair == QLatin1String(sign)) {
      at += 2;
      return {Kind::Sign, pair, {}};
    }
  const QChar it = text[at++];
  if (!QStringLiteral("=<>+-*/&(),.;!").contains(it))
    Fail(QStringLiteral("Das Zeichen \"%1\" wird hier nicht verstanden.").arg(it.isPrint() ? it : QChar(u'?')));
  return {Kind::Sign, it == u'!' ? QStringLiteral(".") : QString(it), {}};
}

SqlToken Lexer::Next() {
  while (at < text.size() && text[at].isSpace()) ++at;
  if (at >= text.size()) return {};
  const QChar it = text[at];
  if (it == u'\'' || it == u'"') return Quoted_Text(it);
  if (it == u'[') return Name();
  const bool digit = it >= u'0' && it <= u'9';
  if (digit || (it == u'.' && At(1) >= u'0' && At(1) <= u'9')) return Number();
  if (it.isLetter() || it == u'_') return Word();
  return Sign();
}

}  // namespace

QString Sql_Folded(const QString& name) { return name.toCaseFolded().replace(QChar(0x00DF), QLatin1String("ss")); }

std::vector<SqlToken> Sql_Tokens(const QString& statement) {
  if (statement.size() > longestStatement)
    Fail(QStringLiteral("Die Anweisung ist zu lang: höchstens %1 Zeichen.").arg(longestStatement));
  if (statement.contains(QChar(u'\0'))) Fail(QStringLiteral("Die Anweisung enthält ein ungültiges Zeichen."));
  std::vector<SqlToken> tokens;
  Lexer lexer(statement);
  do tokens.push_back(lexer.Next());
  while (tokens.back().kind != Kind::End);
  return tokens;
}
