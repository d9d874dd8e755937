#pragma once
#include <QIcon>
#include <QLabel>

// Small things the windows share.

// Drawing of the program by its name, "save"; a null icon for an unknown or empty name.
QIcon Program_Icon(const QString& name);

// One line of text that is cut with "..." where there is no room; the whole text is then in the tool tip.
class ElidedLabel : public QLabel {
  Q_OBJECT

 public:
  explicit ElidedLabel(QWidget* parent = nullptr);
  void Show_Text(const QString& whole);  // one line, cut with dots where it is too wide
  const QString& Whole_Text() const { return text; }
  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  void Update_Tip();
  QString text;
};

// Is set while a window shows its state: what the widgets report meanwhile is no input of the user.
class Syncing {
 public:
  explicit Syncing(int& counter) : depth(counter) { ++depth; }
  ~Syncing() { --depth; }
  Syncing(const Syncing&) = delete;
  Syncing& operator=(const Syncing&) = delete;

 private:
  int& depth;
};
