#include "maps/toolbar_table.h"

#include "maps/command_look.h"
#include "maps/commands.h"
#include "maps/row_look.h"
#include "state/global_state.h"
#include "state/map_state.h"
#include "state/mdi_state.h"

namespace {

// clang-format off

std::vector<ToolRow> Norm_Rows() {
  constexpr ToolMode s = ToolMode::Norm;
  return {
      {s, "Map", "MapButton", "Karte", "Karte öffnen oder Fenster einpassen",
       "Karte: Menü öffnen, Fenster einpassen", {}},
      {s, "Tbl", "mnuDBGridOn", "Tabelle", "Tabelle ein- oder ausblenden",
       "Tabelle: die Liste der Einträge ein- oder ausblenden", {}},
      {s, "SAV", "mnuTableSave", "Sichern", "Karteneinträge sichern",
       "Sichern: die Karteneinträge in ihrer Tabelle sichern", {}},
      {s, "Excel", "mnuExportxls", "Excel", "Einträge in die Excel-Arbeitsmappe schreiben",
       "Excel: die Tabelle der Einträge in die Arbeitsmappe neben der Karte schreiben und öffnen", {}},
      {s, "Daten", "DataMenu", "Daten", "Menü Daten öffnen", "Daten: Notizen und Auswertungen", {}},
      {s, "Linie", "mnuInsLinie", "Linie", "Linie zeichnen",
       "Linie: Punkt für Punkt anklicken; Doppelklick oder rechte Maustaste: fertig", {}},
      {s, "Fl", "mnuInsFl", "Fläche", "Fläche zeichnen",
       "Fläche: Punkt für Punkt anklicken; Doppelklick oder rechte Maustaste: fertig", {}},
      {s, "Fd", "mnuInsDigi", "Digi", "Fläche digitalisieren", {}, {}},
      {s, "Fig", "mnuInsFigur", "Figur", "Figur zeichnen",
       "Figur: danach auf der Karte mit der Maus aufziehen oder klicken", {}},
      {s, "Bild", "mnuInsBild", "Bild", "Bild einfügen",
       "Bild: danach auf die Stelle der Karte klicken, an der es stehen soll", {}},
      {s, "Text", "mnuInsText", "Text", "Text schreiben",
       "Text: danach auf die Stelle der Karte klicken, an der er stehen soll", {}},
      {s, "Symb", "mnuInsSymbol", "Symbol", "Symbol einfügen",
       "Symbol: das Zeichen wählen und auf die Stelle der Karte klicken, an der es stehen soll", {}},
      {s, "Scale", "mnuInsMass", "Skala", "Maßstab einfügen",
       "Skala: eine Linie von bekannter Länge ziehen und den Maßstab auf die Karte setzen", {}},
      {s, "Ein", "mnuObjVisAll", "Ein", "unsichtbare Karteneinträge",
       "Ein: alle unsichtbaren Karteneinträge wieder zeigen", {}},
      {s, "Akt", "mnuObjActAll", "Aktiv", "inaktive Objekte aktivieren",
       "Aktiv: alle inaktiven Objekte wieder anklickbar machen", {}},
      {s, "rechts", "mnuJustRechts", "rechts", "Markierte rechtsbündig ausrichten",
       "rechts: rechte Ränder wie beim zuletzt markierten Eintrag", {}},
      {s, "links", "mnuJustLinks", "links", "Markierte linksbündig ausrichten",
       "links: linke Ränder wie beim zuletzt markierten Eintrag", {}},
      {s, "oben", "mnuJustOben", "oben", "Markierte oben ausrichten",
       "oben: obere Ränder wie beim zuletzt markierten Eintrag", {}},
      {s, "unten", "mnuJustUnten", "unten", "Markierte unten ausrichten",
       "unten: untere Ränder wie beim zuletzt markierten Eintrag", {}},
      {s, "gleich", "mnuJustGleich", "gleich", "Markierte gleich groß machen",
       "gleich: Breite und Höhe wie bei der zuletzt markierten Figur", {}},
      {s, "Gruppe", "mnuGroup", "Gruppe", "Markierte zu einer Gruppe verbinden",
       "Gruppe: die Markierten gemeinsam bewegen; noch einmal: Gruppe auflösen", {}},
      {s, "MarkDel", "mnuMarkDel", "löschen", "Markierte löschen", "löschen: alle markierten Einträge löschen", {}},
      {s, "unmark", "mnuUnmark", "zurück", "Markierungen zurücknehmen",
       "zurück: alle Markierungen zurücknehmen", {}},
  };
}

// Texts, symbols, pictures.
std::vector<ToolRow> Box_Rows() {
  using enum ToolMode;
  std::vector<ToolRow> rows;
  const auto begin = [&rows](ToolMode s, const QString& end, const QString& help) {
    rows.push_back({s, "Ok", "Ok", "Ok", end, help, {}});
    rows.push_back({s, "Panel", {}, Tool_Word(s), {}, {}, {}});
  };
  const auto frame = [&rows](ToolMode s) {
    const QString word = Tool_Word(s);
    rows.push_back({s, "Rahmen", "mnuRahmen", "Rahmen", word + " einrahmen",
                    "Rahmen: Farbe und Breite wählen; rechte Maustaste: Rahmen an oder aus", "FrameOnOff"});
    rows.push_back({s, "Rfline", "FootPoint", "Fußpkt", "Fußpunkt: Bezugslinie für " + word,
                    "Fußpkt: Fußpunkt setzen oder entfernen; rechte Maustaste: Art der Bezugslinie", "mnuRfline"});
    rows.push_back({s, "Mark", "mnuMarkObj", "Mark", word + " markieren",
                    "Mark: den Eintrag markieren oder die Markierung zurücknehmen", {}});
  };
  begin(Text, "Bearbeitung des Textes beenden", "Ok: den Text übernehmen");
  rows.push_back({Text, "Schrift", "mnuSchrift", "Schrift", "Schrift ändern",
                  "Schrift: Schriftart, Größe, Stil und Winkel des Textes", {}});
  frame(Text);
  begin(Symbol, "Bearbeitung des Symbols beenden", {});
  rows.push_back({Symbol, "Schrift", "mnuSchrift", "Symbol", "Symbol ändern",
                  "Symbol: ein anderes Zeichen oder eine andere Größe", {}});
  frame(Symbol);
  begin(Picture, "Bearbeitung des Bildes beenden", {});
  frame(Picture);
  return rows;
}

// Areas, lines, figures.
std::vector<ToolRow> Shape_Rows() {
  using enum ToolMode;
  const QString vertices = QStringLiteral("Korr.: die Eckpunkte in einer Tabelle ändern und prüfen");
  const QString fill = QStringLiteral("Füllen: Farbe oder Muster wählen");
  const QString width = QStringLiteral("Breite: wie breit der Strich ist");
  return {
      {Area, "Ok", "Ok", "Ok", "Bearbeitung der Fläche beenden", {}, {}},
      {Area, "Panel", {}, "Polygon", {}, {}, {}},
      {Area, "Fill", "mnuFigFill", "Füllen", {}, fill, {}},
      {Area, "Breite", "mnuBreite", "Breite", "Linienbreite", width, {}},
      {Area, "PKorr", "mnuFigKorr", "Korr.", "Eckpunkte korrigieren", vertices, {}},
      {Area, "FlBez", "Label", "Name", "Namen der Fläche ein- oder ausblenden", {}, {}},
      {Area, "FlCalc", "mnuCalc", "Calc.", "Größe der Fläche berechnen", {}, {}},
      {Line, "Ok", "Ok", "Ok", "Bearbeitung der Linie beenden", {}, {}},
      {Line, "Panel", {}, "Linie", {}, {}, {}},
      {Line, "LnStil", "mnuLnStil", "Stil", "Linienstil", "Stil: durchgezogen, gestrichelt, gepunktet", {}},
      {Line, "LnEnd", "mnuLnEnd", "Endpkt", "Linienendpunkte",
       "Endpkt: Pfeile, Kästchen oder Kreise an den Enden", {}},
      {Line, "Breite", "mnuBreite", "Breite", "Linienbreite", width, {}},
      {Line, "LnKorr", "mnuFigKorr", "Korr.", "Eckpunkte korrigieren", vertices, {}},
      {Line, "LnBez", "Label", "Name", "Namen der Linie ein- oder ausblenden", {}, {}},
      {Line, "LnCalc", "mnuCalc", "Calc.", "Länge der Linie berechnen", {}, {}},
      {Figure, "Ok", "Ok", "Ok", "Bearbeitung der Figur beenden", {}, {}},
      {Figure, "Panel", {}, "Figur", {}, {}, {}},
      {Figure, "Fill", "mnuFigFill", "Füllen", {}, fill, {}},
      {Figure, "Breite", "mnuBreite", "Breite", "Strichbreite", "Breite: wie breit der Umriss ist", {}},
      {Figure, "Curve", "mnuKanten", "Kurve", "Kanten der freien Figur abrunden oder eckig zeichnen", {}, {}},
      {Figure, "Ein", "mnuObjVisNo", "Ein", {}, "Ein: die Figur sichtbar oder unsichtbar machen", {}},
  };
}

// What closes the bar of every entry in hand.
std::vector<ToolRow> Closing_Rows() {
  return {
      {{}, "Del", "mnuObjDel", "Löschen", "Eintrag löschen", "Löschen: den Eintrag löschen (Entf)", {}},
      {{}, "vor", "mnuObjFore", "Vor", "einen Platz nach vorn",
       "Vor: einen Platz nach vorn; rechte Maustaste: ganz nach vorn", "ObjForeAll"},
      {{}, "back", "mnuObjBack", "Hinter", "einen Platz nach hinten",
       "Hinter: einen Platz nach hinten; rechte Maustaste: ganz nach hinten", "ObjBackAll"},
      {{}, "Dupl", "mnuEintrDupl", "Duplikat", "Eintrag duplizieren",
       "Duplikat: danach auf die Stelle der Karte klicken, an der es stehen soll", {}},
      {{}, "Cpy", "mnuEintrCopy", "Kopie", "Eintrag kopieren",
       "Kopie: den Eintrag etwas versetzt noch einmal einfügen", {}},
      {{}, "Lupe", "Lupe", "Lupe", "Zoomen - Skala: rechte Maustaste",
       "Lupe: Klicken vergrößert, rechte Maustaste: Zoom-Faktor, Esc: zurück", "ZoomMenu"},
      {{}, "Vis", "mnuObjVisNo", "Aus", "Eintrag unsichtbar machen (ausblenden)", {}, {}},
      {{}, "Akt", "mnuObjActNo", "Aktiv", {}, "Aktiv: der Eintrag kann danach nicht mehr angeklickt werden", {}},
      {{}, "Farbe", "mnuFarbe", "Farbe", "Farbe ändern",
       "Farbe: ein Klick auf eine der 16 Farben färbt den Eintrag", {}},
  };
}

// clang-format on

bool Belongs(const ToolRow& row, ToolMode state) { return row.state ? row.state == state : state != ToolMode::Norm; }

// What stands in the bar of the state "Norm".
void Dress_Norm(ToolButton& button) {
  const QString& key = button.Key;
  const Needs needs = Find_Command(button.Command)->needs;
  if (key == QLatin1String("Ein"))
    button.ToolTipText = QString::number(Map.HiddenCount) + QStringLiteral(" unsichtbare Karteneinträge");
  // Where there is nothing to do for them, buttons of marked, hidden and inactive entries stay away.
  if (needs == Needs::Hidden || needs == Needs::Inactive || key == QLatin1String("gleich"))
    button.Visible = Needs_Met(needs);
  else if (needs == Needs::Marks || needs == Needs::TwoMarks)
    button.Visible = Needs_Met(Needs::Marks);
  button.Value = key == QLatin1String("Map") ? Map.Visible : key == QLatin1String("Tbl") && frmMDI.TblVisible;
}

// Switches and tips that tell of the entry in hand.
void Dress_Entry(ToolButton& button, const RowLook& look) {
  const QString& key = button.Key;
  const bool figure = Toolbar1.Tag == ToolMode::Figure, hidden = look.type.hidden;
  if (key == QLatin1String("Panel")) {
    if ((figure || Toolbar1.Tag == ToolMode::Text) && !look.row.Eintrag.isEmpty())
      button.Caption += QLatin1Char(' ') + look.row.Eintrag;
  } else if (key == QLatin1String("Fill")) {
    button.ToolTipText = figure ? QStringLiteral("Figur %1 füllen").arg(look.row.ID)
                                : QStringLiteral("Fläche %1 füllen").arg(look.id.name);
  } else if (key == QLatin1String("Ein")) {
    button.Value = !hidden;
    button.ToolTipText = hidden ? QStringLiteral("Figur wieder sichtbar machen")
                                : QStringLiteral("Figur unsichtbar machen (ausblenden)");
  } else if (key == QLatin1String("Vis")) {
    button.Value = look.IsHidden();
    if (button.Value) button.ToolTipText = QStringLiteral("Eintrag wieder sichtbar machen");
  } else if (key == QLatin1String("Akt")) {
    const QString name = QString(look.name).replace(QLatin1Char('\n'), QLatin1Char(' ')).trimmed();
    button.Value = !look.id.inactive;
    button.ToolTipText = name + (look.id.inactive ? QStringLiteral(" aktivieren") : QStringLiteral(" de-aktivieren"));
  } else if (key == QLatin1String("Curve")) {
    button.Value = look.IsRounded();
  } else if (key == QLatin1String("Mark")) {
    button.Value = look.type.mark != Mark::None;
  } else if (key == QLatin1String("FlBez") || key == QLatin1String("LnBez")) {
    button.Value = look.row.Groesse >= 0;
  } else if (key == QLatin1String("Rahmen")) {
    button.Value = FrameWord::Parse(look.row.RA).framed;
  }
}

}  // namespace

