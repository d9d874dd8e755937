#include "windows/bridge/frmTabAustausch.h"

#include <QComboBox>
#include <QFileInfo>
#include <QHeaderView>

#include "exchange/sheet_rows.h"
#include "platform/error.h"
#include "platform/file_dialog.h"
#include "platform/message_box.h"
#include "state/events.h"
#include "ui_frmTabAustausch.h"
#include "windows/bridge/frm_tab_list.h"
#include "windows/common/frm_dialogs.h"
#include "windows/common/window_support.h"

namespace {

const QString title = QStringLiteral("Einträge austauschen");
constexpr std::array keys = {ownNumber, column::ID, column::Eintrag};  // as the box shows them
enum TableColumn { InMap, InSheet };

// A workbook or table that cannot be read or written is told; false then.
bool Tell_Error(const std::function<void()>& work) {
  try {
    const BusyPointer busy;
    work();
    return true;
  } catch (const Error& error) {
    Message_Box(Error_Text(error), MsgButtons::Ok, MsgIcon::Critical, title);
    return false;
  }
}

QStringList Names_Of(const Recordset& rows) {
  QStringList names;
  for (const FieldInfo& field : rows.Fields()) names << field.name;
  return names;
}

}  // namespace

FrmTabAustausch::FrmTabAustausch(SheetExchange& work, QWidget* parent)
    : QDialog(parent), ui(std::make_unique<Ui::FrmTabAustausch>()), exchange(work), list(new TabListModel(this)) {
  ui->setupUi(this);
  Prepare_Dialog(*this, QStringLiteral("TabBridge.htm"));
  setWindowFlag(Qt::WindowMaximizeButtonHint);
  for (const int key : keys)
    ui->cmbSchluessel->addItem(key == ownNumber ? QStringLiteral("Nummer (Nr.)") : Key_Title(exchange.Rows(), key));
  ui->tblUnterschiede->setModel(list);
  ui->tblUnterschiede->setSelectionBehavior(QAbstractItemView::SelectRows);
  ui->tblUnterschiede->verticalHeader()->hide();
  ui->tblUnterschiede->verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 6);
  ui->tblUnterschiede->horizontalHeader()->setStretchLastSection(true);
  ui->tblSpalten->setColumnCount(2);
  ui->tblSpalten->setHorizontalHeaderLabels({QStringLiteral("Karte"), QStringLiteral("Blatt")});
  ui->tblSpalten->verticalHeader()->hide();
  ui->tblSpalten->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
  connect(ui->cmdMappe, &QPushButton::clicked, this, &FrmTabAustausch::Choose_Workbook);
  connect(ui->cmdNeuLesen, &QPushButton::clicked, this, &FrmTabAustausch::Read_Again);
  connect(ui->cmbBlatt, &QComboBox::textActivated, this, &FrmTabAustausch::Choose_Sheet);
  connect(ui->cmbSchluessel, &QComboBox::activated, this, &FrmTabAustausch::Show_Key);
  connect(ui->cmbSchluesselBlatt, &QComboBox::activated, this, &FrmTabAustausch::Forget_Differences);
  connect(ui->tblSpalten, &QTableWidget::itemChanged, this, [this] {
    if (syncing == 0) Forget_Differences();
  });
  connect(ui->chkNeue, &QCheckBox::toggled, this, &FrmTabAustausch::Show_Buttons);
  connect(ui->cmdAlle, &QPushButton::clicked, this, [this] { Check_All(true); });
  connect(ui->cmdKeine, &QPushButton::clicked, this, [this] { Check_All(false); });
  connect(ui->cmdVergleichen, &QPushButton::clicked, this, &FrmTabAustausch::Compare);
  connect(ui->cmdUebernehmen, &QPushButton::clicked, this, &FrmTabAustausch::Take);
  connect(ui->cmdBack, &QPushButton::clicked, this, &FrmTabAustausch::Take_Back);
  connect(ui->cmdClose, &QPushButton::clicked, this, &QDialog::accept);
  Show_Sheets();
}

