#include "maps/menu_state.h"

#include "hand/activation.h"
#include "hand/tool_state.h"
#include "maps/map_open_texts.h"
#include "platform/error.h"
#include "platform/message_box.h"
#include "state/events.h"
#include "state/global_state.h"
#include "state/mdi_state.h"
#include "state/table_state.h"

namespace {

void Show_Table_Name() {
  InfoBar.Panel[0].clear();
  InfoBar.Panel[1].clear();
  if (InfoBar.Panel[2].isEmpty() || InfoBar.Panel[2].startsWith(map_texts::snapshot))
    InfoBar.Panel[2] = Tbl.DBGrid1.Caption;
}

}  // namespace

void Set_Buttons() {
  try {
    Drop_Hand();
    Set_Toolbar(ToolMode::Norm);
    Toolbar1.Visible = frmMDI.MapOpen;
    if (frmMDI.MapOpen) Show_Table_Name();
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
