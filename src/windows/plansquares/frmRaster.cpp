#include "windows/plansquares/frmRaster.h"

#include <QFontDialog>
#include <QPainter>
#include <utility>

#include "hand/activation.h"
#include "plansquares/raster_rows.h"
#include "plansquares/raster_texts.h"
#include "platform/message_box.h"
#include "platform/surface.h"
#include "state/events.h"
#include "state/global_state.h"
#include "state/map_state.h"
#include "state/mdi_state.h"
#include "state/run_guarded.h"
#include "tools/map_tool.h"
#include "ui_frmRaster.h"
#include "windows/common/frm_dialogs.h"
#include "windows/common/show_beside.h"
#include "windows/common/window_support.h"
#include "windows/objects/frmFarb.h"

namespace {

const int sides[] = {1, 2, 5, 10, 20, 50, 100, 200, 500, 1000, 2000, 5000, 10000, 20000, 50000, 100000, 200000, 500000};
constexpr int tabSize = 0, tabCorners = 1;
const QString back = QStringLiteral("<< Zurück"), forward = QStringLiteral("Vorschau");

QString Side_Text(int side) {
  const QString number = QString::number(side);
  return number.rightJustified(6) + QStringLiteral(" * ") + number;
}

QPoint Middle_Of_View() { return {Map_X(Map.ViewWidth / 2.0), Map_Y(Map.ViewHeight / 2.0)}; }

}  // namespace

FrmRaster::FrmRaster(QWidget* parent) : QDialog(parent), ui(std::make_unique<Ui::FrmRaster>()) {
  ui->setupUi(this);
  Prepare_Dialog(*this, QStringLiteral("Planquadrate.htm"));
  setWindowModality(Qt::NonModal);
  for (const int side : sides) ui->cmbSize->addItem(Side_Text(side));
  ui->lblEckpkt->setText(raster_texts::corners);
  // The texts that come here later need their room: the window does not jump.
  ui->lblInfo->setMinimumHeight(ui->lblInfo->fontMetrics().lineSpacing() * 6);
  connect(ui->cmbSize, &QComboBox::currentTextChanged, this, &FrmRaster::Changed);
  for (QLineEdit* text : {ui->txt1x, ui->txt1y, ui->txt2x, ui->txt2y})
    connect(text, &QLineEdit::textChanged, this, &FrmRaster::Changed);
  for (QRadioButton* choice : {ui->optGesamt, ui->optTeil, ui->optFree, ui->optNoSchrift, ui->optRandSchrift,
                               ui->optPlqRandSchrift, ui->optZentrSchrift})
    connect(choice, &QRadioButton::toggled, this, &FrmRaster::Changed);
  for (QRadioButton* choice : {ui->optKoordinaten, ui->optPixel, ui->optMass, ui->optMap})
    connect(choice, &QRadioButton::clicked, this, &FrmRaster::Eckpunkt_Eingabe);
  connect(ui->btnGetTxt, &QPushButton::clicked, this, &FrmRaster::btnGetTxt_Click);
  connect(ui->btnSchrift, &QPushButton::clicked, this, &FrmRaster::Choose_Font);
  connect(ui->btnFarbe, &QPushButton::clicked, this, &FrmRaster::Choose_Color);
  connect(ui->btnVorschau, &QPushButton::clicked, this, &FrmRaster::btnVorschau_Click);
  connect(ui->btnTake, &QPushButton::clicked, this, &FrmRaster::btnTake_Click);
  connect(ui->btnCancel, &QPushButton::clicked, this, &QDialog::reject);
  closedListener = events.MapClosed.Connect([this] { reject(); });
  // The window of colours changes those of the next entry.
  stateListener = events.StateChanged.Connect([this] {
    // An entry that comes into the hand brings its own.
    coloring = coloring && !Entry_In_Hand();
    if (!coloring) return;
    int VG = CurVG, HG = CurHG;
    Sound_Colors(VG, HG);
    if (VG == design.VG && HG == design.HG) return;
    design.VG = VG;
    design.HG = HG;
    Changed();
    Show_Sample();
  });
}

FrmRaster::~FrmRaster() {
  events.MapClosed.Disconnect(closedListener);
  events.StateChanged.Disconnect(stateListener);
}

