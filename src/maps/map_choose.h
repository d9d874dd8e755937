#pragma once
#include <QString>

// How the user comes to a map: by a path, by the dialog, from the recent list.

bool Open_User_Map(const QString& path);  // as Open_Map, and on success the recent lists follow
void Choose_Map();                        // asks for the map
void Open_Recent_Map(int index);          // mnuMapFile(index)
