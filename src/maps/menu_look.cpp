// What menu entries look like at the moment: functions of the state, asked when the windows are synced.
#include <optional>

#include "hand/activation.h"
#include "maps/menu_table.h"
#include "state/coordinate_state.h"
#include "state/global_state.h"
#include "state/map_state.h"
#include "state/mdi_state.h"
#include "store/entry.h"

namespace {

struct EntryLook {
  EntryType type;
  EntryId id;
  bool hasFoot = false;
};

// The row; the cursor stays where it is. Nothing for the header row, a row that is not there and one that is written.
std::optional<EntryLook> Look_Of(const QString& bookmark) {
  if (bookmark.isEmpty() || !rsEntries || !rsEntries->IsOpen() || rsEntries->Editing()) return {};
  if (!rsEntries->HasRow(bookmark)) return {};
  const KeepCurrentRow keep;
  rsEntries->SetBookmark(bookmark);
  if (rsEntries->Position() < 1) return {};
  const EntryType type = EntryType::Parse(static_cast<int>(rsEntries->Integer(column::Typ)));
  const bool canHaveFoot = type.base <= 3 || type.Kind() == EntryKind::Picture || type.Kind() == EntryKind::Reference;
  return EntryLook{type, EntryId::Parse(rsEntries->Text(column::ID)),
                   canHaveFoot && rsEntries->Integer(column::Xline) > 0};
}

// Nothing for a new text that is still being typed.
std::optional<EntryLook> Look_In_Hand() { return Entry_In_Hand() ? Look_Of(Map.InHand) : std::nullopt; }

// What "aktuelles Objekt" means: in hand or not.
std::optional<EntryLook> Current_Look() { return Look_Of(Map.CurBookmark); }

bool Is_Hidden(const EntryLook& look) { return look.type.hidden && !look.id.IsNorthArrow(); }

bool Is_Rounded(const EntryType& type) {
  return type.Kind() == EntryKind::PolygonRound || type.Kind() == EntryKind::FreeFigureRound;
}

bool Can_Be_Filled(const EntryLook& look) {
  if (look.type.IsPolygon()) return look.id.IsArea();
  return look.type.IsFigure() || look.type.Kind() == EntryKind::PlanSquare;
}

bool Needs_Of_Row_Met(MenuNeeds needs) {
  const auto look = Look_In_Hand();
  switch (needs) {
    case MenuNeeds::Font:
      return !look || look->type.IsText() || look->type.IsPolygon();
    case MenuNeeds::Fill:
      return !Entry_In_Hand() || (look && Can_Be_Filled(*look));
    case MenuNeeds::Picture:
      return look && look->type.Kind() == EntryKind::Picture;
    case MenuNeeds::Foot:
      return look && look->hasFoot;
    case MenuNeeds::Corners:
      return look && (look->type.IsPolygon() || look->type.IsFreeFigure());
    case MenuNeeds::Figure:
      return look && look->type.IsFigure();
    case MenuNeeds::Target:
      return look && look->type.IsPolygon() && Map.MarkCount > 0;
    default:
      return true;
  }
}

bool Needs_Met(MenuNeeds needs) {
  switch (needs) {
    case MenuNeeds::EntryInHand:
      return Entry_In_Hand();
    case MenuNeeds::NoEntryInHand:
      return !Entry_In_Hand();
    case MenuNeeds::Marks:
      return Map.MarkCount > 0;
    case MenuNeeds::TwoMarks:
      return Map.MarkCount > 1;
    case MenuNeeds::Hidden:
      return Map.HiddenCount > 0;
    case MenuNeeds::Inactive:
      return Map.InactiveCount > 0;
    case MenuNeeds::Template:
      return frmMDI.HasTemplate;
    case MenuNeeds::Net:
      return Coord.Grid != gridNone;
    case MenuNeeds::PlanSquares:
      return frmMDI.HasPlanSquares;
    case MenuNeeds::Entries:
      return Entry_Count() > 0;
    default:
      return Needs_Of_Row_Met(needs);
  }
}

QString Caption_Now(const QString& key) {
  if (key == QLatin1String("mnuObjVisNo")) {
    const auto look = Current_Look();
    return look && Is_Hidden(*look) ? QStringLiteral("aktuelles Objekt sichtbar machen")
                                    : QStringLiteral("aktuelles Objekt unsichtbar machen");
  }
  if (key == QLatin1String("mnuObjActNo")) {
    const auto look = Current_Look();
    return look && look->id.inactive ? QStringLiteral("aktuelles Objekt aktivieren")
                                     : QStringLiteral("aktuelles Objekt de-aktivieren");
  }
  if (key == QLatin1String("mnuKanten")) {
    const auto look = Current_Look();
    return look && Is_Rounded(look->type) ? QStringLiteral("Kanten eckig") : QStringLiteral("Kanten abrunden");
  }
  if (key == QLatin1String("mnuRasterEinblenden"))
    return frmMDI.RasterShown ? QStringLiteral("ausblenden") : QStringLiteral("einblenden");
  if (key == QLatin1String("mnuRasterAktiv"))
    return frmMDI.RasterActive ? QStringLiteral("de-aktivieren") : QStringLiteral("aktivieren");
  return Menu(key).Caption;
}

}  // namespace

QString Menu_Caption(const MenuRow& row) {
  const QString now = Caption_Now(row.key);
  return now.isEmpty() ? row.caption : now;
}

bool Menu_Checked(const MenuRow& row) {
  const bool visibility = row.key.startsWith(QLatin1String("mnuObjVis"));
  if (visibility || row.key.startsWith(QLatin1String("mnuObjActiv"))) {
    const auto look = Current_Look();
    const bool yes = look && (visibility ? Is_Hidden(*look) : look->id.inactive);
    return look && yes == row.key.endsWith(QLatin1String("Ja"));
  }
  if (row.key == QLatin1String("mnuGridXYShow")) return frmMDI.mouseUnit == MouseUnit::Coordinates;
  return Menu(row.key).Checked;
}

bool Menu_Enabled(const MenuRow& row) { return Menu(row.key).Enabled && (!frmMDI.MapOpen || Needs_Met(row.needs)); }
