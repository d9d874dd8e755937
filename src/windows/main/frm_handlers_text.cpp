#include <QMainWindow>

#include "edit/symbols.h"
#include "hand/activation.h"
#include "hand/tool_state.h"
#include "state/map_state.h"
#include "windows/common/frm_dialogs.h"
#include "windows/main/frm_handlers_object.h"
#include "windows/main/frm_handlers_rooms.h"

// What the menu entries and tool buttons of texts and symbols do.

namespace {

// The window stands beside the map while the next click places the symbol.
void Symbol_Tool(QMainWindow& window) {
  Choose_Tool(QStringLiteral("Symb"));
  if (Map.Tool == QLatin1String("Symb")) Show_frmSymbol(&window);
}

// From the popup where it was opened, else at the next click.
void Insert_Symbol(QMainWindow& window) {
  const auto at = Popup_Place(window);
  if (!at) return Symbol_Tool(window);
  if (Place_Symbol(*at)) Show_frmSymbol(&window);
}

void Font_Button(QMainWindow& window) {
  if (Symbol_In_Hand())
    Show_frmSymbol(&window);
  else
    Show_frmSchrift(&window);
}

}  // namespace

void Add_Text_Handlers(QHash<QString, Handler>& menu, QHash<QString, Handler>& tools) {
  menu["mnuInsSymbol"] = [](QMainWindow& window, int) { Insert_Symbol(window); };
  menu["mnuSchrift"] = [](QMainWindow& window, int) { Show_frmSchrift(&window); };
  tools["Symb"] = [](QMainWindow& window, int) { Symbol_Tool(window); };
  tools["Schrift"] = [](QMainWindow& window, int) { Font_Button(window); };
}
