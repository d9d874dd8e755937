#include "maps/menu_table.h"

#include <algorithm>

#include "hand/activation.h"
#include "state/coordinate_state.h"
#include "state/global_state.h"
#include "state/map_state.h"
#include "state/mdi_state.h"
#include "store/entry.h"

namespace {

constexpr auto menu = MenuKind::Menu;
constexpr auto check = MenuKind::Check;
constexpr auto list = MenuKind::List;
constexpr auto entry = MenuKind::Entry;

MenuRow Line(const QString& parent) { return {parent, {}, {}, {}, {}, {}, MenuKind::Separator}; }

// The row of the entry in hand; a row without kind where there is none.
EntryType Type_In_Hand() {
  if (!Entry_In_Hand() || !rsEntries || rsEntries->Position() < 1) return {};
  return EntryType::Parse(static_cast<int>(rsEntries->Integer(column::Typ)));
}

bool Needs_Met(MenuNeeds needs) {
  switch (needs) {
    case MenuNeeds::Nothing:
      return true;
    case MenuNeeds::EntryInHand:
      return Entry_In_Hand();
    case MenuNeeds::NoEntryInHand:
      return !Entry_In_Hand();
    case MenuNeeds::Picture:
      return Type_In_Hand().Kind() == EntryKind::Picture;
    case MenuNeeds::Font: {
      const EntryType type = Type_In_Hand();
      return !Entry_In_Hand() || Map.InHand.isEmpty() || type.IsText() || type.IsPolygon();
    }
    case MenuNeeds::Foot: {
      const EntryType type = Type_In_Hand();
      const bool canHaveOne = Entry_In_Hand() && (type.base <= 3 || type.base == 5 || type.base == 7);
      return canHaveOne && rsEntries->Integer(column::Xline) > 0;
    }
    case MenuNeeds::Corners: {
      const EntryType type = Type_In_Hand();
      return type.IsPolygon() || type.IsFreeFigure();
    }
    case MenuNeeds::Fill: {
      const EntryType type = Type_In_Hand();
      if (!Entry_In_Hand() || type.IsFigure() || type.Kind() == EntryKind::PlanSquare) return true;
      return type.IsPolygon() && EntryId::Parse(rsEntries->Text(column::ID)).IsArea();
    }
    case MenuNeeds::Figure:
      return Type_In_Hand().IsFigure();
    case MenuNeeds::Marks:
      return Map.MarkCount > 0;
    case MenuNeeds::TwoMarks:
      return Map.MarkCount > 1;
    case MenuNeeds::Target:
      return Type_In_Hand().IsPolygon() && Map.MarkCount > 0;
    case MenuNeeds::Hidden:
      return Map.HiddenCount > 0;
    case MenuNeeds::Inactive:
      return Map.InactiveCount > 0;
    case MenuNeeds::Template:
      return frmMDI.HasTemplate;
    case MenuNeeds::Net:
      return Coord.Grid != gridNone;
    case MenuNeeds::PlanSquares:
      return frmMDI.HasPlanSquares;
    case MenuNeeds::Entries:
      return Entry_Count() > 0;
  }
  return true;
}

std::vector<MenuRow> Map_Rows() {
  const QString in = QStringLiteral("mnuKarte");
  const QString paint = QStringLiteral("mnuMalprogramm");
  const QString zoom = QStringLiteral("mnuZoom");
  return {
      {{}, in, "&Karte", {}, {}, {}, menu},
      {in, "mnuMapNeu", "&Neue Karte ...", "Ctrl+N", "Eine leere, weiße Karte anlegen", "map_new"},
      {in, "mnuFOpen", "Karte ö&ffnen ...", "Ctrl+O", "Eine Karte mit ihren Einträgen öffnen", "map_open"},
      {in, "mnuMapLoad", "Karte erneut &laden", "F5", "Dieselbe Karte noch einmal von der Platte laden", {}},
      {in,
       "mnuNoTable",
       "im abgesicherten Modus öffnen - nein",
       {},
       "Vor dem Laden einer beschädigten Tabelle eine Sicherungskopie anlegen",
       {},
       check},
      {in, "mnuMapClose", "Karte &schließen", "Ctrl+W", "Die Karte schließen", {}},
      Line(in),
      {in, "mnuMapSize", "Karten&größe ...", {}, "Größe und Auflösung der Karte ansehen oder ändern", {}},
      {in, paint, "&Malprogramm", {}, {}, {}, menu},
      {paint, "mnuMalprgOpen", "Malprogramm &starten ...", {}, "Die Karte in einem Malprogramm bearbeiten", {}},
      {paint, "mnuMalprg", "Malprogramm aus&wählen ...", {}, "Die Liste der Malprogramme bearbeiten", {}},
      {in, zoom, "&Zoom", {}, {}, "zoom", menu},
      {zoom, "mnuZoomIn", "Ver&größern", "Ctrl++ Ctrl+=", "Karte ein wenig größer zeigen", {}},
      {zoom, "mnuZoomOut", "Ver&kleinern", "Ctrl+-", "Karte ein wenig kleiner zeigen", {}},
      Line(zoom),
      {zoom, "mnuZoom200", "&200 %", "Ctrl+2", "Karte doppelt so groß zeigen", {}, check},
      {zoom, "mnuZoom100", "&100 %", "Ctrl+1 Ctrl+0", "Karte in ihrer wahren Größe zeigen", {}, check},
      {zoom, "mnuZoom75", "&75 %", "Ctrl+7", "Karte auf drei Viertel verkleinern", {}, check},
      {zoom, "mnuZoom50", "&50 %", "Ctrl+5", "Karte auf die Hälfte verkleinern", {}, check},
      {zoom, "mnuZoom25", "25 %", "Ctrl+4", "Karte auf ein Viertel verkleinern", {}, check},
      {zoom, "mnuZoom10", "10 %", {}, "Karte auf ein Zehntel verkleinern", {}, check},
      Line(zoom),
      {zoom, "mnuZoomBreite", "Karten&breite", {}, "Karte so breit wie das Fenster zeigen", {}, check},
      {zoom, "mnuZoomHoehe", "Karten&höhe", {}, "Karte so hoch wie das Fenster zeigen", {}, check},
      {zoom, "mnuZoomFak", "&Faktor ...", {}, "Einen eigenen Zoom-Faktor eingeben", {}, check},
      {in, "mnuBildHell", "Karte &hell", {}, "Die Karte aufgehellt zeigen, die Einträge treten hervor", {}, check},
      {in, "mnuBildDunkel", "Karte &dunkel", {}, "Die Karte in ihren wahren Farben zeigen", {}, check},
      Line(in),
      {in,
       "mnuBlattschnitt",
       "Druck&vorschau",
       {},
       "Sehen, wie die Karte auf die Blätter fällt, und ihre Größe einstellen",
       "preview"},
      {in, "mnuRand", "Seiten&ränder ...", {}, "Die Ränder der Blätter einstellen", {}},
      {in, "mnuDruckpfad", "Druck&pfad ...", {}, "Wählen, wie die Karte zum Drucker kommt", {}},
      {in, "mnuPrintMap", "Karte druc&ken ...", "Ctrl+P", "Die Karte mit ihren Einträgen drucken", "print"},
      {in, "mnuPrintScreen", "Bildsch&irm drucken", {}, "Das Bild des Fensters auf ein Blatt drucken", {}},
      {in,
       "mnuMapExport",
       "Karte als Bitmap e&xportieren ...",
       {},
       "Die Karte mit ihren Einträgen in eine Bilddatei schreiben",
       {}},
      Line(in),
      {in, "mnuOptionen", "&Optionen ...", {}, "Einstellungen des Programms", "options"},
      Line(in),
      {in, "mnuMapFile", {}, {}, "Diese Karte öffnen", {}, list},
      Line(in),
      {in, "mnuFluraxFini", "&Beenden", "Ctrl+Q", "Das Programm beenden", {}},
  };
}

std::vector<MenuRow> Entry_Rows() {
  const QString in = QStringLiteral("mnuEintraege");
  const QString table = QStringLiteral("mnuTabelle");
  const QString bring = QStringLiteral("mnuImportMenu");
  return {
      {{}, in, "&Einträge", {}, {}, {}, menu},
      {in, "mnuReset", "Rückgängig", "Ctrl+Z", "Die letzte große Änderung zurücknehmen", "undo"},
      Line(in),
      {in, "mnuTableNeu", "&Neu", {}, "Mit einer leeren Tabelle der Einträge beginnen", {}},
      {in, "mnuTableLoad", "&Laden ...", {}, "Einträge einer anderen Tabelle in diese Karte laden", {}},
      {in, "mnuTableSave", "&Sichern", "Ctrl+S", "Die Einträge in ihrer Tabelle sichern", "save"},
      {in, "mnuTableSaveAs", "Sichern &als...", "Ctrl+Shift+S", "Die Einträge unter einem anderen Namen sichern", {}},
      {in, "mnuTableRe", "&Wiederherstellen", {}, "Die zuletzt gesicherten Einträge wieder laden", {}},
      Line(in),
      {in, bring, "&importieren", {}, {}, {}, menu},
      {bring,
       "mnuImportCSV",
       "komma separierte Datei *.csv",
       {},
       "Funde mit ihren Koordinaten aus einer CSV-Tabelle einlesen",
       {}},
      {bring, "mnuImportXL", "Excel-Tabelle", {}, "Wie eine Excel-Tabelle in die Karte kommt", {}},
      Line(in),
      {in, "mnuEintrDupl", "&Duplizieren", "Ctrl+D", "Ein zweites, gleiches Stück an die angeklickte Stelle setzen",
       "duplicate", entry, MenuNeeds::EntryInHand},
      {in, "mnuEintrCopy", "&Kopieren", "Ctrl+C", "Eine Kopie daneben legen und in die Zwischenablage nehmen", "copy",
       entry, MenuNeeds::EntryInHand},
      {in, "mnuEintrPaste", "&Einfügen ...", "Ctrl+V", "Text oder Bild aus der Zwischenablage in die Karte setzen",
       "paste"},
      {in,
       "mnuMoveObjects",
       "Einträge &verschieben ...",
       {},
       "Alle oder die markierten Einträge um eine Strecke versetzen",
       "move",
       entry,
       MenuNeeds::Entries},
      {in, "mnuReplace", "S&uchen und ersetzen ...", "Ctrl+F", "Einträge nach ihrem Inhalt suchen und ändern", "find",
       entry, MenuNeeds::Entries},
      {in, "mnuPropTransfer", "Eigenschaften übe&rtragen ...", {}, "Das Aussehen des Eintrags auf andere übertragen", {},
       entry, MenuNeeds::Entries},
      {in, "mnuSql", "S&QL-Abfrage ...", {}, "Einträge durch eine Anweisung auswählen, ändern oder löschen", {}, entry,
       MenuNeeds::Entries},
      Line(in),
      {in, table, "&Tabelle", {}, {}, {}, menu},
      {table, "mnuDBGridOn", "&Ausblenden", "F4", "Die Tabelle der Einträge zeigen oder verbergen", "table"},
      {table, "mnuSpaltAppend", "&Spalte hinzufügen ...", {}, "Der Tabelle eine eigene Spalte geben", {}},
      {table, "mnuSpaltDelete", "Spalte &löschen ...", {}, "Eine eigene Spalte aus der Tabelle entfernen", {}},
      {table, "mnuSpaltHide", "Spalte &verbergen ...", {}, "Eine Spalte der Tabelle nicht mehr zeigen", {}},
      {table, "mnuSpaltShow", "alle Spalten &zeigen", {}, "Die verborgenen Spalten wieder zeigen", {}},
      Line(table),
      {table, "mnuTabComp", "Tabelle &komprimieren", {}, "Die Datei der Tabelle verkleinern", {}},
      {table, "mnuTabRep", "Tabelle &reparieren", {}, "Eine beschädigte Tabelle wieder lesbar machen", {}},
      {table, "mnuTblPrint", "Tabelle &drucken", {}, "Die Zeilen der Tabelle drucken", "print"},
      Line(in),
      {in, "mnuOverlay", {}, {}, "Diese Einträge in die Karte laden", {}, list},
  };
}

std::vector<MenuRow> Object_Rows() {
  const QString in = QStringLiteral("mnuObjekt");
  const QString insert = QStringLiteral("mnuObjInsert");
  return {
      {{}, in, "&Objekt", {}, {}, {}, menu},
      {in, insert, "Objekt &einfügen", {}, {}, {}, menu, MenuNeeds::NoEntryInHand},
      {insert, "mnuInsText", "&Text", {}, "Einen Text auf die Karte schreiben", "text"},
      {insert, "mnuInsSymbol", "&Symbol ...", {}, "Ein Symbol auf die Karte setzen", "symbol"},
      {insert, "mnuInsBild", "&Bild ...", {}, "Ein Bild aus einer Datei auf die Karte setzen", "picture"},
      {insert, "mnuInsLinie", "&Linie", {}, "Eine Linie Punkt für Punkt zeichnen", "line"},
      {insert, "mnuInsFl", "&Fläche", {}, "Eine Fläche Punkt für Punkt zeichnen", "area"},
      {insert, "mnuInsMass", "&Maßstab ...", {}, "Eine Linie bekannter Länge ziehen und den Maßstab setzen", "scale"},
      {insert,
       "mnuInsFigur",
       "Fi&gur ...",
       {},
       "Rechteck, Quadrat, Ellipse, Kreis oder freie Figur zeichnen",
       "figure"},
      {insert, "mnuInsNord", "&Nordpfeil", {}, "Einen Nordpfeil auf die Karte setzen", "north"},
      {in, "mnuMass", "Maßs&tab ...", {}, "Den Maßstab der Karte ansehen und ändern", "scale"},
      Line(in),
      {in,
       "mnuSchrift",
       "&Schrift ...",
       {},
       "Schrift, Größe, Stil und Winkel des Textes",
       "font",
       entry,
       MenuNeeds::Font},
      {in, "mnuFarbe", "Fa&rbe ...", {}, "Die Farben des Eintrags oder des nächsten", "color"},
      {in, "mnuFigFill", "F&üllen ...", {}, "Die Füllung der Fläche oder Figur", "fill", entry, MenuNeeds::Fill},
      {in, "mnuBreite", "&Breite ...", {}, "Breite der Linie, des Umrisses oder des Rahmens", "width"},
      {in,
       "mnuRahmen",
       "Rahmen ...",
       {},
       "Den Eintrag einrahmen: Farbe und Breite",
       "frame",
       entry,
       MenuNeeds::EntryInHand},
      {in, "mnuRfline", "Bezugsli&nie ...", {}, "Breite und Ende der Bezugslinien wählen", "footpoint"},
      Line(in),
      {in, "mnuObjFore", "Nach &vorn", "Ctrl+PgUp", "Den Eintrag eine Stufe nach vorn holen", "front", entry,
       MenuNeeds::EntryInHand},
      {in, "mnuObjBack", "Nach &hinten", "Ctrl+PgDown", "Den Eintrag eine Stufe nach hinten legen", "back", entry,
       MenuNeeds::EntryInHand},
      {in,
       "mnuLnStil",
       "Linienstil ...",
       {},
       "Die Linie gestrichelt, gepunktet oder durchgezogen zeichnen",
       "line_style"},
      {in,
       "mnuLnEnd",
       "En&dpunkte ...",
       {},
       "Der Linie Pfeile, Kästchen oder Kreise an ihren Enden geben",
       "line_ends"},
      {in,
       "mnuKanten",
       "Kanten abrunden",
       {},
       "Die Ecken rund oder eckig zeichnen",
       "curve",
       entry,
       MenuNeeds::Corners},
      {in, "mnuFigur", "Figur ...", {}, "Art und Größe der Figur ändern", "figure", entry, MenuNeeds::Figure},
      {in,
       "mnuEigenschaften",
       "Eigensch&aften ...",
       {},
       "Winkel, Mittelpunkt, Brennpunkte und Achsen der Figur",
       {},
       entry,
       MenuNeeds::EntryInHand},
      {in,
       "mnuFigKorr",
       "Eckpunkte &korrigieren ...",
       {},
       "Die Eckpunkte in einer Tabelle ändern und prüfen",
       "vertices",
       entry,
       MenuNeeds::Corners},
      {in,
       "mnuFlTemplateSave",
       "Flächenvorlage si&chern",
       {},
       "Farben, Füllung und Linienbreite der Fläche aufheben",
       {}},
      {in,
       "mnuFlTemplateGet",
       "Flächenvorlage übernehmen",
       {},
       "Der Fläche das Aussehen der Vorlage geben",
       {},
       entry,
       MenuNeeds::Template},
      {in,
       "mnuPicSize",
       "Bild&größe ...",
       {},
       "Das Bild größer oder kleiner machen",
       "size",
       entry,
       MenuNeeds::Picture},
      {in,
       "mnuFootDel",
       "&Fußpunkt entfernen",
       {},
       "Die Bezugslinie des Eintrags wegnehmen",
       "footpoint",
       entry,
       MenuNeeds::Foot},
  };
}

// What can be done to the entry in hand, the marked ones or all.
std::vector<MenuRow> Object_Group_Rows() {
  const QString in = QStringLiteral("mnuObjekt");
  const QString hide = QStringLiteral("mnuObjVis"), off = QStringLiteral("mnuObjActiv");
  const QString mark = QStringLiteral("mnuMark"), align = QStringLiteral("mnuJust"),
                assign = QStringLiteral("mnuAssign");
  return {
      Line(in),
      {in, hide, "&unsichtbar", {}, {}, {}, menu},
      {hide, "mnuObjVisJa", "&Ja", {}, "Der Eintrag ist unsichtbar", {}, check, MenuNeeds::EntryInHand},
      {hide, "mnuObjVisNein", "&Nein", {}, "Der Eintrag ist zu sehen", {}, check, MenuNeeds::EntryInHand},
      Line(hide),
      {hide,
       "mnuObjVisNo",
       "&aktuelles Objekt unsichtbar machen",
       {},
       "Den Eintrag aus- oder wieder einblenden",
       "hide",
       entry,
       MenuNeeds::EntryInHand},
      {hide,
       "mnuObjVisX",
       "&markierte Objekte ausblenden",
       {},
       "Alle markierten Einträge ausblenden",
       {},
       entry,
       MenuNeeds::Marks},
      {hide,
       "mnuObjVisAll",
       "alle Objekte &einblenden",
       {},
       "Alle unsichtbaren Einträge wieder zeigen",
       "show",
       entry,
       MenuNeeds::Hidden},
      {in, off, "&inaktiv", {}, {}, {}, menu},
      {off, "mnuObjActivJa", "&Ja", {}, "Der Eintrag lässt sich nicht anklicken", {}, check, MenuNeeds::EntryInHand},
      {off, "mnuObjActivNein", "&Nein", {}, "Der Eintrag lässt sich anklicken", {}, check, MenuNeeds::EntryInHand},
      Line(off),
      {off,
       "mnuObjActNo",
       "&aktuelles Objekt de-aktivieren",
       {},
       "Der Eintrag bleibt zu sehen, lässt sich aber nicht anklicken",
       {},
       entry,
       MenuNeeds::EntryInHand},
      {off,
       "mnuObjActX",
       "&markierte Objekte de-aktivieren",
       {},
       "Die markierten Einträge lassen sich nicht mehr anklicken",
       {},
       entry,
       MenuNeeds::Marks},
      {off,
       "mnuObjActAll",
       "alle Objekte a&ktivieren",
       {},
       "Alle inaktiven Einträge lassen sich wieder anklicken",
       "active",
       entry,
       MenuNeeds::Inactive},
      Line(in),
      {in, mark, "&Markieren", {}, {}, {}, menu},
      {mark, "mnuMarkObj", "&markieren", "Ctrl+M", "Den Eintrag markieren oder seine Markierung aufheben", "mark",
       entry, MenuNeeds::EntryInHand},
      {mark, "mnuUnmark", "alle &zurücksetzen", {}, "Alle Markierungen aufheben", "unmark", entry, MenuNeeds::Marks},
      {mark,
       "mnuMarkDel",
       "markierte &löschen",
       {},
       "Alle markierten Einträge löschen",
       "mark_delete",
       entry,
       MenuNeeds::Marks},
      {mark, "mnuGroup", "&gruppieren", "Ctrl+G", "Die markierten Einträge zu einer Gruppe machen oder sie auflösen",
       "group", entry, MenuNeeds::Marks},
      {in, align, "&Justieren", {}, {}, {}, menu, MenuNeeds::TwoMarks},
      {align, "mnuJustLinks", "&links", {}, "Linke Kanten an den zuletzt markierten Eintrag legen", "align_left"},
      {align, "mnuJustRechts", "&rechts", {}, "Rechte Kanten an den zuletzt markierten Eintrag legen", "align_right"},
      {align, "mnuJustOben", "&oben", {}, "Obere Kanten an den zuletzt markierten Eintrag legen", "align_top"},
      {align, "mnuJustUnten", "&unten", {}, "Untere Kanten an den zuletzt markierten Eintrag legen", "align_bottom"},
      {align, "mnuJustGleich", "&gleich", {}, "Figuren so groß machen wie die zuletzt markierte", "equal"},
      {in, assign, "&Zuordnen", {}, {}, {}, menu},
      {assign,
       "AdMark",
       "&markierte zur Fläche",
       {},
       "Die markierten Einträge der gewählten Fläche zuordnen",
       {},
       entry,
       MenuNeeds::Target},
      {assign,
       "AdMarkLin",
       "m&arkierte zur Linie",
       {},
       "Die markierten Einträge der gewählten Linie zuordnen",
       {},
       entry,
       MenuNeeds::Target},
      {assign,
       "AdObj",
       "&Objekt zur Fläche",
       {},
       "Den Eintrag der Fläche zuordnen, die Sie danach anklicken",
       {},
       entry,
       MenuNeeds::EntryInHand},
      {assign,
       "AdObjLin",
       "Objekt zur &Linie",
       {},
       "Den Eintrag der Linie zuordnen, die Sie danach anklicken",
       {},
       entry,
       MenuNeeds::EntryInHand},
      {assign,
       "AdNo",
       "&Zuordnung aufheben",
       {},
       "Der Eintrag gehört zu keiner Fläche oder Linie mehr",
       {},
       entry,
       MenuNeeds::EntryInHand},
      Line(in),
      {in, "mnuObjDel", "&Löschen\tEntf", {}, "Den Eintrag löschen", "delete", entry, MenuNeeds::EntryInHand},
  };
}

std::vector<MenuRow> Grid_Rows() {
  const QString in = QStringLiteral("mnu_Grid"), raster = QStringLiteral("mnuRaster");
  const MenuNeeds squares = MenuNeeds::PlanSquares;
  return {
      {{}, in, "&Grid", {}, {}, {}, menu},
      {in, {}, "Koordinatennetz", {}, {}, {}, MenuKind::Separator},
      {in, "mnuGridmake", "erstellen", {}, "Das Koordinatennetz der Karte mit dem Programm Kalibrix vermessen", {}},
      {in, "mnuChooseGrid", "auswählen", {}, "Unter den Kalibrierungsdateien der Karte eine auswählen", {}},
      {in,
       "mnuGridonoff",
       "einblenden",
       {},
       "Das Koordinatennetz über den Einträgen zeigen oder verbergen",
       {},
       entry,
       MenuNeeds::Net},
      {in, "mnuGridDel", "löschen", {}, "Das Koordinatennetz von der Karte nehmen", {}, entry, MenuNeeds::Net},
      Line(in),
      {in,
       "mnuGridXYShow",
       "Koordinaten anzeigen",
       {},
       "Die Koordinaten unter der Maus in der Statuszeile zeigen",
       {},
       check,
       MenuNeeds::Net},
      {in,
       "mnuGridXYInput",
       "Koordinaten eingeben ...",
       {},
       "Eine Koordinate eingeben und ihre Stelle in der Karte zeigen",
       {},
       entry,
       MenuNeeds::Net},
      Line(in),
      {in, raster, "&Planquadrate", {}, {}, {}, menu},
      {raster, "mnuRasterErstellen", "&erstellen", {}, "Ein Raster von Planquadraten entwerfen", {}},
      {raster, "mnuRasterBearbeiten", "bearbeiten", {}, "Das Raster der Karte ändern", {}, entry, squares},
      {raster, "mnuRasterEinblenden", "ausblenden", {}, "Die Planquadrate zeigen oder verbergen", {}, entry, squares},
      {raster, "mnuRasterAktiv", "aktivieren", {}, "Planquadrate mit der Maus wählen", {}, entry, squares},
      {raster, "mnuRasterDelete", "&löschen", {}, "Alle Planquadrate der Karte löschen", {}, entry, squares},
  };
}

std::vector<MenuRow> Data_Rows() {
  const QString in = QStringLiteral("mnuDaten");
  const QString text = QStringLiteral("mnuText");
  return {
      {{}, in, "&Daten", {}, {}, {}, menu},
      {in, text, "&Text", {}, {}, "note", menu},
      {text, "mnuTextNew", "&Neu", {}, "Eine neue Notiz schreiben", {}},
      {text, "mnuTextOpen", "Ö&ffnen ...", {}, "Einen Text der Karte öffnen", {}},
      {text, "mnuTextSave", "&Speichern", {}, "Den Text in seiner Datei speichern", {}},
      {text, "mnuResultSaveAs", "Speichern &unter ...", {}, "Den Text unter einem anderen Namen speichern", {}},
      Line(text),
      {text, "mnuPrintTxt", "&Drucken", {}, "Den Text drucken", "print"},
      {text, "mnuTextFind", "Su&chen ...", {}, "Im Text suchen; F3 sucht weiter", {}},
      {text, "mnuTextCut", "&Ausschneiden", {}, "Das Ausgewählte in die Zwischenablage nehmen", {}},
      {text, "mnuTextCopy", "&Kopieren", {}, "Das Ausgewählte in die Zwischenablage kopieren", {}},
      {text, "mnuTextPaste", "&Einfügen", {}, "Den Text der Zwischenablage einfügen", {}},
      Line(in),
      {in, "mnuRecentFile", {}, {}, "Diesen Text öffnen", {}, list},
  };
}

std::vector<MenuRow> Window_Rows() {
  const QString in = QStringLiteral("mnuFenster");
  return {
      {{}, in, "&Fenster", {}, {}, {}, menu},
      {in, "mnuWEinpass", "&Einpassen", {}, "Die Fenster in das Hauptfenster einpassen", {}},
  };
}

std::vector<MenuRow> Help_Rows() {
  const QString in = QStringLiteral("mnuHilfe");
  return {
      {{}, in, "&Hilfe", {}, {}, {}, menu},
      {in, "mnuHelpIndex", "&Inhalt", "F1", "Die Hilfe aufschlagen", "help"},
      {in, "mnuHelpSettings", "&Einstellungen", {}, "Was am Rechner und im Programm einzustellen ist", {}},
      {in, "mnuTipps", "&Tipps", {}, "Tipps und Tricks", {}},
      Line(in),
      {in, "mnuInfo", "In&fo", {}, "Name und Version des Programms", {}},
  };
}

}  // namespace

