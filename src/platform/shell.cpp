#include "platform/shell.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QStandardPaths>
#include <utility>

#include "platform/files.h"

namespace {
ShellFace face;

QStringList Names_Of(const QString& name) {
  const QLatin1String ending(".exe");
  if (name.endsWith(ending, Qt::CaseInsensitive)) return {name, name.chopped(ending.size())};
  return {name, name + ending};
}

bool Is_Program(const QString& path) {
  const QFileInfo info(path);
  return info.isFile() && info.isExecutable();
}
}  // namespace

ShellFace Set_Shell(ShellFace next) { return std::exchange(face, std::move(next)); }

bool Start_Program(const QString& program, const QStringList& arguments, std::function<void()> ended) {
  return face.start && face.start(program, arguments, std::move(ended));
}

bool Open_With_Desktop(const QString& path) { return face.open && face.open(path); }

QString Find_Program(const QString& name, const QString& programFolder) {
  if (name.isEmpty()) return {};
  const QString clean = Clean_Path(name);
  const QStringList names = Names_Of(clean);
  if (clean.contains(u'/')) {
    for (const QString& candidate : names)
      if (const QString found = Find_File(candidate); Is_Program(found)) return found;
    return {};
  }
  for (const QString& folder : {programFolder, QCoreApplication::applicationDirPath()})
    for (const QString& candidate : names)
      if (const QString found = Find_File(folder + u'/' + candidate); Is_Program(found)) return found;
  for (const QString& candidate : names)
    if (const QString found = QStandardPaths::findExecutable(candidate); !found.isEmpty()) return found;
  return {};
}
