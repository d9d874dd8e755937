#include "house/source_tree.h"

// Lengths of functions and files, sizes of folders, and what the headers say of their procedures.

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

constexpr int longestFunction = 60, longestFile = 650;
constexpr double largestFolder = 0.20, leastCommented = 1;

int Lines_Of(const QString& content) { return static_cast<int>(content.count('\n')); }

struct Function {
  QString head;
  int line = 0, lines = 0;  // without the rows of data in it
};

// What a brace opens, by the statement before it.
enum class Brace { Scope, Function, Block, Data };
Brace Brace_After(const QString& head, bool inScope, bool inData) {
  static const QRegularExpression scope(uR"(^[^()]*\b(namespace|class|struct|union|enum)\b[^()]*$)"_s),
      block(uR"((^|[)\];:]|\b(else|do|try|const|mutable|noexcept|override|final)|->[^{]*)$)"_s);
  if (inScope && scope.match(head).hasMatch()) return Brace::Scope;
  if (inData && head.isEmpty()) return Brace::Data;
  if (!block.match(head).hasMatch()) return Brace::Data;
  return inScope || inData ? Brace::Function : Brace::Block;
}

std::vector<Function> Functions_Of(const QString& content) {
  struct Open {
    Brace brace;
    QString head;
    int line, data;  // `data`: lines of data so far
  };
  std::vector<Open> open;
  std::vector<Function> functions;
  QString head;
  int line = 1, data = 0;
  for (const QChar c : Bare(content)) {
    if (c == '\n') ++line;
    if (c == '{') {
      const Brace around = open.empty() ? Brace::Scope : open.back().brace;
      open.push_back({Brace_After(head.simplified(), around == Brace::Scope, around == Brace::Data), head.simplified(),
                      line, data});
      head.clear();
    } else if (c == '}' && !open.empty()) {
      const auto [brace, name, first, before] = open.back();
      open.pop_back();
      if (brace == Brace::Function) functions.push_back({name, first, line - first + 1 - (data - before)});
      if (brace == Brace::Data) data = before + line - first;
      head = brace == Brace::Data ? name + u"()"_s : QString();
    } else if (c == ';') {
      head.clear();
    } else {
      head += c;
    }
  }
  return functions;
}

struct Procedures {
  int all = 0;
  QStringList silent;  // "file:line" of those no comment tells of
};

// Procedures that others may call: free ones and public ones of classes, without constructors, overrides, operators and
// those whose body stands on their line. A comment stands at the procedure, or alone at the head of a group without
// empty lines.
Procedures Procedures_Of(const QString& path, const QString& content) {
  static const QRegularExpression procedure(uR"(^(?:  )?[A-Za-z\[][^=({]*[\s&*](?!operator)\w+\()"_s),
      other(
          uR"(^ *(using|friend|typedef|return|explicit|static_assert|else|case)\b|= (default|delete);|\) .*override\b)"_s),
      type(uR"(^(?:template <.*> )?(class|struct)\b.*\{$)"_s), access(uR"(^ (\w+)( slots)?:$)"_s),
      comment(uR"(^ *//)"_s);
  const QStringList lines = content.split('\n');
  Procedures found;
  bool inType = false, isPublic = true;
  qsizetype head = 0;  // first line of the group
  for (qsizetype i = 0; i < lines.size(); ++i) {
    const QString& line = lines[i];
    if (const auto match = type.match(line); match.hasMatch()) {
      inType = true;
      isPublic = match.captured(1) == "struct";
    }
    if (line.startsWith("}")) inType = false, isPublic = true;
    const auto match = access.match(line);
    if (match.hasMatch()) isPublic = match.captured(1) == "public" || match.captured(1) == "Q_SIGNALS";
    if (line.isEmpty() || line.endsWith("{") || match.hasMatch()) head = i + 1;
    if (!isPublic || line.startsWith(' ') != inType || !procedure.match(line).hasMatch()) continue;
    qsizetype last = i;
    while (last + 1 < lines.size() && !lines[last].contains(';') && !lines[last].contains('{')) ++last;
    const QStringList text = lines.mid(i, last - i + 1);
    if (other.match(text.join(' ')).hasMatch() || line.endsWith('}')) continue;
    ++found.all;
    const qsizetype before = i - 1 - (i > 0 && lines[i - 1].startsWith("template"));
    const QString above = lines.value(before);
    const QStringList group = lines.mid(head, i - head);
    const qsizetype comments = group.filter(comment).size();
    const bool headed =
        comments > 0 && comment.match(group.front()).hasMatch() && group.mid(comments).filter(comment).isEmpty();
    if (!text.join(' ').contains("//") && !headed && !comment.match(above).hasMatch())
      found.silent.push_back(u"%1:%2"_s.arg(path).arg(i + 1));
  }
  return found;
}

}  // namespace

