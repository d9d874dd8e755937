TEST(MenuTableTest, EveryCommandStandsInOneMenuUnderItsOwnKeys) {
  QSet<QString> shown, shortcuts, buttons;
  for (const MenuRow& menu : Menu_Table()) {
    QSet<QString> letters;
    for (const QString& key : menu.rows) {
      if (key.startsWith(QLatin1Char('-'))) continue;
      const Command* command = Find_Command(key);
      const MenuRow* inner = Find_Menu(key);
      ASSERT_TRUE((command == nullptr) != (inner == nullptr)) << key << " is not one of both";
      EXPECT_FALSE(shown.contains(key)) << key << " twice";
      shown << key;
      const QString letter = QKeySequence::mnemonic(inner ? inner->text : command->text).toString();
      EXPECT_FALSE(!letter.isEmpty() && letters.contains(letter)) << key << ": access key " << letter << " twice";
      letters << letter;
    }
  }
  for (const ToolRow& row : Toolbar_Table()) buttons << row.command << row.rightCommand;
  for (const QString& key : buttons) EXPECT_TRUE(key.isEmpty() || Find_Command(key)) << key;
  for (const Command& command : Command_Table()) {
    EXPECT_TRUE(shown.contains(command.key) || buttons.contains(command.key)) << command.key << " is nowhere";
    EXPECT_FALSE(command.help.isEmpty()) << command.key;
    for (const QString& shortcut : command.shortcut.split(QLatin1Char(' '), Qt::SkipEmptyParts)) {
      EXPECT_FALSE(shortcuts.contains(shortcut)) << shortcut << " twice";
      EXPECT_FALSE(QKeySequence(shortcut, QKeySequence::PortableText).isEmpty()) << shortcut;
      shortcuts << shortcut;
    }
  }
  for (const QString& key : Popup_Table()) EXPECT_TRUE(key == QLatin1String("-") || shown.contains(key)) << key;
}

TEST_F(WindowTest, WithoutMapOnlyOpeningAndHelpAreOffered) {
  QStringList enabled;
  for (const QAction* menu : window->menuBar()->actions())
    if (menu->isEnabled()) enabled << menu->objectName();
  EXPECT_EQ(enabled, QStringList({"mnuKarte", "mnuHilfe"}));
  for (const char* key : {"mnuMapClose", "mnuMapLoad", "mnuMapSize", "mnuTableSave", "mnuZoom100", "mnuBildHell"})
    EXPECT_FALSE(window->Action(key)->isEnabled()) << key;
  for (const char* key : {"mnuMapNeu", "mnuFOpen", "mnuNoTable", "mnuOptionen", "mnuFluraxFini", "mnuHelpIndex"})
    EXPECT_TRUE(window->Action(key)->isEnabled()) << key;
  EXPECT_EQ(window->windowTitle(), "FLURAX - 100%");
  EXPECT_TRUE(Child<QWidget>("frmMapStart")->isVisible());
  EXPECT_TRUE(Child<QToolBar>("Toolbar1")->isHidden());
  EXPECT_EQ(Child<ElidedLabel>("Panel1")->Whole_Text(), InfoBar.Panel[0]);
  Press_Tool("Map");
  EXPECT_EQ(window->menuBar()->activeAction(), window->Action("mnuKarte"));
  window->menuBar()->setActiveAction(nullptr);
}

TEST_F(WindowTest, AMapIsOpenedClosedOnceAndOpenedFromTheStartWindow) {
  Open(700, 500);
  const QString map = MapFile;
  EXPECT_TRUE(Canvas()->isVisible());
  EXPECT_EQ(Child<QWidget>("frmMapStart"), nullptr);
  EXPECT_FALSE(Child<QToolBar>("Toolbar1")->isHidden());
  EXPECT_EQ(window->Map_Window().windowTitle(), Map.Caption);
  auto* child = qobject_cast<QMdiSubWindow*>(window->Map_Window().parentWidget());
  int closed = 0;
  events.MapClosed.Connect([&closed] { ++closed; });
  child->close();
  Settle();
  EXPECT_EQ(closed, 1);
  EXPECT_FALSE(frmMDI.MapOpen || child->isVisible());
  auto* recent = Child<QListWidget>("lstRecent");
  ASSERT_TRUE(recent->isVisible());
  ASSERT_EQ(recent->count(), 1);  // the demo map is not there, so it is not offered
  EXPECT_EQ(recent->item(0)->toolTip(), map);
  EXPECT_TRUE(Child<QWidget>("frmMapStart")->rect().contains(recent->geometry()));
  QTest::mouseClick(recent->viewport(), Qt::LeftButton, {}, recent->visualItemRect(recent->item(0)).center());
  QTest::qWait(1);
  EXPECT_EQ(MapFile, map);
  EXPECT_TRUE(frmMDI.MapOpen && child->isVisible());
  Choose("mnuMapClose");
  EXPECT_TRUE(Child<QWidget>("frmMapStart")->isVisible());
  Choose("mnuMapFile", 1);
  EXPECT_TRUE(Canvas()->isVisible());
}

