#include <utility>

namespace {
struct Stopper : ProgressFace {
  Stopper(int unit, QStringList& texts) : last(unit), shown(texts) {}
  void Show(const QString& text, int) override { shown << text; }
  bool Step(int done) override { return done < last; }
  int Delay() const override { return 0; }
  int last;
  QStringList& shown;
};
}  // namespace

StopWorkAt::StopWorkAt(int unit)
    : former(Set_Progress_Maker([this, unit] { return std::make_unique<Stopper>(unit, shown); })) {}
StopWorkAt::~StopWorkAt() { Set_Progress_Maker(std::move(former)); }

QString Run_Tool(const QString& program, const QStringList& arguments) {
  QProcess process;
  process.start(program, arguments);
  EXPECT_TRUE(process.waitForFinished()) << program << " is missing";
  return QString::fromUtf8(process.readAllStandardOutput());
}

std::ostream& operator<<(std::ostream& out, const QString& text) { return out << '"' << text.toStdString() << '"'; }
void PrintTo(const QString& text, std::ostream* out) { *out << text; }

MessageScript::MessageScript(std::initializer_list<ExpectedBox> boxes) : expected(boxes) {
  former = Set_Message_Handler([this](const MsgRequest& request) {
    seen.push_back(request);
    if (!expected.empty()) {
      const auto [part, answer] = expected.front();
      const bool fits = request.text.contains(part) || request.title.contains(part);
      if (fits || !any) {
        expected.pop_front();
        EXPECT_TRUE(fits) << "expected a box with \"" << part.toStdString() << "\", but it says \""
                          << request.title.toStdString() << "\": " << request.text.toStdString();
        return answer;
      }
    }
    if (any) return *any;
    ADD_FAILURE() << "unexpected box \"" << request.title.toStdString() << "\": " << request.text.toStdString();
    return request.buttons == MsgButtons::Ok      ? MsgAnswer::Ok
           : request.buttons == MsgButtons::YesNo ? MsgAnswer::No
                                                  : MsgAnswer::Cancel;
  });
}

MessageScript::~MessageScript() {
  Set_Message_Handler(std::move(former));
  for (const auto& [part, answer] : expected) ADD_FAILURE() << "no box with \"" << part.toStdString() << "\" was shown";
}

MessageScript& MessageScript::Expect(const QString& part, MsgAnswer answer) {
  expected.push_back({part, answer});
  return *this;
}

MessageScript& MessageScript::AllowAny(MsgAnswer answer) {
  any = answer;
  return *this;
}

FileDialogScript::FileDialogScript(std::initializer_list<std::optional<QString>> paths) : answers(paths) {
  former = Set_File_Dialog_Handler([this](const FileRequest& request) -> std::optional<QString> {
    seen.push_back(request);
    if (answers.empty()) {
      ADD_FAILURE() << "unexpected file dialog \"" << request.title.toStdString() << '"';
      return std::nullopt;
    }
    const std::optional<QString> answer = answers.front();
    answers.pop_front();
    return answer;
  });
}

FileDialogScript::~FileDialogScript() {
  Set_File_Dialog_Handler(std::move(former));
  if (!answers.empty()) ADD_FAILURE() << answers.size() << " expected file dialog(s) did not come";
}

FileDialogScript& FileDialogScript::Answer(std::optional<QString> path) {
  answers.push_back(std::move(path));
  return *this;
}
