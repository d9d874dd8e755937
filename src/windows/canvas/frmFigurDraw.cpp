#include "windows/canvas/frmFigurDraw.h"

#include "edit/figure_edit.h"
#include "edit/figure_extras.h"
#include "hand/next_shape.h"
#include "platform/message_box.h"
#include "state/events.h"
#include "state/run_guarded.h"
#include "store/vertex_table.h"
#include "tools/figure_tool.h"
#include "tools/free_figure_tool.h"
#include "ui_frmFigurDraw.h"
#include "windows/canvas/figure_fields.h"
#include "windows/common/frm_dialogs.h"
#include "windows/common/show_beside.h"
#include "windows/common/window_support.h"

FrmFigurDraw::FrmFigurDraw(QWidget* parent) : QDialog(parent), ui(std::make_unique<Ui::FrmFigurDraw>()) {
  ui->setupUi(this);
  Prepare_Dialog(*this, QStringLiteral("Figuren.htm"));
  setWindowModality(Qt::NonModal);
  ui->tblPunkte->setColumnCount(2);
  ui->tblPunkte->setHorizontalHeaderLabels({QStringLiteral("xf"), QStringLiteral("yf")});
  ui->tblPunkte->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
  ui->optRund->setChecked(NextShape.rounded);
  connect(ui->optRund, &QRadioButton::toggled, this, &FrmFigurDraw::Choose_Edges);
  connect(ui->btnInsert, &QPushButton::clicked, this, &FrmFigurDraw::Insert_Point);
  connect(ui->btnRemove, &QPushButton::clicked, this, &FrmFigurDraw::Remove_Point);
  connect(ui->btnNeu, &QPushButton::clicked, this, [] { Run_Guarded([] { Draw_Free_Figure(); }); });
  connect(ui->cmdOK, &QPushButton::clicked, this, &FrmFigurDraw::accept);
  connect(ui->cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
  closedListener = events.MapClosed.Connect([this] { reject(); });
  stateListener = events.StateChanged.Connect([this] { Follow(); });
  tableListener = events.TableChanged.Connect([this] { Follow(); });
  Follow();
}

FrmFigurDraw::~FrmFigurDraw() {
  events.MapClosed.Disconnect(closedListener);
  events.StateChanged.Disconnect(stateListener);
  events.TableChanged.Disconnect(tableListener);
}

void FrmFigurDraw::Follow() {
  std::optional<EntryRow> row = Figure_In_Hand();
  if (row && !EntryType::Parse(row->Typ).IsFreeFigure()) row.reset();
  ui->lblFigur->setText(
      row ? QStringLiteral("Figur in Arbeit: %1 (%2)").arg(row->Eintrag, EntryId::Parse(row->ID).name)
          : QStringLiteral("Klicken Sie die Eckpunkte auf der Karte an. Rücktaste: letzten Punkt zurücknehmen. "
                           "Doppelklick oder rechte Maustaste: fertig. Esc: verwerfen."));
  shown = row;
  const std::vector<QPoint> vertices = row ? Load_Vertices(EntryId::Parse(row->ID).TableName()) : std::vector<QPoint>();
  // What is being typed stays while nothing else changed.
  if (vertices != filled) Fill_Table(vertices);
  if (row) {
    const Syncing guard(syncing);
    const bool rounded = EntryType::Parse(row->Typ).Kind() == EntryKind::FreeFigureRound;
    (rounded ? ui->optRund : ui->optEckig)->setChecked(true);
  }
  Enable_Buttons();
}

void FrmFigurDraw::Enable_Buttons() {
  ui->tblPunkte->setEnabled(shown.has_value());
  ui->cmdOK->setEnabled(shown.has_value());
  ui->btnInsert->setEnabled(shown.has_value());
  ui->btnRemove->setEnabled(shown && ui->tblPunkte->rowCount() > fewestVertices);
}

void FrmFigurDraw::Set_Row(int line, QPoint vertex) {
  for (int column = 0; column < 2; ++column) {
    auto* item = new QTableWidgetItem(QString::number(column == 0 ? vertex.x() : vertex.y()));
    item->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
    ui->tblPunkte->setItem(line, column, item);
  }
}

void FrmFigurDraw::Fill_Table(const std::vector<QPoint>& vertices) {
  filled = vertices;
  ui->tblPunkte->setRowCount(static_cast<int>(vertices.size()));
  for (size_t i = 0; i < vertices.size(); ++i) Set_Row(static_cast<int>(i), vertices[i]);
  if (!vertices.empty()) ui->tblPunkte->setCurrentCell(0, 0);
}

std::optional<std::vector<QPoint>> FrmFigurDraw::Typed() {
  std::vector<QPoint> vertices;
  for (int line = 0; line < ui->tblPunkte->rowCount(); ++line) {
    int position[2] = {};
    for (int column = 0; column < 2; ++column) {
      const QTableWidgetItem* item = ui->tblPunkte->item(line, column);
      const std::optional<int> value = item ? Pixels_Of(item->text()) : std::nullopt;
      if (!value) {
        Message_Box(QStringLiteral("Der Eckpunkt %1 ist keine Zahl.").arg(line + 1), MsgButtons::Ok,
                    MsgIcon::Information, windowTitle());
        ui->tblPunkte->setCurrentCell(line, column);
        ui->tblPunkte->setFocus();
        return std::nullopt;
      }
      position[column] = *value;
    }
    vertices.emplace_back(position[0], position[1]);
  }
  return vertices;
}

void FrmFigurDraw::Choose_Edges() {
  if (syncing > 0) return;
  NextShape.rounded = ui->optRund->isChecked();
  if (shown) Run_Guarded([] { Change_Free_Figure(Free_Figure_Vertices(), NextShape.rounded); });
}

// Behind the chosen vertex, half the way to the next one.
void FrmFigurDraw::Insert_Point() {
  const auto vertices = Typed();
  if (!vertices || vertices->empty()) return;
  const int line = std::max(0, ui->tblPunkte->currentRow());
  const auto here = static_cast<size_t>(line);
  const QPoint middle = ((*vertices)[here] + (*vertices)[(here + 1) % vertices->size()]) / 2;
  ui->tblPunkte->insertRow(line + 1);
  Set_Row(line + 1, middle);
  ui->tblPunkte->setCurrentCell(line + 1, 0);
  Enable_Buttons();
}

void FrmFigurDraw::Remove_Point() {
  if (ui->tblPunkte->rowCount() <= fewestVertices) return;
  ui->tblPunkte->removeRow(std::max(0, ui->tblPunkte->currentRow()));
  Enable_Buttons();
}

void FrmFigurDraw::accept() {
  if (!shown) return;
  const auto vertices = Typed();
  if (vertices) Run_Guarded([&] { Change_Free_Figure(*vertices, ui->optRund->isChecked()); });
}

void FrmFigurDraw::done(int result) {
  Drop_Figure_Tool();
  QDialog::done(result);
}

// Without a free figure in hand a new one is begun at once.
void Show_frmFigurDraw(QWidget* parent) {
  Show_Beside<FrmFigurDraw>(parent);
  const std::optional<EntryRow> row = Figure_In_Hand();
  if (!row || !EntryType::Parse(row->Typ).IsFreeFigure()) Draw_Free_Figure();
}
