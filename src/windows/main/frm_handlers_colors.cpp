#include <QMainWindow>

#include "edit/entry_look.h"
#include "state/events.h"
#include "windows/common/frm_dialogs.h"
#include "windows/main/frm_handlers_rooms.h"

// What the menu entries and tool buttons of colours, fills, widths and line styles do.

namespace {

void Color_Window(QMainWindow& window, int) { Show_frmFarb(&window); }
void Fill_Window(QMainWindow& window, int) { Show_frmFill(&window); }
void Width_Window(QMainWindow& window, int) { Show_frmDrawBreite(&window); }

void Frame_Windows(QMainWindow& window, int) {
  Show_frmFarb(&window, FarbFor::Frame);
  Show_frmDrawBreite(&window);
}

void Frame_Button(QMainWindow& window, int line) {
  if (line == rightButton)
    Switch_Frame(!Look_In_Hand().frame.framed);
  else
    Frame_Windows(window, line);
  events.StateChanged.Emit();  // the pressed button tells whether there is a frame
}

}  // namespace

void Add_Colors_Handlers(QHash<QString, Handler>& menu, QHash<QString, Handler>& tools) {
  menu["mnuFarbe"] = tools["Farbe"] = Color_Window;
  menu["mnuFigFill"] = tools["Fill"] = Fill_Window;
  menu["mnuBreite"] = tools["Breite"] = Width_Window;
  menu["mnuRahmen"] = Frame_Windows;
  tools["Rahmen"] = Frame_Button;
}
