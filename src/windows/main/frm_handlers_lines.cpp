#include <QMainWindow>

#include "edit/line_look.h"
#include "tools/poly_editor.h"
#include "windows/canvas/frmFlKord.h"
#include "windows/main/frm_handlers_rooms.h"
#include "windows/objects/frmLineEndpunkte.h"
#include "windows/objects/frmLnStil.h"

// What the menu entries and tool buttons of lines and areas do.

void Add_Lines_Handlers(QHash<QString, Handler>& menu, QHash<QString, Handler>& tools) {
  const Handler line = [](QMainWindow&, int) { Poly_Editor(PolyEditor::Kind::Line); };
  const Handler area = [](QMainWindow&, int) { Poly_Editor(PolyEditor::Kind::Area); };
  const Handler style = [](QMainWindow& window, int) { Show_frmLnStil(&window); };
  const Handler ends = [](QMainWindow& window, int) { Show_frmLineEndpunkte(&window); };
  const Handler vertices = [](QMainWindow& window, int) { Open_Vertex_Table(&window); };
  menu["mnuInsLinie"] = tools["Linie"] = line;
  menu["mnuInsFl"] = tools["Fl"] = area;
  menu["mnuLnStil"] = tools["LnStil"] = style;
  menu["mnuLnEnd"] = tools["LnEnd"] = ends;
  menu["mnuFigKorr"] = tools["PKorr"] = tools["LnKorr"] = vertices;
  menu["mnuFlTemplateSave"] = [](QMainWindow&, int) { Save_Area_Template(); };
  menu["mnuFlTemplateGet"] = [](QMainWindow&, int) { Take_Area_Template(); };
}
