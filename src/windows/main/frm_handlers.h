#pragma once
#include <QHash>
#include <QString>
#include <functional>

class QMainWindow;

// What the menu entries and tool buttons do, by their keys. `line` is the number of the line (1..10) in a list, else 0;
// for a tool button that was clicked with the right mouse button it is rightButton.
inline constexpr int rightButton = -1;
using Handler = std::function<void(QMainWindow& window, int line)>;
const QHash<QString, Handler>& Menu_Handlers();
const QHash<QString, Handler>& Tool_Handlers();

// Opens a menu of the menu bar as its access key does.
void Open_Menu(QMainWindow& window, const QString& key);
// Opens a menu where the pointer is.
void Popup_Menu(QMainWindow& window, const QString& key);
