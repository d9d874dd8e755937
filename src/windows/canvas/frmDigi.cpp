#include "windows/canvas/frmDigi.h"

#include <QPainter>
#include <QPointer>

#include "platform/message_box.h"
#include "state/events.h"
#include "state/mdi_state.h"
#include "state/run_guarded.h"
#include "tools/trace_tool.h"
#include "ui_frmDigi.h"
#include "windows/common/frm_dialogs.h"

namespace {

const QString errorTitle = QStringLiteral("Fehler:    ");
constexpr int barStep = 2, barStart = 5, barTop = 1, barBottom = 32;  // pixels of a colour's bar

QString Count_Text(int points) { return QString::number(points) + QStringLiteral(" Randpunkte"); }

}  // namespace

FrmDigi::FrmDigi(QWidget* parent) : QDialog(parent), ui(std::make_unique<Ui::FrmDigi>()) {
  ui->setupUi(this);
  Prepare_Dialog(*this, QStringLiteral("Digitalisieren.htm"));
  setWindowModality(Qt::NonModal);
  ui->Label1->setMinimumHeight(5 * ui->Label1->fontMetrics().lineSpacing());
  ui->pic->setBackgroundRole(QPalette::Base);
  ui->pic->setAutoFillBackground(true);
  ui->pic->setFixedHeight(barBottom + 6 + 2 * ui->pic->frameWidth());
  ui->lblPoints->setMinimumWidth(ui->lblPoints->fontMetrics().horizontalAdvance(Count_Text(90000)));
  ui->Slider1->setValue(frmMDI.DigiTolerance);
  Show_Tolerance();
  QSizePolicy keepsPlace = ui->btnSenken->sizePolicy();
  keepsPlace.setRetainSizeWhenHidden(true);
  ui->btnSenken->setSizePolicy(keepsPlace);
  ui->lblWert->setMinimumWidth(ui->lblWert->fontMetrics().horizontalAdvance(QStringLiteral("100 %")));
  (frmMDI.DigiFill ? ui->optFuellen : ui->optRand)->setChecked(true);
  connect(ui->Slider1, &QSlider::valueChanged, this, &FrmDigi::Slider_Moved);
  connect(ui->optFuellen, &QRadioButton::toggled, this, [this](bool fill) {
    frmMDI.DigiFill = fill;
    Try_Again(fill ? QStringLiteral("Neuer Versuch: Die Fläche wird gefüllt.")
                   : QStringLiteral("Neuer Versuch: Der Rand wird verfolgt."));
  });
  connect(ui->btnSenken, &QPushButton::clicked, this, [this] { Run_Guarded([this] { Lower_Tolerance(); }); });
  connect(ui->cmdTake, &QPushButton::clicked, this, [this] { Run_Guarded([this] { Take(); }); });
  connect(ui->btnNeu, &QPushButton::clicked, this, &FrmDigi::New_Try);
  connect(ui->btnEnd, &QPushButton::clicked, this, &QDialog::reject);
  closedListener = events.MapClosed.Connect([this] { reject(); });
  New_Try();
}

FrmDigi::~FrmDigi() { events.MapClosed.Disconnect(closedListener); }

bool FrmDigi::Start() {
  const QPointer<FrmDigi> self(this);
  Run_Guarded([&] {
    tracing = Start_Tracing({[self](const TraceResult& result) {
                               if (self) self->Show_Result(result);
                             },
                             [self] {
                               if (!self) return;
                               self->tracing = false;
                               self->reject();
                             }});
  });
  return tracing;
}

