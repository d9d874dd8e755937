#include "windows/calibration/frmKalibrix.h"

#include <QFileInfo>
#include <QShortcut>
#include <algorithm>
#include <cmath>

#include "calibration/typed_place.h"
#include "platform/file_dialog.h"
#include "platform/message_box.h"
#include "platform/picture.h"
#include "platform/text.h"
#include "ui_frmKalibrix.h"
#include "windows/calibration/calibration_view.h"
#include "windows/calibration/magnifier.h"
#include "windows/common/frm_dialogs.h"
#include "windows/common/window_support.h"

namespace {

const QString title = QStringLiteral("Kalibrix"), helpPage = QStringLiteral("Kalibrix.htm");

enum Column { usedColumn, rightColumn, highColumn, pixelColumn, metreColumn, columnCount };

void Tell(const QString& text) { Message_Box(text, MsgButtons::Ok, MsgIcon::Information, title); }

QString Short_Number(double value) { return Format(value, QStringLiteral("##0.0")); }
QString Two_Decimals(double value) { return QString::number(value, 'f', 2).replace(u'.', u','); }

}  // namespace

FrmKalibrix::FrmKalibrix(QWidget* parent)
    : QDialog(parent),
      ui(std::make_unique<Ui::FrmKalibrix>()),
      view(new CalibrationView(this)),
      glass(new Magnifier(this)) {
  ui->setupUi(this);
  setWindowFlags(Qt::Window);
  setWindowIcon(Program_Icon(QStringLiteral("calibrate")));
  Prepare_Dialog(*this, helpPage);
  setWindowModality(Qt::NonModal);
  view->setObjectName(QStringLiteral("view"));
  ui->lytMap->addWidget(view);
  ui->lytMagnifier->addWidget(glass);
  ui->tblPoints->setColumnCount(columnCount);
  ui->tblPoints->verticalHeader()->hide();
  ui->tblPoints->horizontalHeader()->setStretchLastSection(true);
  QPalette red = ui->lblRemarks->palette();
  red.setColor(QPalette::WindowText, QColor(180, 0, 0));
  ui->lblRemarks->setPalette(red);
  ui->lblResult->setMinimumHeight(2 * fontMetrics().lineSpacing());
  ui->lblRemarks->setMinimumHeight(2 * fontMetrics().lineSpacing());
  Connect_Controls();
  Connect_Map();
  Show_All();
}

FrmKalibrix::~FrmKalibrix() = default;

void FrmKalibrix::Connect_Controls() {
  connect(ui->cmbKind, &QComboBox::currentIndexChanged, this, &FrmKalibrix::Take_Kind);
  connect(ui->cmbShape, &QComboBox::currentIndexChanged, this, &FrmKalibrix::Take_Net);
  connect(ui->cmbDatum, &QComboBox::currentTextChanged, this, &FrmKalibrix::Take_Net);
  for (QLineEdit* box : {ui->txtZone, ui->txtSpacing})
    connect(box, &QLineEdit::editingFinished, this, &FrmKalibrix::Take_Net);
  connect(ui->txtRW, &QLineEdit::returnPressed, this, [this] {
    if (Take_Typed(!ui->txtHW->text().isEmpty())) view->setFocus();
    if (!ui->txtHW->hasFocus() && !view->hasFocus()) ui->txtHW->setFocus(), ui->txtHW->selectAll();
  });
  connect(ui->txtHW, &QLineEdit::returnPressed, this, [this] {
    if (Take_Typed(true)) view->setFocus();
  });
  for (QLineEdit* box : {ui->txtRW, ui->txtHW})
    connect(box, &QLineEdit::editingFinished, this, [this] { Take_Typed(false); });
  const std::pair<QToolButton*, QPointF> steps[] = {
      {ui->btnWest, {-1, 0}}, {ui->btnOst, {1, 0}}, {ui->btnSued, {0, -1}}, {ui->btnNord, {0, 1}}};
  for (const auto& [button, way] : steps)
    connect(button, &QToolButton::clicked, this, [this, by = way] { Step(by.x(), by.y()); });
  const auto act = [this](QPushButton* button, const QKeySequence& key, auto procedure) {
    connect(button, &QPushButton::clicked, this, procedure);
    if (key.isEmpty()) return;
    auto* shortcut = new QShortcut(key, this);
    connect(shortcut, &QShortcut::activated, button, &QPushButton::click);
  };
  act(ui->btnDelete, {}, [this] {
    if (selected) work.Sheet().Remove(*selected), Points_Changed();
  });
  act(ui->btnUndo, QKeySequence(Qt::CTRL | Qt::Key_Z), [this] { work.Sheet().Undo(), Points_Changed(); });
  act(ui->btnRedo, QKeySequence(Qt::CTRL | Qt::Key_Y), [this] { work.Sheet().Redo(), Points_Changed(); });
  act(ui->btnOpen, QKeySequence(Qt::CTRL | Qt::Key_O), [this] { Choose_Map(); });
  act(ui->btnSave, QKeySequence(Qt::CTRL | Qt::Key_S), [this] { Save(); });
  act(ui->btnSaveAs, QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_S), [this] { Save_As(); });
  act(ui->btnClose, {}, [this] { reject(); });
  act(ui->btnWhole, {}, [this] { view->Fit_In_Window(); });
  act(ui->btnFull, {}, [this] { view->Zoom_To(1, QRectF(view->viewport()->rect()).center()); });
  // Not while a coordinate is typed.
  for (QWidget* part : {static_cast<QWidget*>(view), static_cast<QWidget*>(ui->tblPoints)}) {
    auto* remove = new QShortcut(QKeySequence(Qt::Key_Delete), part);
    remove->setContext(Qt::WidgetWithChildrenShortcut);
    connect(remove, &QShortcut::activated, ui->btnDelete, &QPushButton::click);
  }
}

