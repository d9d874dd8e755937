#include "store/sql_translate.h"

#include <QHash>
#include <QSet>
#include <QStringList>

#include "store/sql_lexer.h"

namespace {

using Kind = SqlToken::Kind;

[[noreturn]] void Fail(const QString& text) { Raise(errors::sqlSyntax, text); }

const QSet<QString>& Keywords() {
  static const QSet<QString> words = [] {
    QSet<QString> all;
    for (const char* word :
         {"select", "update", "delete", "insert",  "from",   "where", "and",   "or",       "not",         "in",
          "is",     "null",   "like",   "between", "order",  "by",    "group", "having",   "as",          "on",
          "inner",  "left",   "right",  "outer",   "join",   "union", "all",   "distinct", "distinctrow", "asc",
          "desc",   "values", "into",   "set",     "exists", "true",  "false", "mod"})
      all.insert(QString::fromLatin1(word));
    return all;
  }();
  return words;
}

struct SqlFunction {
  const char* name;
  bool isText = false;
  bool aggregate = false;
};

const QHash<QString, SqlFunction>& Functions() {
  static const QHash<QString, SqlFunction> all = {
      {"left", {"fx_left", true}},
      {"right", {"fx_right", true}},
      {"mid", {"fx_mid", true}},
      {"ucase", {"fx_ucase", true}},
      {"lcase", {"fx_lcase", true}},
      {"trim", {"trim", true}},
      {"ltrim", {"ltrim", true}},
      {"rtrim", {"rtrim", true}},
      {"format", {"fx_format", true}},
      {"str", {"fx_str", true}},
      {"cstr", {"fx_str", true}},
      {"iif", {"iif", true}},
      {"nz", {"ifnull", true}},
      {"replace", {"replace", true}},
      {"chr", {"char", true}},
      {"instr", {"fx_instr"}},
      {"len", {"fx_len"}},
      {"val", {"fx_val"}},
      {"isnull", {"fx_isnull"}},
      {"int", {"fx_int"}},
      {"fix", {"fx_fix"}},
      {"round", {"fx_round"}},
      {"abs", {"abs"}},
      {"sgn", {"sign"}},
      {"asc", {"unicode"}},
      {"count", {"count", false, true}},
      {"sum", {"sum", false, true}},
      {"avg", {"avg", false, true}},
      {"min", {"min", false, true}},
      {"max", {"max", false, true}},
  };
  return all;
}

QString Quoted(QString name) { return u'"' + name.replace(u'"', QLatin1String("\"\"")) + u'"'; }
QString Text_Literal(QString text) {
  return u'\'' + text.replace(u'\'', QLatin1String("''")) + QStringLiteral("' COLLATE NOCASE");
}

class Translator {
 public:
  Translator(std::vector<SqlToken> all, const std::vector<TableDef>& tables) : tokens(std::move(all)), defs(tables) {}
  SqlTranslation Run();

 private:
  enum class Role { Plain, Table, NewName };
  struct Source {
    const TableDef* table;
    QString alias;  // as written, empty without one
  };
  struct Part {  // a Select
    QString limit;
    bool ordered = false, grouped = false;
  };
  struct Paren {
    bool text = false, select = false;
  };

  // Tables and new names first: columns are named before the tables they come from.
  void Find_Kind();
  void Drop_Delete_List();
  void Find_Tables();
  void Take_Table(size_t& at, bool canHaveAlias);

  void Write_Token(size_t& at);
  void Write_Sign(size_t at);
  void Write_Word(size_t& at);
  void Write_Keyword(size_t& at);
  void Write_Top(size_t& at);
  void Write_Name(size_t& at);
  void Write_Function(size_t& at, const SqlFunction& function);
  void Open_Paren(Paren paren);
  void Close_Paren();
  void Write_Target(size_t& at);
  void End_Target();
  void End_Part(bool isOuter);
  void Put(const QString& piece) { out += piece + u' '; }

  const SqlToken& At(size_t index) const { return tokens[std::min(index, tokens.size() - 1)]; }
  bool Is_Keyword(size_t at) const;
  const FieldInfo* Column(const Source& source, const QString& folded) const;
  const FieldInfo* Any_Column(const QString& folded) const;
  const Source* Source_Named(const QString& folded) const;

