#include "windows/objects/frmLineEndpunkte.h"

#include <array>
#include <utility>

#include "edit/line_look.h"
#include "objects/line_sample.h"
#include "state/map_state.h"
#include "state/run_guarded.h"
#include "state/step.h"
#include "ui_frmLineEndpunkte.h"
#include "windows/common/frm_dialogs.h"
#include "windows/common/tool_place.h"

namespace {

constexpr QSize shapePicture(56, 20), previewPicture(300, 110);

EntryRow With_Ends(EntryRow row, const LineEnds& ends) {
  EntryId id;
  id.name = QStringLiteral("Linie");
  id.ends = ends;
  row.ID = id.ToText();
  return row;
}

const std::array<std::pair<QString, LineEnds::Shape>, 3> shapes = {
    {{QStringLiteral("Dreieck"), LineEnds::Shape::Arrow},
     {QStringLiteral("Rechteck"), LineEnds::Shape::Rectangle},
     {QStringLiteral("Kreis"), LineEnds::Shape::Circle}}};

}  // namespace

FrmLineEndpunkte::FrmLineEndpunkte(QWidget* parent)
    : QDialog(parent), ui(std::make_unique<Ui::FrmLineEndpunkte>()), former(Line_Ends_Now()) {
  ui->setupUi(this);
  Prepare_Dialog(*this, QStringLiteral("Linien.htm"));
  ui->lblFor->setText(QStringLiteral("Endpunkte für: ") + Line_Look_Of());
  ui->lblPreview->setFixedSize(previewPicture + QSize(2, 2));
  ui->lblPreview->setFrameShape(QFrame::Box);
  Fill_Shapes();
  ui->txtLaenge->setValue(former.lengthMm);
  ui->txtBreite->setValue(former.widthMm);
  ui->chkGefuellt->setChecked(former.filled);
  ui->chkStart->setChecked(former.atStart);
  ui->chkEnde->setChecked(former.atEnd);
  (former.partial ? ui->optTeilstrecke : ui->optGesamt)->setChecked(true);
  connect(ui->cmbForm, &QComboBox::currentIndexChanged, this, &FrmLineEndpunkte::Apply);
  for (QDoubleSpinBox* size : {ui->txtLaenge, ui->txtBreite})
    connect(size, &QDoubleSpinBox::valueChanged, this, &FrmLineEndpunkte::Apply);
  for (QCheckBox* check : {ui->chkGefuellt, ui->chkStart, ui->chkEnde})
    connect(check, &QCheckBox::toggled, this, &FrmLineEndpunkte::Apply);
  connect(ui->optTeilstrecke, &QRadioButton::toggled, this, &FrmLineEndpunkte::Apply);
  connect(ui->cmdOK, &QPushButton::clicked, this, &QDialog::accept);
  connect(ui->cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
  Show_Picture();
}

FrmLineEndpunkte::~FrmLineEndpunkte() = default;

void FrmLineEndpunkte::Fill_Shapes() {
  ui->cmbForm->setIconSize(shapePicture);
  EntryRow look = Line_Look();
  look.Xline = 1;
  const int y = shapePicture.height() / 2;
  const std::array<QPoint, 2> points = {QPoint(4, y), QPoint(shapePicture.width() - 12, y)};
  for (const auto& [name, shape] : shapes) {
    const LineEnds ends{.shape = shape, .filled = true, .atEnd = true, .lengthMm = 3, .widthMm = 3};
    ui->cmbForm->addItem(QPixmap::fromImage(Line_Sample(shapePicture, With_Ends(look, ends), points)), name);
    if (shape == former.shape) ui->cmbForm->setCurrentIndex(ui->cmbForm->count() - 1);
  }
}

LineEnds FrmLineEndpunkte::Chosen() const {
  return {.shape = shapes.at(static_cast<size_t>(ui->cmbForm->currentIndex())).second,
          .filled = ui->chkGefuellt->isChecked(),
          .atStart = ui->chkStart->isChecked(),
          .atEnd = ui->chkEnde->isChecked(),
          .partial = ui->optTeilstrecke->isChecked(),
          .lengthMm = ui->txtLaenge->value(),
          .widthMm = ui->txtBreite->value()};
}

void FrmLineEndpunkte::Apply() {
  Run_Guarded([this] {
    const UndoStep turned(UndoStep::Gesture{QStringLiteral("Enden ") + Map.InHand});
    Set_Line_Ends(Chosen());
  });
  Show_Picture();
}

void FrmLineEndpunkte::Show_Picture() {
  const int w = previewPicture.width(), h = previewPicture.height();
  const std::array<QPoint, 3> points = {QPoint(w / 5, h * 2 / 3), QPoint(w / 2, h / 3), QPoint(w * 4 / 5, h * 2 / 3)};
  ui->lblPreview->setPixmap(QPixmap::fromImage(Line_Sample(previewPicture, With_Ends(Line_Look(), Chosen()), points)));
}

void FrmLineEndpunkte::reject() {
  Run_Guarded([this] { Set_Line_Ends(former); });
  QDialog::reject();
}

void Show_frmLineEndpunkte(QWidget* parent) {
  FrmLineEndpunkte window(parent);
  Works_Beside(window);
  window.exec();
}
