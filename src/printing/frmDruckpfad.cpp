#include "printing/frmDruckpfad.h"

#include "printing/frm_print.h"
#include "start/frm_dialogs.h"
#include "start/mdi_state.h"
#include "ui_frmDruckpfad.h"

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
