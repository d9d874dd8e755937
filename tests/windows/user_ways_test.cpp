#include "store/map_log.h"
#include "windows/canvas/frmMass.h"
#include "windows/objects/frmFarb.h"

// What a user meets: where windows stand, what they hide, what the status bar says.

class UserWays : public WindowTest {
 protected:
  QMdiSubWindow* Frame_Of(QWidget& inner) const { return qobject_cast<QMdiSubWindow*>(inner.parentWidget()); }
  // What is seen of the map, on the screen.
  QRect Picture() const { return {Canvas()->mapToGlobal(QPoint()), QSize(Map.ViewWidth, Map.ViewHeight)}; }
  QMenu& Windows_Menu() { return *window->Action("mnuFenster")->menu(); }
  QStringList Windows_Listed() {
    Windows_Menu().aboutToShow();
    QStringList titles;
    for (int line = 1; line <= 10; ++line)
      if (QAction* action = window->Action("mnuWindow", line); action->isVisible()) titles << action->text();
    return titles;
  }
};

class SharedRoom : public UserWays, public testing::WithParamInterface<std::tuple<int, int, double>> {
  const Letters letters{std::get<2>(GetParam())};
};

INSTANTIATE_TEST_SUITE_P(Sizes, SharedRoom,
                         testing::Values(std::tuple(1024, 700, 1.0), std::tuple(1024, 700, 1.5),
                                         std::tuple(1024, 700, 2.0), std::tuple(1400, 900, 2.0),
                                         std::tuple(800, 600, 1.0)));

TEST_P(SharedRoom, MapAndTableLieBesideEachOther) {
  window->resize(std::get<0>(GetParam()), std::get<1>(GetParam()));
  Settle();
  for (const QSize size : {QSize(2400, 1800), QSize(2000, 420), QSize(300, 1500)}) {
    Open(size.width(), size.height());
    const QRect room = Frame_Of(window->Map_Window())->parentWidget()->rect();
    for (const char* zoom : {"mnuZoom50", "mnuZoomBreite", "mnuZoom100"}) {
      Choose(zoom);
      const QRect upper = Frame_Of(window->Map_Window())->geometry(),
                  lower = Frame_Of(window->Table_Window())->geometry();
      EXPECT_FALSE(upper.intersects(lower)) << zoom << " " << size.width();
      EXPECT_TRUE(room.contains(lower) && room.contains(upper)) << zoom << " " << size.width();
      EXPECT_GE(window->Table_Window().Grid().viewport()->height(), 20) << zoom;
      EXPECT_GE(Map.ViewHeight, 40) << zoom;
    }
  }
}

TEST_F(UserWays, ATableWithPicturesIsShownLikeAnyOther) {
  Open(2400, 1800);
  Append_Entry({"Bild", "Foto.bmp", "-", 0, 0, 0, 0, 10, 10, 0, 0, 5});
  Choose("mnuMapLoad");
  EXPECT_TRUE(Frame_Of(window->Table_Window())->isVisible());
  Choose("mnuDBGridOn");
  EXPECT_EQ(Frame_Of(window->Map_Window())->geometry().bottom(),
            Frame_Of(window->Map_Window())->parentWidget()->rect().bottom());
}

