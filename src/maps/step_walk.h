#pragma once
#include <QString>

// Undo and redo of single steps: Strg+Z, its way back, and the list of steps. What is being typed is stored first, and
// is the step that goes back then. While a line or area is being drawn they mean its vertices.

bool Can_Step_Back();     // something can be taken back
bool Can_Step_Forward();  // something was
void Step_Back();         // takes the last step back; nothing without one
void Step_Forward();      // brings the one taken back last again
// The state after so many steps, from the list of them.
void Walk_To_Step(int position);
// "Rückgängig: Fläche verschoben (Moor)"; "" without a step to name.
QString Step_Back_Text();
QString Step_Forward_Text();  // the same with "Wiederherstellen: "

// mnuReset: back to before the named operation; asks if later steps go along.
void Take_Back_Operation();
// After a map was opened: tells of work that was interrupted, once.
void Tell_Of_Interrupted_Work();
// Where steps were lost, for want of room on the disk: tells why, once. To be asked when nothing else is going on.
void Tell_Of_Lost_Steps();
