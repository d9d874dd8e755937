#include "windows/store/tbl_window.h"

#include <QCloseEvent>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QMenu>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QSet>
#include <QVBoxLayout>

#include "edit/table_edit.h"
#include "hand/leave_hand.h"
#include "platform/message_box.h"
#include "state/events.h"
#include "state/global_state.h"
#include "state/map_state.h"
#include "state/mdi_state.h"
#include "state/run_guarded.h"
#include "state/table_state.h"
#include "store/entry.h"
#include "tools/mouse.h"
#include "windows/common/frm_dialogs.h"
#include "windows/common/window_support.h"
#include "windows/store/tbl_window_model.h"

namespace {

constexpr int leastRows = 2;
constexpr int settleAfter = 40;  // ms: a key that repeats passes over rows without taking each in hand

QString Window_Lines(QString text) { return text.replace(QLatin1String("\r\n"), QLatin1String("\n")); }

}  // namespace

// The grid
// -------------------------------------------------------------------------------------------------------------

bool TblGrid::edit(const QModelIndex& index, EditTrigger trigger, QEvent* event) {
  const bool starts = (editTriggers() & trigger) || trigger == AllEditTriggers;
  if (!starts || !index.isValid() || !(index.flags() & Qt::ItemIsEditable) || state() == EditingState)
    return QTableView::edit(index, trigger, event);
  // Release and move events pass here too; only those that would open the editor count.
  if (event && event->type() == QEvent::KeyPress && trigger == AnyKeyPressed) {
    const QString typed = static_cast<QKeyEvent*>(event)->text();
    if (typed.isEmpty() || !typed[0].isPrint()) return QTableView::edit(index, trigger, event);
  }
  Run_Guarded([] { Warn_Before_Edit(); });
  if (index.data(Qt::EditRole).toString().contains(u'\n')) {
    Q_EMIT LongTextWanted();
    return false;
  }
  return QTableView::edit(index, trigger, event);
}

bool TblGrid::Store_Editor() {
  QWidget* editor = state() == EditingState ? indexWidget(currentIndex()) : nullptr;
  if (!editor) return true;
  commitData(editor);
  if (static_cast<TblModel*>(model())->Refused()) return false;
  closeEditor(editor, QAbstractItemDelegate::NoHint);
  return true;
}

static bool Is_Grid_Key(const QKeyEvent& event) {
  return (event.key() == Qt::Key_Delete && event.modifiers() == Qt::NoModifier) ||
         (event.key() == Qt::Key_F1 && event.modifiers() == Qt::NoModifier);
}

// What the map does with them it does from here as well.
static bool Is_Map_Key(const QKeyEvent& event) {
  return event.modifiers() == Qt::NoModifier && (event.key() == Qt::Key_Escape || event.key() == Qt::Key_Return ||
                                                 event.key() == Qt::Key_Enter || event.key() == Qt::Key_Pause);
}

bool TblGrid::event(QEvent* event) {
  // The menu has these keys as well; here they mean the rows.
  if (event->type() == QEvent::ShortcutOverride && Is_Grid_Key(*static_cast<QKeyEvent*>(event))) {
    event->accept();
    return true;
  }
  return QTableView::event(event);
}

void TblGrid::keyPressEvent(QKeyEvent* event) {
  if (Is_Map_Key(*event) && state() != EditingState) {
    Run_Guarded([event] { Map_Key(event->key(), {}); });
  } else if (!Is_Grid_Key(*event)) {
    QTableView::keyPressEvent(event);
  } else if (event->key() == Qt::Key_F1) {
    Show_Help(window(), QStringLiteral("Tabellenfenster.htm"));
  } else {
    Q_EMIT DeleteWanted();
  }
}

// The window
// -----------------------------------------------------------------------------------------------------------

TblWindow::TblWindow(QWidget* parent)
    : QWidget(parent),
      model(new TblModel(this)),
      DBGrid1(new TblGrid(this)),
      lblField(new QLabel(this)),
      Text1(new QPlainTextEdit(this)),
      btnTake(new QPushButton(QStringLiteral("Ü&bernehmen"), this)) {
  Build();
  Connect();
  typing = Watch_Typing([this] { return Store_Typed(); });
  Sync();
}

TblWindow::~TblWindow() {
  Forget_Typing(typing);
  for (const auto& disconnect : disconnects) disconnect();
}

