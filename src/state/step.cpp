#include "state/step.h"

#include <QThread>
#include <utility>

#include "state/on_reset.h"

namespace {

RunningStep running;
int runningLevel = 0;  // of nested event loops: a dialog that waits is one deeper
quint64 lastNumber = 0;
const OnReset fresh(running, runningLevel);

}  // namespace

UndoStep::UndoStep(const QString& name, Joins joins) : former(running), formerLevel(runningLevel) {
  const int level = QThread::currentThread()->loopLevel();
  isOuter = running.number == 0 || level != runningLevel || joins == Joins::Nothing;
  if (isOuter) {
    running = {++lastNumber, name};
    runningLevel = level;
  } else if (running.name.isEmpty()) {
    running.name = name;
  }
}

UndoStep::~UndoStep() {
  if (!isOuter) return;
  running = std::move(former);
  runningLevel = formerLevel;
}

const RunningStep& Step_Now() { return running; }
