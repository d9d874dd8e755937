#include "tools/canvas.h"

#include "hand/activation.h"
#include "tools/map_tool.h"
#include "tools/plan_squares.h"
#include "view/redraw.h"

void Connect_Canvas() {
  Connect_Redraw();
  Connect_Hand();
  Connect_Map_Tools();
  Connect_Plan_Squares();
}