  std::vector<SqlToken> tokens;
  const std::vector<TableDef>& defs;
  std::vector<Role> roles;
  std::vector<Source> sources;
  QHash<QString, QString> newNames;  // "as" names, by their folded form
  SqlTranslation result;
  QString out;
  std::vector<Part> parts;
  std::vector<Paren> parens;
  bool wantsTarget = false;  // before "column =" of an Update
  QString targetEnd;         // closes the value of the column
  bool subselect = false;
};

// "Left (" is the function; everywhere else it belongs to a join.
bool Translator::Is_Keyword(size_t at) const {
  const SqlToken& token = At(at);
  if (token.kind != Kind::Word || !Keywords().contains(token.folded)) return false;
  const bool join = token.folded == QLatin1String("left") || token.folded == QLatin1String("right");
  return !join || !At(at + 1).IsSign("(");
}

void Translator::Find_Kind() {
  const SqlToken& first = tokens.front();
  if (first.IsWord("select"))
    result.kind = SqlKind::Select;
  else if (first.IsWord("update"))
    result.kind = SqlKind::Update;
  else if (first.IsWord("delete"))
    result.kind = SqlKind::Delete;
  else if (first.IsWord("insert"))
    result.kind = SqlKind::Insert;
  else
    Fail(QStringLiteral("Eine Anweisung beginnt mit Select, Update, Delete oder Insert."));
  for (size_t i = 0; i + 1 < tokens.size(); ++i) {
    if (!tokens[i].IsSign(";")) continue;
    if (At(i + 1).kind != Kind::End) Fail(QStringLiteral("Es kann nur eine einzige Anweisung ausgeführt werden."));
    tokens.erase(tokens.begin() + static_cast<std::ptrdiff_t>(i));
  }
  for (size_t i = 1; i < tokens.size(); ++i)
    for (const char* word : {"update", "delete", "insert"})
      if (tokens[i].IsWord(word)) Fail(QStringLiteral("Es kann nur eine einzige Anweisung ausgeführt werden."));
}

// "Delete * from", "Delete Table.* from": what stands before "from" says nothing.
void Translator::Drop_Delete_List() {
  size_t from = 1;
  while (from < tokens.size() && !tokens[from].IsWord("from")) ++from;
  if (from == tokens.size()) Fail(QStringLiteral("Nach Delete fehlt \"from\" mit dem Namen der Tabelle."));
  for (size_t i = 1; i < from; ++i)
    if (!tokens[i].IsSign("*") && !tokens[i].IsSign(".") && !tokens[i].IsIdentifier())
      Fail(QStringLiteral("Zwischen Delete und from kann nur * stehen."));
  tokens.erase(tokens.begin() + 1, tokens.begin() + static_cast<std::ptrdiff_t>(from));
}

void Translator::Take_Table(size_t& at, bool canHaveAlias) {
  const SqlToken& token = At(at);
  if (!token.IsIdentifier() || Is_Keyword(at)) Fail(QStringLiteral("Der Name einer Tabelle fehlt."));
  const TableDef* found = nullptr;
  for (const TableDef& def : defs)
    if (Sql_Folded(def.name) == token.folded) found = &def;
  if (!found) Fail(QStringLiteral("Die Tabelle \"%1\" gibt es nicht.").arg(token.text));
  roles[at] = Role::Table;
  sources.push_back({found, {}});
  if (!canHaveAlias) return;
  size_t alias = at + 1;
  if (At(alias).IsWord("as")) ++alias;
  if (!At(alias).IsIdentifier() || Is_Keyword(alias)) return;
  roles[alias] = Role::NewName;
  sources.back().alias = At(alias).text;
  at = alias;
}

void Translator::Find_Tables() {
  roles.assign(tokens.size(), Role::Plain);
  bool inFrom = false;
  std::vector<bool> outer;
  for (size_t i = 0; i < tokens.size(); ++i) {
    const SqlToken& token = tokens[i];
    const bool opens = token.IsWord("from") || token.IsWord("join") || (token.IsSign(",") && inFrom);
    if (opens || token.IsWord("update") || token.IsWord("into")) {
      inFrom = inFrom || opens;
      ++i;
      for (; At(i).IsSign("("); ++i) {
        outer.push_back(true);  // the brackets of several joins
        if (At(i + 1).IsWord("select")) Fail(QStringLiteral("Nach \"from\" kann keine Unterabfrage stehen."));
      }
      Take_Table(i, !token.IsWord("into"));
    } else if (token.IsSign("(")) {
      outer.push_back(inFrom);
      inFrom = false;
    } else if (token.IsSign(")")) {
      if (outer.empty()) Fail(QStringLiteral("Eine Klammer ) ist zu viel."));
      inFrom = outer.back();
      outer.pop_back();
    } else if (token.IsWord("where") || token.IsWord("order") || token.IsWord("group") || token.IsWord("select")) {
      inFrom = false;
    } else if (token.IsWord("as") && At(i + 1).IsIdentifier()) {
      roles[++i] = Role::NewName;
      newNames.insert(tokens[i].folded, tokens[i].text);
    }
  }
  if (!outer.empty()) Fail(QStringLiteral("Eine Klammer ) fehlt."));
  if (sources.empty()) Fail(QStringLiteral("Es fehlt \"from\" mit dem Namen der Tabelle."));
}

const FieldInfo* Translator::Column(const Source& source, const QString& folded) const {
  for (const FieldInfo& field : source.table->fields)
    if (Sql_Folded(field.name) == folded) return &field;
  return nullptr;
}

const FieldInfo* Translator::Any_Column(const QString& folded) const {
  for (const Source& source : sources)
    if (const FieldInfo* field = Column(source, folded)) return field;
  return nullptr;
}

const Translator::Source* Translator::Source_Named(const QString& folded) const {
  for (const Source& source : sources)
    if (Sql_Folded(source.alias.isEmpty() ? source.table->name : source.alias) == folded) return &source;
  return nullptr;
}

void Translator::Open_Paren(Paren paren) {
  constexpr size_t deepest = 60;
  if (parens.size() >= deepest) Fail(QStringLiteral("Die Klammern sind zu tief verschachtelt."));
  parens.push_back(paren);
}

void Translator::Close_Paren() {
  if (parens.empty()) Fail(QStringLiteral("Eine Klammer ) ist zu viel."));
  const Paren paren = parens.back();
  parens.pop_back();
  if (paren.select) End_Part(false);
  Put(paren.text ? QStringLiteral(") COLLATE NOCASE") : QStringLiteral(")"));
}

// Rows that are equal in the order of the statement keep the order of the table.
void Translator::End_Part(bool isOuter) {
  const Part part = parts.back();
  parts.pop_back();
  if (isOuter && part.ordered && !part.grouped && sources.size() == 1) Put(QStringLiteral(", rowid"));
  if (!part.limit.isEmpty()) Put(QStringLiteral("LIMIT ") + part.limit);
}

void Translator::Write_Sign(size_t at) {
  const SqlToken& token = tokens[at];
  const bool besideText =
      token.IsSign("+") && (At(at + 1).kind == Kind::Text || (at > 0 && At(at - 1).kind == Kind::Text));
  if (token.IsSign("(")) {
    const bool select = At(at + 1).IsWord("select");
    subselect = subselect || select;
    Open_Paren({false, select});
    Put(QStringLiteral("("));
  } else if (token.IsSign(")")) {
    Close_Paren();
  } else if (token.IsSign("&") || besideText) {
    Put(QStringLiteral("||"));
  } else if (token.IsSign("/")) {
    Put(QStringLiteral("* 1.0 /"));
  } else if (token.IsSign(",") && parens.empty() && !targetEnd.isEmpty()) {
    End_Target();
    Put(token.text);
    wantsTarget = true;
  } else {
    Put(token.text);
  }
}

// "column = value" of an Update: the value is brought to what the column takes, or refused.
void Translator::Write_Target(size_t& at) {
  wantsTarget = false;
  if (At(at + 1).IsSign(".")) at += 2;
  const SqlToken& token = At(at);
  const FieldInfo* field = token.IsIdentifier() ? Column(sources.front(), token.folded) : nullptr;
  if (!field) Fail(QStringLiteral("Die Spalte \"%1\" gibt es nicht.").arg(token.text));
  if (!At(at + 1).IsSign("=")) Fail(QStringLiteral("Nach der Spalte \"%1\" fehlt =.").arg(token.text));
  ++at;
  Put(Quoted(field->name) + QStringLiteral(" ="));
  targetEnd = QStringLiteral(")");
  switch (field->type) {
    case FieldType::Integer:
      return Put(QStringLiteral("fx_short("));
    case FieldType::Long:
      return Put(QStringLiteral("fx_long("));
    case FieldType::Double:
      return Put(QStringLiteral("fx_double("));
    case FieldType::Text:
      targetEnd = QStringLiteral(", %1)").arg(field->size);
      return Put(QStringLiteral("fx_text("));
  }
}

void Translator::End_Target() {
  if (!targetEnd.isEmpty()) Put(targetEnd);
  targetEnd.clear();
}

void Translator::Write_Top(size_t& at) {
  if (!At(at + 1).IsWord("top")) return;
  ++at;
  if (At(at + 1).kind != Kind::Number) Fail(QStringLiteral("Nach Top fehlt eine Zahl."));
  parts.back().limit = At(++at).text;
  if (At(at + 1).IsWord("percent")) Fail(QStringLiteral("\"Percent\" kann nicht verwendet werden."));
}

void Translator::Write_Keyword(size_t& at) {
  const QString& word = At(at).folded;
  if (word == QLatin1String("true")) return Put(QStringLiteral("(-1)"));
  if (word == QLatin1String("false")) return Put(QStringLiteral("0"));
  if (word == QLatin1String("mod")) return Put(QStringLiteral("%"));
  if (word == QLatin1String("where") && parens.empty()) End_Target();
  if (word == QLatin1String("into") && result.kind != SqlKind::Insert)
    Fail(QStringLiteral("\"Select into\" kann nicht verwendet werden."));
  Part* part = parts.empty() ? nullptr : &parts.back();
  const bool groups =
      word == QLatin1String("group") || word == QLatin1String("union") || word == QLatin1String("distinct");
  if (part && groups) part->grouped = true;
  if (part && word == QLatin1String("order")) part->ordered = true;
  if (word == QLatin1String("distinctrow")) return Write_Top(at);
  Put(word.toUpper());
  const bool select = word == QLatin1String("select");
  // Behind "union" it goes on with the same rows.
  if (select && (parts.empty() || At(at - 1).IsSign("("))) parts.emplace_back();
  if (select || word == QLatin1String("distinct")) Write_Top(at);
  if (word == QLatin1String("set") && result.kind == SqlKind::Update) wantsTarget = true;
}

void Translator::Write_Function(size_t& at, const SqlFunction& function) {
  if (function.aggregate && !parts.empty()) parts.back().grouped = true;
  ++at;
  Put(QLatin1String(function.name) + QStringLiteral("("));
  Open_Paren({function.isText, false});
}

void Translator::Write_Name(size_t& at) {
  const SqlToken& token = At(at);
  if (At(at + 1).IsSign(".")) {
    const Source* source = Source_Named(token.folded);
    if (!source) Fail(QStringLiteral("Die Tabelle \"%1\" kommt in der Anweisung nicht vor.").arg(token.text));
    const QString name = source->alias.isEmpty() ? source->table->name : source->alias;
    at += 2;
    if (At(at).IsSign("*")) return Put(Quoted(name) + QStringLiteral(".*"));
    const FieldInfo* field = At(at).IsIdentifier() ? Column(*source, At(at).folded) : nullptr;
    if (!field) Fail(QStringLiteral("Die Spalte \"%1\" gibt es nicht.").arg(At(at).text));
    return Put((sources.size() > 1 ? Quoted(name) + u'.' : QString()) + Quoted(field->name));
  }
  if (const FieldInfo* field = Any_Column(token.folded)) {
    const bool joined = At(at + 1).IsSign("&") || (at > 0 && At(at - 1).IsSign("&"));
    return Put(joined ? QStringLiteral("fx_str(%1)").arg(Quoted(field->name)) : Quoted(field->name));
  }
  if (newNames.contains(token.folded)) return Put(Quoted(newNames.value(token.folded)));
  if (At(at + 1).IsSign("(")) Fail(QStringLiteral("Die Funktion \"%1\" gibt es nicht.").arg(token.text));
  Fail(QStringLiteral("Der Name \"%1\" ist unbekannt. Texte stehen in Anführungszeichen.").arg(token.text));
}

void Translator::Write_Word(size_t& at) {
  const auto function = Functions().constFind(At(at).folded);
  if (At(at).kind == Kind::Word && At(at + 1).IsSign("(") && function != Functions().constEnd())
    return Write_Function(at, *function);
  Write_Name(at);
}

void Translator::Write_Token(size_t& at) {
  const SqlToken& token = tokens[at];
  if (wantsTarget) return Write_Target(at);
  if (roles[at] == Role::NewName) return Put(Quoted(token.text));
  if (roles[at] == Role::Table) {
    for (const TableDef& def : defs)
      if (Sql_Folded(def.name) == token.folded) return Put(Quoted(def.name));
  }
  switch (token.kind) {
    case Kind::Text:
      return Put(Text_Literal(token.text));
    case Kind::Number:
      return Put(token.text);
    case Kind::Sign:
      return Write_Sign(at);
    case Kind::Word:
      return Is_Keyword(at) ? Write_Keyword(at) : Write_Word(at);
    case Kind::Name:
      return Write_Name(at);
    case Kind::End:
      break;
  }
}

SqlTranslation Translator::Run() {
  Find_Kind();
  if (result.kind == SqlKind::Delete) Drop_Delete_List();
  Find_Tables();
  for (size_t i = 0; i + 1 < tokens.size(); ++i) Write_Token(i);
  if (wantsTarget) Fail(QStringLiteral("Nach Set fehlt eine Spalte."));
  End_Target();
  const bool grouped = !parts.empty() && parts.front().grouped;
  if (!parts.empty()) End_Part(true);
  result.sql = out.trimmed();
  result.table = sources.front().table->name;
  result.ownRows = result.kind == SqlKind::Select && sources.size() == 1 && !subselect && !grouped;
  return result;
}

}  // namespace

SqlTranslation Translate_Sql(const QString& statement, const std::vector<TableDef>& tables) {
  try {
    return Translator(Sql_Tokens(statement), tables).Run();
  } catch (const Error& error) {
    SqlTranslation failed;
    failed.error = error.text;
    return failed;
  }
}
