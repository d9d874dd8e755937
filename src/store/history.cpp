#include "store/history.h"

#include <QCoreApplication>
#include <QCryptographicHash>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <algorithm>
#include <map>
#include <memory>
#include <utility>
#include <vector>

#include "platform/files.h"
#include "platform/for_now.h"
#include "platform/message_box.h"
#include "state/events.h"
#include "state/global_state.h"
#include "state/map_state.h"
#include "state/on_reset.h"
#include "state/step.h"
#include "state/table_state.h"
#include "store/entry.h"
#include "store/file_names.h"
#include "store/step_name.h"

namespace {

constexpr qint64 mostBytes = qint64{256} << 20;  // of the file; beyond it the oldest steps go
constexpr int leastSteps = 200;

const QString mapData = QStringLiteral("MapData");

// The open table's journal, and what is to be told of it.
struct History {
  QString path;
  std::unique_ptr<Journal> journal;
  bool interrupted = false;
  bool noStep = false;           // what is written now is none
  QString told;                  // of the faults
  QString pending, pendingUser;  // name of the step a former table is kept for, and the user's table of then
};
History history;
const OnReset fresh(history);

// Not alike in two programs, nor in one that got the number of a former one.
const QString& This_Run() {
  static const QString run =
      QStringLiteral("%1-%2").arg(QCoreApplication::applicationPid()).arg(QDateTime::currentMSecsSinceEpoch());
  return run;
}

QString Stem_Of(const QString& table) {
  const QByteArray place = QFileInfo(table).absoluteFilePath().toUtf8();
  const QString hash =
      QString::fromLatin1(QCryptographicHash::hash(place, QCryptographicHash::Sha256).toHex().left(16));
  return Program_File(QStringLiteral("Verlauf/")) + QFileInfo(table).completeBaseName().left(60) + u'_' + hash;
}
QString Journal_Path(const QString& table) { return Stem_Of(table) + QStringLiteral(".verlauf"); }

// Beside the journal: who writes it, and whether it was left in order. And the table as it was before it was replaced.
QString Run_File(const QString& journal) { return journal + QStringLiteral(".lauf"); }
QString Former_File(const QString& journal) { return journal + QStringLiteral(".vorher"); }

const QString openWord = QStringLiteral("offen "), closedWord = QStringLiteral("zu ");

void Write_Run(const QString& word) {
  try {
    QDir().mkpath(QFileInfo(history.path).path());
    Replace_File(Run_File(history.path), (word + This_Run()).toUtf8());
  } catch (const Error&) {
    // The steps of a program that is killed then are not found again.
  }
}

QString Read_Run(const QString& journal) {
  QFile file(Run_File(journal));
  if (!Strange_File(file.fileName()).isEmpty()) return {};  // a pipe would never answer
  return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.read(200)) : QString();
}

bool Is_Ours(Journal* journal) { return journal && journal->Follows(); }

void Remove_History(const QString& journal) {
  for (const QString& file : {journal, Run_File(journal), Former_File(journal)}) QFile::remove(file);
}

// Few steps go without a word, as everywhere.
void Ask_To_Drop(int ahead) {
  constexpr int few = 10;
  if (ahead <= few || history.noStep) return;
  const QString question = QStringLiteral(
                               "Sie haben %1 Schritte zurückgenommen. Mit dieser Änderung lassen sie sich nicht mehr "
                               "wiederherstellen.\n\nMöchten Sie die Karteneinträge trotzdem ändern?")
                               .arg(ahead);
  if (Message_Box(question, MsgButtons::YesNo, MsgIcon::Question, QStringLiteral("Verlauf"), MsgDefault::Second) !=
      MsgAnswer::Yes)
    Raise(errors::workStopped, QStringLiteral("Die Karteneinträge wurden nicht verändert."));
}

