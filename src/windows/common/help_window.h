#pragma once
#include <QWidget>

class QTextBrowser;

// The built-in help: pages in HTML or Markdown from the folder "Hilfe" of the program folder.
class HelpWindow : public QWidget {
  Q_OBJECT

 public:
  explicit HelpWindow(QWidget* parent = nullptr);
  // Name of a page, ignoring case, with an anchor behind "#"; a page that is not there is said in its place.
  void Show_Page(const QString& page);
  QString Page() const;  // file name of the page shown, empty if it was not found
  QTextBrowser* Browser() const { return browser; }

 protected:
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void Follow(const QUrl& url);

  QTextBrowser* browser;
};
