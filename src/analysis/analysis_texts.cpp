#include "analysis/analysis_texts.h"

#include "analysis/population.h"
#include "platform/text.h"

namespace analysis_texts {

QString Scale_Hint() {
  return QStringLiteral(
      "\r\nHinweis:\r\nFür die Karte ist kein Maßstab angegeben. \r\nLängen und Flächengrößen\r\nentsprechen deshalb "
      "nicht der Wirklichkeit.\r\nEmpfehlung:\r\nMenü 'Objekt Maßstab' wählen\r\nund einen Maßstab in die Karte "
      "eintragen.  ");
}

QString Digits_Hint() {
  return QStringLiteral(
      "Ziffern am Anfang eines Eintrags interpretiert FLURAX als Zahlen bzw. Häufigkeit des betreffenden Eintrags bei "
      "der Berechnung der Abundanz und Dominanz. Falls Sie dies unterdrücken möchten, stellen Sie die Ziffern an das "
      "Ende des Eintrags, oder schreiben Sie an den Anfang ein nicht-numerisches Zeichen: Z.B. anstelle von 18N die "
      "Zeichenfolge N18 oder *18N.");
}

QString Note_Hint() {
  return QStringLiteral(
      "\r\n\r\nDiese Ergebnisse können Sie wie einen Text \r\nbearbeiten, abspeichern,\r\nund insgesamt oder teilweise "
      "ausdrucken. \r\nAlle im Menü 'Daten' aufgeführten Befehle sind verfügbar. ");
}

QString Left_Out(int areas) {
  if (areas == 0) return {};
  if (areas == 1) return QStringLiteral("Eine markierte oder ausgeblendete Fläche ist nicht enthalten.");
  return QStringLiteral("%1 markierte oder ausgeblendete Flächen sind nicht enthalten.").arg(areas);
}

QString Too_Large(const QStringList& texts) {
  if (texts.isEmpty()) return {};
  return QStringLiteral("Nicht gezählt, die Zahl ist größer als 32767: ") + texts.join(QStringLiteral(", "));
}

}  // namespace analysis_texts

QString Format_Number(double value) {
  const QString text = Format(value, QStringLiteral("### ### ##0.00")).trimmed();
  return text.size() > 9 ? Format(value, QStringLiteral("### ### ##0")).trimmed() : text;
}

QString Fixed_Text(double value) { return Format(value, QStringLiteral("0.00")); }

SizeBox Size_Box(const MapInput& input, const EntryRow& row) {
  const MapMeasure& measure = input.measure;
  const auto line = [&](const QString& word, double px, double mm, double natural, const QString& power) {
    return word + Format(px, QStringLiteral("### ### ##0")).trimmed() + QStringLiteral(" Pixel, ") + Format_Number(mm) +
           QStringLiteral(" mm") + power +
           (measure.hasScale ? QStringLiteral(", ") + Format_Number(natural) + measure.unit + power : QString());
  };
  const EntryType type = EntryType::Parse(row.Typ);
  if (!type.IsPolygon() && !type.IsFigure()) return {};
  const std::vector<QPoint> vertices = input.vertices(row);
  const EntryId id = EntryId::Parse(row.ID);
  QString text = id.name + u'\n';
  if (type.IsPolygon() && id.IsLine()) {
    const LineLength length = Total_Length(Line_Segments(vertices, measure.perPixel));
    text += line(QStringLiteral("Länge: "), length.px, length.px * measure.pixelMm, length.nat, {});
    return {QStringLiteral("Linien berechnen"), text};
  }
  const ShapeSize size =
      type.IsFigure() ? Figure_Size(row, vertices, measure.perPixel) : Polygon_Size(vertices, measure.perPixel);
  text += line(QStringLiteral("Fläche: "), size.areaPx, size.areaPx * measure.pixelMm * measure.pixelMm, size.areaNat,
               QStringLiteral("²"));
  text += u'\n' +
          line(QStringLiteral("Umfang: "), size.perimeterPx, size.perimeterPx * measure.pixelMm, size.perimeterNat, {});
  return {QStringLiteral("Flächenstatistik"), text};
}
