#include "windows/objects/frmDrawBreite.h"

#include <algorithm>

#include "objects/look_samples.h"
#include "objects/text_box.h"
#include "platform/text.h"
#include "state/global_state.h"
#include "state/run_guarded.h"
#include "ui_frmDrawBreite.h"
#include "windows/common/show_beside.h"

namespace {

const QSize patternSize(60, 12), previewSize(220, 110);
const char* const patternNames[] = {"durchgezogen", "gestrichelt", "gepunktet", "Strich-Punkt", "Strich-Punkt-Punkt"};

QString Caption(LookOf of) {
  switch (of) {
    case LookOf::Line:
    case LookOf::Area:
    case LookOf::Next:
      return QStringLiteral("Linienbreite");
    case LookOf::Figure:
      return QStringLiteral("Strichbreite");
    default:
      return QStringLiteral("Rahmenbreite");
  }
}

}  // namespace

FrmDrawBreite::FrmDrawBreite(QWidget* parent)
    : LookWindow(parent, QStringLiteral("Farben.htm")), ui(std::make_unique<Ui::FrmDrawBreite>()) {
  ui->setupUi(this);
  ui->txtBreite->setLocale(QLocale(QLocale::German));
  ui->cboMuster->setSizeAdjustPolicy(QComboBox::AdjustToContents);
  ui->cboMuster->setIconSize(patternSize);
  for (const char* name : patternNames) ui->cboMuster->addItem(QString::fromLatin1(name));
  connect(ui->txtBreite, &QDoubleSpinBox::valueChanged, this, &FrmDrawBreite::Show_Picture);
  connect(ui->cboMuster, &QComboBox::activated, this, &FrmDrawBreite::Show_Picture);
  connect(ui->ckRahmen, &QCheckBox::clicked, this, &FrmDrawBreite::Show_Picture);
  connect(ui->btnTake, &QPushButton::clicked, this, &FrmDrawBreite::Take);
  connect(ui->cmdClose, &QPushButton::clicked, this, &QDialog::close);
}

FrmDrawBreite::~FrmDrawBreite() = default;

void FrmDrawBreite::Show_Look() {
  setWindowTitle(Caption(look.of));
  const bool frame = !look.Has_Width();
  ui->txtBreite->setMaximum(frame ? widestFrame : widestPen);
  ui->txtBreite->setValue(look.width);
  ui->cboMuster->setCurrentIndex(look.frame.pattern <= 5 ? look.frame.pattern - 1 : 0);
  ui->ckRahmen->setChecked(look.frame.framed);
  ui->ckRahmen->setVisible(frame);
  ui->lblMuster->setVisible(frame);
  ui->cboMuster->setVisible(frame);
  ui->btnTake->setEnabled(!frame || look.Has_Frame());
  Show_Patterns();
  Show_Picture();
  ui->txtBreite->selectAll();
}

void FrmDrawBreite::Show_Patterns() {
  for (int i = 0; i < ui->cboMuster->count(); ++i) {
    FrameWord frame;
    frame.pattern = i + 1;
    const QImage picture = Pen_Picture(patternSize, Colors_Of(look).RA, 1, Frame_Pattern(frame));
    ui->cboMuster->setItemIcon(i, QPixmap::fromImage(picture));
  }
}

FrameWord FrmDrawBreite::Chosen() const {
  FrameWord frame = look.frame;
  frame.width = std::clamp(static_cast<int>(Int(ui->txtBreite->value() + 0.5)), 1, widestFrame);
  frame.pattern = ui->cboMuster->currentIndex() + 1;
  frame.framed = ui->ckRahmen->isChecked();
  return frame;
}

void FrmDrawBreite::Show_Picture() {
  const double width = Int(ui->txtBreite->value() + 0.5);
  const EntryColors colors = Colors_Of(look);
  QString unit = QStringLiteral("Pixel");
  if (MapPixelMm > 0) unit += QStringLiteral("  (%1 mm)").arg(Format(width * MapPixelMm, QStringLiteral("#0.00")));
  ui->lblMm->setText(unit);
  // Pens with gaps exist at width 1 only.
  ui->cboMuster->setEnabled(width <= 1);
  QImage picture;
  if (look.of == LookOf::Area)
    picture = Fill_Picture(previewSize, {look.fill, colors, false, look.frame.framed, 1, width});
  else if (look.of == LookOf::Figure)
    picture = Fill_Picture(previewSize, {look.fill, colors, true, ui->ckRahmen->isChecked(), Chosen().pattern, width});
  else if (look.Has_Width())
    picture = Pen_Picture(previewSize, colors.VG, width);
  else
    picture = Frame_Picture(previewSize, Chosen(), colors);
  ui->picVorschau->setPixmap(QPixmap::fromImage(picture));
}

void FrmDrawBreite::Take() {
  Run_Guarded([this] {
    const FrameWord frame = Chosen();
    if (look.Has_Width())
      Change_Width(ui->txtBreite->value());
    else
      Change_Frame(frame);
  });
  Follow();
  ui->txtBreite->setValue(look.width);
}

void Show_frmDrawBreite(QWidget* parent) { Show_Beside<FrmDrawBreite>(parent); }
