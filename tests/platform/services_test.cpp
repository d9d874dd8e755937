#include <new>

using Shell = FolderTest;
using FileDialog = FolderTest;
TEST(Guarded, AsksAndObeys) {
  MessageScript script{{"Prozedur beenden?", MsgAnswer::Yes},
                       {"Linie zeichnen", MsgAnswer::No},
                       {"Nicht genügend Speicher", MsgAnswer::No}};
  EXPECT_EQ(Guarded({}, [] {}), Step::Done);
  EXPECT_EQ(Guarded({}, [] { Raise(errors::fileNotFound); }), Step::Stopped);
  EXPECT_EQ(MsgResult, MsgAnswer::Yes);
  EXPECT_EQ(Guarded("Fehler: Linie zeichnen", [] { Raise(5010, "Karte fehlt"); }), Step::Skipped);
  EXPECT_EQ(Guarded({}, [] { throw std::bad_alloc(); }), Step::Skipped);
  const MsgRequest& first = script.Seen()[0];
  EXPECT_EQ(first.text, "Error: 53 Datei nicht gefunden\n\nProzedur beenden?");
  EXPECT_EQ(std::tuple(first.title, first.buttons), std::tuple(QStringLiteral("Fehler"), MsgButtons::YesNo));
  EXPECT_EQ(first.icon, MsgIcon::Question);
  EXPECT_EQ(script.Seen()[1].text, "Error: 5010 Karte fehlt\n\nProzedur beenden?");
}

TEST(MessageBox, TheCarefulAnswerIsGivenWithoutAWindow) {
  const MsgHandler former = Set_Message_Handler(nullptr);
  testing::internal::CaptureStderr();
  EXPECT_EQ(Message_Box("Fehlt\rganz", MsgButtons::Ok, MsgIcon::None, " Titel "), MsgAnswer::Ok);
  EXPECT_EQ(Message_Box("?", MsgButtons::YesNo), MsgAnswer::No);
  EXPECT_EQ(Message_Box("?", MsgButtons::OkCancel), MsgAnswer::Cancel);
  EXPECT_EQ(Message_Box("?", MsgButtons::YesNoCancel), MsgAnswer::Cancel);
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "Titel: Fehlt\nganz\n?\n?\n?\n");
  Set_Message_Handler(former);
}

TEST_F(FileDialog, AddsTheEndingWhereNoneWasTyped) {
  FileRequest request;
  request.save = true;
  request.defaultExtension = "MDB";
  EXPECT_EQ(File_Dialog(request), std::nullopt);  // nobody there to ask
  FileDialogScript script;
  const std::optional<QString> nothing, alt(Put("Alt"));
  const std::pair<std::optional<QString>, std::optional<QString>> cases[] = {
      {"/k\\v1.2/Neu", "/k/v1.2/Neu.MDB"}, {"/k/Neu.txt", "/k/Neu.txt"}, {"", nothing}, {nothing, nothing}, {alt, alt}};
  for (const auto& [answer, wanted] : cases) {
    request.save = answer != alt;
    script.Answer(answer);
    EXPECT_EQ(File_Dialog(request), wanted);
  }
}

namespace {
struct CountingFace : ProgressFace {
  CountingFace(int delayMs, std::vector<int>& seen, int stopAfter) : delay(delayMs), steps(seen), stop(stopAfter) {}
  void Show(const QString&, int total) override { steps.push_back(-total); }
  bool Step(int done) override {
    steps.push_back(done);
    return done < stop;
  }
  int Delay() const override { return delay; }
  int delay;
  std::vector<int>& steps;
  int stop;
};
}  // namespace

TEST(Progress, ShortWorkShowsNothingAndAbbrechenStopsForGood) {
  std::vector<int> steps;
  Set_Progress_Maker([&] { return std::make_unique<CountingFace>(60000, steps, 1000); });
  {
    Progress progress("Import", 100);
    for (int i = 0; i < 100; ++i) EXPECT_TRUE(progress.Advance());
  }
  EXPECT_TRUE(steps.empty());
  Set_Progress_Maker([&] { return std::make_unique<CountingFace>(0, steps, 3); });
  {
    Progress progress("Import", 5);
    for (const bool goesOn : {true, true, false, false}) EXPECT_EQ(progress.Advance(), goesOn);
  }
  EXPECT_EQ(steps, std::vector<int>({-5, 1, 2, 3}));
  Set_Progress_Maker(nullptr);
  EXPECT_TRUE(Progress("ohne Fenster", 1).Advance());
}

TEST_F(Shell, ProgramsAreFoundInTheProgramFolderThenOnThePath) {
  const QString tool = Put("GPSTool");
  QFile::setPermissions(tool, QFile::ReadOwner | QFile::ExeOwner);
  Put("sh.exe");
  for (const char* name : {"gpstool.exe", "GPSTOOL"}) EXPECT_EQ(Find_Program(name, folder.path()), tool) << name;
  EXPECT_EQ(Find_Program(tool, "/"), tool);
  EXPECT_TRUE(Find_Program("sh.exe", folder.path()).endsWith("/sh"));  // what cannot be run is passed over
  EXPECT_EQ(Find_Program("gibtesnicht", folder.path()), QString());
  Set_Shell({});
  EXPECT_FALSE(Start_Program(tool, {}));
  EXPECT_FALSE(Open_With_Desktop(tool));
}
