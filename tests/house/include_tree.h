#pragma once
#include <QHash>
#include <QString>
#include <QStringList>
#include <map>
#include <optional>
#include <set>
#include <vector>

// The include lines of a source tree, judged by the floors of docs/architecture.md.

// Path below src ("store/entry.h") -> content.
using SourceTree = std::map<QString, QString>;
SourceTree Read_Source_Tree(const QString& folder);

// Floors from the ground up. A line of the list names files without ending ("start/events") or patterns
// ("store/*", "*/frm*"). A full name goes before a pattern, of patterns the topmost one counts.
class Floors {
 public:
  // From the fenced block ```floors of a document; empty if there is none.
  static Floors FromDocument(const QString& text);
  explicit Floors(std::vector<QStringList> lines) : names(std::move(lines)) {}

  bool Empty() const { return names.empty(); }
  std::optional<int> Of(const QString& path) const;  // from 1
  int Top() const { return static_cast<int>(names.size()); }

 private:
  std::vector<QStringList> names;
};

// One text a fault, with file and line: steps upward, files without a floor, widget headers below the windows.
std::vector<QString> Floor_Faults(const SourceTree& tree, const Floors& floors);
// Circles of includes, file by file: "a.h -> b.h -> a.h".
std::vector<QString> Include_Circles(const SourceTree& tree);
// Is it a header of the widget or print support library, as `#include <...>` names it?
bool Is_Widget_Header(const QString& name);
