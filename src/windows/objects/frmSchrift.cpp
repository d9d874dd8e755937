#include "windows/objects/frmSchrift.h"

#include <QFontDatabase>
#include <QShowEvent>

#include "edit/symbols.h"
#include "hand/activation.h"
#include "platform/message_box.h"
#include "platform/text.h"
#include "state/dialog_hooks.h"
#include "state/events.h"
#include "state/global_state.h"
#include "state/map_state.h"
#include "store/entry.h"
#include "ui_frmSchrift.h"
#include "windows/common/frm_dialogs.h"
#include "windows/common/show_beside.h"
#include "windows/common/window_support.h"
#include "windows/objects/frmTblSymb.h"
#include "windows/objects/frm_symbol_table.h"

namespace {

const QString title = QStringLiteral("Schrift");
const QString helpPage = QStringLiteral("Schrift.htm");

QStringList Families() {
  QStringList families = QFontDatabase::families();
  for (const char* always : {"Arial", "Courier New", "Symbol", "Times New Roman", "Wingdings"})
    families << QLatin1String(always);
  families.removeIf([](const QString& family) { return !Family_Fits(family); });
  families.removeDuplicates();
  families.sort(Qt::CaseInsensitive);
  return families;
}

QString Comma_Number(double value) { return Number_Text(value).replace(u'.', u','); }

// Colours of the target: of its row, else of the next entry.
EntryRow Row_Of_Target() {
  EntryRow row;
  row.VG = CurVG;
  row.HG = CurHG;
  row.RA = CurRA;
  return Font_Target() == FontTarget::Entry ? *Row_In_Hand() : row;
}

}  // namespace

FrmSchrift::FrmSchrift(QWidget* parent, std::optional<OtherFont> otherFont)
    : QDialog(parent), ui(std::make_unique<Ui::FrmSchrift>()), other(std::move(otherFont)) {
  ui->setupUi(this);
  Prepare_Dialog(*this, helpPage);
  setWindowModality(other ? Qt::WindowModal : Qt::NonModal);
  ui->pic->Set_Turned(true);
  Fill_Lists();
  Connect_Controls();
  if (!other) {
    closedListener = events.MapClosed.Connect([this] { close(); });
    stateListener = events.StateChanged.Connect([this] { Sync(); });
  }
  Sync();
  ui->cmbFont->setFocus();
}

FrmSchrift::~FrmSchrift() {
  events.MapClosed.Disconnect(closedListener);
  events.StateChanged.Disconnect(stateListener);
}

void FrmSchrift::Fill_Lists() {
  ui->cmbFont->addItems(Families());
  for (const int degrees : {0, 15, 30, 45, 60, 75, 90, 120, 135, 150, 180, 210, 225, 240, 270, 300, 315, 330})
    ui->cmbWinkel->addItem(QString::number(degrees));
}

void FrmSchrift::Connect_Controls() {
  for (QComboBox* list : {ui->cmbFont, ui->cmbFontsize, ui->cmbWinkel, ui->cmbScript})
    connect(list, &QComboBox::currentTextChanged, this, &FrmSchrift::Show_Preview);
  for (QAbstractButton* button :
       {static_cast<QAbstractButton*>(ui->optNorm), static_cast<QAbstractButton*>(ui->optKursiv),
        static_cast<QAbstractButton*>(ui->chkFett), static_cast<QAbstractButton*>(ui->chkUnterstr),
        static_cast<QAbstractButton*>(ui->chkTransp), static_cast<QAbstractButton*>(ui->chkPerspex)})
    connect(button, &QAbstractButton::toggled, this, &FrmSchrift::Show_Preview);
  connect(ui->cmdRotate, &QPushButton::clicked, this, &FrmSchrift::Rotate);
  connect(ui->cmdZeichen, &QPushButton::clicked, this, &FrmSchrift::Show_Characters);
  connect(ui->cmdFarbe, &QPushButton::clicked, this, [] {
    if (dialogHooks.ColorWindow) dialogHooks.ColorWindow();
  });
  connect(ui->cmdTake, &QPushButton::clicked, this, &FrmSchrift::Take);
  connect(ui->cmdClose, &QPushButton::clicked, this, &QDialog::close);
  connect(ui->cmdHelp, &QPushButton::clicked, this, [this] { Show_Help(this, helpPage); });
}

