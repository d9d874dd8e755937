#include "windows/bridge/frmTabAustausch.h"
#include "windows/bridge/frmTabExport.h"
#include "windows/calibration/frmKalibrix.h"
#include "windows/canvas/frmFigurDraw.h"
#include "windows/import/frmGPSGeraet.h"
#include "windows/import/frmWpImport.h"
#include "windows/objects/frmTblSymb.h"
#include "windows/printing/frmPRN.h"

// Every window of the program, at every size of the letters: opened by its command, or by what else opens it.

// A window that no look was taken at fails the test: the forms of the source folder are the list.
static QStringList Forms() {
  QStringList names;
  static const QRegularExpression name("<class>(\\w+)</class>");
  for (const QString& room : QDir(FLURAX_SOURCE_DIR "/src/windows").entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
    const QString folder = QStringLiteral(FLURAX_SOURCE_DIR "/src/windows/") + room;
    for (const QString& form : Find_Files(folder, "*.ui")) names << name.match(Read_Lines(form).join(u' ')).captured(1);
  }
  return names;
}

static QString Name_Of(const QWidget& widget) {
  return QLatin1String(widget.metaObject()->className()) + u' ' + widget.objectName();
}

// Part of a larger control, which lays it out by itself.
static bool Is_Inner(const QWidget& part) {
  if (part.objectName().startsWith(QLatin1String("qt_")) || part.inherits("QSizeGrip")) return true;
  for (const QWidget* above = part.parentWidget(); above && !part.isWindow(); above = above->parentWidget()) {
    for (const char* control : {"QComboBox", "QAbstractSpinBox", "QAbstractItemView", "QTabBar", "QMenuBar", "QToolBar",
                                "QTextEdit", "QPlainTextEdit", "QScrollBar"})
      if (above->inherits(control)) return true;
    if (above->isWindow()) break;
  }
  return false;
}

// Why a user could not read it; empty if he can.
static QString Clipped(const QWidget& part) {
  QSize needed;
  if (const auto* label = qobject_cast<const QLabel*>(&part)) {
    if (label->sizePolicy().horizontalPolicy() == QSizePolicy::Ignored) return {};  // shortened with dots
    needed = label->wordWrap() ? QSize(0, label->heightForWidth(label->width())) : label->sizeHint();
  } else if (qobject_cast<const QAbstractButton*>(&part)) {
    needed = part.sizeHint();
  } else if (const auto* line = qobject_cast<const QLineEdit*>(&part)) {
    needed = {line->maximumWidth() < QWIDGETSIZE_MAX ? line->fontMetrics().horizontalAdvance(line->text()) + 8 : 0,
              line->minimumSizeHint().height()};
  } else if (const auto* box = qobject_cast<const QComboBox*>(&part)) {
    needed = {box->sizeAdjustPolicy() == QComboBox::AdjustToMinimumContentsLengthWithIcon
                  ? 0
                  : box->fontMetrics().horizontalAdvance(box->currentText()) + 24,
              box->minimumSizeHint().height()};
  } else if (qobject_cast<const QAbstractSpinBox*>(&part) || qobject_cast<const QGroupBox*>(&part)) {
    needed = part.minimumSizeHint();
  } else if (const auto* list = qobject_cast<const QListView*>(&part)) {
    if (list->horizontalScrollBarPolicy() == Qt::ScrollBarAlwaysOff)
      needed.setWidth(list->sizeHintForColumn(0) + 2 * list->frameWidth());
  } else if (const auto* tabs = qobject_cast<const QTabBar*>(&part)) {
    for (int i = 0; i < tabs->count(); ++i) needed = needed.expandedTo({tabs->tabRect(i).right(), 0});
  }
  if (part.width() >= needed.width() && part.height() >= needed.height()) return {};
  return QStringLiteral("%1 x %2 instead of %3 x %4")
      .arg(part.width())
      .arg(part.height())
      .arg(needed.width())
      .arg(needed.height());
}

static bool Lays_Out_Plainly(const QWidget& widget) {
  return widget.isWindow() || qobject_cast<const QGroupBox*>(&widget) ||
         widget.metaObject()->className() == QLatin1String("QWidget") ||
         widget.metaObject()->className() == QLatin1String("QFrame");
}

// What is wrong with the looks of a window, one line each.
static QStringList Faults_Of(const QWidget& window) {
  QStringList faults;
  std::vector<const QWidget*> parts;
  for (const QWidget* part : window.findChildren<QWidget*>())
    if (part->isVisibleTo(&window) && part->window() == &window && !Is_Inner(*part)) parts.push_back(part);
  for (const QWidget* part : parts) {
    if (const QString why = Clipped(*part); !why.isEmpty())
      faults << Name_Of(*part) + QStringLiteral(" is clipped: ") + why;
    const QWidget& around = *part->parentWidget();
    if (!Lays_Out_Plainly(around) || part->inherits("QMdiSubWindow")) continue;
    if (!around.rect().contains(part->geometry()))
      faults << Name_Of(*part) + QStringLiteral(" leaves ") + Name_Of(around);
    for (const QWidget* other : parts)
      if (other < part && other->parentWidget() == &around && other->geometry().intersects(part->geometry()))
        faults << Name_Of(*part) + QStringLiteral(" lies on ") + Name_Of(*other);
  }
  // A key that two controls have presses neither of them.
  QHash<QKeySequence, const QWidget*> keys;
  for (const QWidget* part : parts) {
    const auto* button = qobject_cast<const QAbstractButton*>(part);
    const auto* label = qobject_cast<const QLabel*>(part);
    const QKeySequence key = button                    ? button->shortcut()
                             : label && label->buddy() ? QKeySequence::mnemonic(label->text())
                                                       : QKeySequence();
    if (key.isEmpty()) continue;
    if (const QWidget*& former = keys[key])
      faults << Name_Of(*part) + QStringLiteral(" has the key of ") + Name_Of(*former);
    else
      former = part;
  }
  // 7 is no beginning of 70: nothing is completed while one types.
  for (const QLineEdit* line : window.findChildren<QLineEdit*>())
    if (line->completer()) faults << Name_Of(*line->parentWidget()) + QStringLiteral(" completes");
  return faults;
}

