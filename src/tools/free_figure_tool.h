#pragma once

// Tool "Fig" for a free figure: clicks set the vertices, Backspace takes the last one back, a double or right click or
// Enter ends, Esc drops it. Its edges are those of NextShape. False without a map, or if the text in hand could not be
// stored.
bool Draw_Free_Figure();
