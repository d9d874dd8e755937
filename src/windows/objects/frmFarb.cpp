#include "windows/objects/frmFarb.h"

#include <QButtonGroup>
#include <QColorDialog>

#include "platform/message_box.h"
#include "platform/surface.h"
#include "state/events.h"
#include "state/global_state.h"
#include "state/run_guarded.h"
#include "ui_frmFarb.h"
#include "windows/common/show_beside.h"

namespace {

constexpr int startHeight = 247;  // 3700 twips
const QSize boxSize(60, 26);

// One line, and not too long for a title bar.
QString Short_Name(const QString& name) {
  const QString line = name.simplified();
  constexpr int longest = 40;
  return line.size() <= longest ? line : line.left(longest - 1) + QChar(0x2026);
}

void Show_Box(QLabel& box, QRgb color, bool used) {
  QPixmap picture(boxSize);
  picture.fill(used ? QColor::fromRgb(color) : QColor(Qt::transparent));
  box.setPixmap(picture);
}

}  // namespace

FrmFarb::FrmFarb(QWidget* parent)
    : LookWindow(parent, QStringLiteral("Farben.htm")), ui(std::make_unique<Ui::FrmFarb>()) {
  ui->setupUi(this);
  auto* group = new QButtonGroup(this);
  const std::pair<QToolButton*, ColorOf> choices[] = {
      {ui->btnVG, ColorOf::VG}, {ui->btnHG, ColorOf::HG}, {ui->btnRA, ColorOf::RA}};
  for (const auto& [button, which] : choices) {
    group->addButton(button);
    connect(button, &QToolButton::clicked, this, [this, which = which] { Choose(which); });
  }
  connect(ui->tabFarben, &ColorTable::Picked, this, &FrmFarb::Take_Color);
  connect(ui->optRahmen, &QRadioButton::clicked, this, [this] { Take_Frame(true); });
  connect(ui->optOhne, &QRadioButton::clicked, this, [this] { Take_Frame(false); });
  connect(ui->btnPalette, &QPushButton::toggled, this, &FrmFarb::Show_Choice);
  connect(ui->cmdStandart, &QPushButton::clicked, this, &FrmFarb::Standard_Colors);
  connect(ui->cmdClose, &QPushButton::clicked, this, &QDialog::close);
  resize(width(), startHeight);
  ui->tabFarben->setFocus();
}

FrmFarb::~FrmFarb() = default;

void FrmFarb::Set_For(FarbFor what) {
  purpose = what;
  if (what == FarbFor::Frame) chosen = ColorOf::RA;
  look = Read_Look();
  Show_Look();
}

EntryLook FrmFarb::Read_Look() const { return purpose == FarbFor::Waypoints ? Next_Look() : Look_In_Hand(); }

QString FrmFarb::Caption() const {
  if (purpose == FarbFor::Waypoints) return QStringLiteral("Farbe: Importierte Wegpunkte");
  const QString name = Short_Name(look.name);
  switch (look.of) {
    case LookOf::Text:
    case LookOf::Symbol:
      if (purpose == FarbFor::Frame) return QStringLiteral("Rahmenfarbe für Text: ") + name;
      return (look.of == LookOf::Text ? QStringLiteral(" Farbe für Text: ") : QStringLiteral(" Farbe für: Text ")) +
             name;
    case LookOf::NewText:
    case LookOf::Next:
      return QStringLiteral("Farbe für Text");
    case LookOf::Picture:
      return QStringLiteral(" Rahmenfarbe für Bild: ") + name;
    case LookOf::Figure:
      return QStringLiteral(" Farbe für Figur: ") + name;
    default:
      return QStringLiteral("Farbe für ") + name;
  }
}

void FrmFarb::Show_Look() {
  if (look.of == LookOf::Next && purpose == FarbFor::Frame) purpose = FarbFor::Entry;
  setWindowTitle(Caption());
  ui->btnVG->setEnabled(look.Has_Color(ColorOf::VG));
  ui->btnHG->setEnabled(look.Has_Color(ColorOf::HG));
  ui->btnRA->setEnabled(look.Has_Color(ColorOf::RA));
  ui->optRahmen->setEnabled(look.Has_Frame());
  ui->optOhne->setEnabled(look.Has_Frame());
  (look.frame.framed ? ui->optRahmen : ui->optOhne)->setChecked(true);
  if (!look.Has_Color(chosen)) chosen = look.Has_Color(ColorOf::VG) ? ColorOf::VG : ColorOf::RA;
  Set_Farben();
  Show_Choice();
}

void FrmFarb::Set_Farben() {
  const EntryColors colors = Colors_Of(look);
  Show_Box(*ui->picVG, colors.VG, look.Has_Color(ColorOf::VG));
  Show_Box(*ui->picHG, colors.HG, look.Has_Color(ColorOf::HG));
  Show_Box(*ui->picRA, colors.RA, look.Has_Color(ColorOf::RA));
  ui->tabFarben->Show_Colors(Palette);
}

void FrmFarb::Choose(ColorOf which) {
  chosen = which;
  ui->btnPalette->setChecked(false);
  Show_Choice();
}

void FrmFarb::Show_Choice() {
  QToolButton* const buttons[] = {ui->btnVG, ui->btnHG, ui->btnRA};
  QToolButton* button = buttons[static_cast<int>(chosen)];
  button->setChecked(true);
  const int colors[] = {look.VG, look.HG, look.frame.color};
  ui->tabFarben->Mark_Color(colors[static_cast<int>(chosen)]);
  ui->lblHint->setText(ui->btnPalette->isChecked() ? QStringLiteral("Klicken Sie auf die Farbe, die anders werden soll")
                                                   : button->toolTip());
}

void FrmFarb::Take_Color(int number) {
  if (ui->btnPalette->isChecked()) return Change_Color_Of_Palette(number);
  Run_Guarded([this, number] {
    if (purpose != FarbFor::Waypoints) {
      Change_Color(chosen, number);
    } else {
      Set_Next_Color(chosen, number);
      events.StateChanged.Emit();  // the window of the import shows it
    }
  });
  Follow();
}

void FrmFarb::Take_Frame(bool on) {
  Run_Guarded([this, on] {
    if (purpose != FarbFor::Waypoints)
      Switch_Frame(on);
    else
      CurRA = Frame_Switched(CurRA, on), events.StateChanged.Emit();
  });
  Follow();
  (look.frame.framed ? ui->optRahmen : ui->optOhne)->setChecked(true);
}

void FrmFarb::Change_Color_Of_Palette(int number) {
  std::array<QRgb, 16> colors = Palette;
  QRgb& color = colors.at(static_cast<size_t>(number));
  const QColor wanted = QColorDialog::getColor(QColor::fromRgb(color), this, QStringLiteral("Farbe %1").arg(number));
  ui->btnPalette->setChecked(false);
  if (!wanted.isValid()) return;
  color = wanted.rgb();
  Run_Guarded([&colors] { Change_Palette(colors); });
  Follow();
}

void FrmFarb::Standard_Colors() {
  if (Message_Box(QStringLiteral("Sollen alle 16 Farben wieder die Standardfarben werden?"), MsgButtons::YesNo,
                  MsgIcon::Question, QStringLiteral("Palette ändern")) != MsgAnswer::Yes)
    return;
  std::array<QRgb, 16> colors{};
  for (int i = 0; i < 16; ++i) colors.at(static_cast<size_t>(i)) = QBColor(i);
  Run_Guarded([&colors] { Change_Palette(colors); });
  Follow();
}

void Show_frmFarb(QWidget* parent, FarbFor what) { Show_Beside<FrmFarb>(parent)->Set_For(what); }
