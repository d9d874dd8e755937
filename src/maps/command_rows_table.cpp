#include "edit/blanks.h"
#include "edit/table_edit.h"
#include "import/csv_import.h"
#include "maps/command_rows.h"
#include "maps/map_open.h"
#include "maps/recent_lists.h"
#include "maps/step_walk.h"
#include "printing/table_print.h"
#include "state/global_state.h"
#include "state/mdi_state.h"
#include "state/task_line.h"
#include "store/table_file.h"

namespace {

// Other entries may stand in the table afterwards.
template <typename Work>
Procedure Replacing(Work work) {
  return [work](const CommandCall&) {
    work();
    Table_Replaced();
  };
}

void Repair_And_Tell() {
  const QString told = Repair_Table();
  Table_Replaced();
  if (!told.isEmpty()) Tell_Done(told);
}

void Load_Overlay(const CommandCall& call) {
  const QString path = Menu(QStringLiteral("mnuOverlay"), call.line).Tag;
  // The line of the open table itself only tells its name.
  if (path.isEmpty() || path == TableFile || !Recent_Is_There(path, 2)) return;
  Load_Other_Table(path);
  Table_Replaced();
}

// clang-format off

std::vector<Command> File_Rows() {
  return {
      {"mnuStepBack", "S&chritt zurück", "undo", "Ctrl+Z", Needs::StepBehind, Hand::Keep, {},
       "Den letzten Schritt zurücknehmen", Do(Step_Back)},
      {"mnuStepForward", "Schritt v&orwärts", "redo", "Ctrl+Shift+Z Ctrl+Y", Needs::StepAhead, Hand::Keep, {},
       "Den zurückgenommenen Schritt wiederherstellen", Do(Step_Forward)},
      {"mnuVerlauf", "Verlau&f ...", "history", {}, Needs::OpenMap, Hand::StoreText, {},
       "Alle Schritte seit dem Öffnen der Karte ansehen und zu einem von ihnen gehen", opensWindow},
      {"mnuStaende", "Frü&here Stände ...", {}, {}, Needs::OpenMap, Hand::Free, {},
       "Frühere Stände der Tabelle ansehen und Einträge aus ihnen zurückholen", opensWindow},
      {"mnuReset", "Rückgängig", {}, {}, Needs::UndoPoint, Hand::Free, "Rückgängig",
       "Die letzte große Änderung zurücknehmen", Replacing(Take_Back_Operation)},
      {"mnuTableNeu", "&Neu", {}, {}, Needs::OpenMap, Hand::Free, "Einträge neu",
       "Mit einer leeren Tabelle der Einträge beginnen", Replacing(New_Table)},
      {"mnuTableLoad", "&Laden ...", {}, {}, Needs::OpenMap, Hand::Free, "Einträge laden",
       "Einträge einer anderen Tabelle in diese Karte laden", Replacing([] { Load_Other_Table({}); })},
      {"mnuTableSave", "&Sichern", "save", "Ctrl+S", Needs::OpenMap, Hand::StoreText, {},
       "Die Einträge in ihrer Tabelle sichern", Do([] { Save_Table(SaveStep::Save); })},
      {"mnuTableSaveAs", "Sichern &als...", {}, "Ctrl+Shift+S", Needs::OpenMap, Hand::StoreText, {},
       "Die Einträge unter einem anderen Namen sichern", Do([] { Save_Table(SaveStep::SaveAs); })},
      {"mnuTableRe", "&Wiederherstellen", {}, {}, Needs::OpenMap, Hand::Free, "Einträge wiederherstellen",
       "Die zuletzt gesicherten Einträge wieder laden", Replacing([] { Save_Table(SaveStep::Restore); })},
      {"mnuOverlay", {}, {}, {}, Needs::OpenMap, Hand::Free, "Einträge laden", "Diese Einträge in die Karte laden",
       Load_Overlay, CommandKind::List},
      {"mnuImportCSV", "komma separierte Datei *.csv", {}, {}, Needs::OpenMap, Hand::StoreText, "CSV - Import",
       "Funde mit ihren Koordinaten aus einer CSV-Tabelle einlesen", opensWindow},
      {"mnuImportGPS", "&GPS-Daten ...", {}, {}, Needs::OpenMap, Hand::StoreText, "Import",
       "Wegpunkte und Tracks aus Dateien von GPS-Geräten, GPX und anderen oder vom Gerät einlesen", opensWindow},
      {"mnuImportXL", "Excel-Tabelle", {}, {}, Needs::OpenMap, Hand::StoreText, {},
       "Wie eine Excel-Tabelle in die Karte kommt", Do(Tell_Excel_Import)},
      {"mnuOVL_Import", "Top50-&Overlay *.ovl", {}, {}, Needs::OpenMap, Hand::Free, "Import",
       "Texte, Linien, Flächen und Figuren aus einer Overlay-Datei einlesen", opensWindow},
      {"mnuImportMDB", "andere &Datenbank *.mdb", {}, {}, Needs::OpenMap, Hand::Free, "Import",
       "Einträge aus einer anderen Tabelle hinzufügen, gefiltert und verändert", opensWindow},
  };
}

std::vector<Command> Window_Rows() {
  return {
      {"mnuDBGridOn", "&Ausblenden", "table", "F4", Needs::OpenMap, Hand::StoreText, {},
       "Die Tabelle der Einträge zeigen oder verbergen", Do(Toggle_Table)},
      {"mnuSpaltAppend", "&Spalte hinzufügen ...", {}, {}, Needs::OpenMap, Hand::StoreText, "Spalte hinzufügen",
       "Der Tabelle eine eigene Spalte geben", opensWindow},
      {"mnuSpaltDelete", "Spalte &löschen ...", {}, {}, Needs::UserColumns, Hand::StoreText, {},
       "Eine eigene Spalte aus der Tabelle entfernen", opensWindow},
      {"mnuSpaltHide", "Spalte &verbergen ...", {}, {}, Needs::OpenMap, Hand::StoreText, {},
       "Eine Spalte der Tabelle nicht mehr zeigen", opensWindow},
      {"mnuSpaltShow", "alle Spalten &zeigen", {}, {}, Needs::OpenMap, Hand::StoreText, {},
       "Die verborgenen Spalten wieder zeigen", opensWindow},
      {"mnuSpaceDel", "Leer&zeichen entfernen", {}, {}, Needs::Entries, Hand::Free, "Leerzeichen entfernen",
       "Leerzeichen aus den Texten der Einträge nehmen", Do(Remove_Blanks)},
      {"mnuTabComp", "Tabelle &komprimieren", {}, {}, Needs::Entries, Hand::Free, {},
       "Die Datei der Tabelle verkleinern", Replacing(Compress_Table)},
      {"mnuTabRep", "Tabelle &reparieren", {}, {}, Needs::OpenMap, Hand::Free, {},
       "Eine beschädigte Tabelle wieder lesbar machen", Do(Repair_And_Tell)},
      {"mnuTblPrint", "Tabelle &drucken", "print", {}, Needs::OpenMap, Hand::Free, {}, "Die Zeilen der Tabelle drucken",
       Do(Print_Table)},
  };
}

// clang-format on

}  // namespace

