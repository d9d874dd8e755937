#include "windows/objects/frmFill.h"

#include <QButtonGroup>
#include <QToolButton>
#include <cstdlib>

#include "objects/look_samples.h"
#include "state/run_guarded.h"
#include "ui_frmFill.h"
#include "windows/common/show_beside.h"
#include "windows/objects/frmDrawBreite.h"
#include "windows/objects/frmFarb.h"

namespace {

const QSize iconSize(64, 34), previewSize(150, 90);
constexpr int patterns[] = {0, 1, 8, 2, 3, 4, 5, 6, 7};

QToolButton& Pattern_Button(const QWidget& window, int code) {
  return *window.findChild<QToolButton*>(QStringLiteral("OptBut%1").arg(code));
}

FillSample Sample_Of(const EntryLook& look, FillCode fill) {
  FillSample sample;
  sample.fill = fill;
  sample.colors = Colors_Of(look);
  sample.figure = look.of == LookOf::Figure;
  sample.framed = look.frame.framed;
  sample.pattern = look.frame.pattern;
  sample.width = look.width;
  return sample;
}

}  // namespace

FrmFill::FrmFill(QWidget* parent)
    : LookWindow(parent, QStringLiteral("Farben.htm")), ui(std::make_unique<Ui::FrmFill>()) {
  ui->setupUi(this);
  setStyleSheet(QStringLiteral("QToolButton:checked { border: 2px solid palette(highlight); }"));
  auto* group = new QButtonGroup(this);
  for (const int code : patterns) {
    QToolButton& button = Pattern_Button(*this, code);
    group->addButton(&button);
    button.setIconSize(iconSize);
    connect(&button, &QToolButton::clicked, this, &FrmFill::Show_Pictures);
  }
  connect(ui->optOpaque, &QRadioButton::clicked, this, &FrmFill::Show_Pictures);
  connect(ui->optTransparent, &QRadioButton::clicked, this, &FrmFill::Show_Pictures);
  connect(ui->btnFarbe, &QPushButton::clicked, this, [this] { Show_frmFarb(parentWidget()); });
  connect(ui->btnStrichbr, &QPushButton::clicked, this, [this] { Show_frmDrawBreite(parentWidget()); });
  connect(ui->btnTake, &QPushButton::clicked, this, &FrmFill::Take);
  connect(ui->cmdClose, &QPushButton::clicked, this, &QDialog::close);
}

FrmFill::~FrmFill() = default;

// A change of the colours alone leaves what was chosen but not yet taken.
void FrmFill::Show_Look() {
  const bool sameFill = shown.of == look.of && shown.id == look.id && shown.fill == look.fill && isVisible();
  shown = look;
  QString name = look.id;
  if (look.of == LookOf::Next) name = QStringLiteral("Nächste Fläche oder Figur");
  setWindowTitle(name + QStringLiteral(" füllen"));
  ui->btnTake->setEnabled(look.Has_Fill());
  if (!sameFill) {
    const int code = std::abs(look.fill.code);
    Pattern_Button(*this, code <= 8 ? code : 0).setChecked(true);
    (look.fill.Transparent() ? ui->optTransparent : ui->optOpaque)->setChecked(true);
  }
  Show_Pictures();
}

FillCode FrmFill::Chosen() const {
  for (const int code : patterns)
    if (Pattern_Button(*this, code).isChecked()) return {ui->optTransparent->isChecked() ? -code : code};
  return {};
}

void FrmFill::Show_Pictures() {
  const int sign = ui->optTransparent->isChecked() ? -1 : 1;
  for (const int code : patterns) {
    FillSample sample = Sample_Of(look, {sign * code});
    sample.width = 1;
    Pattern_Button(*this, code).setIcon(QPixmap::fromImage(Fill_Picture(iconSize, sample)));
  }
  ui->picVorschau->setPixmap(QPixmap::fromImage(Fill_Picture(previewSize, Sample_Of(look, Chosen()))));
}

void FrmFill::Take() {
  Run_Guarded([this] { Change_Fill(Chosen()); });
  Follow();
}

void Show_frmFill(QWidget* parent) { Show_Beside<FrmFill>(parent); }
