#include "windows/maps/frmAbgesichert.h"

#include <QButtonGroup>
#include <QEvent>

#include "ui_frmAbgesichert.h"
#include "windows/common/frm_dialogs.h"

FrmAbgesichert::FrmAbgesichert(const SafeModeQuestion& question, QWidget* parent)
    : QDialog(parent), ui(std::make_unique<Ui::FrmAbgesichert>()), choices(new QButtonGroup(this)) {
  ui->setupUi(this);
  Prepare_Dialog(*this, QStringLiteral("tableRep.htm"));
  ui->lblMap->setText(QStringLiteral("Karte: ") + question.map);
  ui->lblDB->setText(question.table);
  ui->lblBakName->setText(question.backup);
  // The texts are long: they stand in wrapped labels, and a click on one sets its option.
  for (int i = 0; i < 4; ++i) {
    auto* option = findChild<QRadioButton*>(QStringLiteral("optChoice%1").arg(i));
    auto* text = findChild<QLabel*>(QStringLiteral("lblChoice%1").arg(i));
    choices->addButton(option, i);
    option->setAccessibleName(text->text());
    text->installEventFilter(this);
    text->setProperty("choice", i);
  }
  choices->button(1)->setChecked(true);
  connect(ui->cmdWeiter, &QPushButton::clicked, this, &FrmAbgesichert::Go_On);
  connect(ui->cmdBreak, &QPushButton::clicked, this, &QDialog::reject);
  choices->button(1)->setFocus();
  resize(fontMetrics().horizontalAdvance(QLatin1Char('x')) * 92, 1);  // the height follows from the texts
}

FrmAbgesichert::~FrmAbgesichert() = default;

bool FrmAbgesichert::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::MouseButtonPress) {
    choices->button(watched->property("choice").toInt())->setChecked(true);
    choices->checkedButton()->setFocus();
  }
  return QDialog::eventFilter(watched, event);
}

void FrmAbgesichert::Go_On() {
  choice = choices->checkedId();
  accept();
}
