#include "windows/canvas/frmGPSData.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QRegularExpressionValidator>

#include "platform/message_box.h"
#include "state/coordinate_state.h"
#include "state/events.h"
#include "state/map_state.h"
#include "state/on_reset.h"
#include "state/run_guarded.h"
#include "tools/position_mark.h"
#include "ui_frmGPSData.h"
#include "view/view.h"
#include "windows/common/frm_dialogs.h"
#include "windows/common/show_beside.h"
#include "windows/common/window_support.h"

namespace {

bool byClick = false;
const OnReset fresh(byClick);

const QString advice = QStringLiteral("Geben Sie eine Koordinate ein, oder wählen Sie sie mit der Maus in der Karte.");
const QString shown =
    QStringLiteral("Die Position wird in der Karte angezeigt.\nSie können einen Karteneintrag auswählen.\n");
const QString setBack = QStringLiteral("Zurücksetzen"), back = QStringLiteral("Zurück");
const QString takePlace = QStringLiteral("Position &übernehmen"), takeFoot = QStringLiteral("F&ußpunkt übernehmen");

}  // namespace

FrmGPSData::FrmGPSData(QWidget* parent) : QDialog(parent), ui(std::make_unique<Ui::FrmGPSData>()) {
  ui->setupUi(this);
  Prepare_Dialog(*this, QStringLiteral("Koordinaten.htm"));
  setWindowModality(Qt::NonModal);
  const QRegularExpression letters(QStringLiteral("[RH+-]"));
  for (QLineEdit* letter : {ui->txtR, ui->txtH}) {
    letter->setValidator(new QRegularExpressionValidator(letters, letter));
    letter->installEventFilter(this);
    Give_Room(*letter, QStringLiteral("W"));
  }
  ui->ckMausclick->setChecked(byClick);
  ui->btnSetback->setEnabled(false);
  Connect_Controls();
  Init();
  ui->txtRW->setFocus();
  ui->txtRW->selectAll();
}

FrmGPSData::~FrmGPSData() {
  events.MapClosed.Disconnect(closedListener);
  events.StateChanged.Disconnect(stateListener);
  events.MapClicked.Disconnect(clickListener);
}

void FrmGPSData::Connect_Controls() {
  connect(ui->ckMausclick, &QCheckBox::toggled, this, [](bool on) { byClick = on; });
  connect(ui->txtRW, &QLineEdit::textEdited, this, [this] { enteredR = true; });
  connect(ui->txtHW, &QLineEdit::textEdited, this, [this] { enteredH = true; });
  connect(ui->txtRW, &QLineEdit::editingFinished, this, [this] { Leave_Box(true); });
  connect(ui->txtHW, &QLineEdit::editingFinished, this, [this] { Leave_Box(false); });
  for (QLineEdit* letter : {ui->txtR, ui->txtH})
    connect(letter, &QLineEdit::textChanged, this, &FrmGPSData::Show_Labels);
  connect(ui->btnShow, &QPushButton::clicked, this, &FrmGPSData::accept);
  connect(ui->btnTake, &QPushButton::clicked, this, [this] { Run_Guarded([this] { Take(); }); });
  connect(ui->btnSetback, &QPushButton::clicked, this, [this] { Run_Guarded([this] { Set_Back(); }); });
  connect(ui->btnBreak, &QPushButton::clicked, this, &QDialog::reject);
  closedListener = events.MapClosed.Connect([this] { reject(); });
  stateListener = events.StateChanged.Connect([this] { Follow_State(); });
  clickListener = events.MapClicked.Connect([this](QPoint map) { Take_Click(map); });
}

void FrmGPSData::Init() {
  form = Koord_Eingabe_Init();
  netShown = Coord.CalFile;
  setWindowTitle(form.title);
  ui->txtR->setText(form.letterR);
  ui->txtH->setText(form.letterH);
  ui->txtRW->setText(form.startR);
  ui->txtHW->setText(form.startH);
  ui->txtRW->setToolTip(form.tipR);
  ui->txtHW->setToolTip(form.tipH);
  enteredR = enteredH = false;
  ui->lblZone->setText(Coord.NetPKG ? Coord.PkgZone : Coord.ZoneText);
  ui->lblDatum->setText(Coord.GridDatum);
  const bool zone = !ui->lblZone->text().isEmpty() && !form.degrees;
  ui->lblZonelbl->setVisible(zone);
  ui->lblZone->setVisible(zone);
  ui->lblInfo->setText(advice);
  Show_Labels();
  Show_Taken();
}

