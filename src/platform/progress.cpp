#include "platform/progress.h"

#include <utility>

namespace {
ProgressMaker maker;
constexpr qint64 betweenSteps = 50;  // milliseconds between two signs of life
}  // namespace

ProgressMaker Set_Progress_Maker(ProgressMaker next) { return std::exchange(maker, std::move(next)); }

Progress::Progress(const QString& windowTitle, int units) : title(windowTitle), total(units) {
  if (maker) face = maker();
  clock.start();
}

Progress::~Progress() = default;

bool Progress::Advance(int units) {
  done += units;
  if (!face || stopped) return !stopped;
  const int delay = face->Delay();
  const qint64 now = clock.elapsed();
  if (lastShown < 0) {
    if (now < delay) return true;
    face->Show(title, total);
  } else if (delay > 0 && now - lastShown < betweenSteps) {
    return true;
  }
  stopped = !face->Step(done);
  lastShown = clock.elapsed();
  return !stopped;
}

void Progress::Say(const QString& step) {
  title = title.section(QLatin1Char('\n'), 0, 0) + QLatin1Char('\n') + step;
  if (!face || stopped) return;
  if (lastShown >= 0) return face->Say(step);
  if (clock.elapsed() < face->Delay()) return;
  face->Show(title, total);
  lastShown = clock.elapsed();
}
