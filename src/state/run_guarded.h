#pragma once
#include <functional>

// Runs what a menu, a button or the mouse starts, as one step of the journal. An Error that comes out of it is shown as
// "Programmfehler "; the user may end the program then. False if there was one.
bool Run_Guarded(const std::function<void()>& work);