void TblWindow::Build() {
  setObjectName(QStringLiteral("Tbl"));
  DBGrid1->setObjectName(QStringLiteral("DBGrid1"));
  Text1->setObjectName(QStringLiteral("Text1"));
  btnTake->setObjectName(QStringLiteral("btnTake"));
  lblField->setObjectName(QStringLiteral("lblField"));
  setWindowIcon(Program_Icon(QStringLiteral("table")));
  setMinimumWidth(260);
  lblField->setBuddy(Text1);
  lblField->setMinimumWidth(lblField->fontMetrics().horizontalAdvance(QStringLiteral("Eintrag:  ")));
  Text1->setTabChangesFocus(true);
  Text1->setAccessibleName(QStringLiteral("Text der Zelle"));
  Text1->setFixedHeight(2 * Text1->fontMetrics().lineSpacing() + 10);
  Text1->installEventFilter(this);
  btnTake->setToolTip(QStringLiteral("Den Text in die Tabelle übernehmen (Eingabetaste)"));
  btnTake->setAutoDefault(false);
  auto* line = new QHBoxLayout;
  line->setContentsMargins(4, 3, 4, 0);
  line->addWidget(lblField);
  line->addWidget(Text1, 1);
  line->addWidget(btnTake);
  auto* all = new QVBoxLayout(this);
  all->setContentsMargins(0, 0, 0, 0);
  all->setSpacing(3);
  all->addLayout(line);
  all->addWidget(DBGrid1, 1);
  setTabOrder(Text1, btnTake);
  setTabOrder(btnTake, DBGrid1);
  setFocusProxy(DBGrid1);

  DBGrid1->setModel(model);
  DBGrid1->setTabKeyNavigation(false);
  DBGrid1->setAlternatingRowColors(true);
  DBGrid1->setWordWrap(false);
  DBGrid1->setSelectionMode(QAbstractItemView::ExtendedSelection);
  DBGrid1->setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed |
                           QAbstractItemView::AnyKeyPressed);
  DBGrid1->setVerticalScrollMode(QAbstractItemView::ScrollPerItem);
  DBGrid1->setContextMenuPolicy(Qt::ActionsContextMenu);
  // One height for all: the view need not ask 100,000 rows.
  DBGrid1->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  DBGrid1->verticalHeader()->setDefaultSectionSize(DBGrid1->fontMetrics().height() + 6);
  DBGrid1->verticalHeader()->setMinimumWidth(DBGrid1->fontMetrics().horizontalAdvance(QStringLiteral("100000")) + 8);
  DBGrid1->horizontalHeader()->setSectionsClickable(true);
  DBGrid1->horizontalHeader()->setHighlightSections(false);
  DBGrid1->horizontalHeader()->setMinimumSectionSize(30);
  // Some rows are always seen.
  DBGrid1->setMinimumHeight(DBGrid1->horizontalHeader()->sizeHint().height() +
                            DBGrid1->horizontalScrollBar()->sizeHint().height() +
                            leastRows * DBGrid1->verticalHeader()->defaultSectionSize());
}

void TblWindow::Connect() {
  const auto listen = [this](auto& event, auto listener) {
    const int number = event.Connect(listener);
    disconnects.emplace_back([&event, number] { event.Disconnect(number); });
  };
  // Many changes in one go are shown once.
  listen(events.TableChanged, [this] { syncTimer.start(); });
  listen(events.CurrentRowChanged, [this] { syncTimer.start(); });
  listen(events.StateChanged, [this] { Show_Title(); });
  listen(events.MapOpened, [this] {
    Tbl.HiddenColumns.clear();
    Sync();
  });
  listen(events.MapClosed, [this] {
    Text1->document()->setModified(false);  // what was typed there belonged to that map
    Sync();
  });
  syncTimer.setSingleShot(true);
  connect(&syncTimer, &QTimer::timeout, this, [this] { Run_Guarded([this] { Sync(); }); });
  rowTimer.setSingleShot(true);
  rowTimer.setInterval(settleAfter);
  connect(&rowTimer, &QTimer::timeout, this, [this] { Run_Guarded([this] { Take_Row(); }); });
  connect(DBGrid1->selectionModel(), &QItemSelectionModel::currentChanged, this,
          [this](const QModelIndex& now, const QModelIndex& before) {
            if (syncing > 0) return;
            Run_Guarded([this] { Offer_Text(); });
            Show_Cell_Text();
            if (now.row() != before.row()) rowTimer.start();
          });
  // A click on the row that is current already takes its entry in hand again.
  connect(DBGrid1, &QTableView::clicked, this, [this] { rowTimer.start(); });
  connect(DBGrid1->horizontalHeader(), &QHeaderView::sectionClicked, this,
          [this](int section) { Q_EMIT ColumnClicked(model->Name_Of(section)); });
  connect(DBGrid1, &TblGrid::DeleteWanted, this, [this] { Run_Guarded([this] { Delete_Selected_Rows(); }); });
  connect(DBGrid1, &TblGrid::LongTextWanted, Text1, [this] { Text1->setFocus(); });
  connect(btnTake, &QPushButton::clicked, this, [this] { Run_Guarded([this] { Take_Text(); }); });
  auto* remove = new QAction(QStringLiteral("Zeile löschen"), DBGrid1);
  connect(remove, &QAction::triggered, DBGrid1, &TblGrid::DeleteWanted);
  DBGrid1->addAction(remove);
}

