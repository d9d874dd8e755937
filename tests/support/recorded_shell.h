#pragma once
// While it lives no program is started and no file opened: what would have been stands here.
struct RecordedShell {
  RecordedShell() {
    Set_Shell({.start =
                   [this](const QString& path, const QStringList& words, std::function<void()> after) {
                     program = path;
                     given = words;
                     ended = std::move(after);
                     return starts;
                   },
               .open = [this](const QString& path) { return opened = path, true; }});
  }
  ~RecordedShell() { Set_Shell({}); }
  RecordedShell(const RecordedShell&) = delete;
  RecordedShell& operator=(const RecordedShell&) = delete;

  QString program, opened;
  QStringList given;
  std::function<void()> ended;  // what the program wants done when the other one has ended
  bool starts = true;
};