void Take_Journal(const QString& path) {
  history.path = path;
  history.journal = std::make_unique<Journal>(path, mapData);
  history.journal->Set_Namer(Step_Name);
  history.journal->Set_Running(Step_Now);
  history.journal->Set_Gate(Ask_To_Drop);
  const QString run = Read_Run(path);
  const bool mine = run.endsWith(This_Run());
  const bool killed = run.startsWith(openWord) && !mine;
  if ((mine || killed) && history.journal->Read())
    history.interrupted = killed && history.journal->Count() > 0;
  else
    Remove_History(path);
}

// The table was replaced since it was left: what lies between is a step.
bool Take_Difference() {
  const QString file = Former_File(history.path);
  if (!QFileInfo::exists(file)) return false;
  bool taken = false;
  try {
    const auto former = Workspace::OpenDatabase(file, {.readOnly = true});
    if (Journal::State_Of(*former) != Journal::State_Of(*dbEntries)) {
      const QString name = history.pending.isEmpty() ? QStringLiteral("Einträge ersetzt") : history.pending;
      const QString before = history.pendingUser, after = Tbl.DBGrid1.Caption;
      history.journal->Add_Difference(*former, name, before == after ? QString() : before,
                                      before == after ? QString() : after);
      taken = true;
    }
  } catch (const Error&) {
    history.journal->Begin_Anew();
    taken = true;
  }
  history.pending.clear();
  QFile::remove(file);
  return taken;
}

}  // namespace

QString History_Folder(const QString& table) { return Stem_Of(table); }

void Follow_Table() {
  const QString path = Journal_Path(TableFile);
  if (!history.journal || history.path != path) {
    End_History();
    Take_Journal(path);
  }
  Journal& journal = *history.journal;
  rsEntries->MoveFirst();
  // Where table and map lie is no step: it stands in the header row.
  journal.Leave_Out('!', {QStringLiteral("Eintrag"), QStringLiteral("Schrift")});
  const bool known = journal.Follow(*dbEntries);
  if (!Take_Difference() && !known) journal.Begin_Anew();
  if (journal.Count() == 0) history.interrupted = false;
  journal.Shrink(mostBytes, leastSteps);
  Write_Run(openWord);
}

void Leave_Table() {
  if (history.journal) history.journal->Leave();
}

void End_History() {
  if (!history.journal) return;
  history.journal->Leave();
  Write_Run(closedWord);
  history = {};
}

namespace {

// What lies there for one journal, of a program that was killed, as far as can be told.
struct LeftBehind {
  QString journal;
  QDateTime last;
  qint64 bytes = 0;
};

bool Writer_Runs(const QString& run) {
  const QString process = run.section(u' ', 1).section(u'-', 0, 0);
  return run.startsWith(openWord) && !process.isEmpty() && QFileInfo::exists(QStringLiteral("/proc/") + process);
}

// The newest first; those that ended in order go on the way.
std::vector<LeftBehind> All_Left_Behind() {
  std::map<QString, LeftBehind> found;
  const QDir folder(Program_File(QStringLiteral("Verlauf")));
  const QString ending = QStringLiteral(".verlauf");
  for (const QFileInfo& file :
       folder.entryInfoList({u'*' + ending, u'*' + ending + QStringLiteral(".*")}, QDir::Files)) {
    LeftBehind& left = found[file.filePath().left(file.filePath().lastIndexOf(ending) + ending.size())];
    left.bytes += file.size();
    if (!left.last.isValid() || left.last < file.lastModified()) left.last = file.lastModified();
  }
  std::vector<LeftBehind> all;
  for (auto& [journal, left] : found) {
    const QString run = Read_Run(journal);
    if (run.startsWith(closedWord))
      Remove_History(journal);
    else if (!Writer_Runs(run))
      all.push_back({journal, left.last, left.bytes});
  }
  std::sort(all.begin(), all.end(), [](const LeftBehind& a, const LeftBehind& b) { return a.last > b.last; });
  return all;
}

}  // namespace

