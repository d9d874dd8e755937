#include "windows/analysis/frmZuord.h"

#include <QApplication>
#include <QElapsedTimer>

#include "maps/color_command.h"
#include "platform/for_now.h"
#include "state/run_guarded.h"
#include "ui_frmZuord.h"
#include "windows/common/frm_dialogs.h"

namespace {
const QString helpPage = QStringLiteral("Zuordnung.htm"), before = QStringLiteral("Texteinträge -> Excel"),
              after = QStringLiteral("Einträge -> Excel"), start = QStringLiteral("Berechnen"),
              stop = QStringLiteral("Stop"), ready = QStringLiteral("Ok"),
              heading = QStringLiteral("Zuordnung der Texteinträge zur Hintergrundfarbe der Karte.");
constexpr int barLength = 60;
constexpr qint64 betweenSigns = 50;  // milliseconds
}  // namespace

FrmZuord::FrmZuord(QWidget* parent)
    : QDialog(parent), ui(std::make_unique<Ui::FrmZuord>()), clock(std::make_unique<QElapsedTimer>()) {
  ui->setupUi(this);
  Prepare_Dialog(*this, helpPage);
  setWindowTitle(before);
  // Its longest line, and room for a second one: the window does not jump.
  ui->Label1->setMinimumSize(ui->Label1->fontMetrics().horizontalAdvance(heading + u' '),
                             2 * ui->Label1->fontMetrics().lineSpacing());
  ui->lblBar->setMinimumWidth(ui->lblBar->fontMetrics().horizontalAdvance(QString(barLength, u'I')));
  for (QCheckBox* box : {ui->chkSichtbar, ui->chkMarkiert, ui->chkAktivierbar, ui->chkUnsichtbar})
    connect(box, &QCheckBox::clicked, ui->optWahl, [this] {
      ui->optWahl->setChecked(true);
      Options_Changed();
    });
  connect(ui->chkZahl, &QCheckBox::clicked, this, &FrmZuord::Options_Changed);
  connect(ui->optAll, &QRadioButton::clicked, this, &FrmZuord::Choose_All);
  connect(ui->optWahl, &QRadioButton::clicked, this, &FrmZuord::Options_Changed);
  connect(ui->cmdOK, &QPushButton::clicked, this, &FrmZuord::Press_Button);
  connect(ui->cmdCancel, &QPushButton::clicked, this, &FrmZuord::reject);
  connect(ui->cmdHelp, &QPushButton::clicked, this, [this] { Show_Help(this, helpPage); });
  Choose_All();
  ui->cmdOK->setFocus();
}

FrmZuord::~FrmZuord() = default;

void FrmZuord::Choose_All() {
  ui->optAll->setChecked(true);
  ui->chkSichtbar->setChecked(true);
  ui->chkMarkiert->setChecked(false);
  ui->chkAktivierbar->setChecked(true);
  ui->chkUnsichtbar->setChecked(false);
  Options_Changed();
}

// What was computed is no longer what is chosen.
void FrmZuord::Options_Changed() {
  finished = false;
  ui->cmdOK->setText(start);
}

ColorOptions FrmZuord::Read_Options() const {
  return {ui->chkSichtbar->isChecked(), ui->chkMarkiert->isChecked(), ui->chkAktivierbar->isChecked(),
          ui->chkUnsichtbar->isChecked(), ui->chkZahl->isChecked()};
}

void FrmZuord::Press_Button() {
  if (running)
    stopped = true;
  else if (finished)
    accept();
  else
    Run();
}

bool FrmZuord::Show_Step(int step, int total) {
  if (clock->elapsed() < betweenSigns && step < total) return !stopped;
  ui->lblBar->setText(QString(barLength * step / std::max(1, total), u'I'));
  QApplication::processEvents();
  clock->start();
  return !stopped;
}

void FrmZuord::Run() {
  stopped = false;
  setWindowTitle(before);
  ui->cmdOK->setText(stop);
  ui->grpWahl->setEnabled(false);
  ui->chkZahl->setEnabled(false);
  ui->Label1->setText(heading + u'\n' + QStringLiteral("Bitte warten."));
  clock->start();
  ColorEnd end = ColorEnd::Failed;
  Run_Guarded([&] {
    const ForNow<bool> busy(running, true);
    end = Assign_Colors(Read_Options(), {[this](const QString& text) {
                                           ui->Label1->setText(heading + u'\n' + text);
                                           QApplication::processEvents();
                                         },
                                         [this](int step, int total) { return Show_Step(step, total); }});
  });
  ui->grpWahl->setEnabled(true);
  ui->chkZahl->setEnabled(true);
  ui->lblBar->clear();
  finished = end == ColorEnd::Written;
  ui->cmdOK->setText(finished ? ready : start);
  ui->Label1->setText(heading + u'\n' +
                      (finished                  ? QStringLiteral("Fertig.")
                       : end == ColorEnd::Failed ? QStringLiteral("Fehler!")
                                                 : QStringLiteral("Abgebrochen: das Blatt ist, wie es war.")));
  if (finished) setWindowTitle(after);
}

// Closing stops the work first.
void FrmZuord::reject() {
  if (running)
    stopped = true;
  else
    QDialog::reject();
}

void Show_frmZuord(QWidget* parent) { FrmZuord(parent).exec(); }
