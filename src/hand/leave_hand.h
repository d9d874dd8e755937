#pragma once
#include <functional>

// The one gate before everything that replaces, closes or changes what the user has in hand: what is being typed goes
// into the table first, wherever it is being typed.

// A window in which something can be typed that is not in the table yet. `store` stores it; false: it could not be
// stored (that was told) and stays to be mended. Returns a number for Forget_Typing.
int Watch_Typing(std::function<bool()> store);
void Forget_Typing(int number);

// Stores what is being typed, in the windows and in the edit box of the map. False if something could not be stored.
bool Store_Typed();
// The same, then the entry in hand is given up.
bool Leave_Hand();
