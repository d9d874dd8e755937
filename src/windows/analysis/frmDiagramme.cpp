#include "windows/analysis/frmDiagramme.h"

#include <QBuffer>
#include <QChartView>
#include <QClipboard>
#include <QFileInfo>
#include <QGuiApplication>
#include <QScreen>
#include <QTimer>

#include "platform/file_dialog.h"
#include "platform/files.h"
#include "printing/page_job.h"
#include "state/events.h"
#include "state/run_guarded.h"
#include "ui_frmDiagramme.h"
#include "windows/analysis/frm_chart.h"
#include "windows/common/frm_dialogs.h"
#include "windows/common/show_beside.h"

namespace {
const QString helpPage = QStringLiteral("Diagramme.htm");
enum Kind { ranks, accumulation, nearest };  // rows of cboArt
constexpr int afterChange = 150;             // milliseconds
constexpr double pictureScale = 2;
}  // namespace

FrmDiagramme::FrmDiagramme(QWidget* parent)
    : QDialog(parent), ui(std::make_unique<Ui::FrmDiagramme>()), later(new QTimer(this)) {
  ui->setupUi(this);
  Prepare_Dialog(*this, helpPage);
  setWindowModality(Qt::NonModal);
  setWindowFlag(Qt::WindowMaximizeButtonHint);
  ui->view->setRenderHint(QPainter::Antialiasing);
  later->setSingleShot(true);
  later->setInterval(afterChange);
  connect(later, &QTimer::timeout, this, [this] { Run_Guarded([this] { Read_Map(); }); });
  connect(ui->cboArt, &QComboBox::activated, this, [this] { Run_Guarded([this] { Show_Diagram(); }); });
  connect(ui->cboWo, &QComboBox::activated, this, [this] { Run_Guarded([this] { Show_Diagram(); }); });
  connect(ui->cmdPng, &QPushButton::clicked, this, [this] { Run_Guarded([this] { Save(QStringLiteral("png")); }); });
  connect(ui->cmdSvg, &QPushButton::clicked, this, [this] { Run_Guarded([this] { Save(QStringLiteral("svg")); }); });
  connect(ui->cmdPrint, &QPushButton::clicked, this, [this] { Run_Guarded([this] { Print(); }); });
  connect(ui->cmdCopy, &QPushButton::clicked, this, &FrmDiagramme::Copy);
  connect(ui->cmdHelp, &QPushButton::clicked, this, [this] { Show_Help(this, helpPage); });
  connect(ui->cmdClose, &QPushButton::clicked, this, &QDialog::reject);
  closedListener = events.MapClosed.Connect([this] { reject(); });
  // Not every change of an entry is told as one of the table, but each is drawn.
  tableListener = events.TableChanged.Connect([this] { later->start(); });
  redrawListener = events.AfterRedraw.Connect([this] { later->start(); });
  // Room for the labels below the bars in larger letters too, as far as the screen has it.
  const QSize letters(fontMetrics().averageCharWidth(), fontMetrics().lineSpacing());
  resize(QSize(120 * letters.width(), 42 * letters.height()).boundedTo(screen()->availableSize() * 0.9));
  Run_Guarded([this] { Read_Map(); });
  ui->cboArt->setFocus();
}

FrmDiagramme::~FrmDiagramme() {
  events.MapClosed.Disconnect(closedListener);
  events.TableChanged.Disconnect(tableListener);
  events.AfterRedraw.Disconnect(redrawListener);
}

void FrmDiagramme::Read_Map() {
  input = Read_Map_Input();
  matrix = Calc_Species_Matrix(input).value_or(SpeciesMatrix());
  Fill_Places();
  Show_Diagram();
}

// The chosen place stays chosen while it is there.
void FrmDiagramme::Fill_Places() {
  const QString chosen = ui->cboWo->currentData().toString();
  ui->cboWo->clear();
  ui->cboWo->addItem(QStringLiteral("alle"));
  for (const MatrixRow& row : matrix.rows) {
    const QString kind = Matrix_Kind_Word(row.kind);
    const QString name = row.name == row.id || row.name.isEmpty() ? row.id : row.id + QStringLiteral(", ") + row.name;
    ui->cboWo->addItem(kind + QStringLiteral(": ") + name, kind + u'>' + row.id);
  }
  ui->cboWo->setCurrentIndex(std::max(0, chosen.isEmpty() ? 0 : ui->cboWo->findData(chosen)));
}

std::optional<size_t> FrmDiagramme::Chosen_Row() const {
  const int index = ui->cboWo->currentIndex() - 1;
  if (index < 0 || static_cast<size_t>(index) >= matrix.rows.size()) return {};
  return static_cast<size_t>(index);
}

void FrmDiagramme::Show_Diagram() {
  const int kind = ui->cboArt->currentIndex();
  const auto row = Chosen_Row();
  const QString of = row ? ui->cboWo->currentText() : input.mapName;
  ui->cboWo->setEnabled(kind != accumulation);
  QChart* chart = nullptr;
  if (kind == accumulation) {
    chart = Make_Accumulation_Chart(Accumulate_Areas(matrix));
  } else if (kind == nearest) {
    const NearestDistances found =
        row ? Nearest_In(input, matrix.rows[*row]) : Nearest_On_Map(input, QSize(MapWidthPx, MapHeightPx));
    chart = Make_Nearest_Chart(found, input.measure.unit, of);
  } else {
    const std::vector<RankedSpecies> ranked = Rank_Abundance(matrix, row);
    std::vector<qint64> counts;
    for (const RankedSpecies& species : ranked) counts.push_back(species.count);
    chart = Make_Rank_Chart(ranked, Diversity_Indices(counts), of);
  }
  const std::unique_ptr<QChart> former(ui->view->chart());
  ui->view->setChart(chart);
}

void FrmDiagramme::Save(const QString& ending) {
  const QFileInfo map(MapFile);
  const QString word = ui->cboArt->currentText().section(u' ', 0, 0), upper = ending.toUpper();
  const auto path = File_Dialog({.save = true,
                                 .title = QStringLiteral("Diagramm sichern"),
                                 .folder = map.path(),
                                 .name = map.completeBaseName() + u'_' + word + u'.' + ending,
                                 .defaultExtension = ending,
                                 .filter = upper + QStringLiteral("-Bild (*.%1)|*.%1").arg(ending)});
  if (!path) return;
  QByteArray bytes;
  if (ending == QLatin1String("svg")) {
    bytes = Chart_Svg(*ui->view->scene(), ui->cboArt->currentText());
  } else {
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    Chart_Image(*ui->view->scene(), pictureScale).save(&buffer, "PNG");
  }
  Replace_File(*path, bytes);
}

void FrmDiagramme::Print() {
  Print_Pages(QStringLiteral("Diagramm drucken"), landscape, *Make_Chart_Page(*ui->view->scene()));
}

void FrmDiagramme::Copy() { QGuiApplication::clipboard()->setImage(Chart_Image(*ui->view->scene(), pictureScale)); }

void Show_frmDiagramme(QWidget* parent) { Show_Beside<FrmDiagramme>(parent); }