TEST(Measures, FunctionsAndFilesAreShort) {
  std::vector<QString> faults;
  size_t functions = 0;
  for (const auto& [path, content] : House_Tree()) {
    if (Lines_Of(content) > longestFile) faults.push_back(u"%1: %2 lines"_s.arg(path).arg(Lines_Of(content)));
    for (const auto& [head, line, lines] : Functions_Of(content)) {
      ++functions;
      if (lines > longestFunction) faults.push_back(u"%1:%2: %3 lines: %4"_s.arg(path).arg(line).arg(lines).arg(head));
    }
  }
  EXPECT_GT(functions, 2500U);
  EXPECT_THAT(faults, IsEmpty());
}

TEST(Measures, NoFolderOutgrowsTheOthers) {
  std::map<QString, int> folders;
  int all = 0;
  for (const auto& [path, content] : House_Tree()) {
    folders[Folder_Of(path)] += Lines_Of(content);
    all += Lines_Of(content);
  }
  for (const auto& [folder, lines] : folders) EXPECT_LE(lines, largestFolder * all) << folder;
}

TEST(Measures, HeadersTellOfTheirProcedures) {
  int all = 0;
  QStringList silent;
  for (const auto& [path, content] : House_Tree()) {
    if (!path.endsWith(".h") || path.endsWith("_inner.h")) continue;
    const Procedures found = Procedures_Of(path, content);
    all += found.all;
    silent += found.silent;
  }
  ASSERT_GT(all, 500);
  EXPECT_GE(1 - static_cast<double>(silent.size()) / all, leastCommented)
      << silent.size() << " of " << all << ": " << silent.join(' ');
}

TEST(Measures, AreTakenAsTheyAreMeant) {
  const QString source =
      uR"raw(// { not a brace
namespace {
#define OPEN {
const std::vector<Row> rows = {{1, '{'},
                               {2, "}\"{"}};
Menu::Menu(int size)
    : box(size), all{1, 2} {
  if (size) {
  }
}
int Table() {
  static const std::vector<Row> all = {
      {1, 1'000},
      {2, [](int x) {
         return x;
       }},
  };
  return R"(})"[0];
}
}
)raw"_s;
  std::vector<QString> found;
  for (const auto& [head, line, lines] : Functions_Of(source))
    found.push_back(u"%1 %2 %3"_s.arg(head.section('(', 0, 0)).arg(line).arg(lines));
  EXPECT_THAT(found, ElementsAre("Menu::Menu 7 4", "2, [] 14 3", "int Table 11 4"));
  const QString header =
      uR"(// Told.
int A(int x);
// Told.
int B();
int Silent(
    int x);

// Of the group.
int C();
int D();

class K {
 public:
  explicit K(int x);
  void F() override;
  int E() const;
  int I() const { return H(); }
  int G() const;  // told
 private:
  int H();
};
std::function<void(int)> variable;
// Told.
template <class T>
void L(T t);
inline bool Silent_Too() {
  return A(1);
}
)"_s;
  const Procedures procedures = Procedures_Of("k.h", header);
  EXPECT_EQ(procedures.all, 9);
  EXPECT_THAT(procedures.silent, ElementsAre("k.h:5", "k.h:16", "k.h:26"));
}
