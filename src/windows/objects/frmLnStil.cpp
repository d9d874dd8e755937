#include "windows/objects/frmLnStil.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "edit/line_look.h"
#include "objects/line_sample.h"
#include "state/run_guarded.h"
#include "ui_frmLnStil.h"
#include "windows/common/frm_dialogs.h"
#include "windows/common/tool_place.h"

namespace {

constexpr QSize pictureSize(90, 16);
const std::array<QString, 5> styleNames = {QStringLiteral("durchgezogen"), QStringLiteral("gestrichelt"),
                                           QStringLiteral("gepunktet"), QStringLiteral("Strich-Punkt"),
                                           QStringLiteral("Strich-Punkt-Punkt")};

// The line without its ends, one pixel wide: wider ones have no gaps.
QPixmap Style_Picture(EntryRow row, int style) {
  row.ID = QStringLiteral("Linie");
  row.Xline = 1;
  row.Yline = style;
  const int y = pictureSize.height() / 2;
  const std::array<QPoint, 2> points = {QPoint(2, y), QPoint(pictureSize.width() - 2, y)};
  return QPixmap::fromImage(Line_Sample(pictureSize, row, points));
}

}  // namespace

FrmLnStil::FrmLnStil(QWidget* parent)
    : QDialog(parent), ui(std::make_unique<Ui::FrmLnStil>()), former(Line_Style_Code()) {
  ui->setupUi(this);
  Prepare_Dialog(*this, QStringLiteral("Linien.htm"));
  const EntryRow look = Line_Look();
  QString about = QStringLiteral("Stil für: ") + Line_Look_Of();
  if (look.Xline > 1) about += QStringLiteral("\nLücken hat nur eine 1 Pixel breite Linie.");
  ui->lblFor->setText(about);
  ui->cmbStil->setIconSize(pictureSize);
  for (size_t i = 0; i < styleNames.size(); ++i)
    ui->cmbStil->addItem(Style_Picture(look, static_cast<int>(i) + 1), styleNames[i]);
  ui->cmbStil->setCurrentIndex(std::clamp(std::abs(former), 1, 5) - 1);
  (former < 0 ? ui->optTransparent : ui->optDeckend)->setChecked(true);
  connect(ui->cmbStil, &QComboBox::currentIndexChanged, this, &FrmLnStil::Apply);
  connect(ui->optTransparent, &QRadioButton::toggled, this, &FrmLnStil::Apply);
  connect(ui->cmdOK, &QPushButton::clicked, this, &QDialog::accept);
  connect(ui->cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
}

FrmLnStil::~FrmLnStil() = default;

int FrmLnStil::Chosen() const {
  const int style = ui->cmbStil->currentIndex() + 1;
  return ui->optTransparent->isChecked() ? -style : style;
}

void FrmLnStil::Apply() {
  Run_Guarded([this] { Set_Line_Style_Code(Chosen()); });
}

void FrmLnStil::reject() {
  Run_Guarded([this] { Set_Line_Style_Code(former); });
  QDialog::reject();
}

void Show_frmLnStil(QWidget* parent) {
  FrmLnStil window(parent);
  Works_Beside(window);
  window.exec();
}