TEST_F(UserWays, TheHelpOpensOnTheScreenAndFromEveryDialog) {
  const QRect screen = window->screen()->availableGeometry();
  Open(300, 200);
  auto& colors = Chosen<FrmFarb>("mnuFarbe");
  colors.move(screen.right() - 60, screen.bottom() - 60);
  QTest::keyClick(&colors, Qt::Key_F1);
  ASSERT_NE(Help(), nullptr);
  EXPECT_TRUE(screen.contains(Help()->frameGeometry()));
  Help()->close();
  Settle();
  // What the desktop shows has the key too.
  QStringList pages;
  dialogHooks.Help = [&pages](const QString& page) { pages << page; };
  const auto press = [](QWidget& dialog) {
    dialog.activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&dialog));
    QTest::keyClick(&dialog, Qt::Key_F1);
    dialog.close();
  };
  When_Shown(press);
  Desktop_Message({.text = "Frage", .title = "Import", .helpPage = "CSV-Import.htm"});
  When_Shown(press);
  FileRequest request;
  request.folder = folder.path();
  request.helpPage = QStringLiteral("Karte.htm");
  Desktop_File_Dialog(request);
  When_Shown(press);
  Desktop_Input_Box("Name", "Titel", {});
  QDialog print(window.get());  // as "Karte drucken"
  Give_Help(print, "Drucken.htm");
  print.show();
  press(print);
  EXPECT_EQ(pages, QStringList({"CSV-Import.htm", "Karte.htm", "", "Drucken.htm"}));
}

TEST_F(UserWays, ToolWindowsHideNothingTheyAskForAndComeBackWhereTheyWere) {
  Open(300, 200);
  auto& scale = Chosen<FrmMass>("mnuMass");
  EXPECT_FALSE(scale.frameGeometry().intersects(Picture()));
  EXPECT_TRUE(scale.screen()->availableGeometry().contains(scale.frameGeometry()));
  // A second one hides the first no more than it must.
  Choose("mnuFarbe");
  EXPECT_NE(Shown<FrmFarb>().pos(), scale.pos());
  const QPoint left(37, 61);
  for (int session = 0; session < 2; ++session) {
    Shown<FrmFarb>().move(left);
    Shown<FrmFarb>().close();
    Settle();
    Choose("mnuFarbe");
    EXPECT_EQ(Shown<FrmFarb>().pos(), left);
  }
  // The screen it stood on may be gone.
  Shown<FrmFarb>().move(5000, 4000);
  Shown<FrmFarb>().close();
  Settle();
  Choose("mnuFarbe");
  EXPECT_TRUE(scale.screen()->availableGeometry().contains(Shown<FrmFarb>().geometry()));
}

TEST_F(UserWays, TheWindowsThatAreOpenStandInTheirMenu) {
  EXPECT_EQ(Windows_Listed(), QStringList());
  Open(300, 200);
  dialogHooks.NotePad({});
  Choose("mnuFarbe");
  const QStringList titles = Windows_Listed();
  ASSERT_EQ(titles.size(), 4) << titles.join(u'|');
  EXPECT_TRUE(titles[0].startsWith("Map: ") && titles[1].startsWith("Tabelle der Einträge")) << titles.join(u'|');
  EXPECT_EQ(titles.mid(2), QStringList({"Notiz 1", Shown<FrmFarb>().windowTitle()}));
  const auto* area = Child<QMdiArea>("area");
  for (const int line : {2, 1, 3}) {
    Choose("mnuWindow", line);
    EXPECT_EQ(area->activeSubWindow()->windowTitle(), titles[line - 1]);
  }
  Frame_Of(window->Table_Window())->showMinimized();
  Settle();
  Choose("mnuWindow", 2);
  EXPECT_FALSE(Frame_Of(window->Table_Window())->isMinimized());
}

TEST_F(UserWays, HintsAreReadWholeInAWideWindow) {
  window->resize(1600, 900);
  Open(1200, 900);
  InfoBar.Panel[2] = QString(60, u'x') + "/KARTE.MDB";
  events.StateChanged.Emit();
  const auto whole = [this](const char* name) {
    const auto* panel = Child<ElidedLabel>(name);
    return panel->Whole_Width() <= panel->width();
  };
  for (const Command& command : Command_Table()) {
    QStatusTipEvent tip(command.help);
    QApplication::sendEvent(window.get(), &tip);
    EXPECT_TRUE(whole("Panel2")) << command.help;
  }
  QStatusTipEvent none{QString()};
  QApplication::sendEvent(window.get(), &none);
  for (const char* tool :
       {"mnuInsText", "mnuInsSymbol", "mnuInsBild", "mnuInsLinie", "mnuInsFl", "mnuInsMass", "mnuInsFigur", "Lupe"}) {
    Run_Command(tool);
    EXPECT_FALSE(InfoBar.Panel[0].isEmpty()) << tool;
    EXPECT_TRUE(whole("Panel1")) << InfoBar.Panel[0];
    Run_Command(tool);
    for (QDialog* open : window->findChildren<QDialog*>()) open->close();
  }
}

