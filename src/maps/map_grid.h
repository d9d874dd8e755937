#pragma once

// mnuGridmake: closes the map, starts the tool that makes calibration files with the map's picture, and offers to load
// the map again when the tool has ended. Without the tool a message tells where it belongs.
void Make_Grid();
