#include "maps/commands.h"

#include <QHash>

#include "hand/leave_hand.h"
#include "maps/command_look.h"
#include "maps/command_rows.h"
#include "platform/error.h"
#include "state/run_guarded.h"
#include "state/step.h"
#include "state/task_line.h"

namespace {

QHash<QString, Procedure>& Bound() {
  static QHash<QString, Procedure> procedures;
  return procedures;
}

bool Hand_Ready(Hand asked) {
  switch (asked) {
    case Hand::Keep:
      return true;
    case Hand::StoreText:
      return Store_Typed();
    case Hand::Free:
      return Leave_Hand();
  }
  return false;
}

}  // namespace

const std::vector<Command>& Command_Table() {
  static const std::vector<Command> table = [] {
    std::vector<Command> all;
    for (const auto& part : {Map_Commands(), Table_Commands(), Exchange_Commands(), Text_Commands(), Result_Commands(),
                             Entry_Commands(), Object_Commands(), Grid_Commands(), Toolbar_Commands()})
      all.insert(all.end(), part.begin(), part.end());
    return all;
  }();
  return table;
}

const Command* Find_Command(const QString& key) {
  static const QHash<QString, const Command*> byKey = [] {
    QHash<QString, const Command*> found;
    for (const Command& command : Command_Table()) found.insert(command.key, &command);
    return found;
  }();
  return byKey.value(key);
}

void Bind_Command(const QString& key, Procedure procedure) {
  const Command* command = Find_Command(key);
  if (!command || command->procedure) Raise(5, key);
  Bound().insert(key, std::move(procedure));
}

void Unbind_Commands() { Bound().clear(); }

QStringList Unbound_Commands() {
  QStringList keys;
  for (const Command& command : Command_Table())
    if (!command.procedure && !Bound().contains(command.key)) keys << command.key;
  return keys;
}

bool Run_Command(const QString& key, const CommandCall& call) {
  const Command* command = Find_Command(key);
  if (!command) return false;
  const Procedure procedure = command->procedure ? command->procedure : Bound().value(key);
  if (!procedure) return false;
  bool begun = false;
  Run_Guarded([&] {
    begun = Needs_Met(command->needs) && Hand_Ready(command->hand);
    if (!begun) return;
    Forget_Done();
    const UndoStep step(command->step, UndoStep::Joins::Nothing);
    procedure(call);
  });
  return begun;
}
