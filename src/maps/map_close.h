#pragma once

// Closes what is open of a map, be it only half loaded. What is being typed is not stored: Leave_Map.
void Close_Map();
