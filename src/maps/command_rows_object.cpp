#include "edit/copy.h"
#include "edit/entry_look.h"
#include "edit/line_look.h"
#include "edit/marks.h"
#include "edit/order.h"
#include "edit/row_switches.h"
#include "edit/visibility.h"
#include "maps/command_look.h"
#include "maps/command_rows.h"
#include "objects/north_arrow.h"
#include "state/map_state.h"
#include "tools/assign.h"
#include "tools/duplicate_tool.h"
#include "tools/foot_point.h"
#include "tools/magnifier.h"
#include "tools/mouse.h"
#include "tools/poly_editor.h"
#include "tools/text_tool.h"

namespace {

void Insert_North_Arrow(const CommandCall& call) {
  if (call.at)
    Add_North_Arrow({Map_X(call.at->x()), Map_Y(call.at->y())});
  else
    Add_North_Arrow();
}

// "Ja" and "Nein": the one that is checked already changes nothing.
Procedure Unless_Checked(const char* key, void (*work)()) {
  return [key, work](const CommandCall&) {
    if (!Command_Checked(QLatin1String(key))) work();
  };
}

void Delete_In_Hand() { Map_Key(Qt::Key_Delete, {}); }

void Switch_Frame_In_Hand() { Switch_Frame(!Look_In_Hand().frame.framed); }

Procedure Justify_By(JustifyMode mode) {
  return Do([mode] { Justify(mode); });
}

Procedure Assign_By(AssignKind kind) {
  return Do([kind] { Assign_Entries(kind); });
}

Procedure Order_By(int step) {
  return Do([step] { Order_Entry(step); });
}

constexpr auto inHand = Needs::EntryInHand;
constexpr auto text = Hand::StoreText;

// clang-format off

std::vector<Command> Insert_Rows() {
  return {
      {"mnuInsText", "&Text", "text", {}, Needs::OpenMap, Hand::Free, {}, "Einen Text auf die Karte schreiben",
       [](const CommandCall& call) { Insert_Text(call.at); }},
      {"mnuInsSymbol", "&Symbol ...", "symbol", {}, Needs::OpenMap, Hand::Free, "Symbol einfügen",
       "Ein Symbol auf die Karte setzen", opensWindow},
      {"mnuInsBild", "&Bild ...", "picture", {}, Needs::OpenMap, Hand::Free, "Bild einfügen",
       "Ein Bild aus einer Datei auf die Karte setzen", opensWindow},
      {"mnuInsLinie", "&Linie", "line", {}, Needs::OpenMap, Hand::Free, {}, "Eine Linie Punkt für Punkt zeichnen",
       Do([] { Poly_Editor(PolyEditor::Kind::Line); })},
      {"mnuInsFl", "&Fläche", "area", {}, Needs::OpenMap, Hand::Free, {}, "Eine Fläche Punkt für Punkt zeichnen",
       Do([] { Poly_Editor(PolyEditor::Kind::Area); })},
      {"mnuInsDigi", "Fläche &digitalisieren ...", "digitize", {}, Needs::OpenMap, Hand::Free, {},
       "In einen farbigen Fleck der Karte klicken und seinen Rand als Fläche übernehmen", opensWindow},
      {"mnuInsMass", "&Maßstab ...", "scale", {}, Needs::OpenMap, Hand::Free, {},
       "Eine Linie bekannter Länge ziehen und den Maßstab setzen", opensWindow},
      {"mnuInsFigur", "Fi&gur ...", "figure", {}, Needs::OpenMap, Hand::Free, {},
       "Rechteck, Quadrat, Ellipse, Kreis oder freie Figur zeichnen", opensWindow},
      {"mnuInsNord", "&Nordpfeil", "north", {}, Needs::OpenMap, Hand::Free, "Nordpfeil einfügen",
       "Einen Nordpfeil auf die Karte setzen", Insert_North_Arrow},
      {"mnuMass", "Maßs&tab ...", "scale", {}, Needs::OpenMap, text, {}, "Den Maßstab der Karte ansehen und ändern",
       opensWindow},
  };
}

std::vector<Command> Look_Rows() {
  return {
      {"mnuSchrift", "&Schrift ...", "font", {}, Needs::Font, text, {}, "Schrift, Größe, Stil und Winkel des Textes",
       opensWindow},
      {"mnuFarbe", "Fa&rbe ...", "color", {}, Needs::OpenMap, text, {}, "Die Farben des Eintrags oder des nächsten",
       opensWindow},
      {"mnuFigFill", "F&üllen ...", "fill", {}, Needs::Fill, text, {}, "Die Füllung der Fläche oder Figur", opensWindow},
      {"mnuBreite", "&Breite ...", "width", {}, Needs::OpenMap, text, {},
       "Breite der Linie, des Umrisses oder des Rahmens", opensWindow},
      {"mnuRahmen", "Rahmen ...", "frame", {}, inHand, text, {}, "Den Eintrag einrahmen: Farbe und Breite", opensWindow},
      {"mnuRfline", "Bezugsli&nie ...", "footpoint", {}, Needs::OpenMap, text, "Bezugslinie",
       "Breite und Ende der Bezugslinien wählen", opensWindow},
      {"mnuObjFore", "Nach &vorn", "front", "Ctrl+PgUp", inHand, text, "Verschieben",
       "Den Eintrag eine Stufe nach vorn holen", Order_By(1)},
      {"mnuObjBack", "Nach &hinten", "back", "Ctrl+PgDown", inHand, text, "Verschieben",
       "Den Eintrag eine Stufe nach hinten legen", Order_By(-1)},
      {"mnuLnStil", "Linienstil ...", "line_style", {}, Needs::OpenMap, text, "Linienstil",
       "Die Linie gestrichelt, gepunktet oder durchgezogen zeichnen", opensWindow},
      {"mnuLnEnd", "En&dpunkte ...", "line_ends", {}, Needs::OpenMap, text, "Linienendpunkte",
       "Der Linie Pfeile, Kästchen oder Kreise an ihren Enden geben", opensWindow},
      {"mnuKanten", "Kanten abrunden", "curve", {}, Needs::Corners, text, "Kanten",
       "Die Ecken rund oder eckig zeichnen", Do(Round_Corners)},
      {"mnuFigur", "Figur ...", "figure", {}, Needs::Figure, text, {}, "Art und Größe der Figur ändern", opensWindow},
      {"mnuEigenschaften", "Eigensch&aften ...", {}, {}, inHand, text, {},
       "Winkel, Mittelpunkt, Brennpunkte und Achsen der Figur", opensWindow},
      {"mnuFigKorr", "Eckpunkte &korrigieren ...", "vertices", {}, Needs::Corners, text, {},
       "Die Eckpunkte in einer Tabelle ändern und prüfen", opensWindow},
      {"mnuFlTemplateSave", "Flächenvorlage si&chern", {}, {}, Needs::Area, text, {},
       "Farben, Füllung und Linienbreite der Fläche aufheben", Do(Save_Area_Template)},
      {"mnuFlTemplateGet", "Flächenvorlage übernehmen", {}, {}, Needs::Template, text, "Flächenvorlage",
       "Der Fläche das Aussehen der Vorlage geben", Do(Take_Area_Template)},
      {"mnuPicSize", "Bild&größe ...", "size", {}, Needs::Picture, text, "Bildgröße",
       "Das Bild größer oder kleiner machen", opensWindow},
      {"mnuFootDel", "&Fußpunkt entfernen", "footpoint", {}, Needs::Foot, text, "Fußpunkt entfernen",
       "Die Bezugslinie des Eintrags wegnehmen", Do(Remove_Foot_Point)},
      {"mnuObjDel", "&Löschen\tEntf", "delete", {}, inHand, text, "Löschen", "Den Eintrag löschen",
       Do(Delete_In_Hand)},
      {"mnuEintrDupl", "&Duplizieren", "duplicate", "Ctrl+D", inHand, text, {},
       "Ein zweites, gleiches Stück an die angeklickte Stelle setzen", Do(Duplicate_Entry)},
      {"mnuEintrCopy", "&Kopieren", "copy", "Ctrl+C", inHand, text, "Kopieren",
       "Eine Kopie daneben legen und in die Zwischenablage nehmen", Do(Copy_Entry)},
      {"mnuEintrPaste", "&Einfügen ...", "paste", "Ctrl+V", Needs::OpenMap, Hand::Free, "Einfügen",
       "Text oder Bild aus der Zwischenablage in die Karte setzen", opensWindow},
  };
}

std::vector<Command> Switch_Rows() {
  return {
      {"mnuObjVisJa", "&Ja", {}, {}, inHand, text, "Sichtbarkeit", "Der Eintrag ist unsichtbar",
       Unless_Checked("mnuObjVisJa", Hide_Current), CommandKind::Check},
      {"mnuObjVisNein", "&Nein", {}, {}, inHand, text, "Sichtbarkeit", "Der Eintrag ist zu sehen",
       Unless_Checked("mnuObjVisNein", Hide_Current), CommandKind::Check},
      {"mnuObjVisNo", "&aktuelles Objekt unsichtbar machen", "hide", {}, inHand, text, "Sichtbarkeit",
       "Den Eintrag aus- oder wieder einblenden", Do(Hide_Current)},
      {"mnuObjActivJa", "&Ja", {}, {}, inHand, text, "Aktivität", "Der Eintrag lässt sich nicht anklicken",
       Unless_Checked("mnuObjActivJa", Deactivate_Current), CommandKind::Check},
      {"mnuObjActivNein", "&Nein", {}, {}, inHand, text, "Aktivität", "Der Eintrag lässt sich anklicken",
       Unless_Checked("mnuObjActivNein", Deactivate_Current), CommandKind::Check},
      {"mnuObjActNo", "&aktuelles Objekt de-aktivieren", "active", {}, inHand, text, "Aktivität",
       "Der Eintrag bleibt zu sehen, lässt sich aber nicht anklicken", Do(Deactivate_Current)},
      {"mnuMarkObj", "&markieren", "mark", "Ctrl+M", inHand, text, "Markieren",
       "Den Eintrag markieren oder seine Markierung aufheben", Do(Mark_Obj)},
      {"AdMark", "&markierte zur Fläche", {}, {}, Needs::Target, text, "Zuordnen",
       "Die markierten Einträge der gewählten Fläche zuordnen", Assign_By(AssignKind::MarkedToArea)},
      {"AdMarkLin", "m&arkierte zur Linie", {}, {}, Needs::Target, text, "Zuordnen",
       "Die markierten Einträge der gewählten Linie zuordnen", Assign_By(AssignKind::MarkedToLine)},
      {"AdObj", "&Objekt zur Fläche", {}, {}, inHand, text, {},
       "Den Eintrag der Fläche zuordnen, die Sie danach anklicken", Assign_By(AssignKind::ObjectToArea)},
      {"AdObjLin", "Objekt zur &Linie", {}, {}, inHand, text, {},
       "Den Eintrag der Linie zuordnen, die Sie danach anklicken", Assign_By(AssignKind::ObjectToLine)},
      {"AdNo", "&Zuordnung aufheben", {}, {}, inHand, text, "Zuordnen",
       "Der Eintrag gehört zu keiner Fläche oder Linie mehr", Assign_By(AssignKind::None)},
  };
}

// clang-format on

}  // namespace

