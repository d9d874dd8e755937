#pragma once
#include <QString>

// What printing says.
namespace print_texts {
inline const QString printTitle = QStringLiteral("Karte drucken"),
                     problemTitle = QStringLiteral("Problem - Karte drucken"),
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
                     sharpness = QStringLiteral("Druckschärfe \n"),
                     notSaved = QStringLiteral("Druckfaktor nicht gesichert"),
                     noRoom = QStringLiteral(
                         "Die Seitenränder lassen auf dem Blatt keinen Platz für die Karte.\n"
                         "Bitte verkleinern Sie die Ränder mit dem Menü 'Karte - Seitenränder'.");
}  // namespace print_texts
