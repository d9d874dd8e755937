#pragma once
#include <QDialog>
#include <memory>

namespace Ui {
class FrmInfo;
}

// Name, version and folders of the program.
class FrmInfo : public QDialog {
  Q_OBJECT

 public:
  explicit FrmInfo(QWidget* parent = nullptr);
  ~FrmInfo() override;

 private:
  std::unique_ptr<Ui::FrmInfo> ui;
};

// Name, version and folders of the program.
void Show_frmInfo(QWidget* parent);