std::vector<Command> Object_Commands() {
  std::vector<Command> all;
  for (const auto& part : {Insert_Rows(), Look_Rows(), Switch_Rows()}) all.insert(all.end(), part.begin(), part.end());
  return all;
}

// clang-format off

std::vector<Command> Entry_Commands() {
  return {
      {"mnuMoveObjects", "Einträge &verschieben ...", "move", {}, Needs::Entries, Hand::Free, {},
       "Alle oder die markierten Einträge um eine Strecke versetzen", opensWindow},
      {"mnuReplace", "S&uchen und ersetzen ...", "find", "Ctrl+F", Needs::Entries, text, {},
       "Einträge nach ihrem Inhalt suchen und ändern", opensWindow},
      {"mnuPropTransfer", "Eigenschaften übe&rtragen ...", {}, {}, Needs::Entries, text, "Eigenschaften übertragen",
       "Das Aussehen des Eintrags auf andere übertragen", opensWindow},
      {"mnuSql", "S&QL-Abfrage ...", {}, {}, Needs::Entries, Hand::Free, "SQL-Abfrage",
       "Einträge durch eine Anweisung auswählen, ändern oder löschen", opensWindow},
      {"mnuObjVisX", "&markierte Objekte ausblenden", {}, {}, Needs::Marks, Hand::Free, "Sichtbarkeit ändern",
       "Alle markierten Einträge ausblenden", Do(Hide_Marked)},
      {"mnuObjVisAll", "alle Objekte &einblenden", "show", {}, Needs::Hidden, Hand::Free, "Sichtbarkeit ändern",
       "Alle unsichtbaren Einträge wieder zeigen", Do(Show_All_Hidden)},
      {"mnuObjActX", "&markierte Objekte de-aktivieren", {}, {}, Needs::Marks, Hand::Free, "Aktivität ändern",
       "Die markierten Einträge lassen sich nicht mehr anklicken", Do(Deactivate_Marked)},
      {"mnuObjActAll", "alle Objekte a&ktivieren", "active", {}, Needs::Inactive, Hand::Free, "Aktivität ändern",
       "Alle inaktiven Einträge lassen sich wieder anklicken", Do(Activate_All_Inactive)},
      {"mnuUnmark", "alle &zurücksetzen", "unmark", {}, Needs::Marks, text, "Markierungen zurücknehmen",
       "Alle Markierungen aufheben", Do(Unmark_All)},
      {"mnuMarkDel", "markierte &löschen", "mark_delete", {}, Needs::Marks, Hand::Free, "Markierte löschen",
       "Alle markierten Einträge löschen", Do(Delete_Marked)},
      {"mnuGroup", "&gruppieren", "group", "Ctrl+G", Needs::Marks, Hand::Free, "Gruppieren",
       "Die markierten Einträge zu einer Gruppe machen oder sie auflösen", Do(Group_Marked)},
      {"mnuJustLinks", "&links", "align_left", {}, Needs::TwoMarks, Hand::Free, "Justieren",
       "Linke Kanten an den zuletzt markierten Eintrag legen", Justify_By(JustifyMode::Left)},
      {"mnuJustRechts", "&rechts", "align_right", {}, Needs::TwoMarks, Hand::Free, "Justieren",
       "Rechte Kanten an den zuletzt markierten Eintrag legen", Justify_By(JustifyMode::Right)},
      {"mnuJustOben", "&oben", "align_top", {}, Needs::TwoMarks, Hand::Free, "Justieren",
       "Obere Kanten an den zuletzt markierten Eintrag legen", Justify_By(JustifyMode::Top)},
      {"mnuJustUnten", "&unten", "align_bottom", {}, Needs::TwoMarks, Hand::Free, "Justieren",
       "Untere Kanten an den zuletzt markierten Eintrag legen", Justify_By(JustifyMode::Bottom)},
      {"mnuJustGleich", "&gleich", "equal", {}, Needs::TwoMarks, Hand::Free, "Justieren",
       "Figuren so groß machen wie die zuletzt markierte", Justify_By(JustifyMode::Equal)},
  };
}

