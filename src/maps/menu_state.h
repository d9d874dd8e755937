#pragma once
// A map was opened or closed, or another table stands in it: nothing is in hand, the tool state is "Norm", the status
// bar tells the table.
void Set_Buttons();
// Panels of the status bar when no map is open.
void Reset_InfoBar();
