#include "edit/table_edit.h"

#include <QSet>
#include <algorithm>
#include <array>
#include <limits>

#include "edit/figure_extras.h"
#include "hand/activation.h"
#include "objects/scale_bar.h"
#include "platform/message_box.h"
#include "platform/text.h"
#include "state/events.h"
#include "state/global_state.h"
#include "state/map_state.h"
#include "state/mdi_state.h"
#include "state/table_state.h"
#include "store/entry.h"
#include "store/entry_edit.h"
#include "store/table_file.h"
#include "view/view.h"

namespace {

const QString errorTitle = QStringLiteral("Fehler in der Tabelle");
const QString on = QStringLiteral("On"), off = QStringLiteral("Off");
constexpr int least = std::numeric_limits<qint16>::min(), most = std::numeric_limits<qint16>::max();

}  // namespace

void Table_On_Off(const QString& state) {
  frmMDI.TblVisible = frmMDI.MapOpen && state == on;
  if (frmMDI.TblVisible) Tbl.Minimized = false;
  Tbl.Switched = TableSwitch::ByUser;
  Arrange_Windows();
}

void Toggle_Table() { Table_On_Off(frmMDI.TblVisible && !Tbl.Minimized ? off : on); }

void Choose_Arrangement() {
  if (frmMDI.TblVisible) {
    Tbl.MapFilledWindow = Tbl.MapFilledWindow || Map.Maximized;
    Map.Maximized = false;
  } else if (Tbl.MapFilledWindow) {
    Tbl.MapFilledWindow = false;
    Map.Maximized = true;
  }
  Tbl.WantPlace = frmMDI.TblVisible;
}

void Arrange_Windows() {
  Choose_Arrangement();
  events.StateChanged.Emit();  // the window takes its state before the layout measures it
  if (frmMDI.MapOpen) Layout_Map();
}

void Table_Moved_Off() {
  Message_Box(
      QStringLiteral(" Die Liste wurde über den Rand der Anwendung\n hinausbewegt und damit ausgeblendet.\n Sie kann "
                     "mit folgendem Menü wieder eingeblendet werden:\n Map - Eintrag: Liste einblenden\n oder: Drücken "
                     "Sie die Taste F4,\n nachdem Sie diese Meldung bestätigt haben."),
      MsgButtons::Ok, MsgIcon::Information);
  Table_On_Off(off);
  Tbl.Switched = TableSwitch::MovedOff;
  events.StateChanged.Emit();
}

void Map_Was_Maximized(bool maximized) {
  if (!maximized || !frmMDI.TblVisible) return;
  frmMDI.TblVisible = false;
  Tbl.MapFilledWindow = false;  // the map fills the window by the user's own wish
  Tbl.Switched = TableSwitch::ByUser;
}

// The row the grid stands on ------------------------------------------------------------------------------------------

QString Cell_Text(const Value& value) {
  if (const auto* text = std::get_if<QString>(&value)) return *text;
  if (const auto* whole = std::get_if<qint64>(&value)) return QString::number(*whole);
  if (const auto* real = std::get_if<double>(&value)) return Number_Text(*real).replace(u'.', u',');
  return {};
}

bool Is_Damaged(const Recordset& rows) {
  if (std::holds_alternative<QString>(rows.Raw(column::Groesse))) return true;
  for (int number = column::VG; number < column::fixedCount; ++number) {
    const Value& value = rows.Raw(number);
    if (std::holds_alternative<QString>(value)) return true;
    const qint64 whole = rows.Integer(number);
    if (whole < least || whole > most) return true;
  }
  return false;
}

QString Row_Values(const Recordset& rows) {
  static const std::array<const char*, column::fixedCount> labels = {
      "ID:      ", "Eintrag: ", "Schrift: ", "Größe:   ", "VG-Farbe:", "HG-Farbe:",
      "RA-Farbe:", "Xmap:    ", "Ymap:    ", "Xline:   ", "Yline:   ", "Typ:     "};
  QStringList lines;
  for (int number = 0; number < column::fixedCount; ++number)
    lines << QString::fromUtf8(labels[static_cast<size_t>(number)]) + u'\t' + Cell_Text(rows.Raw(number));
  return lines.join(u'\n');
}

