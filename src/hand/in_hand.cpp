#include "hand/in_hand.h"

#include "hand/hand_texts.h"
#include "state/global_state.h"
#include "state/map_state.h"

bool Entry_In_Hand() {
  if (Map.InHand.isEmpty()) return Map.Text2.Visible && Text_Is_New();
  return rsEntries && rsEntries->HasRow(Map.InHand);
}

std::optional<EntryRow> Row_In_Hand() { return Sound_Entry_At(Map.InHand); }

bool Text_Is_New() { return Map.Text2.Tag == EditTag::New; }

bool Text_Pending() { return Text_Is_New() || Map.Text2.Tag == EditTag::Change; }

QString Entry_Status_Text() {
  const std::optional<EntryRow> row = Row_In_Hand();
  if (!row) return {};
  const EntryId id = EntryId::Parse(row->ID);
  const QString assigned =
      id.assignment.isEmpty() ? QString() : QStringLiteral("Zugeordnet: ") + id.assignment + QStringLiteral("  ");
  return assigned + hand_texts::move;
}
