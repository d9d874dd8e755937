#include "store/transaction.h"

#include "platform/message_box.h"
#include "state/global_state.h"
#include "state/table_state.h"
#include "store/current_row.h"

bool transaction::Run(Database& database, const TransactionWork& work) {
  database.BeginTrans();
  try {
    const bool whole = work();
    if (!database.InTrans()) return false;  // something inside was taken back, and this with it
    whole ? database.CommitTrans() : database.Rollback();
    return whole;
  } catch (...) {
    if (database.InTrans()) database.Rollback();
    throw;
  }
}

bool transaction::Run_On_Table(const TransactionWork& work) {
  const TableTag tag = Tbl.Tag;
  const auto takenBack = [&tag] {
    if (rsEntries && rsEntries->Editing()) rsEntries->CancelUpdate();
    Tbl.Tag = tag;
  };
  try {
    const bool whole = Run(*dbEntries, work);
    whole ? void(Tbl.Tag = TableTag::Dirty) : takenBack();
    return whole;
  } catch (...) {
    takenBack();
    throw;
  }
}

bool transaction::Run_Or_Tell(const QString& title, const TransactionWork& work) {
  if (!dbEntries || !rsEntries) return false;
  try {
    const KeepCurrentRow keep;
    return Run_On_Table(work);
  } catch (const Error& error) {
    if (error.number == errors::workStopped) return false;  // who was asked and did not want it knows of it
    Message_Box(Error_Text(error) + QStringLiteral("\n\nEs wurde nichts verändert."), MsgButtons::Ok, MsgIcon::Critical,
                title);
    return false;
  }
}