namespace {

// Puts rsEntries on the row; false where it has none of that key.
bool Go_To(qint64 key) {
  const QString bookmark = QString::number(key);
  if (!rsEntries || !rsEntries->HasRow(bookmark)) return false;
  rsEntries->SetBookmark(bookmark);
  return true;
}

// A row whose repair was refused is not asked about again while it is as it is.
QString Refused_Name() { return TableFile + u'\n' + Map.CurBookmark + u'\n' + Row_Values(*rsEntries); }

bool Repair_If_Wanted() {
  if (Tbl.RepairRefused.contains(Refused_Name())) return false;
  const QString text =
      Row_Values(*rsEntries) + QStringLiteral("\n\nSoll FLURAX den fehlerhaften Datensatz reparieren?");
  if (Message_Box(text, MsgButtons::YesNo, MsgIcon::Warning, errorTitle, MsgDefault::Second) != MsgAnswer::Yes) {
    Tbl.RepairRefused << Refused_Name();
    return false;
  }
  Message_Box(QStringLiteral("Fehlerhafter Datensatz wird reparier\nund auf Standartwerte gesetzt."), MsgButtons::Ok,
              MsgIcon::Information, errorTitle);
  rsEntries->SetBookmark(Map.CurBookmark);  // the boxes may have let others move it
  if (!Repair_Row()) return false;
  events.TableChanged.Emit();
  events.RedrawWanted.Emit();
  return true;
}

}  // namespace

bool Is_Header_Row(qint64 key) { return rsEntries && rsEntries->PositionOf(key) == 0; }

void Row_Changed(qint64 key) {
  if (!Go_To(key)) return;
  const QString bookmark = QString::number(key);
  Map.CurBookmark = bookmark;
  if (!Is_Header_Row(key) && Is_Damaged(*rsEntries)) {
    if (!Repair_If_Wanted()) return;
    if (!Go_To(key)) return;
  }
  if (Is_Header_Row(key)) {
    events.CurrentRowChanged.Emit();
    return;
  }
  Take_Entry(bookmark);
}

// Changing a cell -----------------------------------------------------------------------------------------------------

void Warn_Before_Edit() {
  if (Tbl.EditWarned) return;
  Tbl.EditWarned = true;
  Message_Box(QStringLiteral("Vorsicht! - Veränderungen in der Tabelle können Fehler verursachen.\nErstellen Sie eine "
                             "Sicherungskopie (Menue 'Einträge sichern als ...'), bevor Sie die Tabelle ändern."),
              MsgButtons::Ok, MsgIcon::Warning);
}

