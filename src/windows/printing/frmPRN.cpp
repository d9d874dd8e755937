#include "windows/printing/frmPRN.h"

#include <QApplication>

#include "hand/leave_hand.h"
#include "printing/page_setup.h"
#include "printing/print_texts.h"
#include "ui_frmPRN.h"
#include "windows/common/frm_dialogs.h"
#include "windows/desktop/desktop_dialogs.h"
#include "windows/printing/frmSeiten.h"
#include "windows/printing/frm_print.h"

namespace {
constexpr qint64 served = 150;  // milliseconds between two steps
constexpr int mostStars = 40;
}  // namespace

FrmPRN::FrmPRN(QWidget* parent) : QDialog(parent), ui(std::make_unique<Ui::FrmPRN>()) {
  ui->setupUi(this);
  Prepare_Dialog(*this, QStringLiteral("Drucken.htm"));
  // Events are served in the middle of the job: the rest of the program is shut.
  setWindowModality(Qt::ApplicationModal);
  setMinimumWidth(340);
  connect(ui->cmdCancel, &QPushButton::clicked, this, &FrmPRN::reject);
}

FrmPRN::~FrmPRN() = default;

bool FrmPRN::Step(int sheet, const QString& note) {
  if (sheet == shownSheet && clock.isValid() && clock.elapsed() < served) return !Cancelled;
  shownSheet = sheet;
  clock.start();
  ui->lblSeite->setText(QStringLiteral("Seite %1 von %2").arg(sheet).arg(last));
  const QString stars = ui->lblStern->text();
  ui->lblStern->setText(stars.size() >= mostStars ? QStringLiteral("*") : stars + QLatin1Char('*'));
  ui->lblBildFak->setText(note);
  QApplication::processEvents();
  return !Cancelled;
}

void FrmPRN::reject() { Cancelled = true; }

void Print_Whole_Map(QWidget* parent) {
  if (!Leave_Hand()) return;  // the preview asks for it too
  if (auto* preview = parent->findChild<FrmSeiten*>()) preview->Offer();
  const auto order = Ask_Print_Order();
  if (!order) return;
  if (auto* preview = parent->findChild<FrmSeiten*>()) preview->Close_Now();
  FrmPRN progress(parent);
  progress.Set_Last(order->range.to);
  const ArrowPointer arrow;
  progress.show();
  const PrintHooks hooks{[&] { return The_Printer().begin(print_texts::printTitle, order->settings.orientation); },
                         [&](int sheet, const QString& note) { return progress.Step(sheet, note); }};
  Print_Map(*order, hooks);
}
