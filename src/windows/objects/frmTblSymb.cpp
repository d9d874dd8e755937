#include "windows/objects/frmTblSymb.h"

#include "ui_frmTblSymb.h"
#include "windows/common/frm_dialogs.h"

FrmTblSymb::FrmTblSymb(QWidget* parent) : QDialog(parent), ui(std::make_unique<Ui::FrmTblSymb>()) {
  ui->setupUi(this);
  Prepare_Dialog(*this, QStringLiteral("Schrift.htm"));
  setWindowModality(Qt::NonModal);
  connect(ui->rgcard, &SymbolTable::Picked, this, &FrmTblSymb::Picked);
  connect(ui->cmdClose, &QPushButton::clicked, this, &QDialog::close);
  ui->rgcard->setFocus();
}

FrmTblSymb::~FrmTblSymb() = default;

void FrmTblSymb::Show_Font(const QString& family, int charset) {
  ui->lblFont->setText(QStringLiteral("Schriftart: ") + family);
  ui->rgcard->Set_Font(family, charset);
}
