#pragma once
#include <QPoint>
#include <optional>

#include "windows/main/frm_handlers.h"

// What the menus "Einträge" and "Objekt" and the tool buttons do to entries.

void Add_Object_Handlers(QHash<QString, Handler>& all);
void Add_Object_Tools(QHash<QString, Handler>& all);

// Gives up the entry in hand. False if its text could not be stored.
bool Hands_Free();
// A handler behind which other entries may stand.
Handler Replacing(void (*work)());
// Where the popup of the right mouse button was opened, while what was chosen in it is carried out.
std::optional<QPoint> Popup_Place(QMainWindow& window);
