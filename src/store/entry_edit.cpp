#include "store/entry_edit.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "platform/message_box.h"
#include "platform/text.h"
#include "state/events.h"
#include "state/global_state.h"
#include "state/map_state.h"
#include "state/mdi_state.h"
#include "state/table_state.h"
#include "store/anchor.h"
#include "store/entry.h"
#include "store/transaction.h"
#include "store/vertex_table.h"

namespace {

constexpr QChar emptyMark = QChar(160);  // an empty label, told apart from a missing one

// Blanks only: the mark of an empty label is no blank.
QString Without_Outer_Blanks(const QString& text) {
  qsizetype from = 0, to = text.size();
  while (from < to && text[from] == u' ') ++from;
  while (to > from && text[to - 1] == u' ') --to;
  return text.mid(from, to - from);
}

void Back_To_Current() {
  if (!Map.CurBookmark.isEmpty() && rsEntries->HasRow(Map.CurBookmark)) rsEntries->SetBookmark(Map.CurBookmark);
}

void Tell_Row_Changed() {
  Map.CurBookmark = rsEntries->Position() >= 0 ? rsEntries->Bookmark() : QString();
  events.TableChanged.Emit();
  events.CurrentRowChanged.Emit();
}

QString Text_To_Save(const QString& typed, bool isNew) {
  QString text = Stored_Lines(Trimmed_Input(typed));
  if (isNew && Without_Outer_Blanks(text).isEmpty()) return emptyMark;
  if (text.size() > 1 && text[0] == emptyMark) text.remove(0, 1);
  return text;
}

bool Fits_Column(const QString& text) {
  if (text.size() <= Tbl.EintragSize) return true;
  Message_Box(QStringLiteral("Dieser Text hat %1 Zeichen und ist zu lang.\nEin Karteneintrag kann höchstens %2 Zeichen "
                             "aufnehmen.\nBitte kürzen Sie den Text.")
                  .arg(text.size())
                  .arg(Tbl.EintragSize),
              MsgButtons::Ok, MsgIcon::Warning, QStringLiteral("Text zu lang"));
  return false;
}

// Family and angle stay those of a row that has them; the styles are those that were typed in.
QString Font_To_Save(const TypedText& typed, const FontSpec& former) {
  FontSpec font = typed.font;
  if (!former.family.isEmpty()) {
    font.family = former.family;
    font.angle = former.angle;
  }
  if (font.family.isEmpty()) font.family = QStringLiteral("Arial");
  return font.ToText();
}

bool Holds_Font(const EntryType& type, const QString& schrift) {
  if (type.IsFigure()) return !FillCode::IsFill(schrift);
  return type.Kind() != EntryKind::Scale && type.Kind() != EntryKind::Picture;
}

void Set_Colors(EntryRow& row, const EntryType& type, const TypedText& typed) {
  const bool blackOnBlack = frmMDI.tableColors && typed.VG == 0 && typed.HG == 0;
  const bool withoutBox = type.IsPolygon() || (type.base >= 1 && type.base <= 3);
  row.VG = typed.VG;
  row.HG = blackOnBlack ? 14 : typed.HG;
  if (withoutBox && typed.font.transparent) row.HG = 15;
  row.RA = typed.RA;
}

EntryRow New_Text_Row() {
  EntryRow row;
  row.ID = QStringLiteral("Text");
  return row;
}

// False if the text does not fit; that is told.
bool Put_Text(EntryRow& row, const TypedText& typed, bool isNew) {
  const EntryType type = EntryType::Parse(row.Typ);
  if (type.Kind() == EntryKind::Scale) return true;  // its columns hold its number and direction
  const QString text = Text_To_Save(typed.text, isNew);
  if (!Fits_Column(text)) return false;
  row.Eintrag = text;
  row.Xmap = typed.at.x();
  row.Ymap = typed.at.y();
  Set_Colors(row, type, typed);
  if (Holds_Font(type, row.Schrift)) row.Schrift = Font_To_Save(typed, FontSpec::Parse(Font_Text(type, row.Schrift)));
  if (row.Groesse > 0 || type.base == 0) row.Groesse = typed.size > 0 ? typed.size : 10;
  return true;
}

}  // namespace

