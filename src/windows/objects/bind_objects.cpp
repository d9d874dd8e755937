#include "windows/objects/bind_objects.h"

#include "edit/symbols.h"
#include "tools/symbol_tool.h"
#include "windows/common/bind_window.h"
#include "windows/objects/frmDrawBreite.h"
#include "windows/objects/frmFarb.h"
#include "windows/objects/frmFill.h"
#include "windows/objects/frmLineEndpunkte.h"
#include "windows/objects/frmLnStil.h"
#include "windows/objects/frmSchrift.h"
#include "windows/objects/frmSymbol.h"

namespace {

// From the menu of the right mouse button where it was opened; else the window stands beside the map while the next
// click places the symbol.
void Insert_Symbol(QWidget* mainWindow, const CommandCall& call) {
  if (call.at ? Place_Symbol(*call.at) : Toggle_Symbol_Tool()) Show_frmSymbol(mainWindow);
}

void Font_Window(QWidget* mainWindow) {
  if (Symbol_In_Hand())
    Show_frmSymbol(mainWindow);
  else
    Show_frmSchrift(mainWindow);
}

void Frame_Windows(QWidget* mainWindow) {
  Show_frmFarb(mainWindow, FarbFor::Frame);
  Show_frmDrawBreite(mainWindow);
}

}  // namespace

void Bind_Object_Windows(QWidget* mainWindow) {
  Bind_Command(QStringLiteral("mnuInsSymbol"),
               [mainWindow](const CommandCall& call) { Insert_Symbol(mainWindow, call); });
  Bind_Window("mnuSchrift", mainWindow, Font_Window);
  Bind_Window("mnuFarbe", mainWindow, [](QWidget* window) { Show_frmFarb(window); });
  Bind_Window("mnuFigFill", mainWindow, Show_frmFill);
  Bind_Window("mnuBreite", mainWindow, Show_frmDrawBreite);
  Bind_Window("mnuRahmen", mainWindow, Frame_Windows);
  Bind_Window("mnuLnStil", mainWindow, Show_frmLnStil);
  Bind_Window("mnuLnEnd", mainWindow, Show_frmLineEndpunkte);
}
