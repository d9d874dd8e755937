#include "windows/store/frmSpltHide.h"

#include "ui_frmSpltHide.h"
#include "windows/store/tbl_window.h"
#include "windows/store/tbl_window_columns.h"

FrmSpltHide::FrmSpltHide(QWidget* parent) : QDialog(parent), ui(std::make_unique<Ui::FrmSpltHide>()) {
  ui->setupUi(this);
  setMinimumWidth(fontMetrics().horizontalAdvance(windowTitle()) + 160);  // room for the title beside its buttons
  Prepare_Column_Window(*this, QStringLiteral("Spalten.htm"));
  if (const TblWindow* table = Table_Of(parent)) connect(table, &TblWindow::ColumnClicked, this, &Hide_Column);
  connect(ui->comShow, &QPushButton::clicked, this, &Show_All_Columns);
  connect(ui->comClose, &QPushButton::clicked, this, &QDialog::close);
}

FrmSpltHide::~FrmSpltHide() = default;

void Show_frmSpltHide(QWidget* parent) { Show_Column_Window<FrmSpltHide>(parent); }
