#include "windows/canvas/bind_insert.h"

#include <QCursor>

#include "edit/copy.h"
#include "hand/activation.h"
#include "hand/next_shape.h"
#include "state/global_state.h"
#include "state/map_state.h"
#include "tools/figure_tool.h"
#include "tools/map_tool.h"
#include "tools/picture_tool.h"
#include "tools/scale_tool.h"
#include "view/picture_cache.h"
#include "windows/canvas/dlgBMP.h"
#include "windows/canvas/frmClipboard.h"
#include "windows/canvas/frmDigi.h"
#include "windows/canvas/frmFigur.h"
#include "windows/canvas/frmMass.h"
#include "windows/canvas/map_window.h"
#include "windows/common/bind_window.h"

namespace {

// Where the menu of the right mouse button was opened, else where the pointer is on the map, else the middle of what
// is seen of it.
QPoint Place_On_Map(const QWidget& mainWindow, const CommandCall& call) {
  if (call.at) return *call.at;
  const auto* canvas = mainWindow.findChild<MapCanvas*>();
  const QPoint at = canvas->mapFromGlobal(QCursor::pos());
  return canvas->rect().contains(at) ? at : QPoint(Map.ViewWidth / 2, Map.ViewHeight / 2);
}

// An added picture comes into hand; one that is larger than the map gets its size at once.
void Picture_Added(QWidget* mainWindow) {
  if (!Take_Entry(Map.CurBookmark)) return;
  const QImage& picture = Entry_Picture(rsEntries->Text(column::Eintrag));
  if (picture.width() > MapWidthPx || picture.height() > MapHeightPx) Show_dlgBMP(mainWindow);
}

void Insert_Picture(QWidget* mainWindow, const CommandCall& call) {
  if (!call.at)
    Toggle_Picture_Tool();
  else if (Add_Picture(*call.at, QString()))
    Picture_Added(mainWindow);
}

void Paste(QWidget* mainWindow, const CommandCall& call) {
  const QPoint at = Place_On_Map(*mainWindow, call);
  const ClipboardChoice choice = Show_frmClipboard(mainWindow);
  if (choice.kind == ClipboardKind::Picture) {
    if (Add_Picture(at, choice.picture)) Picture_Added(mainWindow);
  } else if (choice.kind == ClipboardKind::Text && Add_Text(at, choice.text)) {
    Take_Entry(Map.CurBookmark);
  }
}

// The tool, and the window for kind and size beside the map. Pressed again the tool goes.
void New_Figure(QWidget* mainWindow) {
  if (Choose_Figure(static_cast<EntryKind>(NextShape.figure))) Show_frmFigur(mainWindow);
}

// Pressed again it drops the measuring line; the window stays.
void New_Scale(QWidget* mainWindow) {
  if (Scale_Tool_In_Use())
    Drop_Map_Tool();
  else
    Show_frmMass(mainWindow, true);
}

}  // namespace

void Bind_Insert_Windows(QWidget* mainWindow) {
  Bind_Command(QStringLiteral("mnuInsBild"),
               [mainWindow](const CommandCall& call) { Insert_Picture(mainWindow, call); });
  Bind_Command(QStringLiteral("mnuEintrPaste"), [mainWindow](const CommandCall& call) { Paste(mainWindow, call); });
  Bind_Window("mnuInsFigur", mainWindow, New_Figure);
  Bind_Window("mnuInsMass", mainWindow, New_Scale);
  Bind_Window("mnuInsDigi", mainWindow, Show_frmDigi);
}
