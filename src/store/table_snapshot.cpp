#include <QCryptographicHash>
#include <QDeadlineTimer>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <algorithm>
#include <functional>
#include <optional>
#include <utility>

#include "platform/database_clone.h"
#include "platform/file_lock.h"
#include "platform/files.h"
#include "state/global_state.h"
#include "state/mdi_state.h"
#include "state/on_reset.h"
#include "state/table_state.h"
#include "store/file_names.h"
#include "store/history.h"
#include "store/table_file.h"
#include "store/table_file_inner.h"

// The snapshot for undo. Several programs may run in one program folder: each writes a file of its own, and none uses a
// snapshot that does not prove to be one of its table.

using namespace table_file;

namespace {

QString userOfSnapshot;  // "" = the user's table did not change since
HistoryMark markOfSnapshot;
// What the mark stands for is in no file yet, or in one that proves nothing so far.
struct Pending {
  bool snapshot = false, written = false;
  QString user;  // another table that is to be brought up to date as well
};
Pending pending;

// "TEMP.MDB" is the work file of the first program, "TEMP_1.MDB" that of the second, ...
QString Numbered_File(const QString& base, int number, const char* ending) {
  const QString tail = number == 0 ? QString() : u'_' + QString::number(number);
  return Program_File(base + tail + QLatin1String(ending));
}

const QString snapshotBase = QStringLiteral("TEMP"), sortedBase = QStringLiteral("SRTDATA");
constexpr int mostPrograms = 100;

QString Stamp_File(int number) { return Numbered_File(snapshotBase, number, ".stamp"); }
QString Lock_File(int number) { return Numbered_File(snapshotBase, number, ".lock"); }

// The number of this program among those that run in the program folder, held by a lock.
struct OwnNumber {
  QString folder;
  int number = 0;
  std::unique_ptr<FileLock> lock;
};
OwnNumber own;

// The undo point before that of the work that runs.
struct FormerPoint {
  QString caption, user;
  bool enabled = false;
  HistoryMark mark;
  Pending pending;
  QByteArray stamp;
  QString openTable;  // the user's, since the new point
};
std::optional<FormerPoint> formerPoint;

const OnReset fresh(userOfSnapshot, markOfSnapshot, pending, own, formerPoint);

int Own_Number() {
  if (own.lock && own.folder == ProgramFolder) return own.number;
  own = {ProgramFolder, 0, nullptr};
  for (int number = 0; number < mostPrograms && !own.lock; ++number) {
    own.lock = FileLock::Try(Lock_File(number));
    if (own.lock) own.number = number;
  }
  return own.number;
}

// Fingerprint of the snapshot's bytes, its table and its map: another content or another place has another one. Taken
// piece by piece.
class Fingerprint {
 public:
  explicit Fingerprint(const QString& snapshot) : file(Find_File(snapshot)) {
    for (const QString& path : {TableFile, MapFile}) hash.addData(Clean_Path(path).toCaseFolded().toUtf8() + '\n');
    if (!file.open(QIODevice::ReadOnly)) Raise(errors::fileNotFound);
  }
  bool Go_On(const QDeadlineTimer& end) {
    constexpr qint64 piece = 1 << 18;  // bytes
    do {
      const QByteArray read = file.read(piece);
      if (file.error() != QFileDevice::NoError) Raise(errors::fileNotFound);
      if (read.isEmpty()) return true;
      hash.addData(read);
    } while (!end.hasExpired());
    return false;
  }
  QByteArray Text() const { return hash.result().toHex(); }
  static QByteArray Of(const QString& snapshot) {
    Fingerprint print(snapshot);
    print.Go_On(QDeadlineTimer::Forever);
    return print.Text();
  }

 private:
  QCryptographicHash hash{QCryptographicHash::Sha256};
  QFile file;
};
std::unique_ptr<Fingerprint> fingerprint;  // of the pending snapshot, once it is written
const OnReset freshPrint(fingerprint);

QString Former_File(int number) { return Numbered_File(snapshotBase, number, ".vorher"); }

void Delete_Work_Files(int number) {
  for (const QString& file : {Numbered_File(snapshotBase, number, ".MDB"), Stamp_File(number), Former_File(number),
                              Numbered_File(sortedBase, number, ".MDB")})
    Kill_Quietly(file);
}

}  // namespace

