#include "hand/drag_state.h"

#include <utility>

#include "hand/hand_frame.h"
#include "state/events.h"
#include "state/on_reset.h"

DragState dragState;

namespace {
const OnReset fresh(dragState);
}

std::array<LiveControl*, draggedControls> Dragged_Controls() {
  return {&Map.Text2,        &Map.imgBild,      &Map.lblShape,     &Map.imgHandle,    &Map.imgRfLine,
          &Map.lblHandle[0], &Map.lblHandle[1], &Map.lblHandle[2], &Map.lblHandle[3], &Map.lblHandle[4],
          &Map.lblHandle[5], &Map.lblHandle[6], &Map.lblHandle[7]};
}

void Put_Dragged_Back() {
  const auto controls = Dragged_Controls();
  for (size_t i = 0; i < controls.size(); ++i) {
    controls[i]->Left = dragState.controls[i].Left;
    controls[i]->Top = dragState.controls[i].Top;
  }
}

void Cancel_Drag() {
  if (!dragState.Active()) return;
  Put_Dragged_Back();
  if (!std::exchange(dragState, {}).moved) return;
  Paint_Hand();
  events.MapPainted.Emit();
  events.HandChanged.Emit();
}

void Drop_Drag_Of_Other_View() {
  if (!dragState.Active() || dragState.view == View_Now()) return;
  Put_Dragged_Back();
  dragState = {};
}
