#pragma once
#include <gtest/gtest.h>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>
#include <QTableView>
#include <QTest>
#include <QTimer>
#include <functional>

// Parts of a dialog by their names, and the hand on a dialog that waits for an answer.

template <typename T>
T* Part(const QWidget& window, const char* name) {
  T* part = window.findChild<T*>(QLatin1String(name));
  EXPECT_NE(part, nullptr) << name;
  return part;
}
// What stands in a line, label, button or list.
inline QString Text_In(const QWidget& window, const char* name) {
  const QWidget* part = Part<QWidget>(window, name);
  return part->property(qobject_cast<const QComboBox*>(part) ? "currentText" : "text").toString();
}
inline bool Is_Enabled(const QWidget& window, const char* name) { return Part<QWidget>(window, name)->isEnabled(); }
inline bool Is_Checked(const QWidget& window, const char* name) {
  return Part<QAbstractButton>(window, name)->isChecked();
}
// Gives a line, list, button or number its value at once.
inline void Fill(const QWidget& window, const char* name, const QVariant& value) {
  auto* part = Part<QWidget>(window, name);
  part->setProperty(qobject_cast<QLineEdit*>(part)         ? "text"
                    : qobject_cast<QComboBox*>(part)       ? "currentText"
                    : qobject_cast<QAbstractButton*>(part) ? "checked"
                                                           : "value",
                    value);
}
// Typed over what stands there, as with the keys.
inline void Type(const QWidget& window, const char* name, const QString& text) {
  auto* edit = Part<QLineEdit>(window, name);
  edit->selectAll();
  QTest::keyClicks(edit, text);
}
inline void Press(const QWidget& window, const char* name) { Part<QAbstractButton>(window, name)->click(); }

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
