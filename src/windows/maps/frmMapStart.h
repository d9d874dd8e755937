#pragma once
#include <QWidget>
#include <memory>

class QTimer;
namespace Ui {
class FrmMapStart;
}

// A small butterfly; each phase shows its wings a little further open or shut.
class Butterfly : public QWidget {
  Q_OBJECT

 public:
  explicit Butterfly(QWidget* parent);
  void Set_Phase(int number);  // the picture of its wings
  QSize sizeHint() const override { return {36, 32}; }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  int phase = 0;
};

// Shown while no map is open: version, advice, the button that opens the menu "Karte", and the maps opened last.
class FrmMapStart : public QWidget {
  Q_OBJECT

 public:
  explicit FrmMapStart(QWidget* parent = nullptr);
  ~FrmMapStart() override;

 protected:
  void showEvent(QShowEvent* event) override;
  void hideEvent(QHideEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void Open_Map_Menu();
  void Fill_Recent();  // the lines of the menu list, as far as their pictures exist
  void Open_Recent(int line);
  void Move_Butterfly();

  std::unique_ptr<Ui::FrmMapStart> ui;
  Butterfly* Bfly1;
  QTimer* Timer1;
  int step = 0;
  int listener = 0;  // of StateChanged, while the window is shown
};

// The window shown while no map is open; `parent` places it. Its timer runs while it is visible.
QWidget* Make_frmMapStart(QWidget* parent);
