#include <sqlite3.h>

#include <cmath>
#include <limits>

#include "platform/database_inner.h"
#include "platform/text.h"

// Functions for the statements of the user, under names of their own ("fx_..."), and LIKE with the wildcards
// "*", "?", "#" and "[a-z]".

namespace database_inner {
namespace {

using Arguments = sqlite3_value**;

bool Is_Null(sqlite3_value* value) { return sqlite3_value_type(value) == SQLITE_NULL; }

QString Text_Argument(sqlite3_value* value) {
  switch (sqlite3_value_type(value)) {
    case SQLITE_NULL:
      return {};
    case SQLITE_FLOAT:
      return Number_Text(sqlite3_value_double(value));
    default:
      return QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_value_text(value)), sqlite3_value_bytes(value));
  }
}

void Give(sqlite3_context* context, const QString& text) {
  const QByteArray bytes = text.toUtf8();
  sqlite3_result_text(context, bytes.constData(), static_cast<int>(bytes.size()), SQLITE_TRANSIENT);
}

void Give_Error(sqlite3_context* context, int number) {
  const QByteArray text = Error_Text(number).toUtf8();
  sqlite3_result_error(context, text.constData(), static_cast<int>(text.size()));
}

// Like ---------------------------------------------------------------------------------------------------------------

struct Part {
  enum class Kind { Letter, Any, Digit, Class, Rest } kind = Kind::Letter;  // Rest: "*"
  QChar letter;
  bool negated = false;
  std::vector<std::pair<QChar, QChar>> ranges;

  bool Takes(QChar it) const {
    switch (kind) {
      case Kind::Letter:
        return it == letter;
      case Kind::Digit:
        return it >= u'0' && it <= u'9';
      case Kind::Class:
        for (const auto& [from, to] : ranges)
          if (it >= from && it <= to) return !negated;
        return negated;
      default:
        return true;
    }
  }
};

char Lower_Byte(char letter) { return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter + 32) : letter; }

// The pattern of the statement that runs; one statement mostly has one.
struct LikePattern {
  QByteArray source;
  bool known = false;
  std::vector<Part> parts;
  QByteArray middle;  // "*middle*" of plain letters: looked for byte by byte
  bool plainMiddle = false;

  void Read(const QByteArray& bytes);
  void Read_Class(const QString& text, qsizetype& at);
  bool Matches(const QString& text) const;
  bool Has_Middle(const char* text, int size) const;
};

void LikePattern::Read_Class(const QString& text, qsizetype& at) {
  const qsizetype end = text.indexOf(u']', at + 1);
  if (end < 0) {  // no class at all
    parts.push_back({Part::Kind::Letter, text[at], false, {}});
    return;
  }
  Part part{Part::Kind::Class, {}, false, {}};
  qsizetype i = at + 1;
  if (i < end && text[i] == u'!') part.negated = ++i > 0;
  for (; i < end; ++i) {
    if (i + 2 < end && text[i + 1] == u'-') {
      part.ranges.emplace_back(text[i], text[i + 2]);
      i += 2;
    } else {
      part.ranges.emplace_back(text[i], text[i]);
    }
  }
  parts.push_back(std::move(part));
  at = end;
}

void LikePattern::Read(const QByteArray& bytes) {
  source = bytes;
  known = true;
  parts.clear();
  const QString text = QString::fromUtf8(bytes).toLower();
  for (qsizetype i = 0; i < text.size(); ++i) {
    const QChar it = text[i];
    if (it == u'*') {
      if (parts.empty() || parts.back().kind != Part::Kind::Rest) parts.push_back({Part::Kind::Rest, {}, false, {}});
    } else if (it == u'?') {
      parts.push_back({Part::Kind::Any, {}, false, {}});
    } else if (it == u'#') {
      parts.push_back({Part::Kind::Digit, {}, false, {}});
    } else if (it == u'[') {
      Read_Class(text, i);
    } else {
      parts.push_back({Part::Kind::Letter, it, false, {}});
    }
  }
  middle.clear();
  plainMiddle = parts.size() > 2 && parts.front().kind == Part::Kind::Rest && parts.back().kind == Part::Kind::Rest;
  for (size_t i = 1; plainMiddle && i + 1 < parts.size(); ++i) {
    plainMiddle = parts[i].kind == Part::Kind::Letter && parts[i].letter.unicode() < 128;
    middle += parts[i].letter.toLatin1();
  }
}

