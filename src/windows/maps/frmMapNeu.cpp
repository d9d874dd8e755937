#include "windows/maps/frmMapNeu.h"

#include <QButtonGroup>
#include <array>

#include "maps/map_open.h"
#include "platform/message_box.h"
#include "platform/text.h"
#include "ui_frmMapNeu.h"
#include "windows/common/frm_dialogs.h"

namespace {

constexpr int ownSize = 7;  // the number of optUser behind the seven paper sizes
constexpr double smallestMm = 10, largestMm = 3000;

// DIN A0 to A6, upright, in millimetres.
constexpr std::array<std::array<int, 2>, 7> paper = {
    {{841, 1189}, {594, 841}, {420, 594}, {297, 420}, {210, 297}, {148, 210}, {105, 148}}};

QString Mm_Text(double mm) { return Number_Text(mm).replace(QLatin1Char('.'), QLatin1Char(',')); }

QString Size_Text(const QSizeF& mm) {
  return Mm_Text(mm.width()) + QStringLiteral(" x ") + Mm_Text(mm.height()) + QStringLiteral(" mm");
}

bool In_Range(const QSizeF& mm) {
  return mm.width() >= smallestMm && mm.width() <= largestMm && mm.height() >= smallestMm && mm.height() <= largestMm;
}

}  // namespace

FrmMapNeu::FrmMapNeu(QWidget* parent)
    : QDialog(parent),
      ui(std::make_unique<Ui::FrmMapNeu>()),
      formats(new QButtonGroup(this)),
      directions(new QButtonGroup(this)) {
  ui->setupUi(this);
  Prepare_Dialog(*this, QStringLiteral("Karte_neu.htm"));
  for (int i = 0; i < ownSize; ++i) formats->addButton(findChild<QRadioButton*>(QStringLiteral("optDIN%1").arg(i)), i);
  formats->addButton(ui->optUser, ownSize);
  directions->addButton(ui->optHoch);
  directions->addButton(ui->optQuer);
  formats->button(4)->setChecked(true);
  ui->optHoch->setChecked(true);
  ui->txtBreite->setText(QStringLiteral("200"));
  ui->txtHoehe->setText(QStringLiteral("200"));

  connect(formats, &QButtonGroup::idToggled, this, &FrmMapNeu::Show_Sizes);
  connect(ui->optQuer, &QRadioButton::toggled, this, &FrmMapNeu::Show_Sizes);
  for (QLineEdit* edit : {ui->txtBreite, ui->txtHoehe}) {
    edit->setAlignment(Qt::AlignRight);
    edit->setMinimumWidth(fontMetrics().horizontalAdvance(QStringLiteral("0000,000")));
    connect(edit, &QLineEdit::textEdited, this, [this] {
      ui->optUser->setChecked(true);
      Show_Sizes();
    });
  }
  connect(ui->cmdOK, &QPushButton::clicked, this, &QDialog::accept);
  connect(ui->cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
  Show_Sizes();
  formats->button(4)->setFocus();
}

FrmMapNeu::~FrmMapNeu() = default;

QSizeF FrmMapNeu::Chosen_Size() const {
  const int format = formats->checkedId();
  if (format == ownSize) return {Val_Comma(ui->txtBreite->text()), Val_Comma(ui->txtHoehe->text())};
  const auto& sheet = paper.at(static_cast<size_t>(format));
  const QSizeF upright(sheet[0], sheet[1]);
  return ui->optQuer->isChecked() ? upright.transposed() : upright;
}

void FrmMapNeu::Show_Sizes() {
  const bool across = ui->optQuer->isChecked();
  for (int i = 0; i < ownSize; ++i) {
    const auto& sheet = paper.at(static_cast<size_t>(i));
    const QSizeF upright(sheet[0], sheet[1]);
    findChild<QLabel*>(QStringLiteral("lblDIN%1").arg(i))->setText(Size_Text(across ? upright.transposed() : upright));
  }
  const QSizeF mm = Chosen_Size();
  ui->lblGroesse->setText(Size_Text(mm));
  const QSize pixels = In_Range(mm) ? Pixels_Of_Mm(mm.width(), mm.height()) : QSize();
  ui->lblPixel->setText(pixels.isValid() ? QStringLiteral("%1 x %2 Bildpunkte").arg(pixels.width()).arg(pixels.height())
                                         : QStringLiteral("10 bis 3000 mm"));
  // A size of one's own is typed the way it shall lie.
  ui->grpLage->setEnabled(formats->checkedId() != ownSize);
}

void FrmMapNeu::accept() {
  const QSizeF mm = Chosen_Size();
  if (!In_Range(mm)) {
    Message_Box(QStringLiteral("Bitte geben Sie Breite und Höhe zwischen 10 und 3000 mm ein."), MsgButtons::Ok,
                MsgIcon::Information, windowTitle());
    QLineEdit* wrong = mm.width() < smallestMm || mm.width() > largestMm ? ui->txtBreite : ui->txtHoehe;
    wrong->setFocus();
    wrong->selectAll();
    return;
  }
  QDialog::accept();
}

void Show_frmMapNeu(QWidget* parent) {
  FrmMapNeu dialog(parent);
  if (dialog.exec() == QDialog::Accepted) New_Map(dialog.Chosen_Size().width(), dialog.Chosen_Size().height());
}
