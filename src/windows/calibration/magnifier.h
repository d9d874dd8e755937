#pragma once
#include <QFrame>
#include <QImage>
#include <optional>

// The pixels of a picture round a place, each as large as a fingertip, with the place and the crossing found there.
class Magnifier : public QFrame {
  Q_OBJECT

 public:
  explicit Magnifier(QWidget* parent = nullptr);
  // Whole numbers are the middle of a pixel; `found` is drawn as the crossing.
  void Show_Place(const QImage& shown, QPointF at, std::optional<QPointF> found);
  QSize sizeHint() const override { return {170, 170}; }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QImage picture;
  QPointF place;
  std::optional<QPointF> crossing;
};
