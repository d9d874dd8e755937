#pragma once
#include <QDialog>
#include <memory>

namespace Ui {
class FrmSpltHide;
}

// Hides the columns of the table whose heads are clicked while the window is open.
class FrmSpltHide : public QDialog {
  Q_OBJECT

 public:
  explicit FrmSpltHide(QWidget* parent = nullptr);
  ~FrmSpltHide() override;

 private:
  std::unique_ptr<Ui::FrmSpltHide> ui;
};

// Hides columns; does not wait: the user clicks on their heads.
void Show_frmSpltHide(QWidget* parent);
