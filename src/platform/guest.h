#pragma once
#include <QByteArray>
#include <QString>
#include <QStringList>
#include <functional>

// Programs that do work on strangers' files for this one. They may crash, hang or write nonsense: each is a child
// process with an argument list, a time limit and a folder of its own, and what it made is checked by the caller.

struct GuestOrder {
  QString program;  // path, of Find_Program
  QStringList arguments;
  QString folder;      // where it works and keeps its temporary files: that of a QTemporaryDir
  int seconds = 60;    // then it is ended
  QString title = {};  // of the progress, which has a button to end it
  // How far it is, 0 to 1, from what it wrote to its standard output so far. Without it the bar runs with the time
  // limit.
  std::function<double(const QByteArray& output)> part = {};
};

enum class GuestEnd { Done, Missing, Failed, TimedOut, Cancelled };  // Failed: crashed, or an exit code other than 0

struct GuestResult {
  GuestEnd end = GuestEnd::Missing;
  int exitCode = -1;
  QByteArray output = {}, faults = {};  // the last of what it wrote to its standard output and error output
};

// Runs it to its end; meanwhile events are served. Nothing of it runs on afterwards, nor when this program ends.
GuestResult Run_Guest(const GuestOrder& order);
// What to tell the user of a guest that is not Done: a German sentence with its name. "" for Done and Cancelled.
QString Guest_Flaw(const GuestOrder& order, const GuestResult& result);
