#pragma once
#include <gtest/gtest.h>
#include <QTest>
#include <QtWidgets>
#include <functional>
#include <source_location>

// Parts of a dialog by their names, and the hand on a dialog that waits for an answer.

template <typename T>
T* Part(const QWidget& window, const char* name) {
  T* part = window.findChild<T*>(QLatin1String(name));
  EXPECT_NE(part, nullptr) << name;
  return part;
}
// The property that holds what a user reads or enters there.
inline const char* Content_Of(const QWidget* part) {
  return qobject_cast<const QComboBox*>(part)                    ? "currentText"
         : part->metaObject()->indexOfProperty("plainText") >= 0 ? "plainText"
                                                                 : "text";
}
// What stands in a line, label, button, list or text.
inline QString Text_In(const QWidget& window, const char* name) {
  const QWidget* part = Part<QWidget>(window, name);
  return part->property(Content_Of(part)).toString();
}
inline bool Is_Enabled(const QWidget& window, const char* name) { return Part<QWidget>(window, name)->isEnabled(); }
inline bool Is_Checked(const QWidget& window, const char* name) {
  return Part<QAbstractButton>(window, name)->isChecked();
}
// Gives a line, list, text, button or number its value at once.
inline void Fill(const QWidget& window, const char* name, const QVariant& value) {
  auto* part = Part<QWidget>(window, name);
  const bool number = qobject_cast<QAbstractSpinBox*>(part) || qobject_cast<QAbstractSlider*>(part);
  part->setProperty(number ? "value" : qobject_cast<QAbstractButton*>(part) ? "checked" : Content_Of(part), value);
}
// Typed over what stands there, as with the keys.
inline void Type(const QWidget& window, const char* name, const QString& text) {
  auto* edit = Part<QLineEdit>(window, name);
  text.isEmpty() ? edit->clear() : edit->selectAll();
  QTest::keyClicks(edit, text);
}
inline void Press(const QWidget& window, const char* name) { Part<QAbstractButton>(window, name)->click(); }

// A user's way over a window, step by step, parted by "; ":
//   part = text    stands in it; "text*" begins so, "*text*" is in it
//   part < text    is typed over what stands there
//   part : value   has its value at once; "#2" is a row of a list
//   part!          is pressed
//   part on        can be used; and so "off", "checked", "unchecked", "shown", "hidden"
void Walk(const QWidget& window, const QString& steps, std::source_location from = std::source_location::current());

// Acts on the dialog that the next call shows.
inline void When_Shown(const std::function<void(QWidget&)>& act) {
  QTimer::singleShot(30, qApp, [act] {
    QWidget* dialog = QApplication::activeModalWidget();
    ASSERT_NE(dialog, nullptr);
    act(*dialog);
  });
}

// While it lives all letters are so many times larger.
class Letters {
 public:
  explicit Letters(double factor) {
    QFont larger = normal;
    larger.setPointSizeF(normal.pointSizeF() * factor);
    QApplication::setFont(larger);
  }
  ~Letters() { QApplication::setFont(normal); }

 private:
  const QFont normal = QApplication::font();
};
