#include "windows/objects/frmSymbol.h"

#include <QFontDatabase>
#include <QShowEvent>

#include "edit/symbols.h"
#include "platform/text.h"
#include "state/dialog_hooks.h"
#include "state/events.h"
#include "state/run_guarded.h"
#include "ui_frmSymbol.h"
#include "windows/common/frm_dialogs.h"
#include "windows/common/show_beside.h"
#include "windows/common/window_support.h"
#include "windows/objects/frmSchrift.h"

namespace {

// Fonts whose names tell that they hold symbols come after the two that are always there.
QStringList Symbol_Families() {
  QStringList families = {QStringLiteral("Wingdings"), QStringLiteral("Symbol")};
  for (const QString& family : QFontDatabase::families()) {
    const bool symbols = family.contains(QLatin1String("Wing")) || family.contains(QLatin1String("Dingbats"));
    if (symbols && Family_Fits(family) && !families.contains(family)) families << family;
  }
  return families;
}

}  // namespace

FrmSymbol::FrmSymbol(QWidget* parent) : QDialog(parent), ui(std::make_unique<Ui::FrmSymbol>()) {
  ui->setupUi(this);
  Prepare_Dialog(*this, QStringLiteral("Schrift.htm"));
  setWindowModality(Qt::NonModal);
  ui->cmbFont->addItems(Symbol_Families());
  connect(ui->cmbFont, &QComboBox::currentTextChanged, this, &FrmSymbol::Font_Show);
  connect(ui->cmbScript, &QComboBox::currentTextChanged, this, &FrmSymbol::Font_Show);
  connect(ui->cmbScript, &QComboBox::activated, this, &FrmSymbol::Take_Look);
  connect(ui->cmbFontsize, &QComboBox::activated, this, &FrmSymbol::Take_Look);
  connect(ui->rgcard, &SymbolTable::Picked, this, &FrmSymbol::Pick);
  connect(ui->cmdFarbe, &QPushButton::clicked, this, [] {
    if (dialogHooks.ColorWindow) dialogHooks.ColorWindow();
  });
  connect(ui->cmdClose, &QPushButton::clicked, this, &QDialog::close);
  connect(ui->cmdHelp, &QPushButton::clicked, this, [this] { Show_Help(this, QStringLiteral("Schrift.htm")); });
  closedListener = events.MapClosed.Connect([this] { close(); });
  stateListener = events.StateChanged.Connect([this] { Sync(); });
  shown.size = 0;  // differs from every font
  Sync();
  ui->rgcard->setFocus();
}

FrmSymbol::~FrmSymbol() {
  events.MapClosed.Disconnect(closedListener);
  events.StateChanged.Disconnect(stateListener);
}

void FrmSymbol::Sync() {
  ui->lblHinweis->setText(Symbol_In_Hand() ? QString()
                                           : QStringLiteral("Das gewählte Zeichen gilt für das nächste Symbol."));
  ui->cmdFarbe->setEnabled(static_cast<bool>(dialogHooks.ColorWindow));
  const FontChoice choice = Symbol_Font();
  const Syncing guard(syncing);
  if (choice != shown) {
    shown = choice;
    if (ui->cmbFont->findText(choice.font.family) < 0) ui->cmbFont->addItem(choice.font.family);
    ui->cmbFont->setCurrentText(choice.font.family);
    Fill_Scripts(*ui->cmbScript, choice.font.charset);
    Fill_Font_Sizes(*ui->cmbFontsize, choice.size);
  }
  Font_Show();
  ui->rgcard->Select(Symbol_Sign().isEmpty() ? QChar() : Symbol_Sign().at(0));
}

void FrmSymbol::Font_Show() {
  const QString caption = QStringLiteral("Schriftart: ") + ui->cmbFont->currentText();
  setWindowTitle(caption);
  ui->lblFont->setText(caption);
  ui->rgcard->Set_Font(ui->cmbFont->currentText(), Chosen_Script(*ui->cmbScript));
}

FontChoice FrmSymbol::Read_Controls() const {
  FontChoice choice = shown;
  choice.font.family = ui->cmbFont->currentText();
  choice.font.charset = Chosen_Script(*ui->cmbScript);
  const double size = Val_Comma(ui->cmbFontsize->currentText());
  if (size >= smallestFontSize && size <= largestFontSize) choice.size = size;
  return choice;
}

void FrmSymbol::Take_Look() {
  if (syncing > 0) return;
  Run_Guarded([this] { Take_Symbol(Read_Controls(), Symbol_Sign()); });
  Sync();
}

void FrmSymbol::Pick(QChar character) {
  Run_Guarded([&] { Take_Symbol(Read_Controls(), character); });
  Sync();
}

void Show_frmSymbol(QWidget* parent) { Show_Beside<FrmSymbol>(parent); }
