#include "windows/import/frmCSVExport.h"

#include <QFileInfo>

#include "platform/error.h"
#include "platform/file_dialog.h"
#include "platform/files.h"
#include "platform/message_box.h"
#include "state/events.h"
#include "state/global_state.h"
#include "state/task_line.h"
#include "ui_frmCSVExport.h"
#include "windows/common/frm_dialogs.h"

namespace {

const QString title = QStringLiteral("CSV-Tabelle exportieren");
const QStringList usual = {csv_column::number, QStringLiteral("Eintrag"), csv_column::pixels, csv_column::coordinates};
constexpr int semicolon = 0, comma = 1, utf8 = 0;  // rows of the boxes

}  // namespace

FrmCSVExport::FrmCSVExport(QWidget* parent) : QDialog(parent), ui(std::make_unique<Ui::FrmCSVExport>()) {
  ui->setupUi(this);
  Prepare_Dialog(*this, QStringLiteral("Trakkor.htm"));
  ui->cmbTrenner->addItems({QStringLiteral("Semikolon"), QStringLiteral("Komma"), QStringLiteral("Tabulator")});
  ui->cmbDezimal->addItems({QStringLiteral("Komma"), QStringLiteral("Punkt")});
  ui->cmbZeichen->addItems({QStringLiteral("UTF-8 mit Kennung"), QStringLiteral("Windows-1252")});
  ui->optWgs84->setEnabled(Csv_Knows_Wgs84());
  ui->optNetz->setChecked(true);
  Fill_Columns();
  connect(ui->lstSpalten, &QListWidget::currentRowChanged, this, &FrmCSVExport::Show_Moves);
  connect(ui->cmdHoch, &QPushButton::clicked, this, [this] { Move_Column(-1); });
  connect(ui->cmdTief, &QPushButton::clicked, this, [this] { Move_Column(1); });
  connect(ui->cmdExport, &QPushButton::clicked, this, &FrmCSVExport::accept);
  connect(ui->cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
  ui->lstSpalten->setCurrentRow(0);
}

FrmCSVExport::~FrmCSVExport() = default;

// The usual ones first, in the order of the short export.
void FrmCSVExport::Fill_Columns() {
  QStringList columns = usual;
  for (const QString& column : Csv_Columns())
    if (!columns.contains(column)) columns << column;
  for (const QString& column : columns) {
    auto* item = new QListWidgetItem(column, ui->lstSpalten);
    item->setFlags(item->flags() | Qt::ItemIsUserCheckable);
    item->setCheckState(usual.contains(column) ? Qt::Checked : Qt::Unchecked);
  }
}

void FrmCSVExport::Show_Moves() {
  const int row = ui->lstSpalten->currentRow();
  ui->cmdHoch->setEnabled(row > 0);
  ui->cmdTief->setEnabled(row >= 0 && row + 1 < ui->lstSpalten->count());
}

void FrmCSVExport::Move_Column(int by) {
  const int row = ui->lstSpalten->currentRow(), to = row + by;
  if (row < 0 || to < 0 || to >= ui->lstSpalten->count()) return;
  ui->lstSpalten->insertItem(to, ui->lstSpalten->takeItem(row));
  ui->lstSpalten->setCurrentRow(to);
}

CsvOrder FrmCSVExport::Order() const {
  CsvOrder order;
  for (int i = 0; i < ui->lstSpalten->count(); ++i)
    if (ui->lstSpalten->item(i)->checkState() == Qt::Checked) order.columns << ui->lstSpalten->item(i)->text();
  const int separator = ui->cmbTrenner->currentIndex();
  order.separator = separator == semicolon ? u';' : separator == comma ? u',' : u'\t';
  order.decimalSign = ui->cmbDezimal->currentIndex() == 0 ? u',' : u'.';
  order.utf8 = ui->cmbZeichen->currentIndex() == utf8;
  order.wgs84 = ui->optWgs84->isChecked();
  return order;
}

void FrmCSVExport::accept() {
  const CsvOrder order = Order();
  if (order.columns.isEmpty()) {
    Message_Box(QStringLiteral("Bitte wählen Sie mindestens eine Spalte aus."), MsgButtons::Ok, MsgIcon::Information,
                title);
    return;
  }
  const QFileInfo table(TableFile);
  const auto path = File_Dialog({.save = true,
                                 .title = title,
                                 .folder = table.path(),
                                 .name = table.completeBaseName() + QStringLiteral("-Export.csv"),
                                 .defaultExtension = QStringLiteral("csv"),
                                 .filter = QStringLiteral("CSV-Tabelle (*.csv)|*.csv|Alle Dateien (*.*)|*.*")});
  if (!path) return;
  try {
    const BusyPointer busy;
    Replace_File(*path, Csv_Table(order));
  } catch (const Error& error) {
    Message_Box(Error_Text(error) + u'\n' + *path, MsgButtons::Ok, MsgIcon::Critical, title);
    return;
  }
  Tell_Done(QStringLiteral("Exportiert: ") + *path);
  QDialog::accept();
}

void Show_frmCSVExport(QWidget* parent) {
  FrmCSVExport window(parent);
  window.exec();
}
