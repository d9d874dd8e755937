#pragma once
#include <memory>

#include "windows/common/frm_look_window.h"

namespace Ui {
class FrmFarb;
}

enum class FarbFor { Entry, Frame, Waypoints };

// The colours of the entry in hand or of the next one. A click on the table takes effect at once.
class FrmFarb : public LookWindow {
  Q_OBJECT

 public:
  explicit FrmFarb(QWidget* parent = nullptr);
  ~FrmFarb() override;
  // Frame: the frame colour is chosen first. Waypoints: the next entries' colours, whatever is in hand.
  void Set_For(FarbFor what);
  // Fills the three colour boxes.
  void Set_Farben();

 protected:
  void Show_Look() override;
  EntryLook Read_Look() const override;

 private:
  void Choose(ColorOf which);
  void Show_Choice();
  QString Caption() const;
  void Take_Color(int number);
  void Take_Frame(bool on);
  void Change_Color_Of_Palette(int number);
  void Standard_Colors();

  std::unique_ptr<Ui::FrmFarb> ui;
  ColorOf chosen = ColorOf::VG;
  FarbFor purpose = FarbFor::Entry;
};

// Colours of the entry in hand or the next one; stays open and follows the entry in hand.
void Show_frmFarb(QWidget* parent, FarbFor what = FarbFor::Entry);
