#include "windows/store/frmStaende.h"

#include <algorithm>

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

constexpr int widthLetters = 62, heightLines = 30;

QString Difference_Text(const VersionDifferences& all) {
  const auto count = [&all](VersionEntry how) {
    return std::count_if(all.entries.begin(), all.entries.end(), [how](const auto& it) { return it.how == how; });
  };
  const auto gone = count(VersionEntry::Gone), changed = count(VersionEntry::Changed);
  if (gone + changed + all.added == 0) return QStringLiteral("Seither hat sich nichts geändert.");
  return QStringLiteral("Seither: %1 gelöscht, %2 geändert, %3 neu. Was soll wieder werden, wie es war?")
      .arg(gone)
      .arg(changed)
      .arg(all.added);
}

}  // namespace

FrmStaende::FrmStaende(QWidget* parent) : QDialog(parent), ui(std::make_unique<Ui::FrmStaende>()) {
  ui->setupUi(this);
  Prepare_Dialog(*this, QStringLiteral("Staende.htm"));
  resize(fontMetrics().averageCharWidth() * widthLetters, fontMetrics().height() * heightLines);
  ui->numPlatz->setValue(Version_Room());
  connect(ui->lstStaende, &QListWidget::currentRowChanged, this, [this] {
    ui->btnLook->setChecked(false);
    Run_Guarded([this] { Show_Differences(); });
  });
  connect(ui->lstEintraege, &QListWidget::itemChanged, this, [this] { Enable_Buttons(); });
  connect(ui->numPlatz, &QSpinBox::editingFinished, this, [this] { Set_Version_Room(ui->numPlatz->value()); });
  connect(ui->btnLook, &QPushButton::toggled, this, [this](bool on) { Run_Guarded([&] { Show_On_Map(on); }); });
  connect(ui->btnTakeAll, &QPushButton::clicked, this, [this] { Run_Guarded([this] { Take_All(); }); });
  connect(ui->btnTakeSome, &QPushButton::clicked, this, [this] { Run_Guarded([this] { Take_Chosen(); }); });
  connect(ui->btnClose, &QPushButton::clicked, this, &QDialog::close);
  Load_List();
}

FrmStaende::~FrmStaende() = default;

void FrmStaende::Load_List() {
  versions = Table_Versions();
  ui->lstStaende->clear();
  for (const TableVersion& version : versions)
    ui->lstStaende->addItem(version.when.toString(QStringLiteral("dd.MM.yyyy  HH:mm")) + QStringLiteral("    ") +
                            Entries_Text(version.entries));
  if (!versions.isEmpty()) ui->lstStaende->setCurrentRow(0);
  Show_Differences();
}

const TableVersion* FrmStaende::Chosen() const {
  const int row = ui->lstStaende->currentRow();
  return row >= 0 && row < versions.size() ? &versions[row] : nullptr;
}

void FrmStaende::Show_Differences() {
  ui->lstEintraege->clear();
  const TableVersion* version = Chosen();
  if (!version) {
    ui->lblUnterschied->setText(
        QStringLiteral("Von dieser Tabelle gibt es noch keinen früheren Stand. Beim nächsten Öffnen der Karte wird "
                       "einer aufgehoben, wenn sich etwas geändert hat."));
  } else {
    const VersionDifferences all = Differences_To(*version);
    ui->lblUnterschied->setText(Difference_Text(all));
    for (const VersionDifference& entry : all.entries) {
      auto* item = new QListWidgetItem(
          (entry.how == VersionEntry::Gone ? QStringLiteral("gelöscht   ") : QStringLiteral("geändert   ")) +
              entry.name,
          ui->lstEintraege);
      item->setFlags(item->flags() | Qt::ItemIsUserCheckable);
      item->setCheckState(Qt::Unchecked);
      item->setData(Qt::UserRole, entry.key);
    }
  }
  Enable_Buttons();
}

void FrmStaende::Enable_Buttons() {
  bool some = false;
  for (int row = 0; row < ui->lstEintraege->count(); ++row)
    some |= ui->lstEintraege->item(row)->checkState() == Qt::Checked;
  ui->btnTakeSome->setEnabled(some);
  ui->btnTakeAll->setEnabled(Chosen() != nullptr);
  ui->btnLook->setEnabled(Chosen() != nullptr);
}

void FrmStaende::Show_On_Map(bool on) {
  if (on && Chosen() && Show_Version(*Chosen())) return;
  if (on) ui->btnLook->setChecked(false);
  if (frmMDI.MapOpen) Map_Redraw();
}

void FrmStaende::Take_All() {
  if (!Chosen()) return;
  const TableVersion version = *Chosen();
  const QString question = QStringLiteral(
                               "Soll die Tabelle werden, wie sie am %1 war?\n\nDas ist ein Schritt und lässt "
                               "sich mit Strg+Z zurücknehmen.")
                               .arg(version.when.toString(QStringLiteral("dd.MM.yyyy HH:mm")));
  if (Message_Box(question, MsgButtons::YesNo, MsgIcon::Question, windowTitle()) != MsgAnswer::Yes) return;
  ui->btnLook->setChecked(false);
  if (Take_Back_Version(version)) Show_Differences();
}

void FrmStaende::Take_Chosen() {
  if (!Chosen()) return;
  QList<qint64> keys;
  for (int row = 0; row < ui->lstEintraege->count(); ++row)
    if (ui->lstEintraege->item(row)->checkState() == Qt::Checked)
      keys += ui->lstEintraege->item(row)->data(Qt::UserRole).toLongLong();
  ui->btnLook->setChecked(false);
  if (Take_Back_Entries(*Chosen(), keys)) Show_Differences();
}

void Show_frmStaende(QWidget* parent) {
  FrmStaende window(parent);
  Works_Beside(window);
  window.exec();
  if (frmMDI.MapOpen) Map_Redraw();  // what was looked at goes
}
