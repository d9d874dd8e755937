#pragma once
#include <QDialog>
#include <memory>

#include "state/dialog_hooks.h"

class QButtonGroup;
namespace Ui {
class FrmAbgesichert;
}

// What shall be done with a map's table before it is loaded in the safe mode.
class FrmAbgesichert : public QDialog {
  Q_OBJECT

 public:
  explicit FrmAbgesichert(const SafeModeQuestion& question, QWidget* parent = nullptr);
  ~FrmAbgesichert() override;
  int Choice() const { return choice; }  // 0 to 3 by "Weiter >>", 4 by "Abbrechen", Esc or the window's cross

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void Go_On();

  std::unique_ptr<Ui::FrmAbgesichert> ui;
  QButtonGroup* choices;
  int choice = 4;
};
