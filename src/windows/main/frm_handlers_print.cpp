#include <QMainWindow>

#include "maps/note_pads.h"
#include "printing/map_export.h"
#include "printing/page_job.h"
#include "printing/print_texts.h"
#include "printing/table_print.h"
#include "windows/main/frm_handlers_object.h"
#include "windows/main/frm_handlers_rooms.h"
#include "windows/main/mdi_window_pads.h"
#include "windows/maps/frmNotePad.h"
#include "windows/printing/frm_print.h"

// What the menu entries and tool buttons of printing do.

namespace {

// Before a menu or the question of a dialog lies over it, the window is painted as it stands.
void Print_Screen(QMainWindow& window) { Print_Picture(print_texts::screenTitle, window.grab().toImage()); }

void Print_Note(QMainWindow& window) {
  const FrmNotePad* pad = Active_NotePad(window);
  if (!pad) return;
  QString title = NotePad_Title(pad->Slot());
  if (title.endsWith(QLatin1Char('*'))) title.chop(1);
  Print_Text(title, pad->Text());
}

}  // namespace

void Add_Print_Handlers(QHash<QString, Handler>& menu, [[maybe_unused]] QHash<QString, Handler>& tools) {
  menu["mnuBlattschnitt"] = [](QMainWindow& window, int) { Show_frmSeiten(&window); };
  menu["mnuRand"] = [](QMainWindow& window, int) { Show_frmRand(&window); };
  menu["mnuDruckpfad"] = [](QMainWindow& window, int) { Show_frmDruckpfad(&window); };
  menu["mnuPrintMap"] = [](QMainWindow& window, int) { Print_Whole_Map(&window); };
  menu["mnuPrintScreen"] = [](QMainWindow& window, int) { Print_Screen(window); };
  menu["mnuMapExport"] = [](QMainWindow&, int) {
    if (Hands_Free()) Export_Map_Picture();
  };
  menu["mnuTblPrint"] = [](QMainWindow&, int) {
    if (Hands_Free()) Print_Table();
  };
  menu["mnuPrintTxt"] = [](QMainWindow& window, int) { Print_Note(window); };
}
