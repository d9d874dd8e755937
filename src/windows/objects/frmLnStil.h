#pragma once
#include <QDialog>
#include <memory>

namespace Ui {
class FrmLnStil;
}

// Line style of the line in hand, else of the next line. A change is seen on the map at once; Cancel takes it back.
class FrmLnStil : public QDialog {
  Q_OBJECT

 public:
  explicit FrmLnStil(QWidget* parent = nullptr);
  ~FrmLnStil() override;

 public Q_SLOTS:
  void reject() override;

 private:
  int Chosen() const;
  void Apply();

  std::unique_ptr<Ui::FrmLnStil> ui;
  int former;
};

void Show_frmLnStil(QWidget* parent);  // one window, in front; it does not wait
