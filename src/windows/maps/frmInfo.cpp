#include "windows/maps/frmInfo.h"

#include <sqlite3.h>

#include <QVBoxLayout>

#include "maps/program_start.h"
#include "state/global_state.h"
#include "ui_frmInfo.h"
#include "windows/common/frm_dialogs.h"
#include "windows/maps/frmMapStart.h"

FrmInfo::FrmInfo(QWidget* parent) : QDialog(parent), ui(std::make_unique<Ui::FrmInfo>()) {
  ui->setupUi(this);
  Prepare_Dialog(*this, QStringLiteral("index.htm"));
  auto* butterfly = new Butterfly(ui->pnlBild);
  butterfly->resize(72, 64);
  QFont big = ui->lblName->font();
  big.setPointSizeF(big.pointSizeF() * 1.6);
  big.setBold(true);
  ui->lblName->setFont(big);
  ui->lblName->setText(QStringLiteral("FLURAX"));
  ui->lblVersion->setText(QStringLiteral("Version ") + Program_Version());
  QStringList lines{QStringLiteral("Programmordner: ") + ProgramFolder};
  if (!MapFile.isEmpty()) lines.append(QStringLiteral("Karte: ") + MapFile);
  if (!TableFile.isEmpty()) lines.append(QStringLiteral("Standard-Tabelle: ") + TableFile);
  lines.append(QStringLiteral("Qt %1, SQLite %2").arg(QLatin1String(qVersion()), QLatin1String(sqlite3_libversion())));
  ui->lblInfo->setText(lines.join(QLatin1Char('\n')));
  connect(ui->cmdOK, &QPushButton::clicked, this, &QDialog::accept);
}

FrmInfo::~FrmInfo() = default;

void Show_frmInfo(QWidget* parent) { FrmInfo(parent).exec(); }
