#include "edit/move.h"

#include <QSet>
#include <limits>

#include "edit/bulk_change.h"
#include "edit/figure_extras.h"
#include "platform/message_box.h"
#include "platform/progress.h"
#include "platform/text.h"
#include "state/events.h"
#include "state/mdi_state.h"
#include "store/table_file.h"
#include "store/vertex_table.h"

namespace {

const QString errorTitle = QStringLiteral("Fehler - Einträge verchieben");
const QString undoCaption = QStringLiteral("Rückgängig: Verschieben");

int Moved(int position, int by) {
  const qint64 moved = static_cast<qint64>(position) + by;
  if (moved < std::numeric_limits<int16_t>::min() || moved > std::numeric_limits<int16_t>::max())
    Raise(errors::overflow);
  return static_cast<int>(moved);
}

// Is the second position of the row one that moves along?
bool Second_Moves(const EntryRow& row, const EntryType& type) {
  switch (type.Kind()) {
    case EntryKind::Reference:
    case EntryKind::Scale:
      return true;
    case EntryKind::NorthArrow:
    case EntryKind::Picture:
      return row.Xline != 0 || row.Yline != 0;
    default:
      return type.IsText() && (row.Xline != 0 || row.Yline != 0);
  }
}

// Would every vertex stay a position? A vertex pushed beyond the stop limit would end the outline.
bool Vertices_Fit(const QString& table, int dx, int dy) {
  const std::vector<Database::PointRow>* points = dbEntries->Points(table);
  if (points == nullptr) return true;
  constexpr int least = std::numeric_limits<int16_t>::min(), most = std::numeric_limits<int16_t>::max();
  return std::all_of(points->begin(), points->end(), [=](const Database::PointRow& point) {
    if (point.x < stopLimit) return true;
    const qint64 x = qint64{point.x} + dx, y = qint64{point.y} + dy;
    return x >= stopLimit && x <= most && y >= least && y <= most;
  });
}

QString Quoted_Name(const QString& name) { return u'"' + QString(name).replace(u'"', QLatin1String("\"\"")) + u'"'; }

void Shift_Table(const QString& table, int dx, int dy) {
  if (!dbEntries->HasTable(table)) return;
  dbEntries->Execute(QStringLiteral("UPDATE %1 SET xf = xf + %2, yf = yf + %3 WHERE xf >= %4")
                         .arg(Quoted_Name(table))
                         .arg(dx)
                         .arg(dy)
                         .arg(stopLimit));
}

}  // namespace

void Shift_Row(EntryRow& row, int dx, int dy) {
  const EntryType type = EntryType::Parse(row.Typ);
  EntryRow moved = row;
  moved.Xmap = Moved(row.Xmap, dx);
  moved.Ymap = Moved(row.Ymap, dy);
  if (type.Kind() == EntryKind::PlanSquare) {
    EntryBox box = entry_box(row);
    box.x = moved.Xmap;
    box.y = moved.Ymap;
    Moved(box.x, box.width);
    Moved(box.y, box.height);
    set_entry_box(moved, box);
  } else if (Second_Moves(row, type)) {
    moved.Xline = Moved(row.Xline, dx);
    moved.Yline = Moved(row.Yline, dy);
  }
  row = moved;
}

void Shift_Vertices(const EntryRow& row, int dx, int dy) {
  if (!EntryType::Parse(row.Typ).HasVertices()) return;
  const QString table = EntryId::Parse(row.ID).TableName();
  if (!Vertices_Fit(table, dx, dy)) Raise(errors::overflow);
  Shift_Table(table, dx, dy);
}

// Moving many entries ------------------------------------------------------------------------------------------------

namespace {

struct MoveWork {
  std::vector<RowChange> rows;
  QStringList tables;  // each once, even if several rows share it
  QString tooFar;      // the entry that would leave the range of positions
};

QString Name_For_Message(const EntryRow& row) {
  const QString id = EntryId::Parse(row.ID).name;
  return row.Eintrag.trimmed().isEmpty() || row.Eintrag == id ? id : id + QStringLiteral(": ") + row.Eintrag;
}

// The rows of the net and of the raster's design keep other numbers where entries have their position.
bool Has_Position(const EntryType& type) {
  return type.Kind() != EntryKind::Net && type.Kind() != EntryKind::PlanDesign && type.Kind() != EntryKind::Nothing;
}

MoveWork Plan_Move(int dx, int dy, bool markedOnly) {
  MoveWork work;
  QSet<QString> seen;
  work.rows = Collect_Changes([&](EntryRow& row, qint64) {
    const EntryType type = EntryType::Parse(row.Typ);
    if (markedOnly && !type.Chosen()) return;
    if (!Has_Position(type) || !work.tooFar.isEmpty()) return;
    try {
      Shift_Row(row, dx, dy);
    } catch (const Error&) {
      work.tooFar = Name_For_Message(row);
      return;
    }
    if (!type.HasVertices()) return;
    const QString table = EntryId::Parse(row.ID).TableName();
    if (seen.contains(table.toLower())) return;
    seen.insert(table.toLower());
    if (!Vertices_Fit(table, dx, dy)) work.tooFar = Name_For_Message(row);
    work.tables.append(table);
  });
  return work;
}

}  // namespace

int Move_Entries(const MoveRequest& request) {
  if (!Ready_For_Many()) return 0;
  int dx = 0, dy = 0;
  try {
    dx = To_Int16(request.dx);
    dy = To_Int16(request.dy);
  } catch (const Error&) {
    Message_Box(QStringLiteral("Der Betrag der Verschiebung ist zu groß."), MsgButtons::Ok, MsgIcon::Warning,
                errorTitle);
    return 0;
  }
  if (dx == 0 && dy == 0) return 0;
  const BusyPointer busy;
  const MoveWork work = Plan_Move(dx, dy, request.markedOnly);
  if (!work.tooFar.isEmpty()) {
    Message_Box(QStringLiteral("Dieser Eintrag würde zu weit verschoben:\n%1\n\nPositionen können nur zwischen -32768 "
                               "und 32767 liegen.\nEs wurde nichts verändert.")
                    .arg(work.tooFar),
                MsgButtons::Ok, MsgIcon::Warning, errorTitle);
    return 0;
  }
  if (work.rows.empty()) return 0;
  const UndoPoint point(undoCaption);
  const bool written = In_Told_Transaction(errorTitle, [&] {
    Progress progress(QStringLiteral("Einträge verschieben"),
                      static_cast<int>(work.rows.size()) + static_cast<int>(work.tables.size()));
    for (const RowChange& change : work.rows) {
      Write_Change(change);
      if (!progress.Advance()) return false;
    }
    // All others that move are rows of their own.
    for (const RowChange& change : work.rows)
      if (request.markedOnly) Extras_Follow(change.before, change.after);
    for (const QString& table : work.tables) {
      Shift_Table(table, dx, dy);
      if (!progress.Advance()) return false;
    }
    return true;
  });
  if (!written) return 0;
  Show_Changed_Entries();
  if (request.markedOnly) Tell_Done_Of_Marked();
  return static_cast<int>(work.rows.size());
}

void Move_Back() {
  const MenuState& undo = Menu(QStringLiteral("mnuReset"));
  if (undo.Enabled && undo.Caption == undoCaption) Undo_Last();
}
