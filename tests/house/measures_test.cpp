#include "house/source_tree.h"

// Lengths of functions and files, sizes of folders, and what the headers say of their procedures.

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

constexpr int longestFunction = 60, longestFile = 650;
constexpr double largestFolder = 0.20, largestTests = 0.36;

int Lines_Of(const QString& content) { return static_cast<int>(content.count('\n')); }

struct Function {
  QString head;
  int line = 0, lines = 0;  // without the rows of data in it
};

// Lines of lists and local types.
int Data_Lines(const QStringList& lines) {
  static const QRegularExpression list(uR"(([=(,{] ?|\bstruct \w+ )\{$)"_s);
  int sum = 0;
  for (qsizetype i = 0; i < lines.size(); ++i) {
    int open = Balance_Of(lines[i]);
    if (lines[i].endsWith('{') && !list.match(lines[i]).hasMatch()) continue;
    for (; open > 0 && i + 1 < lines.size(); ++sum) open += Balance_Of(lines[++i]);
  }
  return sum;
}

// By the layout that the formatter gives: what begins at the margin ends there with a brace, within a type two blanks
// further in.
std::vector<Function> Functions_Of(const QStringList& lines, qsizetype from, qsizetype end,
                                   const QString& margin = {}) {
  static const QRegularExpression type(uR"(^(template <.*> )?(class|struct|union|enum)\b)"_s),
      opens(uR"([;{}]( *//.*)?$)"_s);
  std::vector<Function> found;
  for (qsizetype i = from; i < end; ++i) {
    const QString head = lines[i].mid(margin.size());
    if (!lines[i].startsWith(margin) || head.isEmpty() || !head[0].isLetter() || head.startsWith("namespace")) continue;
    while (i < end && !opens.match(lines[i]).hasMatch()) ++i;
    if (i == end || Balance_Of(lines[i]) <= 0) continue;
    const qsizetype open = i;
    while (i < end && !lines[i].startsWith(margin + '}')) ++i;
    if (type.match(head).hasMatch()) {
      const auto inner = Functions_Of(lines, open + 1, i, margin + "  ");
      found.insert(found.end(), inner.begin(), inner.end());
    } else if (i < end && lines[i] == margin + '}') {
      const auto count = static_cast<int>(i - open + 1);
      found.push_back({head, static_cast<int>(open + 1), count - Data_Lines(lines.mid(open + 1, count - 2))});
    }
  }
  return found;
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
    const QStringList all = content.split('\n');
    for (const auto& [head, line, lines] : Functions_Of(all, 0, all.size())) {
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

// More than a third means that they say things twice; the programs are their sources and forms.
TEST(Measures, TestsStayInProportion) {
  const auto lines_below = [](const QString& folder, const QStringList& kinds) {
    int lines = 0;
    QDirIterator files(FLURAX_SOURCE_DIR + folder, kinds, QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) lines += Lines_Of(QString::fromUtf8(Read_Bytes(files.next())));
    return lines;
  };
  const int programs = lines_below("/src", {"*.cpp", "*.h", "*.ui"});
  ASSERT_GT(programs, 50000);
  EXPECT_LE(lines_below("/tests", {"*.cpp", "*.h"}), largestTests * programs) << programs;
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
  EXPECT_EQ(silent, QStringList());
}

TEST(Measures, AreTakenAsTheyAreMeant) {
  const QStringList source = QStringLiteral(
                                 "namespace {\nconst std::vector<Row> rows = {{1, '{'},\n    {2, 3}};\n"
                                 "Menu::Menu(int size)\n    : box(size), all{1} {\n  if (size) {\n  }\n}\n"
                                 "struct Table {\n  int Count() {\n    static const int all[] = {\n        1,\n"
                                 "        2};\n    return \"{\";\n  }\n};\n}  // namespace")
                                 .split('\n');
  std::vector<QString> found;
  for (const auto& [head, line, lines] : Functions_Of(source, 0, source.size()))
    found.push_back(u"%1 %2 %3"_s.arg(head.section('(', 0, 0)).arg(line).arg(lines));
  EXPECT_THAT(found, ElementsAre("Menu::Menu 5 4", "int Count 10 4"));
  const QString header =
      uR"(// Said.
int A(int x);

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
  int G() const;  // said
 private:
  int H();
};
std::function<void(int)> variable;
// Said.
template <class T>
void L(T t);
)"_s;
  const Procedures procedures = Procedures_Of("k.h", header);
  EXPECT_EQ(procedures.all, 7);
  EXPECT_THAT(procedures.silent, ElementsAre("k.h:4", "k.h:14"));
}
