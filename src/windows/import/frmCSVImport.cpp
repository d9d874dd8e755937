#include "windows/import/frmCSVImport.h"

#include <QFileInfo>
#include <QHeaderView>
#include <QIntValidator>
#include <QTableWidget>

#include "import/csv_place.h"
#include "platform/message_box.h"
#include "state/dialog_hooks.h"
#include "state/events.h"
#include "state/run_guarded.h"
#include "ui_frmCSVImport.h"
#include "windows/common/frm_dialogs.h"
#include "windows/common/show_beside.h"
#include "windows/common/window_support.h"

namespace {

const QString windowWords = QStringLiteral("CSV-Tabelle Import: ");
const QString helpPage = QStringLiteral("CSV-Import.htm");
constexpr int previewLines = 8;
constexpr size_t listedEntries = 200;  // more cannot be looked through by hand
constexpr int farthestStep = 32767;

// Where the entry will lie, or why it will not come.
QString Where(const CsvTable& table, const CsvRecord& record) {
  // The net of a map can be unfit for any coordinate; the import itself tells that.
  try {
    std::optional<Placing> placing;  // as the import will propose it
    if (!Csv_Fits_Net(table, Coord) && Transformation_Name(Csv_System(table), Coord))
      placing.emplace(Csv_System(table), Coord, PlacingWay::Transformed);
    const CsvPlace place = placing ? Csv_Place_Of(table, *placing, record) : Csv_Place_Of(table, Coord, record);
    return place.onMap ? QStringLiteral("%1 : %2 Pixel").arg(place.at.x()).arg(place.at.y()) : place.reason;
  } catch (const Error& error) {
    return Error_Text(error);
  }
}

}  // namespace

FrmCSVImport::FrmCSVImport(QWidget* parent) : QDialog(parent), ui(std::make_unique<Ui::FrmCSVImport>()) {
  ui->setupUi(this);
  Prepare_Dialog(*this, helpPage);
  setWindowModality(Qt::NonModal);
  Make_Menus();
  for (QLineEdit* field : {ui->txtXPix, ui->txtYPix}) {
    field->setValidator(new QIntValidator(-farthestStep, farthestStep, this));
    field->setAlignment(Qt::AlignRight);
    Give_Room(*field, QStringLiteral("-000000"));
  }
  ui->tblPreview->horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
  ui->tblPreview->horizontalHeader()->setSectionResizeMode(0, QHeaderView::Stretch);
  connect(ui->cmbEintrag, &QComboBox::currentIndexChanged, this, &FrmCSVImport::Show_Entry);
  closedListener = events.MapClosed.Connect([this] { reject(); });
  Forget_Table();
}

FrmCSVImport::~FrmCSVImport() { events.MapClosed.Disconnect(closedListener); }

void FrmCSVImport::Make_Menus() {
  const auto openChosen = [this] {
    if (const QString path = Choose_Csv(); !path.isEmpty()) Open_File(path);
  };
  Give_Menu_Bar(*this,
                {{"mnuOpenFile", QStringLiteral("Ö&ffnen"), QKeySequence::Open, [=, this] { Run_Guarded(openChosen); }},
                 {"mnuImport", QStringLiteral("&Importieren"), {}, [this] { Run_Guarded([this] { Import(); }); }},
                 {"mnuHelp", QStringLiteral("&Hilfe"), {}, [this] { Show_Help(this, helpPage); }}});
}

void FrmCSVImport::Open_File(const QString& path) {
  Forget_Table();
  ui->lblFileName->setText(path);
  setWindowTitle(windowWords + QFileInfo(path).fileName());
  if (Is_Plz_File(path)) {
    if (Csv_Plz(path)) ui->lblMsg->setText(QStringLiteral("Die Umrisse wurden umgerechnet."));
    return;
  }
  bool read = false;
  {
    const BusyPointer busy;
    read = Csv_Analyse(path, table);
  }
  if (read) return Show_Table();
  table = {};
  ui->lblMsg->setText(QStringLiteral("Aus dieser Datei kann nichts importiert werden."));
}

void FrmCSVImport::Forget_Table() {
  table = {};
  ui->cmbEintrag->clear();
  ui->tblPreview->setRowCount(0);
  ui->lblWo->clear();
  ui->lblInfo->setText(QStringLiteral("Noch ist keine Datei gewählt."));
  ui->lblMsg->setText(QStringLiteral("Bitte wählen Sie 'Öffnen' ganz oben."));
  findChild<QAction*>(QStringLiteral("mnuImport"))->setEnabled(false);
}

