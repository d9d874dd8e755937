#include "windows/maps/frmMalprg.h"

#include <QFileInfo>

#include "maps/paint_program.h"
#include "platform/file_dialog.h"
#include "platform/message_box.h"
#include "store/settings.h"
#include "ui_frmMalprg.h"
#include "windows/common/frm_dialogs.h"

FrmMalprg::FrmMalprg(QWidget* parent) : QDialog(parent), ui(std::make_unique<Ui::FrmMalprg>()) {
  ui->setupUi(this);
  Prepare_Dialog(*this, QStringLiteral("Malprogramm.htm"));
  ui->lstMalprg->addItems(Paint_Programs());
  ui->lstMalprg->setCurrentRow(0);
  connect(ui->cmdAdd, &QPushButton::clicked, this, &FrmMalprg::Add);
  connect(ui->cmdRemove, &QPushButton::clicked, this, &FrmMalprg::Remove);
  connect(ui->lstMalprg, &QListWidget::itemDoubleClicked, this, &FrmMalprg::accept);
  connect(ui->cmdOK, &QPushButton::clicked, this, &FrmMalprg::accept);
  connect(ui->cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
  Show_Buttons();
}

FrmMalprg::~FrmMalprg() = default;

void FrmMalprg::Show_Buttons() { ui->cmdRemove->setEnabled(ui->lstMalprg->count() > 0); }

void FrmMalprg::Add() {
  FileRequest request;
  request.title = QStringLiteral("Malprogramm auswählen");
  request.folder = QStringLiteral("/usr/bin");
  request.filter = QStringLiteral("Programme|*");
  const auto path = File_Dialog(request);
  if (!path) return;
  const QFileInfo program(*path);
  if (!program.isFile() || !program.isExecutable()) {
    Message_Box(QStringLiteral("Diese Datei ist kein Programm, das gestartet werden kann:\n") + *path, MsgButtons::Ok,
                MsgIcon::Information, windowTitle());
    return;
  }
  const auto present = ui->lstMalprg->findItems(*path, Qt::MatchExactly | Qt::MatchCaseSensitive);
  if (present.isEmpty()) ui->lstMalprg->addItem(*path);
  ui->lstMalprg->setCurrentItem(present.isEmpty() ? ui->lstMalprg->item(ui->lstMalprg->count() - 1) : present.first());
  Show_Buttons();
}

void FrmMalprg::Remove() {
  delete ui->lstMalprg->takeItem(ui->lstMalprg->currentRow());
  Show_Buttons();
}

void FrmMalprg::accept() {
  QStringList programs;
  for (int i = 0; i < ui->lstMalprg->count(); ++i) programs.append(ui->lstMalprg->item(i)->text());
  const QListWidgetItem* chosen = ui->lstMalprg->currentItem();
  if (Guarded(windowTitle(), [&] { Keep_Paint_Programs(programs, chosen ? chosen->text() : QString()); }) == Step::Done)
    QDialog::accept();
}

void Show_frmMalprg(QWidget* parent) { FrmMalprg(parent).exec(); }