TEST_F(WindowTest, KeysReachTheirEntriesWithAMapOpen) {
  Open(2400, 1800);
  QApplication::setActiveWindow(window.get());
  const auto press = [this](Qt::Key key, Qt::KeyboardModifiers with) { Key_On(&window->Map_Window(), key, with); };
  for (const auto& [key, zoom] :
       {std::pair(Qt::Key_5, 2.0F), {Qt::Key_Plus, 1.6F}, {Qt::Key_Minus, 2.0F}, {Qt::Key_0, 1.0F}}) {
    press(key, Qt::ControlModifier);
    EXPECT_EQ(Map.Zoom, zoom) << key;
  }
  int opened = 0;
  events.MapOpened.Connect([&opened] { ++opened; });
  press(Qt::Key_F5, Qt::NoModifier);
  EXPECT_EQ(opened, 1);
  press(Qt::Key_W, Qt::ControlModifier);
  EXPECT_FALSE(frmMDI.MapOpen);
}

// The bar makes its list of access keys anew when one of its menus becomes of use or of none.
TEST_F(WindowTest, AMenuStaysOpenWhenAnotherChangesMeanwhile) {
  const auto menus = window->menuBar()->actions();
  QMenu& menu = *menus[0]->menu();
  QAction& other = *menus[2];
  QObject::connect(&menu, &QMenu::aboutToShow, &other, [&other] { other.setEnabled(!other.isEnabled()); });
  QApplication::setActiveWindow(window.get());
  QTest::keyClick(window.get(), Qt::Key_K, Qt::AltModifier);
  EXPECT_EQ(QApplication::activePopupWidget(), &menu);
  EXPECT_NE(menu.activeAction(), nullptr) << "the keys go on from the first entry";
  menu.close();
}

// Two seconds after the last key or button what waits in the log is folded into the table file.
TEST_F(WindowTest, IdleTimeBringsTheTableFileUpToDate) {
  Open(300, 200);
  const auto rowsInCopy = [this](const QString& name) {
    EXPECT_TRUE(QFile::copy(TableFile, Path(name)));
    const auto copy = Workspace::OpenDatabase(Path(name));
    return copy->RowCount(QStringLiteral("MapData"));
  };
  Append_Entry({"Text", "Text", {}, 0, 0, 0, 0, 0, 0, 0, 0, 0});
  const int before = rowsInCopy(QStringLiteral("vorher.mdb"));
  QTest::mouseClick(Canvas(), Qt::LeftButton);
  QTest::qWait(2400);
  EXPECT_EQ(rowsInCopy(QStringLiteral("nachher.mdb")), before + 1);
}

// Choosing the checked one leaves the check where it is.
TEST_F(WindowTest, OneOfAGroupIsChecked) {
  Open(2400, 1800);
  for (const QStringList& group : {QStringList{"mnuBildHell", "mnuBildDunkel"}, {"mnuZoom50", "mnuZoomBreite"}})
    for (const QString& chosen : {group[0], group[1], group[1]}) {
      Choose(chosen);
      for (const QString& key : group) EXPECT_EQ(window->Action(key)->isChecked(), key == chosen) << key << chosen;
    }
}

TEST_F(WindowTest, SafeModeTellsItsStateInTheMenu) {
  const QAction* safe = window->Action("mnuNoTable");
  const MessageScript messages{{"Wählen Sie diese Option"}, {"zuletzt bearbeiteten Karteneinträgen"}};
  Choose("mnuNoTable");
  EXPECT_TRUE(safe->isChecked() && frmMDI.SafeMode);
  EXPECT_EQ(safe->text(), "im abgesicherten Modus öffnen - ja");
  Choose("mnuNoTable");
  EXPECT_FALSE(safe->isChecked());
}

