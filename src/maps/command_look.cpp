#include "maps/command_look.h"

#include "hand/activation.h"
#include "maps/map_coordinates.h"
#include "maps/menu_table.h"
#include "maps/row_look.h"
#include "maps/step_walk.h"
#include "state/coordinate_state.h"
#include "state/global_state.h"
#include "state/map_state.h"
#include "state/mdi_state.h"
#include "state/table_state.h"

namespace {

bool Can_Be_Filled(const RowLook& look) {
  if (look.type.IsPolygon()) return look.id.IsArea();
  return look.type.IsFigure() || look.type.Kind() == EntryKind::PlanSquare;
}

bool Can_Have_Foot(const RowLook& look) {
  return look.type.IsText() || look.type.Kind() == EntryKind::Picture || look.type.Kind() == EntryKind::Reference;
}

bool Needs_Of_Row_Met(Needs needs) {
  const auto look = Look_Of_Hand();
  switch (needs) {
    case Needs::Font:
      return !look || look->type.IsText() || look->type.IsPolygon();
    case Needs::Fill:
      return !Entry_In_Hand() || (look && Can_Be_Filled(*look));
    case Needs::FootRoom:
      return Entry_In_Hand() && (!look || Can_Have_Foot(*look));
    case Needs::Picture:
      return look && look->type.Kind() == EntryKind::Picture;
    case Needs::Foot:
      return look && Can_Have_Foot(*look) && look->row.Xline > 0;
    case Needs::Corners:
      return look && (look->type.IsPolygon() || look->type.IsFreeFigure());
    case Needs::Figure:
      return look && look->type.IsFigure();
    case Needs::Area:
      return look && look->type.IsPolygon() && look->id.IsArea();
    case Needs::Shape:
      return look && (look->type.IsPolygon() || look->type.IsFigure());
    case Needs::Target:
      return look && look->type.IsPolygon() && Map.MarkCount > 0;
    default:
      return true;
  }
}

bool Needs_Of_Map_Met(Needs needs) {
  switch (needs) {
    case Needs::More:
      return false;
    case Needs::NotePad:
      return ActiveNotePad >= 0;
    case Needs::Entries:
      return Entry_Count() > 0;
    case Needs::UserColumns:
      return Tbl.HasUserColumns;
    case Needs::UndoPoint:
      return Menu(QStringLiteral("mnuReset")).Enabled;
    case Needs::StepBehind:
      return Can_Step_Back() || Text_Pending();
    case Needs::StepAhead:
      return Can_Step_Forward();
    case Needs::Template:
      return frmMDI.HasTemplate;
    case Needs::EntryInHand:
      return Entry_In_Hand();
    case Needs::NoEntryInHand:
      return !Entry_In_Hand();
    case Needs::Marks:
      return Map.MarkCount > 0;
    case Needs::TwoMarks:
      return Map.MarkCount > 1;
    case Needs::Hidden:
      return Map.HiddenCount > 0;
    case Needs::Inactive:
      return Map.InactiveCount > 0;
    case Needs::Net:
      return Coord.Grid != gridNone;
    case Needs::Calibration:
      return CalFileChoice.size() > 1;
    case Needs::PlanSquares:
      return frmMDI.HasPlanSquares;
    default:
      return Needs_Of_Row_Met(needs);
  }
}

QString Table_Switch_Text() {
  if (frmMDI.TblVisible)
    return Tbl.Switched == TableSwitch::AtOpening ? QStringLiteral("&ausblenden") : QStringLiteral("&Ausblenden");
  return Tbl.Switched == TableSwitch::MovedOff ? QStringLiteral("&Liste einblenden") : QStringLiteral("&Einblenden");
}

struct TextNow {
  const char* key;
  QString (*text)();
};

// Texts that tell what the command would do at the moment.
const TextNow textsNow[] = {
    {"mnuNoTable",
     [] {
       return frmMDI.SafeMode ? QStringLiteral("im abgesicherten Modus öffnen - ja")
                              : QStringLiteral("im abgesicherten Modus öffnen - nein");
     }},
    {"mnuStepBack", [] { return Escaped_Caption(Step_Back_Text()); }},
    {"mnuStepForward", [] { return Escaped_Caption(Step_Forward_Text()); }},
    {"mnuReset", [] { return Menu(QStringLiteral("mnuReset")).Caption; }},
    {"mnuDBGridOn", Table_Switch_Text},
    {"mnuObjVisNo",
     [] {
       const auto look = Look_Of_Current();
       return look && look->IsHidden() ? QStringLiteral("aktuelles Objekt sichtbar machen")
                                       : QStringLiteral("aktuelles Objekt unsichtbar machen");
     }},
    {"mnuObjActNo",
     [] {
       const auto look = Look_Of_Current();
       return look && look->id.inactive ? QStringLiteral("aktuelles Objekt aktivieren")
                                        : QStringLiteral("aktuelles Objekt de-aktivieren");
     }},
    {"mnuKanten",
     [] {
       const auto look = Look_Of_Current();
       return look && look->IsRounded() ? QStringLiteral("Kanten eckig") : QStringLiteral("Kanten abrunden");
     }},
    {"mnuGridmake", [] { return frmMDI.HasCalibration ? QStringLiteral("bearbeiten") : QStringLiteral("erstellen"); }},
    {"mnuGridonoff", [] { return GridVisible ? QStringLiteral("ausblenden") : QStringLiteral("einblenden"); }},
    {"mnuRasterEinblenden",
     [] { return frmMDI.RasterShown ? QStringLiteral("ausblenden") : QStringLiteral("einblenden"); }},
    {"mnuRasterAktiv",
     [] { return frmMDI.RasterActive ? QStringLiteral("de-aktivieren") : QStringLiteral("aktivieren"); }},
};

// "Ja" and "Nein" of the entry that is current.
bool Switch_Checked(const QString& key) {
  const auto look = Look_Of_Current();
  if (!look) return false;
  const bool on = key.startsWith(QLatin1String("mnuObjVis")) ? look->IsHidden() : look->id.inactive;
  return on == key.endsWith(QLatin1String("Ja"));
}

}  // namespace

bool Needs_Met(Needs needs) {
  if (needs == Needs::Nothing) return true;
  return frmMDI.MapOpen && (needs == Needs::OpenMap || Needs_Of_Map_Met(needs));
}

QString Command_Text(const Command& command) {
  for (const TextNow& it : textsNow) {
    if (command.key != QLatin1String(it.key)) continue;
    const QString now = it.text();
    return now.isEmpty() ? command.text : now;
  }
  return command.text;
}

bool Command_Checked(const QString& key) {
  if (key == QLatin1String("mnuNoTable")) return frmMDI.SafeMode;
  if (key == QLatin1String("mnuBildHell")) return frmMDI.Light;
  if (key == QLatin1String("mnuBildDunkel")) return !frmMDI.Light;
  if (key == QLatin1String("mnuGridXYShow")) return frmMDI.mouseUnit == MouseUnit::Coordinates;
  if (key.startsWith(QLatin1String("mnuZoom"))) return Map.ZoomMenu == key;
  return Switch_Checked(key);
}
