#include "windows/desktop/desktop_dialogs.h"

#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QHeaderView>
#include <QInputDialog>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QRegularExpression>
#include <QShortcut>
#include <QSplitter>
#include <QStandardPaths>
#include <QTreeView>
#include <QUrl>

#include "state/dialog_hooks.h"
#include "state/global_state.h"

// A window that has just been closed is still the active one, and for a moment after it none is: a box that belonged to
// it would get no keys.
QWidget* Dialog_Parent() {
  static QPointer<QWidget> last;
  for (QWidget* active : {QApplication::activeModalWidget(), QApplication::activeWindow()})
    if (active != nullptr && active->isVisible()) return last = active;
  if (last && last->isVisible()) return last;
  const auto windows = QApplication::topLevelWidgets();
  for (QWidget* window : windows)
    if (window->isVisible() && window->windowType() == Qt::Window) return window;
  return nullptr;
}

QString Dialog_Text(QString text) {
  text.replace(QLatin1String("\r\n"), QLatin1String("\n"));
  text.replace(QLatin1Char('\r'), QLatin1Char('\n'));
  return text;
}

void Give_Help(QDialog& dialog, const QString& page) {
  if (dialog.parentWidget()) dialog.setWindowModality(Qt::WindowModal);
  auto* key = new QShortcut(QKeySequence(Qt::Key_F1), &dialog);
  QObject::connect(key, &QShortcut::activated, &dialog, [page] {
    if (dialogHooks.Help) dialogHooks.Help(page);
  });
}

ArrowPointer::ArrowPointer() { QApplication::setOverrideCursor(Qt::ArrowCursor); }
ArrowPointer::~ArrowPointer() { QApplication::restoreOverrideCursor(); }

namespace {

QMessageBox::Icon Icon_Of(MsgIcon icon) {
  switch (icon) {
    case MsgIcon::Information:
      return QMessageBox::Information;
    case MsgIcon::Question:
      return QMessageBox::Question;
    case MsgIcon::Warning:
      return QMessageBox::Warning;
    case MsgIcon::Critical:
      return QMessageBox::Critical;
    case MsgIcon::None:
      break;
  }
  return QMessageBox::NoIcon;
}

struct ButtonChoice {
  QMessageBox::StandardButton button;
  const char* caption;
  MsgAnswer answer;
};

std::vector<ButtonChoice> Choices(MsgButtons buttons) {
  const ButtonChoice ok{QMessageBox::Ok, "OK", MsgAnswer::Ok};
  const ButtonChoice cancel{QMessageBox::Cancel, "Abbrechen", MsgAnswer::Cancel};
  const ButtonChoice yes{QMessageBox::Yes, "&Ja", MsgAnswer::Yes};
  const ButtonChoice no{QMessageBox::No, "&Nein", MsgAnswer::No};
  switch (buttons) {
    case MsgButtons::Ok:
      return {ok};
    case MsgButtons::OkCancel:
      return {ok, cancel};
    case MsgButtons::YesNo:
      return {yes, no};
    case MsgButtons::YesNoCancel:
      return {yes, no, cancel};
    case MsgButtons::YesNoAll:
      return {yes,
              no,
              {QMessageBox::YesToAll, "Ja, für &alle", MsgAnswer::YesAll},
              {QMessageBox::NoToAll, "Nein, für a&lle", MsgAnswer::NoAll}};
  }
  return {ok};
}

}  // namespace

MsgAnswer Desktop_Message(const MsgRequest& request) {
  const ArrowPointer arrow;
  QMessageBox box(Dialog_Parent());
  Give_Help(box, request.helpPage);
  box.setTextFormat(Qt::PlainText);  // file names may hold "<" and "&"
  box.setText(Dialog_Text(request.text));
  box.setIcon(Icon_Of(request.icon));
  const QString title = request.title.trimmed();
  box.setWindowTitle(title.isEmpty() ? QStringLiteral("FLURAX") : title);
  QPushButton* other = nullptr;
  if (!request.other.isEmpty()) other = box.addButton(request.other, QMessageBox::YesRole);
  const auto choices = Choices(request.buttons);
  const auto wanted = std::min(static_cast<size_t>(request.defaultButton), choices.size() - 1);
  for (size_t i = 0; i < choices.size(); ++i) {
    QPushButton* button = box.addButton(choices[i].button);
    button->setText(QString::fromUtf8(choices[i].caption));
    if (i == wanted) box.setDefaultButton(button);
  }
  if (other != nullptr && request.defaultButton == MsgDefault::First) box.setDefaultButton(other);
  if (!request.helpPage.isEmpty()) {
    QPushButton* help = box.addButton(QStringLiteral("&Hilfe"), QMessageBox::HelpRole);
    help->disconnect();  // it does not close the box
    QObject::connect(help, &QPushButton::clicked, &box, [&request] {
      if (dialogHooks.Help) dialogHooks.Help(request.helpPage);
    });
  }
  // Esc and the closing cross: the careful answer, the last button.
  box.setEscapeButton(choices.back().button);
  const int pressed = box.exec();
  if (other != nullptr && box.clickedButton() == other) return MsgAnswer::Other;
  for (const ButtonChoice& choice : choices)
    if (choice.button == pressed) return choice.answer;
  return choices.back().answer;
}

