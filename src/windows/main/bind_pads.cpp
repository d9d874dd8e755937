#include "windows/main/bind_pads.h"

#include <QMainWindow>
#include <QPixmap>

#include "maps/commands.h"
#include "maps/note_pads.h"
#include "maps/recent_lists.h"
#include "printing/page_job.h"
#include "printing/print_texts.h"
#include "state/mdi_state.h"
#include "windows/main/mdi_window_pads.h"
#include "windows/maps/frmNotePad.h"

namespace {

void Open_Text(QMainWindow& window) {
  const QString path = Choose_NotePad();
  if (!path.isEmpty()) Show_NotePad(window, path);
}

void Open_Recent_Text(QMainWindow& window, int line) {
  const QString path = Menu(QStringLiteral("mnuRecentFile"), line).Tag;
  if (!path.isEmpty() && Recent_Is_There(path, 3)) Show_NotePad(window, path);
}

// Before a menu or the question of a dialog lies over it, the window is painted as it stands.
void Print_Screen(QMainWindow& window) { Print_Picture(print_texts::screenTitle, window.grab().toImage()); }

void Print_Note(const FrmNotePad& pad) {
  QString title = NotePad_Title(pad.Slot());
  if (title.endsWith(QLatin1Char('*'))) title.chop(1);
  Print_Text(title, pad.Text());
}

}  // namespace

void Bind_NotePads(QMainWindow& window) {
  const auto bind = [&window](const char* key, void (*work)(QMainWindow&)) {
    Bind_Command(QLatin1String(key), [&window, work](const CommandCall&) { work(window); });
  };
  // Work on the note pad in front.
  const auto onPad = [&window](const char* key, auto work) {
    Bind_Command(QLatin1String(key), [&window, work](const CommandCall&) {
      if (FrmNotePad* pad = Active_NotePad(window)) work(*pad);
    });
  };
  bind("mnuTextNew", [](QMainWindow& main) { Show_NotePad(main, {}); });
  bind("mnuTextOpen", Open_Text);
  Bind_Command(QStringLiteral("mnuRecentFile"),
               [&window](const CommandCall& call) { Open_Recent_Text(window, call.line); });
  onPad("mnuTextSave", [](FrmNotePad& pad) { pad.Save(); });
  onPad("mnuResultSaveAs", [](FrmNotePad& pad) { pad.Save_As(); });
  onPad("mnuTextFind", [](FrmNotePad& pad) { pad.Find(); });
  onPad("mnuTextCut", [](FrmNotePad& pad) { pad.Cut(); });
  onPad("mnuTextCopy", [](FrmNotePad& pad) { pad.Copy(); });
  onPad("mnuTextPaste", [](FrmNotePad& pad) { pad.Paste(); });
  onPad("mnuPrintTxt", Print_Note);
  bind("mnuPrintScreen", Print_Screen);
}
