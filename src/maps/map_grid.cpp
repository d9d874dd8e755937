#include "maps/map_grid.h"

#include <QFileInfo>

#include "maps/map_close.h"
#include "maps/map_open.h"
#include "platform/files.h"
#include "platform/message_box.h"
#include "platform/shell.h"
#include "state/global_state.h"
#include "state/map_state.h"
#include "state/mdi_state.h"
#include "store/table_file.h"

namespace {

const QString tool = QStringLiteral("Kalibrix.exe");
const QString faultTitle = QStringLiteral("Fehler:    Koordinatennetz");

void Tell_Missing_Tool() {
  MsgRequest request;
  request.icon = MsgIcon::Information;
  request.title = faultTitle;
  request.helpPage = QStringLiteral("Kalibrierung.htm");
  request.text = Error_Text(errors::fileNotFound) +
                 QStringLiteral("\nBitte kopieren Sie das Hilfsprogramm Kalibrix.exe in das Anwendungsverzeichnis\n") +
                 ProgramFolder +
                 QStringLiteral(
                     "/\nDie neueste Version von Kalibrix.exe können Sie von\n"
                     "folgender Webseite kostenlos herunterladen:\n(siehe Handbuch)\n\n"
                     "Was Sie ohne Kalibrix tun können:\nLegen Sie eine fertige Kalibrierungsdatei neben "
                     "die Karte, ") +
                 QFileInfo(MapFile).completeBaseName() +
                 QStringLiteral(
                     ".cal,\nund laden Sie die Karte erneut (F5).\nEntfernungen und Flächen misst das "
                     "Programm schon mit einem Maßstab\n(Menü Objekt - Maßstab).");
  Message_Box(request);
}

// The tool has ended. Another map that was opened meanwhile stays.
void Offer_Reload(const QString& map) {
  if (frmMDI.MapOpen && MapFile != map) return;
  const MsgAnswer answer = Message_Box(map + QStringLiteral("\nSoll die Karte erneut geladen werden ?"),
                                       MsgButtons::YesNo, MsgIcon::Question, QStringLiteral("Karte erneut laden"));
  if (answer == MsgAnswer::Yes) Open_Map(map);
}

}  // namespace

void Make_Grid() {
  if (!frmMDI.MapOpen || MapFile.isEmpty()) return;
  const QString program = Find_Program(tool, ProgramFolder);
  if (program.isEmpty()) {
    Tell_Missing_Tool();
    return;
  }
  const QString map = MapFile;
  if (!Save_Table(SaveStep::AtMapChange)) return;
  Close_Map();  // so that the tool can open the picture
  if (Start_Program(program, {map}, [map] { Offer_Reload(map); })) return;
  Message_Box(QStringLiteral("Das Hilfsprogramm kann nicht gestartet werden:\n") + program, MsgButtons::Ok,
              MsgIcon::Information, faultTitle);
  Open_Map(map);
}
