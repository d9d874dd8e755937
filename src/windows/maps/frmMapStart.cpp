#include "windows/maps/frmMapStart.h"

#include <QFileInfo>
#include <QKeyEvent>
#include <QMainWindow>
#include <QMenuBar>
#include <QPainter>
#include <QPainterPath>
#include <QTimer>
#include <algorithm>

#include "maps/map_choose.h"
#include "maps/menu_table.h"
#include "maps/program_start.h"
#include "platform/files.h"
#include "state/events.h"
#include "state/mdi_state.h"
#include "store/file_names.h"
#include "ui_frmMapStart.h"
#include "windows/common/frm_dialogs.h"

Butterfly::Butterfly(QWidget* parent) : QWidget(parent) { setAttribute(Qt::WA_TransparentForMouseEvents); }

void Butterfly::Set_Phase(int number) {
  phase = number;
  update();
}

void Butterfly::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.translate(width() / 2.0, height() / 2.0);
  painter.scale(width() / 36.0, height() / 32.0);
  const double open[] = {1.0, 0.8, 0.5, 0.3, 0.5, 0.8};
  const double spread = open[phase % 6];
  for (const double side : {-1.0, 1.0}) {
    painter.save();
    painter.scale(side * spread, 1);
    QPainterPath fore, hind;
    fore.moveTo(0, -1);
    fore.cubicTo(4, -16, 18, -16, 16, -5);
    fore.cubicTo(15, 1, 7, 2, 0, 2);
    hind.moveTo(0, 1);
    hind.cubicTo(7, 1, 14, 4, 11, 10);
    hind.cubicTo(9, 15, 3, 12, 0, 4);
    painter.setPen(QPen(QColor(70, 35, 10), 1.2));
    painter.setBrush(QColor(240, 150, 40));
    painter.drawPath(fore);
    painter.setBrush(QColor(250, 190, 70));
    painter.drawPath(hind);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(70, 35, 10));
    painter.drawEllipse(QPointF(11, -7), 2, 2);
    painter.restore();
  }
  painter.setPen(QPen(QColor(50, 25, 5), 1.1));
  painter.drawLine(QPointF(0, -6), QPointF(-4, -13));
  painter.drawLine(QPointF(0, -6), QPointF(4, -13));
  painter.setBrush(QColor(50, 25, 5));
  painter.drawEllipse(QPointF(0, 1), 1.4, 8);
}

FrmMapStart::FrmMapStart(QWidget* parent)
    : QWidget(parent), ui(std::make_unique<Ui::FrmMapStart>()), Bfly1(nullptr), Timer1(new QTimer(this)) {
  ui->setupUi(this);
  QFont big = ui->lblTitel->font();
  big.setPointSizeF(big.pointSizeF() * 2);
  big.setBold(true);
  ui->lblTitel->setFont(big);
  ui->Label1->setText(QStringLiteral("Version ") + Program_Version() +
                      QStringLiteral("\n\nBitte klicken Sie auf das Menü 'Hilfe - Einstellungen', bzw. lesen Sie die "
                                     "Datei  ") +
                      Program_File(QStringLiteral("Flurax-Einstellungen.pdf")) +
                      QStringLiteral(",\nwenn Sie mit Windows Vista, Windows 7, oder Windows 8 arbeiten."));
  // A path is torn at its separators only where the room does not suffice.
  const int widest = ui->Label1->fontMetrics().size(0, ui->Label1->text()).width() + 2 * ui->Label1->margin() + 2;
  ui->Label1->setMinimumWidth(std::min(widest, 760));
  connect(ui->StartButton, &QPushButton::clicked, this, &FrmMapStart::Open_Map_Menu);
  // Click and Enter; later, when the list is no longer in the middle of its own event.
  const auto open = [this](QListWidgetItem* item) {
    const int line = item->data(Qt::UserRole).toInt();
    QTimer::singleShot(0, this, [this, line] { Open_Recent(line); });
  };
  connect(ui->lstRecent, &QListWidget::itemClicked, this, open);
  connect(ui->lstRecent, &QListWidget::itemActivated, this, open);

  Bfly1 = new Butterfly(this);
  Bfly1->setObjectName(QStringLiteral("Bfly1"));
  Bfly1->resize(Bfly1->sizeHint());
  Timer1->setObjectName(QStringLiteral("Timer1"));
  Timer1->setInterval(150);
  connect(Timer1, &QTimer::timeout, this, &FrmMapStart::Move_Butterfly);
}

