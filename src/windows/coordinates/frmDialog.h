#pragma once
#include <QDialog>
#include <memory>

namespace Ui {
class FrmDialog;
}

// Several calibration files were found for a map: the user chooses one.
class FrmDialog : public QDialog {
  Q_OBJECT

 public:
  explicit FrmDialog(QWidget* parent = nullptr);
  ~FrmDialog() override;

 public Q_SLOTS:
  void accept() override;

 protected:
  void showEvent(QShowEvent* event) override;

 private:
  void Make_New();
  std::unique_ptr<Ui::FrmDialog> ui;
};

// Shows the choice in CalFileChoice and waits.
void Show_frmDialog(QWidget* parent);
