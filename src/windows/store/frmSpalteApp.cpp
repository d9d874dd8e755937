#include "windows/store/frmSpalteApp.h"

#include <QIntValidator>

#include "state/run_guarded.h"
#include "store/columns.h"
#include "ui_frmSpalteApp.h"
#include "windows/common/frm_dialogs.h"

namespace {
const QString defaultTitle = QStringLiteral("Neue Spalte");
constexpr int defaultWidth = 20, widestText = 255;
}  // namespace

FrmSpalteApp::FrmSpalteApp(QWidget* parent) : QDialog(parent), ui(std::make_unique<Ui::FrmSpalteApp>()) {
  ui->setupUi(this);
  Prepare_Dialog(*this, QStringLiteral("Spalten.htm"));
  ui->txtTitel->setText(defaultTitle);
  ui->txtTitel->selectAll();
  ui->txtBreite->setText(QString::number(defaultWidth));
  ui->txtBreite->setValidator(new QIntValidator(0, widestText, this));
  connect(ui->optText, &QRadioButton::toggled, this, [this](bool text) {
    ui->txtBreite->setEnabled(text);
    ui->lblBreite->setEnabled(text);
  });
  connect(ui->comOK, &QPushButton::clicked, this, &FrmSpalteApp::accept);
  connect(ui->comCancel, &QPushButton::clicked, this, &QDialog::reject);
}

FrmSpalteApp::~FrmSpalteApp() = default;

void FrmSpalteApp::accept() {
  NewColumn column;
  column.title = ui->txtTitel->text().trimmed();
  column.type = ui->optInteger->isChecked() ? FieldType::Integer
                : ui->optZahl->isChecked()  ? FieldType::Double
                                            : FieldType::Text;
  column.width = ui->txtBreite->text().toInt();
  bool added = false;
  Run_Guarded([&] { added = Add_Column(column, defaultTitle); });
  if (added) {
    QDialog::accept();
    return;
  }
  ui->txtTitel->setFocus();
  ui->txtTitel->selectAll();
}

void Show_frmSpalteApp(QWidget* parent) { FrmSpalteApp(parent).exec(); }
