#include "platform/files.h"

#include <sys/stat.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QStringDecoder>
#include <algorithm>
#include <array>
#include <cerrno>
#include <ctime>
#include <new>

#include "platform/error.h"

QString ProgramFolder;

namespace {
constexpr qint64 largestWhole = qint64{512} << 20;  // of files read at once; those of ours are a thousandth of it

// Names that look the same to the user are the same: in any case, and with umlauts in one character or in two.
QString Folded(const QString& name) { return name.normalized(QString::NormalizationForm_C).toCaseFolded(); }

// The names of a folder by what they look like. A path that is not there asks for every folder on its way, and a map
// with missing pictures asks for it at each redraw: so lists are kept as long as the folder's own time tells that
// nothing came or went. That time may be as coarse as on a memory stick: a list made soon after a change is not kept.
class FolderLists {
 public:
  QStringList Like(const QString& folder, const QString& folded) {
    struct stat info {};
    if (::stat(QFile::encodeName(folder).constData(), &info) != 0) return {};
    const auto kept = lists.constFind(folder);
    if (kept != lists.cend() && kept->Is_Of(info)) return kept->names.values(folded);
    List fresh{info.st_dev, info.st_ino, info.st_mtim, {}};
    const timespec before = Now();
    for (const QString& name :
         QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot))
      fresh.names.insert(Folded(name), name);
    const QStringList found = fresh.names.values(folded);
    if (lists.size() >= mostLists) lists.clear();
    lists.remove(folder);
    if (before.tv_sec - info.st_mtim.tv_sec > coarsestSeconds) lists.insert(folder, std::move(fresh));
    return found;
  }

 private:
  static constexpr qsizetype mostLists = 64;
  static constexpr time_t coarsestSeconds = 3;
  struct List {
    dev_t device = 0;
    ino_t number = 0;
    timespec changed{};
    QMultiHash<QString, QString> names;
    bool Is_Of(const struct stat& info) const {
      return device == info.st_dev && number == info.st_ino && changed.tv_sec == info.st_mtim.tv_sec &&
             changed.tv_nsec == info.st_mtim.tv_nsec;
    }
  };
  static timespec Now() {
    timespec now{};
    ::clock_gettime(CLOCK_REALTIME, &now);
    return now;
  }
  QHash<QString, List> lists;
};

FolderLists& Folder_Lists() {
  static FolderLists lists;
  return lists;
}

// The rest of the path below a folder that is there; every branch is tried, the exact name first.
QString Find_Below(const QString& folder, const QStringList& names, qsizetype index) {
  if (index == names.size()) return folder;
  const QString base = folder.endsWith(u'/') || folder.isEmpty() ? folder : folder + u'/';
  const QString& wanted = names[index];
  if (QFileInfo::exists(base + wanted)) {
    const QString found = Find_Below(base + wanted, names, index + 1);
    if (!found.isEmpty()) return found;
  }
  const QString folded = Folded(wanted);
  for (const QString& name : Folder_Lists().Like(base.isEmpty() ? QStringLiteral(".") : base, folded)) {
    if (name == wanted) continue;
    const QString found = Find_Below(base + name, names, index + 1);
    if (!found.isEmpty()) return found;
  }
  return {};
}

bool Matches(QStringView name, QStringView pattern) {
  qsizetype n = 0, p = 0, star = -1, mark = 0;
  while (n < name.size()) {
    if (p < pattern.size() && pattern[p] == u'*') {
      star = p++;
      mark = n;
    } else if (p < pattern.size() && (pattern[p] == u'?' || pattern[p] == name[n])) {
      ++p;
      ++n;
    } else if (star >= 0) {
      p = star + 1;
      n = ++mark;
    } else {
      return false;
    }
  }
  while (p < pattern.size() && pattern[p] == u'*') ++p;
  return p == pattern.size();
}

// Windows-1252: bytes 128..159; all others are their own code points. The five empty places stay what they are.
constexpr std::array<char16_t, 32> upperCodes = {0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                                 0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
                                                 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                                 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

}  // namespace

QString Clean_Path(const QString& path) {
  QString clean = path;
  return clean.replace(u'\\', u'/');
}

void Split_Path(QString& path, QString& folder) {
  path = Clean_Path(path);
  const qsizetype cut = path.lastIndexOf(u'/');
  folder = cut < 0 ? ProgramFolder + u'/' : path.left(cut + 1);
  path = path.mid(cut + 1);
}

QString Find_File(const QString& path) {
  if (path.isEmpty()) return {};
  const QString clean = Clean_Path(path);
  if (QFileInfo::exists(clean)) return clean;
  if (QFile::encodeName(clean).size() > longestPath) return {};
  // Steps up and back again would have every folder on the way read once more for each of them.
  const QString direct = QDir::cleanPath(clean);
  const QString root = direct.startsWith(u'/') ? QStringLiteral("/") : QString();
  return Find_Below(root, direct.split(u'/', Qt::SkipEmptyParts), 0);
}

QString Path_Flaw(const QString& path, int longest, int longestOfName) {
  constexpr int shownEnd = 80;
  const QString whole = QFileInfo(Clean_Path(path)).absoluteFilePath();
  const auto told = [](const QString& what, qsizetype bytes, int most, const QString& text) {
    return QStringLiteral("%1 ist zu lang: %2 Zeichen, Umlaute doppelt gezählt; höchstens %3 sind möglich:\n%4")
        .arg(what)
        .arg(bytes)
        .arg(most)
        .arg(text.size() > shownEnd ? QStringLiteral("...") + text.right(shownEnd) : text);
  };
  if (const qsizetype bytes = QFile::encodeName(whole).size(); bytes > longest)
    return told(QStringLiteral("Der Pfad der Datei"), bytes, longest, whole);
  for (const QString& name : whole.split(u'/', Qt::SkipEmptyParts))
    if (const qsizetype bytes = QFile::encodeName(name).size(); bytes > longestOfName)
      return told(QStringLiteral("Ein Name im Pfad der Datei"), bytes, longestOfName, name);
  return {};
}