void FrmKalibrix::Connect_Map() {
  connect(view, &CalibrationView::Pressed, this, &FrmKalibrix::Press);
  connect(view, &CalibrationView::Dragged, this, &FrmKalibrix::Drag);
  connect(view, &CalibrationView::Released, this, &FrmKalibrix::Release);
  connect(view, &CalibrationView::Hovered, this, &FrmKalibrix::Hover);
  connect(view, &CalibrationView::Nudged, this, &FrmKalibrix::Nudge);
  connect(ui->chkNet, &QCheckBox::toggled, this, &FrmKalibrix::Show_Map);
  connect(ui->tblPoints, &QTableWidget::currentCellChanged, this, [this](int row) {
    if (syncing > 0 || row < 0) return;
    Select(static_cast<size_t>(row));
    view->Make_Visible(work.Points()[static_cast<size_t>(row)].pixel);
  });
  connect(ui->tblPoints, &QTableWidget::itemChanged, this, [this](QTableWidgetItem* item) {
    if (syncing > 0 || item->column() != usedColumn) return;
    work.Sheet().Switch(static_cast<size_t>(item->row()), item->checkState() == Qt::Checked);
    Points_Changed();
  });
}

// Map and file ------------------------------------------------------------------------------------------------------

bool FrmKalibrix::Open_Map(const QString& mapFile) {
  try {
    work.Open(mapFile);
  } catch (const Error& error) {
    Tell(Error_Text(error) + QStringLiteral("\n") + mapFile);
    return false;
  }
  setWindowTitle(QFileInfo(mapFile).fileName() + QStringLiteral(" - ") + title);
  selected = lit = dragged = fresh = std::nullopt;
  view->Show_Picture(work.Picture());
  Show_All();
  view->setFocus();
  return true;
}

void FrmKalibrix::Choose_Map() {
  if (work.Changed()) {
    const MsgAnswer answer =
        Message_Box(QStringLiteral("Die Kalibrierung ist noch nicht gesichert. Soll sie gesichert werden?"),
                    MsgButtons::YesNoCancel, MsgIcon::Question, title);
    if (answer == MsgAnswer::Cancel || (answer == MsgAnswer::Yes && !Save())) return;
  }
  FileRequest request;
  request.title = QStringLiteral("Bild der Karte öffnen");
  request.folder = QFileInfo(work.Map_File()).path();
  request.filter = QStringLiteral("Bilder|") + Picture_Patterns();
  request.helpPage = helpPage;
  if (const auto path = File_Dialog(request)) Open_Map(*path);
}

bool FrmKalibrix::Save() {
  Take_Typed(false);
  try {
    work.Save();
  } catch (const Error& error) {
    Tell(QStringLiteral("Die Kalibrierung kann nicht gesichert werden.\n") + Error_Text(error));
    return false;
  }
  Show_All();
  return true;
}

