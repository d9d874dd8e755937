#pragma once
#include <QString>

struct EntryRow;

// What the user reads an entry is: "Text", "Symbol", "Linie", "Fläche", "Figur", "Bild", "Maßstab", "Nordpfeil",
// "Koordinatennetz", "Planquadrat", else "Eintrag". Asks ID, Schrift and Typ alone.
QString Kind_Word(const EntryRow& row);
