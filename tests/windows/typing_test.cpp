#include <QComboBox>
#include <QDialog>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QSpinBox>
#include <QTextEdit>

#include "hand/leave_hand.h"
#include "maps/paint_program.h"
#include "windows/command_fixture.h"
#include "windows/common/frm_dialogs.h"

// What is being typed when something else begins: a new text on the map, a text that is being changed, a cell of the
// table, the line above it.

const QString typed = QStringLiteral("Uhu");

class TypingTest : public CommandTest {
 protected:
  // The table file of the map, whether it is open or not.
  bool Stands_In_Table(const QString& text) const {
    if (frmMDI.MapOpen && MapFile == map) return Rows().contains(text);
    const auto rows = Rows_Of(*Workspace::OpenDatabase(Path("KARTE.MDB")));
    return std::any_of(rows.begin(), rows.end(), [&](const EntryRow& row) { return row.Eintrag == text; });
  }
};

class TypingIn : public TypingTest, public testing::WithParamInterface<CommandTest::Typing> {
 public:
  using CommandTest::Typing;
};

INSTANTIATE_TEST_SUITE_P(EveryPlace, TypingIn,
                         testing::Values(TypingIn::Typing::NewText, TypingIn::Typing::Text, TypingIn::Typing::Cell,
                                         TypingIn::Typing::Line));

TEST_P(TypingIn, NoCommandLosesIt) {
  // What takes the table back to an earlier state, or deletes the entry, takes the text along.
  const QStringList meant = {"mnuReset", "mnuStepBack", "mnuTableRe", "mnuTableNeu", "mnuObjDel"};
  for (const Command& command : Command_Table()) {
    if (meant.contains(command.key)) continue;
    Begin_Again();
    Type(GetParam(), typed);
    if (!Needs_Met(command.needs)) continue;
    Run_Command(command.key, {1, {}});
    EXPECT_TRUE(Stands_In_Table(typed) || Is_There(typed)) << command.key;
    EXPECT_FALSE(seen.join(u' ').contains("Programmfehler")) << command.key;
    EXPECT_EQ(QApplication::overrideCursor(), nullptr) << command.key;
    if (!frmMDI.MapOpen || !command.step.isEmpty()) continue;
    // Nothing else comes into the table: no second entry, and none of the others changes.
    auto rows = Rows(), before = untouched;
    for (const QString& name : {typed, QStringLiteral("Otter"), QStringLiteral("Stein")})
      rows.remove(name), before.remove(name);
    EXPECT_EQ(rows, before) << command.key;
  }
}

TEST_P(TypingIn, NoWayOutOfTheMapLosesIt) {
  const QString other = Make_Map("Dritte.bmp", 300, 200), fresh = Path("Neu.bmp");
  const std::pair<const char*, std::function<void()>> ways[] = {
      {"close button of the map", [this] { window->Map_Window().parentWidget()->close(); }},
      {"map dropped", [&] { Drop(other); }},
      {"map changed by a paint program",
       [this] {
         Write_Lines(Path("malen"), {});
         Start_Paint_Program(Path("malen"));
         Make_Map("Karte.bmp", 500, 401);
         Reload_Changed_Map();
       }},
      {"new map",
       [&] {
         Kill_Quietly(fresh);
         const FileDialogScript files({fresh});
         New_Map(50, 40);
       }},
      {"recent map", [] { Open_Recent_Map(2); }},
      {"map of the open dialog",
       [&] {
         // Not asked for where the text does not fit.
         const auto former = Set_File_Dialog_Handler([&](const FileRequest&) { return std::optional(other); });
         Run_Command("mnuFOpen");
         Set_File_Dialog_Handler(former);
       }},
      {"map loaded again", [] { Run_Command("mnuMapLoad"); }},
      {"tool of the coordinates",
       [this] {
         Write_Lines(Program_File("Kalibrix"), {});
         QFile::setPermissions(Program_File("Kalibrix"), QFile::ReadOwner | QFile::ExeOwner);
         Run_Command("mnuGridmake");
       }},
      {"menu", [] { Run_Command("mnuMapClose"); }},
      {"end of the program by its menu", [] { Run_Command("mnuFluraxFini"); }},
      {"end of the program asked for", [] { events.EndWanted.Emit(), QCoreApplication::sendPostedEvents(); }},
      {"main window closed", [this] { window->close(); }}};
  for (const auto& [way, go] : ways) {
    Make_Map("Karte.bmp", 500, 400);
    Begin_Anew();
    Type(GetParam(), typed);
    go();
    EXPECT_TRUE(Stands_In_Table(typed)) << way;
    const bool stays = QLatin1String(way).contains(QLatin1String("paint")) || QLatin1String(way) == "map loaded again";
    EXPECT_EQ(frmMDI.MapOpen && MapFile == map, stays) << way;
    // What does not fit stays where it was typed, and the map with it.
    Make_Map("Karte.bmp", 500, 400);
    Begin_Anew();
    const QString tooLong(100, QLatin1Char('x'));
    Type(GetParam(), tooLong);
    go();
    EXPECT_TRUE(frmMDI.MapOpen && MapFile == map && window->isVisible()) << way;
    EXPECT_TRUE(Is_There(tooLong)) << way;
    EXPECT_TRUE(Rows() == untouched) << way;
  }
}

TEST_F(TypingTest, ASetZoomLeavesANewTextWhereItIs) {
  Table_On_Off("Off");
  ASSERT_TRUE(Map.Maximized);
  Choose("mnuZoom100");
  Type(Typing::NewText, typed);
  Choose("mnuZoom100");
  EXPECT_TRUE(Is_There(typed));
  EXPECT_TRUE(Entry_In_Hand());
  Choose("mnuZoom50");
  EXPECT_TRUE(Rows().contains(typed));
}

// Beside the map as well: what is typed goes back first, then what was done to the entries.
TEST_F(TypingTest, AnEditorWithoutAStepOfItsOwnLeavesTheKeys) {
  Begin_Again();
  QDialog beside(window.get());
  Prepare_Dialog(beside, QStringLiteral("Verlauf.htm"));
  beside.setWindowModality(Qt::NonModal);
  auto* combo = new QComboBox(&beside);
  combo->setEditable(true);
  QWidget* const editors[] = {new QLineEdit(&beside), new QTextEdit(&beside), new QPlainTextEdit(&beside),
                              new QSpinBox(&beside), combo};
  beside.show();
  for (QWidget* editor : editors) {
    SCOPED_TRACE(editor->metaObject()->className());
    ASSERT_TRUE(Take_Entry(Key_Of("Otter")));
    Run_Command("mnuObjVisNo");
    const auto hidden = Rows();
    ASSERT_NE(hidden, untouched);
    QTest::keyClicks(editor, "7");
    QTest::keyClick(editor, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(Rows(), hidden);
    for (const quint64 told : {0, 1}) {
      // Held: a release and a press of one moment, which are not always told as such.
      QKeyEvent up(QEvent::KeyRelease, Qt::Key_Z, Qt::ControlModifier);
      QKeyEvent down(QEvent::KeyPress, Qt::Key_Z, Qt::ControlModifier, {}, told != 0);
      up.setTimestamp(7000), down.setTimestamp(told != 0 ? 8000 : 7001);
      QApplication::sendEvent(editor, &up);
      QApplication::sendEvent(editor, &down);
    }
    EXPECT_EQ(Rows(), hidden) << "a press is a step, however long";
    QTest::keyClick(editor, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(Rows(), untouched);
  }
}
