#pragma once
#include <memory>

#include "maps/program_start.h"
#include "state/map_state.h"
#include "support/fixture.h"
#include "support/rows.h"
#include "windows/canvas/map_window.h"
#include "windows/common/help_window.h"
#include "windows/dialog_parts.h"
#include "windows/main/mdi_window.h"

// A main window that has started without a map.
class WindowTest : public FluraxTest, public RowsOfTable {
 protected:
  void SetUp() override {
    FluraxTest::SetUp();
    window = std::make_unique<MdiWindow>();
    window->show();
    Program_Start({});
    frmMDI.Tips = false;  // no window that waits for an answer
    Settle();
    if (!mapSize.isEmpty()) Open(mapSize.width(), mapSize.height());
  }
  void TearDown() override {
    Program_End();
    window.reset();
    FluraxTest::TearDown();
  }

  // Time for the sizes to settle and for what was put off.
  static void Settle() { QTest::qWait(60); }
  static void Key_On(QWidget* part, Qt::Key key, Qt::KeyboardModifiers with = Qt::NoModifier) {
    QTest::keyClick(part, key, with);
    if (with != Qt::NoModifier) QTest::keyRelease(part, Qt::Key_Shift);  // else the next test finds it held
    Settle();
  }
  static void Drag(QWidget* part, QPoint from, QPoint to) {
    QTest::mousePress(part, Qt::LeftButton, {}, from);
    QTest::mouseMove(part, (from + to) / 2);
    QTest::mouseMove(part, to);
    QTest::mouseRelease(part, Qt::LeftButton, {}, to);
    Settle();
  }
  static void Push(QAbstractButton* button) {
    button->click();
    Settle();
  }
  void Choose(const QString& key, int line = 0) {
    QAction* action = window->Action(key, line);
    ASSERT_NE(action, nullptr) << key.toStdString();
    ASSERT_TRUE(action->isEnabled()) << key.toStdString() << " is disabled";
    ASSERT_TRUE(action->isVisible()) << key.toStdString() << " is hidden";
    action->trigger();
    Settle();
  }
  // A tool button; with the right mouse button.
  void Press_Tool(const char* key, bool right = false) {
    auto* bar = Child<QToolBar>("Toolbar1");
    for (QAction* action : bar->actions()) {
      if (action->objectName() != QLatin1String(key)) continue;
      ASSERT_TRUE(action->isEnabled()) << key << " is disabled";
      QContextMenuEvent menu(QContextMenuEvent::Mouse, {5, 5}, QCursor::pos());
      if (right)
        QApplication::sendEvent(bar->widgetForAction(action), &menu);
      else
        action->trigger();
      return Settle();
    }
    FAIL() << "no button " << key;
  }
  // Opens a map through the menu; a white one of that size.
  void Open(const QString& path) {
    const FileDialogScript files{path};
    Choose("mnuFOpen");
    ASSERT_TRUE(frmMDI.MapOpen);
  }
  void Open(int width, int height) { Open(Make_Map("Karte.bmp", width, height)); }
  // The command, and what is done with the dialog that waits then; a line of steps is walked over it.
  void Choose_And(const QString& key, const std::function<void(QWidget&)>& act) {
    When_Shown(act);
    Choose(key);
  }
  void Choose_And(const QString& key, const QString& steps) {
    Choose_And(key, [&steps](QWidget& dialog) { Walk(dialog, steps); });
  }
  // The one open window of its kind.
  template <typename Window>
  Window& Shown() const {
    auto* found = window->findChild<Window*>();
    EXPECT_NE(found, nullptr);
    return *found;
  }
  template <typename Window>
  Window& Chosen(const QString& key) {
    Choose(key);
    return Shown<Window>();
  }
  template <typename Window>
  bool Is_Open() const {
    return window->findChild<Window*>() != nullptr;
  }
  template <typename T>
  T* Child(const char* name) const {
    return window->findChild<T*>(QString::fromLatin1(name));
  }
  QWidget* Canvas() const { return Child<QWidget>("pic"); }
  // Drops a file on the main window. False if it is not taken.
  bool Drop(const QString& path) {
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(path)});
    QDragEnterEvent enter({50, 50}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    enter.ignore();
    QApplication::sendEvent(window.get(), &enter);
    if (!enter.isAccepted()) return false;
    QDropEvent event(QPointF(50, 50), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(window.get(), &event);
    Settle();
    return true;
  }
  static HelpWindow* Help() {
    for (QWidget* shown : QApplication::topLevelWidgets())
      if (auto* help = qobject_cast<HelpWindow*>(shown); help && help->isVisible()) return help;
    return nullptr;
  }

  QSize mapSize;  // of the map every test begins with; empty: none
  std::unique_ptr<MdiWindow> window;
};
