#include "windows/canvas/frmFlKord.h"

#include <QHeaderView>
#include <utility>

#include "hand/activation.h"
#include "objects/vertex_check.h"
#include "platform/message_box.h"
#include "state/events.h"
#include "state/map_state.h"
#include "state/run_guarded.h"
#include "ui_frmFlKord.h"
#include "view/view.h"
#include "windows/common/frm_dialogs.h"

namespace {

constexpr qint64 checkWork = 2'000'000;  // pairs of edges compared before the window is served again
const QString startWord = QStringLiteral("Prüfen ");
const QString goOnWord = QStringLiteral("Prüfen | ");
const QString stopWord = QStringLiteral("Stop");
const QString disturbing = QStringLiteral("störender Polygoneckpunkt");
const QString noneFound = QStringLiteral("Kein störender Polygoneckpunkt gefunden.");
const QString noMore = QStringLiteral("Kein weiterer störender Polygoneckpunkt gefunden.");

bool In_View(QPoint map) {
  return QRect(0, 0, Map.ViewWidth, Map.ViewHeight).contains(Window_X(map.x()), Window_Y(map.y()));
}

}  // namespace

FrmFlKord::FrmFlKord(VertexList vertices, QWidget* parent)
    : QDialog(parent), ui(std::make_unique<Ui::FrmFlKord>()), former(std::move(vertices)) {
  ui->setupUi(this);
  Prepare_Dialog(*this, QStringLiteral("Linien.htm"));
  setWindowModality(Qt::NonModal);
  setWindowTitle(former.name + QStringLiteral(" Korrektur"));
  model.Set_List(former);
  ui->DBGrid1->setModel(&model);
  ui->DBGrid1->setSelectionBehavior(QAbstractItemView::SelectRows);
  ui->DBGrid1->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
  ui->DBGrid1->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  ui->lblFound->setWordWrap(true);
  resize(340, 460);
  connect(ui->DBGrid1->selectionModel(), &QItemSelectionModel::currentChanged, this, &FrmFlKord::Circle_Current);
  connect(&model, &QAbstractItemModel::dataChanged, this, &FrmFlKord::Circle_Current);
  connect(ui->btnInsert, &QPushButton::clicked, this, &FrmFlKord::Insert);
  connect(ui->btnDelete, &QPushButton::clicked, this, &FrmFlKord::Delete);
  connect(ui->btnReset, &QPushButton::clicked, this, &FrmFlKord::Put_Back);
  connect(ui->btnPruefen, &QPushButton::clicked, this, &FrmFlKord::Check_Pressed);
  connect(ui->cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
  connect(&checkTimer, &QTimer::timeout, this, &FrmFlKord::Check_On);
  tableListener = events.TableChanged.Connect([this] { Follow_Table(); });
  closedListener = events.MapClosed.Connect([this] { reject(); });
  Show_State();
}

FrmFlKord::~FrmFlKord() {
  events.TableChanged.Disconnect(tableListener);
  events.MapClosed.Disconnect(closedListener);
}

void FrmFlKord::done(int result) {
  checkTimer.stop();
  Map.Circled.reset();
  events.MapPainted.Emit();
  QDialog::done(result);
}

// A vertex may be moved on the map meanwhile, and the entry may go.
void FrmFlKord::Follow_Table() {
  if (model.Writing()) return;
  const std::optional<VertexList> now = Vertices_Of(former.key);
  if (!now || now->table != former.table) return reject();
  if (*now == model.List()) return;
  const int row = ui->DBGrid1->currentIndex().row();
  checkTimer.stop();
  model.Set_List(*now);
  if (row >= 0 && row < model.Count()) Select(row);
  Show_State();
}

void FrmFlKord::Show_State() {
  ui->lblCount->setText(QStringLiteral("Polygoneckpunkte: ") + QString::number(model.Count()));
  const bool checking = checkTimer.isActive();
  ui->btnPruefen->setText(checking ? stopWord : next > 0 ? goOnWord : startWord);
  for (QWidget* part : {static_cast<QWidget*>(ui->btnInsert), static_cast<QWidget*>(ui->btnDelete),
                        static_cast<QWidget*>(ui->btnReset), static_cast<QWidget*>(ui->DBGrid1)})
    part->setEnabled(!checking);
}

void FrmFlKord::Circle_Current() {
  const int row = ui->DBGrid1->currentIndex().row();
  Map.Circled.reset();
  if (row >= 0 && row < model.Count()) Map.Circled = Seen_Vertex(model.List(), row);
  events.MapPainted.Emit();
}

void FrmFlKord::Select(int row) {
  ui->DBGrid1->setCurrentIndex(model.index(row, 0));
  ui->DBGrid1->scrollTo(model.index(row, 0), QAbstractItemView::PositionAtCenter);
  Circle_Current();
}

void FrmFlKord::Insert() {
  const int row = std::max(0, ui->DBGrid1->currentIndex().row());
  if (!model.Insert_After(row)) return;
  Select(row + 1);
  End_Check({}, 0);
}

void FrmFlKord::Delete() {
  QList<int> rows;
  for (const QModelIndex& index : ui->DBGrid1->selectionModel()->selectedRows()) rows << index.row();
  if (rows.isEmpty()) return;
  const int first = *std::min_element(rows.begin(), rows.end());
  if (!model.Delete_Rows(rows)) {
    ui->lblFound->setText(QStringLiteral("Mindestens %1 Eckpunkte müssen bleiben.").arg(former.Least()));
    return;
  }
  Select(std::min(first, model.Count() - 1));
  End_Check({}, 0);
}

void FrmFlKord::Put_Back() {
  if (model.Put_Back(former)) End_Check({}, 0);
  Circle_Current();
}

void FrmFlKord::Check_Pressed() {
  if (checkTimer.isActive()) return End_Check({}, next);
  if (next == 0) found = false;
  ui->lblFound->clear();
  checkTimer.start(0);
  Show_State();
}

// A piece of the work; the check goes round by the timer, so that "Stop" is heard.
void FrmFlKord::Check_On() {
  const VertexList& list = model.List();
  const auto pieces = static_cast<int>(std::max<qint64>(1, checkWork / std::max(1, model.Count())));
  for (int i = 0; i < pieces && next < model.Count(); ++i, ++next) {
    if (!Vertex_Disturbs(list.points, list.closed, next)) continue;
    found = true;
    Select(next);
    const QPoint at = list.points[static_cast<size_t>(next)];
    if (!In_View(at)) Run_Guarded([at] { ScrollMap(at.x(), at.y()); });
    return End_Check(QStringLiteral("%1: Nr. %2").arg(disturbing).arg(next + 1), next + 1);
  }
  if (next >= model.Count()) End_Check(found ? noMore : noneFound, 0);
}

void FrmFlKord::End_Check(const QString& told, int goOn) {
  checkTimer.stop();
  next = goOn;
  ui->lblFound->setText(told);
  Show_State();
}

void Open_Vertex_Table(QWidget* parent) {
  if (!Map.InHand.isEmpty()) Map.CurBookmark = Map.InHand;
  const std::optional<VertexList> list = Vertices_Of_Current();
  if (!list) {
    Message_Box(QStringLiteral("Dieser Eintrag hat keine Eckpunkte."), MsgButtons::Ok, MsgIcon::Information,
                QStringLiteral("Korrektur"));
    return;
  }
  if (auto* open = parent->findChild<FrmFlKord*>()) open->reject();
  auto* window = new FrmFlKord(*list, parent);
  window->setAttribute(Qt::WA_DeleteOnClose);
  window->show();
}
