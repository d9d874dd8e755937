#pragma once

// Button "Bild": the next click on the map asks for a picture file, places it there and takes it in hand. Pressed again
// it gives up. True if it waits now.
bool Toggle_Picture_Tool();
