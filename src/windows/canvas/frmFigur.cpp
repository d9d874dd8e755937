#include "windows/canvas/frmFigur.h"

#include <array>
#include <cmath>

#include "edit/figure_edit.h"
#include "edit/figure_extras.h"
#include "hand/next_shape.h"
#include "objects/figure.h"
#include "platform/message_box.h"
#include "state/dialog_hooks.h"
#include "state/events.h"
#include "state/global_state.h"
#include "state/map_state.h"
#include "state/run_guarded.h"
#include "tools/figure_tool.h"
#include "tools/free_figure_tool.h"
#include "ui_frmFigur.h"
#include "windows/canvas/figure_fields.h"
#include "windows/canvas/frmFigurDraw.h"
#include "windows/common/frm_dialogs.h"
#include "windows/common/show_beside.h"
#include "windows/common/window_support.h"

namespace {

constexpr std::array kinds = {EntryKind::Rectangle, EntryKind::Square, EntryKind::Ellipse, EntryKind::Circle,
                              EntryKind::FreeFigure};
constexpr int freeLine = 4;
constexpr QSize iconSize(44, 30);

int Line_Of(EntryKind kind) {
  for (int i = 0; i < freeLine; ++i)
    if (kinds[static_cast<size_t>(i)] == kind) return i;
  return freeLine;
}

// Drawn as on the map.
QIcon Kind_Icon(EntryKind kind) {
  QImage image = Make_Canvas(iconSize.width(), iconSize.height());
  const auto surface = Make_Surface(image);
  DrawContext context{*surface, {}, surface->Extent()};
  EntryRow row;
  row.Schrift = FillCode{1}.ToSchrift();
  const int width = Keeps_Square(kind) ? 22 : 34;
  set_entry_box(row, {(iconSize.width() - width) / 2, 4, width, 22});
  const std::vector<QPoint> vertices = {{5, 24}, {9, 6}, {21, 13}, {34, 4}, {38, 22}, {22, 26}};
  Draw_Figure(context, row, kind, vertices, {qRgb(0, 0, 0), qRgb(255, 240, 150), qRgb(40, 80, 130)});
  return QPixmap::fromImage(image);
}

}  // namespace