void FrmDigi::Show_Result(const TraceResult& result) {
  Show_Colors(result.sampled);
  ui->btnNeu->setEnabled(true);
  ui->cmdTake->setEnabled(result.Found());
  ui->lblPoints->setText(Count_Text(static_cast<int>(result.outline.size())));
  const bool runOut = result.part >= runOutPart;
  ui->btnSenken->setVisible(runOut);
  if (runOut) {
    ui->Label1->setText(QStringLiteral("Die Fläche füllt %1 % der Karte: Die Farbe geht wohl in die Umgebung über.\n"
                                       "Senken Sie die Farbtoleranz, oder 'Übernehmen', wenn es so gemeint ist.")
                            .arg(static_cast<int>(result.part * 100)));
    return;
  }
  if (result.Found()) {
    ui->Label1->setText(
        QStringLiteral("Aktivieren Sie 'Übernehmen' unten in diesem Fenster,\nwenn Sie die digitalisierte Fläche als "
                       "Objekt übernehmen wollen,\noder nächster Versuch: Nochmal auf die Fläche klicken, bzw. "
                       "Schieberegler ändern."));
    return;
  }
  ui->Label1->setText(QStringLiteral("Klicken Sie in die farbige Fläche, oder ändern Sie den Schieberegler."));
  if (!result.fault.isEmpty()) Message_Box(result.fault, MsgButtons::Ok, MsgIcon::Warning, errorTitle);
}

void FrmDigi::Show_Colors(const std::vector<QRgb>& colors) {
  const QSize inner = ui->pic->contentsRect().size();
  QPixmap bars(std::max(inner.width(), 2 * barStart), inner.height());
  bars.fill(palette().color(QPalette::Base));
  QPainter painter(&bars);
  const int room = (bars.width() - 2 * barStart) / barStep;
  for (int k = 0; k < static_cast<int>(colors.size()) && k < room; ++k)
    painter.fillRect(barStep * k + barStart, barTop, barStep, barBottom - barTop,
                     QColor(colors[static_cast<size_t>(k)]));
  painter.end();
  ui->pic->setPixmap(bars);
}

void FrmDigi::Show_Tolerance() { ui->lblWert->setText(QString::number(frmMDI.DigiTolerance) + QStringLiteral(" %")); }

void FrmDigi::Lower_Tolerance() {
  if (!Trace_Less()) {
    ui->Label1->setText(
        QStringLiteral("Auch mit kleinerer Farbtoleranz läuft die Fläche aus.\nKlicken Sie an eine andere Stelle."));
    return;
  }
  const QSignalBlocker traced(ui->Slider1);
  ui->Slider1->setValue(frmMDI.DigiTolerance);
  Show_Tolerance();
}

void FrmDigi::Slider_Moved(int value) {
  frmMDI.DigiTolerance = value;
  Show_Tolerance();
  Try_Again(QStringLiteral("Neuer Versuch mit %1% Farbtoleranz.").arg(value));
}

// Once there was a try, each change of the settings makes another one.
void FrmDigi::Try_Again(const QString& text) {
  if (!ui->btnNeu->isEnabled()) return;
  ui->Label1->setText(text);
  ui->lblPoints->setText(Count_Text(0));
  Run_Guarded(Trace_Again);
}

void FrmDigi::Take() {
  if (!Take_Traced_Area()) return;
  New_Try();
  ui->Label1->setText(QStringLiteral("Die Fläche wurde übernommen.\nFür die nächste klicken Sie in ihre Farbe."));
}

void FrmDigi::New_Try() {
  Forget_Trace();
  ui->btnNeu->setEnabled(false);
  ui->cmdTake->setEnabled(false);
  ui->btnSenken->hide();
  ui->lblPoints->setText(Count_Text(0));
  ui->Label1->setText(QStringLiteral("Klicken Sie in die farbige Fläche auf der Karte."));
  Show_Colors({});
}

void FrmDigi::done(int result) {
  if (tracing) End_Tracing();
  tracing = false;
  QDialog::done(result);
}

void Show_frmDigi(QWidget* parent) {
  if (auto* open = parent->findChild<FrmDigi*>()) {
    open->reject();
    return;
  }
  auto* window = new FrmDigi(parent);
  window->setAttribute(Qt::WA_DeleteOnClose);
  if (window->Start())
    window->show();
  else
    delete window;
}
