#pragma once
#include <QString>

// What the windows show of a map while it is being opened.

void Show_Background(const QString& text);  // the text stands on the map window in place of the map; empty: none
void Show_Opening(const QString& path);     // captions, and that this map is being loaded; nothing is typed
// The map and its table take their places, still without a layout.
void Show_Map();
// The table stands as it was loaded, nothing to take back; first layout, from the map's upper left corner, and redraw.
void Finish_Open();
