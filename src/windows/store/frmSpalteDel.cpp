#include "windows/store/frmSpalteDel.h"

#include "platform/message_box.h"
#include "state/run_guarded.h"
#include "store/columns.h"
#include "ui_frmSpalteDel.h"
#include "windows/store/tbl_window.h"
#include "windows/store/tbl_window_columns.h"

FrmSpalteDel::FrmSpalteDel(QWidget* parent) : QDialog(parent), ui(std::make_unique<Ui::FrmSpalteDel>()) {
  ui->setupUi(this);
  setMinimumWidth(fontMetrics().horizontalAdvance(windowTitle()) + 160);  // room for the title beside its buttons
  Prepare_Column_Window(*this, QStringLiteral("Spalten.htm"));
  if (const TblWindow* table = Table_Of(parent)) connect(table, &TblWindow::ColumnClicked, this, &FrmSpalteDel::Choose);
  connect(ui->comRemove, &QPushButton::clicked, this, &FrmSpalteDel::Remove);
  connect(ui->comCancel, &QPushButton::clicked, this, &QDialog::close);
}

FrmSpalteDel::~FrmSpalteDel() = default;

void FrmSpalteDel::Choose(const QString& name) {
  if (Is_Fixed_Column(name)) {
    Message_Box(
        name + QStringLiteral(":  Diese ausgewählte Spalte wird vom Programm benötigt.\n\nBitte wählen sie eine "
                              "andere Spalte rechts von der Spalte 'Typ'."),
        MsgButtons::Ok, MsgIcon::Information, windowTitle());
    return;
  }
  chosen = name;
  ui->lblSpalte->setText(QStringLiteral("Wollen Sie die folgende Spalte entfernen?\n\n") + name);
  ui->comRemove->setDefault(true);
  ui->comRemove->setFocus();
  adjustSize();
}

void FrmSpalteDel::Remove() {
  if (chosen.isEmpty()) {
    Message_Box(QStringLiteral("Bitte wählen Sie eine Spalte rechts von der Spalte 'Typ' aus."), MsgButtons::Ok,
                MsgIcon::Information, QStringLiteral("Spalte in der Tabelle löschen"));
    return;
  }
  bool removed = false;
  Run_Guarded([&] { removed = Remove_Column(chosen); });
  if (removed) close();
}

void Show_frmSpalteDel(QWidget* parent) { Show_Column_Window<FrmSpalteDel>(parent); }
