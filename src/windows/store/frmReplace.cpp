#include "windows/store/frmReplace.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QTextBlock>

#include "maps/map_open.h"
#include "state/events.h"
#include "state/run_guarded.h"
#include "ui_frmReplace.h"
#include "windows/common/frm_dialogs.h"
#include "windows/common/show_beside.h"

FrmReplace::FrmReplace(QWidget* parent) : QDialog(parent), ui(std::make_unique<Ui::FrmReplace>()) {
  ui->setupUi(this);
  Prepare_Dialog(*this, QStringLiteral("Suchen.htm"));
  setWindowModality(Qt::NonModal);
  list = ui->cmbSearch;
  for (QPlainTextEdit* edit : {ui->cmbSearch, ui->cmbReplace}) {
    edit->installEventFilter(this);
    edit->setFixedHeight(5 * fontMetrics().lineSpacing() + 12);
  }
  ui->cmbSearch->setPlainText(state.search.join(u'\n'));
  ui->cmbSearch->moveCursor(QTextCursor::End);
  connect(ui->btnEintrag, &QPushButton::clicked, this, [this] { Add_Lines({QStringLiteral("Eintrag =")}); });
  connect(ui->btnSchrift, &QPushButton::clicked, this, [this] { Add_Lines({QStringLiteral("Schrift =")}); });
  connect(ui->btnFontSize, &QPushButton::clicked, this, [this] { Add_Lines({QStringLiteral("Größe =")}); });
  connect(ui->btnFarbe, &QPushButton::clicked, this, [this] {
    Add_Lines({QStringLiteral("VG ="), QStringLiteral("HG ="), QStringLiteral("RA =")});
  });
  connect(ui->btnPaste, &QPushButton::clicked, this, [this] {
    list->insertPlainText(QGuiApplication::clipboard()->text());
    list->setFocus();
  });
  connect(ui->btnSearch, &QPushButton::clicked, this, [this] { Run([this] { Search_Next(state); }); });
  connect(ui->btnReplace, &QPushButton::clicked, this, [this] { Run([this] { Replace_Current(state); }); });
  connect(ui->btnReplaceAll, &QPushButton::clicked, this, [this] { Run([this] { Replace_All(state); }); });
  connect(ui->btnBack, &QPushButton::clicked, this, [this] {
    Run([this] {
      Take_Replacements_Back(state);
      Table_Replaced();
    });
  });
  connect(ui->cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
  closedListener = events.MapClosed.Connect([this] { reject(); });
  // Two lines below both lists, so that they stand side by side.
  ui->lblSearch->setMinimumHeight(2 * fontMetrics().lineSpacing());
  ui->lblSearch->setAlignment(Qt::AlignTop);
  Show_State();
  ui->cmbSearch->setFocus();
}

FrmReplace::~FrmReplace() { events.MapClosed.Disconnect(closedListener); }

// Enter searches; a further line begins with Shift+Enter or one of the buttons.
bool FrmReplace::eventFilter(QObject* watched, QEvent* event) {
  auto* edit = static_cast<QPlainTextEdit*>(watched);
  if (event->type() == QEvent::FocusIn) list = edit;
  if (event->type() == QEvent::KeyPress) {
    const auto* key = static_cast<QKeyEvent*>(event);
    const bool enter = key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter;
    if (enter && !key->modifiers().testFlag(Qt::ShiftModifier)) {
      (edit == ui->cmbSearch ? ui->btnSearch : ui->btnReplace)->click();
      return true;
    }
  }
  return QDialog::eventFilter(watched, event);
}

// An empty line is filled first; the cursor then waits behind the first new "=".
void FrmReplace::Add_Lines(const QStringList& lines) {
  QStringList all = list->toPlainText().split(u'\n');
  while (!all.isEmpty() && all.back().trimmed().isEmpty()) all.removeLast();
  const auto first = static_cast<int>(all.size());
  all += lines;
  list->setPlainText(all.join(u'\n'));
  QTextCursor cursor(list->document()->findBlockByNumber(first));
  cursor.movePosition(QTextCursor::EndOfBlock);
  list->setTextCursor(cursor);
  list->setFocus();
}

void FrmReplace::Read_Controls() {
  state.search = ui->cmbSearch->toPlainText().split(u'\n');
  state.replace = ui->cmbReplace->toPlainText().split(u'\n');
  state.options.matchCase = ui->chkGrossKlein->isChecked();
  state.options.wholeWords = ui->chkWort->isChecked();
}

void FrmReplace::Show_State() {
  ui->btnSearch->setText(state.Caption());
  ui->lblSearch->setText(state.Found_Text());
  ui->lblReplace->setText(state.Replaced_Text());
}

void FrmReplace::Run(const std::function<void()>& work) {
  Read_Controls();
  Run_Guarded(work);
  Show_State();
}

void Show_frmReplace(QWidget* parent) { Show_Beside<FrmReplace>(parent); }
