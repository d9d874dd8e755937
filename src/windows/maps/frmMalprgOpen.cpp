#include "windows/maps/frmMalprgOpen.h"

#include <QApplication>

#include "maps/paint_program.h"
#include "platform/message_box.h"
#include "state/global_state.h"
#include "store/settings.h"
#include "ui_frmMalprgOpen.h"
#include "windows/common/frm_dialogs.h"
#include "windows/maps/frmMalprg.h"

FrmMalprgOpen::FrmMalprgOpen(QWidget* parent) : QDialog(parent), ui(std::make_unique<Ui::FrmMalprgOpen>()) {
  ui->setupUi(this);
  Prepare_Dialog(*this, QStringLiteral("Malprogramm.htm"));
  ui->lblKarte->setText(QStringLiteral("Karte: ") + MapFile);
  connect(ui->cmdList, &QPushButton::clicked, this, &FrmMalprgOpen::Change_List);
  connect(ui->lstMalprg, &QListWidget::itemDoubleClicked, this, &FrmMalprgOpen::accept);
  connect(ui->cmdOK, &QPushButton::clicked, this, &FrmMalprgOpen::accept);
  connect(ui->cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
  Fill();
}

FrmMalprgOpen::~FrmMalprgOpen() = default;

void FrmMalprgOpen::Fill() {
  ui->lstMalprg->clear();
  ui->lstMalprg->addItems(Paint_Programs());
  ui->lstMalprg->setCurrentRow(0);
  ui->cmdOK->setEnabled(ui->lstMalprg->count() > 0);
  if (ui->lstMalprg->count() > 0)
    ui->lstMalprg->setFocus();
  else
    ui->cmdList->setFocus();
}

void FrmMalprgOpen::Change_List() {
  Show_frmMalprg(this);
  Fill();
}

void FrmMalprgOpen::accept() {
  const QListWidgetItem* chosen = ui->lstMalprg->currentItem();
  if (!chosen) return;
  const auto returned = [] {
    if (!QApplication::activeModalWidget()) Reload_Changed_Map();
  };
  QString fault;
  switch (Start_Paint_Program(chosen->text(), returned)) {
    case PaintStart::Started:
      QDialog::accept();
      return;
    case PaintStart::NoMap:
      fault = QStringLiteral("Bitte öffnen Sie zuerst eine Karte.");
      break;
    case PaintStart::NoProgram:
      fault = QStringLiteral("Dieses Programm wurde nicht gefunden:\n") + chosen->text();
      break;
    case PaintStart::Failed:
      fault = QStringLiteral("Dieses Programm kann nicht gestartet werden:\n") + chosen->text();
      break;
  }
  Message_Box(fault, MsgButtons::Ok, MsgIcon::Information, windowTitle());
}

void Show_frmMalprgOpen(QWidget* parent) { FrmMalprgOpen(parent).exec(); }
