#include "windows/canvas/frmMoveObjects.h"

#include <QPointer>
#include <cmath>

#include "edit/move.h"
#include "platform/message_box.h"
#include "platform/text.h"
#include "state/events.h"
#include "state/global_state.h"
#include "state/map_state.h"
#include "state/run_guarded.h"
#include "tools/pick_tool.h"
#include "ui_frmMoveObjects.h"
#include "windows/common/frm_dialogs.h"
#include "windows/common/show_beside.h"

namespace {

const QString pattern = QStringLiteral("###0.0");
const QString pickName = QStringLiteral("Fixpunkt");
constexpr double farthest = 32767;

QString Decimal(double value) {
  return (value < 0 ? QStringLiteral("-") : QString()) + Format(std::abs(value), pattern);
}

QString Unit_Text(double pixels, double mmPerPixel) {
  if (mmPerPixel <= 0) return QStringLiteral("Pixel");
  return QStringLiteral("Pixel  (%1 mm)").arg(Decimal(pixels * mmPerPixel));
}

// A number and nothing else: a slip of the fingers shall not move the map's entries.
bool Is_Amount(const QString& text) {
  const auto number = Number_Typed(text);
  return number && std::abs(*number) <= farthest;
}

}  // namespace

FrmMoveObjects::FrmMoveObjects(QWidget* parent) : QDialog(parent), ui(std::make_unique<Ui::FrmMoveObjects>()) {
  ui->setupUi(this);
  Prepare_Dialog(*this, QStringLiteral("Verschieben.htm"));
  setWindowModality(Qt::NonModal);
  ui->optMarked->setEnabled(Map.MarkCount > 0);
  ui->optMarked->setChecked(Map.MarkCount > 0);
  ui->btnBack->setEnabled(false);
  for (QLineEdit* field : {ui->txtX, ui->txtY}) {
    field->setAlignment(Qt::AlignRight);
    connect(field, &QLineEdit::textChanged, this, &FrmMoveObjects::Show_Amount);
  }
  connect(ui->optNoFix, &QRadioButton::clicked, this, &FrmMoveObjects::Choose_Fix);
  connect(ui->optFixZero, &QRadioButton::clicked, this, &FrmMoveObjects::Choose_Fix);
  connect(ui->optFix, &QRadioButton::clicked, this, &FrmMoveObjects::Choose_Fix);
  connect(ui->btnPoint, &QPushButton::clicked, this,
          [this] { ui->optNoFix->isChecked() ? Ask_Fix_Point() : Ask_Target(); });
  connect(ui->cmdOK, &QPushButton::clicked, this, &FrmMoveObjects::accept);
  connect(ui->btnBack, &QPushButton::clicked, this, &FrmMoveObjects::Take_Back);
  connect(ui->cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
  closedListener = events.MapClosed.Connect([this] { reject(); });
  stateListener = events.StateChanged.Connect([this] {
    ui->optMarked->setEnabled(Map.MarkCount > 0);
    if (Map.MarkCount == 0) ui->optAll->setChecked(true);
  });
  Show_Fix();
  Show_Amount();
  ui->txtX->setFocus();
  ui->txtX->selectAll();
}

FrmMoveObjects::~FrmMoveObjects() {
  events.MapClosed.Disconnect(closedListener);
  events.StateChanged.Disconnect(stateListener);
}

void FrmMoveObjects::Tell(const QString& text) { ui->lblFix->setText(text); }

void FrmMoveObjects::Choose_Fix() {
  Give_Up_Picking(pickName);
  fix.reset();
  if (ui->optFixZero->isChecked()) fix = QPoint(0, 0);
  Show_Fix();
  if (ui->optFix->isChecked()) Ask_Fix_Point();
}

void FrmMoveObjects::Show_Fix() {
  Tell(fix ? QStringLiteral("Fixpunkt = %1,%2").arg(fix->x()).arg(fix->y()) : QStringLiteral("Kein Fixpunkt"));
}

void FrmMoveObjects::Show_Amount() {
  const double x = Val_Comma(ui->txtX->text()), y = Val_Comma(ui->txtY->text());
  ui->lblMmX->setText(Unit_Text(x, MapPixelMm));
  ui->lblMmY->setText(Unit_Text(y, MapPixelMmY));
  QString amount = QStringLiteral("Betrag = %1 Pixel").arg(Decimal(std::hypot(x, y)));
  if (MapPixelMm > 0 && MapPixelMmY > 0)
    amount += QStringLiteral("  (%1 mm)").arg(Decimal(std::hypot(x * MapPixelMm, y * MapPixelMmY)));
  ui->lblBetrag->setText(amount);
}

void FrmMoveObjects::Ask_Fix_Point() {
  Pick(QStringLiteral("Klicken Sie auf den Fixpunkt in der Karte."), &FrmMoveObjects::Fix_Picked);
}

void FrmMoveObjects::Ask_Target() {
  if (!fix) return Ask_Fix_Point();
  Pick(QStringLiteral("Fixpunkt = %1,%2\nKlicken Sie auf die Stelle, an die er kommen soll.")
           .arg(fix->x())
           .arg(fix->y()),
       &FrmMoveObjects::Target_Picked);
}

void FrmMoveObjects::Pick(const QString& text, void (FrmMoveObjects::*taken)(QPoint map)) {
  const QPointer<FrmMoveObjects> self(this);
  Run_Guarded([&] {
    Pick_Point({pickName, text.section(u'\n', -1),
                [self, taken](QPoint map) {
                  if (self) (self->*taken)(map);
                },
                [self] {
                  if (self) self->Show_Fix();
                }});
  });
  Tell(text);
}

void FrmMoveObjects::Fix_Picked(QPoint map) {
  fix = map;
  ui->optFix->setChecked(true);
  Ask_Target();
}

void FrmMoveObjects::Target_Picked(QPoint map) {
  Set_Distance(map.x() - fix->x(), map.y() - fix->y());
  Show_Fix();
  activateWindow();
  ui->cmdOK->setFocus();
}

void FrmMoveObjects::Set_Distance(double x, double y) {
  ui->txtX->setText(Decimal(x));
  ui->txtY->setText(Decimal(y));
}

void FrmMoveObjects::accept() {
  for (QLineEdit* field : {ui->txtX, ui->txtY}) {
    if (Is_Amount(field->text())) continue;
    Message_Box(QStringLiteral("Bitte geben Sie eine Zahl zwischen -32767 und 32767 ein."), MsgButtons::Ok,
                MsgIcon::Information, windowTitle());
    field->setFocus();
    field->selectAll();
    return;
  }
  MoveRequest request;
  request.dx = Val_Comma(ui->txtX->text().trimmed());
  request.dy = Val_Comma(ui->txtY->text().trimmed());
  request.markedOnly = ui->optMarked->isChecked();
  Run_Guarded([&] {
    const int moved = Move_Entries(request);
    Tell(moved == 1 ? QStringLiteral("1 Eintrag ist verschoben.")
                    : QStringLiteral("%1 Einträge sind verschoben.").arg(moved));
    if (moved > 0) ui->btnBack->setEnabled(true);
  });
}

void FrmMoveObjects::Take_Back() {
  Run_Guarded([this] {
    Move_Back();
    ui->btnBack->setEnabled(false);
    Tell(QStringLiteral("Die Einträge stehen wieder an ihrem Platz."));
  });
}

void FrmMoveObjects::done(int result) {
  Give_Up_Picking(pickName);
  QDialog::done(result);
}

void Show_frmMoveObjects(QWidget* parent) { Show_Beside<FrmMoveObjects>(parent); }
