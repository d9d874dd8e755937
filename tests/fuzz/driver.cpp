#include "fuzz/driver.h"

#include <fcntl.h>
#include <sys/time.h>
#include <unistd.h>

#include <QElapsedTimer>
#include <QGuiApplication>
#include <clocale>
#include <csignal>

#include "state/coordinate_state.h"
#include "state/dialog_hooks.h"
#include "state/events.h"
#include "support/surroundings.h"

namespace {

constexpr int longestSeconds = 60;     // of computing for one input: an endless loop is a find
constexpr unsigned longestWait = 600;  // on a busy machine, or for what never comes
constexpr qsizetype mostKept = 64;     // accepted inputs that are changed further

Mutator* dice = nullptr;
QByteArray inputFile;  // holds the input at work: what ends the program leaves it there

struct Options {
  int count = 10000;
  quint64 seed = 1;
  QStringList replay;
};

std::optional<Options> Read_Options(const QStringList& arguments) {
  Options options;
  for (qsizetype i = 1; i < arguments.size(); ++i) {
    const bool count = arguments[i] == QLatin1String("-n"), seed = arguments[i] == QLatin1String("-s");
    if (!count && !seed) {
      options.replay += arguments[i];
      continue;
    }
    bool good = false;
    const qint64 value = arguments.value(++i).toLongLong(&good);
    if (!good || value < 0) return std::nullopt;
    if (count) options.count = static_cast<int>(std::min<qint64>(value, 1'000'000'000));
    if (seed) options.seed = static_cast<quint64>(value);
  }
  return options;
}

void Keep_Input(const QByteArray& input) {
  const int file = ::open(inputFile.constData(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
  if (file < 0 || ::write(file, input.constData(), static_cast<size_t>(input.size())) != input.size()) std::abort();
  ::close(file);
}

void Too_Long(int) {
  static const char text[] = "An input lasts too long; it is kept.\n";
  [[maybe_unused]] const ssize_t written = ::write(2, text, sizeof text - 1);
  ::_exit(3);
}

void Watch(bool on) {
  const itimerval limit{{0, 0}, {on ? longestSeconds : 0, 0}};
  ::setitimer(ITIMER_PROF, &limit, nullptr);
  ::alarm(on ? longestWait : 0);
}

QTemporaryDir& Folder() {
  static QTemporaryDir folder(QDir(QStringLiteral("/dev/shm")).exists() ? QStringLiteral("/dev/shm/flurax-fuzz-XXXXXX")
                                                                        : QString());
  return folder;
}

enum class Outcome { Accepted, Refused, Found };

Outcome Run_One(const FuzzTarget& target, const QByteArray& input) {
  try {
    return target.run(input) ? Outcome::Accepted : Outcome::Refused;
  } catch (const Error& error) {
    std::printf("%s: an error escaped: %d %s\n", target.name, error.number, qPrintable(error.text));
  } catch (const std::exception& failure) {
    std::printf("%s: an exception escaped: %s\n", target.name, failure.what());
  }
  return Outcome::Found;
}

int Replay(const FuzzTarget& target, const QStringList& paths) {
  int found = 0;
  for (const QString& path : paths) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
      std::printf("%s cannot be read\n", qPrintable(path));
      return 2;
    }
    const Outcome outcome = Run_One(target, file.readAll());
    found += outcome == Outcome::Found;
    std::printf("%s: %s\n", qPrintable(path), outcome == Outcome::Accepted ? "accepted" : "refused");
  }
  return found > 0 ? 1 : 0;
}

int Run_All(const FuzzTarget& target, const Options& options) {
  Mutator mutator(options.seed, target.words);
  dice = &mutator;
  QByteArrayList pool = target.seeds;
  int accepted = 0, refused = 0;
  QElapsedTimer whole;
  whole.start();
  for (int i = 0; i < options.count; ++i) {
    // The seeds themselves first.
    QByteArray input = i < target.seeds.size() ? target.seeds[i] : mutator.Next(pool);
    if (i >= target.seeds.size() && target.shape && mutator.Number(4) != 0) target.shape(input, mutator);
    Keep_Input(input);
    Watch(true);
    const Outcome outcome = Run_One(target, input);
    Watch(false);
    if (outcome == Outcome::Found) {
      std::printf("Input %d of seed %llu is kept in %s.\n", i, static_cast<unsigned long long>(options.seed),
                  inputFile.constData());
      return 1;
    }
    ++(outcome == Outcome::Accepted ? accepted : refused);
    if (outcome != Outcome::Accepted || i < target.seeds.size() || mutator.Number(8) != 0) continue;
    if (pool.size() < target.seeds.size() + mostKept)
      pool += input;
    else
      pool[target.seeds.size() + mutator.Place(mostKept)] = input;
  }
  ::unlink(inputFile.constData());
  std::printf("%s: %d inputs of seed %llu, %d accepted, %d refused; %.1f s\n", target.name, options.count,
              static_cast<unsigned long long>(options.seed), accepted, refused,
              static_cast<double>(whole.elapsed()) / 1000);
  return 0;
}

int Only_Within_The_Folder(const QString& path, qint64) {
  if (!path.startsWith(Folder().path())) {
    std::fprintf(stderr, "Written outside of the work folder: %s\n", qPrintable(path));
    std::abort();
  }
  return 0;
}

MsgAnswer Answer(const MsgRequest& request) {
  const quint64 thrown = dice ? dice->Number(4) : 0;
  switch (request.buttons) {
    case MsgButtons::Ok:
      return MsgAnswer::Ok;
    case MsgButtons::OkCancel:
      return thrown == 0 ? MsgAnswer::Cancel : MsgAnswer::Ok;
    case MsgButtons::YesNo:
      return thrown < 2 ? MsgAnswer::Yes : MsgAnswer::No;
    case MsgButtons::YesNoCancel:
      return thrown == 0 ? MsgAnswer::Cancel : thrown < 3 ? MsgAnswer::Yes : MsgAnswer::No;
    case MsgButtons::YesNoAll:
      return std::array{MsgAnswer::Yes, MsgAnswer::No, MsgAnswer::YesAll, MsgAnswer::NoAll}[thrown];
  }
  return MsgAnswer::Cancel;
}

// The image library tells of every damaged picture.
void Silent(QtMsgType type, const QMessageLogContext&, const QString& text) {
  if (type == QtFatalMsg || type == QtCriticalMsg) std::fprintf(stderr, "%s\n", qPrintable(text));
}

}  // namespace

// Of what asked for memory two steps are remembered. Further back, past libraries without frame pointers, hardly any
// two are the same: kept for all inputs they took most of the time.
extern "C" const char* __asan_default_options() { return "malloc_context_size=2"; }

QString Work_Folder() { return Folder().path(); }

QString Put_File(const QString& name, const QByteArray& bytes) {
  const QString path = Work_Folder() + u'/' + name;
  QFile file(path);
  if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size()) std::abort();
  return path;
}

void Fresh_Program() {
  dialogHooks = DialogHooks();
  events = Events();
  Reset_Global_State();
  Coord = CoordinateState();
  Set_Message_Handler(Answer);
  File_Write_Fault = Only_Within_The_Folder;
  ProgramFolder = Work_Folder() + QStringLiteral("/Programm");
  QDir().mkpath(ProgramFolder);
  if (!QFile::exists(ProgramFolder + QStringLiteral("/MUSTER.MDB")))
    Put_File(QStringLiteral("Programm/MUSTER.MDB"), Template_Bytes());
}

int main(int argc, char** argv) {
  Set_Test_Surroundings();
  const QGuiApplication application(argc, argv);
  std::setlocale(LC_NUMERIC, "C");
  qInstallMessageHandler(Silent);
  const auto options = Read_Options(QCoreApplication::arguments());
  if (!options) {
    std::printf("usage: [-n count] [-s seed] [files to run again]\n");
    return 2;
  }
  std::signal(SIGALRM, Too_Long);
  std::signal(SIGPROF, Too_Long);
  const FuzzTarget target = Make_Target();
  Fresh_Program();
  inputFile = QByteArray("fuzz_") + target.name + ".input";
  return options->replay.isEmpty() ? Run_All(target, *options) : Replay(target, options->replay);
}
