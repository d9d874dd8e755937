#pragma once
#include <QIcon>
#include <QLabel>
#include <vector>

class QLineEdit;

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
  int Whole_Width() const;  // pixels at which nothing is cut
  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  void Update_Tip();
  QString text;
};

// A box for short values: as wide as the widest of them in its font.
void Give_Room(QLineEdit& box, const QString& widest);

// Lines of text beside each other, "Panel1", "Panel2", ... They share the row by the weights; a text that needs more
// than its share gets what the others leave, the first one first.
class PanelRow : public QWidget {
  Q_OBJECT

 public:
  PanelRow(std::vector<int> weights, QWidget* parent);
  // Panels count from 0. What does not fit is cut.
  void Show_Text(size_t panel, const QString& whole);

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  void Share();

  std::vector<int> weights;
  std::vector<ElidedLabel*> panels;
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
