#include "windows/canvas/map_window_controls.h"

#include <QAbstractTextDocumentLayout>
#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <cmath>

#include "hand/activation.h"
#include "hand/turned_shape.h"
#include "platform/fonts.h"
#include "state/events.h"
#include "state/global_state.h"
#include "state/map_state.h"
#include "state/run_guarded.h"
#include "windows/common/window_support.h"

namespace {

constexpr int caretRoom = 3;  // pixels beside the last character

QString Unix_Lines(QString text) {
  text.replace(QLatin1String("\r\n"), QLatin1String("\n"));
  return text.replace(QLatin1Char('\r'), QLatin1Char('\n'));
}

const FontFace& Editor_Face() {
  const EditBox& box = Map.Text2;
  FontKey key;
  key.family = box.FontName.isEmpty() ? QStringLiteral("Arial") : box.FontName;
  key.points = box.ShownSize > 0 ? box.ShownSize : box.FontSize;
  key.bold = box.FontBold;
  key.italic = box.FontItalic;
  key.underline = box.FontUnderline;
  return Font_Face(key);
}

}  // namespace

MapEditor::MapEditor(QWidget* canvas) : QTextEdit(canvas) {
  setObjectName(QStringLiteral("Text2"));
  setAcceptRichText(false);
  setFrameShape(QFrame::NoFrame);
  setLineWrapMode(QTextEdit::NoWrap);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setTabChangesFocus(true);
  setFocusPolicy(Qt::ClickFocus);
  document()->setDocumentMargin(0);
  hide();
  connect(this, &QTextEdit::textChanged, this, &MapEditor::Take_Text);
}

// The plain text of the widget would turn the mark of an empty label into a blank.
QString MapEditor::Typed() const {
  QString text = document()->toRawText();
  for (const QChar end : {QChar(0xfdd0), QChar(0xfdd1), QChar(QChar::ParagraphSeparator), QChar(QChar::LineSeparator)})
    text.replace(end, QLatin1Char('\n'));
  return text;
}

void MapEditor::Take_Text() {
  if (syncing > 0) return;
  Run_Guarded([this] { Text_Typed(Typed()); });
  Sync();
}

void MapEditor::Show_Look() {
  const FontFace& face = Editor_Face();
  if (font() != face.font) setFont(face.font);
  QPalette colors = palette();
  // A text without a box is seen on the map itself until it is being written.
  // A turned one, or one with a box that lets the map through, likewise.
  const bool seenBelow = Map.Text2.FontTransparent || Map.Perspex || EntAngle != 0;
  const bool clear = seenBelow && !Text_Pending() && !hasFocus();
  const QColor ground = Map.Text2.FontTransparent ? QColor(Qt::white) : QColor::fromRgb(EntHGColor);
  const QColor paper = clear ? QColor(Qt::transparent) : ground;
  const QColor ink = clear ? QColor(Qt::transparent) : QColor::fromRgb(EntVGColor);
  if (colors.color(QPalette::Base) == paper && colors.color(QPalette::Text) == ink) return;
  colors.setColor(QPalette::Base, paper);
  colors.setColor(QPalette::Text, ink);
  setPalette(colors);
}

void MapEditor::Sync() {
  const EditBox& box = Map.Text2;
  if (!box.Visible) {
    if (hasFocus()) parentWidget()->parentWidget()->setFocus();
    hide();
    return;
  }
  const Syncing guard(syncing);
  Show_Look();
  const FontFace& face = Editor_Face();
  // The characters of a symbol font are codes: they are shown, not typed.
  setReadOnly(face.symbol);
  const QString wanted = Unix_Lines(face.symbol ? face.Shown(box.Text) : box.Text);
  if (wanted != Unix_Lines(Typed())) {
    const int caret = textCursor().position();
    setPlainText(wanted);
    QTextCursor cursor = textCursor();
    cursor.setPosition(std::min<int>(caret, document()->characterCount() - 1));
    setTextCursor(cursor);
  }
  // The text stands exactly over the one on the map, inside the entry's own frame; the box grows with what is typed.
  const QSize size(face.TextWidth(box.Text), face.TextHeight(box.Text));
  const int space = Text_Pending() ? shownSpace : std::clamp((box.Height - size.height()) / 2, 0, 20);
  shownSpace = space;
  const int margin = std::min(space, 1), inset = space - margin;
  if (static_cast<int>(document()->documentMargin()) != margin) document()->setDocumentMargin(margin);
  const int caret = Text_Pending() || hasFocus() ? caretRoom : 0;
  const QSize needed(size.width() + 2 * margin + caret, size.height() + 2 * margin);
  const QSize given(box.Width - 2 * inset, box.Height - 2 * inset);
  setGeometry(QRect(QPoint(box.Left + inset, box.Top + inset), needed.expandedTo(given)));
  if (isVisible()) return;
  show();
  raise();
  if (box.Tag == EditTag::New) Begin_Edit();
}