FrmMapStart::~FrmMapStart() { events.StateChanged.Disconnect(listener); }

void FrmMapStart::showEvent(QShowEvent* event) {
  QWidget::showEvent(event);
  Fill_Recent();
  events.StateChanged.Disconnect(listener);
  listener = events.StateChanged.Connect([this] { Fill_Recent(); });
  Move_Butterfly();
  Timer1->start();
}

void FrmMapStart::hideEvent(QHideEvent* event) {
  Timer1->stop();
  events.StateChanged.Disconnect(listener);
  QWidget::hideEvent(event);
}

void FrmMapStart::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_F1)
    Show_Help(window(), QStringLiteral("Start.htm"));
  else
    QWidget::keyPressEvent(event);
}

void FrmMapStart::Open_Map_Menu() {
  if (frmMDI.MapOpen) return;
  const auto* mainWindow = qobject_cast<QMainWindow*>(window());
  if (!mainWindow) return;
  // Opened by its mnemonic, as the keys Alt+K do it.
  for (QAction* menu : mainWindow->menuBar()->actions()) {
    if (!menu->text().startsWith(QLatin1String("&Karte"))) continue;
    mainWindow->menuBar()->setActiveAction(menu);
    return;
  }
}

void FrmMapStart::Fill_Recent() {
  constexpr int mostShown = 5;
  QStringList paths;
  std::vector<int> lines;
  for (int line = 1; line <= menuListLines && paths.size() < mostShown; ++line) {
    const MenuState& menu = Menu(QStringLiteral("mnuMapFile"), line);
    if (!menu.Visible || menu.Tag.isEmpty() || !File_Exists(menu.Tag)) continue;
    paths += menu.Tag;
    lines.push_back(line);
  }
  QStringList shown;
  for (int i = 0; i < ui->lstRecent->count(); ++i) shown += ui->lstRecent->item(i)->toolTip();
  if (shown == paths) return;
  ui->lstRecent->clear();
  for (int i = 0; i < paths.size(); ++i) {
    const QFileInfo file(paths[i]);
    auto* item = new QListWidgetItem(file.fileName() + QStringLiteral("   –   ") + file.path(), ui->lstRecent);
    item->setToolTip(paths[i]);
    item->setTextAlignment(Qt::AlignCenter);
    item->setData(Qt::UserRole, lines[static_cast<size_t>(i)]);
  }
  ui->lblRecent->setVisible(!paths.isEmpty());
  ui->lstRecent->setVisible(!paths.isEmpty());
  const int row = ui->lstRecent->sizeHintForRow(0) + 2 * ui->lstRecent->spacing();
  ui->lstRecent->setFixedHeight(static_cast<int>(paths.size()) * row + 2 * ui->lstRecent->spacing());
}

void FrmMapStart::Open_Recent(int line) {
  if (!frmMDI.MapOpen) Open_Recent_Map(line);
}

void FrmMapStart::Move_Butterfly() {
  // Clockwise round text and button, some pixels a step, with a little up and down.
  const QRect text = ui->Label1->fontMetrics().boundingRect(ui->Label1->geometry(), Qt::AlignCenter | Qt::TextWordWrap,
                                                            ui->Label1->text());
  const QRect around = (text | ui->lblTitel->geometry() | ui->StartButton->geometry())
                           .adjusted(-24, -22, 24, 22)
                           .intersected(rect().adjusted(18, 16, -18, -16));
  if (around.width() <= 0 || around.height() <= 0) return;
  const int length = 2 * (around.width() + around.height());
  int at = step * 9 % length;
  QPoint place;
  if (at < around.width())
    place = around.topLeft() + QPoint(at, 0);
  else if ((at -= around.width()) < around.height())
    place = around.topRight() + QPoint(0, at);
  else if ((at -= around.height()) < around.width())
    place = around.bottomRight() - QPoint(at, 0);
  else
    place = around.bottomLeft() - QPoint(0, at - around.width());
  const int sway[] = {0, 3, 5, 3, 0, -3, -5, -3};
  Bfly1->move(place - QPoint(Bfly1->width() / 2, Bfly1->height() / 2 + sway[step % 8]));
  Bfly1->Set_Phase(step);
  Bfly1->raise();
  ++step;
}

QWidget* Make_frmMapStart(QWidget* parent) { return new FrmMapStart(parent); }
