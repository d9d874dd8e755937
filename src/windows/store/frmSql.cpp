#include "windows/store/frmSql.h"

#include <QLineEdit>

#include "maps/map_open.h"
#include "state/run_guarded.h"
#include "ui_frmSql.h"
#include "windows/common/frm_dialogs.h"
#include "windows/store/frmSql_model.h"

FrmSql::FrmSql(QWidget* parent) : QDialog(parent), ui(std::make_unique<Ui::FrmSql>()), model(new SqlGridModel(this)) {
  ui->setupUi(this);
  Prepare_Dialog(*this, QStringLiteral("SQL.htm"));
  resize(900, 520);
  ui->sqlGrid->setModel(model);
  ui->sqlGrid->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  ui->sqlGrid->verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 6);
  connect(ui->btnApply, &QPushButton::clicked, this, &FrmSql::Apply);
  connect(ui->btnTake, &QPushButton::clicked, this, &FrmSql::Take);
  connect(ui->btnSave, &QPushButton::clicked, this, &FrmSql::Save_List);
  connect(ui->btnDeleteSql, &QPushButton::clicked, this, &FrmSql::Delete_Line);
  connect(ui->cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
  // A long statement is read from its beginning.
  connect(ui->cmbSqlText, &QComboBox::activated, this, [this] { ui->cmbSqlText->lineEdit()->setCursorPosition(0); });
  Open_Sql(sql);
  Fill_List();
  // Nothing is armed: a statement is chosen or typed before it can be carried out.
  ui->cmbSqlText->setCurrentIndex(-1);
  ui->cmbSqlText->lineEdit()->setPlaceholderText(QStringLiteral("Anweisung aus der Liste wählen oder hier schreiben"));
  Show_State();
}

FrmSql::~FrmSql() { Close_Sql(sql); }

void FrmSql::Fill_List() {
  const QString typed = ui->cmbSqlText->currentText();
  ui->cmbSqlText->clear();
  for (const QString& line : sql.list) {
    ui->cmbSqlText->addItem(line);
    ui->cmbSqlText->setItemData(ui->cmbSqlText->count() - 1, line, Qt::ToolTipRole);
  }
  ui->cmbSqlText->setEditText(typed);
}

void FrmSql::Show_State() {
  model->Show_Rows(sql.selection);
  const int digits = fontMetrics().horizontalAdvance(u'0');
  for (int i = 0; i < model->columnCount(); ++i) ui->sqlGrid->setColumnWidth(i, (model->Is_Text(i) ? 22 : 9) * digits);
  ui->lblInfo->setText(sql.info);
  ui->btnTake->setEnabled(sql.selection != nullptr);
}

void FrmSql::Apply() {
  Run_Guarded([this] {
    // The table is closed and opened again meanwhile.
    if (Apply_Sql(sql, ui->cmbSqlText->currentText())) Table_Replaced();
  });
  Show_State();
}

void FrmSql::Take() {
  Run_Guarded([this] {
    if (Take_Sql(sql)) Table_Replaced();
  });
  Show_State();
}

void FrmSql::Save_List() {
  Save_Sql_List(sql, ui->cmbSqlText->currentText());
  Fill_List();
  ui->lblInfo->setText(sql.info);
}

void FrmSql::Delete_Line() {
  if (Delete_Sql_Line(sql, ui->cmbSqlText->currentText())) {
    Fill_List();
    ui->cmbSqlText->clearEditText();
  }
  ui->lblInfo->setText(sql.info);
}

void Show_frmSql(QWidget* parent) { FrmSql(parent).exec(); }
