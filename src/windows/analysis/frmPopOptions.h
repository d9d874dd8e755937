#pragma once
#include <QDialog>
#include <memory>

#include "maps/population_command.h"

namespace Ui {
class FrmPopOptions;
}

// What the population parameters are computed of.
class FrmPopOptions : public QDialog {
  Q_OBJECT

 public:
  explicit FrmPopOptions(QWidget* parent = nullptr);
  ~FrmPopOptions() override;

 public Q_SLOTS:
  void accept() override;

 private:
  PopOptions Read_Options() const;

  std::unique_ptr<Ui::FrmPopOptions> ui;
};

// mnuPopParm: waits until it is closed.
void Show_frmPopOptions(QWidget* parent);
