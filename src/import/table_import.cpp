#include "import/table_import.h"

#include <QFileInfo>
#include <algorithm>
#include <utility>

#include "edit/bulk_change.h"
#include "hand/activation.h"
#include "import/table_entry.h"
#include "platform/file_dialog.h"
#include "platform/message_box.h"
#include "platform/progress.h"
#include "platform/text.h"
#include "state/events.h"
#include "state/global_state.h"
#include "state/step.h"
#include "state/table_state.h"
#include "store/table_file.h"
#include "store/vertex_table.h"

namespace {

const QString importTitle = QStringLiteral("Import:"), undoCaption = QStringLiteral("Rückgängig: Import"),
              progressTitle = QStringLiteral("Einträge hinzufügen");

// A column of the open table and where its value comes from.
struct CarriedColumn {
  int source = 0, target = 0;
};

struct PlannedEntry {
  CarriedEntry entry;
  std::vector<Value> columns;  // of the user's own
  int number = 0;              // in the source
};

bool Is_Design(const EntryRow& row) { return EntryType::Parse(row.Typ).Kind() == EntryKind::PlanDesign; }

// What stands in the open table before anything comes.
struct TargetEntries {
  QSet<QString> names;
  KnownEntries known;
  int highestGroup = 0;
  bool design = false;

  explicit TargetEntries(bool withEntries) {
    for (const TableDef& table : dbEntries->TableDefs()) names.insert(table.name.toLower());
    For_Each_Entry([&] {
      const EntryId id = EntryId::Parse(rsEntries->Text(column::ID));
      names.insert(id.TableName().toLower());
      if (id.hasGroup) highestGroup = std::max(highestGroup, static_cast<int>(std::min(Val(id.group), 1e9)));
      const auto row = Read_Sound_Entry();
      if (!row) return;
      design = design || Is_Design(*row);
      if (!withEntries) return;
      CarriedEntry entry{*row, {}};
      if (entry.Type().HasVertices()) entry.vertices = Load_Vertices(entry.TableName());
      known.Add(entry);
    });
  }
};

QString Kind_Name(const EntryId& id) {
  return id.IsArea() ? QStringLiteral("Fläche") : id.IsLine() ? QStringLiteral("Linie") : QStringLiteral("Figur");
}

// One run from the first row to the last.
class TableRun {
 public:
  TableRun(TableSource& table, const TableImportOrder& wanted)
      : source(table),
        order(wanted),
        target(wanted.skipExisting),
        names(target.names, target.highestGroup),
        progress(progressTitle, 2 * static_cast<int>(wanted.rows.size())) {
    planned.reserve(order.rows.size());
    Match_Columns();
    for (const ColumnValue& change : order.change) {
      if (!change.Is_Set()) continue;
      const int where = rsEntries->FieldIndex(change.column);
      changes.emplace_back(where, Value_For(rsEntries->Fields()[static_cast<size_t>(where)], change.value));
    }
  }

  // First all places, so that no question waits inside the transaction.
  TableImportResult Run() {
    for (const qint64 key : order.rows) {
      if (source.Go_To(key)) Plan();
      if (!result.stopped && !progress.Advance()) result.stopped = true;
      if (result.stopped) break;
    }
    if (!planned.empty()) Write();
    return std::move(result);
  }

 private:
  void Match_Columns() {
    const std::vector<FieldInfo>& fields = source.Fields();
    for (int i = 0; i < static_cast<int>(fields.size()); ++i) {
      bool isFixed = false;
      for (int k = 0; k < column::fixedCount; ++k) isFixed = isFixed || source.Fixed_Column(k) == i;
      if (isFixed || source.Counts(i)) continue;
      const QString& name = fields[static_cast<size_t>(i)].name;
      if (rsEntries->HasField(name))
        columns.push_back({i, rsEntries->FieldIndex(name)});
      else
        result.missingColumns << name;
    }
  }

