#include "state/task_line.h"

#include "state/events.h"
#include "state/mdi_state.h"

void Tell_Done(const QString& text) {
  InfoBar.Panel[0] = text;
  events.InfoBarChanged.Emit();
}

QString Entries_Text(qsizetype count) {
  return count == 1 ? QStringLiteral("1 Eintrag") : QStringLiteral("%1 Einträge").arg(count);
}