bool LikePattern::Has_Middle(const char* text, int size) const {
  const auto length = static_cast<int>(middle.size());
  for (int i = 0; i + length <= size; ++i) {
    int k = 0;
    while (k < length && Lower_Byte(text[i + k]) == middle[k]) ++k;
    if (k == length) return true;
  }
  return false;
}

// After a "*" only the last one has to be tried anew.
bool LikePattern::Matches(const QString& text) const {
  size_t part = 0, restart = 0;
  qsizetype at = 0, restartAt = -1;
  while (at < text.size()) {
    if (part < parts.size() && parts[part].kind == Part::Kind::Rest) {
      restart = ++part;
      restartAt = at;
    } else if (part < parts.size() && parts[part].Takes(text[at])) {
      ++part;
      ++at;
    } else if (restartAt >= 0) {
      part = restart;
      at = ++restartAt;
    } else {
      return false;
    }
  }
  while (part < parts.size() && parts[part].kind == Part::Kind::Rest) ++part;
  return part == parts.size();
}

// like(pattern, text)
void Like(sqlite3_context* context, int, Arguments arguments) {
  if (Is_Null(arguments[0]) || Is_Null(arguments[1])) return sqlite3_result_null(context);
  auto& pattern = *static_cast<LikePattern*>(sqlite3_user_data(context));
  const auto* wanted = reinterpret_cast<const char*>(sqlite3_value_text(arguments[0]));
  const int wantedSize = sqlite3_value_bytes(arguments[0]);
  if (!pattern.known || pattern.source.size() != wantedSize ||
      std::char_traits<char>::compare(pattern.source.constData(), wanted, static_cast<size_t>(wantedSize)) != 0)
    pattern.Read(QByteArray(wanted, wantedSize));
  if (pattern.plainMiddle && sqlite3_value_type(arguments[1]) == SQLITE_TEXT) {
    const auto* text = reinterpret_cast<const char*>(sqlite3_value_text(arguments[1]));
    return sqlite3_result_int(context, pattern.Has_Middle(text, sqlite3_value_bytes(arguments[1])));
  }
  sqlite3_result_int(context, pattern.Matches(Text_Argument(arguments[1]).toLower()));
}

// Texts --------------------------------------------------------------------------------------------------------------

int Count_Argument(sqlite3_value* value) {
  return static_cast<int>(std::clamp<qint64>(sqlite3_value_int64(value), 0, std::numeric_limits<int>::max()));
}

void Left(sqlite3_context* context, int, Arguments arguments) {
  Give(context, Text_Argument(arguments[0]).left(Count_Argument(arguments[1])));
}

void Right(sqlite3_context* context, int, Arguments arguments) {
  Give(context, Text_Argument(arguments[0]).right(Count_Argument(arguments[1])));
}

void Mid(sqlite3_context* context, int count, Arguments arguments) {
  const int from = std::max(1, Count_Argument(arguments[1]));
  Give(context, Text_Argument(arguments[0]).mid(from - 1, count > 2 ? Count_Argument(arguments[2]) : -1));
}

// [start,] text, wanted; from 1, 0 = not found.
void In_Str(sqlite3_context* context, int count, Arguments arguments) {
  const int from = count > 2 ? std::max(1, Count_Argument(arguments[0])) : 1;
  const QString text = Text_Argument(arguments[count - 2]), wanted = Text_Argument(arguments[count - 1]);
  sqlite3_result_int64(context, text.indexOf(wanted, from - 1, Qt::CaseInsensitive) + 1);
}

void Upper(sqlite3_context* context, int, Arguments arguments) { Give(context, Text_Argument(arguments[0]).toUpper()); }
void Lower(sqlite3_context* context, int, Arguments arguments) { Give(context, Text_Argument(arguments[0]).toLower()); }
void Str(sqlite3_context* context, int, Arguments arguments) { Give(context, Text_Argument(arguments[0])); }
void Length(sqlite3_context* context, int, Arguments arguments) {
  if (Is_Null(arguments[0])) return sqlite3_result_null(context);
  sqlite3_result_int64(context, Text_Argument(arguments[0]).size());
}

void Format_Number(sqlite3_context* context, int, Arguments arguments) {
  Give(context, Format(Val_Comma(Text_Argument(arguments[0])), Text_Argument(arguments[1])));
}

// Numbers ------------------------------------------------------------------------------------------------------------

