#include "windows/desktop/desktop_services.h"

#include <QApplication>
#include <QIcon>
#include <QLibraryInfo>
#include <QLocale>
#include <QStyleFactory>
#include <QTranslator>
#include <clocale>

#include "windows/desktop/clipboard.h"
#include "windows/desktop/desktop_dialogs.h"
#include "windows/desktop/desktop_printer.h"

static void Load_Icons() { Q_INIT_RESOURCE(icons); }  // a library's resources are not loaded by themselves

void Install_Desktop_Services() {
  Set_Message_Handler(Desktop_Message);
  Set_File_Dialog_Handler(Desktop_File_Dialog);
  Set_Input_Box_Handler(Desktop_Input_Box);
  Set_Progress_Maker(Make_Desktop_Progress);
  Set_Shell(Desktop_Shell());
  Set_Printer(Desktop_Printer());
  Install_Clipboard();
}

void Prepare_Application(QApplication& application) {
  std::setlocale(LC_NUMERIC, "C");  // files hold decimal points
  Load_Icons();
  Guard_Pasting(application);
  QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
  auto* translator = new QTranslator(&application);
  if (translator->load(QStringLiteral("qtbase_de"), QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
    QCoreApplication::installTranslator(translator);
  QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
  QApplication::setApplicationDisplayName({});  // the captions are complete as they are
  QCoreApplication::setApplicationName(QStringLiteral("flurax"));
  QApplication::setDesktopFileName(QStringLiteral("flurax"));
  QApplication::setWindowIcon(QIcon(QStringLiteral(":/icons/app.svg")));
}
