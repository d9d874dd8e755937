#include "windows/store/frmStaende.h"

#include <QSignalBlocker>

#include "maps/version_look.h"
#include "platform/message_box.h"
#include "state/mdi_state.h"
#include "state/run_guarded.h"
#include "state/task_line.h"
#include "ui_frmStaende.h"
#include "view/redraw.h"
#include "windows/common/frm_dialogs.h"
#include "windows/common/tool_place.h"

namespace {

constexpr int widthLetters = 76, heightLines = 30;

QString Counts(const VersionDifferences& all) {
  return QStringLiteral("%1 gelöscht, %2 geändert, %3 neu")
      .arg(all.Count(VersionEntry::Gone))
      .arg(all.Count(VersionEntry::Changed))
      .arg(all.added);
}

bool Is_Same(const VersionDifferences& all) { return all.entries.empty() && all.added == 0; }

QString Difference_Text(const VersionDifferences& all) {
  if (Is_Same(all)) return QStringLiteral("Seither hat sich nichts geändert.");
  return QStringLiteral("Seither: ") + Counts(all) + QStringLiteral(". Was soll wieder werden, wie es war?");
}

}  // namespace

FrmStaende::FrmStaende(QWidget* parent) : QDialog(parent), ui(std::make_unique<Ui::FrmStaende>()) {
  ui->setupUi(this);
  Prepare_Dialog(*this, QStringLiteral("Staende.htm"));
  resize(fontMetrics().averageCharWidth() * widthLetters, fontMetrics().height() * heightLines);
  ui->numPlatz->setMaximum(mostVersionRoom);
  ui->numPlatz->setValue(Version_Room());
  connect(ui->lstStaende, &QListWidget::currentRowChanged, this, [this] {
    ui->btnLook->setChecked(false);
    Show_Differences();
  });
  connect(ui->lstEintraege, &QListWidget::itemChanged, this, [this](const QListWidgetItem* item) {
    chosenEntries += item->checkState() == Qt::Checked ? 1 : -1;
    Enable_Buttons();
  });
  connect(ui->numPlatz, &QSpinBox::editingFinished, this,
          [this] { Run_Guarded([this] { Set_Version_Room(ui->numPlatz->value()); }); });
  connect(ui->btnLook, &QPushButton::toggled, this, [this](bool on) { Run_Guarded([&] { Show_On_Map(on); }); });
  connect(ui->btnTakeAll, &QPushButton::clicked, this, [this] { Run_Guarded([this] { Take_All(); }); });
  connect(ui->btnTakeSome, &QPushButton::clicked, this, [this] { Run_Guarded([this] { Take_Chosen(); }); });
  connect(ui->btnClose, &QPushButton::clicked, this, &QDialog::close);
  connect(&timer, &QTimer::timeout, this, [this] { Work(); });
  Load_List();
}

FrmStaende::~FrmStaende() = default;

void FrmStaende::Load_List() {
  versions.clear();
  ui->lstStaende->clear();
  for (const TableVersion& version : Table_Versions()) {
    versions.push_back({version, {}, false});
    ui->lstStaende->addItem(QString());
    Show_Line(ui->lstStaende->count() - 1);
  }
  if (!versions.empty()) ui->lstStaende->setCurrentRow(0);
  Table_Changed();
}

void FrmStaende::Table_Changed() {
  comparison.Forget();
  counting = -1;
  for (size_t row = 0; row < versions.size(); ++row) {
    versions[row].differences.reset();
    Show_Line(static_cast<int>(row));
  }
  Show_Differences();
  if (!versions.empty()) timer.start(0);
}

// Counting -----------------------------------------------------------------------------------------------------------

void FrmStaende::Work() {
  constexpr int piece = 12;  // ms: keys and mouse are heard between two
  Count_On(piece);
  List_Some();
  const Shown* chosen = Chosen();
  const bool listed = !chosen || !chosen->differences ||
                      ui->lstEintraege->count() == static_cast<int>(chosen->differences->entries.size());
  if (Next_To_Count() < 0 && listed) timer.stop();
}

int FrmStaende::Next_To_Count() const {
  const auto open = [this](int row) {
    const Shown& version = versions[static_cast<size_t>(row)];
    return !version.differences && !version.unreadable;
  };
  const int count = static_cast<int>(versions.size()), chosen = ui->lstStaende->currentRow();
  if (chosen >= 0 && chosen < count && open(chosen)) return chosen;
  for (int row = 0; row < count; ++row)
    if (open(row)) return row;
  return -1;
}

// The chosen one comes first, and again when another one is chosen.
void FrmStaende::Count_On(int milliseconds) {
  const int row = Next_To_Count();
  if (row < 0) return;
  Shown& version = versions[static_cast<size_t>(row)];
  try {
    if (row != counting) comparison.Begin(version.version);
    counting = row;
    if (!comparison.Go_On(milliseconds)) return;
    version.differences = comparison.Take();
  } catch (const Error&) {
    version.unreadable = true;
  }
  counting = -1;
  Show_Line(row);
  if (row == ui->lstStaende->currentRow()) Show_Differences();
}

