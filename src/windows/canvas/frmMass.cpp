#include "windows/canvas/frmMass.h"

#include <QPixmap>
#include <QPointer>
#include <algorithm>

#include "objects/scale_bar.h"
#include "platform/message_box.h"
#include "platform/surface.h"
#include "platform/text.h"
#include "state/events.h"
#include "state/mdi_state.h"
#include "state/run_guarded.h"
#include "tools/map_tool.h"
#include "ui_frmMass.h"
#include "windows/common/frm_dialogs.h"
#include "windows/common/show_beside.h"
#include "windows/common/window_support.h"

namespace {

constexpr int byPixels = 0, byMillimetres = 1;  // rows of cmbArt
constexpr QSize picture(260, 64);
const QString errorTitle = QStringLiteral("Maßstab - Fehler");

QString Number_Shown(double value) { return Number_Text(value).replace(u'.', u','); }

QString Mm_Shown(int pixels, bool vertical) { return Format(Scale_Mm(pixels, vertical), QStringLiteral("#0.0#")); }

}  // namespace

FrmMass::FrmMass(QWidget* parent) : QDialog(parent), ui(std::make_unique<Ui::FrmMass>()) {
  ui->setupUi(this);
  Prepare_Dialog(*this, QStringLiteral("Massstab.htm"));
  setWindowModality(Qt::NonModal);
  ui->cmbEinheit->addItems(Scale_Units());
  ui->cmbArt->addItems({QStringLiteral("Pixel"), QStringLiteral("Millimeter")});
  ui->pic->setFixedHeight(picture.height() + 4);
  ui->pic->setMinimumWidth(picture.width() + 4);
  // Two lines where there is a print factor: the window does not jump.
  ui->lblMass->setMinimumHeight(ui->lblMass->fontMetrics().lineSpacing() * 2);
  ui->lblMass->setMinimumWidth(ui->lblMass->fontMetrics().horizontalAdvance(
      QStringLiteral("incl. Druckfaktor = 00,00 (Menü: Karte - Druckvorschau)")));
  Fill();
  connect(ui->btnLinie, &QPushButton::toggled, this, &FrmMass::MassLinie);
  connect(ui->txtLaenge, &QLineEdit::textEdited, this, &FrmMass::Length_Typed);
  connect(ui->cmbArt, &QComboBox::currentIndexChanged, this, &FrmMass::Kind_Chosen);
  connect(ui->optV, &QRadioButton::toggled, this, &FrmMass::Length_Typed);
  const auto edited = [this] {
    changed = true;
    Mass_Show();
  };
  connect(ui->txtZahl, &QLineEdit::textEdited, this, edited);
  connect(ui->cmbEinheit, &QComboBox::currentIndexChanged, this, edited);
  connect(ui->cmdOK, &QPushButton::clicked, this, &FrmMass::accept);
  connect(ui->cmdCancel, &QPushButton::clicked, this, &FrmMass::reject);
  closedListener = events.MapClosed.Connect([this] {
    changed = false;
    reject();
  });
  ui->txtZahl->setFocus();
  ui->txtZahl->selectAll();
}

FrmMass::~FrmMass() { events.MapClosed.Disconnect(closedListener); }

// With the values of the bar the map has.
void FrmMass::Fill() {
  const Syncing keep(filling);
  const std::optional<ScaleInput> scale = Scale_Of_Map();
  ui->cmbEinheit->setCurrentIndex(static_cast<int>(scale ? scale->unit : ScaleUnit::Kilometer));
  if (scale) {
    ui->txtZahl->setText(Number_Shown(scale->ScaleValue));
    (scale->vertical ? ui->optV : ui->optH)->setChecked(true);
    lengthPx = scale->ScaleLenPx;
    at = scale->at;
  }
  Show_Length();
  Mass_Show();
}

double FrmMass::Typed_Length() const { return Number_Typed(ui->txtLaenge->text()).value_or(0); }

ScaleInput FrmMass::Input() const {
  ScaleInput input;
  input.ScaleValue = Number_Typed(ui->txtZahl->text()).value_or(0);
  input.unit = static_cast<ScaleUnit>(ui->cmbEinheit->currentIndex());
  input.ScaleLenPx = lengthPx;
  input.vertical = ui->optV->isChecked();
  if (at) input.at = *at;
  return input;
}

void FrmMass::Length_Typed() {
  if (filling > 0) return;
  changed = true;
  const double length = Typed_Length();
  const bool mm = ui->cmbArt->currentIndex() == byMillimetres;
  lengthPx = mm ? Scale_Pixels(length, ui->optV->isChecked()) : static_cast<int>(std::clamp(length, 0.0, 1e6));
  Mass_Show();
}

void FrmMass::Kind_Chosen() {
  if (filling > 0) return;
  Show_Length();
  Mass_Show();
}

