#pragma once
#include <QApplication>

// The application: an error that no procedure has caught becomes a message, and the program goes on.
class Application : public QApplication {
 public:
  using QApplication::QApplication;
  bool notify(QObject* receiver, QEvent* event) override;
};
