#pragma once
#include <QString>
#include <QStringList>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

#include "platform/database.h"

// The journal of a database: every change of its rows, tables and columns, step by step, so that each can be taken back
// and brought again. It knows rows, not what they mean. It lies in a file of its own; a number in the head of the
// database tells which of the journal's states the database is in, so that both fit together however a program ends.

// What a step has changed, for naming it.
struct StepFacts {
  int inserted = 0, changed = 0, removed = 0;                           // rows of the main table
  int otherRows = 0;                                                    // of all other tables
  QStringList tablesMade, tablesDropped, columnsAdded, columnsRemoved;  // the first few
  // Do all changes of the main table concern one row? Then its columns before and after; empty where it was not there.
  bool oneRow = false;
  qint64 key = 0;
  using Row = std::vector<std::pair<QString, Value>>;
  Row before, after;
};

// What the user is doing: transactions of one number are one step, those of number 0 are one each.
struct RunningStep {
  quint64 number = 0;  // never given twice
  QString name;
};

struct JournalStep {
  QString name;
  qint64 when = 0;  // milliseconds since 1970, UTC
  int rows = 0;
};

// A row of the main table that a walk has touched.
struct TouchedRow {
  qint64 key = 0;
  bool there = true;        // it is in the table now
  StepFacts::Row lastSeen;  // of one that is not: what stood in it
};
struct WalkResult {
  std::vector<TouchedRow> rows;  // the first few of those the last step of the walk touched
  QStringList tables;            // other tables it touched
  int steps = 0;                 // so many were crossed
  bool columnsChanged = false;   // tables or columns came or went: recordsets have to be opened again
  QString context;               // what the owner kept with a step that was crossed; empty: nothing
};

class Journal {
 public:
  // Nothing is read or made yet.
  Journal(const QString& file, const QString& mainTable);
  ~Journal();
  Journal(const Journal&) = delete;
  Journal& operator=(const Journal&) = delete;

  // Asked when a step is stored, with the name it was begun with ("" for none).
  void Set_Namer(std::function<QString(const QString& name, const StepFacts& facts)> namer);
  // Asked when something is changed. Without it every transaction is a step.
  void Set_Running(std::function<RunningStep()> running);
  // Asked before something new is stored while so many steps lie ahead, which go then. It refuses by an error.
  void Set_Gate(std::function<void(int ahead)> gate);
  // Columns whose changes are no steps, of the rows of the main table whose first column begins with that sign: a row
  // may get another key at any time.
  void Leave_Out(char sign, const QStringList& columns);

  // Takes over what a former program left; false if there is nothing that can be read.
  bool Read();
  // Follows the changes of an open database from now on. False if it is in none of the journal's states: then nothing
  // is followed before Begin_Anew or Add_Difference.
  bool Follow(Database& database);
  void Begin_Anew();      // without any step, from what the database holds now
  void Leave();           // before the database is closed; the steps stay
  void Remove();          // the file goes as well
  bool Follows() const;   // is a database being followed?
  QString Fault() const;  // why steps were lost, in German; empty if none were
  // A copy of the database as it stands goes back to a former state, which is one of the journal's. 3197 where it is
  // none, or the copy does not fit.
  void Bring_Back(Database& copy, quint32 state) const;
  bool Reaches(quint32 state) const;                // is it one of them, and not ahead?
  bool Lies_Behind(quint32 state, int step) const;  // and behind the end of that many steps?
  // The number of the state the database is in. Two databases with the same one hold the same rows.
  quint32 State() const;
  int Place_Of(quint32 state) const;            // steps before it, -1 if it lies at the end of none of them
  static quint32 State_Of(Database& database);  // of any; 0 for one that was never followed

  int Count() const;                 // of steps
  int Position() const;              // so many of them are in the database
  JournalStep Step(int step) const;  // counted from 0
  qint64 Bytes() const;              // of the file

  // Goes to the state after so many steps, in one transaction. An error leaves everything as it was: 3197 where the
  // rows are not those that the steps left, 3343 for a damaged file, 61 and others of the database.
  WalkResult Walk_To(int position);
  // One step that goes back to the state after so many steps: what is taken back can be brought again as a whole.
  WalkResult Step_Back_To(int position, const QString& name);

  // The database that is followed has other content than it had: what it lacks and has against the former one becomes a
  // step. The contexts belong to the owner (WalkResult::context).
  void Add_Difference(Database& former, const QString& name, const QString& contextBefore = {},
                      const QString& contextAfter = {});

  void Drop_Ahead();  // the steps that were taken back
  // Drops the oldest steps of a file that is larger, all but so many.
  void Shrink(qint64 bytes, int leastSteps);

 private:
  struct Inner;
  std::unique_ptr<Inner> inner;
};

namespace errors {
inline constexpr int dataChanged = 3197;
}
