#include "exchange/csv_export.h"
#include "exchange/exchange_table.h"
#include "maps/command_rows.h"
#include "maps/sheet_bridge.h"

// clang-format off

std::vector<Command> Exchange_Commands() {
  constexpr auto text = Hand::StoreText;
  return {
      {"mnuImporttkr", "&Trakkor-Datei *.tkr", {}, {}, Needs::OpenMap, Hand::Free, "Import",
       "Punkte aus einer Datei des mobilen Programms einlesen", Do(Import_Trakkor)},
      {"mnuImporttkrAll", "Trakkor-Datei: &Alle Objekte einlesen", {}, {}, Needs::OpenMap, Hand::Free, "Import",
       "Alles aus einer Datei des mobilen Programms einlesen, auch Linien, Flächen und Figuren", Do(Import_All_Trakkor)},
      {"mnuExportCSV", "&komma separierte Datei *.csv", {}, {}, Needs::OpenMap, text, {},
       "Alle Punkte mit ihren Koordinaten in eine CSV-Datei neben der Tabelle schreiben", Do(Export_Csv)},
      {"mnuExportCSVTable", "CSV-Tabelle mit &Auswahl ...", {}, {}, Needs::OpenMap, text, {},
       "Spalten, Trennzeichen, Zeichensatz und Koordinaten der CSV-Datei wählen", opensWindow},
      {"mnuExporttkr", "&Trakkor-Datei *.tkr", {}, {}, Needs::OpenMap, text, {},
       "Alle Einträge in eine Datei für das mobile Programm schreiben", Do(Export_Trakkor)},
      {"mnuExportxls", "&Excel-Tabelle", "sheet", {}, Needs::OpenMap, Hand::Free, {},
       "Die Tabelle der Einträge in die Arbeitsmappe neben der Karte schreiben und öffnen", Do(Export_Table)},
      {"mnuExChangeXL", "mit &Excel ...", {}, {}, Needs::Entries, Hand::Free, "Einträge austauschen",
       "Spalten aus einem Blatt einer Arbeitsmappe in die Tabelle übernehmen", Do(Exchange_With_Sheet)},
      {"mnuExChangeAVI", "&Verbreitungsliste ...", {}, {}, Needs::More, Hand::Keep, {},
       "Der Austausch mit einer Verbreitungsliste ist noch nicht möglich", Do([] {})},
  };
}
// clang-format on
