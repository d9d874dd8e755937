#include "store/step_name.h"

#include <algorithm>
#include <array>
#include <initializer_list>

#include "store/entry.h"
#include "store/kind_word.h"
#include "store/stored_number.h"

namespace {

// The names of the fixed columns, by their numbers.
const std::array<QString, column::fixedCount>& Names() {
  static const std::array<QString, column::fixedCount> names = {
      "ID", "Eintrag", "Schrift", QStringLiteral("Größe"), "VG", "HG", "RA", "Xmap", "Ymap", "Xline", "Yline", "Typ"};
  return names;
}

bool Is_Fixed(const QString& name, int fixed) {
  const QString& its = Names()[static_cast<size_t>(fixed)];
  return name == its || (name.size() == its.size() && name.compare(its, Qt::CaseInsensitive) == 0);
}

// Nearly always the columns stand in their order.
const Value* Cell(const StepFacts::Row& row, int fixed) {
  const auto index = static_cast<size_t>(fixed);
  if (index < row.size() && Is_Fixed(row[index].first, fixed)) return &row[index].second;
  const auto found =
      std::find_if(row.begin(), row.end(), [fixed](const auto& cell) { return Is_Fixed(cell.first, fixed); });
  return found == row.end() ? nullptr : &found->second;
}

QString Text_In(const StepFacts::Row& row, int fixed) {
  const Value* cell = Cell(row, fixed);
  const auto* text = cell ? std::get_if<QString>(cell) : nullptr;
  return text ? *text : QString();
}

EntryType Type_In(const StepFacts::Row& row) {
  const Value* cell = Cell(row, column::Typ);
  const auto* number = cell ? std::get_if<qint64>(cell) : nullptr;
  return EntryType::Parse(number ? Stored_Number(*number) : 0);
}

EntryRow Entry_Of(const StepFacts::Row& row) {
  EntryRow entry;
  entry.ID = Text_In(row, column::ID);
  entry.Eintrag = Text_In(row, column::Eintrag);
  entry.Schrift = Text_In(row, column::Schrift);
  entry.Typ = Type_In(row).ToNumber();
  return entry;
}

QString In_Brackets(const StepFacts::Row& row) { return ::In_Brackets(Entry_Of(row)); }

// A set of columns: a bit for each of the fixed ones, and one for all others.
constexpr unsigned Bits(std::initializer_list<int> columns) {
  unsigned bits = 0;
  for (const int it : columns) bits |= 1U << it;
  return bits;
}
constexpr int otherColumn = column::fixedCount;

unsigned Changed_Columns(const StepFacts& facts) {
  unsigned changed = 0;
  for (int fixed = 0; fixed < column::fixedCount; ++fixed) {
    const Value *before = Cell(facts.before, fixed), *after = Cell(facts.after, fixed);
    if (after && !(before && *before == *after)) changed |= 1U << fixed;
  }
  for (size_t i = column::fixedCount; i < facts.after.size(); ++i)
    if (i >= facts.before.size() || facts.before[i] != facts.after[i]) changed |= 1U << otherColumn;
  return changed;
}

bool Only(unsigned columns, std::initializer_list<int> of) { return columns != 0 && (columns & ~Bits(of)) == 0; }

QString Switched(const EntryType& before, const EntryType& after) {
  if (before.hidden != after.hidden)
    return after.hidden ? QStringLiteral("ausgeblendet") : QStringLiteral("eingeblendet");
  const bool was = before.mark != Mark::None, is = after.mark != Mark::None;
  if (was != is) return is ? QStringLiteral("markiert") : QStringLiteral("nicht mehr markiert");
  if (before.base != after.base) return QStringLiteral("geändert");
  return QStringLiteral("markiert");
}

// What was done to it, by the columns that changed.
QString Verb(const StepFacts& facts) {
  using namespace column;
  const unsigned columns = Changed_Columns(facts);
  const EntryType type = Type_In(facts.after);
  const bool sized = type.IsFigure() || type.Kind() == EntryKind::PlanSquare || type.Kind() == EntryKind::Scale;
  if (columns == 0) return facts.otherRows > 0 ? QStringLiteral("geändert: Eckpunkte") : QStringLiteral("geändert");
  if ((columns & Bits({Eintrag})) != 0) return QStringLiteral("geändert: Beschriftung");
  if (Only(columns, {Typ})) return Switched(Type_In(facts.before), type);
  if (Only(columns, {ID})) {
    const EntryId was = EntryId::Parse(Text_In(facts.before, ID)), is = EntryId::Parse(Text_In(facts.after, ID));
    if (was.inactive != is.inactive) return is.inactive ? QStringLiteral("deaktiviert") : QStringLiteral("aktiviert");
    if (was.assignment != is.assignment) return QStringLiteral("zugeordnet");
    if (was.group != is.group) return QStringLiteral("gruppiert");
  }
  if (Only(columns, {VG, HG, RA})) return QStringLiteral("gefärbt");
  if (Only(columns, {Xline, Yline, ID}))
    return sized ? QStringLiteral("vergrößert oder verkleinert") : QStringLiteral("geändert: Fußpunkt");
  const bool moved = (columns & Bits({Xmap, Ymap})) != 0;
  if (moved && Only(columns, {Xmap, Ymap})) return QStringLiteral("verschoben");
  if (moved && Only(columns, {Xmap, Ymap, Xline, Yline}))
    return sized ? QStringLiteral("vergrößert oder verkleinert") : QStringLiteral("verschoben");
  if (Only(columns, {Schrift, Groesse}))
    return type.IsText() ? QStringLiteral("geändert: Schrift") : QStringLiteral("geändert: Aussehen");
  return QStringLiteral("geändert");
}

QString Of_One_Row(const StepFacts& facts) {
  const StepFacts::Row& row = facts.after.empty() ? facts.before : facts.after;
  if (EntryId::StoredIsHeader(Text_In(row, column::ID))) return QStringLiteral("Angaben zur Karte geändert");
  const QString what = Kind_Word(Entry_Of(row));
  if (facts.before.empty()) return what + QStringLiteral(" eingefügt") + In_Brackets(row);
  if (facts.after.empty()) return what + QStringLiteral(" gelöscht") + In_Brackets(row);
  const QString verb = Verb(facts), text = In_Brackets(facts.after);
  if (verb == QStringLiteral("geändert: Beschriftung"))
    return (what == QLatin1String("Text") ? what : QStringLiteral("Beschriftung")) + QStringLiteral(" geändert") + text;
  if (const qsizetype colon = verb.indexOf(u':'); colon > 0)
    return verb.mid(colon + 2) + QStringLiteral(" geändert") + text;
  return what + u' ' + verb + text;
}

QString Of_Many_Rows(const StepFacts& facts) {
  const int all = facts.inserted + facts.changed + facts.removed;
  const auto counted = [all](const QString& verb) { return QStringLiteral("%1 Einträge ").arg(all) + verb; };
  if (facts.inserted == all) return counted(QStringLiteral("eingefügt"));
  if (facts.removed == all) return counted(QStringLiteral("gelöscht"));
  return counted(QStringLiteral("geändert"));
}

}  // namespace

