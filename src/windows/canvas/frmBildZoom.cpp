#include "windows/canvas/frmBildZoom.h"

#include <QShowEvent>

#include "platform/message_box.h"
#include "platform/text.h"
#include "state/events.h"
#include "state/map_state.h"
#include "ui_frmBildZoom.h"
#include "view/view.h"
#include "windows/common/frm_dialogs.h"

namespace {

constexpr double smallestFactor = 0.05, largestFactor = 8;
constexpr int fromRightEdge = 100 / 15;  // 100 twips

bool In_Range(double factor) { return factor >= smallestFactor && factor <= largestFactor; }

}  // namespace

FrmBildZoom::FrmBildZoom(QWidget* parent) : QDialog(parent), ui(std::make_unique<Ui::FrmBildZoom>()) {
  ui->setupUi(this);
  Prepare_Dialog(*this, QStringLiteral("Zoom.htm"));
  const double zoom = Map.Zoom > 0 ? static_cast<double>(Map.Zoom) : 1.0;
  before = Format(100 / zoom / 100, QStringLiteral("0.00"));
  ui->txtFaktor->setText(before);
  ui->txtFaktor->setAlignment(Qt::AlignRight);
  ui->txtFaktor->selectAll();
  connect(ui->txtFaktor, &QLineEdit::textChanged, this, &FrmBildZoom::Show_Percent);
  connect(ui->cmdOK, &QPushButton::clicked, this, &FrmBildZoom::accept);
  connect(ui->cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
  Show_Percent();
}

FrmBildZoom::~FrmBildZoom() = default;

void FrmBildZoom::showEvent(QShowEvent* event) {
  QDialog::showEvent(event);
  if (parentWidget() && !event->spontaneous()) {
    const QWidget* around = parentWidget()->window();
    const QPoint corner = around->mapToGlobal(QPoint(around->width(), around->height() / 4));
    move(corner.x() - frameGeometry().width() - fromRightEdge, corner.y());
  }
  raise();
  activateWindow();
}

void FrmBildZoom::Show_Percent() {
  const double factor = Val_Comma(ui->txtFaktor->text());
  ui->lblProzent->setText(In_Range(factor)
                              ? QStringLiteral("entspricht %1 %").arg(Format(factor * 100, QStringLiteral("0")))
                              : QStringLiteral("0,05 bis 8"));
}

void FrmBildZoom::accept() {
  // Two decimals cannot say every zoom: what was not changed stays as exact as it is.
  if (ui->txtFaktor->text() == before) {
    QDialog::accept();
    return;
  }
  const double factor = Val_Comma(ui->txtFaktor->text());
  if (!In_Range(factor)) {
    Message_Box(QStringLiteral("Bitte geben Sie einen Faktor zwischen 0,05 und 8 ein."), MsgButtons::Ok,
                MsgIcon::Information, windowTitle());
    ui->txtFaktor->setFocus();
    ui->txtFaktor->selectAll();
    return;
  }
  QDialog::accept();
  Clear_Zoom_Checks();
  Set_Zoom(1 / factor);
  Map.ZoomMenu = QStringLiteral("mnuZoomFak");
  events.StateChanged.Emit();
}

void Show_frmBildZoom(QWidget* parent) { FrmBildZoom(parent).exec(); }
