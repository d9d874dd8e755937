#include "windows/canvas/map_window.h"

#include <QApplication>
#include <QCloseEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QWheelEvent>
#include <cmath>

#include "hand/activation.h"
#include "maps/map_open.h"
#include "platform/surface.h"
#include "printing/page_preview.h"
#include "state/events.h"
#include "state/map_state.h"
#include "state/mdi_state.h"
#include "state/run_guarded.h"
#include "tools/mouse.h"
#include "view/view.h"
#include "windows/common/window_support.h"

namespace {

constexpr int barThickness = 20;
constexpr int wheelStep = 60;      // window pixels a notch
constexpr int arrowStep = 40;      // window pixels a key
constexpr double zoomStep = 1.25;  // a notch with Ctrl
constexpr double notch = 120.0;    // wheel units
constexpr double circleRadius = 7;
constexpr int outlineRoom = 3;  // the outline's pen reaches beyond its points

bool Loading() { return !Map.PicText.isEmpty() && !Map.Caption.isEmpty(); }

MouseKeys Keys_Of(Qt::KeyboardModifiers modifiers) {
  return {.control = modifiers.testFlag(Qt::ControlModifier), .shift = modifiers.testFlag(Qt::ShiftModifier)};
}

Qt::CursorShape Cursor_Of(MapPointer pointer) {
  switch (pointer) {
    case MapPointer::Cross:
      return Qt::CrossCursor;
    case MapPointer::Move:
      return Qt::SizeAllCursor;
    case MapPointer::Busy:
      return Qt::WaitCursor;
    case MapPointer::Size:
      return Qt::SizeFDiagCursor;
    case MapPointer::Arrow:
      break;
  }
  return Qt::ArrowCursor;
}

// Where the sheets of the print meet.
void Paint_Sheet_Frame(QPainter& painter) {
  const SheetFrame frame = Sheet_Frame_Of_Map();
  if (frame.x.empty()) return;
  painter.save();
  painter.setClipRect(0, 0, Map.ViewWidth, Map.ViewHeight);
  const int left = Window_X(frame.x.front()), right = Window_X(frame.x.back()) - 1;
  const int top = Window_Y(frame.y.front()), bottom = Window_Y(frame.y.back()) - 1;
  for (const QPen& pen : {QPen(Qt::white, 1), QPen(Qt::blue, 1, Qt::DashLine)}) {
    painter.setPen(pen);
    for (const double x : frame.x)
      painter.drawLine(std::min(Window_X(x), right), top, std::min(Window_X(x), right), bottom);
    for (const double y : frame.y)
      painter.drawLine(left, std::min(Window_Y(y), bottom), right, std::min(Window_Y(y), bottom));
  }
  painter.restore();
}

}  // namespace

MapCanvas::MapCanvas(QWidget* parent) : QWidget(parent), controls(this) {
  setAttribute(Qt::WA_OpaquePaintEvent);
  setMouseTracking(true);
}

bool Map_Window_Wanted() { return Map.Visible || Loading(); }

void MapCanvas::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const QColor around = QColor::fromRgb(QBColor(7));
  if (Loading()) {
    painter.fillRect(rect(), around);
    QFont large = font();
    large.setPixelSize(22);
    painter.setFont(large);
    painter.drawText(rect().adjusted(24, 12, -24, -12), Qt::AlignLeft | Qt::AlignTop | Qt::TextWrapAnywhere,
                     Map.PicText);
    return;
  }
  const QImage& picture = Map.canvas;
  painter.setRenderHint(QPainter::SmoothPixmapTransform, false);
  if (!picture.isNull()) painter.drawImage(0, 0, picture);
  if (picture.width() < width()) painter.fillRect(picture.width(), 0, width() - picture.width(), height(), around);
  if (picture.height() < height()) painter.fillRect(0, picture.height(), width(), height() - picture.height(), around);
  Paint_Circle(painter);
  if (frmMDI.sheetFrame) Paint_Sheet_Frame(painter);
  Paint_Outline(painter);
}

// Round the vertex in correction, light and dark so that it is seen on every ground.
void MapCanvas::Paint_Circle(QPainter& painter) {
  if (!Map.Circled) return;
  const QPointF at(Window_X(Map.Circled->x()), Window_Y(Map.Circled->y()));
  painter.setBrush(Qt::NoBrush);
  for (const QPen& pen : {QPen(Qt::white, 5), QPen(Qt::red, 2)}) {
    painter.setPen(pen);
    painter.drawEllipse(at, circleRadius, circleRadius);
  }
}