namespace {

bool Refuse(const QString& text) {
  Message_Box(text, MsgButtons::Ok, MsgIcon::Warning, errorTitle);
  return false;
}

bool Is_Whole(const FieldInfo& field) { return field.type == FieldType::Integer || field.type == FieldType::Long; }

// The typed text as a value of the column; False with a message where it is none.
bool Value_Of(const FieldInfo& field, const QString& text, Value& value) {
  if (field.type == FieldType::Text) {
    if (field.size > 0 && text.size() > field.size)
      return Refuse(QStringLiteral("Der Text ist zu lang: %1 Zeichen.\nDie Spalte '%2' kann höchstens %3 Zeichen "
                                   "aufnehmen.")
                        .arg(text.size())
                        .arg(field.name)
                        .arg(field.size));
    value = text;
    return true;
  }
  const auto typed = Number_Typed(text);
  if (!typed || (Is_Whole(field) && *typed != Int(*typed)))
    return Refuse(QStringLiteral("Falscher Datentyp in der Tabelle.\nBitte ändern!"));
  const double number = *typed;
  if (field.type == FieldType::Integer && (number < least || number > most))
    return Refuse(QStringLiteral("Die Spalte '%1' kann nur ganze Zahlen von %2 bis %3 aufnehmen.\nBitte ändern!")
                      .arg(field.name)
                      .arg(least)
                      .arg(most));
  if (Is_Whole(field))
    value = static_cast<qint64>(number);
  else
    value = number;
  return true;
}

bool Is_Known(const EntryType& type) {
  static constexpr std::array known = {0, 1, 2, 3, 4, 5, 7, 11, 12, 15, 16, 17, 18, 20, 21, 22, 23, 24, 25, 40};
  return std::find(known.begin(), known.end(), type.base) != known.end();
}

// The word by which the program knows what a row is; empty for a free name.
QString Keyword_Of(const QString& id) {
  const EntryId parsed = EntryId::Parse(id);
  for (const char* word : {"Text", "Bild", "Gruppe", "Fig", "Lin", "Fl", "Poly", "Plan", "Maßstab", "Np"})
    if (parsed.name.contains(QString::fromUtf8(word))) return QString::fromUtf8(word);
  return {};
}

bool Check_Id(const EntryType& type, const QString& former, const QString& text) {
  if (EntryId::StoredIsHeader(text))
    return Refuse(QStringLiteral("Mit einem Ausrufezeichen beginnt nur die Kopfzeile der Tabelle.\nBitte ändern!"));
  if (type.HasVertices()) {
    const QString table = EntryId::Parse(former).TableName();
    if (EntryId::Parse(text).TableName() == table) return true;
    return Refuse(QStringLiteral("Unter dem Namen '%1' sind die Eckpunkte dieses Eintrags gespeichert.\nDer Name muss "
                                 "erhalten bleiben.")
                      .arg(table));
  }
  const QString word = Keyword_Of(former);
  if (word.isEmpty() || Keyword_Of(text) == word) return true;
  return Message_Box(QStringLiteral("Am Schlüsselwort '%1' in der Spalte 'ID' erkennt das Programm die Art des "
                                    "Eintrags.\nEs sollte nicht umbenannt werden.\n\nSoll der Name trotzdem geändert "
                                    "werden?")
                         .arg(word),
                     MsgButtons::YesNo, MsgIcon::Warning, errorTitle, MsgDefault::Second) == MsgAnswer::Yes;
}

bool Check_Type(const EntryType& former, const EntryType& next) {
  if (!Is_Known(next)) return Refuse(QStringLiteral("Karteneintrag: Unbekannter Typ = %1").arg(next.base));
  if (former.HasVertices() != next.HasVertices() || (next.HasVertices() && former.IsPolygon() != next.IsPolygon()))
    return Refuse(
        QStringLiteral("Linien, Flächen und freie Figuren haben eigene Eckpunkte.\nIhr Typ lässt sich nur "
                       "zwischen eckig und rund ändern (4 und 40, 24 und 25)."));
  return true;
}

bool Check_Frame(const EntryType& type, qint64 number) {
  // A scale bar keeps its direction there.
  if (type.Kind() == EntryKind::Scale || number < 0 || FrameWord::StoredColor(number) <= 15) return true;
  return Refuse(
      QStringLiteral("Die Rahmenfarbe RA  kann nur Werte zwischen 0-15 plus ein Vielfaches von hundert für die "
                     "Rahmenbreite annehmen."));
}

// What the column means to the program, for the current row.
bool Check_Meaning(int number, const Value& value) {
  const EntryType type = Type_Here();
  switch (number) {
    case column::ID:
      return Check_Id(type, rsEntries->Text(column::ID), std::get<QString>(value));
    case column::RA:
      return Check_Frame(type, std::get<qint64>(value));
    case column::Typ:
      return Check_Type(type, EntryType::Parse(static_cast<int>(std::get<qint64>(value))));
    default:
      return true;
  }
}

void Row_Was_Edited(const QString& bookmark) {
  Tbl.Tag = TableTag::Dirty;
  const EntryType type = Type_Here();
  if (type.Kind() == EntryKind::Scale) Read_Scale(Read_Entry(*rsEntries));
  frmMDI.HasHidden = frmMDI.HasHidden || type.hidden;
  // The controls over the entry show the new values.
  if (bookmark == Map.CurBookmark && Entry_In_Hand()) Activate_Entry();
  events.TableChanged.Emit();
  events.ChangedEntriesWanted.Emit();
}

}  // namespace

