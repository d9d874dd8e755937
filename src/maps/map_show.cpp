#include "maps/map_show.h"

#include "edit/table_edit.h"
#include "maps/map_open_texts.h"
#include "maps/map_scan.h"
#include "maps/menu_state.h"
#include "state/events.h"
#include "state/global_state.h"
#include "state/map_state.h"
#include "state/mdi_state.h"
#include "state/table_state.h"
#include "store/file_names.h"
#include "view/view.h"

void Show_Background(const QString& text) {
  Map.PicText = text;
  events.BackgroundText.Emit(text);
}

void Show_Opening(const QString& path) {
  Map.Text2 = {};
  EntFont = QStringLiteral("Arial");
  EntFontSize = 14;
  Map.Caption = QStringLiteral("Map: ") + Capitals(path);
  frmMDI.Caption = QStringLiteral("FLURAX - 100%");
  Tbl.DBGrid1.Caption.clear();
  Show_Background(map_texts::loadingMap + QLatin1Char('\n') + path);
}

void Show_Map() {
  frmMDI.MapOpen = true;
  Map.Visible = true;
  Map.Minimized = false;
  frmMDI.TblVisible = true;
  Tbl.Switched = TableSwitch::AtOpening;
  events.StateChanged.Emit();  // the window takes its place before the layout measures it
  Show_Background({});
  Map_Geometry();
}

void Finish_Open() {
  Tbl.Tag = TableTag::Clean;
  Menu(QStringLiteral("mnuReset")).Enabled = false;
  Menu(QStringLiteral("mnuReset")).Caption = QStringLiteral("Rückgängig");
  Set_Buttons();
  Choose_Arrangement();
  events.StateChanged.Emit();
  Zoom_Map_From_Corner();
  events.MapOpened.Emit();
}
