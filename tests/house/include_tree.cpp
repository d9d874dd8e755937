#include "include_tree.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QLibraryInfo>
#include <QRegularExpression>
#include <functional>

using namespace Qt::StringLiterals;

namespace {

struct Include {
  QString name;
  int line = 0;
  bool angled = false;
};

std::vector<Include> Includes_Of(const QString& content) {
  static const QRegularExpression pattern(uR"(^\s*#\s*include\s*(["<])([^">]+)[">])"_s);
  std::vector<Include> found;
  int line = 0;
  for (const QString& text : content.split(u'\n')) {
    ++line;
    if (const auto match = pattern.match(text); match.hasMatch()) {
      found.push_back({match.captured(2), line, match.captured(1) == "<"_L1});
    }
  }
  return found;
}

QString Stem(const QString& path) { return path.left(path.lastIndexOf(u'.')); }

}  // namespace

SourceTree Read_Source_Tree(const QString& folder) {
  SourceTree tree;
  QDirIterator walk(folder, {u"*.h"_s, u"*.cpp"_s}, QDir::Files, QDirIterator::Subdirectories);
  while (walk.hasNext()) {
    QFile file(walk.next());
    if (!file.open(QIODevice::ReadOnly)) continue;
    tree[QDir(folder).relativeFilePath(file.fileName())] = QString::fromUtf8(file.readAll());
  }
  return tree;
}

Floors Floors::FromDocument(const QString& text) {
  const qsizetype start = text.indexOf("```floors\n"_L1);
  if (start < 0) return Floors({});
  const qsizetype first = start + 10, end = text.indexOf("```"_L1, first);
  std::vector<QStringList> lines;
  for (const QString& line : text.mid(first, end - first).split(u'\n', Qt::SkipEmptyParts)) {
    lines.push_back(line.simplified().split(u' '));
  }
  return Floors(std::move(lines));
}

std::optional<int> Floors::Of(const QString& path) const {
  const QString stem = Stem(path);
  std::optional<int> byPattern;
  for (int floor = 0; floor < Top(); ++floor) {
    for (const QString& name : names[static_cast<size_t>(floor)]) {
      if (name == stem) return floor + 1;
      if (!name.contains(u'*')) continue;
      const auto pattern = QRegularExpression(QRegularExpression::wildcardToRegularExpression(name));
      if (pattern.match(stem).hasMatch()) byPattern = floor + 1;
    }
  }
  return byPattern;
}

bool Is_Widget_Header(const QString& name) {
  if (name.startsWith("QtWidgets"_L1) || name.startsWith("QtPrintSupport"_L1)) return true;
  const QString headers = QLibraryInfo::path(QLibraryInfo::HeadersPath);
  const QString file = u'/' + name;
  return QFile::exists(headers + u"/QtWidgets"_s + file) || QFile::exists(headers + u"/QtPrintSupport"_s + file);
}

std::vector<QString> Floor_Faults(const SourceTree& tree, const Floors& floors) {
  std::vector<QString> faults;
  for (const auto& [path, content] : tree) {
    const auto floor = floors.Of(path);
    if (!floor) {
      faults.push_back(path + u": the floor list names no floor for it"_s);
      continue;
    }
    for (const Include& include : Includes_Of(content)) {
      const QString place = u"%1:%2: "_s.arg(path).arg(include.line);
      if (include.angled) {
        if (*floor < floors.Top() && Is_Widget_Header(include.name)) {
          faults.push_back(place + u"<%1> belongs to the windows"_s.arg(include.name));
        }
        continue;
      }
      if (!tree.contains(include.name)) continue;  // made while building
      if (const auto target = floors.Of(include.name); target && *target > *floor) {
        faults.push_back(place + u"floor %1 includes \"%2\" of floor %3"_s.arg(*floor).arg(include.name).arg(*target));
      }
    }
  }
  return faults;
}

std::vector<QString> Include_Circles(const SourceTree& tree) {
  enum class State { Unseen, Open, Done };
  std::map<QString, State> states;
  QStringList road;
  std::vector<QString> circles;
  const std::function<void(const QString&)> visit = [&](const QString& path) {
    states[path] = State::Open;
    road << path;
    for (const Include& include : Includes_Of(tree.at(path))) {
      if (include.angled || !tree.contains(include.name)) continue;
      if (states[include.name] == State::Open) {
        circles.push_back((road.mid(road.indexOf(include.name)) << include.name).join(" -> "_L1));
      } else if (states[include.name] == State::Unseen) {
        visit(include.name);
      }
    }
    road.removeLast();
    states[path] = State::Done;
  };
  for (const auto& [path, content] : tree) {
    if (states[path] == State::Unseen) visit(path);
  }
  return circles;
}
