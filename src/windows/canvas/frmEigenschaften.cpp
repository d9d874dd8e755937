#include "windows/canvas/frmEigenschaften.h"

#include <QMouseEvent>
#include <QPointer>
#include <cmath>

#include "edit/figure_edit.h"
#include "platform/message_box.h"
#include "platform/text.h"
#include "state/events.h"
#include "state/run_guarded.h"
#include "tools/map_tool.h"
#include "tools/turn_tool.h"
#include "ui_frmEigenschaften.h"
#include "windows/canvas/figure_fields.h"
#include "windows/common/frm_dialogs.h"
#include "windows/common/show_beside.h"
#include "windows/common/window_support.h"

namespace {

constexpr int pictureSize = 236;

QString Place_Text(QPointF at) { return QStringLiteral("%1 : %2").arg(std::lrint(at.x())).arg(std::lrint(at.y())); }

QString Measures_Text(const EntryRow& row) {
  const FigureMeasures is = GetAbmessungen(row);
  const FigureAxes axes = Axes_Of(is);
  const double longer = 2 * is.Radius, shorter = 2 * std::min(is.HalfW, is.HalfH);
  QString text = QStringLiteral("%1\n\nMittelpunkt: %2\nLängsachse: %3 %4\nQuerachse: %5 %6")
                     .arg(row.Eintrag, Place_Text({is.CenterX, is.CenterY}))
                     .arg(longer)
                     .arg(Pixels_Text(longer, is.Upright()))
                     .arg(shorter)
                     .arg(Pixels_Text(shorter, !is.Upright()));
  const EntryKind kind = EntryType::Parse(row.Typ).Kind();
  if (kind == EntryKind::Ellipse || kind == EntryKind::Circle)
    text += QStringLiteral("\nBrennpunkte: %1 und %2").arg(Place_Text(axes.foci[0]), Place_Text(axes.foci[1]));
  return text;
}

}  // namespace