void TblWindow::Sync() {
  syncTimer.stop();
  {
    const Syncing guard(syncing);
    const QScrollBar* bar = DBGrid1->verticalScrollBar();
    const int top = bar->value();
    const int columns = model->columnCount();
    const QModelIndex former = DBGrid1->currentIndex();
    const int formerColumn = std::max(0, former.column());
    model->Refresh();
    if (columns != model->columnCount() || columnsShown == 0) Show_Columns();
    for (int i = 0; i < model->columnCount(); ++i)
      DBGrid1->setColumnHidden(i, Tbl.HiddenColumns.contains(model->Name_Of(i)));
    if (!DBGrid1->currentIndex().isValid()) {
      // The model was set anew: the eye stays where it was.
      DBGrid1->verticalScrollBar()->setValue(top);
      shownKey = noKey;
      DBGrid1->selectionModel()->setCurrentIndex(
          model->index(std::max(0, model->Row_Of(Map.CurBookmark.toLongLong())), formerColumn),
          QItemSelectionModel::NoUpdate);
    }
    Show_Current_Row();
    Show_Title();
  }
  if (!Text1->document()->isModified()) Show_Cell_Text();
}

void TblWindow::Show_Title() {
  const QString title = Tbl.DBGrid1.Caption.isEmpty() ? QStringLiteral("Tabelle der Einträge")
                                                      : QStringLiteral("Tabelle der Einträge: ") + Tbl.DBGrid1.Caption;
  if (windowTitle() != title) setWindowTitle(title);
}

void TblWindow::Show_Columns() {
  columnsShown = model->columnCount();
  const int letter = DBGrid1->fontMetrics().averageCharWidth();
  for (int i = 0; i < columnsShown; ++i) {
    const bool text = i == column::ID || i == column::Eintrag || i == column::Schrift ||
                      (i >= column::fixedCount && model->data(model->index(0, i), Qt::TextAlignmentRole).toInt() &
                                                      static_cast<int>(Qt::AlignLeft));
    const int title = DBGrid1->fontMetrics().horizontalAdvance(model->Name_Of(i)) + 20;
    DBGrid1->setColumnWidth(i, std::max(title, letter * (i == column::Eintrag ? 34 : text ? 18 : 8)));
  }
}

// The current row of the program, unless the grid stands there.
void TblWindow::Show_Current_Row() {
  const qint64 key = Map.CurBookmark.isEmpty() ? noKey : Map.CurBookmark.toLongLong();
  if (key == shownKey || rowTimer.isActive()) return;
  const int row = model->Row_Of(key);
  if (row < 0) return;
  shownKey = key;
  const QModelIndex index = model->index(row, std::max(0, DBGrid1->currentIndex().column()));
  if (DBGrid1->currentIndex().row() != row)
    DBGrid1->selectionModel()->setCurrentIndex(index, QItemSelectionModel::ClearAndSelect);
  // Sideways the grid stays where the user has put it.
  const int sideways = DBGrid1->horizontalScrollBar()->value();
  DBGrid1->scrollTo(index, QAbstractItemView::EnsureVisible);
  DBGrid1->horizontalScrollBar()->setValue(sideways);
}

