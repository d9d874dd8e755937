#pragma once
#include <QHash>
#include <optional>

#include "platform/database_inner.h"
#include "platform/journal.h"
#include "platform/journal_file.h"
#include "platform/row_changes.h"

// The inside of the journal, shared by its own files only.

namespace journal_inner {

// The columns of a table as SQLite gives them to the hook.
struct Followed {
  QByteArray names;  // as they stand in a list
  QStringList columns;
  int number = -1;  // in the list that is being written
  quint64 list = 0;
  bool main = false;
};

// Plays lists of changes on an open database.
class Player {
 public:
  enum class Way { Forwards, Back };
  // With a list to write into, the inverse of what is played is put there.
  Player(database_inner::Engine& engine, Way way, const QString& mainTable, WalkResult& result,
         ChangeWriter* echo = nullptr);
  ~Player();
  Player(const Player&) = delete;
  Player& operator=(const Player&) = delete;
  void Play(const QByteArray& list);

  bool keysChanged = false;                         // rows came, went or changed their places
  QHash<QString, std::vector<qint64>> updatedRows;  // by table

 private:
  void Play_One(const ChangeReader& list, const StoredChange& change);
  void Echo(const ChangeReader& list, const StoredChange& change);
  void Insert(const TableNames& table, const StoredChange& change);
  void Delete(const TableNames& table, const StoredChange& change);
  void Update(const TableNames& table, const StoredChange& change);
  void Make(const StoredChange& change);
  void Drop(const StoredChange& change);
  void Add_Column(const StoredChange& change);
  void Remove_Column(const StoredChange& change);
  void Touch(const TableNames& table, const StoredChange& change, bool there);
  sqlite3_stmt* Prepared(const QByteArray& sql);
  void Run(sqlite3_stmt* statement);

  database_inner::Engine& engine;
  const bool back;
  const QString mainTable;
  WalkResult& result;
  ChangeWriter* echo;
  QHash<QByteArray, sqlite3_stmt*> statements;
};

// What is no step: these columns of the rows of which that is true.
struct LeftOut {
  std::function<bool(const TableDef& table, const std::vector<RawValue>& row)> has;
  QStringList columns;
};
// What the second lacks and has against the first, as a list.
void Write_Difference(database_inner::Engine& before, database_inner::Engine& now, ChangeWriter& writer, int& rows,
                      const LeftOut& isLeftOut);
// The rows of a table as rows that go or come.
int Write_All_Rows(database_inner::Engine& engine, const TableDef& table, ChangeKind kind, ChangeWriter& writer);
QString Statement_Of_Table(database_inner::Engine& engine, const QString& table);
std::vector<QByteArray> Column_Names(const TableDef& table);

[[noreturn]] void Raise_Data_Changed();

}  // namespace journal_inner

struct Journal::Inner final : database_inner::Recorder {
  Inner(const QString& path, const QString& main) : file(path), mainTable(main) {}

  void Before_Statement() override;
  void Statement_Failed() override;
  void Before_Commit() override;
  void Committed() override;
  void Taken_Back() override;
  void Dropping(const TableDef& table) override;
  void Created(const TableDef& table) override;
  void Column_Added(const TableDef& table, const FieldInfo& column) override;
  void Column_Goes(const TableDef& table, int place) override;
  void Lost_Track() override { lost = true; }

  static void Hook(void* self, sqlite3* db, int operation, const char* schema, const char* table, sqlite3_int64 key,
                   sqlite3_int64 newKey);
  void Row_Changed(int operation, const QByteArray& table, qint64 key, qint64 newKey);
  void Read_Row(int operation, int width);
  bool Has_Left_Out(const std::vector<RawValue>& row) const;  // is it a row with columns that are no step?
  void Note(int operation, const journal_inner::Followed& table, qint64 key, qint64 newKey);
  void Note_Row(int operation, const QStringList& columns, bool first);
  journal_inner::Followed* Followed_Table(const QByteArray& name);
  // A step of the journal's own while it lives.
  struct OwnStep {
    OwnStep(Inner& inner, const QString& name) : it(inner) { it.ownName = name; }
    ~OwnStep() {
      it.ownName.reset();
      it.contextBefore.clear();
      it.contextAfter.clear();
    }
    OwnStep(const OwnStep&) = delete;
    OwnStep& operator=(const OwnStep&) = delete;
    Inner& it;
  };

  void Store_Record();
  void Flush_If_Large();
  void Ask_At_Gate();
  void Give_Up_Steps(const QString& reason);
  void Index_Steps();
  quint64 Step_Number();
  void Begin_Facts();
  int Records_Of(int position) const {
    return position == 0 ? 0 : static_cast<int>(stepEnds[static_cast<size_t>(position) - 1]);
  }
  int Position() const;
  WalkResult Walk(int fromRecords, int toRecords, quint32 state);
  void Put_State(quint32 state);  // of the transaction that runs
  void Play_Back(size_t record, WalkResult& result);
  quint32 State_After(int record) const;
  int Record_Of(quint32 state) const;  // so many records lead to it, -1 if it lies ahead or is none

  JournalFile file;
  QString mainTable, fault;
  std::function<QString(const QString&, const StepFacts&)> namer;
  char leftOutSign = 0;
  QStringList leftOut;

  std::shared_ptr<database_inner::Engine> engine;
  int records = 0;                     // of the file that are in the database
  std::vector<size_t> stepEnds;        // behind the last record of each step
  quint32 stateNow = 0;                // number in the database
  std::optional<quint32> stateBefore;  // of the transaction that stores a new one
  bool justRead = false;               // from a file that a former program left
  bool quiet = false;                  // changes are ours
  bool lost = false;                   // something was changed that cannot be followed

  ChangeWriter writer;
  quint64 list = 1;  // counts the lists of the writer
  qsizetype mark = 0;
  int rows = 0;
  bool hasParts = false;
  bool stored = false;  // the record of the transaction that is being committed is in the file
  QHash<QByteArray, journal_inner::Followed> tables;
  std::vector<RawValue> before, after;  // values of the row that is being changed
  std::vector<ChangedCell> cells;

  std::function<RunningStep()> asked;
  std::function<void(int ahead)> gate;
  bool atGate = false, passed = false;  // passed: asked for the transaction that runs
  std::optional<QString> ownName;       // of a step that is ours
  RunningStep running;                  // when the last change came
  quint64 storedNumber = 0;             // of the step the last record belongs to
  StepFacts facts;
  bool factsDue = true;  // the next change is the first of its transaction
  QString contextBefore, contextAfter;
};
