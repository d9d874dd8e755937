#pragma once
#include <QApplication>

#include <functional>

// The application: an error that no procedure has caught becomes a message, and the program goes on.
class Application : public QApplication {
 public:
  using QApplication::QApplication;
  bool notify(QObject* receiver, QEvent* event) override;
};

// Runs what a menu, a button or the mouse starts. An Error that comes out of it is shown as "Programmfehler "; the user
// may end the program then. False if there was one.
bool Run_Guarded(const std::function<void()>& work);
