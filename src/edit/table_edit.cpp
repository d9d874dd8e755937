#include "edit/table_edit.h"

#include <QSet>
#include <algorithm>
#include <array>
#include <limits>

#include "edit/cell_rules.h"
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

// The program tells a row's kind by a word in its ID: whoever changes it has to mean it.
bool Check_Keyword(const QString& former, const QString& text) {
  const QString word = Lost_Keyword(former, text);
  if (word.isEmpty()) return true;
  return Message_Box(QStringLiteral("Am Schlüsselwort '%1' in der Spalte 'ID' erkennt das Programm die Art des "
                                    "Eintrags.\nEs sollte nicht umbenannt werden.\n\nSoll der Name trotzdem geändert "
                                    "werden?")
                         .arg(word),
                     MsgButtons::YesNo, MsgIcon::Warning, errorTitle, MsgDefault::Second) == MsgAnswer::Yes;
}

// The typed text as a value of the current row's column; False with a message where it cannot be one.
bool Value_Of(int number, const QString& text, Value& value) {
  QString problem = Value_Problem(rsEntries->Fields()[static_cast<size_t>(number)], text, value);
  const QString id = rsEntries->Text(column::ID);
  if (problem.isEmpty()) problem = Meaning_Problem(Type_Here(), id, number, value);
  if (!problem.isEmpty()) return Refuse(problem);
  return number != column::ID || Check_Keyword(id, text);
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
    Value value;
    if (!Value_Of(number, text, value) || !Go_To(key)) return CellEdit::Refused;
    rsEntries->Edit();
    rsEntries->Set(number, value);
    rsEntries->Update();
  } catch (const Error& error) {
    // A full disk, a row that has gone: the cell keeps its value. Who was asked and did not want it knows of it.
    if (error.number != errors::workStopped)
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
  std::optional<UndoPoint> point;
  if (going.size() > 1) point.emplace(QStringLiteral("Rückgängig: Zeilen löschen"));
  if (!rsEntries) return false;  // the table could not be opened again
  const BusyPointer busy;
  Delete_Entries(going + Extras_Of_All(going));
  Rows_Were_Deleted(position);
  return true;
}
