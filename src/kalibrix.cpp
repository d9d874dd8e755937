#include <QDir>
#include <QTimer>
#include <clocale>

#include "platform/files.h"
#include "platform/message_box.h"
#include "state/global_state.h"
#include "store/file_names.h"
#include "windows/calibration/frmKalibrix.h"
#include "windows/desktop/application.h"
#include "windows/desktop/desktop_services.h"

// Kalibrix: makes the calibration file of a map. Kalibrix [BILD]

namespace {

// For the help; the calibration itself needs no program folder.
void Prepare_Folder() {
  const QDir installed(QCoreApplication::applicationDirPath() + QStringLiteral("/../share/flurax"));
  try {
    Prepare_Program_Folder(installed.exists() ? installed.canonicalPath() : QStringLiteral(FLURAX_DATA_DIR));
  } catch (const Error& error) {
    Message_Box(QStringLiteral("Der Programmordner kann nicht angelegt werden.\n") + error.text, MsgButtons::Ok,
                MsgIcon::Warning, QStringLiteral("Kalibrix"));
  }
}

}  // namespace

int main(int argc, char** argv) {
  Application application(argc, argv);
  std::setlocale(LC_NUMERIC, "C");  // files hold decimal points
  Prepare_Application(application);
  Install_Desktop_Services();
  Reset_Global_State();
  Prepare_Folder();
  FrmKalibrix window;
  window.showMaximized();
  // A path with blanks may come as several words from a desktop that does not quote it.
  const QString map = QCoreApplication::arguments().mid(1).join(QLatin1Char(' '));
  if (!map.isEmpty())
    QTimer::singleShot(0, &window, [&] { window.Open_Map(QDir::current().absoluteFilePath(Clean_Path(map))); });
  return QApplication::exec();
}