QString Trimmed_Input(const QString& text) { return frmMDI.trimInput ? Without_Outer_Blanks(text) : text; }

bool Save_Text_Entry(const TypedText& typed, TextRow where) {
  if (!rsEntries) return false;
  const bool isNew = where == TextRow::New;
  Back_To_Current();
  if (!isNew && (rsEntries->Position() < 1 || Type_Here().hidden)) return false;
  EntryRow row = isNew ? New_Text_Row() : Read_Entry(*rsEntries);
  if (!Put_Text(row, typed, isNew)) return false;
  if (isNew) {
    Append_Entry(row);
    rsEntries->MoveLast();
  } else {
    Update_Entry(row);
  }
  Menu(QStringLiteral("mnuReset")).Caption = QStringLiteral("Rückgängig");
  Tell_Row_Changed();
  events.StateChanged.Emit();
  return true;
}

// Deleting -----------------------------------------------------------------------------------------------------------

namespace {

void Show_How_Entries_Are_Made() {
  Message_Box(
      QStringLiteral("Einträge erstellen Sie so:\nWählen Sie in der Werkzeugleiste oder im Menü 'Objekt' die Art des "
                     "Eintrags\n(Text, Symbol, Bild, Linie, Fläche oder Figur)\nund klicken Sie dann auf die "
                     "Stelle der Karte,\nan der er stehen soll."),
      MsgButtons::Ok, MsgIcon::Information, QStringLiteral("Die Karte enthält noch keine Einträge"));
}

bool Ask_To_Delete(const QString& text) {
  if (text == QLatin1String("Entwurf")) return true;  // an unfinished drawing
  const QString question = Entry_Name() + text + QStringLiteral("\n\nSoll dieser Eintrag gelöscht werden?");
  return Message_Box(question, MsgButtons::YesNo, MsgIcon::Question, QStringLiteral("Eintrag löschen"),
                     MsgDefault::Second) == MsgAnswer::Yes;
}

// The vertex table of the current row, in small letters; "" without one.
QString Table_Here() {
  return Type_Here().HasVertices() ? EntryId::Parse(rsEntries->Text(column::ID)).TableName().toLower() : QString();
}

}  // namespace

int Delete_Entries(const QSet<qint64>& keys) {
  int count = 0;
  bool scale = false;
  In_Transaction([&] {
    QSet<QString> tables, needed;
    for (const qint64 key : keys) {
      const int position = rsEntries->PositionOf(key);
      if (position < 1) continue;
      rsEntries->MoveTo(position);
      const EntryType type = Type_Here();
      if (type.HasVertices()) tables.insert(Table_Here());
      scale = scale || type.Kind() == EntryKind::Scale;
      rsEntries->Delete();
      ++count;
    }
    Promote_Anchor();
    if (tables.isEmpty()) return;
    For_Each_Entry([&needed] { needed.insert(Table_Here()); });
    Drop_Vertex_Tables(tables.subtract(needed));
  });
  if (scale) Forget_Scale();
  return count;
}

bool Delete_Entry(bool asked) {
  if (Entry_Count() == 0) {
    Show_How_Entries_Are_Made();
    return false;
  }
  Back_To_Current();
  if (rsEntries->Position() < 0) return false;
  if (rsEntries->Position() == 0 || EntryId::StoredIsHeader(rsEntries->Text(column::ID))) {
    rsEntries->MoveFirst();
    return false;
  }
  if (!asked && !Ask_To_Delete(rsEntries->Text(column::Eintrag))) return false;
  Delete_Entries({rsEntries->Key()});
  rsEntries->MoveLast();
  Tell_Row_Changed();
  events.ChangedEntriesWanted.Emit();
  return true;
}