void FrmRaster::Begin(bool existing) {
  Take_Back_Preview();
  const std::optional<RasterDesign> stored = existing ? Raster_bearbeiten() : std::nullopt;
  taken = stored.has_value();
  coloring = false;
  Fill(stored ? *stored : Raster_Ini());
  steps = {};
  ui->lblInfo->clear();
  ui->TabStrip->setCurrentIndex(tabSize);
  ui->cmbSize->setFocus();
  ui->cmbSize->lineEdit()->selectAll();
}

void FrmRaster::Fill(const RasterDesign& wanted) {
  const Syncing keep(filling);
  design = wanted;
  unit = wanted.unit;
  ui->cmbSize->setCurrentText(wanted.size);
  QRadioButton* const fields[] = {ui->optGesamt, ui->optTeil, ui->optFree};
  QRadioButton* const units[] = {ui->optKoordinaten, ui->optPixel, ui->optMass, ui->optMap};
  QRadioButton* const places[] = {ui->optNoSchrift, ui->optRandSchrift, ui->optPlqRandSchrift, ui->optZentrSchrift};
  fields[static_cast<int>(wanted.field) - 1]->setChecked(true);
  units[static_cast<int>(wanted.unit) - 1]->setChecked(true);
  places[static_cast<int>(wanted.labels) - 1]->setChecked(true);
  ui->txt1x->setText(wanted.P1x);
  ui->txt1y->setText(wanted.P1y);
  ui->txt2x->setText(wanted.P2x);
  ui->txt2y->setText(wanted.P2y);
  Show_Choice();
  Show_Sample();
}

RasterDesign FrmRaster::Read() const {
  RasterDesign read = design;
  read.size = ui->cmbSize->currentText().trimmed();
  read.field = ui->optGesamt->isChecked() ? RasterField::Whole
               : ui->optTeil->isChecked() ? RasterField::Part
                                          : RasterField::Free;
  read.unit = unit;
  read.labels = ui->optRandSchrift->isChecked()      ? LabelPlace::MapEdge
                : ui->optPlqRandSchrift->isChecked() ? LabelPlace::SquareEdge
                : ui->optZentrSchrift->isChecked()   ? LabelPlace::Centre
                                                     : LabelPlace::None;
  read.P1x = ui->txt1x->text();
  read.P1y = ui->txt1y->text();
  read.P2x = ui->txt2x->text();
  read.P2y = ui->txt2y->text();
  return read;
}

// What was shown before is no longer what would be taken.
void FrmRaster::Changed() {
  if (filling > 0) return;
  if (shown) Take_Back_Preview();
  Show_Choice();
}

void FrmRaster::Show_Choice() {
  ui->lblSize->setText(Size_Unit(Read()));
  ui->TabStrip->setTabEnabled(tabCorners, ui->optTeil->isChecked());
  ui->fraSchrift->setEnabled(!ui->optFree->isChecked());
}

void FrmRaster::Take_Back_Preview() {
  shown.reset();
  Show_Raster_Preview({});
  ui->btnVorschau->setText(forward);
  ui->btnTake->setEnabled(false);
  ui->lblInfo->clear();
}

void FrmRaster::btnVorschau_Click() {
  steps.Mode = QStringLiteral("Step: 0");
  if (ui->btnVorschau->text() == back) {
    Take_Back_Preview();
    steps.Mode = raster_texts::removed;
    return;
  }
  if (taken && Message_Box(QStringLiteral("Das Raster ist bereits übernommen.\nMöchten Sie es neu entwerfen?"),
                           MsgButtons::YesNo, MsgIcon::Question, windowTitle()) != MsgAnswer::Yes)
    return;
  Run_Guarded([this] {
    const RasterDesign wanted = Read();
    const RasterOnMap map{[] { Show_Raster_Preview({}); },
                          [&](const RasterPlan& plan) {
                            Show_Raster_Preview(shown = RasterPreview{plan, wanted});
                          }};
    if (!Design_Raster(wanted, Raster_Field(), Middle_Of_View(), steps, map)) {
      shown.reset();
      Show_Raster_Preview({});  // what could not be drawn is not left half drawn
      ui->TabStrip->setCurrentIndex(steps.tab == RasterTab::Corners && ui->optTeil->isChecked() ? tabCorners : tabSize);
      return;
    }
    taken = false;
    ui->btnVorschau->setText(back);
    ui->btnTake->setEnabled(true);
    ui->lblInfo->setText(steps.info);
  });
}

