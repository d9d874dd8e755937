#include "state/run_guarded.h"

#include <exception>
#include <new>

#include "platform/error.h"
#include "platform/message_box.h"
#include "state/events.h"
#include "state/step.h"

static void Show_Program_Error(const Error& error) {
  // Ending goes through the main window, so that the table is closed in order.
  const auto answer = Message_Box(Error_Message(error, QStringLiteral("Programm beenden ?")), MsgButtons::YesNo,
                                  MsgIcon::Critical, QStringLiteral("Programmfehler "), MsgDefault::Second);
  if (answer == MsgAnswer::Yes) events.EndWanted.Emit();
}

bool Run_Guarded(const std::function<void()>& work) {
  const UndoStep step;
  try {
    work();
    return true;
  } catch (const Error& error) {
    // An event that came while a statement runs: who is heard then is told again when it has ended.
    // And who did not want the change knows of it.
    if (error.number != errors::databaseBusy && error.number != errors::workStopped) Show_Program_Error(error);
  } catch (const std::bad_alloc&) {
    Show_Program_Error({errors::outOfMemory, Error_Text(errors::outOfMemory)});
  } catch (const std::exception& error) {
    Show_Program_Error({0, QString::fromLocal8Bit(error.what())});
  }
  return false;
}
