#include "hand/toolbar_table.h"

#include <algorithm>

namespace {

constexpr bool built = true;

std::vector<ToolRow> Norm_Rows() {
  const QString s = QStringLiteral("Norm");
  return {
      {s, "Map", "Karte", "Karte öffnen oder Fenster einpassen", "Karte: Menü öffnen, Fenster einpassen", built},
      {s, "Tbl", "Tabelle", "Tabelle ein- oder ausblenden", "Tabelle: die Liste der Einträge ein- oder ausblenden",
       built},
      {s, "SAV", "Sichern", "Karteneinträge sichern", "Sichern: die Karteneinträge in ihrer Tabelle sichern", built},
      {s, "Excel", "Excel", {}, {}},
      {s, "Daten", "Daten", "Menü Daten öffnen", "Daten: Notizen und Auswertungen", built},
      {s, "Linie", "Linie", "Linie zeichnen",
       "Linie: Punkt für Punkt anklicken; Doppelklick oder rechte Maustaste: fertig", built},
      {s, "Fl", "Fläche", "Fläche zeichnen",
       "Fläche: Punkt für Punkt anklicken; Doppelklick oder rechte Maustaste: fertig", built},
      {s, "Fd", "Digi", "Fläche digitalisieren", {}},
      {s, "Fig", "Figur", "Figur zeichnen", "Figur: danach auf der Karte mit der Maus aufziehen oder klicken", built},
      {s, "Bild", "Bild", "Bild einfügen", "Bild: danach auf die Stelle der Karte klicken, an der es stehen soll",
       built},
      {s, "Text", "Text", "Text schreiben", "Text: danach auf die Stelle der Karte klicken, an der er stehen soll",
       built},
      {s, "Symb", "Symbol", "Symbol einfügen",
       "Symbol: das Zeichen wählen und auf die Stelle der Karte klicken, an der es stehen soll", built},
      {s, "Scale", "Skala", "Maßstab einfügen",
       "Skala: eine Linie von bekannter Länge ziehen und den Maßstab auf die Karte setzen", built},
      {s, "Ein", "Ein", "unsichtbare Karteneinträge", "Ein: alle unsichtbaren Karteneinträge wieder zeigen", built},
      {s, "Akt", "Aktiv", "inaktive Objekte aktivieren", "Aktiv: alle inaktiven Objekte wieder anklickbar machen",
       built},
      {s, "rechts", "rechts", "Markierte rechtsbündig ausrichten",
       "rechts: rechte Ränder wie beim zuletzt markierten Eintrag", built},
      {s, "links", "links", "Markierte linksbündig ausrichten",
       "links: linke Ränder wie beim zuletzt markierten Eintrag", built},
      {s, "oben", "oben", "Markierte oben ausrichten", "oben: obere Ränder wie beim zuletzt markierten Eintrag", built},
      {s, "unten", "unten", "Markierte unten ausrichten", "unten: untere Ränder wie beim zuletzt markierten Eintrag",
       built},
      {s, "gleich", "gleich", "Markierte gleich groß machen",
       "gleich: Breite und Höhe wie bei der zuletzt markierten Figur", built},
      {s, "Gruppe", "Gruppe", "Markierte zu einer Gruppe verbinden",
       "Gruppe: die Markierten gemeinsam bewegen; noch einmal: Gruppe auflösen", built},
      {s, "MarkDel", "löschen", "Markierte löschen", "löschen: alle markierten Einträge löschen", built},
      {s, "unmark", "zurück", "Markierungen zurücknehmen", "zurück: alle Markierungen zurücknehmen", built},
  };
}

// Texts, symbols, pictures.
std::vector<ToolRow> Box_Rows() {
  std::vector<ToolRow> rows;
  const auto frame = [&rows](const QString& s, const QString& what) {
    rows.push_back({s, "Rahmen", "Rahmen", what + " einrahmen",
                    "Rahmen: Farbe und Breite wählen; rechte Maustaste: Rahmen an oder aus", built});
    rows.push_back({s, "Rfline", "Fußpkt", "Fußpunkt: Bezugslinie für " + what,
                    "Fußpkt: Fußpunkt setzen oder entfernen; rechte Maustaste: Art der Bezugslinie", built});
    rows.push_back({s, "Mark", "Mark", what + " markieren",
                    "Mark: den Eintrag markieren oder die Markierung zurücknehmen", built});
  };
  rows.push_back({"Text", "Ok", "Ok", "Bearbeitung des Textes beenden", "Ok: den Text übernehmen", built});
  rows.push_back({"Text", "Panel", "Text", {}, {}, built, true});
  rows.push_back({"Text", "Schrift", "Schrift", "Schrift ändern",
                  "Schrift: Schriftart, Größe, Stil und Winkel des Textes", built});
  frame(QStringLiteral("Text"), QStringLiteral("Text"));
  rows.push_back({"Symbol", "Ok", "Ok", "Bearbeitung des Symbols beenden", {}, built});
  rows.push_back({"Symbol", "Panel", "Symbol", {}, {}, built, true});
  rows.push_back(
      {"Symbol", "Schrift", "Symbol", "Symbol ändern", "Symbol: ein anderes Zeichen oder eine andere Größe", built});
  frame(QStringLiteral("Symbol"), QStringLiteral("Symbol"));
  rows.push_back({"Bild", "Ok", "Ok", "Bearbeitung des Bildes beenden", {}, built});
  rows.push_back({"Bild", "Panel", "Bild", {}, {}, built, true});
  frame(QStringLiteral("Bild"), QStringLiteral("Bild"));
  return rows;
}

// Areas, lines, figures, and what closes the bar of every entry in hand.
std::vector<ToolRow> Shape_Rows() {
  return {
      {"Ply", "Ok", "Ok", "Bearbeitung der Fläche beenden", {}, built},
      {"Ply", "Panel", "Polygon", {}, {}, built, true},
      {"Ply", "Fill", "Füllen", {}, "Füllen: Farbe oder Muster wählen", built},
      {"Ply", "Breite", "Breite", "Linienbreite", "Breite: wie breit der Strich ist", built},
      {"Ply", "PKorr", "Korr.", "Eckpunkte korrigieren", "Korr.: die Eckpunkte in einer Tabelle ändern und prüfen",
       built},
      {"Ply", "FlBez", "Name", "Namen der Fläche ein- oder ausblenden", {}, built},
      {"Ply", "FlCalc", "Calc.", "Größe der Fläche berechnen", {}},
      {"Ln", "Ok", "Ok", "Bearbeitung der Linie beenden", {}, built},
      {"Ln", "Panel", "Linie", {}, {}, built, true},
      {"Ln", "LnStil", "Stil", "Linienstil", "Stil: durchgezogen, gestrichelt, gepunktet", built},
      {"Ln", "LnEnd", "Endpkt", "Linienendpunkte", "Endpkt: Pfeile, Kästchen oder Kreise an den Enden", built},
      {"Ln", "Breite", "Breite", "Linienbreite", "Breite: wie breit der Strich ist", built},
      {"Ln", "LnKorr", "Korr.", "Eckpunkte korrigieren", "Korr.: die Eckpunkte in einer Tabelle ändern und prüfen",
       built},
      {"Ln", "LnBez", "Name", "Namen der Linie ein- oder ausblenden", {}, built},
      {"Ln", "LnCalc", "Calc.", "Länge der Linie berechnen", {}},
      {"Fig", "Ok", "Ok", "Bearbeitung der Figur beenden", {}, built},
      {"Fig", "Panel", "Figur", {}, {}, built, true},
      {"Fig", "Fill", "Füllen", {}, "Füllen: Farbe oder Muster wählen", built},
      {"Fig", "Breite", "Breite", "Strichbreite", "Breite: wie breit der Umriss ist", built},
      {"Fig", "Curve", "Kurve", "Kanten der freien Figur abrunden oder eckig zeichnen", {}, built},
      {"Fig", "Ein", "Ein", {}, "Ein: die Figur sichtbar oder unsichtbar machen", built},
      {"*", "Del", "Löschen", "Eintrag löschen", "Löschen: den Eintrag löschen (Entf)", built},
      {"*", "vor", "Vor", "einen Platz nach vorn", "Vor: einen Platz nach vorn; rechte Maustaste: ganz nach vorn",
       built},
      {"*", "back", "Hinter", "einen Platz nach hinten",
       "Hinter: einen Platz nach hinten; rechte Maustaste: ganz nach hinten", built},
      {"*", "Dupl", "Duplikat", "Eintrag duplizieren",
       "Duplikat: danach auf die Stelle der Karte klicken, an der es stehen soll", built},
      {"*", "Cpy", "Kopie", "Eintrag kopieren", "Kopie: den Eintrag etwas versetzt noch einmal einfügen", built},
      {"*", "Lupe", "Lupe", "Zoomen - Skala: rechte Maustaste",
       "Lupe: Klicken vergrößert, rechte Maustaste: Zoom-Faktor, Esc: zurück", built},
      {"*", "Vis", "Aus", "Eintrag unsichtbar machen (ausblenden)", {}, built},
      {"*", "Akt", "Aktiv", {}, "Aktiv: der Eintrag kann danach nicht mehr angeklickt werden", built},
      {"*", "Farbe", "Farbe", "Farbe ändern", "Farbe: ein Klick auf eine der 16 Farben färbt den Eintrag", built},
  };
}

bool Belongs(const ToolRow& row, const QString& state) {
  return row.state == state || (row.state == QLatin1String("*") && state != QLatin1String("Norm"));
}

}  // namespace

