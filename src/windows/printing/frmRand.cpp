#include "windows/printing/frmRand.h"

#include <QScrollBar>
#include <algorithm>
#include <cmath>

#include "platform/message_box.h"
#include "platform/text.h"
#include "printing/print_texts.h"
#include "ui_frmRand.h"
#include "windows/common/frm_dialogs.h"
#include "windows/common/window_support.h"
#include "windows/printing/frm_print.h"

namespace {
constexpr int largestTyped = 999;
}

FrmRand::FrmRand(QWidget* parent) : QDialog(parent), ui(std::make_unique<Ui::FrmRand>()) {
  ui->setupUi(this);
  Prepare_Dialog(*this, QStringLiteral("Drucken.htm#raender"));
  const PrintSettings kept = Read_Print_Settings();
  const Paper paper = The_Printer().paper(kept.orientation);
  shown = Margins_To_Show(kept, paper);
  const SheetMargins clips = Margins_To_Show({}, paper);
  sides = {Side{ui->scrLR, ui->txtLR, &SheetMargins::left, clips.left},
           Side{ui->scrRR, ui->txtRR, &SheetMargins::right, clips.right},
           Side{ui->scrOR, ui->txtOR, &SheetMargins::top, clips.top},
           Side{ui->scrUR, ui->txtUR, &SheetMargins::bottom, clips.bottom}};
  ui->lblClips->setText(
      QStringLiteral("links und rechts %1 mm, oben und unten %2 mm")
          .arg(Format(paper.unprintableX, QStringLiteral("0.0")), Format(paper.unprintableY, QStringLiteral("0.0"))));
  for (const Side& side : sides) {
    side.box->setAlignment(Qt::AlignRight);
    Give_Room(*side.box, QStringLiteral("0000,0"));
    // The bar stands at 100 where there is no margin, and is moved to the left to widen it.
    side.bar->setInvertedAppearance(true);
    connect(side.bar, &QScrollBar::valueChanged, this, [this, &side](int value) {
      if (syncing > 0) return;
      shown.*side.value = largestMargin - value + side.clip;
      changed = true;
      Print_Margin_Text(side);
    });
    connect(side.box, &QLineEdit::textEdited, this, [this, &side](const QString& text) {
      shown.*side.value = static_cast<int>(std::lround(std::clamp(Val_Comma(text), 0.0, double{largestTyped})));
      changed = true;
      const Syncing guard(syncing);
      side.bar->setValue(largestMargin - std::max(0, shown.*side.value - side.clip));
    });
  }
  connect(ui->btnTake, &QPushButton::clicked, this, &FrmRand::accept);
  connect(ui->btnClose, &QPushButton::clicked, this, &FrmRand::reject);
  Show_Values();
}

FrmRand::~FrmRand() = default;

void FrmRand::Show_Values() {
  for (const Side& side : sides) Print_Margin_Text(side);
}

void FrmRand::Print_Margin_Text(const Side& side) {
  const Syncing guard(syncing);
  side.bar->setValue(largestMargin - (shown.*side.value - side.clip));
  side.box->setText(QString::number(shown.*side.value));
}

bool FrmRand::Take() {
  if (!Take_Sheet_Margins(shown)) return false;
  changed = false;
  return true;
}

void FrmRand::accept() {
  if (Take()) QDialog::accept();
}

void FrmRand::reject() {
  if (changed &&
      Message_Box(print_texts::keepMargins, MsgButtons::YesNo, MsgIcon::Question, print_texts::marginsTitle) ==
          MsgAnswer::Yes &&
      !Take())
    return;
  QDialog::reject();
}

void Show_frmRand(QWidget* parent) { FrmRand(parent).exec(); }
