#include "windows/maps/frmOptions.h"

#include <QColorDialog>
#include <QToolButton>

#include "objects/palette.h"
#include "platform/message_box.h"
#include "platform/surface.h"
#include "state/events.h"
#include "state/global_state.h"
#include "store/settings.h"
#include "store/versions.h"
#include "ui_frmOptions.h"
#include "windows/common/frm_dialogs.h"

namespace {

constexpr int paletteSize = 16;

QString Toolbar_Line(ToolbarPlace place) {
  switch (place) {
    case ToolbarPlace::Top:
      break;
    case ToolbarPlace::Bottom:
      return QStringLiteral("TLB: vbAlignBottom");
    case ToolbarPlace::Left:
      return QStringLiteral("TLB: vbAlignLeft");
    case ToolbarPlace::Right:
      return QStringLiteral("TLB: vbAlignRight");
  }
  return QStringLiteral("TLB: vbAlignTop");
}

// While an entry is being edited the bar must stay where it is: its buttons belong to that task.
bool Task_Running() { return frmMDI.MapOpen && Toolbar1.Tag != ToolMode::Norm; }

}  // namespace

OptionValues Current_Options() {
  return {frmMDI.toolbarPlace, frmMDI.raisedButtons, frmMDI.Tips,     frmMDI.showHidden,
          frmMDI.showTexts,    frmMDI.showPictures,  frmMDI.overview, frmMDI.trimInput,
          frmMDI.sheetFrame,   frmMDI.mouseUnit,     Palette,         Version_Room()};
}

void Take_Options(const OptionValues& values) {
  const OptionValues before = Current_Options();
  frmMDI.toolbarPlace = values.toolbarPlace;
  frmMDI.raisedButtons = values.raisedButtons;
  frmMDI.Tips = values.tips;
  frmMDI.showHidden = values.showHidden;
  frmMDI.showTexts = values.showTexts;
  frmMDI.showPictures = values.showPictures;
  frmMDI.overview = values.overview;
  frmMDI.trimInput = values.trimInput;
  frmMDI.sheetFrame = values.sheetFrame;
  frmMDI.mouseUnit = values.mouseUnit;
  Palette = values.palette;

  // Shown before anything is written: a file that cannot be written must not hide the change.
  events.StateChanged.Emit();
  OptionValues drawn = values;  // the same but for what the map does not show
  drawn.toolbarPlace = before.toolbarPlace;
  drawn.raisedButtons = before.raisedButtons;
  drawn.tips = before.tips;
  drawn.trimInput = before.trimInput;
  drawn.mouseUnit = before.mouseUnit;
  drawn.versionRoom = before.versionRoom;
  if (frmMDI.MapOpen && drawn != before) events.RedrawWanted.Emit();

  Write_Ini(Toolbar_Line(values.toolbarPlace));
  if (values.tips != before.tips) Write_Ini(values.tips ? QStringLiteral("TippsYes") : QStringLiteral("TippsNo"));
  if (values.palette != before.palette) Save_Palette();
  Set_Version_Room(values.versionRoom);
}

FrmOptions::FrmOptions(QWidget* parent) : QDialog(parent), ui(std::make_unique<Ui::FrmOptions>()), palette(Palette) {
  ui->setupUi(this);
  Prepare_Dialog(*this, QStringLiteral("Optionen.htm"));
  ui->btnFarbe0->setChecked(true);
  ui->tabFarben->setStyleSheet(QStringLiteral("QToolButton:checked { border: 2px solid palette(highlight); }"));
  Show_Values();

  for (QRadioButton* option : {ui->optOben, ui->optUnten, ui->optLinks, ui->optRechts})
    connect(option, &QRadioButton::toggled, this, [this](bool on) {
      if (on) Place_Toolbar();
    });
  for (QRadioButton* option : {ui->optRelief, ui->optPixel, ui->optMetr, ui->optKoord})
    connect(option, &QRadioButton::toggled, this, &FrmOptions::Changed);
  for (QCheckBox* check :
       {ui->ckTipps, ui->ckSichtbar, ui->ckText, ui->ckBild, ui->ckShow, ui->ckBlattschnitt, ui->ckNoSpace})
    connect(check, &QCheckBox::toggled, this, &FrmOptions::Changed);
  connect(ui->numPlatz, &QSpinBox::valueChanged, this, &FrmOptions::Changed);
  for (QToolButton* cell : ui->tabFarben->findChildren<QToolButton*>()) cell->installEventFilter(this);
  connect(ui->cmdPalChange, &QPushButton::clicked, this, &FrmOptions::Change_Color);
  connect(ui->cmdPalStandart, &QPushButton::clicked, this, &FrmOptions::Standard_Colors);
  connect(ui->cmdOK, &QPushButton::clicked, this, &FrmOptions::accept);
  connect(ui->cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
  connect(ui->cmdApply, &QPushButton::clicked, this, &FrmOptions::Apply);
}

FrmOptions::~FrmOptions() = default;

bool FrmOptions::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::MouseButtonDblClick) {
    Change_Color();
    return true;
  }
  return QDialog::eventFilter(watched, event);
}

