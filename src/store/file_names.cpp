#include "store/file_names.h"

#include <QDir>
#include <QDirIterator>
#include <QFileInfo>
#include <QStandardPaths>

#include "state/global_state.h"
#include "state/map_state.h"

namespace {
constexpr size_t maximumFaults = 8;

QString Wanted_Program_Folder() {
  const QString home = qEnvironmentVariable("FLURAX_HOME");
  const QString folder =
      home.isEmpty() ? QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + QLatin1String("/flurax")
                     : Clean_Path(home);
  return QDir::cleanPath(QDir(folder).absolutePath());
}

void Fill_With_Missing(const QString& folder, const QString& delivered) {
  const QDir source(delivered);
  QDirIterator files(delivered, QDir::Files | QDir::Hidden | QDir::NoDotAndDotDot, QDirIterator::Subdirectories);
  while (files.hasNext()) {
    const QString path = files.next();
    const QString target = folder + u'/' + source.relativeFilePath(path);
    if (!Find_File(target).isEmpty()) continue;
    if (!QDir().mkpath(QFileInfo(target).path())) Raise(errors::pathNotFound);
    File_Copy(path, target);
  }
}

bool Is_Allowed_Letter(QChar c) { return QStringView(u"_ÄÖÜßäöü").contains(c); }

// The fault of one character, or an empty reason.
NameFault Judge(QChar c, int position, qsizetype length, bool isWholePath) {
  const QString special = QStringLiteral("Dieses Sonderzeichen im Dateinamen ist nicht zulässig.");
  const char16_t code = c.unicode();
  if (Is_Allowed_Letter(c)) return {};
  if (c == u'.') {
    if (position == length - 3) return {};
    return {position,
            QStringLiteral("Ein Punkt ist nur am Ende des Dateinamens zulässig,\n"
                           "vor dem dreistelligen Typ der Datei: z.B. 'Karte.bmp'."),
            QStringLiteral("'.' Punkt")};
  }
  if (c == u':' && isWholePath && position == 2) return {};
  if ((code >= 58 && code <= 64) || (code >= 91 && code <= 96)) return {position, special, u'\'' + QString(c) + u'\''};
  if (code >= 48 && code <= 57 && position == 1) {
    return {position,
            QStringLiteral("Ziffern sind an dieser Stelle nicht zulässig.\n"
                           "Das erste Zeichen im Namen einer Datei oder\n"
                           "eines Ordners nuss ein Buchstabe sein."),
            c};
  }
  if (code < 48) return {position, special, c == u' ' ? QStringLiteral(" Leerzeichen") : QString(c)};
  return {};
}

// The file of that name in this very folder, found ignoring case; empty if there is none.
QString File_In(const QString& folder, const QString& name) {
  if (QFileInfo::exists(folder + name)) return folder + name;
  for (const QString& path : Find_Files(folder, name))
    if (Capitals(QFileInfo(path).fileName()) == Capitals(name)) return path;
  return {};
}

// The map that is meant by a path in capitals. The caption has lost the true spelling: the open map's path has it.
QString Real_Map(const QString& capitals) {
  const QString open = Clean_Path(MapFile);
  if (open.compare(capitals, Qt::CaseInsensitive) == 0 || Capitals(open) == capitals || open.toUpper() == capitals)
    return open;
  if (const QString found = Find_File(capitals); !found.isEmpty()) return found;
  const qsizetype cut = capitals.lastIndexOf(u'/');
  const QString folder = cut > 0 ? Find_File(capitals.left(cut)) : QString();
  return folder.isEmpty() ? capitals : folder + capitals.mid(cut);
}
}  // namespace

void Prepare_Program_Folder(const QString& delivered) {
  const QString folder = Wanted_Program_Folder();
  try {
    if (!QDir().mkpath(folder)) Raise(errors::pathNotFound);
    ProgramFolder = folder;
    const QString source = QFileInfo(delivered).canonicalFilePath();
    if (!source.isEmpty() && source != QFileInfo(folder).canonicalFilePath()) Fill_With_Missing(folder, source);
    if (!QFileInfo(folder).isWritable()) Raise(errors::noPermission);
  } catch (const Error& error) {  // the user has to know which folder it is
    Raise(error.number, error.text + u'\n' + folder);
  }
}