void Value_Of_Text(sqlite3_context* context, int, Arguments arguments) {
  sqlite3_result_double(context, Val(Text_Argument(arguments[0])));
}
void Is_Null_Function(sqlite3_context* context, int, Arguments arguments) {
  sqlite3_result_int(context, Is_Null(arguments[0]) ? -1 : 0);
}
void Int_Function(sqlite3_context* context, int, Arguments arguments) {
  if (!Is_Null(arguments[0])) sqlite3_result_double(context, Int(sqlite3_value_double(arguments[0])));
}
void Fix_Function(sqlite3_context* context, int, Arguments arguments) {
  if (!Is_Null(arguments[0])) sqlite3_result_double(context, Fix(sqlite3_value_double(arguments[0])));
}
// Halves go to the even neighbour.
void Round(sqlite3_context* context, int count, Arguments arguments) {
  if (Is_Null(arguments[0])) return;
  const double scale = std::pow(10.0, count > 1 ? std::clamp(sqlite3_value_int(arguments[1]), 0, 15) : 0);
  const double value = sqlite3_value_double(arguments[0]), scaled = std::nearbyint(value * scale);
  // So large a number has no places behind its point.
  sqlite3_result_double(context, std::isfinite(scaled) ? scaled / scale : value);
}

// Values for a column: as Recordset::Set takes them.

void Fit(sqlite3_context* context, sqlite3_value* argument, const FieldInfo& field) {
  Value value;
  if (sqlite3_value_type(argument) == SQLITE_INTEGER)
    value = static_cast<qint64>(sqlite3_value_int64(argument));
  else if (sqlite3_value_type(argument) == SQLITE_FLOAT)
    value = sqlite3_value_double(argument);
  else if (!Is_Null(argument))
    value = Text_Argument(argument);
  try {
    Fit_Value(field, value);
  } catch (const Error& error) {
    return Give_Error(context, error.number);
  }
  if (const auto* whole = std::get_if<qint64>(&value))
    sqlite3_result_int64(context, *whole);
  else if (const auto* real = std::get_if<double>(&value))
    sqlite3_result_double(context, *real);
  else if (const auto* text = std::get_if<QString>(&value))
    Give(context, *text);
  else
    sqlite3_result_null(context);
}

void Fit_Short(sqlite3_context* context, int, Arguments arguments) {
  Fit(context, arguments[0], {{}, FieldType::Integer, 0});
}
void Fit_Long(sqlite3_context* context, int, Arguments arguments) {
  Fit(context, arguments[0], {{}, FieldType::Long, 0});
}
void Fit_Double(sqlite3_context* context, int, Arguments arguments) {
  Fit(context, arguments[0], {{}, FieldType::Double, 0});
}
void Fit_Text(sqlite3_context* context, int, Arguments arguments) {
  Fit(context, arguments[0], {{}, FieldType::Text, sqlite3_value_int(arguments[1])});
}

struct Function {
  const char* name;
  int arguments;
  void (*work)(sqlite3_context*, int, Arguments);
};

constexpr Function functions[] = {
    {"fx_left", 2, Left},
    {"fx_right", 2, Right},
    {"fx_mid", 2, Mid},
    {"fx_mid", 3, Mid},
    {"fx_instr", 2, In_Str},
    {"fx_instr", 3, In_Str},
    {"fx_ucase", 1, Upper},
    {"fx_lcase", 1, Lower},
    {"fx_str", 1, Str},
    {"fx_len", 1, Length},
    {"fx_format", 2, Format_Number},
    {"fx_val", 1, Value_Of_Text},
    {"fx_isnull", 1, Is_Null_Function},
    {"fx_int", 1, Int_Function},
    {"fx_fix", 1, Fix_Function},
    {"fx_round", 1, Round},
    {"fx_round", 2, Round},
    {"fx_short", 1, Fit_Short},
    {"fx_long", 1, Fit_Long},
    {"fx_double", 1, Fit_Double},
    {"fx_text", 2, Fit_Text},
};

}  // namespace

int Register_Functions(sqlite3* db) {
  constexpr int flags = SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_DIRECTONLY;
  auto* pattern = new LikePattern;
  int rc = sqlite3_create_function_v2(db, "like", 2, flags, pattern, Like, nullptr, nullptr,
                                      [](void* it) { delete static_cast<LikePattern*>(it); });
  for (const Function& function : functions)
    if (rc == SQLITE_OK)
      rc = sqlite3_create_function_v2(db, function.name, function.arguments, flags, nullptr, function.work, nullptr,
                                      nullptr, nullptr);
  return rc;
}

}  // namespace database_inner
