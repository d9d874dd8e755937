#include "maps/version_look.h"

#include <utility>

#include "maps/map_check.h"
#include "maps/menu_state.h"
#include "platform/message_box.h"
#include "state/events.h"
#include "state/global_state.h"
#include "state/map_state.h"
#include "state/task_line.h"
#include "view/redraw.h"

namespace {

const QString title = QStringLiteral("Frühere Stände");

void Tell(const Error& error) {
  Message_Box(Error_Text(error) + QStringLiteral("\n\nEs wurde nichts verändert."), MsgButtons::Ok, MsgIcon::Warning,
              title);
}

// The version stands in for the open table while it lives.
class StandIn {
 public:
  explicit StandIn(const TableVersion& version)
      : database(Workspace::OpenDatabase(version.file, {.readOnly = true})),
        rows(database->OpenRecordset(QStringLiteral("MapData"))),
        current(Map.CurBookmark) {
    Exchange();
  }
  ~StandIn() {
    Exchange();
    Map.CurBookmark = current;
  }
  StandIn(const StandIn&) = delete;
  StandIn& operator=(const StandIn&) = delete;

 private:
  void Exchange() {
    std::swap(dbEntries, database);
    std::swap(rsEntries, rows);
  }
  std::unique_ptr<Database> database;
  std::unique_ptr<Recordset> rows;
  QString current;
};

void Show_What_Is_There() {
  Scan_Table();
  Set_Buttons();
  Map_Redraw();
}

}  // namespace

bool Show_Version(const TableVersion& version) {
  const BusyPointer busy;
  try {
    const StandIn standIn(version);
    Map_Redraw();
    return true;
  } catch (const Error& error) {
    Tell(error);
    return false;
  }
}

bool Take_Back_Version(const TableVersion& version) {
  if (!Take_Version(version)) return false;
  Show_What_Is_There();
  Tell_Done(QStringLiteral("Stand vom ") + version.when.toString(QStringLiteral("dd.MM.yyyy HH:mm")));
  return true;
}

bool Take_Back_Entries(const TableVersion& version, const std::vector<VersionDifference>& entries) {
  int taken = 0;
  try {
    taken = Take_Entries(version, entries);
  } catch (const Error& error) {
    Tell(error);
  }
  if (taken == 0) return false;
  Show_What_Is_There();
  Tell_Done(QStringLiteral("Übernommen: ") + Entries_Text(taken));
  return true;
}
