#pragma once
#include <QHash>
#include <QMainWindow>
#include <QTimer>
#include <vector>

#include "maps/menu_table.h"
#include "maps/toolbar_table.h"

class MapWindow;
class PanelRow;
class QLabel;
class QMdiArea;
class QMdiSubWindow;
class TblWindow;

// The main window: menus, Toolbar1, InfoBar and the area of the child windows. It shows frmMDI, the looks of the
// commands, Toolbar1, InfoBar and Map, and runs the command that the user chooses.
class MdiWindow : public QMainWindow {
  Q_OBJECT

 public:
  explicit MdiWindow(QWidget* parent = nullptr);
  ~MdiWindow() override;

  void Sync();  // state -> widgets
  // Action of a menu or of a command in it; of line 1..10 of a list. nullptr if there is none.
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
    const MenuRow* menu = nullptr;
    const Command* command = nullptr;  // or a menu
    int line = 0;
    QAction* action = nullptr;
    const QString& Key() const { return menu ? menu->key : command->key; }
  };

  void Build_Menus();
  void Build_Menu(QMenu& menu, const MenuRow& row);
  void Add_Command(QMenu& menu, const Command& command, int line);
  void Build_Child_Windows();
  void Build_InfoBar();
  void Connect_Events();
  void Run(const QString& command, int line = 0);
  void Show_Popup();

  void Sync_Menus();
  void Sync_Toolbar();
  void Rebuild_Toolbar(const std::vector<ToolButton>& buttons);
  void Add_Tool(const ToolButton& button);
  void Sync_Tool(QAction& action, const ToolButton& button);
  void Sync_InfoBar();
  void Sync_Map();
  void Place_Map();
  void Build_Table_Window();
  void Sync_Table(bool place);
  void Place_Table();
  int Least_Table_Height() const;
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
  PanelRow* panels = nullptr;
  QLabel* zoomPanel = nullptr;
  std::vector<MenuItem> items;
  QTimer idleTimer, resizeTimer, tableTimer;
  std::vector<std::function<void()>> disconnects;
  int syncing = 0;
};
