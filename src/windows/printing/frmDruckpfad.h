#pragma once
#include <QDialog>
#include <memory>

namespace Ui {
class FrmDruckpfad;
}

// On which path the map goes to the printer; kept for the session.
class FrmDruckpfad : public QDialog {
  Q_OBJECT

 public:
  explicit FrmDruckpfad(QWidget* parent = nullptr);
  ~FrmDruckpfad() override;

 public Q_SLOTS:
  void accept() override;

 private:
  std::unique_ptr<Ui::FrmDruckpfad> ui;
};
