#pragma once
#include <QLabel>
#include <QPolygonF>
#include <QTextEdit>
#include <QWidget>
#include <array>

// The live controls over the painted map: the edit box of a text, the frame and handles of shapes and pictures, the
// grip of a foot point. They show the state Map; all but the edit box leave the mouse to the canvas.

// Map.Text2: a text is edited where it stands on the map.
class MapEditor : public QTextEdit {
  Q_OBJECT

 public:
  explicit MapEditor(QWidget* canvas);
  void Sync();            // state -> widget
  void Begin_Edit();      // takes the keyboard, with the caret at the end
  QString Typed() const;  // the text as it stands there, its lines ended by LF

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;

 private:
  void Take_Text();
  void Show_Look();
  bool Pass_On(QMouseEvent* event);

  QString shown;         // what the box shows, line ends as in the state
  int shownSpace = 1;    // between the text and the rim of its box, pixels
  bool passing = false;  // a press was passed on to the canvas
  QPoint pressed;        // where, on the screen
  int syncing = 0;
};

// A frame, a handle or a grip: only drawn.
class MapMarker : public QWidget {
  Q_OBJECT

 public:
  enum class Look { Frame, Handle, Crosshair };
  MapMarker(Look what, QWidget* canvas);
  void Show_Outline(const QPolygonF& wanted);  // in place of its rim; none: the rim again

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  Look look;
  QPolygonF outline;
};

class MapControls {
 public:
  explicit MapControls(QWidget* canvas);
  void Sync();  // state -> widgets
  MapEditor& Editor() { return *Text2; }

 private:
  MapMarker* lblShape;
  MapMarker* imgBild;
  MapEditor* Text2;
  std::array<MapMarker*, 8> lblHandle{};
  MapMarker* imgHandle;
  MapMarker* imgRfLine;
  QLabel* lblPLQ;  // name of the plan square under the mouse
};