QString Strange_File(const QString& path) {
  struct stat info {};
  if (::stat(QFile::encodeName(Clean_Path(path)).constData(), &info) != 0 || S_ISREG(info.st_mode)) return {};
  if (S_ISDIR(info.st_mode)) return QStringLiteral("es ist keine Datei, sondern ein Ordner.");
  if (S_ISFIFO(info.st_mode)) return QStringLiteral("es ist keine Datei, sondern eine Leitung zwischen Programmen.");
  if (S_ISSOCK(info.st_mode)) return QStringLiteral("es ist keine Datei, sondern ein Anschluss eines Programms.");
  return QStringLiteral("es ist keine Datei, sondern ein Gerät.");
}

bool File_Exists(const QString& path) {
  const QString found = Find_File(path);
  return !found.isEmpty() && QFileInfo(found).isFile();
}

QStringList Find_Files(const QString& folder, const QString& pattern) {
  const QString clean = Clean_Path(folder);
  const QString found = Find_File(clean.isEmpty() ? QStringLiteral(".") : clean);
  if (found.isEmpty()) return {};
  const QString folded = pattern == QLatin1String("*.*") ? QStringLiteral("*") : Folded(pattern);
  const QString base = found.endsWith(u'/') ? found : found + u'/';
  QStringList names = QDir(found).entryList(QDir::Files | QDir::Hidden | QDir::System, QDir::Unsorted);
  names.removeIf([&](const QString& name) { return !Matches(Folded(name), folded); });
  std::sort(names.begin(), names.end(), [](const QString& a, const QString& b) {
    const int order = Folded(a).compare(Folded(b));
    return order != 0 ? order < 0 : a < b;
  });
  for (QString& name : names) name.prepend(base);
  return names;
}

QString From_1252(const QByteArray& bytes) {
  QString text(bytes.size(), Qt::Uninitialized);
  for (qsizetype i = 0; i < bytes.size(); ++i) {
    const auto byte = static_cast<unsigned char>(bytes[i]);
    text[i] = QChar(byte >= 0x80 && byte < 0xA0 ? upperCodes[byte - 0x80U] : static_cast<char16_t>(byte));
  }
  return text;
}

QString Decode_Text(const QByteArray& bytes) {
  QStringDecoder decoder(QStringDecoder::Utf8, QStringConverter::Flag::Stateless);
  const QString text = decoder(bytes);
  return decoder.hasError() ? From_1252(bytes) : text;
}
QByteArray To_1252(const QString& text) {
  QByteArray bytes;
  bytes.reserve(text.size());
  for (const QChar c : text.normalized(QString::NormalizationForm_C)) {
    const char16_t code = c.unicode();
    const auto* const upper = std::find(upperCodes.begin(), upperCodes.end(), code);
    if (upper != upperCodes.end())
      bytes.append(static_cast<char>(0x80 + (upper - upperCodes.begin())));
    else if (code < 0x80 || (code >= 0xA0 && code < 0x100))
      bytes.append(static_cast<char>(code));
    else if (!c.isLowSurrogate())
      bytes.append('?');
  }
  return bytes;
}

QByteArray Read_Bytes(const QString& path) {
  const QString found = Find_File(path);
  if (found.isEmpty()) Raise(errors::fileNotFound);
  const auto raiseNoAccess = [&](const QString& why) {
    Raise(errors::noPermission, QStringLiteral("Auf \"%1\" kann nicht zugegriffen werden: %2").arg(found, why));
  };
  if (const QString strange = Strange_File(found); !strange.isEmpty()) raiseNoAccess(strange);
  QFile file(found);
  if (!file.open(QIODevice::ReadOnly)) raiseNoAccess(QStringLiteral("das Recht dazu fehlt."));
  const auto raiseTooLarge = [&] {
    Raise(errors::outOfMemory, QStringLiteral("Die Datei \"%1\" ist zu groß, um sie als Ganzes zu lesen: %2 MB.")
                                   .arg(found)
                                   .arg(file.size() >> 20));
  };
  if (file.size() > largestWhole) raiseTooLarge();
  try {
    const QByteArray bytes = file.readAll();
    if (file.error() != QFileDevice::NoError) raiseNoAccess(QStringLiteral("das Lesen bricht ab."));
    return bytes;
  } catch (const std::bad_alloc&) {
    raiseTooLarge();
    return {};
  }
}

QStringList Read_Lines(const QString& path) {
  const QString text = Decode_Text(Read_Bytes(path));
  QStringList lines;
  qsizetype start = 0;
  for (qsizetype i = 0; i < text.size(); ++i) {
    if (text[i] != u'\r' && text[i] != u'\n') continue;
    lines.append(text.mid(start, i - start));
    if (text[i] == u'\r' && i + 1 < text.size() && text[i + 1] == u'\n') ++i;
    start = i + 1;
  }
  if (start < text.size()) lines.append(text.mid(start));
  return lines;
}

void Write_Lines(const QString& path, const QStringList& lines) {
  QByteArray bytes;
  for (const QString& line : lines) bytes += To_1252(line) + "\r\n";
  Replace_File(path, bytes);
}
