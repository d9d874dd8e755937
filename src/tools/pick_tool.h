#pragma once
#include <QPoint>
#include <QString>
#include <functional>

// Waits for one click on the map and tells where it was.

struct PickWish {
  QString name;    // of the tool: the key of its button, or a word of its own
  QString status;  // what the status panel says meanwhile
  std::function<void(QPoint map)> taken;
  std::function<void()> dropped;  // the tool went without a click; may be empty
};
// An entry in hand is ended first; false, and nothing waits, if its text could not be stored.
bool Pick_Point(PickWish wish);
// Gives up the tool of that name, if it is the one that waits.
void Give_Up_Picking(const QString& name);