void Clear_Histories() {
  constexpr int longestDays = 60, certainDays = 7;
  constexpr qint64 mostLeft = qint64{1} << 30;
  qint64 bytes = 0;
  for (const LeftBehind& left : All_Left_Behind()) {
    bytes += left.bytes;
    const qint64 days = left.last.daysTo(QDateTime::currentDateTime());
    if (days > (bytes > mostLeft ? certainDays : longestDays)) Remove_History(left.journal);
  }
}

void Keep_Former_Table(const QString& step) {
  if (!history.journal) return;
  const QString file = Former_File(history.path);
  QFile::remove(file);
  history.pending = step;
  history.pendingUser = Tbl.DBGrid1.Caption;
  if (!QDir().mkpath(QFileInfo(file).path()) || !QFile::copy(Find_File(TableFile), file)) QFile::remove(file);
}

void Write_Without_Step(const std::function<void()>& work) {
  const ForNow<bool> quiet(history.noStep, true);
  work();
}

void Drop_Steps_Ahead() {
  if (Is_Ours(history.journal.get())) history.journal->Drop_Ahead();
}

int Step_Count() { return Is_Ours(history.journal.get()) ? history.journal->Count() : 0; }
int Step_Position() { return Is_Ours(history.journal.get()) ? history.journal->Position() : 0; }
JournalStep Step_At(int step) { return history.journal->Step(step); }

bool History_Was_Interrupted() { return std::exchange(history.interrupted, false); }

QString Lost_History() {
  const QString fault = history.journal ? history.journal->Fault() : QString();
  if (fault == history.told) return {};
  history.told = fault;
  return fault;
}

// Walking ------------------------------------------------------------------------------------------------------------

namespace {

// Rows and columns are other ones now.
void Take_Over(const WalkResult& result) {
  if (result.columnsChanged) {
    rsEntries = dbEntries->OpenRecordset(mapData);
    Tbl.HasUserColumns = rsEntries->Fields().size() > static_cast<size_t>(column::fixedCount);
    rsEntries->MoveLast();
  }
  Tbl.Tag = TableTag::Dirty;
  if (Map.CurBookmark.isEmpty() || !rsEntries->HasRow(Map.CurBookmark)) {
    rsEntries->MoveLast();
    Map.CurBookmark = rsEntries->Position() >= 0 ? rsEntries->Bookmark() : QString();
  }
  events.TableChanged.Emit();
  events.CurrentRowChanged.Emit();
}

void Need_Journal() {
  if (!Is_Ours(history.journal.get()) || !rsEntries)
    Raise(errors::databaseNotFound, QStringLiteral("Es gibt keinen Verlauf."));
  if (rsEntries->Editing()) rsEntries->CancelUpdate();
}

}  // namespace

WalkResult Go_To_Step(int position) {
  Need_Journal();
  const WalkResult result = history.journal->Walk_To(position);
  Take_Over(result);
  return result;
}

HistoryMark Mark_Here() {
  if (!history.journal) return {};
  return {history.path, history.journal->State()};
}

bool Is_Reached(const HistoryMark& mark) {
  return Is_Ours(history.journal.get()) && mark.journal == history.path && history.journal->Reaches(mark.state);
}

bool Lies_Behind(const HistoryMark& mark, int step) {
  return Is_Reached(mark) && history.journal->Lies_Behind(mark.state, step);
}

void Bring_Back(Database& copy, const HistoryMark& mark) {
  if (!Is_Reached(mark)) Raise(errors::dataChanged, QStringLiteral("Der Verlauf reicht nicht so weit zurück."));
  history.journal->Bring_Back(copy, mark.state);
}

std::optional<int> Place_Of(const HistoryMark& mark) {
  if (!Is_Ours(history.journal.get()) || mark.journal != history.path) return {};
  const int place = history.journal->Place_Of(mark.state);
  if (place < 0 || place > history.journal->Position()) return {};
  return place;
}
