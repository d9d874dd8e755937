#pragma once
#include <memory>

#include "windows/common/frm_look_window.h"

namespace Ui {
class FrmFill;
}
class QToolButton;

// The fill of the area or figure in hand, or of the next one.
class FrmFill : public LookWindow {
  Q_OBJECT

 public:
  explicit FrmFill(QWidget* parent = nullptr);
  ~FrmFill() override;

 protected:
  void Show_Look() override;

 private:
  FillCode Chosen() const;
  void Show_Pictures();
  void Take();

  std::unique_ptr<Ui::FrmFill> ui;
  EntryLook shown;
};

// Of the entry in hand or the next one; stays open and follows the entry in hand.
void Show_frmFill(QWidget* parent);
