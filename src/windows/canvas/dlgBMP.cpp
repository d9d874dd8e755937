#include "windows/canvas/dlgBMP.h"

#include <algorithm>
#include <cmath>

#include "platform/message_box.h"
#include "platform/text.h"
#include "state/global_state.h"
#include "state/map_state.h"
#include "state/run_guarded.h"
#include "store/entry.h"
#include "ui_dlgBMP.h"
#include "view/picture_cache.h"
#include "windows/common/frm_dialogs.h"

namespace {

constexpr int largestSide = 20000;

int Number_Of(const QLineEdit& field) {
  return static_cast<int>(std::clamp(std::floor(Val_Comma(field.text().trimmed())), 0.0, 999999.0));
}

int Scaled(int side, int numerator, int denominator) {
  if (denominator <= 0) return 0;
  return std::max(1, static_cast<int>(std::lround(static_cast<double>(side) * numerator / denominator)));
}

}  // namespace

void PictureSizeNumbers::Set_Sizing(PictureSizing how) {
  sizing = how;
  if (sizing == PictureSizing::Original) size = original;
  if (sizing == PictureSizing::Proportional) Set_Width(size.width());
}

void PictureSizeNumbers::Set_Width(int width) {
  size.setWidth(width);
  if (sizing == PictureSizing::Proportional) size.setHeight(Scaled(original.height(), width, original.width()));
}

void PictureSizeNumbers::Set_Height(int height) {
  size.setHeight(height);
  if (sizing == PictureSizing::Proportional) size.setWidth(Scaled(original.width(), height, original.height()));
}

bool PictureSizeNumbers::Usable() const {
  return size.width() >= 1 && size.height() >= 1 && size.width() <= largestSide && size.height() <= largestSide;
}

DlgBMP::DlgBMP(QSize now, QWidget* parent) : QDialog(parent), ui(std::make_unique<Ui::DlgBMP>()), numbers(now) {
  ui->setupUi(this);
  Prepare_Dialog(*this, QStringLiteral("Bilder.htm"));
  ui->lblNow->setText(QStringLiteral("Jetzt: %1 x %2 Pixel").arg(now.width()).arg(now.height()));
  setMinimumWidth(fontMetrics().horizontalAdvance(windowTitle()) * 4);  // room for the title beside its buttons
  ui->optProp->setChecked(true);
  for (QLineEdit* field : {ui->txtWidth, ui->txtHeight}) field->setAlignment(Qt::AlignRight);
  for (QRadioButton* option : {ui->optOrig, ui->optProp, ui->optStretch})
    connect(option, &QRadioButton::clicked, this, &DlgBMP::Sizing_Chosen);
  connect(ui->txtWidth, &QLineEdit::textEdited, this, [this] {
    numbers.Set_Width(Number_Of(*ui->txtWidth));
    Show_Numbers(ui->txtWidth);
  });
  connect(ui->txtHeight, &QLineEdit::textEdited, this, [this] {
    numbers.Set_Height(Number_Of(*ui->txtHeight));
    Show_Numbers(ui->txtHeight);
  });
  connect(ui->cmdOK, &QPushButton::clicked, this, &DlgBMP::accept);
  connect(ui->cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
  Show_Numbers(nullptr);
  ui->txtWidth->setFocus();
  ui->txtWidth->selectAll();
}

DlgBMP::~DlgBMP() = default;

PictureSizing DlgBMP::Sizing() const {
  if (ui->optOrig->isChecked()) return PictureSizing::Original;
  return ui->optProp->isChecked() ? PictureSizing::Proportional : PictureSizing::Free;
}

void DlgBMP::Sizing_Chosen() {
  numbers.Set_Sizing(Sizing());
  const bool typed = Sizing() != PictureSizing::Original;
  ui->txtWidth->setEnabled(typed);
  ui->txtHeight->setEnabled(typed);
  Show_Numbers(nullptr);
}

void DlgBMP::Show_Numbers(const QLineEdit* except) {
  if (except != ui->txtWidth) ui->txtWidth->setText(QString::number(numbers.Size().width()));
  if (except != ui->txtHeight) ui->txtHeight->setText(QString::number(numbers.Size().height()));
}

void DlgBMP::accept() {
  if (!numbers.Usable()) {
    Message_Box(QStringLiteral("Breite und Höhe müssen zwischen 1 und %1 Pixeln liegen.").arg(largestSide),
                MsgButtons::Ok, MsgIcon::Information, windowTitle());
    ui->txtWidth->setFocus();
    ui->txtWidth->selectAll();
    return;
  }
  QDialog::accept();
  Run_Guarded([this] { Size_Picture(Sizing(), numbers.Size().width(), numbers.Size().height()); });
}

void Show_dlgBMP(QWidget* parent) {
  if (!rsEntries || rsEntries->Position() < 1) return;
  const QImage& picture = Entry_Picture(rsEntries->Text(column::Eintrag));
  if (picture.isNull()) {
    Message_Box(QStringLiteral("Die Bilddatei fehlt:\n") + rsEntries->Text(column::Eintrag), MsgButtons::Ok,
                MsgIcon::Information, QStringLiteral("Bildgröße"));
    return;
  }
  DlgBMP(picture.size(), parent).exec();
}
