#pragma once
#include <QHash>
#include <QMainWindow>
#include <QTimer>
#include <array>
#include <vector>

#include "maps/menu_table.h"

class ElidedLabel;
class MapWindow;
class QLabel;
class QMdiArea;
class QMdiSubWindow;
class TblWindow;

// The main window: menus, Toolbar1, InfoBar and the area of the child windows. It shows frmMDI, the menu states,
// Toolbar1, InfoBar and Map, and calls the handler of what the user chooses.
class MdiWindow : public QMainWindow {
  Q_OBJECT

 public:
  explicit MdiWindow(QWidget* parent = nullptr);
  ~MdiWindow() override;

  void Sync();  // state -> widgets
  // Action of a menu entry; of line 1..10 of a list. nullptr if there is none.
  QAction* Action(const QString& key, int line = 0) const;
  MapWindow& Map_Window() { return *mapWindow; }
  TblWindow& Table_Window() { return *tblWindow; }

 protected:
  bool event(QEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dropEvent(QDropEvent* event) override;

 private:
  struct MenuItem {
    const MenuRow* row = nullptr;
    int line = 0;
    QAction* action = nullptr;
  };

  void Build_Menus();
  QAction* Add_Entry(QMenu& menu, const MenuRow& row, int line);
  void Build_Child_Windows();
  void Build_InfoBar();
  void Connect_Events();
  void Call_Handler(const QString& key, int line);
  void Call_Tool(const QString& key, int line);
  void Show_Popup();

  void Sync_Menus();
  void Sync_Toolbar();
  void Rebuild_Toolbar();
  void Sync_Tool(QAction& action, const struct ToolButton& button);
  void Sync_InfoBar();
  void Sync_Map();
  void Place_Map();
  void Build_Table_Window();
  void Sync_Table(bool place);
  void Place_Table();
  void Check_Table_Place();
  void Place_Start();

  void Map_State_Changed(Qt::WindowStates state);
  void Report_Inner_Size();
  void Inner_Resized();
  void Idle();

  QMdiArea* area = nullptr;
  MapWindow* mapWindow = nullptr;
  QMdiSubWindow* mapChild = nullptr;
  TblWindow* tblWindow = nullptr;
  QMdiSubWindow* tblChild = nullptr;
  QWidget* frmMapStart = nullptr;
  QToolBar* toolbar = nullptr;
  QMenu* popup = nullptr;
  QStringList toolbarKeys;
  std::array<ElidedLabel*, 3> panels{};
  QLabel* zoomPanel = nullptr;
  std::vector<MenuItem> items;
  QTimer idleTimer, resizeTimer, tableTimer;
  std::vector<std::function<void()>> disconnects;
  int syncing = 0;
};