FrmEigenschaften::FrmEigenschaften(QWidget* parent) : QDialog(parent), ui(std::make_unique<Ui::FrmEigenschaften>()) {
  ui->setupUi(this);
  Prepare_Dialog(*this, QStringLiteral("Figuren.htm"));
  setWindowModality(Qt::NonModal);
  ui->txtWinkel->setAlignment(Qt::AlignRight);
  Give_Room(*ui->txtWinkel, QStringLiteral("-000,0000"));
  ui->fraWinkel->installEventFilter(this);
  connect(ui->txtWinkel, &QLineEdit::textChanged, this, &FrmEigenschaften::Show_Preview);
  for (QCheckBox* box : {ui->ckMittelpunkt, ui->ckFokus, ui->ckLaengsachse, ui->ckQuerachse, ui->ckAchsenText})
    connect(box, &QCheckBox::toggled, this, &FrmEigenschaften::Show_Preview);
  connect(ui->btnDrehen, &QPushButton::clicked, this, &FrmEigenschaften::Turn_On_Map);
  connect(ui->cmdOK, &QPushButton::clicked, this, &FrmEigenschaften::accept);
  connect(ui->cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
  closedListener = events.MapClosed.Connect([this] { reject(); });
  stateListener = events.StateChanged.Connect([this] { Follow(); });
  tableListener = events.TableChanged.Connect([this] { Follow(); });
  Follow();
  ui->txtWinkel->setFocus();
  ui->txtWinkel->selectAll();
}

FrmEigenschaften::~FrmEigenschaften() {
  events.MapClosed.Disconnect(closedListener);
  events.StateChanged.Disconnect(stateListener);
  events.TableChanged.Disconnect(tableListener);
}

// While the figure is being turned it is not in hand, but still the one.
void FrmEigenschaften::Follow() {
  if (turning) return;
  const std::optional<EntryRow> row = Figure_In_Hand();
  const FigureExtras extras = row ? Extras_Of(*row) : FigureExtras{};
  const bool same = row == shown && extras == extrasShown && !ui->lblFigur->text().isEmpty();
  shown = row;
  extrasShown = extras;
  if (!same) Show_Row();
}

void FrmEigenschaften::Show_Row() {
  const bool figure = shown.has_value();
  for (QWidget* part :
       {static_cast<QWidget*>(ui->fraWinkel), static_cast<QWidget*>(ui->fraZeigen), static_cast<QWidget*>(ui->cmdOK)})
    part->setEnabled(figure);
  ui->lblFigur->setText(figure ? Measures_Text(*shown) : QStringLiteral("Wählen Sie eine Figur auf der Karte."));
  {
    const Syncing guard(syncing);
    const EntryKind kind = figure ? EntryType::Parse(shown->Typ).Kind() : EntryKind::Nothing;
    ui->ckFokus->setEnabled(kind == EntryKind::Ellipse || kind == EntryKind::Circle);
    ui->ckMittelpunkt->setChecked(extrasShown.Mittelpunkt);
    ui->ckFokus->setChecked(extrasShown.Fokus);
    ui->ckLaengsachse->setChecked(extrasShown.Laengsachse);
    ui->ckQuerachse->setChecked(extrasShown.Querachse);
    ui->ckAchsenText->setChecked(extrasShown.AchsenText);
    Show_Angle(figure ? GetAbmessungen(*shown).angle : 0);
  }
  Show_Preview();
}

void FrmEigenschaften::Show_Angle(double angle) { ui->txtWinkel->setText(Format(angle, QStringLiteral("##0.000"))); }

std::optional<double> FrmEigenschaften::Angle() const {
  const auto angle = Number_Typed(ui->txtWinkel->text());
  if (!angle) return std::nullopt;
  return Normal_Angle(*angle);
}

FigureExtras FrmEigenschaften::Chosen() const {
  return {ui->ckMittelpunkt->isChecked(), ui->ckFokus->isChecked() && ui->ckFokus->isEnabled(),
          ui->ckLaengsachse->isChecked(), ui->ckQuerachse->isChecked(),
          ui->ckAchsenText->isChecked() && ui->ckAchsenText->isEnabled()};
}

void FrmEigenschaften::Show_Preview() {
  if (syncing > 0) return;
  ui->ckAchsenText->setEnabled(ui->ckLaengsachse->isChecked() || ui->ckQuerachse->isChecked());
  QImage image = Make_Canvas(pictureSize, pictureSize);
  if (shown) {
    EntryRow row = *shown;
    Turn_Row(row, Angle().value_or(GetAbmessungen(row).angle));
    const auto surface = Make_Surface(image);
    Draw_Figure_Preview(*surface, surface->Extent(), row, Chosen());
  }
  ui->picFigur->setPixmap(QPixmap::fromImage(image));
}

bool FrmEigenschaften::eventFilter(QObject* watched, QEvent* event) {
  if (watched == ui->fraWinkel && event->type() == QEvent::MouseButtonRelease && ui->fraWinkel->isEnabled()) {
    ui->btnDrehen->click();
    return true;
  }
  return QDialog::eventFilter(watched, event);
}

void FrmEigenschaften::Turn_On_Map() {
  if (turning) return Drop_Map_Tool();
  turning = true;
  const QPointer<FrmEigenschaften> self(this);
  bool begun = false;
  Run_Guarded([&] {
    begun = Turn_By_Mouse(
        [self](double angle) {
          if (self) self->Show_Angle(angle);
        },
        [self](std::optional<double> angle) {
          if (self) self->End_Turning(angle);
        });
  });
  if (!begun) End_Turning(std::nullopt);
  ui->btnDrehen->setChecked(begun);
}

void FrmEigenschaften::End_Turning(std::optional<double> angle) {
  turning = false;
  ui->btnDrehen->setChecked(false);
  if (angle) {
    Show_Angle(*angle);
    accept();
    return;
  }
  if (shown) Show_Row();
  Follow();
}

void FrmEigenschaften::accept() {
  const std::optional<double> angle = Angle();
  if (!angle) {
    Message_Box(QStringLiteral("Bitte geben Sie den Winkel als Zahl ein."), MsgButtons::Ok, MsgIcon::Information,
                windowTitle());
    ui->txtWinkel->setFocus();
    ui->txtWinkel->selectAll();
    return;
  }
  if (!shown) return;
  const FigureExtras extras = Chosen();
  Run_Guarded([&] { Set_Figure_Properties(*angle, extras); });
  Show_Angle(*angle);
}

void FrmEigenschaften::done(int result) {
  if (turning) Drop_Map_Tool();
  QDialog::done(result);
}

void Show_frmEigenschaften(QWidget* parent) {
  if (Figure_In_Hand())
    Show_Beside<FrmEigenschaften>(parent);
  else
    Show_Figure();
}
