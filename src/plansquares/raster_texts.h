#pragma once
#include <QString>

namespace raster_texts {
inline const QString faultTitle = QStringLiteral("Fehler:    ");
inline const QString noSize = QStringLiteral("Keine Größe für die Planquadrate angegeben!");
inline const QString noPreview = QStringLiteral("\n\nOhne Größenangabe keine Vorschau möglich!");
inline const QString wrongUnit = QStringLiteral(
    "\n\nDie Maßeinheit fehlt oder stimmt nicht mit der Dimension des Maßstabs überein.\nSie wird auf vom Programm "
    "festgelegt auf:\n");
inline const QString noScale = QStringLiteral(
    "Kein Maßstab vorhanden.\n\nSchließen Sie dieses Fenster und \ntragen Sie zuerst einen Maßstab \nin die Karte "
    "ein,\nwenn Sie die Größe der Planquadrate\nnicht im Papiermaß mm,\nsondern in natürlichen Einheiten,\nwie z.B. in "
    " m oder  km \neingeben möchten.");
inline const QString badCorner = QStringLiteral(
    "Ungültige(r) Wert(e) in den Eingabefeldern P1x,P1y,P2x oder P2y für die Eckpunkte des Rasterfelds.");
inline const QString badCornerTitle = QStringLiteral("Eingabewerrte");
inline const QString larger = QStringLiteral("\nWählen Sie einen größeren Bereich, \noder kleinere Planquadrate.");
inline const QString tooNarrow =
    QStringLiteral("Der ausgewählte Bereich ist zu schmal, bzw. geringer als die Breite eines Planquadrats.\n");
inline const QString tooLow =
    QStringLiteral("Der ausgewählte Bereich ist zu niedrig, bzw. geringer als die Höhe eines Planquadrats.\n");
inline const QString adjusted =
    QStringLiteral("Abstimmung: Der ausgewählte Bereich wurde an die Seitenlänge der Planquadrate angepasst.\n");
inline const QString tooMany = QStringLiteral("Zuviele Planquadrate.");
inline const QString takeHint =
    QStringLiteral("\nWählen Sie 'Übernehmen', wenn Sie die entworfenen Planquadrate in die Karte übernehmen wollen.");
inline const QString designed = QStringLiteral("Raster entworfen.");
inline const QString removed = QStringLiteral("Raster gelöscht");
inline const QString fillCorners = QStringLiteral(
    "Bitte füllen Sie alle vier Eingabefelder P1x,P1y,P2x und P2y für die Eckpunkte des Rasterfeldes aus.");
inline const QString fillCornersTitle = QStringLiteral("Fehler:    : Eckpunkte des Rasteerfelds");
inline const QString noNet = QStringLiteral(
    "Kein Koordinatennetz für die Karte definiert.\nBitte georeferenzieren Sie die Karte mit dem Menü 'Grid - "
    "Koordinatennetz erstellen'.");
inline const QString noNetTitle = QStringLiteral("Keine Koordinaten");
inline const QString corners = QStringLiteral(
    "Für den Anfangspunkt (P1) und Endpunkt (P2)  können Sie Koordinatenwerte eingeben, oder den Abstand vom linken "
    "oberen Karteneck (Kartenursprung) bestimmen mit der Anzahl der Pixel oder in natürlichen Maßeinheiten (z.B. m "
    "oder "
    "km), bzw. den Teilbereich auf der Karte manuell frei auswählen. ");
inline const QString dragField = QStringLiteral("Bereich auswählen: Mauszeiger auf der Karte von P1 nach P2 ziehen.");
inline const QString alreadyThere = QStringLiteral(
    "Planquadrate sind bereits in der Karte vorhanden.\nDiese Objekte müssen gelöscht werden,\nbevor das neue Raster "
    "übernommen wird.");
inline const QString alreadyThereTitle = QStringLiteral("Planquadrate bereits vorhanden");
inline const QString takeTitle = QStringLiteral("Planquadrate übernehmen");
inline const QString taking = QStringLiteral("Die Planquadrate werden in die Datenbanktabelle geschrieben.");
inline const QString deleteTitle = QStringLiteral("Planquadrate löschen");
inline const QString deleting = QStringLiteral("Die Planquadrate werden aus der Datenbanktabelle entfernt.");
inline const QString taken = QStringLiteral(
    "Raster übernommen.\n\nPlanquadrate überarbeiten:\nEntsprechende Registerkarte,\nbzw. Menü 'Grid - Planquadrate - "
    "bearbeiten' wählen,\noder einzelnes Planquadrat anklicken mit der rechten Maustaste.\n\nMit dem Menü 'Einträge - "
    "Rückgängig\nkönnen Sie die Veränderungen stornieren und\nden ursprünglichen Zustand wieder herstellen.");
inline const QString takeUndo = QStringLiteral("Rückgängig: Raster übernehmen");
inline const QString changeUndo = QStringLiteral("Rückgängig: Planquadrat ändern");
inline const QString deleteUndo = QStringLiteral("Rückgängig: Planquadrate löschen");
inline const QString hiddenSquare = QStringLiteral("unsichtbares Planquadrat!");
inline const QString faultOfSquare = QStringLiteral("Fehler: Planquadrat");
}  // namespace raster_texts
