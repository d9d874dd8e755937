#include "windows/bridge/frmTabExport.h"

#include <QFileInfo>

#include "exchange/sheet_rows.h"
#include "maps/sheet_bridge_tool.h"
#include "platform/error.h"
#include "platform/file_dialog.h"
#include "platform/message_box.h"
#include "platform/shell.h"
#include "state/events.h"
#include "state/task_line.h"
#include "ui_frmTabExport.h"
#include "windows/common/frm_dialogs.h"

namespace {

const QString title = QStringLiteral("TabBridge");

bool Ask_Again(const QString& text) {
  return Message_Box(text + QStringLiteral("\n\nOK: noch einmal versuchen. Abbrechen: die Arbeitsmappe bleibt, wie sie "
                                           "ist."),
                     MsgButtons::OkCancel, MsgIcon::Warning, title) == MsgAnswer::Ok;
}

}  // namespace

FrmTabExport::FrmTabExport(const QString& wanted, QWidget* parent)
    : QDialog(parent), ui(std::make_unique<Ui::FrmTabExport>()) {
  ui->setupUi(this);
  Prepare_Dialog(*this, QStringLiteral("TabBridge.htm"));
  connect(ui->cmdKarte, &QPushButton::clicked, this, &FrmTabExport::Choose_Map);
  connect(ui->cmdOeffnen, &QPushButton::clicked, this, &FrmTabExport::Open_Book);
  connect(ui->cmdSchreiben, &QPushButton::clicked, this, &FrmTabExport::Write_Table);
  connect(ui->cmdClose, &QPushButton::clicked, this, &QDialog::accept);
  Show_Map(wanted);
}

FrmTabExport::~FrmTabExport() = default;

void FrmTabExport::Show_Map(const QString& path) {
  map = path;
  ui->txtKarte->setText(map);
  ui->txtMappe->setText(map.isEmpty() ? QString() : Workbook_Of_Map(map));
  ui->cmdSchreiben->setEnabled(!map.isEmpty());
  ui->cmdOeffnen->setEnabled(QFileInfo::exists(ui->txtMappe->text()));
  ui->lblErgebnis->setText(
      map.isEmpty() ? QStringLiteral("Es wurde noch keine Karte geöffnet. Bitte wählen Sie eine aus.") : QString());
}

void FrmTabExport::Choose_Map() {
  FileRequest request;
  request.title = QStringLiteral("Karte wählen");
  request.folder = map.isEmpty() ? QString() : QFileInfo(map).path();
  request.filter = QStringLiteral(
      "Karten (*.bmp; *.jpg; *.png; *.gif; *.rle; *.wmf)|*.bmp;*.jpg;*.jpeg;*.png;*.gif;*.rle;*.wmf|Alle Dateien "
      "(*.*)|*.*");
  const auto path = File_Dialog(request);
  if (!path) return;
  Show_Map(*path);
  Write_Table();
}

void FrmTabExport::Write_Table() {
  if (map.isEmpty()) return;
  std::optional<TableExport> made;
  try {
    const BusyPointer busy;
    made = Export_Rows_Of_Map(map, Ask_Again);
  } catch (const Error& error) {
    ui->lblErgebnis->setText(QStringLiteral("Es wurde nichts geschrieben."));
    Message_Box(Error_Text(error), MsgButtons::Ok, MsgIcon::Critical, title);
    return;
  }
  if (!made) return ui->lblErgebnis->setText(QStringLiteral("Es wurde nichts geschrieben."));
  ui->txtMappe->setText(made->workbook);
  ui->cmdOeffnen->setEnabled(true);
  QString text = QStringLiteral("Im Blatt \"%1\" der Arbeitsmappe: ").arg(sheet_rows::sheetName) +
                 Entries_Text(made->entries) + u'.';
  if (!made->aside.isEmpty())
    text += QStringLiteral(" Die vorhandene Datei hatte ein altes Format. Sie heißt jetzt ") + made->aside;
  ui->lblErgebnis->setText(text);
  Open_Book();
}

void FrmTabExport::Open_Book() {
  if (Open_With_Desktop(ui->txtMappe->text())) return;
  ui->lblErgebnis->setText(ui->lblErgebnis->text() +
                           QStringLiteral(" Es ist kein Programm eingerichtet, das sie öffnet."));
}