void MapCanvas::Paint_Outline(QPainter& painter) {
  painter.setBrush(Qt::NoBrush);
  for (const OverLine& line : Map_Paint_Over()) {
    if (line.color) {
      painter.strokePath(line.path, QPen(QColor::fromRgb(*line.color), line.width));
      continue;
    }
    painter.strokePath(line.path, QPen(Qt::white, line.width));
    painter.strokePath(line.path, QPen(Qt::black, line.width, Qt::DashLine));
  }
}

// Only what the outline leaves and where it comes is painted anew.
void MapCanvas::Show_Outline() {
  QRect now;
  for (const OverLine& line : Map_Paint_Over()) {
    const double room = line.width + outlineRoom;
    now |= line.path.boundingRect().adjusted(-room, -room, room, room).toAlignedRect();
  }
  if (!outlined.isEmpty()) update(outlined);
  if (!now.isEmpty()) update(now);
  outlined = now;
}

void MapCanvas::Show_Pointer() {
  const Qt::CursorShape shape = Cursor_Of(Map_Pointer());
  if (cursor().shape() != shape) setCursor(shape);
}

void MapCanvas::Sync_Controls() {
  controls.Sync();
  Show_Outline();
  Show_Pointer();
}

void MapCanvas::mousePressEvent(QMouseEvent* event) {
  if (!Map.Visible || Loading()) return;
  const QPoint at = event->position().toPoint();
  const bool left = event->button() == Qt::LeftButton;
  if (!left && event->button() != Qt::RightButton) return;
  const MouseButton button = left ? MouseButton::Left : MouseButton::Right;
  Run_Guarded([&] { Map_Mouse_Down(at, button, Keys_Of(event->modifiers())); });
  Sync_Controls();
}

void MapCanvas::mouseMoveEvent(QMouseEvent* event) {
  if (!Map.Visible || Loading()) return;
  const bool leftDown = event->buttons().testFlag(Qt::LeftButton);
  Run_Guarded([&] { Map_Mouse_Move(event->position().toPoint(), leftDown); });
  if (!outlined.isEmpty() || !Map_Paint_Over().empty())
    Sync_Controls();
  else
    Show_Pointer();
}

void MapCanvas::mouseReleaseEvent(QMouseEvent* event) {
  if (!Map.Visible || Loading()) return;
  const bool left = event->button() == Qt::LeftButton;
  if (!left && event->button() != Qt::RightButton) return;
  const MouseButton button = left ? MouseButton::Left : MouseButton::Right;
  Run_Guarded([&] { Map_Mouse_Up(event->position().toPoint(), button); });
  Sync_Controls();
}

void MapCanvas::mouseDoubleClickEvent(QMouseEvent* event) {
  if (!Map.Visible || Loading() || event->button() != Qt::LeftButton) return;
  Run_Guarded([&] { Map_Double_Click(event->position().toPoint()); });
  Sync_Controls();
}

MapWindow::MapWindow(QWidget* parent)
    : QWidget(parent),
      canvas(new MapCanvas(this)),
      HScroller(new QScrollBar(Qt::Horizontal, this)),
      VScroller(new QScrollBar(Qt::Vertical, this)) {
  setObjectName(QStringLiteral("Map"));
  canvas->setObjectName(QStringLiteral("pic"));
  HScroller->setObjectName(QStringLiteral("HScroller"));
  VScroller->setObjectName(QStringLiteral("VScroller"));
  HScroller->hide();
  VScroller->hide();
  setFocusPolicy(Qt::StrongFocus);
  setMinimumSize(120, 80);
  setWindowIcon(Program_Icon(QStringLiteral("map")));
  // While the frame is dragged many sizes pass; the map is laid out for the one that stays a moment.
  resizeTimer.setSingleShot(true);
  resizeTimer.setInterval(15);
  connect(&resizeTimer, &QTimer::timeout, this, [this] { Run_Guarded([this] { Report_Size(); }); });
  for (QScrollBar* bar : {HScroller, VScroller}) {
    connect(bar, &QScrollBar::valueChanged, this, [this, bar](int value) {
      if (syncing == 0) Run_Guarded([&] { Scroll_Changed(bar == HScroller, value); });
    });
  }
  paintedListener = events.MapPainted.Connect([this] {
    Sync();
    canvas->update();
  });
}

MapWindow::~MapWindow() { events.MapPainted.Disconnect(paintedListener); }

// Loading goes on in the same call: the text has to stand there before.
void MapWindow::Show_Loading() { canvas->repaint(); }

QSize MapWindow::sizeHint() const { return {Map.ScaleWidth, Map.ScaleHeight}; }

