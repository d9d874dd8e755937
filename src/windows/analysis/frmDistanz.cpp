#include "windows/analysis/frmDistanz.h"

#include <QPointer>

#include "analysis/analysis_texts.h"
#include "analysis/distance_tool.h"
#include "state/events.h"
#include "state/run_guarded.h"
#include "ui_frmDistanz.h"
#include "windows/common/frm_dialogs.h"

namespace {
const QString helpPage = QStringLiteral("Distanz.htm");
}

FrmDistanz::FrmDistanz(QWidget* parent) : QDialog(parent), ui(std::make_unique<Ui::FrmDistanz>()) {
  ui->setupUi(this);
  Prepare_Dialog(*this, helpPage);
  setWindowModality(Qt::NonModal);
  // Two lines at least: the window does not jump.
  ui->lblPrompt->setMinimumHeight(2 * ui->lblPrompt->fontMetrics().lineSpacing());
  ui->lblPrompt->setText(distance_texts::first);
  connect(ui->optEinfach, &QRadioButton::clicked, this, [this] { Measure(DistanceMode::Simple); });
  connect(ui->optPolygon, &QRadioButton::clicked, this, [this] { Measure(DistanceMode::Polygon); });
  connect(ui->optBundel, &QRadioButton::clicked, this, [this] { Measure(DistanceMode::Bundle); });
  connect(ui->cmdClose, &QPushButton::clicked, this, &QDialog::reject);
  connect(ui->cmdHelp, &QPushButton::clicked, this, [this] { Show_Help(this, helpPage); });
  closedListener = events.MapClosed.Connect([this] { reject(); });
}

FrmDistanz::~FrmDistanz() { events.MapClosed.Disconnect(closedListener); }

bool FrmDistanz::Measure(DistanceMode mode) {
  const QPointer<FrmDistanz> self(this);
  (mode == DistanceMode::Simple    ? ui->optEinfach
   : mode == DistanceMode::Polygon ? ui->optPolygon
                                   : ui->optBundel)
      ->setChecked(true);
  Run_Guarded([&] {
    if (measuring) return Set_Measuring_Mode(mode);
    measuring = Start_Measuring(mode, {[self](int points, const std::optional<Distances>& distances) {
                                         if (self) self->Show_Distances(points, distances);
                                       },
                                       [self] {
                                         if (!self) return;
                                         self->measuring = false;
                                         self->reject();
                                       }});
  });
  return measuring;
}

void FrmDistanz::Show_Distances(int points, const std::optional<Distances>& distances) {
  ui->lblPrompt->setText(points == 0 ? distance_texts::first : distance_texts::next);
  if (!distances) {
    for (QLabel* label : {ui->lblDist, ui->lblZahl, ui->lblSum, ui->lblMean, ui->lblStreuung})
      label->setText(QStringLiteral("–"));
    return;
  }
  const QString unit = Read_Map_Measure().unit;
  ui->lblDist->setText(Fixed_Text(distances->last) + unit);
  ui->lblZahl->setText(QString::number(distances->count));
  ui->lblSum->setText(Fixed_Text(distances->sum) + unit);
  // Of a single distance there is neither: what stood there stays.
  if (distances->mean) ui->lblMean->setText(Fixed_Text(*distances->mean) + unit);
  if (distances->spread) ui->lblStreuung->setText(u'±' + Fixed_Text(static_cast<double>(*distances->spread)) + unit);
}

void FrmDistanz::done(int result) {
  if (measuring) End_Measuring();
  measuring = false;
  QDialog::done(result);
}

void Show_frmDistanz(QWidget* parent, DistanceMode mode) {
  auto* window = parent->findChild<FrmDistanz*>();
  if (window) {
    window->Measure(mode);
    window->raise();
    return;
  }
  window = new FrmDistanz(parent);
  window->setAttribute(Qt::WA_DeleteOnClose);
  if (window->Measure(mode))
    window->show();
  else
    delete window;
}