void FrmKalibrix::Save_As() {
  Take_Typed(false);
  FileRequest request;
  request.save = true;
  request.title = QStringLiteral("Kalibrierung sichern unter");
  request.folder = QFileInfo(work.Cal_File()).path();
  request.name = QFileInfo(work.Cal_File()).fileName();
  request.defaultExtension = QStringLiteral("cal");
  request.filter = QStringLiteral("Kalibrierungsdateien|*.cal");
  request.helpPage = helpPage;
  const auto path = File_Dialog(request);
  if (!path) return;
  try {
    work.Save_As(*path);
  } catch (const Error& error) {
    Tell(QStringLiteral("Die Kalibrierung kann nicht gesichert werden.\n") + Error_Text(error));
    return;
  }
  Show_All();
  if (!work.Is_Found_By_Map())
    Tell(
        QStringLiteral("Flurax findet diese Datei nicht von selbst: Sie muss neben dem Bild liegen, auf \"cal\" enden "
                       "und den Namen des Bildes enthalten."));
}

void FrmKalibrix::reject() {
  if (dragged) {
    dragged.reset();
    Show_Map();
    return;
  }
  if (work.Changed()) {
    const MsgAnswer answer =
        Message_Box(QStringLiteral("Die Kalibrierung ist noch nicht gesichert. Soll sie gesichert werden?"),
                    MsgButtons::YesNoCancel, MsgIcon::Question, title);
    if (answer == MsgAnswer::Cancel || (answer == MsgAnswer::Yes && !Save())) return;
  }
  QDialog::reject();
}

// Mouse -------------------------------------------------------------------------------------------------------------

void FrmKalibrix::Press(QPointF pixel) {
  view->setFocus();
  pressedAt = pixel;
  moved = false;
  dragged = work.Sheet().Point_At(pixel, view->Catch_Reach());
  if (!dragged) return;
  dragOffset = work.Points()[*dragged].pixel - pixel;
  Select(dragged);
}

void FrmKalibrix::Drag(QPointF pixel) {
  constexpr double leastMove = 3;  // screen pixels: a hand is never quite still
  const QPointF way = (pixel - pressedAt) * view->Zoom();
  if (!dragged || (!moved && std::hypot(way.x(), way.y()) < leastMove)) return;
  moved = true;
  CalibrationView::Content content = view->Shown();
  content.points[*dragged].pixel = pixel + dragOffset;
  view->Show_Content(std::move(content));
}

void FrmKalibrix::Release(QPointF pixel) {
  const auto target = std::exchange(dragged, std::nullopt);
  if (!target) {
    const QPointF way = (pixel - pressedAt) * view->Zoom();
    if (std::hypot(way.x(), way.y()) < 10) Add_Point(pressedAt);
    return;
  }
  if (!moved) return;
  const QPointF place = pixel + dragOffset;
  work.Sheet().Move(*target, Snapped(place));
  Points_Changed();
}

void FrmKalibrix::Hover(QPointF pixel) {
  const QRectF inside(QPointF(), work.Picture().size());
  std::optional<QPointF> crossing;
  if (ui->chkSnap->isChecked() && inside.contains(pixel)) {
    const QPointF found = Snapped(pixel);
    if (found != pixel) crossing = found;
  }
  glass->Show_Place(work.Picture(), pixel, crossing);
  const auto now = work.Sheet().Point_At(pixel, view->Catch_Reach());
  if (now == lit) return;
  lit = now;
  Light_Row();
  Show_Map();
}

void FrmKalibrix::Nudge(QPointF by) {
  if (!selected) return;
  work.Sheet().Move(*selected, work.Points()[*selected].pixel + by);
  Points_Changed();
  glass->Show_Place(work.Picture(), work.Points()[*selected].pixel, std::nullopt);
}

QPointF FrmKalibrix::Snapped(QPointF pixel) const {
  // As far as a hand misses on the screen, and never so far that another crossing is meant.
  constexpr double handPixels = 6, least = 14, most = 26;
  const double reach = std::clamp(handPixels / view->Zoom(), least, most);
  return ui->chkSnap->isChecked() ? work.Snap(pixel, static_cast<int>(reach)) : pixel;
}

void FrmKalibrix::Add_Point(QPointF pixel) {
  const QPointF place = Snapped(pixel);
  const auto guess = work.Guess_Place(place);
  work.Sheet().Add({place, guess.value_or(QPointF()), guess.has_value()});
  selected = work.Points().size() - 1;
  fresh = guess ? std::nullopt : selected;
  Points_Changed();
  ui->txtRW->setFocus();
  ui->txtRW->selectAll();
}

// Coordinates -------------------------------------------------------------------------------------------------------

