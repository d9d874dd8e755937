#pragma once
#include <QDialog>
#include <memory>

namespace Ui {
class FrmPropTransfer;
}

// Carries the look of the current entry over to others.
class FrmPropTransfer : public QDialog {
  Q_OBJECT

 public:
  explicit FrmPropTransfer(QWidget* parent = nullptr);
  ~FrmPropTransfer() override;

 public Q_SLOTS:
  void accept() override;

 private:
  void Show_Pattern();

  std::unique_ptr<Ui::FrmPropTransfer> ui;
};

// The look of an entry for others.
void Show_frmPropTransfer(QWidget* parent);