const std::vector<ToolRow>& Toolbar_Table() {
  static const std::vector<ToolRow> rows = [] {
    std::vector<ToolRow> all;
    for (const auto& part : {Norm_Rows(), Box_Rows(), Shape_Rows()}) all.insert(all.end(), part.begin(), part.end());
    return all;
  }();
  return rows;
}

std::vector<ToolButton> Toolbar_Buttons(const QString& state) {
  std::vector<ToolButton> buttons;
  for (const ToolRow& row : Toolbar_Table())
    if (row.built && Belongs(row, state)) buttons.push_back({row.key, row.caption, row.tip, {}});
  return buttons;
}

void Fill_Toolbar(const QString& state) {
  const ToolbarState former = Toolbar1;
  Toolbar1.Tag = state;
  Toolbar1.buttons = Toolbar_Buttons(state);
  if (former.Tag != state) return;
  for (const ToolButton& old : former.buttons) {
    if (ToolButton* button = Toolbar1.Button(old.Key)) {
      button->Visible = old.Visible;
      button->Enabled = old.Enabled;
    }
  }
}

QString Tool_Help(const QString& state, const QString& key) {
  const auto& rows = Toolbar_Table();
  const auto found =
      std::find_if(rows.begin(), rows.end(), [&](const ToolRow& row) { return row.key == key && Belongs(row, state); });
  if (found == rows.end()) return {};
  return found->help.isEmpty() ? found->tip : found->help;
}
