#pragma once
#include <QString>

// Texts of the hand on the map.
namespace hand_texts {
inline const QString title = QStringLiteral("Karteneintrag");
inline const QString move = QStringLiteral("Karteneintrag verschieben: Linke Maustaste drücken und bewegen.");
inline const QString unknownType = QStringLiteral("Karteneintrag: Unbekannter Typ = ");
inline const QString outside =
    QStringLiteral("\n Dieser Eintrag wurde über den Rand der Anwendung hinausbewegt.\n  Soll er gelöscht werden?");
inline const QString tooFar = QStringLiteral(
    "Der Eintrag würde zu weit verschoben.\nPositionen können nur zwischen -32768 und 32767 liegen.\n\nEs wurde nichts "
    "verändert.");
inline const QString textTooLong = QStringLiteral("Der Text darf höchstens 253 Zeichen lang sein.");
inline const QString pause =
    QStringLiteral(" Die Taste 'Pause / Unterbrechen' wurde gedrückt\n Soll das Programm beendet werden ?");
inline const QString footPoint = QStringLiteral("Fußpunkt verschieben: Linke Maustaste drücken und bewegen.");
inline const QString footMove = QStringLiteral("Bezugspunkt verschieben: linke Maustaste drücken und bewegen");
inline const QString size = QStringLiteral("Größe ändern: Linke Maustaste drücken und bewegen.");
inline const QString lupe =
    QStringLiteral("Lupe: Klicken vergrößert die Karte. Rechte Maustaste: Zoom-Faktor. Esc: Lupe aus.");
inline const QString placeText = QStringLiteral("Text: Klicken Sie auf die Stelle der Karte, an der er stehen soll.");
inline const QString placeSymbol =
    QStringLiteral("Symbol: Klicken Sie auf die Stelle der Karte, an der es stehen soll.");
inline const QString placePicture =
    QStringLiteral("Bild: Klicken Sie auf die Stelle der Karte, an der es stehen soll.");
inline const QString placeDuplicate =
    QStringLiteral("Duplikat: Klicken Sie auf die Stelle der Karte, an der es stehen soll.");
inline const QString measure = QStringLiteral("Maßstab: Ziehen Sie eine Messlinie von bekannter Länge.");
inline const QString placeScale = QStringLiteral("Maßstab: Klicken Sie auf die Stelle, an der er stehen soll.");
inline const QString drawLine = QStringLiteral(
    "Linie: Klicken setzt einen Eckpunkt, Rücktaste nimmt ihn zurück. Ende: Doppelklick oder rechte Maustaste. Esc: "
    "verwerfen.");
inline const QString drawArea = QStringLiteral(
    "Fläche: Klicken setzt einen Eckpunkt, Rücktaste nimmt ihn zurück. Ende: Doppelklick oder rechte Maustaste. Esc: "
    "verwerfen.");
inline const QString vertex = QStringLiteral("Eckpunkt");
inline const QString fromCorner = QStringLiteral(" Abstand vom linken oberen Karteneck ");
}  // namespace hand_texts
