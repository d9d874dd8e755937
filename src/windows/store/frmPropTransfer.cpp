#include "windows/store/frmPropTransfer.h"

#include <algorithm>

#include "edit/property_transfer.h"
#include "hand/activation.h"
#include "platform/fonts.h"
#include "state/global_state.h"
#include "state/map_state.h"
#include "state/run_guarded.h"
#include "store/entry.h"
#include "ui_frmPropTransfer.h"
#include "windows/common/frm_dialogs.h"

FrmPropTransfer::FrmPropTransfer(QWidget* parent) : QDialog(parent), ui(std::make_unique<Ui::FrmPropTransfer>()) {
  ui->setupUi(this);
  Prepare_Dialog(*this, QStringLiteral("Suchen.htm"));
  ui->optMarked->setEnabled(Map.MarkCount > 0);
  connect(ui->OKButton, &QPushButton::clicked, this, &FrmPropTransfer::accept);
  connect(ui->cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
  const QString refusal = Transfer_Refusal();
  ui->lblInfo->setText(refusal.isEmpty()
                           ? QStringLiteral("Möchten Sie die Eigenschaften des aktuellen Karteneintrags auf andere "
                                            "gleichnamige Einträge übertragen?")
                           : refusal);
  ui->OKButton->setEnabled(refusal.isEmpty());
  ui->lblMuster->setVisible(refusal.isEmpty());
  if (refusal.isEmpty()) Show_Pattern();
}

FrmPropTransfer::~FrmPropTransfer() = default;

// The text in its font and colours; a larger one than the window has room for is shown smaller.
void FrmPropTransfer::Show_Pattern() {
  constexpr double smallest = 7, largest = 24;
  const EntryRow row = Read_Entry(*rsEntries);
  const FontSpec font = FontSpec::Parse(Font_Text(EntryType::Parse(row.Typ), row.Schrift));
  QFont shown = ui->lblMuster->font();
  if (!font.family.isEmpty()) shown.setFamily(font.family);
  shown.setPointSizeF(std::clamp(std::abs(row.Groesse), smallest, largest));
  shown.setBold(font.bold);
  shown.setItalic(font.italic);
  shown.setUnderline(font.underline);
  ui->lblMuster->setFont(shown);
  const QString name = row.Eintrag.isEmpty() ? row.ID : row.Eintrag;
  ui->lblMuster->setText(ui->lblMuster->fontMetrics().elidedText(
      QString(name).replace(QLatin1String("\r\n"), QLatin1String(" ")), Qt::ElideRight, 420));
  const auto color = [](int number) { return QColor(Color_Of(number)).name(); };
  const QString frame = FrameWord::Parse(row.RA).framed ? QStringLiteral("border: %1px solid %2;")
                                                              .arg(FrameWord::Parse(row.RA).width)
                                                              .arg(color(FrameWord::Parse(row.RA).color))
                                                        : QString();
  ui->lblMuster->setStyleSheet(QStringLiteral("QLabel { color: %1; background: %2; padding: 4px; %3 }")
                                   .arg(color(row.VG), color(row.HG), frame));
}

void FrmPropTransfer::accept() {
  TransferRequest request;
  request.font = ui->ckFontName->isChecked();
  request.size = ui->ckSchriftSize->isChecked();
  request.VG = ui->ckVG->isChecked();
  request.HG = ui->ckHG->isChecked();
  request.RA = ui->ckRA->isChecked();
  request.to = ui->optSimilar->isChecked()  ? TransferTo::Similar
               : ui->optMarked->isChecked() ? TransferTo::Marked
                                            : TransferTo::Equals;
  request.textsOnly = ui->Check1->isChecked();
  Run_Guarded([&] { Transfer_Properties(request); });
  QDialog::accept();
}

// What is being typed belongs to the pattern.
void Show_frmPropTransfer(QWidget* parent) { FrmPropTransfer(parent).exec(); }