QString Program_File(const QString& name) {
  const QString clean = Clean_Path(name);
  return ProgramFolder + (clean.startsWith(u'/') ? clean : u'/' + clean);
}

std::vector<NameFault> File_Name_Faults(const QString& path) {
  const QString clean = Clean_Path(path);
  const qsizetype cut = clean.lastIndexOf(u'/');
  const QString name = clean.mid(cut + 1);
  std::vector<NameFault> faults;
  for (qsizetype i = 0; i < name.size() && faults.size() < maximumFaults; ++i) {
    NameFault fault = Judge(name[i], static_cast<int>(i) + 1, name.size(), cut < 0);
    if (!fault.reason.isEmpty()) faults.push_back(std::move(fault));
  }
  return faults;
}

bool Check_File_Name(const QString& path) {
  if (const QString clean = Clean_Path(path); clean.isEmpty() || clean.endsWith(u'/')) {
    Message_Box(QStringLiteral("Ein Fehler ist aufgetreten bei der Überprüfung dieses Dateinamens."), MsgButtons::Ok,
                MsgIcon::Warning, QStringLiteral("Dateiname"));
    return false;
  }
  const std::vector<NameFault> faults = File_Name_Faults(path);
  if (faults.empty()) return false;
  QString text = QStringLiteral("Warnung: Dieser Dateiname ist ungültig.\n");
  for (const NameFault& fault : faults)
    text += QStringLiteral("An der Position %1  Das Zeichen ").arg(fault.position) + fault.character + u'\n' +
            fault.reason + u'\n';
  text += QStringLiteral(
      "Diese Problemen können den Datenbankzugriff stören.\n"
      "Bitte ändern Sie den Dateinamen und\n"
      "versuchen Sie es dann noch einmal.\n"
      "Wollen Sie den Dateinamen ändern?");
  return Message_Box(text, MsgButtons::YesNo, MsgIcon::Warning, QStringLiteral("Dateiname")) == MsgAnswer::Yes;
}

QString Capitals(const QString& text) {
  QString capitals = text;
  for (QChar& c : capitals) c = c.toUpper();
  return capitals;
}

QString Table_Name_Of_Map() {
  const QString map = Clean_Path(Map.Caption.mid(5));
  const QStringList endings = {QStringLiteral(".BMP"), QStringLiteral(".RLE"), QStringLiteral(".JPG"),
                               QStringLiteral(".GIF"), QStringLiteral(".WMF"), QStringLiteral(".PNG"),
                               QStringLiteral("JPEG")};
  if (!endings.contains(map.right(4).toUpper()))
    Message_Box(Map.Caption + QLatin1String("\nFalsche Map"), MsgButtons::Ok, MsgIcon::Warning);
  const QString real = Real_Map(map);
  const qsizetype cut = real.lastIndexOf(u'/') + 1;
  const QString folder = real.left(cut);
  const QString name = Capitals(real.mid(cut).chopped(qMin<qsizetype>(4, real.size() - cut))) + QLatin1String(".MDB");
  if (folder.isEmpty()) return name;
  const QString existing = File_In(folder, name);
  return existing.isEmpty() ? folder + name : existing;
}

QString Shortened_Path(const QString& path) {
  return path.size() > 30 ? path.left(3) + QLatin1String("...") + path.right(23) : path;
}

void Show_No_Access(const QString& names) {
  const QString text =
      names + QStringLiteral(
                  "\n"
                  "Windows - Dateisicherheit:\n"
                  "Der Zugriff auf diese Ordner und/oder Dateien ist nicht erlaubt.\n"
                  "Wahrscheinlich sind Sie nicht Administrator des PC's.\n"
                  "Bitte ändern Sie die Zugriffsrechte auf die oben genannten Dateien und Ordner.\n"
                  "Sie benötigen Vollzugriff.\n"
                  "Klicken Sie im Datei-Explorer mit der rechten Maustaste auf diese Dateien\n"
                  "und geben Sie unter dem Reiter 'Sicherheit' diese Ordner und Dateien für den vollen Zugriff "
                  "frei.");
  Message_Box(text, MsgButtons::Ok, MsgIcon::Warning, QStringLiteral("Windows: Kein Dateizugriff erlaubt  "));
}
