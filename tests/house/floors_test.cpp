#include <gmock/gmock.h>

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QLibraryInfo>
#include <QRegularExpression>
#include <functional>
#include <map>
#include <optional>

#include "platform/files.h"
#include "support/fixture.h"

// The include lines of the sources, judged by the floors of docs/architecture.md.

using namespace Qt::StringLiterals;
using ::testing::UnorderedElementsAre;

namespace {

// Path below src ("store/entry.h") -> content.
using SourceTree = std::map<QString, QString>;

// From the ground up. A floor names files without ending ("start/events") or patterns ("store/*", "*/frm*"). A full
// name goes before a pattern, of patterns the topmost one counts.
using Floors = std::vector<QStringList>;

struct Include {
  QString name;
  int line = 0;
  bool angled = false;
};

const SourceTree& House_Tree() {
  static const SourceTree tree = [] {
    SourceTree files;
    const QDir source(QStringLiteral(FLURAX_SOURCE_DIR "/src"));
    QDirIterator walk(source.path(), {"*.h", "*.cpp"}, QDir::Files, QDirIterator::Subdirectories);
    while (walk.hasNext()) {
      const QString path = walk.next();
      files[source.relativeFilePath(path)] = QString::fromUtf8(Read_Bytes(path));
    }
    return files;
  }();
  return tree;
}

// The block ```floors of the document.
Floors House_Floors() {
  const QString text = QString::fromUtf8(Read_Bytes(QStringLiteral(FLURAX_SOURCE_DIR "/docs/architecture.md")));
  Floors floors;
  for (const QString& line : text.section("```floors\n", 1).section("```", 0, 0).split('\n', Qt::SkipEmptyParts))
    floors.push_back(line.simplified().split(' '));
  return floors;
}

std::optional<size_t> Floor_Of(const QString& path, const Floors& floors) {
  const QString stem = path.left(path.lastIndexOf('.'));
  std::optional<size_t> byPattern;
  for (size_t floor = 0; floor < floors.size(); ++floor) {
    for (const QString& name : floors[floor]) {
      if (name == stem) return floor + 1;
      const QRegularExpression pattern(QRegularExpression::wildcardToRegularExpression(name));
      if (pattern.match(stem).hasMatch()) byPattern = floor + 1;
    }
  }
  return byPattern;
}

std::vector<Include> Includes_Of(const QString& content) {
  static const QRegularExpression pattern(uR"(^\s*#\s*include\s*(["<])([^">]+)[">])"_s);
  std::vector<Include> found;
  int line = 0;
  for (const QString& text : content.split('\n')) {
    ++line;
    if (const auto match = pattern.match(text); match.hasMatch())
      found.push_back({match.captured(2), line, match.captured(1) == "<"});
  }
  return found;
}

bool Is_Widget_Header(const QString& name) {
  for (const char* library : {"QtWidgets/", "QtPrintSupport/"}) {
    const QString headers = QLibraryInfo::path(QLibraryInfo::HeadersPath) + '/' + library;
    if (name.startsWith(library) || QFile::exists(headers + name)) return true;
  }
  return false;
}

// Steps upward, files without a floor, widget headers below the windows.
std::vector<QString> Floor_Faults(const SourceTree& tree, const Floors& floors) {
  std::vector<QString> faults;
  for (const auto& [path, content] : tree) {
    const auto floor = Floor_Of(path, floors);
    if (!floor) faults.push_back(path + ": no floor");
    for (const Include& include : Includes_Of(content)) {
      const auto target = tree.contains(include.name) ? Floor_Of(include.name, floors) : std::nullopt;
      const bool upward = include.angled ? floor < floors.size() && Is_Widget_Header(include.name) : target > floor;
      if (upward) faults.push_back(u"%1:%2: %3"_s.arg(path).arg(include.line).arg(include.name));
    }
  }
  return faults;
}

// "a.h -> b.h -> a.h"
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
      if (states[include.name] == State::Open)
        circles.push_back((road.mid(road.indexOf(include.name)) << include.name).join(" -> "));
      else if (states[include.name] == State::Unseen)
        visit(include.name);
    }
    road.removeLast();
    states[path] = State::Done;
  };
  for (const auto& [path, content] : tree)
    if (states[path] == State::Unseen) visit(path);
  return circles;
}

}  // namespace

TEST(Floors, IncludesOfTheHouseRunDownwardWithoutACircle) {
  ASSERT_FALSE(House_Floors().empty()) << "docs/architecture.md has lost its list of floors";
  ASSERT_GT(House_Tree().size(), 60U);
  EXPECT_THAT(Floor_Faults(House_Tree(), House_Floors()), ::testing::IsEmpty());
  EXPECT_THAT(Include_Circles(House_Tree()), ::testing::IsEmpty());
}

// What the list calls a window must be what the build puts into the library of windows, else a file could include
// widgets here and fail to link there, or the other way round.
TEST(Floors, WindowsOfTheListAreWindowsOfTheBuild) {
  const Floors floors = House_Floors();
  for (const char* name : {"windows/maps/frmMDI.h", "windows/canvas/map_window.cpp", "windows/store/tbl_window.h"})
    EXPECT_EQ(Floor_Of(name, floors), floors.size()) << name;
  EXPECT_LT(Floor_Of("store/entry.cpp", floors), Floor_Of("maps/map_open.cpp", floors));
}

// A made-up house: sound lines beside every kind of fault.
TEST(Floors, EveryFaultIsToldWithFileAndLine) {
  const Floors floors = {{"ground/*", "upper/early"}, {"upper/*"}, {"*/frm*", "main"}};
  const SourceTree tree = {
      {"ground/a.h", "#pragma once\n#include <QImage>\n  #  include \"upper/b.h\"\n"},
      {"ground/c.cpp", "#include <QMessageBox>\n#include <QtWidgets/QDialog>\n#include \"ground/a.h\"\n"},
      {"ground/self.h", "#include \"ground/self.h\"\n"},
      {"upper/early.cpp", "#include \"upper/b.h\"\n#include \"ui_made.h\"\n"},
      {"upper/b.h", "#include \"upper/frmB.h\"\n#include <QPrinter>\n#include <QPainter>\n"},
      {"upper/frmB.h", "#include <QWidget>\n#include \"ground/a.h\"\n"},
      {"cellar/d.h", ""}};
  EXPECT_THAT(Floor_Faults(tree, floors),
              UnorderedElementsAre("ground/a.h:3: upper/b.h", "ground/c.cpp:1: QMessageBox",
                                   "ground/c.cpp:2: QtWidgets/QDialog", "upper/early.cpp:1: upper/b.h",
                                   "upper/b.h:1: upper/frmB.h", "upper/b.h:2: QPrinter", "cellar/d.h: no floor"));
  EXPECT_THAT(Include_Circles(tree), UnorderedElementsAre("ground/a.h -> upper/b.h -> upper/frmB.h -> ground/a.h",
                                                          "ground/self.h -> ground/self.h"));
}