void FrmSchrift::Set_Caption(const QString& bookmark, const QString& text) {
  captionFor = bookmark;
  caption = text;
  Sync();
}

void FrmSchrift::Sync() {
  const FontChoice now = other ? other->start : Load_Font_Spec();
  const QString target = QString::number(static_cast<int>(other ? FontTarget::Next : Font_Target())) + Map.InHand;
  // What was chosen and not yet taken stays, unless another entry came into the hand.
  if (target != shownFor || now != shown) {
    shown = now;
    shownFor = target;
    Show_Choice();
  }
  Show_Title();
  Show_Preview();
}

void FrmSchrift::Show_Choice() {
  const Syncing guard(syncing);
  const FontSpec& font = shown.font;
  if (ui->cmbFont->findText(font.family, Qt::MatchFixedString) < 0) ui->cmbFont->insertItem(0, font.family);
  ui->cmbFont->setCurrentIndex(ui->cmbFont->findText(font.family, Qt::MatchFixedString));
  Fill_Font_Sizes(*ui->cmbFontsize, shown.size);
  Fill_Scripts(*ui->cmbScript, font.charset);
  ui->cmbWinkel->setCurrentText(Comma_Number(font.angle));
  ui->optKursiv->setChecked(font.italic);
  ui->optNorm->setChecked(!font.italic);
  ui->chkFett->setChecked(font.bold);
  ui->chkUnterstr->setChecked(font.underline);
  ui->chkTransp->setChecked(font.transparent);
  ui->chkPerspex->setChecked(Map.Perspex);
}

void FrmSchrift::Show_Title() {
  const FontTarget target = other ? FontTarget::Next : Font_Target();
  QString hint;
  if (target == FontTarget::Next && !other)
    hint = QStringLiteral("Hinweis: Kein Eintrag aktiviert! Die Schrift gilt für den nächsten Text.");
  if (!Font_Installed(shown.font.family))
    hint = QStringLiteral("Die Schriftart \"%1\" ist auf diesem Rechner nicht vorhanden.").arg(shown.font.family);
  ui->lblHinweis->setText(hint);
  ui->lblHinweis->setVisible(!hint.isEmpty());
  if (other) return setWindowTitle(other->title);
  ui->cmdFarbe->setToolTip(QStringLiteral("Farbe für Text"));
  if (target != FontTarget::Entry) return setWindowTitle(title);
  if (Map.InHand == captionFor) return setWindowTitle(caption);
  const KeepCurrentRow keep;
  rsEntries->SetBookmark(Map.InHand);
  setWindowTitle(QStringLiteral("Schrift ändern: ") + Entry_Name().trimmed());
}

FontChoice FrmSchrift::Read_Controls() const {
  FontChoice choice = shown;
  FontSpec& font = choice.font;
  font.family = ui->cmbFont->currentText();
  font.bold = ui->chkFett->isChecked();
  font.italic = ui->optKursiv->isChecked();
  font.underline = ui->chkUnterstr->isChecked();
  font.transparent = ui->chkTransp->isChecked();
  font.charset = Chosen_Script(*ui->cmbScript);
  if (const auto angle = Number_Typed(ui->cmbWinkel->currentText())) font.angle = *angle;
  const double size = Val_Comma(ui->cmbFontsize->currentText().trimmed());
  if (size >= smallestFontSize && size <= largestFontSize) choice.size = size;
  return choice;
}

QString FrmSchrift::Sample() const { return other ? other->sample : Sample_Text(); }

