#include "windows/canvas/frmClipboard.h"

// The hand on the map through the windows: mouse, keys, edit box, popup, tool buttons.

class HandWindow : public WindowTest {
 protected:
  void SetUp() override {
    WindowTest::SetUp();
    Open(600, 400);
    first = Add(QStringLiteral("Eisvogel"), 50, 60);
    second = Add(QStringLiteral("Biber"), 300, 200);
    Map_Redraw();
    Settle();
  }
  static QString Add(const QString& text, int x, int y) {
    return WindowTest::Add({"Text", text, "Arial", 14, 0, 15, -1, x, y, 0, 0, 0});
  }
  static QPoint On(const QString& bookmark) {
    const EntryRow row = Row(bookmark);
    return {Window_X(row.Xmap) + 12, Window_Y(row.Ymap) + 10};
  }
  void Click(QPoint at, Qt::KeyboardModifiers with = Qt::NoModifier, Qt::MouseButton button = Qt::LeftButton) {
    QTest::mouseClick(Canvas(), button, with, at);
    Settle();
  }
  MapEditor* Editor() const { return Child<MapEditor>("Text2"); }
  void Press(Qt::Key key, Qt::KeyboardModifiers with = Qt::NoModifier) { Key_On(&window->Map_Window(), key, with); }
  QToolButton* Button(const char* key) const {
    auto* toolbar = Child<QToolBar>("Toolbar1");
    QAction* action = toolbar->findChild<QAction*>(QLatin1String(key));
    return action ? qobject_cast<QToolButton*>(toolbar->widgetForAction(action)) : nullptr;
  }

  QString first, second;
};

TEST_F(HandWindow, ClickTakesAnEntryAndTheBarFollows) {
  const auto expect_in_hand = [this](bool inHand) {
    EXPECT_EQ(Entry_In_Hand(), inHand);
    EXPECT_EQ(Editor()->isVisible(), inHand);
    EXPECT_EQ(window->Action("mnuEintrCopy")->isEnabled(), inHand);
    EXPECT_EQ(window->Action("mnuObjInsert")->isEnabled(), !inHand);
  };
  expect_in_hand(false);
  Click(On(first));
  expect_in_hand(true);
  EXPECT_EQ(Editor()->toPlainText(), "Eisvogel");
  // The text of the box lies exactly over the text of the map: it is only covered, not moved.
  const QRect box = Editor()->geometry();
  EXPECT_TRUE(box.left() <= Window_X(50) + 1 && box.right() >= Window_X(50) + 50) << box.left() << ' ' << box.right();
  ASSERT_NE(Button("Ok"), nullptr);
  EXPECT_FALSE(Button("Ok")->icon().isNull());
  const QToolButton* before = Button("vor");
  events.StateChanged.Emit();
  Click(On(second));
  EXPECT_EQ(Button("vor"), before) << "another entry of the same kind needs no new buttons";
  Push(Button("Ok"));
  expect_in_hand(false);
}

TEST_F(HandWindow, TheMouseDragsOnTheMapAndThroughTheEditBox) {
  Drag(Canvas(), On(first), On(first) + QPoint(100, 60));
  EXPECT_EQ(At(first), QPoint(150, 120));
  // In hand already: the edit box passes the mouse on.
  QWidget* editor = Editor()->viewport();
  QTest::mousePress(editor, Qt::LeftButton, {}, {10, 8});
  QTest::mouseMove(editor, {30, 28});
  QTest::mouseMove(editor, {30, 28});
  QTest::mouseRelease(editor, Qt::LeftButton, {}, {10, 8});
  Settle();
  EXPECT_GT(Row(first).Xmap, 155);
}

