#include "windows/calibration/frmGeodaten.h"

#include <QFileInfo>

#include "calibration/typed_place.h"
#include "maps/map_choose.h"
#include "platform/error.h"
#include "platform/file_dialog.h"
#include "platform/files.h"
#include "platform/message_box.h"
#include "platform/text.h"
#include "state/global_state.h"
#include "state/mdi_state.h"
#include "ui_frmGeodaten.h"
#include "windows/common/frm_dialogs.h"
#include "windows/common/window_support.h"

namespace {

const QString title = QStringLiteral("Karte aus Geodaten"), helpPage = QStringLiteral("Geodaten.htm");
constexpr int utm = 0, gaussKrueger = 1;

void Tell(const QString& text) { Message_Box(text, MsgButtons::Ok, MsgIcon::Information, title); }

QString Whole(double number) { return Format(number, QStringLiteral("# ### ##0")).trimmed(); }

QString Raster_Text(const GeoRaster& raster) {
  return QStringLiteral("%1: %2 x %3 Pixel, %4%5")
      .arg(QFileInfo(raster.path).fileName(), Whole(raster.size.width()), Whole(raster.size.height()), raster.driver,
           raster.system ? QStringLiteral(", ") + raster.system->Name() : QString());
}

}  // namespace

FrmGeodaten::FrmGeodaten(QWidget* parent) : QDialog(parent), ui(std::make_unique<Ui::FrmGeodaten>()) {
  ui->setupUi(this);
  Prepare_Dialog(*this, helpPage);
  connect(ui->btnAdd, &QPushButton::clicked, this, &FrmGeodaten::Choose_Raster);
  connect(ui->btnRemove, &QPushButton::clicked, this, &FrmGeodaten::Remove_Raster);
  connect(ui->btnOK, &QPushButton::clicked, this, &FrmGeodaten::accept);
  connect(ui->btnCancel, &QPushButton::clicked, this, &QDialog::reject);
  connect(ui->cmbKind, &QComboBox::currentIndexChanged, this, [this](int kind) {
    if (syncing == 0) ui->txtZone->setText(kind == gaussKrueger ? QStringLiteral("4") : QStringLiteral("32"));
    ui->cmbDatum->setEnabled(kind == utm);
    Show_Size();
  });
  connect(ui->cmbDatum, &QComboBox::currentIndexChanged, this, &FrmGeodaten::Show_Size);
  connect(ui->grpWindow, &QGroupBox::toggled, this, &FrmGeodaten::Show_Size);
  for (QLineEdit* box : {ui->txtZone, ui->txtResolution, ui->txtLeft, ui->txtRight, ui->txtLow, ui->txtHigh})
    connect(box, &QLineEdit::textChanged, this, &FrmGeodaten::Show_Size);
  ui->lblSize->setMinimumHeight(3 * fontMetrics().lineSpacing());
  Propose();
}

FrmGeodaten::~FrmGeodaten() = default;

bool FrmGeodaten::Add_Raster(const QString& path) {
  try {
    rasters.push_back(Look_At_Raster(path));
  } catch (const Error& error) {
    Tell(Error_Text(error));
    return false;
  }
  ui->lstFiles->addItem(Raster_Text(rasters.back()));
  if (rasters.size() == 1)
    Propose();
  else
    Show_Size();
  return true;
}

void FrmGeodaten::Choose_Raster() {
  FileRequest request;
  request.title = QStringLiteral("Geodaten öffnen");
  request.folder = rasters.empty() ? QFileInfo(MapFile).path() : QFileInfo(rasters.back().path).path();
  request.filter =
      QStringLiteral("Geodaten|*.tif;*.tiff;*.jp2;*.mbtiles;*.gpkg;*.img;*.ecw;*.sid;*.vrt;*.asc;*.png;*.jpg");
  request.helpPage = helpPage;
  if (const auto path = File_Dialog(request)) Add_Raster(*path);
}

void FrmGeodaten::Remove_Raster() {
  const int row = ui->lstFiles->currentRow();
  if (row < 0) return;
  delete ui->lstFiles->takeItem(row);
  rasters.erase(rasters.begin() + row);
  Show_Size();
}

// Its own system and resolution, or what comes next to them.
void FrmGeodaten::Propose() {
  {
    const Syncing guard(syncing);
    GeodataWish wish;
    wish.rasters = rasters;
    wish.target = Fitting_Target(rasters);
    const bool german = wish.target.kind == ReferenceSystem::Kind::GaussKrueger;
    ui->cmbKind->setCurrentIndex(german ? gaussKrueger : utm);
    ui->cmbDatum->setCurrentIndex(wish.target.datum == Datum::Wgs84 ? 1 : 0);
    ui->cmbDatum->setEnabled(!german);
    ui->txtZone->setText(QString::number(wish.target.zone));
    double resolution = 0;
    Guarded(title, [&] { resolution = Fitting_Resolution(wish); });
    ui->txtResolution->setText(resolution > 0 ? Coordinate_Typed(NetKind::Utm, resolution) : QString());
  }
  Show_Size();
}

