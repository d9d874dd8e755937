#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <utility>

#include "platform/error.h"
#include "platform/files.h"
#include "platform/system_fault.h"

// Everything that changes files. Content is written under a name aside in the same folder, so that a full disk, a kill
// or a power cut leaves the former file whole.

std::function<int(const QString& path, qint64 bytes)> File_Write_Fault;

namespace {
[[noreturn]] void Raise_System(int code) {
  switch (code) {
    case ENOENT:
      Raise(errors::fileNotFound);
    case ENAMETOOLONG:
      Raise(errors::pathNotFound, QStringLiteral("Der Pfad oder ein Name darin ist zu lang."));
    case ENOTDIR:
    case ELOOP:
      Raise(errors::pathNotFound);
    case ENOSPC:
    case EDQUOT:
    case EFBIG:
      Raise(errors::diskFull);
    case EACCES:
    case EPERM:
    case EROFS:
    case EBUSY:
    case ETXTBSY:
    case EISDIR:
      Raise(errors::noPermission);
    default:
      Raise(errors::noPermission, System_Fault(code));
  }
}

// A descriptor that closes itself.
class Descriptor {
 public:
  explicit Descriptor(int number) : fd(number) {}
  ~Descriptor() {
    if (fd >= 0) ::close(fd);
  }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  int Number() const { return fd; }
  void Close() {
    if (::close(std::exchange(fd, -1)) != 0) Raise_System(errno);
  }

 private:
  int fd;
};

QString Folder_Of(const QString& path) {
  const qsizetype cut = path.lastIndexOf(u'/');
  if (cut < 0) return QStringLiteral(".");
  return cut == 0 ? QStringLiteral("/") : path.left(cut);
}

// What is no ordinary file is neither read nor replaced: a pipe would wait for its other end, and a device would be
// gone.
void Refuse_Strange_File(const QString& path) {
  if (const QString flaw = Strange_File(path); !flaw.isEmpty())
    Raise(errors::noPermission, QStringLiteral("Auf \"%1\" kann nicht zugegriffen werden: %2").arg(path, flaw));
}

// The file that a write goes to: the one that is there in any case, behind a link the linked file, else the new name in
// the folder that is there.
QString Target_Of(const QString& path) {
  const QString clean = Clean_Path(path);
  const QString found = Find_File(clean);
  if (!found.isEmpty()) {
    if (QFileInfo(found).isDir()) Raise(errors::noPermission);
    Refuse_Strange_File(found);
    const QString real = QFileInfo(found).canonicalFilePath();
    return real.isEmpty() ? found : real;
  }
  if (QFileInfo(clean).isSymLink()) return QFileInfo(clean).symLinkTarget();
  const QString folder = Find_File(Folder_Of(clean));
  if (folder.isEmpty() || !QFileInfo(folder).isDir()) Raise(errors::pathNotFound);
  return (folder.endsWith(u'/') ? folder : folder + u'/') + clean.mid(clean.lastIndexOf(u'/') + 1);
}

// A file under construction; it vanishes unless it is put in place.
class AsideFile {
 public:
  explicit AsideFile(const QString& targetPath)
      : target(targetPath), name(QFile::encodeName(Aside_Name(targetPath))), file(Open(name)) {
    struct stat info {};
    const QByteArray encoded = QFile::encodeName(target);
    if (::stat(encoded.constData(), &info) != 0) return;
    if (::access(encoded.constData(), W_OK) != 0) Fail(errno);
    Take_Mode(info.st_mode);
  }
  ~AsideFile() {
    if (!placed) ::unlink(name.constData());
  }
  AsideFile(const AsideFile&) = delete;
  AsideFile& operator=(const AsideFile&) = delete;

  void Take_Mode(mode_t mode) {
    // Some file systems know no modes: then the default holds.
    [[maybe_unused]] const int ignored = ::fchmod(file.Number(), (mode & 0777U) | S_IRUSR | S_IWUSR);
  }

  void Write(const char* bytes, qint64 count) {
    if (const int fault = File_Write_Fault ? File_Write_Fault(target, count) : 0; fault != 0) Raise(fault);
    while (count > 0) {
      const ssize_t written = ::write(file.Number(), bytes, static_cast<size_t>(count));
      if (written < 0 && errno == EINTR) continue;
      if (written < 0) Raise_System(errno);
      bytes += written;
      count -= written;
    }
  }

