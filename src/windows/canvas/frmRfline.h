#pragma once
#include <QDialog>
#include <array>
#include <memory>

#include "objects/reference_line.h"

namespace Ui {
class FrmRfline;
}
class QToolButton;

// Reference lines: the end mark of the entry in hand and of the next foot points, and the style of all of them. Changes
// are seen in the map at once; "Abbrechen" takes them back.
class FrmRfline : public QDialog {
  Q_OBJECT

 public:
  explicit FrmRfline(QWidget* parent = nullptr);
  ~FrmRfline() override;

 public Q_SLOTS:
  void reject() override;

 private:
  std::array<QToolButton*, 3> Ends() const;
  void Choose_End(int mark);
  void Choose_Style();
  void Show_Ends();
  void Use_Style(const ReferenceStyle& style);

  std::unique_ptr<Ui::FrmRfline> ui;
  ReferenceStyle formerStyle;
  int formerNext, formerEnd;  // end mark of the next foot points and of the entry in hand, 0 where it has no choice
};

void Show_frmRfline(QWidget* parent);  // one window, in front; it does not wait