TEST_F(HandWindow, TypingChangesTheTextEscForgetsAndLeavingStores) {
  Click(On(first));
  QTest::keyClicks(&window->Map_Window(), QStringLiteral("e"));  // goes into the text
  QTest::keyClicks(Editor(), QStringLiteral(" am Bach"));
  EXPECT_EQ(Map.Text2.Text, "Eisvogele am Bach");
  EXPECT_GE(Editor()->width(), Editor()->fontMetrics().horizontalAdvance(Map.Text2.Text));
  EXPECT_EQ(Row(first).Eintrag, "Eisvogel");
  Key_On(Editor(), Qt::Key_Escape);
  EXPECT_FALSE(Entry_In_Hand());
  EXPECT_EQ(Row(first).Eintrag, "Eisvogel");
  Click(On(first));
  Press(Qt::Key_F2);
  Editor()->insertPlainText(QStringLiteral("\u00e4\u00f6"));
  Key_On(Editor(), Qt::Key_Return, Qt::ControlModifier);
  EXPECT_FALSE(Entry_In_Hand());
  EXPECT_EQ(Row(first).Eintrag, "Eisvogel\u00e4\u00f6");
  // A refused text stays in the box as it was.
  Click(On(second));
  Press(Qt::Key_F2);
  const QString typed(75, QLatin1Char('x'));
  Editor()->insertPlainText(typed);
  MessageScript messages{{"80 Zeichen"}, {"253 Zeichen"}};
  Key_On(Editor(), Qt::Key_Return, Qt::ControlModifier);
  EXPECT_TRUE(Editor()->isVisible()) << "the box closed over a text that is not in the table";
  Editor()->insertPlainText(QString(200, QLatin1Char('y')));
  EXPECT_EQ(Editor()->toPlainText(), QStringLiteral("Biber") + typed);
  QTest::keyClick(Editor(), Qt::Key_Escape);
}

TEST_F(HandWindow, EditorKeepsItsOwnKeys) {
  Click(On(first));
  Press(Qt::Key_F2);
  Editor()->selectAll();
  QTest::keyClick(Editor(), Qt::Key_C, Qt::ControlModifier);
  EXPECT_EQ(QGuiApplication::clipboard()->text(), "Eisvogel");
  EXPECT_EQ(Entry_Count(), 2) << "the map made a copy of the entry";
  QTest::keyClick(Editor(), Qt::Key_Delete);
  EXPECT_EQ(Map.Text2.Text, QString());
  EXPECT_EQ(Entry_Count(), 2);
  QTest::keyClick(Editor(), Qt::Key_Escape);
  Click(On(first));
  QTest::mouseClick(Editor()->viewport(), Qt::LeftButton, Qt::ControlModifier, {10, 8});
  Settle();
  EXPECT_EQ(Map.MarkCount, 1) << "marked by a click into the box";
  EXPECT_FALSE(Editor()->isVisible());
  // On the map Entf means the entry.
  Click(On(first));
  MessageScript messages(MsgAnswer::Yes);
  Press(Qt::Key_Delete);
  EXPECT_EQ(Entry_Count(), 1);
}

TEST_F(HandWindow, PopupOffersWhatCanBeDone) {
  Click({500, 350}, Qt::NoModifier, Qt::RightButton);
  auto* popup = Child<QMenu>("popup");
  ASSERT_TRUE(popup->isVisible());
  EXPECT_EQ(Map.PopupAt, QPoint(500, 350));
  EXPECT_TRUE(window->Action("mnuObjInsert")->isEnabled());
  EXPECT_FALSE(window->Action("mnuObjDel")->isEnabled());
  window->Action("mnuInsText")->trigger();
  Settle();
  popup->close();
  Settle();
  ASSERT_TRUE(Editor()->isVisible());
  QTest::keyClicks(Editor(), QStringLiteral("Otter"));
  Key_On(Editor(), Qt::Key_Return, Qt::ControlModifier);
  EXPECT_EQ(std::tuple(Last_Row().Eintrag, Last_Row().Xmap), std::tuple("Otter", Map_X(500)));
  Click(On(first), Qt::NoModifier, Qt::RightButton);
  EXPECT_TRUE(Entry_In_Hand());
  EXPECT_TRUE(window->Action("mnuObjDel")->isEnabled());
  popup->close();
}

TEST_F(HandWindow, ClipboardWindowTellsWhatLiesThere) {
  Install_Clipboard();
  QGuiApplication::clipboard()->clear();
  EXPECT_EQ(FrmClipboard().kind, ClipboardKind::Unusable);
  EXPECT_EQ(Text_In(FrmClipboard(), "lblState"), "Zwischenablage leer");
  EXPECT_FALSE(Is_Enabled(FrmClipboard(), "cmdOK"));
  QGuiApplication::clipboard()->setText(QString(3'000'000, QLatin1Char('a')));
  const FrmClipboard text;
  EXPECT_EQ(std::tuple(text.kind, text.text.size()), std::tuple(ClipboardKind::Text, 3'000'000));
  EXPECT_TRUE(Is_Enabled(text, "cmdOK"));
  QImage picture(900, 50, QImage::Format_RGB32);
  picture.fill(Qt::red);
  QGuiApplication::clipboard()->setImage(picture);
  const FrmClipboard image;
  EXPECT_EQ(std::tuple(image.kind, image.picture.size()), std::tuple(ClipboardKind::Picture, QSize(900, 50)));
}