QStringList Dialog_Filters(const QString& filter, bool save) {
  // The text often names the patterns itself; the dialog does so as well.
  static const QRegularExpression patternsInText(QStringLiteral("\\s*\\([^)]*\\*[^)]*\\)\\s*$"));
  const QString allFiles = QStringLiteral("Alle Dateien (*)");
  QStringList lines;
  const QStringList parts = filter.split(QLatin1Char('|'), Qt::KeepEmptyParts);
  bool hasAll = false;
  for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
    QStringList patterns = parts[i + 1].split(QLatin1Char(';'), Qt::SkipEmptyParts);
    for (QString& pattern : patterns) {
      pattern = pattern.trimmed();
      if (pattern == QLatin1String("*.*")) pattern = QStringLiteral("*");
    }
    hasAll = hasAll || patterns.contains(QLatin1String("*"));
    const QString text = QString(parts[i]).remove(patternsInText).trimmed();
    lines << text + QLatin1String(" (") + patterns.join(QLatin1Char(' ')) + QLatin1Char(')');
  }
  if (lines.isEmpty() || (!save && !hasAll)) lines << allFiles;
  return lines;
}

// Size, type and date are readable, the name takes what is left.
static void Widen_Columns(QFileDialog& dialog) {
  auto* list = dialog.findChild<QTreeView*>(QStringLiteral("treeView"));
  if (!list) return;
  list->header()->setStretchLastSection(false);
  list->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
  list->header()->setSectionResizeMode(0, QHeaderView::Stretch);
}

static void Add_Places(QFileDialog& dialog) {
  const QStringList places = {QDir::homePath(), QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation),
                              ProgramFolder, ProgramFolder + QStringLiteral("/Beispiele")};
  QList<QUrl> urls = {QUrl(QStringLiteral("file:"))};
  for (const QString& place : places) {
    const QUrl url = QUrl::fromLocalFile(place);
    if (QFileInfo(place).isDir() && !urls.contains(url)) urls << url;
  }
  dialog.setSidebarUrls(urls);
  if (auto* splitter = dialog.findChild<QSplitter*>(QStringLiteral("splitter"))) splitter->setSizes({160, 640});
}

std::optional<QString> Desktop_File_Dialog(const FileRequest& request) {
  const ArrowPointer arrow;
  QFileDialog dialog(Dialog_Parent(), request.title.trimmed());
  Give_Help(dialog, request.helpPage);
  // Qt's own dialog: German on every desktop, and patterns that ignore case.
  dialog.setOption(QFileDialog::DontUseNativeDialog);
  dialog.setAcceptMode(request.save ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
  dialog.setFileMode(request.save ? QFileDialog::AnyFile : QFileDialog::ExistingFile);
  dialog.setNameFilters(Dialog_Filters(request.filter, request.save));
  dialog.setDefaultSuffix(request.defaultExtension);
  dialog.setLabelText(QFileDialog::FileName, QStringLiteral("Dateiname:"));
  dialog.setLabelText(QFileDialog::FileType, QStringLiteral("Dateityp:"));
  dialog.setLabelText(QFileDialog::Accept, request.save ? QStringLiteral("&Sichern") : QStringLiteral("Ö&ffnen"));
  dialog.setLabelText(QFileDialog::Reject, QStringLiteral("Abbrechen"));
  dialog.setDirectory(QFileInfo(request.folder).isDir() ? request.folder : QDir::homePath());
  if (!request.name.isEmpty()) dialog.selectFile(QFileInfo(request.name).fileName());
  Widen_Columns(dialog);
  Add_Places(dialog);
  dialog.resize(820, 500);
  if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return std::nullopt;
  return dialog.selectedFiles().constFirst();
}

std::optional<QString> Desktop_Input_Box(const QString& prompt, const QString& title, const QString& proposal) {
  const ArrowPointer arrow;
  QInputDialog dialog(Dialog_Parent());
  Give_Help(dialog, {});
  dialog.setWindowTitle(title.trimmed().isEmpty() ? QStringLiteral("FLURAX") : title.trimmed());
  dialog.setLabelText(Dialog_Text(prompt));
  dialog.setTextValue(proposal);
  dialog.setOkButtonText(QStringLiteral("OK"));
  dialog.setCancelButtonText(QStringLiteral("Abbrechen"));
  dialog.resize(420, dialog.sizeHint().height());
  if (dialog.exec() != QDialog::Accepted) return std::nullopt;
  return dialog.textValue();
}