// Another net, or none: the boxes would mean something else.
void FrmGPSData::Follow_State() {
  if (Coord.Grid == gridNone) return reject();
  if (Coord.CalFile != netShown) Init();
  ui->btnTake->setEnabled(!Map.InHand.isEmpty());
}

void FrmGPSData::Show_Labels() {
  ui->lblRW->setText(Coordinate_Label(form, true, ui->txtR->text()));
  ui->lblHW->setText(Coordinate_Label(form, false, ui->txtH->text()));
}

void FrmGPSData::Take_Click(QPoint map) {
  if (!byClick || !isVisible()) return;
  const auto typed = Show_Cursor_Coords(map);
  if (!typed) return;
  ui->txtR->setText(typed->letterR);
  ui->txtRW->setText(typed->valueR);
  ui->txtH->setText(typed->letterH);
  ui->txtHW->setText(typed->valueH);
  enteredR = enteredH = true;
}

// A digit in the box of a letter begins the number beside it.
bool FrmGPSData::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::KeyPress) return QDialog::eventFilter(watched, event);
  const QString typed = static_cast<QKeyEvent*>(event)->text();
  if (typed.isEmpty() || !typed.front().isDigit()) return QDialog::eventFilter(watched, event);
  QLineEdit* number = watched == ui->txtR ? ui->txtRW : ui->txtHW;
  number->setFocus();
  number->selectAll();
  QCoreApplication::sendEvent(number, event);
  return true;
}

void FrmGPSData::Leave_Box(bool easting) {
  QLineEdit* box = easting ? ui->txtRW : ui->txtHW;
  if (box->text().trimmed().isEmpty()) (easting ? enteredR : enteredH) = false;
  box->setText(Box_Text(form, easting, box->text()));
}

std::optional<TypedPlace> FrmGPSData::Typed_Place() {
  for (const auto& [entered, box] : {std::pair(enteredR, ui->txtRW), std::pair(enteredH, ui->txtHW)}) {
    if (entered) continue;
    Message_Box(QStringLiteral("Bitte geben Sie eine Koordinate ein."), MsgButtons::Ok, MsgIcon::Information,
                windowTitle());
    box->setFocus();
    box->selectAll();
    return std::nullopt;
  }
  return GridPix(form, {ui->txtR->text(), ui->txtRW->text(), ui->txtH->text(), ui->txtHW->text()});
}

void FrmGPSData::accept() {
  Run_Guarded([this] { Show(); });
}

void FrmGPSData::Show() {
  const auto place = Typed_Place();
  if (!place) return;
  if (!Map.PositionMark) viewBefore = {Map.ViewLeft, Map.ViewTop};
  taken = {};
  Show_Place(place->map);
  ui->lblInfo->setText(shown);
  Show_Taken();
}

void FrmGPSData::Take() {
  const auto place = Typed_Place();
  if (!place) return;
  if (Take_Position(taken, *place, windowTitle()))
    ui->lblInfo->setText(QStringLiteral("Der Eintrag steht jetzt hier."));
  Show_Taken();
}

void FrmGPSData::Set_Back() {
  if (taken.step > 0) {
    Take_Position_Back(taken, windowTitle());
  } else if (Map.PositionMark) {
    Map.PositionMark.reset();
    const auto window_pixels = [](int map) { return qRound(map / static_cast<double>(Map.Zoom)); };
    const QPoint by = viewBefore - QPoint(Map.ViewLeft, Map.ViewTop);
    if (by.isNull())
      events.RedrawWanted.Emit();
    else
      Scroll_By(window_pixels(by.x()), window_pixels(by.y()));
  }
  ui->lblInfo->setText(advice);
  Show_Taken();
}

void FrmGPSData::Show_Taken() {
  ui->btnTake->setText(Foot_Is_Next(taken) ? takeFoot : takePlace);
  ui->btnTake->setEnabled(!Map.InHand.isEmpty());
  ui->btnSetback->setText(taken.step > 0 || !Map.PositionMark ? setBack : back);
  ui->btnSetback->setEnabled(taken.step > 0 || Map.PositionMark);
}

void FrmGPSData::done(int result) {
  Hide_Place();
  QDialog::done(result);
}

bool Coordinates_By_Click() { return byClick; }

void Show_frmGPSData(QWidget* parent) { Show_Beside<FrmGPSData>(parent); }
