#pragma once

// The palette of 16 colours in Palette, and its file "MAP-Farb" in the program folder: sixteen numbers, one a line,
// each red + 256 * green + 65536 * blue.

// Reads the file. A missing one is written with the standard colours; a number that is missing or no colour leaves the
// standard colour in its place.
void Load_Palette();
// Errors 61, 70, 76.
void Save_Palette();
// The 16 colours of the numbered colour table.
void Standard_Palette();
