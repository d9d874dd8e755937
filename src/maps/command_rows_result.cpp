#include "maps/analysis_commands.h"
#include "maps/command_rows.h"

// clang-format off

std::vector<Command> Result_Commands() {
  constexpr auto text = Hand::StoreText;
  return {
      {"mnuOverView", "Übe&rsicht", {}, {}, Needs::OpenMap, text, {},
       "Größe und Maße der Karte und die Zahl ihrer Einträge als Text", Do(Show_Overview)},
      {"mnuKataster", "&Kataster", {}, {}, Needs::Entries, text, {},
       "Flächen, Linien, Texte und Bilder der Karte als Blatt der Arbeitsmappe", Do(Write_Kataster)},
      {"mnuLaengeTxt", "&Text", {}, {}, Needs::Entries, text, {}, "Die Längen aller Linien als Text",
       Do(Show_Line_Lengths)},
      {"mnuLaengeXL", "&Excel", {}, {}, Needs::Entries, text, {}, "Die Längen aller Linien als Blatt der Arbeitsmappe",
       Do(Write_Line_Sheet)},
      {"mnuFlGrosTxt", "&Text", {}, {}, Needs::Entries, text, {}, "Größe und Arten aller Flächen und Figuren als Text",
       Do(Show_Area_Sizes)},
      {"mnuFlExcel", "&Excel", {}, {}, Needs::Entries, text, {},
       "Größe und Arten aller Flächen als Blatt der Arbeitsmappe", Do(Write_Area_Sheet)},
      {"mnuCalc", "Größe berechnen", {}, {}, Needs::Shape, text, {},
       "Länge der Linie oder Größe und Umfang der Fläche oder Figur", Do(Tell_Size_In_Hand)},
  };
}
// clang-format on
