#pragma once
#include <QWidget>

#include "printing/page_preview.h"

// The picture of the sheets. Drawing a rectangle with the left button enlarges that part, a click shows all again.
class PreviewPicture : public QWidget {
  Q_OBJECT

 public:
  explicit PreviewPicture(QWidget* parent = nullptr);
  void Show_Map(PreviewMap map);  // draws it anew; a map that cannot be drawn tells why
  void Show_Sheets(const PrintGeometry& geometry, const Paper& paper);  // the lines between the sheets
  void Show_Text(const QString& text);                                  // in place of the picture
  const QImage& Picture() const { return image; }
  const QString& Text() const { return text; }
  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;

 private:
  void Draw();

  PreviewMap map;
  PrintGeometry geometry;
  Paper paper;
  QString text;
  QImage image;
  QRectF part, shown;  // mm of all sheets
  QRect drawn;         // by the mouse
};
