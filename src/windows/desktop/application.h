#pragma once
#include <QApplication>

#include "state/run_guarded.h"

// The application: an error that no procedure has caught becomes a message, and the program goes on.
class Application : public QApplication {
 public:
  using QApplication::QApplication;
  bool notify(QObject* receiver, QEvent* event) override;
};
