#include "state/step.h"

#include <QDeadlineTimer>
#include <QThread>
#include <utility>

#include "state/on_reset.h"

namespace {

RunningStep running;
int runningLevel = 0;  // of nested event loops: a dialog that waits is one deeper
quint64 lastNumber = 0;
constexpr qint64 longest = 1500;  // ms between two events of a gesture

struct GestureNow {
  QString what;
  quint64 number = 0;
  qint64 when = 0;
};
GestureNow gestureNow;
const OnReset fresh(running, runningLevel, gestureNow);

}  // namespace

UndoStep::UndoStep(const QString& name, Joins joins) : former(running), formerLevel(runningLevel) {
  const int level = QThread::currentThread()->loopLevel();
  isOuter = running.number == 0 || level != runningLevel || joins == Joins::Nothing;
  if (isOuter) {
    const bool within = running.number != 0 && level > runningLevel;
    running = {++lastNumber, name.isEmpty() && within ? running.name : name};
    runningLevel = level;
  } else if (running.name.isEmpty()) {
    running.name = name;
  }
}

UndoStep::UndoStep(const Gesture& gesture) : UndoStep({}, Joins::Nothing) {
  const qint64 now = QDeadlineTimer::current().deadline();
  const bool goesOn = gestureNow.what == gesture.what && now - gestureNow.when < longest;
  gestureNow = {gesture.what, goesOn ? gestureNow.number : running.number, now};
  running.number = gestureNow.number;
}

UndoStep::~UndoStep() {
  if (!isOuter) return;
  running = std::move(former);
  runningLevel = formerLevel;
}

const RunningStep& Step_Now() { return running; }
