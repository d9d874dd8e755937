#include "start/menu_table.h"

#include <algorithm>

#include "start/mdi_state.h"

namespace {

constexpr auto menu = MenuKind::Menu;
constexpr auto check = MenuKind::Check;
constexpr auto list = MenuKind::List;

MenuRow Line(const QString& parent) { return {parent, {}, {}, {}, {}, {}, MenuKind::Separator}; }

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
  return {
      {{}, in, "&Einträge", {}, {}, {}, menu},
      {in, "mnuTableNeu", "&Neu", {}, "Mit einer leeren Tabelle der Einträge beginnen", {}},
      {in, "mnuTableLoad", "&Laden ...", {}, "Einträge einer anderen Tabelle in diese Karte laden", {}},
      {in, "mnuTableSave", "&Sichern", "Ctrl+S", "Die Einträge in ihrer Tabelle sichern", "save"},
      {in, "mnuTableSaveAs", "Sichern &als...", "Ctrl+Shift+S", "Die Einträge unter einem anderen Namen sichern", {}},
      {in, "mnuTableRe", "&Wiederherstellen", {}, "Die zuletzt gesicherten Einträge wieder laden", {}},
      Line(in),
      {in, table, "&Tabelle", {}, {}, {}, menu},
      {table, "mnuTabComp", "Tabelle &komprimieren", {}, "Die Datei der Tabelle verkleinern", {}},
      {table, "mnuTabRep", "Tabelle &reparieren", {}, "Eine beschädigte Tabelle wieder lesbar machen", {}},
      Line(in),
      {in, "mnuOverlay", {}, {}, "Diese Einträge in die Karte laden", {}, list},
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
    for (const auto& part : {Map_Rows(), Entry_Rows(), Data_Rows(), Window_Rows(), Help_Rows()})
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

QString Escaped_Caption(const QString& text) { return QString(text).replace(QLatin1Char('&'), QLatin1String("&&")); }
