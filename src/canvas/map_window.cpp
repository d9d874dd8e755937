#include "canvas/map_window.h"

#include <QApplication>
#include <QCloseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QWheelEvent>
#include <cmath>

#include "canvas/map_state.h"
#include "canvas/view.h"
#include "desktop/application.h"
#include "platform/surface.h"
#include "start/events.h"
#include "start/map_open.h"
#include "start/window_support.h"

namespace {

constexpr int barThickness = 20;
constexpr int wheelStep = 60;      // window pixels a notch
constexpr int arrowStep = 40;      // window pixels a key
constexpr double zoomStep = 1.25;  // a notch with Ctrl
constexpr double notch = 120.0;    // wheel units

}  // namespace

MapCanvas::MapCanvas(QWidget* parent) : QWidget(parent) {
  setAttribute(Qt::WA_OpaquePaintEvent);
  setMouseTracking(true);
}

static bool Loading() { return !Map.PicText.isEmpty() && !Map.Caption.isEmpty(); }

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

void MapWindow::keyPressEvent(QKeyEvent* event) {
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
  Run_Guarded([] {
    if (Map.Tag != QLatin1String("MDI")) Map.Tag = QStringLiteral("Map");
    Close_Map();
  });
}
