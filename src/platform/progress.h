#pragma once
#include <QElapsedTimer>
#include <QString>
#include <functional>
#include <memory>

// Progress of long work. A title of two lines names the window first, then what is being done.
// It is a window with a bar and "Abbrechen" in the program, a counter in tests. Shown only when the
// work takes longer than a moment.
class ProgressFace {
 public:
  virtual ~ProgressFace() = default;
  virtual void Show(const QString& title, int total) = 0;   // `total` units of work
  virtual bool Step(int done) = 0;                          // serves waiting events; false: the user wants to stop
  virtual void Say(const QString& step) { Q_UNUSED(step) }  // another step of the same work
  // Milliseconds of work before it is shown. At 0 it is shown at once and hears of every unit.
  virtual int Delay() const { return 300; }
};
using ProgressMaker = std::function<std::unique_ptr<ProgressFace>()>;
ProgressMaker Set_Progress_Maker(ProgressMaker maker);  // returns the former one; without one nothing is shown

class Progress {
 public:
  Progress(const QString& title, int total);
  ~Progress();
  // Call once per unit; cheap. False when the user pressed "Abbrechen": the caller ends its loop.
  bool Advance(int units = 1);
  // What is being done from now on: the second line of the title.
  void Say(const QString& step);

 private:
  std::unique_ptr<ProgressFace> face;
  QString title;
  QElapsedTimer clock;
  int done = 0, total = 0;
  qint64 lastShown = -1;  // milliseconds; -1 = not yet shown
  bool stopped = false;
};