  void Put_In_Place() {
    if (::fsync(file.Number()) != 0 && errno != EINVAL) Raise_System(errno);
    file.Close();
    if (::rename(name.constData(), QFile::encodeName(target).constData()) != 0) Raise_System(errno);
    placed = true;
    // The new name itself must outlast a power cut as well.
    const Descriptor folder(
        ::open(QFile::encodeName(Folder_Of(target)).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (folder.Number() >= 0) ::fsync(folder.Number());
  }

 private:
  static int Open(const QByteArray& name) {
    const int number = ::open(name.constData(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC | O_NOFOLLOW, 0666);
    if (number < 0) Raise_System(errno == ENOENT ? ENOTDIR : errno);
    return number;
  }
  [[noreturn]] void Fail(int code) {
    ::unlink(name.constData());
    Raise_System(code);
  }

  QString target;
  QByteArray name;
  Descriptor file;
  bool placed = false;
};

bool Same_File(const QByteArray& a, const QByteArray& b) {
  struct stat first {
  }, second{};
  return ::stat(a.constData(), &first) == 0 && ::stat(b.constData(), &second) == 0 && first.st_dev == second.st_dev &&
         first.st_ino == second.st_ino;
}

QString Source_Of(const QString& path) {
  const QString found = Find_File(path);
  if (found.isEmpty() || QFileInfo(found).isDir()) Raise(errors::fileNotFound);
  return found;
}

QString Content_Of(const QString& path) {
  const QString found = Source_Of(path);
  Refuse_Strange_File(found);
  return found;
}
}  // namespace

QString Aside_Name(const QString& target) {
  static std::atomic<int> counter = 0;
  return QStringLiteral("%1/.flurax-%2-%3.neu").arg(Folder_Of(Clean_Path(target))).arg(::getpid()).arg(++counter);
}

void Clear_Stale_Asides(const QString& folder) {
  // The second form is that of earlier versions.
  static const QRegularExpression pattern(
      QStringLiteral("^(?:\\.flurax-([0-9]+)-[0-9]+\\.neu|.*\\.(?:mdb|neu)\\.([0-9]+)~)(?:-wal|-journal|-shm)?$"),
      QRegularExpression::CaseInsensitiveOption);
  const QDir dir(folder);
  for (const QString& name : dir.entryList(QDir::Files | QDir::Hidden | QDir::System)) {
    const auto match = pattern.match(name);
    if (!match.hasMatch()) continue;
    const int writer = (match.captured(1) + match.captured(2)).toInt();
    const bool runs = writer > 0 && writer != ::getpid() && (::kill(writer, 0) == 0 || errno != ESRCH);
    if (!runs) ::unlink(QFile::encodeName(dir.filePath(name)).constData());
  }
}

void Replace_File(const QString& path, const QByteArray& content) {
  AsideFile aside(Target_Of(path));
  aside.Write(content.constData(), content.size());
  aside.Put_In_Place();
}

void Write_At(const QString& path, qint64 position, const QByteArray& bytes) {
  const QString found = Content_Of(path);
  const Descriptor file(::open(QFile::encodeName(found).constData(), O_WRONLY | O_CLOEXEC));
  if (file.Number() < 0) Raise_System(errno);
  if (const int fault = File_Write_Fault ? File_Write_Fault(found, bytes.size()) : 0; fault != 0) Raise(fault);
  qint64 done = 0;
  while (done < bytes.size()) {
    const ssize_t written = ::pwrite(file.Number(), bytes.constData() + done, static_cast<size_t>(bytes.size() - done),
                                     static_cast<off_t>(position + done));
    if (written < 0 && errno == EINTR) continue;
    if (written < 0) Raise_System(errno);
    done += written;
  }
  if (::fsync(file.Number()) != 0 && errno != EINVAL) Raise_System(errno);
}

void File_Copy(const QString& source, const QString& target) {
  const QByteArray from = QFile::encodeName(Content_Of(source));
  const QString to = Target_Of(target);
  if (Same_File(from, QFile::encodeName(to))) return;
  const Descriptor file(::open(from.constData(), O_RDONLY | O_CLOEXEC));
  if (file.Number() < 0) Raise_System(errno);
  struct stat info {};
  if (::fstat(file.Number(), &info) != 0) Raise_System(errno);
  const bool isNew = !QFileInfo::exists(to);
  AsideFile aside(to);
  if (isNew) aside.Take_Mode(info.st_mode);
  QByteArray block(1 << 18, Qt::Uninitialized);
  for (;;) {
    const ssize_t count = ::read(file.Number(), block.data(), static_cast<size_t>(block.size()));
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) Raise_System(errno);
    if (count == 0) break;
    aside.Write(block.constData(), count);
  }
  aside.Put_In_Place();
}

void File_Rename(const QString& source, const QString& target) {
  const QString found = Source_Of(source);
  const QByteArray from = QFile::encodeName(found);
  const QString clean = Clean_Path(target);
  if (const QString taken = Find_File(clean); !taken.isEmpty() && !Same_File(from, QFile::encodeName(taken)))
    Raise(errors::fileExists);
  const QString folder = Find_File(Folder_Of(clean));
  if (folder.isEmpty() || !QFileInfo(folder).isDir()) Raise(errors::pathNotFound);
  const QString to = (folder.endsWith(u'/') ? folder : folder + u'/') + clean.mid(clean.lastIndexOf(u'/') + 1);
  if (::rename(from.constData(), QFile::encodeName(to).constData()) == 0) return;
  if (errno != EXDEV) Raise_System(errno);
  File_Copy(found, to);
  Kill(found);
}

void Kill(const QString& path) {
  if (::unlink(QFile::encodeName(Source_Of(path)).constData()) != 0) Raise_System(errno);
}

bool Kill_Quietly(const QString& path) {
  try {
    if (!Find_File(path).isEmpty()) Kill(path);
    return true;
  } catch (const Error&) {
    return false;
  }
}
