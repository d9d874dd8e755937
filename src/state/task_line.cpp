#include "state/task_line.h"

#include "state/events.h"
#include "state/mdi_state.h"
#include "state/on_reset.h"

namespace {
QString done;
const OnReset fresh(done);
}  // namespace

void Tell_Done(const QString& text) {
  InfoBar.Panel[0] = done = text;
  events.InfoBarChanged.Emit();
}

void Forget_Done() {
  if (done.isEmpty() || InfoBar.Panel[0] != done) return;
  InfoBar.Panel[0].clear();
  events.InfoBarChanged.Emit();
}

QString Entries_Text(qsizetype count) {
  return count == 1 ? QStringLiteral("1 Eintrag") : QStringLiteral("%1 Einträge").arg(count);
}
