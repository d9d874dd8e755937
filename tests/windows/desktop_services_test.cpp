static QStringList Captions(const QWidget& box) {
  QStringList texts;
  for (const auto* button : box.findChildren<QPushButton*>()) texts << button->text().remove(QLatin1Char('&'));
  texts.sort();
  return texts;
}

TEST(DesktopMessageTest, ButtonsAreGermanAndEscapeIsTheCarefulAnswer) {
  const std::tuple<MsgButtons, QStringList, MsgAnswer, MsgAnswer> cases[] = {
      {MsgButtons::Ok, {"OK"}, MsgAnswer::Ok, MsgAnswer::Ok},
      {MsgButtons::OkCancel, {"Abbrechen", "OK"}, MsgAnswer::Ok, MsgAnswer::Cancel},
      {MsgButtons::YesNo, {"Ja", "Nein"}, MsgAnswer::Yes, MsgAnswer::No},
      {MsgButtons::YesNoCancel, {"Abbrechen", "Ja", "Nein"}, MsgAnswer::Yes, MsgAnswer::Cancel},
      {MsgButtons::YesNoAll, {"Ja", "Ja, für alle", "Nein", "Nein, für alle"}, MsgAnswer::Yes, MsgAnswer::NoAll},
  };
  for (const auto& [buttons, captions, first, careful] : cases) {
    MsgRequest request{.text = "Zeile 1\rZeile <b>2</b>", .buttons = buttons, .title = " Karte öffnen. "};
    When_Shown([&captions = captions](QWidget& box) {
      EXPECT_EQ(Captions(box), captions);
      EXPECT_EQ(box.windowTitle(), "Karte öffnen.");
      EXPECT_EQ(qobject_cast<QMessageBox*>(&box)->text(), "Zeile 1\nZeile <b>2</b>");
      QTest::keyClick(&box, Qt::Key_Escape);
    });
    EXPECT_EQ(Desktop_Message(request), careful);
    When_Shown([](QWidget& box) { QTest::keyClick(&box, Qt::Key_Return); });
    EXPECT_EQ(Desktop_Message(request), first);
    if (buttons == MsgButtons::Ok) continue;
    request.defaultButton = MsgDefault::Second;
    When_Shown([](QWidget& box) { QTest::keyClick(&box, Qt::Key_Return); });
    EXPECT_EQ(Desktop_Message(request), buttons == MsgButtons::OkCancel ? MsgAnswer::Cancel : MsgAnswer::No);
  }
}

TEST(DesktopMessageTest, HourglassGoesAwayWhileTheUserIsAsked) {
  QApplication::setOverrideCursor(Qt::WaitCursor);
  When_Shown([](QWidget& box) {
    EXPECT_EQ(QApplication::overrideCursor()->shape(), Qt::ArrowCursor);
    box.close();
  });
  Desktop_Message({.text = "Frage", .title = QString()});
  ASSERT_NE(QApplication::overrideCursor(), nullptr);
  EXPECT_EQ(QApplication::overrideCursor()->shape(), Qt::WaitCursor);
  QApplication::restoreOverrideCursor();
}

// A window that asks and closes itself is gone when the answer is told; the box belongs to what is still to be seen.
TEST(DesktopMessageTest, ABoxBelongsToAWindowThatIsThere) {
  QDialog list;
  QDialog choice(&list);
  list.show();
  choice.show();
  QApplication::setActiveWindow(&list);
  EXPECT_EQ(Dialog_Parent(), &list);
  QApplication::setActiveWindow(&choice);
  choice.hide();
  QApplication::setActiveWindow(&choice);
  EXPECT_EQ(Dialog_Parent(), &list);
  QApplication::setActiveWindow(nullptr);
  EXPECT_EQ(Dialog_Parent(), &list);
}

