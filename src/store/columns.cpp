#include "store/columns.h"

#include <algorithm>

#include "platform/message_box.h"
#include "state/events.h"
#include "state/global_state.h"
#include "state/map_state.h"
#include "state/table_state.h"
#include "store/entry.h"
#include "store/table_file.h"

namespace {

const QString addTitle = QStringLiteral("Spalte in der Tabelle hinzufügen");
const QString removeTitle = QStringLiteral("Spalte in der Tabelle löschen");
constexpr int longestTitle = 64, widestText = 255;

// "" or what speaks against the name. The engine's own names for the key would hide it.
QString Fault_Of(const QString& title) {
  if (rsEntries->HasField(title)) return QStringLiteral("Diese Spalte ist bereits vorhanden.");
  if (title.size() > longestTitle)
    return QStringLiteral("Der Name der Spalte darf höchstens %1 Zeichen lang sein.").arg(longestTitle);
  for (const char* own : {"rowid", "oid", "_rowid_"})
    if (title.compare(QLatin1String(own), Qt::CaseInsensitive) == 0)
      return QStringLiteral("Dieser Name ist für das Programm vorbehalten: ") + title;
  const bool unusable = std::any_of(title.begin(), title.end(), [](QChar letter) {
    return letter < QChar(32) || QStringLiteral("[]\"`.!").contains(letter);
  });
  if (unusable) return QStringLiteral("Der Name der Spalte darf keines dieser Zeichen enthalten: [ ] \" ` . !");
  return {};
}

// Changes the columns between an undo point and a reload; the current row stays. False if it failed; it was told then.
template <typename Work>
bool Change_Columns(const QString& title, const QString& undoCaption, Work&& work) {
  const BusyPointer busy;
  const UndoPoint point(undoCaption);
  if (!dbEntries || !rsEntries || !Table_In_Place()) return false;
  const QString row = rsEntries->Position() >= 0 ? rsEntries->Bookmark() : QString();
  rsEntries.reset();
  QString failure;
  try {
    work();
    Tbl.Tag = TableTag::Dirty;
  } catch (const Error& error) {
    failure = error.text.isEmpty() ? QString::number(error.number) : error.text;
  }
  Close_Table(CloseMode::CloseOnly);
  if (Load_Table(LoadMode::Reload) && !row.isEmpty() && rsEntries->HasRow(row)) {
    rsEntries->SetBookmark(row);
    Map.CurBookmark = row;
    events.CurrentRowChanged.Emit();
  }
  events.RedrawWanted.Emit();
  if (failure.isEmpty()) return rsEntries != nullptr;
  Message_Box(QStringLiteral("Die Spalten der Tabelle konnten nicht verändert werden.\n") + failure, MsgButtons::Ok,
              MsgIcon::Critical, title);
  return false;
}

}  // namespace

bool Is_Fixed_Column(const QString& name) {
  const std::vector<FieldInfo> fixed = MapData_Def().fields;
  return std::any_of(fixed.begin(), fixed.end(),
                     [&name](const FieldInfo& field) { return field.name.compare(name, Qt::CaseInsensitive) == 0; });
}

bool Add_Column(NewColumn column, const QString& defaultTitle) {
  if (!dbEntries || !rsEntries) return false;
  column.title = column.title.trimmed();
  if (column.title.isEmpty()) column.title = defaultTitle.trimmed();
  if (column.title.isEmpty()) return false;
  if (column.title.compare(QLatin1String("Comment"), Qt::CaseInsensitive) == 0)
    column.title = QStringLiteral("Komment");
  const QString fault = Fault_Of(column.title);
  if (!fault.isEmpty()) {
    Message_Box(fault, MsgButtons::Ok, MsgIcon::Warning, addTitle);
    return false;
  }
  FieldInfo field{column.title, column.type, 0};
  if (field.type == FieldType::Text) field.size = std::clamp(column.width, 1, widestText);
  return Change_Columns(addTitle, QStringLiteral("Rückgängig: Spalte hinzufügen"),
                        [&field] { dbEntries->AddColumn(QStringLiteral("MapData"), field); });
}

bool Remove_Column(QString name) {
  if (!dbEntries || !rsEntries) return false;
  if (Is_Fixed_Column(name)) {
    Message_Box(
        name + QStringLiteral(":  Diese ausgewählte Spalte wird vom Programm benötigt.\n\nBitte wählen sie eine "
                              "andere Spalte rechts von der Spalte 'Typ'."),
        MsgButtons::Ok, MsgIcon::Warning, removeTitle);
    return false;
  }
  if (!rsEntries->HasField(name)) {
    Message_Box(QStringLiteral("Bitte wählen Sie eine Spalte rechts von der Spalte 'Typ' aus."), MsgButtons::Ok,
                MsgIcon::Warning, removeTitle);
    return false;
  }
  const bool removed = Change_Columns(removeTitle, QStringLiteral("Rückgängig: Spalte löschen"),
                                      [&name] { dbEntries->DropColumn(QStringLiteral("MapData"), name); });
  if (removed)
    Message_Box(QStringLiteral("Folgende Spalte wurde entfernt:") + name, MsgButtons::Ok, MsgIcon::Information,
                removeTitle);
  return removed;
}
