#include "support/surroundings.h"

#include <QLocale>
#include <clocale>

void Set_Test_Surroundings() {
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  qputenv("QT_ENABLE_HIGHDPI_SCALING", "0");
  QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
  std::setlocale(LC_NUMERIC, "C");
}
