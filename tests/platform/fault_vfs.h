#pragma once
#include <QByteArray>
#include <QString>

// Stands between SQLite and the disk while it lives: counts flushes, fails writes, cuts the power.
class FaultVfs {
 public:
  // What is not flushed is at risk in files of the folder `watched`.
  explicit FaultVfs(const QString& watched = {});
  ~FaultVfs();
  FaultVfs(const FaultVfs&) = delete;
  FaultVfs& operator=(const FaultVfs&) = delete;

  int syncs = 0;
  qint64 room = -1;       // bytes until the disk is full, -1: it never is
  int writeError = 0;     // result of every write and flush instead
  bool readOnly = false;  // files can be opened for reading only

  // The disk after a cut at this moment: what was flushed, and of the later writes those that `seed` picks, whole or
  // cut at a sector. Puts the files into `folder` under their names.
  void Cut_Power(const QString& folder, quint32 seed) const;
};
