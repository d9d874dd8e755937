#pragma once
#include <QString>

#include "platform/journal.h"

// What the user does at one go is one step of the journal, however many rows and transactions it takes: from the
// object's beginning to its end. One within another joins it, so that every procedure may name its step; a window that
// waits for answers in a step begins new ones, of the same name where they have none. Without a name the change itself
// gives one.
class UndoStep {
 public:
  enum class Joins { Outer, Nothing };
  explicit UndoStep(const QString& name = {}, Joins joins = Joins::Outer);
  // What goes on over several events and is one step all the same: an arrow key held down, a number turned. Events of
  // the same gesture are one while they follow each other quickly and nothing else is changed between them.
  struct Gesture {
    QString what;  // told apart by this
  };
  explicit UndoStep(const Gesture& gesture);
  ~UndoStep();
  UndoStep(const UndoStep&) = delete;
  UndoStep& operator=(const UndoStep&) = delete;

 private:
  bool isOuter;
  RunningStep former;
  int formerLevel;
};

// The one that runs; number 0 without one.
const RunningStep& Step_Now();
