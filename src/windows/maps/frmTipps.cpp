#include "windows/maps/frmTipps.h"

#include <QScreen>

#include "platform/message_box.h"
#include "state/mdi_state.h"
#include "store/settings.h"
#include "ui_frmTipps.h"
#include "windows/common/frm_dialogs.h"

namespace {
constexpr int largeMapTip = 2;
}

FrmTipps::FrmTipps(QWidget* parent) : QDialog(parent), ui(std::make_unique<Ui::FrmTipps>()) {
  Prepare();
  ui->lblGroesse->hide();
  ui->lblFarben->hide();
  connect(ui->cmdBack, &QPushButton::clicked, this, [this] { Show_Tip(tip - 1); });
  connect(ui->cmdNext, &QPushButton::clicked, this, [this] { Show_Tip(tip + 1); });
  Show_Tip(1);
}

FrmTipps::FrmTipps(QSize map, QWidget* parent) : QDialog(parent), ui(std::make_unique<Ui::FrmTipps>()) {
  Prepare();
  setWindowTitle(QStringLiteral("Tipps & Tricks: Große Bitmap und viele Bildschirmfarben"));
  ui->lblGroesse->setText(QStringLiteral("Größe der Karte: %1 x %2 Bildpunkte").arg(map.width()).arg(map.height()));
  ui->lblFarben->setText(QStringLiteral("Farbtiefe des Bildschirms: %1 Bit").arg(screen()->depth()));
  Show_Tip(largeMapTip);
  for (QWidget* widget :
       {static_cast<QWidget*>(ui->lblNummer), static_cast<QWidget*>(ui->cmdBack), static_cast<QWidget*>(ui->cmdNext)})
    widget->hide();
}

FrmTipps::~FrmTipps() = default;

void FrmTipps::Prepare() {
  ui->setupUi(this);
  Prepare_Dialog(*this, QStringLiteral("Tipps.htm"));
  ui->ckTipps->setChecked(frmMDI.Tips);
  connect(ui->cmdOK, &QPushButton::clicked, this, &QDialog::accept);
}

void FrmTipps::Show_Tip(int number) {
  tip = number;
  ui->lblNummer->setText(QStringLiteral("Tipp %1").arg(tip));
  ui->txtTipp->setPlainText(Tip_Text(tip).join(QLatin1Char('\n')).trimmed());
  ui->cmdBack->setEnabled(tip > 1);
  ui->cmdNext->setEnabled(!Tip_Text(tip + 1).isEmpty());
}

void FrmTipps::accept() {
  if (ui->ckTipps->isChecked() != frmMDI.Tips) {
    frmMDI.Tips = ui->ckTipps->isChecked();
    Guarded(windowTitle(), [] { Write_Ini(frmMDI.Tips ? QStringLiteral("TippsYes") : QStringLiteral("TippsNo")); });
  }
  QDialog::accept();
}

void Show_frmTipps(QWidget* parent) { FrmTipps(parent).exec(); }
