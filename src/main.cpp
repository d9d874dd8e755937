#include <QScreen>
#include <QTimer>

#include "maps/program_start.h"
#include "prepare_folder.h"
#include "state/global_state.h"
#include "state/run_guarded.h"
#include "windows/desktop/application.h"
#include "windows/desktop/desktop_services.h"
#include "windows/main/mdi_window.h"

int main(int argc, char** argv) {
  Application application(argc, argv);
  Prepare_Application(application);
  Install_Desktop_Services();
  Reset_Global_State();
  const QString commandLine = QCoreApplication::arguments().mid(1).join(QLatin1Char(' '));
  if (!Prepare_Folder()) return 1;
  MdiWindow window;
  window.showMaximized();
  QTimer::singleShot(0, &window, [commandLine] { Run_Guarded([&] { Program_Start(commandLine); }); });
  return QApplication::exec();
}
