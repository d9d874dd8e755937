#include "edit/search_replace.h"

#include <QSet>

#include "edit/bulk_change.h"
#include "hand/activation.h"
#include "platform/message_box.h"
#include "platform/progress.h"
#include "platform/text.h"
#include "state/events.h"
#include "state/global_state.h"
#include "state/map_state.h"
#include "state/mdi_state.h"
#include "state/step.h"
#include "state/table_state.h"
#include "store/entry.h"
#include "store/table_file.h"

namespace {

const QString undoCaption = QStringLiteral("Rückgängig: Ersetzen");
const QString searchTitle = QStringLiteral("Karteneintrag suchen");
const QString replaceTitle = QStringLiteral("Karteneintrag ersetzen");
const QString saveTitle = QStringLiteral("  Karteneinträge sichern");

QString Criteria_Text(const QStringList& lines) {
  QStringList shown;
  for (const QString& line : lines)
    if (!Criterion::Parse(line).column.isEmpty() && !line.section(u'=', 1).trimmed().isEmpty())
      shown.append(line.trimmed());
  return shown.join(u'\n');
}

}  // namespace

Criterion Criterion::Parse(const QString& line) {
  Criterion it;
  const qsizetype equals = line.indexOf(u'=');
  if (equals < 0) return it;
  it.column = line.left(equals).trimmed();
  it.value = line.mid(equals + 1).trimmed();
  if (it.value == QLatin1String("*")) {
    it.kind = Kind::All;
    it.value.clear();
    it.openEnd = true;
    return it;
  }
  const bool start = it.value.startsWith(u'*'), end = it.value.endsWith(u'*');
  if (end) it.value.chop(1);
  if (start) it.value.remove(0, 1);
  it.openEnd = end;
  it.kind = start && end ? Kind::Middle : end ? Kind::Left : start ? Kind::Right : Kind::Whole;
  return it;
}

std::vector<Criterion> Parse_Criteria(const QStringList& lines) {
  std::vector<Criterion> all;
  for (const QString& line : lines) {
    Criterion it = Criterion::Parse(line);
    if (it.column.isEmpty() || (it.value.isEmpty() && !it.openEnd)) continue;
    all.push_back(std::move(it));
  }
  return all;
}

std::optional<Hit> Find_In(const QString& text, const Criterion& criterion, const SearchOptions& options) {
  const Qt::CaseSensitivity sensitivity = options.matchCase ? Qt::CaseSensitive : Qt::CaseInsensitive;
  const QString& wanted = criterion.value;
  const qsizetype length = wanted.size();
  const auto bounded = [&](qsizetype at) {
    if (!options.wholeWords) return true;
    return (at == 0 || text[at - 1].isSpace()) && (at + length == text.size() || text[at + length].isSpace());
  };
  using Kind = Criterion::Kind;
  switch (criterion.kind) {
    case Kind::All:
      return Hit{0, text.size()};
    case Kind::Whole:
      if (text.compare(wanted, sensitivity) != 0) return {};
      return Hit{0, text.size()};
    case Kind::Left:
      if (!text.startsWith(wanted, sensitivity) || !bounded(0)) return {};
      return Hit{0, length};
    case Kind::Right:
      if (!text.endsWith(wanted, sensitivity) || !bounded(text.size() - length)) return {};
      return Hit{text.size() - length, length};
    case Kind::Middle:
      break;
  }
  for (qsizetype at = text.indexOf(wanted, 0, sensitivity); at >= 0; at = text.indexOf(wanted, at + 1, sensitivity))
    if (bounded(at)) return Hit{at, length};
  return {};
}

// Matching -----------------------------------------------------------------------------------------------------------

namespace {

// A criterion with its column looked up.
struct Sought {
  int column = 0;
  Criterion criterion;
};

std::vector<Sought> Look_Up(const Recordset& rows, const std::vector<Criterion>& criteria) {
  std::vector<Sought> all;
  for (const Criterion& criterion : criteria) {
    if (!rows.HasField(criterion.column))
      Raise(errors::fieldNotFound, QStringLiteral("Die Spalte \"%1\" gibt es nicht.").arg(criterion.column));
    Sought it{rows.FieldIndex(criterion.column), criterion};
    // Numbers are compared as texts without blanks; the user writes them with a comma.
    if (rows.Fields()[static_cast<size_t>(it.column)].type != FieldType::Text) {
      it.criterion.value.remove(u' ');
      it.criterion.value.replace(u',', u'.');
    }
    all.push_back(std::move(it));
  }
  return all;
}

bool Matches(const Recordset& rows, const std::vector<Sought>& all, const SearchOptions& options) {
  for (const Sought& it : all)
    if (!Find_In(rows.Text(it.column), it.criterion, options)) return false;
  return true;
}

}  // namespace