  void Refuse(const QString& reason) { result.refused.push_back({source.Number(), source.Text_Of(), reason}); }

  void Plan() {
    PlannedEntry it;
    it.number = source.Number();
    try {
      it.entry.row = source.Entry();
    } catch (const Error& error) {
      return Refuse(Error_Text(error));
    }
    EntryRow& row = it.entry.row;
    const EntryType type = it.entry.Type();
    if (Is_Design(row) && std::exchange(target.design, true))
      return Refuse(QStringLiteral("Die Karte hat schon ein Raster von Planquadraten."));
    if (type.HasVertices()) {
      it.entry.vertices = source.Vertices(it.entry.TableName());
      const EntryId id = EntryId::Parse(row.ID);
      const size_t least = type.IsPolygon() && id.IsArea() ? 3 : 2;
      if (it.entry.vertices.size() < least)
        return Refuse(
            QStringLiteral("Die Tabelle mit den Punkten der %1 fehlt oder hat zu wenige.").arg(Kind_Name(id)));
    }
    row.Typ = type.Marked(Mark::None).ToNumber();  // marks belong to the open table
    if (!Find_Place(it.entry)) return;
    if (order.skipExisting && target.known.Has(it.entry)) {
      ++result.existed;
      return;
    }
    if (!names.Rename(it.entry)) return Refuse(QStringLiteral("Der Name ist zu lang für einen neuen."));
    Fit_Texts(row);
    for (const CarriedColumn& each : columns) it.columns.push_back(source.Raw(each.source));
    planned.push_back(std::move(it));
  }

  bool Find_Place(CarriedEntry& entry) {
    if (order.placing.Way() == PlaceWay::Pixels) return true;
    const bool moved = Move_Entry(entry, [this](QPoint at) { return order.placing(at); });
    if (moved && Lies_On_Map(entry, {MapWidthPx, MapHeightPx})) return true;
    ++result.outside;
    const QString reason = QStringLiteral("liegt außerhalb der Karte");
    Refuse(reason);
    if (silent || !order.asks) return false;
    MsgRequest request;
    request.text = source.Text_Of() + u'\n' + reason +
                   QStringLiteral(
                       ".\n\nSoll diese Meldung weiterhin angezeigt werden?\n\nWählen Sie 'Abbrechen', wenn "
                       "Sie keine weiteren Einträge in die Karte importieren möchten.");
    request.buttons = MsgButtons::YesNoCancel;
    request.icon = MsgIcon::Question;
    request.title = importTitle;
    request.helpPage = QStringLiteral("Tabelle-Import.htm");
    const MsgAnswer answer = Message_Box(request);
    silent = answer == MsgAnswer::No;
    result.stopped = answer == MsgAnswer::Cancel;
    return false;
  }

  void Fit_Texts(EntryRow& row) {
    const QString fitting = Cut_Text(row.Eintrag, Tbl.EintragSize);
    if (fitting.size() < row.Eintrag.size()) ++result.shortened;
    row.Eintrag = fitting;
    row.Schrift = Cut_Text(row.Schrift, textColumnWidth);
    if (row.ID.size() > textColumnWidth) row.ID = QStringLiteral("Text");
  }

  void Write() {
    const UndoStep step(QStringLiteral("Import"));
    const UndoPoint point(undoCaption);
    const bool written = In_Told_Transaction(importTitle, [this] {
      for (PlannedEntry& it : planned) {
        names.Adjust(it.entry);
        Append(it);
        ++result.imported;
        if (!result.stopped && !progress.Advance()) {
          result.stopped = true;
          return;
        }
      }
    });
    if (written) return;
    result.imported = result.shortened = 0;
    result.failed = true;
  }

