#include "platform/file_lock.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QFile>
#include <utility>

namespace {

// The holder before may have taken the name away between our opening and our locking.
bool Still_Named(const QByteArray& name, int fd) {
  struct stat there {
  }, held{};
  return ::stat(name.constData(), &there) == 0 && ::fstat(fd, &held) == 0 && there.st_dev == held.st_dev &&
         there.st_ino == held.st_ino;
}

}  // namespace

FileLock::FileLock(QByteArray file, int descriptor) : name(std::move(file)), fd(descriptor) {}

std::unique_ptr<FileLock> FileLock::Try(const QString& path) {
  const QByteArray name = QFile::encodeName(path);
  for (;;) {
    const int fd = ::open(name.constData(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0666);
    if (fd < 0) return nullptr;
    if (::flock(fd, LOCK_EX | LOCK_NB) != 0) {
      ::close(fd);
      return nullptr;
    }
    if (Still_Named(name, fd)) return std::unique_ptr<FileLock>(new FileLock(name, fd));
    ::close(fd);
  }
}

FileLock::~FileLock() {
  if (Still_Named(name, fd)) ::unlink(name.constData());
  ::close(fd);
}
