#include "maps/command_rows.h"
#include "maps/map_coordinates.h"
#include "maps/map_grid.h"
#include "tools/plan_squares.h"

// clang-format off

std::vector<Command> Grid_Commands() {
  constexpr auto squares = Needs::PlanSquares;
  return {
      {"mnuGridmake", "erstellen", {}, {}, Needs::OpenMap, Hand::Free, {},
       "Das Koordinatennetz der Karte mit dem Programm Kalibrix vermessen", Do(Make_Grid)},
      {"mnuChooseGrid", "auswählen", {}, {}, Needs::Calibration, Hand::StoreText, {},
       "Unter den Kalibrierungsdateien der Karte eine auswählen", Do(Choose_Cal_File)},
      {"mnuGridonoff", "einblenden", {}, {}, Needs::Net, Hand::StoreText, "Netz zeigen",
       "Das Koordinatennetz über den Einträgen zeigen oder verbergen", Do(Toggle_Grid)},
      {"mnuGridDel", "löschen", {}, {}, Needs::Net, Hand::Free, "Netz löschen",
       "Das Koordinatennetz von der Karte nehmen", Do(Delete_Grid)},
      {"mnuGridXYShow", "Koordinaten anzeigen", {}, {}, Needs::Net, Hand::StoreText, {},
       "Die Koordinaten unter der Maus in der Statuszeile zeigen", opensWindow, CommandKind::Check},
      {"mnuGridXYInput", "Koordinaten eingeben ...", {}, {}, Needs::Net, Hand::StoreText, {},
       "Eine Koordinate eingeben und ihre Stelle in der Karte zeigen", opensWindow},
      {"mnuRasterErstellen", "&erstellen", {}, {}, Needs::OpenMap, Hand::StoreText, {},
       "Ein Raster von Planquadraten entwerfen", opensWindow},
      {"mnuRasterBearbeiten", "bearbeiten", {}, {}, squares, Hand::StoreText, {}, "Das Raster der Karte ändern", opensWindow},
      {"mnuRasterEinblenden", "ausblenden", {}, {}, squares, Hand::Free, "Planquadrate zeigen",
       "Die Planquadrate zeigen oder verbergen", Do(Toggle_Raster_Visible)},
      {"mnuRasterAktiv", "aktivieren", {}, {}, squares, Hand::Free, {}, "Planquadrate mit der Maus wählen",
       Do(Toggle_Raster_Active)},
      {"mnuRasterDelete", "&löschen", {}, {}, squares, Hand::Free, "Planquadrate löschen",
       "Alle Planquadrate der Karte löschen", Do(mnuRasterDelete_Click)},
  };
}
// clang-format on