void FrmMass::Show_Length() {
  const Syncing keep(filling);
  const bool mm = ui->cmbArt->currentIndex() == byMillimetres;
  if (lengthPx == 0) return ui->txtLaenge->clear();
  ui->txtLaenge->setText(mm ? Mm_Shown(lengthPx, ui->optV->isChecked()) : QString::number(lengthPx));
}

void FrmMass::MassLinie(bool on) {
  if (filling > 0) return;
  if (!on) {
    if (Scale_Tool_In_Use()) End_Map_Tool();
    return;
  }
  waiting = false;
  const QPointer<FrmMass> self(this);
  Run_Guarded([self] {
    Measure_Scale(
        [self](const MeasuringLine& line) {
          if (self) self->Mass_Zeichnen(line);
        },
        [self] {
          if (!self) return;
          const Syncing keep(self->filling);
          self->ui->btnLinie->setChecked(false);
        });
  });
  const Syncing keep(filling);
  ui->btnLinie->setChecked(Scale_Tool_In_Use());
  Mass_Show();
}

void FrmMass::Mass_Zeichnen(const MeasuringLine& drawn) {
  const Syncing keep(filling);
  changed = true;
  lengthPx = drawn.Length();
  at.reset();
  if (drawn.lies != MeasuringLine::Lies::Nowhere) {
    (drawn.lies == MeasuringLine::Lies::Upright ? ui->optV : ui->optH)->setChecked(true);
    at = drawn.Upper_Left();
  }
  Show_Length();
  Mass_Show();
}

void FrmMass::Mass_Show() {
  const ScaleInput input = Input();
  const bool mm = ui->cmbArt->currentIndex() == byMillimetres;
  ui->lblAndere->setText(mm ? QStringLiteral("= %1 Pixel").arg(lengthPx)
                            : QStringLiteral("= %1 mm auf der Karte").arg(Mm_Shown(lengthPx, input.vertical)));
  ui->lblMass->setText(Show_Scale_Text(input));
  ui->lblHinweis->setText(
      waiting ? QStringLiteral("Klicken Sie jetzt auf die Stelle der Karte, an der der Maßstab stehen soll.")
              : QStringLiteral("Ziehen Sie die Linie über eine Strecke, deren Länge Sie kennen, und geben Sie die "
                               "Länge in der Natur ein."));
  Show_Picture(input);
}

// The bar as the map will show it, as far as there is room.
void FrmMass::Show_Picture(const ScaleInput& input) {
  QImage image = Make_Canvas(picture.width(), picture.height());
  ScaleInput shown = input;
  shown.vertical = false;
  shown.ScaleLenPx = std::min(input.ScaleLenPx, picture.width() - 40);
  shown.at = {(picture.width() - shown.ScaleLenPx) / 2, 14};
  if (Scale_Fault(shown).isEmpty()) {
    const auto surface = Make_Surface(image);
    DrawContext context{*surface, {}, QRectF(QPointF(0, 0), picture)};
    Draw_Scale_Bar(context, Make_Scale_Row(shown));
  }
  ui->pic->setPixmap(QPixmap::fromImage(image));
}

bool FrmMass::Refuse(const QString& text, QWidget* field) {
  Message_Box(text, MsgButtons::Ok, MsgIcon::Warning, errorTitle);
  field->setFocus();
  return false;
}

void FrmMass::accept() {
  const ScaleInput input = Input();
  if (const QString fault = Scale_Fault(input); !fault.isEmpty()) {
    Refuse(fault, input.ScaleValue > 0 ? ui->txtLaenge : ui->txtZahl);
    return;
  }
  if (at) return Save(input);
  if (waiting) return;
  {
    const Syncing keep(filling);
    ui->btnLinie->setChecked(false);
  }
  waiting = true;
  const QPointer<FrmMass> self(this);
  Run_Guarded([self] {
    Place_Scale(
        [self](QPoint map) {
          if (!self) return;
          self->at = map;
          self->waiting = false;
          self->accept();
        },
        [self] {
          if (!self) return;
          self->waiting = false;
          self->Mass_Show();
        });
  });
  Mass_Show();
}

void FrmMass::Save(const ScaleInput& input) {
  bool saved = false;
  Run_Guarded([&] { saved = Add_Scale_Row(input); });
  if (!saved) return;
  changed = false;
  QDialog::accept();
}

void FrmMass::reject() {
  if (!changed) return QDialog::reject();
  const MsgAnswer answer = Message_Box(QStringLiteral("Maßstab sichern?"), MsgButtons::YesNoCancel, MsgIcon::Question,
                                       QStringLiteral("Maßstab"));
  if (answer == MsgAnswer::Yes) return accept();
  if (answer == MsgAnswer::No) QDialog::reject();
}

void FrmMass::done(int result) {
  if (Scale_Tool_In_Use()) End_Map_Tool();
  QDialog::done(result);
}

void Show_frmMass(QWidget* parent, bool drawLine) {
  if (!frmMDI.MapOpen) return;
  auto* window = Show_Beside<FrmMass>(parent);
  if (drawLine) window->MassLinie(true);
}
