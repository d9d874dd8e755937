#include "maps/step_walk.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QTimer>

#include "edit/marks.h"
#include "edit/order.h"
#include "edit/scale_edit.h"
#include "edit/vertex_edit.h"
#include "maps/command_look.h"
#include "maps/commands.h"
#include "maps/map_close.h"
#include "state/run_guarded.h"
#include "state/step.h"
#include "store/history.h"
#include "support/bulk_fixture.h"
#include "tools/poly_editor.h"

// Strg+Z and what belongs to it, by the ways of a user.

namespace {

class StepWalk : public BulkTest {
 protected:
  static QString Last_Step() { return Step_Position() == 0 ? QString() : Step_At(Step_Position() - 1).name; }
  static QString Key_Of_Text(const QString& text) {
    const KeepCurrentRow keep;
    for (rsEntries->MoveFirst(); !rsEntries->Eof(); rsEntries->MoveNext())
      if (rsEntries->Text(column::Eintrag) == text) return rsEntries->Bookmark();
    return {};
  }
  void Add_Texts(int count) {
    for (int i = 0; i < count; ++i) Add_Text(QStringLiteral("Ort %1").arg(i), 20 + 30 * i, 40);
  }
};

TEST_F(StepWalk, StepsAreNamedByWhatTheyDo) {
  const QString text = Add_Text("Reh", 100, 100);
  const auto named = [](const char* name) { EXPECT_EQ(Last_Step(), name); };
  named("Text eingefügt (Reh)");
  Take_Entry(text);
  const QRect box = Box(Map.Text2);
  Drag(box.center(), box.center() + QPoint(60, 40));
  named("Text verschoben (Reh)");
  Text_Typed("Hirsch");
  End_Entry();
  named("Text geändert (Hirsch)");
  Go(text);
  Mark_Obj();
  named("Text markiert (Hirsch)");
  Take_Entry(text);
  Run_Command("mnuObjVisNo");
  named("Sichtbarkeit (Hirsch)");
  for (const char* name : {"Maßstab eingefügt", "Maßstab ersetzt"}) {
    Add_Scale_Row({.ScaleValue = 5, .ScaleLenPx = 100, .at = {}});
    named(name);
  }
  Write_Vertices("Flaeche1", {{300, 300}, {400, 300}, {350, 400}});
  named("Eckpunkte geändert");
  const QString area = Add(Make(4, "Flaeche1", "Moor", 340, 330, 1, 1));
  named("Fläche eingefügt (Moor)");
  const QString figure = Add(Make(25, "Figur1", "Teich", 500, 300, 100, 100));
  Write_Vertices("Figur1", {{500, 300}, {600, 300}, {600, 400}, {500, 400}});
  for (const QString& key : {area, figure}) {
    Go(key);
    VertexList list = *Vertices_Of_Current();
    const QString of = key == area ? " (Moor)" : " (Teich)";
    list.points.insert(list.points.begin(), {QPoint(300, 250), QPoint(320, 240)});
    Write_Vertex_List(list);
    EXPECT_EQ(Last_Step(), "2 Eckpunkte eingefügt" + of);
    list.points.front() += QPoint(5, 5);
    Write_Vertex_List(list);
    EXPECT_EQ(Last_Step(), "Eckpunkt verschoben" + of);
    list.points.erase(list.points.begin());
    Write_Vertex_List(list);
    EXPECT_EQ(Last_Step(), "Eckpunkt gelöscht" + of);
    Walk_To_Step(Step_Position() - (key == area ? 3 : 5));
  }
  Go(area);
  With_Box("gelöscht werden", MsgAnswer::Yes, [] { return Delete_Entry(); });
  named("Fläche gelöscht (Moor)");
  Step_Back();
  EXPECT_EQ(InfoBar.Panel[0], "Rückgängig: Fläche gelöscht (Moor)");
  Run_Command("mnuBildHell");
  EXPECT_EQ(InfoBar.Panel[0], QString()) << "something else was done";
  EXPECT_TRUE(rsEntries->HasRow(area));
  EXPECT_EQ(Load_Vertices("Flaeche1").size(), 3u);
  EXPECT_EQ(Step_Back_Text(), "Rückgängig: Fläche eingefügt (Moor)");
  EXPECT_EQ(Step_Forward_Text(), "Wiederherstellen: Fläche gelöscht (Moor)");
  Add_Column({"Finder", FieldType::Text, 20}, {});
  EXPECT_EQ(Last_Step(), "Spalte hinzugefügt (Finder)");
  EXPECT_TRUE(Tbl.HasUserColumns);
  Step_Back();
  EXPECT_FALSE(Tbl.HasUserColumns);
  EXPECT_FALSE(rsEntries->HasField(u"Finder"));
}

TEST_F(StepWalk, OnePressTakesOneStepBack) {
  const QString key = Add_Text("Reh", 100, 100);
  Add_Text("Otter", 200, 200);
  const int before = Step_Position();
  // The typed text is stored first: it is the step that goes.
  Take_Entry(key);
  Text_Typed("Rehbock");
  EXPECT_TRUE(Run_Command("mnuStepBack"));
  EXPECT_EQ(Step_Position(), before);
  EXPECT_EQ(Texts(), (QStringList{"Reh", "Otter"}));
  EXPECT_FALSE(Entry_In_Hand());
  EXPECT_EQ(Step_Forward_Text(), "Wiederherstellen: Text geändert (Rehbock)");
  Run_Command("mnuStepForward");
  EXPECT_EQ(Texts(), (QStringList{"Rehbock", "Otter"}));
  // A command that asks for the text first is a step of its own.
  Take_Entry(key);
  Text_Typed("Rehkitz");
  Run_Command("mnuObjVisNo");
  EXPECT_EQ(Step_Position(), before + 3);
  // What an event does is one step, however many transactions it takes.
  {
    const UndoStep step;
    Add_Text("a");
    Add_Text("b");
    const UndoStep inner("innen");
    Add_Text("c");
  }
  EXPECT_EQ(Step_Position(), before + 4);
  EXPECT_EQ(Last_Step(), "innen");
  Step_Back();
  // What is done in a window that waits is called by the command that opened it.
  {
    const UndoStep command("Ersetzen");
    QEventLoop waits;
    QTimer::singleShot(0, &waits, [&waits] {
      const UndoStep step;
      Add_Text("d");
      Add_Text("e");
      waits.quit();
    });
    waits.exec();
  }
  EXPECT_EQ(Last_Step(), "Ersetzen");
  Step_Back();
  EXPECT_EQ(Texts().size(), 2);
}

TEST_F(StepWalk, TheMapShowsWhereItHappened) {
  Set_Zoom(0.5);
  const QString far = Add_Text("weit", 1500, 1100);
  ScrollMap(0, 0);
  ASSERT_LT(Map_X(Map.ViewWidth), 1400);
  const auto shown = [] {
    return QRect(Map_X(0), Map_Y(0), Map_X(Map.ViewWidth) - Map_X(0), Map_Y(Map.ViewHeight) - Map_Y(0));
  };
  Step_Back();  // the place of an entry that is no longer there
  EXPECT_TRUE(shown().contains(1500, 1100));
  ScrollMap(0, 0);
  Step_Forward();
  EXPECT_TRUE(shown().contains(1500, 1100));
  const ViewPlace view = View_Now();
  Go(far);
  Mark_Obj();
  Step_Back();
  EXPECT_EQ(View_Now(), view) << "what is to be seen needs no scrolling";
  Add_Polygon("Flaeche1", {{1500, 1100}, {1600, 1100}, {1550, 1200}});
  Write_Vertices("Flaeche1", {{1500, 1100}, {1600, 1100}, {1550, 1250}});
  ScrollMap(0, 0);
  Step_Back();  // of vertices no row tells
  EXPECT_TRUE(shown().contains(1550, 1150));
}

// The last of them says where to look, all of them what has to be read again.
TEST_F(StepWalk, SeveralStepsAtOnceAreFollowedWhole) {
  const int before = Step_Position();
  HeaderRow header = Read_Header();
  header.netVisible = GridVisible = !header.netVisible;
  Write_Header(header);
  Add_Text("Reh", 100, 100);
  for (const int to : {before, before + 2}) {
    Walk_To_Step(to);
    EXPECT_EQ(GridVisible, Read_Header().netVisible) << to - before;
  }
}

TEST_F(StepWalk, SavingAndLoadingAnewKeepTheHistory) {
  Add_Texts(3);
  const QStringList three = Whole_Table();
  const int count = Step_Position();
  Step_Back();
  const MessageScript any(MsgAnswer::Yes);
  const FileDialogScript files({Path("Andere.MDB")});
  for (const char* key : {"mnuTableSave", "mnuTabComp", "mnuTabRep", "mnuZoom50", "mnuTableSaveAs", "mnuMapLoad"}) {
    Run_Command(QString::fromLatin1(key));
    ASSERT_TRUE(frmMDI.MapOpen) << key;
    EXPECT_EQ(Step_Position(), count - 1) << key << Last_Step();
    EXPECT_EQ(Step_Count(), count) << key;
  }
  Step_Forward();
  QStringList now = Whole_Table();
  now.removeIf([&three](const QString& line) { return three.contains(line); });
  EXPECT_EQ(Entry_Count(), 3);
  EXPECT_LE(now.size(), 1) << "but the header row: " << now.join(u'\n').toStdString();
}

TEST_F(StepWalk, AnotherTableGoesBackWithItsName) {
  Add_Texts(2);
  const QStringList two = Texts();
  const QString own = Tbl.DBGrid1.Caption;
  MessageScript any(MsgAnswer::Yes);
  {
    const FileDialogScript files({Path("Zweite.MDB")});
    Run_Command("mnuTableSaveAs");
  }
  const QString second = Tbl.DBGrid1.Caption;
  ASSERT_NE(second, own);
  Run_Command("mnuTableNeu");
  ASSERT_EQ(Entry_Count(), 0);
  EXPECT_EQ(Last_Step(), "Einträge neu");
  EXPECT_EQ(Tbl.DBGrid1.Caption, own);
  Step_Back();
  EXPECT_EQ(Texts(), two);
  EXPECT_EQ(Tbl.DBGrid1.Caption, second) << "saving would write these entries over the other file";
  Step_Forward();
  EXPECT_EQ(Entry_Count(), 0);
  EXPECT_EQ(Tbl.DBGrid1.Caption, own);
}

TEST_F(StepWalk, TheNamedOperationAsksForLaterStepsAndComesBack) {
  Add_Texts(3);
  for (const char* name : {"Ort 0", "Ort 1"}) {
    Go(Key_Of_Text(name));
    Mark_Obj();
  }
  Go(Key_Of_Text("Ort 2"));
  Order_Entry(-10);
  const QStringList before = Texts();
  Add_Text("später 1");
  Add_Text("später 2");
  const QStringList after = Texts();
  With_Box("Auch die 2 späteren Schritte werden zurückgenommen.", MsgAnswer::No,
           [] { return Run_Command("mnuReset"); });
  EXPECT_EQ(Texts(), after);
  {
    const MessageScript asked({{"2 späteren", MsgAnswer::Yes}, {"wieder hergestellt", MsgAnswer::Ok}});
    Run_Command("mnuReset");
  }
  EXPECT_EQ(Texts(), (QStringList{"Ort 0", "Ort 1", "Ort 2"}));
  EXPECT_EQ(Last_Step(), "Rückgängig: Verschieben");
  Step_Back();
  EXPECT_EQ(Texts(), after);
  Step_Forward();
  EXPECT_EQ(Texts(), (QStringList{"Ort 0", "Ort 1", "Ort 2"}));
}

TEST_F(StepWalk, WhatWasLeftBehindIsClearedInTime) {
  const QString me = QString::number(QCoreApplication::applicationPid()), gone = QStringLiteral("offen 999999999-1");
  // The run, its age in days, whether it stays, and where much lies.
  const std::tuple<QString, int, bool, bool> cases[] = {
      {"zu 1-1", 0, false, false}, {gone, 0, true, true},
      {gone, 6, true, true},       {gone, 8, true, false},
      {gone, 61, false, false},    {"", 59, true, false},
      {"", 61, false, false},      {"offen " + me + "-1", 400, true, true}};
  const auto name = [](int i) { return Program_File(QStringLiteral("Verlauf/Karte%1_0.verlauf").arg(i)); };
  QDir().mkpath(Program_File("Verlauf"));
  for (const bool much : {false, true}) {
    for (int i = 0; i < static_cast<int>(std::size(cases)); ++i) {
      const auto& [run, days, stays, staysWhereMuchLies] = cases[i];
      const auto make = [&, age = days](const QString& path, const QByteArray& content, qint64 bytes) {
        Replace_File(path, content);
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::ReadWrite) && file.resize(bytes) &&
                    file.setFileTime(QDateTime::currentDateTime().addDays(-age), QFileDevice::FileModificationTime));
      };
      make(name(i), "x", much ? qint64{600} << 20 : 9);
      if (!run.isEmpty()) make(name(i) + ".lauf", run.toUtf8(), run.size());
    }
    Clear_Histories();
    for (int i = 0; i < static_cast<int>(std::size(cases)); ++i)
      EXPECT_EQ(QFile::exists(name(i)), much ? std::get<3>(cases[i]) : std::get<2>(cases[i])) << i << much;
  }
}