const std::vector<ToolRow>& Toolbar_Table() {
  static const std::vector<ToolRow> rows = [] {
    std::vector<ToolRow> all;
    for (const auto& part : {Norm_Rows(), Box_Rows(), Shape_Rows(), Closing_Rows()})
      all.insert(all.end(), part.begin(), part.end());
    return all;
  }();
  return rows;
}

std::vector<ToolButton> Toolbar_Now() {
  std::vector<ToolButton> buttons;
  const bool norm = Toolbar1.Tag == ToolMode::Norm;
  // A text that is still being typed has no row yet: it looks like the next one.
  RowLook typed;
  typed.row.ID = typed.id.name = typed.name = QStringLiteral("Text");
  typed.row.RA = CurRA;
  const RowLook look = Look_Of_Hand().value_or(typed);
  for (const ToolRow& row : Toolbar_Table()) {
    const Command* command = Find_Command(row.command);
    if (!Belongs(row, Toolbar1.Tag) || (!command && !row.command.isEmpty())) continue;
    ToolButton button{row.key, row.command, row.rightCommand, row.caption, row.tip, row.help};
    if (button.Help.isEmpty()) button.Help = row.tip;
    if (command) button.Enabled = Needs_Met(command->needs);
    if (norm)
      Dress_Norm(button);
    else
      Dress_Entry(button, look);
    // The button of a tool is pressed while the tool is in use.
    if (row.key == Map.Tool || row.key == Map.ToolOver) button.Value = true;
    buttons.push_back(std::move(button));
  }
  return buttons;
}
