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
  if (!Prepare_Folder()) return 1;
  MdiWindow window;
  window.showMaximized();
  QTimer::singleShot(0, &window, [] { Run_Guarded([] { Program_Start(QCoreApplication::arguments().mid(1)); }); });
  return QApplication::exec();
}
