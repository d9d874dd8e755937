#include <QDir>
#include <QScreen>
#include <QTimer>
#include <clocale>

#include "maps/program_start.h"
#include "platform/message_box.h"
#include "state/global_state.h"
#include "state/run_guarded.h"
#include "store/file_names.h"
#include "windows/desktop/application.h"
#include "windows/desktop/desktop_services.h"
#include "windows/main/mdi_window.h"

namespace {

// The program folder as delivered: beside an installed program, else where it was built.
QString Delivered_Folder() {
  const QDir installed(QCoreApplication::applicationDirPath() + QStringLiteral("/../share/flurax"));
  return installed.exists() ? installed.canonicalPath() : QStringLiteral(FLURAX_DATA_DIR);
}

bool Prepare_Folder() {
  try {
    Prepare_Program_Folder(Delivered_Folder());
    return true;
  } catch (const Error& error) {
    Message_Box(QStringLiteral("Der Programmordner kann nicht angelegt werden.\n") + error.text, MsgButtons::Ok,
                MsgIcon::Critical, QStringLiteral("Programmfehler "));
    return false;
  }
}

}  // namespace

int main(int argc, char** argv) {
  Application application(argc, argv);
  std::setlocale(LC_NUMERIC, "C");  // files hold decimal points
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
