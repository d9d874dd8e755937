#pragma once
#include <QString>

#include "platform/error.h"

// Texts of opening and closing maps.
namespace map_texts {

inline const QString openTitle = QStringLiteral(" Karte öffnen. ");
inline const QString loadingMap = QStringLiteral("\nDiese Karte\nwird geöffnet.\nBitte warten!");
inline const QString loadingTable =
    QStringLiteral("\n\n Diese Einträge\n werden in die Karte geladen.\n\n Bitte warten!");
inline const QString noTable = QStringLiteral("Ohne Tabelle der Einträge\nkann eine Karte nicht geladen werden.");

inline const QString noPrinter = QStringLiteral(
    "\n\nWarnung!\nEs gibt ein Problem mit dem Drucker.\nEntweder ist der Drucker nicht angeschlossen\noder nicht "
    "richtig eingerichtet.\nDruckvorschau und Ausdrucken der Karte nicht möglich.");

inline const QString pleaseLoad = QStringLiteral("Bitte eine Karte laden");
inline const QString pleaseOpen = QStringLiteral("Bitte eine Karte öffnen");
inline const QString pleaseOpenSafe = QStringLiteral("Bitte eine Karte öffnen (abgesicherter Modus)");
inline const QString help = QStringLiteral("F1 - Hilfe");
inline const QString snapshot = QStringLiteral("TEMP.MDB = temporäre Sicherungskopie der Tabelle");

inline const QString safeTitle = QStringLiteral("abgesicherter Modus");
inline const QString repaired = QStringLiteral("Diese Tabelle wurde repariert");
inline const QString renamed = QStringLiteral("Diese Tabelle wurde umbenannt in:");
inline const QString unchanged = QStringLiteral("Diese Tabelle wird unverändert im normalen Modus geladen");
inline const QString stopped = QStringLiteral("Die Prozedur wird abgebrochen");
inline const QString safeOnTitle = QStringLiteral("Karten im abgesicherten Modus öffnen");
inline const QString safeOffTitle = QStringLiteral("Karten im normalen Modus öffnen");
inline const QString safeOnText = QStringLiteral(
    "Wählen Sie diese Option,\nwenn beim Öffnen einer Karte Fehlermeldungen aufgetreten sind,\ndie auf eine "
    "beschädigte "
    "Datenbank hindeuten.");
inline const QString safeOffText =
    QStringLiteral("Die nächste Karte wird zusammen mit den zuletzt bearbeiteten Karteneinträgen geöffnet.");

// The map lies where nothing can be written.
inline QString Read_Only(const Error& error, const QString& path) {
  return QStringLiteral("Fehler:    %1 %2\nKarte:                    %3").arg(error.number).arg(error.text, path) +
         QStringLiteral(
             "\nFLURAX kann auf dieses Laufwerk keine Einträge schreiben.\nBitte kopieren Sie die Karte und "
             "\ndie dazugehörende(n) Tabelle(n) der Karteneinträge \nauf eine Festplatte");
}

// `stem`: path of the table without its ending.
inline QString Damaged(const QString& stem) {
  return QStringLiteral(
             "Fehler beim Lesen der Karteneinträge \nBitte starten Sie FLURAX neu und laden Sie zur Karte "
             "folgende Einträge:\nDie Sicherungskopie der Datenbank:\n") +
         stem + QStringLiteral("_bak.mdb\noder die reparierte Datenbank:\n ") + stem +
         QStringLiteral("_rep.mdb\nDie vermutlich defekte Datenbank wurde umbenannt in:\n") + stem +
         QStringLiteral(
             "_err.mdb\n\nHinweis: Datenbanken können beschädigt werden z.B. durch Stromausfall während eines "
             "Schreibvorgangs, schadhafte Festplatte usw.\nTipp: Halten Sie immer eine Sicherungskopie Ihrer "
             "Karteneinträge in Reserve mit 'Einträge - Sichern als...'\n\nMöchten Sie das Programm trotzdem "
             "fortsetzen?");
}

// A marker file was left behind; `stem` is the map's path without ending.
inline QString Not_Ended(const QString& stem) {
  return QStringLiteral("\nBitte laden Sie zur Karte folgende Einträge:\n%1_bak.mdb\n%1_rep.mdb\n%1_err.mdb").arg(stem);
}

}  // namespace map_texts
