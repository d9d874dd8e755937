#pragma once
#include <QByteArray>
#include <QString>
#include <vector>

// The file of a journal: records one behind the other, only ever appended to or cut at its end. A record that a kill or
// a full disk left unfinished is none; whatever stands behind it goes.

// One stored transaction.
struct JournalRecord {
  quint64 step = 0;   // records with the same number are one step
  qint64 when = 0;    // milliseconds since 1970, UTC
  quint32 state = 0;  // of the database after it: a number that stands in both
  int rows = 0;       // changes of rows
  QString name;
  QString contextBefore, contextAfter;  // what its owner keeps with it; empty where it stays as it was
};

class JournalFile {
 public:
  explicit JournalFile(const QString& path);  // nothing is made or read yet
  ~JournalFile();
  JournalFile(const JournalFile&) = delete;
  JournalFile& operator=(const JournalFile&) = delete;

  // Reads what is there, up to where it stops making sense. False without a file, or with one that is none of ours.
  bool Read();
  // Begins a new one: the states of a database before the first record. The former one stays until something is
  // written.
  void Begin(quint32 foundState, quint32 firstState);

  // A list of changes of the record that is being made; may come in parts. Errors 61, 70: nothing of it stays.
  void Add_Part(const QByteArray& changes);
  // The rest of it, and its end: at one go.
  void Add_End(const JournalRecord& record, const QByteArray& lastPart = {});
  void Give_Up_Record();            // the parts of one that gets no end
  void Cut(size_t records);         // those from that number on
  void Drop_First(size_t records);  // the oldest; the file is written anew
  void Remove();                    // the file itself

  const std::vector<JournalRecord>& Records() const { return records; }
  quint32 First_State() const { return firstState; }  // before the first record
  quint32 Found_State() const { return foundState; }  // the same while nothing else was written into the database
  // The lists of a record, in the order they were made. Raises 3343 if they are damaged, 53 if they are gone.
  std::vector<QByteArray> Changes(size_t record) const;
  qint64 Bytes() const { return end; }
  const QString& Path() const { return path; }

 private:
  void Open_For_Writing();
  void Append(const QByteArray& bytes);
  void Write(const QByteArray& bytes);
  void Close();
  qint64 Read_Frame(qint64 at, char& kind, QByteArray* content) const;
  qint64 Start_Of(size_t record) const;

  QString path;
  int fd = -1;
  bool fresh = true;  // nothing of this one is on the disk
  quint32 foundState = 0, firstState = 0;
  qint64 end = 0;       // behind the last record
  qint64 partsEnd = 0;  // behind the parts of the one that is being made
  std::vector<JournalRecord> records;
  std::vector<qint64> ends;
};
