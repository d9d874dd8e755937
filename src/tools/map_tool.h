#pragma once
#include <QPainterPath>
#include <QPoint>
#include <QString>
#include <memory>

#include "tools/mouse.h"

// A tool that takes the mouse and the keys of the map while it is in use: drawing a line, placing a figure, measuring.
// The magnifier, a right click's popup and scrolling work on as without it. Positions are window pixels; a tool that
// lives through a scroll keeps map pixels.
class MapTool {
 public:
  virtual ~MapTool() = default;
  // Map.Tool while it is in use; the tool button of that key is shown pressed.
  virtual QString Name() const = 0;
  // What the status panel says meanwhile.
  virtual QString Status() const { return {}; }
  // True: it works on the entry in hand, which stays there.
  virtual bool Keeps_Hand() const { return false; }
  virtual void Down(QPoint window, MouseKeys keys) = 0;
  virtual void Move(QPoint window, bool leftDown) {
    Q_UNUSED(window)
    Q_UNUSED(leftDown)
  }
  virtual void Up(QPoint window) { Q_UNUSED(window) }
  // A double click comes as Down, Up, Double_Click, Up.
  virtual void Double_Click(QPoint window) { Q_UNUSED(window) }
  // True: the right click belongs to the tool, no popup.
  virtual bool Right_Click(QPoint window) {
    Q_UNUSED(window)
    return false;
  }
  // True if the key was used. An unused Esc ends the tool.
  virtual bool Key(int key, MouseKeys keys) {
    Q_UNUSED(key)
    Q_UNUSED(keys)
    return false;
  }
  // What is drawn over the map, in window pixels, dashed; asked after each of the calls above and after a redraw.
  virtual QPainterPath Outline() const { return {}; }
  // The tool goes without being finished: Esc, another tool, the map is closed.
  virtual void Dropped() {}
};

// The tool takes the mouse. An entry in hand is ended first, unless the tool works on it; false, and no tool, if its
// text could not be stored.
bool Use_Map_Tool(std::unique_ptr<MapTool> tool);
// Done: the tool goes without Dropped. It may call this itself from any of its calls.
void End_Map_Tool();
// The same with Dropped; nothing happens without a tool.
void Drop_Map_Tool();
// nullptr without one.
MapTool* Map_Tool_In_Use();
