#pragma once
#include <QAbstractScrollArea>
#include <QPixmap>
#include <optional>

#include "calibration/net_fit.h"
#include "state/coordinate_state.h"

// The picture of the map with its points, their arrows and the net, zoomed and scrolled. It changes nothing: what the
// mouse does is told by signals, in map pixels.
class CalibrationView : public QAbstractScrollArea {
  Q_OBJECT

 public:
  explicit CalibrationView(QWidget* parent = nullptr);

  // The picture must outlive the view, or be replaced.
  void Show_Picture(const QImage& shown);
  struct Content {
    ControlPoints points;
    std::optional<NetFit> fit;
    std::optional<CoordinateState> net;
    std::optional<size_t> selected, lit;  // the one worked on, the one under the mouse
  };
  void Show_Content(Content shown);                 // points, arrows and net over the picture
  const Content& Shown() const { return content; }  // what Show_Content was given last

  double Zoom() const { return zoom; }  // screen pixels per map pixel
  // Keeps the place under that point of the viewport where it is.
  void Zoom_To(double factor, QPointF at);
  // The whole picture, also when the window changes its size.
  void Fit_In_Window();
  // Scrolls if the place is not on the screen.
  void Make_Visible(QPointF pixel);
  // The map pixel of a point of the viewport, and back; whole numbers are the middle of a pixel.
  QPointF Map_Pixel(QPointF at) const;
  QPointF View_Point(QPointF pixel) const;  // the reverse
  // Ten screen pixels in map pixels.
  double Catch_Reach() const;

 Q_SIGNALS:
  // The left button, in map pixels; Hovered also without it.
  void Pressed(QPointF pixel);
  void Dragged(QPointF pixel);
  void Released(QPointF pixel);
  void Hovered(QPointF pixel);
  // Arrow keys: by so many map pixels.
  void Nudged(QPointF by);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void Set_Ranges();
  void Paint_Picture(QPainter& painter);
  void Paint_Net(QPainter& painter) const;
  void Paint_Points(QPainter& painter) const;
  QPointF Origin() const;  // of the picture in the viewport

  QImage picture;
  QPixmap reduced;         // the whole picture below 100 %
  double reducedZoom = 0;  // of it
  double zoom = 1;
  Content content;
  std::optional<QPoint> panFrom;
  bool dragging = false, whole = false;
};
