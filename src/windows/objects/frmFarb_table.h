#pragma once
#include <QWidget>
#include <array>

// The 16 colours in two rows. A click or Space and Enter pick one; the arrow keys move the cursor.
class ColorTable : public QWidget {
  Q_OBJECT

 public:
  explicit ColorTable(QWidget* parent = nullptr);
  void Show_Colors(const std::array<QRgb, 16>& shown);  // the sixteen fields anew
  // The colour in use, marked; -1 = none. The cursor goes to it.
  void Mark_Color(int number);
  int Marked() const { return marked; }
  int Cursor() const { return cursor; }
  QRect Cell(int number) const;  // field of a colour in widget pixels
  QSize sizeHint() const override;
  QSize minimumSizeHint() const override { return sizeHint(); }

 Q_SIGNALS:
  void Picked(int number);  // by a click or a key: 0..15

 protected:
  bool event(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  int At(QPoint place) const;  // -1 beside the cells

  std::array<QRgb, 16> colors{};
  int marked = -1, cursor = 0;
};