void FrmOptions::Show_Values() {
  const OptionValues now = Current_Options();
  QRadioButton* const places[] = {ui->optOben, ui->optUnten, ui->optLinks, ui->optRechts};
  places[static_cast<int>(now.toolbarPlace)]->setChecked(true);
  (now.raisedButtons ? ui->optRelief : ui->optFlach)->setChecked(true);
  QRadioButton* const units[] = {ui->optPixel, ui->optMetr, ui->optKoord};
  units[static_cast<int>(now.mouseUnit)]->setChecked(true);
  ui->numPlatz->setMaximum(mostVersionRoom);
  ui->numPlatz->setValue(now.versionRoom);
  ui->ckTipps->setChecked(now.tips);
  ui->ckSichtbar->setChecked(now.showHidden);
  ui->ckText->setChecked(now.showTexts);
  ui->ckBild->setChecked(now.showPictures);
  ui->ckShow->setChecked(now.overview);
  ui->ckNoSpace->setChecked(now.trimInput);
  ui->ckBlattschnitt->setChecked(now.sheetFrame);
  Show_Palette();
}

OptionValues FrmOptions::Read_Values() const {
  OptionValues values;
  values.toolbarPlace = ui->optUnten->isChecked()    ? ToolbarPlace::Bottom
                        : ui->optLinks->isChecked()  ? ToolbarPlace::Left
                        : ui->optRechts->isChecked() ? ToolbarPlace::Right
                                                     : ToolbarPlace::Top;
  values.raisedButtons = ui->optRelief->isChecked();
  values.tips = ui->ckTipps->isChecked();
  values.showHidden = ui->ckSichtbar->isChecked();
  values.showTexts = ui->ckText->isChecked();
  values.showPictures = ui->ckBild->isChecked();
  values.overview = ui->ckShow->isChecked();
  values.trimInput = ui->ckNoSpace->isChecked();
  values.sheetFrame = ui->ckBlattschnitt->isChecked();
  values.mouseUnit = ui->optMetr->isChecked()    ? MouseUnit::Metric
                     : ui->optKoord->isChecked() ? MouseUnit::Coordinates
                                                 : MouseUnit::Pixel;
  values.palette = palette;
  values.versionRoom = ui->numPlatz->value();
  return values;
}

void FrmOptions::Changed() { changed = Read_Values() != Current_Options(); }

void FrmOptions::Place_Toolbar() {
  const ToolbarPlace place = Read_Values().toolbarPlace;
  if (!Task_Running()) {
    frmMDI.toolbarPlace = place;
    events.StateChanged.Emit();
    Guarded(windowTitle(), [place] { Write_Ini(Toolbar_Line(place)); });
  }
  Changed();
}

void FrmOptions::Show_Palette() {
  for (int i = 0; i < paletteSize; ++i) {
    auto* cell = findChild<QToolButton*>(QStringLiteral("btnFarbe%1").arg(i));
    QPixmap color(28, 22);
    color.fill(QColor(palette.at(static_cast<size_t>(i))));
    cell->setIcon(color);
    cell->setIconSize(color.size());
    cell->setToolTip(QStringLiteral("Farbe %1").arg(i));
  }
}

void FrmOptions::Change_Color() {
  for (int i = 0; i < paletteSize; ++i) {
    if (!findChild<QToolButton*>(QStringLiteral("btnFarbe%1").arg(i))->isChecked()) continue;
    QRgb& color = palette.at(static_cast<size_t>(i));
    const QColor chosen = QColorDialog::getColor(QColor(color), this, QStringLiteral("Farbe %1").arg(i));
    if (!chosen.isValid()) return;
    color = chosen.rgb();
    break;
  }
  Show_Palette();
  Changed();
}

void FrmOptions::Standard_Colors() {
  for (int i = 0; i < paletteSize; ++i) palette.at(static_cast<size_t>(i)) = QBColor(i);
  Show_Palette();
  Changed();
}

bool FrmOptions::Apply() {
  const Step step = Guarded(windowTitle(), [this] { Take_Options(Read_Values()); });
  Changed();
  return step != Step::Stopped;
}

void FrmOptions::accept() {
  if (changed &&
      Message_Box(QStringLiteral("Die Optionen wurden verändert;\nMöchten Sie die neuen Einstellungen übernehmen?"),
                  MsgButtons::YesNo, MsgIcon::Question, QStringLiteral("Optionen")) == MsgAnswer::Yes &&
      !Apply())
    return;
  QDialog::accept();
}

void Show_frmOptions(QWidget* parent) { FrmOptions(parent).exec(); }
