#include "windows/import/frmImport.h"

#include <QLineEdit>
#include <algorithm>

#include "import/import_report.h"
#include "import/table_choice.h"
#include "state/dialog_hooks.h"
#include "state/events.h"
#include "state/run_guarded.h"
#include "ui_frmImport.h"
#include "windows/common/frm_dialogs.h"
#include "windows/common/show_beside.h"
#include "windows/import/frmImport_model.h"

namespace {

const QString helpPage = QStringLiteral("Tabelle-Import.htm");
const QString openStep = QStringLiteral("Datenbank öffnen"), filterStep = QStringLiteral("Leerzeichen entfernen"),
              changeStep = QStringLiteral("importierten Eintrag verändern");
constexpr int gridLines = 3, largeGridLines = 16;

// Lists of lines "Spalte= Wert" in an editable box: what is typed goes into the line of its column.
void Fill_Lines(QComboBox& box, const QStringList& columns) {
  box.clear();
  for (const QString& column : columns) box.addItem(ColumnValue{column, {}}.ToText());
}

void Take_Line(QComboBox& box) {
  const ColumnValue typed = ColumnValue::Parse(box.currentText());
  for (int i = 0; i < box.count() && !typed.column.isEmpty(); ++i) {
    if (ColumnValue::Parse(box.itemText(i)).column.compare(typed.column, Qt::CaseInsensitive) != 0) continue;
    const QString line = ColumnValue{ColumnValue::Parse(box.itemText(i)).column, typed.value}.ToText();
    box.setItemText(i, line);
    box.setCurrentIndex(i);
    return box.setEditText(line);
  }
  box.setEditText(box.itemText(box.currentIndex()));
}

std::vector<ColumnValue> Set_Lines(const QComboBox& box) {
  std::vector<ColumnValue> lines;
  for (int i = 0; i < box.count(); ++i)
    if (const ColumnValue line = ColumnValue::Parse(box.itemText(i)); line.Is_Set()) lines.push_back(line);
  return lines;
}

QString Lines_Text(const QComboBox& box, const QString& none) {
  QStringList texts;
  for (const ColumnValue& line : Set_Lines(box)) texts << line.ToText();
  return texts.isEmpty() ? none : texts.join(QStringLiteral("   "));
}

QString Rows_Text(qsizetype count) {
  return QString::number(count) + (count == 1 ? QStringLiteral(" Datensatz") : QStringLiteral(" Datensätze")) +
         QStringLiteral(" ausgewählt");
}

}  // namespace

FrmImport::FrmImport(QWidget* parent)
    : QDialog(parent), ui(std::make_unique<Ui::FrmImport>()), model(new ImportGridModel(this)) {
  ui->setupUi(this);
  Prepare_Dialog(*this, helpPage);
  resize(fontMetrics().averageCharWidth() * 100, height());  // for the title and some columns
  setWindowModality(Qt::NonModal);
  ui->Dt->setModel(model);
  ui->Dt->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  ui->Dt->verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 6);
  ui->Dt->setMinimumHeight(gridLines * (fontMetrics().height() + 6));
  for (QComboBox* box : {ui->cmbFilter, ui->cmbChange}) box->setCompleter(nullptr);
  for (QLabel* label : {ui->lblPfeil, ui->lblInfo, ui->lblMarkDs})
    label->setStyleSheet(QStringLiteral("color: #c00000"));
  Connect_Controls();
  closedListener = events.MapClosed.Connect([this] { reject(); });
  Show_Change();
}

FrmImport::~FrmImport() { events.MapClosed.Disconnect(closedListener); }