CellEdit Edit_Cell(qint64 key, int number, const QString& text) {
  const KeepCurrentRow keep;
  if (!Go_To(key)) return CellEdit::Refused;
  if (Is_Header_Row(key)) {
    Refuse(QStringLiteral("Die Kopfzeile der Tabelle wird vom Programm verwaltet."));
    return CellEdit::Refused;
  }
  if (Cell_Text(rsEntries->Raw(number)) == text) return CellEdit::Unchanged;
  Warn_Before_Edit();
  try {
    const FieldInfo field = rsEntries->Fields()[static_cast<size_t>(number)];
    Value value;
    if (!Value_Of(field, text, value) || !Go_To(key) || !Check_Meaning(number, value)) return CellEdit::Refused;
    if (!Go_To(key)) return CellEdit::Refused;
    rsEntries->Edit();
    rsEntries->Set(number, value);
    rsEntries->Update();
  } catch (const Error& error) {
    // A full disk, a row that has gone: the cell keeps its value.
    Refuse(Error_Message(error, QStringLiteral("Die Änderung wurde nicht gespeichert.")));
    return CellEdit::Refused;
  }
  Row_Was_Edited(QString::number(key));
  return CellEdit::Written;
}

// Deleting rows -------------------------------------------------------------------------------------------------------

namespace {

bool Ask_To_Delete_Rows(const QSet<qint64>& going) {
  QString text = QStringLiteral("%1 Einträge löschen ?").arg(going.size());
  if (going.size() == 1 && Go_To(*going.begin()))
    text = Entry_Name() + rsEntries->Text(column::Eintrag) + QStringLiteral(" löschen ?");
  return Message_Box(text, MsgButtons::YesNo, MsgIcon::Question, Tbl.DBGrid1.Caption, MsgDefault::Second) ==
         MsgAnswer::Yes;
}

void Rows_Were_Deleted(int position) {
  // The eye stays where the rows were.
  rsEntries->MoveTo(std::clamp(position, 0, rsEntries->RecordCount() - 1));
  Map.CurBookmark = rsEntries->Bookmark();
  events.TableChanged.Emit();
  events.CurrentRowChanged.Emit();
  events.RedrawWanted.Emit();
}

}  // namespace

bool Delete_Rows(const std::vector<qint64>& keys) {
  if (!rsEntries) return false;
  if (Entry_In_Hand() && !End_Entry()) return false;
  QSet<qint64> going;
  int position = rsEntries->RecordCount();
  for (const qint64 key : keys) {
    const int at = rsEntries->PositionOf(key);
    if (at < 1) continue;
    going << key;
    position = std::min(position, at);
  }
  if (going.isEmpty()) {
    if (!keys.empty())
      Message_Box(QStringLiteral("Die Kopfzeile der Tabelle kann nicht gelöscht werden."), MsgButtons::Ok,
                  MsgIcon::Information, Tbl.DBGrid1.Caption);
    return false;
  }
  if (!Ask_To_Delete_Rows(going)) return false;
  if (going.size() > 1) Undo_Point(QStringLiteral("Rückgängig: Zeilen löschen"));
  if (!rsEntries) return false;  // the table could not be opened again
  const BusyPointer busy;
  Delete_Entries(going + Extras_Of_All(going));
  Rows_Were_Deleted(position);
  return true;
}