class EveryWindow : public CommandTest, public testing::WithParamInterface<double> {
 protected:
  void SetUp() override {
    CommandTest::SetUp();
    ASSERT_TRUE(QDir(Program_File("Hilfe")).removeRecursively());
    ASSERT_TRUE(QFile::link(FLURAX_SOURCE_DIR "/data/Hilfe", Program_File("Hilfe")));
    look = [this](QWidget& shown) { Look_At(shown); };
  }
  void TearDown() override {
    look = {};
    CommandTest::TearDown();
  }

  void Look_At(QWidget& shown) {
    QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
    const QString name = QLatin1String(shown.metaObject()->className());
    found << name;
    ++looks;
    const QRect screen = shown.screen()->availableGeometry();
    const QSize least = shown.minimumSizeHint();
    const bool fits = least.width() <= screen.width() && least.height() <= screen.height();
    EXPECT_TRUE(fits || GetParam() > 1.0) << name << " is larger than the screen";
    EXPECT_TRUE(!fits || &shown == window.get() || screen.contains(shown.geometry()))
        << name << " hangs off the screen";
    for (const QString& fault : Faults_Of(shown))
      ADD_FAILURE() << name << ": " << fault << ", letters x " << GetParam();
    if (GetParam() == 1.0 && qobject_cast<QDialog*>(&shown) && name != "FrmPRN") Expect_Help(shown);
  }

  static void Expect_Help(QWidget& dialog) {
    const QString name = dialog.windowTitle();
    // The main window may be on its way to the front, too.
    const auto isActive = [&dialog] {
      if (QApplication::activeWindow() != &dialog) dialog.activateWindow();
      return QApplication::activeWindow() == &dialog;
    };
    ASSERT_TRUE(QTest::qWaitFor(isActive)) << name;
    QTest::keyClick(&dialog, Qt::Key_F1);
    ASSERT_NE(Help(), nullptr) << name;
    EXPECT_TRUE(QFile::exists(Program_File("Hilfe/" + Help()->Page()))) << name << ' ' << Help()->Page();
    QTest::keyClick(Help(), Qt::Key_Escape);
    EXPECT_EQ(Help(), nullptr) << name;
    EXPECT_TRUE(dialog.isVisible()) << name;
  }

  // With nothing or the first entry in hand with which the command shows a window.
  void Open_By(const Command& command) {
    const int before = looks;
    for (const char* hand : {"", "Otter", "Bild", "Bach", "Moor", "Haus", "Zaun"}) {
      Begin_Again();
      if (*hand) Take_Entry(Key_Of(QString::fromUtf8(hand)));
      Run_Command(command.key, {1, {}});
      Close_Windows();
      if (looks > before) return;
    }
  }

  // What no command opens by itself.
  void Open_The_Others() {
    Begin_Again();
    dialogHooks.Abgesichert({map, TableFile, Path("ein langer Pfad zu einer/Tabelle/KARTE_BAK_12.MDB")});
    dialogHooks.BigMapHint({6000, 4000});
    FrmTblSymb characters(window.get());
    FrmKalibrix calibration(window.get());
    calibration.Open_Map(map);
    FrmTabExport toSheet(map, window.get());
    Export_Rows_Of_Map(map);
    dbEntries->Copy_To(Exchange_File());
    SheetExchange exchange(Exchange_File());
    FrmTabAustausch fromSheet(exchange, window.get());
    fromSheet.Take_Workbook(exchange.Proposed_Workbook());
    FrmWpImport waypoints(window.get());
    FrmGPSGeraet device(window.get());
    for (QDialog* dialog :
         std::initializer_list<QDialog*>{&characters, &calibration, &toSheet, &fromSheet, &waypoints, &device}) {
      dialog->show();
      Close_Windows();
      dialog->hide();
    }
    Show_frmFigurDraw(window.get());
    Close_Windows();
    FrmPRN progress(window.get());  // closes for nobody
    progress.show();
    Close_Windows();
    Look_At(*window);
    for (QWidget* child : window->findChildren<FrmNotePad*>()) Look_At(*child->window()), found << "FrmNotePad";
    Close_Map();
    found << QLatin1String(Child<QWidget>("frmMapStart")->metaObject()->className());
    Look_At(*window);
  }

  const Letters letters{GetParam()};
  QSet<QString> found;
  int looks = 0;
};

INSTANTIATE_TEST_SUITE_P(AtEveryLetterSize, EveryWindow, testing::Values(1.0, 1.5, 2.0));

TEST_P(EveryWindow, ShowsAllOfItself) {
  Write_Lines(Path("Karte neu.cal"), Utm_Calibration({100, 300}, 80));
  CalFileChoice = {Path("Karte.cal"), Path("Karte neu.cal")};
  for (const Command& command : Command_Table()) {
    const bool leaves = command.key == "mnuFluraxFini" || command.key == "mnuMapClose";
    if (!leaves && (!command.procedure || command.key == "mnuChooseGrid")) Open_By(command);
  }
  Open_The_Others();
  for (const QString& form : Forms()) EXPECT_TRUE(found.contains(form)) << form << ": no test has looked at it";
}
