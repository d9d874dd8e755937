#include "start/toolbar_table.h"

#include <algorithm>

namespace {

constexpr bool built = true;

std::vector<ToolRow> Norm_Rows() {
  const QString s = QStringLiteral("Norm");
  return {
      {s, "Map", "Karte", "Karte öffnen oder Fenster einpassen", "Karte: Menü öffnen, Fenster einpassen", built},
      {s, "Tbl", "Tabelle", "Tabelle ein- oder ausblenden", {}},
      {s, "SAV", "Sichern", "Karteneinträge sichern", "Sichern: die Karteneinträge in ihrer Tabelle sichern", built},
      {s, "Excel", "Excel", {}, {}},
      {s, "Daten", "Daten", {}, {}},
      {s, "Linie", "Linie", {}, {}},
      {s, "Fl", "Fläche", {}, {}},
      {s, "Fd", "Digi", {}, {}},
      {s, "Fig", "Figur", {}, {}},
      {s, "Bild", "Bild", {}, {}},
      {s, "Text", "Text", {}, {}},
      {s, "Symb", "Symbol", {}, {}},
      {s, "Scale", "Skala", {}, {}},
      {s, "Ein", "Ein", {}, {}},
      {s, "Akt", "Aktiv", "inaktive Objekte aktivieren", {}},
      {s, "rechts", "rechts", {}, {}},
      {s, "links", "links", {}, {}},
      {s, "oben", "oben", {}, {}},
      {s, "unten", "unten", {}, {}},
      {s, "gleich", "gleich", {}, {}},
      {s, "Gruppe", "Gruppe", {}, {}},
      {s, "MarkDel", "löschen", {}, {}},
      {s, "unmark", "zurück", {}, {}},
  };
}

// Texts, symbols, pictures.
std::vector<ToolRow> Box_Rows() {
  std::vector<ToolRow> rows;
  const auto frame = [&rows](const QString& s) {
    rows.push_back({s, "Rahmen", "Rahmen", {}, {}});
    rows.push_back({s, "Rfline", "Fußpkt", {}, {}});
    rows.push_back({s, "Mark", "Mark", {}, {}});
  };
  rows.push_back({"Text", "Ok", "Ok", {}, {}});
  rows.push_back({"Text", "Panel", "Text", {}, {}, false, true});
  rows.push_back({"Text", "Schrift", "Schrift", {}, {}});
  frame(QStringLiteral("Text"));
  rows.push_back({"Symbol", "Ok", "Ok", "Bearbeitung des Symbols beenden", {}});
  rows.push_back({"Symbol", "Panel", "Symbol", {}, {}, false, true});
  rows.push_back({"Symbol", "Schrift", "Symbol", {}, {}});
  frame(QStringLiteral("Symbol"));
  rows.push_back({"Bild", "Ok", "Ok", {}, {}});
  rows.push_back({"Bild", "Panel", "Bild", {}, {}, false, true});
  frame(QStringLiteral("Bild"));
  return rows;
}

// Areas, lines, figures, and what closes the bar of every entry in hand.
std::vector<ToolRow> Shape_Rows() {
  return {
      {"Ply", "Ok", "Ok", {}, {}},
      {"Ply", "Panel", "Polygon", {}, {}, false, true},
      {"Ply", "Fill", "Füllen", {}, {}},
      {"Ply", "Breite", "Breite", {}, {}},
      {"Ply", "PKorr", "Korr.", {}, {}},
      {"Ply", "FlBez", "Name", {}, {}},
      {"Ply", "FlCalc", "Calc.", {}, {}},
      {"Ln", "Ok", "Ok", {}, {}},
      {"Ln", "Panel", "Linie", {}, {}, false, true},
      {"Ln", "LnStil", "Stil", {}, {}},
      {"Ln", "LnEnd", "Endpkt", {}, {}},
      {"Ln", "Breite", "Breite", {}, {}},
      {"Ln", "LnKorr", "Korr.", {}, {}},
      {"Ln", "LnBez", "Name", {}, {}},
      {"Ln", "LnCalc", "Calc.", {}, {}},
      {"Fig", "Ok", "Ok", {}, {}},
      {"Fig", "Panel", "Figur", {}, {}, false, true},
      {"Fig", "Fill", "Füllen", {}, {}},
      {"Fig", "Breite", "Breite", {}, {}},
      {"Fig", "Curve", "Kurve", {}, {}},
      {"Fig", "Ein", "Ein", {}, {}},
      {"*", "Del", "Löschen", {}, {}},
      {"*", "vor", "Vor", {}, {}},
      {"*", "back", "Hinter", {}, {}},
      {"*", "Dupl", "Duplikat", {}, {}},
      {"*", "Cpy", "Kopie", {}, {}},
      {"*", "Lupe", "Lupe", "Zoomen - Skala: rechte Maustaste", {}},
      {"*", "Vis", "Aus", {}, {}},
      {"*", "Akt", "Aktiv", {}, {}},
      {"*", "Farbe", "Farbe", {}, {}},
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