void MapWindow::Sync_Bar(QScrollBar& bar, bool horizontal) {
  const ScrollState& state = horizontal ? Map.HScroller : Map.VScroller;
  bar.setVisible(state.Visible);
  bar.setRange(0, state.Max);
  // The slider is as long as the visible part of the map.
  const double mapPixels = horizontal ? Map.MapClip[0].image.width() : Map.MapClip[0].image.height();
  const double shown = (horizontal ? Map.ViewWidth : Map.ViewHeight) * static_cast<double>(Map.Zoom);
  const double hidden = mapPixels - shown;
  const double page = hidden > 0 ? state.Max * shown / hidden : state.Max;
  bar.setPageStep(std::clamp(static_cast<int>(std::lround(page)), 1, 10000));
  bar.setSingleStep(std::max(1, bar.pageStep() / 10));
  bar.setValue(state.Value);
}

void MapWindow::Sync() {
  const Syncing guard(syncing);
  if (windowTitle() != Map.Caption) setWindowTitle(Map.Caption);
  Sync_Bar(*HScroller, true);
  Sync_Bar(*VScroller, false);
  Place_Parts();
  canvas->Sync_Controls();
}

void MapWindow::Place_Parts() {
  const int right = Map.VScroller.Visible ? barThickness : 0;
  const int below = Map.HScroller.Visible ? barThickness : 0;
  canvas->setGeometry(0, 0, std::max(0, width() - right), std::max(0, height() - below));
  VScroller->setGeometry(width() - right, 0, right, std::max(0, height() - below));
  HScroller->setGeometry(0, height() - below, std::max(0, width() - right), below);
}

void MapWindow::Report_Size() {
  resizeTimer.stop();
  if (!Map.Visible || Map.Minimized || (width() == Map.ScaleWidth && height() == Map.ScaleHeight)) return;
  Map.ScaleWidth = width();
  Map.ScaleHeight = height();
  Map_Resized();
}

void MapWindow::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  Place_Parts();
  if (syncing == 0) resizeTimer.start();
}

void MapWindow::wheelEvent(QWheelEvent* event) {
  event->accept();
  const QPoint turned = event->angleDelta();
  if (event->modifiers().testFlag(Qt::ControlModifier)) {
    const double factor = static_cast<double>(Map.Zoom) * std::pow(zoomStep, -turned.y() / notch);
    const QPoint at = canvas->mapFrom(this, event->position().toPoint());
    Run_Guarded([&] { Zoom_At(factor, at.x(), at.y()); });
    return;
  }
  QPoint shift = event->pixelDelta();
  if (shift.isNull()) shift = QPoint(turned.x(), turned.y()) * wheelStep / static_cast<int>(notch);
  if (event->modifiers().testFlag(Qt::ShiftModifier)) shift = shift.transposed();
  if (!shift.isNull()) Run_Guarded([&] { Scroll_By(-shift.x(), -shift.y()); });
}

// A character typed while a text is in hand goes into the text; F2 only opens it.
bool MapWindow::Type_Into_Entry(const QKeyEvent& event) {
  MapEditor& editor = canvas->Editor();
  if (!Map.Text2.Visible || editor.isReadOnly() ||
      event.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier))
    return false;
  const bool open = event.key() == Qt::Key_F2;
  const bool character = !event.text().isEmpty() && event.text().at(0).isPrint();
  if (!open && !character) return false;
  editor.Begin_Edit();
  if (character) editor.insertPlainText(event.text());
  return true;
}

void MapWindow::keyPressEvent(QKeyEvent* event) {
  bool used = false;
  Run_Guarded([&] { used = Map_Key(event->key(), Keys_Of(event->modifiers())); });
  used = used || Type_Into_Entry(*event);
  canvas->Sync_Controls();
  if (used) return;
  QPoint shift;
  switch (event->key()) {
    case Qt::Key_Left:
      shift = {-arrowStep, 0};
      break;
    case Qt::Key_Right:
      shift = {arrowStep, 0};
      break;
    case Qt::Key_Up:
      shift = {0, -arrowStep};
      break;
    case Qt::Key_Down:
      shift = {0, arrowStep};
      break;
    case Qt::Key_PageUp:
      shift = {0, -Map.ViewHeight};
      break;
    case Qt::Key_PageDown:
      shift = {0, Map.ViewHeight};
      break;
    default:
      QWidget::keyPressEvent(event);
      return;
  }
  Run_Guarded([&] { Scroll_By(shift.x(), shift.y()); });
}

void MapWindow::closeEvent(QCloseEvent* event) {
  // The window stays for the next map; the state tells that it is hidden.
  event->ignore();
  if (!Map.Visible) return;
  Run_Guarded([] { Leave_Map(); });
}