TEST_F(WindowTest, ToolbarFollowsItsStateAndTheOptions) {
  Open(300, 200);
  auto* toolbar = Child<QToolBar>("Toolbar1");
  for (const auto& [place, where] : {std::pair(ToolbarPlace::Bottom, Qt::BottomToolBarArea),
                                     {ToolbarPlace::Left, Qt::LeftToolBarArea},
                                     {ToolbarPlace::Right, Qt::RightToolBarArea},
                                     {ToolbarPlace::Top, Qt::TopToolBarArea}}) {
    frmMDI.toolbarPlace = place;
    events.StateChanged.Emit();
    EXPECT_EQ(window->toolBarArea(toolbar), where);
    EXPECT_TRUE(toolbar->isVisible());
  }
  for (const bool raised : {true, false}) {
    frmMDI.raisedButtons = raised;
    events.StateChanged.Emit();
    for (QAction* action : toolbar->actions())
      EXPECT_NE(qobject_cast<QToolButton*>(toolbar->widgetForAction(action))->autoRaise(), raised);
  }
  // Full text, picture and explanation: nothing is left to guess.
  for (const QAction* action : toolbar->actions()) {
    EXPECT_FALSE(action->icon().isNull()) << action->objectName();
    EXPECT_FALSE(action->statusTip().isEmpty()) << action->objectName();
  }
}

TEST_F(WindowTest, PathsAndHelpAreShownAsTheyAre) {
  Menu(QStringLiteral("mnuMapFile"), 1).Caption = QStringLiteral("/karten/Tier & Pflanze.bmp");
  Menu(QStringLiteral("mnuMapFile"), 1).Visible = true;
  Menu(QStringLiteral("mnuMapFile"), 2).Caption.clear();
  InfoBar.Panel[1] = QStringLiteral("F1 - Hilfe");
  events.StateChanged.Emit();
  EXPECT_EQ(window->Action("mnuMapFile", 1)->text(), "/karten/Tier && Pflanze.bmp");
  EXPECT_FALSE(window->Action("mnuMapFile", 2)->isVisible());
  // The help of an entry stands in the second panel only while it is meant.
  auto* panel = Child<ElidedLabel>("Panel2");
  window->Action("mnuFOpen")->hover();
  window->Action("mnuFOpen")->showStatusText(window.get());
  EXPECT_EQ(panel->Whole_Text(), window->Action("mnuFOpen")->statusTip());
  QStatusTipEvent leave{QString()};
  QApplication::sendEvent(window.get(), &leave);
  EXPECT_EQ(panel->Whole_Text(), "F1 - Hilfe");
  EXPECT_TRUE(panel->toolTip().isEmpty());
  InfoBar.Panel[1] = QString(400, QLatin1Char('m'));
  events.StateChanged.Emit();
  EXPECT_EQ(panel->toolTip(), InfoBar.Panel[1]);
  EXPECT_LE(window->width(), 1100);  // the text does not push the window open
}

struct Thrower : QObject {
  bool event(QEvent* event) override {
    if (event->type() != QEvent::User) return QObject::event(event);
    Raise(errors::diskFull);
  }
};

TEST_F(WindowTest, UncaughtErrorIsToldAndTheProgramGoesOn) {
  Open(300, 200);
  Thrower thrower;
  {
    const MessageScript messages("Programmfehler ", MsgAnswer::No);
    QApplication::postEvent(&thrower, new QEvent(QEvent::User));
    Settle();
    for (const QString& part : {QStringLiteral("Programm beenden ?"), Error_Text(errors::diskFull)})
      EXPECT_TRUE(messages.Seen().at(0).text.contains(part)) << part;
  }
  EXPECT_TRUE(window->isVisible() && frmMDI.MapOpen);
  MessageScript messages("Programmfehler ", MsgAnswer::Yes);
  QApplication::postEvent(&thrower, new QEvent(QEvent::User));
  Settle();
  EXPECT_FALSE(window->isVisible() || frmMDI.MapOpen);
}
