#include "edit/cell_rules.h"

#include <algorithm>
#include <array>
#include <limits>

#include "platform/text.h"
#include "store/entry.h"

namespace {

constexpr int least = std::numeric_limits<qint16>::min(), most = std::numeric_limits<qint16>::max();

bool Is_Whole(const FieldInfo& field) { return field.type == FieldType::Integer || field.type == FieldType::Long; }

QString Wrong_Kind() { return QStringLiteral("Falscher Datentyp in der Tabelle.\nBitte ändern!"); }

bool Is_Known(const EntryType& type) {
  static constexpr std::array known = {0, 1, 2, 3, 4, 5, 7, 11, 12, 15, 16, 17, 18, 20, 21, 22, 23, 24, 25, 40};
  return std::find(known.begin(), known.end(), type.base) != known.end();
}

QString Keyword_Of(const QString& id) {
  const EntryId parsed = EntryId::Parse(id);
  for (const char* word : {"Text", "Bild", "Gruppe", "Fig", "Lin", "Fl", "Poly", "Plan", "Maßstab", "Np"})
    if (parsed.name.contains(QString::fromUtf8(word))) return QString::fromUtf8(word);
  return {};
}

QString Id_Problem(const EntryType& type, const QString& former, const QString& text) {
  if (EntryId::StoredIsHeader(text))
    return QStringLiteral("Mit einem Ausrufezeichen beginnt nur die Kopfzeile der Tabelle.\nBitte ändern!");
  const QString table = type.HasVertices() ? EntryId::Parse(former).TableName() : QString();
  if (table.isEmpty() || EntryId::Parse(text).TableName() == table) return {};
  return QStringLiteral(
             "Unter dem Namen '%1' sind die Eckpunkte dieses Eintrags gespeichert.\nDer Name muss "
             "erhalten bleiben.")
      .arg(table);
}

QString Type_Problem(const EntryType& former, const EntryType& next) {
  if (!Is_Known(next)) return QStringLiteral("Karteneintrag: Unbekannter Typ = %1").arg(next.base);
  if (former.HasVertices() == next.HasVertices() && (!next.HasVertices() || former.IsPolygon() == next.IsPolygon()))
    return {};
  return QStringLiteral(
      "Linien, Flächen und freie Figuren haben eigene Eckpunkte.\nIhr Typ lässt sich nur "
      "zwischen eckig und rund ändern (4 und 40, 24 und 25).");
}

QString Frame_Problem(const EntryType& type, qint64 number) {
  // A scale bar keeps its direction there.
  if (type.Kind() == EntryKind::Scale || number < 0 || FrameWord::StoredColor(number) <= 15) return {};
  return QStringLiteral(
      "Die Rahmenfarbe RA  kann nur Werte zwischen 0-15 plus ein Vielfaches von hundert für die "
      "Rahmenbreite annehmen.");
}

}  // namespace

QString Value_Problem(const FieldInfo& field, const QString& text, Value& value) {
  if (field.type == FieldType::Text) {
    if (field.size > 0 && text.size() > field.size)
      return QStringLiteral("Der Text ist zu lang: %1 Zeichen.\nDie Spalte '%2' kann höchstens %3 Zeichen aufnehmen.")
          .arg(text.size())
          .arg(field.name)
          .arg(field.size);
    value = text;
    return {};
  }
  const auto typed = Number_Typed(text);
  return typed ? Value_Problem(field, *typed, value) : Wrong_Kind();
}

QString Value_Problem(const FieldInfo& field, double number, Value& value) {
  if (Is_Whole(field) && number != Int(number)) return Wrong_Kind();
  const bool isLong = field.type == FieldType::Long;
  if (field.type == FieldType::Integer && (number < least || number > most))
    return QStringLiteral("Die Spalte '%1' kann nur ganze Zahlen von %2 bis %3 aufnehmen.\nBitte ändern!")
        .arg(field.name)
        .arg(least)
        .arg(most);
  if (isLong && (number < std::numeric_limits<qint32>::min() || number > std::numeric_limits<qint32>::max()))
    return QStringLiteral("Die Zahl ist zu groß für die Spalte '%1'.\nBitte ändern!").arg(field.name);
  if (Is_Whole(field))
    value = static_cast<qint64>(number);
  else
    value = number;
  return {};
}

QString Meaning_Problem(const EntryType& type, const QString& id, int number, const Value& value) {
  switch (number) {
    case column::ID:
      return Id_Problem(type, id, std::get<QString>(value));
    case column::RA:
      return Frame_Problem(type, std::get<qint64>(value));
    case column::Typ:
      return Type_Problem(type, EntryType::Parse(std::get<qint64>(value)));
    default:
      return {};
  }
}

QString Lost_Keyword(const QString& stored, const QString& other) {
  const QString word = Keyword_Of(stored);
  return word.isEmpty() || Keyword_Of(other) == word ? QString() : word;
}
