#pragma once
#include <QAbstractNativeEventFilter>
#include <QApplication>
#include <QKeyEvent>
#include <utility>

// The application: an error that no procedure has caught becomes a message, and the program goes on. A click on a
// window that waits for a dialog leaves the keys with the dialog, also where the window manager gives them away.
class Application : public QApplication, public QAbstractNativeEventFilter {
 public:
  Application(int& argc, char** argv);
  ~Application() override;
  bool notify(QObject* receiver, QEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;
  bool nativeEventFilter(const QByteArray& eventType, void* message, qintptr* result) override;

 private:
  bool Is_Held(const QKeyEvent& key);

  std::pair<int, quint64> released;  // the last key and when
};
