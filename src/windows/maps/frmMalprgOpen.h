#pragma once
#include <QDialog>
#include <memory>

namespace Ui {
class FrmMalprgOpen;
}

// Starts a paint program with the picture of the open map.
class FrmMalprgOpen : public QDialog {
  Q_OBJECT

 public:
  explicit FrmMalprgOpen(QWidget* parent = nullptr);
  ~FrmMalprgOpen() override;

 public Q_SLOTS:
  void accept() override;

 private:
  void Fill();
  void Change_List();

  std::unique_ptr<Ui::FrmMalprgOpen> ui;
};

// Starts a paint program with the map file.
void Show_frmMalprgOpen(QWidget* parent);