void FrmCSVImport::Show_Table() {
  CsvReader reader(table);
  const size_t listed = std::min(listedEntries, table.CsvLines.size());
  QStringList texts;
  for (size_t i = 0; i < listed; ++i) {
    const CsvRecord record = reader.Read(table.CsvLines[i]);
    texts << record.text;
    if (static_cast<int>(i) >= previewLines) continue;
    const int row = ui->tblPreview->rowCount();
    ui->tblPreview->insertRow(row);
    ui->tblPreview->setVerticalHeaderItem(row, new QTableWidgetItem(QString::number(table.CsvLines[i].number)));
    ui->tblPreview->setItem(row, 0, new QTableWidgetItem(record.text));
    ui->tblPreview->setItem(row, 1, new QTableWidgetItem(record.x.toString()));
    ui->tblPreview->setItem(row, 2, new QTableWidgetItem(record.y.toString()));
  }
  ui->cmbEintrag->addItems(texts);
  ui->lblInfo->setText(
      QStringLiteral("Koordinaten der Datei: %1,  der Karte:%2").arg(table.CsvTyp, Grid_Type_Text(Coord)));
  ui->lblMsg->setText(QString::number(table.CsvLines.size()) +
                      QStringLiteral(" Karteneinträge können importiert werden.\n"
                                     "Bitte wählen Sie 'Importieren' ganz oben."));
  findChild<QAction*>(QStringLiteral("mnuImport"))->setEnabled(true);
}

void FrmCSVImport::Show_Entry() {
  const int index = ui->cmbEintrag->currentIndex();
  if (index < 0 || static_cast<size_t>(index) >= table.CsvLines.size()) return ui->lblWo->clear();
  CsvReader reader(table);
  ui->lblWo->setText(Where(table, reader.Read(table.CsvLines[static_cast<size_t>(index)])));
}

void FrmCSVImport::Import() {
  const CsvTable imported = table;
  const QAction* action = findChild<QAction*>(QStringLiteral("mnuImport"));
  if (!action->isEnabled()) return;
  const CsvResult result = Csv_Import(imported, {ui->txtXPix->text().toInt(), ui->txtYPix->text().toInt()});
  if (result.failed || (result.stopped && result.imported == 0 && result.refused.empty())) return;
  Forget_Table();  // a second time would put every entry on the map twice
  ui->lblInfo->setText(
      QStringLiteral("%1 versetzt, %2 Zeilen abgelehnt, %3 ohne Text übergangen.\nImportierte Einträge löschen: "
                     "'Einträge - Rückgängig: CSV-Import'.")
          .arg(QString::number(result.shifted), QString::number(result.refused.size()),
               QString::number(imported.skipped)));
  ui->lblMsg->setText(QString::number(result.imported) + QStringLiteral(" Karteneinträge wurden importiert.") +
                      (result.stopped ? QStringLiteral("\nDer Import wurde abgebrochen.") : QString()));
  if (!result.refused.empty() || !result.notes.empty()) Offer_Report(imported, result);
}

void FrmCSVImport::Offer_Report(const CsvTable& imported, const CsvResult& result) {
  try {
    const QString told = QStringLiteral(
                             "%1 Karteneinträge wurden importiert.\n%2 versetzt, %3 Zeilen abgelehnt, "
                             "%4 Texte gekürzt.\n\nSoll die Liste mit den Gründen gezeigt werden?")
                             .arg(QString::number(result.imported), QString::number(result.shifted),
                                  QString::number(result.refused.size()), QString::number(result.shortened));
    if (Message_Box(told, MsgButtons::YesNo, MsgIcon::Question, QStringLiteral("Import")) != MsgAnswer::Yes) return;
    const QString path = Write_Csv_Report(imported, result);
    if (dialogHooks.NotePad) dialogHooks.NotePad(path);
  } catch (const Error& error) {
    Message_Box(QStringLiteral("Die Liste kann nicht neben der Karte gespeichert werden.\n") + error.text,
                MsgButtons::Ok, MsgIcon::Warning, QStringLiteral("Import"));
  }
}

void Show_frmCSVImport(QWidget* parent) { Show_Beside<FrmCSVImport>(parent); }
