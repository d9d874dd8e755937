#pragma once
#include <ctime>

#include "platform/error.h"

// Processor time of the program, in which large fills are done by several threads: a limit on it means the same on a
// busy machine as on an idle one.
class WorkClock {
 public:
  explicit WorkClock(int milliseconds) : end(Now() + static_cast<double>(milliseconds) / 1000) {}
  bool Over() const { return Now() > end; }

 private:
  static double Now() {
    timespec time{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
  }
  double end;
};

// What drawing a stranger's file may cost, counted in nanoseconds or whatever else is fit. The clock is looked at
// between the steps, so a step that might itself last long must be counted before it is done.
class WorkBudget {
 public:
  WorkBudget(double units, int milliseconds) : left(units), clock(milliseconds) {}
  // Error 481, whose text is a German half sentence, when the budget or the time is used up.
  void Spend(double units) {
    left -= units;
    sinceLook += units;
    if (left < 0) Raise(errors::badPicture, QStringLiteral("die Zeichnung ist zu aufwendig."));
    if (sinceLook < betweenLooks) return;
    sinceLook = 0;
    if (clock.Over()) Raise(errors::badPicture, QStringLiteral("das Zeichnen dauert zu lange."));
  }

 private:
  static constexpr double betweenLooks = 100'000;
  double left, sinceLook = 0;
  WorkClock clock;
};
