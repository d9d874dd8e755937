#pragma once
#include <QDialog>
#include <memory>

#include "store/entry_id.h"

namespace Ui {
class FrmLineEndpunkte;
}

// End marks of the line in hand, else of the next line, with a picture of them. A change is seen on the map at once;
// Cancel takes it back.
class FrmLineEndpunkte : public QDialog {
  Q_OBJECT

 public:
  explicit FrmLineEndpunkte(QWidget* parent = nullptr);
  ~FrmLineEndpunkte() override;

 public Q_SLOTS:
  void reject() override;

 private:
  LineEnds Chosen() const;
  void Fill_Shapes();
  void Apply();
  void Show_Picture();

  std::unique_ptr<Ui::FrmLineEndpunkte> ui;
  LineEnds former;
};

void Show_frmLineEndpunkte(QWidget* parent);  // one window, in front; it does not wait