// What is being drawn is no step yet: going back means its last vertex, and the table only when there is none left.
TEST_F(StepWalk, WhatIsBeingDrawnGoesBackVertexByVertex) {
  Add_Text("vorher");
  const int before = Step_Position();
  const QStringList table = Whole_Table();
  Poly_Editor(PolyEditor::Kind::Line);
  for (const QPoint at : {QPoint(10, 10), QPoint(60, 10), QPoint(60, 60), QPoint(99, 99)}) Click(at);
  EXPECT_EQ(Command_Text(*Find_Command("mnuStepBack")), "Rückgängig: Eckpunkt");
  EXPECT_FALSE(Needs_Met(Needs::StepAhead));
  Run_Command("mnuStepForward");
  Run_Command("mnuStepBack");
  Run_Command("mnuStepBack");
  EXPECT_EQ(Points_Being_Drawn()->All().size(), 2u);
  Run_Command("mnuStepForward");
  EXPECT_EQ(Points_Being_Drawn()->All().back(), QPoint(60, 60));
  EXPECT_EQ(Whole_Table(), table);
  Map_Key(Qt::Key_Return, {});
  EXPECT_EQ(Step_Position(), before + 1) << "the whole line is one step";
  EXPECT_EQ(Entry_Count(), 2);
  Run_Command("mnuStepBack");
  EXPECT_EQ(Whole_Table(), table);
  Poly_Editor(PolyEditor::Kind::Area);
  Click({10, 10});
  Run_Command("mnuStepBack");
  EXPECT_EQ(Step_Position(), before);
  Run_Command("mnuStepBack");
  EXPECT_EQ(Step_Position(), before - 1) << "none is left";
  EXPECT_EQ(Map_Tool_In_Use(), nullptr);
}

