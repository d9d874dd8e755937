#include <QMainWindow>

#include "tools/foot_point.h"
#include "tools/map_tool.h"
#include "windows/canvas/frmMass.h"
#include "windows/canvas/frmRfline.h"
#include "windows/main/frm_handlers_rooms.h"

// What the menu entries and tool buttons of reference lines, the scale bar and the north arrow do.

namespace {

void Rfline_Button(QMainWindow& window, int line) {
  if (line == rightButton)
    Show_frmRfline(&window);
  else
    Change_Foot_Point();
}

// Pressed again it drops the measuring line; the window stays.
void Scale_Button(QMainWindow& window, int) {
  if (Scale_Tool_In_Use())
    Drop_Map_Tool();
  else
    Show_frmMass(&window, true);
}

}  // namespace

void Add_Scale_Handlers(QHash<QString, Handler>& menu, QHash<QString, Handler>& tools) {
  menu["mnuRfline"] = [](QMainWindow& window, int) { Show_frmRfline(&window); };
  menu["mnuMass"] = [](QMainWindow& window, int) { Show_frmMass(&window, false); };
  menu["mnuInsMass"] = [](QMainWindow& window, int) { Show_frmMass(&window, true); };
  menu["mnuFootDel"] = [](QMainWindow&, int) { Remove_Foot_Point(); };
  tools["Rfline"] = Rfline_Button;
  tools["Scale"] = Scale_Button;
}