void TblWindow::Take_Row() {
  rowTimer.stop();
  const qint64 key = model->Key_Of(DBGrid1->currentIndex().row());
  if (key == noKey) return;
  shownKey = key;
  Row_Changed(key);
}

// The line above the grid
// ----------------------------------------------------------------------------------------------

void TblWindow::Show_Cell_Text() {
  const QModelIndex index = DBGrid1->currentIndex();
  textKey = model->Key_Of(index.row());
  textColumn = index.column();
  const bool usable = textKey != noKey && index.flags().testFlag(Qt::ItemIsEditable);
  lblField->setText(index.isValid() ? model->Name_Of(textColumn) + u':' : QString());
  const QString text = Window_Lines(model->Text_Of(index));
  if (Text1->toPlainText() != text || Text1->document()->isModified()) Text1->setPlainText(text);
  Text1->document()->setModified(false);
  Text1->setEnabled(usable);
  btnTake->setEnabled(usable);
}

QString TblWindow::Typed_Text() const { return Stored_Lines(Text1->toPlainText()); }

bool TblWindow::Take_Text() {
  if (textKey == noKey || textColumn < 0) return false;
  if (Edit_Cell(textKey, textColumn, Typed_Text()) == CellEdit::Refused) {
    Text1->setFocus();
    return false;
  }
  Text1->document()->setModified(false);
  Sync();
  return true;
}

bool TblWindow::Store_Typed() {
  if (!DBGrid1->Store_Editor()) return false;
  const int row = Text1->document()->isModified() ? model->Row_Of(textKey) : -1;
  return row < 0 || model->Text_Of(model->index(row, textColumn)) == Typed_Text() || Take_Text();
}

void TblWindow::Offer_Text() {
  if (!Text1->document()->isModified() || textKey == noKey) return;
  Text1->document()->setModified(false);
  const int at = model->Row_Of(textKey);
  if (at < 0 || model->Text_Of(model->index(at, textColumn)) == Typed_Text()) return;
  const QString typed = Typed_Text();
  if (Message_Box(QStringLiteral("Der Text wurde geändert.\nSoll er in die Tabelle übernommen werden?"),
                  MsgButtons::YesNo, MsgIcon::Question, windowTitle()) == MsgAnswer::Yes)
    Edit_Cell(textKey, textColumn, typed);
}

bool TblWindow::eventFilter(QObject* watched, QEvent* event) {
  if (watched != Text1 || (event->type() != QEvent::KeyPress && event->type() != QEvent::ShortcutOverride))
    return QWidget::eventFilter(watched, event);
  const auto* key = static_cast<QKeyEvent*>(event);
  const bool enter =
      (key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter) && key->modifiers() == Qt::NoModifier;
  const bool cancel = key->key() == Qt::Key_Escape, help = key->key() == Qt::Key_F1;
  if (!enter && !cancel && !help) return QWidget::eventFilter(watched, event);
  event->accept();
  if (event->type() == QEvent::ShortcutOverride) return true;
  if (help) {
    Show_Help(window(), QStringLiteral("Tabellenfenster.htm"));
  } else if (cancel) {
    Show_Cell_Text();
    DBGrid1->setFocus();
  } else {
    Run_Guarded([this] {
      if (Take_Text()) DBGrid1->setFocus();
    });
  }
  return true;
}

// -----------------------------------------------------------------------------------------------------------------------

void TblWindow::Delete_Selected_Rows() {
  QSet<int> chosen;
  for (const QItemSelectionRange& range : DBGrid1->selectionModel()->selection())
    for (int row = range.top(); row <= range.bottom(); ++row) chosen << row;
  if (chosen.isEmpty() && DBGrid1->currentIndex().isValid()) chosen << DBGrid1->currentIndex().row();
  std::vector<qint64> keys;
  for (const int row : chosen)
    if (const qint64 key = model->Key_Of(row); key != noKey) keys.push_back(key);
  rowTimer.stop();
  if (keys.empty() || !Delete_Rows(keys)) return;
  Text1->document()->setModified(false);
  shownKey = noKey;
  Sync();
}

void TblWindow::closeEvent(QCloseEvent* event) {
  event->ignore();
  if (frmMDI.TblVisible) Run_Guarded([] { Table_On_Off(QStringLiteral("Off")); });
}