bool Match_Row(const Recordset& rows, const std::vector<Criterion>& criteria, const SearchOptions& options) {
  return Matches(rows, Look_Up(rows, criteria), options);
}

int Find_Row(int from, int end, const std::vector<Criterion>& criteria, const SearchOptions& options) {
  const std::vector<Sought> sought = Look_Up(*rsEntries, criteria);
  if (from >= end) return -1;
  const KeepCurrentRow keep;
  rsEntries->MoveTo(from);
  for (int at = from; at < end; ++at, rsEntries->MoveNext())
    if (Matches(*rsEntries, sought, options)) return at;
  return -1;
}

QString SearchState::Found_Text() const { return QStringLiteral("Anzahl der gefundenen Einträge: %1").arg(found); }

QString SearchState::Replaced_Text() const {
  return QStringLiteral("Anzahl der Einträge insgesamt: %1\ngeändert: %2").arg(Entry_Count()).arg(changed);
}

// Searching ----------------------------------------------------------------------------------------------------------

namespace {

void Tell(const QString& text, const QString& title, MsgIcon icon = MsgIcon::Information) {
  Message_Box(text, MsgButtons::Ok, icon, title);
}

void Tell_Search_Error(const Error& error) {
  Tell(QStringLiteral("Beim Filtern der Quelldaten ist ein Fehler aufgetreten.\n") + error.text, searchTitle,
       MsgIcon::Critical);
}

// False, with a message, where no line has a value.
bool Has_Criteria(const SearchState& state) {
  if (!Parse_Criteria(state.search).empty()) return true;
  Tell(QStringLiteral("Definieren Sie bitte mindestens ein Kriterium für die Suche,\nwie z.B. Eintrag = abc"),
       QStringLiteral("Kein Suchkriterium"));
  return false;
}

int Current_Position() {
  if (!Map.CurBookmark.isEmpty() && rsEntries->HasRow(Map.CurBookmark)) rsEntries->SetBookmark(Map.CurBookmark);
  return rsEntries->Position();
}

QString Key_Of(const SearchState& state) {
  return state.search.join(u'\n') + (state.options.matchCase ? u'1' : u'0') + (state.options.wholeWords ? u'1' : u'0');
}

void Begin_If_New(SearchState& state) {
  if (state.lastSearch == Key_Of(state)) return;
  state.lastSearch = Key_Of(state);
  state.found = 0;
  state.goesOn = false;
}

void Tell_End(SearchState& state) {
  const QString criteria = Criteria_Text(state.search);
  if (state.found == 0)
    Tell(QStringLiteral("In der aktuellen Tabelle der Einträge wurde keine Übereinstimmung mit folgenden Kriterien "
                        "gefunden:\n") +
             criteria,
         searchTitle);
  else
    Tell(state.Found_Text() +
             QStringLiteral("\n\nEs wurde keine weitere Übereinstimmung mit folgenden Kriterien gefunden:\n") +
             criteria,
         searchTitle);
  state.lastSearch.clear();  // the next one begins at the top
}

}  // namespace

bool Search_Next(SearchState& state) {
  if (!Has_Criteria(state) || !Table_Is_Open() || !Store_Pending_Text()) return false;
  const bool ended = state.lastSearch.isEmpty() && state.found > 0;
  Begin_If_New(state);
  int hit = -1;
  try {
    const std::vector<Criterion> criteria = Parse_Criteria(state.search);
    const int last = rsEntries->RecordCount(), from = ended ? 1 : std::max(1, Current_Position() + 1);
    hit = Find_Row(from, last, criteria, state.options);
    if (hit < 0 && !state.goesOn) hit = Find_Row(1, std::min(from, last), criteria, state.options);
  } catch (const Error& error) {
    Tell_Search_Error(error);
    return false;
  }
  if (hit < 0) {
    Tell_End(state);
    state.goesOn = false;
    return false;
  }
  rsEntries->MoveTo(hit);
  const QString bookmark = rsEntries->Bookmark();
  if (!Take_Entry(bookmark)) return false;
  ++state.found;
  state.goesOn = true;
  return true;
}