TEST_F(UserWays, TheKeysOfTheMapWorkFromTheTable) {
  Open(600, 400);
  const QString key = Add({"Text", "Reh", "Arial", 10, 0, 14, -1, 40, 10, 0, 0, 0});
  events.TableChanged.Emit();
  Settle();
  TblGrid& grid = window->Table_Window().Grid();
  QApplication::setActiveWindow(window.get());
  grid.setFocus();
  grid.setCurrentIndex(grid.model()->index(1, 1));
  Settle();
  ASSERT_EQ(Map.InHand, key);
  Key_On(&grid, Qt::Key_M, Qt::ControlModifier);
  EXPECT_EQ(Row(key).Typ, 200);
  Key_On(&grid, Qt::Key_D, Qt::ControlModifier);
  EXPECT_EQ(Map.Tool, "Dupl");
  Key_On(&grid, Qt::Key_Escape);
  EXPECT_EQ(std::tuple(Map.Tool, Map.InHand), std::tuple("", key));
  Key_On(&grid, Qt::Key_Escape);
  EXPECT_EQ(Map.InHand, "");
  // While a cell is being typed the keys belong to it.
  Tbl.EditWarned = true;
  for (const int row : {0, 1}) grid.setCurrentIndex(grid.model()->index(row, 1));
  Settle();
  ASSERT_EQ(Map.InHand, key);
  QTest::keyClick(&grid, Qt::Key_F2);
  auto* cell = grid.findChild<QLineEdit*>();
  ASSERT_NE(cell, nullptr);
  Key_On(cell, Qt::Key_Escape);
  EXPECT_EQ(Map.InHand, key);
}

TEST_F(UserWays, AMapThatIsGoneLeavesTheListAndNothingElse) {
  const QString gone = Make_Map("Fort.bmp", 200, 100);
  {
    const FileDialogScript files({gone});
    Choose("mnuFOpen");
    for (const char* kind : {"*.bmp", "*.rle", "*.gif", "*.jpg", "*.jpeg", "*.png", "*.wmf"})
      EXPECT_TRUE(files.Seen()[0].filter.section(u'|', 1, 1).split(u';').contains(kind)) << kind;
  }
  Open(300, 200);
  const QString open = MapFile;
  ASSERT_EQ(Menu("mnuMapFile", 2).Tag, gone);
  ASSERT_TRUE(QFile::remove(gone));
  With_Box("Diese Datei wurde nicht gefunden:", [&] { Choose("mnuMapFile", 2); });
  EXPECT_TRUE(frmMDI.MapOpen && MapFile == open);
  EXPECT_NE(Menu("mnuMapFile", 2).Tag, gone);
  for (const auto& [list, name] : {std::pair("mnuRecentFile", "Notiz.txt"), std::pair("mnuOverlay", "ANDERE.MDB")}) {
    Write_Log(Path(name), QLatin1String(list) == "mnuOverlay" ? 2 : 3);
    Read_Log(2);
    Read_Log(3);
    ASSERT_EQ(Menu(list, 1).Tag, Path(name));
    const MessageScript messages("Diese Datei wurde nicht gefunden:");
    Choose(list, 1);
    EXPECT_NE(Menu(list, 1).Tag, Path(name));
    EXPECT_EQ(Entry_Count(), 0);
  }
  // Whatever way it is asked for.
  const MessageScript messages("nicht gefunden");
  Open_User_Map(gone);
  EXPECT_EQ(MapFile, open);
}
