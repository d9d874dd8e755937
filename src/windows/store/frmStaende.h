#pragma once
#include <QDialog>
#include <memory>

#include "store/versions.h"

namespace Ui {
class FrmStaende;
}

// Earlier states of the table: what has changed since, a look at one on the map, and the way back, for single entries
// or for all.
class FrmStaende : public QDialog {
  Q_OBJECT

 public:
  explicit FrmStaende(QWidget* parent = nullptr);
  ~FrmStaende() override;

 private:
  void Load_List();
  const TableVersion* Chosen() const;  // nullptr without one
  void Show_Differences();
  void Show_On_Map(bool on);
  void Take_All();
  void Take_Chosen();
  void Enable_Buttons();

  std::unique_ptr<Ui::FrmStaende> ui;
  QList<TableVersion> versions;
};

void Show_frmStaende(QWidget* parent);  // waits
