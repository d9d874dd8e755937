#include "windows/main/frm_handlers_object.h"

#include <QCursor>
#include <QMainWindow>
#include <QMenu>
#include <optional>

#include "edit/copy.h"
#include "edit/marks.h"
#include "edit/order.h"
#include "edit/row_switches.h"
#include "edit/visibility.h"
#include "hand/activation.h"
#include "hand/tool_state.h"
#include "maps/map_open.h"
#include "maps/menu_table.h"
#include "objects/north_arrow.h"
#include "state/global_state.h"
#include "state/map_state.h"
#include "state/mdi_state.h"
#include "store/entry.h"
#include "store/entry_edit.h"
#include "store/table_file.h"
#include "tools/assign.h"
#include "tools/mouse.h"
#include "view/picture_cache.h"
#include "view/redraw.h"
#include "windows/canvas/map_window.h"
#include "windows/common/frm_dialogs.h"

namespace {

// The map window of the main window.
MapCanvas& Canvas_Of(QMainWindow& window) { return window.findChild<MapWindow*>()->Canvas(); }

// The middle of what is seen of the map.
QPoint View_Middle() { return {Map.ViewWidth / 2, Map.ViewHeight / 2}; }

// Where the popup was opened, else where the pointer is on the map, else the middle.
QPoint Place_On_Map(QMainWindow& window) {
  if (const auto at = Popup_Place(window)) return *at;
  const MapCanvas& canvas = Canvas_Of(window);
  const QPoint at = canvas.mapFromGlobal(QCursor::pos());
  return canvas.rect().contains(at) ? at : View_Middle();
}

// An added picture comes into hand; one that is larger than the map gets its size at once.
void Picture_Added(QMainWindow& window) {
  if (!Take_Entry(Map.CurBookmark)) return;
  const QImage& picture = Entry_Picture(rsEntries->Text(column::Eintrag));
  if (picture.width() > MapWidthPx || picture.height() > MapHeightPx) Show_dlgBMP(&window);
}

// From the popup where it was opened, else at the next click.
void Insert_Text(QMainWindow& window) {
  if (const auto at = Popup_Place(window))
    New_Text(at->x(), at->y());
  else
    Choose_Tool(QStringLiteral("Text"));
}

void Insert_Picture(QMainWindow& window) {
  const auto at = Popup_Place(window);
  if (!at) return Choose_Tool(QStringLiteral("Bild"));
  if (Add_Picture(*at, QString())) Picture_Added(window);
}

void Insert_North_Arrow(QMainWindow& window) {
  if (const auto at = Popup_Place(window))
    Add_North_Arrow({Map_X(at->x()), Map_Y(at->y())});
  else
    Add_North_Arrow();
}

void Paste(QMainWindow& window) {
  const QPoint at = Place_On_Map(window);
  if (!Hands_Free()) return;
  const ClipboardChoice choice = Show_frmClipboard(&window);
  if (choice.kind == QLatin1String("Img")) {
    if (Add_Picture(at, choice.picture)) Picture_Added(window);
  } else if (choice.kind == QLatin1String("Txt") && Add_Text(at, choice.text)) {
    Take_Entry(Map.CurBookmark);
  }
}

void Delete_In_Hand() { Map_Key(Qt::Key_Delete, {}); }

Handler Plain(void (*work)()) {
  return [work](QMainWindow&, int) { work(); };
}

// A click means one step, the right mouse button all the way.
void Order_By_Button(int line, int step) { Order_Entry(line == rightButton ? 10 * step : step); }

bool Nothing_In_Hand() { return Toolbar1.Tag == QLatin1String("Norm"); }

void Lupe_Button(QMainWindow& window, int line) {
  if (line == rightButton)
    Popup_Menu(window, QStringLiteral("mnuZoom"));
  else
    Toggle_Lupe();
}

void Add_Mode_Handlers(QHash<QString, Handler>& all) {
  const std::pair<const char*, JustifyMode> modes[] = {{"mnuJustLinks", JustifyMode::Left},
                                                       {"mnuJustRechts", JustifyMode::Right},
                                                       {"mnuJustOben", JustifyMode::Top},
                                                       {"mnuJustUnten", JustifyMode::Bottom},
                                                       {"mnuJustGleich", JustifyMode::Equal}};
  for (const auto& [key, mode] : modes) all[key] = [mode = mode](QMainWindow&, int) { Justify(mode); };
  const std::pair<const char*, AssignKind> kinds[] = {{"AdMark", AssignKind::MarkedToArea},
                                                      {"AdMarkLin", AssignKind::MarkedToLine},
                                                      {"AdObj", AssignKind::ObjectToArea},
                                                      {"AdObjLin", AssignKind::ObjectToLine},
                                                      {"AdNo", AssignKind::None}};
  for (const auto& [key, kind] : kinds) all[key] = [kind = kind](QMainWindow&, int) { Assign_Entries(kind); };
}

}  // namespace