// Replacing ----------------------------------------------------------------------------------------------------------

namespace {

bool Is_Column(const FieldInfo& field, const char* name) {
  return field.name.compare(QLatin1String(name), Qt::CaseInsensitive) == 0;
}

// A colour or frame word that the map can draw; tells it if not.
bool Check_Color(const FieldInfo& field, const QString& value) {
  const bool frame = Is_Column(field, "RA");
  if (!frame && !Is_Column(field, "VG") && !Is_Column(field, "HG")) return true;
  bool isNumber = false;
  const int number = value.toInt(&isNumber);
  const int color = frame ? FrameWord::StoredColor(number) : number;
  if (isNumber && color >= 0 && color <= 15) return true;
  const QString text =
      frame ? QStringLiteral(
                  "Die Rahmenfarbe RA  kann nur Werte zwischen 0-15 plus ein Vielfaches von hundert für die "
                  "Rahmenbreite annehmen.")
      : Is_Column(field, "VG") ? QStringLiteral("Die Vordergurndfarbe VG  kann nur Werte zwischen 0-15 annehmen.")
                               : QStringLiteral("Die Hintergrundfarbe kann nur Werte zwischen 0-15 annehmen.");
  Tell(text, QStringLiteral("Bitte Farbwert korrigieren."), MsgIcon::Warning);
  return false;
}

bool Ask_About_Typ() {
  return Message_Box(QStringLiteral("Ein veränderter Typ kann dazu führen, dass der Eintrag nicht mehr richtig "
                                    "dargestellt wird.\nMöchten Sie den Eintrag trotzdem ersetzen?"),
                     MsgButtons::YesNo, MsgIcon::Warning, QStringLiteral("Eintrag ersetzen?"),
                     MsgDefault::Second) == MsgAnswer::Yes;
}

void Tell_Nothing_Changed() {
  Tell(QStringLiteral("Es wurde kein Eintrag verändert.\nBitte geben Sie an, was ersetzt werden soll, wie z.B. "
                      "Eintrag = abc"),
       replaceTitle);
}

// What a replacement needs to know, checked as far as no row is needed.
struct Plan {
  std::vector<Sought> sought, values;
  SearchOptions options;
  bool toldAboutId = false;
};

std::optional<Plan> Make_Plan(const SearchState& state) {
  Plan plan;
  plan.options = state.options;
  const std::vector<Criterion> values = Parse_Criteria(state.replace);
  if (values.empty()) {
    Tell_Nothing_Changed();
    return {};
  }
  bool changesTyp = false;
  try {
    plan.sought = Look_Up(*rsEntries, Parse_Criteria(state.search));
    plan.values = Look_Up(*rsEntries, values);
  } catch (const Error& error) {
    Tell_Search_Error(error);
    return {};
  }
  for (const Sought& it : plan.values) {
    const FieldInfo& field = rsEntries->Fields()[static_cast<size_t>(it.column)];
    const bool partial = it.criterion.openEnd;
    if (!partial && !Check_Color(field, it.criterion.value)) return {};
    changesTyp = changesTyp || it.column == column::Typ;
  }
  if (changesTyp && !Ask_About_Typ()) return {};
  return plan;
}

// A value that ends in "*" takes the place of what the search has found in this column.
QString New_Value(const Plan& plan, const Sought& it, const QString& old) {
  // The star in front is no part of a value to be written.
  const QString& value = it.criterion.value;
  if (!it.criterion.openEnd) return value;
  for (const Sought& sought : plan.sought) {
    if (sought.column != it.column) continue;
    const std::optional<Hit> hit = Find_In(old, sought.criterion, plan.options);
    if (hit) return old.left(hit->at) + value + old.mid(hit->at + hit->length);
  }
  return value;
}

bool Id_Is_Fixed() {
  const QString id = rsEntries->Text(column::ID);
  for (const char* kind : {"Linie", "Flaeche", "Figur"})
    if (id.contains(QLatin1String(kind))) return true;
  return false;
}

struct NewField {
  int column = 0;
  QString value;
};

// What changes in the current row. Nothing if the row may not be changed so; that was told, of an ID once.
std::vector<NewField> Fields_To_Change(Plan& plan) {
  std::vector<NewField> fields;
  for (const Sought& it : plan.values) {
    const QString old = rsEntries->Text(it.column), value = New_Value(plan, it, old);
    if (value == old) continue;
    if (it.column == column::ID && Id_Is_Fixed()) {
      if (!plan.toldAboutId)
        Tell(QStringLiteral("Die Spalte 'ID' eines Polygons oder einer Figur darf nicht verändert werden!"),
             QStringLiteral("Eintrag wird nicht ersetzt"), MsgIcon::Warning);
      plan.toldAboutId = true;
      return {};
    }
    if (it.criterion.openEnd && !Check_Color(rsEntries->Fields()[static_cast<size_t>(it.column)], value)) return {};
    fields.push_back({it.column, value});
  }
  return fields;
}

void Write_Fields(const std::vector<NewField>& fields) {
  rsEntries->Edit();
  for (const NewField& field : fields) rsEntries->Set(field.column, field.value);
  rsEntries->Update();
}

bool Take_Undo_Point(SearchState& state, std::optional<UndoPoint>& point) {
  const MenuState& undo = Menu(QStringLiteral("mnuReset"));
  // Something else has taken the undo since: this is a first replacement again.
  if (!state.undoTaken || state.restored || !undo.Enabled || undo.Caption != undoCaption) point.emplace(undoCaption);
  state.undoTaken = true;
  state.restored = false;
  return rsEntries != nullptr;
}

}  // namespace

