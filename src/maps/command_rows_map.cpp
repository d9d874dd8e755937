#include "maps/command_rows.h"
#include "maps/map_choose.h"
#include "maps/map_open.h"
#include "maps/safe_mode.h"
#include "printing/map_export.h"
#include "state/map_state.h"
#include "view/view.h"

namespace {

constexpr double zoomStep = 1.25;

// Larger or smaller about the middle of the window.
void Zoom_By(double factor) { Zoom_At(static_cast<double>(Map.Zoom) * factor, Map.ViewWidth / 2, Map.ViewHeight / 2); }

Command Zoom_Row(const char* key, const char* text, const char* shortcut, const char* help) {
  const QString name = QString::fromLatin1(key);
  return {name,
          QString::fromUtf8(text),
          {},
          QString::fromLatin1(shortcut),
          Needs::OpenMap,
          Hand::Keep,
          {},
          QString::fromUtf8(help),
          Do([name] { Set_Zoom_By_Menu(name); }),
          CommandKind::Check};
}

// clang-format off

std::vector<Command> File_Rows() {
  return {
      {"mnuMapNeu", "&Neue Karte ...", "map_new", "Ctrl+N", Needs::Nothing, Hand::Free, {},
       "Eine leere, weiße Karte anlegen", opensWindow},
      {"mnuFOpen", "Karte ö&ffnen ...", "map_open", "Ctrl+O", Needs::Nothing, Hand::Free, {},
       "Eine Karte mit ihren Einträgen öffnen", Do(Choose_Map)},
      {"mnuMapGeo", "Karte a&us Geodaten ...", {}, {}, Needs::Nothing, Hand::Free, {},
       "Eine Karte aus GeoTIFF und anderen Rastern der Vermessungsämter anlegen", opensWindow},
      {"mnuMapLoad", "Karte erneut &laden", {}, "F5", Needs::OpenMap, Hand::Free, {},
       "Dieselbe Karte noch einmal von der Platte laden", Do(Reload_Map)},
      {"mnuNoTable", "im abgesicherten Modus öffnen - nein", {}, {}, Needs::Nothing, Hand::Keep, {},
       "Vor dem Laden einer beschädigten Tabelle eine Sicherungskopie anlegen", Do(Toggle_Safe_Mode),
       CommandKind::Check},
      {"mnuMapClose", "Karte &schließen", {}, "Ctrl+W", Needs::OpenMap, Hand::Free, {}, "Die Karte schließen",
       Do(Leave_Map)},
      {"mnuMapSize", "Karten&größe ...", {}, {}, Needs::OpenMap, Hand::StoreText, {},
       "Größe und Auflösung der Karte ansehen oder ändern", opensWindow},
      {"mnuMalprgOpen", "Malprogramm &starten ...", {}, {}, Needs::OpenMap, Hand::StoreText, {},
       "Die Karte in einem Malprogramm bearbeiten", opensWindow},
      {"mnuMalprg", "Malprogramm aus&wählen ...", {}, {}, Needs::OpenMap, Hand::StoreText, {},
       "Die Liste der Malprogramme bearbeiten", opensWindow},
      {"mnuOptionen", "&Optionen ...", "options", {}, Needs::Nothing, Hand::StoreText, {},
       "Einstellungen des Programms", opensWindow},
      {"mnuMapFile", {}, {}, {}, Needs::Nothing, Hand::Free, {}, "Diese Karte öffnen",
       [](const CommandCall& call) { Open_Recent_Map(call.line); }, CommandKind::List},
      {"mnuFluraxFini", "&Beenden", {}, "Ctrl+Q", Needs::Nothing, Hand::Free, {}, "Das Programm beenden", opensWindow},
  };
}

std::vector<Command> View_Rows() {
  return {
      {"mnuZoomIn", "Ver&größern", {}, "Ctrl++ Ctrl+=", Needs::OpenMap, Hand::Keep, {}, "Karte ein wenig größer zeigen",
       Do([] { Zoom_By(1 / zoomStep); })},
      {"mnuZoomOut", "Ver&kleinern", {}, "Ctrl+-", Needs::OpenMap, Hand::Keep, {}, "Karte ein wenig kleiner zeigen",
       Do([] { Zoom_By(zoomStep); })},
      Zoom_Row("mnuZoom200", "&200 %", "Ctrl+2", "Karte doppelt so groß zeigen"),
      Zoom_Row("mnuZoom100", "&100 %", "Ctrl+1 Ctrl+0", "Karte in ihrer wahren Größe zeigen"),
      Zoom_Row("mnuZoom75", "&75 %", "Ctrl+7", "Karte auf drei Viertel verkleinern"),
      Zoom_Row("mnuZoom50", "&50 %", "Ctrl+5", "Karte auf die Hälfte verkleinern"),
      Zoom_Row("mnuZoom25", "25 %", "Ctrl+4", "Karte auf ein Viertel verkleinern"),
      Zoom_Row("mnuZoom10", "10 %", "", "Karte auf ein Zehntel verkleinern"),
      Zoom_Row("mnuZoomBreite", "Karten&breite", "", "Karte so breit wie das Fenster zeigen"),
      Zoom_Row("mnuZoomHoehe", "Karten&höhe", "", "Karte so hoch wie das Fenster zeigen"),
      {"mnuZoomFak", "&Faktor ...", {}, {}, Needs::OpenMap, Hand::Keep, {}, "Einen eigenen Zoom-Faktor eingeben", opensWindow,
       CommandKind::Check},
      {"mnuBildHell", "Karte &hell", {}, {}, Needs::OpenMap, Hand::StoreText, {},
       "Die Karte aufgehellt zeigen, die Einträge treten hervor", Do([] { Set_Light(true); }), CommandKind::Check},
      {"mnuBildDunkel", "Karte &dunkel", {}, {}, Needs::OpenMap, Hand::StoreText, {},
       "Die Karte in ihren wahren Farben zeigen", Do([] { Set_Light(false); }), CommandKind::Check},
      {"mnuWEinpass", "&Einpassen", {}, {}, Needs::OpenMap, Hand::StoreText, {},
       "Die Fenster in das Hauptfenster einpassen", Do(Set_Window_Layout)},
      {"mnuWindow", {}, {}, {}, Needs::OpenMap, Hand::Keep, {}, "Dieses Fenster nach vorn holen", opensWindow,
       CommandKind::List},
  };
}

std::vector<Command> Print_Rows() {
  return {
      {"mnuBlattschnitt", "Druck&vorschau", "preview", {}, Needs::OpenMap, Hand::StoreText, {},
       "Sehen, wie die Karte auf die Blätter fällt, und ihre Größe einstellen", opensWindow},
      {"mnuRand", "Seiten&ränder ...", {}, {}, Needs::OpenMap, Hand::StoreText, {}, "Die Ränder der Blätter einstellen",
       opensWindow},
      {"mnuDruckpfad", "Druck&pfad ...", {}, {}, Needs::OpenMap, Hand::StoreText, {},
       "Wählen, wie die Karte zum Drucker kommt", opensWindow},
      {"mnuPrintMap", "Karte druc&ken ...", "print", "Ctrl+P", Needs::OpenMap, Hand::Free, {},
       "Die Karte mit ihren Einträgen drucken", opensWindow},
      {"mnuPrintScreen", "Bildsch&irm drucken", {}, {}, Needs::OpenMap, Hand::StoreText, {},
       "Das Bild des Fensters auf ein Blatt drucken", opensWindow},
      {"mnuMapExport", "Karte als Bitmap e&xportieren ...", {}, {}, Needs::OpenMap, Hand::Free, {},
       "Die Karte mit ihren Einträgen in eine Bilddatei schreiben", Do(Export_Map_Picture)},
  };
}

std::vector<Command> Help_Rows() {
  return {
      {"mnuHelpIndex", "&Inhalt", "help", "F1", Needs::Nothing, Hand::Keep, {}, "Die Hilfe aufschlagen", opensWindow},
      {"mnuHelpSettings", "&Einstellungen", {}, {}, Needs::Nothing, Hand::Keep, {},
       "Was am Rechner und im Programm einzustellen ist", opensWindow},
      {"mnuTipps", "&Tipps", {}, {}, Needs::Nothing, Hand::Keep, {}, "Tipps und Tricks", opensWindow},
      {"mnuInfo", "In&fo", {}, {}, Needs::Nothing, Hand::Keep, {}, "Name und Version des Programms", opensWindow},
  };
}

// clang-format on

}  // namespace

std::vector<Command> Map_Commands() {
  std::vector<Command> all;
  for (const auto& part : {File_Rows(), View_Rows(), Print_Rows(), Help_Rows()})
    all.insert(all.end(), part.begin(), part.end());
  return all;
}
