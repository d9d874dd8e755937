#include "house/source_tree.h"

// Variables that outlive a call, by the sources: Reset_Global_State must know them.

using ::testing::UnorderedElementsAre;

namespace {

// Of a line that declares variables outside of functions, or static ones within: their names.
QStringList Variables_In(const QString& line) {
  static const QRegularExpression declaration(
      uR"(^(?:inline |static |thread_local )*(\w+)[\w:]*(?:<(?:[^()]|\(\))*>)?(?:::\w+)?[*&]? [*&]?([A-Za-z]\w*(?= = |\{|,|;)|[a-z]\w*(?=\([-0-9"]))(.*;.*))"_s);
  static const QRegularExpression further(uR"(, (\w+)(?= = |\{|,|;))"_s);
  static const QSet<QString> otherwise = {"const", "constexpr", "extern",   "using",  "return",  "struct",   "class",
                                          "enum",  "union",     "template", "friend", "typedef", "namespace"};
  const bool within = line.startsWith(' ');
  const auto match = declaration.match(within ? line.trimmed() : line);
  if (!match.hasMatch() || otherwise.contains(match.captured(1)) || (within && !line.trimmed().startsWith("static ")))
    return {};
  QStringList names = {match.captured(2)};
  for (auto it = further.globalMatch(match.captured(3)); it.hasNext();) names << it.next().captured(1);
  return names;
}

QSet<QString> Names_Reset_In(const QString& content) {
  static const QRegularExpression pattern(uR"(const OnReset \w+\(([^)]*)\);)"_s);
  QSet<QString> names;
  for (auto it = pattern.globalMatch(content); it.hasNext();)
    for (const QString& name : it.next().captured(1).split(", ")) names << name;
  return names;
}

// "tools/mouse.cpp: seen" of those that no fresh start reaches.
std::vector<QString> Never_Reset(const SourceTree& tree) {
  std::vector<QString> never;
  for (const auto& [path, content] : tree) {
    const QString folder = Folder_Of(path);
    if (folder == "." || folder == "platform" || folder == "workbook") continue;
    const QSet<QString> reset = Names_Reset_In(content);
    // What state/ keeps is written by name in one place; declared and reset are two mentions.
    const QString shared = folder == "state" ? tree.at("state/global_state.cpp") : QString();
    for (const QString& line : content.split('\n'))
      for (const QString& name : Variables_In(line)) {
        static const QString written = uR"(\b%1(?: = (?![^;]*,)|\.clear\(\);|\.reset\(\);|\[.*\] = ))"_s;
        if (!reset.contains(name) && !shared.contains(QRegularExpression(written.arg(name))))
          never.push_back(path + ": " + name);
      }
  }
  return never;
}

}  // namespace

TEST(SharedState, AFreshStartReachesAllOfIt) {
  EXPECT_THAT(Never_Reset(House_Tree()),
              UnorderedElementsAre(
                  // What the program is bound to, and the numbers of who listens.
                  "edit/copy.cpp: clipboardFace", "hand/activation.cpp: before", "hand/activation.cpp: after",
                  "hand/activation.cpp: hide", "hand/leave_hand.cpp: watched", "hand/leave_hand.cpp: lastNumber",
                  "maps/commands.cpp: procedures", "state/dialog_hooks.cpp: dialogHooks", "state/events.cpp: events",
                  "state/on_reset.cpp: rooms", "state/step.cpp: lastNumber", "tools/map_tool.cpp: dropped",
                  "tools/plan_squares.cpp: closed", "view/overlay.cpp: overlays", "view/redraw.cpp: listener",
                  "view/redraw.cpp: changesListener", "view/redraw.cpp: closed",
                  "windows/common/help_window.cpp: theWindow", "windows/desktop/desktop_dialogs.cpp: last",
                  "windows/desktop/desktop_printer.cpp: holder", "windows/main/dialog_hooks.cpp: activation",
                  // Good for one call alone.
                  "hand/hand_controls.cpp: pixel", "objects/hatch.cpp: crossings", "objects/polygon.cpp: buffers",
                  "view/redraw.cpp: running", "view/redraw.cpp: wantedAgain", "view/view.cpp: layingOut",
                  // A bound, no state; and a list that is emptied by its procedure.
                  "view/picture_cache.cpp: mostBytes", "state/mdi_state.cpp: menus"));
}

TEST(SharedState, AForgottenVariableIsFound) {
  const SourceTree tree = {
      {"state/global_state.cpp",
       "int width, height;\nQString path;\nvoid Reset() {\n  width = 0;\n  path.clear();\n}\n"},
      {"tools/a.cpp",
       "std::map<int, QPoint> seen;\nconst int most = 3;\nbool on = false, off{};\nQPoint at(1, 2);\n"
       "const OnReset fresh(seen, off);\nQString Text_Of(int number);\n  int local = 0;\n  static int calls = 0;\n"},
      {"platform/b.cpp", "int kept = 0;\n"}};
  EXPECT_THAT(Never_Reset(tree), UnorderedElementsAre("state/global_state.cpp: height", "tools/a.cpp: on",
                                                      "tools/a.cpp: at", "tools/a.cpp: calls"));
}
