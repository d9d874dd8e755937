#pragma once
#include <QDialog>
#include <memory>

#include "exchange/csv_table.h"

namespace Ui {
class FrmCSVExport;
}

// A CSV table to the user's order: which columns in which order, separator, decimal sign, encoding, coordinates.
class FrmCSVExport : public QDialog {
  Q_OBJECT

 public:
  explicit FrmCSVExport(QWidget* parent = nullptr);
  ~FrmCSVExport() override;
  CsvOrder Order() const;  // as it is chosen now

 public Q_SLOTS:
  void accept() override;  // asks for the file and writes it

 private:
  void Fill_Columns();
  void Move_Column(int by);
  void Show_Moves();

  std::unique_ptr<Ui::FrmCSVExport> ui;
};

// Asks what is written and how, then for the file; waits until it is closed.
void Show_frmCSVExport(QWidget* parent);
