#pragma once
#include <QString>

// What printing says.
namespace print_texts {
inline const QString printTitle = QStringLiteral("Karte drucken"),
                     problemTitle = QStringLiteral("Problem - Karte drucken"),
                     figureTitle = QStringLiteral("Module4 - Fig_Print"),
                     cancelled = QStringLiteral(
                         "Der Ausdruck der Karte wird abgebrochen\n\n"
                         "Drucker abschalten und dann Ok drücken.\n"),
                     entryFailed = QStringLiteral(
                         "Ein Problem ist aufgetreten beim Druck\n"
                         "des folgenden Karteneintrags:\n%1\n"
                         "Möchten Sie den Druck fortsetzen?"),
                     tooLarge = QStringLiteral(
                         "\nKarte zu groß, bzw. Speicher der Grafikkarte zu klein.\n"
                         "Zu viele Objekte auf der Druckseite.\n\n"
                         "Bitte schließen Sie andere Programme und die Druckvorschau.\n"
                         "Probieren ..."),
                     stopped = QStringLiteral("Der Druck wurde abgebrochen."),
                     sharpness = QStringLiteral("Druckschärfe \n"),
                     notSaved = QStringLiteral("Druckfaktor nicht gesichert"),
                     noRoom = QStringLiteral(
                         "Die Seitenränder lassen auf dem Blatt keinen Platz für die Karte.\n"
                         "Bitte verkleinern Sie die Ränder mit dem Menü 'Karte - Seitenränder'."),
                     tableTitle = QStringLiteral("Tabelle drucken"), textTitle = QStringLiteral("Text drucken"),
                     screenTitle = QStringLiteral("Bildschirm drucken"), pathTitle = QStringLiteral("Druckpfad"),
                     setupTitle = QStringLiteral("Druckereinstellung"), marginsTitle = QStringLiteral("Seitenränder"),
                     previewTitle = QStringLiteral("Druckvorschau"),
                     noPreview = QStringLiteral("Druckvorschau kann nicht erstellt werden."),
                     previewStopped = QStringLiteral("Vorschau abgebrochen"),
                     wrongFontFactor = QStringLiteral(
                         "Fehlerhafter Faktor der Druckschriftgröße\n"
                         " Wertebereich:  0.3 - 3.0"),
                     keepSettings = QStringLiteral(
                         "Die Einstellungen für die Ausgabe der Karte auf dem Drucker wurden verändert.\n"
                         "Sollen diese neuen Druckeinstellungen übernommen werden?"),
                     keepSettingsTitle = QStringLiteral("Druckereinstellungen sichern?"),
                     keepMargins = QStringLiteral(
                         "Die Randeinstellungen für den Druck der Karte wurden verändert.\n"
                         "Möchten Sie die neuen Ränder übernehmen?"),
                     exportTitle = QStringLiteral("Karte mit Einträgen als BITMAP exportieren"),
                     notOverMap = QStringLiteral(
                         "Die Karte selbst wird nicht überschrieben. Bitte wählen Sie einen "
                         "anderen Namen.");
}  // namespace print_texts
