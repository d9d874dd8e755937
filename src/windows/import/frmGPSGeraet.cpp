#include "windows/import/frmGPSGeraet.h"

#include "import/gps_guest.h"
#include "state/on_reset.h"
#include "ui_frmGPSGeraet.h"
#include "windows/common/frm_dialogs.h"

namespace {
DeviceChoice last;
const OnReset fresh(last);
}  // namespace

FrmGPSGeraet::FrmGPSGeraet(QWidget* parent) : QDialog(parent), ui(std::make_unique<Ui::FrmGPSGeraet>()) {
  ui->setupUi(this);
  Prepare_Dialog(*this, QStringLiteral("GPS.htm#geraet"));
  for (const GpsDevice& device : Gps_Devices()) ui->cmbGeraet->addItem(device.name, device.format);
  ui->cmbPort->addItems(Gps_Ports());
  if (const int index = ui->cmbGeraet->findData(last.format); index >= 0) ui->cmbGeraet->setCurrentIndex(index);
  if (!last.port.isEmpty()) ui->cmbPort->setCurrentText(last.port);
  ui->cmbPort->setCompleter(nullptr);
  connect(ui->cmdLesen, &QPushButton::clicked, this, &QDialog::accept);
  connect(ui->cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
}

FrmGPSGeraet::~FrmGPSGeraet() = default;

DeviceChoice FrmGPSGeraet::Choice() const {
  return {ui->cmbGeraet->currentData().toString(), ui->cmbPort->currentText().trimmed()};
}

std::optional<DeviceChoice> Ask_Gps_Device(QWidget* parent) {
  FrmGPSGeraet dialog(parent);
  if (dialog.exec() != QDialog::Accepted) return std::nullopt;
  last = dialog.Choice();
  if (last.port.isEmpty()) return std::nullopt;
  return last;
}
