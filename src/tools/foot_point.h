#pragma once

// The foot point of the entry in hand: the place on the map to which its reference line runs. Texts, symbols and
// pictures can have one.

bool Can_Have_Foot_Point();  // is one in hand that can have one?
bool Has_Foot_Point();       // and has it one?
// Starts the tool that sets the foot point by a click or a drag; called again it drops the tool.
void Move_Foot_Point();
// Asks, then takes the reference line away. False if it stayed.
bool Remove_Foot_Point();
// The button "Fußpkt": sets a foot point where there is none, else removes it.
void Change_Foot_Point();

// End mark of a text's reference line by its Typ: 1 plain, 2 arrow, 3 circle. 0: the entry in hand has no choice
// (pictures, kind 7, none in hand).
int End_Mark_In_Hand();
// Changes it, and that of the next foot points.
void Set_End_Mark(int mark);
