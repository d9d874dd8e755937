#include "windows/analysis/frmNachbar.h"

#include "maps/neighbour_command.h"
#include "state/run_guarded.h"
#include "ui_frmNachbar.h"
#include "windows/common/frm_dialogs.h"

namespace {
const QString helpPage = QStringLiteral("Nachbarn.htm");
}

FrmNachbar::FrmNachbar(QWidget* parent) : QDialog(parent), ui(std::make_unique<Ui::FrmNachbar>()) {
  ui->setupUi(this);
  Prepare_Dialog(*this, helpPage);
  connect(ui->btnRechn, &QPushButton::clicked, this, &FrmNachbar::accept);
  connect(ui->btnBreak, &QPushButton::clicked, this, &QDialog::reject);
  connect(ui->btnHelp, &QPushButton::clicked, this, [this] { Show_Help(this, helpPage); });
  ui->txtZahl->setFocus();
  ui->txtZahl->selectAll();
}

FrmNachbar::~FrmNachbar() = default;

void FrmNachbar::accept() {
  NeighbourOrder order{ui->txtZahl->value(), ui->optDetail->isChecked()};
  bool written = false;
  setEnabled(false);  // long work serves events
  Run_Guarded([&] { written = Calc_Neighbours(order); });
  setEnabled(true);
  ui->txtZahl->setValue(order.neighbours);
  if (written) QDialog::accept();
}

void Show_frmNachbar(QWidget* parent) { FrmNachbar(parent).exec(); }
