#include "windows/common/frm_dialogs.h"

#include <QComboBox>
#include <QDialog>
#include <QKeyEvent>
#include <QLayout>
#include <QMenuBar>
#include <QShortcut>
#include <QTimer>

#include "maps/commands.h"
#include "state/run_guarded.h"
#include "windows/common/tool_place.h"

namespace {

// Beside the map the keys for steps mean what they mean there, unless what has the focus knows better.
bool Run_Step_Key(const QDialog& dialog, const QKeyEvent& key) {
  if (dialog.isModal()) return false;
  for (const QString& command : {QStringLiteral("mnuStepBack"), QStringLiteral("mnuStepForward")})
    for (const QString& keys : Find_Command(command)->shortcut.split(u' ')) {
      if (QKeySequence(keys) != QKeySequence(key.keyCombination())) continue;
      Run_Guarded([&command] { Run_Command(command); });
      return true;
    }
  return false;
}

// What every dialog gets when it is shown, and leaves when it goes.
class DialogManners : public QObject {
 public:
  using QObject::QObject;
  bool eventFilter(QObject* watched, QEvent* event) override {
    auto* dialog = qobject_cast<QDialog*>(watched);
    if (event->type() == QEvent::Show && !event->spontaneous())
      Prepare(*dialog);
    else if (event->type() == QEvent::Hide && !event->spontaneous())
      Remember_Place(*dialog);
    else if (event->type() == QEvent::KeyPress)
      return Run_Step_Key(*dialog, *static_cast<QKeyEvent*>(event));
    return false;
  }

 private:
  static void Prepare(QDialog& dialog) {
    // What is typed is what is meant: 7 is no beginning of 70.
    for (QComboBox* box : dialog.findChildren<QComboBox*>())
      if (box->isEditable()) box->setCompleter(nullptr);
    const bool placed = dialog.testAttribute(Qt::WA_Moved);
    Keep_On_Screen(dialog);
    // Wrapped labels do not know their width when a dialog's first size is worked out: rows are squeezed, or far too
    // high. It takes the height that its width needs.
    if (dialog.layout() && dialog.layout()->hasHeightForWidth())
      dialog.resize(dialog.width(), dialog.layout()->totalHeightForWidth(dialog.width()));
    if (!placed) Place_Tool_Window(dialog);
    // What it shows may make it larger yet.
    QTimer::singleShot(0, &dialog, [&dialog] { Keep_On_Screen(dialog); });
  }
};

}  // namespace

void Prepare_Dialog(QDialog& dialog, const QString& helpPage) {
  Prepare_Dialog(dialog, [helpPage] { return helpPage; });
}

void Prepare_Dialog(QDialog& dialog, std::function<QString()> helpPage) {
  dialog.setWindowFlag(Qt::WindowContextHelpButtonHint, false);
  // Only its own main window is blocked, so that the help can be read meanwhile.
  dialog.setWindowModality(dialog.parentWidget() ? Qt::WindowModal : Qt::NonModal);
  dialog.installEventFilter(new DialogManners(&dialog));
  auto* help = new QShortcut(QKeySequence(Qt::Key_F1), &dialog);
  QObject::connect(help, &QShortcut::activated, &dialog,
                   [&dialog, page = std::move(helpPage)] { Show_Help(&dialog, page()); });
}

void Give_Menu_Bar(QDialog& dialog, const std::vector<DialogMenuLine>& lines) {
  auto* bar = new QMenuBar(&dialog);
  bar->setNativeMenuBar(false);
  for (const DialogMenuLine& line : lines) {
    QAction* action = bar->addAction(line.caption);
    action->setObjectName(QLatin1String(line.name));
    action->setShortcut(line.key);
    QObject::connect(action, &QAction::triggered, &dialog, line.work);
    dialog.addAction(action);
  }
  dialog.layout()->setMenuBar(bar);
}
