#include "maps/menu_state.h"

#include <QStringList>

#include "hand/activation.h"
#include "hand/tool_state.h"
#include "maps/map_coordinates.h"
#include "maps/map_open_texts.h"
#include "maps/menu_table.h"
#include "maps/note_pads.h"
#include "platform/error.h"
#include "platform/message_box.h"
#include "state/events.h"
#include "state/global_state.h"
#include "state/mdi_state.h"
#include "state/table_state.h"
#include "store/entry.h"

namespace {

// What can be used without a map; everything else needs one.
const QStringList alwaysEnabled = {
    QStringLiteral("mnuKarte"),      QStringLiteral("mnuMapNeu"),       QStringLiteral("mnuFOpen"),
    QStringLiteral("mnuNoTable"),    QStringLiteral("mnuOptionen"),     QStringLiteral("mnuMapFile"),
    QStringLiteral("mnuFluraxFini"), QStringLiteral("mnuHilfe"),        QStringLiteral("mnuHelpIndex"),
    QStringLiteral("mnuTipps"),      QStringLiteral("mnuHelpSettings"), QStringLiteral("mnuInfo")};

void Enable_Menus(bool mapOpen) {
  for (const MenuRow& row : Menu_Table()) {
    if (row.key.isEmpty()) continue;
    const bool enabled = mapOpen || alwaysEnabled.contains(row.key);
    if (enabled && row.key == QLatin1String("mnuReset")) continue;  // only an undo point enables it
    Menu(row.key).Enabled = enabled;
    if (row.kind != MenuKind::List) continue;
    for (int i = 1; i <= menuListLines; ++i) Menu(row.key, i).Enabled = enabled;
  }
  if (mapOpen) Set_Active_NotePad(ActiveNotePad);
}

void Show_Table_Name() {
  InfoBar.Panel[0].clear();
  InfoBar.Panel[1].clear();
  if (InfoBar.Panel[2].isEmpty() || InfoBar.Panel[2].startsWith(map_texts::snapshot))
    InfoBar.Panel[2] = Tbl.DBGrid1.Caption;
}

}  // namespace

ButtonState Current_Button_State() {
  if (!frmMDI.MapOpen) return ButtonState::NoMap;
  return Entry_Count() > 0 ? ButtonState::Entries : ButtonState::NoEntries;
}

void Set_Buttons(ButtonState state, bool enabled) {
  try {
    const bool mapOpen = state != ButtonState::NoMap;
    Enable_Menus(mapOpen && enabled);
    if (mapOpen && enabled) Show_Grid_Menus();
    Drop_Hand();
    Set_Toolbar(0, ToolMode::Norm);
    Toolbar1.Visible = mapOpen;
    if (ToolButton* save = Toolbar1.Button(QStringLiteral("SAV"))) save->Enabled = mapOpen && enabled;
    const bool entries = state == ButtonState::Entries && enabled;
    Menu(QStringLiteral("mnuTableSaveAs")).Enabled = mapOpen && enabled;
    Menu(QStringLiteral("mnuTabComp")).Enabled = entries;
    Menu(QStringLiteral("mnuSpaltDelete")).Enabled = mapOpen && enabled && Tbl.HasUserColumns;
    if (mapOpen) Show_Table_Name();
  } catch (const Error& error) {
    if (error.number == errors::noCurrentRecord) return;
    const QString text = error.number == errors::invalidNull
                             ? QStringLiteral(
                                   "Die Kompatibilität von Flurax.exe ist nicht richtig eingestellt.\nBitte lesen "
                                   "Sie von der Programm-CD:\\Flurax\\Flurax_Einstellungen.pdf.\nProgramm beenden ?")
                             : Error_Message(error, QStringLiteral("Programm beenden ?"));
    if (Message_Box(text, MsgButtons::YesNo, MsgIcon::Critical, QStringLiteral("AktFehler"), MsgDefault::Second) ==
        MsgAnswer::Yes)
      events.EndWanted.Emit();
  }
  events.StateChanged.Emit();
}

void Reset_InfoBar() {
  InfoBar.Panel[0] = frmMDI.SafeMode ? map_texts::pleaseOpenSafe : map_texts::pleaseLoad;
  InfoBar.Panel[1] = map_texts::help;
  InfoBar.Panel[2] = map_texts::snapshot + QLatin1Char(' ') + ProgramFolder;
  InfoBar.Zoom.clear();
}
