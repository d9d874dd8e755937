#include "windows/maps/frmMapSize.h"

#include <QFileInfo>
#include <cmath>

#include "platform/message_box.h"
#include "platform/text.h"
#include "state/global_state.h"
#include "state/map_state.h"
#include "ui_frmMapSize.h"
#include "windows/common/frm_dialogs.h"

namespace {

constexpr double mmPerMetre = 1000, mmPerInch = 25.4;

// The scan's true size by the resolution of its file. Millimetres taken before are kept as they were typed: the
// resolution in whole points per metre says them less exactly.
double True_Mm(int pixels, int pointsPerMetre, double currentMm) {
  if (pointsPerMetre <= 0) return currentMm;
  if (currentMm > 0 && std::lround(pixels * mmPerMetre / currentMm) == pointsPerMetre) return currentMm;
  return pixels * mmPerMetre / pointsPerMetre;
}

bool Is_Bitmap(const QString& path) {
  const QString ending = QFileInfo(path).suffix().toUpper();
  return ending == QLatin1String("BMP") || ending == QLatin1String("RLE");
}

}  // namespace

MapSizeNumbers::MapSizeNumbers(QSize size, double widthMm, double heightMm)
    : pixels{static_cast<double>(size.width()), static_cast<double>(size.height())}, mm{widthMm, heightMm} {}

double MapSizeNumbers::Get(Direction direction, Unit unit) const {
  if (unit == Mm) return mm[direction];
  if (mm[direction] <= 0) return 0;
  return pixels[direction] * (unit == Dpi ? mmPerInch : mmPerMetre) / mm[direction];
}

void MapSizeNumbers::Set(Direction direction, Unit unit, double number, bool stretch) {
  if (!(number > 0)) return;
  const double before = mm[direction];
  mm[direction] = unit == Mm ? number : pixels[direction] * (unit == Dpi ? mmPerInch : mmPerMetre) / number;
  if (stretch && before > 0) mm[direction == Across ? Down : Across] *= mm[direction] / before;
}

bool MapSizeNumbers::Usable() const {
  const auto usable = [](double pointsPerMetre) { return pointsPerMetre >= 10 && pointsPerMetre <= 1'000'000; };
  return usable(Get(Across, PpM)) && usable(Get(Down, PpM));
}

MapSize MapSizeNumbers::Result() const {
  return {mm[Across], mm[Down], To_Int32(Get(Across, PpM)), To_Int32(Get(Down, PpM))};
}

FrmMapSize::FrmMapSize(QWidget* parent)
    : QDialog(parent),
      ui(std::make_unique<Ui::FrmMapSize>()),
      numbers({MapWidthPx, MapHeightPx}, True_Mm(MapWidthPx, Map.MapXPpM, MapWidthMm),
              True_Mm(MapHeightPx, Map.MapYPpM, MapHeightMm)) {
  ui->setupUi(this);
  Prepare_Dialog(*this, QStringLiteral("Kartengroesse.htm"));
  ui->lblKarte->setText(QStringLiteral("Karte: ") + QFileInfo(MapFile).fileName());
  ui->lblPixel->setText(QStringLiteral("%1 x %2 Bildpunkte").arg(MapWidthPx).arg(MapHeightPx));
  ui->chkStretch->setChecked(true);
  for (const auto direction : {MapSizeNumbers::Across, MapSizeNumbers::Down}) {
    for (const auto unit : {MapSizeNumbers::Mm, MapSizeNumbers::Dpi, MapSizeNumbers::PpM}) {
      Field(direction, unit)->setAlignment(Qt::AlignRight);
      Field(direction, unit)->setMinimumWidth(fontMetrics().horizontalAdvance(QStringLiteral("00000,0000")));
      connect(Field(direction, unit), &QLineEdit::textEdited, this, [=, this] { Typed(direction, unit); });
    }
  }
  ui->btnSave->setEnabled(Is_Bitmap(MapFile));
  if (!ui->btnSave->isEnabled())
    ui->btnSave->setToolTip(QStringLiteral("Nur Bitmaps (*.bmp) nehmen die Auflösung in die Datei auf."));
  connect(ui->btnTake, &QPushButton::clicked, this, &FrmMapSize::Take);
  connect(ui->btnSave, &QPushButton::clicked, this, &FrmMapSize::Save);
  connect(ui->cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
  Show_Numbers(nullptr);
  ui->txtBildbr->setFocus();
  ui->txtBildbr->selectAll();
}

FrmMapSize::~FrmMapSize() = default;

QLineEdit* FrmMapSize::Field(MapSizeNumbers::Direction direction, MapSizeNumbers::Unit unit) const {
  QLineEdit* const fields[2][3] = {{ui->txtBildbr, ui->txthdpi, ui->txthPpM},
                                   {ui->txtBildho, ui->txtvdpi, ui->txtvPpM}};
  return fields[direction][unit];
}

void FrmMapSize::Typed(MapSizeNumbers::Direction direction, MapSizeNumbers::Unit unit) {
  const QLineEdit* field = Field(direction, unit);
  numbers.Set(direction, unit, Val_Comma(field->text()), ui->chkStretch->isChecked());
  Show_Numbers(field);  // never change the text under the user's fingers
}

void FrmMapSize::Show_Numbers(const QLineEdit* except) {
  for (const auto direction : {MapSizeNumbers::Across, MapSizeNumbers::Down}) {
    for (const auto unit : {MapSizeNumbers::Mm, MapSizeNumbers::Dpi, MapSizeNumbers::PpM}) {
      QLineEdit* field = Field(direction, unit);
      const QString pattern = unit == MapSizeNumbers::PpM ? QStringLiteral("0") : QStringLiteral("0.00");
      if (field != except) field->setText(Format(numbers.Get(direction, unit), pattern));
    }
  }
}

bool FrmMapSize::Check_Numbers() {
  for (const auto direction : {MapSizeNumbers::Across, MapSizeNumbers::Down}) {
    for (const auto unit : {MapSizeNumbers::Mm, MapSizeNumbers::Dpi, MapSizeNumbers::PpM}) {
      if (Val_Comma(Field(direction, unit)->text()) > 0) continue;
      Message_Box(QStringLiteral("Bitte geben Sie eine Zahl über 0 ein."), MsgButtons::Ok, MsgIcon::Information,
                  windowTitle());
      Field(direction, unit)->setFocus();
      Field(direction, unit)->selectAll();
      return false;
    }
  }
  if (numbers.Usable()) return true;
  Message_Box(
      QStringLiteral("Bitte geben Sie eine Größe ein, die zwischen 10 und 1000000 Bildpunkten pro Meter ergibt."),
      MsgButtons::Ok, MsgIcon::Information, windowTitle());
  return false;
}

void FrmMapSize::Take() {
  if (!Check_Numbers()) return;
  if (Guarded(windowTitle(), [this] { Take_Map_Size(numbers.Result()); }) == Step::Done) accept();
}

void FrmMapSize::Save() {
  if (!Check_Numbers()) return;
  bool wanted = true;
  const Step step = Guarded(windowTitle(), [&] { wanted = Save_Map_Size(numbers.Result()); });
  if (step == Step::Done && wanted) accept();  // not wanted: the numbers stay for a change
}

void Show_frmMapSize(QWidget* parent) { FrmMapSize(parent).exec(); }
