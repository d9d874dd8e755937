#include "windows/import/frmWpImport.h"

#include "platform/text.h"
#include "state/events.h"
#include "state/global_state.h"
#include "store/frame_word.h"
#include "ui_frmWpImport.h"
#include "windows/common/frm_dialogs.h"
#include "windows/objects/frmFarb.h"
#include "windows/objects/frmSchrift.h"

namespace {

const QSize boxSize(40, 18);

void Show_Box(QLabel& label, QRgb color) {
  QPixmap picture(boxSize);
  picture.fill(QColor::fromRgb(color));
  label.setPixmap(picture);
}

}  // namespace

FrmWpImport::FrmWpImport(QWidget* parent) : QDialog(parent), ui(std::make_unique<Ui::FrmWpImport>()) {
  ui->setupUi(this);
  Prepare_Dialog(*this, QStringLiteral("GPS.htm#aussehen"));
  setWindowModality(Qt::NonModal);
  connect(ui->cmdFarbe, &QPushButton::clicked, this, [this] { Show_frmFarb(this, FarbFor::Waypoints); });
  connect(ui->cmdSchrift, &QPushButton::clicked, this, &FrmWpImport::Choose_Font);
  connect(ui->cmdImport, &QPushButton::clicked, this, &FrmWpImport::Import_Wanted);
  connect(ui->cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
  closedListener = events.MapClosed.Connect([this] { close(); });
  stateListener = events.StateChanged.Connect([this] { Show_Look(); });
  Show_Look();
}

FrmWpImport::~FrmWpImport() {
  events.MapClosed.Disconnect(closedListener);
  events.StateChanged.Disconnect(stateListener);
}

void FrmWpImport::Set_Content(GpsContent content) {
  const bool waypoints = content == GpsContent::Waypoints;
  setWindowTitle(waypoints ? QStringLiteral("Wegpunkte importieren") : QStringLiteral("Tracks importieren"));
  ui->cmdSchrift->setEnabled(waypoints);
  ui->chkBemerkung->setEnabled(waypoints);
  Show_Look();
}

void FrmWpImport::Show_Look() {
  Show_Box(*ui->lblVG, Color_Of(CurVG));
  Show_Box(*ui->lblHG, Color_Of(CurHG));
  const FrameWord frame = FrameWord::Parse(CurRA);
  Show_Box(*ui->lblRA, Color_Of(frame.color));
  ui->lblRAtxt->setText(frame.framed ? QStringLiteral("Rahmen") : QStringLiteral("ohne Rahmen"));
  ui->lblFont->setText(font.font.family);
  ui->lblFontSize->setText(Number_Text(font.size).replace(u'.', u',') + QStringLiteral(" Punkt"));
}

void FrmWpImport::Choose_Font() {
  FrmSchrift window(this, OtherFont{QStringLiteral("Schrift: Importierte Wegpunkte"), QStringLiteral("Wegpunkt"), font,
                                    [this](const FontChoice& taken) { font = taken; }});
  window.exec();
  Show_Look();
}

WpChoice FrmWpImport::Choice() const {
  WpChoice choice;
  choice.mode = ui->optEinzel->isChecked() ? WpMode::Single : ui->optMark->isChecked() ? WpMode::Marked : WpMode::All;
  choice.existing = ui->chkVorhandene->isChecked() ? Existing::Taken : Existing::Skipped;
  choice.look = Usual_Gps_Look();
  choice.look.font = font;
  choice.look.withComment = ui->chkBemerkung->isChecked();
  return choice;
}
