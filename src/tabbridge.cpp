#include <QDir>
#include <QIcon>

#include "maps/sheet_bridge.h"
#include "platform/error.h"
#include "platform/message_box.h"
#include "prepare_folder.h"
#include "state/events.h"
#include "state/global_state.h"
#include "state/run_guarded.h"
#include "windows/bridge/frmTabAustausch.h"
#include "windows/bridge/frmTabExport.h"
#include "windows/desktop/application.h"
#include "windows/desktop/desktop_services.h"

// TabBridge: without an argument it writes the table of the last map, or of the map that is named, into the workbook
// beside it. With the word "ColExchange" it brings columns of a sheet into the copy of a table that Flurax has made.

namespace {

void Exchange() {
  SheetExchange exchange(Exchange_File());
  FrmTabAustausch window(exchange);
  window.show();
  window.activateWindow();  // a desktop may leave the focus with Flurax, which started it
  const QString book = exchange.Proposed_Workbook();
  if (!book.isEmpty()) window.Take_Workbook(book);
  QApplication::exec();
}

void Export(const QString& map) {
  FrmTabExport window(map);
  window.show();
  window.activateWindow();
  QApplication::processEvents();
  window.Write_Table();
  QApplication::exec();
}

void Run(const QStringList& words) {
  try {
    if (!words.isEmpty() && words.first().compare(sheet_bridge::exchangeWord, Qt::CaseInsensitive) == 0)
      Exchange();
    else
      Export(words.isEmpty() ? Last_Map() : QDir::current().absoluteFilePath(words.first()));
  } catch (const Error& error) {
    Message_Box(Error_Text(error), MsgButtons::Ok, MsgIcon::Critical, QStringLiteral("TabBridge"));
  }
}

}  // namespace

int main(int argc, char** argv) {
  Application application(argc, argv);
  Prepare_Application(application);
  QApplication::setDesktopFileName(QStringLiteral("tabbridge"));
  QApplication::setWindowIcon(QIcon(QStringLiteral(":/icons/sheet.svg")));
  Install_Desktop_Services();
  Reset_Global_State();
  if (!Prepare_Folder()) return 1;
  events.Busy.Connect([](bool on) {
    if (on)
      QApplication::setOverrideCursor(Qt::WaitCursor);
    else
      QApplication::restoreOverrideCursor();
  });
  Run(QCoreApplication::arguments().mid(1));
  return 0;
}