FrmFigur::FrmFigur(QWidget* parent) : QDialog(parent), ui(std::make_unique<Ui::FrmFigur>()) {
  ui->setupUi(this);
  Prepare_Dialog(*this, QStringLiteral("Figuren.htm"));
  setWindowModality(Qt::NonModal);
  ui->lstFigur->setIconSize(iconSize);
  for (const EntryKind kind : kinds) new QListWidgetItem(Kind_Icon(kind), Figure_Word(kind), ui->lstFigur);
  ui->lstFigur->setFixedWidth(ui->lstFigur->sizeHintForColumn(0) + 2 * ui->lstFigur->frameWidth() + 8);
  for (QLineEdit* field : {ui->txtLaenge, ui->txtBreite}) {
    field->setAlignment(Qt::AlignRight);
    connect(field, &QLineEdit::textChanged, this, &FrmFigur::Show_Measures);
    connect(field, &QLineEdit::textEdited, this, &FrmFigur::Take_Next_Size);
  }
  connect(ui->lstFigur, &QListWidget::currentRowChanged, this, &FrmFigur::Choose_Kind);
  connect(ui->cmdOK, &QPushButton::clicked, this, &FrmFigur::accept);
  connect(ui->cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
  connect(ui->btnNeu, &QPushButton::clicked, this, &FrmFigur::New_Figure);
  const auto opens = [this](QPushButton* button, std::function<void()> DialogHooks::*hook) {
    button->setEnabled(static_cast<bool>(dialogHooks.*hook));
    connect(button, &QPushButton::clicked, this, [hook] {
      if (dialogHooks.*hook) Run_Guarded(dialogHooks.*hook);
    });
  };
  opens(ui->btnBreite, &DialogHooks::WidthWindow);
  opens(ui->btnFarb, &DialogHooks::ColorWindow);
  opens(ui->btnFuell, &DialogHooks::FillWindow);
  closedListener = events.MapClosed.Connect([this] { reject(); });
  stateListener = events.StateChanged.Connect([this] { Follow(); });
  tableListener = events.TableChanged.Connect([this] { Follow(); });
  Show_Values(static_cast<EntryKind>(NextShape.figure), NextShape.figureWidth, NextShape.figureHeight);
  Follow();
  ui->lstFigur->setFocus();
}

FrmFigur::~FrmFigur() {
  events.MapClosed.Disconnect(closedListener);
  events.StateChanged.Disconnect(stateListener);
  events.TableChanged.Disconnect(tableListener);
}

void FrmFigur::Follow() {
  const std::optional<EntryRow> row = Figure_In_Hand();
  ui->lblFigur->setText(row ? QStringLiteral("Figur in Arbeit: %1").arg(row->Eintrag)
                        : Figure_Tool_In_Use()
                            ? QStringLiteral("Ziehen Sie die Figur auf der Karte mit der Maus auf, oder klicken Sie.")
                            : QStringLiteral("Größe der nächsten Figur, die mit einem Klick gesetzt wird:"));
  if (row == shown) return;
  const bool ended = shown && !row;
  shown = row;
  if (row) {
    const EntryBox box = entry_box(*row);
    Show_Values(EntryType::Parse(row->Typ).Kind(), box.width, box.height);
  } else if (ended) {
    Show_Values(static_cast<EntryKind>(NextShape.figure), NextShape.figureWidth, NextShape.figureHeight);
  }
}

void FrmFigur::Show_Values(EntryKind kind, int width, int height) {
  const Syncing guard(syncing);
  const int line = Line_Of(kind);
  ui->lstFigur->setCurrentRow(line);
  // What was drawn point by point stays as it is.
  const bool free = shown && line == freeLine;
  for (int i = 0; i < freeLine; ++i) {
    QListWidgetItem* item = ui->lstFigur->item(i);
    item->setFlags(free ? item->flags() & ~Qt::ItemIsEnabled : item->flags() | Qt::ItemIsEnabled);
  }
  ui->txtBreite->setEnabled(!Keeps_Square(kind));
  ui->txtLaenge->setText(QString::number(width));
  ui->txtBreite->setText(QString::number(Keeps_Square(kind) ? width : height));
}

void FrmFigur::Show_Measures() {
  if (!ui->txtBreite->isEnabled() && ui->txtBreite->text() != ui->txtLaenge->text())
    ui->txtBreite->setText(ui->txtLaenge->text());
  ui->lblMassL->setText(Pixels_Text(Pixels_Of(ui->txtLaenge->text()).value_or(0), false));
  ui->lblMassB->setText(Pixels_Text(Pixels_Of(ui->txtBreite->text()).value_or(0), true));
}

// Without a figure in hand the numbers are those of the next one.
void FrmFigur::Take_Next_Size() {
  if (shown) return;
  const auto width = Pixels_Of(ui->txtLaenge->text()), height = Pixels_Of(ui->txtBreite->text());
  if (!width || !height || !Figure_Problem({0, 0, *width, *height}).isEmpty()) return;
  NextShape.figureWidth = *width;
  NextShape.figureHeight = *height;
}

void FrmFigur::Choose_Kind(int line) {
  if (syncing > 0 || line < 0) return;
  Run_Guarded([this, line] {
    const EntryKind kind = kinds[static_cast<size_t>(line)];
    if (line == freeLine) {
      Show_frmFigurDraw(parentWidget());
    } else if (shown) {
      NextShape.figure = static_cast<int>(kind);
      const EntryBox box = entry_box(*shown);
      Change_Figure(kind, box.width, box.height);
    } else {
      const int height = NextShape.figureHeight;
      if (NextShape.figure != static_cast<int>(kind) || !Figure_Tool_In_Use()) Choose_Figure(kind);
      Show_Values(kind, NextShape.figureWidth, height);
    }
  });
  Follow();
}

void FrmFigur::New_Figure() {
  Run_Guarded([this] {
    const int line = ui->lstFigur->currentRow();
    if (line == freeLine || line < 0) {
      Draw_Free_Figure();
    } else if (!Figure_Tool_In_Use() || shown) {
      Choose_Figure(kinds[static_cast<size_t>(line)]);
    }
  });
}

void FrmFigur::accept() {
  const auto width = Pixels_Of(ui->txtLaenge->text()), height = Pixels_Of(ui->txtBreite->text());
  const QString problem = width && height ? Figure_Problem({0, 0, *width, *height})
                                          : QStringLiteral("Bitte geben Sie Länge und Breite als Zahl ein.");
  if (!problem.isEmpty()) {
    Message_Box(problem, MsgButtons::Ok, MsgIcon::Information, windowTitle());
    QLineEdit* field = width && *width >= 1 && ui->txtBreite->isEnabled() ? ui->txtBreite : ui->txtLaenge;
    field->setFocus();
    field->selectAll();
    return;
  }
  Run_Guarded([&] {
    if (shown) {
      Change_Figure(kinds[static_cast<size_t>(std::max(0, ui->lstFigur->currentRow()))], *width, *height);
    } else {
      Take_Next_Size();
      New_Figure();
    }
  });
}

void FrmFigur::done(int result) {
  Drop_Figure_Tool();
  QDialog::done(result);
}

void Show_frmFigur(QWidget* parent) { Show_Beside<FrmFigur>(parent); }
