#include "windows/canvas/frmRfline.h"

#include <QPixmap>
#include <QToolButton>

#include "platform/surface.h"
#include "state/map_state.h"
#include "state/mdi_state.h"
#include "state/run_guarded.h"
#include "tools/foot_point.h"
#include "ui_frmRfline.h"
#include "view/redraw.h"
#include "windows/common/frm_dialogs.h"
#include "windows/common/tool_place.h"

namespace {

constexpr QSize picture(110, 56);

ReferenceStyle Style_Now() {
  return {static_cast<double>(Map.ReferenceWidth), Map.ReferenceCircle, Map.ReferenceArrow};
}

// As it will look on the map at 100 %.
QIcon End_Picture(int mark, const ReferenceStyle& style) {
  QImage image = Make_Canvas(picture.width(), picture.height());
  const auto surface = Make_Surface(image);
  DrawContext context{*surface, {}, QRectF(QPointF(0, 0), picture)};
  ReferenceLook look;
  look.kind = static_cast<EntryKind>(mark);
  look.style = style;
  look.textHeight = 20;
  const double middle = picture.height() / 2;
  Draw_Reference_From(context, {6, middle}, {picture.width() - 30.0, middle}, look);
  return QIcon(QPixmap::fromImage(image));
}

}  // namespace

FrmRfline::FrmRfline(QWidget* parent)
    : QDialog(parent),
      ui(std::make_unique<Ui::FrmRfline>()),
      formerStyle(Style_Now()),
      formerNext(Map.ReferenceEnd),
      formerEnd(End_Mark_In_Hand()) {
  ui->setupUi(this);
  Prepare_Dialog(*this, QStringLiteral("Bezugslinie.htm"));
  const int chosen = formerEnd > 0 ? formerEnd : Map.ReferenceEnd;
  int mark = 1;
  for (QToolButton* button : Ends()) {
    button->setIconSize(picture);
    button->setChecked(mark == chosen);
    connect(button, &QToolButton::clicked, this, [this, mark] { Choose_End(mark); });
    ++mark;
  }
  ui->lblEnd->setText(formerEnd > 0 ? QStringLiteral("Gilt für den gewählten Eintrag und für die nächsten Fußpunkte.")
                                    : QStringLiteral("Gilt für die nächsten Fußpunkte von Texten und Symbolen."));
  ui->numBreite->setValue(Map.ReferenceWidth);
  ui->numPfeil->setValue(qRound(Map.ReferenceArrow));
  ui->numKreis->setValue(qRound(Map.ReferenceCircle));
  for (QSpinBox* number : {ui->numBreite, ui->numPfeil, ui->numKreis})
    connect(number, &QSpinBox::valueChanged, this, &FrmRfline::Choose_Style);
  connect(ui->cmdOK, &QPushButton::clicked, this, &QDialog::accept);
  connect(ui->cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
  Show_Ends();
}

FrmRfline::~FrmRfline() = default;

std::array<QToolButton*, 3> FrmRfline::Ends() const { return {ui->btnPlain, ui->btnArrow, ui->btnCircle}; }

void FrmRfline::Show_Ends() {
  int mark = 1;
  for (QToolButton* button : Ends()) button->setIcon(End_Picture(mark++, Style_Now()));
}

void FrmRfline::Choose_End(int mark) {
  Run_Guarded([mark] { Set_End_Mark(mark); });
}

void FrmRfline::Choose_Style() {
  Use_Style({static_cast<double>(ui->numBreite->value()), static_cast<double>(ui->numKreis->value()),
             static_cast<double>(ui->numPfeil->value())});
  Show_Ends();
}

void FrmRfline::Use_Style(const ReferenceStyle& style) {
  Map.ReferenceWidth = static_cast<int>(style.width);
  Map.ReferenceCircle = style.circle;
  Map.ReferenceArrow = style.arrow;
  if (frmMDI.MapOpen) Run_Guarded(Map_Redraw);
}

void FrmRfline::reject() {
  if (formerEnd > 0) Choose_End(formerEnd);
  Map.ReferenceEnd = formerNext;
  Use_Style(formerStyle);
  QDialog::reject();
}

void Show_frmRfline(QWidget* parent) {
  FrmRfline window(parent);
  Works_Beside(window);
  window.exec();
}
