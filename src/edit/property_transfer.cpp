#include "edit/property_transfer.h"

#include "edit/bulk_change.h"
#include "hand/activation.h"
#include "platform/message_box.h"
#include "state/global_state.h"
#include "store/entry.h"

namespace {

const QString title = QStringLiteral("Eigenschaften übertragen");

bool Takes(const TransferRequest& request, const EntryRow& row, const QString& name) {
  const EntryType type = EntryType::Parse(row.Typ);
  if (request.textsOnly && !type.IsText()) return false;
  if (request.to == TransferTo::Marked) return type.Chosen();
  return Transfer_Name(row.Eintrag, request.to) == name;
}

void Give_Look(const TransferRequest& request, const EntryRow& from, EntryRow& to) {
  // In these columns figures keep their fill and the width of their outline.
  const bool sameMeaning = EntryType::Parse(from.Typ).IsFigure() == EntryType::Parse(to.Typ).IsFigure();
  if (request.font && sameMeaning) to.Schrift = from.Schrift;
  if (request.size && sameMeaning) to.Groesse = from.Groesse;
  if (request.VG) to.VG = from.VG;
  if (request.HG) to.HG = from.HG;
  if (request.RA) to.RA = from.RA;
}

}  // namespace

QString Transfer_Name(const QString& text, TransferTo to) {
  QString name = text.trimmed();
  if (to == TransferTo::Similar)
    while (!name.isEmpty() && name[0] >= u'0' && name[0] <= u'9') name.remove(0, 1);
  return name;
}

QString Transfer_Refusal() {
  if (On_Current_Entry() && !(rsEntries->Text(column::ID).isEmpty() && rsEntries->Text(column::Eintrag).isEmpty()))
    return {};
  return QStringLiteral("Kein aktueller Karteneintrag - Bitte wählen Sie einen Karteneintrag aus.");
}

int Transfer_Properties(const TransferRequest& request) {
  if (!Store_Pending_Text()) return 0;
  if (const QString refusal = Transfer_Refusal(); !refusal.isEmpty()) {
    Message_Box(refusal, MsgButtons::Ok, MsgIcon::Information, title);
    return 0;
  }
  const EntryRow pattern = Read_Entry(*rsEntries);
  const QString name = Transfer_Name(pattern.Eintrag, request.to);
  const std::vector<RowChange> changes = Collect_Changes([&](EntryRow& row, qint64) {
    if (Takes(request, row, name)) Give_Look(request, pattern, row);
  });
  const int changed = Write_Changes(changes, title, QStringLiteral("Rückgängig: Eigenschaften übertragen"));
  QString told = QStringLiteral("%1 Karteneinträge wurden verändert").arg(changed);
  if (const int hidden = request.to == TransferTo::Marked ? Hidden_Marked() : 0; hidden > 0)
    told += u'\n' + Hidden_Stay_Text(hidden);
  Message_Box(told, MsgButtons::Ok, MsgIcon::Information, title);
  return changed;
}