void FrmStaende::Show_Line(int row) {
  const Shown& it = versions[static_cast<size_t>(row)];
  const QString since = it.unreadable              ? QStringLiteral("nicht lesbar")
                        : !it.differences          ? QStringLiteral("wird verglichen ...")
                        : Is_Same(*it.differences) ? QStringLiteral("wie jetzt")
                                                   : Counts(*it.differences);
  ui->lstStaende->item(row)->setText(it.version.when.toString(QStringLiteral("dd.MM.yyyy  HH:mm")) +
                                     QStringLiteral("    ") + Entries_Text(it.version.entries) +
                                     QStringLiteral("    ") + since);
}

const FrmStaende::Shown* FrmStaende::Chosen() const {
  const int row = ui->lstStaende->currentRow();
  return row >= 0 && row < static_cast<int>(versions.size()) ? &versions[static_cast<size_t>(row)] : nullptr;
}

void FrmStaende::Show_Differences() {
  ui->lstEintraege->clear();
  chosenEntries = 0;
  const Shown* chosen = Chosen();
  if (!chosen)
    ui->lblUnterschied->setText(
        QStringLiteral("Von dieser Tabelle gibt es noch keinen früheren Stand. Beim nächsten Öffnen der Karte wird "
                       "einer aufgehoben, wenn sich etwas geändert hat."));
  else if (chosen->unreadable)
    ui->lblUnterschied->setText(QStringLiteral("Dieser Stand lässt sich nicht lesen."));
  else if (!chosen->differences)
    ui->lblUnterschied->setText(QStringLiteral("Wird mit der Tabelle von jetzt verglichen ..."));
  else
    ui->lblUnterschied->setText(Difference_Text(*chosen->differences));
  if (chosen) timer.start(0);
  Enable_Buttons();
}

void FrmStaende::List_Some() {
  constexpr int atOnce = 200;
  const Shown* chosen = Chosen();
  if (!chosen || !chosen->differences) return;
  const std::vector<VersionDifference>& entries = chosen->differences->entries;
  const QSignalBlocker quiet(ui->lstEintraege);
  for (int i = 0; i < atOnce && ui->lstEintraege->count() < static_cast<int>(entries.size()); ++i) {
    const VersionDifference& entry = entries[static_cast<size_t>(ui->lstEintraege->count())];
    auto* item = new QListWidgetItem(
        (entry.how == VersionEntry::Gone ? QStringLiteral("gelöscht   ") : QStringLiteral("geändert   ")) + entry.name,
        ui->lstEintraege);
    item->setFlags(item->flags() | Qt::ItemIsUserCheckable);
    item->setCheckState(Qt::Unchecked);
  }
}

void FrmStaende::Enable_Buttons() {
  const Shown* chosen = Chosen();
  const bool readable = chosen && !chosen->unreadable;
  ui->btnTakeSome->setEnabled(chosenEntries > 0);
  ui->btnTakeAll->setEnabled(readable);
  ui->btnLook->setEnabled(readable);
}

// Taking back --------------------------------------------------------------------------------------------------------

void FrmStaende::Show_On_Map(bool on) {
  if (on && Chosen() && Show_Version(Chosen()->version)) return;
  if (on) ui->btnLook->setChecked(false);
  if (frmMDI.MapOpen) Map_Redraw();
}

// The table is closed and opened on the way: nothing of it may be held then.
void FrmStaende::Take_All() {
  if (!Chosen()) return;
  const TableVersion version = Chosen()->version;
  const QString question = QStringLiteral(
                               "Soll die Tabelle werden, wie sie am %1 war?\n\nDas ist ein Schritt und lässt "
                               "sich mit Strg+Z zurücknehmen.")
                               .arg(version.when.toString(QStringLiteral("dd.MM.yyyy HH:mm")));
  if (Message_Box(question, MsgButtons::YesNo, MsgIcon::Question, windowTitle()) != MsgAnswer::Yes) return;
  ui->btnLook->setChecked(false);
  timer.stop();
  comparison.Forget();
  Take_Back_Version(version);
  Table_Changed();
}

void FrmStaende::Take_Chosen() {
  if (!Chosen() || !Chosen()->differences) return;
  std::vector<VersionDifference> entries;
  for (int row = 0; row < ui->lstEintraege->count(); ++row)
    if (ui->lstEintraege->item(row)->checkState() == Qt::Checked)
      entries.push_back(Chosen()->differences->entries[static_cast<size_t>(row)]);
  ui->btnLook->setChecked(false);
  timer.stop();
  comparison.Forget();
  Take_Back_Entries(Chosen()->version, entries);
  Table_Changed();
}

void Show_frmStaende(QWidget* parent) {
  FrmStaende window(parent);
  Works_Beside(window);
  window.exec();
  if (frmMDI.MapOpen) Map_Redraw();  // what was looked at goes
}
