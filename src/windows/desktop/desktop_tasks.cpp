#include <QApplication>
#include <QDesktopServices>
#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QProgressDialog>
#include <QUrl>

#include "windows/desktop/desktop_dialogs.h"

namespace {

class ProgressWindow : public ProgressFace {
 public:
  void Show(const QString& title, int total) override {
    pointer = std::make_unique<ArrowPointer>();
    const QString text = title.section(u'\n', 1).trimmed(), first = title.section(u'\n', 0, 0).trimmed();
    window = std::make_unique<QProgressDialog>(text.isEmpty() ? first : text, QStringLiteral("Abbrechen"), 0, total,
                                               Dialog_Parent());
    window->setWindowTitle(text.isEmpty() ? QStringLiteral("Bitte warten") : first);
    if (!text.isEmpty()) {
      QPalette red = window->palette();
      red.setColor(QPalette::Highlight, Qt::red);
      window->setPalette(red);
    }
    // The rest of the program is shut while the work runs: events are served in the middle of a procedure.
    window->setWindowModality(Qt::ApplicationModal);
    window->setMinimumDuration(0);
    window->setMinimumWidth(360);
    window->setAutoClose(false);
    window->setAutoReset(false);
    window->setValue(0);
    window->show();
  }
  bool Step(int done) override {
    if (!window) return true;
    window->setValue(done);
    QApplication::processEvents();
    return !window->wasCanceled();
  }
  void Say(const QString& step) override {
    if (!window) return;
    window->setLabelText(step);
    QApplication::processEvents();
  }

 private:
  std::unique_ptr<ArrowPointer> pointer;
  std::unique_ptr<QProgressDialog> window;
};

bool Start(const QString& program, const QStringList& arguments, const std::function<void()>& ended) {
  // No owner: a paint program goes on when this one ends.
  auto* process = new QProcess;
  process->setProcessChannelMode(QProcess::ForwardedChannels);
  process->setStandardInputFile(QProcess::nullDevice());
  QObject::connect(process, &QProcess::finished, qApp, [process, ended] {
    process->deleteLater();
    if (ended) ended();
  });
  process->start(program, arguments);
  if (process->waitForStarted(5000)) return true;
  process->disconnect();
  process->deleteLater();
  return false;
}

bool Open(const QString& path) {
  const bool isPage = path.startsWith(QLatin1String("http://")) || path.startsWith(QLatin1String("https://"));
  if (isPage) return QDesktopServices::openUrl(QUrl(path));
  if (!QFileInfo::exists(path)) return false;
  return QDesktopServices::openUrl(QUrl::fromLocalFile(QFileInfo(path).absoluteFilePath()));
}

}  // namespace

std::unique_ptr<ProgressFace> Make_Desktop_Progress() { return std::make_unique<ProgressWindow>(); }

ShellFace Desktop_Shell() {
  ShellFace face;
  face.start = Start;
  face.open = Open;
  return face;
}