TEST(DesktopFileDialogTest, FiltersAreThoseOfTheService) {
  EXPECT_EQ(Dialog_Filters("Bitmap (*.bmp;  *.gif)|*.bmp;*.gif", false),
            QStringList({"Bitmap (*.bmp *.gif)", "Alle Dateien (*)"}));
  EXPECT_EQ(Dialog_Filters("Quelldateien (*.bmp)|*.bmp|Alle Dateien (*.*)|*.*", true),
            QStringList({"Quelldateien (*.bmp)", "Alle Dateien (*)"}));
  EXPECT_EQ(Dialog_Filters("Tabellen|*.MDB", true), QStringList({"Tabellen (*.MDB)"}));
  EXPECT_EQ(Dialog_Filters(QString(), true), QStringList({"Alle Dateien (*)"}));
}

TEST(DesktopFileDialogTest, CancelGivesNothingAndSaveAddsTheEnding) {
  const QTemporaryDir folder;
  const FileRequest request{.save = true,
                            .title = "Sichern",
                            .folder = folder.path(),
                            .name = "Leere_Karte",
                            .defaultExtension = "BMP",
                            .filter = "Karte|*.bmp"};
  When_Shown([](QWidget& dialog) {
    EXPECT_TRUE(Captions(dialog).contains("Abbrechen")) << Captions(dialog).join(' ');
    QTest::keyClick(&dialog, Qt::Key_Escape);
  });
  EXPECT_FALSE(Desktop_File_Dialog(request).has_value());
  When_Shown([](QWidget& dialog) { QMetaObject::invokeMethod(&dialog, "accept"); });
  EXPECT_EQ(Desktop_File_Dialog(request).value_or(QString()), folder.path() + "/Leere_Karte.BMP");
}

// An owner that has gone leaves a clipboard that offers nothing: pasting it would end the program.
TEST(DesktopClipboardTest, NothingIsPastedFromAnEmptyOne) {
  QGuiApplication::clipboard()->setMimeData(new QMimeData);
  QPlainTextEdit plain;
  QTextEdit rich;
  for (QWidget* edit : {static_cast<QWidget*>(&plain), static_cast<QWidget*>(&rich)})
    QTest::keySequence(edit, QKeySequence::Paste);
  EXPECT_EQ(plain.toPlainText() + rich.toPlainText(), "");
  QGuiApplication::clipboard()->setText("Moor");
  QTest::keySequence(&plain, QKeySequence::Paste);
  EXPECT_EQ(plain.toPlainText(), "Moor");
}

TEST(DesktopInputBoxTest, ProposalIsTakenOrTheInputCancelled) {
  When_Shown([](QWidget& dialog) { QTest::keyClick(&dialog, Qt::Key_Return); });
  EXPECT_EQ(Desktop_Input_Box("Name:", {}, "Wiese").value_or(QString()), "Wiese");
  When_Shown([](QWidget& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); });
  EXPECT_FALSE(Desktop_Input_Box("Name:", {}, "Wiese").has_value());
}

TEST(DesktopProgressTest, CancelButtonStopsTheWork) {
  const auto face = Make_Desktop_Progress();
  face->Show("Tabelle komprimieren", 10);
  EXPECT_TRUE(face->Step(3));
  auto* window = qobject_cast<QProgressDialog*>(QApplication::activeModalWidget());
  ASSERT_NE(window, nullptr);
  EXPECT_EQ(window->value(), 3);
  auto* cancel = window->findChild<QPushButton*>();
  ASSERT_NE(cancel, nullptr);
  EXPECT_EQ(cancel->text(), "Abbrechen");
  QTest::mouseClick(cancel, Qt::LeftButton);
  EXPECT_FALSE(face->Step(4));
}

TEST(DesktopShellTest, TellsTheEndOfAProgramAndThatOneIsMissing) {
  const ShellFace shell = Desktop_Shell();
  bool ended = false;
  ASSERT_TRUE(shell.start("/bin/sh", {"-c", "exit 3"}, [&ended] { ended = true; }));
  EXPECT_TRUE(QTest::qWaitFor([&ended] { return ended; }, 3000));
  ended = false;
  EXPECT_FALSE(shell.start("/nirgends/malprogramm", {}, [&ended] { ended = true; }));
  QTest::qWait(50);
  EXPECT_FALSE(ended);
  EXPECT_FALSE(shell.open("/nirgends/karte.bmp"));
}
