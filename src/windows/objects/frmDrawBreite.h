#pragma once
#include <memory>

#include "windows/common/frm_look_window.h"

namespace Ui {
class FrmDrawBreite;
}

// Width of the line, outline or frame in hand, or of the next line or area.
class FrmDrawBreite : public LookWindow {
  Q_OBJECT

 public:
  explicit FrmDrawBreite(QWidget* parent = nullptr);
  ~FrmDrawBreite() override;

 protected:
  void Show_Look() override;

 private:
  FrameWord Chosen() const;
  void Show_Patterns();
  void Show_Picture();
  void Take();

  std::unique_ptr<Ui::FrmDrawBreite> ui;
};

// Of the entry in hand or the next one; stays open and follows the entry in hand.
void Show_frmDrawBreite(QWidget* parent);