QString table_file::Snapshot_File() { return Numbered_File(snapshotBase, Own_Number(), ".MDB"); }
QString table_file::Sorted_File() { return Numbered_File(sortedBase, Own_Number(), ".MDB"); }

namespace {

void Forget_Pending() {
  pending = {};
  fingerprint.reset();
}

// False if it could not be done, which was told.
bool Guarded_Work(const std::function<void()>& work) {
  try {
    work();
    return true;
  } catch (const Error& error) {
    Forget_Snapshot();
    if (Is_Access_Error(error)) {
      Show_No_Access(ProgramFolder);
    } else {
      Report_Copy_Error(Snapshot_File(), error);
    }
    return false;
  }
}

bool Take_By(const std::function<void(const QString& target)>& write) {
  Forget_Pending();
  const bool written = Guarded_Work([&write] {
    write(Snapshot_File());
    Replace_File(Stamp_File(Own_Number()), Fingerprint::Of(Snapshot_File()));
  });
  if (!written) return false;
  userOfSnapshot.clear();
  markOfSnapshot = Mark_Here();
  return true;
}

// The journal knows the way back to here: a mark does for the file, which is written when there is time. What the file
// holds is no snapshot of now.
bool Take_Mark(const QString& user) {
  const HistoryMark mark = Mark_Here();
  const QFileInfo file(Snapshot_File());
  if (dbEntries->InTrans() || !Is_Reached(mark) || file.isDir() || !QFileInfo(ProgramFolder).isWritable()) return false;
  if (pending.user != user) Write_Pending_Snapshot();
  QFile::remove(Stamp_File(Own_Number()));
  userOfSnapshot.clear();
  markOfSnapshot = mark;
  fingerprint.reset();
  pending = {true, false, user};
  return true;
}

}  // namespace

bool table_file::Take_Snapshot() {
  return Take_By([](const QString& target) { Compact_Over(TableFile, target); });
}

void Undo_Point_Of_Open_Table(const QString& caption) {
  if (Take_Snapshot_Of_Open_Table()) Arm_Undo(caption);
}

bool table_file::Take_Snapshot_Of_Open_Table() {
  return Take_Mark({}) || Take_By([](const QString& target) { Clone_Database(*dbEntries, target); });
}

bool table_file::Mark_Snapshot_And_User(const QString& user) { return Take_Mark(user); }
bool table_file::Snapshot_Is_Pending() { return pending.snapshot; }

namespace {

void Write_Marked_State(const QString& target) {
  Clone_Database(*dbEntries, target);
  if (markOfSnapshot.state == Mark_Here().state) return;
  const auto copy = Workspace::OpenDatabase(target);
  copy->Execute(QStringLiteral("PRAGMA synchronous=OFF"));  // a stamp proves it
  Bring_Back(*copy, markOfSnapshot);
  copy->Close();
}

// The file first, then its fingerprint, piece by piece, then the user's table: what was written does not change any
// more, whatever is done with the open table meanwhile. True if there is more to do.
bool Work_On_Snapshot(const QDeadlineTimer& end) {
  if (!pending.written) {
    Write_Marked_State(Snapshot_File());
    pending.written = true;
  }
  if (!fingerprint) fingerprint = std::make_unique<Fingerprint>(Snapshot_File());
  if (!fingerprint->Go_On(end)) return true;
  Replace_File(Stamp_File(Own_Number()), fingerprint->Text());
  const QString user = pending.user;
  Forget_Pending();
  try {
    if (!user.isEmpty()) Compact_Over(Snapshot_File(), user);
  } catch (const Error& error) {
    Report_Copy_Error(user, error);
  }
  return false;
}

}  // namespace

bool table_file::Write_Pending_Snapshot(const QDeadlineTimer& end) {
  if (!pending.snapshot) return true;
  if (!dbEntries || dbEntries->InTrans()) return false;
  bool more = false;
  return Guarded_Work([&] { more = Work_On_Snapshot(end); }) && !more;
}

void Before_Going_Back(int step) {
  if (pending.snapshot && Lies_Behind(markOfSnapshot, step)) Write_Pending_Snapshot();
}

