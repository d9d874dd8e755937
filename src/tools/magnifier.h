#pragma once

// Button "Lupe": lays the magnifier over whatever has the mouse, or takes it off. A click brings the place under it
// into the middle at twice the size, a right click opens the window of the zoom, Esc takes it off.
void Toggle_Lupe();