bool FrmKalibrix::Take_Typed(bool tell) {
  if (!selected || syncing > 0) return false;
  const NetKind kind = work.Net().kind;
  QPointF place;
  const std::pair<QLineEdit*, double*> boxes[] = {{ui->txtRW, &place.rx()}, {ui->txtHW, &place.ry()}};
  for (const auto& [box, value] : boxes) {
    const auto typed = Typed_Coordinate(kind, box->text());
    if (!typed && tell) {
      Tell(QStringLiteral("Das ist keine Koordinate: ") + box->text());
      box->setFocus();
      box->selectAll();
    }
    if (!typed) return false;
    *value = *typed;
  }
  ControlPoints points = work.Points();
  // What stands in the boxes is rounded; only what was typed anew counts.
  if (ui->txtRW->text() == Coordinate_Typed(kind, points[*selected].place.x())) place.setX(points[*selected].place.x());
  if (ui->txtHW->text() == Coordinate_Typed(kind, points[*selected].place.y())) place.setY(points[*selected].place.y());
  points[*selected].place = place;
  if (fresh == selected) points[*selected].used = true;
  fresh.reset();
  if (points == work.Points()) return true;
  work.Sheet().Replace_All(std::move(points));
  Points_Changed();
  return true;
}

void FrmKalibrix::Step(double right, double high) {
  if (!selected) return;
  const QPointF by = QPointF(right, high) * work.Net().spacing;
  work.Sheet().Set_Place(*selected, work.Points()[*selected].place + by);
  Points_Changed();
}

void FrmKalibrix::Take_Kind(int index) {
  if (syncing > 0) return;
  NetDescription net = work.Net();
  const auto kind = static_cast<NetKind>(index);
  if (Is_Geographic(kind) != Is_Geographic(net.kind))
    net.spacing = kind == NetKind::DegreesGms ? 1 / 60.0 : kind == NetKind::DegreesDec ? 0.01 : 1000;
  if (kind == NetKind::GaussKrueger && net.kind != kind)
    net.zone = QStringLiteral("4"), net.datum = QStringLiteral("Potsdam");
  if (kind == NetKind::Utm && net.kind != kind) net.zone = QStringLiteral("32U"), net.datum = QStringLiteral("WGS-84");
  net.kind = kind;
  work.Describe(net, work.Shape());
  Show_All();
}

void FrmKalibrix::Take_Net() {
  if (syncing > 0) return;
  NetDescription net = work.Net();
  net.zone = ui->txtZone->text().trimmed();
  net.datum = ui->cmbDatum->currentText().trimmed();
  if (const auto spacing = Typed_Spacing(net.kind, ui->txtSpacing->text())) net.spacing = *spacing;
  const auto shape = static_cast<NetShape>(ui->cmbShape->currentIndex());
  if (net == work.Net() && shape == work.Shape()) return;
  work.Describe(net, shape);
  Show_All();
}

void FrmKalibrix::Points_Changed() {
  if (selected && *selected >= work.Points().size()) selected.reset();
  if (fresh && *fresh >= work.Points().size()) fresh.reset();
  work.Refit();
  Show_All();
}

// Showing -----------------------------------------------------------------------------------------------------------

void FrmKalibrix::Select(std::optional<size_t> index) {
  if (index != selected) Take_Typed(false);
  selected = index;
  Show_Table();
  Show_Selected();
  Show_Map();
}

void FrmKalibrix::Show_All() {
  Show_Net();
  Show_Table();
  Show_Selected();
  Show_Result();
  Show_Map();
}

void FrmKalibrix::Show_Net() {
  const Syncing guard(syncing);
  const NetDescription& net = work.Net();
  ui->cmbKind->setCurrentIndex(static_cast<int>(net.kind));
  ui->txtZone->setText(net.zone);
  ui->txtZone->setEnabled(!Is_Geographic(net.kind));
  if (ui->cmbDatum->currentText() != net.datum) ui->cmbDatum->setCurrentText(net.datum);
  ui->txtSpacing->setText(Spacing_Typed(net.kind, net.spacing));
  ui->cmbShape->setCurrentIndex(static_cast<int>(work.Shape()));
  ui->cmbShape->setEnabled(!Is_Metric(net.kind));
  const bool degrees = Is_Geographic(net.kind);
  ui->lblRW->setText(degrees ? QStringLiteral("Länge") : QStringLiteral("Rechtswert"));
  ui->lblHW->setText(degrees ? QStringLiteral("Breite") : QStringLiteral("Hochwert"));
  ui->tblPoints->setHorizontalHeaderLabels(
      {QStringLiteral("Nr."), ui->lblRW->text(), ui->lblHW->text(), QStringLiteral("Pixel"), QStringLiteral("m")});
}