table_file::SnapshotState table_file::State_Of_Snapshot() {
  const QString file = Snapshot_File();
  if (!File_Exists(file) || !Table_Fault(file).isEmpty()) return SnapshotState::Unusable;
  try {
    const bool fits = Read_Bytes(Stamp_File(Own_Number())) == Fingerprint::Of(file);
    return fits ? SnapshotState::Fits : SnapshotState::Foreign;
  } catch (const Error&) {
    return SnapshotState::Foreign;
  }
}

void Undo_Goes_Back_To(const QString& user) { userOfSnapshot = user; }
QString table_file::User_Of_Snapshot() { return userOfSnapshot; }

int Steps_After_Undo_Point() {
  const std::optional<int> place = Place_Of(markOfSnapshot);
  return place ? std::max(0, Step_Position() - *place - 1) : 0;
}

namespace {

void Keep_Former_Point() {
  const MenuState& menu = Menu(QStringLiteral("mnuReset"));
  const int number = Own_Number();
  formerPoint.reset();
  Kill_Quietly(Former_File(number));
  FormerPoint kept{menu.Caption, userOfSnapshot, menu.Enabled, markOfSnapshot, pending, {}, {}};
  try {
    if (menu.Enabled && !pending.snapshot) {
      kept.stamp = Read_Bytes(Stamp_File(number));
      File_Rename(Snapshot_File(), Former_File(number));
    }
    formerPoint = kept;
  } catch (const Error&) {
    // Then there is no way back to it; the new one is what counts.
  }
}

bool Written_Since(const FormerPoint& kept) {
  return !Place_Of(markOfSnapshot) || Mark_Here().state != markOfSnapshot.state ||
         !Same_Name(Tbl.DBGrid1.Caption, kept.openTable);
}

void Put_Former_Back(const FormerPoint& kept) {
  const int number = Own_Number();
  try {
    if (!pending.user.isEmpty()) Write_Pending_Snapshot();  // the user's table is brought up to date all the same
    if (kept.pending.snapshot) {
      QFile::remove(Stamp_File(number));
    } else if (kept.enabled) {
      Kill_Quietly(Snapshot_File());
      File_Rename(Former_File(number), Snapshot_File());
      Replace_File(Stamp_File(number), kept.stamp);
    }
    // What was written of it went with the file of the later one.
    Forget_Pending();
    pending = {kept.pending.snapshot, false, kept.pending.user};
    userOfSnapshot = kept.user;
    markOfSnapshot = kept.mark;
    kept.enabled ? Arm_Undo(kept.caption) : Disarm_Undo();
  } catch (const Error&) {
    Forget_Snapshot();
  }
}

}  // namespace

UndoPoint::UndoPoint(const QString& caption) {
  Keep_Former_Point();
  Undo_Point(caption);
  if (formerPoint) formerPoint->openTable = Tbl.DBGrid1.Caption;
}

UndoPoint::~UndoPoint() {
  if (!formerPoint) return;
  const FormerPoint kept = *std::exchange(formerPoint, std::nullopt);
  if (Written_Since(kept))
    Kill_Quietly(Former_File(Own_Number()));
  else
    Put_Former_Back(kept);
}

void table_file::Forget_Snapshot() {
  formerPoint.reset();
  userOfSnapshot.clear();
  markOfSnapshot = {};
  Forget_Pending();
  Disarm_Undo();
}

void Clear_Work_Files() {
  static const QRegularExpression pattern(QStringLiteral("^TEMP_([0-9]{1,3})\\.(MDB|stamp|vorher|lock)$"),
                                          QRegularExpression::CaseInsensitiveOption);
  Clear_Stale_Asides(ProgramFolder);
  for (const QString& path : Find_Files(ProgramFolder, snapshotBase + QStringLiteral("_*"))) {
    const auto match = pattern.match(path.mid(path.lastIndexOf(u'/') + 1));
    if (!match.hasMatch()) continue;
    const int number = match.captured(1).toInt();
    // Nobody can begin with these files meanwhile.
    if (const auto lock = FileLock::Try(Lock_File(number))) Delete_Work_Files(number);
  }
}

void Release_Work_Files() {
  if (own.lock && own.folder == ProgramFolder && own.number > 0) Delete_Work_Files(own.number);
  own = {};
}