std::vector<Command> Table_Commands() {
  std::vector<Command> all = File_Rows();
  const auto more = Window_Rows();
  all.insert(all.end(), more.begin(), more.end());
  return all;
}

// clang-format off

std::vector<Command> Text_Commands() {
  constexpr auto needs = Needs::NotePad;
  return {
      {"mnuTextNew", "&Neu", {}, {}, Needs::OpenMap, Hand::Keep, {}, "Eine neue Notiz schreiben", opensWindow},
      {"mnuTextOpen", "Ö&ffnen ...", {}, {}, Needs::OpenMap, Hand::Keep, {}, "Einen Text der Karte öffnen", opensWindow},
      {"mnuTextSave", "&Speichern", {}, {}, needs, Hand::Keep, {}, "Den Text in seiner Datei speichern", opensWindow},
      {"mnuResultSaveAs", "Speichern &unter ...", {}, {}, needs, Hand::Keep, {},
       "Den Text unter einem anderen Namen speichern", opensWindow},
      {"mnuPrintTxt", "&Drucken", "print", {}, needs, Hand::Keep, {}, "Den Text drucken", opensWindow},
      {"mnuTextFind", "Su&chen ...", {}, {}, needs, Hand::Keep, {}, "Im Text suchen; F3 sucht weiter", opensWindow},
      {"mnuTextCut", "&Ausschneiden", {}, {}, needs, Hand::Keep, {}, "Das Ausgewählte in die Zwischenablage nehmen",
       opensWindow},
      {"mnuTextCopy", "&Kopieren", {}, {}, needs, Hand::Keep, {}, "Das Ausgewählte in die Zwischenablage kopieren",
       opensWindow},
      {"mnuTextPaste", "&Einfügen", {}, {}, needs, Hand::Keep, {}, "Den Text der Zwischenablage einfügen", opensWindow},
      {"mnuRecentFile", {}, {}, {}, Needs::OpenMap, Hand::Keep, {}, "Diesen Text öffnen", opensWindow, CommandKind::List},
  };
}
// clang-format on
