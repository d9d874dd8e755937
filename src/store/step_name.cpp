#include "store/step_name.h"

#include <QStringList>
#include <algorithm>

#include "store/entry.h"
#include "store/kind_word.h"
#include "store/stored_number.h"

namespace {

Value Cell(const StepFacts::Row& row, const QString& name) {
  const auto found = std::find_if(
      row.begin(), row.end(), [&name](const auto& cell) { return cell.first.compare(name, Qt::CaseInsensitive) == 0; });
  return found == row.end() ? Value() : found->second;
}

QString Text_In(const StepFacts::Row& row, const QString& name) {
  const Value cell = Cell(row, name);
  const auto* text = std::get_if<QString>(&cell);
  return text ? *text : QString();
}

EntryType Type_In(const StepFacts::Row& row) {
  const Value cell = Cell(row, QStringLiteral("Typ"));
  const auto* number = std::get_if<qint64>(&cell);
  return EntryType::Parse(number ? Stored_Number(*number) : 0);
}

QString Kind_Of(const StepFacts::Row& row) {
  EntryRow entry;
  entry.ID = Text_In(row, QStringLiteral("ID"));
  entry.Schrift = Text_In(row, QStringLiteral("Schrift"));
  entry.Typ = Type_In(row).ToNumber();
  return Kind_Word(entry);
}

// " (Moor)"; nothing for an entry whose text says nothing.
QString In_Brackets(const StepFacts::Row& row) {
  constexpr int longest = 30;
  const EntryType type = Type_In(row);
  if (type.Kind() == EntryKind::Scale || type.Kind() == EntryKind::NorthArrow) return {};
  QString text = Text_In(row, QStringLiteral("Eintrag"));
  if (type.Kind() == EntryKind::Picture) text = text.mid(text.lastIndexOf(u'/') + 1);
  text = text.section(u'\n', 0, 0).simplified();
  if (text.size() > longest) text = text.left(longest - 1) + u'…';
  if (text.isEmpty() || text == QString(QChar(160))) return {};
  return QStringLiteral(" (%1)").arg(text);
}

QStringList Changed_Columns(const StepFacts& facts) {
  QStringList columns;
  for (const auto& [name, value] : facts.after)
    if (Cell(facts.before, name) != value) columns += name;
  return columns;
}

bool Only(const QStringList& columns, const QStringList& of) {
  return !columns.isEmpty() &&
         std::all_of(columns.begin(), columns.end(), [&of](const QString& column) { return of.contains(column); });
}

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
  const QStringList columns = Changed_Columns(facts);
  const EntryType type = Type_In(facts.after);
  const bool sized = type.IsFigure() || type.Kind() == EntryKind::PlanSquare || type.Kind() == EntryKind::Scale;
  if (columns.isEmpty())
    return facts.otherRows > 0 ? QStringLiteral("geändert: Eckpunkte") : QStringLiteral("geändert");
  if (columns.contains(QLatin1String("Eintrag"))) return QStringLiteral("geändert: Beschriftung");
  if (Only(columns, {"Typ"})) return Switched(Type_In(facts.before), type);
  if (Only(columns, {"ID"})) {
    const EntryId was = EntryId::Parse(Text_In(facts.before, "ID")), is = EntryId::Parse(Text_In(facts.after, "ID"));
    if (was.inactive != is.inactive) return is.inactive ? QStringLiteral("deaktiviert") : QStringLiteral("aktiviert");
    if (was.assignment != is.assignment) return QStringLiteral("zugeordnet");
    if (was.group != is.group) return QStringLiteral("gruppiert");
  }
  if (Only(columns, {"VG", "HG", "RA"})) return QStringLiteral("gefärbt");
  if (Only(columns, {"Xline", "Yline", "ID"}))
    return sized ? QStringLiteral("vergrößert oder verkleinert") : QStringLiteral("geändert: Fußpunkt");
  const bool moved = columns.contains(QLatin1String("Xmap")) || columns.contains(QLatin1String("Ymap"));
  if (moved && Only(columns, {"Xmap", "Ymap"})) return QStringLiteral("verschoben");
  if (moved && Only(columns, {"Xmap", "Ymap", "Xline", "Yline"}))
    return sized ? QStringLiteral("vergrößert oder verkleinert") : QStringLiteral("verschoben");
  if (Only(columns, {"Schrift", QStringLiteral("Größe")}))
    return type.IsText() ? QStringLiteral("geändert: Schrift") : QStringLiteral("geändert: Aussehen");
  return QStringLiteral("geändert");
}

QString Of_One_Row(const StepFacts& facts) {
  const StepFacts::Row& row = facts.after.empty() ? facts.before : facts.after;
  if (EntryId::StoredIsHeader(Text_In(row, QStringLiteral("ID")))) return QStringLiteral("Angaben zur Karte geändert");
  const QString what = Kind_Of(row);
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

QString Step_Name(const QString& begun, const StepFacts& facts) {
  if (!begun.isEmpty()) {
    if (!facts.oneRow) return begun;
    const StepFacts::Row& row = facts.after.empty() ? facts.before : facts.after;
    if (EntryId::StoredIsHeader(Text_In(row, QStringLiteral("ID")))) return begun;
    return begun + In_Brackets(row);
  }
  if (!facts.columnsAdded.isEmpty()) return QStringLiteral("Spalte hinzugefügt (%1)").arg(facts.columnsAdded.front());
  if (!facts.columnsRemoved.isEmpty()) return QStringLiteral("Spalte gelöscht (%1)").arg(facts.columnsRemoved.front());
  if (facts.oneRow) return Of_One_Row(facts);
  if (facts.inserted + facts.changed + facts.removed > 0) return Of_Many_Rows(facts);
  return facts.otherRows > 0 || !facts.tablesMade.isEmpty() ? QStringLiteral("Eckpunkte geändert")
                                                            : QStringLiteral("Tabelle geändert");
}
