#include "windows/store/frmVerlauf.h"

#include <QDateTime>

#include "maps/commands.h"
#include "maps/step_walk.h"
#include "state/events.h"
#include "state/run_guarded.h"
#include "store/history.h"
#include "ui_frmVerlauf.h"
#include "windows/common/frm_dialogs.h"
#include "windows/common/tool_place.h"

namespace {

constexpr int widthLetters = 52, heightLines = 22;

QString Line_Of(const JournalStep& step) {
  const QDateTime when = QDateTime::fromMSecsSinceEpoch(step.when);
  const bool today = when.date() == QDate::currentDate();
  return when.toString(today ? QStringLiteral("HH:mm:ss") : QStringLiteral("dd.MM. HH:mm")) + QStringLiteral("   ") +
         step.name;
}

}  // namespace

FrmVerlauf::FrmVerlauf(QWidget* parent) : QDialog(parent), ui(std::make_unique<Ui::FrmVerlauf>()) {
  ui->setupUi(this);
  Prepare_Dialog(*this, QStringLiteral("Verlauf.htm"));
  setWindowModality(Qt::NonModal);
  setAttribute(Qt::WA_DeleteOnClose);
  resize(fontMetrics().averageCharWidth() * widthLetters, fontMetrics().height() * heightLines);
  later.setSingleShot(true);
  connect(&later, &QTimer::timeout, this, [this] { Run_Guarded([this] { Show_Steps(); }); });
  listeners[0] = events.StateChanged.Connect([this] { later.start(0); });
  listeners[1] = events.TableChanged.Connect([this] { later.start(0); });
  listeners[2] = events.MapClosed.Connect([this] { close(); });
  // The row that is current when the mouse is let go, or after a key: not each that is passed on the way.
  connect(ui->lstSchritte, &QListWidget::itemClicked, this,
          [this](QListWidgetItem* item) { Go_To(ui->lstSchritte->row(item)); });
  connect(ui->lstSchritte, &QListWidget::itemActivated, this,
          [this](QListWidgetItem* item) { Go_To(ui->lstSchritte->row(item)); });
  connect(ui->btnBack, &QPushButton::clicked, this, [] { Run_Command(QStringLiteral("mnuStepBack")); });
  connect(ui->btnForward, &QPushButton::clicked, this, [] { Run_Command(QStringLiteral("mnuStepForward")); });
  connect(ui->btnClose, &QPushButton::clicked, this, &QDialog::close);
  Show_Steps();
  ui->lstSchritte->setFocus();
}

FrmVerlauf::~FrmVerlauf() {
  events.StateChanged.Disconnect(listeners[0]);
  events.TableChanged.Disconnect(listeners[1]);
  events.MapClosed.Disconnect(listeners[2]);
}

void FrmVerlauf::Go_To(int position) {
  Run_Guarded([position] { Walk_To_Step(position); });
  Show_Steps();
}

// Lines that stay are left alone: with thousands of them the list would flicker and jump.
void FrmVerlauf::Show_Steps() {
  QListWidget& list = *ui->lstSchritte;
  const int count = Step_Count(), position = Step_Position();
  QStringList lines{QStringLiteral("Anfang")};
  for (int step = 0; step < count; ++step) lines += Line_Of(Step_At(step));
  while (list.count() > lines.size()) delete list.takeItem(list.count() - 1);
  for (int row = 0; row < lines.size(); ++row) {
    if (row >= list.count()) list.addItem(lines[row]);
    QListWidgetItem& item = *list.item(row);
    if (item.text() != lines[row]) item.setText(lines[row]);
    QFont font = item.font();
    font.setBold(row == position);
    font.setItalic(row > position);
    item.setFont(font);
    item.setForeground(row > position ? palette().brush(QPalette::Disabled, QPalette::Text)
                                      : palette().brush(QPalette::Active, QPalette::Text));
    item.setToolTip(row > position ? QStringLiteral("zurückgenommen") : QString());
  }
  list.setCurrentRow(position);
  list.scrollToItem(list.item(position));
  ui->btnBack->setEnabled(Can_Step_Back());
  ui->btnForward->setEnabled(Can_Step_Forward());
}

void Show_frmVerlauf(QWidget* parent) {
  auto* open = parent->findChild<FrmVerlauf*>();
  FrmVerlauf& window = open ? *open : *new FrmVerlauf(parent);
  Works_Beside(window);
  window.show();
  window.raise();
  window.activateWindow();
}
