#pragma once
#include <gtest/gtest.h>
#include <QAbstractButton>
#include <QApplication>
#include <QTimer>
#include <QWidget>
#include <functional>

// Parts of a dialog by their names, and the hand on a dialog that waits for an answer.

template <typename T>
T* Part(const QWidget& window, const char* name) {
  T* part = window.findChild<T*>(QLatin1String(name));
  EXPECT_NE(part, nullptr) << name;
  return part;
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