void MapEditor::Begin_Edit() {
  if (!isVisible()) return;
  setFocus(Qt::OtherFocusReason);
  moveCursor(QTextCursor::End);
}

void MapEditor::keyPressEvent(QKeyEvent* event) {
  const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  if (event->key() == Qt::Key_Escape) {
    // What was typed is forgotten; the entry is as it was.
    Run_Guarded([] {
      Discard_Pending_Text();
      if (Entry_In_Hand()) End_Entry();
    });
    return;
  }
  if (enter && event->modifiers().testFlag(Qt::ControlModifier)) {
    Run_Guarded([] { End_Entry(); });
    return;
  }
  if (event->key() == Qt::Key_PageUp || event->key() == Qt::Key_PageDown) return;
  QTextEdit::keyPressEvent(event);
}

void MapEditor::focusInEvent(QFocusEvent* event) {
  QTextEdit::focusInEvent(event);
  Show_Look();
}

void MapEditor::focusOutEvent(QFocusEvent* event) {
  QTextEdit::focusOutEvent(event);
  Show_Look();
  const Qt::FocusReason why = event->reason();
  if (why != Qt::MouseFocusReason && why != Qt::TabFocusReason && why != Qt::BacktabFocusReason) return;
  // A click on the map is told to the map, which stores the text itself.
  QMetaObject::invokeMethod(
      this,
      [this] {
        const QWidget* mapWindow = parentWidget()->parentWidget();
        const QWidget* now = QApplication::focusWidget();
        if (!now || now == this || now == mapWindow || QApplication::activeModalWidget()) return;
        Run_Guarded([] { Store_Pending_Text(); });
      },
      Qt::QueuedConnection);
}

// Until the text is being changed the mouse means the entry: dragging moves it. While it is being changed the mouse
// means the characters, and the entry is dragged by its border.
bool MapEditor::Pass_On(QMouseEvent* event) {
  QMouseEvent passed(event->type(), mapToParent(event->position().toPoint()), event->globalPosition(), event->button(),
                     event->buttons(), event->modifiers());
  return QApplication::sendEvent(parentWidget(), &passed);
}

void MapEditor::mousePressEvent(QMouseEvent* event) {
  passing = !Text_Pending() || event->modifiers() & (Qt::ControlModifier | Qt::ShiftModifier);
  if (!passing || event->button() == Qt::LeftButton) QTextEdit::mousePressEvent(event);
  pressed = event->globalPosition().toPoint();
  if (passing) Pass_On(event);
}

void MapEditor::mouseMoveEvent(QMouseEvent* event) {
  if (passing || event->buttons() == Qt::NoButton) Pass_On(event);
  if (!passing) QTextEdit::mouseMoveEvent(event);
}

void MapEditor::mouseReleaseEvent(QMouseEvent* event) {
  QTextEdit::mouseReleaseEvent(event);
  if (!passing) return;
  passing = false;
  const QPoint way = event->globalPosition().toPoint() - pressed;
  Pass_On(event);
  // Moved, not clicked into: the arrow keys go on moving it.
  if (way.manhattanLength() >= QApplication::startDragDistance()) parentWidget()->parentWidget()->setFocus();
}

void MapEditor::mouseDoubleClickEvent(QMouseEvent* event) { QTextEdit::mouseDoubleClickEvent(event); }

void MapEditor::contextMenuEvent(QContextMenuEvent* event) {
  if (Text_Pending())
    QTextEdit::contextMenuEvent(event);
  else
    event->accept();
}

// Markers ------------------------------------------------------------------------------------------------------------

MapMarker::MapMarker(Look what, QWidget* canvas) : QWidget(canvas), look(what) {
  setAttribute(Qt::WA_TransparentForMouseEvents);
  setFocusPolicy(Qt::NoFocus);
  hide();
}

void MapMarker::Show_Outline(const QPolygonF& wanted) {
  if (outline == wanted) return;
  outline = wanted;
  update();
}

