#include "windows/common/window_support.h"

#include <QFile>
#include <QLineEdit>
#include <QPainter>
#include <QStyleOption>
#include <cmath>
#include <numeric>

static constexpr int textMargin = 2, betweenPanels = 4, leastPanel = 60;
static constexpr int lineMargin = 4;  // pixels beside the text of a box

QIcon Program_Icon(const QString& name) {
  const QString path = QStringLiteral(":/icons/%1.svg").arg(name);
  return !name.isEmpty() && QFile::exists(path) ? QIcon(path) : QIcon();
}

ElidedLabel::ElidedLabel(QWidget* parent) : QLabel(parent) {
  setTextFormat(Qt::PlainText);
  setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
}

void ElidedLabel::Show_Text(const QString& whole) {
  if (whole == text) return;
  text = whole;
  setAccessibleName(whole);
  Update_Tip();
  update();
}

// Lines of a longer text stand one behind the other.
static QString One_Line(const QString& text) { return text.simplified(); }

int ElidedLabel::Whole_Width() const {
  // On scaled screens letters are parts of a pixel wide.
  const double letters = QFontMetricsF(font()).horizontalAdvance(One_Line(text));
  return static_cast<int>(std::ceil(letters)) + 1 + 2 * (frameWidth() + textMargin);
}

void ElidedLabel::Update_Tip() { setToolTip(Whole_Width() <= width() ? QString() : text); }

QSize ElidedLabel::sizeHint() const { return {120, fontMetrics().height() + 6}; }
QSize ElidedLabel::minimumSizeHint() const { return {40, fontMetrics().height() + 6}; }

void ElidedLabel::resizeEvent(QResizeEvent* event) {
  QLabel::resizeEvent(event);
  Update_Tip();
}

void ElidedLabel::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  QStyleOptionFrame frame;
  initStyleOption(&frame);
  drawFrame(&painter);
  const QRect room = contentsRect().adjusted(textMargin, 0, -textMargin, 0);
  painter.setPen(palette().color(foregroundRole()));
  painter.drawText(room, Qt::AlignVCenter | Qt::AlignLeft | Qt::TextSingleLine,
                   fontMetrics().elidedText(One_Line(text), Qt::ElideRight, room.width()));
}

void Give_Room(QLineEdit& box, const QString& widest) {
  QStyleOptionFrame frame;
  frame.initFrom(&box);
  frame.lineWidth = box.style()->pixelMetric(QStyle::PM_DefaultFrameWidth, &frame, &box);
  const QSize text(box.fontMetrics().horizontalAdvance(widest) + 2 * lineMargin, box.fontMetrics().height());
  box.setFixedWidth(box.style()->sizeFromContents(QStyle::CT_LineEdit, &frame, text, &box).width());
}

PanelRow::PanelRow(std::vector<int> shares, QWidget* parent) : QWidget(parent), weights(std::move(shares)) {
  for (size_t i = 0; i < weights.size(); ++i) {
    auto* panel = new ElidedLabel(this);
    panel->setObjectName(QStringLiteral("Panel%1").arg(i + 1));
    panel->setFrameStyle(QFrame::Panel | QFrame::Sunken);
    panels.push_back(panel);
  }
  setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
  setFixedHeight(panels.front()->sizeHint().height());
}

void PanelRow::Show_Text(size_t panel, const QString& whole) {
  if (panels[panel]->Whole_Text() == whole) return;
  panels[panel]->Show_Text(whole);
  Share();
}

void PanelRow::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  Share();
}

void PanelRow::Share() {
  const int count = static_cast<int>(panels.size()), room = width() - (count - 1) * betweenPanels;
  const int all = std::accumulate(weights.begin(), weights.end(), 0);
  // What each one has beyond its need can be lent.
  std::vector<int> widths, spare;
  for (size_t i = 0; i < panels.size(); ++i) {
    widths.push_back(room * weights[i] / all);
    spare.push_back(std::max(0, widths[i] - std::max(leastPanel, panels[i]->Whole_Width())));
  }
  for (size_t i = 0; i < panels.size(); ++i)
    for (size_t lender = panels.size(); lender-- > 0;) {
      const int lent = std::clamp(panels[i]->Whole_Width() - widths[i], 0, spare[lender]);
      if (lender == i || lent == 0) continue;
      spare[lender] -= lent;
      widths[lender] -= lent;
      widths[i] += lent;
    }
  int x = 0;
  for (size_t i = 0; i < panels.size(); ++i) {
    panels[i]->setGeometry(x, 0, widths[i], height());
    x += widths[i] + betweenPanels;
  }
}
