#pragma once

// "Leerzeichen entfernen": asks whether all blanks go from the texts of the entries or those at their ends alone;
// symbols stay. A text of which nothing would be left becomes the character 160. One transaction, undo point
// "Rückgängig: Leerzeichen entfernen"; the status bar tells how many texts changed.
void Remove_Blanks();
