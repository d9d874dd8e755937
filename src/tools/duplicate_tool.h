#pragma once

// mnuEintrDupl, "Dupl": the next click on the map places an exact duplicate of the current entry with its upper left
// corner there. Chosen again for the same entry it gives up.
void Duplicate_Entry();
