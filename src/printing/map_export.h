#pragma once

// The map with its entries at 100 % as a BMP. Asks for the file; false if the user cancelled or it could not be
// written, which is told.
bool Export_Map_Picture();