const std::vector<MenuRow>& Menu_Table() {
  static const std::vector<MenuRow> rows = [] {
    std::vector<MenuRow> all;
    for (const auto& part : {Map_Rows(), Entry_Rows(), Object_Rows(), Object_Group_Rows(), Grid_Rows(), Data_Rows(),
                             Window_Rows(), Help_Rows()})
      all.insert(all.end(), part.begin(), part.end());
    return all;
  }();
  return rows;
}

const MenuRow* Menu_Row(const QString& key) {
  const auto& rows = Menu_Table();
  const auto found = std::find_if(rows.begin(), rows.end(), [&](const MenuRow& row) { return row.key == key; });
  return key.isEmpty() || found == rows.end() ? nullptr : &*found;
}

QString Menu_Caption(const MenuRow& row) {
  const QString& told = Menu(row.key).Caption;
  return told.isEmpty() ? row.caption : told;
}

bool Menu_Checked(const MenuRow& row) {
  if (row.key == QLatin1String("mnuGridXYShow")) return frmMDI.mouseUnit == MouseUnit::Coordinates;
  return Menu(row.key).Checked;
}

bool Menu_Enabled(const MenuRow& row) { return Menu(row.key).Enabled && (!frmMDI.MapOpen || Needs_Met(row.needs)); }

