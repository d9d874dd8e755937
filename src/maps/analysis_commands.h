#pragma once

// The evaluations of the menu "Daten" for the open map: reports in note pads, sheets of the workbook beside the table.
// What there is nothing for, an error and where the result lies are told. While the spreadsheet program has the
// workbook open the user is asked to try again; a report that is being changed in its note pad is left alone.

void Show_Overview();      // mnuOverView: the note "OverView.inf" beside the table
void Write_Kataster();     // mnuKataster: sheet "Kataster"
void Show_Line_Lengths();  // mnuLaengeTxt: the report "Linien.stk" beside the table
void Write_Line_Sheet();   // mnuLaengeXL: sheet "Linien"
void Show_Area_Sizes();    // mnuFlGrosTxt: the report "Flaechen.stk" beside the table
void Write_Area_Sheet();   // mnuFlExcel: sheet "Flächen"
void Tell_Size_In_Hand();  // mnuCalc: a box with the size of the line, area or figure in hand
