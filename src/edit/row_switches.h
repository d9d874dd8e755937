#pragma once
// Switches of the current row. Each is one transaction and one redraw; a row that has no such switch stays as it is.
void Round_Corners();  // lines, areas and free figures: straight edges or rounded ones
void Toggle_Label();   // lines and areas: label shown or not (sign of Größe)