void MapMarker::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const QRect rim = rect().adjusted(0, 0, -1, -1);
  switch (look) {
    case Look::Frame:
      // Black on white dashes: to be seen on every ground.
      for (const QPen& pen : {QPen(Qt::white, 1), QPen(Qt::black, 1, Qt::DashLine)}) {
        painter.setPen(pen);
        outline.isEmpty() ? painter.drawRect(rim) : painter.drawPolygon(outline);
      }
      break;
    case Look::Handle:
      painter.fillRect(rect(), Qt::white);
      painter.setPen(Qt::black);
      painter.drawRect(rim);
      break;
    case Look::Crosshair: {
      painter.setRenderHint(QPainter::Antialiasing);
      const QPointF middle(width() / 2.0, height() / 2.0);
      const double radius = width() / 2.0 - 4;
      for (const auto& [color, thick] : {std::pair(Qt::white, 3.0), std::pair(Qt::red, 1.4)}) {
        painter.setPen(QPen(color, thick));
        painter.drawEllipse(middle, radius, radius);
        painter.drawLine(QPointF(middle.x(), 0), QPointF(middle.x(), height()));
        painter.drawLine(QPointF(0, middle.y()), QPointF(width(), middle.y()));
      }
    }
  }
}

// All controls -------------------------------------------------------------------------------------------------------

namespace {

void Show_Control(QWidget& widget, const LiveControl& state) {
  widget.setGeometry(state.Left, state.Top, std::max(1, state.Width), std::max(1, state.Height));
  widget.setVisible(state.Visible);
}

void Show_Frame(MapMarker& frame, const LiveControl& state) {
  if (state.Angle == 0) {
    frame.Show_Outline({});
    return Show_Control(frame, state);
  }
  const QPolygonF outline = Turned_Rect(QRectF(state.Left, state.Top, state.Width - 1, state.Height - 1), state.Angle);
  const QRect around = outline.boundingRect().toAlignedRect().adjusted(0, 0, 1, 1);
  frame.setGeometry(around);
  frame.Show_Outline(outline.translated(-around.topLeft()));
  frame.setVisible(state.Visible);
}

}  // namespace

MapControls::MapControls(QWidget* canvas)
    : lblShape(new MapMarker(MapMarker::Look::Frame, canvas)),
      imgBild(new MapMarker(MapMarker::Look::Frame, canvas)),
      Text2(new MapEditor(canvas)),
      imgHandle(new MapMarker(MapMarker::Look::Handle, canvas)),
      imgRfLine(new MapMarker(MapMarker::Look::Crosshair, canvas)),
      lblPLQ(new QLabel(canvas)) {
  lblPLQ->setObjectName(QStringLiteral("lblPLQ"));
  lblPLQ->setAttribute(Qt::WA_TransparentForMouseEvents);
  lblPLQ->setFocusPolicy(Qt::NoFocus);
  lblPLQ->setFrameShape(QFrame::Box);
  lblPLQ->setMargin(1);
  lblPLQ->setAutoFillBackground(true);
  lblPLQ->setBackgroundRole(QPalette::ToolTipBase);
  lblPLQ->setForegroundRole(QPalette::ToolTipText);
  lblPLQ->hide();
  lblShape->setObjectName(QStringLiteral("lblShape"));
  imgBild->setObjectName(QStringLiteral("imgBild"));
  imgHandle->setObjectName(QStringLiteral("imgHandle"));
  imgRfLine->setObjectName(QStringLiteral("imgRfLine"));
  for (size_t i = 0; i < lblHandle.size(); ++i) {
    lblHandle[i] = new MapMarker(MapMarker::Look::Handle, canvas);
    lblHandle[i]->setObjectName(QStringLiteral("lblHandle%1").arg(i));
  }
}

void MapControls::Sync() {
  Text2->Sync();
  Show_Frame(*lblShape, Map.lblShape);
  Show_Control(*imgBild, Map.imgBild);
  for (size_t i = 0; i < lblHandle.size(); ++i) Show_Control(*lblHandle[i], Map.lblHandle[i]);
  Show_Control(*imgHandle, Map.imgHandle);
  Show_Control(*imgRfLine, Map.imgRfLine);
  lblPLQ->setText(Map.lblPLQ.Text);
  lblPLQ->move(Map.lblPLQ.Left, Map.lblPLQ.Top);
  lblPLQ->adjustSize();
  lblPLQ->setVisible(Map.lblPLQ.Visible);
}
