#include "windows/analysis/frmPopOptions.h"

#include "platform/message_box.h"
#include "state/run_guarded.h"
#include "ui_frmPopOptions.h"
#include "windows/common/frm_dialogs.h"

namespace {
const QString helpPage = QStringLiteral("Population.htm");
}

FrmPopOptions::FrmPopOptions(QWidget* parent) : QDialog(parent), ui(std::make_unique<Ui::FrmPopOptions>()) {
  ui->setupUi(this);
  Prepare_Dialog(*this, helpPage);
  connect(ui->cmdOK, &QPushButton::clicked, this, &FrmPopOptions::accept);
  connect(ui->cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
  connect(ui->cmdApply, &QPushButton::clicked, this, [this] {
    Message_Box(QStringLiteral("Hier Code eingeben, um Optionen zu setzen, ohne das Dialogfeld zu schließen!"),
                MsgButtons::Ok, MsgIcon::Information, windowTitle());
  });
  connect(ui->cmdHelp, &QPushButton::clicked, this, [this] { Show_Help(this, helpPage); });
  ui->optFlch->setFocus();
}

FrmPopOptions::~FrmPopOptions() = default;

PopOptions FrmPopOptions::Read_Options() const {
  PopOptions options;
  options.diversity = ui->chkDiversitaet->isChecked();
  if (ui->optAll->isChecked()) options.from = SpeciesFrom::AllTexts;
  if (ui->optAllMark->isChecked()) options.from = SpeciesFrom::Marked;
  if (ui->optFig->isChecked()) options.from = SpeciesFrom::Figures;
  if (ui->optLin->isChecked()) options.from = SpeciesFrom::Lines;
  if (ui->optGroup->isChecked()) options.from = SpeciesFrom::Groups;
  return options;
}

void FrmPopOptions::accept() {
  const PopOptions options = Read_Options();
  setEnabled(false);  // long work serves events
  Run_Guarded([&options] { Calc_Chosen_Population(options); });
  setEnabled(true);
  QDialog::accept();
}

void Show_frmPopOptions(QWidget* parent) { FrmPopOptions(parent).exec(); }