const QStringList& Popup_Table() {
  static const QStringList keys = {QStringLiteral("mnuObjInsert"),
                                   {},
                                   QStringLiteral("mnuObjVis"),
                                   QStringLiteral("mnuObjActiv"),
                                   QStringLiteral("mnuMark"),
                                   QStringLiteral("mnuJust"),
                                   QStringLiteral("mnuAssign"),
                                   {},
                                   QStringLiteral("mnuSchrift"),
                                   QStringLiteral("mnuFigFill"),
                                   QStringLiteral("mnuObjFore"),
                                   QStringLiteral("mnuObjBack"),
                                   QStringLiteral("mnuKanten"),
                                   QStringLiteral("mnuFigKorr"),
                                   QStringLiteral("mnuPicSize"),
                                   QStringLiteral("mnuFootDel"),
                                   {},
                                   QStringLiteral("mnuEintrDupl"),
                                   QStringLiteral("mnuEintrCopy"),
                                   QStringLiteral("mnuEintrPaste"),
                                   {},
                                   QStringLiteral("mnuObjDel")};
  return keys;
}

bool Shortcut_Of_Map(const MenuRow& row) {
  return row.parent == QLatin1String("mnuObjekt") || row.parent == QLatin1String("mnuMark") ||
         row.key.startsWith(QLatin1String("mnuEintr")) || row.key == QLatin1String("mnuReset");
}

QString Escaped_Caption(const QString& text) { return QString(text).replace(QLatin1Char('&'), QLatin1String("&&")); }
