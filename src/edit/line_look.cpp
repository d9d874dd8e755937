#include "edit/line_look.h"

#include <algorithm>

#include "edit/bulk_change.h"
#include "hand/activation.h"
#include "hand/next_shape.h"
#include "hand/tool_state.h"
#include "state/map_state.h"
#include "state/task_line.h"
#include "store/settings.h"

namespace {

const QString styleTitle = QStringLiteral("Linienstil");
const QString endsTitle = QStringLiteral("Linienendpunkte");
const QString templateTitle = QStringLiteral("Flächenvorlage");

bool In_Hand(ToolMode mode) {
  const auto row = Row_In_Hand();
  return row && Tool_Mode_Of(*row) == mode;
}

template <typename Change>
void Change_Hand(const QString& title, Change&& change) {
  if (!Store_Pending_Text()) return;
  Map.CurBookmark = Map.InHand;
  Write_Changes(Change_Of_Current([&](EntryRow& row, qint64) { change(row); }), title);
}

constexpr LineEnds firstMarks{.filled = true, .lengthMm = 4, .widthMm = 3};

}  // namespace

bool Line_In_Hand() { return In_Hand(ToolMode::Line); }
bool Area_In_Hand() { return In_Hand(ToolMode::Area); }

QString Line_Look_Of() {
  if (!Line_In_Hand()) return QStringLiteral("nächste Linie");
  const EntryId id = EntryId::Parse(Row_In_Hand()->ID);
  return id.Number() < 0 ? id.name : QStringLiteral("Linie %1").arg(id.Number());
}

EntryRow Line_Look() {
  if (Line_In_Hand()) return *Row_In_Hand();
  EntryRow row;
  EntryId id;
  id.name = QStringLiteral("Linie");
  id.ends = NextShape.ends;
  row.ID = id.ToText();
  row.VG = CurVG;
  row.HG = CurHG;
  row.RA = CurRA;
  row.Xline = NextShape.width;
  row.Yline = NextShape.lineStyle;
  row.Typ = static_cast<int>(NextShape.rounded ? EntryKind::PolygonRound : EntryKind::Polygon);
  return row;
}

int Line_Style_Code() { return Line_In_Hand() ? Row_In_Hand()->Yline : NextShape.lineStyle; }

void Set_Line_Style_Code(int stored) {
  if (!Line_In_Hand()) {
    NextShape.lineStyle = stored;
    return;
  }
  Change_Hand(styleTitle, [stored](EntryRow& row) { row.Yline = stored; });
}

LineEnds Line_Ends_Now() {
  const std::optional<LineEnds> ends = Line_In_Hand() ? EntryId::Parse(Row_In_Hand()->ID).ends : NextShape.ends;
  return ends.value_or(firstMarks);
}

void Set_Line_Ends(const LineEnds& ends) {
  std::optional<LineEnds> marks;
  if (ends.atStart || ends.atEnd) marks = ends;
  if (!Line_In_Hand()) {
    NextShape.ends = marks;
    return;
  }
  EntryId id = EntryId::Parse(Row_In_Hand()->ID);
  id.ends = marks;
  const QString text = id.ToText();
  if (!Id_Fits(text)) return;
  Change_Hand(endsTitle, [&text](EntryRow& row) { row.ID = text; });
}

void Save_Area_Template() {
  if (!Area_In_Hand()) return;
  const EntryRow row = *Row_In_Hand();
  const QString name = EntryId::Parse(row.ID).name;
  if (Write_Template(name, {.VG = row.VG, .HG = row.HG, .RA = row.RA, .TX = row.Yline, .SB = row.Xline}))
    Tell_Done(QStringLiteral("Flächenvorlage gesichert: ") + name);
}

void Take_Area_Template() {
  AreaTemplate area;
  if (!Read_Template(area)) return;
  if (!Area_In_Hand()) {
    CurVG = area.VG;
    CurHG = area.HG;
    CurRA = area.RA;
    NextShape.fill = area.TX;
    NextShape.width = std::max(1, area.SB);
    Tell_Done(QStringLiteral("Die Vorlage gilt für die nächste Fläche."));
    return;
  }
  Change_Hand(templateTitle, [&area](EntryRow& row) {
    row.VG = area.VG;
    row.HG = area.HG;
    row.RA = area.RA;
    row.Yline = area.TX;
    row.Xline = std::max(1, area.SB);
  });
}