TextLook FrmSchrift::Look() const {
  const EntryRow row = Row_Of_Target();
  TextLook look;
  look.frame = FrameWord::Parse(row.RA);
  look.colors = {Color_Of(row.VG), Color_Of(row.HG), Color_Of(look.frame.color)};
  look.perspex = ui->chkPerspex->isChecked();
  return look;
}

void FrmSchrift::Show_Preview() {
  if (syncing > 0) return;
  const FontChoice choice = Read_Controls();
  ui->txtMuster->Show_Sample(choice, Sample(), Look());
  ui->pic->Show_Sample(choice, Sample(), Look());
  if (characters) characters->Show_Font(choice.font.family, choice.font.charset);
  Set_Buttons();
}

// A text that was changed can be taken even if its font is as before.
void FrmSchrift::Set_Buttons() {
  const bool pending = !other && Map.Text2.Tag == EditTag::Change;
  const bool changed = Read_Controls() != shown || ui->chkPerspex->isChecked() != Map.Perspex;
  const bool odd = !Number_Typed(ui->cmbWinkel->currentText()) || !Number_Typed(ui->cmbFontsize->currentText());
  ui->cmdTake->setEnabled(changed || pending || odd || other);
  ui->cmdZeichen->setEnabled(!other);
  ui->cmdFarbe->setEnabled(!other && dialogHooks.ColorWindow);
}

void FrmSchrift::Rotate() {
  const double angle = Read_Controls().font.angle + 90;
  ui->cmbWinkel->setCurrentText(Comma_Number(angle >= 360 ? angle - 360 : angle));
}

void FrmSchrift::Show_Characters() {
  if (!characters) {
    characters = new FrmTblSymb(this);
    connect(characters, &FrmTblSymb::Picked, this, &FrmSchrift::Put);
  }
  const FontChoice choice = Read_Controls();
  characters->Show_Font(choice.font.family, choice.font.charset);
  characters->show();
  characters->raise();
  characters->activateWindow();
}

// The font the character was chosen in comes with it.
void FrmSchrift::Put(QChar character) {
  if (Read_Controls() != shown) Take();
  try {
    Put_Character(character);
  } catch (const Error& error) {
    Message_Box(error.text, MsgButtons::Ok, MsgIcon::Critical, QStringLiteral("Fehler"));
  }
  Sync();
}

bool FrmSchrift::Check_Numbers() {
  const double size = Number_Typed(ui->cmbFontsize->currentText()).value_or(0);
  const bool goodSize = size >= smallestFontSize && size <= largestFontSize;
  if (goodSize && Number_Typed(ui->cmbWinkel->currentText())) return true;
  Message_Box(goodSize ? QStringLiteral("Bitte geben Sie den Winkel in Grad als Zahl ein.")
                       : QStringLiteral("Bitte geben Sie eine Schriftgröße zwischen 1 und 80 ein."),
              MsgButtons::Ok, MsgIcon::Information, title);
  QComboBox* wrong = goodSize ? ui->cmbWinkel : ui->cmbFontsize;
  wrong->setFocus();
  wrong->lineEdit()->selectAll();
  return false;
}

void FrmSchrift::Take() {
  if (!Check_Numbers()) return;
  const FontChoice choice = Read_Controls();
  try {
    if (other) {
      other->start = choice;
      other->taken(choice);
      return accept();
    }
    Set_Perspex(ui->chkPerspex->isChecked());
    Take_Font(choice);
  } catch (const Error& error) {
    Message_Box(error.text, MsgButtons::Ok, MsgIcon::Critical, QStringLiteral("Fehler"));
  }
  Sync();
}

// Opening ------------------------------------------------------------------------------------------------------------

void Show_frmSchrift(QWidget* parent, const QString& bookmark, const QString& caption) {
  auto* window = Show_Beside<FrmSchrift>(parent);
  if (!bookmark.isEmpty()) window->Set_Caption(bookmark, caption);
}
