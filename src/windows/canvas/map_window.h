#pragma once
#include <QTimer>
#include <QWidget>

#include "windows/canvas/map_window_controls.h"

class QScrollBar;

// The painted map: shows Map.canvas, or the text that stands there while a map is being loaded, and over it the outline
// of what is being dragged and the live controls. It tells the mouse to the map's procedures.
class MapCanvas : public QWidget {
  Q_OBJECT

 public:
  explicit MapCanvas(QWidget* parent = nullptr);
  void Sync_Controls();  // live controls, pointer, outline
  MapEditor& Editor() { return controls.Editor(); }

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;

 private:
  void Paint_Circle(QPainter& painter);
  void Paint_Outline(QPainter& painter);
  void Show_Outline();
  void Show_Pointer();

  MapControls controls;
  QRect outlined;  // where the outline was painted last
};

// Is there something to see in the map window: an open map, or the text of one that is being opened?
bool Map_Window_Wanted();

// The map window: the painted map and its two scroll bars. It shows the state Map, and writes its size, the scroll bars
// and the wheel back into it through the procedures of the view.
class MapWindow : public QWidget {
  Q_OBJECT

 public:
  explicit MapWindow(QWidget* parent = nullptr);
  ~MapWindow() override;
  void Sync();          // state -> widgets
  void Report_Size();   // the window's size -> state; a new size lays the map out anew
  void Show_Loading();  // paints the text of the loading at once
  MapCanvas& Canvas() { return *canvas; }
  QSize sizeHint() const override;

 protected:
  void resizeEvent(QResizeEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void Place_Parts();
  void Sync_Bar(QScrollBar& bar, bool horizontal);
  bool Type_Into_Entry(const QKeyEvent& event);

  MapCanvas* canvas = nullptr;
  QScrollBar* HScroller = nullptr;
  QScrollBar* VScroller = nullptr;
  QTimer resizeTimer;
  int syncing = 0;
  int paintedListener = 0;
};
