#pragma once
#include <QDialog>
#include <QSize>
#include <memory>

namespace Ui {
class FrmTipps;
}

// The tips of "Tipps.txt": all of them one after the other, or the one for a large map with its size.
class FrmTipps : public QDialog {
  Q_OBJECT

 public:
  explicit FrmTipps(QWidget* parent = nullptr);
  explicit FrmTipps(QSize map, QWidget* parent = nullptr);
  ~FrmTipps() override;

 public Q_SLOTS:
  void accept() override;

 private:
  void Prepare();
  void Show_Tip(int number);

  std::unique_ptr<Ui::FrmTipps> ui;
  int tip = 1;
};

// The tips one after the other.
void Show_frmTipps(QWidget* parent);
