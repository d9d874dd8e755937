#pragma once
// Show and hide, activate and deactivate. No: the current row (toggles); X: the marked rows; All: every hidden or
// inactive row. One transaction each, then redraw and tool state.
void Hide_Current();           // mnuObjVisNo
void Hide_Marked();            // mnuObjVisX
void Show_All_Hidden();        // mnuObjVisAll
void Deactivate_Current();     // mnuObjActNo
void Deactivate_Marked();      // mnuObjActX
void Activate_All_Inactive();  // mnuObjActAll
