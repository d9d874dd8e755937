#pragma once
#include <deque>

#include "platform/file_dialog.h"
#include "platform/progress.h"
#include "state/global_state.h"

// Scripted message boxes: each expectation is one box with its answer. A box that was not expected, and an expectation
// without a box, fail the test.
struct ExpectedBox {
  QString part;  // stands in the text or the title
  MsgAnswer answer = MsgAnswer::Ok;
};
class MessageScript {
 public:
  MessageScript(std::initializer_list<ExpectedBox> boxes = {});
  explicit MessageScript(const QString& part, MsgAnswer answer = MsgAnswer::Ok) : MessageScript({{part, answer}}) {}
  explicit MessageScript(MsgAnswer toAll) : MessageScript() { AllowAny(toAll); }
  ~MessageScript();
  MessageScript& Expect(const QString& part, MsgAnswer answer = MsgAnswer::Ok);
  MessageScript& AllowAny(MsgAnswer answer);  // every further box gets this answer
  const std::vector<MsgRequest>& Seen() const { return seen; }

 private:
  std::deque<ExpectedBox> expected;
  std::optional<MsgAnswer> any;
  std::vector<MsgRequest> seen;
  MsgHandler former;
};

// Work that shows one box, and what the work gives.
template <class Work>
auto With_Box(const QString& part, MsgAnswer answer, Work work) {
  const MessageScript script(part, answer);
  return work();
}
template <class Work>
auto With_Box(const QString& part, Work work) {
  return With_Box(part, MsgAnswer::Ok, work);
}

// Scripted file dialogs: answers in order; an unexpected dialog fails the test.
class FileDialogScript {
 public:
  FileDialogScript(std::initializer_list<std::optional<QString>> paths = {});
  ~FileDialogScript();
  FileDialogScript& Answer(std::optional<QString> path);
  const std::vector<FileRequest>& Seen() const { return seen; }

 private:
  std::deque<std::optional<QString>> answers;
  std::vector<FileRequest> seen;
  FileDialogHandler former;
};

class FolderTest : public ::testing::Test {
 protected:
  QString Path(const QString& name) const { return folder.path() + QLatin1Char('/') + name; }
  // Writes a file of this very name, without the flushes of the program's own writing; its path.
  QString Put(const QString& name, const QByteArray& content = "x") const;
  // Of all that lies in the folder.
  QStringList Names() const;

  QTemporaryDir folder;
};

// The empty table that every program folder holds as "MUSTER.MDB"; made once a run.
const QByteArray& Template_Bytes();

// Fresh state, a temporary folder, a program folder with the template in it.
class FluraxTest : public FolderTest {
 protected:
  void SetUp() override;
  void TearDown() override;
  // A white map picture of that size in the temporary folder.
  QString Make_Map(const QString& name = QStringLiteral("Karte.bmp"), int width = 400, int height = 300);
};

// While it lives the user stops all work at that unit.
class StopWorkAt {
 public:
  explicit StopWorkAt(int unit);
  ~StopWorkAt();
  const QStringList& Shown() const { return shown; }  // the texts of its windows

 private:
  QStringList shown;
  ProgressMaker former;
};

// What a program of the machine writes; it must be there.
QString Run_Tool(const QString& program, const QStringList& arguments);

std::ostream& operator<<(std::ostream& out, const QString& text);
// The test framework would print a text as a list of characters.
void PrintTo(const QString& text, std::ostream* out);