void FrmImport::Connect_Controls() {
  const auto guarded = [this](QPushButton* button, void (FrmImport::*work)()) {
    connect(button, &QPushButton::clicked, this, [this, work] { Run_Guarded([this, work] { (this->*work)(); }); });
  };
  guarded(ui->btnFile, &FrmImport::Choose_File);
  guarded(ui->btnTakeFilter, &FrmImport::Take_Filter);
  guarded(ui->btnReset, &FrmImport::FilterClear);
  guarded(ui->btnAdd, &FrmImport::Add);
  connect(ui->btnSize, &QPushButton::clicked, this, &FrmImport::Change_Size);
  connect(ui->btnHelp, &QPushButton::clicked, this, [this] { Show_Help(this, helpPage); });
  connect(ui->btnEnd, &QPushButton::clicked, this, &QDialog::reject);
  connect(ui->chkChange, &QCheckBox::toggled, this, &FrmImport::Show_Change);
  for (QComboBox* box : {ui->cmbFilter, ui->cmbChange})
    connect(box->lineEdit(), &QLineEdit::editingFinished, this, [this, box] {
      Take_Line(*box);
      Show_Step();
    });
  for (QRadioButton* choice : {ui->optAll, ui->optFilter, ui->optSelect})
    connect(choice, &QRadioButton::toggled, this, &FrmImport::Show_Step);
  connect(ui->Dt->selectionModel(), &QItemSelectionModel::selectionChanged, this, &FrmImport::Show_Step);
}

void FrmImport::Choose_File() {
  if (const QString path = Choose_Source(); !path.isEmpty()) Open_File(path);
}

void FrmImport::Open_File(const QString& path) {
  Show_Rows({});
  model->Show_Rows(nullptr, {});
  source.reset();
  filtered = false;
  try {
    const BusyPointer busy;
    source = std::make_unique<TableSource>(path);
  } catch (const Error& error) {
    Go_On_After_Step(openStep + QStringLiteral("\n") + path, error);
  }
  Show_Source();
  if (source) Tell_Remarks(*source);
}

void FrmImport::Show_Source() {
  QStringList columns;
  if (source)
    for (const FieldInfo& field : source->Fields()) columns << field.name;
  Fill_Lines(*ui->cmbFilter, columns);
  Fill_Lines(*ui->cmbChange, source ? Changeable_Columns() : QStringList());
  ui->optAll->setChecked(true);
  Show_Rows(source ? source->Entries() : std::vector<qint64>());
  const int digits = fontMetrics().horizontalAdvance(u'0');
  for (int i = 0; i < model->columnCount(); ++i) {
    ui->Dt->setColumnWidth(i, (model->Is_Text(i) ? 20 : 8) * digits);
    ui->Dt->setColumnHidden(i, source->Counts(i));
  }
  ui->lblInfo->setText(source ? QStringLiteral("Quelle: ") + source->File() : QString());
}

void FrmImport::Show_Rows(std::vector<qint64> rows) {
  model->Show_Rows(source.get(), std::move(rows));
  Show_Step();
}

void FrmImport::Take_Filter() {
  if (!source) return;
  QString step = filterStep;
  try {
    Take_Line(*ui->cmbFilter);
    const std::vector<ColumnValue> lines = Set_Lines(*ui->cmbFilter);
    step = openStep;
    std::vector<qint64> rows = Filtered_Rows(
        source->Data(), lines, ui->optFilterExcl->isChecked() ? FilterMode::Others : FilterMode::Matching);
    filtered = true;
    ui->optFilter->setChecked(true);
    Show_Rows(std::move(rows));
    QString info = QStringLiteral("Quelle: ") + source->File();
    if (ui->chkChange->isChecked())
      info += QStringLiteral("\nHinweis: Sie können die herausgefilterten Einträge beim Import verändern.");
    ui->lblInfo->setText(info);
  } catch (const Error& error) {
    Go_On_After_Step(step, error);
  }
}

void FrmImport::FilterClear() {
  if (!source) return;
  QStringList columns;
  for (const FieldInfo& field : source->Fields()) columns << field.name;
  Fill_Lines(*ui->cmbFilter, columns);
  filtered = false;
  ui->optFilterYes->setChecked(true);
  ui->optAll->setChecked(true);
  Show_Rows(source->Entries());
}

