#pragma once
#include <QString>

// Texts of the table file: questions, reports, file dialogs. Line breaks are line feeds.
namespace table_texts {

inline const QString errorTitle = QStringLiteral("Programmfehler ");
inline const QString damaged = QStringLiteral("fehlerhafte Datenbank\n");
inline const QString foreign =
    QStringLiteral("\n\nDie Datenbank ist fehlerhaft oder\n gehört nicht zum Programm FLURAX.");
inline const QString renamed = QStringLiteral("Diese fehlerhafte oder bereits geöffnete Datei wurde umbenannt in:");
inline const QString loadBackup = QStringLiteral("Sie können anschließend eine Sicherheitskopie laden.");
inline const QString noTemplate = QStringLiteral(
    "\n\nProgramm beenden\n und die fehlende Datei\nvon der Programmdiskette\nin folgendes Verzeichnis laden:\n ");
inline const QString askNewTable = QStringLiteral("Möchten Sie eine neue Tabelle der Einträge anlegen?");

inline const QString saveTitle = QStringLiteral("  Karteneinträge sichern");
inline const QString saved = QStringLiteral(" gesichert.");
inline const QString foreignSnapshot = QStringLiteral(
    "\n\nDie Sicherungskopie gehört zu einer anderen Tabelle.\nDie Karteneinträge bleiben, wie sie sind.");
inline const QString restored = QStringLiteral("Karteneinträge wieder hergestellt.");
inline const QString askChanged =
    QStringLiteral("\n\nDie Karteneinträge\nwurden verändert.\nWollen Sie die veränderten Einträge sichern ?");
inline const QString askOwnName = QStringLiteral("Möchten Sie die Karteneinträge unter einem eigenen Namen sichern?");
inline const QString keptUnder = QStringLiteral("Die bisherigen Karteneinträge liegen jetzt in:\n");
inline const QString askReally = QStringLiteral("Möchten Sie die Karteneinträge wirklich in folgender Datei sichern?");
inline const QString saveFilter = QStringLiteral("Datenbank (*.MDB)|*.MDB| Alle Dateien (*.*)|*.*");
inline const QString minus = QStringLiteral("Minuszeichen - im Dateinamen nicht zulässig.");
inline const QString noAccess = QStringLiteral(" Zugriff auf Standardtabelle verweigert.");
inline const QString notSaved = QStringLiteral("Datei kann nicht gesichert werden.");
inline const QString shortNames = QStringLiteral("Bitte, verwenden Sie kurze Dateinamen ohne Sonderzeichen.");
inline const QString saveErrorTitle = QStringLiteral("DBSaveError");

inline const QString loadTitle = QStringLiteral("Einträge laden");
inline const QString loadFilter = QStringLiteral("Datenbank (*.MDB)|*.MDB");
inline const QString otherMap =
    QStringLiteral("Vorsicht!\nDiese Tabelle wurde in Verbindung mit folgender Karte erstellt:\n");
inline const QString otherMapCheck = QStringLiteral(
    "\nBitte überprüfen Sie,\nob die Einträge auch für die geladene Karte passen.\nFalls Sie die aktuellen Einträge in "
    "die Karte noch nicht gesichert haben, \nwählen Sie 'Nein'.");

inline const QString away = QStringLiteral("Die Datei der Karteneinträge ist nicht mehr an ihrem Ort:\n");
inline const QString deleted = QStringLiteral("\n\nSie wurde gelöscht oder durch eine andere ersetzt.");
inline const QString moved =
    QStringLiteral("\n\nSie oder ihr Ordner wurde verschoben oder umbenannt. Jetzt liegt sie hier:\n");
inline const QString stillThere = QStringLiteral("\n\nDie Karteneinträge sind alle noch da.");
inline const QString askBack =
    QStringLiteral("\nSollen sie wieder an diesen Ort geschrieben werden?\n'Nein': Sie wählen einen anderen Ort.");
inline const QString askPlace = QStringLiteral("\nBitte wählen Sie einen Ort, an den sie geschrieben werden.");

inline const QString compressTitle = QStringLiteral("Tabelle komprimieren");
inline const QString sizeBefore = QStringLiteral("ursprüngliche Größe: ");
inline const QString sizeAfter = QStringLiteral("komprimiert: ");
inline const QString repairTitle = QStringLiteral("Tabelle reparieren");

inline const QString undo = QStringLiteral("Rückgängig");
inline const QString undoLoad = QStringLiteral("Rückgängig: Einträge laden");
inline const QString undoNew = QStringLiteral("Rückgängig: Einträge neu");

}  // namespace table_texts
