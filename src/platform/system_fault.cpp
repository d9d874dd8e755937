#include "platform/system_fault.h"

#include <QDir>
#include <cerrno>

QString System_Fault(int code) {
  switch (code) {
    case EIO:
      return QStringLiteral("Das Laufwerk meldet einen Fehler beim Lesen oder Schreiben.");
    case EMFILE:
    case ENFILE:
      return QStringLiteral("Es sind zu viele Dateien geöffnet.");
    case ENXIO:
    case ENODEV:
    case ENOTCONN:
    case ESTALE:
    case EHOSTDOWN:
    case ETIMEDOUT:
      return QStringLiteral("Das Laufwerk oder die Freigabe ist nicht mehr da.");
    default:
      return QStringLiteral("Das System meldet den Fehler %1.").arg(code);
  }
}

QString No_Work_Folder(const QString& where) {
  return QStringLiteral("Es konnte kein Arbeitsordner angelegt werden: ") +
         (where.isEmpty() ? QDir::tempPath() : where);
}
