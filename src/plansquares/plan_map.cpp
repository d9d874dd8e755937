#include "plansquares/plan_map.h"

#include <algorithm>
#include <utility>

#include "plansquares/raster_rows.h"
#include "plansquares/raster_texts.h"
#include "platform/message_box.h"
#include "state/map_state.h"
#include "state/mdi_state.h"

bool Raster_Active() { return frmMDI.RasterActive; }

void Set_Raster_Active(bool active) {
  frmMDI.RasterActive = active;
  if (!active) Map.lblPLQ.Visible = false;
}

namespace {

const PlanLabel* Square_Of(int hit) {
  if (hit < 1) return nullptr;
  const EntryRegion& region = Map.EntryRegions.Row(hit);
  if (region.kind != planRegion) return nullptr;
  const auto found = std::find_if(Map.PlanLabels.begin(), Map.PlanLabels.end(),
                                  [&region](const PlanLabel& label) { return label.key == region.key; });
  return found == Map.PlanLabels.end() ? nullptr : &*found;
}

}  // namespace

bool Show_Plan_Label(int hit) {
  const PlanLabel* square = Square_Of(hit);
  LiveControl& label = Map.lblPLQ;
  if (!square) return std::exchange(label.Visible, false);
  constexpr int inset = 3, perLetter = 9, line = 18;
  const QString text = square->text.isEmpty() ? raster_texts::hiddenSquare : square->text;
  const int left = std::max(0, square->offsetX) + inset, top = std::max(0, square->offsetY) + inset;
  if (label.Visible && label.Text == text && label.Left == left && label.Top == top) return false;
  label.Visible = true;
  label.Text = text;
  label.Left = left;
  label.Top = top;
  label.Width = static_cast<int>(text.size()) * perLetter + 2 * inset;
  label.Height = line;
  return true;
}

void Tell_Square_Fault(const QString& text) {
  Message_Box(text, MsgButtons::Ok, MsgIcon::Warning, raster_texts::faultOfSquare);
}

bool Is_Raster_Square(int hit) {
  const PlanLabel* square = Square_Of(hit);
  QString columnText, rowText;
  return square && Split_Name(square->name, columnText, rowText);
}