QString In_Brackets(const EntryRow& row) {
  constexpr int longest = 30;
  const EntryType type = EntryType::Parse(row.Typ);
  if (type.Kind() == EntryKind::Scale || type.Kind() == EntryKind::NorthArrow) return {};
  QString text = row.Eintrag;
  if (type.Kind() == EntryKind::Picture) text = text.mid(text.lastIndexOf(u'/') + 1);
  if (text.contains(u'\n')) text.truncate(text.indexOf(u'\n'));
  text = std::move(text).simplified();
  if (text.size() > longest) text = text.left(longest - 1) + u'…';
  if (text.isEmpty() || text == QString(QChar(160))) return {};
  return QStringLiteral(" (%1)").arg(text);
}

QString Step_Name(const QString& begun, const StepFacts& facts) {
  if (!begun.isEmpty()) {
    if (!facts.oneRow) return begun;
    const StepFacts::Row& row = facts.after.empty() ? facts.before : facts.after;
    if (EntryId::StoredIsHeader(Text_In(row, column::ID))) return begun;
    return begun + In_Brackets(row);
  }
  if (!facts.columnsAdded.isEmpty()) return QStringLiteral("Spalte hinzugefügt (%1)").arg(facts.columnsAdded.front());
  if (!facts.columnsRemoved.isEmpty()) return QStringLiteral("Spalte gelöscht (%1)").arg(facts.columnsRemoved.front());
  if (facts.oneRow) return Of_One_Row(facts);
  if (facts.inserted + facts.changed + facts.removed > 0) return Of_Many_Rows(facts);
  return facts.otherRows > 0 || !facts.tablesMade.isEmpty() ? QStringLiteral("Eckpunkte geändert")
                                                            : QStringLiteral("Tabelle geändert");
}