// A key held down comes as many events.
TEST_F(StepWalk, AHeldKeyIsOneStep) {
  const QString first = Add_Text("Moor", 100, 100), second = Add_Text("Ried", 200, 100);
  const int before = Step_Position();
  const auto hold = [](const QString& key) {
    Take_Entry(key);
    for (int i = 0; i < 5; ++i) Run_Guarded([] { Map_Key(Qt::Key_Right, {}); });
  };
  hold(first);
  EXPECT_EQ(Step_Position(), before + 1);
  EXPECT_EQ(Row(first).Xmap, 105);
  hold(second);
  EXPECT_EQ(Step_Position(), before + 2) << "another entry";
  Step_Back();
  Take_Entry(first);
  Run_Guarded([] { Map_Key(Qt::Key_Right, {}); });
  EXPECT_EQ(Step_Position(), before + 2) << "after a step back";
  EXPECT_EQ(Row(first).Xmap, 106);
  Step_Back();
  Step_Back();
  EXPECT_EQ(Row(first).Xmap, 100);
}

TEST_F(StepWalk, ManyStepsAheadAreNotDroppedWithoutAQuestion) {
  Add_Texts(14);
  Walk_To_Step(2);
  const QStringList here = Whole_Table();
  const int all = Step_Count();
  {
    const MessageScript refused("12 Schritte zurückgenommen", MsgAnswer::No);
    EXPECT_EQ(Error_Of([] { Append_Entry(Make(0, "Text", "neu", 1, 1)); }), errors::workStopped);
  }
  // One question, and nothing is told of the answer.
  rsEntries->MoveLast();
  Go(rsEntries->Bookmark());
  With_Box("12 Schritte zurückgenommen", MsgAnswer::No, [] { Mark_Obj(); });
  Tbl.EditWarned = true;
  With_Box("12 Schritte zurückgenommen", MsgAnswer::No,
           [] { EXPECT_EQ(Edit_Cell(rsEntries->Key(), column::Eintrag, "anders"), CellEdit::Refused); });
  EXPECT_EQ(Whole_Table(), here);
  EXPECT_EQ(Step_Count(), all);
  With_Box("12 Schritte zurückgenommen", MsgAnswer::Yes, [&] { Append_Entry(Make(0, "Text", "neu", 1, 1)); });
  EXPECT_EQ(Step_Count(), 3);
  Append_Entry(Make(0, "Text", "weiter", 1, 1));
  for (int i = 0; i < 4; ++i) Step_Back();
  EXPECT_EQ(Entry_Count(), 0);
  Append_Entry(Make(0, "Text", "ohne Frage", 1, 1));
  EXPECT_EQ(Step_Count(), 1);
}

