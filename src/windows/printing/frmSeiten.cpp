#include "windows/printing/frmSeiten.h"

#include <QComboBox>
#include <QCoreApplication>
#include <QPointer>
#include <QToolButton>

#include "platform/files.h"
#include "platform/message_box.h"
#include "platform/text.h"
#include "printing/print_texts.h"
#include "printing/sheet_painter.h"
#include "state/events.h"
#include "state/global_state.h"
#include "state/mdi_state.h"
#include "state/run_guarded.h"
#include "ui_frmSeiten.h"
#include "windows/common/frm_dialogs.h"
#include "windows/common/window_support.h"
#include "windows/printing/frm_preview_picture.h"
#include "windows/printing/frm_print.h"

FrmSeiten::FrmSeiten(QWidget* parent)
    : QDialog(parent), ui(std::make_unique<Ui::FrmSeiten>()), setup(Load_Page_Setup()) {
  ui->setupUi(this);
  Prepare_Dialog(*this, QStringLiteral("Drucken.htm"));
  setWindowModality(Qt::NonModal);
  setWindowFlag(Qt::WindowMaximizeButtonHint);
  for (QLineEdit* box : {ui->txtFaktor, ui->txtBreite, ui->txtHoehe, ui->txtFtSize}) {
    box->setAlignment(Qt::AlignRight);
    Give_Room(*box, QStringLiteral("000,0000"));
  }
  Kill_Quietly(ProgramFolder + QStringLiteral("/Temp.bmp"));  // of former versions
  Connect_Boxes();
  Connect_Buttons();
  Show_Choices();
  Set_Anzeige();
  closedListener = events.MapClosed.Connect([this] { Close_Now(); });
  tableListener = events.TableChanged.Connect([this] { Table_Changed(); });
  ui->txtFaktor->setFocus();
  ui->txtFaktor->selectAll();
}

FrmSeiten::~FrmSeiten() {
  events.MapClosed.Disconnect(closedListener);
  events.TableChanged.Disconnect(tableListener);
}

void FrmSeiten::Connect_Boxes() {
  const auto typed = [this](QLineEdit* box, void (*take)(PageSetup&, const QString&)) {
    connect(box, &QLineEdit::textEdited, this, [this, box, take](const QString& text) {
      take(setup, text);
      Show_Boxes(box);
    });
  };
  typed(ui->txtFaktor, Type_Factor);
  typed(ui->txtBreite, Type_Width);
  typed(ui->txtHoehe, Type_Height);
  connect(ui->txtFtSize, &QLineEdit::textEdited, this, [this](const QString& text) { setup.txtFtSize = text; });
  connect(ui->cmbPages, &QComboBox::activated, this, [this](int index) {
    Choose_Pages(setup, index);
    Show_Boxes();
    Show_Preview();
  });
}

void FrmSeiten::Connect_Buttons() {
  const auto step = [this](int steps) {
    Step_Factor(setup, steps);
    Set_Anzeige();
  };
  for (QToolButton* button : {ui->btnSpin, ui->btnSpinDown}) button->setAutoRepeat(true);
  connect(ui->btnSpin, &QToolButton::clicked, this, [step] { step(1); });
  connect(ui->btnSpinDown, &QToolButton::clicked, this, [step] { step(-1); });
  connect(ui->btnShow, &QPushButton::clicked, this, [this] {
    if (picture == Picture::Making) {
      picture = Picture::Stopped;
      return;
    }
    if (!Take_Font()) return;
    Take_Typed(setup);
    if (picture != Picture::There) return Begin();
    Set_Anzeige();
  });
  connect(ui->btnFtSize, &QPushButton::clicked, this, [this] { Take_Font(); });
  connect(ui->btnDF, &QPushButton::clicked, this, [this] { Run_Guarded([this] { Choose_Format(); }); });
  connect(ui->btnRAND, &QPushButton::clicked, this, [this] { Run_Guarded([this] { Choose_Margins(); }); });
  connect(ui->Ok_Butt, &QPushButton::clicked, this, [this] { Run_Guarded([this] { Ok_Butt_Click(); }); });
  connect(ui->btnDruck, &QPushButton::clicked, this, [this] {
    QWidget* mainWindow = parentWidget();  // this window goes while it prints
    Run_Guarded([mainWindow] { Print_Whole_Map(mainWindow); });
  });
  connect(ui->btnHelp, &QPushButton::clicked, this, [this] { Show_Help(this, QStringLiteral("Drucken.htm")); });
  connect(ui->btnClose, &QPushButton::clicked, this, &FrmSeiten::reject);
}

void FrmSeiten::Begin() {
  show();
  const QPointer<FrmSeiten> self(this);
  Make_Picture();
  if (self) Set_Anzeige();
}

