#include "windows/import/overlay_window.h"

#include <QFileInfo>
#include <QPushButton>
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
#include "windows/import/frmGPS.h"

namespace {

const QString title = QStringLiteral("OVL-Datei importieren"), helpPage = QStringLiteral("Overlay.htm");

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
                      QStringLiteral("\nImportierte Einträge löschen: Menü Einträge-Rückgängig"));
  if (auto* button = window.findChild<QPushButton*>(QStringLiteral("cmdWeiter")))
    button->setText(QStringLiteral("&Schließen"));
  Offer_Refusals(Overlay_Refusals(job->file, job->plan, result));
}

}  // namespace

void Open_Overlay(QWidget* parent, const QString& path) {
  auto job = std::make_shared<OverlayJob>();
  job->file = Read_Overlay(Read_Bytes(path));
  const auto way = Ask_Placing_Way(Overlay_System(), Coord, title);
  if (!way) return;
  const BusyPointer busy;
  job->plan = Plan_Overlay(job->file, *way, true);
  if (job->plan.cancelled) return;
  const QString transformation =
      *way == PlacingWay::Transformed ? Transformation_Name(Overlay_System(), Coord).value_or(QString()) : QString();
  FrmGPS& window = Open_frmGPS(parent);
  window.setWindowTitle(QStringLiteral("Karteneinträge importieren - ") + QFileInfo(path).fileName());
  window.Show_List(Overlay_List(job->file, job->plan, QFileInfo(path).fileName(), transformation),
                   [&window, job] { Take(window, std::shared_ptr<OverlayJob>(job)); });
}

void Import_OVL(QWidget* parent) {
  if (!Coord.Geographic() && !Coord.Metric())
    Raise(5000, QStringLiteral("Die Karte ist nicht georeferenziert - Kein Koordinatensystem gefunden - Menü 'Grid - "
                               "erstellen'."));
  FileRequest request;
  request.title = title;
  request.folder = QFileInfo(MapFile).path();
  request.defaultExtension = QStringLiteral("OVL");
  request.filter = QStringLiteral("Overlay (*.ovl)|*.ovl|Alle Dateien (*.*)|*.*");
  request.helpPage = helpPage;
  if (const auto path = File_Dialog(request)) Open_Overlay(parent, *path);
}
