#include "windows/coordinates/frmDialog.h"

#include <QFileInfo>
#include <QShowEvent>

#include "maps/map_coordinates.h"
#include "maps/map_grid.h"
#include "platform/message_box.h"
#include "state/coordinate_state.h"
#include "ui_frmDialog.h"
#include "windows/common/frm_dialogs.h"

namespace {
const QString heading = QStringLiteral("Dateien");  // stands in the list while nothing is chosen
}

FrmDialog::FrmDialog(QWidget* parent) : QDialog(parent), ui(std::make_unique<Ui::FrmDialog>()) {
  ui->setupUi(this);
  setWindowFlag(Qt::WindowStaysOnTopHint);
  Prepare_Dialog(*this, QStringLiteral("Kalibrierung.htm"));
  ui->cmbFiles->addItem(heading);
  for (const QString& path : CalFileChoice) ui->cmbFiles->addItem(QFileInfo(path).fileName(), path);
  // The one in force, when the choice is called again.
  const int inForce = ui->cmbFiles->findData(Coord.CalFile);
  ui->cmbFiles->setCurrentIndex(Coord.CalFile.isEmpty() || inForce < 0 ? 0 : inForce);
  connect(ui->btnOK, &QPushButton::clicked, this, &FrmDialog::accept);
  connect(ui->btnCancel, &QPushButton::clicked, this, &QDialog::reject);
  connect(ui->cmdNeu, &QPushButton::clicked, this, &FrmDialog::Make_New);
  ui->cmbFiles->setFocus();
}

FrmDialog::~FrmDialog() = default;

void FrmDialog::showEvent(QShowEvent* event) {
  QDialog::showEvent(event);
  if (!event->spontaneous()) move(1, 1);
}

void FrmDialog::accept() {
  const QString chosen = ui->cmbFiles->currentText();
  if (chosen.isEmpty() || chosen == heading) {
    Message_Box(QStringLiteral("Bitte wählen Sie aus der Auflistung eine Datei aus."), MsgButtons::Ok,
                MsgIcon::Information, QStringLiteral("Kalibrierungsdatei auswählen"));
    return;
  }
  Take_Cal_File(ui->cmbFiles->currentData().toString());
  QDialog::accept();
}

void FrmDialog::Make_New() {
  QDialog::reject();  // the map it belongs to is closed for the tool
  Make_Grid();
}

void Show_frmDialog(QWidget* parent) { FrmDialog(parent).exec(); }