void FrmKalibrix::Show_Table() {
  const Syncing guard(syncing);
  const ControlPoints& points = work.Points();
  QTableWidget& table = *ui->tblPoints;
  table.setRowCount(static_cast<int>(points.size()));
  for (size_t i = 0; i < points.size(); ++i) {
    const int row = static_cast<int>(i);
    const auto set = [&](int column, const QString& text) {
      if (!table.item(row, column)) table.setItem(row, column, new QTableWidgetItem);
      table.item(row, column)->setText(text);
      if (column >= pixelColumn) table.item(row, column)->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
    };
    const NetKind kind = work.Net().kind;
    set(usedColumn, QString::number(i + 1));
    table.item(row, usedColumn)->setCheckState(points[i].used ? Qt::Checked : Qt::Unchecked);
    const bool known = fresh != i;
    set(rightColumn, known ? Coordinate_Typed(kind, points[i].place.x()) : QString());
    set(highColumn, known ? Coordinate_Typed(kind, points[i].place.y()) : QString());
    const auto& fit = work.Fit();
    set(pixelColumn, fit && known ? Short_Number(fit->points[i].pixels) : QString());
    set(metreColumn, fit && known ? Short_Number(fit->points[i].metres) : QString());
  }
  table.resizeColumnsToContents();
  if (selected)
    table.setCurrentCell(static_cast<int>(*selected), rightColumn);
  else
    table.setCurrentCell(-1, -1);
  Light_Row();
}

void FrmKalibrix::Light_Row() {
  const Syncing guard(syncing);
  for (int row = 0; row < ui->tblPoints->rowCount(); ++row) {
    const auto index = static_cast<size_t>(row);
    const bool outlier = work.Fit() && work.Fit()->points[index].outlier;
    const QBrush ground = lit == index ? QBrush(QColor(255, 225, 160))
                          : outlier    ? QBrush(QColor(255, 205, 205))
                                       : QBrush();
    for (int column = 0; column < columnCount; ++column)
      if (QTableWidgetItem* item = ui->tblPoints->item(row, column)) item->setBackground(ground);
  }
}

void FrmKalibrix::Show_Selected() {
  const Syncing guard(syncing);
  const bool some = selected.has_value(), known = some && fresh != selected;
  const NetKind kind = work.Net().kind;
  const QPointF place = some ? work.Points()[*selected].place : QPointF();
  ui->txtRW->setText(known ? Coordinate_Typed(kind, place.x()) : QString());
  ui->txtHW->setText(known ? Coordinate_Typed(kind, place.y()) : QString());
  for (QWidget* part :
       {static_cast<QWidget*>(ui->txtRW), static_cast<QWidget*>(ui->txtHW), static_cast<QWidget*>(ui->btnDelete)})
    part->setEnabled(some);
  for (QToolButton* button : {ui->btnWest, ui->btnOst, ui->btnSued, ui->btnNord}) button->setEnabled(known);
  ui->btnUndo->setEnabled(work.Sheet().Can_Undo());
  ui->btnRedo->setEnabled(work.Sheet().Can_Redo());
  ui->btnSave->setEnabled(work.Is_Open());
  ui->btnSaveAs->setEnabled(work.Is_Open());
}

void FrmKalibrix::Show_Result() {
  QString result = work.Notice();
  if (work.Is_Open() && work.Points().empty())
    result =
        QStringLiteral("Klicken Sie auf eine Kreuzung des gedruckten Netzes, und tippen Sie ihre Koordinaten ein.");
  const auto& fit = work.Fit();
  if (fit) {
    result = QStringLiteral("Mittlerer Fehler: %1 Pixel = %2 m.  1 Pixel = %3 m.\nDrehung %4°, Schiefe %5°.")
                 .arg(Two_Decimals(fit->meanPixels), Two_Decimals(fit->meanMetres),
                      Format(fit->metresPerPixel, QStringLiteral("##0.000")), Two_Decimals(fit->turn),
                      Two_Decimals(fit->skew)) +
             (work.Notice().isEmpty() ? QString() : u'\n' + work.Notice());
  }
  ui->lblResult->setText(result);
  QStringList remarks = work.Remarks();
  if (!work.Fault().isEmpty() && work.Is_Open()) remarks.prepend(work.Fault());
  ui->lblRemarks->setText(remarks.mid(0, 3).join(u'\n'));
}

void FrmKalibrix::Show_Map() {
  CalibrationView::Content content{work.Points(), work.Fit(), {}, selected, lit};
  if (ui->chkNet->isChecked() && work.Proof()) content.net = work.Proof()->state;
  view->Show_Content(std::move(content));
}
