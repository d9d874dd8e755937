#pragma once
#include <QByteArray>
#include <QHash>
#include <QString>

// The log that waits beside a file ("-wal"): the pages of all transactions that were finished.
struct PageLog {
  quint32 pages = 0;  // pages of the file after the last transaction; 0: the log holds none
  int pageSize = 0;
  QHash<quint32, qint64> places;  // where the newest content of a page stands in the log
};
// Empty without a log, and up to where it stops making sense.
PageLog Read_Log(const QString& log);

// Do pages of the file lack that stand in the log neither? `head` are the first hundred bytes of the file. A last page
// that is there in part lacks.
bool Lacks_Pages(const QByteArray& head, qint64 fileSize, const PageLog& log);

// The file as it is with its log.
QByteArray Read_With_Log(const QString& file);
