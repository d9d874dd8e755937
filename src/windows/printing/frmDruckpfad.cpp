#include "windows/printing/frmDruckpfad.h"

#include "state/mdi_state.h"
#include "ui_frmDruckpfad.h"
#include "windows/common/frm_dialogs.h"
#include "windows/printing/frm_print.h"

FrmDruckpfad::FrmDruckpfad(QWidget* parent) : QDialog(parent), ui(std::make_unique<Ui::FrmDruckpfad>()) {
  ui->setupUi(this);
  Prepare_Dialog(*this, QStringLiteral("Drucken.htm#pfad"));
  (frmMDI.printAsBitmap ? ui->optDruckFlurax : ui->optDruckdirekt)->setChecked(true);
  connect(ui->cmdOK, &QPushButton::clicked, this, &FrmDruckpfad::accept);
  connect(ui->cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
}

FrmDruckpfad::~FrmDruckpfad() = default;

void FrmDruckpfad::accept() {
  frmMDI.printAsBitmap = ui->optDruckFlurax->isChecked();
  QDialog::accept();
}

void Show_frmDruckpfad(QWidget* parent) { FrmDruckpfad(parent).exec(); }
