#include "windows/common/help_window.h"

#include <QApplication>
#include <QDesktopServices>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPointer>
#include <QPushButton>
#include <QTextBrowser>
#include <QUrl>
#include <QVBoxLayout>

#include "platform/files.h"
#include "store/file_names.h"
#include "windows/common/frm_dialogs.h"
#include "windows/common/tool_place.h"

namespace {

const QString contentsPage = QStringLiteral("index.htm");

QPointer<HelpWindow> theWindow;

// Narrower where it would hide its caller else, but not for the sake of one that fills the screen.
void Place_Help(HelpWindow& help, const QRect& caller) {
  const QSize widest = help.size();
  for (const int width : {widest.width(), 600, 460, widest.width()}) {
    help.resize(width, widest.height());
    Place_Beside(help, caller);
    if (!QRect(help.pos(), help.size()).intersects(caller)) return;
  }
}

}  // namespace

HelpWindow::HelpWindow(QWidget* parent) : QWidget(parent, Qt::Window), browser(new QTextBrowser(this)) {
  setObjectName(QStringLiteral("frmHilfe"));
  setWindowTitle(QStringLiteral("Hilfe"));
  // The program ends with its main window, whether the help is still open or not.
  setAttribute(Qt::WA_QuitOnClose, false);
  setAttribute(Qt::WA_DeleteOnClose);

  auto* contents = new QPushButton(QStringLiteral("Inhalt"), this);
  auto* back = new QPushButton(QStringLiteral("< Zurück"), this);
  auto* forward = new QPushButton(QStringLiteral("Vor >"), this);
  auto* close = new QPushButton(QStringLiteral("Schließen"), this);
  back->setEnabled(false);
  forward->setEnabled(false);
  auto* bar = new QHBoxLayout;
  for (QPushButton* button : {contents, back, forward}) bar->addWidget(button);
  bar->addStretch();
  bar->addWidget(close);
  auto* all = new QVBoxLayout(this);
  all->addLayout(bar);
  all->addWidget(browser);
  browser->setOpenLinks(false);
  browser->document()->setDocumentMargin(12);

  connect(contents, &QPushButton::clicked, this, [this] { Show_Page(contentsPage); });
  connect(back, &QPushButton::clicked, browser, &QTextBrowser::backward);
  connect(forward, &QPushButton::clicked, browser, &QTextBrowser::forward);
  connect(close, &QPushButton::clicked, this, &QWidget::close);
  connect(browser, &QTextBrowser::backwardAvailable, back, &QWidget::setEnabled);
  connect(browser, &QTextBrowser::forwardAvailable, forward, &QWidget::setEnabled);
  connect(browser, &QTextBrowser::anchorClicked, this, &HelpWindow::Follow);
  connect(browser, &QTextBrowser::sourceChanged, this, [this] {
    const QString title = browser->documentTitle();
    setWindowTitle(title.isEmpty() ? QStringLiteral("Hilfe") : QStringLiteral("Hilfe: ") + title);
  });
  resize(760, 620);
  browser->setFocus();
}

void HelpWindow::Show_Page(const QString& page) {
  const QString name = page.section(QLatin1Char('#'), 0, 0), anchor = page.section(QLatin1Char('#'), 1);
  const QString path = Find_File(Program_File(QStringLiteral("Hilfe/") + (name.isEmpty() ? contentsPage : name)));
  if (path.isEmpty()) {
    browser->setHtml(QStringLiteral("<h2>Hilfe</h2><p>Die Hilfeseite „%1“ wurde nicht gefunden.</p>"
                                    "<p>Sie wird in diesem Ordner erwartet:<br>%2</p>")
                         .arg(page.toHtmlEscaped(), Program_File(QStringLiteral("Hilfe")).toHtmlEscaped()));
    setWindowTitle(QStringLiteral("Hilfe"));
    return;
  }
  QUrl url = QUrl::fromLocalFile(path);
  if (!anchor.isEmpty()) url.setFragment(anchor);
  browser->setSource(url);
}

QString HelpWindow::Page() const { return QFileInfo(browser->source().toLocalFile()).fileName(); }

void HelpWindow::Follow(const QUrl& url) {
  // Links between pages are bare names, found whatever their case; others belong to the desktop's browser.
  if (!url.isRelative() && !url.isLocalFile()) {
    QDesktopServices::openUrl(url);
    return;
  }
  const QString name = url.path().isEmpty() ? Page() : QFileInfo(url.path()).fileName();
  Show_Page(url.hasFragment() ? name + QLatin1Char('#') + url.fragment() : name);
}

void HelpWindow::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape)
    close();
  else
    QWidget::keyPressEvent(event);
}

void Show_Help(QWidget* parent, const QString& page) {
  if (!theWindow) {
    // No parent: it stays usable beside a dialog and behind other windows.
    theWindow = new HelpWindow;
    QObject::connect(qApp, &QCoreApplication::aboutToQuit, theWindow, [] { delete theWindow.data(); });
    Place_Help(*theWindow, parent ? parent->window()->frameGeometry() : QRect(QCursor::pos(), QSize(1, 1)));
  }
  theWindow->Show_Page(page);
  theWindow->show();
  theWindow->raise();
  theWindow->activateWindow();
}
