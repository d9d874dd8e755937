#include "windows/canvas/frmClipboard.h"

#include "edit/copy.h"
#include "ui_frmClipboard.h"
#include "windows/common/frm_dialogs.h"
#include "windows/desktop/clipboard.h"

namespace {

constexpr int previewWidth = 320, previewHeight = 200;
constexpr int shownCharacters = 2000;  // of a text of megabytes the beginning tells enough

}  // namespace

FrmClipboard::FrmClipboard(QWidget* parent) : QDialog(parent), ui(std::make_unique<Ui::FrmClipboard>()) {
  ui->setupUi(this);
  Prepare_Dialog(*this, QStringLiteral("Kopieren.htm"));
  setMinimumWidth(fontMetrics().horizontalAdvance(windowTitle()) * 3);  // room for the title beside its buttons
  ui->txtText->hide();
  ui->imgPicture->hide();
  if (clipboardFace.picture) picture = clipboardFace.picture();
  if (picture.isNull() && clipboardFace.text) text = clipboardFace.text();
  if (!picture.isNull())
    Show_Picture();
  else if (!text.trimmed().isEmpty())
    Show_Text();
  else
    ui->lblState->setText(Clipboard_Is_Empty()
                              ? QStringLiteral("Zwischenablage leer")
                              : QStringLiteral("Kein Import\n\nIn der Zwischenablage liegt weder Text noch ein Bild."));
  const bool usable = kind != ClipboardKind::Unusable;
  ui->cmdOK->setEnabled(usable);
  connect(ui->cmdOK, &QPushButton::clicked, this, &QDialog::accept);
  connect(ui->cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
  (usable ? ui->cmdOK : ui->cmdCancel)->setFocus();
}

FrmClipboard::~FrmClipboard() = default;

void FrmClipboard::Show_Text() {
  kind = ClipboardKind::Text;
  ui->lblState->setText(QStringLiteral("Text mit %1 Zeichen:").arg(text.size()));
  ui->txtText->setPlainText(text.left(shownCharacters));
  ui->txtText->setMaximumHeight(previewHeight);
  ui->txtText->show();
}

void FrmClipboard::Show_Picture() {
  kind = ClipboardKind::Picture;
  ui->lblState->setText(QStringLiteral("Bild mit %1 x %2 Pixeln:").arg(picture.width()).arg(picture.height()));
  const bool large = picture.width() > previewWidth || picture.height() > previewHeight;
  const QImage shown =
      large ? picture.scaled(previewWidth, previewHeight, Qt::KeepAspectRatio, Qt::SmoothTransformation) : picture;
  ui->imgPicture->setPixmap(QPixmap::fromImage(shown));
  ui->imgPicture->setAlignment(Qt::AlignCenter);
  ui->imgPicture->show();
}

ClipboardChoice Show_frmClipboard(QWidget* parent) {
  FrmClipboard dialog(parent);
  if (dialog.exec() != QDialog::Accepted) return {};
  return {dialog.kind, dialog.text, dialog.picture};
}
