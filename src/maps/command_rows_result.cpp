#include "maps/analysis_commands.h"
#include "maps/command_rows.h"
#include "maps/population_command.h"

// clang-format off

std::vector<Command> Result_Commands() {
  constexpr auto text = Hand::StoreText;
  return {
      {"mnuOverView", "Übe&rsicht", {}, {}, Needs::OpenMap, text, {},
       "Größe und Maße der Karte und die Zahl ihrer Einträge als Text", Do(Show_Overview)},
      {"mnuKataster", "&Kataster", {}, {}, Needs::Entries, text, {},
       "Flächen, Linien, Texte und Bilder der Karte als Blatt der Arbeitsmappe", Do(Write_Kataster)},
      {"mnuPopParm", "&Populationsparameter ...", {}, {}, Needs::Entries, text, {},
       "Dichte, Abundanz, Dominanz und Diversität der Arten auf den Flächen", opensWindow},
      {"mnuMatrixXL", "&Excel", {}, {}, Needs::Entries, text, {},
       "Arten je Fläche, Figur, Linie und Gruppe mit ihren Indizes als Blatt der Arbeitsmappe", Do(Write_Matrix_Sheet)},
      {"mnuMatrixCSV", "&CSV ...", {}, {}, Needs::Entries, text, {},
       "Arten je Fläche, Figur, Linie und Gruppe als Text für andere Programme", Do(Write_Matrix_Csv)},
      {"mnuZuordBackgdColor", "&Zuordnung zur Hintergrundfarbe ...", {}, {}, Needs::Entries, text, {},
       "Welche Art auf welcher Farbe der Karte steht, als Blatt der Arbeitsmappe", opensWindow},
      {"mnuDist_Einfach", "&Einfach", {}, {}, Needs::Entries, text, {},
       "Distanz zwischen zwei Einträgen, die Sie anklicken", opensWindow},
      {"mnuDistPoly", "&Polygon", {}, {}, Needs::Entries, text, {},
       "Distanz von Eintrag zu Eintrag, in der Reihenfolge der Klicks", opensWindow},
      {"mnuDistBundle", "&Bündel", {}, {}, Needs::Entries, text, {},
       "Distanz vom ersten angeklickten Eintrag zu allen weiteren", opensWindow},
      {"mnuNachbar", "&Nachbarschaft ...", {}, {}, Needs::Entries, text, {},
       "Die nächsten Nachbarn jedes Eintrags als Text", opensWindow},
      {"mnuDiagramme", "&Diagramme ...", {}, {}, Needs::Entries, text, {},
       "Rang-Abundanz, Artenzahl über den Flächen, Abstände nächster Nachbarn", opensWindow},
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