TEST_F(StepWalk, LostStepsAreToldOnce) {
  Add_Texts(2);
  File_Write_Fault = [](const QString& path, qint64) { return path.contains("Verlauf/") ? 61 : 0; };
  Append_Entry(Make(0, "Text", "trotzdem", 1, 1));
  File_Write_Fault = {};
  EXPECT_EQ(Entry_Count(), 3);
  With_Box("die Einträge selbst sind gesichert", [] { Tell_Of_Lost_Steps(); });
  Tell_Of_Lost_Steps();
  EXPECT_FALSE(Can_Step_Back());
}

// What a program that was killed leaves behind: its files as they were.
TEST_F(StepWalk, InterruptedWorkCanBeWalked) {
  Add_Texts(4);
  Step_Back();
  Table_Idle();
  const QStringList here = Whole_Table();
  const QStringList names = QDir(Program_File("Verlauf")).entryList(QDir::Files);
  ASSERT_EQ(names.size(), 2);
  QMap<QString, QByteArray> left;
  for (const QString& name : names) left[Program_File("Verlauf/" + name)] = Read_Bytes(Program_File("Verlauf/" + name));
  left[Path("KARTE.MDB")] = Read_Bytes(Path("KARTE.MDB"));
  const auto open_with = [&](const QByteArray& run) {
    Close_Map();
    for (auto file = left.begin(); file != left.end(); ++file)
      Replace_File(file.key(), file.key().endsWith(".lauf") ? run : *file);
    Clear_Histories();
    Open_Map(Path("Karte.bmp"));
    ASSERT_TRUE(frmMDI.MapOpen);
  };
  open_with("offen 1-1");
  EXPECT_EQ(Whole_Table(), here);
  EXPECT_EQ(Step_Position(), 3);
  EXPECT_EQ(Step_Count(), 4);
  With_Box("Die 3 Schritte dieser Arbeit sind gesichert", [] { Tell_Of_Interrupted_Work(); });
  Tell_Of_Interrupted_Work();  // once
  Walk_To_Step(4);
  EXPECT_EQ(Entry_Count(), 4);
  open_with("zu 1-1");
  EXPECT_EQ(Step_Count(), 0) << "a program that ended in order leaves no steps";
  EXPECT_EQ(Whole_Table(), here);
  EXPECT_FALSE(History_Was_Interrupted());
}

}  // namespace