FrmTabAustausch::~FrmTabAustausch() = default;

void FrmTabAustausch::Choose_Workbook() {
  const QString now = exchange.Workbook_Path();
  exchange.Rows().MoveFirst();
  FileRequest request;
  request.title = QStringLiteral("Arbeitsmappe wählen");
  request.folder = QFileInfo(now.isEmpty() ? exchange.Rows().Text(column::Eintrag) : now).path();
  request.filter = QStringLiteral("Arbeitsmappen (*.xls; *.xlsx)|*.xls;*.xlsx|Alle Dateien (*.*)|*.*");
  const auto path = File_Dialog(request);
  if (path) Take_Workbook(*path);
}

void FrmTabAustausch::Take_Workbook(const QString& path) {
  if (!Tell_Error([&] { exchange.Open_Workbook(path); })) return;
  Show_Sheets();
  if (Order().keyColumn > 0) Compare();
}

// The same sheet, where it is still there.
void FrmTabAustausch::Read_Again() {
  const QString name = ui->cmbBlatt->currentText();
  if (!Tell_Error([&] {
        exchange.Open_Workbook(exchange.Workbook_Path());
        if (exchange.Sheets().contains(name)) exchange.Read_Sheet(name);
      }))
    return;
  Show_Sheets();
  if (Order().keyColumn > 0) Compare();
}

void FrmTabAustausch::Choose_Sheet(const QString& name) {
  Tell_Error([&] { exchange.Read_Sheet(name); });
  Show_Columns();
}

void FrmTabAustausch::Show_Sheets() {
  const Syncing now(syncing);
  ui->txtMappe->setText(exchange.Workbook_Path());
  ui->cmbBlatt->clear();
  ui->cmbBlatt->addItems(exchange.Sheets());
  ui->cmbBlatt->setCurrentText(exchange.Current().name);
  Show_Columns();
}

void FrmTabAustausch::Fill_Titles(QComboBox& box, int chosen) const {
  box.clear();
  box.addItem(QStringLiteral("–"), 0);
  for (const SheetTitle& one : exchange.Titles().columns) box.addItem(one.text, one.column);
  box.setCurrentIndex(std::max(0, box.findData(chosen)));
}

// Every column of the table, those with a title in the sheet checked.
void FrmTabAustausch::Show_Columns() {
  const Syncing now(syncing);
  const QStringList names = Names_Of(exchange.Rows());
  ui->tblSpalten->setRowCount(0);
  ui->tblSpalten->setRowCount(static_cast<int>(names.size()));
  for (int row = 0; row < static_cast<int>(names.size()); ++row) {
    const int there = exchange.Titles().Column_Of(names[row]);
    auto* item = new QTableWidgetItem(names[row]);
    item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable);
    item->setCheckState(there > 0 ? Qt::Checked : Qt::Unchecked);
    ui->tblSpalten->setItem(row, InMap, item);
    auto* box = new QComboBox(ui->tblSpalten);
    Fill_Titles(*box, there);
    box->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    connect(box, &QComboBox::activated, this, [this, item](int index) {
      item->setCheckState(index > 0 ? Qt::Checked : Qt::Unchecked);
      Forget_Differences();
    });
    ui->tblSpalten->setCellWidget(row, InSheet, box);
  }
  Show_Key();
}

void FrmTabAustausch::Show_Key() {
  const int key = keys[static_cast<size_t>(std::max(0, ui->cmbSchluessel->currentIndex()))];
  Fill_Titles(*ui->cmbSchluesselBlatt, exchange.Titles().Column_Of(Key_Title(exchange.Rows(), key)));
  Forget_Differences();
}

