#include <QLibraryInfo>

#include "house/source_tree.h"

// The include lines of the sources, judged by the floors and knots of docs/architecture.md. A room is the source and
// the header of one name.

using ::testing::IsEmpty;
using ::testing::UnorderedElementsAre;

namespace {

// From the ground up, a folder a line. Folders that share a line may know each other.
using Floors = std::vector<QStringList>;
using Knots = std::vector<QStringList>;          // rooms that know each other, sorted
using Rooms = std::map<QString, QSet<QString>>;  // room -> the rooms it includes

struct Include {
  QString name;
  int line = 0;
  bool angled = false;
};

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

bool May_See_Widgets(const QString& path) { return path.startsWith("windows/") || path == "main.cpp"; }

// Files and lines without each other, includes upward, widget headers below the windows.
std::vector<QString> Floor_Faults(const SourceTree& tree, const Floors& floors) {
  std::map<QString, size_t> floorOf;
  for (size_t floor = 0; floor < floors.size(); ++floor)
    for (const QString& folder : floors[floor]) floorOf[folder] = floor;
  std::vector<QString> faults;
  QSet<QString> folders;
  for (const auto& [path, content] : tree) {
    folders << Folder_Of(path);
    const auto floor = floorOf.find(Folder_Of(path));
    if (floor == floorOf.end()) faults.push_back(path + ": no floor");
    for (const auto& [name, line, angled] : Includes_Of(content)) {
      const auto target = tree.contains(name) ? floorOf.find(Folder_Of(name)) : floorOf.end();
      const bool upward = floor != floorOf.end() && target != floorOf.end() && target->second > floor->second;
      if (upward || (angled && !May_See_Widgets(path) && Is_Widget_Header(name)))
        faults.push_back(u"%1:%2: %3"_s.arg(path).arg(line).arg(name));
    }
  }
  for (const auto& [folder, floor] : floorOf)
    if (!folders.contains(folder)) faults.push_back(folder + ": empty floor");
  return faults;
}

Rooms Rooms_Of(const SourceTree& tree) {
  const auto room = [](const QString& path) { return path.left(path.lastIndexOf('.')); };
  Rooms rooms;
  for (const auto& [path, content] : tree)
    for (const Include& include : Includes_Of(content))
      if (tree.contains(include.name) && room(include.name) != room(path)) rooms[room(path)] << room(include.name);
  return rooms;
}

// The groups of rooms that reach each other; those of several folders are left to the floors.
Knots Knots_Of(const Rooms& rooms) {
  std::map<QString, QSet<QString>> reached;
  for (const auto& [room, included] : rooms) {
    const std::function<void(const QString&)> walk = [&, &seen = reached[room]](const QString& from) {
      for (const QString& next : rooms.contains(from) ? rooms.at(from) : QSet<QString>()) {
        if (seen.contains(next)) continue;
        seen << next;
        walk(next);
      }
    };
    walk(room);
  }
  Knots knots;
  for (const auto& [room, seen] : reached) {
    QStringList knot;
    for (const QString& other : seen)
      if (reached.contains(other) && reached.at(other).contains(room)) knot << other;
    knot.sort();
    const bool oneFolder = std::all_of(
        knot.begin(), knot.end(), [&room = room](const QString& other) { return Folder_Of(other) == Folder_Of(room); });
    if (oneFolder && !knot.isEmpty() && knot.front() == room) knots.push_back(knot);
  }
  return knots;
}

std::vector<QString> Wide_Rooms(const Rooms& rooms, int most) {
  std::vector<QString> wide;
  for (const auto& [room, included] : rooms)
    if (included.size() > most) wide.push_back(u"%1: %2"_s.arg(room).arg(included.size()));
  return wide;
}

// Types with a body outside of every namespace that two files define: the linker takes one of the two for both.
std::vector<QString> Types_Defined_Twice(const SourceTree& tree) {
  static const QRegularExpression type(
      uR"(^(?:template <.*> )?(?:struct|class|enum class|enum|union) (\w+)(?: final)?(?: : [^;]*)? ?\{)"_s);
  std::map<QString, QStringList> filesOf;
  for (const auto& [path, content] : tree) {
    int depth = 0;
    for (const QString& line : content.split('\n')) {
      if (const auto match = type.match(line); depth == 0 && match.hasMatch()) filesOf[match.captured(1)] << path;
      depth += Balance_Of(line);
    }
    EXPECT_EQ(depth, 0) << path;
  }
  std::vector<QString> twice;
  for (const auto& [name, files] : filesOf)
    if (files.size() > 1) twice.push_back(name + ": " + files.join(' '));
  return twice;
}

}  // namespace

