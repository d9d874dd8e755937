#pragma once

// Button "Symb": the next click on the map places the chosen symbol there and takes it in hand. Pressed again it gives
// up. True if it waits now.
bool Toggle_Symbol_Tool();
