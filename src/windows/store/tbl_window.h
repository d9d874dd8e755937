#pragma once
#include <QTableView>
#include <QTimer>
#include <QWidget>
#include <functional>

#include "windows/store/tbl_window_model.h"

class QLabel;
class QPlainTextEdit;
class QPushButton;

// The grid: before the first change of a session it warns, and texts of several lines are changed in the line above it.
class TblGrid : public QTableView {
  Q_OBJECT

 public:
  using QTableView::QTableView;
  // The cell that is being typed goes into the table. False if the table refused it: its editor stays open.
  bool Store_Editor();

 Q_SIGNALS:
  void DeleteWanted();    // by key or menu
  void LongTextWanted();  // a text of several lines would be edited

 protected:
  bool edit(const QModelIndex& index, EditTrigger trigger, QEvent* event) override;
  bool event(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
};

// Tbl: the table of the entries beside the map, row by row. Its current row and that of the map are the same.
class TblWindow : public QWidget {
  Q_OBJECT

 public:
  explicit TblWindow(QWidget* parent = nullptr);
  ~TblWindow() override;

  void Sync();      // state -> widgets, at once
  void Take_Row();  // the grid's row -> current row, at once
  TblModel& Model() { return *model; }
  TblGrid& Grid() { return *DBGrid1; }
  void Delete_Selected_Rows();  // after asking; the header row stays

 Q_SIGNALS:
  void ColumnClicked(const QString& name);  // by a click on its head

 protected:
  void closeEvent(QCloseEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void Build();
  void Connect();
  void Show_Columns();
  void Show_Title();
  void Show_Current_Row();
  void Show_Cell_Text();
  bool Take_Text();    // btnTake: Text1 -> the cell. False if it was refused
  bool Store_Typed();  // a cell or Text1, wherever something is being typed
  void Offer_Text();   // another cell is shown: what was typed for the former one is taken or given up
  QString Typed_Text() const;

  TblModel* model;
  TblGrid* DBGrid1;
  QLabel* lblField;
  QPlainTextEdit* Text1;
  QPushButton* btnTake;
  QTimer syncTimer, rowTimer;
  qint64 textKey = noKey;  // cell that Text1 shows
  int textColumn = -1;
  qint64 shownKey = noKey;  // current row as the grid shows it
  int columnsShown = 0;
  int syncing = 0;
  int typing = 0;  // number of Watch_Typing
  std::vector<std::function<void()>> disconnects;
};