std::vector<qint64> FrmImport::Chosen_Rows() const {
  if (!source) return {};
  if (ui->optAll->isChecked()) return source->Entries();
  if (!ui->optSelect->isChecked()) return filtered ? model->Keys() : std::vector<qint64>();
  std::vector<int> lines;
  for (const QModelIndex& index : ui->Dt->selectionModel()->selectedRows()) lines.push_back(index.row());
  std::sort(lines.begin(), lines.end());
  std::vector<qint64> rows;
  for (const int line : lines) rows.push_back(model->Keys()[static_cast<size_t>(line)]);
  return rows;
}

void FrmImport::Add() {
  if (!source) return;
  if (ui->chkChange->isChecked()) Take_Line(*ui->cmbChange);
  TableImportOrder order;
  order.rows = Chosen_Rows();
  if (order.rows.empty()) return;
  const auto placing = Ask_Placing(*source);
  if (!placing) return;
  order.placing = *placing;
  order.skipExisting = ui->chkExisting->isChecked();
  if (ui->chkChange->isChecked()) order.change = Set_Lines(*ui->cmbChange);
  TableImportResult result;
  try {
    result = Import_Entries(*source, order);
  } catch (const Error& error) {
    Go_On_After_Step(changeStep, error);
    return;
  }
  if (result.failed || !Tell_Imported(result)) return;
  try {
    const QString path = Write_Import_Report(Table_Import_Report(*source, result));
    if (dialogHooks.NotePad) dialogHooks.NotePad(path);
  } catch (const Error& error) {
    Go_On_After_Step(QStringLiteral("Die Liste kann nicht neben der Karte gespeichert werden"), error);
  }
}

void FrmImport::Show_Step() {
  const bool open = source != nullptr;
  for (QWidget* part : std::initializer_list<QWidget*>{ui->frAction, ui->frFilter, ui->frChange, ui->Dt, ui->btnSize})
    part->setEnabled(open);
  ui->optFilter->setEnabled(open && filtered);
  QString filter = Lines_Text(*ui->cmbFilter, QStringLiteral("keine Bedingung"));
  if (ui->chkChange->isChecked() && !Set_Lines(*ui->cmbChange).empty())
    filter += u'\n' + changeStep + QStringLiteral(": ") + Lines_Text(*ui->cmbChange, {});
  ui->lblFilter->setText(filter);
  ui->lblChange->setText(Lines_Text(*ui->cmbChange, QStringLiteral("keine Änderung")));
  const auto chosen = static_cast<qsizetype>(Chosen_Rows().size());
  ui->lblMarkDs->setText(open ? Rows_Text(chosen) : QString());
  ui->btnAdd->setEnabled(chosen > 0);
  QString step = QStringLiteral("<- Bitte wählen Sie die Datei, aus der die Einträge kommen sollen.");
  if (open) step = QStringLiteral("Wählen Sie alle, gefilterte oder einzelne Einträge, dann 'Hinzufügen'.");
  ui->lblPfeil->setText(step);
}

void FrmImport::Show_Change() {
  const bool change = ui->chkChange->isChecked();
  ui->chkChange->setText(change ? QStringLiteral("importierte Einträge &verändern:")
                                : QStringLiteral("Einträge un&verändert importieren"));
  ui->cmbChange->setEnabled(change);
  ui->lblChange->setEnabled(change);
  Show_Step();
}

void FrmImport::Change_Size() {
  large = !large;
  ui->Dt->setMinimumHeight((large ? largeGridLines : gridLines) * (fontMetrics().height() + 6));
  ui->btnSize->setText(large ? QStringLiteral("Tabelle ver&kleinern") : QStringLiteral("Tabelle ver&größern"));
  if (!large) resize(width(), minimumSizeHint().height());
}

void Show_frmImport(QWidget* parent) { Show_Beside<FrmImport>(parent); }
