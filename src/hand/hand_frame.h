#pragma once

// Frame of the active text, vertices of a line or area, frame of a group: painted on the canvas over the entries. A
// redraw paints them by itself.

// On the canvas as it is, after what they covered was kept.
void Paint_Hand();
// Gives the canvas back what they cover.
void Unpaint_Hand();
// Paints them and tells the windows: canvas and live controls are new.
void Show_Hand();
// The live controls stand where they belong in the view there is now.
void Hand_Is_Shown();
// Live controls and frame go from sight; the entry stays in hand. Tells the windows.
void Hide_Hand();
bool Hand_Is_Hidden();  // since then they were not shown again
// Was the map scrolled or zoomed since then?
bool View_Has_Moved();
