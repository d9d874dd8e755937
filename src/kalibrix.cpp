#include <QDir>
#include <QTimer>

#include "platform/files.h"
#include "prepare_folder.h"
#include "state/global_state.h"
#include "windows/calibration/frmKalibrix.h"
#include "windows/desktop/application.h"
#include "windows/desktop/desktop_services.h"

// Kalibrix: makes the calibration file of a map. Kalibrix [BILD]

int main(int argc, char** argv) {
  Application application(argc, argv);
  Prepare_Application(application);
  Install_Desktop_Services();
  QApplication::setDesktopFileName(QStringLiteral("kalibrix"));
  Reset_Global_State();
  Prepare_Folder();  // for the help: calibrating needs none, so a failure is only said
  FrmKalibrix window;
  window.showMaximized();
  window.activateWindow();  // a desktop may leave the focus with Flurax, which started it
  // A path with blanks may come as several words from a desktop that does not quote it.
  const QString map = QCoreApplication::arguments().mid(1).join(QLatin1Char(' '));
  if (!map.isEmpty())
    QTimer::singleShot(0, &window, [&] { window.Open_Map(QDir::current().absoluteFilePath(Clean_Path(map))); });
  return QApplication::exec();
}