TEST(Floors, IncludesOfTheHouseRunDownward) {
  ASSERT_GT(Block_Of_Document("floors").size(), 10U) << "docs/architecture.md has lost its list of floors";
  ASSERT_GT(House_Tree().size(), 300U);
  EXPECT_THAT(Floor_Faults(House_Tree(), Block_Of_Document("floors")), IsEmpty());
}

// They are English: the user is told in German what happened and what to do.
TEST(Words, NoneOfTheLibrariesReachTheUser) {
  static const QRegularExpression theirs(uR"(errorString\(|strerror\(|sqlite3_errmsg\(|what\(\))"_s);
  static const QSet<QString> allowed = {"platform/database_texts.cpp",  // where they are put into German
                                        "state/run_guarded.cpp"};       // faults of the program itself
  for (const auto& [path, content] : House_Tree())
    EXPECT_TRUE(allowed.contains(path) || !content.contains(theirs)) << path;
}

TEST(Floors, OnlyTheNamedRoomsKnowEachOther) {
  const Knots named = Block_Of_Document("knots");
  EXPECT_THAT(Knots_Of(Rooms_Of(House_Tree())), ::testing::UnorderedElementsAreArray(named));
  qsizetype rooms = 0;
  for (const QStringList& knot : named) rooms += knot.size();
  EXPECT_LE(rooms, 8);
}

TEST(Floors, NoRoomIncludesMoreThanEighteenOthers) {
  Rooms rooms = Rooms_Of(House_Tree());
  // Still to be divided.
  for (const char* room : {"hand/activation", "tools/mouse", "view/entry_painter"}) rooms.erase(room);
  EXPECT_THAT(Wide_Rooms(rooms, 18), IsEmpty());
}

TEST(Floors, NoTwoFilesDefineTheSameType) { EXPECT_THAT(Types_Defined_Twice(House_Tree()), IsEmpty()); }

// A made-up house: sound lines beside every kind of fault.
TEST(Floors, EveryFaultIsToldWithFileAndLine) {
  const Floors floors = {{"ground"}, {"hall", "stairs"}, {"ruin"}, {"windows/room"}, {"."}};
  const SourceTree tree = {
      {"ground/a.h", "#pragma once\n#include <QImage>\n  #  include \"hall/b.h\"\n#include <QMessageBox>\n"},
      {"hall/b.h", "#include \"hall/d.h\"\n#include \"ui_made.h\"\n#include \"stairs/s.h\"\n#include <QPainter>\n"},
      {"hall/d.cpp", "#include \"hall/d.h\"\n#include \"hall/b.h\"\n#include \"ground/a.h\"\n"},
      {"hall/d.h", "#include <QPrinter>\n"},
      {"stairs/s.h", "#include \"hall/b.h\"\n"},
      {"windows/room/e.h", "#include <QWidget>\n#include \"main.cpp\"\n"},
      {"main.cpp", "#include <QWidget>\n"},
      {"cellar/x.h", ""}};
  EXPECT_THAT(Floor_Faults(tree, floors),
              UnorderedElementsAre("ground/a.h:3: hall/b.h", "ground/a.h:4: QMessageBox", "hall/d.h:1: QPrinter",
                                   "windows/room/e.h:2: main.cpp", "cellar/x.h: no floor", "ruin: empty floor"));
  const Rooms rooms = {{"hall/a", {"hall/b"}},   {"hall/b", {"hall/c", "ground/g"}},
                       {"hall/c", {"hall/a"}},   {"hall/d", {"hall/a", "ground/e"}},
                       {"ground/e", {"hall/d"}}, {"ground/g", {"ground/h"}}};
  EXPECT_THAT(Knots_Of(rooms), UnorderedElementsAre(QStringList({"hall/a", "hall/b", "hall/c"})));
  EXPECT_THAT(Wide_Rooms(Rooms_Of(tree), 1), UnorderedElementsAre("hall/b: 2", "hall/d: 2"));
  const SourceTree types = {
      {"ground/a.h", "class Sheet;\nnamespace inner {\nstruct Cell {\n};\n}\nstruct Sheet : Cell {\n};\n"},
      {"hall/b.h", "struct Cell {\n  int n = 1; };\nclass Sheet {\n};\nstruct Sheet::Part {\n};\n"}};
  EXPECT_THAT(Types_Defined_Twice(types), UnorderedElementsAre("Sheet: ground/a.h hall/b.h"));
}
