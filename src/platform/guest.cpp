#include "platform/guest.h"

#include <sys/prctl.h>

#include <QElapsedTimer>
#include <QFileInfo>
#include <QProcess>
#include <algorithm>
#include <csignal>

#include "platform/progress.h"

namespace {

constexpr int lookEvery = 50;              // milliseconds
constexpr int barUnits = 1000;             // of work, where the program tells how far it is
constexpr qsizetype mostOutput = 1 << 20;  // bytes of each

// What is too much is forgotten, so that a program gone wild cannot fill the memory.
void Keep(QByteArray& kept, const QByteArray& more) {
  kept += more;
  if (kept.size() > mostOutput) kept = kept.right(mostOutput);
}

}  // namespace

GuestResult Run_Guest(const GuestOrder& order) {
  GuestResult result;
  QProcess process;
  QProcessEnvironment surroundings = QProcessEnvironment::systemEnvironment();
  surroundings.insert(QStringLiteral("LC_ALL"), QStringLiteral("C.UTF-8"));
  surroundings.insert(QStringLiteral("TMPDIR"), order.folder);
  process.setProcessEnvironment(surroundings);
  process.setWorkingDirectory(order.folder);
  process.setStandardInputFile(QProcess::nullDevice());
  process.setChildProcessModifier([] { ::prctl(PR_SET_PDEATHSIG, SIGKILL); });
  const int limit = order.seconds * 1000;
  Progress progress(order.title, order.part ? barUnits : limit / lookEvery);
  int shown = 0;
  const auto advance = [&] {
    if (!order.part) return progress.Advance();
    const int reached = std::clamp(static_cast<int>(order.part(result.output) * barUnits), shown, barUnits);
    const bool goOn = progress.Advance(reached - shown);
    shown = reached;
    return goOn;
  };
  QElapsedTimer clock;
  clock.start();
  process.start(order.program, order.arguments);
  if (!process.waitForStarted()) return result;
  const auto collect = [&] {
    Keep(result.output, process.readAllStandardOutput());
    Keep(result.faults, process.readAllStandardError());
  };
  while (process.state() != QProcess::NotRunning && !process.waitForFinished(lookEvery)) {
    collect();
    const bool cancelled = !advance();
    if (!cancelled && clock.elapsed() < limit) continue;
    process.kill();
    process.waitForFinished();
    result.end = cancelled ? GuestEnd::Cancelled : GuestEnd::TimedOut;
    return result;
  }
  collect();
  result.exitCode = process.exitCode();
  const bool good = process.exitStatus() == QProcess::NormalExit && result.exitCode == 0;
  result.end = good ? GuestEnd::Done : GuestEnd::Failed;
  return result;
}

QString Guest_Flaw(const GuestOrder& order, const GuestResult& result) {
  const QString name = QFileInfo(order.program).fileName();
  switch (result.end) {
    case GuestEnd::Missing:
      return QStringLiteral("Das Hilfsprogramm '%1' wurde nicht gefunden oder kann nicht gestartet werden.").arg(name);
    case GuestEnd::TimedOut:
      return QStringLiteral("Das Hilfsprogramm '%1' hat in %2 Sekunden nicht geantwortet und wurde beendet.")
          .arg(name)
          .arg(order.seconds);
    case GuestEnd::Failed: {
      const QString said = QString::fromUtf8(result.faults).simplified();
      constexpr qsizetype longest = 300;
      return QStringLiteral("Das Hilfsprogramm '%1' ist mit einem Fehler beendet worden.").arg(name) +
             (said.isEmpty() ? QString() : QStringLiteral(" Es meldete:\n") + said.right(longest));
    }
    case GuestEnd::Done:
    case GuestEnd::Cancelled:
      break;
  }
  return {};
}
