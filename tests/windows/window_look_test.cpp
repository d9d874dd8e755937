#include <QAbstractButton>
#include <QApplication>
#include <QDialog>
#include <QLabel>
#include <QTextBrowser>
#include <QtTest>

#include "maps/map_open.h"
#include "state/mdi_state.h"
#include "store/file_names.h"
#include "windows/analysis/frmDiagramme.h"
#include "windows/analysis/frmDistanz.h"
#include "windows/analysis/frmNachbar.h"
#include "windows/analysis/frmPopOptions.h"
#include "windows/analysis/frmZuord.h"
#include "windows/canvas/dlgBMP.h"
#include "windows/canvas/frmBildZoom.h"
#include "windows/canvas/frmClipboard.h"
#include "windows/canvas/frmMoveObjects.h"
#include "windows/common/help_window.h"
#include "windows/maps/frmAbgesichert.h"
#include "windows/maps/frmInfo.h"
#include "windows/maps/frmMalprg.h"
#include "windows/maps/frmMalprgOpen.h"
#include "windows/maps/frmMapNeu.h"
#include "windows/maps/frmMapSize.h"
#include "windows/maps/frmOptions.h"
#include "windows/maps/frmTipps.h"

// What all dialogs have in common: their page of the help, and room for their texts.

namespace {

class WindowLookTest : public FluraxTest {
 protected:
  void SetUp() override {
    FluraxTest::SetUp();
    ASSERT_TRUE(QFile::link(delivered, Program_File("Hilfe")));
    const MessageScript script;
    Open_Map(Make_Map());
    ASSERT_TRUE(frmMDI.MapOpen);
  }
  static std::vector<std::unique_ptr<QDialog>> All_Dialogs() {
    const QString longPath = "/ein/langer/Pfad zu einer/Tabelle/KARTE_BAK_12.MDB";
    std::vector<std::unique_ptr<QDialog>> dialogs;
    dialogs.push_back(std::make_unique<FrmMapNeu>());
    dialogs.push_back(std::make_unique<FrmMapSize>());
    dialogs.push_back(std::make_unique<FrmMalprg>());
    dialogs.push_back(std::make_unique<FrmMalprgOpen>());
    dialogs.push_back(std::make_unique<FrmAbgesichert>(SafeModeQuestion{longPath, longPath, longPath}));
    dialogs.push_back(std::make_unique<FrmTipps>());
    dialogs.push_back(std::make_unique<FrmTipps>(QSize(6000, 4000), 24));
    dialogs.push_back(std::make_unique<FrmInfo>());
    dialogs.push_back(std::make_unique<FrmOptions>());
    dialogs.push_back(std::make_unique<FrmBildZoom>());
    dialogs.push_back(std::make_unique<FrmMoveObjects>());
    dialogs.push_back(std::make_unique<FrmClipboard>());
    dialogs.push_back(std::make_unique<DlgBMP>());
    dialogs.push_back(std::make_unique<FrmPopOptions>());
    dialogs.push_back(std::make_unique<FrmZuord>());
    dialogs.push_back(std::make_unique<FrmNachbar>());
    dialogs.push_back(std::make_unique<FrmDistanz>());
    dialogs.push_back(std::make_unique<FrmDiagramme>());
    return dialogs;
  }

  const QString delivered = QStringLiteral(FLURAX_SOURCE_DIR "/data/Hilfe");
};

HelpWindow* Visible_Help() {
  for (QWidget* window : QApplication::topLevelWidgets())
    if (auto* help = qobject_cast<HelpWindow*>(window); help && help->isVisible()) return help;
  return nullptr;
}

}  // namespace

TEST_F(WindowLookTest, EveryLinkOfTheHelpLeadsToAPage) {
  HelpWindow window;
  const QStringList pages = Find_Files(delivered, "*.htm*");
  ASSERT_GE(pages.size(), 14);
  const QRegularExpression link("href=\"([^\"]+)\"");
  for (const QString& page : pages) {
    const QString text = Read_Lines(page).join(QLatin1Char('\n'));
    for (auto found = link.globalMatch(text); found.hasNext();) {
      const QString target = found.next().captured(1);
      window.Show_Page(target);
      EXPECT_EQ(window.Page(), target.section(QLatin1Char('#'), 0, 0)) << page;
    }
    window.Show_Page(QFileInfo(page).fileName());
    EXPECT_GT(window.Browser()->toPlainText().size(), 40) << page;
    EXPECT_FALSE(window.Browser()->toPlainText().contains(QChar::ReplacementCharacter)) << page;
    EXPECT_NE(window.windowTitle(), "Hilfe") << page;
  }
  window.Show_Page("TABLEREP.HTM");
  EXPECT_EQ(window.Page(), "tableRep.htm");
  window.Show_Page("gibtesnicht.htm");
  EXPECT_TRUE(window.Browser()->toPlainText().contains("gibtesnicht.htm"));
  window.Show_Page("tableRep.htm");  // the page that stood there before
  EXPECT_TRUE(window.Browser()->toPlainText().contains("abgesicherten Modus"));
}

TEST_F(WindowLookTest, F1OpensThePageOfTheWindow) {
  for (const auto& dialog : All_Dialogs()) {
    dialog->show();
    dialog->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(dialog.get()));
    QTest::keyClick(dialog.get(), Qt::Key_F1);
    HelpWindow* help = Visible_Help();
    ASSERT_NE(help, nullptr) << dialog->windowTitle();
    EXPECT_NE(help->Page(), QString()) << dialog->windowTitle();
    QTest::keyClick(help, Qt::Key_Escape);
    EXPECT_FALSE(help->isVisible());
    EXPECT_TRUE(dialog->isVisible());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    dialog->hide();
  }
}

// At twice the font size as well, no label, button or box gets less room than its text needs.
TEST_F(WindowLookTest, NoTextIsClippedAtAnySize) {
  const QFont normal = QApplication::font();
  for (const double scale : {1.0, 1.5, 2.0}) {
    QFont font = normal;
    font.setPointSizeF(normal.pointSizeF() * scale);
    QApplication::setFont(font);
    for (const auto& dialog : All_Dialogs()) {
      dialog->show();
      QCoreApplication::processEvents();
      for (const QWidget* part : dialog->findChildren<QWidget*>()) {
        const auto* label = qobject_cast<const QLabel*>(part);
        if (!part->isVisible() || !(label || qobject_cast<const QAbstractButton*>(part))) continue;
        const bool wrapped = label && label->wordWrap();
        const QSize needed = wrapped ? QSize(0, part->heightForWidth(part->width())) : part->sizeHint();
        const QString where = dialog->windowTitle() + QLatin1Char(' ') + part->objectName();
        EXPECT_GE(part->width(), needed.width()) << where << " " << scale;
        EXPECT_GE(part->height(), needed.height()) << where << " " << scale;
      }
    }
  }
  QApplication::setFont(normal);
}