void FrmTabAustausch::Check_All(bool on) {
  const Syncing now(syncing);
  for (int row = 0; row < ui->tblSpalten->rowCount(); ++row) {
    const auto* box = qobject_cast<QComboBox*>(ui->tblSpalten->cellWidget(row, InSheet));
    const bool checked = on && box->currentIndex() > 0;
    ui->tblSpalten->item(row, InMap)->setCheckState(checked ? Qt::Checked : Qt::Unchecked);
  }
  Forget_Differences();
}

SheetOrder FrmTabAustausch::Order() const {
  SheetOrder order;
  order.key = keys[static_cast<size_t>(std::max(0, ui->cmbSchluessel->currentIndex()))];
  order.keyColumn = ui->cmbSchluesselBlatt->currentData().toInt();
  order.idColumn = exchange.Titles().Column_Of(QStringLiteral("ID"));
  for (int row = 0; row < ui->tblSpalten->rowCount(); ++row) {
    const auto* box = qobject_cast<QComboBox*>(ui->tblSpalten->cellWidget(row, InSheet));
    const int there = box->currentData().toInt();
    if (ui->tblSpalten->item(row, InMap)->checkState() == Qt::Checked && there > 0 && row != order.key)
      order.pairs.push_back({row, there});
  }
  return order;
}

void FrmTabAustausch::Forget_Differences() {
  compared = false;
  list->Show_Comparison({}, {});
  const bool missing = !exchange.Workbook_Path().isEmpty() && Order().keyColumn == 0;
  ui->lblErgebnis->setText(exchange.Workbook_Path().isEmpty() ? QStringLiteral("Bitte wählen Sie eine Arbeitsmappe.")
                           : missing
                               ? QStringLiteral("Bitte wählen Sie, in welcher Spalte des Blattes der Schlüssel steht.")
                               : QString());
  Show_Buttons();
}

void FrmTabAustausch::Compare() {
  if (Order().keyColumn == 0) return Forget_Differences();
  SheetComparison found;
  if (!Tell_Error([&] { found = exchange.Compare(Order()); })) return Forget_Differences();
  QString text = Comparison_Text(found);
  if (Workbook_Lock(exchange.Workbook_Path()))
    text += QStringLiteral(" Die Arbeitsmappe ist noch geöffnet; gelesen wurde, was zuletzt gespeichert wurde.");
  ui->lblErgebnis->setText(text);
  list->Show_Comparison(std::move(found), Names_Of(exchange.Rows()));
  ui->tblUnterschiede->resizeColumnsToContents();
  compared = true;
  Show_Buttons();
}

void FrmTabAustausch::Take() {
  SheetTaken taken;
  if (!Tell_Error([&] { taken = exchange.Take(list->Comparison(), ui->chkNeue->isChecked()); })) return;
  QString text = QStringLiteral("Übernommen: %1 Werte in %2 Zeilen").arg(taken.cells).arg(taken.rows);
  if (taken.added > 0) text += QStringLiteral(", %1 neue Zeilen").arg(taken.added);
  Compare();
  ui->lblErgebnis->setText(text + QStringLiteral(". Jetzt: ") + ui->lblErgebnis->text());
}

void FrmTabAustausch::Take_Back() {
  if (!Tell_Error([this] { exchange.Take_Back(); })) return;
  if (Order().keyColumn > 0)
    Compare();
  else
    Forget_Differences();
  ui->lblErgebnis->setText(QStringLiteral("Alles zurückgenommen. ") + ui->lblErgebnis->text());
}

void FrmTabAustausch::Show_Buttons() {
  const SheetComparison& found = list->Comparison();
  const bool appends = ui->chkNeue->isChecked() && found.Appendable() > 0;
  ui->cmdNeuLesen->setEnabled(!exchange.Workbook_Path().isEmpty());
  ui->cmdVergleichen->setEnabled(Order().keyColumn > 0);
  ui->cmdUebernehmen->setEnabled(compared && (!found.differences.empty() || appends));
  ui->cmdBack->setEnabled(exchange.Has_Taken());
  ui->chkNeue->setEnabled(!compared || found.Appendable() > 0 || found.newRows.empty());
}
