#include "windows/import/overlay_window.h"

#include <QFileInfo>
#include <functional>
#include <memory>

#include "import/import_report.h"
#include "import/overlay_import.h"
#include "import/placing_question.h"
#include "platform/file_dialog.h"
#include "platform/files.h"
#include "platform/message_box.h"
#include "state/dialog_hooks.h"
#include "state/events.h"
#include "state/global_state.h"
#include "windows/common/show_beside.h"
#include "windows/import/frmGPS.h"

namespace {

const QString title = QStringLiteral("OVL-Datei importieren"), helpPage = QStringLiteral("Overlay.htm");

void Check_Net() {
  if (Coord.Geographic() || Coord.Metric()) return;
  Raise(5000, QStringLiteral("Die Karte ist nicht georeferenziert - Kein Koordinatensystem gefunden - Menü 'Grid - "
                             "erstellen'."));
}

struct OverlayJob {
  OverlayFile file;
  OverlayPlan plan;
};

void Offer_Refusals(const QStringList& refusals) {
  if (refusals.isEmpty()) return;
  const QString told = QStringLiteral(
                           "%1 Angaben wurden nicht übernommen.\n\nSoll die Liste mit den Gründen gezeigt "
                           "werden?")
                           .arg(refusals.size());
  if (Message_Box(told, MsgButtons::YesNo, MsgIcon::Question, title) != MsgAnswer::Yes) return;
  const QString path = Write_Import_Report(refusals);
  if (dialogHooks.NotePad) dialogHooks.NotePad(path);
}

void Take(FrmGPS& window, const std::shared_ptr<OverlayJob>& job) {
  const OverlayResult result = Import_Overlay(job->file, job->plan);
  if (result.failed) return;
  window.Forget_List();  // a second time would put every object on the map twice
  window.Show_Outcome(Overlay_Summary(job->file, job->plan, result).join(u'\n') +
                          QStringLiteral("\nImportierte Einträge löschen: Menü Einträge-Rückgängig"),
                      QStringLiteral("&Schließen"));
  Offer_Refusals(Overlay_Refusals(job->file, job->plan, result));
}

void Show_Overlay(QWidget* parent, const QString& path) {
  Check_Net();
  auto job = std::make_shared<OverlayJob>();
  job->file = Read_Overlay(Read_Bytes(path));
  const auto way = Ask_Placing_Way(Overlay_System(), Coord, title);
  if (!way) return;
  const BusyPointer busy;
  job->plan = Plan_Overlay(job->file, *way, true);
  if (job->plan.cancelled) return;
  const QString transformation =
      *way == PlacingWay::Transformed ? Transformation_Name(Overlay_System(), Coord).value_or(QString()) : QString();
  FrmGPS& window = *Show_Beside<FrmGPS>(parent);
  window.Show_List(
      Overlay_List(job->file, job->plan, QFileInfo(path).fileName(), transformation),
      [&window, job] { Take(window, std::shared_ptr<OverlayJob>(job)); }, helpPage);
}

// OK goes on with what is shown; Cancel gives the import up.
void Told(QWidget* parent, const std::function<void()>& work) {
  try {
    work();
  } catch (const Error& error) {
    if (Message_Box(Error_Text(error), MsgButtons::OkCancel, MsgIcon::Warning, title) == MsgAnswer::Ok) return;
    if (auto* window = parent->findChild<FrmGPS*>()) window->reject();
  }
}

void Ask_For_Overlay(QWidget* parent) {
  Check_Net();
  FileRequest request;
  request.title = title;
  request.folder = QFileInfo(MapFile).path();
  request.defaultExtension = QStringLiteral("OVL");
  request.filter = QStringLiteral("Overlay (*.ovl)|*.ovl|Alle Dateien (*.*)|*.*");
  request.helpPage = helpPage;
  if (const auto path = File_Dialog(request)) Show_Overlay(parent, *path);
}

}  // namespace

void Open_Overlay(QWidget* parent, const QString& path) {
  Told(parent, [&] { Show_Overlay(parent, path); });
}

void Import_OVL(QWidget* parent) {
  Told(parent, [parent] { Ask_For_Overlay(parent); });
}