GeodataWish FrmGeodaten::Read_Wish() const {
  GeodataWish wish;
  wish.rasters = rasters;
  const bool german = ui->cmbKind->currentIndex() == gaussKrueger;
  wish.target.kind = german ? ReferenceSystem::Kind::GaussKrueger : ReferenceSystem::Kind::Utm;
  wish.target.datum = german ? Datum::Dhdn : ui->cmbDatum->currentIndex() == 0 ? Datum::Etrs89 : Datum::Wgs84;
  wish.target.zone = ui->txtZone->text().trimmed().toInt();
  const auto number = [](const QLineEdit* box) { return Typed_Coordinate(NetKind::Utm, box->text()).value_or(0); };
  wish.metresPerPixel = number(ui->txtResolution);
  if (ui->grpWindow->isChecked())
    wish.window =
        QRectF(QPointF(number(ui->txtLeft), number(ui->txtLow)), QPointF(number(ui->txtRight), number(ui->txtHigh)));
  return wish;
}

// What would come of it, or why nothing can.
void FrmGeodaten::Show_Size() {
  if (syncing > 0) return;
  const Syncing guard(syncing);
  constexpr double megabyte = 1024 * 1024;
  bool possible = false;
  try {
    const GeodataSize made = Size_Of_Geodata(Read_Wish());
    possible = true;
    ui->lblSize->setText(QStringLiteral("Die Karte bekommt %1 x %2 Pixel und braucht %3 MB.\nRechtswert %4 bis %5, "
                                        "Hochwert %6 bis %7.")
                             .arg(Whole(made.size.width()), Whole(made.size.height()),
                                  Whole(std::ceil(static_cast<double>(made.memory) / megabyte)),
                                  Whole(made.extent.left()), Whole(made.extent.right()), Whole(made.extent.top()),
                                  Whole(made.extent.bottom())));
    if (!ui->grpWindow->isChecked()) {
      ui->txtLeft->setText(Coordinate_Typed(NetKind::Utm, made.extent.left()));
      ui->txtRight->setText(Coordinate_Typed(NetKind::Utm, made.extent.right()));
      ui->txtLow->setText(Coordinate_Typed(NetKind::Utm, made.extent.top()));
      ui->txtHigh->setText(Coordinate_Typed(NetKind::Utm, made.extent.bottom()));
    }
  } catch (const Error& error) {
    ui->lblSize->setText(error.text);
  }
  ui->btnOK->setEnabled(possible);
  ui->btnRemove->setEnabled(!rasters.empty());
}

// Large sources take minutes.
bool FrmGeodaten::Wants_Long_Work() {
  constexpr double manyPixels = 500e6, million = 1e6;
  const double pixels = Source_Pixels(rasters);
  if (pixels < manyPixels) return true;
  return Message_Box(
             QStringLiteral("Die Quelle hat %1 Millionen Pixel; sie zu lesen kann einige Minuten dauern.\n%2\n\n"
                            "Soll die Karte angelegt werden?")
                 .arg(Whole(pixels / million), ui->lblSize->text().section(u'\n', 0, 0)),
             MsgButtons::YesNo, MsgIcon::Question, title) == MsgAnswer::Yes;
}

void FrmGeodaten::accept() {
  FileRequest request;
  request.save = true;
  request.title = QStringLiteral("Karte anlegen");
  request.folder = QFileInfo(rasters.empty() ? MapFile : rasters.front().path).path();
  request.name =
      rasters.empty() ? QString() : QFileInfo(rasters.front().path).completeBaseName() + QStringLiteral(".bmp");
  request.defaultExtension = QStringLiteral("bmp");
  request.filter = QStringLiteral("Karten|*.bmp");
  request.helpPage = helpPage;
  if (!Wants_Long_Work()) return;
  const auto path = File_Dialog(request);
  if (!path) return;
  if (frmMDI.MapOpen && QFileInfo(*path) == QFileInfo(MapFile)) {
    Tell(QStringLiteral("Diese Karte ist geöffnet. Wählen Sie einen anderen Namen."));
    return;
  }
  try {
    if (!Make_Map_From_Geodata(Read_Wish(), *path)) return;  // the user stopped; the window stays
  } catch (const Error& error) {
    Tell(QStringLiteral("Die Karte kann nicht angelegt werden.\n") + Error_Text(error));
    return;
  }
  QDialog::accept();
  Open_User_Map(*path);
}

void Show_frmGeodaten(QWidget* parent) { FrmGeodaten(parent).exec(); }