// A large scan takes its time; btnShow stops it meanwhile.
void FrmSeiten::Make_Picture() {
  const QPointer<FrmSeiten> self(this);
  picture = Picture::Making;
  const QString caption = ui->btnShow->text();
  ui->btnShow->setText(QStringLiteral("&Abbrechen"));
  ui->btnShow->setEnabled(true);
  Picture now = Picture::None;
  try {
    const BusyPointer busy;
    const auto goOn = [&self] {
      QCoreApplication::processEvents();
      return self && self->picture == Picture::Making && frmMDI.MapOpen;
    };
    PreviewMap map = Make_Preview_Map(goOn);
    ui->Picture1->Show_Map(std::move(map));
    now = Picture::There;
  } catch (const PrintStopped&) {
    now = Picture::Stopped;
  } catch (const Error&) {
    Message_Box(print_texts::noPreview, MsgButtons::Ok, MsgIcon::Warning, windowTitle());
  }
  if (!self) return;
  picture = now;
  ui->btnShow->setText(caption);
}

// All texts and the picture by the settings.
void FrmSeiten::Set_Anzeige() {
  ::Set_Anzeige(setup);
  Show_Boxes();
  Show_Preview();
  ui->Ok_Butt->setEnabled(true);
  ui->btnDruck->setEnabled(true);
}

void FrmSeiten::Show_Boxes(const QObject* typedInto) {
  const Syncing guard(syncing);
  const std::pair<QLineEdit*, const QString&> boxes[] = {{ui->txtFaktor, setup.txtFaktor},
                                                         {ui->txtBreite, setup.txtBreite},
                                                         {ui->txtHoehe, setup.txtHoehe},
                                                         {ui->txtFtSize, setup.txtFtSize}};
  for (const auto& [box, text] : boxes)
    if (box != typedInto) box->setText(text);
  ui->lblFtSizeFak->setText(QStringLiteral("* ") + Format(setup.settings.fontFactor, QStringLiteral("0.00")));
  Set_btnShow(setup.Eingabe != PageInput::Ok);
}

void FrmSeiten::Show_Preview() {
  const PrintGeometry geometry = setup.Geometry();
  if (!geometry.valid) {
    ui->Label2->setText(print_texts::noRoom);
    ui->Picture1->Show_Text(print_texts::noPreview);
    return;
  }
  const int pages = geometry.Pages();
  ui->Label2->setText(pages == 1 ? QStringLiteral("1 Druckseite")
                                 : QStringLiteral("%1 Druckseiten: %2 nebeneinander, %3 untereinander")
                                       .arg(pages)
                                       .arg(geometry.across)
                                       .arg(geometry.down));
  if (picture == Picture::Stopped)
    ui->Picture1->Show_Text(print_texts::previewStopped);
  else
    ui->Picture1->Show_Sheets(geometry, setup.paper);
}

void FrmSeiten::Show_Choices() {
  ui->cmbPages->clear();
  for (const PageChoice& choice : setup.PageChoices)
    ui->cmbPages->addItem(choice.pages == 1 ? QStringLiteral("1 Seite")
                                            : QStringLiteral("%1 Seiten").arg(choice.pages));
  ui->cmbPages->setCurrentIndex(-1);
}

void FrmSeiten::Set_btnShow(bool waiting) { ui->btnShow->setEnabled(waiting || picture != Picture::There); }

void FrmSeiten::Choose_Format() {
  const auto orientation = The_Printer().setup(setup.settings.orientation);
  if (!orientation) return;
  setup.settings.orientation = *orientation;
  setup.paper = The_Printer().paper(*orientation);
  Fill_Page_Choices(setup);
  Show_Choices();
  Set_Anzeige();
}

void FrmSeiten::Choose_Margins() {
  Show_frmRand(this);
  Take_Margins(setup);
  Show_Choices();
  Set_Anzeige();
}

bool FrmSeiten::Take_Font() {
  try {
    Take_Font_Factor(setup);
    Show_Boxes();
    return true;
  } catch (const Error& error) {
    Message_Box(error.text, MsgButtons::Ok, MsgIcon::Warning, windowTitle());
    ui->txtFtSize->setFocus();
    ui->txtFtSize->selectAll();
    return false;
  }
}

void FrmSeiten::Ok_Butt_Click() {
  if (!Take_Font()) return;
  ::Ok_Butt_Click(setup);
  Set_Anzeige();
}

void FrmSeiten::Table_Changed() {
  if (!isVisible() || !rsEntries || rsEntries->Editing()) return;
  const PrintSettings kept = Read_Print_Settings();
  if (kept.left == setup.settings.left && kept.right == setup.settings.right && kept.top == setup.settings.top &&
      kept.bottom == setup.settings.bottom)
    return;
  Take_Margins(setup);
  Show_Choices();
  Set_Anzeige();
}

void FrmSeiten::Offer() {
  if (Take_Font()) Offer_Settings(setup);
}

void FrmSeiten::Close_Now() { QDialog::reject(); }

void FrmSeiten::reject() {
  Run_Guarded([this] { Offer(); });
  QDialog::reject();
}

void Show_frmSeiten(QWidget* parent) {
  if (auto* open = parent->findChild<FrmSeiten*>()) {
    open->raise();
    open->activateWindow();
    return;
  }
  auto* window = new FrmSeiten(parent);
  window->setAttribute(Qt::WA_DeleteOnClose);
  window->Begin();
}
