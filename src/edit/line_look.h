#pragma once
#include <QString>

#include "store/entry.h"

// The look of the line or area in hand; without one, that of the next line or area. A change is one transaction and one
// redraw.

bool Line_In_Hand();  // else the next line is meant
bool Area_In_Hand();  // else the next area is meant
// Whose look it is: "Linie 3" or "nächste Linie".
QString Line_Look_Of();
// The line in hand; else a row of the next line, so far as its look goes.
EntryRow Line_Look();

int Line_Style_Code();  // Yline: 1 solid, 2 dash, 3 dot, 4 dash-dot, 5 dash-dot-dot; negative = transparent
void Set_Line_Style_Code(int stored);  // of the line in hand, else of the next one

// Of a line without marks: those a first mark would get, switched off.
LineEnds Line_Ends_Now();
// Without a start and an end mark the line has no code at all.
void Set_Line_Ends(const LineEnds& ends);

// mnuFlTemplateSave: colours, fill and width of the area into "Flurax.ini"; mnuFlTemplateGet: from there to the area.
void Save_Area_Template();
void Take_Area_Template();