bool Replace_Current(SearchState& state) {
  if (!Has_Criteria(state) || !Table_Is_Open() || !Store_Pending_Text()) return false;
  std::optional<Plan> plan = Make_Plan(state);
  if (!plan) return false;
  if (!On_Current_Entry() || !Matches(*rsEntries, plan->sought, plan->options)) {
    Search_Next(state);
    return false;
  }
  const std::vector<NewField> fields = Fields_To_Change(*plan);
  if (fields.empty()) {
    if (!plan->toldAboutId) Tell_Nothing_Changed();
    return false;
  }
  std::optional<UndoPoint> point;
  if (!Take_Undo_Point(state, point)) return false;
  const bool written = In_Told_Transaction(replaceTitle, [&] {
    if (On_Current_Entry()) Write_Fields(fields);
  });
  if (point && !written) state.undoTaken = false;
  if (!written) return false;
  ++state.changed;
  Show_Changed_Entries();
  return true;
}

int Replace_All(SearchState& state) {
  if (!Has_Criteria(state) || !Ready_For_Many()) return 0;
  const UndoStep step(QStringLiteral("Ersetzen"));
  std::optional<Plan> plan = Make_Plan(state);
  std::optional<UndoPoint> point;
  if (!plan || !Take_Undo_Point(state, point)) return 0;
  const BusyPointer busy;
  int found = 0, changed = 0;
  bool stopped = false;
  const bool written = In_Told_Transaction(replaceTitle, [&] {
    Progress progress(replaceTitle, rsEntries->RecordCount());
    For_Each_Entry([&] {
      if ((stopped = !progress.Advance())) return Walk::Stop;
      if (!Matches(*rsEntries, plan->sought, plan->options)) return Walk::On;
      ++found;
      const std::vector<NewField> fields = Fields_To_Change(*plan);
      if (fields.empty()) return Walk::On;
      Write_Fields(fields);
      ++changed;
      return Walk::On;
    });
    return !stopped;
  });
  if (point && (!written || changed == 0)) state.undoTaken = false;
  if (!written) return 0;
  state.found = found;
  state.changed += changed;
  state.goesOn = false;
  if (changed > 0) Show_Changed_Entries();
  Tell_End(state);
  return changed;
}

void Take_Replacements_Back(SearchState& state) {
  if (!state.undoTaken || state.restored) {
    Tell(QStringLiteral("Tabelle der Einträge bereits wieder hergestellt!"), saveTitle);
    return;
  }
  const MenuState& undo = Menu(QStringLiteral("mnuReset"));
  if (!undo.Enabled || undo.Caption != undoCaption) {
    Tell(QStringLiteral("Einträge nicht wiederhergestellt"), QStringLiteral("Fehler"), MsgIcon::Critical);
    return;
  }
  Drop_Hand();
  Undo_Last();
  state.restored = true;
  state.changed = 0;
}