  void Append(const PlannedEntry& it) {
    if (!it.entry.vertices.empty()) Write_Vertices(it.entry.TableName(), it.entry.vertices);
    rsEntries->AddNew();
    try {
      Write_Entry(*rsEntries, it.entry.row);
      for (size_t i = 0; i < columns.size(); ++i) Set_Where_It_Fits(columns[i].target, it.columns[i]);
      for (const auto& [where, value] : changes) rsEntries->Set(where, value);
      rsEntries->Update();
    } catch (...) {
      if (rsEntries->Editing()) rsEntries->CancelUpdate();
      throw;
    }
    Tbl.Tag = TableTag::Dirty;
  }

  // A column of the same name may be of another kind or narrower.
  void Set_Where_It_Fits(int where, const Value& value) {
    const FieldInfo& field = rsEntries->Fields()[static_cast<size_t>(where)];
    try {
      const auto* text = std::get_if<QString>(&value);
      if (text && field.type == FieldType::Text && field.size > 0)
        rsEntries->Set(where, Cut_Text(*text, field.size));
      else
        rsEntries->Set(where, value);
    } catch (const Error& error) {
      if (error.number != errors::typeMismatch && error.number != errors::overflow) throw;
    }
  }

  TableSource& source;
  const TableImportOrder& order;
  TargetEntries target;
  CarriedNames names;
  Progress progress;
  TableImportResult result;
  std::vector<CarriedColumn> columns;
  std::vector<std::pair<int, Value>> changes;
  std::vector<PlannedEntry> planned;
  bool silent = false;
};

}  // namespace

QStringList Changeable_Columns() {
  QStringList names;
  if (!rsEntries || !rsEntries->IsOpen()) return names;
  const std::vector<FieldInfo>& fields = rsEntries->Fields();
  for (int i = 0; i < static_cast<int>(fields.size()); ++i)
    if (i != column::ID && i != column::Typ) names << fields[static_cast<size_t>(i)].name;
  return names;
}

TableImportResult Import_Entries(TableSource& source, const TableImportOrder& order) {
  TableImportResult result;
  result.failed = true;
  if (!rsEntries || !rsEntries->IsOpen() || (Entry_In_Hand() && !End_Entry())) return result;
  const BusyPointer busy;
  result = TableRun(source, order).Run();
  if (result.imported > 0) Show_Changed_Entries();
  return result;
}

QStringList Table_Import_Report(const TableSource& source, const TableImportResult& result) {
  const auto count = [](int number, const QString& what) { return QString::number(number) + u' ' + what; };
  QStringList lines = {QStringLiteral("Einträge aus der Tabelle: ") + source.File(), {}};
  lines << count(result.imported, QStringLiteral("Einträge wurden importiert."));
  if (result.existed > 0) lines << count(result.existed, QStringLiteral("Einträge waren schon vorhanden."));
  lines << count(static_cast<int>(result.refused.size()), QStringLiteral("Einträge wurden abgelehnt,")) + u' ' +
               count(result.outside, QStringLiteral("davon außerhalb der Karte."));
  if (result.shortened > 0) lines << count(result.shortened, QStringLiteral("Texte wurden gekürzt."));
  if (!result.missingColumns.isEmpty())
    lines << QStringLiteral("Spalten, die diese Tabelle nicht hat: ") +
                 result.missingColumns.join(QStringLiteral(", "));
  if (result.stopped) lines << QStringLiteral("Der Import wurde abgebrochen.");
  if (result.refused.empty()) return lines;
  lines << QString() << QStringLiteral("Abgelehnt:");
  for (const TableRefusal& one : result.refused)
    lines << QStringLiteral("Zeile %1: %2: %3").arg(QString::number(one.number), one.text, one.reason);
  return lines;
}

QString Choose_Source() {
  FileRequest request;
  request.title = QStringLiteral("Datenbank öffnen");
  request.folder = QFileInfo(MapFile).path();
  request.defaultExtension = QStringLiteral("MDB");
  request.filter = QStringLiteral("Datenbank (*.MDB)|*.MDB");
  request.helpPage = QStringLiteral("Tabelle-Import.htm");
  return File_Dialog(request).value_or(QString());
}
