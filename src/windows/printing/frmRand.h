#pragma once
#include <QDialog>
#include <array>
#include <memory>

#include "printing/page_setup.h"

namespace Ui {
class FrmRand;
}
class QLineEdit;
class QScrollBar;

// The margins of the sheets. Closing asks about changes that were not taken.
class FrmRand : public QDialog {
  Q_OBJECT

 public:
  explicit FrmRand(QWidget* parent = nullptr);
  ~FrmRand() override;

 public Q_SLOTS:
  void accept() override;
  void reject() override;

 private:
  struct Side {
    QScrollBar* bar;
    QLineEdit* box;
    int SheetMargins::*value;
    int clip;
  };
  void Show_Values();
  void Print_Margin_Text(const Side& side);
  bool Take();

  std::unique_ptr<Ui::FrmRand> ui;
  SheetMargins shown;
  std::array<Side, 4> sides{};
  int syncing = 0;
  bool changed = false;  // were margins changed that were not taken?
};
