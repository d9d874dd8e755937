#pragma once
#include <QByteArray>
#include <QString>
#include <memory>

// A lock that one program holds on a name: it ends with the program, however that ends, so that none is ever stale.
class FileLock {
 public:
  // Null while somebody else holds it, or where the file cannot be made.
  static std::unique_ptr<FileLock> Try(const QString& path);
  ~FileLock();  // takes the file away
  FileLock(const FileLock&) = delete;
  FileLock& operator=(const FileLock&) = delete;

 private:
  FileLock(QByteArray file, int descriptor);
  QByteArray name;
  int fd;
};