std::optional<QPoint> Popup_Place(QMainWindow& window) {
  const auto* popup = window.findChild<QMenu*>(QStringLiteral("popup"));
  if (!popup || !popup->property("chosen").toBool()) return std::nullopt;
  return Map.PopupAt;
}

bool Hands_Free() { return !Entry_In_Hand() || End_Entry(); }

Handler Replacing(void (*work)()) {
  return [work](QMainWindow&, int) {
    if (!Hands_Free()) return;
    work();
    Table_Replaced();
  };
}

void Add_Object_Handlers(QHash<QString, Handler>& all) {
  all["mnuReset"] = Replacing(Undo_Last);
  all["mnuEintrDupl"] = Plain(Duplicate_Entry);
  all["mnuEintrCopy"] = Plain(Copy_Entry);
  all["mnuEintrPaste"] = [](QMainWindow& window, int) { Paste(window); };
  all["mnuMoveObjects"] = [](QMainWindow& window, int) {
    if (Hands_Free()) Show_frmMoveObjects(&window);
  };
  all["mnuInsText"] = [](QMainWindow& window, int) { Insert_Text(window); };
  all["mnuInsBild"] = [](QMainWindow& window, int) { Insert_Picture(window); };
  all["mnuInsNord"] = [](QMainWindow& window, int) { Insert_North_Arrow(window); };
  all["mnuObjFore"] = [](QMainWindow&, int) { Order_Entry(1); };
  all["mnuObjBack"] = [](QMainWindow&, int) { Order_Entry(-1); };
  all["mnuKanten"] = Plain(Round_Corners);
  all["mnuPicSize"] = [](QMainWindow& window, int) { Show_dlgBMP(&window); };
  all["mnuObjVisNo"] = Plain(Hide_Current);
  for (const char* key : {"mnuObjVisJa", "mnuObjVisNein"})
    all[key] = [key](QMainWindow&, int) {
      if (!Menu_Checked(*Menu_Row(QLatin1String(key)))) Hide_Current();
    };
  for (const char* key : {"mnuObjActivJa", "mnuObjActivNein"})
    all[key] = [key](QMainWindow&, int) {
      if (!Menu_Checked(*Menu_Row(QLatin1String(key)))) Deactivate_Current();
    };
  all["mnuObjVisX"] = Plain(Hide_Marked);
  all["mnuObjVisAll"] = Plain(Show_All_Hidden);
  all["mnuObjActNo"] = Plain(Deactivate_Current);
  all["mnuObjActX"] = Plain(Deactivate_Marked);
  all["mnuObjActAll"] = Plain(Activate_All_Inactive);
  all["mnuMarkObj"] = Plain(Mark_Obj);
  all["mnuUnmark"] = Plain(Unmark_All);
  all["mnuMarkDel"] = Plain(Delete_Marked);
  all["mnuGroup"] = Plain(Group_Marked);
  all["mnuObjDel"] = Plain(Delete_In_Hand);
  Add_Mode_Handlers(all);
}

void Add_Object_Tools(QHash<QString, Handler>& all) {
  all["Ok"] = [](QMainWindow&, int) { End_Entry(); };
  all["Del"] = Plain(Delete_In_Hand);
  all["vor"] = [](QMainWindow&, int line) { Order_By_Button(line, 1); };
  all["back"] = [](QMainWindow&, int line) { Order_By_Button(line, -1); };
  all["Dupl"] = Plain(Duplicate_Entry);
  all["Cpy"] = Plain(Copy_Entry);
  all["Lupe"] = Lupe_Button;
  all["Vis"] = Plain(Hide_Current);
  all["Ein"] = [](QMainWindow&, int) { Nothing_In_Hand() ? Show_All_Hidden() : Hide_Current(); };
  all["Akt"] = [](QMainWindow&, int) { Nothing_In_Hand() ? Activate_All_Inactive() : Deactivate_Current(); };
  all["Mark"] = Plain(Mark_Obj);
  all["MarkDel"] = Plain(Delete_Marked);
  all["unmark"] = Plain(Unmark_All);
  all["Gruppe"] = Plain(Group_Marked);
  all["links"] = [](QMainWindow&, int) { Justify(JustifyMode::Left); };
  all["rechts"] = [](QMainWindow&, int) { Justify(JustifyMode::Right); };
  all["oben"] = [](QMainWindow&, int) { Justify(JustifyMode::Top); };
  all["unten"] = [](QMainWindow&, int) { Justify(JustifyMode::Bottom); };
  all["gleich"] = [](QMainWindow&, int) { Justify(JustifyMode::Equal); };
  all["Curve"] = Plain(Round_Corners);
  all["FlBez"] = all["LnBez"] = Plain(Toggle_Label);
  all["Bild"] = [](QMainWindow&, int) { Choose_Tool(QStringLiteral("Bild")); };
  all["Text"] = [](QMainWindow&, int) { Choose_Tool(QStringLiteral("Text")); };
}