void FrmRaster::btnTake_Click() {
  if (!shown) return;
  Run_Guarded([this] {
    if (!Take_Raster_On_Map(*shown)) return;
    const bool free = shown->design.field == RasterField::Free;
    Take_Back_Preview();
    taken = !free;
    ui->lblInfo->setText(free ? QStringLiteral("Planquadrat übernommen.\nSie können es auf der Karte verschieben.")
                              : raster_texts::taken);
  });
}

void FrmRaster::btnGetTxt_Click() {
  if (!Corners_Filled(Read())) return;
  ui->optTeil->setChecked(true);
  if (shown) Take_Back_Preview();
  btnVorschau_Click();
}

void FrmRaster::Eckpunkt_Eingabe() {
  const std::pair<QRadioButton*, CornerUnit> choices[] = {{ui->optKoordinaten, CornerUnit::Coordinates},
                                                          {ui->optPixel, CornerUnit::Pixel},
                                                          {ui->optMass, CornerUnit::Measure},
                                                          {ui->optMap, CornerUnit::OnMap}};
  CornerUnit wanted = unit;
  for (const auto& [button, its] : choices)
    if (button->isChecked()) wanted = its;
  if (!Unit_Possible(wanted)) {
    for (const auto& [button, its] : choices) button->setChecked(its == unit);
    return;
  }
  const bool other = wanted != unit;
  unit = wanted;
  if (other && unit != CornerUnit::OnMap)
    for (QLineEdit* text : {ui->txt1x, ui->txt1y, ui->txt2x, ui->txt2y}) text->clear();
  ui->lblEckpkt->setText(unit == CornerUnit::OnMap ? raster_texts::dragField : raster_texts::corners);
  Changed();
  if (unit == CornerUnit::OnMap)
    Drag_Field();
  else
    Drop_Map_Tool();
}

void FrmRaster::Drag_Field() {
  Run_Guarded([this] {
    Take_Bereich(
        [this](QRect field) {
          ui->txt1x->setText(QString::number(field.x()));
          ui->txt1y->setText(QString::number(field.y()));
          ui->txt2x->setText(QString::number(field.x() + field.width()));
          ui->txt2y->setText(QString::number(field.y() + field.height()));
          activateWindow();
        },
        {});
  });
}

void FrmRaster::Choose_Font() {
  bool chosen = false;
  QFont font(design.font);
  font.setPointSizeF(design.fontSize > 0 ? design.fontSize : 8);
  font = QFontDialog::getFont(&chosen, font, this, QStringLiteral("Schriftart"));
  if (!chosen) return;
  // A "-" would end the name in the table.
  design.font = font.family().section(u'-', 0, 0).trimmed();
  design.fontSize = std::max(1.0, font.pointSizeF());
  Changed();
  Show_Sample();
}

void FrmRaster::Choose_Color() {
  Run_Guarded([this] {
    if (Entry_In_Hand() && !End_Entry()) return;
    CurVG = design.VG;
    CurHG = design.HG;
    coloring = true;
    Show_frmFarb(parentWidget());
  });
}

// A square as it will look.
void FrmRaster::Show_Sample() {
  QPixmap picture(64, 64);
  picture.fill(Qt::white);
  QPainter painter(&picture);
  painter.setPen(QPen(QColor::fromRgb(Color_Of(design.VG)), 2));
  painter.drawRect(4, 4, 56, 56);
  QFont font(design.font);
  font.setPointSizeF(std::min(20.0, design.fontSize > 0 ? design.fontSize : 8));
  painter.setFont(font);
  painter.drawText(picture.rect(), Qt::AlignCenter, QStringLiteral("A-1"));
  ui->imgSchrift->setPixmap(picture);
}

void FrmRaster::done(int result) {
  if (unit == CornerUnit::OnMap) Drop_Map_Tool();
  Show_Raster_Preview({});
  QDialog::done(result);
}

void Show_frmRaster(QWidget* parent, bool existing) { Show_Beside<FrmRaster>(parent)->Begin(existing); }