void Set_Foot_Point(QPoint map) {
  if (!rsEntries) return;
  Back_To_Current();
  if (rsEntries->Position() < 1) return;
  EntryRow row = Read_Entry(*rsEntries);
  const EntryType type = EntryType::Parse(row.Typ);
  if (!type.IsText() && type.Kind() != EntryKind::Picture) return;
  if (QPoint(row.Xline, row.Yline) == map) return;
  row.Xline = map.x();
  row.Yline = map.y();
  row.ID = EntryId::Parse(row.ID).WithoutReferenceDigit().ToText();
  Update_Entry(row);
  events.TableChanged.Emit();
}

// Repair -------------------------------------------------------------------------------------------------------------

namespace {

QString Raw_Text(int number) {
  const Value& value = rsEntries->Raw(number);
  if (const auto* text = std::get_if<QString>(&value)) return *text;
  if (const auto* whole = std::get_if<qint64>(&value)) return QString::number(*whole);
  if (const auto* real = std::get_if<double>(&value)) return QString::number(*real);
  return {};
}

// The number that is stored, even as a text; `instead` where it is none or beyond the limits.
double Sound_Number(int number, double lowest, double highest, double instead) {
  const Value& value = rsEntries->Raw(number);
  double found = std::numeric_limits<double>::quiet_NaN();
  if (const auto* text = std::get_if<QString>(&value)) {
    found = Number_Typed(*text).value_or(found);
  } else if (const auto* whole = std::get_if<qint64>(&value)) {
    found = static_cast<double>(*whole);
  } else if (const auto* real = std::get_if<double>(&value)) {
    found = *real;
  }
  return found >= lowest && found <= highest ? found : instead;
}

int Sound_Whole(int number, int lowest, int highest, int instead) {
  return static_cast<int>(std::lrint(Sound_Number(number, lowest, highest, instead)));
}

bool Is_Stored(const EntryRow& row) {
  const auto numbers = {std::pair{column::VG, row.VG},       std::pair{column::HG, row.HG},
                        std::pair{column::RA, row.RA},       std::pair{column::Xmap, row.Xmap},
                        std::pair{column::Ymap, row.Ymap},   std::pair{column::Xline, row.Xline},
                        std::pair{column::Yline, row.Yline}, std::pair{column::Typ, row.Typ}};
  for (const auto& [where, value] : numbers) {
    const auto* stored = std::get_if<qint64>(&rsEntries->Raw(where));
    if (stored == nullptr || *stored != value) return false;
  }
  if (std::holds_alternative<QString>(rsEntries->Raw(column::Groesse))) return false;
  return Raw_Text(column::ID) == row.ID && Raw_Text(column::Eintrag) == row.Eintrag &&
         Raw_Text(column::Schrift) == row.Schrift && rsEntries->Number(column::Groesse) == row.Groesse;
}

}  // namespace

bool Repair_Row() {
  constexpr int largest = std::numeric_limits<int16_t>::max();
  EntryRow row;
  row.ID = Without_Outer_Blanks(Raw_Text(column::ID)).left(textColumnWidth);
  row.Eintrag = Cut_Text(Without_Outer_Blanks(Raw_Text(column::Eintrag)), std::min(textColumnWidth, Tbl.EintragSize));
  row.Schrift = Raw_Text(column::Schrift);
  if (row.Schrift.isEmpty() || row.Schrift.size() > textColumnWidth) row.Schrift = QStringLiteral("Arial");
  row.Groesse = Sound_Number(column::Groesse, -80, 80, 10);
  row.VG = Sound_Whole(column::VG, 0, 16, 0);
  row.HG = Sound_Whole(column::HG, 0, 16, 15);
  row.RA = Sound_Whole(column::RA, 0, 16, 0);
  row.Xmap = Sound_Whole(column::Xmap, 0, largest, 0);
  row.Ymap = Sound_Whole(column::Ymap, 0, largest, 0);
  row.Xline = Sound_Whole(column::Xline, 0, largest, 0);
  row.Yline = Sound_Whole(column::Yline, 0, largest, 0);
  row.Typ = Sound_Whole(column::Typ, -1, 4, 0);
  if (Is_Stored(row)) return false;
  Update_Entry(row);
  return true;
}