std::vector<Command> Toolbar_Commands() {
  return {
      {"Ok", "Ok", "ok", {}, inHand, Hand::Free, {}, "Die Bearbeitung beenden", Do([] {})},
      {"ObjForeAll", "ganz nach vorn", "front", {}, inHand, text, "Verschieben", "Den Eintrag ganz nach vorn holen",
       Order_By(10)},
      {"ObjBackAll", "ganz nach hinten", "back", {}, inHand, text, "Verschieben",
       "Den Eintrag ganz nach hinten legen", Order_By(-10)},
      {"FrameOnOff", "Rahmen an oder aus", "frame", {}, inHand, text, "Rahmen", "Den Rahmen zeigen oder weglassen",
       Do(Switch_Frame_In_Hand)},
      {"FootPoint", "Fußpunkt", "footpoint", {}, Needs::FootRoom, text, "Fußpunkt",
       "Einen Fußpunkt setzen oder entfernen", Do(Change_Foot_Point)},
      {"Label", "Name", "label", {}, inHand, text, "Name", "Den Namen ein- oder ausblenden", Do(Toggle_Label)},
      {"Lupe", "Lupe", "zoom", {}, Needs::OpenMap, text, {}, "Klicken vergrößert", Do(Toggle_Lupe)},
      {"ZoomMenu", "Zoom", "zoom", {}, Needs::OpenMap, Hand::Keep, {}, "Das Menü des Zooms öffnen", opensWindow},
      {"MapButton", "Karte", "map", {}, Needs::Nothing, text, {}, "Menü öffnen, Fenster einpassen", opensWindow},
      {"DataMenu", "Daten", "data", {}, Needs::OpenMap, Hand::Keep, {}, "Das Menü der Daten öffnen", opensWindow},
  };
}
// clang-format on
