#pragma once
#include <QPainterPath>
#include <QPoint>
#include <QString>
#include <memory>
#include <optional>
#include <vector>

#include "platform/surface.h"
#include "tools/drawn_points.h"

// The one way to wait for the mouse on the map. There is always a tool: the hand (tools/hand_tool) takes, drags and
// marks entries, and every other one takes its place while it is in use: text, line, figure, foot point, measuring,
// picking a point. mouse.cpp asks the tool, the window draws what it answers; neither knows which one it is.
//
// A new tool is one file: a class derived from this one in a namespace without a name, and a procedure that makes it
// and gives it to Use_Map_Tool. It says its Name and what happens on a Press; of the other questions it answers those
// that matter to it. When it has what it was waiting for it calls End_Map_Tool, and only then the procedure that writes
// the entry: that may take the entry in hand, and whatever is in use then is dropped. Who wants to hear what comes of
// it gives the tool a function. Redraws, scrolling and zooming come between two calls: positions that have to outlive
// them are kept in map pixels. All positions handed over are window pixels.
//
// Its button or menu entry, if it has one, bears its Name as key and is shown pressed while it is in use.

enum class MouseButton { Left, Right };
struct MouseKeys {
  bool control = false, shift = false;
};
enum class MapPointer { Arrow, Cross, Move, Busy, Size };

// One line of what a tool paints over the map, in window pixels.
struct OverLine {
  QPainterPath path;
  std::optional<QRgb> color;  // none: dashed in black and white, to be seen on every ground
  double width = 1;           // of the pen
};
using OverPaint = std::vector<OverLine>;
// A dashed line; nothing for an empty path.
OverPaint Dashed(const QPainterPath& path);

class MapTool {
 public:
  virtual ~MapTool() = default;
  // Map.Tool while it is in use. Two tools have not the same.
  virtual QString Name() const = 0;
  // Pointer over the map while it is in use.
  virtual MapPointer Cursor(QPoint window) const {
    Q_UNUSED(window)
    return MapPointer::Cross;
  }
  // What the status panel says; asked when the tool comes into use, and after a Move if the key is another one.
  virtual QString Status() const { return {}; }
  // What the status text depends on.
  virtual QString Status_Key() const { return Name(); }
  // True: it works on the entry in hand, which stays there.
  virtual bool Keeps_Hand() const { return false; }

  // The left button.
  virtual void Press(QPoint window, MouseKeys keys) = 0;
  // `leftDown`: the left button is held. It may have been let go where nobody told it.
  virtual void Move(QPoint window, bool leftDown) {
    Q_UNUSED(window)
    Q_UNUSED(leftDown)
  }
  // May come without a Press of its own.
  virtual void Release(QPoint window) { Q_UNUSED(window) }
  // A double click comes as Press, Release, Double_Click, Release.
  virtual void Double_Click(QPoint window) { Q_UNUSED(window) }
  // True: the right click belongs to the tool, no popup.
  virtual bool Right_Click(QPoint window) {
    Q_UNUSED(window)
    return false;
  }
  // Key by its Qt number, Esc excepted. True if it was used; else it means what it means to the hand.
  virtual bool Key(int key, MouseKeys keys) {
    Q_UNUSED(key)
    Q_UNUSED(keys)
    return false;
  }
  // Esc. True if the tool has dealt with it, false: it is dropped.
  virtual bool Escape() { return false; }
  // The points it was given, where taking back a step means them: nullptr if it means the table.
  virtual DrawnPoints* Points() { return nullptr; }
  // True: it knows nothing of the table's rows, and stays in use while steps are taken back.
  virtual bool Outlives_Steps() const { return false; }
  // What is drawn over the map; asked after each of the calls above and after a redraw.
  virtual OverPaint Paint_Over() const { return {}; }
  // The tool goes without being finished: Esc, another tool, another entry in hand, the map is closed.
  virtual void Dropped() {}
};

// The tool takes the mouse, the former one is dropped. An entry in hand is ended first, unless the tool works on it;
// false, and no tool, if its text could not be stored. `row`: the key of a row that the tool works on stands in
// Map.ToolRow until it ends.
bool Use_Map_Tool(std::unique_ptr<MapTool> tool, const QString& row = {});
// Done: the tool goes without Dropped. It may call this itself from any of its calls.
void End_Map_Tool();
// The same with Dropped; nothing happens without a tool.
void Drop_Map_Tool();
// nullptr while the hand has the mouse.
MapTool* Map_Tool_In_Use();
// While one of these lives, steps of the table are taken back or brought again: every tool goes at its beginning but
// those that outlive them, and these stay whatever the hand lets go of.
class StepsUnderTool {
 public:
  StepsUnderTool();
  ~StepsUnderTool();
  StepsUnderTool(const StepsUnderTool&) = delete;
  StepsUnderTool& operator=(const StepsUnderTool&) = delete;
};
// Of the tool in use, if it has any.
DrawnPoints* Points_Being_Drawn();
// Its button: comes into use, or is dropped if the tool of that name is in use. True if it is in use now.
bool Toggle_Map_Tool(std::unique_ptr<MapTool> tool);

// The magnifier alone lies over another tool: half a line can be looked at closely, and the line goes on as it was when
// the magnifier is taken off. Mouse and Esc are its own meanwhile, and what the tool below paints stays to be seen.
void Lay_Tool_Over(std::unique_ptr<MapTool> tool);
// Takes it off, without Dropped.
void Take_Tool_Off();
MapTool* Tool_Laid_Over();  // nullptr without one

// The topmost of the two, null while the hand has the mouse. It lives on while it is held, also if it ends meanwhile.
std::shared_ptr<MapTool> Tool_With_The_Mouse();

// Tools end when the hand lets go of its entry.
void Connect_Map_Tools();
